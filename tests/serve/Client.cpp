#include "Client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace frigana::test {

using Clock = std::chrono::steady_clock;

std::string Reply::header(std::string_view name) const {
    const std::string start = "\r\n" + std::string(name) + ": ";
    const auto same = [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); };
    const auto found = std::search(head.begin(), head.end(), start.begin(), start.end(), same);
    if (found == head.end()) return "";
    const auto from = found + static_cast<long>(start.size());
    return {from, std::find(from, head.end(), '\r')};
}

Client::Client(int port) : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int yes = 1;
    setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) close();
}

Client::~Client() {
    close();
}

void Client::close() {
    if (socket_ >= 0) ::close(socket_);
    socket_ = -1;
}

bool Client::send(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool Client::fill(Clock::time_point deadline) {
    pollfd waiting{socket_, POLLIN, 0};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (poll(&waiting, 1, static_cast<int>(std::max<long long>(left, 0))) != 1) return false;
    char piece[65536];
    const ssize_t count = recv(socket_, piece, sizeof piece, 0);
    if (count <= 0) return false;
    arrived_.append(piece, static_cast<std::size_t>(count));
    return true;
}

Reply Client::receive(std::chrono::milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    Reply reply;
    std::size_t end;
    while ((end = arrived_.find("\r\n\r\n")) == arrived_.npos)
        if (!fill(deadline)) return reply;
    reply.head = arrived_.substr(0, end + 2);
    arrived_.erase(0, end + 4);
    if (reply.head.starts_with("HTTP/1.1 ")) reply.status = std::atoi(reply.head.c_str() + 9);
    if (reply.header("Transfer-Encoding") == "chunked") {
        for (;;) {
            while ((end = arrived_.find("\r\n")) == arrived_.npos)
                if (!fill(deadline)) return reply;
            const std::size_t length = std::stoul(arrived_.substr(0, end), nullptr, 16);
            while (arrived_.size() < end + 2 + length + 2)
                if (!fill(deadline)) return reply;
            reply.body += arrived_.substr(end + 2, length);
            arrived_.erase(0, end + 2 + length + 2);
            if (length == 0) return reply;
        }
    }
    const std::string told = reply.header("Content-Length");
    const std::size_t length = told.empty() ? 0 : std::stoul(told);
    while (arrived_.size() < length)
        if (!fill(deadline)) break;
    reply.body = arrived_.substr(0, length);
    arrived_.erase(0, length);
    return reply;
}

bool Client::closedWithin(std::chrono::milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    while (fill(deadline)) {
    }
    return Clock::now() < deadline;
}

std::string requestText(int port, const std::string& method, const std::string& target, const std::string& body,
                        const std::string& headers) {
    std::string text = method + " " + target + " HTTP/1.1\r\n" + headers;
    if (headers.find("Host:") == headers.npos) text += "Host: 127.0.0.1:" + std::to_string(port) + "\r\n";
    if (headers.find("Content-Length:") == headers.npos && (!body.empty() || method == "POST"))
        text += "Content-Length: " + std::to_string(body.size()) + "\r\n";
    return text + "\r\n" + body;
}

Reply ask(int port, const std::string& method, const std::string& target, const std::string& body,
          const std::string& headers) {
    Client client(port);
    client.send(requestText(port, method, target, body, headers + "Connection: close\r\n"));
    return client.receive();
}

Reply post(int port, const std::string& target, const std::string& json) {
    return ask(port, "POST", target, json, "Content-Type: application/json\r\n");
}

}  // namespace frigana::test
