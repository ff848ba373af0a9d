// Figures of one fluid: what the blocks of its file give, against one another.
#include <algorithm>
#include <cmath>

#include "CORE_ANC.h"
#include "CORE_CPP.h"
#include "CORE_PH0.h"
#include "CORE_STN.h"
#include "DISPATCH.h"
#include "DataCheck.h"
#include "FluidConstants.h"
#include "FluidFilePath.h"
#include "FluidFiles.h"
#include "LIMITS.h"
#include "MELTING.h"
#include "Message.h"
#include "ModelTags.h"
#include "OPENFL.h"
#include "PROP_SUB.h"
#include "ReaderReport.h"
#include "SAT_SUB.h"
#include "SAT_SUB_EXPANSION.h"
#include "SETUP.h"
#include "TRNSP.h"
#include "TextFile.h"

namespace frigana {

namespace {

constexpr double normalPressure = 101.325;         // [kPa]
constexpr double fitLower = 0.6, fitUpper = 0.99;  // of Tc: where the ancillaries have bounds
constexpr double lineUpper = 0.9998;               // of Tc: how far the ancillaries are fitted
constexpr double largestJump = 1.0;                // [%]
constexpr double lowDensity = 1e-8;                // [mol/L]

double percent(double value, double reference) {
    return 100.0 * (value - reference) / reference;
}

// The largest of several deviations, and where it stands.
struct Largest {
    double value = 0.0, T = 0.0, D = 0.0;
    bool any = false;

    void take(double deviation, double temperature, double density = 0.0) {
        // A deviation that is not a number is worse than any other.
        if (any && !(std::fabs(deviation) > std::fabs(value)) && !std::isnan(deviation)) return;
        any = true;
        value = deviation;
        T = temperature;
        D = density;
    }
};

std::string_view words(const Text255& herr) {
    const std::string_view text = herr.view();
    return trimRight(text.substr(0, text.find('\0')));
}

// For its time the saturation comes from the equation alone.
class WithoutExpansions {
  public:
    WithoutExpansions() { expansionControl.enabled = false; }
    ~WithoutExpansions() { expansionControl.enabled = enabled_; }
    WithoutExpansions(const WithoutExpansions&) = delete;
    WithoutExpansions& operator=(const WithoutExpansions&) = delete;

  private:
    const bool enabled_ = expansionControl.enabled;
};

// One fluid that is set up in slot 1.
class Examination {
  public:
    explicit Examination(FluidReport& report) : report_(report) {}

    void run() {
        criticalPoint();
        triplePoint();
        boilingPoint();
        saturationLine();
        idealGas();
        transport();
        surfaceTension();
        constants();
        solidLines();
        expansions();
    }

  private:
    void give(FigureOf which, double value, double T = 0.0, double D = 0.0) {
        Figure& figure = report_[which];
        const double bound = kindOf(which).bound;
        figure.computed = true;
        figure.value = value;
        figure.T = T;
        figure.D = D;
        const bool fits = bound == noBound ? std::isfinite(value) : std::fabs(value) <= bound;
        figure.verdict = fits ? Verdict::clean : Verdict::outOfBound;
    }
    void give(FigureOf which, const Largest& largest) {
        if (largest.any) give(which, largest.value, largest.T, largest.D);
    }
    template <class... Piece>
    void fail(FigureOf which, double T, double D, const Piece&... pieces) {
        Figure& figure = report_[which];
        if (figure.verdict == Verdict::outOfBound && !figure.computed) return;  // the first failure stays
        figure.verdict = Verdict::outOfBound;
        figure.computed = false;
        figure.T = T;
        figure.D = D;
        message(figure.note, pieces...);
    }

    const FluidFileScan& header() const { return report_.scan; }

    // Lower end of the saturation line: some equations do not reach the triple point.
    double lowestTemperature() const { return std::max(fluidConstants.TTPN[1], fluidConstants.TMEOS[1]); }

    bool saturation(double T, double& p, double& rhol, double& rhov) {
        Composition xl = x_, xv = x_;
        SATT(T, x_, 1, p, rhol, rhov, xl, xv, ierr_, herr_);
        return ierr_ == 0;
    }

