// A host that loads the shared library and calls it a thousand times.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csetjmp>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <thread>
#include <vector>

#include "Requests.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using namespace test;

using Entry = void (*)(const char*, const char*, int, int);

std::set<std::string> exportedNames() {
    std::set<std::string> names;
    std::FILE* pipe = popen("nm -D --defined-only --format=posix '" FRIGANA_LIBRARY "'", "r");
    std::array<char, 1024> line;
    while (std::fgets(line.data(), static_cast<int>(line.size()), pipe) != nullptr) {
        const std::string text(line.data());
        names.insert(text.substr(0, text.find(' ')));
    }
    pclose(pipe);
    return names;
}

TEST(SharedLibrary, ExportsItsThreeNamesAndNothingElse) {
    EXPECT_EQ(exportedNames(), (std::set<std::string>{"Frigana", "PASSCMN", "passcmn_"}));
}

TEST(SharedLibrary, HasASonameWithItsVersion) {
    std::FILE* pipe = popen("readelf -d '" FRIGANA_LIBRARY "'", "r");
    std::string all;
    std::array<char, 1024> line;
    while (std::fgets(line.data(), static_cast<int>(line.size()), pipe) != nullptr) all += line.data();
    pclose(pipe);
    EXPECT_NE(all.find("Library soname: [libfrigana.so.1]"), std::string::npos) << all;
}

int openDescriptors() {
    int count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) ++count;
    return count;
}

// Resident memory in pages.
long residentPages() {
    long total = 0, resident = 0;
    std::FILE* file = std::fopen("/proc/self/statm", "r");
    EXPECT_EQ(std::fscanf(file, "%ld %ld", &total, &resident), 2);
    std::fclose(file);
    return resident;
}

// One kind of call: its request, and the beginning of the result that must stand there after it ("" for no result).
struct Call {
    std::string name, bytes, beginning;
};

std::vector<Call> mixedCalls() {
    auto refused = basicParameters();
    refused[6].value = 0.2;
    auto wet = basicParameters();
    wet[1].value = 0.0;
    wet[3].value = 0.0;
    Request malformed = cycleRequest(1, basicParameters());
    malformed.lines()[9] = "1 x";
    Request shortened = cycleRequest(1, basicParameters());
    shortened.lines().resize(12);
    return {
        {"good cycle", cycleRequest(1, basicParameters()).text(), " 2\n 1\n Test of a small chiller\n R134A.FLD 1"},
        {"good mixture", cycleRequest(1, basicParameters(), "R410A.MIX").text(),
         " 2\n 1\n Test of a small chiller\n R410A.MIX "},
        {"refused", cycleRequest(1, refused).text(), " 0\n 201114\n Out of range: Compressor isentropic efficiency"},
        {"malformed", malformed.text(), ""},
        {"short", shortened.text(), ""},
        {"sub-type 8", cycleRequest(8, basicParameters()).text(), ""},
        {"type 3", "3\n", ""},
        {"no fluid", cycleRequest(1, basicParameters(), "NOTHING.FLD").text(), " 0\n 10"},
        {"state point", propertyRequest(4, "1 300 2 101.325").text(), "1\n0\n0\n0\n 4\n      300.000000"},
        {"empty", "", ""},
    };
}

