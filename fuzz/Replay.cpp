// Runs a fuzz target over the files of a folder, where the compiler has no fuzzer of its own.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int, char** arguments) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::ifstream file(entry.path(), std::ios_base::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        // The name stands in the log when the target ends the program.
        std::fprintf(stderr, "%s\r", entry.path().c_str());
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++count;
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
