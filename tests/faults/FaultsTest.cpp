// Whatever fails, and whenever the program is killed: a result is whole, or the failure form, or there is none, and
// nobody's file is lost.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <random>
#include <thread>

#include "FaultyRun.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana::test {
namespace {

namespace fs = std::filesystem;

std::string example(const std::string& name) {
    return readFile(std::string(examplesFolder) + "/" + name + ".fi1");
}

// The failure form: 0, a code, a text of 255 characters, each on its line behind a blank.
bool isFailureForm(const std::string& text) {
    const auto second = text.find('\n', 3);
    return text.starts_with(" 0\n ") && second != std::string::npos && text.size() == second + 1 + 1 + 255 + 1 &&
           text.back() == '\n';
}

// A folder with an installation of its own, whose mixtures may be written.
struct Faults : testing::Test {
    TemporaryFolder folder;
    std::string request = folder.path("plant.fi1"), result = folder.path("plant.fo1"),
                installation = folder.path("installed"), trace = folder.path("struck");
    fs::path before = fs::current_path();

    void SetUp() override {
        fs::create_directories(installation + "/mixtures");
        fs::create_directory_symlink(std::string(dataFolder) + "/fluids", installation + "/fluids");
        for (const auto& entry : fs::directory_iterator(std::string(dataFolder) + "/mixtures"))
            fs::create_symlink(entry.path(), fs::path(installation) / "mixtures" / entry.path().filename());
        fs::current_path(folder.path());
    }
    void TearDown() override { fs::current_path(before); }

    std::vector<std::string> arguments{request, "--data", installation};

    int run(const std::string& fault = "") { return finish(start(arguments, fault, trace)); }

    // Names in the folder that end with a mark of a half file, and scratch files.
    std::vector<std::string> litter() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            const std::string name = entry.path().filename().string();
            if (name.find('~') != std::string::npos || name.starts_with("temporal")) names.push_back(name);
        }
        return names;
    }

    // Every n-th call of every kind fails once. `wrong` says what is not as it must be after a run with its exit
    // status, empty if all is well; `prepare` stands before each run.
    template <class Prepare, class Wrong>
    void strikeEverywhere(Prepare prepare, Wrong wrong) {
        int struck = 0;
        for (const char* const kindName :
             {"open", "create", "read", "write", "short", "full", "close", "rename", "unlink", "flock"}) {
            const std::string kind = kindName;
            for (int n = 1;; ++n) {
                prepare();
                fs::remove(trace);
                const std::string fault = kind + ":" + std::to_string(n);
                const int status = run(fault);
                if (!fs::exists(trace)) {
                    EXPECT_EQ(status, 0) << fault << " did not happen";
                    break;
                }
                ++struck;
                const std::string complaint = wrong(status);
                EXPECT_EQ(complaint, "") << fault << ", exit status " << status;
                EXPECT_LE(status, 3) << fault;
                if (kind == "short") {
                    EXPECT_EQ(status, 0) << fault;  // the rest is written by another call
                }
                if (kind != "unlink") {
                    for (const std::string& name : litter())
                        EXPECT_FALSE(name.find('~') != std::string::npos) << name << " left by " << fault;
                }
                // What a failed run leaves behind does not stay for the next.
                for (const std::string& name : litter()) fs::remove(folder.path(name));
                fs::remove(folder.path("cycle_1.txt"));
            }
        }
        std::printf("%d faults\n", struck);
        EXPECT_GT(struck, 20);
    }

    // For requests whose answer is the result file.
    void strikeResult(const std::string& text) {
        writeFile(request, text);
        ASSERT_EQ(run(), 0);
        const std::string whole = readFile(result);
        const std::string old = "an older result\n";
        strikeEverywhere([&] { writeFile(result, old); },
                         [&](int status) -> std::string {
                             if (!fs::exists(result)) return status == 3 ? "" : "no result";
                             const std::string found = readFile(result);
                             if (status == 0) return found == whole ? "" : "a wrong result";
                             if (status == 2 || status == 3) {
                                 // The old one stays only where the run was refused because of it.
                                 if (found.empty() || found == old || isFailureForm(found)) return "";
                             }
                             return "half a result";
                         });
    }
};

TEST_F(Faults, OfABasicCycle) {
    strikeResult(example("small_chiller"));
}