    void criticalPoint() {
        const double Tc = header().criticalTemperature;
        double p = 0.0;
        PRESS(Tc, header().criticalDensity, x_, p);
        give(FigureOf::criticalPressure, percent(p, header().criticalPressure), Tc, header().criticalDensity);

        // Below the critical temperature of the equation some density has a negative slope of the pressure.
        double low = 0.98 * Tc, high = 1.02 * Tc;
        if (smallestSlope(low) >= 0.0 || smallestSlope(high) <= 0.0)
            return fail(FigureOf::criticalTemperature, Tc, 0.0, "not within 2 % of that of the header");
        for (int k = 0; k < 40; ++k) {
            const double middle = 0.5 * (low + high);
            (smallestSlope(middle) < 0.0 ? low : high) = middle;
        }
        give(FigureOf::criticalTemperature, 0.5 * (low + high) - Tc, Tc);
    }

    // Smallest dp/drho at a temperature close to the critical one, from 0.6 to 1.4 of the critical density: the best of
    // a grid, refined about it.
    double smallestSlope(double T) const {
        double first = 0.6 * header().criticalDensity, last = 1.4 * header().criticalDensity, smallest = 0.0;
        constexpr int steps = 16;
        for (int round = 0; round < 4; ++round) {
            const double step = (last - first) / steps;
            int best = 0;
            for (int k = 0; k <= steps; ++k) {
                double slope = 0.0;
                DPDD(T, first + k * step, x_, slope);
                if (k == 0 || slope < smallest) {
                    smallest = slope;
                    best = k;
                }
            }
            const double middle = first + best * step;
            first = middle - step;
            last = middle + step;
        }
        return smallest;
    }

    void triplePoint() {
        const double T = lowestTemperature();
        double p = 0.0, rhol = 0.0, rhov = 0.0;
        if (!saturation(T, p, rhol, rhov)) {
            fail(FigureOf::triplePressure, T, 0.0, words(herr_));
            fail(FigureOf::tripleDensity, T, 0.0, words(herr_));
            return;
        }
        give(FigureOf::triplePressure, percent(p, fluidConstants.PTPN[1]), T);
        give(FigureOf::tripleDensity, percent(rhol, fluidConstants.DTPN[1]), T);
    }

    // Where the triple point lies above one atmosphere, the solid sublimates at the header's temperature.
    void boilingPoint() {
        double T = 0.0, rhol = 0.0, rhov = 0.0;
        Composition xl = x_, xv = x_;
        if (fluidConstants.PTPN[1] > normalPressure && header().boilingPoint < header().triplePoint)
            SUBLP(normalPressure, x_, T, ierr_, herr_);
        else
            SATP(normalPressure, x_, 1, T, rhol, rhov, xl, xv, ierr_, herr_);
        if (ierr_ != 0) return fail(FigureOf::boilingPoint, header().boilingPoint, 0.0, words(herr_));
        give(FigureOf::boilingPoint, T - header().boilingPoint, header().boilingPoint);
    }

    void saturationLine() {
        struct Row {
            FigureOf fit, whole;
            void (*ancillary)(double, const Composition&, double&, int&, Text255&);
            Largest inFit, onLine;
        };
        Row rows[] = {{FigureOf::vaporPressure, FigureOf::vaporPressureWhole, PSATT, {}, {}},
                      {FigureOf::liquidDensity, FigureOf::liquidDensityWhole, DLSATT, {}, {}},
                      {FigureOf::vaporDensity, FigureOf::vaporDensityWhole, DVSATT, {}, {}}};
        const double Tc = fluidConstants.TCRIT[1], first = lowestTemperature();
        constexpr int points = 140;
        for (int k = 0; k <= points; ++k) {
            // Closer and closer to the critical point, with 0.99 Tc among the temperatures.
            const double last = (k <= 120 ? fitUpper : lineUpper) * Tc;
            const double T = k <= 120 ? first + k * (last - first) / 120.0
                                      : Tc * (fitUpper + (k - 120) * (lineUpper - fitUpper) / (points - 120));
            const bool bounded = T >= fitLower * Tc && T <= fitUpper * Tc * (1.0 + 1e-12);
            double truth[3];
            const bool solved = saturation(T, truth[0], truth[1], truth[2]);
            for (int i = 0; i < 3; ++i) {
                Row& row = rows[i];
                if (!solved) {
                    fail(bounded ? row.fit : row.whole, T, 0.0, words(herr_));
                    continue;
                }
                double value = 0.0;
                int status = 0;
                Text255 text;
                row.ancillary(T, x_, value, status, text);
                if (status != 0) {
                    fail(bounded ? row.fit : row.whole, T, 0.0, words(text));
                    continue;
                }
                const double deviation = percent(value, truth[i]);
                if (bounded) row.inFit.take(deviation, T);
                row.onLine.take(deviation, T);
            }
        }
        for (const Row& row : rows) {
            if (report_[row.fit].verdict == Verdict::absent) give(row.fit, row.inFit);
            if (report_[row.whole].verdict == Verdict::absent) give(row.whole, row.onLine);
        }
    }

