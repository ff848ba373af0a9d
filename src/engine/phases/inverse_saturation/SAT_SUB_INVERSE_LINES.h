// What the inverse routines share: the remembered extrema, and states on a saturation line. For the sources of that
// name alone.
#pragma once

#include "LineProperty.h"
#include "PhasePair.h"
#include "SAT_SUB_INVERSE.h"

namespace frigana {

// Clears what is remembered if it belongs to another fluid.
void belongTo(const Composition& x, int icomp);

// Lowest temperature of the saturation lines [K]: the limit of the equation of state, for water the triple point.
double lowestLineTemperature(const Composition& x, int icomp);

bool isWater(int icomp);

// State on a line at T, and the density of the line's phase.
struct LineState {
    PhasePair at;
    double rho = 0.0;
};
bool stateOnLine(int line, double T, const Composition& x, LineState& state, int& ierr, Text255& herr);

// Fills the values of enthalpy, energy and entropy at the cold end of the lines.
void fillColdEnd(const Composition& x, int icomp, double Tmin, double Tc);

}  // namespace frigana
