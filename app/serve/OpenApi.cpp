#include "OpenApi.h"

#include <nlohmann/json.hpp>

#include "Catalogue.h"
#include "Schema.h"

namespace frigana::serve {

namespace {

using Json = nlohmann::ordered_json;

Json answers(std::string_view what, std::string_view type, const Json& schema) {
    const Json error = {{"application/json", {{"schema", {{"$ref", "#/components/schemas/error"}}}}}};
    return {{"200", {{"description", what}, {"content", {{std::string(type), {{"schema", schema}}}}}}},
            {"default", {{"description", "why there is no answer"}, {"content", error}}}};
}

Json get(std::string_view summary) {
    return {{"get", {{"summary", summary}, {"responses", answers(summary, "application/json", {{"type", "object"}})}}}};
}

Json post(std::string_view summary, const Json& body, std::string_view type) {
    const Json content = {{"application/json", {{"schema", body}}}};
    return {{"post",
             {{"summary", summary},
              {"requestBody", {{"required", true}, {"content", content}}},
              {"responses", answers(summary, type, {{"type", "object"}})}}}};
}

Json reference(std::string_view name) {
    return {{"$ref", "#/components/schemas/" + std::string(name)}};
}

Json schemas() {
    Json all = Json::object();
    Json every = Json::array();
    for (const catalogue::Request& request : catalogue::requests()) {
        // Stores in the installation, which no request to a server does.
        if (request.name == "store-blend") continue;
        Json schema = Json::parse(catalogue::schemaOf(request));
        schema.erase("$schema");
        all[std::string(request.name)] = std::move(schema);
        every.push_back(reference(request.name));
    }
    all["request"] = {{"oneOf", std::move(every)}};
    const Json text = {{"type", "string"}};
    const Json side = {{"type", "number"}};
    all["chart"] = {{"type", "object"},
                    {"required", {"kind"}},
                    {"properties",
                     {{"kind", {{"enum", {"ph", "ts", "hs", "pT"}}}},
                      {"fluid", text},
                      {"fluids", {{"type", "array"}, {"items", text}}},
                      {"request", reference("request")},
                      {"units", {{"enum", {"SI", "metric", "imperial"}}}},
                      {"reference", {{"enum", {"DEF", "IIR", "ASH", "NBP"}}}},
                      {"width", side},
                      {"height", side}}},
                    {"additionalProperties", false}};
    all["study"] = {{"type", "object"},
                    {"required", {"request", "results"}},
                    {"properties",
                     {{"request", {{"type", "object"}}},
                      {"vary", {{"type", "object"}}},
                      {"zip", {{"type", "object"}}},
                      {"results",
                       {{"type", "object"},
                        {"required", {"keys"}},
                        {"properties", {{"keys", {{"type", "array"}, {"items", text}, {"minItems", 1}}}}}}}}},
                    {"additionalProperties", false}};
    const Json given = {{"type", {"string", "number"}}};
    all["state"] = {{"type", "object"},
                    {"required", {"fluid"}},
                    {"properties",
                     {{"fluid", {{"type", {"string", "object"}}}},
                      {"fractions", {{"enum", {"mass", "mole"}}}},
                      {"blend_name", text},
                      {"reference_state", {{"enum", {"DEF", "IIR", "ASHRAE", "NBP"}}}},
                      {"reference_of", {{"enum", {"composition", "pure fluids"}}}},
                      {"T", given},
                      {"P", given},
                      {"D", given},
                      {"H", given},
                      {"S", given},
                      {"Q", given}}},
                    {"additionalProperties", false}};
    all["conversion"] = {{"type", "object"},
                         {"properties",
                          {{"template", text},
                           {"toml", text},
                           {"fi1", text},
                           {"request", reference("request")},
                           {"units", {{"enum", {"SI", "metric", "imperial"}}}},
                           {"result", {{"type", "boolean"}}}}},
                         {"additionalProperties", false}};
    const Json places = {{"type", "array"}, {"items", text}};
    const Json problem = {{"type", "object"}, {"properties", {{"line", {{"type", "integer"}}}, {"text", text}}}};
    const Json error = {
        {"type", "object"},
        {"required", {"code", "text"}},
        {"properties",
         {{"code", text}, {"text", text}, {"where", places}, {"problems", {{"type", "array"}, {"items", problem}}}}}};
    all["error"] = {{"type", "object"}, {"required", {"error"}}, {"properties", {{"error", error}}}};
    return all;
}

}  // namespace

std::string openApiJson() {
    const Json paths = {
        {"/api/health", get("Whether the server and its workers are well")},
        {"/api/version", get("The version of the program")},
        {"/api/openapi.json", get("This description")},
        {"/api/requests", get("Every request with its parameters, options, limits and units")},
        {"/api/fluids", get("The fluids and blends that a request may name")},
        {"/api/run", post("The result of a named request; 422 with a result that says why where it was refused",
                          reference("request"), "application/json")},
        {"/api/chart", post("A chart of a fluid or of a result, as a picture and as numbers", reference("chart"),
                            "application/json")},
        {"/api/state",
         post("The state of a fluid from two of T, P, D, H, S, Q", reference("state"), "application/json")},
        {"/api/convert",
         post("One request in all its forms: JSON, TOML and by places, with its result file if asked for",
              reference("conversion"), "application/json")},
        {"/api/study",
         post("The cases of a study, one line of JSON for each", reference("study"), "application/x-ndjson")},
    };
    const Json all = {{"openapi", "3.1.0"},
                      {"info", {{"title", "Frigana"}, {"version", FRIGANA_VERSION}}},
                      {"paths", paths},
                      {"components", {{"schemas", schemas()}}}};
    return all.dump(2) + "\n";
}

}  // namespace frigana::serve
