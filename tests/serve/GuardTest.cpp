// Who may ask, head by head.
#include "Guard.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace frigana::serve {
namespace {

http::Request head(const std::string& method, const std::string& path, http::Headers headers) {
    return {method, path, "", std::move(headers), ""};
}

int statusOf(const std::optional<http::Answer>& refusal) {
    return refusal ? refusal->status : 0;
}

struct Head {
    const char* what;
    http::Headers headers;
    int status;  // 0: admitted
};

TEST(Guard, OnTheLoopbackTheHostIsTheLoopback) {
    const Guard guard("127.0.0.1", 8420, "");
    const Head heads[] = {
        {"number", {{"Host", "127.0.0.1:8420"}}, 0},
        {"name", {{"Host", "localhost:8420"}}, 0},
        {"capitals", {{"host", "LocalHost:8420"}}, 0},
        {"sixth version", {{"Host", "[::1]:8420"}}, 0},
        {"none", {}, 400},
        {"two", {{"Host", "127.0.0.1:8420"}, {"Host", "127.0.0.1:8420"}}, 400},
        {"empty", {{"Host", ""}}, 421},
        {"other port", {{"Host", "127.0.0.1:80"}}, 421},
        {"no port", {{"Host", "127.0.0.1"}}, 421},
        {"other site", {{"Host", "frigana.example:8420"}}, 421},
        {"other address", {{"Host", "192.168.0.1:8420"}}, 421},
        {"name that begins with the loopback", {{"Host", "127.0.0.1.example:8420"}}, 421},
        {"name that begins with localhost", {{"Host", "localhost.example:8420"}}, 421},
        {"name before the loopback", {{"Host", "evil@127.0.0.1:8420"}}, 421},
        {"unlikely bytes", {{"Host", "\x80\xff:8420"}}, 421},
    };
    for (const Head& row : heads)
        EXPECT_EQ(statusOf(guard.refusal(head("GET", "/api/version", row.headers))), row.status) << row.what;
}

TEST(Guard, PagesOfOtherSitesGetNoAnswer) {
    const Guard guard("127.0.0.1", 8420, "");
    const std::pair<std::string, std::string> host = {"Host", "127.0.0.1:8420"};
    const Head heads[] = {
        {"own", {host, {"Origin", "http://127.0.0.1:8420"}, {"Sec-Fetch-Site", "same-origin"}}, 0},
        {"typed", {host, {"Sec-Fetch-Site", "none"}}, 0},
        {"other site", {host, {"Origin", "http://evil.example"}}, 403},
        {"other port", {host, {"Origin", "http://127.0.0.1:8421"}}, 403},
        {"same machine by another name", {host, {"Origin", "http://localhost:8420"}}, 403},
        {"none to tell", {host, {"Origin", "null"}}, 403},
        {"own and other", {host, {"Origin", "http://127.0.0.1:8420"}, {"Origin", "http://evil.example"}}, 403},
        {"other site without origin", {host, {"Sec-Fetch-Site", "cross-site"}}, 403},
        {"other port without origin", {host, {"Sec-Fetch-Site", "same-site"}}, 403},
    };
    for (const Head& row : heads)
        for (const char* method : {"GET", "POST"})
            EXPECT_EQ(statusOf(guard.refusal(head(method, "/api/run", row.headers))), row.status) << row.what;
    // A link on another site leads to the page.
    EXPECT_FALSE(guard.refusal(head("GET", "/", {host, {"Sec-Fetch-Site", "cross-site"}})));
}

TEST(Guard, ElsewhereTheTokenIsAskedFor) {
    const std::string token = "0123456789abcdefXYZ";
    const Guard guard("0.0.0.0", 8420, token);
    const std::pair<std::string, std::string> host = {"Host", "192.168.0.7:8420"};
    const Head heads[] = {
        {"token", {host, {"Authorization", "Bearer " + token}}, 0},
        {"cookie", {host, {"Cookie", "a=b; frigana_token=" + token + "; c=d"}}, 0},
        {"port passed on", {{"Host", "192.168.0.7:9000"}, {"Authorization", "Bearer " + token}}, 0},
        {"none", {host}, 401},
        {"empty", {host, {"Authorization", "Bearer "}}, 401},
        {"part", {host, {"Authorization", "Bearer 0123456789abcdef"}}, 401},
        {"twice", {host, {"Authorization", "Bearer " + token + token}}, 401},
        {"other manner", {host, {"Authorization", "Basic " + token}}, 401},
        {"cookie of another name", {host, {"Cookie", "xfrigana_token=" + token}}, 401},
        {"strange name", {{"Host", "rebound.example:8420"}, {"Authorization", "Bearer " + token}}, 421},
    };
    for (const Head& row : heads)
        EXPECT_EQ(statusOf(guard.refusal(head("GET", "/api/version", row.headers))), row.status) << row.what;
}

TEST(Guard, TheTokenGoesFromTheAddressIntoACookie) {
    const std::string token = "0123456789abcdefXYZ";
    const Guard guard("0.0.0.0", 8420, token);
    http::Request request = head("GET", "/", {{"Host", "192.168.0.7:8420"}});
    request.query = "token=" + token;
    const auto answer = guard.refusal(request);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 303);
    EXPECT_EQ(answer->headers[0], (std::pair<std::string, std::string>("Location", "/")));
    EXPECT_EQ(answer->headers[1].second, "frigana_token=" + token + "; Path=/; HttpOnly; SameSite=Strict");
    request.query = "token=0123456789abcdefXYz";
    EXPECT_EQ(statusOf(guard.refusal(request)), 401);
}

