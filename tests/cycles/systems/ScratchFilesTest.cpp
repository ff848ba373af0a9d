// Scratch files of the systems of two circuits, their names, and what the results tell a listener.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>

#include "14_ErrorControl.h"
#include "FilesInFolder.h"
#include "ResultWriter.h"
#include "Systems.h"

namespace frigana::test {
namespace {

using Names = std::set<std::string>;

Names filesIn(const Plant& plant) {
    return filesInFolder(plant.folder.path());
}

int linesOf(const Plant& plant, const char* name) {
    return ResultFile(readFile(plant.folder.path(name))).count();
}

const System* const systems[] = {&combined, &cascade, &pumped};
const Changes searched{{2, 18, {1, 2.0}}};  // heat of the subcooler given

TEST(SystemScratchFiles, AreGoneAfterSuccess) {
    for (const System* system : systems) {
        Plant plant;
        plant(system->request());
        EXPECT_EQ(ResultFile(plant.resultText()).count(), system->lines) << system->sub;
        EXPECT_EQ(filesIn(plant), (Names{"plant.fi1", "plant.fo1"})) << system->sub;
    }
    Plant plant;
    plant(combined.request(searched));
    EXPECT_EQ(ResultFile(plant.resultText()).count(), combined.lines);
    EXPECT_EQ(filesIn(plant), (Names{"plant.fi1", "plant.fo1"}));
}

TEST(SystemScratchFiles, StayAfterAFailureOfTheSecondCircuitSolved) {
    const Changes failing{{1, 11, {1, 450.0}}};  // the high circuit
    for (const System* system : {&cascade, &pumped}) {
        Plant plant;
        plant(system->request(failing));
        EXPECT_TRUE(ResultFile(plant.resultText()).refused()) << system->sub;
        EXPECT_EQ(filesIn(plant), (Names{"plant.fi1", "plant.fo1", "temporal2.txt"})) << system->sub;
        EXPECT_EQ(linesOf(plant, "temporal2.txt"), system->sub == 4 ? 283 : 239);
        // The next run in the folder writes over it.
        plant(system->request());
        EXPECT_EQ(filesIn(plant), (Names{"plant.fi1", "plant.fo1"})) << system->sub;
    }
    Plant plant;
    plant(combined.request({{2, 11, {1, 450.0}}}));
    EXPECT_TRUE(ResultFile(plant.resultText()).refused());
    EXPECT_EQ(filesIn(plant), (Names{"plant.fi1", "plant.fo1", "temporal1.txt"}));
    EXPECT_EQ(linesOf(plant, "temporal1.txt"), 283);
}

TEST(SystemScratchFiles, StayAfterTheChecksBetweenTheCircuits) {
    for (const System* system : {&cascade, &pumped}) {
        Plant plant;
        plant(system->request({{2, system->sub == 4 ? 16 : 11, {1, 0.0}}}));
        EXPECT_EQ(ResultFile(plant.resultText()).trimmed(2), "204202");
        EXPECT_EQ(filesIn(plant), (Names{"plant.fi1", "plant.fo1", "temporal2.txt"})) << system->sub;
    }
}

// The first pass writes both trials; the second one follows the target to a fall that no liquid has.
TEST(SystemScratchFiles, StayAfterAFailedTrial) {
    Plant plant;
    plant(combined.request({{2, 18, {1, 5000.0}}}));
    EXPECT_EQ(ResultFile(plant.resultText()).trimmed(2), "203214");
    EXPECT_EQ(filesIn(plant), (Names{"plant.fi1", "plant.fo1", "temporal1.txt", "temporalA.txt", "temporalB.txt"}));
    for (const char* name : {"temporalA.txt", "temporalB.txt"}) EXPECT_EQ(linesOf(plant, name), 333) << name;
}

TEST(SystemScratchFiles, ThatCannotBeWrittenEndTheRunWithoutAResult) {
    struct Blocked {
        const System* system;
        const char* name;
    };
    for (const Blocked& blocked :
         {Blocked{&combined, "temporal1.txt"}, Blocked{&combined, "temporal2.txt"}, Blocked{&combined, "temporalA.txt"},
          Blocked{&combined, "temporalB.txt"}, Blocked{&cascade, "temporal1.txt"}, Blocked{&cascade, "temporal2.txt"},
          Blocked{&pumped, "temporal1.txt"}, Blocked{&pumped, "temporal2.txt"}}) {
        Plant plant;
        std::filesystem::create_directory(plant.folder.path(blocked.name));
        testing::internal::CaptureStderr();
        plant(blocked.system->request(blocked.system == &combined ? searched : Changes{}));
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "frigana: " + plant.folder.path(blocked.name) + ": cannot be written\n");
        EXPECT_EQ(runReport.end, RunEnd::runtimeError);
        EXPECT_FALSE(plant.hasResult()) << blocked.system->sub << blocked.name;
    }
}

// A run begins with its records at zero, whatever the run before left.
TEST(SystemResults, DoNotDependOnEarlierRequests) {
    for (const System* system : systems) {
        SCOPED_TRACE(system->sub);
        const std::string first = resultText(*system);
        EXPECT_EQ(ResultFile(first).count(), system->lines);
        solve(*system, {{2, 3, {1, 12.0}}, {2, 5, {1, 5.0}}, {1, 3, {1, 10.0}}, {2, 4, {2, 3.0}}});
        solve(*system, {{2, 2, {1, 110.0}}});
        const ResultFile again = solve(*system), before(first);
        ASSERT_EQ(again.count(), before.count());
        // The engine's memo of saturation states lets the last digits depend on the states asked for before.
        for (int line = 1; line <= before.count(); ++line) {
            const double number = before.number(line);
            if (std::isfinite(number))
                EXPECT_NEAR(again.number(line), number, 1e-9 * std::max(std::fabs(number), 1.0)) << line;
            else
                EXPECT_EQ(again.raw(line), before.raw(line)) << line;
        }
    }
}

// ---- names and units ------------------------------------------------------------------------------------------------

struct Heard {
    int values = 0, named = 0, withUnit = 0, lines = 0;
    Names circuits, sections;
    std::vector<std::string> rows;  // circuit, section, name and unit of the last lines of the result
};

void hear(void* context, const ResultEntry& entry) {
    Heard& heard = *static_cast<Heard*>(context);
    if (entry.kind == ResultEntry::Kind::start) heard = {};
    heard.lines = std::max(heard.lines, entry.line);
    if (!entry.circuit.empty()) heard.circuits.emplace(entry.circuit);
    if (!entry.section.empty()) heard.sections.emplace(entry.section);
    if (entry.kind != ResultEntry::Kind::value) return;
    ++heard.values;
    if (!entry.name.empty()) ++heard.named;
    if (!entry.unit.empty()) ++heard.withUnit;
    heard.rows.push_back(std::string(entry.circuit) + "/" + std::string(entry.section) + "/" +
                         std::string(entry.group) + "/" + std::string(entry.name) + "/" + std::string(entry.unit));
}

TEST(SystemResults, TellEveryValueWithItsNameUnitAndCircuit) {
    const struct {
        const System* system;
        Changes changes;
        Names circuits;
    } rows[] = {
        {&combined, searched, {"Medium temperature circuit", "Low temperature circuit"}},
        {&cascade, {}, {"High temperature circuit", "Low temperature circuit", "System"}},
        {&pumped, {}, {"High temperature circuit", "Pumped loop", "System"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.system->sub);
        Heard heard;
        listenToResult(hear, &heard);
        const ResultFile file = solve(*row.system, row.changes);
        listenToResult(nullptr, nullptr);
        EXPECT_EQ(file.count(), row.system->lines);
        EXPECT_EQ(heard.lines, row.system->lines);
        EXPECT_EQ(heard.circuits, row.circuits);
        EXPECT_EQ(heard.named, heard.values);
        EXPECT_EQ(heard.withUnit, heard.values);
        const auto has = [&](const std::string& value) {
            return std::find(heard.rows.begin(), heard.rows.end(), value) != heard.rows.end();
        };
        const std::string first = row.system == &combined ? "Medium temperature circuit" : "High temperature circuit";
        EXPECT_TRUE(has(first + "/EVAPORATOR/Inlet/pressure/kPa"));
        EXPECT_TRUE(has(first + "/PERFORMANCE PARAMETERS//Mass flow/kg/s"));
        if (row.system == &combined) {
            EXPECT_TRUE(has(first + "/PERFORMANCE PARAMETERS//Capacity of the system/kW"));
            EXPECT_TRUE(has("Low temperature circuit/MECHANICAL SUBCOOLING (HEAT EXCHANGER)//Heat exchanged/kW"));
        } else {
            EXPECT_TRUE(has("System/OVERALL PARAMETERS//Total power/kW"));
        }
    }
}

}  // namespace
}  // namespace frigana::test
