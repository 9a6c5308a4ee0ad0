// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool Run(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file.good() && !file.eof()) return false;
    // Said first, so that it is known which input a crash belongs to.
    std::fprintf(stderr, "%s\n", path.string().c_str());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return true;
}

}  // namespace

/// Where there is no libFuzzer: runs every file of the folders given, once.
int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i)
        for (const auto& entry : std::filesystem::directory_iterator(argv[i]))
            if (!Run(entry.path()) || ++count == 0) return 1;
    std::fprintf(stderr, "%d inputs\n", count);
    return count != 0 ? 0 : 1;
}
