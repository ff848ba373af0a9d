// Phase equilibrium in logarithmic variables.
#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "DISPATCH.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "PHIDERV.h"
#include "PROP_SUB.h"
#include "PROP_SUB_FUGACITY.h"
#include "ReferenceState.h"
#include "SAT_SUB_NEWTON.h"
#include "SAT_SUB_SPLINE.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {

void GETXY(const Composition& z, double vf, const Composition& philn, Composition& phi, Composition& x,
           Composition& y) {
    double sumX = 0.0, sumY = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        phi[i] = std::exp(philn[i]);
        const double denominator = 1.0 - vf + vf * phi[i];
        x[i] = std::fabs(denominator) <= 1e-10 || denominator >= 1e10 ? z[i] : z[i] / denominator;
        y[i] = x[i] * phi[i];
        sumX += x[i];
        sumY += y[i];
    }
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (sumX > 1e-10) x[i] /= sumX;
        if (sumY > 1e-10) y[i] /= sumY;
    }
}

void LGPHI(int mode, int& phase, double T, double& rho, double& p, const Composition& x, Composition& philn,
           double& dpdt, double& dpdd, double& dddt, double& cp, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    constexpr double failedRoot = 1e36;
    double Tc, Pc, Dc;
    CRITP(x, Tc, Pc, Dc, ierr, herr);
    if (ierr > 0) return;
    if (mode == 3) {
        PRESS(T, rho, x, p);
    } else if (phase != 0) {
        TPRHO(T, p, x, phase, rho > 0.0 ? 1 : 0, rho, ierr, herr);
        if (ierr > 0) TPRHO(T, p, x, 3 - phase, 0, rho, ierr, herr);
        if (ierr > 0) return;
        if (rho == 0.0) rho = 1e-20;
    } else {
        double gibbs[2], roots[2];
        for (int side = 1; side <= 2; ++side) {
            double root = 0.0, Ar;
            TPRHO(T, p, x, side, 0, root, ierr, herr);
            gibbs[side - 1] = failedRoot;
            roots[side - 1] = root;
            if (ierr <= 0) GIBBS(T, root, x, Ar, gibbs[side - 1]);
        }
        if (gibbs[0] == failedRoot && gibbs[1] == failedRoot) return;
        ierr = 0;
        herr.clear();
        rho = gibbs[0] < gibbs[1] ? roots[0] : roots[1];
    }
    if (rho < 0.0) rho = Dc + 1e-20;

    Therm2Result r;
    THERM2(T, rho, x, r);
    dpdt = r.dPdT;
    dpdd = r.dPdD;
    dddt = r.dDdT;
    cp = r.cp;
    const int nc = modelTags.NC;
    if (mode == 1) {
        Composition coefficient;
        FUGCOF(T, rho, x, coefficient, ierr, herr);
        if (ierr > 0) return;
        for (int i = 1; i <= nc; ++i)
            if (coefficient[i] > 0.0) philn[i] = std::log(coefficient[i]);
    } else {
        Composition dalpha, dnalpha;
        PHIDERV(pengRobinsonSelected() ? 1 : 2, T, rho, x, dalpha, dnalpha, ierr, herr);
        if (ierr > 0) return;
        // in the pressure unit MPa; the unit drops out of every difference of two phases
        const double unit = std::log(rho * fluidConstants.R * T / 1000.0);
        for (int i = 1; i <= nc; ++i)
            if (std::fabs(dnalpha[i]) < 100.0) philn[i] = unit + dnalpha[i];
    }
    double curvature = 0.0;
    if (r.dPdT != 0.0 && r.dPdD != 0.0) curvature = 2.0 - rho * (r.d2PdTD / r.dPdT - r.d2PdD2 / r.dPdD);
    phase = curvature > 1.0 || rho > 2.0 * Dc ? 1 : 2;
}

namespace {

constexpr int largestEquations = 50;

// What is known of one phase in an iteration.
struct PhaseState {
    Composition philn{};
    double dpdt = 0, dpdd = 0, dddt = 0, cp = 0;
    double entropy = 0;
    CompositionDerivatives derivatives;
};

// The phases keep their place from call to call where the densities do not decide.
int xPhase = 1, yPhase = 2;

enum Property { givenPressure = 0, givenTemperature = 1, givenEntropy = 5, givenDensity = 6 };

struct Equilibrium {
    double &T, &P;
    const Composition& z;
    const double vf, b;
    const int ipv, ityp;
    double &rhox, &rhoy;
    Composition &x, &y;
    int nc, n;
    Array1<double, largestEquations> VRB, VRB0, F, step;
    SquareMatrix<largestEquations> XJACOB;
    PhaseState px, py;

