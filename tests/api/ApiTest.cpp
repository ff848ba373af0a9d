// What the C interface answers: requests as the program answers them, states as the state points of the same tree find
// them, identities of saturation, and errors in words.
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "Samples.h"
#include "StateQuery.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"
#include "frigana_api.h"

namespace frigana {
namespace {

using Json = nlohmann::ordered_json;

std::string outputOf(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> part;
    for (std::size_t count; (count = fread(part.data(), 1, part.size(), pipe)) > 0;) output.append(part.data(), count);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

// An answer and its status.
struct Answered {
    int status;
    std::string text;
    Json json() const { return Json::parse(text, nullptr, false); }
};
Answered run(const std::string& request) {
    char* answer = nullptr;
    const int status = frigana_run(request.c_str(), &answer);
    Answered answered{status, answer != nullptr ? answer : ""};
    frigana_free(answer);
    return answered;
}

class Fluid {
  public:
    explicit Fluid(const std::string& description) { status = frigana_fluid_open(description.c_str(), &handle); }
    ~Fluid() { frigana_fluid_close(handle); }
    Fluid(const Fluid&) = delete;
    Fluid& operator=(const Fluid&) = delete;

    double value(const char* pair, double a, double b, int property, int* code = nullptr) const {
        double result = 0.0;
        EXPECT_EQ(frigana_states(handle, pair[0], pair[1], &a, &b, 1, &property, 1, &result, code, nullptr),
                  FRIGANA_DONE)
            << frigana_last_error();
        return result;
    }

    frigana_fluid* handle = nullptr;
    int status;
};

std::string basicRequest(const std::string& fluid, const std::string& evaporating) {
    return R"({"request": "basic", "fluid": ")" + fluid + R"(", "evaporator": {"temperature": ")" + evaporating +
           R"(", "superheat": "5 K"}, "compressor": {"swept_volume": "0.0028 m3/s", "isentropic_efficiency": 0.7,
           "volumetric_efficiency": 0.85}, "condenser": {"temperature": "40 °C", "subcooling": "3 K"}})";
}

TEST(Api, ShowsTheNamesOfItsHeaderAndNoOther) {
    std::ifstream header(std::string(test::testsFolder) + "/../include/frigana_api.h");
    std::stringstream words;
    words << header.rdbuf();
    std::set<std::string> declared, exported;
    std::string text = words.str();
    for (std::size_t at = 0; (at = text.find("FRIGANA_CALL ", at)) != text.npos; ++at) {
        const std::size_t open = text.find('(', at), begin = text.find_last_of(" *", open) + 1;
        if (text.compare(at, 14, "FRIGANA_CALL _") != 0) declared.insert(text.substr(begin, open - begin));
    }
    std::istringstream lines(outputOf("nm -D --defined-only " FRIGANA_API_LIBRARY));
    for (std::string address, kind, name; lines >> address >> kind >> name;) exported.insert(name);
    EXPECT_EQ(declared, exported);
    EXPECT_EQ(exported.size(), 13u);
}

TEST(Api, AnswersRequestsAsTheProgramDoes) {
    test::TemporaryFolder folder;
    char* answer = nullptr;
    ASSERT_EQ(frigana_list_requests(&answer), FRIGANA_DONE);
    const Json requests = Json::parse(answer);
    frigana_free(answer);
    int compared = 0;
    for (const Json& request : requests["requests"]) {
        const std::string name = request["name"].get<std::string>();
        if (name == "store-blend") continue;
        const std::string file = folder.path(name + ".toml");
        const std::string toml = outputOf(std::string(FRIGANA_PROGRAM) + " new " + name);
        std::ofstream(file) << toml;
        Json told = Json::parse(outputOf(std::string(FRIGANA_PROGRAM) + " run --json - " + file));
        told.erase("source");
        const Answered ours = run(toml);
        EXPECT_EQ(ours.status, FRIGANA_DONE) << name;
        // Every value, to the last bit: the texts of the numbers lead back to them.
        EXPECT_EQ(ours.json(), told) << name;
        ++compared;
    }
    EXPECT_EQ(compared, 19);
}

