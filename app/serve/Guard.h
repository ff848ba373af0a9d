// Who may ask: judged by the head of a request, before anything else is read of it.
//
// A page of another site in the same browser, a name that was made to point to this machine, another machine: none of
// them gets an answer. On the loopback the Host of a request names the loopback; elsewhere every request carries the
// token.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Http.h"

namespace frigana::serve {

// The address is this machine's own, reached by nobody else.
bool isLoopback(std::string_view host);

// A token is 16 to 256 letters, digits, and -._~
bool goodToken(std::string_view token);

class Guard {
  public:
    // `token` is empty where none is asked for.
    Guard(const std::string& host, int port, const std::string& token);

    // The answer that refuses who asks, or the one that takes the token from the address of the page into a cookie.
    std::optional<http::Answer> refusal(const http::Request& request) const;

  private:
    bool knownHost(std::string_view host) const;
    std::optional<http::Answer> refusedByOrigin(const http::Request& request, std::string_view host) const;
    std::optional<http::Answer> refusedByToken(const http::Request& request) const;

    std::string host_;
    int port_;
    std::string token_;
    std::string machine_;  // its name, in small letters
};

// The answer that refuses a request by what its head says of its body: a POST brings JSON of a length that it tells,
// nothing else brings anything.
std::optional<http::Answer> refusalOfBody(const http::Request& request, std::size_t longest);

}  // namespace frigana::serve