    bool present(int i) const { return z[i] > 0.0; }
    double meanDensity() const { return vf * rhoy + (1.0 - vf) * rhox; }
};

// Entropies of a phase per amount of each component, n ds/dn(i) at constant T and p being their distance from s.
void partialEntropies(double T, const Composition& x, const CompositionDerivatives& c, Composition& partial) {
    constexpr double unitDensity = 1.0;
    const double R = fluidConstants.R;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (x[i] <= 0.0) continue;
        const double ideal =
            R * (PHI0K(i, 1, 0, T, unitDensity) - PHI0K(i, 0, 0, T, unitDensity)) - referenceState.SREF[i];
        partial[i] = ideal - R * (c.XLNFI[i] - std::log(unitDensity * R * T)) - R * T * c.DPHIDT[i];
    }
}

// Derivatives of one phase's ln(f/x) and of its pressure in the iteration's variables.
struct PhaseSlopes {
    Composition inT, inDriver;        // T d/dT; P d/dP (ipv 1) or rho d/drho (ipv 2)
    ComponentArray<Composition> inX;  // [j][i] n d/dn(j)
};
void slopesOf(const Equilibrium& e, const PhaseState& s, const Composition& fractions, double rho, PhaseSlopes& d) {
    const CompositionDerivatives& c = s.derivatives;
    double meanR = 0.0;
    for (int i = 1; i <= e.nc; ++i) meanR += fractions[i] * fluidConstants.REOS[i];
    for (int i = 1; i <= e.nc; ++i) {
        if (!e.present(i)) continue;
        d.inT[i] = e.T * (e.ipv == 1 ? c.DPHIDT[i] : c.DLNFINIDT[i]);
        d.inDriver[i] = e.ipv == 1 ? e.P * c.DPHIDP[i] : -c.DLNFINIDV[i] / rho;
        for (int j = 1; j <= e.nc; ++j) {
            if (!e.present(j)) continue;
            // at constant density the volume grows with the amount
            d.inX[j][i] =
                e.ipv == 1 ? c.DPHIDNJ[j][i] : c.D2ADNN[j][i] + c.DLNFINIDV[i] / rho + fluidConstants.REOS[j] / meanR;
        }
    }
}
double pressureInX(const Equilibrium& e, const PhaseState& s, const Composition& fractions, int j) {
    double mean = 0.0;
    for (int k = 1; k <= e.nc; ++k)
        if (e.present(k)) mean += fractions[k] * s.derivatives.DPDXI[k];
    return s.derivatives.DPDXI[j] - mean;
}

// A relative residual, or the difference where the value asked for is too close to 0 to divide by.
double scaleOf(double wanted) {
    return std::fabs(wanted) < 1e-3 ? 1.0 : wanted;
}

// Entropy of the phases and its derivatives: row n of the Jacobian.
void entropyRow(Equilibrium& e, double wanted) {
    const int nc = e.nc;
    auto& row = e.XJACOB[e.n];
    const double scale = scaleOf(wanted);
    double mean = 0.0;
    for (int side = 0; side < 2; ++side) {
        const bool isY = side == 1;
        const double share = isY ? e.vf : 1.0 - e.vf;
        const PhaseState& s = isY ? e.py : e.px;
        const Composition& fractions = isY ? e.y : e.x;
        const double rho = isY ? e.rhoy : e.rhox;
        mean += share * s.entropy;
        if (share == 0.0) continue;
        Composition partial;
        RMIX(fractions);
        partialEntropies(e.T, fractions, s.derivatives, partial);
        const double atP = s.cp;                         // T (ds/dT) at constant p
        const double inPressure = s.dddt / (rho * rho);  // ds/dp at constant T
        const double inDensity = -s.dpdt / (rho * rho);  // ds/drho at constant T
        for (int j = 1; j <= nc; ++j) {
            if (!e.present(j)) continue;
            const double dFraction = (isY ? 1.0 - e.vf : -e.vf) * e.x[j] * e.y[j] / e.z[j];
            double inX = partial[j] - s.entropy;
            if (e.ipv == 2) inX += inPressure * pressureInX(e, s, fractions, j);
            row[j] += share * inX * dFraction / scale;
        }
        if (e.ipv == 1) {
            row[nc + 1] += share * atP / scale;
            row[nc + 2] += share * inPressure * e.P / scale;
        } else {
            row[nc + 1] += share * (atP + e.T * inPressure * s.dpdt) / scale;
            row[nc + (isY ? 3 : 2)] += share * inDensity * rho / scale;
        }
    }
    e.F[e.n] = (mean - wanted) / scale;
}

