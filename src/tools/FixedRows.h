// Lines of the property tools' result files: fixed formats, one slot of lines per tool.
#pragma once

#include <span>

#include "12_MyVariables.h"
#include "LimitMessage.h"
#include "ResultWriter.h"

namespace frigana {

// A line with one integer.
void integerRow(ResultWriter& writer, std::string_view name, int width, int value);

// Columns that a number of rows takes where its field has no width of its own.
constexpr int digitsOf(int value) {
    int digits = 1;
    for (; value >= 10; value /= 10) ++digits;
    return digits;
}

// A real of 16 columns with 6 decimals and the blank behind it.
void realCell(ResultWriter& writer, std::string_view name, std::string_view unit, double value);

// Lines with a 0 that hold the places of other tools.
void fillers(ResultWriter& writer, int count);

// A column of a table of state points.
struct Column {
    std::string_view name, unit;
    double STATEPT::*field;
};

// T, P, D, V, U, H, S, CV, CP, W, (Q), TCX, ETA, PR, STN.
void stateCells(ResultWriter& writer, const STATEPT& point, bool withQuality);
// The same without Q, each of the liquid and then of the vapor, and the surface tension of the liquid.
void saturationCells(ResultWriter& writer, const STATEPT& liquid, const STATEPT& vapor);

// Equal steps from a first value; at most 2000 rows.
inline constexpr int mostRows = 2000;
struct Steps {
    int count = 0;
    double from = 0, step = 0;
    double operator[](int i) const { return from + (i - 1) * step; }
};
// Codes and texts of the checks on from, to and step.
struct StepCodes {
    int order, notPositive, tooSmall, tooLarge;
};
Steps checkedSteps(double from, double to, double step, const StepCodes& codes);

// Ends the run with code and text if the condition holds.
void refuseWhen(bool condition, int code, const Text255& text);

// At least a floor, then cut to a multiple of 10**places.
double flooredAndRounded(double value, double floor, int places);
double rounded(double value, int places);

}  // namespace frigana
