#include "33_IsopropertyTables.h"

#include <algorithm>

#include "21_InitSubstance.h"
#include "23_SpecificPoints.h"
#include "FixedRows.h"

namespace frigana {

namespace {

enum Property { temperature = 1, pressure = 2, density = 3 };
constexpr int tens = 1;
constexpr int hundreds = 2;

std::string_view unitOf(int property) {
    switch (property) {
        case temperature:
            return "K";
        case pressure:
            return "kPa";
        case density:
            return "kg/m3";
        default:
            return "";
    }
}

struct Line {
    double value, from, to, step;
};

void writeHead(ResultWriter& writer, const PROPREQ& request, const Line& line) {
    const std::string_view unit = unitOf(request.ISOSWEEP);
    integerRow(writer, "Request type", 1, request.REQTYPE);
    fillers(writer, 2);
    integerRow(writer, "Operation", 2, request.REQSUB);
    writer.cell("Constant property (1 temperature, 2 pressure, 3 density)", "", Integer{1, request.ISOVAR});
    writer.space(1);
    writer.cell("Running property (1 temperature, 2 pressure, 3 density)", "", Integer{1, request.ISOSWEEP});
    writer.space(1);
    realCell(writer, "Constant value", unitOf(request.ISOVAR), line.value);
    realCell(writer, "From", unit, line.from);
    realCell(writer, "To", unit, line.to);
    realCell(writer, "Step", unit, line.step);
    writer.endRow();
}

double densityAt(const SUBSTANCE& substance, double P, double T) {
    static constinit STATEPT point{};
    PROPSIMPLEPT(substance, P, T, point);
    return point.D;
}

double temperatureAt(const SUBSTANCE& substance, double P, double D) {
    static constinit STATEPT point{};
    PROPSIMPLEPD(substance, P, D, point);
    return point.T;
}

double pressureAt(const SUBSTANCE& substance, double T, double D) {
    static constinit STATEPT point{};
    PROPSIMPLETD(substance, T, D, point);
    return point.P;
}

double ninth(double from, double to, int places, double least) {
    return std::max(rounded((to - from) / 9.0, places), least);
}

}  // namespace

void ISOPTABLELIMITS(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT) {
    INITSUBSTANCE(substance);
    const double TMID = (substance.TMIN + substance.TMAX) / 2.0;
    const double PMID = (substance.PC + 100.0) / 2.0;
    const double PLOW = std::max(substance.PMIN, 100.0);
    const double TLOW = static_cast<double>(1.1f) * substance.TMIN;
    const double THIGH = static_cast<double>(0.9f) * substance.TMAX;

    Line line{request.ISOVALUE, request.TABFROM, request.TABTO, request.TABSTEP};
    const auto named = [&](Property constant, Property running) {
        return request.ISOVAR == constant && request.ISOSWEEP == running;
    };
    if (named(temperature, pressure)) {
        line.value = rounded(TMID, tens);
        line.from = PLOW;
        line.to = rounded(substance.PC, hundreds);
        line.step = ninth(line.from, line.to, hundreds, 100.0);
    } else if (named(pressure, temperature)) {
        line.value = rounded(PMID, hundreds);
        line.from = flooredAndRounded(TLOW + 10.0, 10.0, tens);
        line.to = rounded(THIGH, tens);
        line.step = ninth(line.from, line.to, tens, 10.0);
    } else if (named(temperature, density)) {
        line.value = rounded(TMID, tens);
        line.from = flooredAndRounded(densityAt(substance, PLOW, line.value) + 10.0, 10.0, tens);
        line.to = rounded(densityAt(substance, substance.PC, line.value), tens);
        line.step = ninth(line.from, line.to, tens, 10.0);
    } else if (named(density, temperature)) {
        line.value = flooredAndRounded(densityAt(substance, PMID, TMID), 10.0, tens);
        line.from = flooredAndRounded(temperatureAt(substance, PLOW, line.value) + 10.0, 10.0, tens);
        line.to = rounded(temperatureAt(substance, substance.PC, line.value), tens);
        line.step = ninth(line.from, line.to, tens, 10.0);
    } else if (named(pressure, density)) {
        line.value = rounded(PMID, hundreds);
        line.from = flooredAndRounded(densityAt(substance, line.value, THIGH) + 10.0, 10.0, tens);
        line.to = rounded(densityAt(substance, line.value, TLOW), tens);
        line.step = ninth(line.from, line.to, tens, 10.0);
    } else if (named(density, pressure)) {
        line.value = flooredAndRounded(densityAt(substance, PMID, TMID), 10.0, tens);
        line.from = flooredAndRounded(pressureAt(substance, TLOW, line.value) + 100.0, 100.0, hundreds);
        line.to = rounded(pressureAt(substance, THIGH, line.value), hundreds);
        line.step = ninth(line.from, line.to, hundreds, 100.0);
    }

    ResultWriter writer(FILEOUT);
    writeHead(writer, request, line);
    integerRow(writer, "Number of rows", 1, 0);
    fillers(writer, 3);
    writer.close();
}

void ISOPTABLECOMPUTE(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT) {
    static Array1<STATEPT, mostRows> PT00;
    INITSUBSTANCE(substance);
    const int constant = request.ISOVAR;
    const int running = request.ISOSWEEP;
    const double value = request.ISOVALUE;
    const double from = request.TABFROM;
    const double to = request.TABTO;

    refuseWhen(constant == temperature && value < substance.TMIN, 103201,
               limitMessage("Error: Constant temperature was less than minimum temperature (", substance.TMIN, " K)"));
    refuseWhen(
        constant == temperature && value > substance.TMAX, 103202,
        limitMessage("Error: Constant temperature was higher than maximum temperature (", substance.TMAX, " K)"));
    refuseWhen(constant == pressure && value < substance.PMIN, 103203,
               limitMessage("Error: Constant pressure was less than minimum pressure (", substance.PMIN, " kPa)"));
    refuseWhen(constant == density && value < 0.0, 103205, "Error: Constant density was less or equal than zero");
    refuseWhen(constant == density && value > substance.DMAX, 103206,
               limitMessage("Error: Constant density was higher than maximum density (", substance.DMAX, " kg/m3)"));
    refuseWhen(running == temperature && from < substance.TMIN, 103211,
               limitMessage("Error: Initial temperature < minimum temperature (", substance.TMIN, " K)"));
    refuseWhen(running == temperature && to > substance.TMAX, 103212,
               limitMessage("Error: Final temperature > maximum temperature (", substance.TMAX, " K)"));
    refuseWhen(running == pressure && from < substance.PMIN, 103213,
               limitMessage("Error: Initial pressure < minimum pressure (", substance.PMIN, " kPa)"));
    // The limit that this message would quote is never filled in: its place is blank.
    refuseWhen(running == density && from < 0.0, 103215, "Error: Initial density was less or equal than zero kPa)");
    refuseWhen(running == density && to > substance.DMAX, 103216,
               limitMessage("Error: Final density was higher than maximum density (", substance.DMAX, " kg/m3)"));
    const Steps PARAMDATA = checkedSteps(from, to, request.TABSTEP, {103221, 103222, 103223, 103224});

    // One property twice, or one that there is not, is no line: its rows are what the last table left.
    const auto known = [](int property) { return property >= temperature && property <= density; };
    const int computed = known(constant) && known(running) && constant != running ? PARAMDATA.count : 0;
    for (int i = 1; i <= computed; ++i) {
        const double x = PARAMDATA[i];
        switch (6 - (constant + running)) {
            case temperature:
                PROPSIMPLEPD(substance, constant == pressure ? value : x, constant == density ? value : x, PT00[i]);
                break;
            case pressure:
                PROPSIMPLETD(substance, constant == temperature ? value : x, constant == density ? value : x, PT00[i]);
                break;
            case density:
                PROPSIMPLEPT(substance, constant == pressure ? value : x, constant == temperature ? value : x, PT00[i]);
                break;
            default:
                break;
        }
    }

    ResultWriter writer(FILEOUT);
    writeHead(writer, request, {value, from, to, PARAMDATA.step});
    integerRow(writer, "Number of rows", digitsOf(PARAMDATA.count), PARAMDATA.count);
    for (int i = 1; i <= PARAMDATA.count; ++i) {
        writer.row("Isoproperty table", i);
        stateCells(writer, PT00[i], false);
    }
    writer.group({});
    fillers(writer, 3);
    writer.close();
}

}  // namespace frigana
