#include <cmath>

#include "FluidConstants.h"
#include "MIX_HMX.h"
#include "ModelTags.h"
#include "TRNSP.h"
#include "TRNS_ECS.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {

namespace {

using PairMatrix = Array1<Array1<double, ncmax>, ncmax>;

double harmonicMean(double a, double b) {
    return 2.0 * a * b / (a + b);
}

// Components of a mixture that are present.
struct Present {
    int n = 0;
    Array1<int, ncmax> slot{};

    explicit Present(const Composition& x) {
        for (int i = 1; i <= modelTags.NC; ++i)
            if (x[i] > 0.0) slot[++n] = i;
    }
};

}  // namespace

double ETAMIX(double T, const Composition& x) {
    const Present present(x);
    const int n = present.n;
    const FluidConstants& fluid = fluidConstants;

    // Pairs: viscosity of a gas of the pair's molecules, and the 12-fold of what diffusion makes of it.
    PairMatrix viscosity, diffusion;
    for (int a = 1; a <= n; ++a) {
        for (int b = a; b <= n; ++b) {
            const int i = present.slot[a], j = present.slot[b];
            const EcsTransportSlot &si = ecsTransport[i], &sj = ecsTransport[j];
            double sigma = si.SIGTRN, epsilon = si.EPSKTR, mass = fluid.WMAS[i];
            if (a != b) {
                const MixingPair& pair = mixingParameters.pair[i][j];
                sigma = 0.5 * (si.SIGTRN + sj.SIGTRN) * (1.0 - pair.XLJS);
                epsilon = std::sqrt(si.EPSKTR * sj.EPSKTR) * (1.0 - pair.XLJE);
                mass = harmonicMean(fluid.WMAS[i], fluid.WMAS[j]);
            }
            if (sigma <= 0.0 || epsilon <= 0.0) return 0.0;
            const double reduced = T / epsilon, root = std::sqrt(mass * T) / (sigma * sigma);
            viscosity[a][b] = viscosity[b][a] = 0.026692 * root / OMEGAS(2, 2, reduced);
            diffusion[a][b] = diffusion[b][a] = 0.3203 * root / OMEGAS(1, 1, reduced);
        }
    }

    // Each component's share y: sum over j of A(i, j) y(j) = 1.
    SquareMatrix<ncmax> A;
    Array1<double, ncmax> y;
    for (int a = 1; a <= n; ++a) {
        const double Mi = fluid.WMAS[present.slot[a]];
        y[a] = 1.0;
        for (int b = 1; b <= n; ++b) A[a][b] = 0.0;
        for (int k = 1; k <= n; ++k) {
            const double Mk = fluid.WMAS[present.slot[k]];
            const double weight = 2.0 * x[present.slot[k]] * Mi * Mk / ((Mi + Mk) * (Mi + Mk));
            const double exchange = 20.0 / diffusion[a][k];
            A[a][a] += weight * (exchange + Mk / Mi / viscosity[a][k]);
            A[a][k] += weight * (1.0 / viscosity[a][k] - exchange);
        }
    }
    int ierr = 0;
    Text255 herr;
    LUDECOMP(n, A, y, ierr, herr);
    if (ierr != 0) return 0.0;

    // corrections of the pairs
    for (int a = 1; a <= n; ++a) {
        for (int b = 1; b <= n; ++b) {
            if (a == b) continue;
            const int i = present.slot[a], j = present.slot[b];
            const double d1 = mixingParameters.pair[i][j].XDIJ, d2 = mixingParameters.pair[i][j].XDIJ2;
            if (d1 == 0.0 && d2 == 0.0) continue;
            const double both = x[i] + x[j], w = x[i] / both;
            const double correction = 1.0 + w * (d1 + w * (d2 * w - (d1 + d2)));
            y[a] = y[a] * correction * both + y[a] * (1.0 - both);
        }
    }

    // Each share takes the ratio of the component's own dilute gas to that of the theory.
    double corrected = 0.0, plain = 0.0;
    bool own = true;
    for (int a = 1; a <= n; ++a) {
        const int i = present.slot[a];
        double eta0 = 0.0;
        ETAK0(i, T, eta0, ierr, herr);
        if (ierr != 0) own = false;
        plain += x[i] * y[a];
        corrected += x[i] * y[a] * eta0 / viscosity[a][a];
    }
    return own ? corrected : plain;
}

