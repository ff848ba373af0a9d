// Expansions of the saturation of pure fluids, beside Newton's method and beside the iterations behind both.
#include "SAT_SUB_EXPANSION.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <vector>

#include "FurtherFluids.h"
#include "PASSCMN.h"
#include "PREOS.h"
#include "SAT_SUB_PURE_NEWTON.h"
#include "SETAGA.h"
#include "Saturation.h"
#include "TemporaryFolder.h"
#include "TextFile.h"
#include "UTILITY.h"

namespace frigana {
namespace {

using namespace test;
namespace fs = std::filesystem;

// What answers: the expansions, Newton's method, or the iterations.
enum class Way { newton, iterations };
class Without {
  public:
    explicit Without(Way way) {
        expansionControl.enabled = false;
        pureNewtonControl.enabled = way == Way::newton;
        resetSaturationMemo();
    }
    ~Without() {
        expansionControl.enabled = pureNewtonControl.enabled = true;
        resetSaturationMemo();
    }
    Without(const Without&) = delete;
    Without& operator=(const Without&) = delete;
};

// Asks for so many states that the expansions answer from now on, if there are any.
void askOften(int icomp = 1) {
    const Composition x = unitComposition(icomp);
    const double Tc = fluidConstants.TCRIT[icomp];
    for (int k = 0; k < statesBeforeExpansions; ++k) satt((0.8 + 5e-5 * k) * Tc, bubble, x);
}

// How many of the states that the call asks for are answered by expansions.
template <class Call>
long answeredBy(const Call& call) {
    const long before = expansionControl.answered;
    call();
    return expansionControl.answered - before;
}

ExpansionTable tableOf(const std::string& path) {
    ExpansionTable table;
    EXPECT_TRUE(openForReading(1, path));
    EXPECT_TRUE(readExpansions(1, table)) << path;
    closeUnit(1);
    return table;
}

std::string expansionsOf(const std::string& fluid) {
    return std::string(dataFolder) + "/fluids/" + fluid + ".SAT";
}

// ------------------------------------------------------------------------------------------ every fluid

class Expansion : public ::testing::TestWithParam<const char*> {
  protected:
    void SetUp() override { ASSERT_LE(setUp(GetParam()), 0); }
    Random random_;
};

// Newton's method itself leaves the rounding of the equation open, to which densities answer the more the closer the
// critical point is. Its temperature at a pressure is one of several that the equation takes for one, and its pressure
// of a cold liquid drowns in the rounding of the density: the one is compared by the equation, the other by the vapor.
// R123's equation, whose large terms nearly cancel, scatters by more than the others do.
constexpr double close = 1e-12, closeOfR123 = 4e-12, closeToIterations = 1e-10, closeBesideCritical = 1e-7;

double closeOf(std::string_view fluid) {
    return fluid == "R123" ? closeOfR123 : close;
}

TEST_P(Expansion, EqualsNewtonsMethodAtTemperature) {
    const ExpansionTable table = tableOf(expansionsOf(GetParam()));
    askOften();
    double worst = 0.0;
    constexpr int states = 200;
    const long answered = answeredBy([&] {
        for (int k = 0; k < states; ++k) {
            const double T = random_.between(table.lowestT, table.highestT);
            SCOPED_TRACE(T);
            const Saturated s = satt(T, k % 2 == 0 ? bubble : dew);
            ASSERT_EQ(s.ierr, 0) << s.text();
            const Without expansions(Way::newton);
            const Saturated newton = satt(T);
            ASSERT_EQ(newton.ierr, 0) << newton.text();
            EXPECT_NEAR(s.rhol / newton.rhol, 1.0, closeOf(GetParam()));
            EXPECT_NEAR(s.rhov / newton.rhov, 1.0, closeOf(GetParam()));
            EXPECT_NEAR(s.p / pressure(T, newton.rhov), 1.0, closeOf(GetParam()));
            EXPECT_EQ(s.xliq[1], 1.0);
            EXPECT_EQ(s.xvap[1], 1.0);
            worst = std::max({worst, std::fabs(s.rhol / newton.rhol - 1.0), std::fabs(s.rhov / newton.rhov - 1.0)});
        }
    });
    EXPECT_EQ(answered, states);
    std::printf("%-9s densities differ by %.1e at most\n", GetParam(), worst);
}

TEST_P(Expansion, EqualsNewtonsMethodAtPressure) {
    const ExpansionTable table = tableOf(expansionsOf(GetParam()));
    askOften();
    constexpr int states = 200;
    const long answered = answeredBy([&] {
        for (int k = 0; k < states; ++k) {
            const double p = table.lowestP * std::pow(table.highestP / table.lowestP, random_.between(0.0, 1.0));
            SCOPED_TRACE(p);
            const Saturated s = satp(p, k % 2 == 0 ? bubble : dew);
            ASSERT_EQ(s.ierr, 0) << s.text();
            const Without expansions(Way::newton);
            const Saturated newton = satp(p);
            ASSERT_EQ(newton.ierr, 0) << newton.text();
            EXPECT_NEAR(s.T / newton.T, 1.0, 2e-12);
            satt(0.5 *
                 (s.T + criticalT()));  // the equation would take s.T and the temperature of Newton's method for one
            const Saturated back = satt(s.T);
            EXPECT_NEAR(s.rhol / back.rhol, 1.0, closeOf(GetParam()));
            EXPECT_NEAR(s.rhov / back.rhov, 1.0, closeOf(GetParam()));
            EXPECT_NEAR(p / pressure(s.T, back.rhov), 1.0, closeOf(GetParam()));
        }
    });
    EXPECT_EQ(answered, states);
}

TEST_P(Expansion, FindsTheStatesOfTheIterations) {
    const ExpansionTable table = tableOf(expansionsOf(GetParam()));
    askOften();
    for (int k = 0; k < 20; ++k) {
        const double T = random_.between(table.lowestT, std::min(table.highestT, 0.99 * criticalT()));
        SCOPED_TRACE(T);
        const Saturated s = satt(T);
        const Without both(Way::iterations);
        const Saturated told = satt(T);
        ASSERT_EQ(told.ierr, 0) << told.text();
        const double bound = T < 0.9 * criticalT() ? closeToIterations : closeBesideCritical;
        EXPECT_NEAR(s.rhol / told.rhol, 1.0, bound);
        EXPECT_NEAR(s.rhov / told.rhov, 1.0, bound);
    }
}

// Beyond both ends of its range a table is not asked, and the ends belong to it.
TEST_P(Expansion, AnswersWithinItsRangeAlone) {
    const ExpansionTable table = tableOf(expansionsOf(GetParam()));
    askOften();
    const auto answersT = [](double T) { return answeredBy([&] { satt(T); }) == 1; };
    const auto answersP = [](double p) { return answeredBy([&] { satp(p); }) == 1; };
    EXPECT_TRUE(answersT(table.lowestT));
    EXPECT_TRUE(answersT(table.highestT));
    EXPECT_FALSE(answersT(table.lowestT - 1e-6));
    EXPECT_FALSE(answersT(table.highestT + 1e-6));
    EXPECT_FALSE(answersT(-table.highestT));
    EXPECT_TRUE(answersP(table.lowestP));
    EXPECT_TRUE(answersP(table.highestP));
    EXPECT_FALSE(answersP(0.999999 * table.lowestP));
    EXPECT_FALSE(answersP(1.000001 * table.highestP));
    EXPECT_GE(table.lowestP, fluidConstants.PTPN[1]);
    EXPECT_GE(table.lowestT, lowestT());
    EXPECT_LT(table.highestT, criticalT());
}

// Every fluid but R22, whose equation rounds the densities of neighbouring states by 1e-11 and has no file.
std::vector<const char*> fluidsWithExpansions() {
    std::vector<const char*> fluids(std::begin(pureFluids), std::end(pureFluids));
    fluids.insert(fluids.end(), std::begin(furtherFluids), std::end(furtherFluids));
    std::erase_if(fluids, [](std::string_view fluid) { return fluid == "R22"; });
    return fluids;
}
INSTANTIATE_TEST_SUITE_P(Fluids, Expansion, ::testing::ValuesIn(fluidsWithExpansions()),
                         [](const auto& fluid) { return std::string(fluid.param); });

// ------------------------------------------------------------------------------------------ when they answer

TEST(ExpansionUse, BeginsAfterManyStatesAndAnewWithEverySetUp) {
    for (int time = 0; time < 2; ++time) {
        ASSERT_EQ(setUp("R134A"), 0);
        int k = 0;
        while (answeredBy([&] { satt(250.0 + 0.05 * k); }) == 0) ASSERT_LE(++k, statesBeforeExpansions);
        EXPECT_EQ(k, statesBeforeExpansions - 1);
    }
}

// A calculation gives the same numbers whatever was calculated before it.
TEST(ExpansionUse, AnswersDoNotDependOnEarlierSetUps) {
    std::vector<double> first;
    for (int time = 0; time < 3; ++time) {
        ASSERT_EQ(setUp("PROPANE"), 0);
        std::vector<double> values;
        for (int k = 0; k < 3 * statesBeforeExpansions; ++k) {
            const Saturated s = k % 2 == 0 ? satt(200.0 + 0.1 * k) : satp(100.0 + k);
            values.insert(values.end(), {s.T, s.p, s.rhol, s.rhov});
        }
        if (time == 0) first = values;
        EXPECT_EQ(values, first) << time;
    }
}

TEST(ExpansionUse, FreezingAndSublimationAreNotTheirs) {
    ASSERT_EQ(setUp("CO2"), 0);
    askOften();
    EXPECT_EQ(answeredBy([] { satt(217.0, freezing); }), 0);
    EXPECT_EQ(answeredBy([] { satp(20000.0, freezing); }), 0);
    EXPECT_EQ(answeredBy([] { satt(217.0, sublimation); }), 0);
    EXPECT_EQ(answeredBy([] { satt(217.0, 7); }), 0);
    EXPECT_EQ(answeredBy([] { satt(217.0, dew); }), 1);
}

TEST(ExpansionUse, TheMemoKnowsTheirStates) {
    ASSERT_EQ(setUp("R134A"), 0);
    askOften();
    const Saturated s = satt(280.0, dew);
    Saturated again;
    EXPECT_EQ(answeredBy([&] { again = satt(280.0, dew); }), 0);
    EXPECT_EQ(again.p, s.p);
    EXPECT_EQ(again.rhol, s.rhol);
    EXPECT_EQ(again.rhov, s.rhov);
    EXPECT_EQ(again.xvap[1], 1.0);
}

// The arguments of the composition may be one.
TEST(ExpansionUse, ACompositionMayBeItsOwnResult) {
    ASSERT_LE(setUp({"R32", "R125"}), 0);
    askOften(2);
    Composition x = unitComposition(2), y{};
    double p = 0.0, rhol = 0.0, rhov = 0.0;
    int ierr = 1;
    Text255 herr;
    EXPECT_EQ(answeredBy([&] { SATT(250.0, x, dew, p, rhol, rhov, x, y, ierr, herr); }), 1);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(x[2], 1.0);
    EXPECT_EQ(y[2], 1.0);
    EXPECT_EQ(x[1], 0.0);
    const Without expansions(Way::newton);
    EXPECT_NEAR(satt(250.0, dew, unitComposition(2)).rhol / rhol, 1.0, close);
}

// More fluids in turn than tables are kept: none is answered by another one's table.
TEST(ExpansionUse, ManyFluidsInOneSetUpKeepApart) {
    const std::initializer_list<std::string_view> fluids = {"R32", "R125", "R134A", "PROPANE", "CO2", "R143A"};
    ASSERT_LE(setUp(fluids), 0);
    const int count = static_cast<int>(fluids.size());
    for (int i = 1; i <= count; ++i) askOften(i);
    long answered = 0;
    for (int round = 0; round < 40; ++round) {
        for (int i = 1; i <= count; ++i) {
            const Composition x = unitComposition(i);
            const double T = fluidConstants.TCRIT[i] * (0.75 + 0.005 * round);
            Saturated s;
            answered += answeredBy([&] { s = satt(T, dew, x); });
            const Without expansions(Way::newton);
            const Saturated newton = satt(T, dew, x);
            ASSERT_EQ(newton.ierr, 0) << i;
            EXPECT_NEAR(s.rhov / newton.rhov, 1.0, close) << i;
            EXPECT_EQ(fluidConstants.R, fluidConstants.REOS[i]);
        }
    }
    EXPECT_GE(answered, 40 * 4);
}

// ------------------------------------------------------------------------------------------ other equations

TEST(ExpansionUse, OtherEquationsOfStateHaveNone) {
    ASSERT_EQ(setUp("R134A"), 0);
    int selector = 1;
    PREOS(selector);
    EXPECT_EQ(answeredBy([] {
                  askOften();
                  satt(280.0);
              }),
              0);
    selector = 0;
    PREOS(selector);
    EXPECT_GE(answeredBy([] {
                  askOften();
                  satt(280.0);
              }),
              1);
}

// A coefficient that a host changes makes another equation, in the midst of a set-up.
TEST(ExpansionUse, AChangedCoefficientEndsThem) {
    ASSERT_EQ(setUp("R134A"), 0);
    askOften();
    EXPECT_EQ(answeredBy([] { satt(280.0); }), 1);
    const double before = satt(281.0).p;
    Text255 text, herr;
    int count = 0, ierr = 0;
    double value = 0.0, array[passedArraySize] = {};
    PASSCMN("afeq", 0, 1, 0, text, count, value, array, ierr, herr);
    ASSERT_EQ(ierr, 0);
    array[0] *= 1.0001;
    PASSCMN("afeq", 1, 1, 0, text, count, value, array, ierr, herr);
    ASSERT_EQ(ierr, 0);
    EXPECT_EQ(answeredBy([] {
                  askOften();
                  satt(280.0);
              }),
              0);
    EXPECT_GT(std::fabs(satt(281.0).p / before - 1.0), 1e-6);
    modelTags.LFORCESETUP = true;
}

// ------------------------------------------------------------------------------------------ files

// R134a alone in an installation, with a file of expansions that a test replaces.
class ExpansionFile : public ::testing::Test {
  protected:
    void SetUp() override {
        fs::create_directories(folder_.path("fluids"));
        for (const char* name : {"R134A.FLD", "HMX.BNC"})
            fs::copy(std::string(dataFolder) + "/fluids/" + name, folder_.path("fluids/") + name,
                     fs::copy_options::overwrite_existing);
        whole_ = readFile(expansionsOf("R134A"));
        ASSERT_FALSE(whole_.empty());
    }
    void TearDown() override {
        setPath();
        modelTags.LFORCESETUP = true;
    }

