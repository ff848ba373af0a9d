#include "WorkerProcess.h"

#include <execinfo.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <new>

#include "Frame.h"
#include "PrivateFolders.h"

namespace frigana::workers {

namespace {

// The sanitizers reserve terabytes of addresses and tell of crashes themselves.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif

constexpr int failedToBegin = 120;

void limit(__rlimit_resource what, rlim_t value) {
    const rlimit both{value, value};
    setrlimit(what, &both);
}

void setLimits(const Limits& limits) {
    if (!sanitized) limit(RLIMIT_AS, limits.memory);
    limit(RLIMIT_FSIZE, limits.file);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_NOFILE, 64);
}

std::array<char, std::size_t{64} * 1024> signalStack;
std::array<void*, 48> frames;

// Says where the calculation was; then the signal takes its ordinary course.
void tellPlace(int number) {
    const int count = backtrace(frames.data(), static_cast<int>(frames.size()));
    backtrace_symbols_fd(frames.data(), count, STDERR_FILENO);
    raise(number);
}

void tellPlaceOfCrashes() {
    if (sanitized) return;
    backtrace(frames.data(), 1);  // loads what it needs while all is well
    const stack_t stack{signalStack.data(), 0, signalStack.size()};
    sigaltstack(&stack, nullptr);
    struct sigaction action = {};
    action.sa_handler = tellPlace;
    action.sa_flags = SA_ONSTACK | SA_RESETHAND;
    for (int number : {SIGSEGV, SIGBUS, SIGILL, SIGABRT, SIGFPE, SIGSYS}) sigaction(number, &action, nullptr);
}

void listenToNothingAndWriteTo(const std::string& said) {
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    close(nothing);
    const int file = open(said.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0600);
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    close(file);
}

// Nothing of one request is left for the next.
void tidy(const std::string& folder) {
    emptyFolder(folder);
    struct stat status;
    if (fstat(STDERR_FILENO, &status) == 0 && status.st_size > 0 && ftruncate(STDERR_FILENO, 0) != 0)
        _exit(failedToBegin);
}

FrameKind calculated(Calculation calculate, std::string_view request, std::string& answer) {
    try {
        answer = calculate(request);
        return FrameKind::answer;
    } catch (const std::bad_alloc&) {
        answer.clear();
        return FrameKind::outOfMemory;
    } catch (const std::exception& exception) {
        answer = exception.what();
        return FrameKind::threw;
    } catch (...) {
        answer = "something that is no std::exception";
        return FrameKind::threw;
    }
}

}  // namespace

void serveRequests(int socket, Calculation calculate, const Limits& limits, const std::string& folder,
                   const std::string& said) {
    if (chdir(folder.c_str()) != 0) _exit(failedToBegin);
    setenv("TMPDIR", folder.c_str(), 1);
    listenToNothingAndWriteTo(said);
    setLimits(limits);
    tellPlaceOfCrashes();

    std::string request, answer;
    for (;;) {
        std::uint32_t kind = 0;
        if (receiveFrame(socket, kind, request, limits.request) != Transfer::done) _exit(0);
        const FrameKind end = calculated(calculate, request, answer);
        tidy(folder);
        if (sendFrame(socket, static_cast<std::uint32_t>(end), answer) != Transfer::done) _exit(0);
        // A process that has run against the limit is not trusted with another request.
        if (end == FrameKind::outOfMemory) _exit(0);
    }
}

}  // namespace frigana::workers
