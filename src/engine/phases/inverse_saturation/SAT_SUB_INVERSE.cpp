#include "SAT_SUB_INVERSE.h"

#include <algorithm>
#include <cmath>

#include "CORE_MLT.h"
#include "CriticalPoint.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "RootBracket.h"
#include "SAT_SUB.h"
#include "SAT_SUB_INVERSE_LINES.h"
#include "SAT_SUB_LINES.h"
#include "SAT_SUB_SPLINE.h"
#include "SaturationBricks.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {
namespace {

constexpr double highestWaterDensity = 55.504316185;  // saturated liquid [mol/L]

// A state on the way to a root: temperature and residual.
struct Point {
    double T, F;
};

double secant(const Point& a, const Point& b) {
    return secantPoint(a.T, a.F, b.T, b.F);
}

// ------------------------------------------------------------------------------------------------ given density

// Densities at 0.72 Tc, on which the estimates of the temperature rest.
void fillDensities72(const Composition& x, int icomp, double Tc) {
    belongTo(x, icomp);
    SaturationExtrema& known = saturationExtrema;
    if (known.rhol72 >= 1e-8) return;
    LineState state;
    int ierr;
    Text255 herr;
    if (stateOnLine(liquidLine, 0.72 * Tc, x, state, ierr, herr)) {
        known.rhol72 = state.at.Dl;
        known.rhov72 = state.at.Dv;
    }
}

// Temperature on the liquid or vapor line of a pure fluid by corresponding states through the point at 0.72 Tc.
double temperatureEstimate(int branch, double rho, double Tc, double Dc) {
    const SaturationExtrema& known = saturationExtrema;
    if (branch == liquidLine) {
        const double r72 = known.rhol72;
        const double u = rho / Dc + (1.2 - r72 / Dc) * (rho - Dc) / (r72 - Dc) - 1.0;
        const double v = std::max(0.0, 9.272 * std::log(u + 1.0) - 5.195 * u);
        return Tc * (1.0 - std::pow(v, 2.9673590504451037));
    }
    if (known.rhov72 <= 0.0) return Tc;
    const double a = std::log(known.rhov72 / Dc), b = std::log(rho / Dc);
    const double w = std::max(0.0, (a + 3.5) * std::pow(b / a, 1.3) - b);
    const double v = std::max(0.0, 0.5 * std::log(w + 1.0) - 0.026 * std::sqrt(w));
    return Tc / (std::pow(v, 2.7027027027027026) + 1.0);
}

// Temperature at which the phase of the given density and the other one at the same pressure have one Gibbs energy.
// False if the way ended early.
bool equalGibbsEnergies(double rho, int branch, const Composition& x, double Tc, double Dc, double& T, double& p,
                        double& rhol, double& rhov) {
    int ierr;
    Text255 herr;
    T = temperatureEstimate(branch, rho, Tc, Dc);
    double lastT = T + 1e-5, lastStep = 0.001;
    for (int pass = 1; pass <= 20; ++pass) {
        PRESS(T, rho, x, p);
        if (!(p >= 0.0)) return false;
        double other = 0.0;
        {
            const SilentMessages quiet;
            TPRHO(T, p, x, 3 - branch, 0, other, ierr, herr);
        }
        if (ierr > 0) return false;
        if (std::fabs(rho - other) <= 1e-11) {
            T /= 1.00001;
            continue;
        }
        double A, G1, G2, s1, s2;
        AG(T, rho, x, A, G1);
        ENTRO(T, rho, x, s1);
        AG(T, other, x, A, G2);
        ENTRO(T, other, x, s2);
        const double step = (G1 - G2) / (s1 - s2);
        if (std::fabs(step) <= 1e-6) {
            rhol = branch == liquidLine ? rho : other;
            rhov = branch == liquidLine ? other : rho;
            return true;
        }
        const double multiplier = -(lastT - T) / (lastStep - step);
        lastT = T;
        lastStep = step;
        T += multiplier * step;
        if (!(T > 0.0)) T = 0.95 * lastT;
    }
    return false;
}

// Pressure and density on the melting line.
bool stateOnMeltingLine(double T, const Composition& x, bool water, LineState& state, int& ierr, Text255& herr) {
    ierr = 0;
    state.at.T = T;
    if (water) {
        double densest, iceOne;
        MLTH2O(T, densest, iceOne);
        state.at.p = densest;
    } else {
        MELTT(T, x, state.at.p, ierr, herr);
        if (ierr > 0) return false;
    }
    state.at.Dl = fluidConstants.DTPN[1];
    TPRHO(T, state.at.p, x, liquidPhase, 1, state.at.Dl, ierr, herr);
    state.rho = state.at.Dv = state.at.Dl;
    return ierr == 0;
}

void beyondTriplePoint(std::string_view words, double rho, double triple, int& ierr, Text255& herr) {
    ierr = 2;
    message(herr, "[SATD error", Integer{3, ierr}, "] density ", words,
            " triple-point density; D =", General{12, 5, rho}, " mol/L; Dtp =", General{12, 5, triple}, " mol/L",
            nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace

void SATD(double rho, const Composition& x, int kph, int& kr, double& T, double& p, double& rhol, double& rhov,
          Composition& xliq, Composition& xvap, int& ierr, Text255& herr) {
    const Composition z = x;  // the argument may be one of the results
    int icomp;
    ISPURE(z, icomp);
    kr = 0;
    T = p = rhol = rhov = 0.0;
    xliq = xvap = z;

    double tmin, tmax, Dmax, pmax;
    LIMITX("EOS", 300.0, rho, 100.0, z, tmin, tmax, Dmax, pmax, ierr, herr);
    if (ierr >= 8 || rho > Dmax || rho <= 0.0) {
        if (ierr <= 0) ierr = 2;
        message(herr, "[SATD error", Integer{3, ierr}, "] ", Character{238, herr.view()}, nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    double Tc, pc, Dc;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    if (ierr > 0) {
        ierr = 160;
        wrapMessage("[SATD error 160] ", herr);
        ERRMSG(ierr, herr);
        return;
    }
    ierr = 0;
    herr.clear();
    const auto critical = [&] {
        T = Tc;
        p = pc;
        rhol = rhov = Dc;
    };
    critical();
    if (icomp > 0 && std::fabs(Dc - rho) < 0.001) {
        kr = liquidLine;
        return;
    }
    const auto notConverged = [&] {
        critical();
        ierr = 161;
        message(herr, "[SATD error 161] iteration for saturation state given density did not converge for D =",
                General{12, 5, rho}, " mol/L", nullCharacter);
        ERRMSG(ierr, herr);
    };

    FluidConstants& fluid = fluidConstants;
    const double Ttp = icomp > 0 ? fluid.TTPN[icomp] : 0.0;
    const double liquidTriple = icomp > 0 ? fluid.DTPN[icomp] : 0.0;
    if (icomp > 0 && fluid.DTPV[icomp] < 1e-15) {
        LineState state;
        if (!stateOnLine(vaporLine, Ttp, z, state, ierr, herr)) {
            // an equation that starts above the triple point leaves the vapor's density there unknown, too
            if (Ttp >= 10.0 && Ttp >= tmin) return;
            state.at.Dv = 1e-10;
            ierr = 0;
            herr.clear();
        }
        fluid.DTPV[icomp] = state.at.Dv;
    }
    const double vaporTriple = icomp > 0 ? fluid.DTPV[icomp] : 0.0;
    const bool water = isWater(icomp);
    if (water && ((rho < liquidTriple && (kph == -1 || kph == meltingLine)) ||
                  (rho > highestWaterDensity && (kph == -1 || kph == liquidLine)))) {
        notConverged();
        return;
    }

    if (icomp > 0 && rho < vaporTriple)
        kr = sublimationBranch;
    else if (rho < Dc)
        kr = vaporLine;
    else if (water && rho < highestWaterDensity && kph != meltingLine)
        kr = liquidLine;
    else if (icomp > 0 && rho > liquidTriple && liquidTriple != 0.0)
        kr = meltingLine;
    else
        kr = liquidLine;

    const bool aga8 = modelTags.HEOS == "AGA";
    if (aga8) modelTags.HEOS = "HMX";
    RMIX(z);

    bool found = false;
    const bool fluidLine = kr == liquidLine || kr == vaporLine;
    if (icomp > 0 && fluidLine && modelTags.IANC[icomp] == 0 && kph != -1) {
        fillDensities72(z, icomp, Tc);
        found = equalGibbsEnergies(rho, kr, z, Tc, Dc, T, p, rhol, rhov);
    } else if (kr == meltingLine && modelTags.HMELTK[icomp] == "NBS" && rho > liquidTriple) {
        beyondTriplePoint("above", rho, liquidTriple, ierr, herr);
        found = true;
    } else if (kr == sublimationBranch && modelTags.HSUBLK[icomp] == "NBS" && rho < vaporTriple) {
        beyondTriplePoint("below", rho, vaporTriple, ierr, herr);
        found = true;
    }

    if (!found) {
        // secant in temperature
        LineState state;
        Point last{Tc, std::log(rho / Dc)};
        double next = static_cast<double>(0.85f) * Tc;
        if (kr == meltingLine) {
            last.T = water ? 251.1650000001 : Ttp;
            stateOnMeltingLine(last.T, z, water, state, ierr, herr);
            last.F = std::log(rho / state.rho);
            if (water) next = 273.16;
        } else if (kr == sublimationBranch) {
            last = {Ttp, std::log(rho / vaporTriple)};
            next = static_cast<double>(0.95f) * Ttp;
        } else if (kr == vaporLine) {
            next = 0.75 * Tc;
            if (icomp == 0) {
                if (stateOnLine(vaporLine, Tc, z, state, ierr, herr) && state.at.Dv > 0.0)
                    last.F = std::log(rho / state.at.Dv);
            }
        }
        RootBracket bracket;
        bracket.takeLast(last.T, last.F);
        int belowTriple = 0;
        for (int pass = 1; pass <= 20 && !found; ++pass) {
            const double here = next;
            const bool valid = kr == meltingLine ? stateOnMeltingLine(here, z, water, state, ierr, herr)
                                                 : stateOnLine(kr, here, z, state, ierr, herr);
            if (!valid || !(state.rho > 0.0)) {
                next *= 0.999;
                continue;
            }
            const Point now{here, std::log(rho / state.rho)};
            if (std::fabs(now.F) < 1e-7) {
                found = true;
                break;
            }
            bracket.takeLast(now.T, now.F);
            next = now.F == last.F ? bracket.middle() : secant(last, now);
            if (bracket.closed() && !(next >= bracket.lower() && next <= bracket.upper())) next = bracket.middle();
            if (icomp > 0 && !water && kr != sublimationBranch && next < Ttp) {
                ++belowTriple;
                if (belowTriple == 1)
                    next = Ttp;
                else if (next <= 0.0)
                    next = 0.5 * here;
            } else if (icomp == 0) {
                // a mixture's lines end at the limit of its equation
                next = std::max(next, tmin);
            }
            last = now;
        }
        // dew points above the critical temperature, and either line where it ends
        if (!found && icomp == 0) {
            int foundLine;
            found = rootOnEnvelope('D', rho, kr, z, 1e-7 * rho, foundLine, state.at);
            if (found) kr = foundLine;
        }
        if (found) {
            ierr = 0;
            herr.clear();
            T = state.at.T;
            p = state.at.p;
            rhol = state.at.Dl;
            rhov = state.at.Dv;
            if (icomp == 0) {
                xliq = state.at.x;
                xvap = state.at.y;
            }
        } else {
            notConverged();
        }
    }
    if (aga8) modelTags.HEOS = "AGA";
}

// ------------------------------------------------------------------------------- given enthalpy, energy, entropy

namespace {

struct Root {
    int line = 0;
    double T = 0.0, p = 0.0, rho = 0.0;
};

// The search for a temperature where a property on a line has a given value.
struct LineSearch {
    char letter;
    double target;
    const Composition& x;
    int icomp;
    double Tmin, Tc;

    // Value on the line; false if the saturation failed.
    bool residual(int line, double T, LineState& state, double& F) const {
        int ierr;
        Text255 herr;
        if (!stateOnLine(line, T, x, state, ierr, herr)) return false;
        F = propertyByLetter(letter, T, state.rho, x) - target;
        return std::isfinite(F);
    }

    // From a first point, with its value, to the second temperature, and on by the secant method; `ends` may hold a
    // bracket from the start.
    bool find(int line, Point last, double next, RootBracket ends, Root& root) const {
        double tolerance = 1e-6;  // [J/mol or J/(mol K)]
        ends.takeLast(last.T, last.F);
        for (int pass = 1; pass <= 20; ++pass) {
            if (pass == 10 || (letter != 'S' && (pass == 15 || pass == 18))) tolerance *= 10.0;
            const double here = next;
            LineState state;
            Point now{here, 0.0};
            if (!residual(line, here, state, now.F)) {
                next *= 0.999;
                continue;
            }
            if (std::fabs(now.F) < tolerance) {
                root = {line == retrogradeVaporLine ? vaporLine : line, state.at.T, state.at.p, state.rho};
                return true;
            }
            ends.takeLast(now.T, now.F);
            next = now.F == last.F ? ends.middle() : secant(last, now);
            if (ends.closed() && !(next >= ends.lower() && next <= ends.upper())) next = ends.middle();
            if (icomp > 0 && next <= Tmin / 10.0) {
                if (!(line == sublimationBranch && pass == 1)) return false;
                next = 0.0;
            }
            if (next < Tmin && line != sublimationBranch) next = Tmin;
            last = now;
        }
        return false;
    }

    // The root next to the critical density by the start that the splines of a mixture's envelope have in a column; the
    // retrograde side of the dew line has a line of its own. `started` tells whether there was a start.
    bool fromSplines(int column, int line, double Dc, double densityOfHighestT, bool& started, Root& root) const {
        started = false;
        if (!saturationSpline.SPLINEREADY || icomp > 0) return false;
        double density = Dc;
        int ierr;
        Text255 herr;
        SPLNROOT(column, 0, target, density, ierr, herr);
        if (ierr != 0) return false;
        const double T = SPLNVAL(modelTags.NC + 1, 0, density, ierr, herr);
        if (ierr != 0) return false;
        const bool retrograde = line == vaporLine && densityOfHighestT > 0.0 &&
                                density > std::min(densityOfHighestT, Dc) && density < std::max(densityOfHighestT, Dc);
        const int way = retrograde ? retrogradeVaporLine : line;
        LineState state;
        double F;
        started = residual(way, T, state, F);
        return started && find(way, {T, F}, T - 0.1, {}, root);
    }

    // The root next to the critical point of a mixture, where the temperature does not tell the states apart.
    bool besideCritical(int line, Root& root) const {
        if (icomp > 0) return false;
        const double tolerance = letter == 'S' ? 1e-8 : 1e-6;
        PhasePair pair;
        int foundLine;
        if (!rootOnEnvelope(letter, target, line, x, tolerance, foundLine, pair)) return false;
        root = {foundLine, pair.T, pair.p, foundLine == liquidLine ? pair.Dl : pair.Dv};
        return true;
    }

    // The root between two temperatures of the vapor line with known residuals.
    bool between(Point a, Point b, Root& root) const {
        RootBracket ends;
        ends.takeLast(b.T, b.F);
        return find(vaporLine, a, 0.5 * (a.T + b.T), ends, root);
    }
};

// Keeps the roots on the lines asked for, in the order in which they were found.
struct RootList {
    int kph;
    int count = 0;
    Root root[3]{};
    void take(const Root& found) {
        if (kph == 0 || found.line == kph) root[count++] = found;
    }
};

}  // namespace

void SATH(double h, const Composition& x, int kph, int& nroot, int& k1, double& t1, double& p1, double& d1, int& k2,
          double& t2, double& p2, double& d2, int& ierr, Text255& herr) {
    nroot = k1 = k2 = 0;
    t1 = p1 = d1 = t2 = p2 = d2 = 0.0;
    int icomp;
    ISPURE(x, icomp);
    double tm, pm, Dm;
    MAXT(x, tm, pm, Dm, ierr, herr);
    double Tc, pc, Dc;
    CRITP(x, Tc, pc, Dc, ierr, herr);
    if (ierr > 0) {
        ierr = 160;
        wrapMessage("[SATH error 160] ", herr);
        ERRMSG(ierr, herr);
        return;
    }
    ierr = 0;
    herr.clear();
    RMIX(x);
    const bool energy = inverseControl.ENERGYMODE != 0;
    const double Tmin = lowestLineTemperature(x, icomp);
    belongTo(x, icomp);
    // the maximum of the energy shares its place with a number of SATTP, which the search itself calls
    const LineExtremum highestEnergy = saturationExtrema.highestEnergy;
    fillColdEnd(x, icomp, Tmin, Tc);
    if (energy) saturationExtrema.highestEnergy = highestEnergy;
    LineExtremum highest;
    EHMAXX(x, energy ? 1 : 0, highest.value, highest.T, ierr, herr);
    if (ierr > 0) return;
    const SaturationExtrema& known = saturationExtrema;
    const double coldLiquid = energy ? known.liquidEnergy : known.liquidEnthalpy;
    const double coldVapor = energy ? known.vaporEnergy : known.vaporEnthalpy;

    const LineSearch search{energy ? 'E' : 'H', h, x, icomp, Tmin, Tc};
    const double hc = propertyByLetter(search.letter, Tc, Dc, x);
    int line = h < hc ? liquidLine : vaporLine;
    if (icomp > 0 && (kph == meltingLine || kph == sublimationBranch)) line = kph;

    const auto out = [&](int code, std::string_view relation, std::string_view limitName, double limit) {
        ierr = code;
        message(herr, "[SATH error", Integer{3, code}, "] enthalpy ", relation, "; h =", General{12, 5, h}, " J/mol, ",
                limitName, " =", General{12, 5, limit}, " J/mol", nullCharacter);
        ERRMSG(ierr, herr);
    };
    if (line == sublimationBranch && h > coldVapor) return out(8, "greater than triple point value", "max", coldVapor);
    if ((line == liquidLine || line == meltingLine) && h < coldLiquid)
        return out(2, "below triple-point value", "min", coldLiquid);
    if (line == vaporLine && h > highest.value) return out(4, "greater than maximum value", "max", highest.value);

    int failures = 0, failedRoot = 0;
    RootList roots{kph};
    Root root;
    const auto attempt = [&](bool success, int number) {
        if (success) {
            roots.take(root);
        } else {
            ++failures;
            failedRoot = number;
        }
    };

    // first root: the liquid line or the warm side of the vapor line
    const Point criticalPoint{Tc, hc - h}, maximum{highest.T, highest.value - h};
    bool started = false;
    if (!energy && (line == liquidLine || line == vaporLine)) {
        const bool success = search.fromSplines(modelTags.NC + 4, line, Dc, Dm, started, root);
        if (started) attempt(success || search.besideCritical(line, root), 1);
    }
    if (!started) {
        LineState state;
        double F;
        switch (line) {
            case liquidLine:
                attempt(search.find(line, criticalPoint, static_cast<double>(0.95f) * Tc, {}, root) ||
                            search.besideCritical(line, root),
                        1);
                break;
            case vaporLine:
                attempt(search.between(criticalPoint, maximum, root) || search.besideCritical(line, root), 1);
                break;
            case meltingLine:
                attempt(search.residual(line, Tmin, state, F) &&
                            search.find(line, {Tmin, F}, static_cast<double>(0.85f) * Tc, {}, root),
                        1);
                break;
            default:
                attempt(search.find(line, {Tmin, coldVapor - h}, static_cast<double>(0.95f) * Tmin, {}, root), 1);
                break;
        }
    }

    // second root: the cold side of the vapor line
    if ((kph == 0 || kph == vaporLine) && h > coldVapor && h < highest.value)
        attempt(search.between({Tmin, coldVapor - h}, maximum, root), 2);

    if (energy) saturationExtrema.highestEnergy = highest;
    nroot = roots.count;
    k1 = roots.root[0].line;
    t1 = roots.root[0].T;
    p1 = roots.root[0].p;
    d1 = roots.root[0].rho;
    k2 = roots.root[1].line;
    t2 = roots.root[1].T;
    p2 = roots.root[1].p;
    d2 = roots.root[1].rho;
    ierr = 0;
    herr.clear();
    if (failures == 1) {
        ierr = 161;
        message(herr, "[SATH error 161] iteration for saturation state did not converge for h =", General{12, 5, h},
                " J/mol; root = ", Integer{1, failedRoot}, nullCharacter);
        ERRMSG(ierr, herr);
    } else if (failures == 2) {
        ierr = 162;
        message(herr, "[SATH error 162] iteration for saturation state did not converge for both roots; h =",
                General{12, 5, h}, " J/mol", nullCharacter);
        ERRMSG(ierr, herr);
    } else if (nroot == 0 && kph == vaporLine) {
        out(2, "below triple-point value", "min", coldVapor);
    } else if (nroot == 0 && kph == liquidLine) {
        out(4, "greater than maximum value", "max", hc);
    }
}

namespace {

// Replaces a word wherever it stands; the new one is not longer.
void replaceWord(Text255& text, std::string_view old, std::string_view replacement) {
    Text255 result;
    int to = 1;
    for (int from = 1; from <= Text255::size;) {
        if (text.slice(from, Text255::size).starts_with(old)) {
            for (char c : replacement) result[to++] = c;
            from += static_cast<int>(old.size());
        } else {
            result[to++] = text[from++];
        }
    }
    text = result;
}

}  // namespace

void SATE(double e, const Composition& x, int kph, int& nroot, int& k1, double& t1, double& p1, double& d1, int& k2,
          double& t2, double& p2, double& d2, int& ierr, Text255& herr) {
    inverseControl.ENERGYMODE = 1;
    SATH(e, x, kph, nroot, k1, t1, p1, d1, k2, t2, p2, d2, ierr, herr);
    inverseControl.ENERGYMODE = 0;
    if (ierr != 0) {
        replaceWord(herr, "SATH", "SATE");
        replaceWord(herr, "h =", "e =");
        replaceWord(herr, "enthalpy", "energy");
    }
}

void SATS(double s, const Composition& x, int kph, int& nroot, int& k1, double& t1, double& p1, double& d1, int& k2,
          double& t2, double& p2, double& d2, int& k3, double& t3, double& p3, double& d3, int& ierr, Text255& herr) {
    nroot = k1 = k2 = k3 = 0;
    t1 = p1 = d1 = t2 = p2 = d2 = t3 = p3 = d3 = 0.0;
    int icomp;
    ISPURE(x, icomp);
    double tm, pm, Dm;
    MAXT(x, tm, pm, Dm, ierr, herr);
    double Tc, pc, Dc;
    CRITP(x, Tc, pc, Dc, ierr, herr);
    if (ierr > 0) {
        ierr = 160;
        wrapMessage("[SATS error 160] ", herr);
        ERRMSG(ierr, herr);
        return;
    }
    ierr = 0;
    herr.clear();
    RMIX(x);
    const double Tmin = lowestLineTemperature(x, icomp);
    fillColdEnd(x, icomp, Tmin, Tc);
    LineExtremum high, low, liquidLow;
    SMAXX(x, high, low, liquidLow, ierr, herr);
    if (ierr > 0) return;
    const double coldLiquid = saturationExtrema.liquidEntropy, coldVapor = saturationExtrema.vaporEntropy;
    const double lowest = liquidLow.T > 0.0 ? std::min(coldLiquid, liquidLow.value) : coldLiquid;
    const double highest = high.T > 0.0 ? std::max(coldVapor, high.value) : coldVapor;

    const LineSearch search{'S', s, x, icomp, Tmin, Tc};
    const double sc = propertyByLetter('S', Tc, Dc, x);
    int line = s < sc ? liquidLine : vaporLine;
    if (icomp > 0 && (kph == meltingLine || kph == sublimationBranch)) line = kph;

    const auto out = [&](int code, std::string_view relation, std::string_view limitName, double limit) {
        ierr = code;
        message(herr, "[SATS error", Integer{3, code}, "] entropy ", relation, "; s =", General{12, 5, s}, " J/mol-K, ",
                limitName, " =", General{12, 5, limit}, " J/mol-K", nullCharacter);
        ERRMSG(ierr, herr);
    };
    if (line == sublimationBranch && s < coldVapor) return out(8, "less than triple point entropy", "smin", coldVapor);
    if (line == liquidLine && s < lowest) return out(2, "below minimum entropy", "smin", lowest);
    if (line == vaporLine && s > highest) return out(4, "greater than maximum entropy", "smax", highest);

    int failures = 0, failedRoot = 0, number = 0;
    RootList roots{kph};
    Root root;
    const auto attempt = [&](bool success) {
        ++number;
        if (success) {
            roots.take(root);
        } else {
            ++failures;
            failedRoot = number;
        }
    };
    const auto vaporSegment = [&](double Ta, double sa, double Tb, double sb) {
        const Point a{Ta, sa - s}, b{Tb, sb - s};
        if (a.F * b.F <= 0.0) attempt(search.between(a, b, root));
    };
    // the first root may lie next to the critical point of a mixture
    const auto warmRoot = [&](auto way) {
        bool started = false;
        const bool success = search.fromSplines(modelTags.NC + 5, line, Dc, Dm, started, root);
        attempt((started ? success : way()) || search.besideCritical(line, root));
    };
    const auto warmVaporSegment = [&](double T, double value) {
        const Point a{Tc, sc - s}, b{T, value - s};
        if (a.F * b.F <= 0.0) warmRoot([&] { return search.between(a, b, root); });
    };

    if (line == liquidLine) {
        warmRoot([&] { return search.find(line, {Tc, sc - s}, static_cast<double>(0.95f) * Tc, {}, root); });
    } else if (line == meltingLine) {
        const double start = liquidLow.T > 0.0 ? liquidLow.T : Tmin;
        LineState state;
        double F;
        attempt(search.residual(line, start, state, F) &&
                search.find(line, {start, F}, static_cast<double>(0.85f) * Tc, {}, root));
    } else if (line == sublimationBranch) {
        attempt(search.find(line, {Tmin, coldVapor - s}, static_cast<double>(0.95f) * Tmin, {}, root));
    } else if (high.T <= 0.0) {
        warmVaporSegment(Tmin, coldVapor);
    } else {
        warmVaporSegment(high.T, high.value);
    }
    if ((line == liquidLine || line == vaporLine) && (kph == 0 || kph == vaporLine) && high.T > 0.0) {
        // below the maximum: down to the minimum and up again toward the cold end
        const bool dips = low.T > 0.0;
        vaporSegment(high.T, high.value, dips ? low.T : Tmin, dips ? low.value : coldVapor);
        if (dips) vaporSegment(low.T, low.value, Tmin, coldVapor);
    }

    nroot = roots.count;
    const Root* r = roots.root;
    k1 = r[0].line, t1 = r[0].T, p1 = r[0].p, d1 = r[0].rho;
    k2 = r[1].line, t2 = r[1].T, p2 = r[1].p, d2 = r[1].rho;
    k3 = r[2].line, t3 = r[2].T, p3 = r[2].p, d3 = r[2].rho;
    ierr = 0;
    herr.clear();
    if (line == meltingLine && kph == meltingLine && nroot > 0) {
        double tmin, tmax, Dmax, pmax;
        LIMITX("EOS", t1, d1, p1, x, tmin, tmax, Dmax, pmax, ierr, herr);
    }
    if (failures == 1) {
        ierr = 161;
        message(herr, "[SATS error 161] iteration for saturation state given entropy did not converge for s =",
                General{12, 5, s}, " J/mol-K; root = ", Integer{1, failedRoot}, nullCharacter);
        ERRMSG(ierr, herr);
    } else if (failures == 2) {
        ierr = 162;
        message(herr,
                "[SATS error 162] iteration for saturation state given entropy did not converge for two of the roots; "
                "s =",
                General{12, 5, s}, " J/mol-K", nullCharacter);
        ERRMSG(ierr, herr);
    } else if (failures == 3) {
        ierr = 163;
        message(herr,
                "[SATS error 163] iteration for saturation state given entropy did not converge for all roots; s =",
                General{12, 5, s}, " J/mol-K", nullCharacter);
        ERRMSG(ierr, herr);
    } else if (nroot == 0 && ierr == 0) {
        ierr = 1;
        message(herr, "[SATS error", Integer{3, ierr}, "] no roots found for specified phase; s =", General{12, 5, s},
                " J/mol-K", nullCharacter);
        ERRMSG(ierr, herr);
    }
}

}  // namespace frigana
