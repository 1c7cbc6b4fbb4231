#include "fuzz/support/captured_run.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

namespace {

// Puts a file into the place of a descriptor, until it goes.
class Redirected {
public:
    Redirected(int descriptor, const MemoryFile& file)
        : descriptor_{descriptor}, before_{fcntl(descriptor, F_DUPFD_CLOEXEC, 10)}
    {
        dup2(file.descriptor(), descriptor);
    }
    Redirected(const Redirected&) = delete;
    Redirected& operator=(const Redirected&) = delete;
    ~Redirected()
    {
        if (before_ >= 0) dup2(before_, descriptor_);
        else close(descriptor_);
        close(before_);
    }

private:
    int descriptor_;
    int before_;
};

void flushAll()
{
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
}

}  // namespace

Captured capturedRun(std::string_view input, const std::function<int()>& call)
{
    const MemoryFile in{input};
    lseek(in.descriptor(), 0, SEEK_SET);
    const MemoryFile out;
    const MemoryFile errors;
    Captured result;
    flushAll();
    {
        const Redirected first{STDIN_FILENO, in};
        const Redirected second{STDOUT_FILENO, out};
        const Redirected third{STDERR_FILENO, errors};
        result.status = call();
        flushAll();
    }
    result.output = out.content();
    result.errors = errors.content();
    return result;
}
