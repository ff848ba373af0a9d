// The conformal state of a fluid in another one, and how it is found.
// State: none.
#pragma once

namespace frigana {

struct ConformalState {
    double T, D;              // temperature [K], density [mol/L]
    double simpleT, simpleD;  // the same by the ratios of the critical points
    bool newton;              // T and D were solved for
};

// State of the fluid in a slot that has residual Helmholtz energy A and compressibility factor Z.
//   Given     slot    the fluid in which the state is sought
//             tc, dc  critical point of the fluid or mixture that is at T, D
//   Returned  (value) false where the solution failed and led far away from its start
//   Notes     A gas of moderate density is scaled by the critical points alone; the equations are solved for a
//             compressibility factor up to 0.3, a density above that of the critical point, or a pressure above the
//             critical one.
bool conformalState(int slot, double A, double Z, double tc, double dc, double T, double D, ConformalState& state);

}  // namespace frigana
