#include "SAT_SUB_DERIVED.h"

#include <algorithm>
#include <cmath>

#include "CORE_FEQ.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {
namespace {

// Selects one component for the length of a call.
class PureSelection {
  public:
    explicit PureSelection(int icomp) : before_(modelTags.IPUREFLD) { modelTags.IPUREFLD = icomp; }
    ~PureSelection() { modelTags.IPUREFLD = before_; }
    PureSelection(const PureSelection&) = delete;
    PureSelection& operator=(const PureSelection&) = delete;

  private:
    int before_;
};

struct SaturatedPair {
    double p = 0.0, rhol = 0.0, rhov = 0.0;
};

// Saturation of the selected component; a failure or an empty liquid gives a code of at least 1.
bool saturatedPair(double T, int kph, const Composition& x, SaturatedPair& pair, int& ierr, Text255& herr) {
    Composition xliq, xvap;
    SATT(T, x, kph, pair.p, pair.rhol, pair.rhov, xliq, xvap, ierr, herr);
    if (ierr == 0 && pair.rhol > 0.0) return true;
    ierr = std::max(ierr, 1);
    return false;
}

// Slope of enthalpy over volume between the phases, which is T dp/dT [kPa].
double enthalpyOverVolume(double T, const SaturatedPair& pair, const Composition& x) {
    double hl, hv;
    ENTHAL(T, pair.rhol, x, hl);
    ENTHAL(T, pair.rhov, x, hv);
    return (hl - hv) / (1.0 / pair.rhol - 1.0 / pair.rhov);
}

// cp of a phase less what its volume takes along the line.
double saturationHeatCapacity(double T, double rho, double clapeyron, const Composition& x) {
    double cv, cp, dpdt, dpdrho;
    CVCP(T, rho, x, cv, cp);
    DPDT(T, rho, x, dpdt);
    DPDD(T, rho, x, dpdrho);
    return cp - dpdt / dpdrho / (rho * rho) * clapeyron;
}

}  // namespace

void CSATK(int icomp, double T, int kph, double& p, double& rho, double& csat, int& ierr, Text255& herr) {
    double dpdt;
    DPTSATK(icomp, T, kph, p, rho, csat, dpdt, ierr, herr);
}

void DPTSATK(int icomp, double T, int kph, double& p, double& rho, double& csat, double& dpdt, int& ierr,
             Text255& herr) {
    p = rho = csat = dpdt = 0.0;
    const PureSelection selection(icomp);
    const Composition x = unitComposition(icomp);
    SaturatedPair pair;
    if (!saturatedPair(T, kph, x, pair, ierr, herr)) return;
    p = pair.p;
    rho = kph == 2 ? pair.rhov : pair.rhol;
    const double clapeyron = enthalpyOverVolume(T, pair, x);
    csat = saturationHeatCapacity(T, rho, clapeyron, x);
    dpdt = clapeyron / T;
}

void CV2PK(int icomp, double T, double rho, double& cv2p, double& csat, int& ierr, Text255& herr) {
    constexpr double dT = 0.01;  // [K]
    cv2p = csat = 0.0;
    const PureSelection selection(icomp);
    const Composition x = unitComposition(icomp);
    SaturatedPair here, above, below;
    if (!saturatedPair(T + dT, 1, x, above, ierr, herr)) return;
    if (!saturatedPair(T - dT, 1, x, below, ierr, herr)) return;
    if (!saturatedPair(T, 1, x, here, ierr, herr)) return;
    const double clapeyron = enthalpyOverVolume(T, here, x);
    csat = saturationHeatCapacity(T, here.rhol, clapeyron, x);
    const double volume = rho > 0.0 ? 1.0 / rho : 1.0 / here.rhol;
    const double densitySlope = (above.rhol - below.rhol) / (2.0 * dT);
    const double pressureCurvature = (above.p - 2.0 * here.p + below.p) / (dT * dT);
    // (h_v - h_l) / (v_v - v_l) is T dp/dT as well
    cv2p = csat + T / (here.rhol * here.rhol) * densitySlope * clapeyron / T +
           T * (volume - 1.0 / here.rhol) * pressureCurvature;
}

namespace {

// One phase on the isotherm over molar volume v [L/mol].
struct VolumePoint {
    double v = 0.0;
    double p = 0.0;      // [kPa]
    double a = 0.0;      // Helmholtz energy [J/mol]
    double slope = 0.0;  // dp/dv [kPa mol/L]

    void evaluate(double T, const Composition& x) {
        const double rho = 1.0 / v;
        double G, dpdrho;
        PRESS(T, rho, x, p);
        AG(T, rho, x, a, G);
        DPDD(T, rho, x, dpdrho);
        slope = -rho * rho * dpdrho;
    }
};

// What MAXWELL searches in.
struct VolumeSearch {
    double T, theta;
    const Composition& x;
    double vmin, vmax, vc;
    double liquidStart, vaporStart;

