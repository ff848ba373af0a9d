// Global warming potentials of the fluids of requests and results, by the report that was chosen.
#include "Climate.h"

#include <gtest/gtest.h>

#include "NamedRequest.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

constexpr std::size_t fourth = 0, fifth = 1, sixth = 2;

Fluid blendOf(std::vector<Fluid::Component> components, bool byMass) {
    Fluid fluid;
    fluid.kind = 3;
    fluid.blendName = "mine";
    fluid.byMass = byMass;
    fluid.components = std::move(components);
    return fluid;
}

Climate climate(const Fluid& fluid, std::size_t report = sixth) {
    return climateOf(fluid, test::dataFolder, report);
}

TEST(Climate, ReportsAreFoundInAnyCase) {
    EXPECT_EQ(climateReportOf("AR4"), fourth);
    EXPECT_EQ(climateReportOf("ar5"), fifth);
    EXPECT_EQ(climateReportOf("Ar6"), sixth);
    for (const char* name : {"AR7", "AR", "AR66", ""}) EXPECT_EQ(climateReportOf(name), std::nullopt) << name;
}

// By the sixth report R32 has 771 and R125 3740; their molar masses are 52.024 and 120.02 g/mol.
TEST(Climate, OfAListedBlendIsTheMeanByMassWhateverItsFractionsAre) {
    const double mean = 0.5 * 771 + 0.5 * 3740;
    const double byMole = 1.0 / 52.024 / (1.0 / 52.024 + 1.0 / 120.02);
    const Climate mass = climate(blendOf({{"R32.FLD", 2.0}, {"R125.FLD", 2.0}}, true)),
                  mole = climate(blendOf({{"R32.FLD", byMole}, {"R125.FLD", 1.0 - byMole}}, false));
    ASSERT_TRUE(mass.gwp && mole.gwp);
    EXPECT_NEAR(*mass.gwp, mean, 1e-9);
    EXPECT_NEAR(*mole.gwp, mean, 0.05);  // the digits of the molar masses
    EXPECT_EQ(mole.name, "mine");
    EXPECT_TRUE(mole.leftOut.empty());
}

TEST(Climate, AComponentWithoutAFigureIsLeftOutAndTold) {
    const Climate part = climate(blendOf({{"R32.FLD", 0.5}, {"TOLUENE.FLD", 0.5}}, true));
    ASSERT_TRUE(part.gwp);
    EXPECT_NEAR(*part.gwp, 0.5 * 771, 1e-9);
    EXPECT_EQ(part.leftOut, std::vector<std::string>{"TOLUENE"});
    const Climate none = climate(blendOf({{"TOLUENE.FLD", 1.0}}, true));
    EXPECT_FALSE(none.gwp);
    EXPECT_EQ(potentialText(none), "-");
    const Climate unknown = climate(blendOf({{"NOTHING.FLD", 1.0}}, true));
    EXPECT_EQ(unknown.leftOut, std::vector<std::string>{"NOTHING"});
    // Fractions by mole of what cannot be set up are no fractions by mass.
    EXPECT_FALSE(climate(blendOf({{"NOTHING.FLD", 1.0}}, false)).gwp);
}

TEST(Climate, ABoundOfAReportIsShownAsOne) {
    Fluid fluid;
    fluid.file = "R1234YF.FLD";
    EXPECT_EQ(potentialText(climate(fluid, fourth)), "-");
    EXPECT_EQ(potentialText(climate(fluid, fifth)), "<1");
    EXPECT_EQ(potentialText(climate(fluid, sixth)), "0.501");
    // In a blend the bound counts.
    const Climate half = climate(blendOf({{"R1234YF.FLD", 0.5}, {"R134A.FLD", 0.5}}, true), fifth);
    ASSERT_TRUE(half.gwp);
    EXPECT_NEAR(*half.gwp, 0.5 * 1 + 0.5 * 1300, 1e-9);
    fluid.file = "NOTHING.FLD";
    EXPECT_EQ(climate(fluid).safetyClass, "");
    EXPECT_FALSE(climate(fluid).gwp);
}

// R134a has 1530 by the sixth report and 1300, that of the fifth, by the library's own table, which result files show.
TEST(Climate, TheFigureOfAResultStandsBesideThatOfTheReport) {
    for (const char* request : {"basic", "cascade", "fluid-information"}) {
        const RunResult result = runFilled(typicalRequest(*findRequest(request)), {test::dataFolder});
        ASSERT_TRUE(result.isDone()) << request;
        const Climate found = climateOf(result, 0, test::dataFolder, sixth);
        ASSERT_TRUE(found.gwp && found.ofResultFile) << request << ' ' << found.name;
        if (found.name != "R134a") continue;
        EXPECT_EQ(*found.gwp, 1530) << request;
        EXPECT_EQ(*found.ofResultFile, 1300) << request;
    }
    RunResult other = runFilled(typicalRequest(*findRequest("state-point")), {test::dataFolder});
    EXPECT_FALSE(climateOf(other, 0, test::dataFolder, sixth).ofResultFile);
}

}  // namespace
}  // namespace frigana::catalogue
