#include "TRNS_ECS.h"

#include <algorithm>
#include <cmath>

#include "DISPATCH.h"
#include "FluidConstants.h"
#include "LIMITS.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ModelTags.h"
#include "TPRHO.h"
#include "TRNSP.h"
#include "TRNS_ECS_STATE.h"
#include "TRNS_TCX.h"
#include "TransportSection.h"
#include "UTILITY.h"

namespace frigana {

SlotArray<EcsTransportSlot> ecsTransport;
double viscosityOfTRNECS = 0.0;

// -------------------------------------------------------------------------------------------------------- reader

namespace {

bool readRows(SectionReader& in, double (*rows)[4], int n) {
    for (int k = 0; k < n; ++k)
        if (!in.numbers("row of the shape factor", rows[k], 4)) return false;
    return true;
}

bool readShape(SectionReader& in, int& n1, int& n2, int& n3, double (*rows)[4]) {
    return in.line("three numbers of terms", n1, n2, n3) && in.count("number of terms", n1, largestShapeTerms) &&
           in.count("number of terms", n2, largestShapeTerms - n1) && readRows(in, rows, n1 + n2);
}

// The file name behind the tag, without a remark.
void referenceName(const Text255& line, Text255& name) {
    std::string_view text = line.slice(4, Text255::size);
    text = text.substr(0, text.find('!'));
    const auto first = text.find_first_not_of(" \t");
    name.assign(first == std::string_view::npos ? std::string_view{} : trimRight(text.substr(first)));
}

}  // namespace

void SETTRN(int nread, int icomp, const Text12& hcas, Text255& href, Text3& heos, Text3& hvs, Text3& htc, int& ierr,
            Text255& herr) {
    SectionReader in("SETTRN", nread, hcas, ierr, herr);
    FluidConstants& fluid = fluidConstants;
    href.clear();
    ecsTransport[icomp] = {};
    EcsTransportSlot s{};
    Text255 line;
    if (!in.limits(fluid.TMECST[icomp], fluid.TXECST[icomp], fluid.PXECST[icomp], fluid.DXECST[icomp]) ||
        !in.text("reference fluid", line) || !in.tag("viscosity model of the reference fluid", hvs) ||
        !in.tag("conductivity model of the reference fluid", htc) || !in.line("Lennard-Jones flag", s.ILJFLAG) ||
        !in.line("sigma", s.SIGTRN) || !in.line("epsilon", s.EPSKTR))
        return;
    constexpr double versionWithFactor = 6.0009;
    if (fluid.VERFL[icomp] >= versionWithFactor &&
        (!in.line("number of terms", s.NEUCK) || !in.count("number of terms", s.NEUCK, largestShapeTerms) ||
         !readRows(in, s.CEUCK, s.NEUCK)))
        return;
    if (!readShape(in, s.NPSI1, s.NPSI2, s.NPSI3, s.CPSI) || !readShape(in, s.NCHI1, s.NCHI2, s.NCHI3, s.CCHI) ||
        !in.tag("critical enhancement", modelTags.HTCXCRECS[icomp]))
        return;
    ecsTransport[icomp] = s;
    heos.assign(line.slice(1, 3));
    referenceName(line, href);
}

// -------------------------------------------------------------------------------------------- dilute gas and shape

double OMEGAS(int i, int j, double tstar) {
    if (i == 1 && j == 1)
        return 1.06036 / std::pow(tstar, 0.1561) + 0.193 * std::exp(-0.47635 * tstar) +
               1.03587 * std::exp(-1.52996 * tstar) + 1.76474 * std::exp(-3.89411 * tstar);
    return 1.16145 / std::pow(tstar, 0.14874) + 0.52487 * std::exp(-0.7732 * tstar) +
           2.16178 * std::exp(-2.43787 * tstar);
}

double ETA0DG(int icomp, double T) {
    const double sigma = ecsTransport[icomp].SIGTRN, epsilon = ecsTransport[icomp].EPSKTR;
    if (std::fabs(sigma) <= 1e-20 || std::fabs(epsilon) <= 1e-20) return 0.0;
    return 0.026692 * std::sqrt(fluidConstants.WMAS[icomp] * T) / (sigma * sigma * OMEGAS(2, 2, T / epsilon));
}

double FINT(int icomp, double T) {
    const EcsTransportSlot& s = ecsTransport[icomp];
    if (s.NEUCK <= 0) return 0.00132;
    double sum = 0.0;
    for (int k = 0; k < s.NEUCK; ++k) sum += s.CEUCK[k][0] * power(T, s.CEUCK[k][1]);
    return sum;
}

namespace {

double shapeSum(const double (*rows)[4], int n, double Tr, double Dr, bool withDensity) {
    double sum = 0.0;
    for (int k = 0; k < n; ++k) {
        double term = rows[k][0] * power(Tr, rows[k][1]);
        if (withDensity) term *= power(Dr, rows[k][2]);
        sum += term;
    }
    return sum;
}

// A second block takes over below the temperature, or below the density, that its first row names.
double shapeFactor(const double (*rows)[4], int n1, int n2, double Tr, double Dr) {
    if (n1 <= 0) return 1.0;
    if (n2 >= 2 && (Tr < rows[n1][0] || Dr < rows[n1][2])) return shapeSum(rows + n1 + 1, n2 - 1, Tr, Dr, true);
    return shapeSum(rows, n1, Tr, Dr, Dr > 0.0);
}

}  // namespace

double PSI(int icomp, double Tr, double Dr) {
    const EcsTransportSlot& s = ecsTransport[icomp];
    return shapeFactor(s.CPSI, s.NPSI1, s.NPSI2, Tr, Dr);
}

double CHI(int icomp, double Tr, double Dr) {
    const EcsTransportSlot& s = ecsTransport[icomp];
    return shapeFactor(s.CCHI, s.NCHI1, s.NCHI2, Tr, Dr);
}

// ------------------------------------------------------------------------------------------------ conformal states

namespace {

// Newton's method of CONFTD; without leaving the spinodal region it follows the equation of state through it.
bool newtonConformal(int icomp, double A, double Z, double& T0, double& D0, bool leaveSpinodal) {
    constexpr int mostSteps = 200;
    constexpr double longestStep = 0.2;
    const double limit = static_cast<double>(1.1f) * fluidConstants.TXECST[icomp];

    double tz = 0.0, rhoz = 0.0;
    REDK(icomp, tz, rhoz);
    const double criticalDel = fluidConstants.DCRIT[icomp] / rhoz;
    double tau = tz / T0, del = D0 / rhoz;
    bool found = false;
    for (int step = 1; step <= mostSteps && !found; ++step) {
        const double a01 = PHIK(icomp, 0, 1, tau, del), a02 = PHIK(icomp, 0, 2, tau, del);
        if (leaveSpinodal && 1.0 + 2.0 * a01 + a02 < 0.0) {
            // Between the spinodals: leave on the side of the start.
            if (del > criticalDel)
                del *= 1.04;
            else
                tau *= 0.96;
            continue;
        }
        const double F1 = A - PHIK(icomp, 0, 0, tau, del);
        const double F2 = (Z - 1.0) - a01;
        if (std::fabs(F1) + std::fabs(F2) < 1e-7) {
            found = true;
            break;
        }
        // relative steps u of tau and v of del
        const double a10 = PHIK(icomp, 1, 0, tau, del), a11 = PHIK(icomp, 1, 1, tau, del);
        const double determinant = a10 * (a01 + a02) - a01 * a11;
        double u = 0.05, v = -0.05;
        if (std::fabs(determinant) >= 1e-16) {
            u = (F1 * (a01 + a02) - F2 * a01) / determinant;
            v = (a10 * F2 - a11 * F1) / determinant;
        }
        u = std::clamp(u, -longestStep, longestStep);
        v = std::clamp(v, -longestStep, longestStep);
        tau += u * tau;
        del += v * del;
        found = std::fabs(u) + std::fabs(v) < 1e-12;
    }
    T0 = tz / tau;
    D0 = del * rhoz;
    return found && T0 <= 2.0 * limit;
}

}  // namespace

void CONFTD(int icomp, double A, double Z, double& T0, double& D0, int& ierr, Text255& herr) {
    herr.clear();
    ierr = newtonConformal(icomp, A, Z, T0, D0, true) ? 0 : -58;
}

void CONFT(int icomp, double A, double D0, double& T0, int& ierr, Text255& herr) {
    constexpr int mostSteps = 20;
    constexpr double damping = 0.8, longestStep = 0.6, tolerance = 1e-11;
    ierr = 0;
    herr.clear();
    double tz = 0.0, rhoz = 0.0;
    REDK(icomp, tz, rhoz);
    const auto residual = [&](double t) { return PHIK(icomp, 0, 0, tz / t, D0 / rhoz) - A; };
    double t1 = T0, f1 = residual(t1);
    double t2 = static_cast<double>(1.005f) * T0;
    for (int step = 1; step <= mostSteps; ++step) {
        const double f2 = residual(t2);
        if (std::fabs(f2) < tolerance) {
            T0 = t2;
            return;
        }
        if (f2 == f1) break;
        const double change = std::clamp(-damping * f2 * (t2 - t1) / (f2 - f1), -longestStep * t2, longestStep * t2);
        t1 = t2;
        f1 = f2;
        t2 += change;
        if (std::fabs(change) < tolerance * t2) {
            T0 = t2;
            return;
        }
    }
    ierr = 1;
}

void CONFD(int icomp, double A, double Z, double& T0, double& D0, int& ierr, Text255& herr) {
    constexpr int mostSteps = 50;
    constexpr double golden = 1.0 - static_cast<double>(0.6180340051651001f);
    constexpr double tolerance = static_cast<double>(1e-11f);
    ierr = 0;
    herr.clear();
    double tz = 0.0, rhoz = 0.0;
    REDK(icomp, tz, rhoz);
    bool solved = true;
    double temperature = T0;
    const auto distance = [&](double d) {
        int status = 0;
        Text255 text;
        double t = temperature;
        CONFT(icomp, A, d, t, status, text);
        solved = status == 0;
        if (!solved) return 1e10;
        temperature = t;
        const double a01 = PHIK(icomp, 0, 1, tz / t, d / rhoz);
        return (1.0 + a01 - Z) * (1.0 + a01 - Z);
    };

    double a = 0.8 * D0, b = 1.2 * D0;
    double best = D0, second = D0, third = D0;
    double fBest = distance(best), fSecond = fBest, fThird = fBest;
    double bestTemperature = temperature;
    double step = 0.0, earlier = 0.0;
    bool found = false;
    for (int k = 1; k <= mostSteps && !found; ++k) {
        const double middle = 0.5 * (a + b);
        const double least = tolerance * std::fabs(best) + 1e-14;
        if (std::fabs(best - middle) <= 2.0 * least - 0.5 * (b - a) || fBest < 1e-20) {
            found = true;
            break;
        }
        bool parabola = false;
        if (std::fabs(earlier) > least) {
            double r = (best - second) * (fBest - fThird), q = (best - third) * (fBest - fSecond);
            double p = (best - third) * q - (best - second) * r;
            q = 2.0 * (q - r);
            if (q > 0.0) p = -p;
            q = std::fabs(q);
            if (std::fabs(p) < std::fabs(0.5 * q * earlier) && p > q * (a - best) && p < q * (b - best)) {
                earlier = step;
                step = p / q;
                parabola = true;
            }
        }
        if (!parabola) {
            earlier = best >= middle ? a - best : b - best;
            step = golden * earlier;
        }
        const double trial = std::fabs(step) >= least ? best + step : best + std::copysign(least, step);
        const double fTrial = distance(trial);
        if (fTrial <= fBest) {
            (trial >= best ? a : b) = best;
            third = second;
            fThird = fSecond;
            second = best;
            fSecond = fBest;
            best = trial;
            fBest = fTrial;
            bestTemperature = temperature;
        } else {
            (trial < best ? a : b) = trial;
            if (fTrial <= fSecond || second == best) {
                third = second;
                fThird = fSecond;
                second = trial;
                fSecond = fTrial;
            } else if (fTrial <= fThird || third == best || third == second) {
                third = trial;
                fThird = fTrial;
            }
        }
    }
    D0 = best;
    T0 = bestTemperature;
    // A minimum at the edge of the range is no solution.
    if (!found || fBest > 1e-8) {
        ierr = -58;  // the text shows it without the sign
        message(herr, "[CONFD error 58] ECS-transport routines did not converge", nullCharacter);
        ERRMSG(ierr, herr);
    }
}

bool conformalState(int slot, double A, double Z, double tc, double dc, double T, double D, ConformalState& state) {
    constexpr double smallestZ = static_cast<double>(0.3f), pressureFactor = static_cast<double>(1.1f);
    constexpr double largestChange = 0.1;
    const FluidConstants& fluid = fluidConstants;
    const double T0 = T * fluid.TCRIT[slot] / tc;
    const double D0 = D * fluid.DCRIT[slot] / dc;
    state.T = state.simpleT = T0;
    state.D = state.simpleD = D0;
    state.newton = false;
    if (D <= 0.0) return true;
    const double p = Z * fluid.R * T0 * D0;
    if (!(Z <= smallestZ || p >= pressureFactor * fluid.PCRIT[slot] || D0 >= fluid.DCRIT[slot])) return true;
    double t = T0, d = D0;
    int ierr = 0;
    Text255 herr;
    CONFTD(slot, A, Z, t, d, ierr, herr);
    if (ierr != 0) {
        // Near the critical point the state that corresponds can lie between the spinodals of the other fluid, where
        // the search above cannot stay. It is good for scaling all the same.
        double freeT = T0, freeD = D0;
        if (newtonConformal(slot, A, Z, freeT, freeD, false)) {
            t = freeT;
            d = freeD;
            ierr = 0;
        }
    }
    const bool far = std::fabs(t / T0 - 1.0) > largestChange || std::fabs(d / D0 - 1.0) > largestChange;
    if (ierr != 0 && far) return false;
    state.T = t;
    state.D = d;
    state.newton = true;
    return true;
}

// ----------------------------------------------------------------------------------------------- one pure component

namespace {

constexpr double invalidViscosity = -1000.0;  // [uPa s] below it the reference fluid's correlation is out of its range

void lennardJones(int icomp, int ref, double f, double h) {
    EcsTransportSlot& s = ecsTransport[icomp];
    const EcsTransportSlot& r = ecsTransport[ref];
    const FluidConstants& fluid = fluidConstants;
    if (s.ILJFLAG == 0) {
        s.EPSKTR = fluid.TCRIT[icomp] / fluid.TCRIT[ref] * r.EPSKTR;
        s.SIGTRN = r.SIGTRN * std::cbrt(fluid.DCRIT[ref] / fluid.DCRIT[icomp]);
    } else if (s.ILJFLAG == 2) {
        s.EPSKTR = r.EPSKTR * f;
        s.SIGTRN = r.SIGTRN * std::cbrt(h);
    }
}

// Background viscosity of a reference fluid, with the rule for a value without meaning.
double referenceViscosity(int slot, double T, double D, int& ierr, Text255& herr) {
    double etab = 0.0;
    int status = 0;
    Text255 text;
    ETAKB(slot, T, D, etab, status, text);
    if (etab >= invalidViscosity) return etab;
    ierr = -48;
    message(herr, "[TRNECS warning -48] invalid region for viscosity of reference fluid 1 ", nullCharacter);
    ERRMSG(ierr, herr);
    return 0.0;
}

// Slot of the reference fluid of a component.
int referenceSlot(int icomp) {
    return modelTags.NC > 1 ? -icomp : 0;
}

void helmholtzOf(int icomp, double T, double D, double& A, double& Z) {
    double tz = 0.0, rhoz = 0.0;
    REDK(icomp, tz, rhoz);
    A = PHIK(icomp, 0, 0, tz / T, D / rhoz);
    Z = 1.0 + PHIK(icomp, 0, 1, tz / T, D / rhoz);
}

void notConverged(std::string_view beginning, int icomp, int& ierr, Text255& herr) {
    ierr = -58;
    message(herr, beginning,
            " 2-D Newton-Raphson method for conformal temperature and density did not converge for component",
            Integer{3, icomp}, nullCharacter);
    ERRMSG(ierr, herr);
}

// What the model gives for one component.
struct PureTransport {
    double eta = notComputed, tcx = notComputed;
    int status = 0;  // -58 where there is no conformal state, -48 where the viscosity has no meaning
    Text255 text{};
};

PureTransport pureTransport(int icomp, int ref, double T, double D, std::string_view beginning) {
    PureTransport result;
    const FluidConstants& fluid = fluidConstants;
    const double tc = fluid.TCRIT[icomp], dc = fluid.DCRIT[icomp];
    double A = 0.0, Z = 1.0;
    helmholtzOf(icomp, T, D, A, Z);
    ConformalState state;
    if (!conformalState(ref, A, Z, tc, dc, T, D, state)) {
        notConverged(beginning, icomp, result.status, result.text);
        return result;
    }
    const double f = T / state.T;
    const double h = D > 0.0 ? state.D / D : fluid.DCRIT[ref] / dc;
    lennardJones(icomp, ref, f, h);

    const double mass = fluid.WMAS[icomp], m = mass / fluid.WMAS[ref];
    const double Tr = T / tc, Dr = D / dc;
    const double scale = 1.0 / std::cbrt(h * h);
    const double eta0 = ETA0DG(icomp, T);
    const double etab = referenceViscosity(ref, state.T, D * h * PSI(icomp, Tr, Dr), result.status, result.text);
    if (result.status == 0) result.eta = eta0 + std::sqrt(f * m) * scale * etab;

    double background = 0.0;
    int status = 0;
    Text255 text;
    TCXKB(ref, state.T, D * h * CHI(icomp, Tr, Dr), background, status, text);
    const double R = fluid.R;
    const double translational = 0.015 * R * eta0 / (4.0 * mass);
    const double internal = FINT(icomp, T) * eta0 / mass * (CP0K(icomp, T) - 2.5 * R);
    if (status == 0)
        result.tcx = std::sqrt(f / m) * scale * background + translational + internal;
    else if (result.status == 0) {
        result.status = status;
        result.text = text;
    }
    return result;
}

// The last pure result, given again within one property call.
struct Memory {
    bool active = false, filled = false;
    int icomp = 0, ref = 0;
    double T = 0.0, D = 0.0;
    PureTransport result{};
} memory;

const PureTransport& rememberedTransport(int icomp, int ref, double T, double D, std::string_view beginning) {
    const bool same = memory.filled && memory.icomp == icomp && memory.ref == ref && memory.T == T && memory.D == D;
    if (!same) memory.result = pureTransport(icomp, ref, T, D, beginning);
    memory.icomp = icomp;
    memory.ref = ref;
    memory.T = T;
    memory.D = D;
    memory.filled = memory.active;
    return memory.result;
}

constexpr std::string_view inTRNECS = "[TRNECS warning 58]", inPTRNEC = "[pTRNEC warning 58]";

}  // namespace

EcsMemory::EcsMemory() {
    memory.active = true;
    memory.filled = false;
}
EcsMemory::~EcsMemory() {
    memory.active = memory.filled = false;
}

void PTRNEC(int icomp, double T, double D, double& eta, double& tcx, int& ierr, Text255& herr, int ref) {
    const PureTransport& result = rememberedTransport(icomp, ref, T, D, inPTRNEC);
    eta = result.eta;
    tcx = result.tcx;
    ierr = result.status;
    herr = result.text;
}

void viscosityByCorrespondingStates(int icomp, double T, double D, double& eta, int& ierr, Text255& herr) {
    double tcx = 0.0;
    PTRNEC(icomp, T, D, eta, tcx, ierr, herr, referenceSlot(icomp));
}

// ------------------------------------------------------------------------------------------ components of a mixture

namespace {

// State of a component in a mixture that corresponds to that of the mixture.
void correspondingState(double T, double D, double f, double fx, double h, double hx, double& Ti, double& Di) {
    Ti = T * f / fx;
    Di = D * hx / h;
}

// Background of component i from its reference fluid; conductivity or viscosity.
double backgroundByReference(int i, double Ti, double Di, bool conductivity, int& ierr, Text255& herr) {
    const int ref = referenceSlot(i);
    double tmin = 0.0, dmax = 0.0;
    ECSLIM(i, ref, tmin, dmax);
    Ti = std::max(Ti, tmin);
    Di = std::min(Di, dmax);

    const FluidConstants& fluid = fluidConstants;
    const double tc = fluid.TCRIT[i], dc = fluid.DCRIT[i];
    double A = 0.0, Z = 1.0;
    helmholtzOf(i, Ti, Di, A, Z);
    ConformalState state;
    if (!conformalState(ref, A, Z, tc, dc, Ti, Di, state)) {
        notConverged(inPTRNEC, i, ierr, herr);
        return 0.0;
    }
    const double f = Ti / state.T, h = Di > 0.0 ? state.D / Di : fluid.DCRIT[ref] / dc;
    const double m = fluid.WMAS[i] / fluid.WMAS[ref];
    const double scale = 1.0 / std::cbrt(h * h);
    if (!conductivity)
        return std::sqrt(f * m) * scale *
               referenceViscosity(ref, state.T, Di * h * PSI(i, Ti / tc, Di / dc), ierr, herr);
    double background = 0.0;
    TCXKB(ref, state.T, Di * h * CHI(i, Ti / tc, Di / dc), background, ierr, herr);
    return std::sqrt(f / m) * scale * background;
}

bool correspondingStates(const Text3& tag) {
    return tag.startsWith("EC");
}

// State of component i within the limits of its own model.
void holdWithinLimits(const Text3& property, int i, double& Ti, double& Di) {
    double tmin = 0.0, tmax = 0.0, dmax = 0.0, pmax = 0.0;
    int ierr = 0;
    Text255 herr;
    LIMITK(property, i, Ti, Di, 0.0, tmin, tmax, dmax, pmax, ierr, herr);
    if (ierr == 0) return;
    Ti = std::clamp(Ti, std::min(tmin, tmax), tmax);
    Di = std::min(Di, dmax);
}

double componentViscosity(int i, double T, double D, double f, double fx, double h, double hx, int& ierr,
                          Text255& herr) {
    double etab = 0.0;
    if (correspondingStates(modelTags.HETA[i])) {
        ETABKP(i, T, D, f, fx, h, hx, etab, ierr, herr);
        return etab;
    }
    double Ti = 0.0, Di = 0.0;
    correspondingState(T, D, f, fx, h, hx, Ti, Di);
    holdWithinLimits("ETA", i, Ti, Di);
    ETAKB(i, Ti, Di, etab, ierr, herr);
    return etab;
}

double componentConductivity(int i, double T, double D, double f, double fx, double h, double hx, int& ierr,
                             Text255& herr) {
    double tcxb = 0.0;
    if (correspondingStates(modelTags.HTCX[i])) {
        TCBKP(i, T, D, f, fx, h, hx, tcxb, ierr, herr);
        return tcxb;
    }
    double Ti = 0.0, Di = 0.0;
    correspondingState(T, D, f, fx, h, hx, Ti, Di);
    holdWithinLimits("TCX", i, Ti, Di);
    TCXKB(i, Ti, Di, tcxb, ierr, herr);
    // A correlation of a single fluid gives the whole conductivity: its dilute gas is not background.
    if (ierr == 0 && modelTags.HTCX[i] == "TC0") {
        double dilute = 0.0;
        TCXKB(i, Ti, 0.0, dilute, ierr, herr);
        tcxb -= dilute;
    }
    return tcxb;
}

constexpr double smallestBackground = 1e-12;  // [uPa s]
constexpr double smallestReference = 1e-6;    // [uPa s]

}  // namespace

void ECSLIM(int icomp, int ref, double& tmin, double& dmax) {
    const FluidConstants& fluid = fluidConstants;
    tmin = std::max(fluid.TMECST[icomp], fluid.TMECST[ref] * fluid.TCRIT[icomp] / fluid.TCRIT[ref]);
    dmax = std::min(fluid.DXECST[icomp], fluid.DXECST[ref] * fluid.DCRIT[icomp] / fluid.DCRIT[ref]);
}

void ETABKP(int i, double T, double D, double f, double fx, double h, double hx, double& etab, int& ierr,
            Text255& herr) {
    ierr = 0;
    herr.clear();
    double Ti = 0.0, Di = 0.0;
    correspondingState(T, D, f, fx, h, hx, Ti, Di);
    etab = backgroundByReference(i, Ti, Di, false, ierr, herr);
}

void TCBKP(int i, double T, double D, double f, double fx, double h, double hx, double& tcxb, int& ierr,
           Text255& herr) {
    ierr = 0;
    herr.clear();
    double Ti = 0.0, Di = 0.0;
    correspondingState(T, D, f, fx, h, hx, Ti, Di);
    tcxb = backgroundByReference(i, Ti, Di, true, ierr, herr);
}

// ------------------------------------------------------------------------------------------------- the whole model

namespace {

struct Mixture {
    double T, D;
    const Composition& x;
    double f, h;
    Composition FJ{}, HJ{};
};

// Conformal ratios of the mixture and of its components to the fluid of slot 0; returned is 0, or the component whose
// state was not found (-1 for the mixture itself).
int conformalRatios(Mixture& mix, double A, double Z, double tc, double dc) {
    ConformalState state;
    if (!conformalState(0, A, Z, tc, dc, mix.T, mix.D, state)) return -1;
    mix.f = mix.T / state.T;
    mix.h = state.D / mix.D;

    constexpr double smallestZ = 0.3, simpleFrom = 1000.0;  // [K]
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (mix.x[i] <= 0.0) continue;
        if (!conformalState(i, A, Z, tc, dc, mix.T, mix.D, state)) return i;
        const auto f = [&mix](double T) { return T * mix.f / mix.T; };
        const auto h = [&mix](double D) { return mix.D * mix.h / D; };
        mix.FJ[i] = f(state.T);
        mix.HJ[i] = h(state.D);
        // Far above the critical temperature the simple scaling takes over.
        if (Z > smallestZ && mix.T > tc) {
            const double weight = mix.T >= simpleFrom ? 1.0 : (mix.T - tc) / (simpleFrom - tc);
            mix.FJ[i] += (f(state.simpleT) - mix.FJ[i]) * weight;
            mix.HJ[i] += (h(state.simpleD) - mix.HJ[i]) * weight;
        }
    }
    return 0;
}

// Sum over pairs of sqrt(f m) h^(4/3), where m combines as a harmonic mean.
template <class PairConstants>
double pairSum(const Mixture& mix, const Composition& m, PairConstants constants) {
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (mix.x[i] <= 0.0) continue;
        for (int j = i; j <= modelTags.NC; ++j) {
            if (mix.x[j] <= 0.0) continue;
            double fij = mix.FJ[i], hij = mix.HJ[i], mij = m[i];
            if (i != j) {
                const auto [k, l] = constants(i, j);
                fij = std::sqrt(mix.FJ[i] * mix.FJ[j]) * (1.0 - k);
                const double side = std::cbrt(mix.HJ[i]) + std::cbrt(mix.HJ[j]);
                hij = side * side * side / 8.0 * (1.0 - l);
                mij = 2.0 * m[i] * m[j] / (m[i] + m[j]);
            }
            const double term = std::sqrt(fij * mij) * hij * std::cbrt(hij);
            sum += (i == j ? 1.0 : 2.0) * mix.x[i] * mix.x[j] * term;
        }
    }
    return sum;
}

