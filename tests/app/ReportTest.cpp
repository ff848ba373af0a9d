// What is said of every way in which a run can end, and how values are laid out.
#include "Report.h"

#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>

namespace frigana::app {
namespace {

using Kind = ResultEntry::Kind;

using Print = void (*)(std::ostream&, const RunResult&, const ReportStyle&);

std::string printed(Print print, const RunResult& result) {
    std::ostringstream out;
    print(out, result, {});
    return out.str();
}

Entry value(int line, const char* section, const char* group, int row, const char* name, const char* unit,
            double number) {
    return {Kind::value, line, "", section, group, row, name, unit, number, 0, ""};
}

RunResult success() {
    RunResult result;
    result.resultExists = true;
    result.report.type = 2;
    result.report.sub = 1;
    result.report.resultPath = "plant.fo1";
    result.entries = {
        {Kind::text, 3, "", "", "", 0, "Title", "", 0.0, 0, "a, \"b\""},
        {Kind::heading, 5, "", "", "", 0, "", "", 0.0, 0, "EVAPORATOR"},
        value(6, "EVAPORATOR", "Inlet", 0, "pressure", "kPa", 243.5),
        value(7, "EVAPORATOR", "Inlet", 0, "quality", "-", -777.0),
        value(8, "EVAPORATOR", "Outlet", 0, "pressure", "kPa", 241.0),
        value(9, "EVAPORATOR", "", 0, "Glide", "K", 0.0),
        value(10, "EVAPORATOR", "", 0, "Capacity", "kW", std::numeric_limits<double>::quiet_NaN()),
        {Kind::heading, 11, "", "", "", 0, "", "", 0.0, 0, "DIAGRAM "},
    };
    for (int i = 1; i <= 3; ++i) {
        result.entries.push_back(value(10 + 2 * i, "DIAGRAM", "", 0, "P", "kPa", 100.0 * i));
        result.entries.push_back(value(11 + 2 * i, "DIAGRAM", "", 0, "H", "kJ/kg", 400.0));
    }
    for (int i = 1; i <= 2; ++i) {
        result.entries.push_back(value(20 + i, "", "Dome", i, "T", "K", 250.0 + i));
        result.entries.push_back(value(20 + i, "", "Dome", i, "D", "kg/m3", 1.0e-7 * i));
    }
    return result;
}

TEST(Report, SectionsPlacesScalarsAndTablesAreAligned) {
    EXPECT_EQ(printed(printReport, success()),
              "Basic cycle: done\n"
              "  Title  a, \"b\"\n"
              "\n"
              "EVAPORATOR\n"
              "                  Inlet  Outlet\n"
              "  pressure [kPa]  243.5     241\n"
              "  quality           n/a\n"
              "  Glide              0 K\n"
              "  Capacity  not finite kW\n"
              "\n"
              "DIAGRAM\n"
              "  #  P [kPa]  H [kJ/kg]\n"
              "  1      100        400\n"
              "  2      200        400\n"
              "  3      300        400\n"
              "  Dome  T [K]  D [kg/m3]\n"
              "  1       251      1e-07\n"
              "  2       252      2e-07\n"
              "\n"
              "Result file: plant.fo1\n");
}

TEST(Report, ATableWithoutAnyValueIsNotDrawn) {
    RunResult result = success();
    result.entries = {value(1, "", "Option", 1, "T", "K", -777.0), value(2, "", "Option", 2, "T", "K", -777.0)};
    EXPECT_EQ(printed(printReport, result), "Basic cycle: done\n  none\n\nResult file: plant.fo1\n");
    result.entries[1].value = 3.0;
    EXPECT_NE(printed(printReport, result).find("  2           3\n"), std::string::npos);
}

TEST(Report, EveryEndHasItsStatusAndItsWords) {
    RunResult result = success();
    EXPECT_EQ(exitStatus(result), 0);

    result.report.end = RunEnd::refused;
    result.report.IERR = 121;
    result.report.HERR = std::string_view("[SATT error 121] too hot\0", 25);
    EXPECT_EQ(exitStatus(result), 2);
    EXPECT_EQ(printed(printReport, result),
              "Basic cycle: refused\n  code     121\n  message  [SATT error 121] too hot\n  result   plant.fo1\n");

    result.report.end = RunEnd::runtimeError;
    EXPECT_EQ(exitStatus(result), 3);
    EXPECT_EQ(printed(printReport, result).substr(0, 11), "No result: ");

    result.report.end = RunEnd::returned;
    result.resultExists = false;
    result.report.sub = 8;
    EXPECT_EQ(exitStatus(result), 3);
    EXPECT_EQ(printed(printReport, result), "No result: there is no operation for request type 2, sub-type 8\n");
}

TEST(Report, JsonHoldsEveryValueAndNothingThatIsNotJson) {
    RunResult result = success();
    result.entries[0].text = "K\xfchl";
    const auto json = nlohmann::json::parse(printed(printJson, result));
    EXPECT_EQ(json["outcome"], "success");
    EXPECT_EQ(json["values"].size(), 16u);
    EXPECT_EQ(json["values"][1]["group"], "Inlet");
    EXPECT_EQ(json["values"][1]["value"], 243.5);
    EXPECT_TRUE(json["values"][5]["value"].is_null());
    EXPECT_EQ(json["values"][15]["row"], 2);
}

TEST(Report, CsvQuotesWhatMustBeQuotedAndKeepsEveryDigit) {
    RunResult result = success();
    result.entries[2].value = 0.1;
    const std::string csv = printed(printCsv, result);
    EXPECT_NE(csv.find("3,,,,,Title,,\"a, \"\"b\"\"\",\n"), std::string::npos) << csv;
    EXPECT_NE(csv.find("6,,EVAPORATOR,Inlet,,pressure,kPa,0.10000000000000001,\n"), std::string::npos) << csv;
    EXPECT_NE(csv.find("21,,,Dome,1,T,K,251,\n"), std::string::npos) << csv;
}

}  // namespace
}  // namespace frigana::app