TEST_F(Faults, OfACascade) {
    strikeResult(example("cascade_cycle"));
}

TEST_F(Faults, OfACycleWithABlend) {
    std::string text = example("small_chiller");
    const auto fluid = text.find(".FLD"), begin = text.rfind('\n', fluid) + 1;
    strikeResult(text.replace(begin, fluid + 4 - begin, "R410A.MIX"));
}

TEST_F(Faults, OfTheFirstRunOfLineSizing) {
    const std::string first = folder.path("plant.fo0");
    writeFile(request, example("line_sizing"));
    ASSERT_EQ(run(), 0);
    const std::string whole = readFile(first);
    ASSERT_FALSE(whole.empty());
    strikeEverywhere([&] { writeFile(first, "of an earlier plant\n"); },
                     [&](int status) -> std::string {
                         if (!fs::exists(first)) return status == 0 ? "no result" : "";
                         const std::string found = readFile(first);
                         if (status == 0) return found == whole ? "" : "a wrong result";
                         // A run that ended before it knew that it was a first run.
                         return found.empty() || found == "of an earlier plant\n" ? "" : "half a result";
                     });
}

TEST_F(Faults, OfTheSecondRunOfLineSizing) {
    const std::string first = folder.path("plant.fo0");
    const std::string text = example("line_sizing");
    writeFile(request, text);
    ASSERT_EQ(run(), 0);
    const std::string offers = readFile(first);
    // The same request as a second run that takes the fourth pipe of each line.
    std::istringstream lines(text);
    std::string second, line;
    constexpr int head = 6, runSetting = 30;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (number == head) line = "33";
        if (number == head + runSetting) line = "2 0";
        second += line + "\n";
    }
    second += "4 0\n4 0\n4 0\n";
    strikeResult(second);
    EXPECT_EQ(readFile(first), offers);
}

TEST_F(Faults, OfAStoredBlend) {
    const std::string stored = installation + "/mixtures/";
    writeFile(request, example("store_blend"));
    ASSERT_EQ(run(), 0);
    std::string path;
    for (const auto& entry : fs::directory_iterator(stored))
        if (!entry.is_symlink()) path = entry.path().string();
    ASSERT_FALSE(path.empty());
    const std::string whole = readFile(path), old = "an older blend\n";
    strikeEverywhere([&] { writeFile(path, old); },
                     [&](int status) -> std::string {
                         if (!fs::exists(path)) return "the older blend is lost";
                         const std::string found = readFile(path);
                         if (status == 0) return found == whole ? "" : "a wrong blend";
                         return found == old ? "" : "half a blend";
                     });
}

// In the folder of the person's data, by name.
TEST_F(Faults, OfABlendThatIsStoredByName) {
    const std::string home = folder.path("home"), path = home + "/frigana/Mine.toml";
    request = folder.path("blend.toml");
    writeFile(request, "request = \"store-blend\"\nfluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = \"Mine\"\n");
    arguments = {"run", request, "--data", installation};
    setenv("XDG_DATA_HOME", home.c_str(), 1);
    ASSERT_EQ(run(), 0);
    const std::string whole = readFile(path), old = "an older blend\n";
    ASSERT_FALSE(whole.empty());
    strikeEverywhere([&] { writeFile(path, old); },
                     [&](int status) -> std::string {
                         if (!fs::exists(path)) return "the older blend is lost";
                         const std::string found = readFile(path);
                         if (status == 0) return found == whole ? "" : "a wrong blend";
                         return found == old ? "" : "half a blend";
                     });
    unsetenv("XDG_DATA_HOME");
}

// 200 kills at random moments.
TEST_F(Faults, AKillLeavesTheOldResultNoneOrAWholeOne) {
    writeFile(request, example("cascade_cycle"));
    auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(run(), 0);
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
    const std::string expected = readFile(result), old = "an older result\n";
    std::mt19937 random(20260101);
    std::uniform_int_distribution<int> moment(0, static_cast<int>(whole.count()));
    int killed = 0, none = 0, older = 0, finished = 0;
    for (int i = 0; i < 200; ++i) {
        writeFile(result, old);
        const pid_t process = start(arguments);
        std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        kill(process, SIGKILL);
        killed += finish(process) == 1000 + SIGKILL;
        if (!fs::exists(result)) {
            ++none;
            continue;
        }
        const std::string found = readFile(result);
        older += found == old;
        finished += found == expected;
        ASSERT_TRUE(found == old || found == expected) << found;
    }
    std::printf("%d killed: the older result %d times, none %d times, the whole one %d times\n", killed, older, none,
                finished);
    EXPECT_GT(killed, 50);
    EXPECT_GT(none, 0);
    // The next run finds its way through what they left, and clears it.
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(readFile(result), expected);
    EXPECT_TRUE(litter().empty()) << litter().front();
}

