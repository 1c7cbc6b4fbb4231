#include "progress_bar.hpp"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <unistd.h>

namespace netxml::tool {
namespace {

constexpr std::chrono::milliseconds kFirst{1000};
constexpr std::chrono::milliseconds kBetween{100};
constexpr std::string_view kErase = "\r\033[K";
constexpr std::size_t kBarCells = 24;

void toTerminal(std::string_view text)
{
    static_cast<void>(!write(STDERR_FILENO, text.data(), text.size()));
}

template <class... Arguments>
std::string printed(const char* format, Arguments... arguments)
{
    char buffer[64];
    const int size = std::snprintf(buffer, sizeof buffer, format, arguments...);
    return {buffer, std::min(static_cast<std::size_t>(size), sizeof buffer - 1)};
}

std::string barText(double part)
{
    const auto full = static_cast<std::size_t>(part * static_cast<double>(kBarCells));
    std::string bar(full, '=');
    if (full < kBarCells) bar += '>';
    bar.resize(kBarCells, ' ');
    return "[" + bar + "] " + printed("%.0f%% ", part * 100);
}

}  // namespace

std::string progressText(std::uint64_t done, std::uint64_t total, double seconds)
{
    constexpr double kMega = 1e6;
    const double bytes = static_cast<double>(done);
    const double all = static_cast<double>(total);
    const double rate = seconds > 0 ? bytes / seconds : 0;
    if (total == 0) return printed("%.1f MB, %.1f MB/s", bytes / kMega, rate / kMega);

    const double part = std::min(bytes / all, 1.0);
    std::string text = barText(part) + printed("%.1f of %.1f MB, %.1f MB/s", bytes / kMega,
                                               all / kMega, rate / kMega);
    if (rate > 0 && done <= total) {
        const auto left = static_cast<unsigned long>((all - bytes) / rate);
        text += printed(", %lu:%02lu left", left / 60, left % 60);
    }
    return text;
}

ProgressBar::ProgressBar(bool enabled, std::uint64_t total, unsigned passes)
    : enabled_{enabled}, total_{total}, passes_{passes}
{
    if (enabled_) thread_ = std::thread{&ProgressBar::run, this};
}

ProgressBar::~ProgressBar()
{
    if (!enabled_) return;
    {
        const std::lock_guard lock{mutex_};
        ended_ = true;
    }
    wake_.notify_all();
    thread_.join();
    erase();
}

void ProgressBar::run()
{
    std::unique_lock lock{mutex_};
    auto wait = kFirst;
    while (!wake_.wait_for(lock, wait, [this] { return ended_; })) {
        draw(std::chrono::duration<double>(Clock::now() - begin_).count());
        wait = kBetween;
    }
}

void ProgressBar::draw(double seconds)
{
    const std::uint64_t done = done_.load(std::memory_order_relaxed) / passes_;
    toTerminal(std::string{kErase} + progressText(done, total_, seconds));
    drawn_ = true;
}

void ProgressBar::erase()
{
    if (!drawn_) return;
    toTerminal(kErase);
    drawn_ = false;
}

}  // namespace netxml::tool
