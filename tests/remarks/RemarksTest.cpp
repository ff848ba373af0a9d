// Every remark by a request that deserves it, and none on requests that do not.
#include "Remarks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "../catalogue/RequestFiles.h"
#include "Catalogue.h"
#include "FilledRequest.h"
#include "FluidFacts.h"
#include "Judge.h"
#include "NamedRequest.h"
#include "ResultFile.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using catalogue::FilledRequest;
using catalogue::RunResult;
using catalogue::Setting;
using remarks::Remark;
using remarks::Weight;

struct Change {
    int circuit, k, option;
    double value;
};

// The typical request of a cycle with some parameters changed.
struct Deserving {
    const char* remark;
    const char* place;
    const char* request;
    const char* fluid;  // of all circuits; empty for the typical ones
    std::vector<Change> changes;
};

void PrintTo(const Deserving& row, std::ostream* out) {
    *out << row.remark << " at " << row.place << " of " << row.request << ' ' << row.fluid;
}

FilledRequest requestOf(const char* name, const char* fluid, const std::vector<Change>& changes) {
    std::optional<catalogue::Fluid> given;
    if (const std::string file(fluid); !file.empty()) {
        given.emplace().file = file;
        given->kind = file.ends_with(".MIX") ? 2 : 1;
    }
    FilledRequest filled = catalogue::typicalRequest(*catalogue::findRequest(name), given);
    for (const Change& change : changes)
        filled.blocks[static_cast<std::size_t>(change.circuit)].settings[static_cast<std::size_t>(change.k) - 1] = {
            change.option, change.value};
    return filled;
}

RunResult run(const FilledRequest& filled) {
    return catalogue::runFilled(filled, {test::dataFolder, false});
}

std::vector<Remark> remarksOf(const RunResult& result) {
    return remarks::remarksOn(result, {test::dataFolder, catalogue::UnitSystem::metric});
}

// A state point [K, kPa].
FilledRequest stateOf(const char* file, double T, double p) {
    FilledRequest filled = requestOf("state-point", file, {});
    filled.question.firstValue = T;
    filled.question.secondValue = p;
    return filled;
}

// Of a blend by mole fractions.
FilledRequest stateOf(std::vector<catalogue::Fluid::Component> components, double T, double p) {
    FilledRequest filled = stateOf("", T, p);
    catalogue::Fluid& fluid = filled.blocks.front().fluid;
    fluid.kind = 3;
    fluid.byMass = false;
    fluid.blendName = "mine";
    fluid.components = std::move(components);
    return filled;
}

const Remark* find(const std::vector<Remark>& said, std::string_view name) {
    const auto found =
        std::find_if(said.begin(), said.end(), [&](const Remark& remark) { return remark.name == name; });
    return found == said.end() ? nullptr : &*found;
}

std::string helpFor(const RunResult& refused) {
    return remarks::helpFor(refused, {test::dataFolder, catalogue::UnitSystem::metric});
}

std::string listOf(const std::vector<Remark>& remarks) {
    std::string list;
    for (const Remark& remark : remarks) list += remark.name + " at " + remark.place + ": " + remark.text + '\n';
    return list.empty() ? "no remark" : list;
}

constexpr int receiver = 23;  // k of the pressure of the booster's receiver

class Deserved : public testing::TestWithParam<Deserving> {};

TEST_P(Deserved, IsSaid) {
    const Deserving& row = GetParam();
    const RunResult result = run(requestOf(row.request, row.fluid, row.changes));
    ASSERT_TRUE(result.isDone()) << result.report.IERR << ' ' << result.report.HERR.view();
    const std::vector<Remark> said = remarksOf(result);
    const auto found = std::find_if(said.begin(), said.end(), [&](const Remark& remark) {
        return remark.name == row.remark && remark.place == row.place;
    });
    ASSERT_NE(found, said.end()) << listOf(said);
    EXPECT_FALSE(found->text.empty());
    EXPECT_TRUE(found->text.ends_with('.'));
    EXPECT_EQ(found->text.find("nan"), std::string::npos) << found->text;
    EXPECT_FALSE(found->advice.empty());
    std::printf("%s\n", found->text.c_str());
}

