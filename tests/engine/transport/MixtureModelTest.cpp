// The mixture model of extended corresponding states, its hard spheres and its enhancement, by the equations of the
// literature written out a second time.
//   Source    J. F. Ely, H. J. M. Hanley, Ind. Eng. Chem. Fundam. 20 (1981) 323 and 22 (1983) 90; M. L. Huber,
//             D. G. Friend, J. F. Ely, Fluid Phase Equilib. 80 (1992) 249
#include <cmath>

#include "DISPATCH.h"
#include "LIMITS.h"
#include "MIX_HMX.h"
#include "Transport.h"

namespace frigana::test {
namespace {

constexpr double pi = 3.14159265358979323846;

// Three fluids: two by correlations of their own, one under corresponding states.
class MixtureModel : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_LE(setUp({"R32", "R134A", "PROPANE"}), 0);
        // parameters of transport that all count and all differ
        double value = 0.01;
        for (int i = 1; i <= 3; ++i)
            for (int j = i + 1; j <= 3; ++j) {
                MixingPair& pair = mixingParameters.pair[i][j];
                pair.XKIJ = value += 0.01;
                pair.XLIJ = value += 0.01;
                pair.XKIJK = value += 0.01;
                pair.XLIJK = value += 0.01;
                mixingParameters.pair[j][i] = pair;
                mixingParameters.pair[i][j].XAJI = value += 0.01;
                mixingParameters.pair[j][i].XAJI = value += 0.01;
            }
    }
    void TearDown() override { modelTags.LFORCESETUP = true; }

    static Composition of(double first, double second) {
        Composition x{};
        x[1] = first;
        x[2] = second;
        x[3] = 1.0 - first - second;
        return x;
    }

    // Ratios of the mixture and of its components to the reference fluid.
    struct Ratios {
        double f = 0.0, h = 0.0;
        Composition F{}, H{};
    };
    static Ratios ratios(double T, double D, const Composition& x) {
        double tc = 0.0, pc = 0.0, dc = 0.0, tz = 0.0, rhoz = 0.0;
        int ierr = 0;
        Text255 herr;
        CRITP(x, tc, pc, dc, ierr, herr);
        REDX(x, tz, rhoz);
        const double A = PHIX(0, 0, tz / T, D / rhoz, x), Z = 1.0 + PHIX(0, 1, tz / T, D / rhoz, x);
        ConformalState reference, own;
        EXPECT_TRUE(conformalState(0, A, Z, tc, dc, T, D, reference));
        Ratios r;
        r.f = T / reference.T;
        r.h = reference.D / D;
        for (int i = 1; i <= 3; ++i) {
            EXPECT_TRUE(conformalState(i, A, Z, tc, dc, T, D, own));
            const double share = Z > 0.3 && T > tc ? std::fmin((T - tc) / (1000.0 - tc), 1.0) : 0.0;
            const double simpleT = T * fluidConstants.TCRIT[i] / tc, simpleD = D * fluidConstants.DCRIT[i] / dc;
            r.F[i] = ((1.0 - share) * own.T + share * simpleT) / reference.T;
            r.H[i] = reference.D * ((1.0 - share) / own.D + share / simpleD);
        }
        return r;
    }

    // Background of a component in its corresponding state, which its own limits hold.
    static double background(const char* property, int i, double T, double D, const Ratios& r) {
        const bool viscosity = std::string_view(property) == "ETA";
        double value = 0.0, dilute = 0.0;
        int ierr = 0;
        Text255 herr;
        if ((viscosity ? modelTags.HETA[i] : modelTags.HTCX[i]) == "ECS") {
            if (viscosity)
                ETABKP(i, T, D, r.F[i], r.f, r.H[i], r.h, value, ierr, herr);
            else
                TCBKP(i, T, D, r.F[i], r.f, r.H[i], r.h, value, ierr, herr);
            return value;
        }
        const FluidConstants& c = fluidConstants;
        double Ti = T * r.F[i] / r.f, Di = D * r.h / r.H[i];
        const double low = viscosity ? c.TMETA[i] : c.TMTCX[i], high = viscosity ? c.TXETA[i] : c.TXTCX[i];
        Ti = std::fmin(std::fmax(Ti, low), high);
        Di = std::fmin(Di, viscosity ? c.DXETA[i] : c.DXTCX[i]);
        if (viscosity) {
            ETAKB(i, Ti, Di, value, ierr, herr);
        } else {
            TCXKB(i, Ti, Di, value, ierr, herr);
            if (modelTags.HTCX[i] == "TC0") TCXKB(i, Ti, 0.0, dilute, ierr, herr);
        }
        return value - dilute;
    }