TEST_F(Faults, SignalsThatEndTheProgramLeaveNothingHalf) {
    writeFile(request, example("combined_cycle"));
    ASSERT_EQ(run(), 0);
    const std::string expected = readFile(result);
    std::mt19937 random(20260102);
    std::uniform_int_distribution<int> moment(0, 60000);
    int ended = 0;
    for (int i = 0; i < 40; ++i) {
        fs::remove(result);
        const int signal = i % 2 == 0 ? SIGTERM : SIGINT;
        const pid_t process = start(arguments);
        std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        kill(process, signal);
        ended += finish(process) == 1000 + signal;
        if (fs::exists(result)) {
            EXPECT_EQ(readFile(result), expected);
        }
        EXPECT_TRUE(litter().empty()) << litter().front();
        EXPECT_FALSE(fs::exists(folder.path("cycle_1.txt")));
    }
    EXPECT_GT(ended, 20);
}

// A named request runs in a folder of its own, which is gone however the program ends.
TEST_F(Faults, SignalsThatEndANamedRunLeaveNothingBehind) {
    const std::string rooms = folder.path("rooms");
    fs::create_directory(rooms);
    setenv("TMPDIR", rooms.c_str(), 1);
    request = folder.path("plant.toml");
    writeFile(request, "request = \"state-point\"\nfluid = { R32 = 0.5, R125 = 0.5 }\npoints = [\n");
    for (int point = 0; point < 60; ++point)
        std::ofstream(request, std::ios::app) << "  { temperature = \"" << 250 + point << " K\", pressure = \"1 bar\" },\n";
    std::ofstream(request, std::ios::app) << "]\n";
    const std::string json = folder.path("plant.json");
    arguments = {"run", request, "--data", installation, "--json", json};
    auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(run(), 0);
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
    const std::string expected = readFile(json);
    std::mt19937 random(20260103);
    std::uniform_int_distribution<int> moment(0, static_cast<int>(whole.count()));
    int ended = 0;
    for (int i = 0; i < 40; ++i) {
        fs::remove(json);
        const int signal = i % 2 == 0 ? SIGTERM : SIGINT;
        const pid_t process = start(arguments);
        std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        kill(process, signal);
        const int status = finish(process);
        EXPECT_TRUE(status == 0 || status == 1000 + signal) << status;
        ended += status != 0;
        if (status == 0) {
            EXPECT_EQ(readFile(json), expected);
        }
        EXPECT_TRUE(fs::is_empty(rooms)) << *fs::directory_iterator(rooms);
        EXPECT_TRUE(litter().empty()) << litter().front();
    }
    std::printf("%d of 40 ended by the signal\n", ended);
    EXPECT_GT(ended, 10);
    unsetenv("TMPDIR");
}

TEST_F(Faults, TwoRunsInOneFolderWaitForEachOther) {
    // The same scratch names, different circuits.
    const std::string first = example("cascade_cycle");
    std::string second = first;
    second.replace(second.find("1 313.15"), 8, "1 318.15");
    const std::string other = folder.path("other.fi1"), otherResult = folder.path("other.fo1");
    writeFile(request, first);
    writeFile(other, second);
    ASSERT_EQ(run(), 0);
    ASSERT_EQ(finish(start({other, "--data", installation})), 0);
    const std::string expected = readFile(result), otherExpected = readFile(otherResult);
    ASSERT_NE(expected, otherExpected);
    int wrong = 0;
    constexpr int pairs = 60;
    for (int i = 0; i < pairs; ++i) {
        const pid_t a = start(arguments), b = start({other, "--data", installation});
        wrong += finish(a) != 0;
        wrong += finish(b) != 0;
        wrong += readFile(result) != expected;
        wrong += readFile(otherResult) != otherExpected;
    }
    EXPECT_EQ(wrong, 0) << "of " << 2 * pairs << " runs";
}

}  // namespace
}  // namespace frigana::test
