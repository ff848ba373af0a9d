// Standard pipe sizes of refrigerant lines, the sizes around a wanted diameter, and the velocities that a line should
// keep.
#pragma once

#include <span>
#include <string_view>

#include "12_MyVariables.h"

namespace frigana {

inline constexpr int pipeOptions = 6;
inline constexpr int wantedPipe = 3;  // the option that holds the diameter that was looked for
inline constexpr std::string_view notStandard = "Not standard";

// The pipes on offer for one line under one load.
struct PIPEOPT {
    Array1<double, pipeOptions> DEXT;   // outer size [m]; -777 for a free size
    Array1<double, pipeOptions> DINT;   // inner diameter [m]
    Array1<Text255, pipeOptions> NOMI;  // nominal name of the size
    Array1<double, pipeOptions> VEL;    // velocity [m/s]
    Array1<double, pipeOptions> DP;     // pressure loss [kPa]
    Array1<double, pipeOptions> DTSAT;  // drop of saturation temperature [K]
};

// Option i without a pipe: -777 and a blank name.
void clearPipe(PIPEOPT& record, int i);
// All six of them.
void clearPipes(PIPEOPT& record);

// Absolute roughness of a pipe [m].
//   Given   material  1, 2 or 3
double pipeRoughness(int material);

// Fills sizes and names of the six options around a diameter.
//   Given     material    1, 2 or 3
//             wallOption  inner diameter of a size: 1 to 3 for material 1, 1 to 2 for the others
//             D           [m] wanted inner diameter
//   Returned  record      DEXT, DINT, NOMI
//   Notes     Within 0.1 mm of a size, that size is option 3 with two below and three above it; otherwise option 3 is
//             the free size between them. At the ends of the table options repeat.
void PIPING_NEIGHBORS(int material, int wallOption, double D, PIPEOPT& record);

// Velocities that carry the oil along and make no noise.
//   Given     line       1 suction, 2 discharge, 3 liquid
//             elevation  [m] above the reference level; a rising suction line must be faster
//             receiver   1 if the liquid line has a receiver, 0 if it has none
//   Returned  vmin, vmax [m/s]
void PIPE_VLIMITS(int line, double elevation, int receiver, double& vmin, double& vmax);

}  // namespace frigana
