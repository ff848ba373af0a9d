// Blends that a request lists by their components: the same whatever the basis and the order, refused where they are no
// blend, and stored for later requests.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "HeardRequest.h"
#include "Larger.h"
#include "TreeFolders.h"

namespace frigana::test {
namespace {

// Molar mass [g/mol] from the header of a fluid file, to turn masses into moles without the library's own routines.
double molarMass(const std::string& component) {
    std::istringstream file(readFile(std::string(test::dataFolder) + "/fluids/" + component));
    for (std::string line; std::getline(file, line);)
        if (line.find("!molar mass") != std::string::npos) return std::stod(line);
    ADD_FAILURE() << component;
    return 1.0;
}

std::vector<Component> molesOf(const std::vector<Component>& byMass) {
    std::vector<Component> moles = byMass;
    double total = 0.0;
    for (Component& component : moles) total += component.fraction /= molarMass(component.name);
    for (Component& component : moles) component.fraction /= total;
    return moles;
}

// The same blend told in another way goes through the same iterations from the same start: it differs by rounding, in
// units of the value. The least value of a result is a conductivity of 0.01 W/(m K).
constexpr double roundingTolerance = 1e-10;

// What is compared of a blend: a request of each kind that gives states, at conditions of most refrigerants.
struct Question {
    int sub;
    const char* line;
};
constexpr Question questions[] = {
    {2, "1 250 310 20"}, {2, "2 300 900 200"}, {3, "2 1 400 240 340 20"},
    {4, "1 300 2 150"},  {4, "1 280 2 2500"},  {5, "1 280"},
    {5, "4 500"},        {6, "2 290"},         {6, "3 700"},
};

// Largest difference of two results in units of the value.
double difference(const std::vector<double>& a, const std::vector<double>& b) {
    if (a.size() != b.size() || a.empty()) return HUGE_VAL;
    double largest = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const double size = std::max({std::abs(a[i]), std::abs(b[i]), 1e-6});
        largest = larger(largest, std::abs(a[i] - b[i]) / size);
    }
    return largest;
}

const std::vector<Component> r513aLike{{"R1234YF.FLD", 0.56}, {"R134A.FLD", 0.44}};
const std::vector<Component> five{
    {"R32.FLD", 0.26}, {"R125.FLD", 0.26}, {"R134A.FLD", 0.21}, {"R1234YF.FLD", 0.2}, {"R1234ZE.FLD", 0.07}};

struct Named {
    const char* file;
    std::vector<Component> byMass;
};
const Named named[] = {
    {"R410A.MIX", {{"R32.FLD", 0.5}, {"R125.FLD", 0.5}}},
    {"R404A.MIX", {{"R125.FLD", 0.44}, {"R134A.FLD", 0.04}, {"R143A.FLD", 0.52}}},
    {"R407C.MIX", {{"R32.FLD", 0.23}, {"R125.FLD", 0.25}, {"R134A.FLD", 0.52}}},
    {"R454B.MIX", {{"R32.FLD", 0.691}, {"R1234YF.FLD", 0.301}}},  // adds up to 0.992, as the library has it
    {"R448A.MIX", five},
    {"R438A.MIX",
     {{"R32.FLD", 0.085}, {"R125.FLD", 0.45}, {"R134A.FLD", 0.442}, {"BUTANE.FLD", 0.017}, {"IPENTANE.FLD", 0.006}}},
};

TEST(ListedBlend, MassesMolesAndTheNameGiveTheSameResults) {
    Plant plant;
    double largestMass = 0.0, largestName = 0.0;
    for (const Named& blend : named) {
        SCOPED_TRACE(blend.file);
        const auto moles = molesOf(blend.byMass);
        const Heard factsByMass(plant, listedRequest(blend.byMass, true, 1));
        const Heard factsByMole(plant, listedRequest(moles, false, 1));
        const Heard factsByName(plant, propertyRequest(1, "", blend.file, 2));
        ASSERT_TRUE(factsByMass.answered() && factsByMole.answered() && factsByName.answered());
        const auto pure = blend.byMass.size();
        for (std::size_t i = 0; i < pure; ++i) {
            const int line = 7 + 2 * static_cast<int>(i);
            EXPECT_EQ(factsByMass.file.trimmed(line - 1), blend.byMass[i].name);
            ASSERT_EQ(factsByName.file.trimmed(line - 1), blend.byMass[i].name);
            for (const std::size_t basis : {0u, 1u}) {
                EXPECT_NEAR(factsByMass.values(line)[basis], factsByMole.values(line)[basis], 1e-12);
                EXPECT_NEAR(factsByMass.values(line)[basis], factsByName.values(line)[basis], 1e-12);
            }
        }
        // Facts but for the critical point, which CRITP searches and CRTHMX takes from the lines of the file.
        const int line = 6 + 2 * static_cast<int>(pure);
        const auto facts = factsByMass.values(line), others = factsByName.values(line);
        for (const std::size_t i : {0u, 6u, 7u, 8u}) EXPECT_NEAR(facts[i], others[i], 1e-12 * others[i]) << i;
        for (const std::size_t i : {3u, 4u, 5u}) EXPECT_NEAR(facts[i], others[i], 1e-6 * others[i]) << i;
        std::istringstream mine(factsByMass.file.raw(line).substr(170)), its(factsByName.file.raw(line).substr(170));
        int myPotential = 0, itsPotential = -1;
        std::string myClass;
        mine >> myPotential >> myClass;
        its >> itsPotential;
        EXPECT_EQ(myPotential, itsPotential);
        EXPECT_EQ(myClass, "NA");  // only the library's blends have one

        for (const Question& question : questions) {
            SCOPED_TRACE(question.line);
            const Heard byMass(plant, listedRequest(blend.byMass, true, question.sub, question.line));
            const Heard byMole(plant, listedRequest(moles, false, question.sub, question.line));
            const Heard byName(plant, propertyRequest(question.sub, question.line, blend.file, 2));
            ASSERT_TRUE(byMass.answered() && byMole.answered() && byName.answered());
            const double mass = difference(byMass.all(), byMole.all()), name = difference(byMass.all(), byName.all());
            largestMass = larger(largestMass, mass);
            largestName = larger(largestName, name);
            EXPECT_LE(mass, 1e-12);
            EXPECT_LE(name, roundingTolerance);
        }
    }
    std::printf("listed by mass and by mole differ by %.1e, from the blend by name by %.1e\n", largestMass,
                largestName);
}

TEST(ListedBlend, TheOrderOfTheComponentsDoesNotMatter) {
    Plant plant;
    double largest = 0.0;
    for (const auto* components : {&r513aLike, &five}) {
        auto permuted = *components;
        std::rotate(permuted.begin(), permuted.begin() + 1, permuted.end());
        std::swap(permuted.front(), permuted.back());
        if (permuted.front().name == components->front().name) std::reverse(permuted.begin(), permuted.end());
        for (const Question& question : questions) {
            SCOPED_TRACE(question.line);
            const Heard first(plant, listedRequest(*components, true, question.sub, question.line));
            const Heard second(plant, listedRequest(permuted, true, question.sub, question.line));
            ASSERT_TRUE(first.answered() && second.answered());
            const double apart = difference(first.all(), second.all());
            largest = larger(largest, apart);
            EXPECT_LE(apart, roundingTolerance);
        }
    }
    std::printf("order of the components: largest difference %.1e\n", largest);
}

TEST(ListedBlend, AComponentWithoutAShareChangesNothing) {
    Plant plant;
    auto six = r513aLike;
    six.insert(six.begin(), {"R32.FLD", 0.0});
    six.push_back({"PROPANE.FLD", 0.0});
    for (const bool byMass : {true, false}) {
        for (const Question& question : questions) {
            SCOPED_TRACE(question.line);
            const Heard without(plant, listedRequest(r513aLike, byMass, question.sub, question.line));
            const Heard with(plant, listedRequest(six, byMass, question.sub, question.line));
            ASSERT_TRUE(without.answered() && with.answered()) << with.text;
            EXPECT_LE(difference(without.all(), with.all()), roundingTolerance);
        }
        // All of one component: that component.
        const std::vector<Component> onlyOne{{"R32.FLD", 1.0}, {"R125.FLD", 0.0}};
        const Heard mixture(plant, listedRequest(onlyOne, byMass, 4, "1 300 2 1000"));
        const Heard pure(plant, propertyRequest(4, "1 300 2 1000", "R32.FLD", 1));
        ASSERT_TRUE(mixture.answered() && pure.answered());
        EXPECT_LE(difference(mixture.all(), pure.all()), 1e-9);
    }
}

TEST(ListedBlend, OneComponentIsThatFluid) {
    Plant plant;
    const std::vector<Component> one{{"R134A.FLD", 1.0}}, share{{"R134A.FLD", 0.4}};
    for (const Question& question : questions) {
        SCOPED_TRACE(question.line);
        const Heard pure(plant, propertyRequest(question.sub, question.line));
        for (const bool byMass : {true, false}) {
            const Heard listed(plant, listedRequest(one, byMass, question.sub, question.line));
            const Heard part(plant, listedRequest(share, byMass, question.sub, question.line));
            ASSERT_TRUE(pure.answered() && listed.answered() && part.answered());
            EXPECT_LE(difference(pure.all(), listed.all()), 1e-12);
            EXPECT_EQ(listed.all(), part.all());
        }
    }
    const Heard facts(plant, listedRequest(share, false, 1));
    EXPECT_EQ(facts.values(7), (std::vector<double>{1.0, 1.0}));
}

TEST(ListedBlend, MassFractionsAreParts) {
    Plant plant;
    const auto moles = molesOf(five);
    for (const double total : {0.9, 0.992, 100.0}) {
        auto parts = five;
        for (Component& part : parts) part.fraction *= total;
        const Heard one(plant, listedRequest(five, true, 1)), other(plant, listedRequest(parts, true, 1));
        ASSERT_TRUE(one.answered() && other.answered());
        for (int i = 0; i < 5; ++i)
            for (const std::size_t basis : {0u, 1u})
                EXPECT_NEAR(other.values(7 + 2 * i)[basis], one.values(7 + 2 * i)[basis], 1e-14);
        // The potential, too, is that of the blend.
        EXPECT_EQ(one.file.raw(16).substr(170), other.file.raw(16).substr(170));
        EXPECT_LE(difference(one.all(), other.all()), 1e-12);
    }
}

TEST(ListedBlend, TwentyComponentsAreOneMixture) {
    Plant plant;
    std::vector<Component> twenty;
    for (const char* name :
         {"R32",   "R125",  "R134A", "R143A",  "R22",     "R12",     "R11",     "R123",   "R124",     "R142B",
          "R141B", "R152A", "R218",  "R227EA", "R1234YF", "R1234ZE", "PROPANE", "BUTANE", "ISOBUTAN", "CO2"})
        twenty.push_back({std::string(name) + ".FLD", 0.05});
    const Heard facts(plant, listedRequest(twenty, false, 1));
    ASSERT_TRUE(facts.answered()) << facts.text;
    EXPECT_EQ(facts.file.count(), 6 + 40 + 5);
    double mass = 0.0;
    for (int i = 0; i < 20; ++i) mass += facts.values(7 + 2 * i).at(0);
    EXPECT_NEAR(mass, 1.0, 1e-14);
    const Heard gas(plant, listedRequest(twenty, false, 4, "1 320 2 100"));
    ASSERT_TRUE(gas.answered()) << gas.text;
    const Cells s = stateCells(gas.values(6));
    // Nearly ideal at 1 bar: the molar mass and the gas constant give the density within the second virial coefficient.
    const double ideal = 100.0 * facts.values(46).at(0) / (8.314472 * 320.0);
    EXPECT_GT(s.D, ideal);
    EXPECT_LT(s.D, 1.04 * ideal);
    EXPECT_NEAR(s.H, s.U + s.P * s.V, 1e-9 * s.H);
}

// ---- what is no blend -----------------------------------------------------------------------------------------------

struct BadBlend {
    const char* what;
    std::vector<Component> components;
    bool byMass;
    int code;
    const char* text;  // the message, or its beginning where the engine words it
};

TEST(ListedBlendCodes, WhatIsNoBlendIsRefusedWithAClearTextWhateverTheReference) {
    const char* negative = "Error: The fraction of R125.FLD is negative or not a number!";
    const char* nothing = "Error: The fractions of the mixture do not add up to a number above zero!";
    const char* twice = "Error: The mixture holds R32.FLD twice!";
    const BadBlend rows[] = {
        {"mole fractions below one",
         {{"R32.FLD", 0.45}, {"R125.FLD", 0.45}},
         false,
         100128,
         "Error: The mole fractions of the mixture add up to 0.900000, not to one!"},
        {"mole percent",
         {{"R32.FLD", 50}, {"R125.FLD", 50}},
         false,
         100128,
         "Error: The mole fractions of the mixture add up to 100.000000, not to one!"},
        {"mole fractions, rounded too far",
         {{"R32.FLD", 0.333}, {"R125.FLD", 0.666}},
         false,
         100128,
         "Error: The mole fractions of the mixture add up to 0.999000, not to one!"},
        {"negative mass", {{"R32.FLD", 1.2}, {"R125.FLD", -0.2}}, true, 100125, negative},
        {"negative mole", {{"R32.FLD", 1.2}, {"R125.FLD", -0.2}}, false, 100125, negative},
        {"a trifle below zero", {{"R32.FLD", 1.0}, {"R125.FLD", -1e-12}}, false, 100125, negative},
        {"a sum beyond all numbers", {{"R32.FLD", 1.7e308}, {"R125.FLD", 1.7e308}}, true, 100127, nothing},
        {"nothing, mass", {{"R32.FLD", 0}, {"R125.FLD", 0}}, true, 100127, nothing},
        {"nothing, mole", {{"R32.FLD", 0}, {"R125.FLD", 0}}, false, 100127, nothing},
        {"nothing of one", {{"R32.FLD", 0}}, true, 100127, nothing},
        {"a component twice", {{"R125.FLD", 0.2}, {"R32.FLD", 0.5}, {"R32.FLD", 0.3}}, true, 100126, twice},
        {"twice, in other letters", {{"r32.fld", 0.5}, {"R32.FLD", 0.5}}, false, 100126, twice},
        {"twice, without extension", {{"R32", 0.5}, {"R32.FLD", 0.5}}, false, 100126, twice},
        {"a component that is not there",
         {{"R32.FLD", 0.5}, {"NOTHING.FLD", 0.5}},
         true,
         101,
         "[SETUP error 101] error in opening file for component #  2; filename = (NOTHING.FLD"},
        {"a blend in a blend",
         {{"R32.FLD", 0.5}, {"R410A.MIX", 0.5}},
         true,
         101,
         "[SETUP error 101] error in opening file for component #  2; filename = (R410A.MIX"},
        {"no component", {}, true, 113, "[SETUP error 113] number of components out of bounds"},
    };
    Plant plant;
    const Request good = listedRequest(r513aLike, true, 4, "1 300 2 150");
    plant(good);
    const std::string answer = plant.resultText();
    for (const BadBlend& row : rows) {
        for (const char* reference : {"2 DEF", "1 DEF", "1 IIR", "2 NBP", "1 NA"}) {
            SCOPED_TRACE(std::string(row.what) + ", " + reference);
            Request request = listedRequest(row.components, row.byMass, 4, "1 300 2 150");
            request.lines()[5 + 2 * row.components.size()] = reference;
            const Heard refused(plant, request);
            EXPECT_EQ(refused.end, RunEnd::refused);
            EXPECT_EQ(refused.code, row.code);
            EXPECT_EQ(refused.text.substr(0, std::string(row.text).size()), row.text);
            ASSERT_EQ(refused.file.count(), 3);
            EXPECT_EQ(refused.file.raw(1), " 0");
            EXPECT_EQ(refused.file.number(2), row.code);
            EXPECT_EQ(refused.file.raw(3).substr(1, std::string(row.text).size()), row.text);
        }
        // The next request is answered as ever.
        plant(good);
        EXPECT_EQ(plant.resultText(), answer) << row.what;
    }
}

TEST(ListedBlendCodes, CountsAndTextsThatCannotBeReadEndTheRunAndLoseNothing) {
    Plant plant;
    const Request good = listedRequest(r513aLike, true, 4, "1 300 2 150");
    plant(good);
    const std::string answer = plant.resultText();

    Request text = listedRequest({{"R32.FLD", 0.5}, {"R125.FLD", 0.5}}, true, 4, "1 300 2 150");
    text.lines()[7] = "half";
    Request many = listedRequest(std::vector<Component>(21, {"R32.FLD", 1.0 / 21}), true, 4, "1 300 2 150");
    for (const auto& [request, said] :
         {std::pair{&text, "line 8: expected the fraction of a fluid (a number), found \"half\""},
          std::pair{&many, "line 3: expected a number of names up to 20, found \"21\""}}) {
        testing::internal::CaptureStderr();
        const Heard refused(plant, *request);
        EXPECT_NE(testing::internal::GetCapturedStderr().find(said), std::string::npos);
        EXPECT_EQ(refused.end, RunEnd::runtimeError);
        EXPECT_FALSE(plant.hasResult());
        plant(good);
        EXPECT_EQ(plant.resultText(), answer);
    }
    // A count below zero is none either.
    Request less = good;
    less.lines()[2] = "-1";
    less.lines().erase(less.lines().begin() + 4, less.lines().begin() + 8);
    const Heard refused(plant, less);
    EXPECT_EQ(refused.code, 113);
    EXPECT_EQ(refused.text.substr(0, 52), "[SETUP error 113] number of components out of bounds");
}

TEST(ListedBlendCodes, APureFluidHasOneName) {
    Plant plant;
    Request two = listedRequest({{"R32.FLD", 0.5}, {"R125.FLD", 0.5}}, true, 4, "1 300 2 150");
    two.lines()[1] = "1";
    plant(two);
    EXPECT_EQ(plant.resultText(), failure(100123, "Fluid cannot be selected!!!"));
}

TEST(ListedBlendCodes, MixtureFilesAreCheckedAlike) {
    Plant plant;
    std::filesystem::create_directories(plant.folder.path("installed/mixtures"));
    share(std::string(test::dataFolder) + "/fluids", plant.folder.path("installed/fluids"));
    plant.installation = plant.folder.path("installed/frigana");
    const auto ask = [&](const char* first, const char* second, const char* fractions) {
        writeFile(plant.folder.path("installed/mixtures/Own.MIX"),
                  std::string("Own\n 70 350 5000 6\n 2\n") + first + '\n' + second + '\n' + fractions + "\n 0\n");
        return Heard(plant, propertyRequest(4, "1 300 2 150", "Own.MIX", 2));
    };
    EXPECT_TRUE(ask("R32.FLD", "R125.FLD", "0.5\n0.5").answered());
    // Fractions of a file are scaled to a sum of one.
    EXPECT_EQ(ask("R32.FLD", "R125.FLD", "0.4\n0.4").all(), ask("R32.FLD", "R125.FLD", "0.5\n0.5").all());
    EXPECT_EQ(ask("R32.FLD", "R125.FLD", "1.2\n-0.2").code, 100125);
    EXPECT_EQ(ask("R32.FLD", "R125.FLD", "NaN\n0.5").code, 100125);
    EXPECT_EQ(ask("R32.FLD", "R32.FLD", "0.5\n0.5").code, 100126);
    EXPECT_EQ(ask("R32.FLD", "R125.FLD", "0\n0").code, 100127);
    EXPECT_EQ(ask("R32.FLD", "R125.FLD", "0.5\nhalf").code, 101);
    EXPECT_EQ(ask("R32.FLD", "NOTHING.FLD", "0.5\n0.5").code, 101);
}

}  // namespace
}  // namespace frigana::test
