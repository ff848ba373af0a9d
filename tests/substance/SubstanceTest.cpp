#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "22_InitVaporDome.h"
#include "23_SpecificPoints.h"
#include "24_SaturationPoints.h"
#include "31_FluidInformation.h"
#include "54_Find_Refigerant.h"
#include "FluidConstants.h"
#include "PASSCMN.h"
#include "Refusal.h"
#include "SAT_SUB.h"
#include "SAT_SUB_EXPANSION.h"
#include "Substances.h"

namespace frigana::test {
namespace {

// ---- library --------------------------------------------------------------------------------------------------------

TEST(FluidLibrary, HasItsFluidsInTheirOrder) {
    static PureFluidTable pure;
    static MixtureTable mixtures;
    LOADPUREFLUIDS(pure);
    LOADMIXTURES(mixtures);
    EXPECT_EQ(pure.count, 36);
    EXPECT_EQ(mixtures.count, 53);
    const struct {
        int row;
        const char* name;
        int GWP;
        const char* safetyClass;
    } rows[] = {{1, "R11.FLD", 4660, "A1"},   {12, "R134A.FLD", 1300, "A1"}, {13, "R141B.FLD", 782, "NA"},
                {24, "AMMONIA.FLD", 0, "B2"}, {27, "R1234YF.FLD", 0, "A2L"}, {30, "R32.FLD", 677, "A2"},
                {36, "CF3I.FLD", 0, "A1"}};
    for (const auto& row : rows) {
        EXPECT_EQ(pure.rows[row.row].NAME, row.name);
        EXPECT_EQ(pure.rows[row.row].GWP, row.GWP);
        EXPECT_EQ(pure.rows[row.row].SAFETYCLASS, row.safetyClass);
        EXPECT_EQ(pure.rows[row.row].ZKG[1], 1.0);
    }
    EXPECT_EQ(mixtures.rows[1].ZKG[1], 0.5299999713897705);
    EXPECT_EQ(mixtures.rows[16].NAME, "R410A.MIX");
    double sum = 0.0;
    for (int j = 1; j <= mixtures.rows[53].NCOMP; ++j) sum += mixtures.rows[53].ZKG[j];
    EXPECT_NEAR(sum, 0.992, 1e-12);
    for (int i = 1; i <= 52; ++i) {
        double total = 0.0;
        for (int j = 1; j <= mixtures.rows[i].NCOMP; ++j) total += mixtures.rows[i].ZKG[j];
        EXPECT_NEAR(total, 1.0, 1e-6) << mixtures.rows[i].NAME.trimmed();
    }
}

TEST(FluidLibraryEdges, RowsWithTheSameComponentsAreToldApartByName) {
    static MixtureTable mixtures;
    LOADMIXTURES(mixtures);
    EXPECT_EQ(mixtures.rows[10].NAME, "R407A.MIX");
    EXPECT_EQ(mixtures.rows[12].NAME, "R407F.MIX");
    EXPECT_EQ(mixtures.rows[10].NCOMP, mixtures.rows[12].NCOMP);
    EXPECT_EQ(mixtures.rows[12].REFSNAME[1], "R125.FLD");
}

TEST(FluidLibraryEdges, AFluidWithoutAClassHasTheTextNA) {
    static PureFluidTable pure;
    LOADPUREFLUIDS(pure);
    EXPECT_EQ(pure.rows[35].NAME, "C12.FLD");
    EXPECT_EQ(pure.rows[35].SAFETYCLASS, "NA");
}

// ---- initialisation -------------------------------------------------------------------------------------------------

TEST(InitSubstance, FillsThePureFluid) {
    const SUBSTANCE& s = fluid("R134A.FLD");
    EXPECT_EQ(s.FLUIDNAME, "R134A.FLD");
    EXPECT_DOUBLE_EQ(s.WM, 102.032);
    EXPECT_DOUBLE_EQ(s.TC, 374.21);
    EXPECT_DOUBLE_EQ(s.PC, 4059.28);
    EXPECT_DOUBLE_EQ(s.TMIN, 169.85);
    EXPECT_DOUBLE_EQ(s.TMAX, 455.0);
    EXPECT_NEAR(s.TNBP, 247.076, 0.01);
    EXPECT_NEAR(s.DC, 511.9, 0.1);
    EXPECT_GT(s.DMAX, 1500.0);
    EXPECT_GT(s.PMIN, 0.38);
    EXPECT_LT(s.PMIN, 0.5);
    EXPECT_EQ(s.ZMOL[1], 1.0);
    EXPECT_EQ(s.ZKG[1], 1.0);
    for (double value : {s.PTBAD.T, s.PTBAD.P, s.PTBAD.D, s.PTBAD.V, s.PTBAD.U, s.PTBAD.H, s.PTBAD.S, s.PTBAD.CV,
                         s.PTBAD.CP, s.PTBAD.W, s.PTBAD.Q, s.PTBAD.TCX, s.PTBAD.ETA, s.PTBAD.PR, s.PTBAD.STN})
        EXPECT_EQ(value, -777.0);
    EXPECT_EQ(s.PTBAD.TSAT, 0.0);
}

TEST(InitSubstance, EveryFluidOfTheLibraryCanBeSetUp) {
    static PureFluidTable pure;
    LOADPUREFLUIDS(pure);
    for (int row = 1; row <= pure.count; ++row) {
        const std::string name(pure.rows[row].NAME.trimmed());
        SCOPED_TRACE(name);
        const SUBSTANCE& s = fluid(name.c_str());
        EXPECT_GT(s.WM, 15.0);
        EXPECT_GT(s.TC, s.TMIN);
        EXPECT_GT(s.PMIN, 0.0);
        EXPECT_LT(s.PMIN, s.PC);
    }
}

TEST(InitSubstance, TheLimitsOfABlendAreTheTightestOfItsComponentsAlone) {
    const struct {
        const char* blend;
        std::initializer_list<const char*> components;
    } rows[] = {{"R410A.MIX", {"R32.FLD", "R125.FLD"}},
                {"R404A.MIX", {"R125.FLD", "R143A.FLD", "R134A.FLD"}},
                {"R448A.MIX", {"R32.FLD", "R125.FLD", "R134A.FLD", "R1234YF.FLD", "R1234ZE.FLD"}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.blend);
        double TMIN = 0.0, TMAX = 1e9, PMAX = 1e9;
        for (const char* component : row.components) {
            const SUBSTANCE& alone = fluid(component);
            TMIN = std::max(TMIN, alone.TMIN);
            TMAX = std::min(TMAX, alone.TMAX);
            PMAX = std::min(PMAX, alone.PMAX);
        }
        const SUBSTANCE& blend = fluid(row.blend);
        EXPECT_EQ(blend.TMIN, TMIN);
        EXPECT_EQ(blend.TMAX, TMAX);
        EXPECT_EQ(blend.PMAX, PMAX);
        EXPECT_EQ(blend.DMAX, -777.0);
    }
    // water is a liquid below its triple point, beside another component as well
    const double coldest = fluid("WATER.FLD").TMIN;
    EXPECT_EQ(coldest, 251.165);
    EXPECT_EQ(listed({{"CO2.FLD", 0.1}, {"WATER.FLD", 0.9}}).TMIN, coldest);
}

TEST(InitSubstance, ABlendIsTakenUpAgainAsItWasAtFirst) {
    const auto values = [](SUBSTANCE& s) {
        STATEPT bubble, dew;
        PROPSIMPLETQ(s, 268.15, 0.0, bubble);
        PROPSIMPLETQ(s, 268.15, 1.0, dew);
        INITDATADOME(s, bubble.P);
        return std::array{s.TC,     s.PC,  s.DC,  s.TMIN, s.TMAX,       s.PMAX,       s.PMIN,       bubble.P,
                          bubble.H, dew.P, dew.H, dew.S,  s.PTSPL[9].H, s.PTSPV[9].H, s.PTSTL[1].S, s.PTSTV[9].S};
    };
    for (const char* name :
         {"R410A.MIX", "R417A.MIX", "R422A.MIX", "R422E.MIX", "R448A.MIX", "R449A.MIX", "R465A.MIX"}) {
        SCOPED_TRACE(name);
        fluid("PROPANE.FLD");
        const auto first = values(fluid(name));
        EXPECT_EQ(values(fluid(name)), first);
        fluid("PROPANE.FLD");
        EXPECT_EQ(values(fluid(name)), first);
    }
}

TEST(InitSubstance, AWrittenValueOfABlendEndsWithTheNextSetUp) {
    const double molarMass = fluid("R410A.MIX").WM;
    Text255 text, herr;
    int count = 0, ierr = 0;
    double written = 100.0, array[passedArraySize] = {};
    PASSCMN("wmas", 1, 1, 0, text, count, written, array, ierr, herr);
    ASSERT_EQ(ierr, 0);
    EXPECT_EQ(fluid("R410A.MIX").WM, molarMass);
}

TEST(InitDome, RowsClimbFromTheStartTowardsTheCriticalPoint) {
    SUBSTANCE& s = fluid("R32.FLD");
    INITDATADOME(s, 500.0);
    const double P1 = 0.699999988079071 * 500.0;
    const double step = (0.8299999833106995 * s.PC - P1) / 11.0;
    for (int i = 1; i <= 9; ++i) {
        EXPECT_DOUBLE_EQ(s.PTSPL[i].P, P1 + (i - 1) * step);
        EXPECT_LT(s.PTSPL[i].H, s.PTSPV[i].H);
        EXPECT_NEAR(s.PTSTL[i].T, (s.PTSPL[i].T + s.PTSPV[i].T) / 2, 1e-12);
        EXPECT_LT(s.PTSTL[i].S, s.PTSTV[i].S);
    }
    EXPECT_EQ(s.PTSPL[10].T, s.TC);
    EXPECT_EQ(s.PTSPL[10].P, s.PC);
    EXPECT_DOUBLE_EQ(s.PTSPL[10].H, (s.PTSPL[9].H + s.PTSPV[9].H) / 2);
    EXPECT_DOUBLE_EQ(s.PTSTV[10].S, (s.PTSTL[9].S + s.PTSTV[9].S) / 2);
    EXPECT_EQ(s.PTSPV[10].H, s.PTSTL[10].H);
}

// ---- domes that are kept --------------------------------------------------------------------------------------------

constexpr DomeTable SUBSTANCE::*domeSides[] = {&SUBSTANCE::PTSPL, &SUBSTANCE::PTSPV, &SUBSTANCE::PTSTL,
                                               &SUBSTANCE::PTSTV};

// T, P, H and S of all rows.
std::vector<double> domeOf(const SUBSTANCE& s) {
    std::vector<double> values;
    for (const auto side : domeSides)
        for (int row = 1; row <= domeRows; ++row) {
            const STATEPT& point = (s.*side)[row];
            values.insert(values.end(), {point.T, point.P, point.H, point.S});
        }
    return values;
}

// How many lines of a mixture were solved for.
long solvedFor(SUBSTANCE& s, double start) {
    const long before = saturationCounts.calls;
    INITDATADOME(s, start);
    return saturationCounts.calls - before;
}

TEST(KeptDome, OfABlendIsTheSameToTheLastDigitForAFewSolvedPoints) {
    SUBSTANCE& s = fluid("R407C.MIX");
    EXPECT_GE(solvedFor(s, 431.25), 36);
    const std::vector<double> first = domeOf(s);
    fluid("PROPANE.FLD");
    fluid("R407C.MIX");
    EXPECT_EQ(solvedFor(s, 431.25), 4);
    EXPECT_EQ(domeOf(s), first);
    EXPECT_GE(solvedFor(s, 431.5), 36) << "of other pressures";
}

TEST(KeptDome, OfAnotherReferenceStateOrBlendIsSolvedFor) {
    SUBSTANCE& s = fluid("R410A.MIX");
    INITDATADOME(s, 512.5);
    const std::vector<double> usual = domeOf(s);
    s.HRF = "NBP";
    INITSUBSTANCE(s);
    INITDATADOME(s, 512.5);
    const std::vector<double> normal = domeOf(s);
    for (int row = 1; row <= domeRows; ++row) {
        EXPECT_GT(std::fabs(normal[4 * (row - 1) + 2] - usual[4 * (row - 1) + 2]), 1.0);
        EXPECT_NEAR(normal[4 * (row - 1)], usual[4 * (row - 1)], 1e-9);
    }
    STATEPT bubble{}, dew{};
    PROPMIXTUREP_BD_DOME(s, s.PTSPL[3].P, bubble, dew);
    EXPECT_NEAR(s.PTSPL[3].H, bubble.H, 1e-9 * std::fabs(bubble.H));
    EXPECT_NEAR(s.PTSPV[3].S, dew.S, 1e-9 * std::fabs(dew.S));
    SUBSTANCE& other = listed({{"R32.FLD", 0.6}, {"R125.FLD", 0.4}});
    EXPECT_GE(solvedFor(other, 512.5), 36);
}

// Newton's method answers, then the saturation table: what was kept of the one is not taken for the other, and a kept
// dome changes nothing of when the table begins.
TEST(KeptDome, OfAPureFluidIsTheSameToTheLastDigitWhicheverWayItIsSolved) {
    constexpr int ofDome = 4 * (domeRows - 1), ofRow = 4;
    SUBSTANCE& s = fluid("R134A.FLD");
    const auto statesAskedFor = [&s] {
        const long before = expansionControl.asked;
        INITDATADOME(s, 300.0);
        return expansionControl.asked - before;
    };
    EXPECT_EQ(statesAskedFor(), ofDome);
    const std::vector<double> byNewton = domeOf(s);
    int missing = statesUntilExpansions(1);
    ASSERT_GT(missing, ofDome);
    while (missing > ofDome) {
        EXPECT_EQ(statesAskedFor(), ofRow);
        EXPECT_EQ(domeOf(s), byNewton);
        missing -= ofDome;
        EXPECT_EQ(statesUntilExpansions(1), missing);
    }
    EXPECT_EQ(statesAskedFor(), ofDome) << "the table begins in its midst";
    EXPECT_EQ(statesUntilExpansions(1), 0);

    const long answered = expansionControl.answered;
    EXPECT_EQ(statesAskedFor(), ofDome);
    const std::vector<double> byTable = domeOf(s);
    EXPECT_EQ(expansionControl.answered - answered, ofDome);
    EXPECT_EQ(statesAskedFor(), ofRow);
    EXPECT_EQ(domeOf(s), byTable);
    for (std::size_t k = 0; k < byTable.size(); ++k)
        EXPECT_NEAR(byTable[k], byNewton[k], 1e-10 * std::fabs(byNewton[k]));

    SUBSTANCE& other = fluid("R32.FLD");
    INITDATADOME(other, 300.0);
    EXPECT_GT(std::fabs(domeOf(other)[0] - byTable[0]), 1.0);
}

TEST(KeptDome, OfATrialIsEmptyForABlend) {
    SUBSTANCE& blend = fluid("R410A.MIX");
    INITDATADOME(blend, 500.0);
    INITDATADOME(blend, 500.0, false);
    EXPECT_EQ(domeOf(blend), std::vector<double>(4 * 4 * domeRows));
    SUBSTANCE& pure = fluid("R32.FLD");
    INITDATADOME(pure, 500.0, false);
    EXPECT_GT(pure.PTSPL[1].T, 200.0);
}

TEST(InitDomeEdges, AStartAboveTheCriticalPressureRunsBackwards) {
    SUBSTANCE& s = fluid("R32.FLD");
    INITDATADOME(s, 1.3 * s.PC);
    EXPECT_LT(s.PTSPL[9].P, s.PTSPL[1].P);
    EXPECT_EQ(s.PTSPL[10].P, s.PC);
}

// ---- lookups --------------------------------------------------------------------------------------------------------

TEST(Lookup, FindsPureFluidsByTheirNameWithoutExtension) {
    static PureFluidTable pure;
    LOADPUREFLUIDS(pure);
    SUBSTANCE s{};
    Array1<int, 20> positions{};
    const struct {
        const char* name;
        int row;
    } rows[] = {{"R134A.FLD", 12}, {"R134A.xyz", 12}, {"R134A", 12}, {"r134a.fld", 0}, {"R134", 0}, {"CF3I.FLD", 36}};
    for (const auto& row : rows) {
        s.FLUIDNAME = row.name;
        positions.fill(0);
        char flag = 'N';
        FINDPUREFLUID(s, pure, 1, positions, flag);
        EXPECT_EQ(positions[1], row.row) << row.name;
        EXPECT_EQ(flag, row.row > 0 ? 'Y' : 'N') << row.name;
    }
}

TEST(Lookup, APredefinedMixtureIsWithinTwoPercentOfItsRow) {
    static MixtureTable mixtures;
    LOADMIXTURES(mixtures);
    SUBSTANCE s{};
    s.FLUIDNAME = "R410A.MIX";
    s.NMIX = 2;
    s.REFSNAMEMIX[1] = "R125.FLD";  // in another order
    s.REFSNAMEMIX[2] = "R32.FLD";
    const struct {
        double first, second;
        bool found;
    } rows[] = {{0.5, 0.5, true}, {0.509, 0.491, true}, {0.511, 0.489, false}, {0.49, 0.51, false}};
    for (const auto& row : rows) {
        s.ZKG[1] = row.first;
        s.ZKG[2] = row.second;
        int position = 0;
        char flag = 'N';
        FINDPREDEFINEDMIXTURE(s, mixtures, position, flag);
        EXPECT_EQ(position, row.found ? 16 : 0) << row.first;
        EXPECT_EQ(flag, row.found ? 'Y' : 'N') << row.first;
    }
    s.NMIX = 3;
    int position = 0;
    char flag = 'N';
    s.ZKG[1] = s.ZKG[2] = 0.5;
    FINDPREDEFINEDMIXTURE(s, mixtures, position, flag);
    EXPECT_EQ(position, 0);
}

// Two circuits: each fluid is looked up once, the second one only where it is another.
TEST(Lookup, BothFluidsOfACycleMustBeKnown) {
    const auto pureFluid = [](const char* name) {
        SUBSTANCE s{};
        s.FLUIDKIND = s.NREFS = 1;
        s.FLUIDNAME = name;
        return s;
    };
    const auto blend = [](double share) {
        SUBSTANCE s{};
        s.FLUIDKIND = s.NMIX = 2;
        s.FLUIDNAME = "R410A.MIX";
        s.REFSNAMEMIX[1] = "R32.FLD";
        s.REFSNAMEMIX[2] = "R125.FLD";
        s.ZKG[1] = share;
        s.ZKG[2] = 1.0 - share;
        return s;
    };
    struct Row {
        SUBSTANCE first, second;
        int code;
    };
    static const Row rows[] = {
        {pureFluid("R134A.FLD"), pureFluid("R32.FLD"), 0},
        {pureFluid("R134A.FLD"), pureFluid("NOVEL.FLD"), 100123},
        {pureFluid("NOVEL.FLD"), pureFluid("R32.FLD"), 100123},
        {pureFluid("NOVEL.FLD"), pureFluid("NOVEL.FLD"), 100123},
        {blend(0.5), pureFluid("R32.FLD"), 0},
        {blend(0.3), pureFluid("R32.FLD"), 100124},
        {pureFluid("R32.FLD"), blend(0.3), 100124},
        {blend(0.5), blend(0.3), 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(refusalOf([&row] { CHECKREF_CYCLES(row.first, row.second); }), row.code)
            << row.first.FLUIDNAME.trimmed() << ' ' << row.second.FLUIDNAME.trimmed();
    EXPECT_EQ(runReport.HERR, "Mixture cannot be selected!!!");
}

TEST(LookupEdges, ANameWithoutAFluidIsNone) {
    SUBSTANCE s{};
    s.FLUIDKIND = 4;
    FNDFLDFLAG = 'Y';
    CHECKREF_PROPERTIES(s);
    EXPECT_EQ(FNDFLDFLAG, 'N') << "what the last look-up found is no finding of this one";
}

// A substance of no kind is not set up: its records stay, but for the point of a failed calculation.
TEST(InitSubstance, WithoutAKindSetsNothingUp) {
    SUBSTANCE& s = fluid("R134A.FLD");
    const double coldest = s.PMIN, critical = s.TC;
    for (const int kind : {0, 4, -1}) {
        s.FLUIDKIND = kind;
        s.REFSNAME[1] = "R32.FLD";
        s.PTBAD.P = 7.0;
        INITSUBSTANCE(s);
        EXPECT_TRUE(s.PMIN == coldest && s.TC == critical) << kind;
        EXPECT_EQ(s.PTBAD.P, -777.0) << kind;
        EXPECT_NEAR(fluidConstants.TCRIT[1], critical, 1e-9) << kind;
    }
}

TEST(LookupEdges, OneUnknownComponentLeavesTheFlagAtN) {
    SUBSTANCE s{};
    s.FLUIDKIND = 3;
    s.NMIX = 3;
    s.REFSNAMEMIX[1] = "R32.FLD";
    s.REFSNAMEMIX[2] = "XENON.FLD";
    s.REFSNAMEMIX[3] = "R125.FLD";
    FNDFLDFLAG = 'N';
    CHECKREF_PROPERTIES(s);
    EXPECT_EQ(FNDFLDFLAG, 'N');
    s.REFSNAMEMIX[2] = "R134A.FLD";
    CHECKREF_PROPERTIES(s);
    EXPECT_EQ(FNDFLDFLAG, 'Y');
    EXPECT_EQ(libraryLookup.POSPUREREFEXT[1], 30);
    EXPECT_EQ(libraryLookup.POSPUREREFEXT[2], 12);
    EXPECT_EQ(libraryLookup.POSPUREREFEXT[3], 11);
}

TEST(Lookup, PotentialOfABlendIsTheRoundedSumByMass) {
    SUBSTANCE s{};
    s.FLUIDKIND = 2;
    s.FLUIDNAME = "R410A.MIX";
    s.NMIX = 2;
    s.REFSNAMEMIX[1] = "R32.FLD";
    s.REFSNAMEMIX[2] = "R125.FLD";
    s.ZKG[1] = s.ZKG[2] = 0.5;
    FNDFLDFLAG = 'N';
    FLUIDGWP(s);
    EXPECT_EQ(s.GWP, 1924);  // 1923.5 rounded away from zero
    EXPECT_EQ(s.SAFETYCLASS, "A1");
    // Fractions away from the row: a potential, but no class.
    s.SAFETYCLASS = "NA";
    s.ZKG[1] = 0.6;
    s.ZKG[2] = 0.4;
    FNDFLDFLAG = 'N';
    FLUIDGWP(s);
    EXPECT_EQ(s.GWP, 1674);
    EXPECT_EQ(s.SAFETYCLASS, "NA");
}

}  // namespace
}  // namespace frigana::test
