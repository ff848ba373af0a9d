#include "MIX_AGA8.h"

#include <cmath>

#include "MIX_HMX.h"
#include "ModelTags.h"

namespace frigana {

Aga8Block aga8;

namespace {

// What a component is to the sums: molar mass [g/mol], energy E [K], size K [(L/mol)^(1/3)], orientation G, quadrupole
// Q, high-temperature F, dipole S, association W.
struct Component {
    double mass, energy, size, orientation, quadrupole, highTemperature, dipole, association;
};

// Factors of an unlike pair i < j: second virial energy, conformal energy, size, orientation. 1 where not listed.
struct Pair {
    int i, j;
    double energy, conformalEnergy, size, orientation;
};

// Which property of the mixture a term carries.
enum class Kind { none, orientation, quadrupole, hydrogen, dipole, association };

// a times Dr^b exp(-c Dr^k) T^-u times the property.
struct Term {
    double a;
    int b, c, k;
    double u;
    Kind kind;
};

constexpr int virialTerms = 18;       // terms 1 to 18 make the second virial coefficient
constexpr int firstDensityTerm = 13;  // terms from here on are functions of reduced density
constexpr int aga8Terms = 58;

// Tables of the detail characterization method: AGA Report No. 8 (1992, 2nd printing 1994), tables 4 to 6, also
// ISO 12213-2:2006, tables B.1 to B.3.
constexpr Component components[aga8Components] = {
    // M, E, K, G, Q, F, S, W
    {16.043, 151.3183, 0.4619255, 0.0, 0.0, 0.0, 0.0, 0.0},             // 1 methane
    {28.0135, 99.73778, 0.4479153, 0.027815, 0.0, 0.0, 0.0, 0.0},       // 2 nitrogen
    {44.01, 241.9606, 0.4557489, 0.189065, 0.69, 0.0, 0.0, 0.0},        // 3 carbon dioxide
    {30.07, 244.1667, 0.5279209, 0.0793, 0.0, 0.0, 0.0, 0.0},           // 4 ethane
    {44.097, 298.1183, 0.583749, 0.141239, 0.0, 0.0, 0.0, 0.0},         // 5 propane
    {18.0153, 514.0156, 0.3825868, 0.3325, 1.06775, 0.0, 1.5822, 1.0},  // 6 water
    {34.082, 296.355, 0.4618263, 0.0885, 0.633276, 0.0, 0.39, 0.0},     // 7 hydrogen sulfide
    {2.0159, 26.95794, 0.3514916, 0.034369, 0.0, 1.0, 0.0, 0.0},        // 8 hydrogen
    {28.01, 105.5348, 0.4533894, 0.038953, 0.0, 0.0, 0.0, 0.0},         // 9 carbon monoxide
    {31.9988, 122.7667, 0.4186954, 0.021, 0.0, 0.0, 0.0, 0.0},          // 10 oxygen
    {58.123, 324.0689, 0.6406937, 0.256692, 0.0, 0.0, 0.0, 0.0},        // 11 isobutane
    {58.123, 337.6389, 0.6341423, 0.281835, 0.0, 0.0, 0.0, 0.0},        // 12 butane
    {72.15, 365.5999, 0.6738577, 0.332267, 0.0, 0.0, 0.0, 0.0},         // 13 isopentane
    {72.15, 370.6823, 0.6798307, 0.366911, 0.0, 0.0, 0.0, 0.0},         // 14 pentane
    {86.177, 402.636293, 0.7175118, 0.289731, 0.0, 0.0, 0.0, 0.0},      // 15 hexane
    {100.204, 427.72263, 0.7525189, 0.337542, 0.0, 0.0, 0.0, 0.0},      // 16 heptane
    {114.231, 450.325022, 0.784955, 0.383381, 0.0, 0.0, 0.0, 0.0},      // 17 octane
    {128.258, 470.840891, 0.8152731, 0.427354, 0.0, 0.0, 0.0, 0.0},     // 18 nonane
    {142.285, 489.558373, 0.8437826, 0.469659, 0.0, 0.0, 0.0, 0.0},     // 19 decane
    {4.0026, 2.610111, 0.3589888, 0.0, 0.0, 0.0, 0.0, 0.0},             // 20 helium
    {39.948, 119.6299, 0.4216551, 0.0, 0.0, 0.0, 0.0, 0.0},             // 21 argon
};

constexpr Pair pairs[] = {
    // i, j, E*, U, K, G*
    {1, 2, 0.97164, 0.886106, 1.00363, 1.0},
    {1, 3, 0.960644, 0.963827, 0.995933, 0.807653},
    {1, 5, 0.994635, 0.990877, 1.007619, 1.0},
    {1, 6, 0.708218, 1.0, 1.0, 1.0},
    {1, 7, 0.931484, 0.736833, 1.00008, 1.0},
    {1, 8, 1.17052, 1.15639, 1.02326, 1.95731},
    {1, 9, 0.990126, 1.0, 1.0, 1.0},
    {1, 11, 1.01953, 1.0, 1.0, 1.0},
    {1, 12, 0.989844, 0.992291, 0.997596, 1.0},
    {1, 13, 1.00235, 1.0, 1.0, 1.0},
    {1, 14, 0.999268, 1.00367, 1.002529, 1.0},
    {1, 15, 1.107274, 1.302576, 0.982962, 1.0},
    {1, 16, 0.88088, 1.191904, 0.983565, 1.0},
    {1, 17, 0.880973, 1.205769, 0.982707, 1.0},
    {1, 18, 0.881067, 1.219634, 0.981849, 1.0},
    {1, 19, 0.881161, 1.233498, 0.980991, 1.0},
    {2, 3, 1.02274, 0.835058, 0.982361, 0.982746},
    {2, 4, 0.97012, 0.816431, 1.00796, 1.0},
    {2, 5, 0.945939, 0.915502, 1.0, 1.0},
    {2, 6, 0.746954, 1.0, 1.0, 1.0},
    {2, 7, 0.902271, 0.993476, 0.942596, 1.0},
    {2, 8, 1.08632, 0.408838, 1.03227, 1.0},
    {2, 9, 1.00571, 1.0, 1.0, 1.0},
    {2, 10, 1.021, 1.0, 1.0, 1.0},
    {2, 11, 0.946914, 1.0, 1.0, 1.0},
    {2, 12, 0.973384, 0.993556, 1.0, 1.0},
    {2, 13, 0.95934, 1.0, 1.0, 1.0},
    {2, 14, 0.94552, 1.0, 1.0, 1.0},
    {3, 4, 0.925053, 0.96987, 1.00851, 0.370296},
    {3, 5, 0.960237, 1.0, 1.0, 1.0},
    {3, 6, 0.849408, 1.0, 1.0, 1.67309},
    {3, 7, 0.955052, 1.04529, 1.00779, 1.0},
    {3, 8, 1.28179, 1.0, 1.0, 1.0},
    {3, 9, 1.5, 0.9, 1.0, 1.0},
    {3, 11, 0.906849, 1.0, 1.0, 1.0},
    {3, 12, 0.897362, 1.0, 1.0, 1.0},
    {3, 13, 0.726255, 1.0, 1.0, 1.0},
    {3, 14, 0.859764, 1.0, 1.0, 1.0},
    {3, 15, 0.855134, 1.066638, 0.910183, 1.0},
    {3, 16, 0.831229, 1.077634, 0.895362, 1.0},
    {3, 17, 0.80831, 1.088178, 0.881152, 1.0},
    {3, 18, 0.786323, 1.098291, 0.86752, 1.0},
    {3, 19, 0.765171, 1.108021, 0.854406, 1.0},
    {4, 5, 1.02256, 1.065173, 0.986893, 1.0},
    {4, 6, 0.693168, 1.0, 1.0, 1.0},
    {4, 7, 0.946871, 0.971926, 0.999969, 1.0},
    {4, 8, 1.16446, 1.61666, 1.02034, 1.0},
    {4, 11, 1.0, 1.25, 1.0, 1.0},
    {4, 12, 1.01306, 1.25, 1.0, 1.0},
    {4, 13, 1.0, 1.25, 1.0, 1.0},
    {4, 14, 1.00532, 1.25, 1.0, 1.0},
    {5, 8, 1.034787, 1.0, 1.0, 1.0},
    {5, 12, 1.0049, 1.0, 1.0, 1.0},
    {7, 15, 1.008692, 1.028973, 0.96813, 1.0},
    {7, 16, 1.010126, 1.033754, 0.96287, 1.0},
    {7, 17, 1.011501, 1.038338, 0.957828, 1.0},
    {7, 18, 1.012821, 1.042735, 0.952441, 1.0},
    {7, 19, 1.014089, 1.046966, 0.948338, 1.0},
    {8, 9, 1.1, 1.0, 1.0, 1.0},
    {8, 11, 1.3, 1.0, 1.0, 1.0},
    {8, 12, 1.3, 1.0, 1.0, 1.0},
};

constexpr Term terms[aga8Terms] = {
    // a, b, c, k, u, kind
    {0.1538326, 1, 0, 0, 0.0, Kind::none},          {1.341953, 1, 0, 0, 0.5, Kind::none},
    {-2.998583, 1, 0, 0, 1.0, Kind::none},          {-0.04831228, 1, 0, 0, 3.5, Kind::none},
    {0.3757965, 1, 0, 0, -0.5, Kind::orientation},  {-1.589575, 1, 0, 0, 4.5, Kind::orientation},
    {-0.05358847, 1, 0, 0, 0.5, Kind::quadrupole},  {0.88659463, 1, 0, 0, 7.5, Kind::dipole},
    {-0.71023704, 1, 0, 0, 9.5, Kind::dipole},      {-1.471722, 1, 0, 0, 6.0, Kind::association},  // 10
    {1.32185035, 1, 0, 0, 12.0, Kind::association}, {-0.78665925, 1, 0, 0, 12.5, Kind::association},
    {2.29129e-09, 1, 1, 3, -6.0, Kind::hydrogen},   {0.1576724, 1, 1, 2, 2.0, Kind::none},
    {-0.4363864, 1, 1, 2, 3.0, Kind::none},         {-0.04408159, 1, 1, 2, 2.0, Kind::quadrupole},
    {-0.003433888, 1, 1, 4, 2.0, Kind::none},       {0.03205905, 1, 1, 4, 11.0, Kind::none},
    {0.02487355, 2, 0, 0, -0.5, Kind::none},        {0.07332279, 2, 0, 0, 0.5, Kind::none},  // 20
    {-0.001600573, 2, 1, 2, 0.0, Kind::none},       {0.6424706, 2, 1, 2, 4.0, Kind::none},
    {-0.4162601, 2, 1, 2, 6.0, Kind::none},         {-0.06689957, 2, 1, 4, 21.0, Kind::none},
    {0.2791795, 2, 1, 4, 23.0, Kind::orientation},  {-0.6966051, 2, 1, 4, 22.0, Kind::quadrupole},
    {-0.002860589, 2, 1, 4, -1.0, Kind::hydrogen},  {-0.008098836, 3, 0, 0, -0.5, Kind::quadrupole},
    {3.150547, 3, 1, 1, 7.0, Kind::orientation},    {0.007224479, 3, 1, 1, -1.0, Kind::hydrogen},  // 30
    {-0.7057529, 3, 1, 2, 6.0, Kind::none},         {0.5349792, 3, 1, 2, 4.0, Kind::orientation},
    {-0.07931491, 3, 1, 3, 1.0, Kind::orientation}, {-1.418465, 3, 1, 3, 9.0, Kind::orientation},
    {-5.99905e-17, 3, 1, 4, -13.0, Kind::hydrogen}, {0.1058402, 3, 1, 4, 21.0, Kind::none},
    {0.03431729, 3, 1, 4, 8.0, Kind::quadrupole},   {-0.007022847, 4, 0, 0, -0.5, Kind::none},
    {0.02495587, 4, 0, 0, 0.0, Kind::none},         {0.04296818, 4, 1, 2, 2.0, Kind::none},  // 40
    {0.7465453, 4, 1, 2, 7.0, Kind::none},          {-0.2919613, 4, 1, 2, 9.0, Kind::quadrupole},
    {7.294616, 4, 1, 4, 22.0, Kind::none},          {-9.936757, 4, 1, 4, 23.0, Kind::none},
    {-0.005399808, 5, 0, 0, 1.0, Kind::none},       {-0.2432567, 5, 1, 2, 9.0, Kind::none},
    {0.04987016, 5, 1, 2, 3.0, Kind::quadrupole},   {0.003733797, 5, 1, 4, 8.0, Kind::none},
    {1.874951, 5, 1, 4, 23.0, Kind::quadrupole},    {0.002168144, 6, 0, 0, 1.5, Kind::none},  // 50
    {-0.6587164, 6, 1, 2, 5.0, Kind::orientation},  {0.000205518, 7, 0, 0, -0.5, Kind::quadrupole},
    {0.009776195, 7, 1, 2, 4.0, Kind::none},        {-0.02048708, 8, 1, 1, 7.0, Kind::orientation},
    {0.01557322, 8, 1, 2, 3.0, Kind::none},         {0.006862415, 8, 1, 2, 0.0, Kind::orientation},
    {-0.001226752, 9, 1, 2, 1.0, Kind::none},       {0.002850908, 9, 1, 2, 0.0, Kind::quadrupole},
};

// Heat capacities of the ideal gases over R, in the order constant, cosh terms, sinh terms: M. Jaeschke, P. Schley,
// Int. J. Thermophys. 16 (1995) 1381, in the form of ISO 20765-1:2005, table B.1. A theta of 100 K stands with a
// coefficient of 0.
constexpr Aga8IdealGas idealGases[aga8Components] = {
    {4.00088, {{0.0046, 178.41}, {-4.46921, 1090.53}}, {{0.76315, 820.659}, {8.74432, 1062.82}}},    // 1 methane
    {3.50031, {{-0.1466, 680.562}, {0.0, 100.0}}, {{0.13732, 662.738}, {0.90066, 1740.06}}},         // 2 nitrogen
    {3.50002, {{-1.06044, 865.07}, {0.01393, 341.109}}, {{2.04452, 919.306}, {2.03366, 483.553}}},   // 3 carbon dioxide
    {4.00263, {{1.23722, 223.284}, {-6.01989, 1071.29}}, {{4.33939, 559.314}, {13.1974, 1031.38}}},  // 4 ethane
    {4.02939, {{3.197, 200.893}, {-8.37267, 1027.29}}, {{6.60569, 479.856}, {19.1921, 955.312}}},    // 5 propane
    {4.00392, {{0.98763, 1141.41}, {0.0, 100.0}}, {{0.01059, 268.795}, {3.06904, 2507.37}}},         // 6 water
    {4.0, {{1.00243, 847.181}, {0.0, 100.0}}, {{3.11942, 1833.63}, {0.0, 100.0}}},  // 7 hydrogen sulfide
    {2.47906, {{0.45444, 326.843}, {-1.3756, 1671.69}}, {{0.95806, 228.734}, {1.56039, 1651.71}}},  // 8 hydrogen
    {3.50055, {{0.00493, 704.525}, {0.0, 100.0}}, {{1.02865, 1550.45}, {0.0, 100.0}}},              // 9 carbon monoxide
    {3.50146, {{1.01334, 1116.69}, {0.0, 100.0}}, {{1.07558, 2235.71}, {0.0, 100.0}}},              // 10 oxygen
    {4.06714, {{5.25156, 198.018}, {16.1388, 893.765}}, {{8.97575, 438.27}, {25.1423, 1905.02}}},   // 11 isobutane
    {4.33944, {{6.89406, 183.636}, {14.7824, 903.185}}, {{9.44893, 468.27}, {24.4618, 1914.1}}},    // 12 butane
    {4.0, {{20.1101, 910.237}, {0.0, 100.0}}, {{11.7618, 292.503}, {33.1688, 1919.37}}},            // 13 isopentane
    {4.0, {{21.836, 840.538}, {0.0, 100.0}}, {{8.95043, 178.67}, {33.4032, 1774.25}}},              // 14 pentane
    {4.0, {{26.8142, 859.207}, {0.0, 100.0}}, {{11.6977, 182.326}, {38.6164, 1826.59}}},            // 15 hexane
    {4.0, {{30.4707, 836.195}, {0.0, 100.0}}, {{13.7266, 169.789}, {43.5561, 1760.46}}},            // 16 heptane
    {4.0, {{33.8029, 815.064}, {0.0, 100.0}}, {{15.6865, 158.922}, {48.1731, 1693.07}}},            // 17 octane
    {4.0, {{38.1235, 814.882}, {0.0, 100.0}}, {{18.0241, 156.854}, {53.3415, 1693.79}}},            // 18 nonane
    {4.0, {{43.4931, 836.264}, {0.0, 100.0}}, {{21.0069, 164.947}, {58.3657, 1750.24}}},            // 19 decane
    {2.5, {{0.0, 100.0}, {0.0, 100.0}}, {{0.0, 100.0}, {0.0, 100.0}}},                              // 20 helium
    {2.5, {{0.0, 100.0}, {0.0, 100.0}}, {{0.0, 100.0}, {0.0, 100.0}}},                              // 21 argon
};

struct FluidNumber {
    std::string_view cas;
    int index;
};
constexpr FluidNumber fluidNumbers[] = {
    {"74-82-8", 1},
    {"7727-37-9", 2},
    {"124-38-9", 3},
    {"74-84-0", 4},
    {"74-98-6", 5},
    {"7732-18-5", 6},
    {"7783-06-4", 7},
    {"1333-74-0", 8},
    {"1333-74-0p", 8},
    {"630-08-0", 9},
    {"7782-44-7", 10},
    {"75-28-5", 11},
    {"106-97-8", 12},
    {"78-78-4", 13},
    {"109-66-0", 14},
    {"110-54-3", 15},
    {"142-82-5", 16},
    {"111-65-9", 17},
    {"111-84-2", 18},
    {"124-18-5", 19},
    {"7440-59-7", 20},
    {"7440-37-1", 21},
    // the nearest component of the model for six further hydrocarbons
    {"463-82-1", 13},
    {"108-88-3", 16},
    {"71-43-2", 15},
    {"74-85-1", 4},
    {"115-07-1", 5},
    {"106-98-9", 12},
};

// Factors of every pair of different components, unlike and unlisted ones 1.
struct PairTable {
    Pair of[aga8Components + 1][aga8Components + 1];
    constexpr PairTable() : of() {
        for (auto& row : of)
            for (Pair& pair : row) pair = {0, 0, 1.0, 1.0, 1.0, 1.0};
        for (const Pair& pair : pairs) of[pair.i][pair.j] = of[pair.j][pair.i] = pair;
    }
};
constexpr PairTable pairTable;

const Component& component(int index) {
    return components[index - 1];
}

double squareRootOfFifth(double x) {
    return x * x * std::sqrt(x);
}

// The property of a pair that a term of the second virial coefficient carries.
double pairProperty(Kind kind, int i, int j) {
    const Component &a = component(i), &b = component(j);
    switch (kind) {
        case Kind::orientation:
            return pairTable.of[i][j].orientation * 0.5 * (a.orientation + b.orientation);
        case Kind::quadrupole:
            return a.quadrupole * b.quadrupole;
        case Kind::hydrogen:
            return std::sqrt(a.highTemperature * b.highTemperature);
        case Kind::dipole:
            return a.dipole * b.dipole;
        case Kind::association:
            return a.association * b.association;
        default:
            return 1.0;
    }
}

double mixtureProperty(Kind kind) {
    switch (kind) {
        case Kind::orientation:
            return aga8.G;
        case Kind::quadrupole:
            return aga8.Q * aga8.Q;
        case Kind::hydrogen:
            return aga8.F;
        default:
            return 1.0;
    }
}

// tau^n d^n/dtau^n of tau^u over tau^u.
double falling(double u, int n) {
    double product = 1.0;
    for (int i = 0; i < n; ++i) product *= u - i;
    return product;
}

// What the terms are at the last state: one exponential a term and variable, whatever the order of the derivative.
struct Aga8Cache {
    double t = 0.0, reduced = 0.0;           // 0 where there is none
    double powerK[5] = {};                   // Dr^k
    double temperature[aga8Terms + 1] = {};  // a times property times (U/T)^u
    double virial[virialTerms + 1] = {};     // term of the second virial coefficient
    double density[aga8Terms + 1] = {};      // Dr^b exp(-c Dr^k)
};
Aga8Cache cache;

void moveTo(double t, double reduced) {
    if (t != cache.t) {
        cache.t = t;
        const double logT = std::log(t);
        const double logU = std::log(aga8.U) - logT;
        for (int n = 1; n <= virialTerms; ++n) cache.virial[n] = aga8.B[n] * std::exp(-terms[n - 1].u * logT);
        for (int n = firstDensityTerm; n <= aga8Terms; ++n) {
            const Term& term = terms[n - 1];
            const double property = mixtureProperty(term.kind);
            cache.temperature[n] = property == 0.0 ? 0.0 : term.a * property * std::exp(term.u * logU);
        }
    }
    if (reduced != cache.reduced) {
        cache.reduced = reduced;
        const double logReduced = std::log(reduced);
        cache.powerK[0] = 0.0;  // these terms have no exponential
        cache.powerK[1] = reduced;
        for (int k = 2; k <= 4; ++k) cache.powerK[k] = cache.powerK[k - 1] * reduced;
        for (int n = firstDensityTerm; n <= aga8Terms; ++n) {
            const Term& term = terms[n - 1];
            cache.density[n] = std::exp(term.b * logReduced - term.c * cache.powerK[term.k]);
        }
    }
}

// Dr^n d^n/dDr^n of f = Dr^b exp(-c Dr^k) over f, with the operator D = Dr d/dDr: D f = f l, D l = m, D m = k m.
double densityFactor(const Term& term, double powerK, int order) {
    const double c = term.c, k = term.k;
    const double l = term.b - c * k * powerK;
    const double m = -c * k * k * powerK;
    switch (order) {
        case 0:
            return 1.0;
        case 1:
            return l;
        case 2:
            return l * l + m - l;
        default:
            return l * l * l + 3.0 * l * m + k * m - 3.0 * (l * l + m) + 2.0 * l;
    }
}

}  // namespace

int aga8Index(std::string_view cas) {
    for (const FluidNumber& fluid : fluidNumbers)
        if (fluid.cas == cas) return fluid.index;
    return 0;
}

double aga8MolarMass(int index) {
    return component(index).mass;
}

const Aga8IdealGas& aga8IdealGas(int index) {
    return idealGases[index - 1];
}

void SETAG(const Composition& x) {
    double total = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) total += x[i];
    if (!(total > 0.0)) return;
    bool same = aga8.NC == modelTags.NC;
    for (int i = 1; i <= modelTags.NC && same; ++i) same = x[i] == aga8.XSAV[i] && aga8.IFPA[i] == aga8.IFSAV[i];
    if (same) return;
    aga8.NC = modelTags.NC;
    aga8.XSAV = x;
    aga8.IFSAV = aga8.IFPA;