    // The background of the mixture from those of its components and of the reference fluid, whose effective mass is 1.
    static double combined(const Composition& x, const Ratios& r, const double (&own)[4], double reference,
                           double MixingPair::*k, double MixingPair::*l) {
        double sum = 0.0, apart = 0.0;
        double mass[4] = {};
        for (int i = 1; i <= 3; ++i) {
            mass[i] = std::pow(std::fmax(own[i], 1e-16) / reference * std::pow(r.H[i], 2.0 / 3.0), 2) / r.F[i];
            if (own[i] < 0.0) apart += x[i] * own[i] * std::pow(r.H[i] / r.h, 2);
        }
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j) {
                const MixingPair& pair = mixingParameters.pair[std::min(i, j)][std::max(i, j)];
                const double kij = i == j ? 0.0 : pair.*k, lij = i == j ? 0.0 : pair.*l;
                const double f = std::sqrt(r.F[i] * r.F[j]) * (1.0 - kij);
                const double h = std::pow(0.5 * (std::cbrt(r.H[i]) + std::cbrt(r.H[j])), 3) * (1.0 - lij);
                const double m = 2.0 / (1.0 / mass[i] + 1.0 / mass[j]);
                sum += x[i] * x[j] * std::sqrt(f * m) * std::pow(h, 4.0 / 3.0);
            }
        return apart + reference * sum / (r.h * r.h);
    }
};

struct State {
    double T, D;
};
// liquid, vapor, dense and thin above the critical temperature, and far above it
constexpr State states[] = {{270.0, 13.0}, {300.0, 0.3}, {420.0, 6.0}, {600.0, 2.0}, {1100.0, 0.3}};

TEST_F(MixtureModel, theViscosityIsThatOfItsEquations) {
    const Composition x = of(0.5, 0.3);
    for (const State& at : states) {
        double eta = 0.0, tcx = 0.0, reference = 0.0;
        int ierr = 0;
        Text255 herr;
        TRNECS(at.T, at.D, x, eta, tcx, ierr, herr);
        ASSERT_LE(ierr, 0) << words(herr);
        const Ratios r = ratios(at.T, at.D, x);
        ETAKB(0, at.T / r.f, at.D * r.h, reference, ierr, herr);
        double own[4] = {};
        for (int i = 1; i <= 3; ++i) own[i] = background("ETA", i, at.T, at.D, r);
        const double expected = ETAMIX(at.T, x) + combined(x, r, own, reference, &MixingPair::XKIJ, &MixingPair::XLIJ);
        EXPECT_NEAR(eta / expected, 1.0, 1e-9) << at.T << ' ' << at.D;
    }
}

// The dilute gas by A. Wassiljewa and E. A. Mason, S. C. Saxena, Phys. Fluids 1 (1958) 361.
TEST_F(MixtureModel, theConductivityIsThatOfItsEquations) {
    const Composition x = of(0.5, 0.3);
    const FluidConstants& c = fluidConstants;
    for (const State& at : states) {
        double eta = 0.0, whole = 0.0, tcx = 0.0, reference = 0.0;
        int ierr = 0;
        Text255 herr;
        TRNECS(at.T, at.D, x, eta, whole, ierr, herr);
        ASSERT_LE(ierr, 0) << words(herr);
        const Ratios r = ratios(at.T, at.D, x);
        TCXKB(0, at.T / r.f, at.D * r.h, reference, ierr, herr);
        double own[4] = {}, thin[4] = {}, gas[4] = {}, mixed = 0.0;
        for (int i = 1; i <= 3; ++i) {
            own[i] = background("TCX", i, at.T, at.D, r);
            ETAK0(i, at.T, thin[i], ierr, herr);
            if (modelTags.HTCX[i] == "ECS") {
                const double scaled = ETA0DG(i, at.T);
                gas[i] = scaled / c.WMAS[i] * (0.015 * 0.25 * c.R + FINT(i, at.T) * (CP0K(i, at.T) - 2.5 * c.R));
            } else {
                TCXK0(i, at.T, gas[i], ierr, herr);
            }
        }
        for (int i = 1; i <= 3; ++i) {
            double under = 0.0;
            for (int j = 1; j <= 3; ++j) {
                const double M = c.WMAS[i] / c.WMAS[j];
                const double phi =
                    std::pow(1.0 + std::sqrt(thin[i] / thin[j]) * std::pow(M, 0.25), 2) / std::sqrt(8.0 * (1.0 + M));
                under += x[j] * (i == j ? 1.0 : phi * (1.0 - mixingParameters.pair[i][j].XAJI));
            }
            mixed += x[i] * gas[i] / under;
        }
        const double expected = mixed + combined(x, r, own, reference, &MixingPair::XKIJK, &MixingPair::XLIJK);
        TCBKMX(at.T, at.D, x, r.f, r.h, r.F, r.H, tcx, ierr, herr);
        ASSERT_EQ(ierr, 0) << words(herr);
        EXPECT_NEAR(tcx / expected, 1.0, 1e-9) << at.T << ' ' << at.D;

        // the enhancement: that of the crossover, not more than the rest
        double enhancement = 0.0;
        viscosityOfTRNECS = eta;
        TCXM1C(x, at.T, at.D, enhancement, ierr, herr);
        EXPECT_NEAR(whole / (expected + std::fmin(enhancement, expected)), 1.0, 1e-9) << at.T << ' ' << at.D;
    }
}

