// Blends that a request stores: the file to its last byte, and the blend by its name afterwards.
#include <gtest/gtest.h>

#include <algorithm>

#include "HeardRequest.h"
#include "Larger.h"
#include "TreeFolders.h"

namespace frigana::test {
namespace {

// A plant with an installation of its own and a current folder of its own.
struct Store : testing::Test {
    Plant plant;
    std::string current = plant.folder.path("current");
    std::filesystem::path before = std::filesystem::current_path();

    void SetUp() override {
        std::filesystem::create_directories(plant.folder.path("installed/mixtures"));
        share(std::string(test::dataFolder) + "/fluids", plant.folder.path("installed/fluids"));
        plant.installation = plant.folder.path("installed") + "\\frigana.exe";
        std::filesystem::create_directory(current);
        std::filesystem::current_path(current);
    }
    void TearDown() override { std::filesystem::current_path(before); }

    std::string mixture(const std::string& name) const { return plant.folder.path("installed/mixtures/" + name); }
    void store(const std::vector<Component>& components, bool byMass, const std::string& name) {
        std::filesystem::remove(plant.result);
        plant(listedRequest(components, byMass, 7, "", name));
        EXPECT_EQ(runReport.end, RunEnd::returned) << runReport.HERR.trimmed();
        EXPECT_FALSE(plant.hasResult());
    }
};

// The layout of a mixture file by the C library's formats.
std::string mixtureFile(const std::string& name, const std::vector<double>& constants,
                        const std::vector<std::string>& components, const std::vector<double>& moles) {
    char line[200];
    std::snprintf(line, sizeof line, "%-40.40s\n", name.c_str());
    std::string all = line;
    for (const double value : constants) {
        std::snprintf(line, sizeof line, " %20.12f", value);
        all += line;
    }
    std::snprintf(line, sizeof line, "\n%2d\n", static_cast<int>(components.size()));
    all += line;
    for (const std::string& component : components) {
        std::snprintf(line, sizeof line, "%-40.40s\n", component.c_str());
        all += line;
    }
    for (const double fraction : moles) {
        std::snprintf(line, sizeof line, " %20.12f\n", fraction);
        all += line;
    }
    return all + " 0\n";
}

const std::vector<Component> r513aLike{{"R1234YF.FLD", 0.56}, {"R134A.FLD", 0.44}};
const std::vector<Component> five{
    {"R32.FLD", 0.26}, {"R125.FLD", 0.26}, {"R134A.FLD", 0.21}, {"R1234YF.FLD", 0.2}, {"R1234ZE.FLD", 0.07}};

// What the request itself tells of the blend: constants and mole fractions.
std::string expectedFile(Plant& plant, const std::vector<Component>& components, bool byMass, const std::string& name) {
    const Heard facts(plant, listedRequest(components, byMass, 1));
    std::filesystem::remove(plant.result);
    std::vector<std::string> names;
    std::vector<double> moles;
    for (std::size_t i = 0; i < components.size(); ++i) {
        names.push_back(components[i].name);
        moles.push_back(facts.values(7 + 2 * static_cast<int>(i)).at(1));
    }
    const auto& c = facts.values(6 + 2 * static_cast<int>(components.size()));
    return mixtureFile(name, {c.at(0), c.at(3), c.at(4), c.at(5) / c.at(0)}, names, moles);
}

TEST_F(Store, TheFileIsWrittenInItsFormats) {
    for (const auto* components : {&r513aLike, &five}) {
        const std::string expected = expectedFile(plant, *components, true, "Own");
        store(*components, true, "Own");
        EXPECT_EQ(readFile(mixture("Own.mix")), expected);
    }
    // All twenty components: the count fills its two columns.
    std::vector<Component> twenty;
    for (const char* name :
         {"R32",   "R125",  "R134A", "R143A",  "R22",     "R12",     "R11",     "R123",   "R124",     "R142B",
          "R141B", "R152A", "R218",  "R227EA", "R1234YF", "R1234ZE", "PROPANE", "BUTANE", "ISOBUTAN", "CO2"})
        twenty.push_back({std::string(name) + ".FLD", 0.05});
    const std::string expected = expectedFile(plant, twenty, false, "Twenty");
    store(twenty, false, "Twenty");
    EXPECT_EQ(readFile(mixture("Twenty.mix")), expected);
    EXPECT_EQ(expected.substr(41 + 84 + 1, 3), "20\n");
    EXPECT_TRUE(Heard(plant, propertyRequest(4, "1 320 2 100", "Twenty.mix", 2)).answered());
}

TEST_F(Store, EdgeANameOfMoreThanFortyCharactersIsCutInTheFirstLine) {
    const std::string name = "A name of exactly forty characters, no-1", more = name + " and what is too much";
    ASSERT_EQ(name.size(), 40u);
    store(r513aLike, true, "'" + more + "'");
    const std::string file = readFile(mixture(more + ".mix"));
    EXPECT_EQ(file.substr(0, 41), name + "\n");
    EXPECT_EQ(file, expectedFile(plant, r513aLike, true, more));
    // The file has the whole name, and so has the blend afterwards; the result shows its first 20 characters.
    const Heard facts(plant, propertyRequest(1, "", "'" + more + ".mix'", 2));
    ASSERT_TRUE(facts.answered()) << facts.text;
    EXPECT_EQ(facts.file.raw(4), more.substr(0, 20));
}

TEST_F(Store, EdgeFractionsAreStoredByMoleWhateverTheBasis) {
    store(five, true, "Mass");
    const ResultFile byMass(readFile(mixture("Mass.mix")));
    // 0.26 R32, 0.26 R125, 0.21 R134a, 0.2 R1234yf, 0.07 R1234ze by mass, with the molar masses of their files.
    const double masses[] = {52.024, 120.0214, 102.032, 114.0416, 114.0416};
    double total = 0.0;
    for (std::size_t i = 0; i < 5; ++i) total += five[i].fraction / masses[i];
    std::vector<Component> moles = five;
    for (std::size_t i = 0; i < 5; ++i) {
        moles[i].fraction /= masses[i] * total;
        EXPECT_NEAR(byMass.number(9 + static_cast<int>(i)), moles[i].fraction, 1e-5) << five[i].name;
    }
    // Listed by the moles that were stored: the same file but for the name.
    for (std::size_t i = 0; i < 5; ++i) moles[i].fraction = byMass.number(9 + static_cast<int>(i));
    store(moles, false, "Mole");
    const ResultFile byMole(readFile(mixture("Mole.mix")));
    for (int line = 3; line <= 14; ++line) EXPECT_EQ(byMass.raw(line), byMole.raw(line));
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(byMass.numbers(2).at(i), byMole.numbers(2).at(i), 1e-8 * byMass.numbers(2).at(i));
}

TEST_F(Store, TheFileNewOfTheCurrentFolderStaysBehindEmptyWhereItsFolderIs) {
    store(r513aLike, true, "Own");
    EXPECT_FALSE(std::filesystem::exists(current + "/mixtures"));  // no folder: nothing is made
    const std::string file = readFile(mixture("Own.mix"));

    std::filesystem::create_directory(current + "/mixtures");
    store(r513aLike, true, "Own");
    EXPECT_TRUE(std::filesystem::exists(current + "/mixtures/new"));
    EXPECT_EQ(readFile(current + "/mixtures/new"), "");
    EXPECT_EQ(readFile(mixture("Own.mix")), file);

    // One that is there belongs to somebody else.
    writeFile(current + "/mixtures/new", "of a user");
    store(r513aLike, true, "Own");
    EXPECT_EQ(readFile(current + "/mixtures/new"), "of a user");

    // In the installation itself it lies beside the blends and disturbs none, not even one of that name.
    std::filesystem::current_path(plant.folder.path("installed"));
    store(r513aLike, true, "new");
    EXPECT_EQ(readFile(mixture("new")), "");
    EXPECT_EQ(readFile(mixture("new.mix")).substr(0, 4), "new ");
    EXPECT_TRUE(Heard(plant, propertyRequest(4, "1 300 2 150", "new.mix", 2)).answered());
}

TEST_F(Store, AFileOfTheSameNameIsReplacedWhole) {
    store(five, true, "Own");
    const auto longer = readFile(mixture("Own.mix")).size();
    const std::string expected = expectedFile(plant, r513aLike, true, "Own");
    store(r513aLike, true, "Own");
    EXPECT_LT(expected.size(), longer);
    EXPECT_EQ(readFile(mixture("Own.mix")), expected);
    // The engine takes the new one, although it has the name of the one it holds.
    EXPECT_EQ(Heard(plant, propertyRequest(1, "", "Own.mix", 2)).file.number(5), 2);
    store(five, true, "Own");
    EXPECT_EQ(Heard(plant, propertyRequest(1, "", "Own.mix", 2)).file.number(5), 5);
}

TEST_F(Store, TheStoredBlendGivesTheResultsOfTheListedOne) {
    double largest = 0.0;
    for (const auto* components : {&r513aLike, &five}) {
        store(*components, true, "Own");
        for (const auto& [sub, line] : {std::pair{2, "1 250 310 20"}, std::pair{3, "2 1 400 240 340 20"},
                                        std::pair{4, "1 280 2 2500"}, std::pair{5, "1 280"}, std::pair{6, "4 700"}}) {
            SCOPED_TRACE(line);
            const Heard listed(plant, listedRequest(*components, true, sub, line));
            const Heard stored(plant, propertyRequest(sub, line, "Own.mix", 2));
            ASSERT_TRUE(listed.answered() && stored.answered()) << stored.text;
            const auto a = listed.all(), b = stored.all();
            ASSERT_EQ(a.size(), b.size());
            // Twelve decimals of the fractions.
            for (std::size_t i = 0; i < a.size(); ++i) {
                largest = larger(largest, std::abs(a[i] - b[i]) / std::max(std::abs(a[i]), 1e-3));
                EXPECT_NEAR(a[i], b[i], 1e-10 * std::max(std::abs(a[i]), 1e-3)) << i;
            }
        }
    }
    std::printf("stored and listed blends differ by %.1e\n", largest);
}

TEST_F(Store, TheStoredBlendRunsInTheBasicCycleLikeTheOneOfTheLibrary) {
    store(five, true, "'Own 448'");
    const Heard own(plant, cycleRequest(1, basicParameters(), "'Own 448.mix'"));
    plant.installation = std::string(test::dataFolder) + "/frigana";
    const Heard library(plant, cycleRequest(1, basicParameters(), "R448A.MIX"));
    ASSERT_TRUE(own.answered() && library.answered());
    EXPECT_EQ(own.file.trimmed(4).substr(0, 11), "Own 448.mix");
    EXPECT_EQ(own.file.trimmed(4).substr(12),
              library.file.trimmed(4).substr(10));  // the potential is that of the parts
    const auto a = own.all(), b = library.all();
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) EXPECT_NEAR(a[i], b[i], 1e-9 * std::max(std::abs(a[i]), 1.0)) << i;
}

TEST_F(Store, ABlendOfOneIsStoredToo) {
    store({{"R134A.FLD", 1.0}}, true, "One");
    const Heard mixture(plant, propertyRequest(4, "1 300 2 1000", "One.mix", 2));
    const Heard pure(plant, propertyRequest(4, "1 300 2 1000"));
    ASSERT_TRUE(mixture.answered() && pure.answered()) << mixture.text;
    EXPECT_EQ(mixture.values(6), pure.values(6));
}

TEST_F(Store, WhatIsNoBlendIsNotStored) {
    store(r513aLike, true, "Own");
    const std::string good = readFile(mixture("Own.mix"));
    const auto refused = [&](const Request& request) {
        plant(request);
        EXPECT_EQ(runReport.end, RunEnd::refused);
        EXPECT_EQ(ResultFile(plant.resultText()).trimmed(1), "0");
        EXPECT_EQ(readFile(mixture("Own.mix")), good);  // the stored one is not touched
        std::filesystem::remove(plant.result);
        return runReport.IERR;
    };
    EXPECT_EQ(refused(listedRequest({{"R32.FLD", 0.5}, {"NOTHING.FLD", 0.5}}, true, 7, "", "Own")), 101);
    EXPECT_EQ(refused(listedRequest({{"R32.FLD", 0.5}, {"R125.FLD", 0.4}}, false, 7, "", "Own")), 100128);
    EXPECT_EQ(refused(listedRequest({{"R32.FLD", 0.5}, {"R125.FLD", -0.4}}, true, 7, "", "Own")), 100125);
    // A pure fluid has no components to be stored, and what has no name could not be asked for.
    Request pure = propertyRequest(7, "");
    pure.lines()[6] = "Own";
    EXPECT_EQ(refused(pure), 107201);
    EXPECT_EQ(refused(listedRequest(r513aLike, true, 7, "", "''")), 107202);
    EXPECT_FALSE(std::filesystem::exists(mixture(".mix")));
}

TEST_F(Store, AFileThatCannotBeWrittenIsToldSo) {
    const auto files = [&] {
        int count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(mixture(""))) ++count;
        return count;
    };
    const auto code = [&](const std::string& name) {
        plant(listedRequest(r513aLike, true, 7, "", name));
        EXPECT_EQ(runReport.end, RunEnd::refused) << name;
        EXPECT_EQ(ResultFile(plant.resultText()).trimmed(2), std::to_string(runReport.IERR));
        EXPECT_EQ(runReport.resultPath.trimmed(), plant.result) << name;  // the form, not a blend that is not there
        return runReport.IERR;
    };
    // Not a name of a file in that folder.
    for (const char* name : {"no/such/folder", "..\\R32", "c:own", "/dev/null", "'a\tb'"})
        EXPECT_EQ(code(name), 107203);
    // The shipped blends are not replaced, whatever the letters.
    for (const char* name : {"R410A", "r410a", "R407c", "R502", "r513a"}) EXPECT_EQ(code(name), 107204) << name;
    // A path beyond 255 characters would be that of another file.
    testing::internal::CaptureStderr();
    plant(listedRequest(r513aLike, true, 7, "", std::string(240, 'n')));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("has more than 255 characters"), std::string::npos);
    EXPECT_EQ(runReport.end, RunEnd::runtimeError);
    EXPECT_FALSE(plant.hasResult());
    EXPECT_EQ(files(), 0);

    // No folder to write in, and a name that a folder has.
    std::filesystem::create_directory(mixture("Taken.mix"));
    EXPECT_EQ(code("Taken"), 107205);
    EXPECT_EQ(files(), 1);
    std::filesystem::remove_all(plant.folder.path("installed/mixtures"));
    EXPECT_EQ(code("Own"), 107205);
    std::filesystem::create_directory(plant.folder.path("installed/mixtures"));
    store(r513aLike, true, "Own");
}

TEST_F(Store, TheFileOfThatNameInAnyCaseIsTheOneReplaced) {
    store(r513aLike, true, "'My Own'");
    // By way of another name: where names have no case, the same one in other letters may count as the same.
    std::filesystem::rename(mixture("My Own.mix"), mixture("other"));
    std::filesystem::rename(mixture("other"), mixture("MY own.MIX"));
    store({{"R32.FLD", 0.5}, {"R125.FLD", 0.5}}, true, "'my Own'");
    EXPECT_NE(readFile(mixture("MY own.MIX")).find("R32"), std::string::npos);
    EXPECT_TRUE(runReport.resultPath.trimmed().ends_with("MY own.MIX"));
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(mixture("")))
        names.push_back(entry.path().filename().string());
    EXPECT_EQ(names, std::vector<std::string>{"MY own.MIX"});
}

}  // namespace
}  // namespace frigana::test