// Of the basic cycle: 1 evaporating level, 2 evaporator outlet, 3 its drop, 4 and 5 suction line, 9 and 10 discharge
// line, 11 condensing level, 12 condenser outlet, 13 its drop, 14 and 15 liquid line.
// clang-format off
const Deserving deserving[] = {
    {"liquid_line_left_liquid",   "liquid_line",                  "basic",            "R134A.FLD",   {{0, 12, 2, 0.0}, {0, 14, 2, 0.0}, {0, 15, 1, 30.0}}},
    {"liquid_line_left_liquid",   "liquid_line_before_exchanger", "heat-exchanger",   "R134A.FLD",   {{0, 14, 2, 0.0}, {0, 16, 2, 0.0}, {0, 17, 1, 30.0}, {0, 20, 2, 3.0}}},
    {"expansion_from_vapor",      "expansion_device",             "basic",            "R134A.FLD",   {{0, 12, 2, 0.0}, {0, 14, 2, 0.0}, {0, 15, 1, 30.0}}},
    {"vapor_line_left_vapor",     "discharge_line",               "basic",            "R134A.FLD",   {{0, 9, 1, 313.15}, {0, 10, 1, 0.0}}},
    {"negative_capacity",         "performance.cop_cooling",      "basic",            "R134A.FLD",   {{0, 12, 2, 0.0}, {0, 14, 2, 0.0}, {0, 15, 1, 30.0}}},
    {"negative_capacity",         "medium.performance.net_capacity", "combined",      "",            {{0, 6, 3, 1.0}}},
    {"exchanger_beyond_ideal",    "performance.effectiveness",    "heat-exchanger",   "R134A.FLD",   {{0, 20, 2, 45.0}}},
    {"temperatures_cross",        "heat_exchanger",               "heat-exchanger",   "R134A.FLD",   {{0, 20, 2, 45.0}}},
    {"temperatures_cross",        "low.subcooler",                "combined",         "",            {{1, 18, 2, 60.0}}},
    {"temperatures_cross",        "heat_exchanger",               "two-stage",        "R410A.MIX",   {{0, 19, 1, 35.0}}},
    {"receiver_below_evaporator", "high_pressure_valve",          "booster",          "CO2.FLD",     {{0, receiver, 1, 2500.0}}},
    {"meaningless_ratio",         "loop.pump",                    "pumped-co2",       "",            {{1, 3, 1, 0.0}, {1, 5, 1, 0.0}, {1, 10, 1, 0.0}}},
    {"state_beyond_equation",     "compressor.outlet",            "basic",            "R1234YF.FLD", {{0, 1, 1, 230.0}, {0, 2, 2, 100.0}, {0, 7, 1, 0.4}}},
    {"glide_in_saturation_drop",  "condenser",                    "basic",            "R407C.MIX",   {{0, 13, 2, 1.0}}},
    {"negative_drop",             "condenser",                    "basic",            "R407C.MIX",   {{0, 13, 2, 1.0}}},
    {"discharge_hot",             "compressor",                   "basic",            "AMMONIA.FLD", {{0, 1, 1, 253.15}}},
    {"pressure_ratio_high",       "compressor",                   "basic",            "R134A.FLD",   {{0, 1, 1, 238.15}, {0, 11, 1, 328.15}}},
    {"below_atmosphere",          "evaporator",                   "basic",            "R134A.FLD",   {{0, 1, 1, 238.15}}},
    {"injection_limit_wet",       "compressor",                   "liquid-injection", "R407C.MIX",   {{0, 16, 1, 318.15}}},
    {"drop_from_outlet",          "discharge_line",               "basic",            "R134A.FLD",   {{0, 10, 2, 1.0}}},
    {"drop_from_outlet",          "liquid_line",                  "rankine",          "",            {{0, 16, 2, 1.0}}},
    {"drop_from_outlet",          "loop.high_pressure_liquid_line", "pumped-co2",     "",            {{1, 10, 2, 1.0}}},
    {"drop_without_effect",       "stage1.injection_line",        "multi-stage",      "R134A.FLD",   {{0, 18, 2, 1.0}}},
    {"name_in_other_case",        "fluid",                        "basic",            "r134a.fld",   {}},
    {"potential_unknown",         "fluid",                        "rankine",          "TOLUENE.FLD", {}},
    {"class_unknown",             "fluid",                        "rankine",          "TOLUENE.FLD", {}},
    {"viscosity_estimated",       "pipes",                        "line-sizing",      "R161.FLD",    {}},
    // Liquid that is colder than the evaporator is liquid in it too.
    {"wet_compressor_inlet",      "compressor",                   "transcritical",    "CO2.FLD",     {{0, 18, 1, 230.0}}},
    {"evaporator_outlet_wet",     "evaporator",                   "transcritical",    "CO2.FLD",     {{0, 18, 1, 230.0}}},
    {"wet_turbine_inlet",         "turbine",                      "rankine",          "R245FA.FLD",  {{0, 2, 2, 0.0}}},
    {"liquid_condenser_inlet",    "condenser",                    "liquid-injection", "R22.FLD",     {{0, 16, 1, 318.15}}},
    {"figure_missing",            "performance.cycle_efficiency", "rankine",          "R245FA.FLD",  {{0, 6, 1, 0.0}}},
    {"below_triple_point",        "evaporator",                   "basic",            "CO2.FLD",     {{0, 1, 1, 223.15}, {0, 3, 1, 400.0}, {0, 11, 1, 263.15}}},
    {"balance_open",              "performance",                  "multi-stage",      "R454C.MIX",   {}},
    {"sizes_do_not_bracket",      "pipes.suction_line.full_load.3", "line-sizing",    "R134A.FLD",   {{0, 6, 3, 0.3}}},
    {"pipe_too_slow",             "pipes.discharge_line.full_load.6", "line-sizing",  "R134A.FLD",   {{0, 6, 3, 1.0}}},
    {"diameter_not_found",        "pipes.suction_line.full_load.3", "line-sizing",    "R134A.FLD",   {{0, 5, 4, 0.2}, {0, 6, 3, 400.0}}},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Remarks, Deserved, testing::ValuesIn(deserving));