struct PairConstants {
    double k, l;
};

// What a negative background of a component takes from that of the mixture. It has no effective mass that could be
// combined with others, so it counts with the fraction of the component, scaled to its density: the share of a
// component goes over into its own value.
double negativeShare(const Mixture& mix, int i, double own) {
    const double ratio = mix.HJ[i] / mix.h;
    return own < 0.0 ? mix.x[i] * own * ratio * ratio : 0.0;
}

void noValue(std::string_view what, int& ierr, Text255& herr) {
    ierr = -59;
    message(herr, "[TRNECS warning -59] the viscosity of ", what, " is zero: it cannot scale that of the mixture",
            nullCharacter);
    ERRMSG(ierr, herr);
}

double mixtureViscosity(const Mixture& mix, int& ierr, Text255& herr) {
    const FluidConstants& fluid = fluidConstants;
    double etab = referenceViscosity(0, mix.T / mix.f, mix.D * mix.h, ierr, herr);
    if (ierr != 0) return notComputed;
    double background = 0.0;
    if (mix.D > 0.0) {
        if (std::fabs(etab) < 1e-20) {
            noValue("the reference fluid", ierr, herr);
            return notComputed;
        }
        etab = std::max(etab, smallestReference);
        Composition XMJ{};  // effective molar masses
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (mix.x[i] <= 0.0) continue;
            const double own = componentViscosity(i, mix.T, mix.D, mix.FJ[i], mix.f, mix.HJ[i], mix.h, ierr, herr);
            if (ierr != 0) return notComputed;
            background += negativeShare(mix, i, own);
            const double ratio =
                std::max(own, smallestBackground) / etab / std::sqrt(mix.FJ[i]) * std::cbrt(mix.HJ[i] * mix.HJ[i]);
            XMJ[i] = ratio * ratio * fluid.WMAS[0];
        }
        const double sum = pairSum(mix, XMJ, [](int i, int j) {
            const MixingPair& pair = mixingParameters.pair[i][j];
            return PairConstants{pair.XKIJ, pair.XLIJ};
        });
        background += sum / (mix.h * mix.h) / std::sqrt(fluid.WMAS[0]) * etab;
    }
    const double ETADG = ETAMIX(mix.T, mix.x);
    if (ETADG == 0.0) {
        noValue("the dilute gas", ierr, herr);
        return notComputed;
    }
    return ETADG + background;
}