    // several components of the mixture can be the same of the model
    Aga8Fractions fraction{};
    for (int i = 1; i <= modelTags.NC; ++i)
        if (x[i] > 0.0 && aga8.IFPA[i] > 0) fraction[aga8.IFPA[i]] += x[i] / total;
    aga8Sums(fraction);
}

void aga8Sums(const Aga8Fractions& fraction) {
    cache.t = cache.reduced = 0.0;
    int present[aga8Components]{}, count = 0;
    for (int i = 1; i <= aga8Components; ++i)
        if (fraction[i] > 0.0) present[count++] = i;

    double size = 0.0, energy = 0.0, sizeExcess = 0.0, energyExcess = 0.0;
    aga8.G = aga8.Q = aga8.F = 0.0;
    aga8.B.fill(0.0);
    for (int m = 0; m < count; ++m) {
        const int i = present[m];
        const Component& a = component(i);
        const double xi = fraction[i];
        size += xi * squareRootOfFifth(a.size);
        energy += xi * squareRootOfFifth(a.energy);
        aga8.G += xi * a.orientation;
        aga8.Q += xi * a.quadrupole;
        aga8.F += xi * xi * a.highTemperature;
        for (int n = 0; n < count; ++n) {
            const int j = present[n];
            const Component& b = component(j);
            const Pair& pair = pairTable.of[i][j];
            const double xx = xi * fraction[j];
            if (i != j) {  // both orders of the pair
                sizeExcess += xx * (std::pow(pair.size, 5.0) - 1.0) * squareRootOfFifth(a.size * b.size);
                energyExcess +=
                    xx * (std::pow(pair.conformalEnergy, 5.0) - 1.0) * squareRootOfFifth(a.energy * b.energy);
                aga8.G += 0.5 * xx * (pair.orientation - 1.0) * (a.orientation + b.orientation);
            }
            const double volume = std::pow(a.size * b.size, 1.5);
            const double pairEnergy = pair.energy * std::sqrt(a.energy * b.energy);
            for (int k = 1; k <= virialTerms; ++k) {
                const Term& term = terms[k - 1];
                aga8.B[k] += term.a * xx * std::pow(pairEnergy, term.u) * volume * pairProperty(term.kind, i, j);
            }
        }
    }
    const double k = std::pow(size * size + sizeExcess, 0.2);
    aga8.K3 = k * k * k;
    aga8.U = std::pow(energy * energy + energyExcess, 0.2);
}