void densityRow(Equilibrium& e, double wanted) {
    const int nc = e.nc;
    auto& row = e.XJACOB[e.n];
    const double scale = scaleOf(wanted);
    const bool isY = e.vf > 0.5;  // one phase alone has a part in the density here
    const double rho = isY ? e.rhoy : e.rhox;
    const PhaseState& s = isY ? e.py : e.px;
    e.F[e.n] = (std::log(rho) - wanted) / scale;
    if (e.ipv == 1) {
        row[nc + 1] = e.T * s.dddt / rho / scale;
        row[nc + 2] = e.P / s.dpdd / rho / scale;
    } else {
        row[nc + (isY ? 3 : 2)] = 1.0 / scale;
    }
}

// Residuals and Jacobian; the derivatives of both phases are known.
void equations(Equilibrium& e, double wanted, double Px, double Py) {
    const int nc = e.nc, n = e.n;
    auto& J = e.XJACOB;
    for (int i = 1; i <= n; ++i) {
        e.F[i] = 0.0;
        for (int j = 1; j <= n; ++j) J[i][j] = 0.0;
    }
    PhaseSlopes sx, sy;
    slopesOf(e, e.px, e.x, e.rhox, sx);
    slopesOf(e, e.py, e.y, e.rhoy, sy);
    for (int i = 1; i <= nc; ++i) {
        J[i][i] = 1.0;
        if (!e.present(i)) continue;
        e.F[i] = e.py.philn[i] - e.px.philn[i] + e.VRB[i];
        for (int j = 1; j <= nc; ++j) {
            if (!e.present(j)) continue;
            const double share = e.x[j] * e.y[j] / e.z[j];
            J[i][j] += (sy.inX[j][i] * (1.0 - e.vf) + sx.inX[j][i] * e.vf) * share;
        }
        J[i][nc + 1] = sy.inT[i] - sx.inT[i];
        if (e.ipv == 1) {
            J[i][nc + 2] = sy.inDriver[i] - sx.inDriver[i];
        } else {
            J[i][nc + 2] = -sx.inDriver[i];
            J[i][nc + 3] = sy.inDriver[i];
        }
        // material balance
        const double K = std::exp(e.VRB[i]), denominator = 1.0 - e.vf + e.vf * K;
        e.F[nc + 1] += e.z[i] * (K - 1.0) / denominator;
        J[nc + 1][i] = e.z[i] * K / (denominator * denominator);
    }
    constexpr double pressureUnit = 1000.0;
    if (e.ipv == 2) {
        auto& row = J[nc + 2];
        e.F[nc + 2] = (Px - Py) / pressureUnit;
        for (int j = 1; j <= nc; ++j) {
            if (!e.present(j)) continue;
            const double share = e.x[j] * e.y[j] / e.z[j];
            row[j] = (-e.vf * pressureInX(e, e.px, e.x, j) - (1.0 - e.vf) * pressureInX(e, e.py, e.y, j)) * share /
                     pressureUnit;
        }
        row[nc + 1] = e.T * (e.px.dpdt - e.py.dpdt) / pressureUnit;
        row[nc + 2] = e.rhox * e.px.dpdd / pressureUnit;
        row[nc + 3] = -e.rhoy * e.py.dpdd / pressureUnit;
    }
    auto& row = J[n];
    switch (e.ityp) {
        case givenPressure:
            if (e.ipv == 1) {
                const double scale = scaleOf(wanted);
                e.F[n] = (e.VRB[nc + 2] - wanted) / scale;
                row[nc + 2] = 1.0 / scale;
            } else {
                e.F[n] = (wanted - (e.vf * Py + (1.0 - e.vf) * Px)) / pressureUnit;
                for (int j = 1; j <= nc; ++j) {
                    if (!e.present(j)) continue;
                    const double share = e.x[j] * e.y[j] / e.z[j] * e.vf * (1.0 - e.vf);
                    row[j] = -(pressureInX(e, e.py, e.y, j) - pressureInX(e, e.px, e.x, j)) * share / pressureUnit;
                }
                row[nc + 1] = -e.T * (e.vf * e.py.dpdt + (1.0 - e.vf) * e.px.dpdt) / pressureUnit;
                row[nc + 2] = -(1.0 - e.vf) * e.rhox * e.px.dpdd / pressureUnit;
                row[nc + 3] = -e.vf * e.rhoy * e.py.dpdd / pressureUnit;
            }
            break;
        case givenTemperature: {
            const double scale = scaleOf(wanted);
            e.F[n] = (e.VRB[nc + 1] - wanted) / scale;
            row[nc + 1] = 1.0 / scale;
            break;
        }
        case givenEntropy:
            entropyRow(e, wanted);
            break;
        default:
            densityRow(e, wanted);
    }
}

