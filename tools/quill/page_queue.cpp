#include "page_queue.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <vector>

namespace QuillTool {

namespace {

// How far the threads may run ahead: pages per thread, and bytes of output that wait to be taken.
constexpr std::size_t kPagesAheadPerJob = 16;
constexpr std::size_t kBytesAhead = std::size_t{64} << 20;

//   taken_          next_         count_
//   | made or being made |  not begun  |      page i waits in slot i modulo the number of slots
class PageQueue {
public:
    PageQueue(std::size_t count, unsigned int jobs, const MakePage& make)
        : count_(count), make_(make), slots_(jobs * kPagesAheadPerJob) {
        StartThreads(jobs);
    }
    PageQueue(const PageQueue&) = delete;  // its threads know its address
    PageQueue& operator=(const PageQueue&) = delete;

    ~PageQueue() {
        {
            const std::lock_guard lock(mutex_);
            next_ = count_;
        }
        room_.notify_all();
        for (std::thread& thread : threads_) thread.join();
    }

    bool HasThreads() const { return !threads_.empty(); }

    // The next page in order, once it is made.
    PageOutput Take() {
        std::unique_lock lock(mutex_);
        std::optional<PageOutput>& slot = slots_[taken_ % slots_.size()];
        made_.wait(lock, [&] { return slot.has_value(); });
        PageOutput page = std::move(*slot);
        slot.reset();
        waiting_bytes_ -= page.text.size();
        ++taken_;
        room_.notify_all();
        return page;
    }

private:
    // Fewer threads than asked for are no reason to give up.
    void StartThreads(unsigned int jobs) {
        try {
            while (threads_.size() < jobs) threads_.emplace_back([this] { MakePages(); });
        } catch (const std::system_error&) {
        }
    }

    void MakePages() {
        std::unique_lock lock(mutex_);
        for (;;) {
            room_.wait(lock, [&] { return next_ == count_ || HasRoom(); });
            if (next_ == count_) return;
            const std::size_t index = next_++;
            lock.unlock();
            PageOutput page = make_(index);
            lock.lock();
            waiting_bytes_ += page.text.size();
            slots_[index % slots_.size()] = std::move(page);
            made_.notify_one();
        }
    }

    // The page that is taken next may always be begun.
    bool HasRoom() const {
        return next_ == taken_ || (next_ - taken_ < slots_.size() && waiting_bytes_ < kBytesAhead);
    }

    const std::size_t count_;
    const MakePage& make_;
    std::mutex mutex_;  // guards all that follows but the threads
    std::condition_variable room_;
    std::condition_variable made_;
    std::vector<std::optional<PageOutput>> slots_;
    std::size_t next_ = 0;
    std::size_t taken_ = 0;
    std::size_t waiting_bytes_ = 0;
    std::vector<std::thread> threads_;
};

}  // namespace

void RunPages(std::size_t count, unsigned int jobs, const MakePage& make, const TakePage& take) {
    const auto threads = static_cast<unsigned int>(std::min<std::size_t>(jobs, count));
    std::optional<PageQueue> queue;
    if (threads > 1) queue.emplace(count, threads, make);
    const bool threaded = queue.has_value() && queue->HasThreads();
    for (std::size_t index = 0; index < count; ++index) {
        PageOutput page = threaded ? queue->Take() : make(index);
        if (!take(index, page)) return;
    }
}

}  // namespace QuillTool
