// The pool: whatever a calculation does to its process, the caller gets an answer and the next request a worker.
#include <dirent.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>
#include <set>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "Batch.h"
#include "Pool.h"
#include "PrivateFolders.h"
#include "TemporaryFolder.h"

namespace frigana::workers {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif

int depth(int level) {
    volatile char room[1024];
    room[level % 1024] = static_cast<char>(level);
    return level < 0 ? 0 : depth(level + 1) + room[level % 512];
}

std::string namesHere() {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(".")) names.insert(entry.path().filename().string());
    std::string all;
    for (const std::string& name : names) all += name + " ";
    return all;
}

// What the tests want calculated: a word and what it is about.
std::string calculate(std::string_view request) {
    const std::string_view word = request.substr(0, request.find(' '));
    const std::string about(request.substr(std::min(request.size(), word.size() + 1)));
    if (word == "echo") return about;
    if (word == "process") return std::to_string(getpid());
    if (word == "crash") *static_cast<volatile int*>(nullptr) = 1;
    if (word == "abort") std::abort();
    if (word == "exit") _exit(std::stoi(about));
    if (word == "deep") return std::to_string(depth(0));
    if (word == "hang")
        for (;;) std::this_thread::sleep_for(1h);
    if (word == "spin")
        for (std::atomic<unsigned> turn = 0;;) ++turn;
    if (word == "throw") throw std::runtime_error(about);
    if (word == "throw-number") throw 7;
    if (word == "sleep") std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(about)));
    if (word == "long") return std::string(std::stoul(about), 'x');
    if (word == "memory") {
        std::vector<std::string> hoard;
        for (;;) hoard.emplace_back(16 << 20, 'm');
    }
    if (word == "write") {
        std::ofstream(about) << "scratch";
        fs::create_directories("below/it");
        return namesHere();
    }
    if (word == "disk") {
        std::ofstream file("large");
        for (const std::string piece(1 << 20, 'd');;) file.write(piece.data(), 1 << 20).flush();
    }
    if (word == "names") return namesHere();
    if (word == "here") return fs::current_path().string();
    if (word == "place") return std::getenv("TMPDIR");
    if (word == "say") {
        std::fputs(about.c_str(), stderr);
        _exit(3);
    }
    if (word == "descriptors") {
        int count = 0;
        for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd")) ++count;
        return std::to_string(count);
    }
    return "";
}

int openDescriptors() {
    int count = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd")) ++count;
    return count;
}

// A process is there, and not only as what waits to be buried.
bool exists(pid_t process) {
    return kill(process, 0) == 0;
}

char stateOf(pid_t process) {
    const std::string status = test::readFile("/proc/" + std::to_string(process) + "/stat");
    const std::size_t bracket = status.rfind(')');
    return bracket == status.npos ? '-' : status[bracket + 2];
}

template <typename Condition>
bool soon(Condition condition, std::chrono::milliseconds patience = 2000ms) {
    for (const auto end = Clock::now() + patience; Clock::now() < end; std::this_thread::sleep_for(2ms))
        if (condition()) return true;
    return condition();
}

struct PoolTest : testing::Test {
    PoolTest() { setenv("TMPDIR", folder.path().c_str(), 1); }
    ~PoolTest() override { unsetenv("TMPDIR"); }

    std::size_t roots() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), {}));
    }

    test::TemporaryFolder folder;
};

TEST_F(PoolTest, AnswersARequestWithTheCalculation) {
    Pool pool(calculate, 1);
    for (const std::string& text :
         {std::string("one"), std::string(""), std::string("\0two\n", 5), std::string(1 << 20, 'y')}) {
        const Answer answer = pool.run("echo " + text);
        EXPECT_EQ(answer.end, End::done);
        EXPECT_EQ(answer.text, text);
    }
}

// Every bad end, and that the next request is answered.
struct BadEnd {
    const char* request;
    End end;
    const char* text;  // part of it
};

class BadEnds : public PoolTest, public testing::WithParamInterface<BadEnd> {};

