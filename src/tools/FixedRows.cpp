#include "FixedRows.h"

#include <algorithm>

#include "14_ErrorControl.h"

namespace frigana {

namespace {

constexpr Column saturationColumns[] = {
    {"Temperature", "K", &STATEPT::T},
    {"Pressure", "kPa", &STATEPT::P},
    {"Density", "kg/m3", &STATEPT::D},
    {"Specific volume", "m3/kg", &STATEPT::V},
    {"Internal energy", "kJ/kg", &STATEPT::U},
    {"Enthalpy", "kJ/kg", &STATEPT::H},
    {"Entropy", "kJ/(kg K)", &STATEPT::S},
    {"Isochoric heat capacity", "kJ/(kg K)", &STATEPT::CV},
    {"Isobaric heat capacity", "kJ/(kg K)", &STATEPT::CP},
    {"Speed of sound", "m/s", &STATEPT::W},
    {"Thermal conductivity", "W/(m K)", &STATEPT::TCX},
    {"Viscosity", "uPa s", &STATEPT::ETA},
    {"Prandtl number", "-", &STATEPT::PR},
};
constexpr Column qualityColumn{"Quality", "kg/kg", &STATEPT::Q};
constexpr Column tensionColumn{"Surface tension", "N/m", &STATEPT::STN};

void cellOf(ResultWriter& writer, const Column& column, const STATEPT& point) {
    realCell(writer, column.name, column.unit, point.*column.field);
}

void cellOf(ResultWriter& writer, const Column& column, std::string_view phase, const STATEPT& point) {
    FixedText<60> name;
    message(name, column.name, phase);
    realCell(writer, name.trimmed(), column.unit, point.*column.field);
}

}  // namespace

void integerRow(ResultWriter& writer, std::string_view name, int width, int value) {
    writer.cell(name, "", Integer{width, value});
    writer.endRow();
}

void realCell(ResultWriter& writer, std::string_view name, std::string_view unit, double value) {
    writer.cell(name, unit, FixedPoint{16, 6, value});
    writer.space(1);
}

void fillers(ResultWriter& writer, int count) {
    for (int i = 0; i < count; ++i) writer.filler();
}

void stateCells(ResultWriter& writer, const STATEPT& point, bool withQuality) {
    for (const Column& column : saturationColumns) {
        if (withQuality && column.field == &STATEPT::TCX) cellOf(writer, qualityColumn, point);
        cellOf(writer, column, point);
    }
    cellOf(writer, tensionColumn, point);
    writer.endRow();
}

void saturationCells(ResultWriter& writer, const STATEPT& liquid, const STATEPT& vapor) {
    for (const Column& column : saturationColumns) {
        cellOf(writer, column, ", liquid", liquid);
        cellOf(writer, column, ", vapor", vapor);
    }
    cellOf(writer, tensionColumn, liquid);
    writer.endRow();
}

Steps checkedSteps(double from, double to, double step, const StepCodes& codes) {
    constexpr int intervals = mostRows - 1;
    constexpr double rounding = 1e-9;  // of a step: from 223.15 K to 263.15 K by 10 K are 3.9999999999999973 steps
    // Negated, so that what is not a number is refused too.
    refuseWhen(!(from < to), codes.order, "Error: Final value was less or equal  than Initial value!");
    refuseWhen(!(step > 0.0), codes.notPositive, "Error: Increment was less or equal than zero!");
    refuseWhen(step < (to - from) / intervals, codes.tooSmall, "Error: Increase increment size!");
    refuseWhen(step > (to - from) / 2.0, codes.tooLarge, "Error: Reduce increment size!");
    Steps steps{static_cast<int>((to - from) / step + rounding) + 1, from, step};
    if (steps.count > mostRows) {
        // Only rounding brings it here; the step becomes a whole number.
        steps.count = mostRows;
        steps.step = static_cast<int>((to - from) / intervals);
    }
    return steps;
}

void refuseWhen(bool condition, int code, const Text255& text) {
    if (condition) ERRORCONTROL(code, text);
}

double flooredAndRounded(double value, double floor, int places) {
    return rounded(std::max(value, floor), places);
}

double rounded(double value, int places) {
    double result = 0.0;
    MYNROUND(value, places, result);
    return result;
}

}  // namespace frigana
