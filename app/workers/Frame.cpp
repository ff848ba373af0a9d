#include "Frame.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <system_error>
#include <utility>

namespace frigana::workers {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this != &other) reset(other.release());
    return *this;
}

int Descriptor::release() {
    return std::exchange(number_, -1);
}

void Descriptor::reset(int number) {
    if (number_ >= 0) close(number_);
    number_ = number;
}

Flag::Flag() : event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!event_.valid()) throw std::system_error(errno, std::generic_category(), "eventfd");
}

void Flag::raise() {
    const std::uint64_t one = 1;
    // It fails only where the counter is full, and then the flag is up.
    [[maybe_unused]] const ssize_t written = write(event_.get(), &one, sizeof one);
}

bool Flag::raised() const {
    pollfd waiting{event_.get(), POLLIN, 0};
    return poll(&waiting, 1, 0) == 1;
}

namespace {

struct Head {
    std::uint32_t length;
    std::uint32_t kind;
};

int millisecondsTo(Deadline deadline) {
    if (deadline == never) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return left <= 0 ? 0 : static_cast<int>(std::min<long long>(left, INT_MAX));
}

// Waits until the socket is ready for `events`, or says what came before.
Transfer await(int socket, short events, Deadline deadline, Interrupts interrupts) {
    std::array<pollfd, 3> waiting{{{socket, events, 0}, {-1, POLLIN, 0}, {-1, POLLIN, 0}}};
    if (interrupts.first != nullptr) waiting[1].fd = interrupts.first->descriptor();
    if (interrupts.second != nullptr) waiting[2].fd = interrupts.second->descriptor();
    for (;;) {
        const int count = poll(waiting.data(), waiting.size(), millisecondsTo(deadline));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return Transfer::closed;
        if (waiting[0].revents != 0) return Transfer::done;
        if (count > 0) return Transfer::interrupted;
        return Transfer::late;
    }
}

Transfer receiveBytes(int socket, char* bytes, std::size_t length, Deadline deadline, Interrupts interrupts) {
    for (std::size_t done = 0; done < length;) {
        const ssize_t count = recv(socket, bytes + done, length - done, MSG_DONTWAIT);
        if (count > 0) {
            done += static_cast<std::size_t>(count);
            continue;
        }
        if (count == 0) return Transfer::closed;
        if (errno == EINTR) continue;
        if (errno != EAGAIN && errno != EWOULDBLOCK) return Transfer::closed;
        if (const Transfer end = await(socket, POLLIN, deadline, interrupts); end != Transfer::done) return end;
    }
    return Transfer::done;
}

}  // namespace

Transfer sendBytes(int socket, std::string_view bytes, Deadline deadline, Interrupts interrupts) {
    while (!bytes.empty()) {
        const ssize_t count = send(socket, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
            continue;
        }
        if (errno == EINTR) continue;
        if (errno != EAGAIN && errno != EWOULDBLOCK) return Transfer::closed;
        if (const Transfer end = await(socket, POLLOUT, deadline, interrupts); end != Transfer::done) return end;
    }
    return Transfer::done;
}

void appendFrame(std::string& bytes, std::uint32_t kind, std::string_view text) {
    const Head head{static_cast<std::uint32_t>(text.size()), kind};
    bytes.append(reinterpret_cast<const char*>(&head), sizeof head);
    bytes.append(text);
}

Transfer sendFrame(int socket, std::uint32_t kind, std::string_view text, Deadline deadline, Interrupts interrupts) {
    if (text.size() > UINT32_MAX) return Transfer::tooLarge;
    std::string bytes;
    bytes.reserve(sizeof(Head) + text.size());
    appendFrame(bytes, kind, text);
    return sendBytes(socket, bytes, deadline, interrupts);
}

Transfer receiveFrame(int socket, std::uint32_t& kind, std::string& text, std::size_t largest, Deadline deadline,
                      Interrupts interrupts) {
    Head head;
    Transfer end = receiveBytes(socket, reinterpret_cast<char*>(&head), sizeof head, deadline, interrupts);
    if (end != Transfer::done) return end;
    if (head.length > largest) return Transfer::tooLarge;
    kind = head.kind;
    text.resize(head.length);
    return receiveBytes(socket, text.data(), text.size(), deadline, interrupts);
}

}  // namespace frigana::workers
