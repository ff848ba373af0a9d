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

    // The value that a letter of a flash names.
    double& operator[](char letter) {
        switch (letter) {
            case 'T':
                return T;
            case 'P':
                return p;
            case 'D':
                return D;
            case 'E':
                return e;
            case 'H':
                return h;
            case 'S':
                return s;
            default:
                return q;
        }
    }
};

// The flash of the two letters, with the given values; kr and kq where the routine has them.
inline FlashState flash(std::string_view letters, double a, double b, const Composition& z, int selector = 1) {
    FlashState r;
    r[letters[0]] = a;
    r[letters[1]] = b;
    auto& [T, p, D, Dl, Dv, q, e, h, s, cv, cp, w, x, y, ierr, herr] = r;
    const auto is = [&](std::string_view name) { return letters == name; };
    if (is("TP")) {
        TPFLSH(T, p, z, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr);
    } else if (is("TD")) {
        TDFLSH(T, D, z, p, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr);
    } else if (is("PD")) {
        PDFLSH(p, D, z, T, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr);
    } else if (is("PH")) {
        PHFLSH(p, h, z, T, D, Dl, Dv, x, y, q, e, s, cv, cp, w, ierr, herr);
    } else if (is("PS")) {
        PSFLSH(p, s, z, T, D, Dl, Dv, x, y, q, e, h, cv, cp, w, ierr, herr);
    } else if (is("PE")) {
        PEFLSH(p, e, z, T, D, Dl, Dv, x, y, q, h, s, cv, cp, w, ierr, herr);
    } else if (is("TH")) {
        THFLSH(T, h, z, selector, p, D, Dl, Dv, x, y, q, e, s, cv, cp, w, ierr, herr);
    } else if (is("TS")) {
        TSFLSH(T, s, z, selector, p, D, Dl, Dv, x, y, q, e, h, cv, cp, w, ierr, herr);
    } else if (is("TE")) {
        TEFLSH(T, e, z, selector, p, D, Dl, Dv, x, y, q, h, s, cv, cp, w, ierr, herr);
    } else if (is("DH")) {
        DHFLSH(D, h, z, T, p, Dl, Dv, x, y, q, e, s, cv, cp, w, ierr, herr);
    } else if (is("DS")) {
        DSFLSH(D, s, z, T, p, Dl, Dv, x, y, q, e, h, cv, cp, w, ierr, herr);
    } else if (is("DE")) {
        DEFLSH(D, e, z, T, p, Dl, Dv, x, y, q, h, s, cv, cp, w, ierr, herr);
    } else if (is("HS")) {
        HSFLSH(h, s, z, T, p, D, Dl, Dv, x, y, q, e, cv, cp, w, ierr, herr);
    } else if (is("ES")) {
        ESFLSH(e, s, z, T, p, D, Dl, Dv, x, y, q, h, cv, cp, w, ierr, herr);
    } else if (is("TQ")) {
        TQFLSH(T, q, z, selector, p, D, Dl, Dv, x, y, e, h, s, cv, cp, w, ierr, herr);
    } else if (is("PQ")) {
        PQFLSH(p, q, z, selector, T, D, Dl, Dv, x, y, e, h, s, cv, cp, w, ierr, herr);
    } else {
        ierr = 9999;
        herr.assign("no flash of these letters");
    }
    return r;
}

}  // namespace frigana::test
