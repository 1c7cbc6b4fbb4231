#include "input_file.hpp"

#include "descriptor.hpp"
#include "outcome.hpp"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace netxml::tool {
namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20;
constexpr std::size_t kLeastPiece = 4096;

int openForReading(const std::string& path, const std::string& name)
{
    if (path == "-") return fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) throw fileFailure(name, "open", errno);
    return descriptor;
}

// Reads up to `most` bytes behind what is there; false at the end.
bool readPiece(int descriptor, const std::string& name, std::string& bytes, std::size_t most)
{
    const std::size_t before = bytes.size();
    bytes.resize(before + most);
    ssize_t count = 0;
    do count = read(descriptor, bytes.data() + before, most);
    while (count < 0 && errno == EINTR);
    if (count < 0) throw fileFailure(name, "read", errno);
    bytes.resize(before + static_cast<std::size_t>(count));
    return count != 0;
}

}  // namespace

InputFile readFile(const std::string& path, const std::string& name, ProgressBar& progress)
{
    const Descriptor file{openForReading(path, name)};
    struct stat status {};
    if (fstat(file.get(), &status) != 0) throw fileFailure(name, "read", errno);
    InputFile input{{}, S_ISREG(status.st_mode) != 0};
    // One byte more than there should be shows the end, or that the file has grown.
    const std::size_t expected =
        input.regular ? static_cast<std::size_t>(status.st_size) + 1 : kLeastPiece;
    const std::size_t piece = std::clamp(expected, kLeastPiece, kPiece);
    input.bytes.reserve(expected + piece);
    for (std::size_t before = 0; readPiece(file.get(), name, input.bytes, piece);) {
        if (!input.regular) progress.addAllPasses(input.bytes.size() - before);
        before = input.bytes.size();
    }
    return input;
}

std::uint64_t regularSize(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return 0;
    return static_cast<std::uint64_t>(status.st_size);
}

}  // namespace netxml::tool
