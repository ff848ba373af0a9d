// `frigana study` as a user runs it.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cmath>
#include <csignal>
#include <filesystem>
#include <sstream>
#include <thread>

#include "CaseFile.h"
#include "Samples.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

int run(const std::string& arguments) {
    const int status = std::system((std::string(FRIGANA_PROGRAM) + " study " + arguments + " 2>/dev/null").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string example(const std::string& name) {
    return std::string(test::examplesFolder) + "/studies/" + name;
}

std::vector<std::vector<std::string>> rowsOf(const std::string& path) {
    std::istringstream lines(test::readFile(path));
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(lines, line);) rows.push_back(studies::cellsOf(line));
    return rows;
}

std::uintmax_t bytesOf(const std::string& path) {
    std::error_code none;
    const auto size = std::filesystem::file_size(path, none);
    return none ? 0 : size;
}

// A study that is at work: its file has grown beyond a length; half a minute is waited for it.
void waitForRows(const std::string& path, std::uintmax_t beyond) {
    for (int wait = 0; wait < 3000 && bytesOf(path) <= beyond; ++wait)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

TEST(StudyCommand, RowsStandInTheOrderOfTheCasesWhateverTheJobs) {
    test::TemporaryFolder folder;
    ASSERT_EQ(run(example("grid.toml") + " --jobs 1 --csv " + folder.path("1.csv") + " --chart " +
                  folder.path("1.svg") + " --chart-columns performance.cop_cooling:evaporator.temperature"),
              0);
    ASSERT_EQ(run(example("grid.toml") + " --jobs 3 --csv " + folder.path("3.csv") + " --json-lines " +
                  folder.path("3.jsonl")),
              0);
    EXPECT_EQ(test::readFile(folder.path("1.csv")), test::readFile(folder.path("3.csv")));
    const auto rows = rowsOf(folder.path("1.csv"));
    ASSERT_EQ(rows.size(), 1u + 3 * 2 * 8);
    EXPECT_EQ(rows[1][0], "R134a");
    EXPECT_EQ(rows[1][1], "35 °C");
    EXPECT_EQ(rows[2][2], "-25 °C");
    EXPECT_EQ(rows.back()[0], "R290");
    EXPECT_TRUE(test::readFile(folder.path("1.svg")).starts_with("<svg"));
}

TEST(StudyCommand, ARefusedCaseIsARowWithItsCode) {
    test::TemporaryFolder folder;
    test::writeFile(folder.path("study.toml"),
                    "request = \"chiller.toml\"\n"
                    "[vary]\ncondenser.temperature = [\"40 °C\", \"150 °C\", \"900 °C\", \"45 °C\"]\n"
                    "[results]\nkeys = [\"performance.cop_cooling\", \"no.such.key\"]\n");
    test::writeFile(folder.path("chiller.toml"), test::readFile(example("chiller.toml")));
    ASSERT_EQ(run(folder.path("study.toml") + " --csv " + folder.path("rows.csv")), 0);
    const auto rows = rowsOf(folder.path("rows.csv"));
    ASSERT_EQ(rows.size(), 5u);
    EXPECT_NE(rows[1][1], "");
    EXPECT_EQ(rows[1][3], "");
    EXPECT_EQ(rows[2][3], "201201");
    EXPECT_NE(rows[2][4].find("Critical"), std::string::npos);
    EXPECT_EQ(rows[3][3], "bad_request");
    EXPECT_NE(rows[4][1], "");
}

TEST(StudyCommand, GoesOnAfterAnInterruptionAsIfThereHadBeenNone) {
    test::TemporaryFolder folder;
    test::writeFile(folder.path("chiller.toml"), test::readFile(example("chiller.toml")));
    test::writeFile(folder.path("study.toml"),
                    "request = \"chiller.toml\"\n[vary]\nfluid = [\"R134a\", \"R290\"]\n"
                    "condenser.temperature = { from = \"30 °C\", to = \"60 °C\", count = " +
                        std::to_string(test::samples(1000, 300)) +
                        " }\n"
                        "[results]\nkeys = [\"performance.cop_cooling\"]\n");
    const std::string csv = folder.path("rows.csv"), jsonLines = folder.path("rows.jsonl");
    ASSERT_EQ(run(folder.path("study.toml") + " --jobs 2 --csv " + folder.path("whole.csv") + " --json-lines " +
                  folder.path("whole.jsonl")),
              0);
    int interruptions = 0;
    for (int attempt = 0; attempt < 3; ++attempt) {
        const auto before = bytesOf(csv);
        const pid_t child = fork();
        if (child == 0) {
            close(STDERR_FILENO);
            execl(FRIGANA_PROGRAM, "frigana", "study", folder.path("study.toml").c_str(), "--jobs", "2", "--csv",
                  csv.c_str(), "--json-lines", jsonLines.c_str(), "--resume", nullptr);
            _exit(127);
        }
        waitForRows(csv, before + 100);
        kill(child, SIGINT);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFEXITED(status)) << status;
        if (WEXITSTATUS(status) == 130) ++interruptions;
    }
    EXPECT_GT(interruptions, 0);
    // A death in the midst of a row.
    const std::string kept = test::readFile(csv);
    test::writeFile(csv, kept.substr(0, kept.size() - 3));
    ASSERT_EQ(run(folder.path("study.toml") + " --jobs 2 --resume --csv " + csv + " --json-lines " + jsonLines), 0);
    EXPECT_EQ(test::readFile(csv), test::readFile(folder.path("whole.csv")));
    EXPECT_EQ(test::readFile(jsonLines), test::readFile(folder.path("whole.jsonl")));
    // A file of another study is not gone on with.
    EXPECT_EQ(run(example("grid.toml") + " --resume --csv " + csv), 2);
}

// A study of many cases that writes rows.csv, begun in a process of its own with some signal ignored.
struct Begun {
    test::TemporaryFolder folder;
    std::string csv = folder.path("rows.csv");
    pid_t process = 0;

    explicit Begun(int cases, int ignored = 0) {
        test::writeFile(folder.path("chiller.toml"), test::readFile(example("chiller.toml")));
        test::writeFile(folder.path("study.toml"),
                        "request = \"chiller.toml\"\n[vary]\n"
                        "condenser.temperature = { from = \"30 °C\", to = \"60 °C\", count = " +
                            std::to_string(cases) + " }\n[results]\nkeys = [\"performance.cop_cooling\"]\n");
        process = fork();
        if (process != 0) return;
        close(STDERR_FILENO);
        if (ignored != 0) std::signal(ignored, SIG_IGN);
        execl(FRIGANA_PROGRAM, "frigana", "study", folder.path("study.toml").c_str(), "--jobs", "1", "--csv",
              csv.c_str(), nullptr);
        _exit(127);
    }
    // The exit status after a signal that is sent once there are rows.
    int after(int signal) const {
        waitForRows(csv, 1000);
        kill(process, signal);
        int status = 0;
        waitpid(process, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
};

TEST(StudyCommand, EndsByASignalWithWholeRowsAlone) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const Begun study(1'000'000);
        EXPECT_EQ(study.after(signal), 128 + signal);
        const auto rows = rowsOf(study.csv);
        ASSERT_GT(rows.size(), 10u);
        for (const auto& row : rows) EXPECT_EQ(row.size(), rows.front().size());
        EXPECT_TRUE(test::readFile(study.csv).ends_with('\n'));
        int files = 0;
        for (const auto& entry : std::filesystem::directory_iterator(study.folder.path())) {
            (void)entry;
            ++files;
        }
        EXPECT_EQ(files, 3);
    }
}

TEST(StudyCommand, LivesThroughASignalThatItIsToldToIgnore) {
    const Begun study(1000, SIGHUP);
    EXPECT_EQ(study.after(SIGHUP), 0);
    EXPECT_EQ(rowsOf(study.csv).size(), 1001u);
}

TEST(StudyCommand, WritesOverNothingThatItReadsOrWrites) {
    test::TemporaryFolder folder;
    const std::string request = test::readFile(example("chiller.toml"));
    test::writeFile(folder.path("chiller.toml"), request);
    test::writeFile(folder.path("cases.csv"), "condenser.temperature [°C]\n40\n45\n");
    const std::string description =
        "request = \"chiller.toml\"\n[cases]\nfile = \"cases.csv\"\n[results]\nkeys = [\"performance.cop_cooling\"]\n";
    test::writeFile(folder.path("study.toml"), description);
    const std::string study = folder.path("study.toml");
    for (const char* name : {"chiller.toml", "cases.csv", "study.toml", "./chiller.toml"}) {
        EXPECT_EQ(run(study + " --csv " + folder.path(name)), 1) << name;
        EXPECT_EQ(run(study + " --json-lines " + folder.path(name)), 1) << name;
    }
    EXPECT_EQ(run(study + " --csv " + folder.path("a") + " --json-lines " + folder.path("a")), 1);
    EXPECT_EQ(run(study + " --chart " + folder.path("a.svg") + " --chart " + folder.path("a.svg")), 1);
    EXPECT_EQ(run(study + " --csv - --json-lines -"), 1);
    EXPECT_EQ(test::readFile(folder.path("chiller.toml")), request);
    EXPECT_EQ(test::readFile(study), description);
    EXPECT_EQ(run(study + " --csv " + folder.path("rows.csv")), 0);
    EXPECT_EQ(rowsOf(folder.path("rows.csv")).size(), 3u);
}

// The optimum against all values of a fine grid: not worse than the best of them, and not far from its place.
void compareWithGrid(const std::string& request, const std::string& vary, const std::string& over, double from,
                     double to, const std::string& unit, const std::string& key, double tolerance) {
    test::TemporaryFolder folder;
    test::writeFile(folder.path("request.toml"), test::readFile(example(request)));
    const std::string begin = "request = \"request.toml\"\n[vary]\n" + vary;
    const std::string end = "[results]\nkeys = [\"" + key + "\"]\n";
    std::ostringstream bounds;
    bounds << "from = \"" << from << ' ' << unit << "\"\nto = \"" << to << ' ' << unit << "\"\n";
    constexpr int count = test::samples(161, 81);
    std::ostringstream grid;
    grid << over << " = { from = \"" << from << ' ' << unit << "\", to = \"" << to << ' ' << unit
         << "\", count = " << count << " }\n";
    test::writeFile(folder.path("grid.toml"), begin + grid.str() + end);
    test::writeFile(folder.path("best.toml"), begin + end + "[optimum]\nmaximise = \"" + key + "\"\nover = \"" + over +
                                                  "\"\n" + bounds.str() + "tolerance = \"" +
                                                  (unit == "bar" ? "0.02 bar" : "0.02 K") + "\"\n");
    ASSERT_EQ(run(folder.path("grid.toml") + " --csv " + folder.path("grid.csv")), 0);
    ASSERT_EQ(run(folder.path("best.toml") + " --csv " + folder.path("best.csv")), 0);
    const auto all = rowsOf(folder.path("grid.csv")), best = rowsOf(folder.path("best.csv"));
    ASSERT_GT(best.size(), 1u);
    for (std::size_t i = 1; i < best.size(); ++i) {
        double greatest = 0.0, place = 0.0;
        for (int k = 0; k < count; ++k) {
            const auto& row = all[1 + (i - 1) * count + static_cast<std::size_t>(k)];
            const double value = row[2].empty() ? 0.0 : std::stod(row[2]);
            if (value > greatest) {
                greatest = value;
                place = std::stod(row[1]);
            }
        }
        const double found = std::stod(best[i][1]), value = std::stod(best[i][2]);
        std::cout << best[i][0] << ": " << over << " = " << found << ' ' << unit << ", " << value << "; grid " << place
                  << ", " << greatest << '\n';
        EXPECT_GE(value, greatest * (1.0 - 1e-7));
        EXPECT_NEAR(found, place, tolerance);
    }
}

// Tolerances of the place are the width of the grid, and what a flat maximum makes of the last digits.
TEST(StudyOptimum, IsTheHighPressureOfABooster) {
    compareWithGrid("supermarket.toml",
                    test::sanitized ? "gas_cooler.outlet_temperature = [\"34 °C\"]\n"
                                    : "gas_cooler.outlet_temperature = [\"34 °C\", \"40 °C\"]\n",
                    "gas_cooler.pressure", 75.0, 130.0, "bar", "performance.cop_cooling", 0.5);
}
TEST(StudyOptimum, IsTheTemperatureBetweenTheCircuitsOfACascade) {
    compareWithGrid("cold_store.toml",
                    test::sanitized ? "low.evaporator.temperature = [\"-50 °C\"]\n"
                                    : "low.evaporator.temperature = [\"-50 °C\", \"-35 °C\"]\n",
                    "low.condenser.temperature", -30.0, 10.0, "°C", "system.cop_cooling", 0.4);
}

TEST(StudyCommand, SaysWhatItCannotDo) {
    test::TemporaryFolder folder;
    EXPECT_EQ(run(folder.path("none.toml")), 3);
    EXPECT_EQ(run(example("chiller.toml")), 2);
    EXPECT_EQ(run(example("grid.toml") + " --resume"), 1);
    EXPECT_EQ(run(example("grid.toml") + " --csv " + folder.path("no/folder/rows.csv")), 3);
    EXPECT_EQ(run(example("grid.toml") + " --csv " + example("grid.toml")), 1);
    EXPECT_EQ(run(example("grid.toml") + " --chart x.svg --chart-columns none:fluid"), 1);
}

}  // namespace
}  // namespace frigana
