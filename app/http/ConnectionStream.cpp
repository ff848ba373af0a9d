#include "ConnectionStream.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>

namespace frigana::http {

namespace {

constexpr auto lingering = std::chrono::milliseconds(500);
constexpr std::size_t lingeringBytes = std::size_t{16} << 20;

}  // namespace

bool ConnectionStream::await(short events, Clock::time_point deadline) const {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd waiting{socket_, events, 0};
        const int count = poll(&waiting, 1, static_cast<int>(std::max<long long>(left, 0)));
        if (count < 0 && errno == EINTR) continue;
        return count == 1;
    }
}

bool ConnectionStream::fill(Clock::time_point deadline) {
    from_ = to_ = 0;
    for (;;) {
        const ssize_t count = recv(socket_, buffer_.data(), buffer_.size(), MSG_DONTWAIT);
        if (count > 0) {
            to_ = static_cast<std::size_t>(count);
            return true;
        }
        if (count == 0) return false;
        if (errno == EINTR) continue;
        if ((errno != EAGAIN && errno != EWOULDBLOCK) || !await(POLLIN, deadline)) return false;
    }
}

bool ConnectionStream::awaitRequest() {
    if (from_ == to_ && !fill(Clock::now() + settings_.idle)) return false;
    budget_ = settings_.headerBytes;
    arrival_ = Clock::now() + settings_.arrival;
    return true;
}

bool ConnectionStream::is_readable() const {
    return from_ < to_ || await(POLLIN, arrival_);
}

bool ConnectionStream::is_writable() const {
    return await(POLLOUT, Clock::now() + settings_.departure);
}

ssize_t ConnectionStream::read(char* bytes, size_t size) {
    if (budget_ == 0 || Clock::now() >= arrival_) return -1;
    if (from_ == to_ && !fill(arrival_)) return -1;
    const std::size_t count = std::min({size, to_ - from_, budget_});
    std::copy_n(buffer_.data() + from_, count, bytes);
    from_ += count;
    budget_ -= count;
    return static_cast<ssize_t>(count);
}

ssize_t ConnectionStream::write(const char* bytes, size_t size) {
    for (std::size_t done = 0; done < size;) {
        const ssize_t count = send(socket_, bytes + done, size - done, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count > 0) {
            done += static_cast<std::size_t>(count);
            continue;
        }
        if (errno == EINTR) continue;
        if ((errno != EAGAIN && errno != EWOULDBLOCK) || !is_writable()) return -1;
    }
    return static_cast<ssize_t>(size);
}

void ConnectionStream::linger() {
    shutdown(socket_, SHUT_WR);
    const auto end = Clock::now() + lingering;
    for (std::size_t read = 0; read < lingeringBytes && Clock::now() < end && fill(end); read += to_) {
    }
}

// The addresses are nobody's business.
void ConnectionStream::get_remote_ip_and_port(std::string& ip, int& port) const {
    ip.clear();
    port = 0;
}

void ConnectionStream::get_local_ip_and_port(std::string& ip, int& port) const {
    ip.clear();
    port = 0;
}

}  // namespace frigana::http