// G. A. Olchowy, J. V. Sengers, Int. J. Thermophys. 10 (1989) 417, with the constants of the components by their
// fractions.
TEST_F(MixtureModel, theEnhancementIsThatOfTheCrossover) {
    const Composition x = of(0.5, 0.3);
    double tc = 0.0, pc = 0.0, dc = 0.0;
    int ierr = 0;
    Text255 herr;
    CRITP(x, tc, pc, dc, ierr, herr);
    double row[10] = {}, cutoff = 0.0, R = 0.0;
    for (int i = 1; i <= 3; ++i) {
        const ConductivitySlot& slot = conductivityTerms[i];
        const bool its = modelTags.HTCXCR[i] == "TK3";
        const EnhancementSection& s = its ? slot.enhancement : slot.correspondingStates;
        ASSERT_GT(s.CTCK[7].c, 0.0);
        for (int k = 1; k <= 9; ++k) row[k] += x[i] * s.CTCK[k - 1].c;
        cutoff += x[i] / s.CTCK[7].c;
        R += x[i] * fluidConstants.REOS[i];
    }
    const double eta = 20.0;
    viscosityOfTRNECS = eta;
    int positive = 0;
    for (const double T : {1.02 * tc, 1.2 * tc})
        for (const double D : {0.4 * dc, dc, 1.7 * dc}) {
            double slope = 0.0, far = 0.0, cv = 0.0, cp = 0.0, value = 0.0;
            DPDD(T, D, x, slope);
            DPDD(row[9], D, x, far);
            CVCP(T, D, x, cv, cp);
            const double chi = pc * D / (dc * dc) * (1.0 / slope - row[9] / (T * far));
            TCXM1C(x, T, D, value, ierr, herr);
            ASSERT_EQ(ierr, 0);
            if (chi <= 0.0) {
                EXPECT_EQ(value, 0.0);
                continue;
            }
            ++positive;
            const double length = row[6] * std::pow(chi / row[7], row[1] / row[2]), y = length * cutoff;
            const double omega = 2.0 / pi * ((1.0 - cv / cp) * std::atan(y) + cv / cp * y);
            const double omega0 = 2.0 / pi * -std::expm1(-1.0 / (1.0 / y + std::pow(y * dc / D, 2) / 3.0));
            // k = R/N; uPa s and mol/L give the factor 1e9
            const double expected =
                1e9 * D * cp * row[3] * R / 6.0221367e23 * T / (6.0 * pi * eta * length) * (omega - omega0);
            EXPECT_NEAR(value / expected, 1.0, 1e-10) << T << ' ' << D;
        }
    EXPECT_GE(positive, 4);
    double value = 1.0;
    TCXM1C(x, 1.02 * tc, 0.99e-6, value, ierr, herr);
    EXPECT_EQ(value, 0.0);
}

// From a fraction of 0.99 on the enhancement goes over, in a straight line, into that of the pure fluid.
TEST_F(MixtureModel, nearAPureFluidTheEnhancementGoesOverIntoItsOwn) {
    for (const int i : {1, 2, 3}) {
        const double T = 1.03 * fluidConstants.TCRIT[i], D = fluidConstants.DCRIT[i];
        for (const double share : {0.989, 0.992, 0.999}) {
            Composition x{};
            for (int j = 1; j <= 3; ++j) x[j] = j == i ? share : 0.5 * (1.0 - share);
            double eta = 0.0, whole = 0.0, rest = 0.0, mixed = 0.0, own = 0.0;
            int ierr = 0;
            Text255 herr;
            TRNECS(T, D, x, eta, whole, ierr, herr);
            ASSERT_EQ(ierr, 0) << words(herr);
            const Ratios r = ratios(T, D, x);
            TCBKMX(T, D, x, r.f, r.h, r.F, r.H, rest, ierr, herr);
            TCXM1C(x, T, D, mixed, ierr, herr);
            if (modelTags.HTCX[i] == "ECS")
                TCXM1C(unitComposition(i), T, D, own, ierr, herr);
            else
                TCXKC(i, T, D, own, ierr, herr);
            const double towards = std::fmax((share - 0.99) / 0.01, 0.0);
            EXPECT_NEAR(whole - rest, mixed + towards * (own - mixed), 1e-9 * whole) << i << ' ' << share;
            EXPECT_GT(std::fabs(own - mixed), 1e-5 * whole);
        }
    }
}

