// Calls of the saturation solvers with their results side by side.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <string>

#include "FluidConstants.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "PureFluid.h"
#include "SAT_SUB.h"
#include "SAT_SUB_INVERSE.h"
#include "TPRHO.h"

namespace frigana::test {

inline constexpr int bubble = 1, dew = 2, freezing = 3, sublimation = 4;

struct Saturated {
    double T = 0.0, p = 0.0, rhol = 0.0, rhov = 0.0;
    Composition xliq{}, xvap{};
    int ierr = 0;
    Text255 herr;

    std::string text() const { return std::string(herr.slice(1, herr.find(std::string_view("\0", 1)) - 1)); }
};

inline Saturated satt(double T, int kph = bubble, const Composition& x = unitComposition(1)) {
    Saturated s;
    s.T = T;
    SATT(T, x, kph, s.p, s.rhol, s.rhov, s.xliq, s.xvap, s.ierr, s.herr);
    return s;
}
inline Saturated satp(double p, int kph = bubble, const Composition& x = unitComposition(1)) {
    Saturated s;
    s.p = p;
    SATP(p, x, kph, s.T, s.rhol, s.rhov, s.xliq, s.xvap, s.ierr, s.herr);
    return s;
}

struct Roots {
    int count = 0;
    std::array<int, 3> line{};
    std::array<double, 3> T{}, p{}, rho{};
    int ierr = 0;
    Text255 herr;
    std::string text() const { return std::string(herr.slice(1, herr.find(std::string_view("\0", 1)) - 1)); }
};
inline Roots sath(double h, int kph = 0, const Composition& x = unitComposition(1)) {
    Roots r;
    SATH(h, x, kph, r.count, r.line[0], r.T[0], r.p[0], r.rho[0], r.line[1], r.T[1], r.p[1], r.rho[1], r.ierr, r.herr);
    return r;
}
inline Roots sate(double e, int kph = 0, const Composition& x = unitComposition(1)) {
    Roots r;
    SATE(e, x, kph, r.count, r.line[0], r.T[0], r.p[0], r.rho[0], r.line[1], r.T[1], r.p[1], r.rho[1], r.ierr, r.herr);
    return r;
}
inline Roots sats(double s, int kph = 0, const Composition& x = unitComposition(1)) {
    Roots r;
    SATS(s, x, kph, r.count, r.line[0], r.T[0], r.p[0], r.rho[0], r.line[1], r.T[1], r.p[1], r.rho[1], r.line[2],
         r.T[2], r.p[2], r.rho[2], r.ierr, r.herr);
    return r;
}

struct ByDensity : Saturated {
    int line = 0;
};
inline ByDensity satd(double rho, int kph = 0, const Composition& x = unitComposition(1)) {
    ByDensity s;
    SATD(rho, x, kph, s.line, s.T, s.p, s.rhol, s.rhov, s.xliq, s.xvap, s.ierr, s.herr);
    return s;
}

inline double pressure(double T, double rho, const Composition& x = unitComposition(1)) {
    double p;
    PRESS(T, rho, x, p);
    return p;
}
inline double gibbs(double T, double rho, const Composition& x = unitComposition(1)) {
    double A, G;
    AG(T, rho, x, A, G);
    return G;
}
inline double enthalpy(double T, double rho, const Composition& x = unitComposition(1)) {
    double h;
    ENTHAL(T, rho, x, h);
    return h;
}
inline double entropy(double T, double rho, const Composition& x = unitComposition(1)) {
    double s;
    ENTRO(T, rho, x, s);
    return s;
}
inline double energy(double T, double rho, const Composition& x = unitComposition(1)) {
    double e;
    ENERGY(T, rho, x, e);
    return e;
}

inline double criticalT() {
    return fluidConstants.TCRIT[1];
}
inline double criticalP() {
    return fluidConstants.PCRIT[1];
}
inline double criticalD() {
    return fluidConstants.DCRIT[1];
}
inline double lowestT() {
    return std::max(fluidConstants.TMEOS[1], fluidConstants.TTPN[1]);
}

// Random numbers of a fixed sequence, the same on every machine.
class Random {
  public:
    // Evenly between low and high.
    double between(double low, double high) {
        state_ += 0x9e3779b97f4a7c15ULL;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        z ^= z >> 31;
        return low + (high - low) * (static_cast<double>(z >> 11) * 0x1.0p-53);
    }

  private:
    std::uint64_t state_ = 20240229;
};

// The largest deviation of a sequence and where it was.
struct Largest {
    double value = 0.0, where = 0.0;
    void take(double deviation, double place) {
        if (!(deviation <= value)) {
            value = deviation;
            where = place;
        }
    }
};

}  // namespace frigana::test
