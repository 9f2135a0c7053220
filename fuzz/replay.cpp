// Stands in for the fuzzing engine: runs a target once over each file that is named, or lies in a directory that is.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace fs = std::filesystem;

int main(int count, char** names)
{
    int ran = 0;
    const auto run = [&](const fs::path& file) {
        std::ifstream stream(file, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
        ++ran;
    };
    for (int i = 1; i < count; ++i)
        if (!fs::is_directory(names[i]))
            run(names[i]);
        else
            for (const fs::directory_entry& entry : fs::directory_iterator(names[i]))
                run(entry.path());
    std::printf("%d files\n", ran);
    return ran == 0;
}