TEST_F(MixtureModel, theBackgroundUnderCorrespondingStatesEndsAtTheLimits) {
    const FluidConstants& c = fluidConstants;
    double tmin = 0.0, dmax = 0.0;
    const int i = 1, ref = -1;
    ECSLIM(i, ref, tmin, dmax);
    EXPECT_DOUBLE_EQ(tmin, std::fmax(c.TMECST[i], c.TMECST[ref] * c.TCRIT[i] / c.TCRIT[ref]));
    EXPECT_DOUBLE_EQ(dmax, std::fmin(c.DXECST[i], c.DXECST[ref] * c.DCRIT[i] / c.DCRIT[ref]));
    // the larger and the smaller, whichever of the two it is
    const double cold = c.TMECST[ref], dense = c.DXECST[ref];
    for (const double factor : {0.1, 10.0}) {
        fluidConstants.TMECST[ref] = factor * c.TMECST[i] * c.TCRIT[ref] / c.TCRIT[i];
        fluidConstants.DXECST[ref] = factor * c.DXECST[i] * c.DCRIT[ref] / c.DCRIT[i];
        double warm = 0.0, thin = 0.0;
        ECSLIM(i, ref, warm, thin);
        EXPECT_NEAR(warm / c.TMECST[i], std::fmax(factor, 1.0), 1e-12);
        EXPECT_NEAR(thin / c.DXECST[i], std::fmin(factor, 1.0), 1e-12);
    }
    fluidConstants.TMECST[ref] = cold;
    fluidConstants.DXECST[ref] = dense;

    using Background = void (*)(int, double, double, double, double, double, double, double&, int&, Text255&);
    for (const Background backgroundOf : {ETABKP, TCBKP}) {
        int ierr = 0;
        Text255 herr;
        // T f/fx and D hx/h
        const auto at = [&](double T, double D) {
            double value = 0.0;
            backgroundOf(i, T / 2.0, D / 3.0, 2.0, 1.0, 1.0, 3.0, value, ierr, herr);
            EXPECT_EQ(ierr, 0) << words(herr);
            return value;
        };
        const double value = at(280.0, 18.0);
        double same = 0.0;
        backgroundOf(i, 280.0, 18.0, 1.0, 1.0, 1.0, 1.0, same, ierr, herr);
        EXPECT_NEAR(value / same, 1.0, 1e-12);
        EXPECT_NEAR(at(0.7 * tmin, 0.95 * dmax) / at(tmin, 0.95 * dmax), 1.0, 1e-12);
        EXPECT_NEAR(at(280.0, 1.3 * dmax) / at(280.0, dmax), 1.0, 1e-12);
        EXPECT_GT(std::fabs(at(1.05 * tmin, 0.95 * dmax) / at(tmin, 0.95 * dmax) - 1.0), 1e-4);
        EXPECT_GT(std::fabs(at(280.0, 0.98 * dmax) / at(280.0, dmax) - 1.0), 1e-4);
    }
}

