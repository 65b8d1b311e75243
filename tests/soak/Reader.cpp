#include "core/OrvikThreadStore.h"

#include <cstddef>
#include <iostream>
#include <malloc.h>
#include <string>
#include <vector>

#ifdef __SANITIZE_ADDRESS__
// Its header does not come with the compiler everywhere.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

using tallyview::OrvikThreadStore;

namespace {

/// The list of the last of so many refreshes, or the first error. Each is given the list before, as
/// the application does.
auto refreshed(const OrvikThreadStore &store, int times) {
    static std::vector<tallyview::ThreadRecord> last;
    auto threads = store.listThreads(last);
    while (threads && --times > 0) {
        last = *std::move(threads);
        threads = store.listThreads(last);
    }
    return threads;
}

/// The bytes that are allocated. What the system counts as resident tells less: a sanitizer keeps
/// some 200 bytes for every thread that ever ran.
std::size_t allocatedBytes() {
#ifdef __SANITIZE_ADDRESS__
    return __sanitizer_get_current_allocated_bytes();
#else
    return mallinfo2().uordblks;
#endif
}

} // namespace

/// Lists the threads of a database as often as each line that comes in says, and answers with one
/// line: the error, or a tab and "ID TITLE STATE" for each thread. Asked for none, it answers with
/// the bytes that it has allocated.
int main(int argc, char **argv) {
    const OrvikThreadStore store(argc > 1 ? argv[1] : "");
    for (int times = 0; std::cin >> times;) {
        if (times == 0) {
            std::cout << allocatedBytes() << std::endl;
            continue;
        }
        const auto threads = refreshed(store, times);
        if (!threads) {
            std::cout << threads.error().description();
        } else {
            for (const tallyview::ThreadRecord &thread : *threads) {
                std::cout << '\t' << thread.id() << ' ' << thread->title << ' '
                          << rawValue(thread->runState);
            }
        }
        std::cout << std::endl;
    }
    return 0;
}
