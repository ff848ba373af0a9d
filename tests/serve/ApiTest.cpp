// The interface on a transport of its own, with calculations that do what tests need: crash, hang, eat memory.
#include "Api.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <nlohmann/json.hpp>
#include <thread>
#include <vector>

#include "Client.h"

namespace frigana::serve {
namespace {

using namespace std::chrono_literals;
using test::ask;
using test::Client;
using test::post;
using test::Reply;
using test::requestText;

// The body of /api/run says what to do; a case of a study does what its fluid says.
std::string calculate(std::string_view task) {
    const auto asked = [&](std::string_view word) { return task.find("\"" + std::string(word) + "\"") != task.npos; };
    if (asked("crash")) std::abort();
    if (asked("exit")) _exit(3);
    if (asked("hang")) std::this_thread::sleep_for(1h);
    if (asked("throw")) throw std::runtime_error("a fault with a \xff byte");
    if (asked("nap")) std::this_thread::sleep_for(50ms);
    if (asked("memory"))
        for (std::vector<std::unique_ptr<char[]>> hoard;;)  // nothing is written: a busy machine is as fast
            hoard.push_back(std::make_unique_for_overwrite<char[]>(16 << 20));
    if (asked("long")) return "200\n\"" + std::string(12 << 20, 'x') + "\"";
    if (task.starts_with("case")) return R"({"values":[1]})";
    return "200\n" + std::string(task.substr(task.find('\n') + 1));
}

class Server {
  public:
    explicit Server(http::Settings settings = {}, int workers = 2)
        : pool_(calculate, workers, {.time = 1s, .memory = std::size_t{256} << 20}) {
        settings.bodyBytes = longestBody;
        std::string complaint;
        const http::MakeServer make = http::loadTransport(complaint);
        EXPECT_NE(make, nullptr) << complaint;
        server_.reset(make(settings, complaint));
        api_ = std::make_unique<Api>(pool_, Guard("127.0.0.1", server_->port(), ""));
        serving_ = std::thread([this] { server_->serve(api_->service()); });
    }
    ~Server() { stop(); }

    int port() const { return server_->port(); }
    workers::Pool& pool() { return pool_; }
    std::chrono::milliseconds stop() {
        const auto start = std::chrono::steady_clock::now();
        if (serving_.joinable()) {
            pool_.stop();
            server_->stop(300ms);
            serving_.join();
        }
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    }

