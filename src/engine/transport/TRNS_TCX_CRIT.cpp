#include <algorithm>
#include <cmath>

#include "DISPATCH.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "TPRHO.h"
#include "TRNSP.h"
#include "TRNS_ECS.h"
#include "TRNS_TCX.h"
#include "TRNS_VIS.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr double leastDensity = 1e-6;  // [mol/L] below it there is no enhancement
constexpr double pi = 3.14159265358979323846;

// Viscosity of a component; 0 where there is none.
double viscosityOf(int icomp, double T, double D) {
    double eta = 0.0;
    int ierr = 0;
    Text255 herr;
    ETAK(icomp, T, D, eta, ierr, herr);
    if (ierr == 0) return eta;
    viscosityByCorrespondingStates(icomp, T, D, eta, ierr, herr);
    return ierr == 0 ? eta : 0.0;
}

}  // namespace

// ------------------------------------------------------------------------------------------- TK1, TK2, TK4

double TCX1CR(int icomp, double T, double D) {
    const EnhancementSection& s = conductivityTerms[icomp].enhancement;
    const auto reducedTemperature = [T](double reducing) { return reducing > 0.0 ? T / reducing : -reducing / T; };
    const auto withDensity = [](double factor, double del, double shift, double exponent) {
        return std::fabs(del) <= 1e-12 && std::fabs(exponent) <= 1e-12 ? factor : factor * power(del + shift, exponent);
    };
    double value = 0.0;
    const EnhancementTerm* row = s.CTCK;
    if (s.NNUMTCK + s.NDENTCK > 0) {
        const double tau = reducedTemperature(s.TRTCK), del = D / s.DRTCK;
        double over = 0.0, under = 0.0;
        for (const EnhancementTerm* end = row + s.NNUMTCK; row != end; ++row)
            over += withDensity(row->c * power(tau + row->a, row->b), del, row->e, row->f);
        for (const EnhancementTerm* end = row + s.NDENTCK; row != end; ++row) {
            constexpr int largerOfTwo = 99;
            const double base = row->i == largerOfTwo ? std::max(tau, row->a - tau) : tau + row->a;
            under += row->c * power(base, row->b) * power(del + row->e, row->f);
        }
        value = s.NDENTCK > 0 ? over / under : over;
    }
    if (s.NEXPTCK > 0) {
        const double tau = reducedTemperature(s.TREDEX), del = D / s.DREDEX;
        double E = 0.0;
        for (const EnhancementTerm* end = row + s.NEXPTCK; row != end; ++row)
            E += withDensity(row->c * power(tau + row->a, row->b), del, row->e, row->f);
        value = E < -500.0 ? 0.0 : value * std::exp(E);
    }
    return value * s.TCXRED;
}

namespace {

struct CriticalScale {
    double T, p, D;
};
struct ClosedForm {
    double c, g1, g2, b1, b2, g3, m;
};

// Common algebra of TCX2CR and TCX4CR with the viscosity left out.
double closedEnhancement(const ClosedForm& k, const CriticalScale& ref, double T, double D, double dpdD, double dpdT,
                         bool rawNegative) {
    double f = ref.p * D / (ref.D * ref.D * dpdD);
    if (f > 0.0)
        f = std::pow(f, k.c);
    else if (!rawNegative)
        f = 0.0;
    const double slope = T * dpdT * ref.D / D;
    const double A = k.g1 * k.g2 / ref.p * slope * slope * f;
    const double d = (D - ref.D) / ref.D, t = std::fabs(T - ref.T) / ref.T;
    const double B = k.b1 * power(t, k.m) + k.b2 * d * d * d * d;
    const double factor = B > 500.0 ? 7.124576406741286e-218 : std::exp(-B);
    return A * factor / (18.849555924 * k.g3);
}

}  // namespace

