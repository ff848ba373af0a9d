#include "24_SaturationPoints.h"

#include "14_ErrorControl.h"
#include "23_SpecificPoints.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr int bubble = 1;
constexpr int dew = 2;

// One phase of an equilibrium: the fluid with the composition of that phase.
const SUBSTANCE& phaseOf(const SUBSTANCE& substance, const Composition& z, SUBSTANCE& phase) {
    phase = substance;
    phase.ZMOL = z;
    phase.WM = WMOL(z);
    return phase;
}

struct SaturatedDensities {
    double T = 0, p = 0, rhol = 0, rhov = 0;
};

// H and S of one side of the dome.
void fillDomePoint(const SUBSTANCE& substance, const SaturatedDensities& at, double rho, STATEPT& point) {
    double h = 0, s = 0;
    ENTHAL(at.T, rho, substance.ZMOL, h);
    ENTRO(at.T, rho, substance.ZMOL, s);
    point.T = at.T;
    point.P = at.p;
    point.H = h / substance.WM;
    point.S = s / substance.WM;
}

// Both sides of the dome at one pressure or temperature. The two points of a pure fluid are one pair, which SATT and
// SATP remember as long as nothing else is evaluated: its properties come last.
template <class Solve>
void bothSides(const SUBSTANCE& substance, const Solve& solve, STATEPT& LIQ, STATEPT& VAP) {
    int icomp = 0;
    ISPURE(substance.ZMOL, icomp);
    SaturatedDensities at;
    solve(bubble, at);
    if (icomp == 0) fillDomePoint(substance, at, at.rhol, LIQ);
    const SaturatedDensities liquid = at;
    solve(dew, at);
    fillDomePoint(substance, at, at.rhov, VAP);
    if (icomp > 0) fillDomePoint(substance, liquid, liquid.rhol, LIQ);
}

}  // namespace

void PROPMIXTURET_BD(const SUBSTANCE& substance, double T, int, STATEPT& LIQ, STATEPT& VAP) {
    PROPSIMPLETQ(substance, T, 0.0, LIQ);
    PROPSIMPLETQ(substance, T, 1.0, VAP);
}

void PROPMIXTUREP_BD(const SUBSTANCE& substance, double P, int, STATEPT& LIQ, STATEPT& VAP) {
    PROPSIMPLEPQ(substance, P, 0.0, LIQ);
    PROPSIMPLEPQ(substance, P, 1.0, VAP);
}

void PROPMIXTURET_EQ(const SUBSTANCE& substance, double T, int KPH, STATEPT& LIQ, STATEPT& VAP) {
    static SUBSTANCE liquid, vapor;
    double p = 0, rhol = 0, rhov = 0;
    Composition xliq{}, xvap{};
    int ierr = 0;
    Text255 herr;
    SATT(T, substance.ZMOL, KPH, p, rhol, rhov, xliq, xvap, ierr, herr);
    ERRORCONTROL(ierr, herr);
    PROPSIMPLETQ(phaseOf(substance, xliq, liquid), T, 0.0, LIQ);
    PROPSIMPLETQ(phaseOf(substance, xvap, vapor), T, 1.0, VAP);
}

void PROPMIXTUREP_EQ(const SUBSTANCE& substance, double P, int KPH, STATEPT& LIQ, STATEPT& VAP) {
    static SUBSTANCE liquid, vapor;
    double t = 0, rhol = 0, rhov = 0;
    Composition xliq{}, xvap{};
    int ierr = 0;
    Text255 herr;
    SATP(P, substance.ZMOL, KPH, t, rhol, rhov, xliq, xvap, ierr, herr);
    ERRORCONTROL(ierr, herr);
    PROPSIMPLEPQ(phaseOf(substance, xliq, liquid), P, 0.0, LIQ);
    PROPSIMPLEPQ(phaseOf(substance, xvap, vapor), P, 1.0, VAP);
}

void PROPMIXTURET_BD_DOME(const SUBSTANCE& substance, double T, STATEPT& LIQ, STATEPT& VAP) {
    const auto solve = [&](int kph, SaturatedDensities& found) {
        Composition xliq{}, xvap{};
        int ierr = 0;
        Text255 herr;
        SATT(T, substance.ZMOL, kph, found.p, found.rhol, found.rhov, xliq, xvap, ierr, herr);
        found.T = T;
    };
    bothSides(substance, solve, LIQ, VAP);
}

void PROPMIXTUREP_BD_DOME(const SUBSTANCE& substance, double P, STATEPT& LIQ, STATEPT& VAP) {
    const auto solve = [&](int kph, SaturatedDensities& found) {
        Composition xliq{}, xvap{};
        int ierr = 0;
        Text255 herr;
        SATP(P, substance.ZMOL, kph, found.T, found.rhol, found.rhov, xliq, xvap, ierr, herr);
        found.p = P;
    };
    bothSides(substance, solve, LIQ, VAP);
}

}  // namespace frigana
