#include "fuzz/Check.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

/// Feeds every file of a folder to the fuzz program that this is linked with.
int main(int argc, char **argv) {
    if (argc != 2) {
        std::cerr << "Usage: " << argv[0] << " FOLDER\n";
        return 2;
    }
    int count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        std::cerr << entry.path().filename().string() << std::endl; // the last one is the culprit
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
        ++count;
    }
    return count > 0 ? 0 : 1;
}
