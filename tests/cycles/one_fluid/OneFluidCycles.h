// Requests of the cycles with one fluid, and where things stand in their results.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Requests.h"
#include "ResultFile.h"

namespace frigana::test {

using Changes = std::initializer_list<std::pair<int, Parameter>>;

// A request that is solved, to be changed in single parameters.
struct CycleKind {
    int sub;
    const char* fluid;
    std::vector<Parameter> parameters;
    int lines;                        // of the whole result
    std::vector<int> levels{};        // parameters that move every state
    std::vector<Parameter> before{};  // of another run in the same folder that comes first; none where empty

    std::vector<Parameter> with(Changes changes) const {
        auto all = parameters;
        for (const auto& [k, given] : changes) all[static_cast<std::size_t>(k - 1)] = given;
        return all;
    }
};

extern const CycleKind withExchanger, transcritical, liquidInjection, rankine, booster, twoStage,
    multiStage;  // of three compressors

inline std::string resultText(const CycleKind& kind, Changes changes, const char* fluid = nullptr) {
    Plant plant;
    plant(cycleRequest(kind.sub, kind.with(changes), fluid == nullptr ? kind.fluid : fluid));
    return plant.hasResult() ? plant.resultText() : std::string();
}

inline ResultFile solve(const CycleKind& kind, Changes changes, const char* fluid = nullptr) {
    return ResultFile(resultText(kind, changes, fluid));
}

// Two results, line by line. The engine's memo of saturation states lets the last digits of a number depend on the
// states asked for before.
void expectSameResult(const ResultFile& result, const ResultFile& expected);

// A check that a request can reach.
struct CodeCase {
    int code;
    const char* text;
    std::vector<std::pair<int, Parameter>> changes;
    const char* fluid = nullptr;  // another one than the kind's
};
// A check that no request can reach, and why.
struct UnreachableCode {
    int code;
    const char* reason;
};

// Runs every row and compares the whole result file; both tables together name all codes from first to last. The rows
// stand in the order of the checks: of two that a request offends the earlier one is reported.
void checkCodes(const CycleKind& kind, std::span<const CodeCase> rows, std::span<const UnreachableCode> unreachable,
                int count);

}  // namespace frigana::test