    // Out of the region between the spinodals; false if that does not succeed.
    bool stableLiquid(VolumePoint& liquid) const {
        for (int move = 1; liquid.slope > 0.0; ++move) {
            if (move > 10) return false;
            double spinodal = 1.0 / liquidStart;
            int ierr = 1;
            Text255 herr;
            if (move == 1) LIQSPNDL(T, x, spinodal, ierr, herr);
            liquid.v = ierr == 0 ? 0.995 / spinodal : 0.5 * (vmin + liquid.v);
            liquid.evaluate(T, x);
        }
        return true;
    }
    bool stableVapor(VolumePoint& vapor) const {
        for (int move = 1; vapor.slope > 0.0; ++move) {
            if (move > 20) return false;
            double spinodal = 1.0 / vaporStart;
            int ierr = 1;
            Text255 herr;
            if (move == 1) VAPSPNDL(T, x, spinodal, ierr, herr);
            if (ierr == 0)
                vapor.v = 1.005 / spinodal;
            else if (move >= 10)
                vapor.v = vaporStart;
            else if (theta > 0.9)
                vapor.v = std::min(1.005 * vapor.v, std::max(vaporStart, vapor.v));
            else
                vapor.v *= 1.2;
            vapor.evaluate(T, x);
        }
        return true;
    }
};

bool equalAreas(const VolumeSearch& s, VolumePoint& l, VolumePoint& v, double& p) {
    for (int pass = 1; pass <= 50; ++pass) {
        l.evaluate(s.T, s.x);
        v.evaluate(s.T, s.x);
        if (!s.stableLiquid(l) || !s.stableVapor(v)) return false;
        if (!(std::fabs(v.v - l.v) >= 1e-12)) return false;
        const double maxwell = (l.a - v.a) / (v.v - l.v);
        if (std::fabs(l.p - v.p) / v.p < 0.0001) {
            p = maxwell;
            return true;
        }

        // both conditions to second order in the change of the liquid volume
        const double dp = l.p - v.p, dv = l.v - v.v;
        const double A = 0.5 * l.slope * (l.slope - v.slope);
        const double B = l.slope * (dp - v.slope * dv);
        const double C = B * B / (4.0 * A * A) - (v.slope * dv * (maxwell - l.p) + 0.5 * dp * dp) / A;
        double r = C <= 1e-10 ? 1e-6 * std::sqrt(std::fabs(C * 1e12)) : std::sqrt(std::fabs(C));
        if ((l.slope - v.slope) / v.slope < 0.0) r = -r;
        const double change = -B / (2.0 * A) + r;
        const double vaporChange = (dp + l.slope * change) / v.slope;
        l.v += change;
        v.v += vaporChange;

        if (l.v > s.vc) l.v = 0.9999 * s.vc;
        if (l.v < s.vmin) l.v = s.vmin;
        if (v.v < s.vc) v.v = 1.0001 * s.vc;
        if (v.v > s.vmax) v.v = s.vmax;
        if (s.theta < 0.9 && l.v > 1.2 * s.liquidStart) l.v = 0.5 * (s.vmin + s.liquidStart);
    }
    return false;
}

}  // namespace

void MAXWELL(int icomp, double T, double& p, double& rhol, double& rhov, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const PureSelection selection(icomp);
    const Composition x = unitComposition(icomp);
    RMIX(x);
    const FeqSlot& equation = feqTerms[icomp];
    const FluidConstants& fluid = fluidConstants;
    bool found = false;
    if (rhol > 0.0 && rhov > 0.0) {
        VolumePoint l, v;
        l.v = 1.0 / rhol;
        v.v = 1.0 / rhov;
        const double lowest = std::max(equation.TMINFEQ, fluid.TTPN[icomp]);
        VolumeSearch search{.T = T,
                            .theta = (T - lowest) / (equation.TCFEQ - lowest),
                            .x = x,
                            .vmin = 0.95 / fluid.DTPN[icomp],
                            .vmax = 1.2 * fluid.R * fluid.TTPN[icomp] / fluid.PTPN[icomp],
                            .vc = 1.0 / equation.RHOCFEQ,
                            .liquidStart = l.v,
                            .vaporStart = v.v};
        if (l.v < search.vmin) search.vmin = 0.95 * l.v;
        if (v.v > search.vmax) search.vmax = 1.05 * v.v;
        found = equalAreas(search, l, v, p);
        rhol = 1.0 / l.v;
        rhov = 1.0 / v.v;
    }
    if (!found) {
        p = rhol = rhov = -1.0;
        ierr = 1;
        message(herr, "[MAXWELL error] no convergence", nullCharacter);
        ERRMSG(ierr, herr);
    }
}

}  // namespace frigana
