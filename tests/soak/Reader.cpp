#include "core/OrvikThreadStore.h"

#include <iostream>
#include <string>
#include <vector>

/// Lists the threads of a database once for each line that comes in, each time given the list
/// before, as the application does. Answers with one line: the error, or a tab and "ID TITLE STATE"
/// for each thread.
int main(int argc, char **argv) {
    const tallyview::OrvikThreadStore store(argc > 1 ? argv[1] : "");
    std::vector<tallyview::ThreadRecord> last;
    for (std::string line; std::getline(std::cin, line);) {
        auto threads = store.listThreads(last);
        if (!threads) {
            std::cout << threads.error().description() << std::endl;
            continue;
        }
        last = *std::move(threads);
        for (const tallyview::ThreadRecord &thread : last) {
            std::cout << '\t' << thread.id() << ' ' << thread->title << ' '
                      << rawValue(thread->runState);
        }
        std::cout << std::endl;
    }
    return 0;
}
