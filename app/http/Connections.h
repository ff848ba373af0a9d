// The threads of the server: one for each connection at a time, made when they are needed, bounded in number.
#pragma once

#include <httplib.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

namespace frigana::http {

class Connections final : public httplib::TaskQueue {
  public:
    // Whether work was taken, or nothing where the library is older and does not ask.
    using Taken = decltype(std::declval<httplib::TaskQueue&>().enqueue(nullptr));

    explicit Connections(std::size_t most) : most_(most) {}

    // Runs the work of a connection in a thread of its own; where there are as many as there may be, at once and with
    // `turnedAway` set, which says so and ends.
    Taken enqueue(std::function<void()> work) override;
    void shutdown() override;

    static thread_local bool turnedAway;

  private:
    void addThread();
    void serve();

    const std::size_t most_;
    std::mutex mutex_;
    std::condition_variable more_;
    std::deque<std::function<void()>> waiting_;
    std::vector<std::thread> threads_;
    std::size_t idle_ = 0;
    bool ended_ = false;
};

// The sockets of open connections, to wake them when the server stops.
class OpenSockets {
  public:
    void add(int socket);
    void remove(int socket);  // before it is closed
    // Ends their reading, or reading and writing.
    void shutAll(int how);

  private:
    std::mutex mutex_;
    std::set<int> sockets_;
};

}  // namespace frigana::http
