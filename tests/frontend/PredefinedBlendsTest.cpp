// All blends of the library through every property request and the basic cycle.
#include <gtest/gtest.h>

#include <array>
#include <span>

#include "53_Fluid_Library.h"
#include "HeardRequest.h"
#include "TreeFolders.h"

namespace frigana::test {
namespace {

const MixtureTable& library() {
    static const MixtureTable& table = []() -> const MixtureTable& {
        static MixtureTable filled;
        LOADMIXTURES(filled);
        return filled;
    }();
    return table;
}

// What a state in one phase must be, whatever the fluid. The definitions hold to rounding.
void expectSane(const Cells& s) {
    EXPECT_NEAR(s.V * s.D, 1.0, 1e-14);
    EXPECT_NEAR(s.H, s.U + s.P * s.V, 1e-9 * (std::abs(s.H) + 1.0));
    EXPECT_GT(s.CV, 0.0);
    EXPECT_GT(s.CP, s.CV);
    EXPECT_GT(s.W, 30.0);
    EXPECT_LT(s.W, 2000.0);
    EXPECT_GT(s.TCX, 1e-3);
    EXPECT_LT(s.TCX, 0.5);
    EXPECT_GT(s.ETA, 1.0);
    EXPECT_LT(s.ETA, 5000.0);
    EXPECT_NEAR(s.PR, s.ETA * s.CP / s.TCX * static_cast<double>(0.001f), 1e-12 * s.PR);
}

// A row of saturated liquid and vapor of the same composition.
void expectSaturationRow(const std::vector<double>& row) {
    ASSERT_EQ(row.size(), 27u);
    const Cells liquid = phaseCells(row, 0), vapor = phaseCells(row, 1);
    expectSane(liquid);
    expectSane(vapor);
    EXPECT_GT(liquid.D, vapor.D);
    EXPECT_LT(liquid.H, vapor.H);
    EXPECT_LT(liquid.S, vapor.S);
    EXPECT_GT(liquid.ETA, vapor.ETA);
    EXPECT_GT(row[26], 0.0);  // surface tension
    EXPECT_LT(row[26], 0.05);
}

// The same state by another request: a solver's tolerance apart. The density of a liquid is what is most sensitive to
// the pressure it is found at.
void expectSame(const Cells& a, const Cells& b, double tolerance) {
    const std::array<std::pair<double, double>, 7> pairs{
        {{a.T, b.T}, {a.P, b.P}, {a.D, b.D}, {a.H, b.H}, {a.S, b.S}, {a.CP, b.CP}, {a.W, b.W}}};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        EXPECT_NEAR(pairs[i].first, pairs[i].second, tolerance * (std::abs(pairs[i].first) + 1.0)) << "column " << i;
}

struct Blend : testing::TestWithParam<int> {
    const MIXTURE& row = library().rows[GetParam()];
    const std::string name{row.NAME.trimmed()};
    Plant& plant = sharedPlant();

