// Calls go downward: no object file of a floor, or of a room of the phases, needs a symbol that one above it defines.
// Includes are held by the build; this holds the calls, which a declaration made by hand would carry past it.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

// From the ground up.
const std::vector<std::string> floors = {
    "base",
    "ground",
    "models",
    "dispatch",
    "properties",
    "equilibrium",
    "pure_saturation",
    "mixture_saturation",
    "saturation",
    "inverse_saturation",
    "flash_iterations",
    "flash",
    "transport",
    "derived",
    "setup",
};

std::filesystem::path archiveOf(const std::string& floor) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    return program.parent_path().parent_path() / "lib" / ("libfrigana_" + floor + ".a");
}

struct Symbols {
    std::set<std::string> defined, needed;
};

Symbols symbolsOf(const std::string& floor) {
    Symbols symbols;
    const std::string command = "nm -C \"" + archiveOf(floor).string() + "\" 2>/dev/null";
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return symbols;
    std::array<char, 4096> line{};
    while (std::fgets(line.data(), line.size(), pipe) != nullptr) {
        std::string text = line.data();
        while (!text.empty() && text.back() == '\n') text.pop_back();
        if (text.size() < 20) continue;
        const char kind = text[17];
        const std::string name = text.substr(19);
        if (name.find("frigana::") == std::string::npos) continue;
        if (kind == 'T' || kind == 'D' || kind == 'B' || kind == 'R') symbols.defined.insert(name);
        if (kind == 'U') symbols.needed.insert(name);
    }
    pclose(pipe);
    return symbols;
}

// Calls from the one floor into the other.
std::vector<std::string> callsOf(const Symbols& from, const Symbols& to) {
    std::vector<std::string> calls;
    for (const std::string& name : from.needed)
        if (to.defined.count(name) > 0 && from.defined.count(name) == 0) calls.push_back(name);
    return calls;
}

TEST(Rooms, CallsGoDownward) {
    std::vector<Symbols> all;
    for (const std::string& floor : floors) {
        ASSERT_TRUE(std::filesystem::exists(archiveOf(floor))) << archiveOf(floor);
        all.push_back(symbolsOf(floor));
        ASSERT_FALSE(all.back().defined.empty()) << "nothing seen in " << floor;
    }
    std::size_t downward = 0;
    for (std::size_t from = 0; from < floors.size(); ++from)
        for (std::size_t to = 0; to < floors.size(); ++to) {
            const std::vector<std::string> calls = callsOf(all[from], all[to]);
            if (to < from) downward += calls.size();
            if (to <= from) continue;
            for (const std::string& name : calls)
                ADD_FAILURE() << floors[from] << " calls up into " << floors[to] << ": " << name;
        }
    // the check sees the calls that there are: each of the phases' rooms stands on those below
    EXPECT_GT(downward, 300u);
    EXPECT_FALSE(callsOf(all[11], all[10]).empty()) << "the doors of the flashes call their iterations";
    EXPECT_FALSE(callsOf(all[8], all[6]).empty()) << "saturation calls that of pure fluids";
    EXPECT_FALSE(callsOf(all[8], all[7]).empty()) << "and that of mixtures";
    EXPECT_TRUE(callsOf(all[6], all[7]).empty()) << "which do not know each other";
    EXPECT_TRUE(callsOf(all[7], all[6]).empty());
}

}  // namespace