double PHIAGA(int itau, int idel, double tau, double del, const Composition& x) {
    if (del <= 1e-10 || tau <= 0.0) return 0.0;
    SETAG(x);
    double tr, dr;
    REDHMX(x, tr, dr);
    return aga8Phi(itau, idel, tr / tau, del * dr);
}

double aga8Phi(int itau, int idel, double t, double density) {
    if (itau < 0 || idel < 0 || itau > 3 || idel > 3) return 0.0;
    const double reduced = aga8.K3 * density;
    if (!(reduced > 0.0) || !(t > 0.0)) return 0.0;
    moveTo(t, reduced);

    // linear in density: the second virial coefficient, less the linear part of terms 13 to 18
    double sum = 0.0;
    if (idel <= 1) {
        for (int n = 1; n <= virialTerms; ++n) {
            double part = density * cache.virial[n];
            if (n >= firstDensityTerm) part -= reduced * cache.temperature[n];
            sum += falling(terms[n - 1].u, itau) * part;
        }
    }
    // the terms in reduced density, by the power k of their exponentials
    for (int k = 0; k <= 4; ++k) {
        for (int n = firstDensityTerm; n <= aga8Terms; ++n) {
            const Term& term = terms[n - 1];
            if (term.k == k)
                sum += falling(term.u, itau) * cache.temperature[n] * cache.density[n] *
                       densityFactor(term, cache.powerK[k], idel);
        }
    }
    return sum;
}

}  // namespace frigana