// A component and its reference fluid in conformal states, with shape factors that depend on both variables.
//   Source    M. L. Huber, A. Laesecke, R. A. Perkins, Ind. Eng. Chem. Res. 42 (2003) 3163
TEST_F(MixtureModel, aComponentIsScaledFromItsReferenceFluid) {
    const FluidConstants& c = fluidConstants;
    const int i = 1, ref = -1;
    EcsTransportSlot& slot = ecsTransport[i];
    slot.ILJFLAG = 1;  // a molecule of its own
    slot.NPSI1 = slot.NCHI1 = 2;
    slot.NPSI2 = slot.NCHI2 = 0;
    const double psi[2][4] = {{0.9, 0.0, 0.0, 0.0}, {0.05, 0.5, 1.0, 0.0}},
                 chi[2][4] = {{0.8, 0.0, 0.0, 0.0}, {0.07, 1.5, 0.5, 0.0}};
    for (int k = 0; k < 2; ++k)
        for (int j = 0; j < 4; ++j) {
            slot.CPSI[k][j] = psi[k][j];
            slot.CCHI[k][j] = chi[k][j];
        }
    // a background that is not zero at no density
    TransportTerm& first = conductivityTerms[ref].CTCX[conductivityTerms[ref].NDGNUM + conductivityTerms[ref].NDGDEN];
    const double kept = first.d;
    for (const State& at :
         {State{250.0, 21.0}, State{300.0, 19.0}, State{330.0, 1.0}, State{380.0, 10.0}, State{300.0, 0.0}}) {
        first.d = at.D > 0.0 ? kept : 0.0;
        double tz = 0.0, rhoz = 0.0;
        REDK(i, tz, rhoz);
        const double A = PHIK(i, 0, 0, tz / at.T, at.D / rhoz), Z = 1.0 + PHIK(i, 0, 1, tz / at.T, at.D / rhoz);
        ConformalState state;
        ASSERT_TRUE(conformalState(ref, A, Z, c.TCRIT[i], c.DCRIT[i], at.T, at.D, state));
        const double f = at.T / state.T, h = at.D > 0.0 ? state.D / at.D : c.DCRIT[ref] / c.DCRIT[i];
        const double m = c.WMAS[i] / c.WMAS[ref], Tr = at.T / c.TCRIT[i], Dr = at.D / c.DCRIT[i];
        double viscous = 0.0, conducting = 0.0, eta = 0.0, tcx = 0.0;
        int ierr = 0;
        Text255 herr;
        ETAKB(ref, state.T, at.D * h * (0.9 + 0.05 * std::sqrt(Tr) * Dr), viscous, ierr, herr);
        TCXKB(ref, state.T, at.D * h * (0.8 + 0.07 * std::pow(Tr, 1.5) * std::sqrt(Dr)), conducting, ierr, herr);
        viscous *= std::sqrt(f * m) * std::pow(h, -2.0 / 3.0);
        conducting *= std::sqrt(f / m) * std::pow(h, -2.0 / 3.0);

        // in the mixture, at a state that corresponds to this one
        ETABKP(i, 2.0 * at.T, 3.0 * at.D, 1.5, 3.0, 1.2, 0.4, eta, ierr, herr);
        EXPECT_EQ(ierr, 0) << words(herr);
        EXPECT_NEAR(eta, viscous, 1e-10 * viscous) << at.T << ' ' << at.D;
        TCBKP(i, 2.0 * at.T, 3.0 * at.D, 1.5, 3.0, 1.2, 0.4, tcx, ierr, herr);
        EXPECT_EQ(ierr, 0) << words(herr);
        EXPECT_NEAR(tcx, conducting, 1e-10 * std::fabs(conducting)) << at.T << ' ' << at.D;
        EXPECT_NE(tcx, 0.0);

        // alone, with its dilute gas
        const double dilute =
            0.026692 * std::sqrt(c.WMAS[i] * at.T) / (slot.SIGTRN * slot.SIGTRN * OMEGAS(2, 2, at.T / slot.EPSKTR));
        const double gas = dilute / c.WMAS[i] * (0.00375 * c.R + FINT(i, at.T) * (CP0K(i, at.T) - 2.5 * c.R));
        PTRNEC(i, at.T, at.D, eta, tcx, ierr, herr, ref);
        EXPECT_EQ(ierr, 0) << words(herr);
        EXPECT_NEAR(eta, dilute + viscous, 1e-10 * eta) << at.T << ' ' << at.D;
        EXPECT_NEAR(tcx, gas + conducting, 1e-10 * std::fabs(tcx)) << at.T << ' ' << at.D;
        viscosityByCorrespondingStates(i, at.T, at.D, tcx, ierr, herr);
        EXPECT_EQ(tcx, eta);
    }
    first.d = kept;
}