    void idealGas() {
        const double low = lowestTemperature(), high = fluidConstants.TXEOS[1];
        const bool both = readOtherForm();
        Largest limit, forms;
        constexpr int points = 50;
        for (int k = 0; k <= points; ++k) {
            const double T = low + k * (high - low) / points;
            const double ideal = CP0K(1, T);
            if (!(ideal > 0.0)) {
                fail(FigureOf::heatCapacityLimit, T, 0.0, "the heat capacity of the ideal gas is not positive");
                return;
            }
            double cv = 0.0, cp = 0.0;
            CVCP(T, lowDensity, x_, cv, cp);
            limit.take(percent(cp, ideal), T, lowDensity);
            if (both) {
                const double helmholtz = fluidConstants.REOS[1] * (1.0 - PH0PH0(1, 2, 0, T, 0.0));
                forms.take(percent(CP0CPP(1, T), helmholtz), T);
            }
        }
        give(FigureOf::heatCapacityLimit, limit);
        give(FigureOf::heatCapacityForms, forms);
    }

    // Reads the ideal-gas block that the equation does not point to; false if there is none.
    bool readOtherForm() {
        const FluidFileScan& scan = report_.scan;
        const int cpp = scan.find("AUX", "CPP"), ph0 = scan.find("AUX", "PH0");
        if (cpp == 0 || ph0 == 0) return false;
        const bool pointsToCpp = modelTags.HMODCP[1].startsWith("CP");
        const int body = scan.section[pointsToCpp ? ph0 : cpp].body;
        int unit = 12, status = 0;
        Text255 name = report_.file, text;
        OPENFL(unit, name, 1, status, text);
        if (status != 0) return false;
        if (skipLines(unit, body - 1, status, text)) {
            if (pointsToCpp)
                SETPH0(unit, 1, fluidFiles.HCAS[1], status, text);
            else
                SETCPP(unit, 1, fluidFiles.HCAS[1], status, text);
        }
        closeUnit(unit);
        if (status == 0) return true;
        fail(FigureOf::heatCapacityForms, 0.0, 0.0, words(text));
        return false;
    }

    // --- transport

    struct TransportPoint {
        double s = 0.0, T = 0.0, D = 0.0;  // place on the path [-], state
        double value[2] = {0.0, 0.0};      // viscosity, conductivity
        bool valid = false;
    };
    static constexpr FigureOf transportFigures[2] = {FigureOf::viscosity, FigureOf::conductivity};

    // False outside of the limits of a model.
    bool within(double T, double D, double p) {
        for (const std::string_view kind : {"EOS", "ETA", "TCX"}) {
            double tmin, tmax, Dmax, pmax;
            LIMITX(Text3(kind), T, D, p, x_, tmin, tmax, Dmax, pmax, ierr_, herr_);
            if (ierr_ != 0) return false;
        }
        return true;
    }

