#include "Conversion.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "CaseRun.h"
#include "NamedRequest.h"
#include "RunResult.h"
#include "StoredBlends.h"
#include "Tree.h"

namespace frigana::serve {

namespace {

using namespace catalogue;
using Json = nlohmann::ordered_json;

class Conversion {
  public:
    Conversion(const Node& body, const std::string& dataFolder)
        : body_(body), dataFolder_(dataFolder), names_(FluidNames::of(dataFolder)) {}
    Json written();
    std::vector<Problem> problems;

  private:
    void problem(const std::string& text) { problems.push_back({0, text}); }
    void readBody();
    void readNamedText(const std::string& text, NamedFormat format);
    void readTemplate(const Node& name);
    void readPlaces(const Node& text);

    const Node& body_;
    const std::string& dataFolder_;
    const FluidNames& names_;
    UnitSystem units_ = UnitSystem::metric;
    bool result_ = false;
    FilledRequest filled_;
};

void Conversion::readNamedText(const std::string& text, NamedFormat format) {
    const NamedRequest named = readNamed(text, format, names_, personalFolder());
    problems = named.problems;
    if (!problems.empty()) return;
    if (named.runs.size() != 1) return problem("a request of several points has no other form");
    filled_ = named.runs.front();
}

void Conversion::readTemplate(const Node& name) {
    const Request* request = findRequest(name.text);
    if (request == nullptr) return problem("template = " + name.shown() + ": there is no such request");
    filled_ = typicalRequest(*request);
}

void Conversion::readPlaces(const Node& text) {
    if (const std::string fault = readPositionalText(text.text, filled_); !fault.empty()) problem(fault);
}

void Conversion::readBody() {
    constexpr std::string_view known[] = {"template", "toml", "fi1", "request", "units", "result"};
    int forms = 0;
    for (const auto& [key, node] : body_.members) {
        if (std::ranges::find(known, key) == std::end(known)) problem(key + ": a conversion has no such key");
        forms += key != "units" && key != "result";
    }
    if (forms != 1) problem("a conversion has one of template, toml, fi1 and request");
    if (const Node* units = body_.find("units")) {
        const auto system = unitSystemOf(units->text);
        if (!system) problem("units = " + units->shown() + ": allowed are SI, metric, imperial");
        units_ = system.value_or(units_);
    }
    if (const Node* result = body_.find("result")) result_ = result->boolean;
    if (!problems.empty()) return;
    if (const Node* name = body_.find("template")) readTemplate(*name);
    if (const Node* text = body_.find("toml")) readNamedText(text->text, NamedFormat::toml);
    if (const Node* text = body_.find("fi1")) readPlaces(*text);
    if (const Node* request = body_.find("request")) readNamedText(studies::jsonOf(*request), NamedFormat::json);
}

Json Conversion::written() {
    readBody();
    if (!problems.empty()) return {};
    const std::string toml = namedText(filled_, names_, {units_, false, true});
    // What no named request may say is told here, not when it is run.
    Node tree;
    problems = readNamed(toml, NamedFormat::toml, names_).problems;
    if (problems.empty()) problems = readToml(toml, tree);
    if (!problems.empty()) return {};
    Json json = {{"request", Json::parse(studies::jsonOf(tree))}, {"toml", toml}};
    if (!filled_.hasListedBlend()) json["fi1"] = positionalText(filled_);
    if (result_ && !studies::storesInInstallation(*filled_.request)) {
        const RunResult result = runFilled(filled_, {dataFolder_, true});
        if (result.resultExists) json["fo1"] = result.resultText;
    }
    return json;
}

}  // namespace

std::vector<Problem> conversionJson(std::string_view body, const std::string& dataFolder, std::string& json) {
    Node tree;
    if (auto problems = readJson(body, tree); !problems.empty()) return problems;
    Conversion conversion(tree, dataFolder);
    const Json written = conversion.written();
    json = written.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    return conversion.problems;
}

}  // namespace frigana::serve
