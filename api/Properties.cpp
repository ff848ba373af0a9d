#include "Properties.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "12_MyVariables.h"
#include "CORE_STN.h"
#include "EngineAccess.h"
#include "FLASH2.h"
#include "FLSH_SUB.h"
#include "LIMITS.h"
#include "Letters.h"
#include "NamedRequest.h"
#include "Reason.h"
#include "SETUP.h"
#include "StateQuery.h"
#include "StoredBlends.h"
#include "TPRHO.h"
#include "TRNSP.h"
#include "UTILITY.h"

namespace frigana::programs {

namespace {

using catalogue::Quantity;
using Json = nlohmann::ordered_json;

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
constexpr double missing = -9999900.0;  // results of the engine at or below are missing
constexpr int byMass = 2;               // quality of TQFLSH and PQFLSH
constexpr int lowerDensity = 1;         // root of THFLSH and TSFLSH

constexpr PropertyRow rows[] = {
    {Property::temperature, "T", "temperature", Quantity::temperature},
    {Property::pressure, "p", "pressure", Quantity::pressure},
    {Property::density, "d", "density", Quantity::density},
    {Property::enthalpy, "h", "specific enthalpy", Quantity::specificEnergy},
    {Property::entropy, "s", "specific entropy", Quantity::specificHeat},
    {Property::quality, "q", "vapor quality by mass", Quantity::quality},
    {Property::specificVolume, "v", "specific volume", Quantity::specificVolume},
    {Property::internalEnergy, "u", "specific internal energy", Quantity::specificEnergy},
    {Property::isochoricHeat, "cv", "isochoric heat capacity", Quantity::specificHeat},
    {Property::isobaricHeat, "cp", "isobaric heat capacity", Quantity::specificHeat},
    {Property::speedOfSound, "w", "speed of sound", Quantity::velocity},
    {Property::conductivity, "conductivity", "thermal conductivity", Quantity::thermalConductivity},
    {Property::viscosity, "viscosity", "viscosity", Quantity::viscosity},
    {Property::prandtl, "prandtl", "Prandtl number", Quantity::ratio},
    {Property::surfaceTension, "surface_tension", "surface tension", Quantity::surfaceTension},
    {Property::phase, "phase", "phase", Quantity::count},
    {Property::liquidDensity, "d_liquid", "density of the liquid of two phases", Quantity::density},
    {Property::vaporDensity, "d_vapor", "density of the vapor of two phases", Quantity::density},
};

enum Phase { liquid = 1, vapor, twoPhases, supercritical };

// What a flash leaves, in molar units.
struct Flash {
    double T = 0, p = 0, D = 0, Dl = 0, Dv = 0, q = 0, e = 0, h = 0, s = 0, cv = 0, cp = 0, w = 0;
    Composition x{}, y{};
    int ierr = 0;
    Text255 herr;
};

// A state from two properties in the units of the tables; M is the molar mass.
using Solve = void (*)(double a, double b, const Composition& z, double M, Flash& f);

void solveTD(double T, double D, const Composition& z, double M, Flash& f) {
    f.T = T;
    f.D = D / M;
    TDFLSH(f.T, f.D, z, f.p, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.h, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
}

// The whole state from temperature and density, behind a flash that has found these two.
void again(const Composition& z, double M, Flash& f) {
    if (f.ierr <= 0) solveTD(f.T, f.D * M, z, M, f);
}

void solveTP(double T, double p, const Composition& z, double, Flash& f) {
    f.T = T;
    f.p = p;
    TPFLSH(f.T, f.p, z, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.h, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
}
void solveTH(double T, double h, const Composition& z, double M, Flash& f) {
    f.T = T;
    f.h = h * M;
    THFLSH(f.T, f.h, z, lowerDensity, f.p, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
}
void solveTS(double T, double s, const Composition& z, double M, Flash& f) {
    f.T = T;
    TSFLSH(T, s * M, z, lowerDensity, f.p, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.h, f.cv, f.cp, f.w, f.ierr, f.herr);
    again(z, M, f);
}
void solveTQ(double T, double q, const Composition& z, double, Flash& f) {
    f.T = T;
    f.q = q;
    TQFLSH(f.T, f.q, z, byMass, f.p, f.D, f.Dl, f.Dv, f.x, f.y, f.e, f.h, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
}
void solvePD(double p, double D, const Composition& z, double M, Flash& f) {
    f.p = p;
    f.D = D / M;
    PDFLSH(f.p, f.D, z, f.T, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.h, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
}
void solvePH(double p, double h, const Composition& z, double M, Flash& f) {
    f.p = p;
    f.h = h * M;
    PHFLSH(f.p, f.h, z, f.T, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
}
void solvePS(double p, double s, const Composition& z, double M, Flash& f) {
    f.p = p;
    f.s = s * M;
    PSFLSH(f.p, f.s, z, f.T, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.h, f.cv, f.cp, f.w, f.ierr, f.herr);
}
void solvePQ(double p, double q, const Composition& z, double, Flash& f) {
    f.p = p;
    f.q = q;
    PQFLSH(f.p, f.q, z, byMass, f.T, f.D, f.Dl, f.Dv, f.x, f.y, f.e, f.h, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
}
void solveDH(double D, double h, const Composition& z, double M, Flash& f) {
    f.D = D / M;
    DHFLSH(f.D, h * M, z, f.T, f.p, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
    again(z, M, f);
}
void solveDS(double D, double s, const Composition& z, double M, Flash& f) {
    f.D = D / M;
    DSFLSH(f.D, s * M, z, f.T, f.p, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.h, f.cv, f.cp, f.w, f.ierr, f.herr);
    again(z, M, f);
}
void solveHS(double h, double s, const Composition& z, double M, Flash& f) {
    HSFLSH(h * M, s * M, z, f.T, f.p, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.cv, f.cp, f.w, f.ierr, f.herr);
    again(z, M, f);
}

struct Pair {
    char first, second;
    Solve solve;
};
constexpr Pair pairs[] = {
    {'T', 'P', solveTP}, {'T', 'D', solveTD}, {'T', 'H', solveTH}, {'T', 'S', solveTS},
    {'T', 'Q', solveTQ}, {'P', 'D', solvePD}, {'P', 'H', solvePH}, {'P', 'S', solvePS},
    {'P', 'Q', solvePQ}, {'D', 'H', solveDH}, {'D', 'S', solveDS}, {'H', 'S', solveHS},
};

// ---- quality with density, enthalpy or entropy
// ------------------------------------------------------------------------

// The line of one quality from the lowest temperature to the critical point, scanned once for all values at the same
// quality. The engine has no flash of these pairs.
class QualityLine {
  public:
    QualityLine(const Composition& z, double M, double coldest, double critical)
        : z_(z), M_(M), coldest_(coldest), critical_(critical) {}

    // The coldest state of a quality with a value of a property in the units of the tables.
    bool solve(char letter, double value, double quality, Flash& f);

  private:
    static constexpr int points = 128;
    void scan(double quality);
    double at(double T, char letter, Flash& f) const;

    const Composition& z_;
    double M_, coldest_, critical_;
    double quality_ = nothing;
    struct Scanned {
        double T, D, h, s;
    };
    std::vector<Scanned> scanned_;
};

double valueOf(char letter, double D, double h, double s) {
    return letter == 'D' ? D : letter == 'H' ? h : s;
}

double QualityLine::at(double T, char letter, Flash& f) const {
    solveTQ(T, quality_, z_, M_, f);
    return f.ierr > 0 ? nothing : valueOf(letter, f.D * M_, f.h / M_, f.s / M_);
}

void QualityLine::scan(double quality) {
    if (quality == quality_) return;
    quality_ = quality;
    scanned_.clear();
    Flash f;
    // Closer together towards the critical point, where the lines turn.
    for (int i = 0; i <= points; ++i) {
        const double share = 1.0 - static_cast<double>(i) / points;
        const double T = coldest_ + (critical_ * (1.0 - 1e-9) - coldest_) * (1.0 - share * share);
        solveTQ(T, quality, z_, M_, f);
        if (f.ierr <= 0) scanned_.push_back({T, f.D * M_, f.h / M_, f.s / M_});
    }
}

bool QualityLine::solve(char letter, double value, double quality, Flash& f) {
    scan(quality);
    for (std::size_t i = 0; i + 1 < scanned_.size(); ++i) {
        const Scanned &a = scanned_[i], &b = scanned_[i + 1];
        double low = a.T, high = b.T;
        double below = valueOf(letter, a.D, a.h, a.s) - value, above = valueOf(letter, b.D, b.h, b.s) - value;
        if (below * above > 0.0) continue;
        // False position that halves the weight of the end that stays, until the bracket is as narrow as numbers are.
        constexpr int most = 200;
        double best = std::fabs(below) < std::fabs(above) ? low : high;
        double error = std::min(std::fabs(below), std::fabs(above));
        for (int step = 0; step < most && high - low > 4e-16 * high && error > 0.0; ++step) {
            double T = (low * above - high * below) / (above - below);
            if (!(T > low && T < high)) T = 0.5 * (low + high);
            const double now = at(T, letter, f) - value;
            if (std::isnan(now)) return false;
            if (std::fabs(now) < error) {
                best = T;
                error = std::fabs(now);
            }
            if (now * above > 0.0) {
                high = T;
                above = now;
                below *= 0.5;
            } else {
                low = T;
                below = now;
                above *= 0.5;
            }
        }
        return !std::isnan(at(best, letter, f));
    }
    return false;
}

// ---- what is asked for
// ------------------------------------------------------------------------------------------------

bool between(const Flash& f) {
    return f.q > 0.0 && f.q < 1.0;
}

bool saturated(const Flash& f) {
    return f.q >= 0.0 && f.q <= 1.0;
}

double massQuality(const Flash& f, bool given) {
    if (!saturated(f)) return nothing;
    if (given || !between(f)) return f.q;
    Composition liquidMass, vaporMass;
    double quality = 0.0, liquidM = 0.0, vaporM = 0.0;
    int ierr = 0;
    Text255 herr;
    QMASS(f.q, f.x, f.y, quality, liquidMass, vaporMass, liquidM, vaporM, ierr, herr);
    return quality;
}

double fractionOf(const Composition& mole, int component) {
    Composition mass;
    double mean = 0.0;
    XMASS(mole, mass, mean);
    return Composition::holds(component) ? mass[component] : nothing;
}

// Transport properties of a single phase, calculated when the first of them is asked for.
struct Transport {
    bool known = false;
    double viscosity = nothing, conductivity = nothing;

    void of(const Flash& f, const Composition& z) {
        if (std::exchange(known, true) || between(f)) return;
        int ierr = 0;
        Text255 herr;
        TRNPRP(f.T, f.D, z, viscosity, conductivity, ierr, herr);
        if (ierr != 0 || viscosity <= missing) viscosity = nothing;
        if (ierr != 0 || conductivity <= missing) conductivity = nothing;
    }
};

double surfaceTension(Flash& f) {
    if (!saturated(f)) return nothing;
    double sigma = 0.0;
    int ierr = 0;
    Text255 herr;
    SURTEN(f.T, f.Dl, f.Dv, f.x, f.y, sigma, ierr, herr);
    return ierr == 0 ? sigma : nothing;
}

Phase phaseOf(const Flash& f, double criticalTemperature, double criticalPressure) {
    constexpr double supercriticalMark = 999.0;
    if (saturated(f)) return twoPhases;
    if (f.q == supercriticalMark || (f.T > criticalTemperature && f.p > criticalPressure)) return supercritical;
    return f.q < 0.0 ? liquid : vapor;
}

struct Facts {
    const Composition& z;
    double M, criticalTemperature, criticalPressure;
    bool qualityGiven;
};

double valueOf(int wanted, Flash& f, const Facts& facts, Transport& transport) {
    const double M = facts.M;
    const auto derivative = [&](double value) { return between(f) || value <= missing ? nothing : value / M; };
    switch (static_cast<Property>(wanted)) {
        case Property::temperature:
            return f.T;
        case Property::pressure:
            return f.p;
        case Property::density:
            return f.D * M;
        case Property::enthalpy:
            return f.h / M;
        case Property::entropy:
            return f.s / M;
        case Property::quality:
            return massQuality(f, facts.qualityGiven);
        case Property::specificVolume:
            return 1.0 / (f.D * M);
        case Property::internalEnergy:
            return f.e / M;
        case Property::isochoricHeat:
            return derivative(f.cv);
        case Property::isobaricHeat:
            return derivative(f.cp);
        case Property::speedOfSound:
            return between(f) || f.w <= missing ? nothing : f.w;
        case Property::conductivity:
            transport.of(f, facts.z);
            return transport.conductivity;
        case Property::viscosity:
            transport.of(f, facts.z);
            return transport.viscosity;
        case Property::prandtl:
            transport.of(f, facts.z);
            return transport.viscosity * derivative(f.cp) / transport.conductivity * static_cast<double>(0.001f);
        case Property::surfaceTension:
            return surfaceTension(f);
        case Property::phase:
            return phaseOf(f, facts.criticalTemperature, facts.criticalPressure);
        case Property::liquidDensity:
            return saturated(f) ? f.Dl * WMOL(f.x) : nothing;
        case Property::vaporDensity:
            return saturated(f) ? f.Dv * WMOL(f.y) : nothing;
        default:
            break;
    }
    if (!saturated(f)) return nothing;
    const int beginning = wanted - wanted % 100;
    return fractionOf(beginning == static_cast<int>(Property::vaporFraction) ? f.y : f.x, wanted - beginning);
}

bool isKnown(int wanted, int components) {
    if (wanted >= 1 && wanted <= static_cast<int>(Property::vaporDensity)) return true;
    for (const Property beginning : {Property::liquidFraction, Property::vaporFraction}) {
        const int component = wanted - static_cast<int>(beginning);
        if (component >= 1 && component <= components) return true;
    }
    return false;
}

double orNothing(double value) {
    return std::isfinite(value) ? value : nothing;
}

}  // namespace

std::span<const PropertyRow> propertyRows() {
    return rows;
}

const PropertyRow* findProperty(std::string_view name) {
    const auto* found = std::ranges::find(rows, name, &PropertyRow::name);
    return found == std::end(rows) ? nullptr : found;
}

std::string PropertyFluid::answer(const Question& question) const {
    char a = capitalLetter(question.first), b = capitalLetter(question.second);
    const double *first = question.firstValues, *second = question.secondValues;
    constexpr std::string_view letters = "TPDHSQ";
    const auto place = [&](char letter) { return letters.find(letter); };
    if (place(a) == letters.npos || place(b) == letters.npos || a == b)
        return std::string("a state needs two different properties of T, P, D, H, S, Q; here are ") + question.first +
               " and " + question.second;
    for (const int wanted : question.wanted)
        if (!isKnown(wanted, components_)) return "there is no property of the number " + std::to_string(wanted);
    if (place(a) > place(b)) {
        std::swap(a, b);
        std::swap(first, second);
    }
    std::string problem;
    if (!load(problem)) return problem;

    const Pair* pair = std::ranges::find_if(pairs, [&](const Pair& row) { return row.first == a && row.second == b; });
    const bool searched = pair == std::end(pairs);
    const Facts facts{z_, molarMass_, criticalTemperature_, criticalPressure_, b == 'Q'};
    QualityLine line(z_, molarMass_, lowestTemperature_, criticalTemperature_);
    Flash flash;
    for (std::size_t i = 0; i < question.count; ++i) {
        int code = 0;
        std::string_view text;
        if (!std::isfinite(first[i]) || !std::isfinite(second[i])) {
            code = notFinite;
            text = "a given value is not a finite number";
        } else if (b == 'Q' && !(second[i] >= 0.0 && second[i] <= 1.0)) {
            code = qualityOutOfRange;
            text = "a quality lies between 0 and 1";
        } else if (!searched) {
            flash.ierr = 0;
            pair->solve(first[i], second[i], z_, molarMass_, flash);
            code = flash.ierr;
        } else if (!line.solve(a, first[i], second[i], flash)) {
            code = noSuchState;
            text = "there is no saturated state of this quality with this density, enthalpy or entropy";
        } else {
            flash.q = second[i];
        }
        if (question.codes != nullptr) question.codes[i] = code;
        if (code != 0 && question.failed != nullptr) {
            if (text.empty())
                question.failed(question.context, i, code, reasonOf(flash.herr.view()));
            else
                question.failed(question.context, i, code, text);
        }
        Transport transport;
        double* result = question.results + i;
        for (const int wanted : question.wanted) {
            *result = code > 0 ? nothing : orNothing(valueOf(wanted, flash, facts, transport));
            result += question.count;
        }
    }
    return {};
}

// ---- opening
// ----------------------------------------------------------------------------------------------------------

bool PropertyFluid::load(std::string& problem) const {
    if (EngineAccess::loaded() == number_ && number_ != 0) return true;
    static SUBSTANCE substance;
    EngineAccess::setLoaded(0);
    problem = catalogue::loadFluid(fluid_, dataFolder_, substance);
    if (!problem.empty()) return false;
    EngineAccess::setLoaded(number_);
    return true;
}

std::string PropertyFluid::open(std::string_view description, const std::string& dataFolder) {
    Json question = Json::parse(description, nullptr, false);
    // A name may stand as it is.
    if (question.is_discarded() && !description.starts_with('{')) question = std::string(description);
    if (question.is_string()) question = {{"fluid", question}};
    if (!question.is_object()) return "a fluid is its name, or a table that says what a request says of its fluid";
    for (const auto& [key, value] : question.items())
        if (key != "fluid" && key != "fractions" && key != "reference_state" && key != "reference_of" &&
            key != "blend_name")
            return key + ": a fluid has fluid, fractions, blend_name, reference_state and reference_of";
    question["request"] = "fluid-information";
    const catalogue::FluidNames& names = catalogue::FluidNames::of(dataFolder);
    const catalogue::NamedRequest named =
        catalogue::readNamed(question.dump(-1, ' ', false, Json::error_handler_t::replace),
                             catalogue::NamedFormat::json, names, catalogue::personalFolder());
    if (!named.problems.empty()) return named.problems.front().text;
    static long opened = 0;
    fluid_ = named.runs.front().blocks.front().fluid;
    dataFolder_ = dataFolder;
    name_ = catalogue::shownName(fluid_, names);
    number_ = ++opened;
    std::string problem;
    if (!load(problem)) return problem;
    gatherFacts();
    return {};
}

void PropertyFluid::gatherFacts() {
    static SUBSTANCE substance;
    catalogue::loadFluid(fluid_, dataFolder_, substance);
    z_ = substance.ZMOL;
    molarMass_ = substance.WM;
    components_ = substance.NMIX;
    double criticalDensity = 0.0, highest = 0.0, densest = 0.0, highestPressure = 0.0;
    int ierr = 0;
    Text255 herr;
    CRITP(z_, criticalTemperature_, criticalPressure_, criticalDensity, ierr, herr);
    LIMITS("EOS", z_, lowestTemperature_, highest, densest, highestPressure);
    Composition mass;
    double mean = 0.0;
    XMASS(z_, mass, mean);
    Json components = Json::array();
    const catalogue::FluidNames& names = catalogue::FluidNames::of(dataFolder_);
    for (int i = 1; i <= components_; ++i) {
        std::string file(substance.REFSNAMEMIX[i].trimmed());
        file.erase(0, file.find_last_of("\\/") + 1);
        components.push_back(
            {{"name", names.shownName(file)}, {"file", file}, {"mass_fraction", mass[i]}, {"mole_fraction", z_[i]}});
    }
    Json facts = {{"name", name_},
                  {"file", fluid_.file},
                  {"reference_state", fluid_.referenceState},
                  {"components", std::move(components)},
                  {"molar_mass", molarMass_},
                  {"limits",
                   {{"lowest_temperature", lowestTemperature_},
                    {"highest_temperature", highest},
                    {"highest_pressure", highestPressure},
                    {"highest_density", densest * molarMass_}}}};
    facts["critical"] = nullptr;
    if (ierr <= 0)
        facts["critical"] = {{"temperature", criticalTemperature_},
                             {"pressure", criticalPressure_},
                             {"density", criticalDensity * molarMass_}};
    if (components_ == 1) {
        double m = 0, triple = 0, boiling = 0, tc = 0, pc = 0, dc = 0, zc = 0, acentric = 0, dipole = 0, gas = 0;
        INFO(1, m, triple, boiling, tc, pc, dc, zc, acentric, dipole, gas);
        facts["triple_point_temperature"] = triple;
        facts["normal_boiling_point"] = boiling;
        facts["acentric_factor"] = acentric;
    }
    facts_ = facts.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace frigana::programs
