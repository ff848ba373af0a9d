#include "CaseRun.h"

#include <cmath>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>

#include "11_MainFrigana.h"
#include "NamedRequest.h"
#include "RunResult.h"
#include "Search.h"
#include "StoredBlends.h"
#include "Tree.h"

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

// What came of a request: a result, or why there is none.
struct Outcome {
    std::optional<catalogue::RunResult> result;
    catalogue::UnitSystem units = catalogue::UnitSystem::SI;
    Json error;
};

Outcome outcomeOf(std::string_view request, const std::string& dataFolder) {
    const catalogue::NamedRequest named = catalogue::readNamed(
        request, catalogue::NamedFormat::json, catalogue::FluidNames::of(dataFolder), catalogue::personalFolder());
    const auto refused = [](const Json& error) { return Outcome{std::nullopt, catalogue::UnitSystem::SI, error}; };
    if (!named.problems.empty()) return refused(refusal("bad_request", named.problems.front().text));
    if (named.runs.size() != 1) return refused(refusal("bad_request", "a case of a study is one request"));
    if (storesInInstallation(*named.request)) return refused(refusal("not_here", "a study stores nothing"));
    clearRecords();
    catalogue::RunResult result = catalogue::runFilled(named.runs.front(), {dataFolder, false});
    if (!result.isDone()) return refused(refusal(result.report.IERR, std::string(result.report.HERR.trimmed())));
    return {std::move(result), named.units, {}};
}

Json valuesOf(const Outcome& outcome, const Json& keys) {
    Json values = Json::array();
    for (const Json& key : keys)
        values.push_back(valueOf(*outcome.result, key.get_ref<const std::string&>(), outcome.units));
    return values;
}

// ---- optimum
// ----------------------------------------------------------------------------------------------------------

// Trials of one case. A refused trial is worse than every other.
class Trials {
  public:
    Trials(const Json& search, std::string_view request, const std::string& dataFolder)
        : search_(search), dataFolder_(dataFolder) {
        catalogue::readJson(request, request_);
    }

    // What is to become small; refusedTrial where there is no value.
    double operator()(const std::vector<double>& at) {
        const Outcome outcome = run(at);
        if (!outcome.result) {
            if (firstError.is_null()) firstError = outcome.error;
            return refusedTrial;
        }
        const std::string& objective = search_["objective"].get_ref<const std::string&>();
        const double value = outcome.result->number(objective);
        if (!std::isfinite(value)) {
            if (firstError.is_null()) firstError = refusal("no_objective", "the result has no value " + objective);
            return refusedTrial;
        }
        return search_["maximise"].get<bool>() ? -value : value;
    }

    Outcome run(const std::vector<double>& at) const {
        catalogue::Node request = request_;
        for (std::size_t i = 0; i < at.size(); ++i) {
            const Json& over = search_["over"][i];
            const std::string& unit = over["unit"].get_ref<const std::string&>();
            put(request, over["key"].get_ref<const std::string&>(),
                unit.empty() ? numberNode(at[i]) : textNode(catalogue::numberText(at[i]) + ' ' + unit));
        }
        return outcomeOf(jsonOf(request), dataFolder_);
    }

    Json firstError;

  private:
    const Json& search_;
    const std::string& dataFolder_;
    catalogue::Node request_;
};

Json optimumOf(const Json& head, std::string_view request, const std::string& dataFolder) {
    const Json& search = head["optimum"];
    std::vector<SearchedRange> ranges;
    for (const Json& over : search["over"]) ranges.push_back({over["from"], over["to"], over["tolerance"]});
    Trials trials(search, request, dataFolder);
    std::vector<double> best;
    if (!searchLeast(ranges, std::ref(trials), best)) return trials.firstError;
    const Outcome outcome = trials.run(best);
    if (!outcome.result) return outcome.error;
    return {{"optimum", best}, {"values", valuesOf(outcome, head["keys"])}};
}

Json answer(std::string_view head, std::string_view request, const std::string& dataFolder) {
    const Json asked = Json::parse(head);
    if (asked.is_object()) return optimumOf(asked, request, dataFolder);
    const Outcome outcome = outcomeOf(request, dataFolder);
    if (!outcome.result) return outcome.error;
    return {{"values", valuesOf(outcome, asked)}};
}

}  // namespace

std::string caseTask(const Study& study, std::size_t number) {
    Json head = study.resultKeys();
    if (const auto& optimum = study.optimum()) {
        Json over = Json::array();
        for (const Optimum::Over& one : optimum->over)
            over.push_back({{"key", one.key},
                            {"from", one.from},
                            {"to", one.to},
                            {"tolerance", one.tolerance},
                            {"unit", one.unit != nullptr ? one.unit->symbol : std::string_view()}});
        head = {{"keys", study.resultKeys()},
                {"optimum",
                 {{"maximise", optimum->maximise}, {"objective", optimum->objective}, {"over", std::move(over)}}}};
    }
    return head.dump() + '\n' + study.caseRequest(number);
}

std::string runCase(std::string_view task, const std::string& dataFolder) {
    const std::size_t end = task.find('\n');
    const Json line = answer(task.substr(0, end), task.substr(end + 1), dataFolder);
    return line.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace frigana::studies
