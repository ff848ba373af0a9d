// Line sizing as a front end runs it: the first run, a choice, the second run.
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "14_ErrorControl.h"
#include "FilesInFolder.h"
#include "Larger.h"
#include "OneFluidCycles.h"
#include "RandomParameters.h"

namespace frigana::test {
namespace {

constexpr int resultLines = 507;
constexpr int fullLoad[] = {287, 361, 435}, partialLoad[] = {324, 398, 472};  // first option of each line
constexpr int setting[] = {5, 10, 15};

// A small chiller whose three lines are all to be sized.
const CycleKind lineSizing{
    5,
    "R134A.FLD",
    {{1, 268.15}, {2, 5.0}, {1, 0.0}, {2, 4.0}, {4, 1.0},  {3, 10.0}, {1, 0.7},  {1, 0.85}, {2, 4.0}, {4, 0.5},
     {1, 313.15}, {2, 4.0}, {1, 0.0}, {2, 1.0}, {4, 0.4},  {1, 1.0},  {1, 15.0}, {1, 2.0},  {1, 4.0}, {1, 1.0},
     {1, 12.0},   {1, 0.0}, {1, 3.0}, {1, 1.0}, {1, 14.0}, {1, 0.0},  {1, 4.0},  {2, 1.0},  {1, 0.5}, {1, 0.0}},
    resultLines};

// A plant with both runs of a request in its folder.
struct Dialogue {
    Plant plant;
    std::string firstResult = plant.folder.path("plant.fo0");

