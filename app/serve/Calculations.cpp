#include "Calculations.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "11_MainFrigana.h"
#include "CaseRun.h"
#include "CatalogueJson.h"
#include "ChartJson.h"
#include "Conversion.h"
#include "NamedRequest.h"
#include "Report.h"

namespace frigana::serve {

namespace {

using Json = nlohmann::ordered_json;

std::string folderOfData;  // of the workers

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; !from.empty() && (at = text.find(from, at)) != text.npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

// Answers tell no folders of the machine.
std::string withoutFolders(std::string text) {
    text = replaceAll(std::move(text), folderOfData, "data");
    return replaceAll(std::move(text), std::filesystem::current_path().string() + "/", "");
}

std::string answer(int status, const std::string& json) {
    return std::to_string(status) + '\n' + withoutFolders(json);
}

std::string refusal(std::string_view code, const std::vector<catalogue::Problem>& problems) {
    Json error = {{"code", code}, {"text", problems.front().text}, {"problems", Json::array()}};
    for (const catalogue::Problem& problem : problems)
        error["problems"].push_back({{"line", problem.line}, {"text", problem.text}});
    return answer(400, Json({{"error", error}}).dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

// What `frigana run --json` says of the same request.
std::string run(std::string_view body) {
    const catalogue::NamedRequest named =
        catalogue::readNamed(body, catalogue::NamedFormat::json, catalogue::FluidNames::of(folderOfData));
    if (!named.problems.empty()) return refusal("bad_request", named.problems);
    if (studies::storesInInstallation(*named.request))
        return refusal("not_here", {{0, "The server stores nothing in its installation."}});
    if (named.runs.size() > mostPoints)
        return refusal("too_many_points",
                       {{0, "A request has at most " + std::to_string(mostPoints) + " points; a study has more."}});
    app::ReportStyle style;
    style.units = named.units;
    style.resultFile = false;
    style.dataFolder = folderOfData;
    std::vector<app::Reported> results;
    int status = 0;
    for (const catalogue::FilledRequest& filled : named.runs) {
        clearRecords();
        results.push_back({catalogue::runFilled(filled, {folderOfData, false}), style});
        app::addRemarks(results.back().result, style);
        status = std::max(status, app::exitStatus(results.back().result));
    }
    std::ostringstream text;
    if (results.size() == 1)
        app::printJson(text, results.front().result, style);
    else
        app::printJson(text, results);
    return answer(status == 0 ? 200 : 422, text.str());
}

std::string chart(std::string_view body) {
    std::string json;
    const auto problems = chartJson(body, folderOfData, json);
    return problems.empty() ? answer(200, json) : refusal("bad_chart", problems);
}

std::string convert(std::string_view body) {
    clearRecords();
    std::string json;
    const auto problems = conversionJson(body, folderOfData, json);
    return problems.empty() ? answer(200, json) : refusal("bad_conversion", problems);
}

struct Task {
    std::string_view word;
    std::string (*calculate)(std::string_view body);
};

constexpr Task tasks[] = {
    {runTask, run},
    {chartTask, chart},
    {convertTask, convert},
    {caseTask, [](std::string_view body) { return withoutFolders(studies::runCase(body, folderOfData)); }},
    {fluidsTask, [](std::string_view) { return answer(200, fluidsJson(folderOfData)); }},
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