  private:
    workers::Pool pool_;
    std::unique_ptr<http::Server> server_;
    std::unique_ptr<Api> api_;
    std::thread serving_;
};

std::string codeOf(const Reply& reply) {
    const auto content = nlohmann::json::parse(reply.body, nullptr, false);
    return content.is_discarded() ? "no JSON" : content["error"].value("code", "no code");
}

TEST(Api, TheDeathOfAWorkerIsAnAnswerAndNotTheServersEnd) {
    Server server;
    struct Row {
        const char* body;
        int status;
        const char* code;
    };
    const Row rows[] = {
        {R"(["crash"])", 500, "died"},
        {R"(["exit"])", 500, "died"},
        {R"(["hang"])", 504, "too_slow"},
        {R"(["throw"])", 500, "threw"},
#if !defined(__SANITIZE_ADDRESS__)
        {R"(["memory"])", 500, "out_of_memory"},
#endif
    };
    for (const Row& row : rows) {
        const Reply reply = post(server.port(), "/api/run", row.body);
        EXPECT_EQ(reply.status, row.status) << row.body;
        EXPECT_EQ(codeOf(reply), row.code) << reply.body;
        EXPECT_EQ(post(server.port(), "/api/run", R"(["next"])").body, R"(["next"])");
    }
    const Reply died = post(server.port(), "/api/run", R"(["crash"])");
    const auto error = nlohmann::json::parse(died.body)["error"];
    EXPECT_NE(error["text"].get<std::string>().find("signal 6 (Aborted)"), std::string::npos);
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_FALSE(error["where"].empty());
#endif
}

TEST(Api, NestingBeyondMeaningIsRefusedBeforeItIsParsed) {
    Server server;
    const std::string deep = std::string(500'000, '[') + std::string(500'000, ']');
    EXPECT_EQ(codeOf(post(server.port(), "/api/run", deep)), "nested_too_deep");
    const std::string allowed = std::string(64, '[') + std::string(64, ']');
    EXPECT_EQ(post(server.port(), "/api/run", allowed).body, allowed);
    const std::string inText = "[\"" + std::string(1000, '[') + "\\\"{{{\"]";
    EXPECT_EQ(post(server.port(), "/api/run", inText).body, inText);
}

TEST(Api, SizesAreBounded) {
    Server server;
    const std::string largest = "[\"" + std::string(longestBody - 4, 'x') + "\"]";
    EXPECT_EQ(post(server.port(), "/api/run", largest).body.size(), longestBody);
    EXPECT_EQ(codeOf(post(server.port(), "/api/run", largest + " ")), "too_long");
    EXPECT_EQ(codeOf(post(server.port(), "/api/run", std::string(10 << 20, ' '))), "too_long");
    EXPECT_EQ(post(server.port(), "/api/run", R"(["long"])").body.size(), (12u << 20) + 2);
}

TEST(Api, AnnouncedBodiesAreJudgedBeforeTheyAreSent) {
    Server server;
    const std::string head = "Content-Type: application/json\r\nExpect: 100-continue\r\n";
    Client large(server.port());
    large.send(requestText(server.port(), "POST", "/api/run", "", head + "Content-Length: 99999999\r\n"));
    EXPECT_EQ(large.receive().status, 413);
    Client small(server.port());
    small.send(requestText(server.port(), "POST", "/api/run", "", head + "Content-Length: 2\r\n"));
    EXPECT_EQ(small.receive().status, 100);
    small.send("{}");
    EXPECT_EQ(small.receive().body, "{}");
}

TEST(Api, ATooSlowRequestEndsItsConnection) {
    http::Settings settings;
    settings.arrival = 200ms;
    settings.idle = 300ms;
    Server server(settings);
    // A byte now and then is not enough.
    Client dripping(server.port());
    const auto start = std::chrono::steady_clock::now();
    for (const char byte : requestText(server.port(), "GET", "/api/health")) {
        if (!dripping.send(std::string(1, byte))) break;
        std::this_thread::sleep_for(20ms);
        if (std::chrono::steady_clock::now() - start > 2s) break;
    }
    EXPECT_TRUE(dripping.closedWithin(1s));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
    // Half a body.
    Client half(server.port());
    half.send("POST /api/run HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(server.port()) +
              "\r\nContent-Type: application/json\r\nContent-Length: 100\r\n\r\n{");
    EXPECT_TRUE(half.closedWithin(1s));
    Client silent(server.port());
    EXPECT_TRUE(silent.closedWithin(1s));
}

// A connection that stays open serves so many requests, the last of which says so, and waits so long for the next one.
TEST(Api, AConnectionEndsAfterItsShareOfRequestsOrOfSilence) {
    http::Settings settings;
    settings.requestsPerConnection = 3;
    settings.idle = 400ms;
    Server server(settings);
    const std::string asked = requestText(server.port(), "GET", "/api/health");
    Client busy(server.port());
    for (int count = 1; count <= 3; ++count) {
        ASSERT_TRUE(busy.send(asked)) << count;
        const Reply reply = busy.receive();
        EXPECT_EQ(reply.status, 200) << count;
        EXPECT_EQ(reply.header("Connection") == "close", count == 3) << count;
    }
    EXPECT_TRUE(busy.closedWithin(200ms));
    Client idle(server.port());
    idle.send(asked);
    EXPECT_EQ(idle.receive().status, 200);
    EXPECT_FALSE(idle.closedWithin(150ms));
    idle.send(asked);
    EXPECT_EQ(idle.receive().status, 200);
    const auto since = std::chrono::steady_clock::now();
    EXPECT_TRUE(idle.closedWithin(2s));
    EXPECT_GT(std::chrono::steady_clock::now() - since, 300ms);
}

TEST(Api, WhoDoesNotReadDoesNotHoldTheServer) {
    http::Settings settings;
    settings.departure = 200ms;
    settings.idle = 300ms;
    settings.connections = 4;
    Server server(settings);
    std::vector<std::unique_ptr<Client>> deaf;
    for (int i = 0; i < 4; ++i) {
        deaf.push_back(std::make_unique<Client>(server.port()));
        deaf.back()->send(
            requestText(server.port(), "POST", "/api/run", R"(["long"])", "Content-Type: application/json\r\n"));
    }
    int status = 503;
    for (int i = 0; i < 50 && status != 200; ++i) {
        std::this_thread::sleep_for(100ms);
        status = ask(server.port(), "GET", "/api/health").status;
    }
    EXPECT_EQ(status, 200);
}

TEST(Api, AStopEndsCalculationsWithinASecondAndSaysSo) {
    Server server;
    std::vector<std::thread> clients;
    std::atomic<int> told = 0;
    for (int i = 0; i < 6; ++i)
        clients.emplace_back([&] { told += codeOf(post(server.port(), "/api/run", R"(["hang"])")) == "stopped"; });
    std::this_thread::sleep_for(100ms);
    EXPECT_LT(server.stop(), 800ms);
    for (std::thread& client : clients) client.join();
    EXPECT_EQ(told, 6);
    EXPECT_FALSE(Client(server.port()).connected());
}

// ------------------------------------------------------------------------------------------------------------- studies

std::string study(const std::string& fluids, const std::string& more = "") {
    return R"({"request": {"request": "basic"}, "vary": {"fluid": [)" + fluids + "]" + more +
           R"(}, "results": {"keys": ["performance.cop_cooling"]}})";
}

std::vector<nlohmann::json> lines(const std::string& body) {
    std::vector<nlohmann::json> all;
    std::istringstream text(body);
    for (std::string line; std::getline(text, line);) all.push_back(nlohmann::json::parse(line));
    return all;
}

const std::string manyTemperatures = R"(, "evaporator.temperature": {"from": 200, "to": 300, "count": 1000})";

TEST(Api, AStudyIsALineForEachCaseInOrder) {
    Server server;
    const Reply reply = post(server.port(), "/api/study", study(R"("a", "crash", "b")"));
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.header("Content-Type"), "application/x-ndjson");
    const auto all = lines(reply.body);
    ASSERT_EQ(all.size(), 5u) << reply.body;
    EXPECT_EQ(all[0]["cases"], 3);
    EXPECT_EQ(all[1]["inputs"][0], "a");
    EXPECT_EQ(all[1]["values"][0], 1);
    EXPECT_EQ(all[2]["error"]["code"], "died");
    EXPECT_EQ(all[3]["case"], 2);
    EXPECT_EQ(all[4]["done"], true);
    EXPECT_EQ(all[4]["refused"], 1);

    const auto thousands = lines(post(server.port(), "/api/study", study(R"("a", "b", "c")", manyTemperatures)).body);
    ASSERT_EQ(thousands.size(), 3002u);
    for (std::size_t i = 0; i < 3000; ++i) ASSERT_EQ(thousands[i + 1]["case"], i);
}

TEST(Api, AStudyTellsItsProgressWhileItRuns) {
    Server server({}, 1);
    Client client(server.port());
    const std::string body =
        study(R"("nap", "nap", "nap", "nap", "nap", "nap", "nap", "nap", "nap", "nap", "nap", "nap")");
    client.send(requestText(server.port(), "POST", "/api/study", body, "Content-Type: application/json\r\n"));
    // Cut short, the answer holds what was ready.
    const Reply part = client.receive(400ms);
    EXPECT_NE(part.body.find("\"case\":0"), std::string::npos);
    EXPECT_EQ(part.body.find("\"done\""), std::string::npos);
}

TEST(Api, AStudyNobodyListensToIsCancelled) {
    Server server({}, 1);
    std::string naps = "\"nap\"";
    for (int i = 0; i < 200; ++i) naps += ", \"nap\"";
    {
        Client client(server.port());
        client.send(
            requestText(server.port(), "POST", "/api/study", study(naps), "Content-Type: application/json\r\n"));
        client.receive(150ms);
    }
    std::this_thread::sleep_for(500ms);
    // Ten seconds of naps are not waited for.
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::string> one = {"echo\n[]"};
    server.pool().runInOrder(one, [](std::size_t, workers::Answer&&) { return true; });
    EXPECT_LT(std::chrono::steady_clock::now() - start, 200ms);
}

TEST(Api, StudiesLeaveRoomForPeopleAndAreFewAtOnce) {
    Server server({}, 1);
    std::vector<std::unique_ptr<Client>> clients;
    std::string naps = "\"nap\"";
    for (int i = 0; i < 100; ++i) naps += ", \"nap\"";
    for (int i = 0; i < mostStudiesAtOnce; ++i) {
        clients.push_back(std::make_unique<Client>(server.port()));
        clients.back()->send(
            requestText(server.port(), "POST", "/api/study", study(naps), "Content-Type: application/json\r\n"));
        clients.back()->receive(100ms);
    }
    EXPECT_EQ(codeOf(post(server.port(), "/api/study", study("\"a\""))), "too_many_studies");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(post(server.port(), "/api/run", "[]").body, "[]");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 300ms);
}

TEST(Api, ABrokenStudyIsToldBeforeItStarts) {
    Server server;
    const std::string tooMany = study("\"a\"", R"(, "evaporator.temperature": {"from": 0, "to": 1, "count": 200001})");
    struct Row {
        std::string body;
        const char* code;
    };
    const Row rows[] = {
        {"{", "bad_study"},
        {"[]", "bad_study"},
        {"{}", "bad_study"},
        {study(""), "bad_study"},
        {tooMany, "too_many_cases"},
        {R"({"request": "/etc/passwd", "vary": {"fluid": ["a"]}, "results": {"keys": ["x"]}})", "bad_study"},
        {R"({"request": {"request": "basic"}, "cases": "/etc/passwd", "results": {"keys": ["x"]}})", "bad_study"},
    };
    for (const Row& row : rows) {
        const Reply reply = post(server.port(), "/api/study", row.body);
        EXPECT_EQ(reply.status, 400) << row.body;
        EXPECT_EQ(codeOf(reply), row.code) << reply.body;
    }
}

}  // namespace
}  // namespace frigana::serve