// Requests of the tree may carry notes; what is heavier is listed here with its reason.
struct Known {
    const char* request;
    const char* remark;
};
constexpr Known knownRemarks[] = {
    // The glide of the blend counts in the drop of saturation temperature that the case gives.
    {"blend with glide, condenser pressure and drop given", "glide_in_saturation_drop"},
    // The flash tank parts a zeotropic blend, of which the calculation takes one composition.
    {"blend with glide, two stages, stage temperature given", "balance_open"},
    // The case asks for the drop that has no effect.
    {"two stages, pressures given, injection line loss in K", "drop_without_effect"},
    // Pipes of steel for a loss that no diameter has within the steps of the search.
    {"Steel pipes", "diameter_not_found"},
};

TEST(Remarks, NoneOnExamplesAndReferenceCyclesThatDeserveNone) {
    test::TemporaryFolder folder;
    std::vector<test::RequestText> requests = test::exampleRequests();
    for (test::RequestText& reference : test::referenceRequests()) requests.push_back(std::move(reference));
    ASSERT_GT(requests.size(), 60u);
    for (const test::RequestText& request : requests) {
        if (request.name.find("store_blend") != std::string::npos) continue;  // it would write among the shipped blends
        test::writeFile(folder.path("request.fi1"), request.text);
        const RunResult result = catalogue::runPositional(folder.path("request.fi1"), {test::dataFolder});
        for (const Remark& remark : remarksOf(result)) {
            if (remark.weight == Weight::note) continue;
            const bool known = std::any_of(std::begin(knownRemarks), std::end(knownRemarks), [&](const Known& row) {
                return request.name.ends_with(row.request) && remark.name == row.remark;
            });
            EXPECT_TRUE(known) << request.name << ": " << remark.name << " at " << remark.place << ": " << remark.text;
        }
    }
}

TEST(Remarks, TellAReferenceStateThatIsNotKnown) {
    FilledRequest filled = requestOf("basic", "R134A.FLD", {});
    filled.blocks[0].fluid.referenceState = "XYZ";
    const std::vector<Remark> said = remarksOf(run(filled));
    ASSERT_EQ(said.size(), 1u) << listOf(said);
    EXPECT_EQ(said[0].name, "reference_state_unknown");
}

TEST(Remarks, TellTheEnginesOwnReasonOfAMissingState) {
    // Beyond 1.5 of the highest temperature of the equation (455 K).
    const std::vector<Remark> said = remarksOf(run(stateOf("R134A.FLD", 700.0, 10000.0)));
    const Remark* remark = find(said, "state_missing");
    ASSERT_NE(remark, nullptr) << listOf(said);
    EXPECT_EQ(remark->weight, Weight::wrong);
    EXPECT_NE(remark->text.find("The engine says: [TPFLSH error"), std::string::npos) << remark->text;
    EXPECT_NE(remark->text.find("temperature"), std::string::npos) << remark->text;
    EXPECT_EQ(find(remarksOf(run(stateOf("R134A.FLD", 300.0, 1000.0))), "state_missing"), nullptr);
}

TEST(Remarks, TellTransportBeyondItsCorrelation) {
    // The viscosity of R152a is correlated up to 440 K, its conductivity and its equation of state up to 500 K.
    const std::vector<Remark> said = remarksOf(run(stateOf("R152A.FLD", 480.0, 1000.0)));
    const Remark* remark = find(said, "transport_beyond_range");
    ASSERT_NE(remark, nullptr) << listOf(said);
    EXPECT_NE(remark->text.find("the viscosity of the state"), std::string::npos) << remark->text;
    EXPECT_EQ(find(remarksOf(run(stateOf("R152A.FLD", 430.0, 1000.0))), "transport_beyond_range"), nullptr);
}

