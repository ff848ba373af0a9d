// Texts over a stream socket between two processes of this program: a head with length and kind, then the bytes.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace frigana::workers {

using Clock = std::chrono::steady_clock;
using Deadline = Clock::time_point;

constexpr Deadline never = Deadline::max();

// A descriptor that is closed with its owner.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { reset(); }

    int get() const { return number_; }
    bool valid() const { return number_ >= 0; }
    int release();
    void reset(int number = -1);

  private:
    int number_ = -1;
};

// Something that can be told once, from any thread, and waited for in a poll.
class Flag {
  public:
    Flag();
    void raise();
    bool raised() const;
    int descriptor() const { return event_.get(); }

  private:
    Descriptor event_;
};

enum class Transfer { done, closed, late, interrupted, tooLarge };

// What a waiting side listens to beside its socket; null for nothing.
struct Interrupts {
    const Flag* first = nullptr;
    const Flag* second = nullptr;
};

// Sends one frame whole. The socket may be blocking or not.
Transfer sendFrame(int socket, std::uint32_t kind, std::string_view text, Deadline deadline = never,
                   Interrupts interrupts = {});

// Receives one frame whole. A frame longer than `largest` is not read: the connection is then of no more use.
Transfer receiveFrame(int socket, std::uint32_t& kind, std::string& text, std::size_t largest,
                      Deadline deadline = never, Interrupts interrupts = {});

// A frame as it goes over the wire, to send several at once.
void appendFrame(std::string& bytes, std::uint32_t kind, std::string_view text);
Transfer sendBytes(int socket, std::string_view bytes, Deadline deadline = never, Interrupts interrupts = {});

}  // namespace frigana::workers
