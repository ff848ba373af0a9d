// A client that sends what it is told, byte for byte, and reads what comes.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <string_view>

namespace frigana::test {

struct Reply {
    int status = 0;  // 0: there was no answer
    std::string head, body;

    std::string header(std::string_view name) const;  // empty if it is not there
};

class Client {
  public:
    explicit Client(int port);
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    bool connected() const { return socket_ >= 0; }
    // False when the other side has closed.
    bool send(std::string_view bytes);
    // One answer, by its length or in pieces.
    Reply receive(std::chrono::milliseconds patience = std::chrono::seconds(10));
    // Whether the other side closes within this time, what it still sends passed over.
    bool closedWithin(std::chrono::milliseconds patience);
    void close();

  private:
    bool fill(std::chrono::steady_clock::time_point deadline);

    int socket_ = -1;
    std::string arrived_;
};

// One request on a connection of its own. `headers` are whole lines; Host and Content-Length are added unless they are
// among them.
Reply ask(int port, const std::string& method, const std::string& target, const std::string& body = "",
          const std::string& headers = "");
Reply post(int port, const std::string& target, const std::string& json);
std::string requestText(int port, const std::string& method, const std::string& target, const std::string& body = "",
                        const std::string& headers = "");

}  // namespace frigana::test