// Enhancement of a mixture that is almost a pure fluid goes over into that of the fluid, by its own correlation or
// under corresponding states.
double towardsPure(const Mixture& mix, double enhancement, double background) {
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (mix.x[i] <= 0.99) continue;
        double own = 0.0;
        int ierr = 0;
        Text255 herr;
        if (correspondingStates(modelTags.HTCX[i])) {
            TCXM1C(unitComposition(i), mix.T, mix.D, own, ierr, herr);
            own = std::min(own, background);
        } else {
            TCXKC(i, mix.T, mix.D, own, ierr, herr);
        }
        if (ierr == 0) return 100.0 * (own - enhancement) * mix.x[i] + 100.0 * enhancement - 99.0 * own;
    }
    return enhancement;
}

}  // namespace

void TCBKMX(double T, double D, const Composition& x, double f, double h, const Composition& FJ, const Composition& HJ,
            double& tcx, int& ierr, Text255& herr) {
    const FluidConstants& fluid = fluidConstants;
    const double R = fluid.R;
    ierr = 0;
    herr.clear();
    const Mixture mix{T, D, x, f, h, FJ, HJ};

    // dense part
    double background = 0.0;
    if (D > 0.0) {
        double reference = 0.0;
        TCXKB(0, T / f, D * h, reference, ierr, herr);
        if (ierr != 0) return;
        reference = std::max(reference, 1e-16);
        Composition XMJ{};  // effective masses over that of the reference fluid
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (x[i] <= 0.0) continue;
            const double own = componentConductivity(i, T, D, FJ[i], f, HJ[i], h, ierr, herr);
            if (ierr != 0) return;
            background += negativeShare(mix, i, own);
            const double ratio = std::max(own, 1e-16) / reference / std::sqrt(FJ[i]) * std::cbrt(HJ[i] * HJ[i]);
            XMJ[i] = ratio * ratio;
        }
        const double sum = pairSum(mix, XMJ, [](int i, int j) {
            const MixingPair& pair = mixingParameters.pair[i][j];
            return PairConstants{pair.XKIJK, pair.XLIJK};
        });
        background += sum / (h * h) * reference;
    }

    // dilute gas: translational part and that of the internal energy; a correlation has both in one
    Composition ETAI{}, TCXDG{}, TCXIN{};
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (x[i] <= 0.0) continue;
        int status = 0;
        Text255 text;
        ETAK0(i, T, ETAI[i], status, text);
        if (status != 0 || ETAI[i] <= 0.0) ETAI[i] = ETA0DG(i, T);
        status = 1;
        if (!correspondingStates(modelTags.HTCX[i])) {
            // A correlation of its own is followed down to the dilute gas.
            TCXK0(i, T, TCXDG[i], status, text);
            if (status == 0 && modelTags.HTCX[i] == "TC0") TCXKB(i, T, 0.0, TCXDG[i], status, text);
            if (status == 0 && TCXDG[i] <= 0.0) status = 1;
        }
        if (status != 0) {
            // corresponding states scale the conductivity by their own viscosity of the dilute gas
            const double mass = fluid.WMAS[i];
            const double dilute = correspondingStates(modelTags.HTCX[i]) ? ETA0DG(i, T) : ETAI[i];
            TCXDG[i] = 0.015 * R * dilute / (4.0 * mass);
            TCXIN[i] = FINT(i, T) * dilute / mass * (CP0K(i, T) - 2.5 * R);
        }
    }
    double gas = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (x[i] <= 0.0) continue;
        double sum = x[i];
        for (int j = 1; j <= modelTags.NC; ++j) {
            if (j == i || x[j] <= 0.0) continue;
            const double m = fluid.WMAS[i] / fluid.WMAS[j];
            const double root = 1.0 + std::sqrt(ETAI[i] / ETAI[j]) * std::sqrt(std::sqrt(m));
            sum += x[j] * (1.0 - mixingParameters.pair[i][j].XAJI) * root * root / std::sqrt(8.0 * (1.0 + m));
        }
        gas += x[i] * (TCXDG[i] + TCXIN[i]) / sum;
    }
    tcx = background + gas;
}

