#include "core/ThreadRunStateResolver.h"
#include "tests/support/PlainCore.h"

#include "fuzz/Check.h"
#include "fuzz/MemoryFile.h"

using namespace tallyview;

namespace {

/// 1 to 64 byte by byte, then in larger steps, then the real one.
std::size_t chunkSize(std::uint8_t choice) {
    if (choice < 64) {
        return choice + 1U;
    }
    return choice < 0xF0 ? choice * 16U : ThreadRunStateResolver::defaultChunkSize;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::size_t chunk = chunkSize(data[0]);
    const std::string bytes(inputText(data + 1, size - 1));
    if (bytes.size() / chunk > 256) {
        return -1; // the plain steps are quadratic
    }
    const MemoryFile file(bytes);
    check(file.isWhole(), "the input can be written");
    const ThreadRunState state = ThreadRunStateResolver(chunk).resolve(file.path(), false);
    check(state == plainlyResolved(bytes, chunk), "the plain steps give the same state");
    return 0;
}
