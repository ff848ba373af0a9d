// Mixing rules and departure functions of the Helmholtz mixture model (tag HMX): parameters, readers, reducing
// functions. (The sums over components that need the pure equations stand in the dispatch.)
//
// State: mixingParameters, one record per pair, and departureCache, one record per departure function. SETHMX and RDMIX
// clear the cache.
#pragma once

#include <cstdint>
#include <span>

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestPairs = ncmax * (ncmax - 1) / 2;
inline constexpr int largestRules = 60;
inline constexpr int largestMixTerms = 15;
inline constexpr int largestModelNumber = 55;

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
    int version = 0;                                  // version number of the file
    int rules = 0;
    Array1<MixingRule, largestRules> rule{};
    int AMMONIAWATER = 0;  // 1: component 1 is ammonia and 2 water; 2: the reverse; 0: another mixture
    int IWATERCOMP = 0, IALCOHOLCOMP = 0;
    int IGERG = 0;  // 1: the GE records of the file are used as they stand

    MixingParameters();  // not constexpr: clang 14 fails to evaluate so large a table
};

extern MixingParameters mixingParameters;

// The last state of one departure function, by its model number. Pairs of one tag share it: their tables are the same,
// and the fractions and the strength are multiplied in afterwards.
struct DepartureCache {
    double TAUSVH = 0.0, DELSVH = 0.0;
    std::uint32_t DRVFLH = 0;                  // bit s: DRVSVH[s] is valid
    Array1<double, 16> DRVSVH{};               // derivatives, place 4 itau + idel + 1
    Array1<double, largestMixTerms> PHISVH{};  // terms
    Array1<double, largestMixTerms> DELLIH{};  // del^l of the polynomial block
};

extern IndexedArray<DepartureCache, 0, largestModelNumber> departureCache;

void clearDepartureCache();

// Running number of the pair (i, j) among nc components, in the order 1-2, 1-3, ..., 2-3, ...; the order of i and j
// does not matter. 0 for i = j.
constexpr int pairNumber(int i, int j, int nc) {
    const int a = i < j ? i : j, b = i < j ? j : i;
    return a == b ? 0 : (a - 1) * nc - a * (a - 1) / 2 + (b - a);
}

// Reads the parameters of all pairs of the present components and the departure functions from the mixture file.
//   Given     hfmix  name of the file
//   Codes     1      built-in data asked for (BDATA), or the file is of another model
//             106, 107  ammonia-water rule for other components, or for more than two
//             111    file not opened
//             -117   a pair without parameters was estimated, or has no departure function
//             117    a pair was estimated outside the range of the estimate
//             118    a line could not be read
//             -118   a record without mixing parameters; the pair was estimated
//             -114 to -116  estimated critical lines in the file; the pair was estimated
//   Notes     The first error wins, else the last warning.
void SETHMX(const Text255& hfmix, int& ierr, Text255& herr);

// Reads the record of one pair.
//   Given     iunit  open unit of the mixture file
//             i, j   components
//             k      number of the pair
//   Codes     -117, -118, -114 to -116, 118 as SETHMX; 1 no unit
//   Notes     A record of the other order is turned round. A record of the GE form is replaced by a later one of the
//             pair, unless GERG04 asked for it.
void RDBNC(int iunit, int i, int j, int k, int& ierr, Text255& herr);

// Marks the pairs that received a departure function, [i][j] with i < j.
using PairMarks = Array1<Array1<bool, ncmax>, ncmax>;

// Reads departure functions from an open mixture file: all of them (hmodij ALL), or that of a tag for the pair (i, j).
//   Codes     118    a line could not be read, or a table that is too large
void RDMIX(int iunit, int i, int j, const Text3& hmodij, PairMarks& LIJ, int& ierr, Text255& herr);

// Estimates the mixing parameters of a pair.
//   Given     i, j   components
//             k      number of the pair
//   Codes     -117   estimated
//             117    one of the components is outside the range of the estimate, or the result is
//   Source    E. W. Lemmon, M. O. McLinden, Method for Estimating Mixture Equation of State Parameters, Thermophysical
//             Properties and Transfer Processes of New Refrigerants, IIR Commission B1, Paderborn (2001), p. 23
void ESTBNC(int i, int j, int k, int& ierr, Text255& herr);

// Critical lines of a pair without parameters: linear in the fractions.
void ESTTC(int i, int j, int& ierr, Text255& herr);
void ESTVC(int i, int j, int& ierr, Text255& herr);

// Departure function of a pair, with the fractions and its strength.
//   Given     i, j        components
//             itau, idel  orders of the derivative in tau and in del, 0 to 3
//             tau, del    reduced inverse temperature and density of the mixture
//             x           mole fractions
//   Returned  (value)     tau^itau del^idel times the derivative of x_i x_j F phi_ij; 0 for del <= 1e-10, tau <= 0, a
//                         tag without a departure function; 1e20 for a tag of no model number
//   Notes     The exponential block contributes nothing to the third derivative in del.
//   Source    O. Kunz, R. Klimeck, W. Wagner, M. Jaeschke, GERG Technical Monograph 15 (2007), eq. 5.12;
//             ammonia-water: R. Tillner-Roth, D. G. Friend, J. Phys. Chem. Ref. Data 27 (1998) 63
double PHIMIX(int i, int j, int itau, int idel, double tau, double del, const Composition& x);

// Sum of PHIMIX over all pairs whose fractions are above the smallest one.
double sumOfDepartures(int itau, int idel, double tau, double del, const Composition& x, double smallestFraction);

// Derivatives of several orders of a pair's departure function with its strength but without the two fractions,
// d(phi)/d(x_i x_j); false where there is none. The ammonia-water rule is not of this form: false.
struct DepartureOrder {
    int itau, idel;
};
bool departuresOfPair(int i, int j, std::span<const DepartureOrder> orders, double tau, double del, double* values);

// Reducing temperature [K] and density [mol/L] of a mixture and their derivatives in the fractions.
//   Given     ix     0 values; -1 values with the rule of the pair (1, 2) for all pairs; 1, 2 first and second
//                    derivative in x(icmp); 11 mixed derivative in x(icmp) and x(icmp2)
//             x      mole fractions
//   Returned  Tr     [K]
//             Dr     [mol/L] for ix 0 and -1; for a derivative that of the reducing volume 1/Dr [L/mol]
//   Codes     190    a tag of no mixing rule
//             191    no derivative: a rule other than KW (or the equal LJ with powers of one), or the cubic equation
//   Notes     The linear part of the derivatives is that of sum x_i^2 Tz_i, to which the linear part and the pairs'
//             own linear terms add up where the fractions sum to one. Values below 5e-13 in size become 100 and 10.
//   Source    O. Kunz, R. Klimeck, W. Wagner, M. Jaeschke, GERG Technical Monograph 15 (2007), eqs. 5.10, 5.11
void RDXHMX(int ix, int icmp, int icmp2, const Composition& x, double& Tr, double& Dr, int& ierr, Text255& herr);
void REDHMX(const Composition& x, double& Tr, double& Dr);

// All derivatives of RDXHMX at once.
struct ReducingDerivatives {
    double Tr, vr;  // [K, L/mol]
    Composition dT, dV;
    ComponentArray<Composition> d2T, d2V;
};
// Codes 190, 191 as RDXHMX; order 1 leaves the second derivatives alone.
void reducingDerivatives(int order, const Composition& x, ReducingDerivatives& r, int& ierr, Text255& herr);

}  // namespace frigana
