#include "Systems.h"

#include <algorithm>
#include <set>

#include "OrderOfChecks.h"

namespace frigana::test {

namespace {

std::vector<Parameter> lowParameters() {
    auto all = basicParameters();
    all[0] = {1, 243.15};
    return all;
}

std::vector<Parameter> appended(std::vector<Parameter> all, const std::vector<Parameter>& more) {
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

// The low circuit of a cascade condenses where the high one evaporates.
std::vector<Parameter> cascadeLow() {
    auto all = lowParameters();
    all[0] = {1, 233.15};
    all[5] = {3, 10.0};
    all[10] = {1, 268.15};
    all[11] = {2, 0.0};
    return appended(std::move(all), {{1, 5.0}});
}

}  // namespace

const System combined{3,
                      {"R134A.FLD", "R404A.MIX"},
                      basicParameters(),
                      appended(lowParameters(), {{2, 0.0}, {1, 0.0}, {2, 10.0}, {1, 0.0}}),
                      false,
                      622,
                      290};
const System cascade{4, {"R134A.FLD", "CO2.FLD"}, basicParameters(), cascadeLow(), true, 581, 286};
const System pumped{13,
                    {"AMMONIA.FLD", "CO2.FLD"},
                    basicParameters(),
                    {{1, 263.15},
                     {3, 0.6},
                     {1, 30.0},
                     {3, 0.6},
                     {1, 20.0},
                     {1, 100.0},
                     {1, 0.6},
                     {2, 0.0},
                     {2, 0.2},
                     {1, 60.0},
                     {1, 4.0}},
                    true,
                    537,
                    286};

Request System::request(const Changes& changes, std::optional<Fluids> others) const {
    auto one = first;
    auto two = second;
    for (const Change& change : changes)
        (change.circuit == 1 ? one : two)[static_cast<std::size_t>(change.k - 1)] = change.given;
    const Fluids used = others.value_or(fluids);
    Request all = cycleRequest(sub, one, used.first, "First circuit");
    all.line("SECOND CIRCUIT").line("header");
    if (!coupled) return all.append(cycleRequest(sub, two, used.second, "Second circuit"));
    Request last = cycleRequest(sub, {two.back()});
    two.pop_back();
    all.append(cycleRequest(sub, two, used.second, "Second circuit"));
    return all.line("INTERMEDIATE TEMPERATURES").line("header").line(last.lines().back());
}

std::string resultText(const System& system, const Changes& changes, std::optional<Fluids> others) {
    Plant plant;
    plant(system.request(changes, others));
    return plant.hasResult() ? plant.resultText() : std::string();
}

ResultFile solve(const System& system, const Changes& changes, std::optional<Fluids> others) {
    return ResultFile(resultText(system, changes, others));
}

namespace {

// Parameters that move every state of their circuit.
constexpr int evaporating = 1, condensing = 11;

bool canBeJoined(const System& system, const CodeCase& a, const CodeCase& b) {
    const Fluids one = a.fluids.value_or(system.fluids), two = b.fluids.value_or(system.fluids);
    if (std::string(one.first) != two.first || std::string(one.second) != two.second) return false;
    return std::none_of(b.changes.begin(), b.changes.end(), [&](const Change& change) {
        return change.k == evaporating || change.k == condensing ||
               std::any_of(a.changes.begin(), a.changes.end(),
                           [&](const Change& other) { return other.circuit == change.circuit && other.k == change.k; });
    });
}

}  // namespace

void checkCodes(const System& system, std::span<const CodeCase> rows, std::span<const UnreachableCode> unreachable,
                int count) {
    std::set<std::string> names;
    for (const CodeCase& row : rows) {
        SCOPED_TRACE(row.code);
        EXPECT_EQ(resultText(system, row.changes, row.fluids), failure(row.code, row.text));
        names.insert(std::to_string(row.code));
    }
    const int pairs = expectEarlierCheckWins(
        rows, [&](const CodeCase& a, const CodeCase& b) { return canBeJoined(system, a, b); },
        [&](const CodeCase& a, const CodeCase& b) {
            Changes both = b.changes;
            both.insert(both.end(), a.changes.begin(), a.changes.end());
            return resultText(system, both, a.fluids);
        },
        [](const CodeCase& row) { return failure(row.code, row.text); },
        [](const CodeCase&, const CodeCase&) { return false; });
    std::printf("system %d: %d pairs of checks\n", system.sub, pairs);
    for (const UnreachableCode& row : unreachable) {
        EXPECT_FALSE(std::string(row.reason).empty());
        names.insert(std::to_string(row.code));
    }
    EXPECT_EQ(static_cast<int>(names.size()), count);
}

}  // namespace frigana::test
