// Every request through the server: the answers are those of the same calculation without it, whoever else asks.
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

#include "Client.h"
#include "NamedRequest.h"
#include "Report.h"
#include "RunResult.h"
#include "ServedProgram.h"
#include "TemporaryFolder.h"
#include "Tree.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

namespace fs = std::filesystem;
using json = nlohmann::ordered_json;
using test::post;
using test::Reply;
using test::ServedProgram;

const catalogue::FluidNames& names() {
    return catalogue::FluidNames::of(test::dataFolder);
}

// The typical request as JSON.
std::string typical(const catalogue::Request& request) {
    const std::string toml = catalogue::namedText(catalogue::typicalRequest(request), names(), {});
    catalogue::Node tree;
    EXPECT_TRUE(catalogue::readToml(toml, tree).empty()) << toml;
    return studies::jsonOf(tree);
}

std::string calculatedHere(const std::string& request) {
    const auto named = catalogue::readNamed(request, catalogue::NamedFormat::json, names());
    EXPECT_TRUE(named.problems.empty()) << request;
    auto result = catalogue::runFilled(named.runs.front(), {test::dataFolder, false});
    app::ReportStyle style;
    style.units = named.units;
    style.resultFile = false;
    style.dataFolder = test::dataFolder;
    app::addRemarks(result, style);
    std::ostringstream text;
    app::printJson(text, result, style);
    return text.str();
}

std::vector<std::string> filesBelow(const std::string& folder) {
    std::vector<std::string> all;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) all.push_back(entry.path().string());
    std::sort(all.begin(), all.end());
    return all;
}

struct Requests : testing::Test {
    static void SetUpTestSuite() {
        folder = new test::TemporaryFolder;
        setenv("TMPDIR", folder->path().c_str(), 1);
        home = new test::TemporaryFolder;
        setenv("XDG_DATA_HOME", home->path().c_str(), 1);
        program = new ServedProgram({"--jobs", "2", "--data", test::dataFolder});
        unsetenv("TMPDIR");
        unsetenv("XDG_DATA_HOME");
    }
    static void TearDownTestSuite() {
        delete program;
        delete folder;
        delete home;
    }
    void SetUp() override { ASSERT_GT(port(), 0) << program->said(); }
    static int port() { return program->port(); }

    static test::TemporaryFolder *folder, *home;  // the second with the blends of who serves
    static ServedProgram* program;
};
test::TemporaryFolder *Requests::folder = nullptr, *Requests::home = nullptr;
ServedProgram* Requests::program = nullptr;

TEST_F(Requests, EveryOneIsAnsweredAsWithoutTheServer) {
    for (const catalogue::Request& request : catalogue::requests()) {
        const std::string body = typical(request);
        const Reply reply = post(port(), "/api/run", body);
        if (request.name == "store-blend") {
            EXPECT_EQ(reply.status, 400);
            EXPECT_EQ(json::parse(reply.body)["error"]["code"], "not_here");
            continue;
        }
        EXPECT_EQ(reply.status, 200) << request.name << reply.body;
        EXPECT_EQ(reply.body, calculatedHere(body)) << request.name;
    }
}

// The records of one caller reach no other: each answer is what it was when it was asked first.
TEST_F(Requests, AnswersDoNotDependOnWhoAskedBefore) {
    std::vector<std::string> bodies;
    std::vector<std::string> first;
    for (const catalogue::Request& request : catalogue::requests())
        if (request.name != "store-blend") bodies.push_back(typical(request));
    bodies.push_back(R"({"request": "basic", "fluid": "R134a"})");
    bodies.push_back(R"({"request": "nothing"})");
    for (const std::string& body : bodies) first.push_back(post(port(), "/api/run", body).body);
    std::vector<std::thread> clients;
    std::atomic<int> same = 0;
    constexpr int callers = 4, asked = 12;
    for (int caller = 0; caller < callers; ++caller)
        clients.emplace_back([&, caller] {
            for (int i = 0; i < asked; ++i) {
                const auto which = static_cast<std::size_t>(i * 7 + caller * 5 + i * i) % bodies.size();
                same += post(port(), "/api/run", bodies[which]).body == first[which];
            }
        });
    for (std::thread& client : clients) client.join();
    EXPECT_EQ(same, callers * asked);
}

