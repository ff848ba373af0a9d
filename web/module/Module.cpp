// The calculation of the page as a module of WebAssembly: a text in, a text out. Beside it the module has the functions
// of frigana_api.h for properties over arrays. Data stands in /frigana/data, where web/src/engine/host.ts puts it.
#include <charconv>
#include <exception>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Answer.h"
#include "Calculations.h"
#include "CaseRun.h"
#include "CatalogueJson.h"
#include "Rows.h"
#include "RunJson.h"
#include "Study.h"

namespace {

using namespace frigana;
using Json = nlohmann::ordered_json;

constexpr const char* folderOfData = "/frigana/data";
constexpr const char* folderOfWork = "/frigana/work";

// The limits of the server hold here, too.
constexpr std::size_t mostCasesOfAStudy = 200'000;

struct Refused {
    std::string_view code;
    std::vector<catalogue::Problem> problems;
};

// Takes the first line off a text.
std::string_view firstLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    return line;
}

// The study of a description: that of the last case is still known.
const studies::Study& studyOf(std::string_view description) {
    static std::string known;
    static std::optional<studies::Study> study;
    if (study && known == description) return *study;
    study.reset();
    catalogue::Node tree;
    if (auto problems = catalogue::readJson(description, tree); !problems.empty())
        throw Refused{"bad_study", std::move(problems)};
    try {
        study.emplace(tree, nullptr);
    } catch (const studies::Faulty& faulty) {
        throw Refused{"bad_study", faulty.problems};
    }
    known = description;
    return *study;
}

// The first line of a study; what it refuses, the server refuses in the same words.
std::string headOf(std::string_view description) {
    const studies::Study& study = studyOf(description);
    if (study.optimum())
        throw Refused{"bad_study", {{0, "An optimum is searched by the program and its server, not here."}}};
    if (study.cases() > mostCasesOfAStudy)
        throw Refused{"too_many_cases",
                      {{0, "A study has at most " + std::to_string(mostCasesOfAStudy) + " cases here; this one has " +
                               std::to_string(study.cases()) + "."}}};
    return studies::headOf(study);
}

std::size_t numberIn(std::string_view text) {
    std::size_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// The catalogue: requests. Of studies, each with its description: study; row, N; lost, N, END, TEXT. All others are
// those of the workers of the server.
std::string answerTo(std::string_view task) {
    static const workers::Calculation calculate = serve::calculationWith(folderOfData);
    std::string_view rest = task;
    const std::string_view word = firstLine(rest);
    if (word == "requests") return "200\n" + programs::requestsJson();
    if (word == "study") return "200\n" + headOf(rest);
    if (word == "row") {
        const std::size_t number = numberIn(firstLine(rest));
        const studies::Study& study = studyOf(rest);
        std::string text = calculate(std::string(serve::caseTask) + '\n' + studies::caseTask(study, number));
        return "200\n" + studies::jsonRow(study, number, {workers::End::done, std::move(text), {}});
    }
    if (word == "lost") {
        const std::size_t number = numberIn(firstLine(rest));
        const workers::End end = firstLine(rest) == "too slow" ? workers::End::tooSlow : workers::End::died;
        const std::string text(firstLine(rest));
        return "200\n" + studies::jsonRow(studyOf(rest), number, {end, text, {}});
    }
    return calculate(task);
}

std::string complaint(std::string_view code, std::string_view text) {
    const Json error = {{"error", {{"code", code}, {"text", text}}}};
    return "500\n" + error.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

// Answers a task: one word, a line end, and what it is about.
//   Returned  (value)  a status of HTTP, a line end and JSON; valid until the next call
extern "C" const char* frigana_answer(const char* task) {
    static std::string answer;
    try {
        std::filesystem::create_directories(folderOfWork);
        std::filesystem::current_path(folderOfWork);
        answer = answerTo(task);
    } catch (const Refused& refused) {
        const programs::JsonAnswer given = programs::refusal(refused.code, refused.problems);
        answer = std::to_string(given.status) + '\n' + given.json;
    } catch (const std::exception& failure) {
        answer = complaint("threw", failure.what());
    }
    return answer.c_str();
}
