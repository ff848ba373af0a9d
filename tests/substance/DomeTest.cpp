// The dome of the diagrams, for every fluid and blend of the library.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "22_InitVaporDome.h"
#include "31_FluidInformation.h"
#include "54_Find_Refigerant.h"
#include "Substances.h"

namespace frigana::test {
namespace {

std::vector<std::string> namesOfLibrary() {
    static PureFluidTable pure;
    static MixtureTable blends;
    LOADPUREFLUIDS(pure);
    LOADMIXTURES(blends);
    std::vector<std::string> names;
    for (int i = 1; i <= pure.count; ++i) names.emplace_back(pure.rows[i].NAME.trimmed());
    for (int i = 1; i <= blends.count; ++i) names.emplace_back(blends.rows[i].NAME.trimmed());
    return names;
}

// Nine rows of equal steps in pressure below the critical point, liquid before vapor and both climbing.
void expectDomeInOrder(const SUBSTANCE& s) {
    for (int i = 1; i <= 9; ++i) {
        SCOPED_TRACE(i);
        const STATEPT &L = s.PTSPL[i], &V = s.PTSPV[i], &LT = s.PTSTL[i], &VT = s.PTSTV[i];
        for (const STATEPT* point : {&L, &V, &LT, &VT})
            EXPECT_TRUE(std::isfinite(point->H) && std::isfinite(point->S) && point->T > 0 && point->P > 0);
        EXPECT_GT(V.H, L.H);
        EXPECT_GT(VT.S, LT.S);
        EXPECT_GE(V.T, L.T * (1 - 1e-9));
        EXPECT_LE(VT.P, LT.P * (1 + 1e-9));
        EXPECT_LT(L.P, s.PC);
        if (i == 1) continue;
        EXPECT_GT(L.P, s.PTSPL[i - 1].P);
        EXPECT_GT(L.T, s.PTSPL[i - 1].T);
        EXPECT_GT(L.H, s.PTSPL[i - 1].H);
        EXPECT_GT(LT.S, s.PTSTL[i - 1].S);
    }
}

struct Dome : testing::TestWithParam<std::string> {};

TEST_P(Dome, EveryRowHasLiquidAndVaporInOrderWhateverItsStart) {
    SUBSTANCE& s = fluid(GetParam().c_str());
    for (const double start : {1e-3 * s.PMIN, s.PMIN, 1.2 * s.PMIN, 2.0 * s.PMIN, 0.05 * s.PC, 0.3 * s.PC}) {
        SCOPED_TRACE(start);
        INITDATADOME(s, start);
        EXPECT_GE(s.PTSPL[1].P, s.PMIN);
        expectDomeInOrder(s);
    }
}

INSTANTIATE_TEST_SUITE_P(Library, Dome, testing::ValuesIn(namesOfLibrary()), [](const auto& row) {
    std::string name = row.param;
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return name;
});

TEST(DomeEdges, AStartBelowTheLowestSaturationPressureIsRaisedToIt) {
    SUBSTANCE& s = fluid("CO2.FLD");
    INITDATADOME(s, 0.95 * 682.0);  // -50 C: 0.7 of it lies below the triple point
    EXPECT_EQ(s.PTSPL[1].P, s.PMIN);
    const double step = (0.8299999833106995 * s.PC - s.PMIN) / 11.0;
    for (int i = 2; i <= 9; ++i) EXPECT_DOUBLE_EQ(s.PTSPL[i].P, s.PMIN + (i - 1) * step);
    INITDATADOME(s, 2.0 * s.PMIN);  // 0.7 of it is above
    EXPECT_DOUBLE_EQ(s.PTSPL[1].P, 0.699999988079071 * 2.0 * s.PMIN);
}

// ---- what a look-up found before
// --------------------------------------------------------------------------------------

TEST(LookupEdges, AnUnknownFluidBehindAKnownOneHasNoPotential) {
    SUBSTANCE known{}, unknown{};
    known.FLUIDKIND = unknown.FLUIDKIND = 1;
    known.NREFS = unknown.NREFS = 1;
    known.FLUIDNAME = "CO2.FLD";
    unknown.FLUIDNAME = "r134a.fld";
    FLUIDGWP(known);
    EXPECT_EQ(known.GWP, 1);
    FLUIDGWP(unknown);
    EXPECT_EQ(FNDFLDFLAG, 'N');
    EXPECT_EQ(unknown.GWP, -777);
    FLUIDGWP(known);
    EXPECT_EQ(known.GWP, 1);
    // likewise for a blend of which a component is not known
    SUBSTANCE blend{};
    blend.FLUIDKIND = 3;
    blend.NMIX = blend.NREFS = 2;
    blend.REFSNAMEMIX[1] = "R32.FLD";
    blend.REFSNAMEMIX[2] = "XENON.FLD";
    blend.ZKG[1] = blend.ZKG[2] = 0.5;
    FLUIDGWP(blend);
    EXPECT_EQ(blend.GWP, -777);
}

}  // namespace
}  // namespace frigana::test
