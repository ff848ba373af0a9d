#include "Trap.h"

#include <cfenv>
#include <csetjmp>
#include <csignal>
#include <cstdlib>

#ifndef _WIN32
#include <pthread.h>
#endif

#if defined(__clang__)
#define FRIGANA_DELIBERATE_DIVISION __attribute__((no_sanitize("undefined"), noinline))
#elif defined(__GNUC__)
#define FRIGANA_DELIBERATE_DIVISION __attribute__((no_sanitize_undefined, noinline))
#else
#define FRIGANA_DELIBERATE_DIVISION
#endif

namespace frigana {

namespace {

// Volatile, so that no compiler proves what the division does.
volatile int numerator = 3;
volatile int denominator = 0;
volatile int quotient = 0;

FRIGANA_DELIBERATE_DIVISION void divide() {
    quotient = numerator / denominator;
}

}  // namespace

[[noreturn]] void divideByZero() {
    divide();
    // Processors whose division gives 0 instead of a trap arrive here.
    std::raise(SIGFPE);
    std::abort();
}

#ifdef _WIN32

namespace {
std::jmp_buf* road = nullptr;
void onTrap(int) {
    if (road != nullptr) std::longjmp(*road, 1);
}
}  // namespace

bool runContained(void (*run)(void* context), void* context) {
    std::fenv_t environment;
    std::fegetenv(&environment);
    std::fesetenv(FE_DFL_ENV);
    std::jmp_buf here;
    std::jmp_buf* const outer = road;
    const auto previous = std::signal(SIGFPE, onTrap);
    volatile bool returned = false;
    if (setjmp(here) == 0) {
        road = &here;
        run(context);
        returned = true;
    }
    road = outer;
    std::signal(SIGFPE, previous);
    std::fesetenv(&environment);
    return returned;
}

#else

namespace {

struct Containment {
    sigjmp_buf here;
    pthread_t thread;
    struct sigaction previous;
    Containment* outer;
};

Containment* volatile innermost = nullptr;

void onTrap(int signal, siginfo_t* information, void* machine) {
    Containment* const containment = innermost;
    if (containment != nullptr && pthread_equal(containment->thread, pthread_self())) siglongjmp(containment->here, 1);
    // Another thread of the host: its trap is not ours.
    if (containment != nullptr) {
        Containment* outermost = containment;
        while (outermost->outer != nullptr) outermost = outermost->outer;
        const struct sigaction& previous = outermost->previous;
        if ((previous.sa_flags & SA_SIGINFO) != 0) return previous.sa_sigaction(signal, information, machine);
        if (previous.sa_handler != SIG_DFL && previous.sa_handler != SIG_IGN) return previous.sa_handler(signal);
    }
    std::signal(signal, SIG_DFL);
}

}  // namespace

bool runContained(void (*run)(void* context), void* context) {
    std::fenv_t environment;
    std::fegetenv(&environment);
    std::fesetenv(FE_DFL_ENV);

    sigset_t trap, blocked;
    sigemptyset(&trap);
    sigaddset(&trap, SIGFPE);
    pthread_sigmask(SIG_UNBLOCK, &trap, &blocked);

    // Everything that is read again behind the long jump lives in this record or is not changed between.
    Containment containment;
    containment.thread = pthread_self();
    containment.outer = innermost;
    struct sigaction action {};
    action.sa_sigaction = onTrap;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigemptyset(&action.sa_mask);

    volatile bool returned = false;
    if (sigsetjmp(containment.here, 1) == 0) {
        innermost = &containment;
        sigaction(SIGFPE, &action, &containment.previous);
        run(context);
        returned = true;
    }
    sigaction(SIGFPE, &containment.previous, nullptr);
    innermost = containment.outer;
    pthread_sigmask(SIG_SETMASK, &blocked, nullptr);
    std::fesetenv(&environment);
    return returned;
}

#endif

}  // namespace frigana
