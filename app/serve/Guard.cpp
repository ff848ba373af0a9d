#include "Guard.h"

#include <arpa/inet.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>

#include "Complaint.h"

namespace frigana::serve {

namespace {

constexpr std::string_view cookieName = "frigana_token";

std::string smallLetters(std::string_view text) {
    std::string small(text);
    std::ranges::transform(small, small.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return small;
}

// "name:port", "[address]:port" or either without a port.
struct HostAndPort {
    std::string host;
    std::string_view port;
};

HostAndPort split(std::string_view text) {
    const std::size_t bracket = text.rfind(']');
    const std::size_t colon = text.find(':', bracket == text.npos ? 0 : bracket);
    if (colon == text.npos) return {smallLetters(text), {}};
    return {smallLetters(text.substr(0, colon)), text.substr(colon + 1)};
}

bool isAddress(std::string_view host) {
    std::array<unsigned char, sizeof(in6_addr)> bytes;
    if (host.starts_with('[') && host.ends_with(']'))
        return inet_pton(AF_INET6, std::string(host.substr(1, host.size() - 2)).c_str(), bytes.data()) == 1;
    return inet_pton(AF_INET, std::string(host).c_str(), bytes.data()) == 1;
}

// Takes the same time wherever the texts differ.
bool sameSecret(std::string_view given, std::string_view secret) {
    unsigned char difference = given.size() == secret.size() ? 0 : 1;
    for (std::size_t i = 0; i < secret.size(); ++i)
        difference |= static_cast<unsigned char>(secret[i] ^ (given.empty() ? 0 : given[i % given.size()]));
    return difference == 0;
}

std::string_view cookieValue(std::string_view cookies) {
    while (!cookies.empty()) {
        std::string_view cookie = cookies.substr(0, cookies.find(';'));
        cookies.remove_prefix(std::min(cookies.size(), cookie.size() + 1));
        while (cookie.starts_with(' ')) cookie.remove_prefix(1);
        if (cookie.starts_with(cookieName) && cookie.substr(cookieName.size()).starts_with('='))
            return cookie.substr(cookieName.size() + 1);
    }
    return {};
}

bool isJson(std::string_view type) {
    const std::string small = smallLetters(type.substr(0, type.find(';')));
    const std::string_view trimmed = std::string_view(small).substr(0, small.find_last_not_of(" \t") + 1);
    return trimmed == jsonType;
}

}  // namespace

bool isLoopback(std::string_view host) {
    return host == "localhost" || host == "::1" || host == "[::1]" || (isAddress(host) && host.starts_with("127."));
}

bool goodToken(std::string_view token) {
    const auto good = [](unsigned char letter) {
        return std::isalnum(letter) ||
               std::string_view("-._~").find(static_cast<char>(letter)) != std::string_view::npos;
    };
    return token.size() >= 16 && token.size() <= 256 && std::ranges::all_of(token, good);
}

Guard::Guard(const std::string& host, int port, const std::string& token)
    : host_(smallLetters(host)), port_(port), token_(token) {
    std::array<char, 256> name = {};
    if (gethostname(name.data(), name.size() - 1) == 0) machine_ = smallLetters(name.data());
}

bool Guard::knownHost(std::string_view text) const {
    const auto [host, port] = split(text);
    if (isLoopback(host_)) {
        const bool own = isLoopback(host) || host == host_;
        return own && (port == std::to_string(port_) || (port.empty() && port_ == 80));
    }
    // A name that is not this machine's may have been pointed here by a stranger's page; an address cannot be. The port
    // may be another where it is passed on.
    return isLoopback(host) || isAddress(host) || host == machine_ || host == host_;
}

std::optional<http::Answer> Guard::refusedByOrigin(const http::Request& request, std::string_view host) const {
    const auto origins = request.header("Origin");
    const std::string own = smallLetters(host);
    for (std::string_view origin : origins)
        if (const std::string small = smallLetters(origin); small != "http://" + own && small != "https://" + own)
            return complaint(403, "foreign_origin", "Pages of other sites get no answer.");
    // Browsers say this of every request; a link to the page from elsewhere is a navigation and welcome.
    const bool navigation = request.method == "GET" && !request.path.starts_with("/api/");
    for (std::string_view site : request.header("Sec-Fetch-Site"))
        if (site != "same-origin" && site != "none" && !navigation)
            return complaint(403, "foreign_origin", "Pages of other sites get no answer.");
    return {};
}

std::optional<http::Answer> Guard::refusedByToken(const http::Request& request) const {
    if (token_.empty()) return {};
    constexpr std::string_view bearer = "Bearer ";
    for (std::string_view value : request.header("Authorization"))
        if (value.starts_with(bearer) && sameSecret(value.substr(bearer.size()), token_)) return {};
    for (std::string_view value : request.header("Cookie"))
        if (sameSecret(cookieValue(value), token_)) return {};
    // The page is opened by an address with the token; a cookie takes its place, so that it does not stay in the
    // address.
    constexpr std::string_view parameter = "token=";
    if (request.method == "GET" && request.path == "/" && request.query.starts_with(parameter) &&
        sameSecret(std::string_view(request.query).substr(parameter.size()), token_))
        return http::Answer{
            303,
            "text/plain",
            "",
            {{"Location", "/"},
             {"Set-Cookie", std::string(cookieName) + "=" + token_ + "; Path=/; HttpOnly; SameSite=Strict"}},
            {}};
    http::Answer answer =
        complaint(401, "token_wanted", "This server asks for its token: Authorization: Bearer TOKEN.");
    answer.headers.emplace_back("WWW-Authenticate", "Bearer");
    return answer;
}

std::optional<http::Answer> Guard::refusal(const http::Request& request) const {
    const auto hosts = request.header("Host");
    if (hosts.size() != 1) return complaint(400, "no_host", "A request names its host, once.");
    if (!knownHost(hosts[0]))
        return complaint(421, "foreign_host", "This server is not " + std::string(hosts[0].substr(0, 255)) + ".");
    if (auto refused = refusedByOrigin(request, hosts[0])) return refused;
    return refusedByToken(request);
}

std::optional<http::Answer> refusalOfBody(const http::Request& request, std::size_t longest) {
    if (!request.header("Transfer-Encoding").empty())
        return complaint(411, "length_wanted", "A request says its length (Content-Length).");
    const auto lengths = request.header("Content-Length");
    std::size_t length = 0;
    if (!lengths.empty()) {
        const char* end = lengths[0].data() + lengths[0].size();
        const auto read = std::from_chars(lengths[0].data(), end, length);
        if (lengths.size() > 1 || read.ptr != end ||
            (read.ec != std::errc{} && read.ec != std::errc::result_out_of_range))
            return complaint(400, "bad_length", "Content-Length is one number.");
        if (read.ec == std::errc::result_out_of_range || length > longest)
            return complaint(413, "too_long",
                             "A request has at most " + std::to_string(longest) + " bytes; this one has " +
                                 std::string(lengths[0].substr(0, 40)) + ".");
    }
    if (request.method != "POST") {
        if (length == 0) return {};
        return complaint(400, "no_body_wanted", "A request by " + request.method + " has no body.");
    }
    if (lengths.empty()) return complaint(411, "length_wanted", "A request says its length (Content-Length).");
    if (!request.header("Content-Encoding").empty())
        return complaint(415, "plain_wanted", "The body of a request comes uncompressed.");
    const auto types = request.header("Content-Type");
    if (types.size() != 1 || !isJson(types[0]))
        return complaint(415, "json_wanted", "The body of a request is JSON (Content-Type: application/json).");
    return {};
}

}  // namespace frigana::serve
