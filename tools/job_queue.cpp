#include "job_queue.hpp"

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

namespace netxml::tool {
namespace {

// Workers take the next index as long as it lies in the window behind what was delivered, so that
// one slow file does not make the outcomes of all others pile up.
class Queue {
public:
    Queue(std::size_t count, std::size_t window) : count_{count}, window_{window} {}

    bool take(std::size_t& index)
    {
        std::unique_lock lock{mutex_};
        changed_.wait(lock, [this] { return stopped_ || next_ < delivered_ + window_; });
        if (stopped_ || next_ >= count_) return false;
        index = next_++;
        return true;
    }
    void put(std::size_t index, Outcome outcome)
    {
        const std::lock_guard lock{mutex_};
        done_.emplace(index, std::move(outcome));
        changed_.notify_all();
    }
    Outcome await(std::size_t index)
    {
        std::unique_lock lock{mutex_};
        changed_.wait(lock, [&] { return done_.count(index) != 0; });
        Outcome outcome = std::move(done_.at(index));
        done_.erase(index);
        delivered_ = index + 1;
        changed_.notify_all();
        return outcome;
    }
    void stop()
    {
        const std::lock_guard lock{mutex_};
        stopped_ = true;
        changed_.notify_all();
    }

private:
    const std::size_t count_;
    const std::size_t window_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::size_t, Outcome> done_;
    std::size_t next_ = 0;
    std::size_t delivered_ = 0;
    bool stopped_ = false;
};

}  // namespace

void runInOrder(std::size_t count, unsigned threads,
                const std::function<Outcome(std::size_t)>& work,
                const std::function<bool(Outcome)>& deliver)
{
    if (threads <= 1 || count <= 1) {
        for (std::size_t i = 0; i < count && deliver(work(i)); ++i) {
        }
        return;
    }
    Queue queue{count, std::size_t{4} * threads};
    std::vector<std::thread> workers;
    for (std::size_t i = 0; i < threads && i < count; ++i) {
        workers.emplace_back([&] {
            for (std::size_t index = 0; queue.take(index);) queue.put(index, work(index));
        });
    }
    for (std::size_t i = 0; i < count && deliver(queue.await(i)); ++i) {
    }
    queue.stop();
    for (std::thread& worker : workers) worker.join();
}

}  // namespace netxml::tool
