#include "StudyStream.h"

#include <chrono>
#include <nlohmann/json.hpp>

#include "Batch.h"
#include "Calculations.h"
#include "CaseRun.h"
#include "Rows.h"

namespace frigana::serve {

namespace {

using Json = nlohmann::ordered_json;
using Clock = std::chrono::steady_clock;

// Lines go together while they come fast, and each at once while they come slowly.
class Lines {
  public:
    explicit Lines(const http::Write& write) : write_(write) {}

    bool put(const std::string& line) {
        constexpr std::size_t enough = std::size_t{16} * 1024;
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

}  // namespace

void streamStudy(workers::Pool& pool, const studies::Study& study, const http::Write& write) {
    const auto start = Clock::now();
    Lines lines(write);
    lines.put(studies::headOf(study));
    if (!lines.flush()) return;
    std::size_t asked = 0, refused = 0;
    const auto next = [&](std::string& request) {
        if (asked == study.cases()) return false;
        request = std::string(caseTask) + '\n' + studies::caseTask(study, asked++);
        return true;
    };
    const auto deliver = [&](std::size_t number, workers::Answer&& answer) {
        const std::string line = studies::jsonRow(study, number, answer);
        refused += studies::isRefused(answer);
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
