// One connection as the library of the transport reads and writes it, with a budget of bytes and time for each request.
#pragma once

#include <httplib.h>

#include <array>
#include <atomic>
#include <chrono>

#include "Http.h"

namespace frigana::http {

class ConnectionStream final : public httplib::Stream {
  public:
    ConnectionStream(int socket, const Settings& settings) : socket_(socket), settings_(settings) {}

    // Waits for the first byte of the next request; false when none comes.
    bool awaitRequest();
    // The head of a request is read; its body may follow.
    void beginBody() { budget_ = settings_.bodyBytes + bufferSize; }
    // Says goodbye: what the other side still sends is read for a while, or it would not hear the answer.
    void linger();

    bool is_readable() const override;
    bool is_writable() const override;
    ssize_t read(char* bytes, size_t size) override;
    ssize_t write(const char* bytes, size_t size) override;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    socket_t socket() const override { return socket_; }

  private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::size_t bufferSize = 8192;

    bool await(short events, Clock::time_point deadline) const;
    bool fill(Clock::time_point deadline);

    int socket_;
    const Settings& settings_;
    std::array<char, bufferSize> buffer_;
    std::size_t from_ = 0, to_ = 0;
    std::size_t budget_ = 0;  // bytes that the request may still bring
    Clock::time_point arrival_;
};

}  // namespace frigana::http
