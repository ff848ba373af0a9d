#include "Trap.h"

#include <atomic>
#include <cfenv>
#include <csetjmp>
#include <csignal>
#include <cstdlib>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#elif !defined(__EMSCRIPTEN__)
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

#ifndef __EMSCRIPTEN__
// Volatile, so that no compiler proves what the division does.
volatile int numerator = 3;
volatile int denominator = 0;
volatile int quotient = 0;
#ifdef _WIN32
volatile bool dividing = false;
#else
volatile std::sig_atomic_t raisedByDivision = 0;
#endif
#endif
Leaving leaving = Leaving::bySignal;

// Out of the routine that is contained in this thread; comes back where there is none.
void jumpOut();

#ifndef __EMSCRIPTEN__
FRIGANA_DELIBERATE_DIVISION void divide() {
    quotient = numerator / denominator;
}
#endif

}  // namespace

void leaveRuns(Leaving way) {
    leaving = way;
}

#ifdef _WIN32

namespace {

// Jumps of the compiler itself: those of the run-time library unwind through the frames of the host.
struct Containment {
    void* here[5];
    Containment* outer;
};

Containment* innermost = nullptr;
std::atomic<DWORD> runner{0};

void jumpOut() {
    if (innermost != nullptr && runner.load() == GetCurrentThreadId()) __builtin_longjmp(innermost->here, 1);
}

// Where the thread goes on behind the trap.
[[noreturn]] void leave() {
    jumpOut();
    std::abort();
}

// Comes before every handler of the host, and takes nothing but the division that ends a run. The thread goes on in
// leave, outside the handling of exceptions, on the part of its stack below the trap.
LONG CALLBACK onTrap(EXCEPTION_POINTERS* trap) {
    if (trap->ExceptionRecord->ExceptionCode != EXCEPTION_INT_DIVIDE_BY_ZERO || !dividing ||
        runner.load() != GetCurrentThreadId())
        return EXCEPTION_CONTINUE_SEARCH;
    dividing = false;
#if defined(__x86_64__) || defined(__i386__)
    constexpr auto redZone = 128, alignment = 16;
    CONTEXT& thread = *trap->ContextRecord;
#if defined(__x86_64__)
    thread.Rip = reinterpret_cast<DWORD64>(leave);
    thread.Rsp = (thread.Rsp - redZone) / alignment * alignment - sizeof(void*);
#else
    thread.Eip = reinterpret_cast<DWORD>(leave);
    thread.Esp = (thread.Esp - redZone) / alignment * alignment - sizeof(void*);
#endif
#endif
    return EXCEPTION_CONTINUE_EXECUTION;
}

// A frame of its own, so that nothing that is read behind the jump lives in registers.
__attribute__((noinline)) bool runWithRoadBack(void (*run)(void* context), void* context, Containment& containment) {
    if (__builtin_setjmp(containment.here) != 0) return false;
    run(context);
    return true;
}

}  // namespace

[[noreturn]] void divideByZero() {
    if (leaving == Leaving::byJump) jumpOut();
    dividing = true;
    divide();
    // Processors whose division gives 0 instead of a trap arrive here.
    dividing = false;
    leave();
}

void forgetContained() {
    innermost = nullptr;
}

bool runContained(void (*run)(void* context), void* context) {
    std::fenv_t environment;
    std::fegetenv(&environment);
    std::fesetenv(FE_DFL_ENV);
    Containment containment;
    containment.outer = innermost;
    innermost = &containment;
    runner = GetCurrentThreadId();
    void* const handler = leaving == Leaving::bySignal ? AddVectoredExceptionHandler(1, onTrap) : nullptr;
    const bool returned = runWithRoadBack(run, context, containment);
    if (handler != nullptr) RemoveVectoredExceptionHandler(handler);
    innermost = containment.outer;
    std::fesetenv(&environment);
    return returned;
}

#elif defined(__EMSCRIPTEN__)

// A division by zero ends a WebAssembly module for good, and there are neither signals nor threads: a run is left by
// the jump in its place.
namespace {

struct Containment {
    std::jmp_buf here;
    Containment* outer;
};

Containment* innermost = nullptr;

void jumpOut() {
    if (innermost != nullptr) std::longjmp(innermost->here, 1);
}

}  // namespace

[[noreturn]] void divideByZero() {
    jumpOut();
    std::abort();
}

