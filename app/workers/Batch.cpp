#include "Batch.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <condition_variable>
#include <exception>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace frigana::workers {

namespace {

// As many cases go to a worker at once as take about this time: long enough that the worker does not wait for the next,
// short enough that a person's request between them does not.
constexpr auto chunkTime = std::chrono::milliseconds(20);
constexpr std::size_t largestChunk = 64;

// Cases taken and not delivered, in chunks of the largest size for each worker.
constexpr std::size_t chunksAhead = 4;

class Run {
  public:
    Run(Pool& pool, const Batch& batch, const Cancel* cancel)
        : pool_(pool), batch_(batch), cancel_(cancel), ahead_(chunksAhead * largestChunk * workers()) {}

    std::size_t all();

  private:
    std::size_t workers() const { return static_cast<std::size_t>(pool_.size()); }
    void drive();
    std::size_t takeChunk(std::vector<std::string>& cases, std::size_t size);
    bool hear(std::size_t number, Answer&& answer);
    void end(const std::exception_ptr& thrown = nullptr);
    void awaitDrivers();

    Pool& pool_;
    const Batch& batch_;
    const Cancel* cancel_;
    const std::size_t ahead_;

    std::mutex mutex_;
    std::condition_variable room_;
    std::map<std::size_t, Answer> early_;  // answers that came before that of a case before them
    std::size_t taken_ = 0, delivered_ = 0;
    bool noMore_ = false, ended_ = false;
    std::exception_ptr thrown_;
    Flag enough_;  // ends the running cases of this batch
    Flag done_;    // all drivers have come to their end
    std::size_t driving_ = 0;
};

void Run::end(const std::exception_ptr& thrown) {
    ended_ = true;
    if (thrown_ == nullptr) thrown_ = thrown;
    enough_.raise();
    room_.notify_all();
}

// Returns the number of the first case of the chunk; there is no case where there are no more.
std::size_t Run::takeChunk(std::vector<std::string>& cases, std::size_t size) {
    std::unique_lock lock(mutex_);
    cases.clear();
    room_.wait(lock, [&] { return ended_ || taken_ < delivered_ + ahead_; });
    const std::size_t first = taken_;
    while (!ended_ && !noMore_ && cases.size() < size && taken_ < delivered_ + ahead_) {
        try {
            std::string request;
            noMore_ = !batch_.next(request);
            if (noMore_) break;
            cases.push_back(std::move(request));
            ++taken_;
        } catch (...) {
            end(std::current_exception());
        }
    }
    return first;
}

bool Run::hear(std::size_t number, Answer&& answer) {
    const std::lock_guard lock(mutex_);
    if (answer.end == End::cancelled || answer.end == End::stopped) end();
    if (ended_) return false;
    early_.emplace(number, std::move(answer));
    try {
        for (auto head = early_.begin(); head != early_.end() && head->first == delivered_; head = early_.begin()) {
            Answer next = std::move(head->second);
            early_.erase(head);
            const bool more = batch_.deliver(delivered_++, std::move(next));
            if (!more) end();
            if (ended_) return false;
        }
    } catch (...) {
        end(std::current_exception());
        return false;
    }
    room_.notify_all();
    return true;
}

void Run::drive() {
    std::vector<std::string> cases;
    std::size_t size = 1;
    for (;;) {
        const std::size_t first = takeChunk(cases, size);
        if (cases.empty()) return;
        const auto start = Clock::now();
        bool more = true;
        pool_.runInOrder(
            cases, [&](std::size_t number, Answer&& answer) { return more = hear(first + number, std::move(answer)); },
            &enough_, Urgency::study);
        if (!more) return;
        const auto each = (Clock::now() - start) / static_cast<long>(cases.size());
        const auto fitting = static_cast<std::size_t>(chunkTime / std::max(each, Clock::duration(1)));
        size = std::clamp<std::size_t>(fitting, 1, std::min(largestChunk, 2 * size));
    }
}

// Until the drivers are done, or the caller gives the batch up.
void Run::awaitDrivers() {
    std::array<pollfd, 2> waiting{{{done_.descriptor(), POLLIN, 0}, {-1, POLLIN, 0}}};
    if (cancel_ != nullptr) waiting[1].fd = cancel_->descriptor();
    while (poll(waiting.data(), waiting.size(), -1) < 0 && errno == EINTR) {
    }
    if (waiting[0].revents != 0) return;
    const std::lock_guard lock(mutex_);
    end();
}

std::size_t Run::all() {
    std::vector<std::thread> drivers;
    driving_ = workers();
    while (drivers.size() < workers())
        drivers.emplace_back([this] {
            drive();
            const std::lock_guard lock(mutex_);
            if (--driving_ == 0) done_.raise();
        });
    awaitDrivers();
    for (std::thread& driver : drivers) driver.join();
    if (thrown_ != nullptr) std::rethrow_exception(thrown_);
    return delivered_;
}

}  // namespace

std::size_t runBatch(Pool& pool, const Batch& batch, const Cancel* cancel) {
    return Run(pool, batch, cancel).all();
}

}  // namespace frigana::workers
