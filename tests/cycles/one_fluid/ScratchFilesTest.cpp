// The scratch files of the searches for an exchanger, and results that cannot be written.
#include <cmath>
#include <filesystem>
#include <functional>
#include <set>

#include "14_ErrorControl.h"
#include "FilesInFolder.h"
#include "OneFluidCycles.h"
#include "SecantDriver.h"

namespace frigana::test {
namespace {

using Names = std::set<std::string>;

Names filesIn(const Plant& plant) {
    return filesInFolder(plant.folder.path());
}

void run(Plant& plant, const CycleKind& kind, Changes changes) {
    plant(cycleRequest(kind.sub, kind.with(changes), kind.fluid));
}

const CycleKind* const searching[] = {&withExchanger, &transcritical, &booster};

TEST(ScratchFiles, AreGoneAfterSuccess) {
    for (const CycleKind* kind : searching) {
        Plant plant;
        run(plant, *kind, {{20, {1, 0.4}}});
        EXPECT_EQ(ResultFile(plant.resultText()).count(), kind->lines) << kind->sub;
        EXPECT_EQ(filesIn(plant), (Names{"plant.fi1", "plant.fo1"})) << kind->sub;
    }
}

// The first pass writes both trials; the second one follows the target to a liquid that would have to warm up.
TEST(ScratchFiles, StayAfterAFailedTrial) {
    for (const CycleKind* kind : searching) {
        Plant plant;
        run(plant, *kind, {{20, {3, 330.0}}});
        EXPECT_TRUE(ResultFile(plant.resultText()).refused()) << kind->sub;
        EXPECT_EQ(filesIn(plant), (Names{"plant.fi1", "plant.fo1", "temporalA.txt", "temporalB.txt"})) << kind->sub;
        for (const char* name : {"temporalA.txt", "temporalB.txt"})
            EXPECT_EQ(ResultFile(readFile(plant.folder.path(name))).count(), kind->lines) << kind->sub << name;
        // The next search in the folder writes over them.
        run(plant, *kind, {{20, {1, 0.4}}});
        EXPECT_EQ(ResultFile(plant.resultText()).count(), kind->lines) << kind->sub;
        EXPECT_EQ(filesIn(plant), (Names{"plant.fi1", "plant.fo1"})) << kind->sub;
    }
}

TEST(ScratchFiles, WithoutASearchThereAreNone) {
    for (const CycleKind* kind :
         {&withExchanger, &transcritical, &liquidInjection, &rankine, &booster, &twoStage, &multiStage}) {
        Plant plant;
        std::filesystem::create_directory(plant.folder.path("temporalA.txt"));
        run(plant, *kind, {});
        EXPECT_EQ(ResultFile(plant.resultText()).count(), kind->lines) << kind->sub;
    }
}

TEST(ScratchFiles, ThatCannotBeWrittenEndTheRunWithoutAResult) {
    for (const CycleKind* kind : searching)
        for (const char* name : {"temporalA.txt", "temporalB.txt"}) {
            Plant plant;
            std::filesystem::create_directory(plant.folder.path(name));
            testing::internal::CaptureStderr();
            run(plant, *kind, {{20, {1, 0.4}}});
            EXPECT_EQ(testing::internal::GetCapturedStderr(),
                      "frigana: " + plant.folder.path(name) + ": cannot be written\n");
            EXPECT_EQ(runReport.end, RunEnd::runtimeError);
            EXPECT_FALSE(plant.hasResult()) << kind->sub << name;
        }
}

TEST(Results, ThatCannotBeWrittenEndTheRun) {
    for (const CycleKind* kind :
         {&withExchanger, &transcritical, &liquidInjection, &rankine, &booster, &twoStage, &multiStage}) {
        Plant plant;
        std::filesystem::create_directory(plant.result);
        testing::internal::CaptureStderr();
        run(plant, *kind, {});
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "frigana: " + plant.result + ": the old result cannot be removed\n");
        EXPECT_EQ(runReport.end, RunEnd::runtimeError);
        EXPECT_TRUE(std::filesystem::is_empty(plant.result)) << kind->sub;
    }
}

// A run begins with its records at zero, whatever the run before left.
TEST(Results, DoNotDependOnEarlierRequests) {
    for (const CycleKind* kind :
         {&withExchanger, &transcritical, &liquidInjection, &rankine, &booster, &twoStage, &multiStage}) {
        SCOPED_TRACE(kind->sub);
        const ResultFile first = solve(*kind, {});
        // Another request that uses every part, and one that fails half-way.
        const bool evaporating = kind != &rankine;
        solve(*kind, {{1, {1, evaporating ? 262.0 : 375.0}}, {3, {1, 10.0}}});
        solve(*kind, {{2, {1, 110.0}}});
        expectSameResult(solve(*kind, {}), first);
    }
}

// ---- the search itself ----------------------------------------------------------------------------------------------

// A solver whose line 2 is a parabola of the trial value.
struct Parabola {
    std::vector<double> trials;
    std::vector<std::string> paths;
    void operator()(double x, const Text255& path) {
        trials.push_back(x);
        paths.emplace_back(path.trimmed());
        char text[60];
        std::snprintf(text, sizeof text, " 0\n %.17g\n", x * x + x);
        writeFile(paths.back(), text);
    }
};

TEST(SecantSearch, MakesSevenSolutionsWithAStepInSinglePrecision) {
    TemporaryFolder folder;
    TEMPORALFILEOUT.assign(folder.path() + "/");
    temporalLength = static_cast<int>(folder.path().size()) + 1;
    Parabola parabola;
    secantDriver({12.0, 2, 2.0}, Text255(folder.path("result")), std::ref(parabola));

    const std::string a = folder.path() + "/temporalA.txt", b = folder.path() + "/temporalB.txt",
                      c = folder.path("result");
    EXPECT_EQ(parabola.paths, (std::vector<std::string>{a, b, a, b, a, b, c}));
    double x = 2.0;
    for (std::size_t pass = 0; pass < 3; ++pass) {
        EXPECT_DOUBLE_EQ(parabola.trials[2 * pass], x) << pass;
        EXPECT_DOUBLE_EQ(parabola.trials[2 * pass + 1], x + 0.10000000149011612) << pass;
        // The secant of x^2 + x over the step.
        const double slope = 1.0 / (2.0 * x + 0.10000000149011612 + 1.0);
        x += slope * (12.0 - (x * x + x));
    }
    EXPECT_NEAR(parabola.trials[6], x, 1e-12);
    EXPECT_NE(parabola.trials[6], 3.0) << "the root is not awaited";
    EXPECT_NEAR(parabola.trials[6], 3.0, 1e-3);
    EXPECT_FALSE(std::filesystem::exists(a));
    EXPECT_FALSE(std::filesystem::exists(b));
    EXPECT_TRUE(std::filesystem::exists(c));
}

TEST(SecantSearch, ALineThatDoesNotMoveGivesNoFiniteTrial) {
    TemporaryFolder folder;
    const auto constant = [](double, const Text255& path) { writeFile(std::string(path.trimmed()), " 5.0\n"); };
    const double x = secantUnknown({6.0, 1, 1.0}, Text255(folder.path("a")), Text255(folder.path("b")), constant);
    EXPECT_FALSE(std::isfinite(x));
}

}  // namespace
}  // namespace frigana::test
