// The fluids and blends that the system knows by name, with global warming potential and safety class. A fluid that is
// not here can be computed all the same if its file is present.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

inline constexpr int pureFluidCount = 36;
inline constexpr int mixtureCount = 53;

struct PUREFLUID {
    Text255 NAME{};            // file name with extension
    int NCOMP = 0;             // number of components, 1
    Array1<double, 20> ZKG{};  // mass fractions
    Array1<Text255, 20> REFSNAME{};
    int GWP = 0;            // global warming potential
    Text255 SAFETYCLASS{};  // NA where none is assigned
};

// A blend has no potential of its own: it follows from its components.
struct MIXTURE {
    Text255 NAME{};
    int NCOMP = 0;
    Array1<double, 20> ZKG{};
    Array1<Text255, 20> REFSNAME{};
    Text255 SAFETYCLASS{};
};

struct PureFluidTable {
    int count = 0;
    Array1<PUREFLUID, pureFluidCount> rows{};
};

struct MixtureTable {
    int count = 0;
    Array1<MIXTURE, mixtureCount> rows{};
};

// The rows, filled when they are first asked for: they are half a megabyte of blanks around a few names.
const PureFluidTable& pureFluidLibrary();
const MixtureTable& mixtureLibrary();

// Write every row and the count.
void LOADPUREFLUIDS(PureFluidTable& table);
void LOADMIXTURES(MixtureTable& table);

}  // namespace frigana
