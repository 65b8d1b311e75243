#include "core/RolloutEvent.h"
#include "tests/support/PlainCore.h"

#include "fuzz/Check.h"

#include <string>

using namespace tallyview;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static RolloutEventParser parser;
    const std::string_view line = inputText(data, size);
    // What stands behind the line must not count: it is made to look like its end.
    for (const char padding : {'}', '"', ' '}) {
        std::string padded(line);
        padded.append(RolloutEventParser::padding, padding);
        const auto state = parser.decidedState(std::string_view(padded).substr(0, size));
        check(state == plainlyDecidedState(line), "parsing in full gives the same state");
    }
    return 0;
}
