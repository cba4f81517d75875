// Gives a fuzz target the files of folders, one after the other, as tests do: the seeds, and what was found once.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argumentCount, char** arguments) {
    int count = 0;
    for (int folder = 1; folder < argumentCount; ++folder) {
        for (const auto& entry : std::filesystem::directory_iterator(arguments[folder])) {
            std::printf("%s\n", entry.path().c_str());
            std::fflush(stdout);
            std::ifstream in(entry.path(), std::ios::binary);
            const std::string text{std::istreambuf_iterator<char>(in), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
            ++count;
        }
    }
    return count == 0 ? 1 : 0;
}