// Each part that has no model or no value has its code, and the other property stays.
TEST_F(MixtureModel, whatIsMissingIsTold) {
    const Composition x = of(0.5, 0.3);
    const auto at = [&](double T, double D) {
        TransportPoint point;
        Text255 herr;
        TRNECS(T, D, x, point.eta, point.tcx, point.ierr, herr);
        point.message = words(herr);
        return point;
    };
    const TransportPoint whole = at(300.0, 0.3);
    ASSERT_EQ(whole.ierr, 0) << whole.message;
    struct Row {
        SlotArray<Text3>& tags;
        int slot;
        const char* tag;
        int code;
        bool viscosity;  // stays
    };
    for (const Row& row : {Row{modelTags.HETA, 2, "VS9", 49, false},
                           {modelTags.HETA, 0, "VS9", -48, false},
                           {modelTags.HTCX, 2, "TC9", 39, true},
                           {modelTags.HTCX, 0, "TC9", 39, true}}) {
        const Text3 kept = row.tags[row.slot];
        row.tags[row.slot] = row.tag;
        const TransportPoint point = at(300.0, 0.3);
        row.tags[row.slot] = kept;
        EXPECT_EQ(point.ierr, row.code) << row.slot << ' ' << point.message;
        EXPECT_EQ(point.eta, row.viscosity ? whole.eta : notComputed) << row.slot << row.tag;
        if (row.viscosity) {
            EXPECT_EQ(point.tcx, notComputed) << row.slot << row.tag;
        } else {
            // the enhancement has the viscosity in it
            EXPECT_NEAR(point.tcx / whole.tcx, 1.0, 0.05) << row.slot << row.tag;
        }
    }
    EcsTransportSlot& molecule = ecsTransport[2];
    const EcsTransportSlot kept = molecule;
    molecule.ILJFLAG = 1;
    molecule.SIGTRN = 0.0;
    const TransportPoint thin = at(300.0, 0.3);
    molecule = kept;
    EXPECT_EQ(thin.ierr, -59);
    EXPECT_EQ(thin.message,
              "[TRNECS warning -59] the viscosity of the dilute gas is zero: it cannot scale that of the mixture");
    EXPECT_EQ(thin.eta, notComputed);

    const TransportPoint none = at(1100.0, 1.0);
    EXPECT_EQ(none.ierr, -58);
    EXPECT_EQ(none.message,
              "[TRNECS warning 58] 2-D Newton-Raphson method for conformal temperature and density did not converge "
              "for component  0");
    EXPECT_EQ(none.eta, notComputed);
    EXPECT_EQ(none.tcx, notComputed);

    double tmin = 0.0, tmax = 0.0, dmax = 0.0, pmax = 0.0;
    LIMITS("ETA", x, tmin, tmax, dmax, pmax);
    EXPECT_EQ(at(1.5 * tmax, 0.01).ierr, 0);
    EXPECT_EQ(at(std::nextafter(1.5 * tmax, 1e9), 0.01).ierr, -1);
}

TEST_F(MixtureModel, aPropertyOfAnotherModelIsNotComputed) {
    const Composition x = of(0.5, 0.3);
    const TransportPoint both = transport(300.0, 0.3, x);
    ASSERT_EQ(both.ierr, 0) << both.message;
    modelTags.HETATOP = "NUL";
    TransportPoint one = transport(300.0, 0.3, x);
    EXPECT_EQ(one.eta, notComputed);
    EXPECT_EQ(one.tcx, both.tcx);
    modelTags.HETATOP = "ECS";
    modelTags.HTCXTOP = "NUL";
    one = transport(300.0, 0.3, x);
    EXPECT_EQ(one.eta, both.eta);
    EXPECT_EQ(one.tcx, notComputed);
    modelTags.HTCXTOP = "ECS";
}

// The molecule of a component: its own, or that of the reference fluid by the ratio of the critical points or of the
// states.
TEST_F(MixtureModel, theMoleculesAreScaledAsTheirFlagsSay) {
    const Composition x = of(0.5, 0.3);
    const FluidConstants& c = fluidConstants;
    for (int i = 1; i <= 3; ++i) {
        ecsTransport[i].ILJFLAG = i - 1;
        ecsTransport[i].SIGTRN = 0.5;
        ecsTransport[i].EPSKTR = 300.0;
    }
    double eta = 0.0, tcx = 0.0;
    int ierr = 0;
    Text255 herr;
    TRNECS(270.0, 13.0, x, eta, tcx, ierr, herr);
    ASSERT_EQ(ierr, 0) << words(herr);
    const Ratios r = ratios(270.0, 13.0, x);
    const EcsTransportSlot& reference = ecsTransport[0];
    EXPECT_NEAR(ecsTransport[1].EPSKTR, reference.EPSKTR * c.TCRIT[1] / c.TCRIT[0], 1e-9);
    EXPECT_NEAR(ecsTransport[1].SIGTRN, reference.SIGTRN * std::cbrt(c.DCRIT[0] / c.DCRIT[1]), 1e-12);
    EXPECT_EQ(ecsTransport[2].EPSKTR, 300.0);
    EXPECT_EQ(ecsTransport[2].SIGTRN, 0.5);
    EXPECT_NEAR(ecsTransport[3].EPSKTR, reference.EPSKTR * r.F[3], 1e-9);
    EXPECT_NEAR(ecsTransport[3].SIGTRN, reference.SIGTRN * std::cbrt(r.H[3]), 1e-12);
}

