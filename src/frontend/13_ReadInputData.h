// The readers of request files. A request is a free-form text file without keywords: every value is known by its place.
//
// A read takes what it wants from its line (blank lines are passed over) and drops the rest; the next read starts on
// the next line. Titles, and the header lines of second cycles, are the first 80 columns of their line as they stand.
// No value is judged here, but every number is finite, and a value directly before a comma and the last digits of its
// line is refused: that is a decimal comma. A file that is missing, short or malformed, or a count beyond its array,
// ends the run in the runtime's own error.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// What a request asks for.
//   Given     FILEIN  path of the request
//   Returned  TYPE    1 property request, 2 cycle request, or whatever stands on the first line
//             SUB     sub-type; as it was where TYPE is neither 1 nor 2
void READINPUTTYPE(const Text255& FILEIN, int& TYPE, int& SUB);

// A whole property request.
//   Given     FILEIN     path of the request
//   Returned  substance  FLUIDKIND, NREFS, ZTYPE, REFSNAME and ZCOMP up to NREFS, MIXNAME, IXREF, HRF
//             request    REQTYPE, REQSUB, TABSTEP (0 if the tool has none), and the fields of the tool that REQSUB
//             names STEPFLAG   0 if TABSTEP is 0, else 1
//   Notes     Air as a predefined mixture takes the reference state 1 by force.
void READINPUTPROPS(const Text255& FILEIN, SUBSTANCE& substance, PROPREQ& request, int& STEPFLAG);

// A cycle request of one fluid.
//   Given     FILEIN     path of the request
//   Returned  substance  REFSNAME(1), IXREF, HRF; FLUIDKIND 1 if the third character from the end of the name is an F
//                        (of .FLD), else 2; NREFS 1, ZTYPE 1, ZCOMP(1) 1, MIXNAME as the name
//             cycle      TITLE, REQTYPE, REQSUB, NDAT, and TDAT, VDAT up to NDAT; what lies beyond is left as it was
void READINPUTCYCLE(const Text255& FILEIN, SUBSTANCE& substance, CYCLEIN& cycle);

// Requests of two fluids: the block of one fluid, two ignored lines, the block again. Of a cascade and of a pumped
// system, two more ignored lines and a last one with parameter 16 (cascade) or 11 (pumped) of the second cycle.
void READINPUTCOMBINED(const Text255& FILEIN, SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2,
                       CYCLEIN& cycle2);
void READINPUTCASCADE(const Text255& FILEIN, SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2,
                      CYCLEIN& cycle2);
void READINPUTPUMPED(const Text255& FILEIN, SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2,
                     CYCLEIN& cycle2);

}  // namespace frigana