// What is stored by the interface is the person's, for every call and for the program.
TEST(Api, StoresBlendsWhereThePersonHasThem) {
    test::TemporaryFolder folder;
    setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
    const Answered stored =
        run(R"({"request": "store-blend", "fluid": {"R32": 0.5, "R125": 0.5}, "blend_name": "Half"})");
    EXPECT_EQ(stored.status, FRIGANA_DONE) << stored.text;
    EXPECT_TRUE(std::ifstream(folder.path("frigana/Half.toml")).good());
    EXPECT_FALSE(std::ifstream(std::string(test::dataFolder) + "/mixtures/Half.mix").good());
    const Fluid half("half"), shipped("R410A");
    ASSERT_EQ(half.status, FRIGANA_DONE) << frigana_last_error();
    // The shipped file rounds its mole fractions.
    const double density = shipped.value("TP", 300.0, 1000.0, FRIGANA_DENSITY);
    EXPECT_NEAR(half.value("TP", 300.0, 1000.0, FRIGANA_DENSITY), density, 1e-6 * density);
    EXPECT_EQ(run(basicRequest("half", "-5 °C")).status, FRIGANA_DONE);
    char* answer = nullptr;
    for (const char* chart : {R"({"kind": "ph", "fluid": "half"})", R"({"kind": "pT", "fluids": ["half", "R32"]})"}) {
        EXPECT_EQ(frigana_chart(chart, &answer), FRIGANA_DONE) << answer;
        frigana_free(answer);
    }
    ASSERT_EQ(frigana_list_fluids(&answer), FRIGANA_DONE);
    const Json listed = Json::parse(answer)["fluids"].back();
    frigana_free(answer);
    unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(listed["name"], "Half");
    EXPECT_EQ(listed["own"], true);
    // 0.5 x 771 + 0.5 x 3740
    EXPECT_NEAR(listed["gwp100"]["AR6"].get<double>(), 2255.5, 1e-9);
    EXPECT_NE(Fluid("half").status, FRIGANA_DONE);
}

TEST(Api, TellsWhyARequestIsRefused) {
    const Answered refused = run(basicRequest("R134a", "200 °C"));
    EXPECT_EQ(refused.status, FRIGANA_REFUSED);
    EXPECT_EQ(refused.json()["code"], 201213);
    const Answered beyond = run(basicRequest("R134a", "500 °C"));
    EXPECT_EQ(beyond.status, FRIGANA_FAULTY);
    const Json problem = beyond.json()["error"]["problems"][0];
    EXPECT_EQ(problem["key"], "evaporator.temperature");
    EXPECT_EQ(problem["allowed"], "-173.15 °C to 326.85 °C");
    EXPECT_EQ(run("nonsense").status, FRIGANA_FAULTY);
    EXPECT_EQ(run("").status, FRIGANA_FAULTY);
    EXPECT_EQ(frigana_run(nullptr, nullptr), FRIGANA_FAULTY);
    EXPECT_EQ(frigana_set_data("/no/such/folder"), FRIGANA_FAULTY);
    EXPECT_NE(std::string(frigana_last_error()).find("/no/such/folder"), std::string::npos);
    // A refusal leaves nothing behind.
    EXPECT_EQ(run(basicRequest("R134a", "-5 °C")).status, FRIGANA_DONE);
}

TEST(Api, LeavesTheHandlersOfSignalsAlone) {
    struct sigaction before, after;
    struct sigaction own = {};
    own.sa_handler = [](int) { _exit(99); };
    sigaction(SIGFPE, &own, &before);
    // Refused in the calculation: leaves through all layers.
    EXPECT_EQ(run(basicRequest("R134a", "200 °C")).status, FRIGANA_REFUSED);
    sigaction(SIGFPE, &before, &after);
    EXPECT_EQ(after.sa_handler, own.sa_handler);
}

TEST(Api, DrawsTheChartOfAResult) {
    char* answer = nullptr;
    const std::string chart = R"({"kind": "ph", "request": )" + basicRequest("R134a", "-5 °C") + "}";
    ASSERT_EQ(frigana_chart(chart.c_str(), &answer), FRIGANA_DONE);
    const Json json = Json::parse(answer);
    frigana_free(answer);
    EXPECT_TRUE(json["charts"][0]["svg"].get<std::string>().starts_with("<svg"));
    EXPECT_EQ(frigana_chart(R"({"kind": "xy"})", &answer), FRIGANA_FAULTY);
    frigana_free(answer);
}

TEST(Api, ListsTheFluidsOfTheInstallation) {
    char* answer = nullptr;
    ASSERT_EQ(frigana_list_fluids(&answer), FRIGANA_DONE);
    EXPECT_GT(Json::parse(answer)["fluids"].size(), 200u);
    frigana_free(answer);
}

