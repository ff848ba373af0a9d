// From the fluid choice of a request to a loaded engine and a filled record.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Loads the fluid into the engine and fills names, composition, molar mass, critical point, limits and PTBAD.
//   Given     substance  FLUIDKIND, NREFS, ZTYPE, ZCOMP, REFSNAME, MIXNAME, IXREF, HRF as the reader left them;
//                        the installation folder that the entry keeps (ADDRESS)
//   Returned  substance  the other fields; -777 in TTRP, TNBP and DMAX of a mixture. A mixture's TMIN, TMAX and PMAX
//                        are the tightest of its components'. PMIN is the bubble pressure at TMIN + 1 K
//   Codes     a positive code of SETUP, SETMIX, SETREF, CRTHMX or CRITP ends the run with the engine's text
//   Notes     The engine holds one fluid: a request with two calls this whenever it changes from one to the other.
void INITSUBSTANCE(SUBSTANCE& substance);

}  // namespace frigana
