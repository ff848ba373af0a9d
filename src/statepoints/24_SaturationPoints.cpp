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

// H and S of one side of the dome.
void fillDomePoint(const SUBSTANCE& substance, double T, double P, double rho, STATEPT& point) {
    double p = 0, e = 0, h = 0, s = 0, cv = 0, cp = 0, w = 0, jt = 0;
    THERM(T, rho, substance.ZMOL, p, e, h, s, cv, cp, w, jt);
    point.T = T;
    point.P = P;
    point.H = h / substance.WM;
    point.S = s / substance.WM;
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
    double p = 0, rhol = 0, rhov = 0;
    Composition xliq{}, xvap{};
    int ierr = 0;
    Text255 herr;
    SATT(T, substance.ZMOL, bubble, p, rhol, rhov, xliq, xvap, ierr, herr);
    fillDomePoint(substance, T, p, rhol, LIQ);
    SATT(T, substance.ZMOL, dew, p, rhol, rhov, xliq, xvap, ierr, herr);
    fillDomePoint(substance, T, p, rhov, VAP);
}

void PROPMIXTUREP_BD_DOME(const SUBSTANCE& substance, double P, STATEPT& LIQ, STATEPT& VAP) {
    double t = 0, rhol = 0, rhov = 0;
    Composition xliq{}, xvap{};
    int ierr = 0;
    Text255 herr;
    SATP(P, substance.ZMOL, bubble, t, rhol, rhov, xliq, xvap, ierr, herr);
    fillDomePoint(substance, t, P, rhol, LIQ);
    SATP(P, substance.ZMOL, dew, t, rhol, rhov, xliq, xvap, ierr, herr);
    fillDomePoint(substance, t, P, rhov, VAP);
}

}  // namespace frigana
