// Runs a fuzz target over files, without libFuzzer: whatever was found once is tried in every test
// run, with any compiler.
//
//     replay_NAME PATH...    files, or directories of them
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Paths = std::vector<std::filesystem::path>;

Paths filesUnder(const std::filesystem::path& path)
{
    if (!std::filesystem::is_directory(path)) return {path};
    Paths files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{path})
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

bool replay(const std::filesystem::path& path)
{
    std::ifstream file{path, std::ios::binary};
    if (!file) return false;
    // From a block of its own size, so that nothing beyond its end goes unnoticed.
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>{file}, {}};
    std::fprintf(stderr, "%s\n", path.c_str());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    return true;
}

}  // namespace

int main(int count, char** arguments)
{
    std::size_t done = 0;
    for (int i = 1; i < count; ++i) {
        for (const auto& path : filesUnder(arguments[i])) {
            if (!replay(path)) {
                std::fprintf(stderr, "cannot read %s\n", path.c_str());
                return 1;
            }
            ++done;
        }
    }
    std::printf("%zu inputs, no finding\n", done);
    return done == 0 ? 1 : 0;
}