TEST(Remarks, TellTheEnginesOwnReasonOfAMissingConductivity) {
    // That of carbon dioxide is correlated up to 1100 K and not computed above 1.5 of it, its equation of state reaches
    // 2000 K.
    const std::vector<Remark> said = remarksOf(run(stateOf("CO2.FLD", 1800.0, 1000.0)));
    const Remark* remark = find(said, "transport_missing");
    ASSERT_NE(remark, nullptr) << listOf(said);
    EXPECT_NE(remark->text.find("The engine says: [TRNPRP warning"), std::string::npos) << remark->text;
}

TEST(Remarks, TellEstimatedTransportOfAState) {
    const std::vector<Remark> said = remarksOf(run(stateOf("R161.FLD", 300.0, 100.0)));
    const Remark* remark = find(said, "transport_estimated");
    ASSERT_NE(remark, nullptr) << listOf(said);
    EXPECT_NE(remark->text.find("Viscosity and conductivity"), std::string::npos) << remark->text;
    EXPECT_EQ(find(remarksOf(run(stateOf("R134A.FLD", 300.0, 100.0))), "transport_estimated"), nullptr);
}

TEST(Remarks, TellTwoLiquids) {
    // Ammonia and propane do not mix below about 45 degrees Celsius; R32 and R125 do everywhere.
    const std::vector<Remark> said =
        remarksOf(run(stateOf({{"AMMONIA.FLD", 0.5}, {"PROPANE.FLD", 0.5}}, 253.15, 2000.0)));
    EXPECT_NE(find(said, "two_liquids"), nullptr) << listOf(said);
    EXPECT_EQ(find(remarksOf(run(stateOf({{"R32.FLD", 0.5}, {"R125.FLD", 0.5}}, 253.15, 2000.0))), "two_liquids"),
              nullptr);
}

TEST(Remarks, TellEstimatedMixingParametersAndCriticalPoints) {
    const std::vector<Remark> said = remarksOf(run(stateOf({{"R13.FLD", 0.5}, {"R22.FLD", 0.5}}, 293.15, 100.0)));
    const Remark* pair = find(said, "mixing_parameters_estimated");
    ASSERT_NE(pair, nullptr) << listOf(said);
    EXPECT_NE(pair->text.find("R13 + R22"), std::string::npos) << pair->text;
    EXPECT_EQ(find(said, "critical_point_estimated"), nullptr) << listOf(said);
    // The critical points of propane and water lie on no line from one to the other.
    const std::vector<Remark> apart = remarksOf(run(stateOf({{"PROPANE.FLD", 0.5}, {"WATER.FLD", 0.5}}, 450.0, 10.0)));
    EXPECT_NE(find(apart, "critical_point_estimated"), nullptr) << listOf(apart);
    EXPECT_EQ(find(remarksOf(run(stateOf("R410A.MIX", 293.15, 100.0))), "mixing_parameters_estimated"), nullptr);
}

// ---- states of tables and phases ----

FilledRequest read(const std::string& text) {
    const catalogue::NamedRequest named =
        catalogue::readNamed(text, catalogue::NamedFormat::toml, catalogue::FluidNames::of(test::dataFolder));
    for (const catalogue::Problem& problem : named.problems) ADD_FAILURE() << catalogue::message("a", problem);
    return named.runs.empty() ? stateOf("R134A.FLD", 300.0, 100.0) : named.runs.front();
}

std::string tableOf(const char* fluid, const char* constant, const char* running, double from, double to, double step) {
    return "request = \"isoproperty-table\"\nunits = \"SI\"\nfluid = \"" + std::string(fluid) + "\"\nconstant." +
           constant + "\nproperty = \"" + running + "\"\nfrom = " + std::to_string(from) +
           "\nto = " + std::to_string(to) + "\nstep = " + std::to_string(step) + '\n';
}

void expectText(const FilledRequest& request, const char* name, const char* place, const std::string& begin,
                const std::string& end = ".") {
    const RunResult result = run(request);
    ASSERT_TRUE(result.isDone()) << result.report.HERR.trimmed();
    const std::vector<Remark> said = remarksOf(result);
    const Remark* remark = find(said, name);
    ASSERT_NE(remark, nullptr) << name << ": " << listOf(said);
    EXPECT_EQ(remark->place, place);
    EXPECT_TRUE(remark->text.starts_with(begin)) << remark->text;
    EXPECT_TRUE(remark->text.ends_with(end)) << remark->text;
}

