// The server as a user starts it: what it answers, refuses and survives.
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <thread>

#include "Client.h"
#include "ServedProgram.h"
#include "TemporaryFolder.h"

namespace frigana {
namespace {

using namespace std::chrono_literals;
using test::ask;
using test::Client;
using test::post;
using test::Reply;
using test::requestText;
using test::ServedProgram;

// Every complaint is JSON with a code and a text.
std::string codeOf(const Reply& reply) {
    const auto content = nlohmann::json::parse(reply.body, nullptr, false);
    if (content.is_discarded() || !content.contains("error")) return "no complaint: " + reply.body;
    return content["error"].value("text", "").empty() ? "no text" : content["error"].value("code", "no code");
}

// One server for all tests that leave it as it was.
struct Served : testing::Test {
    static void SetUpTestSuite() { program = new ServedProgram({"--jobs", "2"}); }
    static void TearDownTestSuite() {
        double seconds = 0;
        EXPECT_EQ(program->stop(SIGTERM, seconds), 0) << program->said();
        EXPECT_LT(seconds, 1.0);
        delete program;
    }
    void SetUp() override { ASSERT_GT(port(), 0) << program->said(); }
    void TearDown() override {
        const Reply reply = ask(port(), "GET", "/api/health");
        EXPECT_EQ(reply.status, 200) << "the server is not well afterwards";
    }
    static int port() { return program->port(); }

