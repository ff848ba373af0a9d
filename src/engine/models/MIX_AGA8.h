// AGA8 detail characterisation model of natural gas (tag AGA at the top level). Its switch stands in SETAGA.
//
// State: aga8; IFPA is written by SETAGA, the sums of a composition by SETAG. Not reentrant.
#pragma once

#include <string_view>

#include "EngineLimits.h"

namespace frigana {

inline constexpr int aga8Components = 21;
inline constexpr double aga8GasConstant = 8.31451;  // [J/(mol K)]

struct Aga8Block {
    ComponentArray<int> IFPA{};  // component of the model for each component of the mixture; 0 none
    // sums of the composition XSAV
    double K3 = 0, U = 0;        // size [L/mol] and energy [K] of the mixture
    double G = 0, Q = 0, F = 0;  // orientation, quadrupole and high-temperature parameters
    Array1<double, 18> B{};      // terms of the second virial coefficient, before the power of temperature
    Composition XSAV{};
    ComponentArray<int> IFSAV{};
    int NC = 0;
};

extern Aga8Block aga8;

// Heat capacity of an ideal gas over R: constant + sum c (theta/T)^2 / cosh^2(theta/T) + the same with sinh.
struct Aga8IdealGas {
    double constant;
    struct {
        double coefficient, theta;
    } cosh[2], sinh[2];
};

// Component of the model for a CAS number; 0 if there is none.
int aga8Index(std::string_view cas);

// Molar mass [g/mol] and ideal gas of a component of the model, 1 to 21.
double aga8MolarMass(int index);
const Aga8IdealGas& aga8IdealGas(int index);

// Forms the sums of a composition.
//   Given     x       mole fractions, normalised here; a sum that is not positive leaves the block as it is
//   Notes     Nothing is done for the composition of the last call.
void SETAG(const Composition& x);

// The sums of a mixture of the model's own components, mole fractions with the sum 1.
using Aga8Fractions = Array1<double, aga8Components>;
void aga8Sums(const Aga8Fractions& fraction);

// Reduced residual Helmholtz energy of the composition whose sums stand in the block, and its derivatives.
//   Given     itau, idel  orders of the derivative in inverse temperature and density, each 0 to 3
//             t           temperature [K]
//             density     [mol/L]
//   Returned  (value)     tau^itau del^idel times the derivative
double aga8Phi(int itau, int idel, double t, double density);

// Reduced residual Helmholtz energy of a composition and its derivatives.
//   Given     itau, idel  orders of the derivative, each 0 to 3
//             tau, del    reduced with the reducing values of the mixture model
//             x           mole fractions
//   Returned  (value)     tau^itau del^idel times the derivative; 0 for del <= 1e-10 or tau <= 0
//   Source    K. E. Starling, J. L. Savidge, Compressibility Factors of Natural Gas and Other Related Hydrocarbon
//   Gases,
//             AGA Transmission Measurement Committee Report No. 8, 2nd ed. (1992, 2nd printing 1994); ISO 12213-2:2006
double PHIAGA(int itau, int idel, double tau, double del, const Composition& x);

}  // namespace frigana
