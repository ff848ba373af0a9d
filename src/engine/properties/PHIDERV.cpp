#include "PHIDERV.h"

#include <cmath>

#include "CORE_PR.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ReducedState.h"

namespace frigana {

CompositionDerivatives compositionDerivatives;

namespace {

void cubicDerivatives(const ReducedState& state, const Composition& x, Composition& dalpha, Composition& dnalpha,
                      int& ierr, Text255& herr) {
    if (PHIPRX(fillCompositionDerivatives, 0, state.tau, state.del, x) != -1.0) {
        ierr = 1;
        message(herr, "[PHIDERV error 1] composition derivatives of the Peng-Robinson model are not available",
                nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    const double a00 = state.residual(0, 0);
    for (int i = 1; i <= modelTags.NC; ++i) {
        dnalpha[i] = prCompositionDerivatives[i];
        dalpha[i] = dnalpha[i] - a00;
    }
}

// Orders (itau, idel) that the second derivatives need; the first three serve the first ones.
constexpr int orderCount = 6;
constexpr DepartureOrder orders[orderCount] = {{0, 0}, {0, 1}, {1, 0}, {0, 2}, {1, 1}, {2, 0}};
enum Order { o00, o01, o10, o02, o11, o20 };

// phi of the mixture and d(phi)/dx(i) at constant tau and del, with their derivatives in tau and del.
struct MixtureEnergy {
    int count = 0;              // components of a fraction above 0
    Array1<int, ncmax> member;  // their numbers
    double a[orderCount];       // tau^itau del^idel d(phi)
    double partial[ncmax + 1][orderCount];
    double mean[orderCount];            // sum x(k) partial(k)
    double pair[ncmax + 1][ncmax + 1];  // d2(phi)/dx(i)dx(j)

    MixtureEnergy(int iderv, double tau, double del, const Composition& x) {
        const int used = iderv > 1 ? orderCount : 3;
        for (int i = 1; i <= modelTags.NC; ++i)
            if (x[i] > 0.0) member[++count] = i;
        for (int o = 0; o < used; ++o) a[o] = 0.0;
        for (int m = 1; m <= count; ++m)
            for (int o = 0; o < used; ++o) {
                const int i = member[m];
                partial[i][o] = PHIK(i, orders[o].itau, orders[o].idel, tau, del);
                a[o] += x[i] * partial[i][o];
            }
        for (int m = 1; m <= count; ++m) {
            const int i = member[m];
            pair[i][i] = 0.0;
            for (int n = m + 1; n <= count; ++n) {
                const int j = member[n];
                pair[i][j] = pair[j][i] = 0.0;
                double departure[orderCount];
                if (!departuresOfPair(i, j, std::span(orders, static_cast<std::size_t>(used)), tau, del, departure))
                    continue;
                pair[i][j] = pair[j][i] = departure[o00];
                const double xi = x[i], xj = x[j], xixj = xi * xj;
                for (int o = 0; o < used; ++o) {
                    a[o] += xixj * departure[o];
                    partial[i][o] += xj * departure[o];
                    partial[j][o] += xi * departure[o];
                }
            }
        }
        for (int o = 0; o < used; ++o) {
            mean[o] = 0.0;
            for (int m = 1; m <= count; ++m) mean[o] += x[member[m]] * partial[member[m]][o];
        }
    }
};

// Relative derivatives of the reducing values, Tr and v = 1/Dr, and what the mean over the fractions leaves of them.
struct RelativeReducing {
    ReducingDerivatives r;
    Composition t, w;  // (dTr/dx(i)) / Tr, (dv/dx(i)) / v
    Composition T, D;  // the same less the mean, n d ln Tr / dn(i) and n d ln v / dn(i)

    RelativeReducing(int iderv, const MixtureEnergy& e, const Composition& x, int& ierr, Text255& herr) {
        reducingDerivatives(iderv, x, r, ierr, herr);
        if (ierr != 0) return;
        double meanT = 0.0, meanW = 0.0;
        for (int m = 1; m <= e.count; ++m) {
            const int i = e.member[m];
            t[i] = r.dT[i] / r.Tr;
            w[i] = r.dV[i] / r.vr;
            meanT += x[i] * t[i];
            meanW += x[i] * w[i];
        }
        for (int m = 1; m <= e.count; ++m) {
            const int i = e.member[m];
            T[i] = t[i] - meanT;
            D[i] = w[i] - meanW;
        }
    }
};

// Second derivatives. With A(i) = DNADN(i):
//   ln f(i) = ln x(i) + ln(rho R T) + A(i),  p = rho R T (1 + a01)
void secondDerivatives(double t, double rho, const Composition& x, const MixtureEnergy& e, const RelativeReducing& g) {
    CompositionDerivatives& c = compositionDerivatives;
    const double R = fluidConstants.R, pressureUnit = rho * R * t;
    const double dpd = 1.0 + 2.0 * e.a[o01] + e.a[o02], dpt = 1.0 + e.a[o01] - e.a[o11];
    c.dPdD = R * t * dpd;
    c.dPdT = R * rho * dpt;

    // means over the fractions of the second derivatives, less what the first index takes with it
    Composition meanPartial, meanTT, meanVV;
    for (int m = 1; m <= e.count; ++m) {
        const int j = e.member[m];
        double partial = 0.0, T = 0.0, V = 0.0;
        for (int n = 1; n <= e.count; ++n) {
            const int k = e.member[n];
            partial += x[k] * e.pair[k][j];
            T += x[k] * g.r.d2T[k][j];
            V += x[k] * g.r.d2V[k][j];
        }
        meanPartial[j] = partial;
        meanTT[j] = T / g.r.Tr;
        meanVV[j] = V / g.r.vr;
    }

    Composition A_rho, pressure_x;  // rho dA(i)/drho; (dp/dx(j)) / (rho R T)
    for (int m = 1; m <= e.count; ++m) {
        const int i = e.member[m];
        A_rho[i] =
            e.a[o01] + (e.a[o01] + e.a[o02]) * (1.0 + g.D[i]) + e.a[o11] * g.T[i] + e.partial[i][o01] - e.mean[o01];
        const double A_tau =
            e.a[o10] + e.a[o11] * (1.0 + g.D[i]) + (e.a[o10] + e.a[o20]) * g.T[i] + e.partial[i][o10] - e.mean[o10];
        pressure_x[i] = fluidConstants.REOS[i] / R * (1.0 + e.a[o01]) + e.a[o11] * g.t[i] +
                        (e.a[o01] + e.a[o02]) * g.w[i] + e.partial[i][o01];
        c.DPDXI[i] = pressureUnit * pressure_x[i];
        c.DLNFINIDT[i] = (1.0 - A_tau) / t;
        c.DLNFINIDV[i] = -rho * (1.0 + A_rho[i]);
        c.DPHIDP[i] = (1.0 + A_rho[i]) / (dpd * pressureUnit);
        c.DPHIDT[i] = c.DLNFINIDT[i] - (1.0 + A_rho[i]) * dpt / dpd / t;
    }

    for (int m = 1; m <= e.count; ++m) {
        const int j = e.member[m];
        const double tj = g.t[j], wj = g.w[j];
        // derivatives in x(j) at constant temperature and density, tau and del going along
        const double d_a = e.a[o10] * tj + e.a[o01] * wj + e.partial[j][o00];
        const double d_a01 = e.a[o11] * tj + (e.a[o01] + e.a[o02]) * wj + e.partial[j][o01];
        const double d_a10 = (e.a[o10] + e.a[o20]) * tj + e.a[o11] * wj + e.partial[j][o10];
        const double d_mean = e.partial[j][o00] + e.mean[o10] * tj + e.mean[o01] * wj + meanPartial[j];
        const double gasConstant = fluidConstants.REOS[j] / R;
        for (int n = 1; n <= e.count; ++n) {
            const int i = e.member[n];
            const double d_D = g.r.d2V[i][j] / g.r.vr - wj - meanVV[j] - g.D[i] * wj;
            const double d_T = g.r.d2T[i][j] / g.r.Tr - tj - meanTT[j] - g.T[i] * tj;
            const double d_partial = e.partial[i][o10] * tj + e.partial[i][o01] * wj + e.pair[i][j];
            const double A_x =
                d_a + d_a01 * (1.0 + g.D[i]) + e.a[o01] * d_D + d_a10 * g.T[i] + e.a[o10] * d_T + d_partial - d_mean;
            c.D2ADNN[j][i] = A_x;
            c.DLNPHIIDXJ[j][i] = A_x + gasConstant - (1.0 + A_rho[i]) * pressure_x[j] / dpd;
            c.DPHIDXJ[j][i] = c.DLNPHIIDXJ[j][i] + (i == j ? 1.0 / x[i] : 0.0);
        }
    }
    // from fractions to amounts: n d/dn(j) = d/dx(j) - sum x(k) d/dx(k), at constant volume with rho d/drho
    for (int n = 1; n <= e.count; ++n) {
        const int i = e.member[n];
        double meanA = 0.0, meanPhi = 0.0;
        for (int m = 1; m <= e.count; ++m) {
            const int k = e.member[m];
            meanA += x[k] * c.D2ADNN[k][i];
            meanPhi += x[k] * c.DLNPHIIDXJ[k][i];
        }
        for (int m = 1; m <= e.count; ++m) {
            const int j = e.member[m];
            c.D2ADNN[j][i] += A_rho[i] - meanA;
            c.DPHIDNJ[j][i] = c.DLNPHIIDXJ[j][i] - meanPhi;
        }
    }
}

}  // namespace

void PHIDERV(int iderv, double t, double rho, const Composition& x, Composition& dalpha, Composition& dnalpha,
             int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    dalpha.fill(0.0);
    dnalpha.fill(0.0);
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    if (state.pure > 0) {
        const double a00 = state.residual(0, 0), a01 = state.residual(0, 1);
        dalpha[state.pure] = a01;
        dnalpha[state.pure] = a00 + a01;
        return;
    }
    if (modelTags.HEOS != "HMX" && (iderv > 1 || !pengRobinsonSelected())) {
        ierr = 191;
        message(herr, "[RDXHMX error 191] Derivative not available", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    if (pengRobinsonSelected()) return cubicDerivatives(state, x, dalpha, dnalpha, ierr, herr);

    const MixtureEnergy e(iderv, state.tau, state.del, x);
    const RelativeReducing g(iderv, e, x, ierr, herr);
    if (ierr > 0) return;
    // rounding may leave the pressure of a cold liquid a trifle below zero
    constexpr double rounding = 1e-7;
    if (e.a[o01] <= -1.0 - rounding) {
        ierr = 1;
        message(herr, "[PHIDERV error 1] pressure is not positive", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }

    CompositionDerivatives& c = compositionDerivatives;
    const double pressureUnit = rho * fluidConstants.R * t;
    c.p = pressureUnit * (1.0 + e.a[o01]);
    const double lnUnit = std::log(pressureUnit);
    for (int m = 1; m <= e.count; ++m) {
        const int i = e.member[m];
        dalpha[i] = e.a[o01] * (1.0 + g.D[i]) + e.a[o10] * g.T[i] + e.partial[i][o00] - e.mean[o00];
        dnalpha[i] = e.a[o00] + dalpha[i];
        c.DADN[i] = dalpha[i];
        c.DNADN[i] = dnalpha[i];
        c.XLNFI[i] = std::log(x[i]) + lnUnit + dnalpha[i];
    }
    if (iderv > 1) secondDerivatives(t, rho, x, e, g);
}

}  // namespace frigana
