// The transport of the server: HTTP/1.1 over TCP with limits on sizes, counts and times. What is asked and answered is
// not its business. It is a module of its own, loaded when a server starts, so that no other command pays for its
// libraries.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace frigana::http {

using Headers = std::vector<std::pair<std::string, std::string>>;

struct Request {
    std::string method;
    std::string path;   // decoded, without what follows the question mark
    std::string query;  // what follows the question mark, as it came
    Headers headers;
    std::string body;

    // The values of a header, in any case of its letters.
    std::vector<std::string_view> header(std::string_view name) const;
};

// Takes a piece of an answer; false when nobody listens any more.
using Write = std::function<bool(std::string_view)>;

struct Answer {
    int status = 200;
    std::string type;  // of the content
    std::string body;
    Headers headers;
    std::function<void(const Write&)> stream;  // writes the content piece by piece, in place of the body
};

struct Settings {
    std::string host = "127.0.0.1";
    int port = 0;  // 0: the system chooses
    std::size_t connections = 256;
    std::size_t headerBytes = std::size_t{32} * 1024;  // of one request
    std::size_t bodyBytes = std::size_t{1024} * 1024;
    std::size_t requestsPerConnection = 1000;
    std::chrono::milliseconds idle{15'000};       // between two requests of a connection
    std::chrono::milliseconds arrival{10'000};    // from the first to the last byte of a request
    std::chrono::milliseconds departure{10'000};  // of a piece of an answer that is not taken
    Headers everywhere;                           // headers of every answer
};

struct Service {
    // Judges a request by its head, before its body is read: an answer refuses it.
    std::function<std::optional<Answer>(const Request&)> admit;
    std::function<Answer(const Request&)> answer;
    // The body of an answer that the transport itself gives: status and text.
    std::function<Answer(int, std::string_view)> complaint;
};

class Server {
  public:
    virtual ~Server() = default;
    virtual int port() const = 0;
    // Serves until it is stopped, and returns when all answers are given or given up.
    virtual void serve(const Service& service) = 0;
    // Takes no more requests and ends idle connections; answers in work have `patience`. From any thread, before
    // serve() or while it serves.
    virtual void stop(std::chrono::milliseconds patience) = 0;
};

// Binds the port. Null with a complaint where that cannot be.
using MakeServer = Server* (*)(const Settings&, std::string& complaint);

// The transport's module, loaded from beside the program. Null with a complaint where it is not there.
MakeServer loadTransport(std::string& complaint);

inline constexpr const char* makeServerName = "friganaMakeServer";

}  // namespace frigana::http