void TRNECS(double T, double D, const Composition& x, double& eta, double& tcx, int& ierr, Text255& herr) {
    const FluidConstants& fluid = fluidConstants;
    ierr = 0;
    herr.clear();
    eta = tcx = notComputed;
    int pure = 0;
    ISPURE(x, pure);
    RMIX(x);

    // bounds: outside them the model extrapolates
    double tmin = 0.0, tmax = 0.0, dmax = 0.0, pmax = 0.0;
    if (pure > 0) {
        tmin = fluid.TMECST[pure];
        tmax = fluid.TXECST[pure];
        dmax = fluid.DXECST[pure];
    } else {
        LIMITS("ETA", x, tmin, tmax, dmax, pmax);
    }
    const bool outOfBounds = T < tmin || T > 1.5 * tmax || D > dmax;

    double tc = 0.0, pc = 0.0, dc = 0.0;
    int status = 0;
    Text255 text;
    CRITP(x, tc, pc, dc, status, text);
    if (status > 0) {
        ierr = status;
        herr = text;
        ERRMSG(ierr, herr);
        return;
    }

    int viscosityStatus = 0;
    Mixture mix{T, std::max(D, 0.0), x, 1.0, 1.0, {}, {}};
    if (pure > 0) {
        const PureTransport& result = rememberedTransport(pure, referenceSlot(pure), T, mix.D, inTRNECS);
        eta = result.eta;
        tcx = result.tcx;
        ierr = result.status;
        herr = result.text;
        if (ierr == -58) return;
        if (eta == notComputed) viscosityStatus = ierr;
    } else {
        double tz = 0.0, rhoz = 0.0;
        REDX(x, tz, rhoz);
        // at no density the ratios are those of the critical points, which any small density gives too
        constexpr double diluteDensity = 1e-9;
        mix.D = std::max(mix.D, diluteDensity);
        const double A = PHIX(0, 0, tz / T, mix.D / rhoz, x), Z = 1.0 + PHIX(0, 1, tz / T, mix.D / rhoz, x);
        if (const int failed = conformalRatios(mix, A, Z, tc, dc); failed != 0) {
            notConverged(inTRNECS, failed > 0 ? failed : 0, ierr, herr);
            return;
        }
        for (int i = 1; i <= modelTags.NC; ++i)
            if (x[i] > 0.0) lennardJones(i, 0, mix.FJ[i], mix.HJ[i]);
        eta = mixtureViscosity(mix, viscosityStatus, herr);
        ierr = viscosityStatus;
        TCBKMX(T, mix.D, x, mix.f, mix.h, mix.FJ, mix.HJ, tcx, status, text);
        if (status != 0) tcx = notComputed;
        if (ierr == 0 && status != 0) {
            ierr = status;
            herr = text;
        }
    }
    viscosityOfTRNECS = eta;

    // critical enhancement
    if (tcx > 0.0) {
        double enhancement = 0.0;
        TCXM1C(x, T, D, enhancement, status, text);
        if (status != 0) {
            ierr = -60;
            herr = text;
            tcx = notComputed;
        } else {
            enhancement = std::min(enhancement, tcx);
            if (pure == 0) enhancement = towardsPure(mix, enhancement, tcx);
            tcx += enhancement;
        }
    }

    if (viscosityStatus != 0) eta = notComputed;
    if (ierr == 0 && outOfBounds) {
        ierr = -1;
        message(herr, "[TRNECS error -1] one or more inputs are out of bounds", nullCharacter);
    }
    if (ierr != 0) ERRMSG(ierr, herr);
}

}  // namespace frigana