// At 300 K R134a would need more than 70 MPa for 1600 kg/m3.
TEST(Remarks, TellTheFirstOfTheRowsThatAreMissing) {
    expectText(read(tableOf("R134a", "temperature = 300", "density", 5, 1655, 825)), "state_missing", "table.3",
               "There are no values of the state of row 3. The engine says: [TDFLSH error");
    expectText(read(tableOf("R134a", "temperature = 300", "density", 1605, 1655, 25)), "state_missing", "table.1",
               "There are no values of the state of row 1, and of 2 more. The engine says: [TDFLSH error");
}

// The viscosity of R152a is correlated from 240 K to 440 K, that of carbon dioxide up to 1500 K and its conductivity up
// to 1100 K, that of ammonia's up to 680 K alone, the viscosity of R1234yf from 220 K.
TEST(Remarks, TellWhichTransportOfWhichStateLiesBeyond) {
    expectText(read(tableOf("R152a", "pressure = 1000", "temperature", 420, 490, 10)), "transport_beyond_range",
               "table.4",
               "Outside the range of the correlation: the viscosity of the state of row 4 at 176.8 °C, and of 4 more.");
    expectText(read(tableOf("CO2", "pressure = 1000", "temperature", 1000, 1200, 100)), "transport_beyond_range",
               "table.3", "Outside the range of the correlation: the conductivity of the state of row 3 at 926.9 °C.");
    expectText(read(tableOf("CO2", "pressure = 1000", "temperature", 1550, 1600, 25)), "transport_beyond_range",
               "table.1",
               "Outside the range of the correlation: viscosity and conductivity of the state of row 1 at 1277 °C, and "
               "of 2 more.");
    expectText(stateOf("AMMONIA.FLD", 690.0, 1000.0), "transport_beyond_range", "state",
               "Outside the range of the correlation: the conductivity of the state at 416.9 °C.");
    expectText(read(tableOf("CO2", "pressure = 1000", "temperature", 1600, 1800, 100)), "transport_missing", "table.2",
               "There is no viscosity and conductivity of the state of row 2 at 1427 °C, and of 1 more. The engine "
               "says: [TRNPRP warning");
    const std::string phases =
        "request = \"equilibrium-phases\"\nfluid = \"R1234yf\"\nbubble.temperature = \"210 K\"\n";
    expectText(read(phases), "transport_missing", "liquid",
               "There is no viscosity of the liquid at -63.15 °C. No correlation of the fluid reaches there.");
    expectText(read(phases), "transport_beyond_range", "vapor",
               "Outside the range of the correlation: the viscosity of the vapor at -63.15 °C.");
}

TEST(Remarks, TellWhichTransportIsAnEstimate) {
    expectText(stateOf("DME.FLD", 300.0, 100.0), "transport_estimated", "fluid",
               "Conductivity of this fluid is an estimate, not a correlation");
    expectText(stateOf("CYCLOPEN.FLD", 340.0, 50.0), "transport_estimated", "fluid",
               "Viscosity of this fluid is an estimate, not a correlation");
}

// A result whose values are taken away afterwards.
RunResult without(const FilledRequest& request, const std::vector<std::string>& keys) {
    RunResult result = run(request);
    for (catalogue::Value& value : result.entries)
        if (std::find(keys.begin(), keys.end(), value.key) != keys.end()) value.value = -777.0;
    result.indexKeys();
    return result;
}

TEST(Remarks, TellEachMissingValueByItsName) {
    struct {
        std::vector<std::string> keys;
        const char* text;
    } const rows[] = {
        {{"viscosity"}, "There is no viscosity of the state at 26.85 °C. No correlation of the fluid reaches there."},
        {{"thermal_conductivity"},
         "There is no conductivity of the state at 26.85 °C. No correlation of the fluid reaches there."},
        {{"viscosity", "thermal_conductivity"},
         "There is no viscosity and conductivity of the state at 26.85 °C. No correlation of the fluid reaches there."},
    };
    for (const auto& row : rows) {
        const std::vector<Remark> said = remarksOf(without(stateOf("R161.FLD", 300.0, 100.0), row.keys));
        const Remark* remark = find(said, "transport_missing");
        ASSERT_NE(remark, nullptr) << listOf(said);
        EXPECT_EQ(remark->text, row.text);
        // What is not shown is no estimate.
        EXPECT_EQ(find(said, "transport_estimated") == nullptr, row.keys.size() == 2);
    }
}

