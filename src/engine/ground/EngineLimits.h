// The sizes that every table of the engine is built on.
#pragma once

#include "FixedText.h"
#include "IndexedArray.h"

namespace frigana {

inline constexpr int ncmax = 20;   // most components in a mixture
inline constexpr int nrefmx = 30;  // component slots run from -nrefmx to ncmax

// Component slots: 1 to NC the fluids of the set-up, 0 the transport reference fluid, -1 to -20 the reference fluid
// of component i in slot -i, -21 to -23 fixed reference fluids of mixtures.
template <class T>
using SlotArray = IndexedArray<T, -nrefmx, ncmax>;

template <class T>
using ComponentArray = Array1<T, ncmax>;

// Mole (or mass) fractions of components 1 to ncmax.
using Composition = ComponentArray<double>;

// Sentinels of values that could not be given.
inline constexpr double notComputed = -9999990.0;
inline constexpr double twoPhaseValue = -9999980.0;  // cv, cp, w of a two-phase state
inline constexpr double fugacityOutOfRange = -9999970.0;
inline constexpr double undefinedAtZeroDensity = -9999960.0;
inline constexpr double twoPhaseQualityValue = -9999920.0;  // cv, cp, w of TQFLSH and PQFLSH
inline constexpr double noTransportModel = -9999910.0;
inline constexpr double noSuchModel = 9.99e99;

inline constexpr double defaultGasConstant = 8.314472;  // J/(mol K)

// Unit of the composition of a pure fluid in slot icomp.
constexpr Composition unitComposition(int icomp) {
    Composition x{};
    if (Composition::holds(icomp)) x[icomp] = 1.0;
    return x;
}

}  // namespace frigana
