#include "ServedProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace frigana::test {

using Clock = std::chrono::steady_clock;

namespace {

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

ServedProgram::ServedProgram(const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {FRIGANA_PROGRAM, "serve"};
    if (std::ranges::find(arguments, "--port") == arguments.end()) all.insert(all.end(), {"--port", "0"});
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& argument : all) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    const auto start = Clock::now();
    process_ = fork();
    if (process_ == 0) {
        dup2(ends[1], STDOUT_FILENO);
        dup2(ends[1], STDERR_FILENO);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    close(ends[1]);
    output_ = ends[0];
    readAddress(output_);
    secondsToStart_ = secondsSince(start);
}

void ServedProgram::readAddress(int output) {
    const auto start = Clock::now();
    while (said_.find('\n') == said_.npos && secondsSince(start) < 20) {
        pollfd waiting{output, POLLIN, 0};
        if (poll(&waiting, 1, 100) != 1) continue;
        char piece[1024];
        const ssize_t count = read(output, piece, sizeof piece);
        if (count <= 0) return;
        said_.append(piece, static_cast<std::size_t>(count));
    }
    const std::size_t address = said_.find("http://");
    const std::size_t colon =
        address == said_.npos ? said_.npos : said_.find_last_of(':', said_.find('/', address + 7));
    if (colon != said_.npos) port_ = std::atoi(said_.c_str() + colon + 1);
}

int ServedProgram::stop(int signal, double& seconds) {
    const auto start = Clock::now();
    if (signal != 0) kill(process_, signal);
    int status = 0;
    while (waitpid(process_, &status, WNOHANG) == 0) {
        if (secondsSince(start) > 10) return -1;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    seconds = secondsSince(start);
    process_ = 0;
    char piece[1024];
    for (ssize_t count; (count = read(output_, piece, sizeof piece)) > 0;)
        said_.append(piece, static_cast<std::size_t>(count));
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

ServedProgram::~ServedProgram() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    if (output_ >= 0) close(output_);
}

}  // namespace frigana::test