void printValues(Text255& herr, std::string_view heading, const Array1<double, largestEquations>& values, int count) {
    message(herr, heading);
    int at = static_cast<int>(heading.size());
    for (int i = 1; i <= count && at + 12 < Text255::size; ++i) {
        FixedText<11> number;
        message(number, FixedPoint{11, 4, values[i]});
        herr.assign(at + 1, at + 11, number.view());
        at += 11;
    }
    herr[std::min(at + 1, Text255::size)] = '\0';
}

// Takes the variables apart; false for values out of bounds.
bool unpack(Equilibrium& e, int& ierr, Text255& herr) {
    const int nc = e.nc;
    for (int i = 1; i <= nc; ++i)
        if (e.present(i) && !(std::fabs(e.VRB[i]) <= 100.0)) {
            ierr = 72;
            message(herr, "[SATGV error ", Integer{2, ierr}, "] ln(", Integer{1, i},
                    ") value too high: ", FixedPoint{11, 4, e.VRB[i]}, nullCharacter);
            return false;
        }
    e.T = std::exp(e.VRB[nc + 1]);
    if (e.ipv == 1) {
        e.P = std::exp(e.VRB[nc + 2]);
    } else {
        e.rhox = std::exp(e.VRB[nc + 2]);
        e.rhoy = std::exp(e.VRB[nc + 3]);
    }
    if (!(e.T <= 2000.0 && e.T >= 2.0) || (e.ipv == 1 && !(e.P <= 500000.0))) {
        ierr = 73;
        message(herr, "[SATGV error ", Integer{2, ierr},
                "] Pressure or Temperature outside bounds.  Pressure = ", FixedPoint{11, 4, e.P},
                " Temperature = ", FixedPoint{11, 4, e.T}, nullCharacter);
        return false;
    }
    if (e.ipv == 2 && !(e.rhox <= 100.0 && e.rhoy <= 100.0)) {
        ierr = 77;
        message(herr, "[SATGV error ", Integer{2, ierr},
                "] Density outside bounds.  Density = ", FixedPoint{11, 4, std::max(e.rhox, e.rhoy)},
                " Temperature = ", FixedPoint{11, 4, e.T}, nullCharacter);
        return false;
    }
    return true;
}

// A step with densities as variables must not throw pressure or temperature far away.
void holdStep(Equilibrium& e) {
    constexpr double lowP = static_cast<double>(0.01f), highP = 100.0;
    constexpr double lowT = static_cast<double>(0.9f), highT = static_cast<double>(1.1f);
    const int nc = e.nc;
    double before = 0.0;
    PRESS(e.T, e.rhoy, e.y, before);
    for (int halving = 1; halving <= 10; ++halving) {
        const double Tnew = std::exp(e.VRB[nc + 1]), rhoNew = std::exp(e.VRB[nc + 3]);
        double after = 0.0;
        PRESS(Tnew, rhoNew, e.y, after);
        const bool inside =
            after >= lowP * before && after <= highP * before && Tnew >= lowT * e.T && Tnew <= highT * e.T;
        if (inside) return;
        for (int i = 1; i <= e.n; ++i) e.VRB[i] = e.VRB0[i] + 0.5 * (e.VRB[i] - e.VRB0[i]);
    }
}

// Densities of both phases at the solution, where they followed from the pressure.
void finalDensities(Equilibrium& e, int& ierr, Text255& herr) {
    const auto density = [&](const Composition& fractions, int phase, double& rho) {
        TPRHO(e.T, e.P, fractions, phase, 1, rho, ierr, herr);
        if (ierr > 0) TPRHO(e.T, e.P, fractions, 3 - phase, 0, rho, ierr, herr);
    };
    density(e.x, xPhase, e.rhox);
    if (ierr <= 0) density(e.y, yPhase, e.rhoy);
}

