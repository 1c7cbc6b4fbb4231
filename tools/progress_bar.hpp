// The progress bar on standard error: bytes, rate and time left.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace netxml::tool {

class ProgressBar {
public:
    // Draws only when `enabled`, and not before a second has passed. `total` is the number of bytes
    // to come, 0 when nobody knows; each is gone over `passes` times.
    ProgressBar(bool enabled, std::uint64_t total, unsigned passes);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();  // removes it

    bool enabled() const { return enabled_; }
    // So many bytes have been gone over once.
    void add(std::uint64_t bytes) { done_.fetch_add(bytes, std::memory_order_relaxed); }

    // So many bytes are done with altogether.
    void addAllPasses(std::uint64_t bytes) { add(bytes * passes_); }

    // Keeps the bar off the terminal as long as it lives: others write there.
    class Hidden {
    public:
        explicit Hidden(ProgressBar& bar) : lock_{bar.mutex_} { bar.erase(); }

    private:
        std::lock_guard<std::mutex> lock_;
    };

private:
    using Clock = std::chrono::steady_clock;

    void run();
    void draw(double seconds);
    void erase();

    const bool enabled_;
    const std::uint64_t total_;
    const unsigned passes_;
    const Clock::time_point begin_ = Clock::now();
    std::atomic<std::uint64_t> done_{0};
    std::mutex mutex_;
    std::condition_variable wake_;
    bool ended_ = false;
    bool drawn_ = false;
    std::thread thread_;
};

// The bar's text, at most 79 cells: for example
// "[=====>              ] 25% 10.0 of 40.0 MB, 5.0 MB/s, 0:06 left".
std::string progressText(std::uint64_t done, std::uint64_t total, double seconds);

}  // namespace netxml::tool
