// A state in reduced variables, the common beginning of all property routines of this folder.
#pragma once

#include "DISPATCH.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "ReferenceState.h"
#include "UTILITY.h"

namespace frigana {

// Makes the gas constant of x the one in use and reduces t and rho by the values of the pure fluid or of the mixture.
// The derivatives of one state are asked for with bit-equal arguments, so that the models find them in their caches.
struct ReducedState {
    const Composition& x;
    int pure = 0;  // component of a pure composition, 0 for a mixture
    double Tr = 0.0, Dr = 0.0;
    double tau = 0.0, del = 0.0;
    double R = 0.0, RT = 0.0;

    ReducedState(double t, double rho, const Composition& composition) : x(composition) {
        RMIX(x);
        ISPURE(x, pure);
        if (pure > 0) {
            Tr = fluidConstants.TZ[pure];
            Dr = fluidConstants.RHOZ[pure];
        } else {
            REDX(x, Tr, Dr);
        }
        tau = Tr / t;
        del = rho / Dr;
        R = fluidConstants.R;
        RT = R * t;
    }

    // tau^itau del^idel times the derivative of the residual Helmholtz energy
    double residual(int itau, int idel) const {
        return pure > 0 ? PHIK(pure, itau, idel, tau, del) : PHIX(itau, idel, tau, del, x);
    }
    // the same of the ideal gas, derived in tau
    double ideal(int itau, double t, double rho) const {
        return pure > 0 ? PHI0K(pure, itau, 0, t, rho) : PHI0(itau, 0, t, rho, x);
    }

    double enthalpyOffset() const { return offset(referenceState.HREF); }
    double entropyOffset() const { return offset(referenceState.SREF); }

  private:
    double offset(const SlotArray<double>& reference) const {
        if (pure > 0) return reference[pure];
        double sum = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) sum += x[i] * reference[i];
        return sum;
    }
};

// Pressure and its first two derivatives in density at constant temperature.
struct PressureSlopes {
    double p, first, second;
};

// The values of PRESS, DPDD and DPDD2 with one reduction of the state; the gas constant in use becomes that of x.
PressureSlopes pressureSlopes(double t, double rho, const Composition& x);

inline bool directBWR() {
    const Text3& tag = modelTags.HEOS;
    return tag[1] == 'B' && tag[2] == 'W' && tag[3] == 'R';
}

}  // namespace frigana
