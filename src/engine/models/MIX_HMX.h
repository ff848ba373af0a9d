// Mixing rules and departure functions of the Helmholtz mixture model (tag HMX): parameters, readers, reducing
// functions. (The sums over components that need the pure equations stand in the dispatch.)
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestPairs = ncmax * (ncmax - 1) / 2;
inline constexpr int largestRules = 60;
inline constexpr int largestMixTerms = 15;

// Parameters of one binary pair, stored for both orders.
struct MixingPair {
    Text3 HMODMX{}, HMODTC{}, HMODVC{}, HPRKIJ{};  // tags of mixing rule, critical lines, cubic equation
    Array1<double, 6> FMIX{};                      // numbers of the mixing rule
    Array1<double, 6> FMIX2{};            // those of the KW rule where the file holds the pair reversed, else 1
    Array1<double, 11> FTCIJ{}, FVCIJ{};  // critical lines: linear term, polynomials 2 to 6 and 7 to 11
    double XLJS = 0, XLJE = 0, XKIJ = 0, XLIJ = 0, XAJI = 0, XKIJK = 0, XLIJK = 0, XDIJ = 0, XDIJ2 = 0;  // transport
    int NAMIX = 0, NAMIX2 = 0;  // terms of the polynomial and of the exponential block of the departure function
    Array1<Array1<double, 7>, largestMixTerms> AMIX{};
};

// What is known of one departure function, shared by every pair of its tag.
struct MixingRule {
    Text255 HRULE{};                  // tag in characters 1 to 3, then the description
    Array1<FixedText<8>, 6> HBPAR{};  // names of the numbers of FMIX
    Array1<double, 6> BIDEAL{};       // their values for an ideal mixture
};

// Written by SETHMX and its readers and estimates, SETKTV, SETUP (the three component indices).
struct MixingParameters {
    Array1<Array1<MixingPair, ncmax>, ncmax> pair{};  // [i][j]
    Text255 HFMIX{};
    Array1<Text255, largestPairs> HBIN{};             // citation per pair number
    IndexedArray<Text255, 0, largestPairs> HMFILE{};  // file per pair number; 0 the file of the set-up
    int rules = 0;
    Array1<MixingRule, largestRules> rule{};
    int AMMONIAWATER = 0;  // 1: component 1 is ammonia and 2 water; 2: the reverse; 0: another mixture
    int IWATERCOMP = 0, IALCOHOLCOMP = 0;
    int IGERG = 0;  // 1: the GE records of the file are used as they stand
};

extern MixingParameters mixingParameters;

// Running number of the pair (i, j) among nc components, in the order 1-2, 1-3, ..., 2-3, ...; the order of i and j
// does not matter. 0 for i = j.
constexpr int pairNumber(int i, int j, int nc) {
    const int a = i < j ? i : j, b = i < j ? j : i;
    return a == b ? 0 : (a - 1) * nc - a * (a - 1) / 2 + (b - a);
}

// Reads the parameters of all pairs of the present components from the mixture file.
//   Codes     1  mixture model HMX is not available
void SETHMX(const Text255& hfmix, int& ierr, Text255& herr);

// Marks the pairs that received a departure function, [i][j] with i < j.
using PairMarks = Array1<Array1<bool, ncmax>, ncmax>;

// Reads departure functions from an open mixture file: all of them (hmodij ALL), or that of a tag for the pair (i, j).
//   Codes     as SETHMX
void RDMIX(int iunit, int i, int j, const Text3& hmodij, PairMarks& LIJ, int& ierr, Text255& herr);

// Departure function of a pair. A mixture whose parameters were not set up gives 9.99e99.
double PHIMIX(int i, int j, int itau, int idel, double tau, double del, const Composition& x);

// Reducing temperature [K] and density [mol/L] of a mixture and their derivatives in the fractions.
//   Codes     190  mixture model HMX is not available; Tr 100, Dr 10
void RDXHMX(int ix, int icmp, int icmp2, const Composition& x, double& Tr, double& Dr, int& ierr, Text255& herr);
void REDHMX(const Composition& x, double& Tr, double& Dr);

}  // namespace frigana