double TCX2CR(int icomp, double T, double D) {
    if (D < leastDensity) return 0.0;
    const FluidConstants& fluid = fluidConstants;
    const FromOne<TransportTerm> c{conductivityTerms[icomp].CTCX};
    double tz = 0.0, rhoz = 0.0;
    REDK(icomp, tz, rhoz);
    const double tau = tz / T, del = D / rhoz;
    const double a01 = PHIK(icomp, 0, 1, tau, del), a02 = PHIK(icomp, 0, 2, tau, del),
                 a11 = PHIK(icomp, 1, 1, tau, del);
    constexpr double PaInKPa = 1000.0;
    const double dpdD = PaInKPa * fluid.R * T * (1.0 + 2.0 * a01 + a02);
    const double dpdT = PaInKPa * fluid.R * D * (1.0 + a01 - a11);

    const double spread = c[22].c - std::log(T / c[23].c);
    const double a = c[24].c + c[25].c / T;
    const double s = std::sqrt(D) * (D - fluid.DCRIT[icomp]) / fluid.DCRIT[icomp];
    const double eta = (c[3].c * std::sqrt(T) / (OMEGA(icomp, T, c[2].c, modelTags.HMDTCX[icomp]) * c[1].c * c[1].c) +
                        D * (c[20].c + c[21].c * spread * spread) +
                        std::exp(a + (c[26].c + c[27].c / (T * std::sqrt(T))) * std::pow(D, 0.1) +
                                 (c[28].c + c[29].c / T + c[30].c / (T * T)) * s) -
                        std::exp(a)) *
                       1e-6;
    const ClosedForm k{c[16].c, c[17].c, c[19].c, c[14].c, c[15].c, c[18].c, 4.0};
    const CriticalScale ref{fluid.TCRIT[icomp], fluid.PCRIT[icomp] * PaInKPa, fluid.DCRIT[icomp]};
    return closedEnhancement(k, ref, T, D, dpdD, dpdT, false) / eta;
}

double TCX4CR(int icomp, double T, double D) {
    if (D < leastDensity) return 0.0;
    const EnhancementSection& s = conductivityTerms[icomp].enhancement;
    const FromOne<EnhancementTerm> c{s.CTCK};
    double dpdD = 0.0, dpdT = 0.0;
    DPDDK(icomp, T, D, dpdD);
    DPDTK(icomp, T, D, dpdT);
    const ClosedForm k{c[3].c, c[1].c, c[2].c, c[4].c, c[5].c, c[6].c, 2.0};
    const double eta = viscosityOf(icomp, T, D);
    return 1e21 * closedEnhancement(k, {s.TRTCK, s.PRTCK, s.DRTCK}, T, D, dpdD, dpdT, true) / eta * s.TCXRED;
}

// --------------------------------------------------------------------------------------- TK3 and TK6: crossover

namespace {

struct Crossover {
    double nu, gamma, R0, xi0, Gamma;
    double qd;    // cutoff wave number [1/m]
    double Tref;  // [K]
};

Crossover crossoverRows(const EnhancementSection& s) {
    const FromOne<EnhancementTerm> c{s.CTCK};
    return {c[1].c, c[2].c, c[3].c, c[6].c, c[7].c, c[8].c, c[9].c};
}

// Susceptibility above its value at the reference temperature; not positive: no enhancement.
double susceptibility(double pc, double dc, double T, double Tref, double D, double slope, double slopeRef) {
    return pc / (dc * dc) * D * (1.0 / slope - Tref / T / slopeRef);
}

// From the heat capacities, the viscosity [uPa s] and the susceptibility X.
double crossoverValue(const Crossover& k, double X, double R, double dc, double T, double D, double cp, double cv,
                      double eta) {
    if (eta <= 1e-16) return 0.0;
    const double xi = k.xi0 * std::pow(X / k.Gamma, k.nu / k.gamma);
    const double y = xi * k.qd;
    const double ratio = dc / D;
    const double Omega = 2.0 / pi * ((cp - cv) / cp * std::atan(y) + cv / cp * y);
    const double Omega0 = 2.0 / pi * (1.0 - std::exp(-1.0 / (1.0 / y + y * y * ratio * ratio / 3.0)));
    const double boltzmann = R / 6.0221367e+23;
    return D * 1e9 * cp * k.R0 * boltzmann * T / pi / (6.0 * eta * xi) * (Omega - Omega0);
}

constexpr std::string_view waterNumber = "7732-18-5";

}  // namespace

