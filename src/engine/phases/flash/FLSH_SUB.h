// Flash calculations at given pressure or temperature: they say whether a state is single-phase or two-phase and
// return it in full.
//
// Arguments that all flash routines share
//   T       temperature [K]
//   p       pressure [kPa]
//   D       bulk density [mol/L]
//   z       bulk mole fractions
//   Dl, Dv  densities of liquid and vapor [mol/L]; in a single phase both are the bulk density
//   x, y    mole fractions of liquid and vapor; in a single phase both are those of the bulk
//   q       quality, molar share of the vapor:
//             0 to 1     two phases
//             below 0, above 1   subcooled liquid, superheated vapor, by the volumes or enthalpies of the saturated
//                        phases at the given temperature or pressure
//             998        superheated vapor (vapor above the critical temperature included)
//             -998       subcooled liquid (liquid above the critical pressure included)
//             999        supercritical, or no state because of an error
//   e, h, s energy, enthalpy [J/mol], entropy [J/(mol K)]
//   cv, cp  heat capacities [J/(mol K)]; -9999980 in a two-phase state
//   w       speed of sound [m/s]; likewise
// After an error the densities are zero and q is 999, unless a routine tells otherwise.
#pragma once

#include "EngineLimits.h"
#include "FlashLetters.h"

namespace frigana {

// State at given temperature and pressure.
//   Given     T, p, z
//   Returned  D, Dl, Dv, x, y, q, e, h, s, cv, cp, w
//   Changed   T       becomes 1.1 Tc where a mixture fails closely above its critical temperature
//   Codes     from LIMITX  inputs out of range (positive), or close to it (negative: the result is usable); after a
//                     positive one the caloric properties are those of the ideal gas at T
//             2       the state is denser than the equation allows (the result is kept)
//             210     no critical point
//             211     no bubble point
//             212     no dew point
//             213, 214, 215  no density of the liquid, of the vapor, of the supercritical state
//             216, 218, 219  TPFL2
//   Notes     Pressures far below any saturation pressure, by a bound or the ancillary equation, and states above the
//             critical point are solved by the density root alone, the others by comparison with the dew and bubble
//             pressure. Within 5 K of the critical temperature the critical point replaces a saturation state that
//             was not found.
void TPFLSH(double& T, double p, const Composition& z, double& D, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& h, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);

// State at given temperature and density.
//   Given     T, D, z
//   Returned  p, Dl, Dv, x, y, q, e, h, s, cv, cp, w
//   Codes     from LIMITX  as TPFLSH
//             220     no critical point
//             221     no bubble point
//             222     no dew point
//             from ABFL2 (mixtures)
void TDFLSH(double T, double D, const Composition& z, double& p, double& Dl, double& Dv, Composition& x, Composition& y,
            double& q, double& e, double& h, double& s, double& cv, double& cp, double& w, int& ierr, Text255& herr);

// State at given pressure and density.
//   Given     p, D, z
//   Returned  T, Dl, Dv, x, y, q, e, h, s, cv, cp, w
//   Codes     from LIMITX  as TPFLSH
//             210     no critical point
//             211, 212  no bubble point, no dew point
//             213, 214, 215  no temperature of the liquid, of the vapor, of the supercritical state
//             from ABFL2 (mixtures)
void PDFLSH(double p, double D, const Composition& z, double& T, double& Dl, double& Dv, Composition& x, Composition& y,
            double& q, double& e, double& h, double& s, double& cv, double& cp, double& w, int& ierr, Text255& herr);

}  // namespace frigana