TEST(SharedLibrary, AThousandMixedCallsComeBackWithTheRightFileAndLeakNothing) {
    void* library = dlopen(FRIGANA_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const auto entry = reinterpret_cast<Entry>(dlsym(library, "Frigana"));
    ASSERT_NE(entry, nullptr);
    const auto own = +[](int) {};
    std::signal(SIGFPE, own);

    TemporaryFolder folder;
    const std::string installation = std::string(test::dataFolder) + "\\frigana";
    const auto calls = mixedCalls();
    std::vector<std::string> requests, results;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        requests.push_back(folder.path("plant" + std::to_string(i) + ".fi1"));
        results.push_back(folder.path("plant" + std::to_string(i) + ".fo1"));
        writeFile(requests.back(), calls[i].bytes);
    }

    // What damaged requests say goes to a file of its own.
    const std::string said = folder.path("stderr");
    std::fflush(stderr);
    const int kept = dup(2);
    ASSERT_NE(std::freopen(said.c_str(), "w", stderr), nullptr);

    constexpr int total = 1000, warmUp = 200;
    std::vector<std::string> first(calls.size());
    int wrong = 0, descriptors = 0;
    long pages = 0;
    for (int i = 0; i < total; ++i) {
        if (i == warmUp) {
            descriptors = openDescriptors();
            pages = residentPages();
        }
        // A fixed order that puts every kind behind every other.
        const auto k = static_cast<std::size_t>((i * i + i / 10) % static_cast<int>(calls.size()));
        std::filesystem::remove(results[k]);
        entry(requests[k].data(), installation.data(), static_cast<int>(requests[k].size()),
              static_cast<int>(installation.size()));
        const bool exists = std::filesystem::exists(results[k]);
        const std::string text = exists ? readFile(results[k]) : "";
        // The same request gives the same file, whatever ran before it.
        if (first[k].empty()) first[k] = text;
        if (exists == calls[k].beginning.empty() || !text.starts_with(calls[k].beginning) || text != first[k]) {
            ++wrong;
            ADD_FAILURE() << calls[k].name << " in call " << i << ": " << text.substr(0, 120);
            if (wrong > 5) break;
        }
    }
    const int descriptorsAfter = openDescriptors();
    const long pagesAfter = residentPages();

    std::fflush(stderr);
    dup2(kept, 2);
    close(kept);
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(descriptorsAfter, descriptors);
#if defined(__SANITIZE_ADDRESS__)
    // The sanitizer keeps what the test itself has freed.
    constexpr long allowedPages = 32768;
#else
    constexpr long allowedPages = 64;  // what the test itself touches in between: 16, whatever the number of calls
#endif
    EXPECT_LE(pagesAfter - pages, allowedPages);
    std::printf("resident memory grew by %ld pages in %d calls\n", pagesAfter - pages, total - warmUp);
    EXPECT_EQ(std::signal(SIGFPE, SIG_DFL), own);

    // Every damaged request said one line.
    const std::string lines = readFile(said);
    EXPECT_EQ(lines.find("NOTHING"), std::string::npos);
    EXPECT_NE(lines.find("line 10: expected a parameter"), std::string::npos);
    dlclose(library);
}

// ---- threads --------------------------------------------------------------------------------------------------------