double TCX3CR(int icomp, double T, double D) {
    const EnhancementSection& s = conductivityTerms[icomp].enhancement;
    Crossover k = crossoverRows(s);
    if (T > k.Tref || D < leastDensity || k.qd == 0.0) return 0.0;
    k.qd = 1.0 / k.qd;
    if (fluidFiles.HCAS[icomp] == waterNumber) return TCCR_2010(T, D, k.qd);

    double M, ttriple, tboil, tc, pc, dc, Zc, acentric, dipole, R;
    INFO(icomp, M, ttriple, tboil, tc, pc, dc, Zc, acentric, dipole, R);
    double slope = 0.0, slopeRef = 0.0, cv = 0.0, cp = 0.0;
    DPDDK(icomp, T, D, slope);
    DPDDK(icomp, k.Tref, D, slopeRef);
    const double X = susceptibility(pc, dc, T, k.Tref, D, slope, slopeRef);
    if (X <= 0.0) return 0.0;
    CVCPK(icomp, T, D, cv, cp);
    return crossoverValue(k, X, R, dc, T, D, cp, cv, viscosityOf(icomp, T, D)) * s.TCXRED;
}

namespace {

// Parameters of a component: those of its own correlation, those under corresponding states, or universal ones.
Crossover crossoverOf(int i) {
    const ConductivitySlot& slot = conductivityTerms[i];
    if (modelTags.HTCXCR[i] == "TK3") {
        Crossover k = crossoverRows(slot.enhancement);
        if (k.qd > 0.0) {
            k.qd = 1.0 / k.qd;
            return k;
        }
    } else if (modelTags.HTCXCRECS[i] == "TK6" && slot.correspondingStates.NNUMTCK > 0) {
        Crossover k = crossoverRows(slot.correspondingStates);
        k.qd = 1.0 / (k.qd <= 0.0 ? 5e-10 : k.qd);
        return k;
    }
    return {0.63, 1.239, 1.03, 1.94e-10, 0.0496, 1999999999.9999998, 1.5 * fluidConstants.TCRIT[i]};
}

}  // namespace

void TCXM1C(const Composition& x, double T, double D, double& tcx, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    tcx = 0.0;
    if (D < leastDensity) return;
    const FluidConstants& fluid = fluidConstants;
    int pure = 0;
    ISPURE(x, pure);

    Crossover k{};
    double tc = 0.0, pc = 0.0, dc = 0.0, R = 0.0;
    if (pure > 0) {
        k = crossoverOf(pure);
        R = fluid.REOS[pure];
        tc = fluid.TCRIT[pure];
        pc = fluid.PCRIT[pure];
        dc = fluid.DCRIT[pure];
        if (std::fabs(T - tc) < 1e-20 && std::fabs(D - dc) < 1e-20) {
            ierr = -60;
            message(herr, "[TCXM1C error", Integer{3, ierr},
                    "] pure fluid is exactly at the critical point; thermal conductivity is infinite", nullCharacter);
            ERRMSG(ierr, herr);
        }
    } else {
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (x[i] <= 0.0) continue;
            const Crossover own = crossoverOf(i);
            k.nu += x[i] * own.nu;
            k.gamma += x[i] * own.gamma;
            k.R0 += x[i] * own.R0;
            k.xi0 += x[i] * own.xi0;
            k.Gamma += x[i] * own.Gamma;
            k.qd += x[i] * own.qd;
            k.Tref += x[i] * own.Tref;
            R += x[i] * fluid.REOS[i];
        }
        int status = 0;
        Text255 text;
        CRITP(x, tc, pc, dc, status, text);
        if (status > 0) {
            ierr = status;
            herr = text;
            return;
        }
    }

    double slope = 0.0, slopeRef = 0.0, cv = 0.0, cp = 0.0, eta = viscosityOfTRNECS;
    if (pure > 0) {
        DPDDK(pure, T, D, slope);
        DPDDK(pure, k.Tref, D, slopeRef);
    } else {
        DPDD(T, D, x, slope);
        DPDD(k.Tref, D, x, slopeRef);
    }
    const double X = susceptibility(pc, dc, T, k.Tref, D, slope, slopeRef);
    if (!(X > 0.0)) return;
    if (pure > 0) {
        CVCPK(pure, T, D, cv, cp);
        if (modelTags.HETA[pure] != "ECS") {
            int status = 0;
            Text255 text;
            ETAK(pure, T, D, eta, status, text);
        }
    } else {
        CVCP(T, D, x, cv, cp);
    }
    tcx = crossoverValue(k, X, R, dc, T, D, cp, cv, eta);
}