// ---- states ---------------------------------------------------------------------------------------------------------

struct Case {
    const char* fluid;
    bool blend;
    double T, p;
};
constexpr Case cases[] = {
    {"R134A", false, 300.0, 1000.0}, {"R134A", false, 350.0, 500.0},   {"PROPANE", false, 250.0, 2000.0},
    {"CO2", false, 320.0, 10000.0},  {"AMMONIA", false, 300.0, 100.0}, {"WATER", false, 400.0, 101.325},
    {"R410A", true, 290.0, 3000.0},  {"R407C", true, 320.0, 500.0},    {"R32", false, 260.0, 100.0},
};

// The other engine of this process asks for the same state from the same two numbers.
TEST(ApiStates, AreThoseOfTheStatePointsToTheLastBit) {
    constexpr const char* pairs[] = {"TP", "TD", "TH", "TS", "PD", "PH", "PS", "DH", "DS", "HS", "TQ", "PQ"};
    constexpr std::string_view letters = "TPDHSQ";
    constexpr double STATEPT::*fields[] = {&STATEPT::T,   &STATEPT::P,   &STATEPT::D,  &STATEPT::H,  &STATEPT::S,
                                           &STATEPT::V,   &STATEPT::U,   &STATEPT::CV, &STATEPT::CP, &STATEPT::W,
                                           &STATEPT::TCX, &STATEPT::ETA, &STATEPT::PR, &STATEPT::STN};
    constexpr int wanted[] = {
        FRIGANA_TEMPERATURE,  FRIGANA_PRESSURE,  FRIGANA_DENSITY,        FRIGANA_ENTHALPY,       FRIGANA_ENTROPY,
        FRIGANA_VOLUME,       FRIGANA_ENERGY,    FRIGANA_ISOCHORIC_HEAT, FRIGANA_ISOBARIC_HEAT,  FRIGANA_SPEED_OF_SOUND,
        FRIGANA_CONDUCTIVITY, FRIGANA_VISCOSITY, FRIGANA_PRANDTL,        FRIGANA_SURFACE_TENSION};
    constexpr std::size_t many = std::size(wanted);
    const Fluid water("water");
    catalogue::Fluid sameWater;
    sameWater.file = "WATER.FLD";
    const catalogue::GivenProperty hot{catalogue::findStateProperty('T'), 350.0},
        wet{catalogue::findStateProperty('Q'), 0.0};
    int compared = 0;
    for (const Case& one : cases) {
        const Fluid fluid(one.fluid);
        ASSERT_EQ(fluid.status, FRIGANA_DONE) << frigana_last_error();
        catalogue::Fluid same;
        same.kind = one.blend ? 2 : 1;
        same.file = one.fluid + std::string(one.blend ? ".MIX" : ".FLD");
        for (const char* pair : pairs) {
            if (pair[1] == 'Q' && one.p > 9000.0) continue;  // above the critical point
            double given[2];
            for (int i = 0; i < 2; ++i)
                given[i] =
                    pair[i] == 'Q' ? 0.3 : fluid.value("TP", one.T, one.p, static_cast<int>(letters.find(pair[i])) + 1);
            // Iterations start from the state before: both engines come from the same one.
            water.value("TQ", hot.value, wet.value, FRIGANA_PRESSURE);
            catalogue::stateOf(sameWater, test::dataFolder, hot, wet);
            double results[many];
            int code = 0;
            ASSERT_EQ(frigana_states(fluid.handle, pair[0], pair[1], &given[0], &given[1], 1, wanted, many, results,
                                     &code, nullptr),
                      FRIGANA_DONE);
            const catalogue::StateAnswer other =
                catalogue::stateOf(same, test::dataFolder, {catalogue::findStateProperty(pair[0]), given[0]},
                                   {catalogue::findStateProperty(pair[1]), given[1]});
            ASSERT_EQ(other.problem.empty(), code <= 0) << one.fluid << ' ' << pair << ' ' << other.problem;
            for (std::size_t k = 0; code <= 0 && k < many; ++k) {
                const double expected = other.point.*fields[k];
                if (expected == missingValue)
                    EXPECT_TRUE(std::isnan(results[k])) << one.fluid << ' ' << pair << ' ' << wanted[k];
                else
                    EXPECT_EQ(results[k], expected) << one.fluid << ' ' << pair << ' ' << wanted[k];
                ++compared;
            }
        }
    }
    std::cout << compared << " values are equal\n";
    EXPECT_GT(compared, 1400);
}