double TCKVIR(double T, double sigma, double epsilon, double ratio) {
    const double t = T / epsilon;
    return ((0.114 * t + 2.9749) / (t - 0.04953) - 0.625 * (ratio - 1.0)) / ratio * 1.26127336 * sigma * sigma * sigma;
}

void ENSKOG(int n, double T, double D, const Composition& x, const Composition& sigma, const Composition& mass,
            double& eta) {
    constexpr double pi = 3.14159265358979323846;
    const double number = 0.0006023 * D;  // molecules in a cube of 0.1 nm
    double packing = 0.0, surface = 0.0, volume = 0.0;
    for (int i = 1; i <= n; ++i) {
        surface += x[i] * sigma[i] * sigma[i];
        volume += x[i] * sigma[i] * sigma[i] * sigma[i];
    }
    packing = pi / 6.0 * number * volume;

    const auto diameter = [&](int i, int j) { return 0.5 * (sigma[i] + sigma[j]); };
    const auto contact = [&](int i, int j) {
        const double theta = sigma[i] * sigma[j] / (2.0 * diameter(i, j)) * surface / volume;
        const double free = 1.0 - packing;
        return 1.0 / free + 3.0 * packing * theta / (free * free) +
               2.0 * packing * packing * theta * theta / (free * free * free);
    };
    const auto dilute = [&](int i, int j) {
        const double s = diameter(i, j);
        return 2.6693 * std::sqrt(harmonicMean(mass[i], mass[j]) * T) / (s * s);
    };

    SquareMatrix<ncmax> B;
    Array1<double, ncmax> beta;
    Array1<double, ncmax> Y;
    double shear = 0.0;
    for (int i = 1; i <= n; ++i) {
        double collisions = 0.0;
        for (int j = 1; j <= n; ++j) {
            B[i][j] = 0.0;
            const double s = diameter(i, j), g = contact(i, j);
            collisions += x[j] * mass[j] / (mass[i] + mass[j]) * s * s * s * g;
            shear += x[i] * x[j] * s * s * s * s * s * s * dilute(i, j) * g;
        }
        for (int k = 1; k <= n; ++k) {
            const double side = mass[k] / (mass[i] + mass[k]);
            const double weight = 2.0 * x[i] * x[k] * contact(i, k) / dilute(i, k) * side * side;
            B[i][i] += weight * (1.0 + 5.0 / 3.0 * mass[i] / mass[k]);
            B[i][k] -= weight * 2.0 / 3.0 * mass[i] / mass[k];
        }
        Y[i] = x[i] * (1.0 + 8.0 * pi / 15.0 * number * collisions);
        beta[i] = Y[i];
    }
    int ierr = 0;
    Text255 herr;
    LUDECOMP(n, B, beta, ierr, herr);
    eta = 0.0;
    if (ierr != 0) return;
    for (int i = 1; i <= n; ++i) eta += beta[i] * Y[i];
    const double bulk = 2.0 * pi / 3.0 * number;
    eta += 48.0 / (25.0 * pi) * bulk * bulk * shear;
}

void DELHSV(double T, double D, const Composition& x, double& delta) {
    const FluidConstants& fluid = fluidConstants;
    const Present present(x);
    Composition fraction{}, sigma{}, mass{};
    constexpr double criticalVolumeRatio = 1.632233;  // of the critical volume to the cube of the diameter
    for (int a = 1; a <= present.n; ++a) {
        const int i = present.slot[a];
        fraction[a] = x[i];
        sigma[a] = std::cbrt(1000.0 / fluid.DCRIT[i] / criticalVolumeRatio);
        mass[a] = fluid.WMAS[i];
    }
    double mixture = 0.0, single = 0.0;
    ENSKOG(present.n, T, D, fraction, sigma, mass, mixture);

    // the equivalent fluid
    double cube = 0.0, root = 0.0;
    for (int a = 1; a <= present.n; ++a) {
        for (int b = 1; b <= present.n; ++b) {
            const double s = 0.5 * (sigma[a] + sigma[b]);
            const double weight = fraction[a] * fraction[b];
            cube += weight * s * s * s;
            root += weight * std::sqrt(harmonicMean(mass[a], mass[b])) * s * s * s * s;
        }
    }
    Composition one{}, oneSigma{}, oneMass{};
    one[1] = 1.0;
    oneSigma[1] = std::cbrt(cube);
    oneMass[1] = root * root / std::pow(oneSigma[1], 8.0);
    ENSKOG(1, T, D, one, oneSigma, oneMass, single);
    delta = mixture - single;
}

}  // namespace frigana