TEST_P(BadEnds, AreAnswersAndTheNextRequestIsAnswered) {
    const BadEnd& bad = GetParam();
    Limits limits;
    // The sanitizer writes its report about the thousands of calls of an exhausted stack before it ends the process.
    const bool reports = sanitized && bad.end == End::died;
    limits.time = reports ? 10s : 300ms;
    limits.memory = std::size_t{256} << 20;
    limits.file = std::size_t{8} << 20;
    limits.request = 10'000;
    limits.answer = 100'000;
    Pool pool(calculate, 1, limits);
    std::string request = bad.request;
    if (request == "echo") request += std::string(20'000, 'x');
    for (int time = 0; time < 2; ++time) {
        const auto start = Clock::now();
        const Answer answer = pool.run(request);
        EXPECT_EQ(nameOf(answer.end), nameOf(bad.end)) << answer.text;
        EXPECT_NE(answer.text.find(bad.text), std::string::npos) << answer.text << '\n' << answer.where;
        EXPECT_LT(Clock::now() - start, reports ? 13s : 3s);
        EXPECT_EQ(pool.run("echo next").text, "next");
    }
    EXPECT_EQ(pool.run("names").text, "");
}

INSTANTIATE_TEST_SUITE_P(
    Pool, BadEnds,
    testing::Values(BadEnd{"crash", End::died, sanitized ? "exit status 1" : "signal 11 (Segmentation fault)"},
                    BadEnd{"abort", End::died, "signal 6 (Aborted)"},
                    BadEnd{"deep", End::died, sanitized ? "exit status 1" : "signal 11 (Segmentation fault)"},
                    BadEnd{"exit 0", End::died, "exit status 0"}, BadEnd{"exit 3", End::died, "exit status 3"},
                    BadEnd{"hang", End::tooSlow, "took more than 0.3 s"},
                    BadEnd{"spin", End::tooSlow, "took more than 0.3 s"}, BadEnd{"throw a word", End::threw, "a word"},
                    BadEnd{"throw-number", End::threw, "no std::exception"},
                    BadEnd{"disk", End::died, "signal 25 (File size limit exceeded)"},
                    BadEnd{"long 100001", End::tooLarge, "longer than the 100000 bytes"},
                    BadEnd{"echo", End::tooLarge, "longer than the 10000 bytes"}),
    [](const auto& which) {
        std::string name = which.param.request;
        std::erase_if(name, [](unsigned char character) { return !std::isalnum(character); });
        return name;
    });

TEST_F(PoolTest, MemoryIsLimited) {
    if (sanitized) GTEST_SKIP() << "the sanitizers take more addresses than any limit";
    Limits limits;
    limits.memory = std::size_t{128} << 20;
    Pool pool(calculate, 1, limits);
    const Answer answer = pool.run("memory");
    EXPECT_EQ(answer.end, End::outOfMemory);
    EXPECT_NE(answer.text.find("128 MiB"), std::string::npos) << answer.text;
    EXPECT_EQ(pool.run("echo next").text, "next");
}

TEST_F(PoolTest, ADeathTellsItsPlaceWithoutFoldersAndAddresses) {
    Pool pool(calculate, 1);
    const Answer crashed = pool.run("crash");
    // Under a sanitizer the last words are its own report, with its folders.
    if (!sanitized) {
        EXPECT_NE(crashed.where.find("test_workers(+0x"), std::string::npos) << crashed.where;
        EXPECT_EQ(crashed.where.find("/test_workers"), std::string::npos) << crashed.where;
    }
    EXPECT_EQ(pool.run("say last words").where, "last words\n");
    // A later death does not repeat the words of an earlier one.
    EXPECT_EQ(pool.run("exit 3").where, "");
}

TEST_F(PoolTest, AWorkerKilledWhileItIsIdleIsReplacedInSilence) {
    Pool pool(calculate, 1);
    for (int number : {SIGKILL, SIGTERM}) {
        const pid_t process = pool.processes()[0];
        kill(process, number);
        EXPECT_TRUE(soon([&] { return !exists(process); }));
        EXPECT_EQ(pool.run("echo next").text, "next");
        EXPECT_NE(pool.processes()[0], process);
    }
    // A stop signal of the terminal is not the worker's business, but the program's.
    const pid_t process = pool.processes()[0];
    kill(process, SIGINT);
    kill(pool.keeper(), SIGINT);
    kill(pool.keeper(), SIGTERM);
    EXPECT_EQ(pool.run("process").text, std::to_string(process));
}

TEST_F(PoolTest, AWorkerKilledInTheMiddleIsAnAnswer) {
    Pool pool(calculate, 1);
    std::thread killer([&] {
        std::this_thread::sleep_for(50ms);
        kill(pool.processes()[0], SIGTERM);
    });
    const Answer answer = pool.run("hang");
    killer.join();
    EXPECT_EQ(answer.end, End::died);
    EXPECT_NE(answer.text.find("signal 15 (Terminated)"), std::string::npos) << answer.text;
}

TEST_F(PoolTest, EachWorkerHasAnEmptyFolderOfItsOwn) {
    Pool pool(calculate, 2);
    const std::string here = pool.run("here").text;
    EXPECT_TRUE(here.starts_with(folder.path() + "/frigana-pool-")) << here;
    EXPECT_EQ(pool.run("place").text, here);
    EXPECT_EQ(pool.run("write a.fo1").text, "a.fo1 below ");
    EXPECT_EQ(pool.run("names").text, "");

    std::set<std::string> folders;
    std::mutex access;
    std::vector<std::thread> callers;
    for (int i = 0; i < 2; ++i)
        callers.emplace_back([&] {
            const std::vector<std::string> requests = {"sleep 100", "here"};
            pool.runInOrder(requests, [&](std::size_t number, Answer&& answer) {
                const std::lock_guard lock(access);
                if (number == 1) folders.insert(answer.text);
                return true;
            });
        });
    for (std::thread& caller : callers) caller.join();
    EXPECT_EQ(folders.size(), 2u);
}

TEST_F(PoolTest, StopEndsRunningWorkWithinASecondAndLeavesNothing) {
    std::vector<pid_t> processes;
    std::vector<std::thread> callers;
    {
        Pool pool(calculate, 2);
        processes = pool.processes();
        processes.push_back(pool.keeper());
        std::atomic<int> stopped = 0;
        for (int i = 0; i < 4; ++i)  // two run, two wait
            callers.emplace_back([&] { stopped += pool.run("hang").end == End::stopped; });
        std::this_thread::sleep_for(50ms);
        EXPECT_EQ(roots(), 1u);
        const auto start = Clock::now();
        pool.stop();
        for (std::thread& caller : callers) caller.join();
        EXPECT_LT(Clock::now() - start, 500ms);
        EXPECT_EQ(stopped, 4);
        EXPECT_EQ(pool.run("echo later").end, End::stopped);
    }
    for (pid_t process : processes) EXPECT_FALSE(exists(process));
    EXPECT_EQ(roots(), 0u);
}

TEST_F(PoolTest, TheEndOfTheProgramEndsKeeperWorkersAndFolders) {
    // The program is a process that is killed; it tells who belongs to it.
    int pipeEnds[2];
    ASSERT_EQ(pipe(pipeEnds), 0);
    const pid_t program = fork();
    if (program == 0) {
        Pool pool(calculate, 2);
        std::vector<pid_t> all = pool.processes();
        all.push_back(pool.keeper());
        [[maybe_unused]] const ssize_t written = write(pipeEnds[1], all.data(), all.size() * sizeof(pid_t));
        pool.run("hang");
        _exit(0);
    }
    pid_t all[3];
    ASSERT_EQ(read(pipeEnds[0], all, sizeof all), static_cast<ssize_t>(sizeof all));
    close(pipeEnds[0]);
    close(pipeEnds[1]);
    EXPECT_EQ(roots(), 1u);
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    for (pid_t process : all) EXPECT_TRUE(soon([&] { return !exists(process) || stateOf(process) == 'Z'; }));
    EXPECT_TRUE(soon([&] { return roots() == 0; }));
}

TEST_F(PoolTest, AKilledKeeperIsTold) {
    Pool pool(calculate, 1);
    const pid_t worker = pool.processes()[0];
    EXPECT_TRUE(pool.healthy());
    kill(pool.keeper(), SIGKILL);
    EXPECT_TRUE(soon([&] { return !exists(worker) || stateOf(worker) == 'Z'; }));
    EXPECT_FALSE(pool.healthy());
    const Answer answer = pool.run("echo lost");
    EXPECT_EQ(answer.end, End::noWorker);
    EXPECT_NE(answer.text.find("keeper"), std::string::npos);
    pool.stop();
    EXPECT_EQ(roots(), 0u);
}

TEST_F(PoolTest, WhatKilledProcessesLeftIsSweptByTheNextPoolAndNothingElse) {
    const std::string place = folder.path();
    const RootFolder held = makeRootFolder(place);
    fs::create_directories(place + "/frigana-pool-dead/1");
    fs::create_directories(place + "/frigana-other");
    fs::create_directory_symlink(place + "/frigana-other", place + "/frigana-pool-link");
    const RootFolder next = makeRootFolder(place);
    EXPECT_FALSE(fs::exists(place + "/frigana-pool-dead"));
    EXPECT_TRUE(fs::exists(place + "/frigana-other"));
    EXPECT_TRUE(fs::exists(held.path));
    EXPECT_TRUE(fs::exists(next.path));
}

TEST_F(PoolTest, TenThousandRequestsLeaveNoProcessAndNoDescriptor) {
    Limits limits;
    Pool pool(calculate, 2, limits);
    pool.run("echo warm");
    const int before = openDescriptors();
    std::vector<std::thread> callers;
    std::atomic<int> right = 0;
    const std::string insideBefore = pool.run("descriptors").text;
    for (int caller = 0; caller < 4; ++caller)
        callers.emplace_back([&, caller] {
            for (int i = 0; i < 2500; ++i) {
                const std::string text = std::to_string(caller * 10'000 + i);
                // Every 500th takes its worker with it.
                if (i % 500 == 499)
                    right += pool.run("abort").end == End::died;
                else
                    right += pool.run("echo " + text).text == text;
            }
        });
    for (std::thread& caller : callers) caller.join();
    EXPECT_EQ(right, 10'000);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(pool.run("descriptors").text, insideBefore);
    EXPECT_EQ(roots(), 1u);
    // The keeper has its two children and no dead ones.
    const std::string children = test::readFile("/proc/" + std::to_string(pool.keeper()) + "/task/" +
                                                std::to_string(pool.keeper()) + "/children");
    std::istringstream list(children);
    int count = 0;
    for (pid_t child; list >> child; ++count) EXPECT_NE(stateOf(child), 'Z');
    EXPECT_EQ(count, 2);
}

TEST_F(PoolTest, ACancelledRequestEndsAtOnce) {
    Pool pool(calculate, 1);
    Cancel running, waiting;
    std::thread first([&] { EXPECT_EQ(pool.run("hang", &running).end, End::cancelled); });
    std::this_thread::sleep_for(30ms);
    std::thread second([&] { EXPECT_EQ(pool.run("hang", &waiting).end, End::cancelled); });
    std::this_thread::sleep_for(30ms);
    const auto start = Clock::now();
    waiting.raise();
    second.join();
    running.raise();
    first.join();
    EXPECT_LT(Clock::now() - start, 500ms);
    EXPECT_EQ(pool.run("echo next").text, "next");
}

TEST_F(PoolTest, RequestsSentAheadOfADeathAreAnsweredByTheNextWorker) {
    Pool pool(calculate, 1);
    const std::vector<std::string> requests = {"echo 0", "echo 1", "abort", "echo 3", "exit 1", "echo 5"};
    std::vector<std::string> heard;
    pool.runInOrder(requests, [&](std::size_t number, Answer&& answer) {
        EXPECT_EQ(number, heard.size());
        heard.push_back(answer.end == End::done ? answer.text : std::string(nameOf(answer.end)));
        return true;
    });
    EXPECT_EQ(heard, (std::vector<std::string>{"0", "1", "died", "3", "died", "5"}));
}

TEST_F(PoolTest, WhoHasHeardEnoughLeavesNothingToTheNextCaller) {
    Pool pool(calculate, 1);
    const std::vector<std::string> requests(20, "echo of the first caller");
    pool.runInOrder(requests, [](std::size_t number, Answer&&) { return number < 3; });
    EXPECT_EQ(pool.run("echo own").text, "own");
}

TEST_F(PoolTest, PeopleAreServedBeforeStudies) {
    Pool pool(calculate, 1);
    std::mutex access;
    std::string order;
    const auto caller = [&](const char* request, char mark, Urgency urgency) {
        return std::thread([&, request, mark, urgency] {
            pool.run(request, nullptr, urgency);
            const std::lock_guard lock(access);
            order += mark;
        });
    };
    std::vector<std::thread> callers;
    callers.push_back(caller("sleep 150", 'a', Urgency::study));
    std::this_thread::sleep_for(30ms);
    callers.push_back(caller("sleep 30", 's', Urgency::study));
    std::this_thread::sleep_for(30ms);
    callers.push_back(caller("sleep 30", 'p', Urgency::person));
    for (std::thread& thread : callers) thread.join();
    EXPECT_EQ(order, "aps");
}

// ------------------------------------------------------------------------------------------------------------ batches

struct Numbers {
    explicit Numbers(std::size_t all) : count(all) {}

    std::size_t count, given = 0, largestAhead = 0;
    std::vector<std::string> heard;
    std::function<std::string(std::size_t)> request = [](std::size_t number) {
        return "echo " + std::to_string(number);
    };

    Batch batch() {
        return {[this](std::string& text) {
                    if (given == count) return false;
                    text = request(given++);
                    largestAhead = std::max(largestAhead, given - heard.size());
                    return true;
                },
                [this](std::size_t number, Answer&& answer) {
                    EXPECT_EQ(number, heard.size());
                    heard.push_back(answer.end == End::done ? answer.text : std::string(nameOf(answer.end)));
                    return true;
                }};
    }
};

TEST_F(PoolTest, ABatchIsAnsweredInOrder) {
    Pool pool(calculate, 3);
    Numbers numbers(20'000);
    EXPECT_EQ(runBatch(pool, numbers.batch()), 20'000u);
    for (std::size_t i = 0; i < numbers.heard.size(); ++i) ASSERT_EQ(numbers.heard[i], std::to_string(i));
    EXPECT_LE(numbers.largestAhead, 3u * 4 * 64);
    std::printf("at most %zu cases between the first not delivered and the last taken\n", numbers.largestAhead);
}

TEST_F(PoolTest, ABatchOutlivesTheDeathsOfItsCases) {
    Pool pool(calculate, 2);
    Numbers numbers(300);
    numbers.request = [](std::size_t number) {
        return number % 50 == 7 ? std::string("abort") : "echo " + std::to_string(number);
    };
    EXPECT_EQ(runBatch(pool, numbers.batch()), 300u);
    for (std::size_t i = 0; i < 300; ++i) ASSERT_EQ(numbers.heard[i], i % 50 == 7 ? "died" : std::to_string(i));
}

TEST_F(PoolTest, ASlowCaseHoldsTheOthersWithinTheBound) {
    Pool pool(calculate, 2);
    Numbers numbers(5000);
    numbers.request = [](std::size_t number) { return number == 0 ? std::string("sleep 300") : std::string("echo"); };
    EXPECT_EQ(runBatch(pool, numbers.batch()), 5000u);
    EXPECT_LE(numbers.largestAhead, 2u * 4 * 64);
}

TEST_F(PoolTest, ABatchIsCancelledAtOnce) {
    Pool pool(calculate, 2);
    Cancel cancel;
    Numbers numbers(100);
    numbers.request = [](std::size_t number) { return number < 10 ? std::string("echo") : std::string("hang"); };
    std::thread canceller([&] {
        std::this_thread::sleep_for(100ms);
        cancel.raise();
    });
    const auto start = Clock::now();
    EXPECT_EQ(runBatch(pool, numbers.batch(), &cancel), 10u);
    EXPECT_LT(Clock::now() - start, 1s);
    canceller.join();
    EXPECT_EQ(pool.run("echo next").text, "next");
}

TEST_F(PoolTest, ABatchEndsWhereItsHearerHasEnoughOrThrows) {
    Pool pool(calculate, 2);
    Numbers numbers(1000);
    Batch batch = numbers.batch();
    batch.deliver = [](std::size_t number, Answer&&) { return number < 4; };
    EXPECT_EQ(runBatch(pool, batch), 5u);
    batch.deliver = [](std::size_t, Answer&&) -> bool { throw std::runtime_error("the disk is full"); };
    EXPECT_THROW(runBatch(pool, batch), std::runtime_error);
    batch.next = [](std::string&) -> bool { throw std::runtime_error("the file is broken"); };
    EXPECT_THROW(runBatch(pool, batch), std::runtime_error);
    EXPECT_EQ(pool.run("echo next").text, "next");
}

TEST_F(PoolTest, AStoppedPoolEndsItsBatch) {
    Pool pool(calculate, 2);
    Numbers numbers(100);
    numbers.request = [](std::size_t) { return std::string("hang"); };
    std::thread stopper([&] {
        std::this_thread::sleep_for(50ms);
        pool.stop();
    });
    EXPECT_EQ(runBatch(pool, numbers.batch()), 0u);
    stopper.join();
}

TEST_F(PoolTest, AnEmptyBatchIsDone) {
    Pool pool(calculate, 1);
    Numbers numbers(0);
    EXPECT_EQ(runBatch(pool, numbers.batch()), 0u);
}

}  // namespace
}  // namespace frigana::workers
