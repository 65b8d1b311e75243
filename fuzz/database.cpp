#include "core/OrvikThreadStore.h"
#include "core/UnicodeText.h"

#include "fuzz/Check.h"
#include "fuzz/MemoryFile.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

using namespace tallyview;

namespace {

bool isComplete(const ThreadRecord &thread) {
    const auto &fields = *thread;
    const bool areTexts = std::ranges::all_of(
        std::initializer_list<std::string_view>{fields.id, fields.title, fields.preview,
                                                fields.project, fields.projectPath, fields.source,
                                                fields.model, fields.reasoningEffort, fields.branch,
                                                thread.searchText()},
        isValidUtf8);
    return areTexts && !fields.title.empty() && !fields.project.empty() && !fields.source.empty() &&
           ThreadRecord(fields) == thread && ThreadRecord(fields).hash() == thread.hash();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const MemoryFile file(inputText(data, size));
    check(file.isWhole(), "the input can be written");
    const auto threads = OrvikThreadStore(file.path()).listThreads();
    if (!threads) {
        check(isValidUtf8(threads.error().description()), "an error has a description");
        return 0;
    }
    check(std::ranges::all_of(*threads, isComplete), "records are complete");
    return 0;
}
