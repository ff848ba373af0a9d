#include "ChartFluid.h"

#include <algorithm>
#include <cmath>

#include "DISPATCH.h"
#include "FLSH_SUB.h"
#include "FluidConstants.h"
#include "LIMITS.h"
#include "MELTING.h"
#include "PROP_SUB.h"
#include "Reason.h"
#include "SAT_SUB_NEWTON.h"
#include "SETUP.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana::diagrams {

namespace {

// The engine takes the ideal-gas part of one temperature for that of another within 1e-8 K. At 20 K this moves an
// entropy by 6e-9 kJ/(kg K), which an isentrope near zero shows; farther up it is lost in the last digits. Asked for
// another temperature in between, the engine calculates anew.
void forgetIdealGas(double T, double rho, const Composition& z) {
    constexpr double cold = 100.0;  // [K]
    if (T > cold) return;
    for (const int order : {0, 1, 2}) PHI0(order, 0, 1.1 * T, rho, z);
}

}  // namespace

double valueOf(const State& state, Property property) {
    switch (property) {
        case Property::temperature:
            return state.T;
        case Property::pressure:
            return state.p;
        case Property::density:
            return state.D;
        case Property::enthalpy:
            return state.h;
        case Property::entropy:
            return state.s;
        default:
            return state.q;
    }
}

bool ChartFluid::load(const FluidSelection& selection, std::string& why) {
    name_ = selection.name;
    Text3 reference{std::string_view(selection.reference)};
    const Text255 parameters = "HMX.BNC";
    int ierr = 0, count = static_cast<int>(selection.files.size());
    Text255 herr;
    z_ = Composition{};
    FileNames files{};
    if (selection.kind == FluidSelection::Kind::mixtureFile) {
        SETMIX(Text255(selection.files.front()), parameters, reference, count, files, z_, ierr, herr);
    } else {
        for (int i = 1; i <= count; ++i) {
            files[i].assign(selection.files[static_cast<std::size_t>(i - 1)]);
            z_[i] = count == 1 ? 1.0 : selection.fractions[static_cast<std::size_t>(i - 1)];
        }
        SETUP(count, files, parameters, reference, ierr, herr);
    }
    if (ierr <= 0 && selection.byMass && count > 1) {
        const Composition byMass = z_;
        double meanMass = 0.0;
        XMOLE(byMass, z_, meanMass);
    }
    if (ierr <= 0) SETREF(reference, selection.referenceMode, z_, 0.0, 0.0, 0.0, 0.0, ierr, herr);
    if (ierr <= 0) adoptCriticalPoint(z_);
    if (ierr <= 0) CRITP(z_, critical_.T, critical_.p, critical_.D, ierr, herr);
    if (ierr > 0) {
        why = reasonOf(herr.view());
        return false;
    }
    int component = 0;
    ISPURE(z_, component);
    pure_ = component > 0;
    molarMass_ = WMOL(z_);
    double highestDensity = 0.0;
    LIMITS("EOS", z_, lowestT_, highestT_, highestDensity, highestP_);
    highestD_ = highestDensity * molarMass_;
    if (pure_) {
        // An equation may reach below the triple point, for the liquid under pressure.
        lowestT_ = std::max(lowestT_, fluidConstants.TTPN[component]);
    } else {
        // A blend is known where all of its components are.
        for (int i = 1; i <= count; ++i) {
            double tmin = 0, tmax = 0, dmax = 0, pmax = 0;
            Text255 ignored;
            int code = 0;
            LIMITK("EOS", i, 300.0, 0.0, 0.0, tmin, tmax, dmax, pmax, code, ignored);
            lowestT_ = std::max(lowestT_, tmin);
            highestT_ = std::min(highestT_, tmax);
            highestP_ = std::min(highestP_, pmax);
        }
    }
    return true;
}

State ChartFluid::at(double T, double D) const {
    State state;
    double e, cv, cp, w, jt;
    state.T = T;
    state.D = D;
    forgetIdealGas(T, D / molarMass_, z_);
    THERM(T, D / molarMass_, z_, state.p, e, state.h, state.s, cv, cp, w, jt);
    state.h /= molarMass_;
    state.s /= molarMass_;
    return state;
}

State ChartFluid::settled(double T, double p, double rho) const {
    // Densities of equilibria come out to 1e-9 or so, which in a liquid is much pressure.
    // Beside the critical point pressure says little about density, and what is known is better.
    constexpr double largest = 1e-6, stiff = 0.5;
    for (int step = 1; step <= 2; ++step) {
        double pressure, slope;
        PRESS(T, rho, z_, pressure);
        DPDD(T, rho, z_, slope);
        if (slope * rho < stiff * p) break;
        const double change = (p - pressure) / slope;
        if (!(std::fabs(change) < largest * rho)) break;
        rho += change;
    }
    State state = at(T, rho * molarMass_);
    state.p = p;
    return state;
}