TEST_F(Requests, MalformedOnesAreToldWhatIsWrong) {
    struct Row {
        const char* body;
        int status;
        const char* text;
    };
    const std::string deep = std::string(40, '[') + std::string(40, ']');
    const std::string deepRequest = R"({"request": )" + deep + "}";
    const Row rows[] = {
        {"", 400, "this is no JSON"},
        {"{", 400, "this is no JSON"},
        {"null", 400, "a table of names and values"},
        {"[]", 400, "a table of names and values"},
        {"\"text\"", 400, "a table of names and values"},
        {"12", 400, "a table of names and values"},
        {"{}", 400, "request"},
        {"{\"request\": 1}", 400, "request"},
        {"{\"request\": null}", 400, "request"},
        {"{\"request\": \"basic\", \"request\": \"basic\"}", 400, "twice"},
        {"{\"request\": \"basics\"}", 400, "basic"},
        {"{\"request\": \"basic\", \"fluid\": 134}", 400, "fluid"},
        {"{\"request\": \"basic\", \"fluid\": {\"R134a\": \"x\"}}", 400, ""},
        {"{\"request\": \"basic\", \"evaporator\": 5}", 400, "evaporator"},
        {"{\"request\": \"basic\", \"evaporator\": {\"temperature\": [1, 2]}}", 400, "evaporator.temperature"},
        {"{\"request\": \"basic\", \"evaporator\": {\"temperature\": 1e999}}", 400, ""},
        {"{\"request\": \"\xff\xfe\"}", 400, ""},
        {"{\"request\": \"basic\\u0000\"}", 400, ""},
        {deepRequest.c_str(), 400, "deep"},
    };
    for (const Row& row : rows) {
        const Reply reply = post(port(), "/api/run", row.body);
        EXPECT_EQ(reply.status, row.status) << row.body;
        const json answer = json::parse(reply.body, nullptr, false);
        ASSERT_FALSE(answer.is_discarded()) << row.body << reply.body;
        EXPECT_NE(reply.body.find(row.text), std::string::npos) << row.body << reply.body;
    }
}

