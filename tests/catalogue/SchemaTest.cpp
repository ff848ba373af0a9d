// The schemas of named requests against the requests themselves.
#include "Schema.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>

#include "NamedRequest.h"
#include "Results.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

using nlohmann::json;

// The schema of a key; null where the schema has none.
const json* schemaOf(const json& root, const std::string& key) {
    const json* at = &root;
    for (std::size_t begin = 0;;) {
        const auto dot = key.find('.', begin);
        const auto found = at->find("properties");
        if (found == at->end() || !found->contains(key.substr(begin, dot - begin))) return nullptr;
        at = &(*found)[key.substr(begin, dot - begin)];
        if (dot == std::string::npos) return at;
        begin = dot + 1;
    }
}

void collect(const Node& table, const std::string& prefix, std::set<std::string>& keys) {
    for (const auto& [name, node] : table.members) {
        const std::string key = prefix + name;
        if (node.kind == Node::Kind::table && !key.ends_with("fluid"))
            collect(node, key + '.', keys);
        else
            keys.insert(key);
    }
}

TEST(Schemas, KnowEveryKeyOfATypicalRequestAndNoOther) {
    for (const Request& request : requests()) {
        const json root = json::parse(frigana::catalogue::schemaOf(request));
        EXPECT_EQ(root["properties"]["request"]["const"], request.name);
        EXPECT_EQ(root["title"], request.title);
        EXPECT_EQ(root["additionalProperties"], false);
        EXPECT_EQ(root["required"][0], "request");
        EXPECT_EQ(root["properties"]["units"]["enum"], json({"SI", "metric", "imperial"}));
        Node tree;
        const std::string text =
            namedText(typicalRequest(request), FluidNames::of(test::dataFolder), {UnitSystem::SI, false, true});
        ASSERT_TRUE(readToml(text, tree).empty()) << text;
        std::set<std::string> keys;
        collect(tree, "", keys);
        EXPECT_GE(keys.size(), 2u) << text;
        for (const std::string& key : keys) {
            const json* schema = schemaOf(root, key);
            ASSERT_NE(schema, nullptr) << request.name << ' ' << key;
            if (key != "request") {
                EXPECT_FALSE((*schema)["description"].get<std::string>().empty()) << key;
            }
        }
        EXPECT_EQ(schemaOf(root, "nothing"), nullptr);
        EXPECT_EQ(root["x-results"].size(), resultsOf(request).size());
    }
}

// Of each form of a value one that the requests have.
TEST(Schemas, TellTheTypesOfTheirValues) {
    const auto typeOf = [](const char* request, const char* key) {
        const json root = json::parse(frigana::catalogue::schemaOf(*findRequest(request)));
        const json* schema = schemaOf(root, key);
        return schema == nullptr ? json() : *schema;
    };
    EXPECT_EQ(typeOf("basic", "evaporator.temperature")["type"], json({"number", "string"}));
    EXPECT_EQ(typeOf("basic", "evaporator.temperature")["description"], "mean temperature; allowed 100 K to 600 K");
    EXPECT_EQ(
        typeOf("multi-stage", "stages"),
        json::parse(R"({"type": "integer", "minimum": 2, "maximum": 7, "description": "number of compressors"})"));
    EXPECT_EQ(typeOf("line-sizing", "liquid_line.receiver")["type"], "boolean");
    EXPECT_FALSE(typeOf("line-sizing", "liquid_line.receiver").contains("const"));
    EXPECT_EQ(typeOf("two-stage", "intermediate.geometric_mean")["const"], true);
    EXPECT_EQ(typeOf("line-sizing", "suction_line.pipe.copper")["type"], "integer");
    EXPECT_EQ(typeOf("saturation-table", "property")["enum"], json({"temperature", "pressure"}));
    EXPECT_EQ(typeOf("saturation-table", "suggested_limits")["const"], true);
    EXPECT_EQ(typeOf("state-point", "points")["type"], "array");
    EXPECT_TRUE(typeOf("basic", "points").is_null());
    EXPECT_EQ(typeOf("basic", "fluid")["anyOf"].size(), 2u);
    // Two circuits have their fluids, one has it at the top.
    EXPECT_TRUE(typeOf("cascade", "fluid").is_null());
    EXPECT_EQ(typeOf("cascade", "low.fluid")["anyOf"].size(), 2u);
    EXPECT_TRUE(typeOf("cascade", "low.units").is_null());
    EXPECT_EQ(typeOf("multi-stage", "stage6.compressor.isentropic_efficiency")["type"], json({"number", "string"}));
}

}  // namespace
}  // namespace frigana::catalogue