// Starts from the envelope splines.
void splineStart(Equilibrium& e) {
    const int nc = e.nc;
    int code = 0;
    Text255 text;
    double D0 = e.vf == 0.0 ? 0.9 * SPLNVAL(0, -2, e.T, code, text) : 0.1;
    if (e.ityp == givenPressure) SPLNROOT(nc + 2, 0, e.b, D0, code, text);
    if (e.ityp == givenTemperature) SPLNROOT(nc + 1, 0, e.b, D0, code, text);
    if (e.ityp == givenEntropy) SPLNROOT(nc + 5, 0, e.b, D0, code, text);
    if (e.ityp == givenDensity) D0 = e.b;
    const double T = SPLNVAL(nc + 1, 0, D0, code, text);
    if (code != 0) return;
    e.T = T;
    e.P = SPLNVAL(nc + 2, 0, D0, code, text);
    const double other = SPLNVAL(nc + 3, 0, D0, code, text);
    const bool liquidFeed = e.vf == 0.0;
    Composition& incipient = liquidFeed ? e.y : e.x;
    Composition& parent = liquidFeed ? e.x : e.y;
    (liquidFeed ? e.rhox : e.rhoy) = D0;
    (liquidFeed ? e.rhoy : e.rhox) = other;
    double sum = 0.0, sumParent = 0.0;
    for (int i = 1; i <= nc; ++i) {
        double fraction = SPLNVAL(i, 0, D0, code, text);
        if (fraction < 1e-100) fraction = 0.0;
        incipient[i] = fraction;
        parent[i] = e.z[i];
        sum += fraction;
        sumParent += parent[i];
    }
    if (sum <= 1e-10) incipient = parent;
    if (sumParent <= 1e-10) parent = incipient;
}

void choosePhases(const Equilibrium& e) {
    double Tc, Pc, Dc;
    int code = 0;
    Text255 text;
    CRITP(e.vf == 0.0 ? e.x : e.y, Tc, Pc, Dc, code, text);
    if (e.rhox > 2.0 * Dc || e.rhoy < 0.1) xPhase = 1;
    if (e.rhoy > 2.0 * Dc || e.rhox < 0.1) yPhase = 1;
    if (e.rhox < Dc / 5.0) xPhase = 2;
    if (e.rhoy < Dc / 5.0) yPhase = 2;
}

bool checkInput(const Equilibrium& e, int& ierr, Text255& herr) {
    if (e.vf < 0.0 || e.vf > 1.0) {
        ierr = 80;
        message(herr, "[SATGV error 80] vf greater than 1 or less than 0", nullCharacter);
        return false;
    }
    double sum = 0.0;
    for (int i = 1; i <= e.nc; ++i) sum += e.z[i];
    if (std::fabs(sum - 1.0) >= 1e-8) {
        ierr = 81;
        message(herr, "[SATGV error 81] Sum of feed composition not equal to 1.0", nullCharacter);
        return false;
    }
    if (e.rhox <= 0.0 || e.rhoy <= 0.0) {
        ierr = 82;
        message(herr, "[SATGV error 82] Input density less than or equal to 0.0", nullCharacter);
        return false;
    }
    return true;
}

}  // namespace

