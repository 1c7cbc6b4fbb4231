#include "tests/faults/call_faults.hpp"

#include "tests/support/failing_heap.hpp"

#include <fcntl.h>
#include <iconv.h>
#include <regex.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <optional>
#include <set>

namespace {

// The allocations are counted and refused by the tests' heap; all other calls here.
std::optional<FailingHeap> heap;
const FaultPlan* active = nullptr;
std::size_t left = 0;  // calls that still succeed
std::size_t callsFailed = 0;

std::size_t callsSeen[kCalls];
long openConverters = 0;
long compiledPatterns = 0;
std::set<int> openFiles;  // by the library or a test, through open()

// Whether this call is one of those that fail.
bool fails(Call call)
{
    ++callsSeen[static_cast<std::size_t>(call)];
    if (!active || active->call != call) return false;
    if (left != 0) {
        --left;
        return false;
    }
    if (active->times != kFromThereOn && callsFailed == active->times) return false;
    ++callsFailed;
    return true;
}

int failWith(int code)
{
    errno = code;
    return -1;
}

int opened(int descriptor)
{
    if (descriptor >= 0) openFiles.insert(descriptor);
    return descriptor;
}

}  // namespace

FaultInjection::FaultInjection(const FaultPlan& plan, std::size_t allowed)
{
    callsFailed = 0;
    left = allowed;
    active = &plan;
    if (plan.call == Call::Allocation) heap.emplace(allowed, plan.times);
}

FaultInjection::~FaultInjection()
{
    active = nullptr;
    if (heap) callsSeen[static_cast<std::size_t>(Call::Allocation)] += FailingHeap::allocations();
    heap.reset();
}

std::size_t FaultInjection::injected()
{
    return heap ? FailingHeap::refusals() : callsFailed;
}

Holdings Holdings::now()
{
    return {heapLiveBlocks(), openConverters, compiledPatterns,
            static_cast<long>(openFiles.size())};
}

std::string Holdings::text() const
{
    return std::to_string(blocks) + " blocks, " + std::to_string(converters) + " converters, " +
           std::to_string(patterns) + " patterns, " + std::to_string(files) + " files";
}

std::size_t callsMade(Call call)
{
    return callsSeen[static_cast<std::size_t>(call)];
}

// What the linker puts in the place of a function, and the function itself. GNU libiconv's header
// gives its functions other names; the expansion follows that.
#define JOINED(a, b) a##b
#define IN_PLACE_OF(function) JOINED(__wrap_, function)
#define THE_REAL(function) JOINED(__real_, function)

extern "C" {

iconv_t THE_REAL(iconv_open)(const char* target, const char* source);
std::size_t THE_REAL(iconv)(iconv_t converter, char** in, std::size_t* inLeft, char** out,
                            std::size_t* outLeft);
int THE_REAL(iconv_close)(iconv_t converter);
int THE_REAL(regcomp)(regex_t* into, const char* pattern, int flags);
int THE_REAL(regexec)(const regex_t* compiled, const char* text, std::size_t count,
                      regmatch_t* matches, int flags);
void THE_REAL(regfree)(regex_t* compiled);
int __real_open(const char* path, int flags, ...);
int __real_stat(const char* path, void* status);
int __real_fstat(int descriptor, void* status);
int THE_REAL(close)(int descriptor);
ssize_t THE_REAL(read)(int descriptor, void* to, std::size_t size);
ssize_t THE_REAL(write)(int descriptor, const void* from, std::size_t size);
int THE_REAL(fsync)(int descriptor);

iconv_t IN_PLACE_OF(iconv_open)(const char* target, const char* source)
{
    const auto none = reinterpret_cast<iconv_t>(std::intptr_t{-1});
    if (fails(Call::ConverterOpen)) {
        errno = ENOMEM;
        return none;
    }
    const iconv_t converter = THE_REAL(iconv_open)(target, source);
    if (converter != none) ++openConverters;
    return converter;
}

std::size_t IN_PLACE_OF(iconv)(iconv_t converter, char** in, std::size_t* inLeft, char** out,
                               std::size_t* outLeft)
{
    if (fails(Call::Convert)) return static_cast<std::size_t>(failWith(EILSEQ));
    return THE_REAL(iconv)(converter, in, inLeft, out, outLeft);
}

int IN_PLACE_OF(iconv_close)(iconv_t converter)
{
    --openConverters;
    return THE_REAL(iconv_close)(converter);
}

int IN_PLACE_OF(regcomp)(regex_t* into, const char* pattern, int flags)
{
    if (fails(Call::Compile)) return REG_ESPACE;
    const int status = THE_REAL(regcomp)(into, pattern, flags);
    if (status == 0) ++compiledPatterns;
    return status;
}

int IN_PLACE_OF(regexec)(const regex_t* compiled, const char* text, std::size_t count,
                         regmatch_t* matches, int flags)
{
    if (fails(Call::Match)) return REG_ESPACE;
    return THE_REAL(regexec)(compiled, text, count, matches, flags);
}

void IN_PLACE_OF(regfree)(regex_t* compiled)
{
    --compiledPatterns;
    THE_REAL(regfree)(compiled);
}

int __wrap_open(const char* path, int flags, ...)
{
    if (fails(Call::Open)) return failWith(EMFILE);
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0u;
    va_end(arguments);
    return opened(__real_open(path, flags, mode));
}

int __wrap_stat(const char* path, void* status)
{
    return fails(Call::Status) ? failWith(EIO) : __real_stat(path, status);
}

int __wrap_fstat(int descriptor, void* status)
{
    return fails(Call::Status) ? failWith(EIO) : __real_fstat(descriptor, status);
}

// Where the C library has other names for files beyond 2 GiB, the library uses those.
#ifdef __GLIBC__
int __real_open64(const char* path, int flags, ...);
int __real_stat64(const char* path, void* status);
int __real_fstat64(int descriptor, void* status);

int __wrap_open64(const char* path, int flags, ...)
{
    if (fails(Call::Open)) return failWith(EMFILE);
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0u;
    va_end(arguments);
    return opened(__real_open64(path, flags, mode));
}

int __wrap_stat64(const char* path, void* status)
{
    return fails(Call::Status) ? failWith(EIO) : __real_stat64(path, status);
}

int __wrap_fstat64(int descriptor, void* status)
{
    return fails(Call::Status) ? failWith(EIO) : __real_fstat64(descriptor, status);
}
#endif

int IN_PLACE_OF(close)(int descriptor)
{
    openFiles.erase(descriptor);
    return THE_REAL(close)(descriptor);
}

ssize_t IN_PLACE_OF(read)(int descriptor, void* to, std::size_t size)
{
    if (!fails(Call::Read)) return THE_REAL(read)(descriptor, to, size);
    if (active->fault == Fault::Short) return THE_REAL(read)(descriptor, to, size < 1 ? size : 1);
    return failWith(active->fault == Fault::Interrupted ? EINTR : EIO);
}

ssize_t IN_PLACE_OF(write)(int descriptor, const void* from, std::size_t size)
{
    if (!fails(Call::Write)) return THE_REAL(write)(descriptor, from, size);
    switch (active->fault) {
    case Fault::Short: return THE_REAL(write)(descriptor, from, size < 1 ? size : 1);
    case Fault::Nothing: return 0;
    case Fault::Interrupted: return failWith(EINTR);
    default: return failWith(ENOSPC);
    }
}

int IN_PLACE_OF(fsync)(int descriptor)
{
    return fails(Call::Sync) ? failWith(EIO) : THE_REAL(fsync)(descriptor);
}

}  // extern "C"
