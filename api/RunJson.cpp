#include "RunJson.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "11_MainFrigana.h"
#include "NamedRequest.h"
#include "Report.h"
#include "StoredBlends.h"
#include "Study.h"

namespace frigana::programs {

using Json = nlohmann::ordered_json;

JsonAnswer refusal(std::string_view code, const std::vector<catalogue::Problem>& problems) {
    Json error = {{"code", code}, {"text", problems.front().text}, {"problems", Json::array()}};
    for (const catalogue::Problem& problem : problems) {
        Json one = {{"line", problem.line}, {"text", problem.text}};
        if (!problem.key.empty()) one["key"] = problem.key;
        if (!problem.allowed.empty()) one["allowed"] = problem.allowed;
        error["problems"].push_back(std::move(one));
    }
    return {400, Json({{"error", error}}).dump(2, ' ', false, Json::error_handler_t::replace) + "\n"};
}

catalogue::NamedFormat formatOf(std::string_view body) {
    const std::size_t first = body.find_first_not_of(" \t\r\n");
    const bool json = first != body.npos && body[first] == '{';
    return json ? catalogue::NamedFormat::json : catalogue::NamedFormat::toml;
}

JsonAnswer runJson(std::string_view body, const RunRules& rules) {
    const std::string blends = catalogue::personalFolder();
    const catalogue::NamedRequest named =
        catalogue::readNamed(body, rules.format, catalogue::FluidNames::of(rules.dataFolder), blends);
    if (!named.problems.empty()) return refusal("bad_request", named.problems);
    if (!rules.mayStore && studies::storesInInstallation(*named.request))
        return refusal("not_here", {{0, "Nothing is stored here."}});
    if (named.runs.size() > rules.mostPoints)
        return refusal("too_many_points", {{0, "A request has at most " + std::to_string(rules.mostPoints) +
                                                   " points; a study has more."}});
    app::ReportStyle style;
    style.units = named.units;
    style.resultFile = false;
    style.dataFolder = rules.dataFolder;
    std::vector<app::Reported> results;
    int status = 0;
    for (const catalogue::FilledRequest& filled : named.runs) {
        clearRecords();
        results.push_back({catalogue::runFilled(filled, {rules.dataFolder, false, {}, blends}), style});
        app::addRemarks(results.back().result, style);
        status = std::max(status, app::exitStatus(results.back().result));
    }
    std::ostringstream text;
    if (results.size() == 1)
        app::printJson(text, results.front().result, style);
    else
        app::printJson(text, results);
    return {status == 0 ? 200 : 422, text.str()};
}

}  // namespace frigana::programs
