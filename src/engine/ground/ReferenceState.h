// The zero of enthalpy and entropy per component slot. Written by SETREF (defaults by SETFLD).
#pragma once

#include "EngineLimits.h"

namespace frigana {

struct ReferenceState {
    SlotArray<double> TREF{}, RHOREF{};  // reference point [K, mol/L]
    SlotArray<double> HREF{}, SREF{};    // what THERM subtracts [J/mol, J/(mol K)]
    SlotArray<double> PREFI{};           // pressure of the point; above -1.99 the liquid, -1.99 and below the vapor
    SlotArray<Text3> HREFI{};            // tag that was used
    SlotArray<Text3> HREFDF{};           // default of the file
    SlotArray<double> TDEF{}, PDEF{}, HDEF{}, SDEF{};

    Text3 HSVRF{"NUL"};
    int IXREFSAVE = 0;
    Composition X0SAV{};
    double h0 = 0, s0 = 0, t0 = 0, p0 = 0;
    bool LREFDONE = false;
};

extern ReferenceState referenceState;

}  // namespace frigana