// Within one call a result is kept, and given again for the same state only.
TEST_F(MixtureModel, aResultIsKeptForItsOwnStateOnly) {
    struct Asked {
        int icomp, ref;
        double T, D;
    };
    const Asked asked[] = {{1, -1, 300.0, 0.1}, {1, -1, 310.0, 0.1}, {1, -1, 310.0, 0.2}, {1, 0, 310.0, 0.2},
                           {2, 0, 310.0, 0.2},  {2, 0, 310.0, 0.2},  {1, -1, 300.0, 0.1}};
    const auto value = [](const Asked& a) {
        double eta = 0.0, tcx = 0.0;
        int ierr = 0;
        Text255 herr;
        PTRNEC(a.icomp, a.T, a.D, eta, tcx, ierr, herr, a.ref);
        EXPECT_EQ(ierr, 0) << words(herr);
        return eta;
    };
    for (int i = 1; i <= 3; ++i) ecsTransport[i].ILJFLAG = 1;
    std::vector<double> expected;
    for (const Asked& a : asked) expected.push_back(value(a));
    {
        const EcsMemory memory;
        for (std::size_t k = 0; k < expected.size(); ++k) EXPECT_EQ(value(asked[k]), expected[k]) << k;
        // kept: what has changed since does not show
        const double before = value(asked[0]);
        ecsTransport[1].SIGTRN *= 1.1;
        EXPECT_EQ(value(asked[0]), before);
    }
    EXPECT_NE(value(asked[0]), expected[0]);
    const EcsMemory next;
    EXPECT_NE(value(asked[0]), expected[0]);
}

// A gas of moderate density is scaled by the critical points: at most 0.3 of compressibility, 1.1 of the critical
// pressure or the critical density is no longer that.
TEST_F(MixtureModel, whatIsNoModerateGasIsSolvedFor) {
    const FluidConstants& c = fluidConstants;
    const double tc = 500.0, dc = 4.0;
    // by the temperature and the density that the scaling gives
    const auto scaled = [&](double T, double Z, double D) {
        ConformalState state;
        const bool found = conformalState(0, -0.01, Z, tc, dc, T * tc / c.TCRIT[0], D * dc / c.DCRIT[0], state);
        EXPECT_NEAR(state.simpleT, T, 1e-12 * T);
        EXPECT_NEAR(state.simpleD, D, 1e-12 * D);
        if (found && !state.newton) {
            EXPECT_EQ(state.T, state.simpleT);
            EXPECT_EQ(state.D, state.simpleD);
        }
        return found && !state.newton;
    };
    const double warm = 1.5 * c.TCRIT[0], thin = 0.01 * c.DCRIT[0];
    EXPECT_TRUE(scaled(warm, 0.3000001, thin));
    EXPECT_FALSE(scaled(warm, 0.3, thin));
    EXPECT_TRUE(scaled(warm, 0.3, 0.0));
    const double D = 0.2 * c.DCRIT[0], Z = 1.1 * c.PCRIT[0] / (c.R * warm * D);
    ASSERT_GT(Z, 0.5);
    EXPECT_TRUE(scaled(warm, Z * (1.0 - 1e-6), D));
    EXPECT_FALSE(scaled(warm, Z * (1.0 + 1e-6), D));
    const double cool = 0.8 * c.TCRIT[0];
    ASSERT_LT(0.31 * c.R * cool * c.DCRIT[0], c.PCRIT[0]);
    EXPECT_TRUE(scaled(cool, 0.31, 0.9999999 * c.DCRIT[0]));
    EXPECT_FALSE(scaled(cool, 0.31, 1.0000001 * c.DCRIT[0]));
}

// Two kinds of hard spheres, solved by Cramer's rule.
//   Source    J. F. Ely, J. Res. Natl. Bur. Stand. 86 (1981) 597
double twoKinds(double T, double D, const double (&x)[2], const double (&sigma)[2], const double (&mass)[2]) {
    const double n = 6.023e-4 * D;
    const double s2 = x[0] * sigma[0] * sigma[0] + x[1] * sigma[1] * sigma[1];
    const double s3 = x[0] * std::pow(sigma[0], 3) + x[1] * std::pow(sigma[1], 3), packing = pi / 6.0 * n * s3;
    double s[2][2], g[2][2], eta[2][2], dense = 0.0;
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 2; ++j) {
            s[i][j] = 0.5 * (sigma[i] + sigma[j]);
            const double theta = sigma[i] * sigma[j] / (sigma[i] + sigma[j]) * s2 / s3;
            const double part = packing * theta / (1.0 - packing);
            g[i][j] = (1.0 + 3.0 * part + 2.0 * part * part) / (1.0 - packing);
            eta[i][j] = 2.6693 * std::sqrt(2.0 * mass[i] * mass[j] / (mass[i] + mass[j]) * T) / std::pow(s[i][j], 2);
            dense += x[i] * x[j] * std::pow(s[i][j], 6) * eta[i][j] * g[i][j];
        }
    const double both = mass[0] + mass[1], like = x[0] * x[1] * g[0][1] / eta[0][1];
    double b[2][2], Y[2];
    for (int i = 0; i < 2; ++i) {
        const int k = 1 - i;
        const double side = mass[k] / both;
        b[i][i] =
            x[i] * x[i] * g[i][i] / eta[i][i] + 2.0 * like * side * side * (1.0 + 5.0 * mass[i] / (3.0 * mass[k]));
        b[i][k] = -4.0 / 3.0 * like * mass[0] * mass[1] / (both * both);
        Y[i] = x[i] *
               (1.0 + 8.0 * pi / 15.0 * n *
                          (0.5 * x[i] * std::pow(s[i][i], 3) * g[i][i] + x[k] * side * std::pow(s[i][k], 3) * g[i][k]));
    }
    const double determinant = b[0][0] * b[1][1] - b[0][1] * b[1][0];
    const double first = (Y[0] * b[1][1] - b[0][1] * Y[1]) / determinant;
    const double second = (b[0][0] * Y[1] - b[1][0] * Y[0]) / determinant;
    return first * Y[0] + second * Y[1] + 64.0 * pi / 75.0 * n * n * dense;
}

