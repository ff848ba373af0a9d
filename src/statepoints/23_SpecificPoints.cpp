#include "23_SpecificPoints.h"

#include "14_ErrorControl.h"
#include "CORE_STN.h"
#include "FLASH2.h"
#include "FLSH_SUB.h"
#include "TRNSP.h"
#include "TextFile.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr int byMass = 2;                        // selector of a quality by mass in TQFLSH and PQFLSH
constexpr int lowerDensity = 1;                  // selector of the root in THFLSH
constexpr double missingTransport = -9999900.0;  // results at or below are missing

// What a flash leaves, in molar units.
struct Flash {
    Composition z{}, x{}, y{};
    double T = 0, p = 0, D = 0, Dl = 0, Dv = 0, q = 0, e = 0, h = 0, s = 0, cv = 0, cp = 0, w = 0;
    int ierr = 0;
    Text255 herr{};
};

// How the quality of a single-phase state gets into the point.
enum class Quality {
    heldWithin01,  // a failed point keeps the code of the engine too
    asReported,
    given
};

Flash flash;

void fillTransport(STATEPT& point) {
    double eta = 0.0;
    double tcx = 0.0;
    int ierr = 0;
    Text255 herr;
    TRNPRP(flash.T, flash.D, flash.z, eta, tcx, ierr, herr);
    if (ierr != 0) {
        point.TCX = point.ETA = point.PR = missingValue;
        return;
    }
    point.TCX = tcx <= missingTransport ? missingValue : tcx;
    point.ETA = eta <= missingTransport ? missingValue : eta;
    const bool known = point.TCX != missingValue && point.ETA != missingValue && point.CP != missingValue;
    point.PR = known ? point.ETA * point.CP / point.TCX * static_cast<double>(0.001f) : missingValue;
}

// The point from a successful flash.
void fill(const SUBSTANCE& substance, Quality rule, STATEPT& point) {
    const double WM = substance.WM;
    point.T = flash.T;
    point.P = flash.p;
    point.D = flash.D * WM;
    if (point.D > 0.0) point.V = 1.0 / point.D;
    point.U = flash.e / WM;
    point.H = flash.h / WM;
    point.S = flash.s / WM;

    if (flash.q > 0.0 && flash.q < 1.0) {
        point.CV = point.CP = point.W = point.TCX = point.ETA = point.PR = missingValue;
        point.Q = flash.q;
        if (rule != Quality::given) {
            Composition liquidMass, vaporMass;
            double liquidWM = 0.0;
            double vaporWM = 0.0;
            int ierr = 0;
            Text255 herr;
            QMASS(flash.q, flash.x, flash.y, point.Q, liquidMass, vaporMass, liquidWM, vaporWM, ierr, herr);
            ERRORCONTROL(ierr, herr);
        }
    } else {
        point.CV = flash.cv / WM;
        point.CP = flash.cp / WM;
        point.W = flash.w;
        point.Q = flash.q;
        if (rule == Quality::heldWithin01) {
            if (point.Q < 0.0) point.Q = 0.0;
            if (point.Q > 1.0) point.Q = 1.0;
        }
        fillTransport(point);
    }

    point.STN = missingValue;
    if (flash.q >= 0.0 && flash.q <= 1.0) {
        double sigma = 0.0;
        int ierr = 0;
        Text255 herr;
        SURTEN(flash.T, flash.Dl, flash.Dv, flash.x, flash.y, sigma, ierr, herr);
        if (ierr == 0) point.STN = sigma;
    }
}

// One of the two given properties.
struct Given {
    double STATEPT::*field;
    double value;
};

// The point of the two given properties: solve puts them into the flash and calls the engine.
template <class Solve>
void answer(const SUBSTANCE& substance, Quality rule, Given first, Given second, STATEPT& point, Solve solve) {
    flash.z = substance.ZMOL;
    solve();
    if (flash.ierr <= 0) {
        fill(substance, rule, point);
        return;
    }
    point = substance.PTBAD;
    point.*first.field = first.value;
    point.*second.field = second.value;
    if (rule == Quality::heldWithin01) {
        point.IERR = flash.ierr;
        point.HERR = flash.herr;
    }
}

void leaveTrace(double H) {
    constexpr std::string_view traceFile = "cycle_1.txt";
    constexpr int unit = 1;
    if (!openForWriting(unit, traceFile, Writing::fresh)) return;  // one that is there is not ours
    writeLine(unit, Text255("value of pt00"));
    writeFree(unit, H);
    closeAndDelete(unit);
}

}  // namespace

