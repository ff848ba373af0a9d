// The services between the tools and the engine for all blends of the library.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "22_InitVaporDome.h"
#include "23_SpecificPoints.h"
#include "24_SaturationPoints.h"
#include "25_SubCoolSupHeat.h"
#include "26_SaturatTempDrop.h"
#include "27_PSatAverage.h"
#include "28_IsentropProcess.h"
#include "53_Fluid_Library.h"
#include "Substances.h"

namespace frigana::test {
namespace {

constexpr int bubbleSide = 0, dewSide = 1;

const MixtureTable& library() {
    static MixtureTable table;
    if (table.count == 0) LOADMIXTURES(table);
    return table;
}

// The search for the two phases of a blend ends within 5e-6 of the width of the dome, held against the glide: it is
// between 5e-8 for a wide one and 5e-4 where bubble and dew temperature nearly coincide.
double twoPhaseTolerance(double bubbleT, double dewT) {
    const double glide = std::max(dewT / bubbleT - 1.0, 1e-8);
    return std::clamp(1e-7 / glide, 5e-8, 5e-4);
}

struct BlendPoints : testing::TestWithParam<int> {
    const std::string name{library().rows[GetParam()].NAME.trimmed()};
    SUBSTANCE& s = fluid(name.c_str());
};

TEST_P(BlendPoints, SubcoolingAndSuperheatCountFromBubbleAndDew) {
    const double P = 0.2 * s.PC;
    STATEPT bubble{}, dew{};
    PROPMIXTUREP_BD(s, P, 1, bubble, dew);
    double T = 0, degrees = -1;
    SUBCOOLDEGREE_SUBC(s, P, 6.0, T);
    EXPECT_NEAR(T, bubble.T - 6.0, 1e-9);
    SUBCOOLDEGREE_TIN(s, P, T, degrees);
    EXPECT_NEAR(degrees, 6.0, 1e-9);
    SUPHEATDEGREE_SUPH(s, P, 7.0, T);
    EXPECT_NEAR(T, dew.T + 7.0, 1e-9);
    SUPHEATDEGREE_TIN(s, P, T, degrees);
    EXPECT_NEAR(degrees, 7.0, 1e-9);
    // Between both there is neither.
    SUBCOOLDEGREE_TIN(s, P, dew.T, degrees);
    EXPECT_NEAR(degrees, 0.0, 1e-9);
    SUPHEATDEGREE_TIN(s, P, bubble.T, degrees);
    EXPECT_NEAR(degrees, 0.0, 1e-9);
    SUBCOOLDEGREE_TIN(s, P, dew.T + 1.0, degrees);
    EXPECT_EQ(degrees, 0.0);
    SUPHEATDEGREE_TIN(s, P, bubble.T - 1.0, degrees);
    EXPECT_EQ(degrees, 0.0);
}

TEST_P(BlendPoints, DropsOfPressureAndOfSaturationTemperatureInvertEachOther) {
    const double P = 0.3 * s.PC;
    for (const int side : {bubbleSide, dewSide}) {
        double DT = 0, back = 0, above = 0, below = 0;
        SATTEMPDROP_DP(s, P, 12.0, side, DT);
        SATTEMP_P(s, P, side, above);
        SATTEMP_P(s, P - 12.0, side, below);
        EXPECT_NEAR(DT, above - below, 1e-9);
        EXPECT_GT(DT, 0.0);
        SATTEMPDROP_DTSAT(s, P, DT, side, back);
        EXPECT_NEAR(back, 12.0, 1e-5);
    }
}

TEST_P(BlendPoints, MeanTemperaturesAndGlidesAreThoseOfTheEnds) {
    for (const double DP : {0.0, 8.0}) {
        double P = 0, DT = 0, glide = 0, T = 0, DT2 = 0, glide2 = 0;
        STATEPT bubble{}, dew{}, inlet{}, outlet{};
        PCOND_TDP(s, 0.86 * s.TC, DP, P, DT, glide, bubble, dew);
        EXPECT_NEAR((bubble.T + dew.T) / 2, 0.86 * s.TC, 0.001001);
        EXPECT_NEAR(dew.P - bubble.P, DP, 1e-9);
        EXPECT_NEAR(glide, dew.T - bubble.T, 1e-12);
        TCOND_PDP(s, P, DP, T, DT2, glide2, bubble, dew);
        EXPECT_NEAR(T, 0.86 * s.TC, 0.001001);
        EXPECT_NEAR(DT2, DT, 1e-9);

        PROPSIMPLEPQ(s, P, 0.0, inlet);
        const double HIN = inlet.H;
        PEVAP_TDP(s, 0.74 * s.TC, HIN, DP, P, DT, glide, bubble, dew);
        PROPSIMPLEPH(s, P + DP / 2, HIN, inlet);
        PROPSIMPLEPQ(s, P - DP / 2, 1.0, outlet);
        EXPECT_NEAR((inlet.T + outlet.T) / 2, 0.74 * s.TC, 0.001001);
        EXPECT_NEAR(glide, dew.T - inlet.T, 1e-3 + DP);  // the inlet stands at the pressure of the inlet
        EXPECT_LE(bubble.T, inlet.T + 0.1 * DP + 1e-6);
        TEVAP_PDP(s, P, HIN, DP, T, DT2, glide2, bubble, dew);
        EXPECT_NEAR(T, 0.74 * s.TC, 0.001001);

        PEVAP_TDP_SEC(s, 0.74 * s.TC, DP, P, DT, glide, bubble, dew);
        EXPECT_NEAR((bubble.T + dew.T) / 2, 0.74 * s.TC, 0.001001);
        EXPECT_NEAR(bubble.P - dew.P, DP, 1e-9);
    }
}

TEST_P(BlendPoints, CompressionAndExpansionKeepTheirEntropyWithoutLosses) {
    STATEPT in{}, out{}, real{}, back{};
    PROPSIMPLEPT(s, 0.05 * s.PC, 0.9 * s.TC, in);
    COMPISOENTRO(s, 1.0, in, 0.2 * s.PC, out);
    // Two flashes, each to 1e-8 of its own input: entropy, then enthalpy.
    const double tolerance = 2e-8 * (std::abs(in.S) + std::abs(out.H) / out.T);
    EXPECT_NEAR(out.S, in.S, tolerance);
    EXPECT_GT(out.T, in.T);
    COMPISOENTRO(s, 0.5, in, 0.2 * s.PC, real);
    EXPECT_NEAR(real.H - in.H, 2.0 * (out.H - in.H), 1e-6 * std::abs(out.H));
    EXPECT_GT(real.S, in.S);
    EXPAISOENTRO(s, 1.0, out, in.P, back);
    EXPECT_NEAR(back.S, out.S, tolerance);
    // Into the dome: from the dew line of a blend down to a quarter of the pressure.
    STATEPT bubble{}, dew{};
    PROPMIXTUREP_BD(s, 0.4 * s.PC, 2, bubble, dew);
    EXPAISOENTRO(s, 1.0, bubble, 0.1 * s.PC, back);
    EXPECT_GT(back.Q, 0.0);
    EXPECT_LT(back.Q, 1.0);
    PROPMIXTUREP_BD(s, back.P, 2, in, dew);
    // A flash of the entropy, then one of its enthalpy.
    EXPECT_NEAR(back.S, bubble.S, 2.0 * twoPhaseTolerance(in.T, dew.T) * (dew.S - in.S));
}

TEST_P(BlendPoints, TheSaturatedQualitiesAndThoseBetweenJoin) {
    // Along one pressure from bubble to dew: temperature, enthalpy, entropy and volume rise with the quality by mass.
    const double P = 0.15 * s.PC;
    STATEPT before{}, point{}, bubble{}, dew{};
    PROPMIXTUREP_BD(s, P, 1, bubble, dew);
    const double tolerance = 2.0 * twoPhaseTolerance(bubble.T, dew.T);
    for (const double Q : {0.0, 0.35, 0.7, 1.0}) {
        SCOPED_TRACE(Q);
        PROPSIMPLEPQ(s, P, Q, point);
        ASSERT_NE(point.H, -777.0);
        EXPECT_EQ(point.Q, Q);
        EXPECT_GT(point.STN, 0.0);
        EXPECT_EQ(point.CP == -777.0, Q > 0.0 && Q < 1.0);
        if (Q > 0.0) {
            EXPECT_GE(point.T, before.T - 1e-6);
            EXPECT_GT(point.H, before.H);
            EXPECT_GT(point.S, before.S);
            EXPECT_GT(point.V, before.V);
        }
        before = point;
        // The same state from its enthalpy, with the quality by mass.
        if (Q > 0.0 && Q < 1.0) {
            STATEPT again{};
            PROPSIMPLEPH(s, P, point.H, again);
            EXPECT_NEAR(again.T, point.T, 1e-4);
            EXPECT_NEAR(again.Q, Q, tolerance);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Library, BlendPoints, testing::Range(1, mixtureCount + 1), [](const auto& blend) {
    const std::string name(library().rows[blend.param].NAME.trimmed());
    return name.substr(0, name.find('.'));
});

// ---- edge cases -----------------------------------------------------------------------------------------------------

TEST(BlendPointEdges, AZeotropeBoilsOverAGlideAndItsPhasesDifferInMolarMass) {
    SUBSTANCE& s = fluid("R407C.MIX");
    STATEPT liquid{}, vapor{};
    PROPMIXTUREP_BD(s, 500.0, 1, liquid, vapor);
    EXPECT_LT(liquid.T, vapor.T - 5.0);
    EXPECT_EQ(liquid.P, vapor.P);
    STATEPT l1{}, v1{}, l2{}, v2{};
    PROPMIXTUREP_EQ(s, 500.0, 1, l1, v1);
    EXPECT_NEAR(l1.T, v1.T, 1e-6);
    EXPECT_NEAR(l1.T, liquid.T, 1e-6);
    PROPMIXTUREP_EQ(s, 500.0, 2, l2, v2);
    EXPECT_NEAR(l2.T, v2.T, 1e-6);
    EXPECT_NEAR(v2.T, vapor.T, 1e-6);
    // R32 goes into the vapor: over the bubbling liquid it is lighter than the blend, and its energies by mass differ.
    EXPECT_GT(std::abs(v1.H - vapor.H), 1.0);
    EXPECT_GT(std::abs(l2.H - liquid.H), 1.0);
    EXPECT_NEAR(l1.H, liquid.H, 1e-6 * liquid.H);
    EXPECT_NEAR(v2.H, vapor.H, 1e-6 * vapor.H);
}

TEST(BlendPointEdges, TripleAndNormalBoilingPointOfAMixtureAreMissing) {
    for (const SUBSTANCE* s : {&fluid("R410A.MIX"), &listed({{"R32.FLD", 0.5}, {"R125.FLD", 0.5}})}) {
        EXPECT_EQ(s->TTRP, -777.0);
        EXPECT_EQ(s->TNBP, -777.0);
        EXPECT_EQ(s->DMAX, -777.0);
    }
}

TEST(BlendPointEdges, LimitsOfAMixtureAreTheTightestOfItsComponents) {
    double TMIN = 0, TMAX = 1e9, PMAX = 1e9;
    for (const char* component : {"R32.FLD", "R125.FLD", "R134A.FLD"}) {
        const SUBSTANCE& c = fluid(component);
        TMIN = std::max(TMIN, c.TMIN);
        TMAX = std::min(TMAX, c.TMAX);
        PMAX = std::min(PMAX, c.PMAX);
    }
    const SUBSTANCE& s = fluid("R407C.MIX");
    EXPECT_EQ(s.TMIN, TMIN);
    EXPECT_EQ(s.TMAX, TMAX);
    EXPECT_EQ(s.PMAX, PMAX);
    STATEPT coldest{};
    PROPSIMPLETQ(s, s.TMIN + 1.0, 0.0, coldest);
    EXPECT_NEAR(s.PMIN, coldest.P, 1e-9 * coldest.P);
}

TEST(BlendPointEdges, ADomeThatStartsAboveTheCriticalPressureRunsBackwards) {
    SUBSTANCE& s = fluid("R407C.MIX");
    INITDATADOME(s, 1.3 * s.PC);
    EXPECT_LT(s.PTSPL[9].P, s.PTSPL[1].P);
    EXPECT_EQ(s.PTSPL[10].P, s.PC);
    // And a row of the usual dome of a blend joins bubble and dew of one pressure, its twin those of the mean
    // temperature.
    INITDATADOME(s, 400.0);
    for (int i = 1; i <= 9; ++i) {
        EXPECT_EQ(s.PTSPL[i].P, s.PTSPV[i].P);
        EXPECT_LT(s.PTSPL[i].T, s.PTSPV[i].T);
        EXPECT_NEAR(s.PTSTL[i].T, (s.PTSPL[i].T + s.PTSPV[i].T) / 2, 1e-12);
        EXPECT_GT(s.PTSTL[i].P, s.PTSTV[i].P);
    }
}

TEST(BlendPointEdges, NoRowOfTheLibraryHasAComponentTwice) {
    const MixtureTable& table = library();
    PureFluidTable& pure = []() -> PureFluidTable& {
        static PureFluidTable filled;
        LOADPUREFLUIDS(filled);
        return filled;
    }();
    for (int row = 1; row <= table.count; ++row) {
        const MIXTURE& mixture = table.rows[row];
        for (int j = 1; j <= mixture.NCOMP; ++j) {
            int found = 0, known = 0;
            for (int l = 1; l <= mixture.NCOMP; ++l) found += mixture.REFSNAME[l] == mixture.REFSNAME[j] ? 1 : 0;
            for (int k = 1; k <= pure.count; ++k) known += pure.rows[k].NAME == mixture.REFSNAME[j] ? 1 : 0;
            EXPECT_EQ(found, 1) << mixture.NAME.trimmed();
            EXPECT_EQ(known, 1) << mixture.NAME.trimmed() << ' ' << mixture.REFSNAME[j].trimmed();
        }
    }
}

}  // namespace
}  // namespace frigana::test