// The reason is asked of the engine by what the row still has: where it has the state after all, there is none to tell.
TEST(Remarks, TellMissingRowsOfEveryTable) {
    const std::string saturation =
        "request = \"saturation-table\"\nunits = \"SI\"\nfluid = \"R134a\"\nproperty = \"temperature\"\nfrom = 250\nto "
        "= 270\nstep = 10\n";
    struct {
        std::string request;
        std::vector<std::string> keys;
        const char *place, *text;
    } const rows[] = {
        {saturation, {"table.2.liquid.enthalpy"}, "table.2.liquid", "There are no values of the liquid of row 2."},
        {saturation,
         {"table.2.vapor.enthalpy", "table.3.vapor.enthalpy"},
         "table.2.vapor",
         "There are no values of the vapor of row 2, and of 1 more."},
        {saturation,
         {"table.1.vapor.enthalpy", "table.1.vapor.temperature"},
         "table.1.vapor",
         "There are no values of the vapor of row 1."},
        {saturation,
         {"table.1.vapor.enthalpy", "table.1.vapor.temperature", "table.1.vapor.pressure"},
         "table.1.vapor",
         "There are no values of the vapor of row 1."},
        {tableOf("R134a", "density = 5", "temperature", 300, 320, 10),
         {"table.1.enthalpy"},
         "table.1",
         "There are no values of the state of row 1."},
        {tableOf("R134a", "temperature = 300", "pressure", 100, 300, 100),
         {"table.1.enthalpy"},
         "table.1",
         "There are no values of the state of row 1."},
        {tableOf("R134a", "temperature = 300", "pressure", 100, 300, 100),
         {"table.1.enthalpy", "table.1.pressure"},
         "table.1",
         "There are no values of the state of row 1."},
        {tableOf("R134a", "temperature = 300", "pressure", 100, 300, 100),
         {"table.1.enthalpy", "table.1.pressure", "table.1.temperature"},
         "table.1",
         "There are no values of the state of row 1."},
    };
    for (const auto& row : rows) {
        const std::vector<Remark> said = remarksOf(without(read(row.request), row.keys));
        const Remark* remark = find(said, "state_missing");
        ASSERT_NE(remark, nullptr) << row.text << listOf(said);
        EXPECT_EQ(remark->place, row.place);
        EXPECT_EQ(remark->text, row.text);
    }
}

// R161 is described up to 5000 kPa and has its critical point at 5010 kPa; R236ea is described from 243 K.
TEST(Remarks, TellWhichLimitOfTheEquationAStateIsBeyond) {
    expectText(requestOf("basic", "R161.FLD", {{0, 1, 1, 260.0}, {0, 11, 2, 5005.0}}), "state_beyond_equation",
               "condenser.outlet",
               "The state condenser outlet has 50.05 bar, above the 50 bar to which the equation is valid.");
    expectText(requestOf("basic", "R236EA.FLD", {{0, 1, 1, 320.0}, {0, 11, 1, 410.0}}), "state_beyond_equation",
               "compressor.outlet", "The state compressor outlet has ",
               ", above the 138.8 °C to which the equation is valid.");
    FilledRequest cold = requestOf("basic", "R134A.FLD", {{0, 1, 1, 238.15}, {0, 11, 1, 290.15}});
    catalogue::Fluid& blend = cold.blocks.front().fluid;
    blend.kind = 3;
    blend.blendName = "mine";
    blend.components = {{"R236EA.FLD", 0.3}, {"R134A.FLD", 0.7}};
    expectText(cold, "state_beyond_equation", "evaporator.inlet", "The state evaporator inlet has ",
               ", below the -30.15 °C from which the equation is valid.");
}

TEST(Remarks, TellAPotentialThatLeavesAComponentOut) {
    // The fourth report has no figure of propane.
    const RunResult result = run(requestOf("basic", "R402A.MIX", {}));
    const std::vector<Remark> said = remarks::remarksOn(result, {test::dataFolder, catalogue::UnitSystem::metric, 0});
    const Remark* remark = find(said, "potential_unknown");
    ASSERT_NE(remark, nullptr) << listOf(said);
    EXPECT_EQ(remark->text, "The global warming potential of R402A leaves out PROPANE, for which AR4 has no figure.");
}

TEST(Remarks, TellAViscosityBeyondItsRangeOfTheLinesThatAreSized) {
    // Evaporating at 230 K, R152a leaves the range of its viscosity (240 K and above).
    expectText(requestOf("line-sizing", "R152A.FLD", {{0, 1, 1, 230.0}}), "transport_beyond_range",
               "suction_line.inlet", "The viscosity at the inlet of the suction line (",
               ") lies outside the range of its correlation.");
}

