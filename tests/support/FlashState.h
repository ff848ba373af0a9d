// A state of every flash in one record, and every flash by the letters of its inputs.
#pragma once

#include <string_view>

#include "FLASH2.h"
#include "FLSH_SUB.h"

namespace frigana::test {

struct FlashState {
    double T = 0, p = 0, D = 0, Dl = 0, Dv = 0, q = 0, e = 0, h = 0, s = 0, cv = 0, cp = 0, w = 0;
    Composition x{}, y{};
    int ierr = 0;
    Text255 herr;

    bool twoPhase() const { return q > 0 && q < 1; }
};

// The flash of the two letters, with the given values; kr and kq where the routine has them.
inline FlashState flash(std::string_view letters, double a, double b, const Composition& z, int selector = 1) {
    FlashState r;
    const auto is = [&](std::string_view name) { return letters == name; };
    if (is("TP")) {
        r.T = a;
        r.p = b;
        TPFLSH(r.T, b, z, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("TD")) {
        r.T = a;
        r.D = b;
        TDFLSH(a, b, z, r.p, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("PD")) {
        r.p = a;
        r.D = b;
        PDFLSH(a, b, z, r.T, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("PH")) {
        r.p = a;
        r.h = b;
        PHFLSH(a, b, z, r.T, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("PS")) {
        r.p = a;
        r.s = b;
        PSFLSH(a, b, z, r.T, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("PE")) {
        r.p = a;
        r.e = b;
        PEFLSH(a, b, z, r.T, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("TH")) {
        r.T = a;
        r.h = b;
        THFLSH(a, b, z, selector, r.p, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("TS")) {
        r.T = a;
        r.s = b;
        TSFLSH(a, b, z, selector, r.p, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("TE")) {
        r.T = a;
        r.e = b;
        TEFLSH(a, b, z, selector, r.p, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("DH")) {
        r.D = a;
        r.h = b;
        DHFLSH(a, b, z, r.T, r.p, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("DS")) {
        r.D = a;
        r.s = b;
        DSFLSH(a, b, z, r.T, r.p, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("DE")) {
        r.D = a;
        r.e = b;
        DEFLSH(a, b, z, r.T, r.p, r.Dl, r.Dv, r.x, r.y, r.q, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("HS")) {
        r.h = a;
        r.s = b;
        HSFLSH(a, b, z, r.T, r.p, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("ES")) {
        r.e = a;
        r.s = b;
        ESFLSH(a, b, z, r.T, r.p, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.h, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("TQ")) {
        r.T = a;
        r.q = b;
        TQFLSH(a, b, z, selector, r.p, r.D, r.Dl, r.Dv, r.x, r.y, r.e, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else if (is("PQ")) {
        r.p = a;
        r.q = b;
        PQFLSH(a, b, z, selector, r.T, r.D, r.Dl, r.Dv, r.x, r.y, r.e, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    } else {
        r.ierr = 9999;
        r.herr.assign("no flash of these letters");
    }
    return r;
}

}  // namespace frigana::test
