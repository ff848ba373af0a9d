// Values with names and units: the file gets the values, the listener the rest.
#include "ResultWriter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "14_ErrorControl.h"
#include "TemporaryFolder.h"
#include "TextFile.h"
#include "Trap.h"

namespace frigana {
namespace {

using test::readFile;
using test::TemporaryFolder;
using Kind = ResultEntry::Kind;

struct Heard {
    Kind kind;
    int line, row;
    std::string circuit, section, group, name, unit, text;
    double value;
    int integer;
};

struct Results : testing::Test {
    TemporaryFolder folder;
    Text255 result{std::string_view(folder.path("plant.fo1"))};
    Text255 scratch{std::string_view(folder.path("temporal1.txt"))};
    std::vector<Heard> heard;

    void SetUp() override {
        ERRORFILEOUT = result;
        listenToResult(
            [](void* context, const ResultEntry& e) {
                static_cast<std::vector<Heard>*>(context)->push_back(
                    {e.kind, e.line, e.row, std::string(e.circuit), std::string(e.section), std::string(e.group),
                     std::string(e.name), std::string(e.unit), std::string(e.text), e.value, e.integer});
            },
            &heard);
    }
    void TearDown() override { listenToResult(nullptr, nullptr); }
    std::string file(const Text255& path) const { return readFile(std::string(path.trimmed())); }
};

void writeSmallResult(const Text255& path) {
    ResultWriter writer(path);
    writer.integer("Request type", 2);
    writer.text("Title", "A title, 'quoted'");
    writer.heading("EVAPORATOR");
    writer.group("Inlet");
    writer.value("pressure", "kPa", 243.5);
    writer.group({});
    writer.value("Mass flow", "kg/s", -777.0f);
    writer.blankLine();
    writer.heading("CYCLE data for graphic P-h ");
    writer.row("Cycle", 1);
    writer.value("Enthalpy", "kJ/kg", 400.0);
    EXPECT_EQ(writer.line(), 8);
    writer.close();
}
const char* const smallResult =
    " 2\n A title, 'quoted'\n EVAPORATOR\n 243.50000000000000\n -777.000000\n \n CYCLE data for graphic P-h \n"
    " 400.00000000000000\n";

TEST_F(Results, TheFileGetsTheValuesAndTheListenerTheirNames) {
    writeSmallResult(result);
    EXPECT_EQ(file(result), smallResult);
    ASSERT_EQ(heard.size(), 9u);
    EXPECT_EQ(heard[0].kind, Kind::start);
    EXPECT_EQ(heard[1].integer, 2);
    EXPECT_EQ(heard[1].line, 1);
    EXPECT_EQ(heard[2].text, "A title, 'quoted'");
    EXPECT_EQ(heard[3].kind, Kind::heading);
    EXPECT_EQ(heard[4].section, "EVAPORATOR");
    EXPECT_EQ(heard[4].group, "Inlet");
    EXPECT_EQ(heard[4].name, "pressure");
    EXPECT_EQ(heard[4].unit, "kPa");
    EXPECT_EQ(heard[4].value, 243.5);
    EXPECT_EQ(heard[4].line, 4);
    EXPECT_EQ(heard[5].group, "");
    EXPECT_EQ(heard[5].value, -777.0);
    EXPECT_EQ(heard[6].kind, Kind::blank);
    EXPECT_EQ(heard[8].section, "CYCLE data for graphic P-h");
    EXPECT_EQ(heard[8].group, "Cycle");
    EXPECT_EQ(heard[8].row, 1);
}

TEST_F(Results, ScratchFilesAreNotHeard) {
    writeSmallResult(scratch);
    EXPECT_EQ(file(scratch), smallResult);
    EXPECT_TRUE(heard.empty());
}

TEST_F(Results, CopiedLinesKeepTheirNames) {
    writeSmallResult(scratch);
    ResultCopy source(scratch, 1);
    ResultWriter writer(result, 3);
    writer.circuit("High temperature circuit");
    writer.copyLines(source, 4);
    source.skipLines(1);
    EXPECT_EQ(source.line(), 5);
    writer.value("Mass flow of the system", "kg/s", 0.5);
    writer.copyLines(source, 3);
    source.close();
    writer.circuit({});
    writer.heading("OVERALL PARAMETERS");
    writer.close();
    EXPECT_EQ(file(result),
              "  2\n  A title, 'quoted'\n  EVAPORATOR\n  243.50000000000000\n 0.50000000000000000\n \n"
              "  CYCLE data for graphic P-h\n  400.00000000000000\n OVERALL PARAMETERS\n");
    ASSERT_EQ(heard.size(), 10u);
    EXPECT_EQ(heard[1].integer, 2);
    EXPECT_EQ(heard[1].circuit, "High temperature circuit");
    EXPECT_EQ(heard[4].value, 243.5);
    EXPECT_EQ(heard[4].name, "pressure");
    EXPECT_EQ(heard[4].group, "Inlet");
    EXPECT_EQ(heard[4].section, "EVAPORATOR");
    EXPECT_EQ(heard[4].circuit, "High temperature circuit");
    EXPECT_EQ(heard[5].name, "Mass flow of the system");
    EXPECT_EQ(heard[5].line, 5);
    EXPECT_EQ(heard[8].row, 1);
    EXPECT_EQ(heard[8].value, 400.0);
    EXPECT_EQ(heard[9].circuit, "");
    deleteScratch(scratch);
    EXPECT_EQ(file(scratch), "");
}

TEST_F(Results, AFileOfUnknownOriginIsCopiedAsText) {
    test::writeFile(std::string(scratch.trimmed()), "1.5\n" + std::string(100, 'x') + "\n\n");
    ResultCopy source(scratch, 1);
    ResultWriter writer(result, 3);
    writer.copyLines(source, 3);
    writer.close();
    source.close();
    EXPECT_EQ(file(result), " 1.5\n " + std::string(80, 'x') + "\n \n");
    ASSERT_EQ(heard.size(), 4u);
    EXPECT_EQ(heard[1].kind, Kind::text);
    EXPECT_EQ(heard[1].text, "1.5");
}

TEST_F(Results, CopyingBeyondTheEndEndsTheRun) {
    writeSmallResult(scratch);
    testing::internal::CaptureStderr();
    const bool back = runContained(
        [](void* context) {
            auto* self = static_cast<Results*>(context);
            ResultCopy source(self->scratch, 1);
            ResultWriter writer(self->result, 3);
            writer.copyLines(source, 9);
        },
        this);
    const std::string said = testing::internal::GetCapturedStderr();
    abandonAllUnits();
    EXPECT_FALSE(back);
    EXPECT_NE(said.find("temporal1.txt, line 9: expected a line of a result, found the end"), std::string::npos)
        << said;
    EXPECT_FALSE(fileExists(result.view()));
}

TEST_F(Results, RowsOfCellsInFixedFormat) {
    ResultWriter writer(result);
    writer.cell("Request type", "", Integer{1, 1});
    writer.endRow();
    writer.filler();
    for (int i = 1; i <= 2; ++i) {
        writer.row("Table", i);
        writer.cell("Temperature", "K", FixedPoint{16, 6, 273.15});
        writer.space(1);
        writer.cell("Class", "", Character{3, "A1"});
        writer.endRow();
    }
    writer.close();
    EXPECT_EQ(file(result), "1\n0\n      273.150000 A1 \n      273.150000 A1 \n");
    ASSERT_EQ(heard.size(), 9u);
    EXPECT_EQ(heard[1].line, 1);
    EXPECT_EQ(heard[3].line, 3);
    EXPECT_EQ(heard[3].value, 273.15);
    EXPECT_EQ(heard[4].text, "A1");
    EXPECT_EQ(heard[5].kind, Kind::endOfRow);
    EXPECT_EQ(heard[6].row, 2);
}

TEST_F(Results, ManyNamesAndFilesDoNotDisturbTheLines) {
    for (int file = 0; file < 10; ++file) {
        ResultWriter writer(Text255(std::string_view(folder.path("f" + std::to_string(file)))));
        for (int i = 0; i < 1500; ++i)
            writer.value("name " + std::to_string(file * 1500 + i), "unit", static_cast<double>(i));
        EXPECT_EQ(writer.line(), 1500);
        writer.close();
    }
    EXPECT_EQ(readFile(folder.path("f9")).substr(0, 24), " 0.0000000000000000\n 1.0");
    writeSmallResult(result);
    EXPECT_EQ(file(result), smallResult);
}

}  // namespace
}  // namespace frigana