void SATGV(double& T, double& P, const Composition& z, double vf, double b, int ipv, int ityp, int isp, double& rhox,
           double& rhoy, Composition& x, Composition& y, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const Composition feed = z, xBefore = x, yBefore = y;
    const int nc = modelTags.NC;
    Equilibrium e{T,  P,  feed, vf, b,  ipv, ityp, rhox, rhoy, x, y, nc, ipv == 1 ? nc + 2 : nc + 3,
                  {}, {}, {},   {}, {}, {},  {}};
    const int n = e.n;
    const auto fail = [&]() {
        ERRMSG(ierr, herr);
        x = xBefore;
        y = yBefore;
    };
    if (saturationSpline.SPLINEREADY && isp != 0) splineStart(e);
    if (!checkInput(e, ierr, herr)) return fail();
    if (ityp == givenDensity && vf > 0.0 && vf < 1.0) {
        ierr = 81;
        message(herr, "SATGV not set up for vf>0 and vf<1 with ityp=6", nullCharacter);
        return fail();
    }
    if (pengRobinsonSelected()) {
        ierr = 99;
        message(herr, "Derivatives not yet available for PR", nullCharacter);
        return fail();
    }
    choosePhases(e);

    for (int i = 1; i <= nc; ++i) e.VRB[i] = x[i] > 0.0 && y[i] > 0.0 ? std::log(y[i] / x[i]) : 1.0;
    e.VRB[nc + 1] = std::log(ityp == givenTemperature ? b : T);
    if (ipv == 1) {
        e.VRB[nc + 2] = std::log(ityp == givenPressure ? b : P);
    } else {
        e.VRB[nc + 2] = std::log(rhox);
        e.VRB[nc + 3] = std::log(rhoy);
    }
    double wanted = b;
    if (ityp == givenTemperature || ityp == givenDensity || (ityp == givenPressure && ipv == 1)) wanted = std::log(b);

    constexpr int mostPasses = 20;
    double meanSquare = 0.0;
    const int mode = ipv == 1 ? 2 : 3;
    Composition K;
    for (int pass = 1; pass <= mostPasses; ++pass) {
        if (!unpack(e, ierr, herr)) return fail();
        Composition philn{};
        for (int i = 1; i <= nc; ++i) philn[i] = e.VRB[i];
        GETXY(feed, vf, philn, K, x, y);
        double Px = P, Py = P;
        LGPHI(mode, xPhase, T, rhox, Px, x, e.px.philn, e.px.dpdt, e.px.dpdd, e.px.dddt, e.px.cp, ierr, herr);
        if (ierr > 0) return;
        e.px.derivatives = compositionDerivatives;
        LGPHI(mode, yPhase, T, rhoy, Py, y, e.py.philn, e.py.dpdt, e.py.dpdd, e.py.dddt, e.py.cp, ierr, herr);
        if (ierr > 0) return;
        e.py.derivatives = compositionDerivatives;
        if (ityp == givenEntropy) {
            ENTRO(T, rhox, x, e.px.entropy);
            ENTRO(T, rhoy, y, e.py.entropy);
        }
        equations(e, wanted, Px, Py);

        bool trivial = true;
        for (int i = 1; i <= nc; ++i) trivial = trivial && (!e.present(i) || std::fabs(e.VRB[i]) <= 1e-6);
        if (trivial) {
            ierr = 74;
            printValues(herr, "[SATGV error 74] Trivial solution.  ln(ki) = ", e.VRB, nc);
            return fail();
        }
        for (int i = 1; i <= n; ++i) e.step[i] = -e.F[i];
        int code = 0;
        Text255 text;
        LUDECOMP(n, e.XJACOB, e.step, code, text);
        meanSquare = 0.0;
        e.VRB0 = e.VRB;
        for (int i = 1; i <= n; ++i) {
            e.VRB[i] += e.step[i];
            meanSquare += e.step[i] * e.step[i] / n;
        }
        if (code > 0 || !std::isfinite(meanSquare)) {
            meanSquare = 1e30;
            break;
        }
        if (ipv == 2) holdStep(e);
        if (pass == 1 || meanSquare > 1e-12) continue;

        if (!unpack(e, ierr, herr)) return fail();
        if (ityp == givenTemperature) T = b;
        if (ityp == givenPressure) P = b;
        for (int i = 1; i <= nc; ++i) philn[i] = e.VRB[i];
        GETXY(feed, vf, philn, K, x, y);
        if (ipv == 1) {
            finalDensities(e, ierr, herr);
            if (ierr > 0) return fail();
            ierr = 0;
        } else if (ityp != givenPressure) {
            PRESS(T, rhox, x, Px);
            PRESS(T, rhoy, y, Py);
            P = 0.5 * (Px + Py);
        }
        for (int i = 1; i <= nc + 1; ++i)
            if (!(std::fabs(e.F[i]) <= 1e-5)) {
                ierr = 75;
                FixedText<80> heading;
                message(heading, "[SATGV error ", Integer{2, ierr}, "] Converged in ", Integer{2, pass},
                        " iterations.  But F < acceptable. ");
                printValues(herr, heading.view().substr(0, 66), e.F, nc + 1);
                return fail();
            }
        if (xPhase == 2 && yPhase == 2) {
            ierr = 76;
            message(herr, "[SATGV error 76] False roots. ixphase=iyphase=2", nullCharacter);
            return fail();
        }
        return;
    }
    ierr = 71;
    message(herr, "[SATGV error ", Integer{2, ierr}, "] Routine did not converge in ", Integer{2, mostPasses},
            " iterations.  Sum = ", FixedPoint{11, 4, meanSquare}, nullCharacter);
    fail();
}

}  // namespace frigana
