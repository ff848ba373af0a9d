// The server of the transport: the library parses requests and writes answers; sockets, budgets, threads and the
// refusal of what is not wanted are ours.
#include <netinet/tcp.h>
#include <poll.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

#include "ConnectionStream.h"
#include "Connections.h"
#include "Http.h"

namespace frigana::http {

namespace {

constexpr int pendingConnections = 512;

// What the thread of a connection knows of the request in work.
struct InWork {
    ConnectionStream* stream = nullptr;
    bool understood = false;  // its head could be read
    bool last = false;        // the connection ends behind it
};
thread_local InWork inWork;

Request requestOf(const httplib::Request& from) {
    Request request{from.method, from.path, {}, {}, {}};
    if (const std::size_t mark = from.target.find('?'); mark != from.target.npos)
        request.query = from.target.substr(mark + 1);
    request.headers.assign(from.headers.begin(), from.headers.end());
    return request;
}

void give(const Answer& answer, httplib::Response& response) {
    response.status = answer.status;
    for (const auto& [name, value] : answer.headers) response.set_header(name, value);
    if (!answer.stream) {
        response.set_content(answer.body, answer.type);
        return;
    }
    response.set_chunked_content_provider(answer.type, [stream = answer.stream](std::size_t, httplib::DataSink& sink) {
        bool heard = true;
        stream([&](std::string_view piece) {
            heard = heard && !piece.empty() && sink.write(piece.data(), piece.size());
            return heard;
        });
        if (heard) sink.done();
        return heard;
    });
}

class HttpServer final : public http::Server, httplib::Server {
  public:
    explicit HttpServer(const Settings& settings);
    bool bind(std::string& complaint);
    int port() const override { return port_; }
    void serve(const Service& service) override;
    void stop(std::chrono::milliseconds patience) override;

  private:
    bool process_and_close_socket(socket_t socket) override;
    void converse(ConnectionStream& stream);
    template <class Prepare>
    bool answerNext(ConnectionStream& stream, bool& closed, const Prepare& prepare);
    void turnAway(int socket);
    void judge(const httplib::Request& from, httplib::Response& to, bool& refused);
    void finish(const httplib::Request& from, httplib::Response& to);

