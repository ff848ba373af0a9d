// What is told with the values of a result: names that say what stands there, and nothing where nothing stands.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ResultWriter.h"
#include "Systems.h"

namespace frigana::test {
namespace {

struct Shown {
    int line;
    std::string circuit, section, group, name;
    double value;
};

// Every value of a result as it is told.
std::vector<Shown> shown(const Request& request) {
    std::vector<Shown> all;
    listenToResult(
        [](void* context, const ResultEntry& entry) {
            auto& list = *static_cast<std::vector<Shown>*>(context);
            if (entry.kind == ResultEntry::Kind::start) list.clear();
            if (entry.kind == ResultEntry::Kind::value)
                list.push_back({entry.line, std::string(entry.circuit), std::string(entry.section),
                                std::string(entry.group), std::string(entry.name), entry.value});
        },
        &all);
    Plant plant;
    plant(request);
    listenToResult(nullptr, nullptr);
    return all;
}

const Shown* atLine(const std::vector<Shown>& all, int line) {
    for (const Shown& entry : all)
        if (entry.line == line) return &entry;
    return nullptr;
}

const std::vector<Parameter> booster{
    {1, 265.15}, {2, 8.0}, {1, 0.0},    {2, 2.0},    {1, 0.0}, {2, 2.0}, {1, 0.0},  {1, 60.0}, {1, 0.72}, {1, 0.86},
    {2, 3.0},    {1, 0.0}, {2, 9000.0}, {1, 308.15}, {1, 0.0}, {2, 0.0}, {1, 0.0},  {2, 0.0},  {1, 0.0},  {2, 3.0},
    {1, 0.0},    {1, 0.0}, {1, 3500.0}, {1, 241.15}, {2, 8.0}, {1, 0.0}, {1, 0.68}, {1, 25.0}, {1, 0.8}};

TEST(ShownNames, TheLowStageOfABoosterHasNoPressureRatioAndTheFlowOfTheHighOne) {
    const Request request = cycleRequest(14, booster, "CO2.FLD");
    const auto all = shown(request);
    const Shown *ratio = atLine(all, 122), *flow = atLine(all, 123), *highFlow = atLine(all, 104);
    ASSERT_TRUE(ratio != nullptr && flow != nullptr && highFlow != nullptr);
    EXPECT_EQ(ratio->section, "LOW STAGE COMPRESSOR");
    EXPECT_EQ(ratio->name, "Pressure ratio");
    EXPECT_EQ(ratio->value, -777.0);
    EXPECT_EQ(flow->name, "Mass flow of the high stage");
    EXPECT_EQ(flow->value, highFlow->value);
    EXPECT_EQ(highFlow->name, "Mass flow");
    // the file keeps its 1
    Plant plant;
    plant(request);
    EXPECT_EQ(ResultFile(plant.resultText()).number(122), 1.0);
}

TEST(ShownNames, ASaturationTemperatureThatNobodyWorkedOutIsNotZero) {
    const auto all = shown(combined.request());
    const ResultFile file = solve(combined);
    ASSERT_EQ(file.count(), combined.lines);
    const int start = combined.second1 - 1;
    const int expansion = file.find("EXPANSION DEVICE", start);
    const Shown* entry = atLine(all, expansion + 7);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->circuit, "Low temperature circuit");
    EXPECT_EQ(entry->group, "Inlet");
    EXPECT_EQ(entry->name, "saturation temperature");
    EXPECT_EQ(entry->value, -777.0);
    EXPECT_EQ(file.number(expansion + 7), 0.0) << "the file keeps its 0";
    for (const Shown& other : all)
        EXPECT_TRUE(other.name != "saturation temperature" || other.value != 0.0) << other.line;
}

TEST(ShownNames, TheCondenserOfARankineCycleHasALineWithoutAValue) {
    const std::vector<Parameter> rankine{{1, 383.15}, {2, 5.0},   {1, 0.0},   {2, 0.0},   {1, 0.0},
                                         {1, 100.0},  {1, 0.8},   {1, 0.0},   {2, 0.0},   {1, 0.0},
                                         {1, 308.15}, {1, 0.0},   {1, 0.0},   {1, 0.7},   {2, 0.0},
                                         {1, 0.0},    {1, 430.0}, {1, 390.0}, {1, 293.0}, {1, 300.0}};
    const auto all = shown(cycleRequest(6, rankine, "R245FA.FLD"));
    const Shown* entry = atLine(all, 103);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->name, "Unused");
    EXPECT_EQ(entry->value, -777.0);
}

// The circuit that is solved second has a potential of its own, or none.
TEST(Potential, OfAnUnknownFluidIsNotThatOfTheOtherCircuit) {
    const ResultFile low = solve(cascade, {}, Fluids{"R134a.FLD", "CO2.FLD"});
    ASSERT_EQ(low.count(), cascade.lines) << low.trimmed(3);
    EXPECT_EQ(low.trimmed(4), "R134a.FLD -777");
    EXPECT_EQ(low.trimmed(cascade.second1 + 3), "CO2.FLD 1");
    const ResultFile high = solve(combined, {}, Fluids{"R134A.FLD", "r32.fld"});
    ASSERT_EQ(high.count(), combined.lines) << high.trimmed(3);
    EXPECT_EQ(high.trimmed(4), "R134A.FLD 1300");
    EXPECT_EQ(high.trimmed(combined.second1 + 3), "r32.fld -777");
}

}  // namespace
}  // namespace frigana::test
