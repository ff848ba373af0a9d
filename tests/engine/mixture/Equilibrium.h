// Blends for the tests of phase equilibria, and what proves an equilibrium.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "FLSH_SUB.h"
#include "FlashState.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "ModelTags.h"
#include "OPENFL.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "SAT_SUB_NEWTON.h"
#include "SETUP.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "TreeFolders.h"
#include "UTILITY.h"

namespace frigana::equilibria {

inline constexpr int bubble = 1, dew = 2;

// The text of a message field as far as it goes.
inline std::string words(const Text255& field) {
    const std::string_view view = field.view();
    return std::string(trimRight(view.substr(0, view.find('\0'))));
}

// Sets a predefined blend up with its critical point, as programs do; its composition is x.
inline testing::AssertionResult setUpBlend(std::string_view name, Composition& x) {
    SETPATH(test::dataFolder);
    FileNames files{};
    Text3 reference{"DEF"};
    int nc = 0, ierr = 0;
    Text255 herr;
    SETMIX(Text255(std::string(name) + ".MIX"), Text255("HMX.BNC"), reference, nc, files, x, ierr, herr);
    adoptCriticalPoint(x);
    RESETA();
    saturationSpline.SPLINEREADY = false;
    if (ierr > 0) return testing::AssertionFailure() << name << ": " << ierr << ' ' << words(herr);
    return testing::AssertionSuccess();
}

using Share = std::pair<std::string_view, double>;

// Sets a mixture up by components and mole fractions.
inline testing::AssertionResult setUpMixture(std::initializer_list<Share> shares, Composition& x) {
    SETPATH(test::dataFolder);
    FileNames files{};
    int count = 0, ierr = 0;
    x.fill(0.0);
    for (const auto& [name, fraction] : shares) {
        files[++count].assign(std::string(name) + ".FLD");
        x[count] = fraction;
    }
    Text255 herr;
    Text3 reference{"DEF"};
    SETUP(count, files, Text255("HMX.BNC"), reference, ierr, herr);
    RESETA();
    saturationSpline.SPLINEREADY = false;
    if (ierr > 0) return testing::AssertionFailure() << "set-up " << ierr << ' ' << words(herr);
    return testing::AssertionSuccess();
}

// Names of all predefined blends.
inline std::vector<std::string> allBlends() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(test::dataFolder) + "/mixtures"))
        if (entry.path().extension() == ".MIX") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

struct TwoPhases {
    double T = 0.0, p = 0.0, D = 0.0, rhol = 0.0, rhov = 0.0, q = 0.0;
    Composition x{}, y{};
    int ierr = 0;
    Text255 herr;
};

inline TwoPhases atTemperature(double T, int kph, const Composition& z) {
    TwoPhases s;
    s.T = T;
    SATT(T, z, kph, s.p, s.rhol, s.rhov, s.x, s.y, s.ierr, s.herr);
    return s;
}
inline TwoPhases atPressure(double p, int kph, const Composition& z) {
    TwoPhases s;
    s.p = p;
    SATP(p, z, kph, s.T, s.rhol, s.rhov, s.x, s.y, s.ierr, s.herr);
    return s;
}
// kph as of SATTP; T and p the known ones.
inline TwoPhases newton(int kph, double T, double p, const Composition& z) {
    TwoPhases s;
    s.T = T;
    s.p = p;
    SATTP(s.T, s.p, z, kph, 0, s.D, s.rhol, s.rhov, s.x, s.y, s.q, s.ierr, s.herr);
    return s;
}

inline double pressure(double T, double rho, const Composition& x) {
    double p = 0.0;
    PRESS(T, rho, x, p);
    return p;
}
inline double enthalpy(double T, double rho, const Composition& x) {
    double h = 0.0;
    ENTHAL(T, rho, x, h);
    return h;
}
inline double entropy(double T, double rho, const Composition& x) {
    double s = 0.0;
    ENTRO(T, rho, x, s);
    return s;
}

// Largest relative difference of a component's fugacities in the two phases; every fugacity is known.
inline double disequilibrium(const TwoPhases& s) {
    Composition fl{}, fv{};
    int ierr = 0;
    Text255 herr;
    FGCTY2(s.T, s.rhol, s.x, fl, ierr, herr);
    if (ierr > 0) return std::numeric_limits<double>::infinity();
    FGCTY2(s.T, s.rhov, s.y, fv, ierr, herr);
    if (ierr > 0) return std::numeric_limits<double>::infinity();
    double worst = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (s.x[i] == 0.0 && s.y[i] == 0.0) continue;
        const double off = std::fabs(fl[i] / fv[i] - 1.0);
        if (!(off <= worst)) worst = off;
    }
    return worst;
}

inline double relative(double a, double b) {
    return std::fabs(a - b) / std::max(std::fabs(b), 1e-300);
}

// The largest deviation of a kind, and where it was seen.
struct Worst {
    double value = 0.0;
    std::string where;

    void take(double deviation, std::string_view place) {
        if (!(deviation <= value)) {
            value = deviation;
            where = place;
        }
    }
};

}  // namespace frigana::equilibria