struct Library {
    void* handle = dlopen(FRIGANA_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    Entry entry = handle == nullptr ? nullptr : reinterpret_cast<Entry>(dlsym(handle, "Frigana"));
    std::string installation = std::string(test::dataFolder) + "/frigana";
    Library() { EXPECT_NE(entry, nullptr) << dlerror(); }
    ~Library() { dlclose(handle); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    void run(const std::string& request) const {
        entry(request.data(), installation.data(), static_cast<int>(request.size()),
              static_cast<int>(installation.size()));
    }
};

TEST(SharedLibrary, CallsOfSeveralThreadsQueue) {
    const Library library;
    TemporaryFolder folder;
    constexpr int threads = 6, calls = 40;
    const char* const fluids[] = {"R134A.FLD", "R32.FLD", "PROPANE.FLD", "AMMONIA.FLD", "R22.FLD", "NOTHING.FLD"};
    std::vector<std::string> requests, expected;
    for (int i = 0; i < threads; ++i) {
        requests.push_back(folder.path(std::to_string(i) + ".fi1"));
        writeFile(requests.back(), cycleRequest(1, basicParameters(), fluids[i]).text());
        library.run(requests.back());
        expected.push_back(readFile(folder.path(std::to_string(i) + ".fo1")));
        EXPECT_FALSE(expected.back().empty());
    }
    std::atomic<int> wrong{0};
    std::vector<std::thread> running;
    for (int i = 0; i < threads; ++i)
        running.emplace_back([&, i] {
            const auto k = static_cast<std::size_t>(i);
            for (int call = 0; call < calls; ++call) {
                library.run(requests[k]);
                if (readFile(folder.path(std::to_string(i) + ".fo1")) != expected[k]) ++wrong;
            }
        });
    for (std::thread& thread : running) thread.join();
    EXPECT_EQ(wrong, 0);
}

// What the host's own handler has seen; it leaves its trap by a jump of its own thread.
std::atomic<int> hostTraps{0};
thread_local sigjmp_buf afterTrap;
void hostHandler(int) {
    ++hostTraps;
    siglongjmp(afterTrap, 1);
}

// The division is meant, and nothing for a sanitizer to report.
#if defined(__SANITIZE_ADDRESS__)
__attribute__((no_sanitize_undefined))
#endif
void trapOnce([[maybe_unused]] bool byDivision) {
    if (sigsetjmp(afterTrap, 1) != 0) return;
#if defined(__x86_64__) || defined(__i386__)
    // Elsewhere the quotient may be 0.
    volatile int numerator = 1, denominator = 0;
    if (byDivision) numerator = numerator / denominator;
#endif
    std::raise(SIGFPE);
}

TEST(SharedLibrary, ATrapOfAnotherThreadGoesToTheHostsHandlerWhateverTheMoment) {
    const Library library;
    TemporaryFolder folder;
    const std::string request = folder.path("plant.fi1");
    auto refused = basicParameters();
    refused[6].value = 0.2;
    writeFile(request, cycleRequest(1, refused).text());
    std::signal(SIGFPE, hostHandler);
    hostTraps = 0;

    constexpr int traps = 1000;
    std::atomic<bool> done{false};
    std::thread other([&] {
        for (int i = 0; i < traps; ++i) {
            trapOnce(i % 2 == 0);
            std::this_thread::sleep_for(std::chrono::microseconds(i % 50));
        }
        done = true;
    });
    int runs = 0;
    for (; !done; ++runs) {
        library.run(request);  // each ends in a trap of its own
        ASSERT_EQ(readFile(folder.path("plant.fo1")).substr(0, 10), " 0\n 201114");
    }
    other.join();
    EXPECT_EQ(hostTraps, traps);
    EXPECT_EQ(std::signal(SIGFPE, SIG_DFL), hostHandler);
    std::printf("%d traps of another thread during %d runs\n", traps, runs);
}

TEST(SharedLibrary, AThreadThatEndsInItsRunAndAForkLeaveTheEntryFree) {
    const Library library;
    TemporaryFolder folder;
    const std::string request = folder.path("plant.fi1");
    writeFile(request, cycleRequest(1, basicParameters()).text());
    library.run(request);
    const std::string expected = readFile(folder.path("plant.fo1"));

    // A fork while another thread runs: the child calls at once.
    std::atomic<bool> done{false};
    std::thread other([&] {
        while (!done) library.run(request);
    });
    constexpr int forks = 20;
    for (int i = 0; i < forks; ++i) {
        const std::string own = folder.path("child" + std::to_string(i));
        writeFile(own + ".fi1", cycleRequest(1, basicParameters()).text());
        const pid_t child = fork();
        if (child == 0) {
            alarm(20);  // a lock that nobody frees
            library.run(own + ".fi1");
            _exit(0);
        }
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(readFile(own + ".fo1"), expected);
    }
    done = true;
    other.join();
}

// Library, test and all requests in an address space of 64 MB. The process is begun afresh: what the tests before have
// mapped, the arenas of their threads above all, would count.
constexpr const char* smallHost = "FRIGANA_TEST_SMALL_HOST";

int requestsWithoutResult() {
    const TemporaryFolder folder;
    const Library library;
    int missing = 0;
    for (const char* name : {"cascade_cycle", "combined_cycle", "transcritical_booster", "multi_stage_cycle",
                             "isoproperty_table", "saturation_table", "line_sizing"}) {
        const std::string request = folder.path(std::string(name) + ".fi1");
        std::filesystem::copy_file(std::string(test::examplesFolder) + "/" + name + ".fi1", request);
        library.run(request);
        const std::string result = request.substr(0, request.size() - 2) + "o";
        missing += !std::filesystem::exists(result + "1") && !std::filesystem::exists(result + "0");
    }
    const std::string blend = folder.path("blend.fi1");
    writeFile(blend, cycleRequest(1, basicParameters(), "R448A.MIX").text());
    library.run(blend);
    return missing + (readFile(folder.path("blend.fo1")).substr(0, 2) != " 2");
}

TEST(SharedLibrary, RunsNeedLessMemoryThanHostsAreTold) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer takes an address space of its own";
#endif
    if (std::getenv(smallHost) != nullptr) {
        EXPECT_EQ(requestsWithoutResult(), 0);
        return;
    }
    constexpr int emulated = 3;
    const pid_t child = fork();
    if (child == 0) {
        constexpr rlim_t told = 64'000'000;
        const rlimit limit{told, told};
        setenv(smallHost, "1", 1);
        if (setrlimit(RLIMIT_AS, &limit) == 0)
            execl("/proc/self/exe", "test_frontend", "--gtest_filter=SharedLibrary.RunsNeedLessMemoryThanHostsAreTold",
                  "--gtest_brief=1", nullptr);
        _exit(errno == ENOEXEC ? emulated : 2);
    }
    int status = -1;
    waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == emulated) GTEST_SKIP() << "an emulated processor starts no program";
    EXPECT_EQ(status, 0);
}

