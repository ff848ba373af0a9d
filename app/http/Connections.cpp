#include "Connections.h"

#include <system_error>
#include <utility>

namespace frigana::http {

thread_local bool Connections::turnedAway = false;

Connections::Taken Connections::enqueue(std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        if (waiting_.size() < idle_ || threads_.size() < most_) {
            waiting_.push_back(std::move(work));
            if (waiting_.size() > idle_ && threads_.size() < most_) addThread();
            more_.notify_one();
            return static_cast<Taken>(true);
        }
    }
    turnedAway = true;
    work();
    turnedAway = false;
    return static_cast<Taken>(true);
}

void Connections::addThread() {
    try {
        threads_.emplace_back([this] { serve(); });
    } catch (const std::system_error&) {
        // The system gives no more threads: the connection waits for one of those that there are.
        if (threads_.empty()) throw;
    }
}

void Connections::serve() {
    std::unique_lock lock(mutex_);
    for (;;) {
        ++idle_;
        more_.wait(lock, [this] { return ended_ || !waiting_.empty(); });
        --idle_;
        if (waiting_.empty()) return;
        const auto work = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        work();
        lock.lock();
    }
}

void Connections::shutdown() {
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
    }
    more_.notify_all();
    for (std::thread& thread : threads_) thread.join();
}

void OpenSockets::add(int socket) {
    const std::lock_guard lock(mutex_);
    sockets_.insert(socket);
}

void OpenSockets::remove(int socket) {
    const std::lock_guard lock(mutex_);
    sockets_.erase(socket);
}

void OpenSockets::shutAll(int how) {
    const std::lock_guard lock(mutex_);
    for (int socket : sockets_) ::shutdown(socket, how);
}

}  // namespace frigana::http
