#include "CaseRun.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "11_MainFrigana.h"
#include "NamedRequest.h"
#include "RunResult.h"

namespace frigana::studies {

namespace {

using Json = nlohmann::ordered_json;

Json refusal(const Json& code, const std::string& text) {
    return {{"error", {{"code", code}, {"text", text}}}};
}

Json valueOf(const catalogue::RunResult& result, std::string_view key, catalogue::UnitSystem units) {
    const catalogue::Value* value = result.find(key);
    if (value == nullptr) return nullptr;
    if (!value->isNumber()) return value->text;
    const double number = value->number();
    if (!std::isfinite(number)) return nullptr;
    if (units == catalogue::UnitSystem::SI || value->quantity == catalogue::Quantity::none) return number;
    return catalogue::fromInner(number, catalogue::unitIn(units, value->quantity));
}

Json answer(std::string_view keys, std::string_view request, const std::string& dataFolder) {
    const catalogue::NamedRequest named =
        catalogue::readNamed(request, catalogue::NamedFormat::json, catalogue::FluidNames::of(dataFolder));
    if (!named.problems.empty()) return refusal("bad_request", named.problems.front().text);
    if (named.runs.size() != 1) return refusal("bad_request", "a case of a study is one request");
    if (storesInInstallation(*named.request)) return refusal("not_here", "a study stores nothing");
    clearRecords();
    const catalogue::RunResult result = catalogue::runFilled(named.runs.front(), {dataFolder, false});
    if (!result.isDone()) return refusal(result.report.IERR, std::string(result.report.HERR.trimmed()));
    Json values = Json::array();
    for (const Json& key : Json::parse(keys)) values.push_back(valueOf(result, key.get<std::string>(), named.units));
    return {{"values", values}};
}

}  // namespace

bool storesInInstallation(const catalogue::Request& request) {
    return request.name == "store-blend";
}

std::string caseTask(const Study& study, std::size_t number) {
    return Json(study.resultKeys()).dump() + '\n' + study.caseRequest(number);
}

std::string runCase(std::string_view task, const std::string& dataFolder) {
    const std::size_t end = task.find('\n');
    const Json line = answer(task.substr(0, end), task.substr(end + 1), dataFolder);
    return line.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace frigana::studies