TEST(ApiStates, EveryPairLeadsBackToTheState) {
    const char letters[] = {'T', 'P', 'D', 'H', 'S', 'Q'};
    // Rounding of a given value, multiplied by how steep the property is there.
    constexpr double tolerance = 2e-7;
    for (const char* name : {"R134a", "propane", "CO2", "ammonia", "R410A", "R407C"}) {
        const Fluid fluid(name);
        for (const double quality : {0.0, 0.01, 0.4, 0.99, 1.0}) {
            if (test::sanitized && (quality == 0.01 || quality == 0.99)) continue;
            // Cold enough that the enthalpy of the saturated vapor still rises with temperature.
            constexpr double T = 235.0;
            std::array<double, 6> state{};
            for (int k = 0; k < 6; ++k) state[static_cast<std::size_t>(k)] = fluid.value("TQ", T, quality, k + 1);
            for (std::size_t a = 0; a < 6; ++a)
                for (std::size_t b = 0; b < 6; ++b) {
                    const char pair[] = {letters[a], letters[b], '\0'};
                    const bool levels = std::string(pair) == "TP" || std::string(pair) == "PT";
                    if (a == b || levels) continue;  // of one component: no state by these
                    // On the line itself a state without its quality is a matter of the last digit.
                    const bool onLine = quality == 0.0 || quality == 1.0;
                    if (onLine && letters[a] != 'Q' && letters[b] != 'Q') continue;
                    int code = 0;
                    const double found = fluid.value(pair, state[a], state[b], FRIGANA_ENTROPY, &code);
                    EXPECT_LE(code, 0) << name << ' ' << pair << ' ' << quality;
                    EXPECT_NEAR(found, state[4], tolerance * state[4]) << name << ' ' << pair << ' ' << quality;
                }
        }
    }
}

TEST(ApiStates, PhasesAndTheirCompositions) {
    const Fluid pure("R134a");
    EXPECT_EQ(pure.value("TP", 300.0, 1000.0, FRIGANA_PHASE), FRIGANA_LIQUID);
    EXPECT_EQ(pure.value("TP", 350.0, 100.0, FRIGANA_PHASE), FRIGANA_VAPOR);
    EXPECT_EQ(pure.value("TP", 400.0, 6000.0, FRIGANA_PHASE), FRIGANA_SUPERCRITICAL);
    EXPECT_EQ(pure.value("PH", 500.0, 300.0, FRIGANA_PHASE), FRIGANA_TWO_PHASES);
    EXPECT_TRUE(std::isnan(pure.value("TP", 300.0, 1000.0, FRIGANA_QUALITY)));
    EXPECT_TRUE(std::isnan(pure.value("TP", 300.0, 1000.0, FRIGANA_LIQUID_DENSITY)));

    // The parts of both phases make the whole.
    const Fluid blend(R"({"fluid": {"R32": 0.5, "R125": 0.2, "R134a": 0.3}})");
    ASSERT_EQ(blend.status, FRIGANA_DONE) << frigana_last_error();
    const double quality = blend.value("PH", 600.0, 300.0, FRIGANA_QUALITY);
    ASSERT_GT(quality, 0.1);
    ASSERT_LT(quality, 0.9);
    const double whole[] = {0.5, 0.2, 0.3};
    for (int i = 1; i <= 3; ++i) {
        const double x = blend.value("PH", 600.0, 300.0, FRIGANA_LIQUID_FRACTION + i);
        const double y = blend.value("PH", 600.0, 300.0, FRIGANA_VAPOR_FRACTION + i);
        EXPECT_NEAR(x * (1.0 - quality) + y * quality, whole[i - 1], 1e-9);
    }
    const double volume = (1.0 - quality) / blend.value("PH", 600.0, 300.0, FRIGANA_LIQUID_DENSITY) +
                          quality / blend.value("PH", 600.0, 300.0, FRIGANA_VAPOR_DENSITY);
    EXPECT_NEAR(volume * blend.value("PH", 600.0, 300.0, FRIGANA_DENSITY), 1.0, 1e-9);
    const int unknown = FRIGANA_LIQUID_FRACTION + 4;
    const double one = 600.0, other = 300.0;
    double result;
    EXPECT_EQ(frigana_states(blend.handle, 'P', 'H', &one, &other, 1, &unknown, 1, &result, nullptr, nullptr),
              FRIGANA_FAULTY);
}

