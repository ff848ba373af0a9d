// Limits of validity of the models, and the checks of a state against them.
// State: none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Limits of a composition.
//   Given     htype   "EOS" equation of state (also for every other text), "TRP" the same with the density of the
//                     triple point, "STN" surface tension, "TCX" thermal conductivity, "ETA" viscosity
//             x       mole fractions
//   Returned  tmin, tmax  [K]
//             Dmax    [mol/L]
//             pmax    [kPa]
//   Notes     Mixtures: means of the components' limits relative to their reducing values. The lower temperature limit
//             of ammonia with water is the melting curve of the mixture.
//   Source    R. Tillner-Roth, D. G. Friend, J. Phys. Chem. Ref. Data 27 (1998) 63 (ammonia with water)
void LIMITS(const Text3& htype, const Composition& x, double& tmin, double& tmax, double& Dmax, double& pmax);

// Checks a state of a composition against the limits.
//   Given     htype   as LIMITS
//             t       temperature [K]; -1 if not given
//             D       density [mol/L]; 0 if not given
//             p       pressure [kPa]; 0 if not given
//             x       mole fractions
//   Returned  tmin, tmax, Dmax, pmax  the limits
//   Codes     Sum of bits, positive if one of them is an error, negative if all are warnings:
//             1       temperature
//             2       density
//             4       pressure
//             8       composition
//             16      solid region
void LIMITX(const Text3& htype, double t, double D, double p, const Composition& x, double& tmin, double& tmax,
            double& Dmax, double& pmax, int& ierr, Text255& herr);

// Checks a state of one component against the limits of its slot; arguments and codes as LIMITX.
//   Notes     The limits of density and pressure for "STN" are -9.99e99: there are none.
void LIMITK(const Text3& htype, int icomp, double t, double D, double p, double& tmin, double& tmax, double& Dmax,
            double& pmax, int& ierr, Text255& herr);

// Extremum of enthalpy, energy or entropy over density at a given temperature, by golden sections.
//   Given     a, b    bracket [mol/L]
//             n       number of steps
//             lmin    true for a minimum, false for a maximum
//             x       mole fractions
//             t       temperature [K]
//             letter  'H', 'E' or 'S'
//   Returned  rho     middle of the last bracket [mol/L]
//             value   the property there [J/mol or J/(mol K)]
void GOLD(double a, double b, int n, bool lmin, const Composition& x, double t, char letter, double& rho,
          double& value);

}  // namespace frigana