TEST_F(Requests, NoNameIsAPath) {
    const std::string data = test::dataFolder;
    const auto before = filesBelow(data);
    const std::string request = typical(*catalogue::findRequest("basic"));
    std::vector<std::string> tricks = {"../../../../etc/passwd",
                                       "/etc/passwd",
                                       "..\\..\\etc\\passwd",
                                       "fluids/R134A.FLD",
                                       "../fluids/R134A.FLD",
                                       "./R134A.FLD",
                                       "R134A.FLD/",
                                       "R134A.FLD\\",
                                       "..",
                                       ".",
                                       "/",
                                       "",
                                       "~",
                                       "$HOME",
                                       "%2e%2e/x",
                                       "file:///etc/passwd",
                                       "\\\\host\\share",
                                       "C:\\windows",
                                       "R134A.FLD\n/etc/passwd",
                                       std::string(10'000, 'R'),
                                       std::string("R134A.FLD\0.MIX", 14),
                                       data + "/fluids/R134A.FLD"};
    for (const std::string& trick : tricks) {
        json body = json::parse(request);
        body["fluid"] = trick;
        Reply reply = post(port(), "/api/run", body.dump());
        EXPECT_EQ(reply.status, 400) << trick << reply.body;
        // A name is repeated, but no folder that was not in it is told.
        if (trick.find(data) == trick.npos) {
            EXPECT_EQ(reply.body.find(data), std::string::npos) << reply.body;
        }
        body["fluid"] = {{trick, 0.5}, {"R32", 0.5}};
        EXPECT_EQ(post(port(), "/api/run", body.dump()).status, 400) << trick;
        // The name of a blend of one's own becomes that of a file, in the folder of the run alone.
        body["fluid"] = {{"R32", 0.5}, {"R125", 0.5}};
        body["blend_name"] = trick;
        reply = post(port(), "/api/run", body.dump());
        EXPECT_NE(reply.status, 500) << trick << reply.body;
        EXPECT_EQ(reply.body.find(folder->path()), std::string::npos) << reply.body;
    }
    EXPECT_EQ(filesBelow(data), before);
    // The folders of the workers, and nothing in them.
    for (const std::string& path : filesBelow(folder->path()))
        EXPECT_TRUE(path.ends_with(".said") || fs::is_directory(path)) << path;
}

TEST_F(Requests, TheCatalogueAndTheFluidsAreTold) {
    const json all = json::parse(test::ask(port(), "GET", "/api/requests").body);
    ASSERT_EQ(all["requests"].size(), 20u);
    const json& basic = *std::find_if(all["requests"].begin(), all["requests"].end(),
                                      [](const json& one) { return one["name"] == "basic"; });
    const json& option = basic["circuits"][0]["parameters"][0]["options"][0];
    EXPECT_EQ(option["key"], "evaporator.temperature");
    EXPECT_EQ(option["limits"]["lower"], 100.0);
    EXPECT_EQ(all["quantities"][option["quantity"].get<std::string>()]["systems"]["SI"], "K");

    const json fluids = json::parse(test::ask(port(), "GET", "/api/fluids").body)["fluids"];
    std::map<std::string, json> byFile;
    for (const json& fluid : fluids) byFile[fluid["file"]] = fluid;
    EXPECT_EQ(byFile.at("R134A.FLD")["shown"], "R134a");
    EXPECT_EQ(byFile.at("R410A.MIX")["components"].size(), 2u);
    std::size_t files = 0;
    for (const char* kind : {"fluids", "mixtures"})
        for (const auto& entry : fs::directory_iterator(std::string(test::dataFolder) + '/' + kind))
            files += entry.path().extension() == ".FLD" || entry.path().extension() == ".MIX";
    EXPECT_EQ(fluids.size(), files);
}

TEST_F(Requests, TheDescriptionNamesEveryPathThatAnswers) {
    const json all = json::parse(test::ask(port(), "GET", "/api/openapi.json").body);
    EXPECT_EQ(all["openapi"], "3.1.0");
    for (const auto& [path, methods] : all["paths"].items())
        for (const auto& [method, description] : methods.items()) {
            const std::string allowed = test::ask(port(), "OPTIONS", path).header("Allow");
            EXPECT_NE(allowed.find(method == "get" ? "GET" : "POST"), std::string::npos) << path << ' ' << method;
        }
    EXPECT_EQ(all["components"]["schemas"]["request"]["oneOf"].size(), 19u);
}

TEST_F(Requests, ChartsAreDrawnAndRefused) {
    const json cycle = {{"kind", "ph"}, {"request", json::parse(typical(*catalogue::findRequest("basic")))}};
    for (const json& body : {json({{"kind", "ph"}, {"fluid", "R134a"}}), json({{"kind", "ts"}, {"fluid", "R410A"}}),
                             json({{"kind", "pT"}, {"fluids", {"R134a", "R290"}}}), cycle}) {
        const Reply reply = post(port(), "/api/chart", body.dump());
        EXPECT_EQ(reply.status, 200) << body << reply.body;
        const json chart = json::parse(reply.body)["charts"][0];
        EXPECT_TRUE(chart["svg"].get<std::string>().starts_with("<svg"));
        EXPECT_FALSE(chart["lines"].empty());
        // The places lie within the axes.
        for (const json& line : chart["lines"])
            for (const json& place : line["points"]) {
                EXPECT_GE(place[0],
                          chart["x"]["low"].get<double>() - 1e-6 * std::abs(chart["x"]["high"].get<double>()));
                EXPECT_LE(place[1], chart["y"]["high"].get<double>() * (1 + 1e-6));
            }
    }
    for (const char* body :
         {R"({})", R"({"kind": "xy", "fluid": "R134a"})", R"({"kind": "ph"})", R"({"kind": "ph", "fluid": "../R134a"})",
          R"({"kind": "ph", "fluids": ["R134a", "R290"]})", R"({"kind": "ph", "fluid": "R134a", "width": 1e9})",
          R"({"kind": "ph", "fluid": "R134a", "out": "/tmp/picture.svg"})",
          R"({"kind": "ph", "request": {"request": "basic"}})"})
        EXPECT_EQ(post(port(), "/api/chart", body).status, 400) << body;
}

// Whatever form a request comes in, the others are the same request.
TEST_F(Requests, EveryFormOfARequestIsTheSameRequest) {
    for (const catalogue::Request& request : catalogue::requests()) {
        const Reply reply = post(port(), "/api/convert", json({{"template", request.name}, {"units", "SI"}}).dump());
        ASSERT_EQ(reply.status, 200) << reply.body;
        const json first = json::parse(reply.body);
        EXPECT_EQ(first["request"]["request"], request.name);
        for (const char* form : {"request", "toml", "fi1"}) {
            const json body = {{form, first[form]}, {"units", "SI"}};
            const json again = json::parse(post(port(), "/api/convert", body.dump()).body);
            EXPECT_EQ(again["fi1"], first["fi1"]) << request.name << ' ' << form;
            EXPECT_EQ(again["toml"], first["toml"]) << request.name << ' ' << form;
        }
    }
}

TEST_F(Requests, AResultFileIsWhatTheRequestByPlacesLeaves) {
    const json body = {{"template", "basic"}, {"result", true}};
    const json all = json::parse(post(port(), "/api/convert", body.dump()).body);
    const test::TemporaryFolder own;
    test::writeFile(own.path("plant.fi1"), all["fi1"].get<std::string>());
    catalogue::runPositional(own.path("plant.fi1"), {test::dataFolder, false});
    EXPECT_EQ(all["fo1"], test::readFile(own.path("plant.fo1")));
    EXPECT_FALSE(json::parse(post(port(), "/api/convert", R"({"template": "basic"})").body).contains("fo1"));
    const json stored =
        json::parse(post(port(), "/api/convert", json({{"template", "store-blend"}, {"result", true}}).dump()).body);
    EXPECT_FALSE(stored.contains("fo1"));
}

TEST_F(Requests, ConversionsOfNothingAreRefused) {
    for (const char* body :
         {R"({})", R"({"template": "none"})", R"({"template": 1})", R"({"toml": "request = "})", R"({"fi1": "x"})",
          R"({"fi1": 5})", R"({"toml": "request = \"basic\""})", R"({"template": "basic", "toml": ""})",
          R"({"template": "basic", "units": "none"})", R"({"template": "basic", "out": "/tmp/x"})",
          R"({"request": {"request": "basic"}})", R"({"request": "basic"})"}) {
        const Reply reply = post(port(), "/api/convert", body);
        EXPECT_EQ(reply.status, 400) << body << reply.body;
        EXPECT_EQ(json::parse(reply.body)["error"]["code"], "bad_conversion") << body;
    }
}

