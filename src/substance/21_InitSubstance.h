// From the fluid choice of a request to a loaded engine and a filled record.
#pragma once

#include "12_MyVariables.h"
#include "SETUP.h"

namespace frigana {

// Loads the fluid into the engine and fills names, composition, molar mass, critical point, limits and PTBAD.
//   Given     substance  FLUIDKIND, NREFS, ZTYPE, ZCOMP, REFSNAME, MIXNAME, IXREF, HRF as the reader left them;
//                        the installation folder that the entry keeps (ADDRESS)
//   Returned  substance  the other fields; -777 in TTRP, TNBP and DMAX of a mixture. A mixture's TMIN, TMAX and PMAX
//                        are the tightest of its components'. PMIN is the bubble pressure at TMIN + 1 K
//   Codes     a positive code of SETUP, SETMIX, SETREF, CRTHMX or CRITP ends the run with the engine's text;
//             100123 a pure fluid with two names; 100125 a fraction of a mixture is negative or not a number;
//             100126 a component is there twice; 100127 the fractions do not add up to a number above zero;
//             100128 listed mole fractions do not add up to one
//   Notes     Mass fractions of a listed mixture are parts: they need not add up to one, and ZKG holds them as they do.
//             The engine holds one fluid: a request with two calls this whenever it changes from one to the other.
void INITSUBSTANCE(SUBSTANCE& substance);

// What no model of a mixture can be given, whatever its reference state: the engine sees parts of it only, and late.
//   Given     names, fractions, count  files of the components, in any case and with or without folder and extension;
//                                      their mole or mass fractions
//   Returned  sum  of the fractions
//   Codes     100125, 100126 and 100127 of INITSUBSTANCE
void CHECKCOMPOSITION(const FileNames& names, const Composition& fractions, int count, double& sum, int& IERR,
                      Text255& HERR);

}  // namespace frigana