    static Plant& sharedPlant() {
        static Plant plant;
        return plant;
    }
    Heard ask(int sub, const std::string& line = "") { return Heard(plant, propertyRequest(sub, line, name, 2)); }
    // Constants of the blend: WM, TTRP, TNBP, TC, PC, DC, TMIN, TMAX, PMAX, DMAX; asked for once.
    const std::vector<double>& constants() {
        static std::array<std::vector<double>, mixtureCount + 1> known;
        auto& own = known[static_cast<std::size_t>(GetParam())];
        if (own.empty()) own = ask(1).values(6 + 2 * row.NCOMP);
        return own;
    }
};

TEST_P(Blend, FluidInformation) {
    const Heard facts = ask(1);
    ASSERT_TRUE(facts.answered()) << facts.text;
    ASSERT_EQ(facts.file.count(), 11 + 2 * row.NCOMP);
    EXPECT_EQ(facts.file.raw(1), "1");
    EXPECT_EQ(facts.file.raw(2), " 1");
    EXPECT_EQ(facts.file.raw(3), "2");
    EXPECT_EQ(facts.file.trimmed(4), name);
    EXPECT_EQ(facts.file.number(5), row.NCOMP);
    // Rows of the library need not add up to one; the file holds them so.
    double total = 0.0, moles = 0.0, potential = 0.0;
    for (int j = 1; j <= row.NCOMP; ++j) total += row.ZKG[j];
    PureFluidTable& pure = []() -> PureFluidTable& {
        static PureFluidTable table;
        LOADPUREFLUIDS(table);
        return table;
    }();
    for (int j = 1; j <= row.NCOMP; ++j) {
        const std::string component = facts.file.trimmed(4 + 2 * j);
        const auto& fractions = facts.values(5 + 2 * j);
        ASSERT_EQ(fractions.size(), 2u);
        int at = 0, known = 0;
        for (int l = 1; l <= row.NCOMP; ++l)
            if (row.REFSNAME[l] == component) at = l;
        for (int k = 1; k <= pure.count; ++k)
            if (pure.rows[k].NAME == component) known = k;
        ASSERT_GT(at, 0) << component;
        ASSERT_GT(known, 0) << component;
        EXPECT_NEAR(fractions[0], row.ZKG[at] / total, 1e-6) << component;
        moles += fractions[1];
        potential += fractions[0] * pure.rows[known].GWP;
    }
    EXPECT_NEAR(moles, 1.0, 1e-14);

    const int line = 6 + 2 * row.NCOMP;
    const auto& c = facts.values(line);
    ASSERT_EQ(c.size(), 10u);
    for (const int missing : {1, 2, 9}) EXPECT_EQ(c[static_cast<std::size_t>(missing)], -777.0);
    EXPECT_GT(c[0], 40.0);
    EXPECT_LT(c[0], 140.0);
    EXPECT_GT(c[3], 270.0);
    EXPECT_LT(c[3], 420.0);
    EXPECT_GT(c[4], 3000.0);
    EXPECT_LT(c[4], 6500.0);
    EXPECT_GT(c[5], 350.0);
    EXPECT_LT(c[5], 750.0);
    EXPECT_LT(c[6], 0.75 * c[3]);
    EXPECT_GT(c[7], c[3]);
    EXPECT_GT(c[8], c[4]);
    std::istringstream tail(facts.file.raw(line).substr(170));
    int printedPotential = 0;
    std::string printedClass;
    tail >> printedPotential >> printedClass;
    EXPECT_NEAR(printedPotential, potential, 0.5 + 1e-9);
    EXPECT_EQ(printedClass, row.SAFETYCLASS.trimmed());
}

TEST_P(Blend, SaturationTables) {
    const auto& c = constants();
    ASSERT_EQ(c.size(), 10u);
    const double TC = c[3], PC = c[4];
    // Suggested limits of temperature or pressure, the other for the next blend.
    const Heard limits = ask(2, GetParam() % 2 == 0 ? "1 1 2 0" : "2 1 2 0");
    ASSERT_TRUE(limits.answered()) << limits.text;
    const auto& suggested = limits.values(4);
    ASSERT_EQ(suggested.size(), 3u);
    EXPECT_LT(suggested[0], suggested[1]);
    EXPECT_GT(suggested[2], 0.0);
    const Heard overT = ask(2, "1 " + numbers({0.62 * TC, 0.925 * TC, 0.06 * TC}));
    const Heard overP = ask(2, "2 " + numbers({0.03 * PC, 0.64 * PC, 0.15 * PC}));
    for (const Heard* table : {&overT, &overP}) {
        ASSERT_TRUE(table->answered()) << table->text;
        const auto rows = table->rows(27);
        ASSERT_EQ(static_cast<double>(rows.size()), table->file.number(5));
        ASSERT_EQ(rows.size(), table == &overT ? 6u : 5u);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            SCOPED_TRACE("row " + std::to_string(i + 1));
            expectSaturationRow(rows[i]);
            const Cells liquid = phaseCells(rows[i], 0), vapor = phaseCells(rows[i], 1);
            if (table == &overT) {
                EXPECT_EQ(liquid.T, vapor.T);
                EXPECT_GE(liquid.P, vapor.P * (1.0 - 1e-9));
            } else {
                EXPECT_EQ(liquid.P, vapor.P);
                EXPECT_LE(liquid.T, vapor.T * (1.0 + 1e-9));
                EXPECT_LT(vapor.T - liquid.T, 25.0);
            }
            if (i > 0) {
                for (const std::size_t column : {0u, 1u, 2u, 3u})
                    EXPECT_GT(rows[i][column], rows[i - 1][column]) << "column " << column;
                EXPECT_LT(rows[i][26], rows[i - 1][26]);
            }
        }
    }
}

TEST_P(Blend, SaturationPoints) {
    const double TC = constants().at(3);
    const double T = 0.8 * TC;
    const Heard atT = ask(6, "1 " + numbers({T}));
    ASSERT_TRUE(atT.answered()) << atT.text;
    expectSaturationRow(atT.values(7));
    const Cells bubble = phaseCells(atT.values(7), 0), dew = phaseCells(atT.values(7), 1);
    EXPECT_EQ(bubble.T, T);
    EXPECT_EQ(dew.T, T);
    EXPECT_GE(bubble.P, dew.P * (1.0 - 1e-9));
    // Back from the pressures: the same points.
    const Heard back = ask(6, "3 " + numbers({bubble.P})), backDew = ask(6, "4 " + numbers({dew.P}));
    ASSERT_TRUE(back.answered() && backDew.answered());
    expectSame(bubble, phaseCells(back.values(7), 0), 1e-6);
    expectSame(dew, phaseCells(backDew.values(7), 1), 1e-6);
    EXPECT_GE(phaseCells(back.values(7), 1).T, T * (1.0 - 1e-9));  // dew above bubble at one pressure
    EXPECT_LE(phaseCells(backDew.values(7), 0).T, T * (1.0 + 1e-9));

    // In equilibrium: one temperature and one pressure, the given side as above, the other richer or poorer.
    struct Side {
        const char* code;
        double value;
        std::size_t phase;
        const Cells* same;
    };
    const Side sides[] = {
        {"1 ", T, 0, &bubble}, {"4 ", dew.P, 1, &dew}, {"2 ", T, 1, &dew}, {"3 ", bubble.P, 0, &bubble}};
    // A bubble and a dew point of each blend, at the temperature and at the pressure in turn.
    for (const Side& side : std::span(sides).subspan(GetParam() % 2 == 0 ? 0 : 2, 2)) {
        SCOPED_TRACE(side.code);
        const Heard pair = ask(5, side.code + numbers({side.value}));
        ASSERT_TRUE(pair.answered()) << pair.text;
        ASSERT_EQ(pair.values(7).size(), 27u);
        const Cells liquid = phaseCells(pair.values(7), 0), vapor = phaseCells(pair.values(7), 1);
        expectSane(liquid);
        expectSane(vapor);
        EXPECT_NEAR(liquid.T, vapor.T, 1e-6 * liquid.T);
        EXPECT_NEAR(liquid.P, vapor.P, 1e-6 * liquid.P);
        EXPECT_GT(liquid.D, vapor.D);
        expectSame(*side.same, side.phase == 0 ? liquid : vapor, 1e-6);
    }
}

TEST_P(Blend, StatePoints) {
    const auto& c = constants();
    const double TC = c.at(3), PC = c.at(4);
    const auto state = [&](int code1, double value1, int code2, double value2) {
        const Heard point =
            ask(4, std::to_string(code1) + " " + numbers({value1}) + std::to_string(code2) + " " + numbers({value2}));
        EXPECT_TRUE(point.answered()) << point.text;
        return point.values(6);
    };
    const auto saturated = ask(6, "1 " + numbers({0.8 * TC})).values(7);
    ASSERT_EQ(saturated.size(), 27u);
    const double bubbleP = saturated[2], dewP = saturated[3];
    const struct {
        const char* what;
        double T, P, quality;
    } rows[] = {{"vapor", 0.8 * TC, 0.5 * dewP, 1.0},
                {"liquid", 0.8 * TC, 1.5 * bubbleP, 0.0},
                {"supercritical", 1.1 * TC, 2.0 * PC, 1.0}};
    for (const auto& row_ : rows) {
        SCOPED_TRACE(row_.what);
        const auto point = state(1, row_.T, 2, row_.P);
        ASSERT_EQ(point.size(), 15u);
        const Cells s = stateCells(point);
        expectSane(s);
        EXPECT_EQ(s.T, row_.T);
        EXPECT_EQ(s.P, row_.P);
        EXPECT_EQ(point[10], row_.quality);
        if (row_.T > TC) continue;
        const auto again = row_.quality > 0.5 ? state(2, s.P, 3, s.D) : state(3, s.D, 1, s.T);
        ASSERT_EQ(again.size(), 15u);
        expectSame(s, stateCells(again), 1e-6);
    }
    // Two phases: between the two densities at one temperature.
    const double D = 0.3 * saturated[4] + 0.7 * saturated[5];
    const auto wet = state(1, 0.8 * TC, 3, D);
    ASSERT_EQ(wet.size(), 15u);
    EXPECT_GT(wet[10], 0.0);
    EXPECT_LT(wet[10], 1.0);
    EXPECT_LE(wet[1], bubbleP * (1.0 + 1e-9));
    EXPECT_GE(wet[1], dewP * (1.0 - 1e-9));
    // The search for the phases ends when their volume is that of the given density to a tolerance, which is 5e-4 where
    // bubble and dew pressure are close together: enthalpy less energy is that of the phases.
    EXPECT_NEAR(wet[5] - wet[4], wet[1] / wet[2], 5.001e-4 * wet[1] / wet[2]);
    for (const std::size_t missing : {7u, 8u, 9u, 11u, 12u, 13u}) EXPECT_EQ(wet[missing], -777.0);
    EXPECT_GT(wet[14], 0.0);
}

TEST_P(Blend, IsopropertyTables) {
    const auto& c = constants();
    const double TC = c.at(3), PC = c.at(4);
    // Suggested limits of one of the pairings, the next one for the next blend.
    constexpr const char* pairings[] = {"1 2", "2 1", "1 3", "3 1", "2 3", "3 2"};
    const Heard limits = ask(3, std::string(pairings[GetParam() % 6]) + " 1 1 2 0");
    EXPECT_TRUE(limits.answered()) << limits.text;
    // Along an isobar through the dome: volume, enthalpy and entropy rise with the temperature.
    const Heard isobar = ask(3, "2 1 " + numbers({0.2 * PC, 0.66 * TC, 0.965 * TC, 0.06 * TC}));
    ASSERT_TRUE(isobar.answered()) << isobar.text;
    const auto rows = isobar.rows(14);
    ASSERT_EQ(rows.size(), 6u);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE("row " + std::to_string(i + 1));
        const Cells s = stateCells(rows[i]);
        if (s.CP != -777.0) expectSane(s);
        if (i == 0) continue;
        for (const std::size_t column : {3u, 5u, 6u}) EXPECT_GT(rows[i][column], rows[i - 1][column]) << column;
    }
    // Along an isotherm above the critical temperature: the density rises with the pressure, the entropy falls. Where a
    // blend could still have a dew point the search for it costs most of the time: every ninth blend goes there.
    const double lowest = GetParam() % 9 == 0 ? 0.1 : 1.6;
    const Heard isotherm = ask(3, "1 2 " + numbers({1.1 * TC, lowest * PC, (lowest + 1.95) * PC, 0.38 * PC}));
    ASSERT_TRUE(isotherm.answered()) << isotherm.text;
    const auto gas = isotherm.rows(14);
    ASSERT_EQ(gas.size(), 6u);
    for (std::size_t i = 0; i < gas.size(); ++i) {
        expectSane(stateCells(gas[i]));
        if (i == 0) continue;
        EXPECT_GT(gas[i][2], gas[i - 1][2]);
        EXPECT_LT(gas[i][6], gas[i - 1][6]);
    }
    // A blend has no highest density: tables along or over density are refused.
    if (GetParam() % 2 == 0)
        EXPECT_EQ(ask(3, "3 1 100 300 320 5").code, 103206);
    else
        EXPECT_EQ(ask(3, "1 3 " + numbers({1.1 * TC, 1, 100, 10})).code, 103216);
}

