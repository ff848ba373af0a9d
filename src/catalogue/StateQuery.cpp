#include "StateQuery.h"

#include <cmath>

#include "23_SpecificPoints.h"
#include "FLASH2.h"
#include "Letters.h"
#include "OPENFL.h"
#include "Reason.h"
#include "SAT_SUB_NEWTON.h"
#include "SETUP.h"
#include "UTILITY.h"

namespace frigana::catalogue {

namespace {

constexpr StateProperty properties[] = {
    {'T', "temperature", Quantity::temperature, &STATEPT::T}, {'P', "pressure", Quantity::pressure, &STATEPT::P},
    {'D', "density", Quantity::density, &STATEPT::D},         {'H', "enthalpy", Quantity::specificEnergy, &STATEPT::H},
    {'S', "entropy", Quantity::specificHeat, &STATEPT::S},    {'Q', "quality", Quantity::quality, &STATEPT::Q},
};

// Results of a flash in the units of the engine.
struct Flash {
    double T = 0, p = 0, D = 0, Dl = 0, Dv = 0, q = 0, e = 0, h = 0, s = 0, cv = 0, cp = 0, w = 0;
    Composition x{}, y{};
    int ierr = 0;
    Text255 herr;
};

using Simple = void (*)(const SUBSTANCE& substance, double first, double second, STATEPT& point);
struct SimplePair {
    char first, second;
    Simple state;
};
constexpr SimplePair simplePairs[] = {
    {'P', 'T', PROPSIMPLEPT}, {'T', 'D', PROPSIMPLETD}, {'T', 'Q', PROPSIMPLETQ}, {'P', 'Q', PROPSIMPLEPQ},
    {'P', 'H', PROPSIMPLEPH}, {'P', 'S', PROPSIMPLEPS}, {'P', 'D', PROPSIMPLEPD}, {'T', 'H', PROPSIMPLETH},
};

constexpr int lowerDensity = 1;

bool isPair(const GivenProperty& first, const GivenProperty& second, char a, char b) {
    return first.property->letter == a && second.property->letter == b;
}

// The flash of a pair by the engine itself: of those that the state points have no routine for, and of those whose
// routine does not tell why there is no state.
struct FlashPair {
    char first, second;
    // Given     x, y  both properties in the units of the results, M [g/mol]
    void (*flash)(double x, double y, double M, const Composition& z, Flash& f);
};
constexpr int qualityByMass = 2;
constexpr FlashPair flashPairs[] = {
    {'T', 'S',
     [](double T, double s, double M, const Composition& z, Flash& f) {
         f.T = T;
         TSFLSH(T, s * M, z, lowerDensity, f.p, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.h, f.cv, f.cp, f.w, f.ierr,
                f.herr);
     }},
    {'D', 'H',
     [](double D, double h, double M, const Composition& z, Flash& f) {
         f.D = D / M;
         DHFLSH(f.D, h * M, z, f.T, f.p, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
     }},
    {'D', 'S',
     [](double D, double s, double M, const Composition& z, Flash& f) {
         f.D = D / M;
         DSFLSH(f.D, s * M, z, f.T, f.p, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.h, f.cv, f.cp, f.w, f.ierr, f.herr);
     }},
    {'H', 'S',
     [](double h, double s, double M, const Composition& z, Flash& f) {
         HSFLSH(h * M, s * M, z, f.T, f.p, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.cv, f.cp, f.w, f.ierr, f.herr);
     }},
    {'P', 'H',
     [](double p, double h, double M, const Composition& z, Flash& f) {
         PHFLSH(p, h * M, z, f.T, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
     }},
    {'P', 'S',
     [](double p, double s, double M, const Composition& z, Flash& f) {
         PSFLSH(p, s * M, z, f.T, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.h, f.cv, f.cp, f.w, f.ierr, f.herr);
     }},
    {'T', 'H',
     [](double T, double h, double M, const Composition& z, Flash& f) {
         THFLSH(T, h * M, z, lowerDensity, f.p, f.D, f.Dl, f.Dv, f.x, f.y, f.q, f.e, f.s, f.cv, f.cp, f.w, f.ierr,
                f.herr);
     }},
    {'T', 'Q',
     [](double T, double q, double, const Composition& z, Flash& f) {
         TQFLSH(T, q, z, qualityByMass, f.p, f.D, f.Dl, f.Dv, f.x, f.y, f.e, f.h, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
     }},
    {'P', 'Q',
     [](double p, double q, double, const Composition& z, Flash& f) {
         PQFLSH(p, q, z, qualityByMass, f.T, f.D, f.Dl, f.Dv, f.x, f.y, f.e, f.h, f.s, f.cv, f.cp, f.w, f.ierr, f.herr);
     }},
};

bool flashPair(const SUBSTANCE& substance, const GivenProperty& first, const GivenProperty& second, Flash& f) {
    for (const FlashPair& pair : flashPairs)
        if (isPair(first, second, pair.first, pair.second)) {
            pair.flash(first.value, second.value, substance.WM, substance.ZMOL, f);
            return true;
        }
    return false;
}

}  // namespace

std::string loadFluid(const Fluid& fluid, const std::string& dataFolder, SUBSTANCE& substance) {
    SETPATH(dataFolder);
    Text3 reference{std::string_view(fluid.referenceState)};
    int ierr = 0, count = 1;
    Text255 herr;
    FileNames files{};
    substance = {};
    if (fluid.kind == 2) {
        SETMIX(Text255(fluid.file), "HMX.BNC", reference, count, files, substance.ZMOL, ierr, herr);
    } else if (fluid.kind == 1) {
        files[1].assign(fluid.file);
        substance.ZMOL[1] = 1.0;
        SETUP(1, files, "HMX.BNC", reference, ierr, herr);
    } else {
        count = static_cast<int>(fluid.components.size());
        Composition given{};
        double sum = 0.0;
        for (int i = 1; i <= count; ++i) {
            files[i].assign(fluid.components[static_cast<std::size_t>(i - 1)].file);
            given[i] = fluid.components[static_cast<std::size_t>(i - 1)].fraction;
            sum += given[i];
        }
        for (int i = 1; i <= count; ++i) given[i] /= sum;
        SETUP(count, files, "HMX.BNC", reference, ierr, herr);
        double molarMass = 0.0;
        if (ierr <= 0 && fluid.byMass)
            XMOLE(given, substance.ZMOL, molarMass);
        else
            substance.ZMOL = given;
    }
    if (ierr > 0) return reasonOf(herr.view());
    SETREF(reference, fluid.referenceOf, substance.ZMOL, 0.0, 0.0, 0.0, 0.0, ierr, herr);
    if (ierr > 0) return reasonOf(herr.view());
    adoptCriticalPoint(substance.ZMOL);
    substance.WM = WMOL(substance.ZMOL);
    substance.NMIX = count;
    for (int i = 1; i <= count; ++i) substance.REFSNAMEMIX[i] = files[i];
    STATEPT& bad = substance.PTBAD;
    for (double STATEPT::*field : {&STATEPT::T, &STATEPT::TSAT, &STATEPT::P, &STATEPT::D, &STATEPT::V, &STATEPT::U,
                                   &STATEPT::H, &STATEPT::S, &STATEPT::CV, &STATEPT::CP, &STATEPT::W, &STATEPT::Q,
                                   &STATEPT::TCX, &STATEPT::ETA, &STATEPT::PR, &STATEPT::STN})
        bad.*field = missingValue;
    return {};
}

std::span<const StateProperty> stateProperties() {
    return properties;
}

const StateProperty* findStateProperty(char letter) {
    for (const StateProperty& property : properties)
        if (property.letter == capitalLetter(letter)) return &property;
    return nullptr;
}

StateAnswer stateOf(const Fluid& fluid, const std::string& dataFolder, GivenProperty first, GivenProperty second) {
    static SUBSTANCE substance;
    StateAnswer answer{};
    answer.problem = loadFluid(fluid, dataFolder, substance);
    if (!answer.problem.empty()) return answer;
    const auto failure = [&](const std::string& text) {
        answer.problem = text;
        if (text.empty()) answer.problem = "there is no such state";
        return answer;
    };
    for (int order = 0; order < 2; ++order, std::swap(first, second)) {
        for (const SimplePair& pair : simplePairs) {
            if (!isPair(first, second, pair.first, pair.second)) continue;
            pair.state(substance, first.value, second.value, answer.point);
            if (answer.point.H != missingValue && answer.point.D != missingValue) return answer;
            Flash flash;
            if (answer.point.HERR.blank() && flashPair(substance, first, second, flash)) answer.point.HERR = flash.herr;
            return failure(reasonOf(answer.point.HERR.view()));
        }
        Flash flash;
        if (!flashPair(substance, first, second, flash)) continue;
        if (flash.ierr > 0) return failure(reasonOf(flash.herr.view()));
        PROPSIMPLETD(substance, flash.T, flash.D * substance.WM, answer.point);
        if (answer.point.H == missingValue) return failure(reasonOf(answer.point.HERR.view()));
        return answer;
    }
    return failure("no state can be found from " + std::string(first.property->name) + " and " +
                   std::string(second.property->name));
}

std::string readGivenProperty(const std::string& text, UnitSystem units, GivenProperty& given) {
    const auto equals = text.find('=');
    if (equals != 1) return text + ": write a property as in T=25C, P=10bar or Q=0";
    given.property = findStateProperty(text[0]);
    if (given.property == nullptr) return text + ": properties are T, P, D, H, S and Q";
    const Quantity quantity = given.property->quantity;
    const Parsed parsed = parseQuantity(text.substr(equals + 1), quantity, &unitIn(units, quantity));
    if (!parsed.problem.empty()) return text + ": " + text.substr(equals + 1) + ' ' + parsed.problem;
    if (!std::isfinite(parsed.value)) return text + ": is not finite";
    if (quantity == Quantity::quality && (parsed.value < 0.0 || parsed.value > 1.0))
        return text + ": a quality lies between 0 and 1";
    given.value = parsed.value;
    return {};
}

}  // namespace frigana::catalogue
