// A host that loads the shared library and calls it a thousand times.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <set>

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

}  // namespace
}  // namespace frigana
