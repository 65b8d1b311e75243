#include "core/RolloutEvent.h"
#include "core/UnicodeText.h"
#include "tests/support/PlainCore.h"

#include <vector>

namespace tallyview {

namespace {

std::vector<std::string> splitLines(const std::string &text) {
    std::vector<std::string> lines{""};
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text.compare(at, 2, "\r\n") == 0) {
            lines.back() += "\r\n";
            ++at;
        } else if (text[at] == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += text[at];
        }
    }
    std::erase(lines, "");
    return lines;
}

} // namespace

ThreadRunState plainlyResolved(const std::string &bytes, std::size_t chunkSize) {
    std::size_t offset = chunkSize == 0 ? 0 : bytes.size();
    std::string carry;
    RolloutEventParser parser;
    while (offset > 0) {
        const std::size_t start = offset > chunkSize ? offset - chunkSize : 0;
        const std::string buffer = bytes.substr(start, offset - start) + carry;
        offset = start;
        if (!isValidUtf8(buffer)) {
            carry = buffer;
            continue;
        }
        std::vector<std::string> lines = splitLines(buffer);
        carry = "";
        if (start > 0 && !lines.empty()) {
            carry = lines.front();
            lines.erase(lines.begin());
        }
        for (; !lines.empty(); lines.pop_back()) {
            lines.back().append(RolloutEventParser::padding, ' ');
            const std::string_view padded = lines.back();
            if (const auto state = parser.decidedState(
                    padded.substr(0, padded.size() - RolloutEventParser::padding))) {
                return *state;
            }
        }
    }
    return ThreadRunState::completed;
}

} // namespace tallyview