TEST_F(MixtureModel, hardSpheresOfTwoKindsFollowTheirEquations) {
    const FluidConstants& c = fluidConstants;
    for (const double D : {0.0, 2.0, 10.0, 16.0}) {
        Composition x{}, sigma{}, mass{};
        x[1] = 0.35;
        x[2] = 0.65;
        sigma[1] = 3.6;
        sigma[2] = 4.7;
        mass[1] = 44.0;
        mass[2] = 120.0;
        double value = 0.0;
        ENSKOG(2, 300.0, D, x, sigma, mass, value);
        EXPECT_NEAR(value / twoKinds(300.0, D, {0.35, 0.65}, {3.6, 4.7}, {44.0, 120.0}), 1.0, 1e-12) << D;

        // what a mixture of the first and third has more than the fluid that stands for it
        const double s1 = std::cbrt(1000.0 / c.DCRIT[1] / 1.632233), s3 = std::cbrt(1000.0 / c.DCRIT[3] / 1.632233);
        const double M1 = c.WMAS[1], M3 = c.WMAS[3], s13 = 0.5 * (s1 + s3), M13 = 2.0 * M1 * M3 / (M1 + M3);
        const double a = 0.4, b = 0.6;
        const double cube = a * a * s1 * s1 * s1 + 2.0 * a * b * s13 * s13 * s13 + b * b * s3 * s3 * s3;
        const double root = a * a * std::sqrt(M1) * std::pow(s1, 4) + 2.0 * a * b * std::sqrt(M13) * std::pow(s13, 4) +
                            b * b * std::sqrt(M3) * std::pow(s3, 4);
        const double one = std::cbrt(cube), heavy = root * root / std::pow(one, 8);
        double delta = 0.0;
        DELHSV(300.0, D, of(0.4, 0.0), delta);
        // one kind is two equal ones
        const double expected =
            twoKinds(300.0, D, {a, b}, {s1, s3}, {M1, M3}) - twoKinds(300.0, D, {0.5, 0.5}, {one, one}, {heavy, heavy});
        EXPECT_NEAR(delta, expected, 1e-10) << D;
    }
}

// Of three components: the correction of a pair counts with the fraction of both, and the rest is as before.
TEST_F(MixtureModel, aPairCorrectionOfTheDiluteGasCountsWithTheFractionOfThePair) {
    const Composition x = of(0.2, 0.3);
    const double plain = ETAMIX(300.0, x);
    const auto shareOf = [&](int i, int j, double d1, double d2) {
        MixingPair& pair = mixingParameters.pair[i][j];
        pair.XDIJ = d1;
        pair.XDIJ2 = d2;
        const double change = ETAMIX(300.0, x) - plain;
        pair.XDIJ = pair.XDIJ2 = 0.0;
        const double both = x[i] + x[j], w = x[i] / both;
        return change / (both * w * (d1 + w * (d2 * w - d1 - d2)));
    };
    double shares = 0.0;
    for (int i = 1; i <= 3; ++i) {
        const int j = i % 3 + 1, k = j % 3 + 1;
        const double share = shareOf(i, j, 0.1, 0.0);
        EXPECT_NEAR(shareOf(i, k, 0.2, 0.0), share, 1e-11 * plain) << i;
        EXPECT_NEAR(shareOf(i, k, 0.1, -0.3), share, 1e-11 * plain) << i;
        EXPECT_NEAR(shareOf(i, j, 0.0, 0.4), share, 1e-11 * plain) << i;
        shares += share;
    }
    EXPECT_NEAR(shares, plain, 1e-11 * plain);
}

}  // namespace
}  // namespace frigana::test
