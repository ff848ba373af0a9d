// Two libraries in one process, each with its engine, called from eight threads at once: every call gets its own right
// answer. And forks in the midst of it.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "TemporaryFolder.h"
#include "TreeFolders.h"
#include "frigana.h"
#include "frigana_api.h"

namespace frigana {
namespace {

std::string contentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

// A positional request through the entry, its answer as text. The third kind is refused by the calculation.
std::string positional(const std::string& folder, int kind) {
    const std::string path = folder + "/request.fi1";
    constexpr const char* examples[] = {"state_point.fi1", "small_chiller.fi1"};
    std::string text = contentOf(std::string(test::examplesFolder) + "/" + examples[kind == 0 ? 0 : 1]);
    if (kind == 2) text.replace(text.find("R134A.FLD"), 9, "NOTHING.FLD");
    std::ofstream(path) << text;
    const std::string address = std::string(test::dataFolder) + "/frigana";
    Frigana(path.c_str(), address.c_str(), static_cast<int>(path.size()), static_cast<int>(address.size()));
    return contentOf(folder + "/request.fo1");
}

std::string named(const char* fluid, const char* evaporating) {
    const std::string request =
        std::string("request = \"basic\"\nfluid = \"") + fluid + "\"\nevaporator = { temperature = \"" + evaporating +
        "\", superheat = \"5 K\" }\ncompressor = { swept_volume = \"10 m3/h\", isentropic_efficiency = 0.7, "
        "volumetric_efficiency = 0.85 }\ncondenser = { temperature = \"40 °C\", subcooling = \"3 K\" }\n";
    char* answer = nullptr;
    frigana_run(request.c_str(), &answer);
    std::string text = answer != nullptr ? answer : "";
    frigana_free(answer);
    return text;
}

std::string states(const frigana_fluid* fluid) {
    constexpr int count = 8;
    double T[count], p[count], results[2 * count];
    for (int i = 0; i < count; ++i) {
        T[i] = 280.0 + 10.0 * i;
        p[i] = i == count - 1 ? -1.0 : 400.0;
    }
    const int wanted[] = {FRIGANA_ENTROPY, FRIGANA_VISCOSITY};
    int codes[count];
    frigana_states(fluid, 'T', 'P', T, p, count, wanted, 2, results, codes, nullptr);
    std::ostringstream text;
    text.precision(17);
    for (const double value : results) text << value << ' ';
    for (const int code : codes) text << code << ' ';
    return text.str();
}

class Threads : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(frigana_fluid_open("R134a", &first_), FRIGANA_DONE);
        ASSERT_EQ(frigana_fluid_open("R32", &second_), FRIGANA_DONE);
    }
    void TearDown() override {
        frigana_fluid_close(first_);
        frigana_fluid_close(second_);
    }

    static constexpr int kinds = 8;
    std::string call(int kind, const std::string& folder) const {
        switch (kind) {
            case 0:
            case 1:
            case 2:
                return positional(folder, kind);
            case 3:
                return named("R134a", "-5 °C");
            case 4:
                return named("propane", "-20 °C");
            case 5:
                return named("R134a", "200 °C");
            case 6:
                return states(first_);
            default:
                return states(second_);
        }
    }

    frigana_fluid *first_ = nullptr, *second_ = nullptr;
};

TEST_F(Threads, EachCallGetsItsOwnAnswer) {
#if defined(__SANITIZE_ADDRESS__)
    constexpr int threads = 8, calls = 125;  // ten times slower
#else
    constexpr int threads = 8, calls = 1250;
#endif
    struct sigaction before;  // a sanitizer has a handler of its own
    sigaction(SIGFPE, nullptr, &before);
    std::vector<test::TemporaryFolder> folders(threads + 1);
    std::vector<std::string> right;
    for (int kind = 0; kind < kinds; ++kind) right.push_back(call(kind, folders[threads].path()));
    for (int kind = 0; kind < kinds; ++kind)
        for (int other = 0; other < kind; ++other)
            EXPECT_NE(right[static_cast<std::size_t>(kind)], right[static_cast<std::size_t>(other)]);

    std::atomic<int> wrong{0}, done{0};
    std::vector<std::thread> all;
    for (int i = 0; i < threads; ++i)
        all.emplace_back([&, i] {
            for (int number = 0; number < calls; ++number) {
                // Every thread in an order of its own.
                const int kind = (number * (2 * i + 1) + i) % kinds;
                const std::string answer = call(kind, folders[static_cast<std::size_t>(i)].path());
                wrong += answer != right[static_cast<std::size_t>(kind)];
                ++done;
            }
        });
    for (std::thread& thread : all) thread.join();
    EXPECT_EQ(done, threads * calls);
    EXPECT_EQ(wrong, 0);
    struct sigaction after;
    sigaction(SIGFPE, nullptr, &after);
    EXPECT_EQ(after.sa_handler, before.sa_handler);
}

TEST_F(Threads, AChildOfAForkAnswersToo) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "The sanitizer's own heap may stay locked in a child while another thread allocates.";
#endif
    const std::string right = states(first_), cycle = named("propane", "-20 °C");
    std::atomic<bool> enough{false};
    std::thread busy([&] {
        while (!enough) named("R134a", "-5 °C");
    });
    int wrong = 0;
    for (int i = 0; i < 20; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            alarm(20);
            _exit(states(first_) == right && named("propane", "-20 °C") == cycle ? 0 : 1);
        }
        int status = -1;
        waitpid(child, &status, 0);
        wrong += status != 0;
    }
    enough = true;
    busy.join();
    EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace frigana