TEST_F(Requests, AStudyGivesTheValuesOfItsRequests) {
    json study = {{"request", json::parse(typical(*catalogue::findRequest("basic")))},
                  {"vary",
                   {{"fluid", {"R134a", "R290", "nothing"}},
                    {"evaporator.temperature", {{"from", "-10 °C"}, {"to", "0 °C"}, {"step", "5 K"}}}}},
                  {"results", {{"keys", {"performance.cop_cooling", "compressor.outlet.temperature", "no.such.key"}}}}};
    const Reply reply = post(port(), "/api/study", study.dump());
    ASSERT_EQ(reply.status, 200) << reply.body;
    std::istringstream lines(reply.body);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(json::parse(line)["cases"], 9);
    for (const char* fluid : {"R134a", "R290", "nothing"})
        for (const char* temperature : {"-10 °C", "-5 °C", "0 °C"}) {
            std::getline(lines, line);
            const json got = json::parse(line);
            EXPECT_EQ(got["inputs"], json({fluid, temperature}));
            if (std::string_view(fluid) == "nothing") {
                EXPECT_NE(got["error"]["text"].get<std::string>().find("nothing"), std::string::npos);
                continue;
            }
            json body = study["request"];
            body["fluid"] = fluid;
            body["evaporator"].erase("pressure");
            body["evaporator"]["temperature"] = temperature;
            const auto named = catalogue::readNamed(body.dump(), catalogue::NamedFormat::json, names());
            ASSERT_TRUE(named.problems.empty());
            const auto result = catalogue::runFilled(named.runs.front(), {test::dataFolder, false});
            EXPECT_EQ(got["values"][0], result.number("performance.cop_cooling"));
            EXPECT_EQ(got["values"][1], result.number("compressor.outlet.temperature"));
            EXPECT_TRUE(got["values"][2].is_null());
        }
    std::getline(lines, line);
    EXPECT_EQ(json::parse(line)["refused"], 3);
}