TEST(Guard, ATokenIsLongAndPlain) {
    EXPECT_TRUE(goodToken("0123456789abcdef"));
    EXPECT_TRUE(goodToken(std::string(256, 'a')));
    for (const std::string& bad : {std::string(), std::string("0123456789abcde"), std::string(257, 'a'),
                                   std::string("0123456789abcde;"), std::string("0123456789 abcdef")})
        EXPECT_FALSE(goodToken(bad)) << bad;
}

TEST(Guard, KnowsTheLoopback) {
    for (const char* own : {"127.0.0.1", "127.1.2.3", "localhost", "::1", "[::1]"}) EXPECT_TRUE(isLoopback(own)) << own;
    for (const char* other : {"0.0.0.0", "::", "192.168.0.1", "127.example", "example", ""})
        EXPECT_FALSE(isLoopback(other)) << other;
}

TEST(Guard, ABodyIsJsonOfToldLength) {
    const std::pair<std::string, std::string> json = {"Content-Type", "application/json"},
                                              length = {"Content-Length", "10"};
    struct Row {
        const char* what;
        const char* method;
        http::Headers headers;
        int status;
    };
    const Row rows[] = {
        {"json", "POST", {json, length}, 0},
        {"charset", "POST", {{"Content-Type", "Application/JSON ; charset=utf-8"}, length}, 0},
        {"longest", "POST", {json, {"Content-Length", "1000"}}, 0},
        {"too long", "POST", {json, {"Content-Length", "1001"}}, 413},
        {"beyond all numbers", "POST", {json, {"Content-Length", "99999999999999999999999"}}, 413},
        {"negative", "POST", {json, {"Content-Length", "-1"}}, 400},
        {"no number", "POST", {json, {"Content-Length", "ten"}}, 400},
        {"more than a number", "POST", {json, {"Content-Length", "10 "}}, 400},
        {"two lengths", "POST", {json, length, {"Content-Length", "11"}}, 400},
        {"no length", "POST", {json}, 411},
        {"pieces", "POST", {json, {"Transfer-Encoding", "chunked"}}, 411},
        {"pieces and length", "POST", {json, length, {"Transfer-Encoding", "chunked"}}, 411},
        {"compressed", "POST", {json, length, {"Content-Encoding", "gzip"}}, 415},
        {"form", "POST", {{"Content-Type", "application/x-www-form-urlencoded"}, length}, 415},
        {"parts", "POST", {{"Content-Type", "multipart/form-data; boundary=x"}, length}, 415},
        {"text", "POST", {{"Content-Type", "text/plain"}, length}, 415},
        {"no type", "POST", {length}, 415},
        {"two types", "POST", {json, json, length}, 415},
        {"nothing", "GET", {}, 0},
        {"length of nothing", "GET", {{"Content-Length", "0"}}, 0},
        {"body of a GET", "GET", {length}, 400},
        {"body of a HEAD", "HEAD", {length}, 400},
    };
    for (const Row& row : rows)
        EXPECT_EQ(statusOf(refusalOfBody(head(row.method, "/api/run", row.headers), 1000)), row.status) << row.what;
}

}  // namespace
}  // namespace frigana::serve
