#include "Calculations.h"

#include <filesystem>
#include <stdexcept>

#include "11_MainFrigana.h"
#include "CaseRun.h"
#include "CatalogueJson.h"
#include "ChartJson.h"
#include "Conversion.h"
#include "RunJson.h"
#include "StateJson.h"
#include "StoredBlends.h"

namespace frigana::serve {

namespace {

std::string folderOfData;  // of the workers

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; !from.empty() && (at = text.find(from, at)) != text.npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

// Answers tell no folders of the machine.
std::string withoutFolders(std::string text) {
    text = replaceAll(std::move(text), folderOfData, "data");
    text = replaceAll(std::move(text), catalogue::personalFolder(), "blends");
    return replaceAll(std::move(text), std::filesystem::current_path().string() + "/", "");
}

std::string answer(int status, const std::string& json) {
    return std::to_string(status) + '\n' + withoutFolders(json);
}

std::string answer(const programs::JsonAnswer& given) {
    return answer(given.status, given.json);
}

// What `frigana run --json` says of the same request.
std::string run(std::string_view body) {
    return answer(programs::runJson(body, {folderOfData, mostPoints, false}));
}

std::string chart(std::string_view body) {
    std::string json;
    const auto problems = programs::chartJson(body, folderOfData, json);
    return answer(problems.empty() ? programs::JsonAnswer{200, json} : programs::refusal("bad_chart", problems));
}

std::string state(std::string_view body) {
    std::string json;
    const auto problems = programs::stateJson(body, folderOfData, json);
    return answer(problems.empty() ? programs::JsonAnswer{200, json} : programs::refusal("bad_state", problems));
}

std::string convert(std::string_view body) {
    clearRecords();
    std::string json;
    const auto problems = conversionJson(body, folderOfData, json);
    return answer(problems.empty() ? programs::JsonAnswer{200, json} : programs::refusal("bad_conversion", problems));
}

struct Task {
    std::string_view word;
    std::string (*calculate)(std::string_view body);
};

constexpr Task tasks[] = {
    {runTask, run},
    {chartTask, chart},
    {stateTask, state},
    {convertTask, convert},
    {caseTask, [](std::string_view body) { return withoutFolders(studies::runCase(body, folderOfData)); }},
    {fluidsTask, [](std::string_view) { return answer(200, programs::fluidsJson(folderOfData)); }},
};

std::string calculate(std::string_view request) {
    const std::string_view word = request.substr(0, request.find('\n'));
    for (const Task& task : tasks)
        if (task.word == word) return task.calculate(request.substr(word.size() + 1));
    throw std::invalid_argument("there is no task " + std::string(word));
}

}  // namespace

workers::Calculation calculationWith(const std::string& installation) {
    folderOfData = installation;
    return calculate;
}

}  // namespace frigana::serve