// Every pair leads back to the state that temperature and pressure give, or temperature and quality.
TEST_F(Requests, AStateIsFoundFromAnyTwoProperties) {
    const auto state = [](const json& body) { return json::parse(post(port(), "/api/state", body.dump()).body); };
    constexpr std::pair<const char*, const char*> names[] = {{"T", "temperature"}, {"P", "pressure"}, {"D", "density"},
                                                             {"H", "enthalpy"},    {"S", "entropy"},  {"Q", "quality"}};
    int pairs = 0;
    for (const json& start : {json{{"fluid", "R134a"}, {"T", "60 °C"}, {"P", "10 bar"}},
                              json{{"fluid", "R407C"}, {"T", 280.0}, {"Q", 0.4}, {"reference_state", "IIR"}}}) {
        const json found = state(start);
        ASSERT_TRUE(found.contains("entropy")) << found;
        const bool wet = !found["quality"].is_null();
        EXPECT_EQ(wet, start.contains("Q"));
        for (std::size_t i = 0; i < std::size(names); ++i)
            for (std::size_t j = 0; j < i; ++j) {
                if (!wet && names[i].first == std::string("Q")) continue;
                // At one temperature the enthalpy and entropy of a vapor may belong to a second, denser state.
                json body = {{"fluid", start["fluid"]}, {"reference_state", start.value("reference_state", "DEF")}};
                body[names[i].first] = found[names[i].second];
                body[names[j].first] = found[names[j].second];
                const json again = state(body);
                ASSERT_TRUE(again.contains("density")) << body << again;
                EXPECT_NEAR(again["temperature"].get<double>(), found["temperature"].get<double>(), 1e-4) << body;
                EXPECT_NEAR(again["pressure"].get<double>() / found["pressure"].get<double>(), 1.0, 1e-5) << body;
                EXPECT_NEAR(again["density"].get<double>() / found["density"].get<double>(), 1.0, 1e-5) << body;
                ++pairs;
            }
    }
    EXPECT_EQ(pairs, 10 + 15);
    for (const char* body :
         {R"({})", R"([])", R"(1)", R"({"fluid": "R134a"})", R"({"fluid": "R134a", "T": 300})",
          R"({"fluid": "R134a", "T": 300, "P": 100, "D": 3})", R"({"fluid": "R999", "T": 300, "P": 1})",
          R"({"fluid": "R134a", "T": "300 bar", "P": 100})", R"({"fluid": "R134a", "T": {}, "P": 100})",
          R"({"fluid": "R134a", "T": 300, "Q": 2})", R"({"fluid": "R134a", "T": 3000, "P": 100})",
          R"({"fluid": "R134a", "T": 300, "P": 100, "out": "/tmp/x"})"}) {
        const Reply reply = post(port(), "/api/state", body);
        EXPECT_EQ(reply.status, 400) << body << reply.body;
        EXPECT_EQ(json::parse(reply.body)["error"]["code"], "bad_state") << body;
    }
}

// The blends of who serves, as those of the installation; a file that is none tells no folder.
TEST_F(Requests, OwnBlendsAreKnownByName) {
    const auto fluids = [&] { return json::parse(test::ask(port(), "GET", "/api/fluids").body)["fluids"]; };
    const std::size_t before = fluids().size();
    fs::create_directories(home->path("frigana"));
    test::writeFile(home->path("frigana/Half.toml"),
                    "request = \"store-blend\"\nfluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = \"Half\"\n");
    test::writeFile(home->path("frigana/None.toml"), "request = \"basic\"\n");
    const json all = fluids();
    ASSERT_EQ(all.size(), before + 2);
    EXPECT_EQ(all[before]["name"], "Half");
    EXPECT_EQ(all[before]["own"], true);
    EXPECT_EQ(all[before]["components"][0]["mass_fraction"], 0.5);
    EXPECT_TRUE(all[before + 1].contains("fault"));

    json request = json::parse(typical(*catalogue::findRequest("basic")));
    request["fluid"] = json{{"R32", 0.5}, {"R125", 0.5}};
    request["blend_name"] = "Half";
    const json listed = json::parse(post(port(), "/api/run", request.dump()).body);
    request.erase("blend_name");
    request["fluid"] = "half";
    const json named = json::parse(post(port(), "/api/run", request.dump()).body);
    EXPECT_EQ(named["values"], listed["values"]);
    ASSERT_GT(named["values"].size(), 100u);

    for (const json& chart : {json{{"kind", "ph"}, {"request", request}}, json{{"kind", "ts"}, {"fluid", "half"}},
                              json{{"kind", "pT"}, {"fluids", {"half", "R32"}}}}) {
        const Reply reply = post(port(), "/api/chart", chart.dump());
        EXPECT_EQ(reply.status, 200) << reply.body;
    }
    const Reply converted = post(port(), "/api/convert", json{{"request", request}}.dump());
    EXPECT_EQ(json::parse(converted.body)["request"]["fluid"], (json{{"R32", 0.5}, {"R125", 0.5}})) << converted.body;
    const json study = {{"request", request},
                        {"vary", {{"fluid", {"half", "R32"}}}},
                        {"results", {{"keys", {"performance.cop_cooling"}}}}};
    std::istringstream lines(post(port(), "/api/study", study.dump()).body);
    std::string heading, first;
    std::getline(lines, heading);
    std::getline(lines, first);
    ASSERT_TRUE(json::parse(first).contains("values")) << first;
    const auto cop = std::ranges::find_if(named["values"],
                                          [](const json& value) { return value["key"] == "performance.cop_cooling"; });
    EXPECT_EQ(json::parse(first)["values"][0], (*cop)["value"]);

    request["fluid"] = "none";
    const Reply none = post(port(), "/api/run", request.dump());
    EXPECT_EQ(none.status, 400);
    EXPECT_NE(none.body.find("blends/None.toml"), std::string::npos) << none.body;
    EXPECT_EQ(none.body.find(home->path()), std::string::npos);
}

}  // namespace
}  // namespace frigana
