#include "app/terminal/Complaint.h"

#include "app/terminal/TerminalText.h"
#include "core/UnicodeText.h"

#include <cstdio>

namespace tallyview {

void complain(std::string_view text) {
    std::fputs((terminalText(decodedUtf8(text)) + '\n').c_str(), stderr);
}

} // namespace tallyview