void PROPSIMPLEPH(const SUBSTANCE& substance, double P, double H, STATEPT& POINT) {
    answer(substance, Quality::asReported, {&STATEPT::P, P}, {&STATEPT::H, H}, POINT, [&] {
        flash.p = P;
        flash.h = H * substance.WM;
        PHFLSH(flash.p, flash.h, flash.z, flash.T, flash.D, flash.Dl, flash.Dv, flash.x, flash.y, flash.q, flash.e,
               flash.s, flash.cv, flash.cp, flash.w, flash.ierr, flash.herr);
    });
}

void PROPSIMPLEPS(const SUBSTANCE& substance, double P, double S, STATEPT& POINT) {
    answer(substance, Quality::asReported, {&STATEPT::P, P}, {&STATEPT::S, S}, POINT, [&] {
        flash.p = P;
        flash.s = S * substance.WM;
        PSFLSH(flash.p, flash.s, flash.z, flash.T, flash.D, flash.Dl, flash.Dv, flash.x, flash.y, flash.q, flash.e,
               flash.h, flash.cv, flash.cp, flash.w, flash.ierr, flash.herr);
    });
    if (flash.ierr <= 0) leaveTrace(POINT.H);
}

void PROPSIMPLEPT(const SUBSTANCE& substance, double P, double T, STATEPT& POINT) {
    answer(substance, Quality::heldWithin01, {&STATEPT::P, P}, {&STATEPT::T, T}, POINT, [&] {
        flash.p = P;
        flash.T = T;
        TPFLSH(flash.T, flash.p, flash.z, flash.D, flash.Dl, flash.Dv, flash.x, flash.y, flash.q, flash.e, flash.h,
               flash.s, flash.cv, flash.cp, flash.w, flash.ierr, flash.herr);
    });
}

void PROPSIMPLEPD(const SUBSTANCE& substance, double P, double D, STATEPT& POINT) {
    answer(substance, Quality::heldWithin01, {&STATEPT::P, P}, {&STATEPT::D, D}, POINT, [&] {
        flash.p = P;
        flash.D = D / substance.WM;
        PDFLSH(flash.p, flash.D, flash.z, flash.T, flash.Dl, flash.Dv, flash.x, flash.y, flash.q, flash.e, flash.h,
               flash.s, flash.cv, flash.cp, flash.w, flash.ierr, flash.herr);
    });
}

void PROPSIMPLETD(const SUBSTANCE& substance, double T, double D, STATEPT& POINT) {
    answer(substance, Quality::heldWithin01, {&STATEPT::T, T}, {&STATEPT::D, D}, POINT, [&] {
        flash.T = T;
        flash.D = D / substance.WM;
        TDFLSH(flash.T, flash.D, flash.z, flash.p, flash.Dl, flash.Dv, flash.x, flash.y, flash.q, flash.e, flash.h,
               flash.s, flash.cv, flash.cp, flash.w, flash.ierr, flash.herr);
    });
}

void PROPSIMPLETQ(const SUBSTANCE& substance, double T, double Q, STATEPT& POINT) {
    answer(substance, Quality::given, {&STATEPT::T, T}, {&STATEPT::Q, Q}, POINT, [&] {
        flash.T = T;
        flash.q = Q;
        TQFLSH(flash.T, flash.q, flash.z, byMass, flash.p, flash.D, flash.Dl, flash.Dv, flash.x, flash.y, flash.e,
               flash.h, flash.s, flash.cv, flash.cp, flash.w, flash.ierr, flash.herr);
    });
}

void PROPSIMPLEPQ(const SUBSTANCE& substance, double P, double Q, STATEPT& POINT) {
    answer(substance, Quality::given, {&STATEPT::P, P}, {&STATEPT::Q, Q}, POINT, [&] {
        flash.p = P;
        flash.q = Q;
        PQFLSH(flash.p, flash.q, flash.z, byMass, flash.T, flash.D, flash.Dl, flash.Dv, flash.x, flash.y, flash.e,
               flash.h, flash.s, flash.cv, flash.cp, flash.w, flash.ierr, flash.herr);
    });
}

void PROPSIMPLETH(const SUBSTANCE& substance, double T, double H, STATEPT& POINT) {
    answer(substance, Quality::asReported, {&STATEPT::T, T}, {&STATEPT::H, H}, POINT, [&] {
        flash.T = T;
        flash.h = H * substance.WM;
        THFLSH(flash.T, flash.h, flash.z, lowerDensity, flash.p, flash.D, flash.Dl, flash.Dv, flash.x, flash.y, flash.q,
               flash.e, flash.s, flash.cv, flash.cp, flash.w, flash.ierr, flash.herr);
    });
}

}  // namespace frigana