    Settings settings_;
    Service service_;
    int port_ = 0;
    OpenSockets sockets_;
    std::atomic<bool> stopping_ = false;
    std::mutex mutex_;
    std::condition_variable served_;
    bool begun_ = false, done_ = false;
};

HttpServer::HttpServer(const Settings& settings) : settings_(settings) {
    new_task_queue = [this] { return new Connections(settings_.connections); };
    set_payload_max_length(settings.bodyBytes);
    set_keep_alive_max_count(settings.requestsPerConnection);
    set_keep_alive_timeout(std::chrono::duration_cast<std::chrono::seconds>(settings.idle).count());
    httplib::Headers everywhere(settings.everywhere.begin(), settings.everywhere.end());
    set_default_headers(everywhere);
    // No second server shares the port.
    set_socket_options([](socket_t socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });

    const auto judged = [this](const httplib::Request& request, httplib::Response& response) {
        bool refused = false;
        judge(request, response, refused);
        return refused;
    };
    set_expect_100_continue_handler([judged](const httplib::Request& request, httplib::Response& response) {
        return judged(request, response) ? response.status : 100;
    });
    set_pre_routing_handler([this, judged](const httplib::Request& request, httplib::Response& response) {
        if (judged(request, response)) return httplib::Server::HandlerResponse::Handled;
        if (request.method == "POST") {
            inWork.stream->beginBody();
            return httplib::Server::HandlerResponse::Unhandled;
        }
        give(service_.answer(requestOf(request)), response);
        return httplib::Server::HandlerResponse::Handled;
    });
    Post(R"([^]*)", [this](const httplib::Request& from, httplib::Response& response) {
        Request request = requestOf(from);
        request.body = from.body;
        give(service_.answer(request), response);
    });
    set_error_handler([this](const httplib::Request&, httplib::Response& response) {
        if (!response.body.empty() || response.content_provider_) return;
        // What the library refuses by itself: its words would be empty.
        inWork.last = true;
        give(service_.complaint(response.status, "the request is not understood"), response);
    });
    set_exception_handler([this](const httplib::Request&, httplib::Response& response, const std::exception_ptr&) {
        response.headers.clear();
        give(service_.complaint(500, "the server could not answer"), response);
    });
    set_post_routing_handler(
        [this](const httplib::Request& request, httplib::Response& response) { finish(request, response); });
}

// A request that is refused by its head may have a body, which is not read: the connection ends with the answer.
void HttpServer::judge(const httplib::Request& from, httplib::Response& to, bool& refused) {
    const std::optional<Answer> refusal = service_.admit(requestOf(from));
    refused = refusal.has_value();
    if (!refused) return;
    inWork.last = inWork.last || from.has_header("Content-Length") || from.has_header("Transfer-Encoding");
    give(*refusal, to);
}

void HttpServer::finish(const httplib::Request& request, httplib::Response& response) {
    if (!inWork.understood || stopping_) inWork.last = true;
    if (!inWork.last || request.get_header_value("Connection") == "close") return;
    response.headers.erase("Keep-Alive");
    response.headers.erase("Connection");
    response.set_header("Connection", "close");
}

bool HttpServer::bind(std::string& complaint) {
    errno = 0;
    port_ = settings_.port == 0 ? bind_to_any_port(settings_.host)
                                : (bind_to_port(settings_.host, settings_.port) ? settings_.port : -1);
    if (port_ > 0) {
        // More connections may arrive at once than the library provides for.
        ::listen(svr_sock_, pendingConnections);
        return true;
    }
    const int error = errno;
    complaint = settings_.host + " port " + std::to_string(settings_.port) + ": " +
                (error != 0 ? std::generic_category().message(error) : "there is no such address on this machine");
    return false;
}

void HttpServer::serve(const Service& service) {
    service_ = service;
    {
        const std::lock_guard lock(mutex_);
        begun_ = !stopping_;
        if (!begun_) return;
    }
    listen_after_bind();
    const std::lock_guard lock(mutex_);
    done_ = true;
    served_.notify_all();
}

void HttpServer::stop(std::chrono::milliseconds patience) {
    stopping_ = true;
    std::unique_lock lock(mutex_);
    // The library stops what runs, and only that.
    while (begun_ && !done_ && !is_running()) served_.wait_for(lock, std::chrono::milliseconds(1));
    if (!begun_ || done_) return;
    httplib::Server::stop();
    sockets_.shutAll(SHUT_RD);
    if (!served_.wait_for(lock, patience, [this] { return done_; })) sockets_.shutAll(SHUT_RDWR);
}

// ------------------------------------------------------------------------------------------------------- a connection

void HttpServer::turnAway(int socket) {
    const Answer answer = service_.complaint(503, "there are too many connections");
    const std::string text =
        "HTTP/1.1 503 Service Unavailable\r\nConnection: close\r\nRetry-After: 1\r\nContent-Type: " + answer.type +
        "\r\nContent-Length: " + std::to_string(answer.body.size()) + "\r\n\r\n" + answer.body;
    [[maybe_unused]] const ssize_t sent = send(socket, text.data(), text.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    shutdown(socket, SHUT_WR);
}

template <class Prepare>
bool HttpServer::answerNext(ConnectionStream& stream, bool& closed, const Prepare& prepare) {
    if constexpr (requires { this->process_request(stream, false, closed, prepare); }) {
        return process_request(stream, false, closed, prepare);
    } else {
        // Later versions of the library want to be told the addresses of both ends.
        std::string remote, local;
        int remotePort = 0, localPort = 0;
        stream.get_remote_ip_and_port(remote, remotePort);
        stream.get_local_ip_and_port(local, localPort);
        return process_request(stream, remote, remotePort, local, localPort, false, closed, prepare);
    }
}

void HttpServer::converse(ConnectionStream& stream) {
    for (std::size_t count = 1; !stopping_ && stream.awaitRequest() && !stopping_; ++count) {
        inWork = {&stream, false, count >= settings_.requestsPerConnection};
        bool closed = false;
        const auto prepare = [](httplib::Request& request) {
            inWork.understood = true;
            // Answers go as they are: neither compressed nor in parts.
            request.headers.erase("Accept-Encoding");
            request.headers.erase("Range");
            request.ranges.clear();
        };
        const bool answered = answerNext(stream, closed, prepare);
        if (answered && inWork.last) stream.linger();
        if (!answered || closed || inWork.last) return;
    }
}

bool HttpServer::process_and_close_socket(socket_t socket) {
    if (Connections::turnedAway) {
        turnAway(socket);
    } else {
        const int yes = 1;
        setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
        sockets_.add(socket);
        ConnectionStream stream(socket, settings_);
        converse(stream);
        sockets_.remove(socket);
    }
    close(socket);
    return true;
}

}  // namespace

}  // namespace frigana::http

extern "C" __attribute__((visibility("default"))) frigana::http::Server* friganaMakeServer(
    const frigana::http::Settings& settings, std::string& complaint) {
    auto server = std::make_unique<frigana::http::HttpServer>(settings);
    return server->bind(complaint) ? server.release() : nullptr;
}
