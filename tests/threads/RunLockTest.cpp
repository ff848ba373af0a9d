// The turn of the entry among threads, and the trap of each run. Built with the sanitizer of threads: two runs at once
// would be a race of what they share.
#include "RunLock.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csetjmp>
#include <thread>
#include <vector>

#include "Trap.h"

namespace frigana {
namespace {

// Not atomic on purpose: only one run at a time may touch it.
long shared = 0;

void countUp(void*) {
    for (int i = 0; i < 100; ++i) ++shared;
}
void countUpAndTrap(void*) {
    countUp(nullptr);
    divideByZero();
}

TEST(RunLock, RunsOfSeveralThreadsNeverMeet) {
    constexpr int threads = 8, runs = 200;
    shared = 0;
    std::vector<std::thread> all;
    std::vector<int> wrong(threads, 0);
    for (int i = 0; i < threads; ++i)
        all.emplace_back([&wrong, i] {
            for (int run = 0; run < runs; ++run) {
                const bool traps = (run + i) % 2 == 0;
                const bool leftBehind = beginRun();
                const bool returned = runContained(traps ? countUpAndTrap : countUp, nullptr);
                endRun();
                wrong[static_cast<std::size_t>(i)] += leftBehind || returned == traps;
            }
        });
    for (std::thread& thread : all) thread.join();
    EXPECT_EQ(shared, threads * runs * 100L);
    for (const int count : wrong) EXPECT_EQ(count, 0);
}

TEST(RunLock, ARunThatWasLeftIsToldToTheNext) {
    EXPECT_FALSE(beginRun());
    // Left by a jump: the same thread begins again.
    EXPECT_TRUE(beginRun());
    endRun();
    EXPECT_FALSE(beginRun());
    endRun();
    // Left by the end of its thread.
    std::thread([] { beginRun(); }).join();
    EXPECT_TRUE(beginRun());
    endRun();
    EXPECT_FALSE(beginRun());
    endRun();
}

TEST(RunLock, AChildOfAForkIsFree) {
    std::thread holder([] {
        beginRun();
        const pid_t child = fork();
        if (child == 0) {
            alarm(20);
            _exit(beginRun() ? 0 : 1);  // the run of the parent is not this process's
        }
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        endRun();
    });
    holder.join();
}

}  // namespace
}  // namespace frigana
