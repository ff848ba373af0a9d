// Flashes at a temperature, pressure or density and a caloric property, which two letters name: the three general
// routines, and a door for each pair of letters to these and to the iterations for one phase and for two.
// Arguments and marks are those of FLSH_SUB.h.
#pragma once

#include <string_view>

#include "EngineLimits.h"
#include "FLASH2_ITERATIONS.h"

namespace frigana {

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

// State at given temperature and the property that the second letter names.
//   Given     T, z
//             b       enthalpy, entropy or energy [J/mol, J/(mol K)]
//             kr      which of two densities with the same b: 2 the higher, otherwise the lower
//             ab      "TH", "TS" or "TE"
//   Returned  p, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w
//   Codes     -238    two densities exist; that of kr has been calculated
//             from LIMITX, from SATT
//             230     no critical point
//             239     b is above its maximum or below its minimum at T
//             247, 248  ABFL1
//             from ABFL2 (mixtures)
//   Notes     After a limit error or 239: D = Dl = Dv = 0.0001, p of the ideal gas, all others -9999970.
void TBFLSH(double T, double b, const Composition& z, int kr, std::string_view ab, double& p, double& D, double& Dl,
            double& Dv, Composition& x, Composition& y, double& q, double& e, double& h, double& s, double& cv,
            double& cp, double& w, int& ierr, Text255& herr);

// State at given density and the property that the second letter names.
//   Given     D, z
//             b       enthalpy, entropy or energy [J/mol, J/(mol K)]
//             ab      "DH", "DS" or "DE"
//   Returned  T, p, Dl, Dv, x, y, q, e, h, s, cv, cp, w
//   Codes     from LIMITX
//             210     no critical point
//             215     not converged; the text says 248
//   Notes     The state is single-phase where b is at least its value on the saturation line at D.
void DBFLSH(double D, double b, const Composition& z, std::string_view ab, double& T, double& p, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& h, double& s, double& cv, double& cp,
            double& w, int& ierr, Text255& herr);

// ---------------------------------------------------------------------------------------------------------------
// The doors.

namespace doors {

// Two letters as text.
template <char first, char second>
struct Pair {
    static constexpr char text[] = {first, second};
    static constexpr std::string_view letters{text, 2};
};
template <char first, char second>
inline constexpr std::string_view letters = Pair<first, second>::letters;

// What a flash returns of energy, enthalpy and entropy, one of which is given.
struct Caloric {
    double &e, &h, &s;
};
template <char given>
Caloric caloric(double& own, double& other, double& another) {
    static_assert(given == 'E' || given == 'H' || given == 'S');
    if constexpr (given == 'E')
        return {own, other, another};
    else if constexpr (given == 'H')
        return {other, own, another};
    else
        return {other, another, own};
}

// The first property, and the other one of temperature and pressure.
struct Driver {
    double &T, &p;
};
template <char first>
Driver driver(double& given, double& wanted) {
    static_assert(first == 'T' || first == 'P');
    if constexpr (first == 'T')
        return {given, wanted};
    else
        return {wanted, given};
}

// States in full; first and second are e and s, e and h, or h and s.
template <char letter>
void atPressure(double p, double b, const Composition& z, double& T, double& D, double& Dl, double& Dv, Composition& x,
                Composition& y, double& q, double& first, double& second, double& cv, double& cp, double& w, int& ierr,
                Text255& herr) {
    double given = 0;
    const auto [e, h, s] = caloric<letter>(given, first, second);
    PBFLSH(p, b, z, letters<'P', letter>, T, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr);
}
template <char letter>
void atTemperature(double T, double b, const Composition& z, int kr, double& p, double& D, double& Dl, double& Dv,
                   Composition& x, Composition& y, double& q, double& first, double& second, double& cv, double& cp,
                   double& w, int& ierr, Text255& herr) {
    double given = 0;
    const auto [e, h, s] = caloric<letter>(given, first, second);
    TBFLSH(T, b, z, kr, letters<'T', letter>, p, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr);
}
template <char letter>
void atDensity(double D, double b, const Composition& z, double& T, double& p, double& Dl, double& Dv, Composition& x,
               Composition& y, double& q, double& first, double& second, double& cv, double& cp, double& w, int& ierr,
               Text255& herr) {
    double given = 0;
    const auto [e, h, s] = caloric<letter>(given, first, second);
    DBFLSH(D, b, z, letters<'D', letter>, T, p, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr);
}

// A single phase: at a pressure on the side of kph from the start T > 0, at a temperature between two densities, at a
// density.
template <char letter>
void onePhaseAtPressure(double p, double b, const Composition& z, int kph, double& T, double& D, int& ierr,
                        Text255& herr) {
    ABFL1(p, b, z, kph, letters<'P', letter>, 0, 0, T, p, D, ierr, herr);
}
template <char letter>
void onePhaseAtTemperature(double T, double b, const Composition& z, double Dmin, double Dmax, double& p, double& D,
                           int& ierr, Text255& herr) {
    ABFL1(T, b, z, 0, letters<'T', letter>, Dmin, Dmax, T, p, D, ierr, herr);
}
template <char letter>
void onePhaseAtDensity(double D, double b, const Composition& z, double& T, int& ierr, Text255& herr) {
    double p = 0;
    ABFL1(D, b, z, 0, letters<'D', letter>, 0, 0, T, p, D, ierr, herr);
}
inline void onePhaseAtPressureAndDensity(double p, double D, const Composition& z, double& T, int& ierr,
                                         Text255& herr) {
    ABFL1(p, D, z, 0, "PD", 0, 0, T, p, D, ierr, herr);
}

// Two phases. What is wanted at bubble and dew point, and in between, is the pressure at a given temperature and the
// temperature at a given pressure.
template <char first, char second>
void twoPhases(double a, double b, const Composition& z, int ksat, double& atBubble, double& atDew, double& Dlbub,
               double& Dvdew, Composition& ybub, Composition& xdew, double& wanted, double& Dl, double& Dv,
               Composition& x, Composition& y, double& q, int& ierr, Text255& herr) {
    double bubbleAt = a, dewAt = a;
    const Driver bubble = driver<first>(bubbleAt, atBubble), dew = driver<first>(dewAt, atDew);
    const auto [T, p] = driver<first>(a, wanted);
    ABFL2(a, b, z, 1, ksat, letters<first, second>, bubble.T, dew.T, bubble.p, dew.p, Dlbub, Dvdew, ybub, xdew, T, p,
          Dl, Dv, x, y, q, ierr, herr);
}
template <char first>
void twoPhasesOfDensity(double a, double D, const Composition& z, int ksat, double& Tbub, double& Tdew, double& pbub,
                        double& pdew, double& Dlbub, double& Dvdew, Composition& ybub, Composition& xdew,
                        double& wanted, double& Dl, double& Dv, Composition& x, Composition& y, double& q, int& ierr,
                        Text255& herr) {
    const auto [T, p] = driver<first>(a, wanted);
    ABFL2(a, D, z, 1, ksat, letters<first, 'D'>, Tbub, Tdew, pbub, pdew, Dlbub, Dvdew, ybub, xdew, T, p, Dl, Dv, x, y,
          q, ierr, herr);
}
template <char first>
void twoPhasesOfQuality(double a, double q, const Composition& z, int kq, int ksat, double& atBubble, double& atDew,
                        double& Dlbub, double& Dvdew, Composition& ybub, Composition& xdew, double& wanted, double& Dl,
                        double& Dv, Composition& x, Composition& y, int& ierr, Text255& herr) {
    double bubbleAt = a, dewAt = a;
    const Driver bubble = driver<first>(bubbleAt, atBubble), dew = driver<first>(dewAt, atDew);
    const auto [T, p] = driver<first>(a, wanted);
    ABFL2(a, q, z, kq, ksat, letters<first, 'Q'>, bubble.T, dew.T, bubble.p, dew.p, Dlbub, Dvdew, ybub, xdew, T, p, Dl,
          Dv, x, y, q, ierr, herr);
}
template <char letter>
void twoPhasesAtDensity(double D, double b, const Composition& z, double& T, double& p, double& Dl, double& Dv,
                        Composition& x, Composition& y, double& q, int& ierr, Text255& herr) {
    DBFL2(D, b, z, 1, letters<'D', letter>, T, p, Dl, Dv, x, y, q, ierr, herr);
}
inline void twoPhasesAtDensityAndQuality(double D, double q, const Composition& z, int kq, double& T, double& p,
                                         double& Dl, double& Dv, Composition& x, Composition& y, int& ierr,
                                         Text255& herr) {
    DBFL2(D, q, z, kq, "DQ", T, p, Dl, Dv, x, y, q, ierr, herr);
}

}  // namespace doors

// By letters: the state in full, one phase, two phases.
inline constexpr auto &PHFLSH = doors::atPressure<'H'>, &PSFLSH = doors::atPressure<'S'>,
                      &PEFLSH = doors::atPressure<'E'>;
inline constexpr auto &THFLSH = doors::atTemperature<'H'>, &TSFLSH = doors::atTemperature<'S'>,
                      &TEFLSH = doors::atTemperature<'E'>;
inline constexpr auto &DHFLSH = doors::atDensity<'H'>, &DSFLSH = doors::atDensity<'S'>, &DEFLSH = doors::atDensity<'E'>;

inline constexpr auto &PHFL1 = doors::onePhaseAtPressure<'H'>, &PSFL1 = doors::onePhaseAtPressure<'S'>,
                      &PEFL1 = doors::onePhaseAtPressure<'E'>;
inline constexpr auto &THFL1 = doors::onePhaseAtTemperature<'H'>, &TSFL1 = doors::onePhaseAtTemperature<'S'>,
                      &TEFL1 = doors::onePhaseAtTemperature<'E'>;
inline constexpr auto &DHFL1 = doors::onePhaseAtDensity<'H'>, &DSFL1 = doors::onePhaseAtDensity<'S'>,
                      &DEFL1 = doors::onePhaseAtDensity<'E'>;
inline constexpr auto& PDFL1 = doors::onePhaseAtPressureAndDensity;

inline constexpr auto &PHFL2 = doors::twoPhases<'P', 'H'>, &PSFL2 = doors::twoPhases<'P', 'S'>,
                      &PEFL2 = doors::twoPhases<'P', 'E'>;
inline constexpr auto &THFL2 = doors::twoPhases<'T', 'H'>, &TSFL2 = doors::twoPhases<'T', 'S'>,
                      &TEFL2 = doors::twoPhases<'T', 'E'>;
inline constexpr auto &DHFL2 = doors::twoPhasesAtDensity<'H'>, &DSFL2 = doors::twoPhasesAtDensity<'S'>,
                      &DEFL2 = doors::twoPhasesAtDensity<'E'>;
inline constexpr auto &PDFL2 = doors::twoPhasesOfDensity<'P'>, &TDFL2 = doors::twoPhasesOfDensity<'T'>;
inline constexpr auto &PQFL2 = doors::twoPhasesOfQuality<'P'>, &TQFL2 = doors::twoPhasesOfQuality<'T'>;
inline constexpr auto& DQFL2 = doors::twoPhasesAtDensityAndQuality;

}  // namespace frigana
