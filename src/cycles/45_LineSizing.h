// Sizing of the suction, discharge and liquid line of a basic cycle, in two runs. The first run solves the cycle
// without pressure drops in the lines and offers six pipes for each of them; the second solves it with the pressure
// losses of the pipes that were picked, at the compressor's volume flow of the first run.
//
// Units: m, m/s, kg/s, kg/m3, uPa s, kPa, K.
#pragma once

#include "12_MyVariables.h"
#include "15_PipeDatabase.h"

namespace frigana {

// What flows in a pipe.
struct PipeFlow {
    double m;    // mass flow [kg/s]
    double rho;  // density [kg/m3]
    double mu;   // viscosity [uPa s], -777 where there is none
};

// A pipe but for its diameter.
struct PipeRun {
    double eps;  // absolute roughness [m]
    double L;    // equivalent length [m]
    double h;    // elevation [m]
    int n;       // number of fittings
    double x;    // value of the fittings given in another way; of no effect
};

struct VelocityRange {
    double vmin, vmax;  // m/s
};

// Pressure loss of a pipe: friction, two velocity heads per fitting, and a full column of the elevation, whatever the
// direction of the flow.
//   Given     D   [m] inner diameter
//   Returned  v   [m/s] velocity;  dp  [kPa] loss, -777 without a viscosity
//   Source    S. W. Churchill, Friction-factor equation spans all fluid-flow regimes, Chem. Eng. 84 (1977) 24, 91-92
void PIPING_MRDM(const PipeFlow& flow, const PipeRun& run, double D, double& v, double& dp);

// Diameter for a pressure loss, by a secant with a probe that shrinks from pass to pass.
//   Given     t         [kPa] loss that is wanted
//             velocity  what is taken instead where no diameter is found
//   Returned  D   [m];  v  [m/s] velocity of the last trial
//             t   the loss found, where the search failed: the diameter is then that of the mean velocity
void PIPING_MRDP(const PipeFlow& flow, const PipeRun& run, const VelocityRange& velocity, double& t, double& D,
                 double& v);

// Pipes of a line under one load.
//   Given     option    3 diameter given, 4 drop of saturation temperature given
//             value     of the parameter: D [m] under option 3, the drop [K] under option 4
//             P         [kPa] at the inlet;  phase  side of the dome, 0 liquid, 1 vapor
//             material, wallOption  as in PIPING_NEIGHBORS
//   Returned  record    the six options. The sixth is the widest standard size that keeps the lowest velocity
void SOLTUBES(int option, const PipeFlow& flow, const PipeRun& run, double value, const SUBSTANCE& substance, double P,
              int phase, int material, int wallOption, const VelocityRange& velocity, PIPEOPT& record);

// Solves one of the two runs and writes its result file.
//   Given     CYCLEIN  parameters 1 to 4, 6 to 9, 11 to 14 as in the basic cycle, and
//                       5, 10, 15 suction, discharge, liquid line   1 drop of pressure [kPa], 2 of saturation
//                                                                   temperature [K], 3 inner diameter [m], 4 drop of
//                                                                   saturation temperature for which to size it [K]
//                      16, 20, 24 pipe: the option is the material (1 to 3), the value the wall option
//                      17, 21, 25 equivalent length [m];  18, 22, 26 elevation [m]
//                      19, 23, 27 fittings              1 their number, 2 a value without effect
//                      28 liquid line                   1 with receiver, 2 without
//                      29 partial load as a fraction of the mass flow
//                      30 run                           1 first, 2 second
//                      31, 32, 33 pipe picked for the suction, discharge, liquid line, 1 to 6: the option
//             FILEOUT  result file of the second run. That of the first has 0 in the place of its last character
//   Returned  CYCLEIN  in the second run the lines that were sized have option 3 and the diameter picked
//   Codes     those of the basic cycle; 205201 the file of the first run has another title or fluid than the request.
//             A second run without a first one, or with a damaged file of it, ends in the runtime's own error
void SOLLINESIZING(SUBSTANCE& substance, CYCLEIN& cycle, const Text255& FILEOUT);

// Whether a request asks for the first run, and the result file of that run.
bool isFirstRun(const CYCLEIN& cycle);
Text255 firstRunPath(const Text255& FILEOUT);

}  // namespace frigana
