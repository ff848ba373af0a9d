// The trap beside a host's signals.
#include <gtest/gtest.h>

#include <cfenv>
#include <csignal>
#include <thread>

#include "ErrorControlFixture.h"

namespace frigana {
namespace {

using test::readFile;

TEST(Trap, TheHostsDispositionMaskAndEnvironmentAreItsOwnAgain) {
    static volatile int heard = 0;
    struct sigaction own {};
    own.sa_handler = [](int) { heard = heard + 1; };
    struct sigaction before;
    sigaction(SIGFPE, &own, &before);
    sigset_t mask, old;
    sigemptyset(&mask);
    sigaddset(&mask, SIGFPE);
    pthread_sigmask(SIG_BLOCK, &mask, &old);
    std::fesetround(FE_UPWARD);

    EXPECT_FALSE(comesBack([] {
        EXPECT_EQ(std::fegetround(), FE_TONEAREST);
        divideByZero();
    }));
    EXPECT_TRUE(comesBack([] {}));

    EXPECT_EQ(std::fegetround(), FE_UPWARD);
    std::fesetround(FE_TONEAREST);
    sigset_t now;
    pthread_sigmask(SIG_SETMASK, &old, &now);
    EXPECT_EQ(sigismember(&now, SIGFPE), 1);
    struct sigaction after;
    sigaction(SIGFPE, &before, &after);
    EXPECT_EQ(after.sa_handler, own.sa_handler);
    EXPECT_EQ(heard, 0);
}

TEST(Trap, ASignalInAnotherThreadGoesToTheHostsHandler) {
    static volatile int heard = 0;
    struct sigaction own {};
    own.sa_handler = [](int) { heard = heard + 1; };
    struct sigaction before;
    sigaction(SIGFPE, &own, &before);
    EXPECT_TRUE(comesBack([] { std::thread([] { raise(SIGFPE); }).join(); }));
    sigaction(SIGFPE, &before, nullptr);
    EXPECT_EQ(heard, 1);
}

using ErrorControlDeathTest = ErrorControl;
TEST_F(ErrorControlDeathTest, WithoutABorderTheTrapEndsTheProcess) {
    EXPECT_EXIT(
        {
            std::signal(SIGFPE, SIG_DFL);
            ERRORCONTROL(5, "text");
        },
        testing::KilledBySignal(SIGFPE), "");
    EXPECT_EQ(readFile(result).substr(0, 6), " 0\n 5\n");
}

}  // namespace
}  // namespace frigana
