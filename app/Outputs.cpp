#include "Outputs.h"

#include <csignal>
#include <filesystem>

namespace frigana::app {

namespace {

namespace fs = std::filesystem;

bool sameFile(const std::string& a, const std::string& b) {
    if (a.empty() || b.empty() || a == "-" || b == "-") return false;
    std::error_code none;
    return fs::equivalent(a, b, none) || fs::weakly_canonical(a, none) == fs::weakly_canonical(b, none);
}

constexpr int endingSignals[] = {SIGINT, SIGTERM};
volatile std::sig_atomic_t held = 0;

}  // namespace

std::string clashOf(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs) {
    bool standardOutput = false;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        for (const std::string& input : inputs)
            if (sameFile(outputs[i], input)) return outputs[i];
        for (std::size_t j = 0; j < i; ++j)
            if (sameFile(outputs[i], outputs[j])) return outputs[i];
        if (outputs[i] != "-") continue;
        if (standardOutput) return "standard output";
        standardOutput = true;
    }
    return {};
}

std::vector<std::string> filesAround(const std::string& request, const std::string& outputFolder) {
    std::string result = request.substr(0, request.size() - 2) + "o";
    if (!outputFolder.empty() && outputFolder != "-")
        result = outputFolder + "/" + fs::path(result).filename().string();
    return {request, result + "1", result + "0"};
}

void holdSignals() {
    for (const int signal : endingSignals) {
        if (std::signal(signal, SIG_IGN) == SIG_IGN) continue;  // it was told to live through them
        std::signal(signal, [](int received) {
            std::signal(received, SIG_DFL);
            held = received;
        });
    }
}

bool isInterrupted() {
    return held != 0;
}

void releaseSignals() {
    for (const int signal : endingSignals)
        if (std::signal(signal, SIG_DFL) == SIG_IGN) std::signal(signal, SIG_IGN);
    if (held != 0) std::raise(held);
}

}  // namespace frigana::app
