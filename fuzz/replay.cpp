// Stands in for libFuzzer: runs a target once with every file named, and every file below every folder named.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz_target.h"

namespace {

namespace fs = std::filesystem;

bool Replay(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        std::fprintf(stderr, "cannot read %s\n", file.string().c_str());
        return false;
    }
    const std::vector<char> input{std::istreambuf_iterator<char>(stream), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    return true;
}

bool ReplayAll(const fs::path& path) {
    if (!fs::is_directory(path)) return Replay(path);
    bool all = true;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) all = Replay(entry.path()) && all;
    }
    return all;
}

}  // namespace

int main(int count, char** arguments) {
    bool all = true;
    for (int i = 1; i < count; ++i) all = ReplayAll(arguments[i]) && all;
    return all ? 0 : 1;
}
