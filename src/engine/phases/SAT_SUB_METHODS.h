// The methods behind SATT and SATP, for the sources of that name alone.
#pragma once

#include "CriticalPoint.h"
#include "EngineLimits.h"
#include "Message.h"
#include "RootBracket.h"
#include "SilentMessages.h"

namespace frigana {

// Selectors of a phase in calls of TPRHO. A negative one forces the side of the density.
inline constexpr int liquidPhase = 1;
inline constexpr int vaporPhase = 2;

// True if an ancillary equation stands behind the tag.
inline bool hasAncillary(const Text3& tag) {
    return !tag.blank() && !(tag == "NBS");
}

// The message "HEADING inner message", the inner one cut so that the null character stands at the last place at most.
inline void wrapMessage(std::string_view heading, Text255& herr) {
    message(herr, heading, Character{Text255::size - 1 - static_cast<int>(heading.size()), herr.view()}, nullCharacter);
}

// The message "HEADINGnnn; inner message", nnn in three places.
inline void passMessage(Text255& herr, std::string_view heading, int pass) {
    message(herr, heading, Integer{3, pass}, "; ",
            Character{Text255::size - 6 - static_cast<int>(heading.size()), herr.view()}, nullCharacter);
}

// Saturation of a pure fluid at given temperature: successive pressures with the densities of both phases, and close to
// the critical point, or where that fails, densities held between the spinodals.
//   Given     T, x, icomp, kph   as SATT; T below the critical temperature
//             critical           critical point
//             liquidEstimate, vaporEstimate  [mol/L]
//             p                  estimate [kPa]
//   Returned  p, rhol, rhov      [kPa, mol/L]
//   Codes     124
void pureAtTemperature(double T, const Composition& x, int icomp, int kph, const CriticalPoint& critical,
                       double liquidEstimate, double vaporEstimate, double& p, double& rhol, double& rhov, int& ierr,
                       Text255& herr);

// Saturation of a pure fluid at given pressure: successive temperatures with the densities of both phases; where that
// fails, a secant on SATT.
//   Given     p, x, icomp, kph   as SATP; p below the critical pressure
//             acentric           acentric factor
//   Returned  T, rhol, rhov      [K, mol/L]
//   Codes     144
void pureAtPressure(double p, const Composition& x, int icomp, int kph, const CriticalPoint& critical, double acentric,
                    double& T, double& rhol, double& rhov, int& ierr, Text255& herr);

// Bubble or dew point of a mixture at given temperature by substitution: the composition of the incipient phase from
// the ratio of the fugacities, inside a secant in pressure.
//   Given     T, x, kph          as SATT
//             started            true: p, rhol, rhov and the incipient composition in the arguments are the start
//   Returned  p, rhol, rhov, xliq, xvap
//   Codes     121, 128
void mixtureAtTemperature(double T, const Composition& x, int kph, const CriticalPoint& critical, bool started,
                          double& p, double& rhol, double& rhov, Composition& xliq, Composition& xvap, int& ierr,
                          Text255& herr);

// Bubble or dew point of a mixture at given pressure, the same with temperature as the outer variable.
//   Given     highestDensity     limit of the equation of state [mol/L]
//   Returned  T, rhol, rhov, xliq, xvap
//   Codes     148
void mixtureAtPressure(double p, const Composition& x, int kph, const CriticalPoint& critical, double highestDensity,
                       double& T, double& rhol, double& rhov, Composition& xliq, Composition& xvap, int& ierr,
                       Text255& herr);

// "... T =ggg K, Tcrit =ggg K." of a temperature above the critical one, with its code 121.
void temperatureAboveCritical(std::string_view heading, double T, double Tc, int& ierr, Text255& herr);

// Forgets the tables of SETLSPNDL and SETVSPNDL.
void resetSpinodalTables();

}  // namespace frigana