void forgetContained() {
    innermost = nullptr;
}

bool runContained(void (*run)(void* context), void* context) {
    Containment containment;
    containment.outer = innermost;
    innermost = &containment;
    volatile bool returned = false;
    if (setjmp(containment.here) == 0) {
        run(context);
        returned = true;
    }
    innermost = containment.outer;
    return returned;
}

#else

[[noreturn]] void divideByZero() {
    if (leaving == Leaving::byJump) jumpOut();
    divide();
    // Processors whose division gives 0 instead of a trap arrive here.
    raisedByDivision = 1;
    std::raise(SIGFPE);
    std::abort();
}

namespace {

struct Containment {
    sigjmp_buf here;
    Containment* outer;
};

// Handlers of other threads may read these at any moment, also behind the end of a run: none of them is on its stack.
std::atomic<Containment*> innermost{nullptr};
std::atomic<pthread_t> runner{};
struct sigaction host;  // what the host had for the signal; known before our handler stands

bool isContainedHere() {
    return innermost.load() != nullptr && pthread_equal(runner.load(), pthread_self()) != 0;
}

void jumpOut() {
    if (isContainedHere()) siglongjmp(innermost.load()->here, 1);
}

bool isOurTrap(const siginfo_t& information) {
    if (!isContainedHere()) return false;
    // A signal that was sent is not a trap, but for our own.
    return information.si_code > 0 || raisedByDivision != 0;
}

// The host's own handler, as if ours had not been there.
void passToHost(int signal, siginfo_t* information, void* machine) {
    const struct sigaction action = host;
    const bool sent = information->si_code <= 0;
    const bool full = (action.sa_flags & SA_SIGINFO) != 0;
    if (!full && action.sa_handler == SIG_IGN && sent) return;
    if (!full && (action.sa_handler == SIG_DFL || action.sa_handler == SIG_IGN)) {
        std::signal(signal, SIG_DFL);
        if (sent) std::raise(signal);  // a trap comes again by itself
        return;
    }
    if ((action.sa_flags & SA_RESETHAND) != 0) {
        host.sa_flags &= ~SA_SIGINFO;
        host.sa_handler = SIG_DFL;
    }
    sigset_t masked = action.sa_mask, before;
    if ((action.sa_flags & SA_NODEFER) == 0) sigaddset(&masked, signal);
    pthread_sigmask(SIG_BLOCK, &masked, &before);
    if (full)
        action.sa_sigaction(signal, information, machine);
    else
        action.sa_handler(signal);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void onTrap(int signal, siginfo_t* information, void* machine) {
    if (!isOurTrap(*information)) return passToHost(signal, information, machine);
    raisedByDivision = 0;
    siglongjmp(innermost.load()->here, 1);
}

bool isOurs(const struct sigaction& action) {
    return (action.sa_flags & SA_SIGINFO) != 0 && action.sa_sigaction == onTrap;
}

void takeSignal() {
    struct sigaction now;
    sigaction(SIGFPE, nullptr, &now);
    // Our own handler stands there behind a run that was left by a jump: the host's is known already.
    if (isOurs(now)) return;
    host = now;
    struct sigaction action {};
    action.sa_sigaction = onTrap;
    action.sa_flags = SA_SIGINFO | SA_NODEFER | (now.sa_flags & SA_ONSTACK);
    sigemptyset(&action.sa_mask);
    sigaction(SIGFPE, &action, nullptr);
}

void returnSignal() {
    struct sigaction now;
    sigaction(SIGFPE, nullptr, &now);
    // Not over a handler that another thread of the host has installed meanwhile.
    if (isOurs(now)) sigaction(SIGFPE, &host, nullptr);
}

}  // namespace

void forgetContained() {
    innermost = nullptr;
}

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
    containment.outer = innermost.load();
    const bool takesSignal = containment.outer == nullptr && leaving == Leaving::bySignal;

    volatile bool returned = false;
    if (sigsetjmp(containment.here, 1) == 0) {
        runner = pthread_self();
        innermost = &containment;
        if (takesSignal) takeSignal();
        run(context);
        returned = true;
    }
    if (takesSignal) returnSignal();
    innermost = containment.outer;
    pthread_sigmask(SIG_SETMASK, &blocked, nullptr);
    std::fesetenv(&environment);
    return returned;
}

#endif

}  // namespace frigana
