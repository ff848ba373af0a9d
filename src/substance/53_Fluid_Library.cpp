#include "53_Fluid_Library.h"

#include <iterator>

namespace frigana {

namespace {

struct PureFluidRow {
    const char* name;
    int GWP;
    const char* safetyClass;
};

struct Component {
    const char* name;
    double massFraction;
};

struct MixtureRow {
    const char* name;
    const char* safetyClass;
    int count;
    Component components[5];
};

// Lookups are linear and the first hit wins, so the order stays.
constexpr PureFluidRow pureFluidRows[] = {
    // file           GWP    safety class
    {"R11.FLD", 4660, "A1"},    {"R12.FLD", 10200, "A1"},  {"R22.FLD", 1760, "A1"},   {"R23.FLD", 12400, "A1"},
    {"R113.FLD", 5820, "A1"},   {"R114.FLD", 8590, "A1"},  {"R115.FLD", 7670, "A1"},  {"R116.FLD", 11100, "A1"},
    {"R123.FLD", 79, "B1"},     {"R124.FLD", 527, "A1"},  // 10
    {"R125.FLD", 3170, "A1"},   {"R134A.FLD", 1300, "A1"}, {"R141B.FLD", 782, "NA"},  {"R142B.FLD", 1980, "A2"},
    {"R143A.FLD", 4800, "A2"},  {"R152A.FLD", 138, "A2"},  {"R218.FLD", 8900, "A1"},  {"R227EA.FLD", 3350, "A1"},
    {"R236FA.FLD", 8060, "A1"}, {"R245FA.FLD", 858, "B1"},  // 20
    {"PROPANE.FLD", 3, "A3"},   {"BUTANE.FLD", 4, "A3"},   {"ISOBUTAN.FLD", 4, "A3"}, {"AMMONIA.FLD", 0, "B2"},
    {"CO2.FLD", 1, "A1"},       {"ETHYLENE.FLD", 4, "A3"}, {"R1234YF.FLD", 0, "A2L"}, {"R1234ZE.FLD", 1, "A2L"},
    {"PROPYLEN.FLD", 2, "A3"},  {"R32.FLD", 677, "A2"},  // 30
    {"IPENTANE.FLD", 11, "A3"}, {"PENTANE.FLD", 11, "A3"}, {"R1233ZD.FLD", 5, "A1"},  {"NITROGEN.FLD", 0, "A1"},
    {"C12.FLD", 0, "NA"},       {"CF3I.FLD", 0, "A1"},
};

// The fractions stand as the library has them: those of the first row in single precision, those of R454B with a sum
// of 0.992.
constexpr MixtureRow mixtureRows[] = {
    // file, safety class, number of components, components with mass fractions
    {"R401A.MIX", "A1", 3, {{"R22.FLD", 0.53f}, {"R152A.FLD", 0.13f}, {"R124.FLD", 0.34f}}},
    {"R401B.MIX", "A1", 3, {{"R22.FLD", 0.61}, {"R152A.FLD", 0.11}, {"R124.FLD", 0.28}}},
    {"R401C.MIX", "A1", 3, {{"R22.FLD", 0.33}, {"R152A.FLD", 0.15}, {"R124.FLD", 0.52}}},
    {"R402A.MIX", "A1", 3, {{"R125.FLD", 0.6}, {"PROPANE.FLD", 0.02}, {"R22.FLD", 0.38}}},
    {"R402B.MIX", "A1", 3, {{"R125.FLD", 0.38}, {"PROPANE.FLD", 0.02}, {"R22.FLD", 0.6}}},
    {"R403A.MIX", "A2", 3, {{"PROPANE.FLD", 0.05}, {"R22.FLD", 0.75}, {"R218.FLD", 0.2}}},
    {"R403B.MIX", "A1", 3, {{"PROPANE.FLD", 0.05}, {"R22.FLD", 0.56}, {"R218.FLD", 0.39}}},
    {"R404A.MIX", "A1", 3, {{"R125.FLD", 0.44}, {"R134A.FLD", 0.04}, {"R143A.FLD", 0.52}}},
    {"R406A.MIX", "A2", 3, {{"R22.FLD", 0.55}, {"ISOBUTAN.FLD", 0.04}, {"R142B.FLD", 0.41}}},
    {"R407A.MIX", "A1", 3, {{"R32.FLD", 0.2}, {"R125.FLD", 0.4}, {"R134A.FLD", 0.4}}},  // 10
    {"R407C.MIX", "A1", 3, {{"R32.FLD", 0.23}, {"R125.FLD", 0.25}, {"R134A.FLD", 0.52}}},
    {"R407F.MIX", "A1", 3, {{"R125.FLD", 0.3}, {"R134A.FLD", 0.4}, {"R32.FLD", 0.3}}},
    {"R408A.MIX", "A1", 3, {{"R125.FLD", 0.07}, {"R143A.FLD", 0.46}, {"R22.FLD", 0.47}}},
    {"R409A.MIX", "A1", 3, {{"R22.FLD", 0.6}, {"R124.FLD", 0.25}, {"R142B.FLD", 0.15}}},
    {"R409B.MIX", "A1", 3, {{"R22.FLD", 0.65}, {"R124.FLD", 0.25}, {"R142B.FLD", 0.1}}},
    {"R410A.MIX", "A1", 2, {{"R32.FLD", 0.5}, {"R125.FLD", 0.5}}},
    {"R412A.MIX", "A2", 3, {{"R22.FLD", 0.7}, {"R218.FLD", 0.05}, {"R142B.FLD", 0.25}}},
    {"R414A.MIX", "A1", 4, {{"R22.FLD", 0.51}, {"R124.FLD", 0.285}, {"ISOBUTAN.FLD", 0.04}, {"R142B.FLD", 0.165}}},
    {"R416A.MIX", "A1", 3, {{"R134A.FLD", 0.59}, {"R124.FLD", 0.395}, {"BUTANE.FLD", 0.015}}},
    {"R417A.MIX", "A1", 3, {{"R125.FLD", 0.466}, {"R134A.FLD", 0.5}, {"BUTANE.FLD", 0.034}}},  // 20
    {"R420A.MIX", "A1", 2, {{"R134A.FLD", 0.88}, {"R142B.FLD", 0.12}}},
    {"R421A.MIX", "A1", 2, {{"R125.FLD", 0.58}, {"R134A.FLD", 0.42}}},
    {"R421B.MIX", "A1", 2, {{"R125.FLD", 0.85}, {"R134A.FLD", 0.15}}},
    {"R422A.MIX", "A1", 3, {{"R125.FLD", 0.851}, {"R134A.FLD", 0.115}, {"ISOBUTAN.FLD", 0.034}}},
    {"R422B.MIX", "A1", 3, {{"R125.FLD", 0.55}, {"R134A.FLD", 0.42}, {"ISOBUTAN.FLD", 0.03}}},
    {"R422C.MIX", "A1", 3, {{"R125.FLD", 0.82}, {"R134A.FLD", 0.15}, {"ISOBUTAN.FLD", 0.03}}},
    {"R422D.MIX", "A1", 3, {{"R125.FLD", 0.651}, {"R134A.FLD", 0.315}, {"ISOBUTAN.FLD", 0.034}}},
    {"R427A.MIX", "A1", 4, {{"R32.FLD", 0.15}, {"R125.FLD", 0.25}, {"R143A.FLD", 0.1}, {"R134A.FLD", 0.5}}},
    {"R428A.MIX", "A1", 4, {{"R125.FLD", 0.775}, {"R143A.FLD", 0.2}, {"PROPANE.FLD", 0.006}, {"ISOBUTAN.FLD", 0.019}}},
    {"R438A.MIX",
     "A1",
     5,
     {{"R32.FLD", 0.085},
      {"R125.FLD", 0.45},
      {"R134A.FLD", 0.442},
      {"BUTANE.FLD", 0.017},
      {"IPENTANE.FLD", 0.006}}},  // 30
    {"R500.MIX", "A1", 2, {{"R12.FLD", 0.738}, {"R152A.FLD", 0.262}}},
    {"R502.MIX", "A1", 2, {{"R22.FLD", 0.488}, {"R115.FLD", 0.512}}},
    {"R507A.MIX", "A1", 2, {{"R125.FLD", 0.5}, {"R143A.FLD", 0.5}}},
    {"R508A.MIX", "A1", 2, {{"R23.FLD", 0.39}, {"R116.FLD", 0.61}}},
    {"R508B.MIX", "A1", 2, {{"R23.FLD", 0.46}, {"R116.FLD", 0.54}}},
    {"R407B.MIX", "A1", 3, {{"R32.FLD", 0.1}, {"R125.FLD", 0.7}, {"R134A.FLD", 0.2}}},
    {"R407D.MIX", "A1", 3, {{"R32.FLD", 0.15}, {"R125.FLD", 0.15}, {"R134A.FLD", 0.7}}},
    {"R407E.MIX", "A1", 3, {{"R32.FLD", 0.25}, {"R125.FLD", 0.15}, {"R134A.FLD", 0.6}}},
    {"R424A.MIX",
     "A1",
     5,
     {{"R125.FLD", 0.505},
      {"R134A.FLD", 0.47},
      {"ISOBUTAN.FLD", 0.009},
      {"BUTANE.FLD", 0.01},
      {"IPENTANE.FLD", 0.006}}},
    {"R426A.MIX",
     "A1",
     4,
     {{"R125.FLD", 0.051}, {"R134A.FLD", 0.93}, {"BUTANE.FLD", 0.013}, {"IPENTANE.FLD", 0.006}}},  // 40
    {"R434A.MIX", "A1", 4, {{"R125.FLD", 0.632}, {"R143A.FLD", 0.18}, {"R134A.FLD", 0.16}, {"ISOBUTAN.FLD", 0.028}}},
    {"R437A.MIX", "A1", 4, {{"R125.FLD", 0.195}, {"R134A.FLD", 0.785}, {"BUTANE.FLD", 0.014}, {"PENTANE.FLD", 0.006}}},
    {"R447A.MIX", "A2L", 3, {{"R32.FLD", 0.68}, {"R125.FLD", 0.035}, {"R1234ZE.FLD", 0.285}}},
    {"R447B.MIX", "A2L", 3, {{"R32.FLD", 0.68}, {"R125.FLD", 0.08}, {"R1234ZE.FLD", 0.24}}},
    {"R448A.MIX",
     "A1",
     5,
     {{"R32.FLD", 0.26}, {"R125.FLD", 0.26}, {"R134A.FLD", 0.21}, {"R1234YF.FLD", 0.2}, {"R1234ZE.FLD", 0.07}}},
    {"R450A.MIX", "A1", 2, {{"R134A.FLD", 0.42}, {"R1234ZE.FLD", 0.58}}},
    {"R455A.MIX", "A2L", 3, {{"R32.FLD", 0.215}, {"CO2.FLD", 0.03}, {"R1234YF.FLD", 0.755}}},
    {"R452A.MIX", "A1", 3, {{"R32.FLD", 0.11}, {"R125.FLD", 0.59}, {"R1234YF.FLD", 0.3}}},
    {"R452B.MIX", "A2L", 3, {{"R32.FLD", 0.67}, {"R125.FLD", 0.07}, {"R1234YF.FLD", 0.26}}},
    {"R515A.MIX", "A1", 2, {{"R1234ZE.FLD", 0.88}, {"R227EA.FLD", 0.12}}},  // 50
    {"R515B.MIX", "A1", 2, {{"R1234ZE.FLD", 0.911}, {"R227EA.FLD", 0.089}}},
    {"R466A.MIX", "A1", 3, {{"R32.FLD", 0.4899}, {"R125.FLD", 0.115}, {"CF3I.FLD", 0.3951}}},
    {"R454B.MIX", "A2L", 2, {{"R32.FLD", 0.691}, {"R1234YF.FLD", 0.301}}},
};

static_assert(std::size(pureFluidRows) == pureFluidCount);
static_assert(std::size(mixtureRows) == mixtureCount);

PureFluidTable pureFluidTable() {
    PureFluidTable table;
    table.count = pureFluidCount;
    for (int i = 1; i <= pureFluidCount; ++i) {
        const PureFluidRow& row = pureFluidRows[i - 1];
        PUREFLUID& fluid = table.rows[i];
        fluid.NAME = row.name;
        fluid.NCOMP = 1;
        fluid.ZKG[1] = 1.0;
        fluid.REFSNAME[1] = row.name;
        fluid.GWP = row.GWP;
        fluid.SAFETYCLASS = row.safetyClass;
    }
    return table;
}

MixtureTable mixtureTable() {
    MixtureTable table;
    table.count = mixtureCount;
    for (int i = 1; i <= mixtureCount; ++i) {
        const MixtureRow& row = mixtureRows[i - 1];
        MIXTURE& mixture = table.rows[i];
        mixture.NAME = row.name;
        mixture.NCOMP = row.count;
        for (int j = 1; j <= row.count; ++j) {
            mixture.ZKG[j] = row.components[j - 1].massFraction;
            mixture.REFSNAME[j] = row.components[j - 1].name;
        }
        mixture.SAFETYCLASS = row.safetyClass;
    }
    return table;
}

}  // namespace

const PureFluidTable& pureFluidLibrary() {
    static const PureFluidTable table = pureFluidTable();
    return table;
}

const MixtureTable& mixtureLibrary() {
    static const MixtureTable table = mixtureTable();
    return table;
}

void LOADPUREFLUIDS(PureFluidTable& table) {
    table = pureFluidLibrary();
}

void LOADMIXTURES(MixtureTable& table) {
    table = mixtureLibrary();
}

}  // namespace frigana