// What a fluid is does not hang on the reference state of the request that asked first.
TEST(Remarks, FactsOfAFluidStandWhateverItsReference) {
    catalogue::Fluid fluid;
    fluid.file = "R1132E.FLD";
    fluid.referenceState = "XYZ";
    const remarks::FluidFacts* first = remarks::factsOf(fluid, test::dataFolder);
    ASSERT_NE(first, nullptr);
    fluid.file = "CO2.FLD";
    fluid.referenceState = "NBP";  // which it cannot have
    const remarks::FluidFacts* facts = remarks::factsOf(fluid, test::dataFolder);
    ASSERT_NE(facts, nullptr);
    EXPECT_NEAR(facts->criticalTemperature, 304.128, 0.01);
    fluid.file = "NOTHING.FLD";
    EXPECT_EQ(remarks::factsOf(fluid, test::dataFolder), nullptr);
}

TEST(Remarks, NumbersHaveNoExponent) {
    using catalogue::Quantity;
    using catalogue::UnitSystem;
    EXPECT_EQ(remarks::shown(70000.0, Quantity::pressure, UnitSystem::SI), "70000 kPa");
    EXPECT_EQ(remarks::shown(1234567.8, Quantity::pressure, UnitSystem::SI), "1234568 kPa");
    EXPECT_EQ(remarks::shown(-12345.6, Quantity::pressure, UnitSystem::SI), "-12346 kPa");
    EXPECT_EQ(remarks::shown(1234.56, Quantity::pressure, UnitSystem::SI), "1235 kPa");
    EXPECT_EQ(remarks::shown(268.15, Quantity::temperature, UnitSystem::metric), "-5 °C");
    EXPECT_EQ(remarks::shown(0.7123, Quantity::fraction, UnitSystem::metric), "0.7123");
}

TEST(Remarks, HelpWhereARequestWasRefused) {
    // Vapor in the liquid line leaves so little that the compressor would discharge two phases.
    const RunResult refused =
        run(requestOf("basic", "R134A.FLD", {{0, 1, 1, 238.15}, {0, 12, 2, 0.0}, {0, 14, 2, 0.0}, {0, 15, 1, 30.0}}));
    ASSERT_EQ(refused.report.IERR, 201300);
    EXPECT_NE(helpFor(refused).find("two-phase region"), std::string::npos);
    EXPECT_TRUE(remarksOf(refused).empty());
    EXPECT_TRUE(helpFor(run(requestOf("basic", "R134A.FLD", {}))).empty());
}

TEST(Remarks, HelpNamesTheTriplePointBehindWetCompression) {
    const RunResult solid = run(requestOf("basic", "CO2.FLD", {{0, 1, 1, 213.15}, {0, 11, 1, 263.15}}));
    ASSERT_EQ(solid.report.IERR, 201300);
    EXPECT_EQ(
        helpFor(solid),
        "Evaporating at -60 °C lies below the triple point of the fluid (-56.56 °C), where it is solid. Evaporate "
        "warmer, or take another fluid.");
    // A drop that no evaporator has.
    const RunResult drop = run(requestOf("basic", "R134A.FLD", {{0, 1, 1, 268.15}, {0, 3, 2, 120.0}}));
    ASSERT_EQ(drop.report.IERR, 201300);
    EXPECT_NE(helpFor(drop).find("take 120 K of saturation temperature"), std::string::npos) << helpFor(drop);
    const RunResult pressure =
        run(requestOf("basic", "R134A.FLD", {{0, 1, 1, 268.0}, {0, 3, 1, 485.0}, {0, 11, 1, 300.0}}));
    ASSERT_EQ(pressure.report.IERR, 201300);
    EXPECT_TRUE(helpFor(pressure).starts_with("The drops of evaporator and suction line take 4.85 bar of the 2.4"))
        << helpFor(pressure);
}

// Below the triple point with the level given as a pressure, of a fluid without facts, of a cycle without such a place.
TEST(Remarks, HelpFallsBackToWhatIsCommonToWetCompression) {
    const std::string common = "The compressor would discharge inside the two-phase region.";
    const RunResult dry =
        run(requestOf("basic", "R236EA.FLD", {{0, 1, 2, 20.0}, {0, 2, 2, 0.0}, {0, 4, 2, 0.0}, {0, 7, 1, 1.0}}));
    ASSERT_EQ(dry.report.IERR, 201300) << dry.report.HERR.trimmed();
    EXPECT_TRUE(helpFor(dry).starts_with(common)) << helpFor(dry);
    RunResult unknown = dry;
    unknown.input.blocks.front().fluid.file = "NOTHING.FLD";
    EXPECT_TRUE(helpFor(unknown).starts_with(common)) << helpFor(unknown);
    unknown.input.blocks.front().settings.clear();
    EXPECT_TRUE(helpFor(unknown).starts_with(common)) << helpFor(unknown);
    unknown.input = {};
    EXPECT_TRUE(helpFor(unknown).starts_with(common)) << helpFor(unknown);
}