    void put(const std::string& text, const char* name = "R134A.SAT") const {
        writeFile(folder_.path("fluids") + '/' + name, text);
    }

    // The numbers of a hundred states behind those that it takes; how many of them by expansions.
    struct Answers {
        std::vector<double> values;
        long expanded;
    };
    Answers answers() const {
        SETPATH(folder_.path());
        modelTags.LFORCESETUP = true;
        FileNames files{};
        files[1].assign("R134A.FLD");
        Text3 reference = "DEF";
        int ierr = 0;
        Text255 herr;
        SETUP(1, files, "HMX.BNC", reference, ierr, herr);
        EXPECT_EQ(ierr, 0);
        askOften();
        Answers a;
        a.expanded = answeredBy([&] {
            for (int k = 0; k < 100; ++k) {
                const Saturated s = k % 2 == 0 ? satt(200.0 + k) : satp(50.0 + 30.0 * k);
                a.values.insert(a.values.end(), {s.T, s.p, s.rhol, s.rhov, static_cast<double>(s.ierr)});
            }
        });
        EXPECT_EQ(firstFreeUnit(1), 1);
        return a;
    }

    void expectIgnored(const std::string& what) {
        const Answers a = answers();
        EXPECT_EQ(a.expanded, 0) << what;
        EXPECT_EQ(a.values, none_) << what;
    }
    // The answers without a file, which those with a bad one equal to the last bit.
    void learn() {
        const Answers a = answers();
        ASSERT_EQ(a.expanded, 0);
        none_ = a.values;
    }