bool ChartFluid::atPressure(double T, double p, int kph, State& state) const {
    double density = 0.0;
    int ierr = 0;
    Text255 herr;
    TPRHO(T, p, z_, kph, 0, density, ierr, herr);
    if (ierr > 0) return false;
    state = at(T, density * molarMass_);
    return std::fabs(state.p - p) <= 1e-6 * p;
}

bool ChartFluid::temperatureAt(double D, Property property, double value, double coldest, double guess,
                               double& T) const {
    const double rho = D / molarMass_;
    double low = coldest, high = 2.0 * highestT_;
    T = std::clamp(guess, low, high);
    constexpr int mostSteps = 80;
    constexpr double squared = 1e-12, rounding = 1e-13;  // relative steps after which nothing is left to correct
    for (int step = 1; step <= mostSteps; ++step) {
        double p, e, h, s, cv, cp, w, jt, dpdt = 0.0;
        forgetIdealGas(T, rho, z_);
        THERM(T, rho, z_, p, e, h, s, cv, cp, w, jt);
        double difference, slope;
        if (property == Property::entropy) {
            difference = s - value * molarMass_;
            slope = cv / T;
        } else {
            DPDT(T, rho, z_, dpdt);
            difference = property == Property::pressure ? p - value : h - value * molarMass_;
            slope = property == Property::pressure ? dpdt : cv + dpdt / rho;
        }
        if (!std::isfinite(difference)) return false;
        (difference > 0.0 ? high : low) = T;
        constexpr double longest = 0.15;  // of T: a step that skips the range may find a root that is none
        const double newton = T - std::clamp(difference / slope, -longest * T, longest * T);
        if (newton > low && newton < high) {
            const double change = std::fabs(newton - T);
            T = newton;
            if (change <= squared * T) return true;
        } else if (std::fabs(newton - T) <= rounding * T) {
            return true;
        } else {
            T = 0.5 * (low + high);
            // The engine takes temperatures within 1e-12 for one; both ends must have been tried.
            constexpr double oneTemperature = 1e-11;
            if (low > coldest && high < 2.0 * highestT_ && high - low <= oneTemperature * T) return true;
            if (high - low <= rounding * T) return false;
        }
    }
    return false;
}

bool ChartFluid::fromPressure(double p, Property property, double value, State& state) const {
    double Dl, Dv, q, e, h = value * molarMass_, s = h, cv, cp, w, D;
    Composition x, y;
    int ierr = 0;
    Text255 herr;
    if (property == Property::entropy)
        PSFLSH(p, s, z_, state.T, D, Dl, Dv, x, y, q, e, h, cv, cp, w, ierr, herr);
    else
        PHFLSH(p, h, z_, state.T, D, Dl, Dv, x, y, q, e, s, cv, cp, w, ierr, herr);
    state.p = p;
    state.D = D * molarMass_;
    state.h = h / molarMass_;
    state.s = s / molarMass_;
    state.q = q >= 0.0 && q <= 1.0 ? q * (pure_ ? 1.0 : WMOL(y) / molarMass_) : singlePhase;
    return ierr <= 0 && D > 0.0;
}

State ChartFluid::between(const PhasePair& pair, double q) const {
    double p, e, hl, hv, sl, sv, cv, cp, w, jt;
    THERM(pair.T, pair.Dl, pair.x, p, e, hl, sl, cv, cp, w, jt);
    THERM(pair.T, pair.Dv, pair.y, p, e, hv, sv, cv, cp, w, jt);
    State state;
    state.T = pair.T;
    state.p = pair.p;
    state.D = molarMass_ / ((1.0 - q) / pair.Dl + q / pair.Dv);
    state.h = ((1.0 - q) * hl + q * hv) / molarMass_;
    state.s = ((1.0 - q) * sl + q * sv) / molarMass_;
    state.q = q * (pure_ ? 1.0 : WMOL(pair.y) / molarMass_);
    return state;
}

double ChartFluid::meltingPressure(double T) const {
    constexpr double beyondAll = 1e12;
    double p = 0.0;
    int ierr = 0;
    Text255 herr;
    MELTT(T, z_, p, ierr, herr);
    return ierr > 0 || !(p > 0.0) ? beyondAll : p;
}

}  // namespace frigana::diagrams