    ResultFile first(Changes changes) {
        std::filesystem::remove(firstResult);
        run(lineSizing.with(changes));
        return ResultFile(hasFirst() ? readFile(firstResult) : "");
    }
    // The request of the first run with the options picked for the suction, discharge and liquid line.
    ResultFile second(Changes changes, std::initializer_list<int> picked) {
        run(secondOf(lineSizing.with(changes), picked));
        return ResultFile(plant.hasResult() ? plant.resultText() : "");
    }
    static std::vector<Parameter> secondOf(std::vector<Parameter> all, std::initializer_list<int> picked) {
        all[29] = {2, 0.0};
        for (int option : picked) all.push_back({option, 0.0});
        return all;
    }
    void run(const std::vector<Parameter>& parameters, const char* fluid = lineSizing.fluid) {
        std::filesystem::remove(plant.result);
        plant(cycleRequest(5, parameters, fluid));
    }
    bool hasFirst() const { return std::filesystem::exists(firstResult); }
    std::set<std::string> files() const { return filesInFolder(plant.folder.path()); }
};

// One option of a result.
struct Pipe {
    double DINT, DEXT, VEL, DP, DTSAT;
    std::string NOMI;
};
Pipe pipe(const ResultFile& file, int firstOption, int option) {
    const int line = firstOption + 6 * (option - 1);
    return {file.number(line),     file.number(line + 1), file.number(line + 2),
            file.number(line + 3), file.number(line + 4), file.trimmed(line + 5)};
}
void expectEmpty(const Pipe& pipe) {
    for (double value : {pipe.DINT, pipe.DEXT, pipe.VEL, pipe.DP, pipe.DTSAT}) EXPECT_EQ(value, -777.0);
    EXPECT_EQ(pipe.NOMI, "");
}
std::string names(const ResultFile& file, int firstOption) {
    std::string all;
    for (int i = 1; i <= 6; ++i) all += (i > 1 ? ", " : "") + pipe(file, firstOption, i).NOMI;
    return all;
}

// ---- the files ------------------------------------------------------------------------------------------------------

TEST(LineSizing, TheFirstRunWritesItsOwnFileAlone) {
    Dialogue dialogue;
    const ResultFile file = dialogue.first({});
    ASSERT_EQ(file.count(), resultLines);
    EXPECT_EQ(dialogue.files(), (std::set<std::string>{"plant.fi1", "plant.fo0"}));
    EXPECT_EQ(file.trimmed(2), "5");
    EXPECT_EQ(file.raw(284), " ");
    EXPECT_EQ(file.raw(285), " ");
    const struct {
        int line;
        const char* heading;
    } headings[] = {
        {5, "EVAPORATOR"},
        {147, "PERFORMANCE PARAMETERS"},
        {286, "OPTIONS FOR SUCTION LINE (Condition:Full Load)"},
        {323, "OPTIONS FOR SUCTION LINE (Condition:Partial Load)"},
        {360, "OPTIONS FOR DISCHARGE LINE (Condition:Full Load)"},
        {397, "OPTIONS FOR DISCHARGE LINE (Condition:Partial Load)"},
        {434, "OPTIONS FOR LIQUID LINE (Condition:Full Load)"},
        {471, "OPTIONS FOR LIQUID LINE (Condition:Partial Load)"},
    };
    for (const auto& row : headings) EXPECT_EQ(file.trimmed(row.line), row.heading) << row.line;
}

TEST(LineSizing, TheCycleOfTheFirstRunHasNoDropsInItsLines) {
    Dialogue dialogue;
    const ResultFile sized = dialogue.first({{10, {1, 40.0}}});
    auto basic = lineSizing.parameters;
    basic.resize(15);
    for (int k : setting) basic[static_cast<std::size_t>(k - 1)] = {1, 0.0};
    Plant plant;
    plant(cycleRequest(1, basic));
    const ResultFile cycle(plant.resultText());
    ASSERT_EQ(sized.count(), resultLines);
    for (int line = 3; line <= 283; ++line) {
        if (std::isfinite(cycle.number(line)))
            EXPECT_NEAR(sized.number(line), cycle.number(line), 1e-10 * std::max(std::fabs(cycle.number(line)), 1.0));
        else
            EXPECT_EQ(sized.trimmed(line), cycle.trimmed(line)) << line;
    }
}

TEST(LineSizing, TheSecondRunTakesTheLossesOfThePipesPicked) {
    Dialogue dialogue;
    const ResultFile first = dialogue.first({});
    ASSERT_EQ(first.count(), resultLines);
    const int picked[] = {4, 2, 4};
    const ResultFile second = dialogue.second({}, {4, 2, 4});
    ASSERT_EQ(second.count(), resultLines);
    EXPECT_EQ(dialogue.files(), (std::set<std::string>{"plant.fi1", "plant.fo0", "plant.fo1"}));
    constexpr int dropOfLine[] = {41, 82, 124};
    for (std::size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        const Pipe before = pipe(first, fullLoad[i], picked[i]);
        const double drop = second.number(dropOfLine[i]);
        EXPECT_NEAR(drop, before.DP, 1e-9);
        // The size picked is now in the middle, at the conditions of the second run.
        const Pipe now = pipe(second, fullLoad[i], 3);
        EXPECT_EQ(now.NOMI, before.NOMI);
        EXPECT_EQ(now.DINT, before.DINT);
        EXPECT_NEAR(now.DP, before.DP, 0.1 * before.DP);
    }
    // The compressor stays that of the first run.
    EXPECT_EQ(second.number(156), first.number(156));
    EXPECT_LT(second.number(151), first.number(151));
}

TEST(LineSizing, LinesThatAreNotSizedKeepTheirDropInTheSecondRun) {
    Dialogue dialogue;
    const ResultFile first = dialogue.first({{10, {1, 40.0}}, {15, {2, 0.7}}});
    ASSERT_EQ(first.count(), resultLines);
    for (int line : {1, 2})
        for (int option = 1; option <= 6; ++option) {
            expectEmpty(pipe(first, fullLoad[line], option));
            expectEmpty(pipe(first, partialLoad[line], option));
        }
    const ResultFile second = dialogue.second({{10, {1, 40.0}}, {15, {2, 0.7}}}, {4, 1, 1});
    ASSERT_EQ(second.count(), resultLines);
    EXPECT_NEAR(second.number(82), 40.0, 1e-9);
    EXPECT_NEAR(second.number(125), 0.7, 1e-9);
    expectEmpty(pipe(second, fullLoad[1], 3));
}

TEST(LineSizing, FailuresGoToTheResultFileInBothRuns) {
    Dialogue dialogue;
    dialogue.run(lineSizing.with({{11, {1, 380.0}}}));
    EXPECT_FALSE(dialogue.hasFirst());
    const std::string text = failure(201201, "Error: Condenser temperature > Critical temperature (374.2100 K)");
    EXPECT_EQ(dialogue.plant.resultText(), text);
    ASSERT_EQ(dialogue.first({}).count(), resultLines);
    dialogue.run(Dialogue::secondOf(lineSizing.with({{11, {1, 380.0}}}), {4, 4, 4}));
    EXPECT_EQ(dialogue.plant.resultText(), text);
}

// ---- the first result, missing or damaged ---------------------------------------------------------------------------

std::string complaintOfSecondRun(Dialogue& dialogue) {
    testing::internal::CaptureStderr();
    dialogue.second({}, {4, 2, 4});
    return testing::internal::GetCapturedStderr();
}

TEST(LineSizingFirstResult, MissingIsToldWithItsName) {
    Dialogue dialogue;
    EXPECT_EQ(complaintOfSecondRun(dialogue), "frigana: " + dialogue.firstResult +
                                                  ": is missing; the first run (option 1 of parameter 30) writes it\n");
    EXPECT_EQ(runReport.end, RunEnd::runtimeError);
    EXPECT_FALSE(dialogue.plant.hasResult());
}

TEST(LineSizingFirstResult, DamagedIsToldWithTheLine) {
    Dialogue dialogue;
    ASSERT_EQ(dialogue.first({}).count(), resultLines);
    const std::string whole = readFile(dialogue.firstResult);

    std::size_t end = 0;
    for (int line = 1; line <= 300; ++line) end = whole.find('\n', end) + 1;
    writeFile(dialogue.firstResult, whole.substr(0, end));
    EXPECT_EQ(
        complaintOfSecondRun(dialogue),
        "frigana: " + dialogue.firstResult + ", line 301: expected a line of a result, found the end of the file\n");
    EXPECT_FALSE(dialogue.plant.hasResult());

    std::string spoiled = whole;
    std::size_t at = 0;
    for (int line = 1; line < 308; ++line) at = spoiled.find('\n', at) + 1;  // loss of the fourth option
    spoiled.replace(at, spoiled.find('\n', at) - at, " five");
    writeFile(dialogue.firstResult, spoiled);
    EXPECT_EQ(complaintOfSecondRun(dialogue),
              "frigana: " + dialogue.firstResult + ", line 308: expected a number, found \"five\"\n");
    EXPECT_EQ(runReport.end, RunEnd::runtimeError);
    EXPECT_FALSE(dialogue.plant.hasResult());
}

TEST(LineSizingFirstResult, AnOptionWithoutAPipeIsRefused) {
    Dialogue dialogue;
    const ResultFile first = dialogue.first({{15, {3, 0.002}}});
    ASSERT_EQ(first.count(), resultLines);
    expectEmpty(pipe(first, fullLoad[2], 1));
    dialogue.second({{15, {3, 0.002}}}, {4, 2, 1});
    EXPECT_EQ(dialogue.plant.resultText(), failure(201208, "Error: Liquid line - pressure drop is out of range!"));
}

// ---- edge cases -----------------------------------------------------------------------------------------------------

TEST(LineSizingEdges, ADiameterOfTheTableHasThreeSizesBelowAndThreeAbove) {
    Dialogue dialogue;
    const double inner = static_cast<double>(0.01338188f);
    const ResultFile file = dialogue.first({{15, {3, inner}}});
    ASSERT_EQ(file.count(), resultLines);
    // The widest size on offer keeps the lowest velocity instead of being the third above.
    EXPECT_EQ(names(file, fullLoad[2]).substr(0, 27), "3/8, 1/2, 5/8, 3/4, 7/8, 12");
    EXPECT_EQ(pipe(file, fullLoad[2], 3).DINT, inner);
    EXPECT_EQ(pipe(file, fullLoad[2], 3).DEXT, static_cast<double>(0.015875f));
}

TEST(LineSizingEdges, ADiameterBelowTheTableClearsTheRepeatedSize) {
    Dialogue dialogue;
    const ResultFile file = dialogue.first({{15, {3, 0.002}}});
    ASSERT_EQ(file.count(), resultLines);
    expectEmpty(pipe(file, fullLoad[2], 1));
    EXPECT_EQ(names(file, fullLoad[2]).substr(0, 35), ", 1/4, Not standard, 3/8, 1/2, 12 1");
    EXPECT_EQ(pipe(file, fullLoad[2], 3).DINT, 0.002);
}

TEST(LineSizingEdges, ADiameterAboveTheTableClearsRepeatedSizes) {
    Dialogue dialogue;
    const ResultFile file = dialogue.first({{5, {3, 0.3}}});
    ASSERT_EQ(file.count(), resultLines);
    expectEmpty(pipe(file, fullLoad[0], 5));
    EXPECT_EQ(names(file, fullLoad[0]).substr(0, 39), "10 1/8, 12 1/8, Not standard, 12 1/8, ,");
    const ResultFile largest = dialogue.first({{5, {3, static_cast<double>(0.2848836f)}}});
    ASSERT_EQ(largest.count(), resultLines);
    expectEmpty(pipe(largest, fullLoad[0], 4));
    expectEmpty(pipe(largest, fullLoad[0], 5));
    EXPECT_EQ(names(largest, fullLoad[0]).substr(0, 26), "8 1/8, 10 1/8, 12 1/8, , ,");
}

TEST(LineSizingEdges, FittingsAreCountedWhole) {
    Dialogue dialogue;
    const ResultFile three = dialogue.first({{19, {1, 3.0}}, {5, {3, 0.03}}});
    const ResultFile more = dialogue.first({{19, {1, 3.7}}, {5, {3, 0.03}}});
    const ResultFile four = dialogue.first({{19, {1, 4.0}}, {5, {3, 0.03}}});
    ASSERT_EQ(three.count(), resultLines);
    const double loss = pipe(three, fullLoad[0], 3).DP;
    EXPECT_EQ(pipe(more, fullLoad[0], 3).DP, loss);
    EXPECT_GT(pipe(four, fullLoad[0], 3).DP, loss);
}

TEST(LineSizingEdges, FittingsGivenAsAValueHaveNoEffect) {
    Dialogue dialogue;
    const ResultFile none = dialogue.first({{19, {1, 0.0}}, {5, {3, 0.03}}});
    ASSERT_EQ(none.count(), resultLines);
    for (double value : {0.0, 5.0, 150.0}) {
        const ResultFile file = dialogue.first({{19, {2, value}}, {5, {3, 0.03}}});
        EXPECT_EQ(pipe(file, fullLoad[0], 3).DP, pipe(none, fullLoad[0], 3).DP);
    }
}

TEST(LineSizingEdges, WithoutElevationThereIsNoColumnAndASlowerSuctionLineWillDo) {
    Dialogue dialogue;
    const ResultFile level = dialogue.first({{18, {1, 0.0}}, {5, {3, 0.03}}});
    const ResultFile rising = dialogue.first({{18, {1, 3.0}}, {5, {3, 0.03}}});
    ASSERT_EQ(level.count(), resultLines);
    ASSERT_EQ(rising.count(), resultLines);
    const double rho = (level.number(29) + level.number(36)) / 2.0;
    EXPECT_NEAR(pipe(rising, fullLoad[0], 3).DP - pipe(level, fullLoad[0], 3).DP, rho * 9.81 * 3.0 / 1000.0, 1e-6);
    // Both keep their lowest velocity in the widest size, and the next one would not.
    for (const auto& [file, vmin] : {std::pair{&level, 2.54}, std::pair{&rising, 4.5833}}) {
        const Pipe widest = pipe(*file, fullLoad[0], 6);
        EXPECT_GE(widest.VEL, vmin);
        Dialogue next;
        const ResultFile around = next.first({{18, {1, vmin > 3.0 ? 3.0 : 0.0}}, {5, {3, widest.DINT}}});
        EXPECT_LT(pipe(around, fullLoad[0], 4).VEL, vmin);
    }
}

TEST(LineSizingEdges, FullPartialLoadRepeatsTheWantedPipe) {
    Dialogue dialogue;
    const ResultFile file = dialogue.first({{29, {1, 1.0}}, {5, {3, 0.03}}, {10, {3, 0.02}}, {15, {3, 0.011}}});
    ASSERT_EQ(file.count(), resultLines);
    for (std::size_t line = 0; line < 3; ++line)
        for (int i = 0; i < 36; ++i) EXPECT_EQ(file.raw(fullLoad[line] + i), file.raw(partialLoad[line] + i)) << i;
}

TEST(LineSizing, TheWantedDropIsMetOrTheVelocityIsThatOfTheRule) {
    Dialogue dialogue;
    const ResultFile file = dialogue.first({});
    ASSERT_EQ(file.count(), resultLines);
    EXPECT_NEAR(pipe(file, fullLoad[0], 3).DTSAT, 1.0, 1e-6);
    EXPECT_NEAR(pipe(file, fullLoad[1], 3).DTSAT, 0.5, 1e-6);
    EXPECT_NEAR(pipe(file, fullLoad[2], 3).DTSAT, 0.4, 1e-6);
    // So small a drop is met by no pipe that the search comes to: the mean of 10.1667 and 17.8333 m/s.
    const ResultFile small = dialogue.first({{10, {4, 0.001}}, {22, {1, 20.0}}});
    ASSERT_EQ(small.count(), resultLines);
    EXPECT_NEAR(pipe(small, fullLoad[1], 3).VEL, 14.0, 0.02);
    EXPECT_GT(pipe(small, fullLoad[1], 3).DTSAT, 0.01);
}

TEST(LineSizing, WiderPipesAreSlowerAndLoseLess) {
    Dialogue dialogue;
    const ResultFile file = dialogue.first({});
    ASSERT_EQ(file.count(), resultLines);
    for (const auto& firstOptions : {fullLoad, partialLoad})
        for (std::size_t line = 0; line < 3; ++line)
            for (int option = 2; option <= 5; ++option) {
                const Pipe narrow = pipe(file, firstOptions[line], option - 1);
                const Pipe wide = pipe(file, firstOptions[line], option);
                EXPECT_GT(wide.DINT, narrow.DINT);
                EXPECT_LT(wide.DP, narrow.DP);
                EXPECT_LT(wide.DTSAT, narrow.DTSAT);
            }
}

TEST(LineSizing, ALineOfSaturatedLiquidHasAViscosity) {
    for (const char* fluid : {"R134A.FLD", "PROPANE.FLD", "AMMONIA.FLD", "R32.FLD", "R410A.MIX"})
        for (double condensing : {303.15, 307.15, 311.15, 315.15}) {
            Dialogue dialogue;
            dialogue.run(
                lineSizing.with({{11, {1, condensing}}, {12, {2, 0.0}}, {14, {2, 0.0}}, {2, {2, 0.0}}, {4, {2, 0.0}}}),
                fluid);
            ASSERT_TRUE(dialogue.hasFirst()) << fluid << ' ' << dialogue.plant.resultText();
            const ResultFile file(readFile(dialogue.firstResult));
            ASSERT_EQ(file.count(), resultLines);
            for (int line : {0, 2})
                EXPECT_TRUE(std::isfinite(pipe(file, fullLoad[line], 3).DP)) << fluid << ' ' << condensing;
        }
}

// ---- random requests ------------------------------------------------------------------------------------------------

constexpr int randomRequests = 120;

const Choices sized{{4, {0.2, 1.5}, anyChange}, {4, {0.2, 1.5}, anyChange}, {3, {0.005, 0.1}, {0.0011, 0.33}}, drop};
const Choices pipeKind{{1, {1.0, 3.0}, {1.0, 3.0}}, {2, {1.0, 2.0}, {1.0, 2.0}}, {3, {1.0, 2.0}, {1.0, 2.0}}};
Choices upTo(double usual, double allowed) {
    return {{1, {0.0, usual}, {0.0, allowed}}};
}
const Choices fittings{{1, {0.0, 10.0}, anyChange}, {2, {0.0, 10.0}, anyChange}};
const std::vector<Choices> lineSizingChoices{
    pressureOr(240, 285, 80, 500, evaporatorP),
    {change(2, 12)},
    someDrop,
    {change(2, 0), change(2, 6)},
    sized,
    capacity,
    efficiency,
    efficiency,
    {change(2, 0), change(2, 10)},
    sized,
    pressureOr(300, 335, 600, 2000, condenserP),
    {change(2, 0), change(2, 8)},
    someDrop,
    {change(2, 0), change(2, 5), change(3, 15)},
    sized,
    pipeKind,
    upTo(30, 1000),
    upTo(5, 1000),
    fittings,
    pipeKind,
    upTo(30, 200),
    upTo(5, 200),
    fittings,
    pipeKind,
    upTo(30, 1000),
    upTo(5, 1000),
    fittings,
    {{1, {0, 0}, {0, 0}}, {2, {0, 0}, {0, 0}}},
    {{1, {0.2, 1.0}, {0.101, 1.0}}},
    {{1, {0, 0}, {0, 0}}},
};

// Capacities of the devices: evaporator, suction line, compressor, then discharge line, condenser, liquid line.
double openBalance(const ResultFile& file) {
    double sum = 0.0, largest = 0.0;
    for (const auto& [line, sign] : std::initializer_list<std::pair<int, double>>{
             {25, 1.0}, {45, 1.0}, {66, 1.0}, {86, -1.0}, {108, -1.0}, {128, -1.0}}) {
        sum += sign * file.number(line);
        largest = larger(largest, std::fabs(file.number(line)));
    }
    return largest == 0.0 ? 0.0 : std::fabs(sum) / largest;
}

TEST(LineSizingRandom, BothRunsEndInAWholeResultOrInAFailureFile) {
    Random random(5);
    const char* const fluids[] = {"R134A.FLD",   "PROPANE.FLD", "R32.FLD",   "AMMONIA.FLD", "ISOBUTAN.FLD",
                                  "R1234YF.FLD", "R22.FLD",     "R152A.FLD", "R410A.MIX",   "R407C.MIX"};
    Dialogue dialogue;
    std::map<std::string, int> refusals;
    int solvedFirst = 0, solvedSecond = 0;
    double worst = 0.0;
    const auto refused = [&](const std::vector<Parameter>& parameters, const char* fluid) {
        const ResultFile file(dialogue.plant.hasResult() ? dialogue.plant.resultText() : "");
        ASSERT_EQ(file.count(), 3) << cycleRequest(5, parameters, fluid).text();
        ASSERT_GT(file.number(2), 0.0);
        ++refusals[file.trimmed(2)];
    };
    for (int i = 0; i < randomRequests; ++i) {
        const char* fluid = fluids[random.below(std::size(fluids))];
        auto parameters = randomParameters(lineSizingChoices, random);
        std::filesystem::remove(dialogue.firstResult);
        dialogue.run(parameters, fluid);
        if (!dialogue.hasFirst()) {
            refused(parameters, fluid);
            continue;
        }
        const ResultFile first(readFile(dialogue.firstResult));
        ASSERT_EQ(first.count(), resultLines) << cycleRequest(5, parameters, fluid).text();
        ASSERT_FALSE(dialogue.plant.hasResult());
        ++solvedFirst;
        worst = larger(worst, openBalance(first));

        const auto pick = [&] { return 1 + static_cast<int>(random.below(6)); };
        const int suction = pick(), discharge = pick(), liquid = pick();
        parameters = Dialogue::secondOf(parameters, {suction, discharge, liquid});
        dialogue.run(parameters, fluid);
        ASSERT_TRUE(dialogue.plant.hasResult()) << cycleRequest(5, parameters, fluid).text();
        const ResultFile second(dialogue.plant.resultText());
        if (second.refused()) {
            refused(parameters, fluid);
            continue;
        }
        ASSERT_EQ(second.count(), resultLines) << cycleRequest(5, parameters, fluid).text();
        ++solvedSecond;
        worst = larger(worst, openBalance(second));
    }
    EXPECT_LE(worst, 1e-9);
    std::printf("line sizing: %d first and %d second runs solved, energy balance open by %.1e at most; refused:",
                solvedFirst, solvedSecond, worst);
    for (const auto& [code, count] : refusals) std::printf(" %s x%d", code.c_str(), count);
    std::printf("\n");
    EXPECT_GT(solvedFirst, randomRequests / 4);
    EXPECT_GT(solvedSecond, randomRequests / 8);
}

}  // namespace
}  // namespace frigana::test
