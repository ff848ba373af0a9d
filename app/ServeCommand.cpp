// frigana serve: the page and the interface for programs.
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <system_error>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include "Api.h"
#include "Calculations.h"
#include "Commands.h"
#include "Pool.h"

namespace frigana::app {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr int mostJobs = 256;
constexpr auto patienceWithAnswers = 400ms;

struct Options {
    int port = 8420;
    std::string host = "127.0.0.1";
    std::string token;
    int jobs = 0;
    bool open = false;
    std::string data;
};

int wrongOptions(const Options& options) {
    if (!options.token.empty() && !serve::goodToken(options.token))
        return complain(usageError, "--token: a token has 16 to 256 letters, digits and characters of -._~");
    if (options.token.empty() && !serve::isLoopback(options.host))
        return complain(usageError, "--host " + options.host +
                                        ": other machines reach this address; --token TOKEN says who may ask");
    return 0;
}

// Shows the address in the browser of the desktop, if there is one. The browser is no child of this process: it lives
// on. While this process has one thread.
void openInBrowser(const std::string& address) {
    const pid_t child = fork();
    if (child == 0) {
        if (fork() == 0) execlp("xdg-open", "xdg-open", address.c_str(), static_cast<char*>(nullptr));
        _exit(0);
    }
    if (child > 0) waitpid(child, nullptr, 0);
}

std::string shownAddress(const Options& options, int port) {
    const bool numeric6 = options.host.find(':') != std::string::npos && !options.host.starts_with('[');
    return "http://" + (numeric6 ? "[" + options.host + "]" : options.host) + ":" + std::to_string(port) + "/";
}

sigset_t stopSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, number);
    return signals;
}

// Waits for a stop signal; false when the workers have ended before.
bool awaitStop(const workers::Pool& pool) {
    const sigset_t signals = stopSignals();
    const timespec betweenLooks{1, 0};
    while (sigtimedwait(&signals, nullptr, &betweenLooks) < 0)
        if (!pool.healthy()) return false;
    return true;
}

int serveWith(const Options& options) {
    // The workers are forked before there is any thread.
    const int processors = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    workers::Pool pool(serve::calculationWith(fs::absolute(options.data).string()),
                       options.jobs > 0 ? options.jobs : processors, serve::workerLimits);

    std::string complaint;
    const http::MakeServer makeServer = http::loadTransport(complaint);
    if (makeServer == nullptr) return complain(runtimeError, complaint);
    http::Settings settings;
    settings.host = options.host;
    settings.port = options.port;
    settings.bodyBytes = serve::longestBody;
    settings.everywhere = serve::headersOfEveryAnswer();
    const std::unique_ptr<http::Server> server(makeServer(settings, complaint));
    if (server == nullptr) return complain(runtimeError, complaint);

    const std::string address = shownAddress(options, server->port());
    if (options.open) openInBrowser(options.token.empty() ? address : address + "?token=" + options.token);
    std::cout << "Frigana at " << address << " with " << pool.size() << (pool.size() == 1 ? " worker" : " workers")
              << "; Ctrl-C ends it" << std::endl;

    // The signals are this thread's alone: all others are made with them blocked.
    const sigset_t signals = stopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    serve::Api api(pool, {options.host, server->port(), options.token});
    std::thread serving([&] { server->serve(api.service()); });
    const bool asked = awaitStop(pool);
    pool.stop();
    server->stop(patienceWithAnswers);
    serving.join();
    return asked ? 0 : complain(runtimeError, "the workers have ended");
}

}  // namespace

Command addServe(CLI::App& program) {
    CLI::App* line = program.add_subcommand(
        "serve", "opens the page, and the interface for programs, on an address of this machine");
    const auto options = std::make_shared<Options>();
    line->add_option("--port", options->port, "port; 0 for one that is free")
        ->check(CLI::Range(0, 65535))
        ->capture_default_str();
    line->add_option("--host", options->host, "address; other than the machine's own only with a token")
        ->capture_default_str();
    line->add_option("--token", options->token, "what who asks must know: 16 or more letters, digits and -._~")
        ->envname("FRIGANA_TOKEN");
    line->add_option("--jobs", options->jobs, "processes that calculate (default: one for each processor)")
        ->check(CLI::Range(1, mostJobs));
    line->add_flag("--open", options->open, "shows the page in the browser");
    line->add_option("--data", options->data, dataFolderHelp);
    return {line, [&program, options] {
                if (const int status = wrongOptions(*options)) return status;
                if (const int status = findDataFolder(program, options->data, " with --data")) return status;
                std::error_code error;
                if (!fs::is_directory(fs::path(options->data) / "fluids", error))
                    return complain(runtimeError, options->data + ": there is no folder fluids in it");
                try {
                    return serveWith(*options);
                } catch (const std::system_error& failure) {
                    return complain(runtimeError, failure.what());
                }
            }};
}

}  // namespace frigana::app
