#include "HEAT.h"

#include <cmath>

#include "FluidConstants.h"
#include "FluidFiles.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr double standardTemperature = 298.15;   // [K]
constexpr double vaporizationOfWater = 44004.0;  // [J/mol] at 298.15 K: 285.830 less 241.826 kJ/mol
constexpr double absent = 1e-12;

// cp = A + B ((C/T)/sinh(C/T))^2 + D ((E/T)/cosh(E/T))^2 [J/(mol K), K]
struct GasHeatCapacity {
    double a, b, c, d, e;
};
constexpr GasHeatCapacity gases[] = {
    {33.36, 26.79, 2610.5, 8.90, 1169.0},  // water
    {29.10, 10.04, 2526.5, 9.36, 1153.8},  // oxygen
    {29.37, 34.54, 1428.0, 26.40, 588.0},  // carbon dioxide
    {29.11, 8.61, 1701.6, 0.10, 909.79},   // nitrogen
    {33.38, 25.86, 932.8, 10.88, 423.7},   // sulfur dioxide
};

// cp of liquid water in powers of T [J/(mol K), K]
constexpr double liquidWaterHeatCapacity[] = {276.37, -2.0901, 8.125e-3, -1.4116e-5, 9.3701e-9};

double gasEnthalpy(const GasHeatCapacity& g, double t) {
    return g.a * t + g.b * g.c / std::tanh(g.c / t) - g.d * g.e * std::tanh(g.e / t);
}

double liquidWaterEnthalpy(double t) {
    double sum = 0.0, power = t;
    for (int i = 0; i < 5; ++i) {
        sum += liquidWaterHeatCapacity[i] * power / (i + 1);
        power *= t;
    }
    return sum;
}

struct Atoms {
    double C = 0, H = 0, O = 0, N = 0, S = 0;
};

bool isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
bool isLower(char c) {
    return c >= 'a' && c <= 'z';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Elements and counts out of a formula; false for anything else in it.
bool countAtoms(std::string_view formula, Atoms& atoms) {
    std::size_t i = 0;
    while (i < formula.size()) {
        if (!isUpper(formula[i])) return false;
        char element[2] = {formula[i++], ' '};
        if (i < formula.size() && isLower(formula[i])) element[1] = formula[i++];
        double count = 0.0;
        const std::size_t first = i;
        while (i < formula.size() && isDigit(formula[i])) count = 10.0 * count + (formula[i++] - '0');
        if (i == first) count = 1.0;
        if (element[1] != ' ') return false;
        switch (element[0]) {
            case 'C':
                atoms.C += count;
                break;
            case 'H':
                atoms.H += count;
                break;
            case 'O':
                atoms.O += count;
                break;
            case 'N':
                atoms.N += count;
                break;
            case 'S':
                atoms.S += count;
                break;
            default:
                return false;
        }
    }
    return !formula.empty();
}

// The formula stands between braces, or before a comment.
std::string_view formulaOf(const Text255& text) {
    std::string_view formula = text.trimmed();
    const auto open = formula.find('{');
    if (open != std::string_view::npos) {
        formula.remove_prefix(open + 1);
        return trimRight(formula.substr(0, formula.find('}')));
    }
    return trimRight(formula.substr(0, formula.find('!')));
}

}  // namespace

double ENTHHC(CombustionProduct product, double t) {
    if (t <= 0.0) return 0.0;
    if (product == CombustionProduct::liquidWater)
        return liquidWaterEnthalpy(t) - liquidWaterEnthalpy(standardTemperature);
    const GasHeatCapacity& gas = gases[static_cast<int>(product) - 1];
    return gasEnthalpy(gas, t) - gasEnthalpy(gas, standardTemperature);
}

void HEAT(double t, double rho, const Composition& x, double& hgross, double& hnet, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    hgross = hnet = 0.0;
    if (t <= 0.0) return;

    Atoms mean;
    double combustion = 0.0;
    int pure = 0;
    ISPURE(x, pure);
    for (int i = 1; i <= modelTags.NC; ++i) {
        const double fraction = pure > 0 ? (i == pure ? 1.0 : 0.0) : x[i];
        if (fraction <= absent) continue;
        Atoms atoms;
        if (!countAtoms(formulaOf(fluidFiles.HSYN1[i]), atoms)) {
            ierr = 1;
            message(herr, "[HEAT error 1] Error in chemical formula", nullCharacter);
            ERRMSG(ierr, herr);
            return;
        }
        if (fluidConstants.HCMBST[i] < 0.0) {
            ierr = 2;
            message(herr, "[HEAT error 2] Heating values are not available for all species in the mixture",
                    nullCharacter);
            ERRMSG(ierr, herr);
            return;
        }
        combustion += fraction * fluidConstants.HCMBST[i] * 1000.0;
        mean.C += fraction * atoms.C;
        mean.H += fraction * atoms.H;
        mean.O += fraction * atoms.O;
        mean.N += fraction * atoms.N;
        mean.S += fraction * atoms.S;
    }

    // moles used up per mole of fuel; products count negative
    const double water = -mean.H / 2.0, oxygen = mean.C + mean.H / 4.0 - mean.O / 2.0 + mean.S;
    const double carbonDioxide = -mean.C, nitrogen = -mean.N / 2.0, sulfurDioxide = -mean.S;

    double fuel = 0.0, fuelStandard = 0.0;
    ENTHAL(t, rho, x, fuel);
    ENTHAL(standardTemperature, 0.0, x, fuelStandard);
    using Product = CombustionProduct;
    hgross = combustion + fuel - fuelStandard + water * ENTHHC(Product::liquidWater, t) +
             oxygen * ENTHHC(Product::oxygen, t) + carbonDioxide * ENTHHC(Product::carbonDioxide, t) +
             nitrogen * ENTHHC(Product::nitrogen, t) + sulfurDioxide * ENTHHC(Product::sulfurDioxide, t);
    const double vaporization = vaporizationOfWater + ENTHHC(Product::waterVapor, t) - ENTHHC(Product::liquidWater, t);
    hnet = hgross + water * vaporization;
}

}  // namespace frigana