    // The properties at a place of a path; not valid outside of the limits.
    template <class Path>
    TransportPoint at(const Path& path, double s) {
        TransportPoint point;
        point.s = s;
        if (!path(s, point.T, point.D)) return point;
        double p = 0.0;
        PRESS(point.T, point.D, x_, p);
        if (!within(point.T, point.D, p)) return point;
        TRNPRP(point.T, point.D, x_, point.value[0], point.value[1], ierr_, herr_);
        for (int i = 0; i < 2; ++i) {
            if (point.value[i] > 0.0 && std::isfinite(point.value[i])) continue;
            if (ierr_ != 0)
                fail(transportFigures[i], point.T, point.D, words(herr_));
            else
                fail(transportFigures[i], point.T, point.D, "not positive");
            return point;
        }
        point.valid = true;
        return point;
    }

    static double change(const TransportPoint& a, const TransportPoint& b, int i) {
        return 100.0 * std::fabs(a.value[i] - b.value[i]) / std::max(a.value[i], b.value[i]);
    }

    // Halves an interval until the change in it is small; what is left after the last halving is a jump.
    template <class Path>
    void followJump(const Path& path, const TransportPoint& a, const TransportPoint& b, int i, int halvings = 20) {
        const double percent = change(a, b, i);
        if (percent <= largestJump || halvings == 0) {
            jumps_[i].take(halvings == 0 ? percent : 0.0, a.T, a.D);
            return;
        }
        const TransportPoint middle = at(path, 0.5 * (a.s + b.s));
        if (!middle.valid) return;
        followJump(path, a, middle, i, halvings - 1);
        followJump(path, middle, b, i, halvings - 1);
    }

    template <class Path>
    void followPath(const Path& path) {
        constexpr int steps = 40;
        TransportPoint before = at(path, 0.0);
        for (int k = 1; k <= steps; ++k) {
            const TransportPoint point = at(path, static_cast<double>(k) / steps);
            if (before.valid && point.valid)
                for (int i = 0; i < 2; ++i) followJump(path, before, point, i);
            before = point;
        }
    }

    void transport() {
        const double Tc = fluidConstants.TCRIT[1], Dc = fluidConstants.DCRIT[1];
        const double low = lowestTemperature(), high = fluidConstants.TXEOS[1], Dmax = fluidConstants.DEOS[1];

        // the two saturation lines
        for (const bool liquid : {true, false})
            followPath([&](double s, double& T, double& D) {
                double p = 0.0, rhol = 0.0, rhov = 0.0;
                T = low + s * (0.995 * Tc - low);
                const bool solved = saturation(T, p, rhol, rhov);
                D = liquid ? rhol : rhov;
                return solved;
            });
        // isochores: the dilute gas, and densities about the critical one
        for (const double reduced : {0.0, 0.5, 1.0, 1.5, 2.0}) {
            const double first = reduced == 0.0 ? low : 1.01 * Tc;
            followPath([&](double s, double& T, double& D) {
                T = first + s * (high - first);
                D = reduced * Dc;
                return true;
            });
        }
        // isotherms, below the critical temperature in two pieces
        for (const double reduced : {0.55, 0.7, 0.85, 0.95}) {
            const double T0 = reduced * Tc;
            double p = 0.0, rhol = 0.0, rhov = 0.0;
            if (T0 < low || !saturation(T0, p, rhol, rhov)) continue;
            const auto isotherm = [&](double first, double last) {
                followPath([&](double s, double& T, double& D) {
                    T = T0;
                    D = first + s * (last - first);
                    return true;
                });
            };
            isotherm(0.0, rhov);
            isotherm(rhol, Dmax);
        }
        for (const double reduced : {1.005, 1.02, 1.1, 1.3, 1.7})
            followPath([&](double s, double& T, double& D) {
                T = reduced * Tc;
                D = s * Dmax;
                return true;
            });

        for (int i = 0; i < 2; ++i) {
            if (report_[transportFigures[i]].verdict != Verdict::absent) continue;
            if (jumps_[i].any)
                give(transportFigures[i], jumps_[i]);
            else
                fail(transportFigures[i], 0.0, 0.0, "no state lies within the limits of the models");
        }
    }

    // --- surface tension, constants, lines of the solid