TEST_P(Blend, BasicCycle) {
    const double TC = constants().at(3);
    auto parameters = basicParameters();
    parameters[0] = {1, 0.73 * TC};
    parameters[10] = {1, 0.87 * TC};
    const Heard cycle(plant, cycleRequest(1, parameters, name));
    ASSERT_TRUE(cycle.answered()) << cycle.text;
    const ResultFile& file = cycle.file;
    ASSERT_EQ(file.count(), 283);
    constexpr int evaporator = 5, suctionLine = 26, compressor = 46, dischargeLine = 67, condenser = 87,
                  liquidLine = 109;
    const auto in = [&](int heading) { return stateRow(file, heading + 1); };
    const auto out = [&](int heading) { return stateRow(file, heading + 8); };
    const double balance = file.number(evaporator + 20) + file.number(suctionLine + 19) + file.number(compressor + 20) -
                           file.number(dischargeLine + 19) - file.number(condenser + 21) - file.number(liquidLine + 19);
    EXPECT_NEAR(balance, 0.0, 1e-9 * file.number(condenser + 21));
    // Glides are dew minus bubble (or inlet) temperature at the pressures; the means are what was asked for.
    EXPECT_NEAR(file.number(condenser + 15), in(condenser).TSAT - out(condenser).TSAT, 1e-6);
    EXPECT_NEAR(file.number(evaporator + 15), out(evaporator).TSAT - in(evaporator).T, 1e-6);
    EXPECT_GE(file.number(condenser + 15), -1e-6);
    EXPECT_LT(file.number(condenser + 15), 15.0);
    // The search for the pressure of a mean temperature ends within 0.001 K.
    EXPECT_NEAR((in(condenser).TSAT + out(condenser).TSAT) / 2, 0.87 * TC, 1.001e-3);
    EXPECT_NEAR((in(evaporator).T + out(evaporator).TSAT) / 2, 0.73 * TC, 1.001e-3);
    EXPECT_NEAR(out(evaporator).T - out(evaporator).TSAT, 5.0, 1e-6);
    EXPECT_NEAR(out(condenser).TSAT - out(condenser).T, 3.0, 1e-6);
    EXPECT_GT(out(compressor).P, in(compressor).P);
    EXPECT_GT(out(compressor).S, in(compressor).S);
    EXPECT_GT(out(evaporator).S, in(evaporator).S);
    // Below the cycle of Carnot between the coldest of the evaporator and the warmest of the condensation.
    const double carnot = in(evaporator).T / (in(condenser).TSAT - in(evaporator).T);
    EXPECT_GT(file.number(157), 0.25 * carnot);
    EXPECT_LT(file.number(157), 0.75 * carnot);
    // The dome: liquid left of vapor, pressure rising.
    for (int i = 0; i < 9; ++i) {
        EXPECT_LT(file.number(196 + 3 * i), file.number(197 + 3 * i)) << i;
        EXPECT_LT(file.number(255 + 3 * i), file.number(256 + 3 * i)) << i;
        EXPECT_LT(file.number(195 + 3 * i), file.number(198 + 3 * i)) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Library, Blend, testing::Range(1, mixtureCount + 1), [](const auto& blend) {
    const std::string name(library().rows[blend.param].NAME.trimmed());
    return name.substr(0, name.find('.'));
});

// ---- edge cases -----------------------------------------------------------------------------------------------------

TEST(BlendInformationEdges, MissingConstantsOfAMixtureArePrintedAsMissing) {
    Plant plant;
    const Heard facts(plant, propertyRequest(1, "", "R410A.MIX", 2));
    const std::string line = facts.file.raw(10);
    const std::string missing = "     -777.000000 ";
    EXPECT_EQ(line.substr(17, 34), missing + missing);  // triple point, normal boiling point
    EXPECT_EQ(line.substr(9 * 17, 17), missing);        // highest density
    EXPECT_EQ(line.substr(10 * 17), "   1924 A1 ");
}

// An installation of its own with a mixture file and a fluid that the library does not know.
struct OwnInstallation : testing::Test {
    Plant plant;
    void SetUp() override {
        const std::string folder = plant.folder.path("installed");
        std::filesystem::create_directories(folder + "/mixtures");
        std::filesystem::create_directories(folder + "/fluids");
        for (const auto& entry : std::filesystem::directory_iterator(std::string(test::dataFolder) + "/fluids"))
            share(entry.path(), folder + "/fluids/" + entry.path().filename().string());
        share(std::string(test::dataFolder) + "/fluids/R32.FLD", folder + "/fluids/OWN32.FLD");
        plant.installation = folder + "/frigana";
    }
    // Potential and class of a file of R32 and R125 with this mass fraction of R32.
    std::string tail(const std::string& file, double massOfR32, const std::string& first = "R32.FLD") {
        const double moles32 = massOfR32 / 52.024, moles125 = (1.0 - massOfR32) / 120.0214;
        char fractions[100];
        std::snprintf(fractions, sizeof fractions, "%.12f\n%.12f\n 0\n", moles32 / (moles32 + moles125),
                      moles125 / (moles32 + moles125));
        writeFile(plant.folder.path("installed/mixtures/" + file),
                  file + "\n 72.6 344.5 4901 6.3\n 2\n" + first + "\nR125.FLD\n" + fractions);
        const Heard facts(plant, propertyRequest(1, "", file, 2));
        EXPECT_TRUE(facts.answered()) << facts.text;
        return facts.file.count() > 10 ? facts.file.raw(10).substr(170) : "";
    }
};

TEST_F(OwnInstallation, EdgeFractionsChangedByMoreThanTwoPercentKeepThePotentialAndLoseTheClass) {
    EXPECT_EQ(tail("R410A.MIX", 0.501), "   1921 A1 ");
    EXPECT_EQ(tail("R410A.MIX", 0.509), "   1901 A1 ");  // 0.509 x 677 + 0.491 x 3170, 1.8 % from the row
    EXPECT_EQ(tail("R410A.MIX", 0.511), "   1896 NA ");
    EXPECT_EQ(tail("R410A.MIX", 0.4), "   2173 NA ");
}

TEST_F(OwnInstallation, EdgeARenamedMixtureIsNoneOfTheLibrary) {
    EXPECT_EQ(tail("OWN410.MIX", 0.501), "   1921 NA ");
    EXPECT_EQ(tail("r410a.mix", 0.501), "   1921 NA ");  // names are compared with their case
    EXPECT_EQ(tail("R407C.MIX", 0.501), "   1921 NA ");  // two components, not three
}

TEST_F(OwnInstallation, EdgeAComponentOutsideTheLibraryLeavesTheMixtureWithoutPotential) {
    EXPECT_EQ(tail("R410A.MIX", 0.5, "OWN32.FLD"), "   -777 NA ");
    // The results are those of the fluid that the file holds.
    const Heard own(plant, propertyRequest(6, "1 280", "R410A.MIX", 2));
    plant.installation = std::string(test::dataFolder) + "/frigana";
    const Heard known(plant, propertyRequest(6, "1 280", "R410A.MIX", 2));
    ASSERT_TRUE(own.answered() && known.answered());
    for (std::size_t i = 0; i < 27; ++i) EXPECT_NEAR(own.values(7)[i], known.values(7)[i], 1e-9 * known.values(7)[i]);
}

}  // namespace
}  // namespace frigana::test