double TCCR_2010(double T, double D, double qd) {
    if (D < leastDensity) return 0.0;
    int icomp = 1;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (fluidFiles.HCAS[i] == waterNumber) icomp = i;
    const double xi = XI_FUN(icomp, T, D);
    if (xi <= 0.0) return 0.0;
    constexpr double M = 18.015268, Rm = 0.46151805;  // [g/mol], [kJ/(kg K)]
    const double Tr = T / 647.096, rho = D * M / 322.0;
    double p, e, h, s, cv, cp, w, jt;
    THERM(T, D, unitComposition(icomp), p, e, h, s, cv, cp, w, jt);
    const double heat = cp / M / Rm, kappa = cp / cv;
    const double y = qd * xi;
    const double rho2 = rho * rho;
    double Z = 0.0;
    if (xi <= 1.5e-12) {
        // The difference below would lose all digits.
        const double third = 1.0 / (3.0 * rho2);
        Z = 2.0 / pi *
            (y / 2.0 + y * y * (1.0 / (3.0 * kappa) - 0.5) + y * y * y * (third + 1.0 / 24.0) -
             y * y * y * y * (third + 1.0 / (5.0 * kappa) - 0.025) +
             y * y * y * y * y * (0.5 * third + 0.003703703703703704));
    } else {
        const double F = 2.0 / pi * ((1.0 - 1.0 / kappa) * std::atan(y) + y / kappa);
        const double F0 = 2.0 / pi * (1.0 - std::exp(-1.0 / (1.0 / y + y * y / (3.0 * rho2))));
        Z = (F - F0) / y;
    }
    const double eta = viscosityOf(icomp, T, D);
    return eta > 0.0 ? 0.001 * 177.8514 * rho * heat * Tr * Z / eta : 0.0;
}

// ------------------------------------------------------------------------------------------- ammonia, methane

double TCCNH3(int icomp, double T, double D) {
    constexpr double Tc = 405.4;
    const double rho = D * fluidConstants.WMAS[icomp];
    const double e = std::fabs(T - Tc) / Tc;
    double inner = e;
    if (T > 404.4 && T < 406.5 && (D < 9.6 || D > 18.0)) inner = static_cast<double>(0.002f);
    const double eta = 1e-5 * (1.6 * e + 2.6);
    const double dpdt = 1e5 * (2.18 - 0.12 / std::exp(17.8 * e));
    double A = 1e20, B = -1e20;
    if (std::fabs(inner) >= 1e-20) {
        A = 1.656792e-23 * T * T * dpdt * dpdt * (4.23e-9 / std::pow(inner, 1.24)) * (1.0 + 1.429 * std::sqrt(e)) /
            (18.84954071044922 * eta * (1.34e-10 / std::pow(inner, 0.63)) * (1.0 + std::sqrt(e))) *
            std::exp(-36.0 * e * e);
        B = 16.5 * std::log(inner) + 143.35;
    }
    if (D / fluidConstants.DCRIT[icomp] < 0.6) return A * B * B / (B * B + 7157.159999999999) * rho * rho / 19881.0;
    return A * B * B / (B * B + (rho - 225.6) * (rho - 225.6));
}

double TCCCH4(int icomp, double T, double D) {
    const FluidConstants& fluid = fluidConstants;
    const double Tc = fluid.TCRIT[icomp], Dc = fluid.DCRIT[icomp], R = fluid.REOS[icomp];
    const double tau = Tc / T, del = D / Dc;
    double dpdT = 0.0, dpdD = 0.0;
    DPDTK(icomp, T, D, dpdT);
    DPDDK(icomp, T, D, dpdD);
    const double PT = std::fabs(D) <= 1e-12 ? 1.0 : dpdT / (R * D);
    const double PD = dpdD / (R * T);
    double G = 0.28631 * del * tau / PD;
    if (G < 0.0) G = 100000.0;
    const double dT = std::fabs((Tc - T) / Tc), dD = (Dc - D) / Dc;
    const double eta = viscosityOf(icomp, T, D);
    return 0.001 * 91.855 / (eta * tau * tau) * PT * PT * std::pow(G, 0.4681) *
           std::exp(-(2.646 * std::sqrt(dT) + 2.678 * dD * dD - 0.637 * dD));
}

}  // namespace frigana