    TemporaryFolder folder_;
    std::string whole_;
    std::vector<double> none_;
};

TEST_F(ExpansionFile, IsNotNeeded) {
    learn();
    put(whole_);
    const Answers with = answers();
    EXPECT_EQ(with.expanded, 100);
    for (std::size_t k = 0; k < none_.size(); ++k) EXPECT_NEAR(with.values[k], none_[k], 1e-8 * std::fabs(none_[k]));
}

TEST_F(ExpansionFile, IsFoundInEitherCase) {
    put(whole_, "r134a.sat");
    EXPECT_EQ(answers().expanded, 100);
}

TEST_F(ExpansionFile, OfAnotherEquationIsIgnored) {
    learn();
    put(readFile(expansionsOf("R32")));
    expectIgnored("that of R32");
    put(whole_);
    EXPECT_EQ(answers().expanded, 100);
    // the fluid file is replaced: a coefficient of the equation, a limit, the critical point
    const std::string fluid = readFile(folder_.path("fluids/R134A.FLD"));
    const struct {
        const char *from, *to;
    } changes[] = {{"  0.05586817", "  0.05586818"}, {"  374.21  ", "  374.22  "}, {"  169.85  ", "  169.95  "}};
    for (const auto& change : changes) {
        std::string other = fluid;
        const auto at = other.find(change.from);
        ASSERT_NE(at, std::string::npos) << change.from;
        for (auto k = at; k != std::string::npos; k = other.find(change.from, k + 1))
            other.replace(k, std::string(change.from).size(), change.to);
        writeFile(folder_.path("fluids/R134A.FLD"), other);
        EXPECT_EQ(answers().expanded, 0) << change.from;
    }
    writeFile(folder_.path("fluids/R134A.FLD"), fluid);
    EXPECT_EQ(answers().expanded, 100);
}

TEST_F(ExpansionFile, CutShortIsIgnored) {
    learn();
    for (std::size_t length = 0; length + 2 < whole_.size(); length += length < 200 ? 23 : 811) {
        put(whole_.substr(0, length));
        expectIgnored(std::to_string(length) + " bytes");
    }
    // the last number is cut in its midst
    put(whole_.substr(0, whole_.find_last_of("0123456789") - 3));
    const Answers a = answers();
    for (std::size_t k = 0; k < none_.size(); ++k) EXPECT_NEAR(a.values[k], none_[k], 1e-8 * std::fabs(none_[k]));
}

TEST_F(ExpansionFile, WithWhatIsNoNumberIsIgnored) {
    learn();
    const auto firstCoefficient = whole_.find('\n', whole_.find("\n", whole_.find("\n", 100) + 1) + 1) + 1;
    for (const char* word : {"nan", "inf", "-inf", "1e999", "word", "*", ",", "/"}) {
        std::string damaged = whole_;
        const auto end = damaged.find_first_of(" \n", firstCoefficient);
        damaged.replace(firstCoefficient, end - firstCoefficient, word);
        put(damaged);
        expectIgnored(word);
    }
}

// A coefficient that is another number by little, anywhere in the file.
TEST_F(ExpansionFile, WithAWrongCoefficientIsIgnored) {
    learn();
    std::vector<std::size_t> lines = {0};
    for (std::size_t at = 0; (at = whole_.find('\n', at)) != std::string::npos;) lines.push_back(++at);
    for (std::size_t k = 6; k + 1 < lines.size(); k += 7) {
        std::string damaged = whole_;
        const auto end = damaged.find_first_of(" \n", lines[k]);
        const double right = std::stod(damaged.substr(lines[k], end - lines[k]));
        char wrong[40];
        std::snprintf(wrong, sizeof wrong, "%.17g", right + 1e-9);
        damaged.replace(lines[k], end - lines[k], wrong);
        put(damaged);
        expectIgnored("line " + std::to_string(k + 1));
    }
}

TEST_F(ExpansionFile, WithImpossibleRangesOrCountsIsIgnored) {
    learn();
    std::vector<std::string> lines;
    for (std::size_t at = 0, end; (end = whole_.find('\n', at)) != std::string::npos; at = end + 1)
        lines.push_back(whole_.substr(at, end - at));
    const struct {
        std::size_t line;
        const char* text;
    } rows[] = {
        {1, "2"},
        {1, "0"},
        {2, "0123456789abcdef"},
        {2, "xyz"},
        {3, "374.21 4059.28 0"},
        {3, "300 4059.28 8.314471"},
        {4, "300 200 10 100"},
        {4, "0 373 10 100"},
        {4, "200 373 100 10"},
        {4, "200 373 100 1e9"},
        {5, "1000 16 8 16"},
        {5, "8 1000 8 16"},
        {5, "-8 16 8 16"},
        {5, "0 16 8 16"},
        {5, "1e300 1e300 1 1"},
    };
    for (const auto& row : rows) {
        std::string damaged;
        for (std::size_t k = 0; k < lines.size(); ++k)
            damaged += (k == row.line ? row.text : lines[k]) + std::string("\n");
        put(damaged);
        expectIgnored(std::string("line ") + std::to_string(row.line + 1) + ": " + row.text);
    }
}

}  // namespace
}  // namespace frigana
