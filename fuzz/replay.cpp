// Stands in for the fuzzing engine: runs a target once over each file that is named, or lies in a directory that is, and
// over inputs of random bytes, the same in every run.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace fs = std::filesystem;

int main(int count, char** names)
{
    constexpr int inputs = 10000;
    constexpr unsigned most_bytes = 300;
    int ran = 0;
    const auto look_at = [](const std::vector<char>& bytes) {
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    };
    const auto run = [&](const fs::path& file) {
        std::ifstream stream(file, std::ios::binary);
        look_at({std::istreambuf_iterator<char>(stream), {}});
        ++ran;
    };
    for (int i = 1; i < count; ++i)
        if (!fs::is_directory(names[i]))
            run(names[i]);
        else
            for (const fs::directory_entry& entry : fs::directory_iterator(names[i]))
                run(entry.path());
    std::mt19937 random(1);
    for (int i = 0; i < inputs; ++i) {
        std::vector<char> bytes(random() % most_bytes);
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        look_at(bytes);
    }
    std::printf("%d files and %d random inputs\n", ran, inputs);
    return ran == 0;
}
