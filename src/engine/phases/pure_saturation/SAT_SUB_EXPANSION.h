// Saturation of a pure fluid by Chebyshev expansions in pieces, made from its equation of state once and for all and
// kept in a file beside the fluid file: what answers where a fluid is asked for many saturated states. Newton's method
// answers before, outside the range of the expansions, close to the critical point, and where there is no such file.
//
// Symbols: theta = sqrt(1 - T/Tr), phi = sqrt(ln(pr/p)), with the critical point Tr, pr as the fluid file gives it.
// Over theta ln(p/pr), the density of the liquid, and Z = p/(R T rhov) of the vapor are expanded; over phi, theta. In
// theta and phi the lines have no branch point where the phases become one, and pieces of equal width serve everywhere.
//
// State: expansionControl, the tables read last and what every slot is to use.
//
//   Source    Approximation from a function's own values: L. N. Trefethen, Approximation Theory and Approximation
//             Practice, SIAM (2013); for lines of saturation: I. H. Bell, B. K. Alpert, Int. J. Thermophys. 42 (2021)
//             75, and I. H. Bell, U. K. Deiters, Ind. Eng. Chem. Res. 60 (2021) 9983
#pragma once

#include <cstdint>

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestOrder = 24;       // coefficients of one piece
inline constexpr int mostCoefficients = 480;  // of one function in all its pieces
inline constexpr int expandedOverTheta = 3;   // ln(p/pr), rhol, Z

// Pieces of equal width of a variable.
struct ExpansionPieces {
    int count = 0, order = 0;
    double first = 0.0, perUnit = 0.0;  // where the first piece begins, pieces for one unit of the variable
};

struct ExpansionTable {
    std::uint64_t fingerprint = 0;  // of the equation that it was made from
    double Tr = 0.0, pr = 0.0, R = 0.0;
    double lowestT = 0.0, highestT = 0.0;  // [K]
    double lowestP = 0.0, highestP = 0.0;  // [kPa]
    ExpansionPieces overTheta, overPhi;
    double line[expandedOverTheta * mostCoefficients];  // by pieces, by order, the three functions side by side
    double thetas[mostCoefficients];                    // by pieces, by order
};

// A saturated state.
struct ExpandedState {
    double T = 0.0, p = 0.0, rhol = 0.0, rhov = 0.0;  // [K, kPa, mol/L]
};

// The state at a temperature or a pressure within the range of a table.
ExpandedState expandedAtT(const ExpansionTable& table, double T);
ExpandedState expandedAtP(const ExpansionTable& table, double p);

// The ranges and the numbers of pieces and coefficients made into the pieces of a table.
//   Returned  (value)  false where they are no ranges, or more than a table holds
bool layPieces(ExpansionTable& table);

// A number that changes with everything that the saturation of a slot's equation depends on.
std::uint64_t equationFingerprint(int icomp);

// Reads the table of a file.
//   Given     unit   open, the next line being the first
//   Returned  table
//             (value)  false where the file is not whole, holds what is no number, or its pieces do not meet
bool readExpansions(int unit, ExpansionTable& table);

// Left on but by comparisons of both ways; the counts are for measurements, cleared by whoever measures.
struct ExpansionControl {
    bool enabled = true;
    long asked = 0, answered = 0;
};
extern ExpansionControl expansionControl;

// A file is read when so many states of a slot were asked for since its set-up: reading takes as long as Newton's
// method for forty, and hardly a cycle asks for more than a hundred and fifty.
inline constexpr int statesBeforeExpansions = 200;

// Saturation at temperature, at pressure: what SATT and SATP ask first.
//   Given     icomp  component slot of a pure fluid
//             T      [K]; p  [kPa]
//   Returned  p or T, rhol, rhov  [kPa, K, mol/L]
//             (value)  false: to be found otherwise, nothing is returned
bool expansionAtTemperature(int icomp, double T, double& p, double& rhol, double& rhov);
bool expansionAtPressure(int icomp, double p, double& T, double& rhol, double& rhov);

// How many more states of a slot Newton's method answers; 0 once the table does, where there is one.
int statesUntilExpansions(int icomp);

// Lets states count as asked for whose results were kept elsewhere: what answers next stays what it would have been.
//   Given     icomp   component slot of a pure fluid
//             states  fewer than are missing until the table answers; of no effect from then on
void countAsAsked(int icomp, int states);

// The states asked for are counted anew and tables are chosen anew (with the set-up of a fluid, and wherever its
// equation may have become another one).
void forgetExpansions();

}  // namespace frigana
