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
#include "FLASH2_ITERATIONS.h"

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

// ABFL2 with the letters TD.
void TDFL2(double T, double D, const Composition& z, int ksat, double& Tbub, double& Tdew, double& pbub, double& pdew,
           double& Dlbub, double& Dvdew, Composition& ybub, Composition& xdew, double& p, double& Dl, double& Dv,
           Composition& x, Composition& y, double& q, int& ierr, Text255& herr);

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

// ABFL1 and ABFL2 with the letters PD.
void PDFL1(double p, double D, const Composition& z, double& T, int& ierr, Text255& herr);
void PDFL2(double p, double D, const Composition& z, int ksat, double& Tbub, double& Tdew, double& pbub, double& pdew,
           double& Dlbub, double& Dvdew, Composition& ybub, Composition& xdew, double& T, double& Dl, double& Dv,
           Composition& x, Composition& y, double& q, int& ierr, Text255& herr);

// State at given pressure and enthalpy, entropy or energy: PBFLSH with the letters PH, PS, PE.
void PHFLSH(double p, double h, const Composition& z, double& T, double& D, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void PSFLSH(double p, double s, const Composition& z, double& T, double& D, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& h, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void PEFLSH(double p, double e, const Composition& z, double& T, double& D, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& h, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);

// State at given pressure and the property that the second letter names.
//   Given     p, z
//             b       enthalpy, entropy or energy [J/mol, J/(mol K)]
//             ab      "PH", "PS" or "PE"
//   Returned  T, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w
//   Codes     from LIMITX  positive at the start: the critical state is returned; at the end: the result is kept
//             240     no critical point
//             241, 242  no bubble point, no dew point (the critical state is returned)
//             247, 248  ABFL1
//             249     b is outside the limits (the critical state is returned)
//             250     solid, or solid and vapor
//             from ABFL2 (mixtures)
//   Notes     The lower limit of b is that of the liquid at the lowest temperature, at 100 kPa or at p, whichever is
//             lower; the upper limit is that of the thin gas at 1.5 times the highest temperature. A vapor has the q
//             998, a liquid below the critical pressure the q of its enthalpy (entropy, energy) on the scale of the
//             saturated phases. A mixture without a bubble point at p is solved along the isobar by TPFLSH.
void PBFLSH(double p, double b, const Composition& z, std::string_view ab, double& T, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& h, double& s, double& cv, double& cp,
            double& w, int& ierr, Text255& herr);

// ABFL1 with the letters PH, PS, PE: single phase. kph as TPRHO; T > 0 is the start.
void PHFL1(double p, double h, const Composition& z, int kph, double& T, double& D, int& ierr, Text255& herr);
void PSFL1(double p, double s, const Composition& z, int kph, double& T, double& D, int& ierr, Text255& herr);
void PEFL1(double p, double e, const Composition& z, int kph, double& T, double& D, int& ierr, Text255& herr);

// ABFL2 with the letters PH, PS, PE: two phases.
void PHFL2(double p, double h, const Composition& z, int ksat, double& Tbub, double& Tdew, double& Dlbub, double& Dvdew,
           Composition& ybub, Composition& xdew, double& T, double& Dl, double& Dv, Composition& x, Composition& y,
           double& q, int& ierr, Text255& herr);
void PSFL2(double p, double s, const Composition& z, int ksat, double& Tbub, double& Tdew, double& Dlbub, double& Dvdew,
           Composition& ybub, Composition& xdew, double& T, double& Dl, double& Dv, Composition& x, Composition& y,
           double& q, int& ierr, Text255& herr);
void PEFL2(double p, double e, const Composition& z, int ksat, double& Tbub, double& Tdew, double& Dlbub, double& Dvdew,
           Composition& ybub, Composition& xdew, double& T, double& Dl, double& Dv, Composition& x, Composition& y,
           double& q, int& ierr, Text255& herr);

}  // namespace frigana
