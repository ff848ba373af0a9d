#include "StudyStream.h"

#include <chrono>
#include <nlohmann/json.hpp>

#include "Batch.h"
#include "Calculations.h"
#include "CaseRun.h"
#include "Tree.h"

namespace frigana::serve {

namespace {

using Json = nlohmann::ordered_json;
using Clock = std::chrono::steady_clock;

// Lines go together while they come fast, and each at once while they come slowly.
class Lines {
  public:
    explicit Lines(const http::Write& write) : write_(write) {}

    bool put(const std::string& line) {
        constexpr std::size_t enough = 16 * 1024;
        constexpr auto soon = std::chrono::milliseconds(50);
        waiting_ += line;
        waiting_ += '\n';
        return (waiting_.size() < enough && Clock::now() - sent_ < soon) || flush();
    }
    bool flush() {
        heard_ = heard_ && (waiting_.empty() || write_(waiting_));
        waiting_.clear();
        sent_ = Clock::now();
        return heard_;
    }

  private:
    const http::Write& write_;
    std::string waiting_;
    Clock::time_point sent_ = Clock::now();
    bool heard_ = true;
};

std::string inputsOf(const studies::Study& study, std::size_t number) {
    std::string list = "[";
    for (const studies::Setting& setting : study.settings(number)) {
        if (list.size() > 1) list += ',';
        list += studies::jsonOf(setting.value);
    }
    return list + "]";
}

std::string lineOf(const studies::Study& study, std::size_t number, const workers::Answer& answer) {
    std::string outcome = answer.text;
    if (answer.end != workers::End::done) {
        const Json error = {{"error", {{"code", nameOf(answer.end)}, {"text", answer.text}}}};
        outcome = error.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    // The outcome is an object; its members follow those of the case.
    return "{\"case\":" + std::to_string(number) + ",\"inputs\":" + inputsOf(study, number) + ',' + outcome.substr(1);
}

}  // namespace

void streamStudy(workers::Pool& pool, const studies::Study& study, const http::Write& write) {
    const auto start = Clock::now();
    Lines lines(write);
    lines.put(Json({{"cases", study.cases()}, {"inputs", study.variedKeys()}, {"keys", study.resultKeys()}}).dump());
    if (!lines.flush()) return;
    std::size_t asked = 0, refused = 0;
    const auto next = [&](std::string& request) {
        if (asked == study.cases()) return false;
        request = std::string(caseTask) + '\n' + studies::caseTask(study, asked++);
        return true;
    };
    const auto deliver = [&](std::size_t number, workers::Answer&& answer) {
        const std::string line = lineOf(study, number, answer);
        refused += answer.end != workers::End::done || answer.text.starts_with("{\"error\"");
        return lines.put(line);
    };
    const std::size_t delivered = workers::runBatch(pool, {next, deliver});
    Json end = {{"done", delivered == study.cases()}, {"cases", delivered}, {"refused", refused}};
    if (delivered < study.cases()) end["reason"] = "the server was stopped";
    end["seconds"] = std::chrono::duration<double>(Clock::now() - start).count();
    lines.put(end.dump());
    lines.flush();
}

}  // namespace frigana::serve
