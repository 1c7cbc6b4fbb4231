#include "interruption.hpp"

#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace netxml::tool {
namespace {

// As many files as threads may write at once; one more is just not removed.
constexpr std::size_t kSlots = 256;
std::array<std::atomic<const char*>, kSlots> removedPaths;
static_assert(std::atomic<const char*>::is_always_lock_free);

extern "C" void onInterrupt(int number)
{
    for (const auto& path : removedPaths) {
        if (const char* name = path.load()) unlink(name);
    }
    constexpr char kErase[] = "\r\033[K";
    if (isatty(STDERR_FILENO)) static_cast<void>(!write(STDERR_FILENO, kErase, 4));
    raise(number);  // the handler is reset, so this ends the process as the signal would have
}

void catchInterrupt(int number)
{
    struct sigaction action {};
    if (sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
    action.sa_handler = onInterrupt;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(number, &action, nullptr);
}

// Takes the place of a closed descriptor with one that can be neither read nor written.
void occupyStandardDescriptors()
{
    for (int descriptor = 0; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0) static_cast<void>(open("/", O_PATH));
    }
}

}  // namespace

void prepareProcess()
{
    occupyStandardDescriptors();
    signal(SIGPIPE, SIG_IGN);
    signal(SIGXFSZ, SIG_IGN);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) catchInterrupt(number);
}

RemovedOnSignal::RemovedOnSignal(const std::string& path) : slot_{0}
{
    for (; slot_ != kSlots; ++slot_) {
        const char* free = nullptr;
        if (removedPaths[slot_].compare_exchange_strong(free, path.c_str())) return;
    }
}

RemovedOnSignal::~RemovedOnSignal()
{
    if (slot_ != kSlots) removedPaths[slot_].store(nullptr);
}

}  // namespace netxml::tool