TEST(ApiStates, FailuresStandBesideTheirElement) {
    const Fluid fluid("R134a");
    const double T[] = {300.0, 900.0, std::nan(""), 300.0}, q[] = {0.5, 0.5, 0.5, 1.5};
    const int wanted[] = {FRIGANA_PRESSURE, FRIGANA_ENTHALPY};
    double results[8];
    int codes[4];
    char texts[4][FRIGANA_TEXT];
    ASSERT_EQ(frigana_states(fluid.handle, 'T', 'Q', T, q, 4, wanted, 2, results, codes, texts), FRIGANA_DONE);
    EXPECT_EQ(codes[0], 0);
    EXPECT_GT(results[0], 0.0);
    EXPECT_STREQ(texts[0], "");
    EXPECT_GT(codes[1], 0);
    EXPECT_NE(std::string(texts[1]).find("TQFLSH"), std::string::npos) << texts[1];
    EXPECT_EQ(codes[2], FRIGANA_NOT_FINITE);
    EXPECT_EQ(codes[3], FRIGANA_QUALITY_OUT_OF_RANGE);
    for (const int i : {1, 2, 3}) {
        EXPECT_TRUE(std::isnan(results[i]));
        EXPECT_TRUE(std::isnan(results[4 + i]));
    }
    EXPECT_EQ(frigana_states(fluid.handle, 'T', 'T', T, q, 1, wanted, 1, results, nullptr, nullptr), FRIGANA_FAULTY);
    EXPECT_EQ(frigana_states(fluid.handle, 'T', 'X', T, q, 1, wanted, 1, results, nullptr, nullptr), FRIGANA_FAULTY);
    EXPECT_EQ(frigana_states(nullptr, 'T', 'P', T, q, 1, wanted, 1, results, nullptr, nullptr), FRIGANA_FAULTY);
    EXPECT_EQ(Fluid("R9999").status, FRIGANA_FAULTY);
    EXPECT_EQ(Fluid("{\"fluid\": {\"R32\": -1}}").status, FRIGANA_FAULTY);
    EXPECT_EQ(Fluid("{\"flood\": \"R32\"}").status, FRIGANA_FAULTY);
    int code = 0;
    // Denser than any saturated state.
    EXPECT_TRUE(std::isnan(fluid.value("DQ", 5000.0, 0.5, FRIGANA_PRESSURE, &code)));
    EXPECT_EQ(code, FRIGANA_NO_SUCH_STATE);
}

TEST(ApiStates, FluidsTakeTurnsInTheEngine) {
    const Fluid a("R134a"), b("R410A"), c("{\"fluid\": \"R134a\", \"reference_state\": \"ASHRAE\"}");
    const double first = a.value("TP", 300.0, 100.0, FRIGANA_ENTHALPY);
    const double second = b.value("TP", 300.0, 100.0, FRIGANA_ENTHALPY);
    const double third = c.value("TP", 300.0, 100.0, FRIGANA_ENTHALPY);
    EXPECT_NE(first, third);
    for (int turn = 0; turn < 3; ++turn) {
        EXPECT_EQ(a.value("TP", 300.0, 100.0, FRIGANA_ENTHALPY), first);
        EXPECT_EQ(run(basicRequest("propane", "-5 °C")).status, FRIGANA_DONE);
        EXPECT_EQ(b.value("TP", 300.0, 100.0, FRIGANA_ENTHALPY), second);
        EXPECT_EQ(c.value("TP", 300.0, 100.0, FRIGANA_ENTHALPY), third);
    }
    char* facts = nullptr;
    ASSERT_EQ(frigana_fluid_facts(b.handle, &facts), FRIGANA_DONE);
    const Json json = Json::parse(facts);
    frigana_free(facts);
    EXPECT_EQ(json["components"].size(), 2u);
    EXPECT_NEAR(json["components"][0]["mass_fraction"].get<double>(), 0.5, 1e-4);
}

TEST(ApiExample, RunsAsItStands) {
    const std::string said = outputOf(FRIGANA_API_EXAMPLE);
    EXPECT_NE(said.find("900 K: [TPFLSH error 1]"), std::string::npos) << said;
    EXPECT_NE(said.find("COP of cooling: 3.39"), std::string::npos) << said;
}

}  // namespace
}  // namespace frigana