    void surfaceTension() {
        if (report_.scan.find("STN") == 0) return;
        const double Tc = fluidConstants.TCRIT[1];
        const double low = std::max(lowestTemperature(), fluidConstants.TMINST[1]);
        Largest rise;
        double before = 0.0;
        constexpr int points = 60;
        for (int k = 0; k <= points; ++k) {
            const double T = low + k * (0.999 * Tc - low) / points;
            double sigma = 0.0;
            STN(T, 0.0, 0.0, x_, x_, sigma, ierr_, herr_);
            if (ierr_ != 0) return fail(FigureOf::surfaceTension, T, 0.0, words(herr_));
            if (!(sigma > 0.0)) return fail(FigureOf::surfaceTension, T, 0.0, "not positive");
            rise.take(k == 0 ? 0.0 : std::max(0.0, 1000.0 * (sigma - before)), T);
            before = sigma;
        }
        give(FigureOf::surfaceTension, rise);
    }

    void constants() {
        const FluidConstants& block = fluidConstants;
        const double pairs[][2] = {
            {block.WMAS[1], header().molarMass},         {block.TTPN[1], header().triplePoint},
            {block.TNBP[1], header().boilingPoint},      {block.TCRIT[1], header().criticalTemperature},
            {block.PCRIT[1], header().criticalPressure}, {block.DCRIT[1], header().criticalDensity},
            {block.ACCEN[1], header().acentricFactor}};
        Largest difference;
        for (const auto& [own, headed] : pairs) difference.take(own == headed ? 0.0 : percent(own, headed), 0.0);
        give(FigureOf::header, difference);

        const double T = 0.7 * header().criticalTemperature;
        double p = 0.0, rhol = 0.0, rhov = 0.0;
        if (T < lowestTemperature()) return;  // solid, such as carbon dioxide
        if (saturation(T, p, rhol, rhov))
            give(FigureOf::acentricFactor, header().acentricFactor + 1.0 + std::log10(p / header().criticalPressure),
                 T);
        else
            fail(FigureOf::acentricFactor, T, 0.0, words(herr_));
    }

    void solidLines() {
        const double T = header().triplePoint, triple = fluidConstants.PTPN[1];
        double p = 0.0;
        if (report_.scan.find("MLT") > 0) {
            MELTT(T, x_, p, ierr_, herr_);
            if (ierr_ > 0)
                fail(FigureOf::melting, T, 0.0, words(herr_));
            else
                give(FigureOf::melting, p - triple, T);
        }
        if (report_.scan.find("SBL") > 0) {
            SUBLT(T, x_, p, ierr_, herr_);
            if (ierr_ > 0)
                fail(FigureOf::sublimation, T, 0.0, words(herr_));
            else
                give(FigureOf::sublimation, percent(p, triple), T);
        }
    }

    // The file of expansions beside the fluid file.
    void expansions() {
        int unit = 12;
        if (!openBesideFluid(1, ".SAT", unit)) return;
        static ExpansionTable table;
        const bool whole = readExpansions(unit, table);
        closeUnit(unit);
        if (!whole) return fail(FigureOf::expansions, 0.0, 0.0, "the file of expansions is damaged");
        if (table.fingerprint != equationFingerprint(1))
            return fail(FigureOf::expansions, 0.0, 0.0, "the file of expansions was made from another equation");
        constexpr int states = 200;
        Largest largest;
        const auto parts = [](double value, double reference) { return 1e12 * (value / reference - 1.0); };
        for (int k = 0; k <= states; ++k) {
            const double T =
                k < states ? table.lowestT + k * (table.highestT - table.lowestT) / states : table.highestT;
            double p = 0.0, rhol = 0.0, rhov = 0.0;
            if (!saturation(T, p, rhol, rhov)) return fail(FigureOf::expansions, T, 0.0, words(herr_));
            // of the vapor, since that of a cold liquid drowns in the rounding of its density
            PRESS(T, rhov, x_, p);
            const ExpandedState byT = expandedAtT(table, T);
            largest.take(parts(byT.p, p), T);
            largest.take(parts(byT.rhol, rhol), T, rhol);
            largest.take(parts(byT.rhov, rhov), T, rhov);
            if (p < table.lowestP || p > table.highestP) continue;
            const ExpandedState byP = expandedAtP(table, p);
            largest.take(parts(byP.T, T), T);
            largest.take(parts(byP.rhol, rhol), T, rhol);
            largest.take(parts(byP.rhov, rhov), T, rhov);
        }
        give(FigureOf::expansions, largest);
    }