    static ServedProgram* program;
};
ServedProgram* Served::program = nullptr;

TEST_F(Served, TellsItsHealthAndItsVersion) {
    const auto health = nlohmann::json::parse(ask(port(), "GET", "/api/health").body);
    EXPECT_EQ(health["status"], "ok");
    EXPECT_EQ(health["workers"], 2);
    const auto version = nlohmann::json::parse(ask(port(), "GET", "/api/version").body);
    EXPECT_EQ(version["program"], "frigana");
    EXPECT_FALSE(version["version"].get<std::string>().empty());
}

TEST_F(Served, EveryAnswerForbidsWhatThePageDoesNotNeed) {
    for (const char* path : {"/", "/api/health", "/nothing"}) {
        const Reply reply = ask(port(), "GET", path);
        const std::string policy = reply.header("Content-Security-Policy");
        EXPECT_NE(policy.find("default-src 'none'"), policy.npos) << path;
        EXPECT_NE(policy.find("frame-ancestors 'none'"), policy.npos) << path;
        EXPECT_EQ(policy.find("unsafe"), policy.npos) << path;
        EXPECT_EQ(policy.find("http"), policy.npos) << path;
        EXPECT_EQ(reply.header("X-Content-Type-Options"), "nosniff") << path;
        EXPECT_EQ(reply.header("Access-Control-Allow-Origin"), "") << path;
        EXPECT_EQ(reply.header("Server"), "") << path;
    }
}

TEST_F(Served, ThePageIsInTheProgramAndKnownAgain) {
    const Reply first = ask(port(), "GET", "/");
    EXPECT_EQ(first.status, 200);
    EXPECT_EQ(first.header("Content-Type"), "text/html; charset=utf-8");
    EXPECT_NE(first.body.find("<title>Frigana"), first.body.npos);
    EXPECT_EQ(first.body.find("<script>"), first.body.npos);
    EXPECT_EQ(first.body.find("style="), first.body.npos);
    const std::string tag = first.header("ETag");
    ASSERT_FALSE(tag.empty());
    const Reply again = ask(port(), "GET", "/", "", "If-None-Match: " + tag + "\r\n");
    EXPECT_EQ(again.status, 304);
    EXPECT_EQ(again.body, "");
    EXPECT_EQ(ask(port(), "GET", "/index.html").body, first.body);
    EXPECT_EQ(ask(port(), "GET", "/?anything=that&is=there").body, first.body);
}

TEST_F(Served, EveryMethodHasAClearAnswer) {
    struct Row {
        const char* method;
        const char* path;
        int status;
        const char* code;
    };
    const Row rows[] = {
        {"GET", "/api/health", 200, nullptr},
        {"OPTIONS", "/api/health", 204, nullptr},
        {"POST", "/api/health", 405, "unknown_method"},
        {"PUT", "/api/health", 405, "unknown_method"},
        {"DELETE", "/api/health", 405, "unknown_method"},
        {"PATCH", "/api/health", 405, "unknown_method"},
        {"TRACE", "/api/health", 405, "unknown_method"},
        {"CONNECT", "/api/health", 405, "unknown_method"},
        {"PRI", "/api/health", 405, "unknown_method"},
        {"GET", "/api/nothing", 404, "unknown_path"},
        {"POST", "/api/nothing", 404, "unknown_path"},
        {"OPTIONS", "*", 404, "unknown_path"},
        {"CONNECT", "127.0.0.1:22", 404, "unknown_path"},
        {"DELETE", "/", 405, "unknown_method"},
        {"BREW", "/api/health", 400, "refused"},
        {"get", "/api/health", 400, "refused"},
    };
    for (const Row& row : rows) {
        const Reply reply = ask(port(), row.method, row.path);
        EXPECT_EQ(reply.status, row.status) << row.method << ' ' << row.path;
        if (row.code != nullptr) {
            EXPECT_EQ(codeOf(reply), row.code) << row.method << ' ' << row.path;
        }
        if (row.status == 405 || row.status == 204) {
            EXPECT_NE(reply.header("Allow").find("GET"), std::string::npos) << row.method;
        }
    }
    Client client(port());
    client.send(requestText(port(), "HEAD", "/api/health"));
    client.send(requestText(port(), "GET", "/api/version"));
    Reply reply = client.receive();
    EXPECT_EQ(reply.status, 200);
    EXPECT_NE(reply.header("Content-Length"), "0");
}

TEST_F(Served, NoPathLeadsOutOfThePage) {
    for (const char* path :
         {"/../../../etc/passwd", "/..%2f..%2fetc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "/etc/passwd", "//etc/passwd",
          "/index.html/../../etc/passwd", "/index.html%00.js", "/\\..\\..\\etc\\passwd", "/./index.html",
          "/api/../index.html", "/%c0%ae%c0%ae/etc/passwd", "/%", "/%zz", "http://127.0.0.1/etc/passwd",
          "file:///etc/passwd"}) {
        const Reply reply = ask(port(), "GET", path);
        EXPECT_TRUE(reply.status == 404 || reply.status == 400) << path << ' ' << reply.status;
        EXPECT_EQ(reply.body.find("root:"), std::string::npos) << path;
    }
}

TEST_F(Served, BrokenHeadsAreRefusedAndEndTheirConnection) {
    const std::string host = "Host: 127.0.0.1:" + std::to_string(port()) + "\r\n";
    const std::string long9000(9000, 'x');
    std::string manyHeaders;
    for (int i = 0; i < 4000; ++i) manyHeaders += "X-" + std::to_string(i) + ": y\r\n";
    for (const std::string& bytes :
         {std::string("\r\n\r\n"), std::string("GET\r\n\r\n"), std::string("GET /\r\n\r\n"),
          std::string("GET / HTTP/9.9\r\n") + host + "\r\n",
          std::string("GET /" + long9000 + " HTTP/1.1\r\n") + host + "\r\n",
          std::string("GET / HTTP/1.1\r\nX: " + long9000 + "\r\n") + host + "\r\n",
          std::string("GET / HTTP/1.1\r\n") + host + manyHeaders + "\r\n",
          std::string("\x16\x03\x01\x02\x00\x01\xfc", 7) + "\r\n\r\n", std::string(70'000, 'A') + "\r\n\r\n"}) {
        Client client(port());
        client.send(bytes);
        const Reply reply = client.receive(3s);
        EXPECT_TRUE(reply.status == 0 || (reply.status >= 400 && reply.status < 500))
            << bytes.substr(0, 40) << reply.head;
        if (reply.status != 0) {
            EXPECT_EQ(codeOf(reply).find(' '), std::string::npos) << bytes.substr(0, 40);
        }
        EXPECT_TRUE(client.closedWithin(3s)) << bytes.substr(0, 40);
    }
}

TEST_F(Served, ALineWithoutColonIsNoHeader) {
    Client client(port());
    client.send("GET / HTTP/1.1\r\nHost 127.0.0.1\r\n\r\n");
    // Later versions of the library refuse such a request before it is looked at.
    const Reply reply = client.receive();
    EXPECT_EQ(reply.status, 400) << reply.head;
    const std::string code = codeOf(reply);
    EXPECT_TRUE(code == "no_host" || code == "refused") << code;
}

TEST_F(Served, TenMebibytesAreToldThatTheyAreTooMany) {
    const std::string body(10 << 20, ' ');
    for (const char* path : {"/api/nothing", "/api/health"}) {
        const Reply reply = post(port(), path, body);
        EXPECT_GE(reply.status, 404);
        EXPECT_EQ(codeOf(reply).find(' '), std::string::npos);
    }
}

TEST_F(Served, AConnectionServesManyRequestsAndOnesSentAhead) {
    Client client(port());
    for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(client.send(requestText(port(), "GET", "/api/health")));
        ASSERT_EQ(client.receive().status, 200) << i;
    }
    std::string three;
    for (const char* path : {"/api/health", "/nothing", "/api/version"}) three += requestText(port(), "GET", path);
    client.send(three);
    EXPECT_EQ(client.receive().status, 200);
    EXPECT_EQ(client.receive().status, 404);
    EXPECT_EQ(client.receive().status, 200);
}

// What is behind the body of a refused request is not taken for the next one.
TEST_F(Served, NoRequestHidesInABody) {
    Client client(port());
    const std::string hidden = requestText(port(), "GET", "/api/version");
    client.send(requestText(port(), "POST", "/api/health", hidden));
    EXPECT_EQ(client.receive().status, 405);
    EXPECT_EQ(client.receive(1s).status, 0);
    EXPECT_TRUE(client.closedWithin(2s));
}

TEST_F(Served, SlowClientsHoldNobodyUp) {
    // Half a head each, and never the rest.
    std::vector<std::unique_ptr<Client>> slow;
    for (int i = 0; i < 100; ++i) {
        slow.push_back(std::make_unique<Client>(port()));
        slow.back()->send("GET /api/health HTTP/1.1\r\nHost:");
    }
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 20; ++i) EXPECT_EQ(ask(port(), "GET", "/api/health").status, 200);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
}

TEST_F(Served, TwoHundredConnectionsAtOnceAreAllAnswered) {
    std::vector<std::thread> clients;
    std::atomic<int> answered = 0;
    for (int i = 0; i < 200; ++i)
        clients.emplace_back([&] {
            Client client(port());
            for (int request = 0; request < 3; ++request)
                if (client.send(requestText(port(), "GET", "/api/health")))
                    answered += client.receive(5s).status == 200;
        });
    for (std::thread& client : clients) client.join();
    EXPECT_EQ(answered, 600);
}

TEST_F(Served, MoreConnectionsThanItMayHaveAreToldSo) {
    std::vector<std::unique_ptr<Client>> clients;
    for (int i = 0; i < 300; ++i) {
        clients.push_back(std::make_unique<Client>(port()));
        clients.back()->send("GET /api/health HTTP/1.1\r\n");
    }
    // The last ones found no place.
    EXPECT_EQ(clients.back()->receive(2s).status, 503);
    clients.clear();
    for (int i = 0; i < 50 && ask(port(), "GET", "/api/health").status != 200; ++i) std::this_thread::sleep_for(20ms);
}

TEST_F(Served, ClientsThatGoAwayLeaveNoDescriptor) {
    const std::string folder = "/proc/" + std::to_string(program->process()) + "/fd";
    const auto count = [&] { return std::distance(std::filesystem::directory_iterator(folder), {}); };
    for (int i = 0; i < 5 && ask(port(), "GET", "/api/health").status != 200; ++i) std::this_thread::sleep_for(20ms);
    std::this_thread::sleep_for(100ms);
    const auto before = count();
    for (int i = 0; i < 300; ++i) {
        Client client(port());
        client.send(i % 2 == 0 ? "GET /api/health HTTP/1.1\r\n" : requestText(port(), "GET", "/api/health"));
    }
    for (int i = 0; i < 100 && count() > before; ++i) std::this_thread::sleep_for(20ms);
    EXPECT_LE(count(), before);
}

// ------------------------------------------------------------------------------------------------- starting and ending

TEST(ServeCommand, ComplainsAboutWhatItCannotDo) {
    struct Row {
        std::vector<std::string> arguments;
        int status;
        const char* said;
    };
    const Row rows[] = {
        {{"--port", "70000"}, 1, "--port"},
        {{"--jobs", "0"}, 1, "--jobs"},
        {{"--nonsense"}, 1, "--nonsense"},
        {{"--host", "0.0.0.0"}, 1, "--token TOKEN says who may ask"},
        {{"--host", "0.0.0.0", "--token", "short"}, 1, "16 to 256"},
        {{"--host", "203.0.113.7", "--token", "0123456789abcdef"}, 3, "203.0.113.7 port 0"},
        {{"--data", "/nowhere"}, 3, "there is no folder fluids"},
    };
    for (const Row& row : rows) {
        ServedProgram program(row.arguments);
        double seconds = 0;
        EXPECT_EQ(program.stop(0, seconds), row.status) << program.said();
        EXPECT_NE(program.said().find(row.said), std::string::npos) << program.said();
    }
}

TEST(ServeCommand, ATakenPortIsTold) {
    const ServedProgram first;
    ASSERT_GT(first.port(), 0);
    ServedProgram second({"--port", std::to_string(first.port())});
    double seconds = 0;
    EXPECT_EQ(second.stop(0, seconds), 3);
    EXPECT_NE(second.said().find("in use"), std::string::npos) << second.said();
}

TEST(ServeCommand, StopSignalsEndItWithinASecondAndLeaveNothing) {
    for (int signal : {SIGTERM, SIGINT, SIGHUP}) {
        test::TemporaryFolder folder;
        setenv("TMPDIR", folder.path().c_str(), 1);
        ServedProgram program({"--jobs", "2"});
        unsetenv("TMPDIR");
        ASSERT_GT(program.port(), 0) << program.said();
        EXPECT_FALSE(std::filesystem::is_empty(folder.path()));
        Client idle(program.port()), half(program.port());
        idle.send(requestText(program.port(), "GET", "/api/health"));
        EXPECT_EQ(idle.receive().status, 200);
        half.send("GET /api/heal");
        double seconds = 0;
        EXPECT_EQ(program.stop(signal, seconds), 0) << program.said();
        EXPECT_LT(seconds, 1.0);
        EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    }
}

TEST(ServeCommand, WithATokenItAnswersWhoKnowsIt) {
    const std::string token = "0123456789abcdef-test";
    const ServedProgram program({"--token", token, "--jobs", "1"});
    ASSERT_GT(program.port(), 0) << program.said();
    EXPECT_EQ(ask(program.port(), "GET", "/api/health").status, 401);
    EXPECT_EQ(ask(program.port(), "GET", "/").status, 401);
    EXPECT_EQ(ask(program.port(), "GET", "/api/health", "", "Authorization: Bearer " + token + "\r\n").status, 200);
    const Reply opened = ask(program.port(), "GET", "/?token=" + token);
    EXPECT_EQ(opened.status, 303);
    const std::string cookie = opened.header("Set-Cookie");
    EXPECT_EQ(ask(program.port(), "GET", "/", "", "Cookie: " + cookie.substr(0, cookie.find(';')) + "\r\n").status,
              200);
}

TEST(ServeCommand, DeadWorkersAreReplacedAndADeadKeeperEndsIt) {
    ServedProgram program({"--jobs", "1"});
    ASSERT_GT(program.port(), 0);
    const std::string children =
        "/proc/" + std::to_string(program.process()) + "/task/" + std::to_string(program.process()) + "/children";
    const int keeper = std::stoi(test::readFile(children));
    kill(keeper, SIGKILL);
    double seconds = 0;
    EXPECT_EQ(program.stop(0, seconds), 3);
    EXPECT_NE(program.said().find("the workers have ended"), std::string::npos) << program.said();
}

}  // namespace
}  // namespace frigana