// Every code that has help of its own is told it, whatever the request.
TEST(Remarks, HelpOfACodeNeedsNoRequest) {
    RunResult refused;
    refused.report.end = RunEnd::refused;
    struct {
        int code;
        const char* part;
    } const rows[] = {
        {24, "Ask for DEF"},      {117, "no parameters of a pair"},      {202239, "Ask for a fall of the liquid"},
        {204201, "no heat left"}, {204202, "the two means must differ"}, {209234, "raise the limit"},
        {100123, "two fluids"},
    };
    for (const auto& [code, part] : rows) {
        refused.report.IERR = code;
        EXPECT_NE(helpFor(refused).find(part), std::string::npos) << code;
    }
    for (const int code : {0, 27, 200300, 106300, 101199}) {
        refused.report.IERR = code;
        EXPECT_EQ(helpFor(refused), "") << code;
    }
    refused.report.IERR = 209234;
    refused.report.end = RunEnd::returned;
    EXPECT_EQ(helpFor(refused), "");
}

TEST(Remarks, HelpTellsTheRangeOfTheFluidInTheUnitsOfTheReport) {
    const RunResult refused = run(stateOf("R134A.FLD", 150.0, 100.0));
    ASSERT_EQ(refused.report.IERR, 104201);
    // 169.85 K to 455 K, 70 MPa; 374.21 K, 4.0593 MPa.
    EXPECT_TRUE(helpFor(refused).starts_with("The equation of this fluid reaches from -103.3 °C to 181."))
        << helpFor(refused);
    EXPECT_TRUE(helpFor(refused).ends_with("up to 700 bar; its critical point is 101.1 °C, 40.59 bar."))
        << helpFor(refused);
}

TEST(Remarks, HelpTellsAReferenceStateThatAFluidCannotHave) {
    FilledRequest filled = requestOf("fluid-information", "CO2.FLD", {});
    filled.blocks[0].fluid.referenceState = "NBP";
    const RunResult refused = run(filled);
    ASSERT_EQ(refused.report.IERR, 26);
    EXPECT_NE(helpFor(refused).find("Ask for DEF"), std::string::npos);
}

TEST(Remarks, HelpTellsALimitThatNoInjectionHolds) {
    const RunResult refused = run(requestOf("liquid-injection", "R22.FLD", {{0, 16, 1, 303.15}}));
    ASSERT_EQ(refused.report.IERR, 209234);
    EXPECT_NE(helpFor(refused).find("only liquid could be that cold"), std::string::npos) << helpFor(refused);
}

TEST(Remarks, HelpTellsAShareThatLeavesNothing) {
    // The MT evaporator's capacity, and all of both for the LT evaporator.
    const RunResult refused = run(requestOf("booster", "CO2.FLD", {{0, 28, 3, 1.0}}));
    ASSERT_EQ(refused.report.end, RunEnd::refused);
    EXPECT_NE(helpFor(refused).find("the states behind are missing"), std::string::npos) << helpFor(refused);
    const RunResult medium = run(requestOf("booster", "CO2.FLD", {{0, 28, 2, 0.0}}));
    ASSERT_EQ(medium.report.end, RunEnd::refused);
    EXPECT_NE(helpFor(medium).find("the states behind are missing"), std::string::npos) << helpFor(medium);
}

TEST(Remarks, HaveNamesOfTheirOwn) {
    std::set<std::string_view> names;
    for (const remarks::Kind& kind : remarks::kinds()) EXPECT_TRUE(names.insert(kind.name).second) << kind.name;
}

TEST(Remarks, WeightiestComeFirst) {
    const RunResult result = run(requestOf("booster", "CO2.FLD", {{0, receiver, 1, 2500.0}}));
    ASSERT_TRUE(result.isDone()) << result.report.IERR << ' ' << result.report.HERR.view();
    const std::vector<Remark> said = remarksOf(result);
    ASSERT_GE(said.size(), 2u);
    EXPECT_EQ(said.front().weight, Weight::wrong);
    EXPECT_TRUE(remarks::anyWrong(said));
    EXPECT_TRUE(
        std::is_sorted(said.begin(), said.end(), [](const Remark& a, const Remark& b) { return a.weight > b.weight; }));
}

}  // namespace
}  // namespace frigana
