// Requests of the systems of two circuits, and where things stand in their results.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Requests.h"
#include "ResultFile.h"

namespace frigana::test {

// A change of one parameter: of the first or the second circuit.
struct Change {
    int circuit, k;
    Parameter given;
};
using Changes = std::vector<Change>;

struct Fluids {
    const char* first;
    const char* second;
};

// A request that is solved, to be changed in single parameters.
struct System {
    int sub;
    Fluids fluids;
    std::vector<Parameter> first, second;  // parameters of both circuits
    bool coupled;                          // the last parameter of the second one stands behind both blocks
    int lines;                             // of the whole result
    int second1;                           // first line of the second circuit's part

    Request request(const Changes& changes = {}, std::optional<Fluids> others = {}) const;
};

extern const System combined, cascade, pumped;

std::string resultText(const System& system, const Changes& changes = {}, std::optional<Fluids> others = {});
ResultFile solve(const System& system, const Changes& changes = {}, std::optional<Fluids> others = {});

// A check that a request can reach.
struct CodeCase {
    int code;
    const char* text;
    Changes changes;
    std::optional<Fluids> fluids{};
};
// A check that no request can reach, and why.
struct UnreachableCode {
    int code;
    const char* reason;
};

// Runs every row and compares the whole result file; both tables together name the given number of checks.
void checkCodes(const System& system, std::span<const CodeCase> rows, std::span<const UnreachableCode> unreachable,
                int count);

}  // namespace frigana::test