    FluidReport& report_;
    Composition x_ = unitComposition(1);
    Largest jumps_[2];
    int ierr_ = 0;
    Text255 herr_;
};

// A block that another names is read only where it stands behind that one.
void checkPointers(FluidReport& report) {
    struct Row {
        std::string_view key;  // of the section that names the block
        Text3 named;
    };
    const ModelTags& tags = modelTags;
    const Row rows[] = {{"EOS", tags.HMODCP[1]},
                        {"ETA", tags.HMDETA[1]},
                        {"TCX", tags.HMDTCX[1]},
                        {"TCX", tags.HTCXCR[1]},
                        {"TRN", tags.HTCXCRECS[1]}};
    constexpr std::string_view blocks[] = {"CPP", "PH0", "PHG", "CI1", "CI2", "TK1", "TK3", "TK4", "TK6"};
    FluidFileScan& scan = report.scan;
    for (const Row& row : rows) {
        const int from = scan.find(row.key);
        if (from == 0 || std::none_of(std::begin(blocks), std::end(blocks), [&](auto b) { return row.named == b; }))
            continue;
        if (scan.find("AUX", row.named.trimmed(), from) > 0) continue;
        Text255 text;
        message(text, "the section ", row.key, " names the block ", row.named, ", which does not stand behind it");
        scan.faults.add(scan.section[from].line, text);
    }
}

void noteModels(ModelsChosen& models) {
    const ModelTags& tags = modelTags;
    models.equation = tags.HMXEOS[1];
    models.idealGas = tags.HMODCP[1];
    models.viscosity = tags.HETA[1];
    models.conductivity = tags.HTCX[1];
    models.enhancement = models.conductivity == "ECS" ? tags.HTCXCRECS[1] : tags.HTCXCR[1];
    models.surfaceTension = tags.HSTENK[1];
}

// A figure beyond its bound is known if the file says why, and how far it may go.
void excuseKnown(FluidReport& report) {
    FluidFileScan& scan = report.scan;
    for (int k = 1; k <= scan.knownCount; ++k) {
        const KnownDeviation& known = scan.known[k];
        bool named = false;
        for (int i = 0; i < figureCount; ++i) {
            if (known.figure != figureKinds[i].name) continue;
            named = true;
            Figure& figure = report.figures[i];
            if (figure.verdict != Verdict::outOfBound || !figure.computed) continue;
            if (!(std::fabs(figure.value) <= known.bound)) continue;
            figure.verdict = Verdict::known;
            figure.note = known.reason;
        }
        if (named) continue;
        Text255 text;
        message(text, "a known deviation names no figure: ", known.figure);
        scan.faults.add(0, text);
    }
}

}  // namespace

void checkFluid(std::string_view file, FluidReport& report) {
    const WithoutExpansions byTheEquation;
    report = FluidReport{};
    report.file.assign(file);
    scanFluidFile(file, report.scan);

    FileNames names{};
    names[1].assign(file);
    Text3 reference = "DEF";
    // A file that was changed since is read again, although its name is the same.
    modelTags.LFORCESETUP = true;
    lastRefusal.clear();
    SETUP(1, names, "HMX.BNC", reference, report.ierr, report.message);
    report.message.assign(Text255(words(report.message)).trimmed());
    if (report.ierr > 0 || !lastRefusal.blank()) report.refusal = lastRefusal;
    report.readable = report.ierr <= 0;
    if (report.readable) {
        noteModels(report.models);
        checkPointers(report);
        Examination(report).run();
        excuseKnown(report);
    }
    report.clean = report.ierr == 0 && report.scan.faults.count == 0 &&
                   std::none_of(std::begin(report.figures), std::end(report.figures),
                                [](const Figure& figure) { return figure.verdict == Verdict::outOfBound; });
}

}  // namespace frigana
