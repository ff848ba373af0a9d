#include "OneFluidCycles.h"

#include <cmath>
#include <set>

namespace frigana::test {

const CycleKind withExchanger{2,
                              "R134A.FLD",
                              {{1, 268.15}, {2, 5.0},  {1, 0.0}, {2, 2.0}, {1, 0.0},    {2, 0.0}, {1, 0.0}, {1, 0.0028},
                               {1, 0.7},    {1, 0.85}, {2, 0.0}, {1, 0.0}, {1, 313.15}, {2, 3.0}, {1, 0.0}, {2, 0.0},
                               {1, 0.0},    {2, 0.0},  {1, 0.0}, {2, 5.0}, {1, 0.0},    {1, 0.0}},
                              379};
const CycleKind transcritical{
    7,
    "CO2.FLD",
    {{1, 268.15}, {2, 5.0},  {1, 0.0}, {2, 2.0}, {1, 0.0},    {2, 0.0},    {1, 0.0}, {1, 0.0028},
     {1, 0.7},    {1, 0.85}, {2, 0.0}, {1, 0.0}, {2, 9500.0}, {1, 308.15}, {1, 0.0}, {2, 0.0},
     {1, 0.0},    {2, 0.0},  {1, 0.0}, {2, 3.0}, {1, 0.0},    {1, 0.0}},
    338};
const CycleKind liquidInjection{9,
                                "R22.FLD",
                                {{1, 253.15},
                                 {2, 5.0},
                                 {1, 0.0},
                                 {2, 2.0},
                                 {1, 0.0},
                                 {1, 0.0028},
                                 {1, 0.7},
                                 {1, 0.85},
                                 {2, 0.0},
                                 {1, 0.0},
                                 {1, 318.15},
                                 {2, 3.0},
                                 {1, 0.0},
                                 {2, 0.0},
                                 {1, 0.0},
                                 {1, 373.15},
                                 {2, 0.0},
                                 {1, 0.0}},
                                351};
const CycleKind rankine{
    6,
    "R245FA.FLD",
    {{1, 383.15}, {2, 5.0}, {1, 0.0}, {2, 0.0}, {1, 0.0}, {1, 100.0}, {1, 0.8},   {1, 0.0},   {2, 0.0},   {1, 0.0},
     {1, 308.15}, {1, 0.0}, {1, 0.0}, {1, 0.7}, {2, 0.0}, {1, 0.0},   {1, 430.0}, {1, 390.0}, {1, 293.0}, {1, 300.0}},
    296};

const CycleKind booster{
    14,
    "CO2.FLD",
    {{1, 265.15}, {2, 8.0}, {1, 0.0},    {2, 2.0},    {1, 0.0}, {2, 2.0}, {1, 0.0},  {1, 60.0}, {1, 0.72}, {1, 0.86},
     {2, 3.0},    {1, 0.0}, {2, 9000.0}, {1, 308.15}, {1, 0.0}, {2, 0.0}, {1, 0.0},  {2, 0.0},  {1, 0.0},  {2, 3.0},
     {1, 0.0},    {1, 0.0}, {1, 3500.0}, {1, 241.15}, {2, 8.0}, {1, 0.0}, {1, 0.68}, {1, 25.0}, {1, 0.8}},
    471};

const CycleKind twoStage{
    10,
    "R134A.FLD",
    {{1, 253.15}, {2, 5.0}, {1, 0.0}, {2, 2.0},    {1, 0.0}, {1, 0.01}, {1, 0.7}, {1, 0.85}, {1, 0.72},
     {1, 0.88},   {2, 0.0}, {1, 0.0}, {1, 313.15}, {2, 3.0}, {1, 0.0},  {2, 0.0}, {1, 0.0},  {1, 5.0},
     {1, 20.0},   {1, 0.0}, {1, 0.0}, {1, 0.0},    {1, 0.0}, {1, 0.0},  {2, 0.0}},
    408};
const CycleKind multiStage{
    11,
    "R134A.FLD",
    {{1, 253.15}, {2, 5.0}, {1, 0.0}, {2, 2.0},  {1, 0.0}, {1, 0.01}, {1, 0.72}, {1, 0.88}, {2, 0.0},  {1, 0.0},
     {1, 313.15}, {2, 3.0}, {1, 0.0}, {2, 0.0},  {1, 0.0}, {3, 0.0},  // 3 compressors
     {2, 1.0},    {1, 0.0}, {1, 0.7}, {1, 0.85}, {1, 0.0}, {2, 1.0},  {1, 0.0},  {1, 0.71}, {1, 0.86}, {1, 0.0}},
    538};

void expectSameResult(const ResultFile& result, const ResultFile& expected) {
    ASSERT_EQ(result.count(), expected.count());
    for (int line = 1; line <= expected.count(); ++line) {
        const double number = expected.number(line);
        if (std::isfinite(number))
            EXPECT_NEAR(result.number(line), number, 1e-10 * std::max(std::fabs(number), 1.0)) << "line " << line;
        else
            EXPECT_EQ(result.raw(line), expected.raw(line)) << "line " << line;
    }
}

void checkCodes(const CycleKind& kind, std::span<const CodeCase> rows, std::span<const UnreachableCode> unreachable,
                int count) {
    for (const CodeCase& row : rows) {
        SCOPED_TRACE(row.code);
        auto parameters = kind.parameters;
        for (const auto& [k, given] : row.changes) parameters[static_cast<std::size_t>(k - 1)] = given;
        Plant plant;
        plant(cycleRequest(kind.sub, parameters, row.fluid == nullptr ? kind.fluid : row.fluid));
        EXPECT_EQ(plant.hasResult() ? plant.resultText() : "", failure(row.code, row.text));
    }
    std::set<std::string> names;
    for (const CodeCase& row : rows) names.insert(std::to_string(row.code) + row.text);
    for (const UnreachableCode& row : unreachable) {
        EXPECT_GT(std::string(row.reason).size(), 0U);
        names.insert(std::to_string(row.code));
    }
    EXPECT_EQ(static_cast<int>(names.size()), count) << "checks of cycle " << kind.sub;
}

}  // namespace frigana::test
