#include "32_SaturationTables.h"

#include <algorithm>

#include "21_InitSubstance.h"
#include "24_SaturationPoints.h"
#include "FixedRows.h"

namespace frigana {

namespace {

constexpr int overTemperature = 1;
constexpr int overPressure = 2;
constexpr int tens = 1;
constexpr int hundreds = 2;

void writeHead(ResultWriter& writer, const PROPREQ& request, double from, double to, double step) {
    const std::string_view unit = request.SATVAR == overTemperature ? "K" : "kPa";
    integerRow(writer, "Request type", 1, request.REQTYPE);
    writer.filler();
    integerRow(writer, "Operation", 2, request.REQSUB);
    writer.cell("Running property (1 temperature, 2 pressure)", "", Integer{1, request.SATVAR});
    writer.space(1);
    realCell(writer, "From", unit, from);
    realCell(writer, "To", unit, to);
    realCell(writer, "Step", unit, step);
    writer.endRow();
}

}  // namespace

void SATPTABLELIMITS(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT) {
    INITSUBSTANCE(substance);
    double from = 0, to = 0, step = 0;
    if (request.SATVAR == overTemperature) {
        from = flooredAndRounded(substance.TMIN + 10.0, 10.0, tens);
        to = rounded(substance.TC, tens);
        step = std::max(rounded((to - from) / 9.0, tens), 10.0);
    } else {
        from = std::max(substance.PMIN, 100.0);
        to = rounded(substance.PC, hundreds);
        step = std::max(rounded((to - from) / 9.0, hundreds), 100.0);
    }
    ResultWriter writer(FILEOUT);
    writeHead(writer, request, from, to, step);
    integerRow(writer, "Number of rows", 1, 0);
    fillers(writer, 4);
    writer.close();
}

void SATPTABLECOMPUTE(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT) {
    static Array1<STATEPT, mostRows> PTAL, PTAV;
    INITSUBSTANCE(substance);
    const double from = request.TABFROM;
    const double to = request.TABTO;
    const bool temperature = request.SATVAR == overTemperature;
    const bool pressure = request.SATVAR == overPressure;
    refuseWhen(temperature && from < substance.TMIN, 102201,
               limitMessage("Error: Initial temperature < minimum temperature (", substance.TMIN, " K)"));
    refuseWhen(temperature && to > substance.TC, 102202,
               limitMessage("Error: Final temperature > critical temperature (", substance.TC, " K)"));
    refuseWhen(pressure && from < substance.PMIN, 102203,
               limitMessage("Error: Initial pressure < minimum pressure (", substance.PMIN, " kPa)"));
    refuseWhen(pressure && to > substance.PC, 102204,
               limitMessage("Error: Final pressure > critical pressure (", substance.PC, " kPa)"));
    const Steps PARAMDATA = checkedSteps(from, to, request.TABSTEP, {102211, 102212, 102213, 102214});

    for (int i = 1; i <= PARAMDATA.count; ++i) {
        if (temperature)
            PROPMIXTURET_BD(substance, PARAMDATA[i], 1, PTAL[i], PTAV[i]);
        else if (pressure)
            PROPMIXTUREP_BD(substance, PARAMDATA[i], 1, PTAL[i], PTAV[i]);
        else
            PTAL[i] = PTAV[i] = substance.PTBAD;
    }

    ResultWriter writer(FILEOUT);
    writeHead(writer, request, from, to, PARAMDATA.step);
    integerRow(writer, "Number of rows", digitsOf(PARAMDATA.count), PARAMDATA.count);
    for (int i = 1; i <= PARAMDATA.count; ++i) {
        writer.row("Saturation table", i);
        saturationCells(writer, PTAL[i], PTAV[i]);
    }
    writer.group({});
    fillers(writer, 4);
    writer.close();
}

}  // namespace frigana