TEST(SharedLibrary, ACallNeedsNoMoreStackThanTheHeaderSays) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer makes every frame larger";
#endif
    const Library library;
    TemporaryFolder folder;
    std::vector<std::string> requests;
    for (const auto& entry : std::filesystem::directory_iterator(test::examplesFolder)) {
        // The one that stores a blend would do so among the data of the tree.
        if (entry.path().extension() != ".fi1" || entry.path().stem() == "store_blend") continue;
        requests.push_back(folder.path(entry.path().filename().string()));
        std::filesystem::copy_file(entry.path(), requests.back());
    }
    ASSERT_GT(requests.size(), 10u);
    for (const char* fluid : {"R448A.MIX", "R410A.MIX", "CO2.FLD"}) {
        requests.push_back(folder.path(std::string(fluid) + ".fi1"));
        writeFile(requests.back(), cycleRequest(1, basicParameters(), fluid).text());
    }
    struct Work {
        const Library& library;
        const std::vector<std::string>& requests;
    } work{library, requests};

    // The stack is filled with a mark before, to see how much of it was used.
    constexpr std::size_t promised = 128 * 1024, spare = 64 * 1024;
    std::vector<unsigned char> stack(promised + spare + 4096);
    const auto base = (reinterpret_cast<std::uintptr_t>(stack.data()) + 4095) / 4096 * 4096;
    auto* const lowest = reinterpret_cast<unsigned char*>(base);
    constexpr unsigned char mark = 0xA5;
    std::fill_n(lowest, promised + spare, mark);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstack(&attributes, lowest, promised + spare), 0);
    pthread_t thread;
    const auto body = [](void* context) -> void* {
        const Work& all = *static_cast<Work*>(context);
        for (const std::string& request : all.requests) all.library.run(request);
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, body, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    const auto untouched = static_cast<std::size_t>(
        std::find_if(lowest, lowest + promised + spare, [](unsigned char byte) { return byte != mark; }) - lowest);
    const std::size_t used = promised + spare - untouched;
    std::printf("%zu requests used %zu KiB of stack, those of the thread itself included\n", requests.size(),
                used / 1024);
    EXPECT_LE(used, promised);
}

}  // namespace
}  // namespace frigana
