#include "34_SpecificStatePoints.h"

#include "21_InitSubstance.h"
#include "23_SpecificPoints.h"
#include "FixedRows.h"

namespace frigana {

namespace {

enum Property { temperature = 1, pressure = 2, density = 3 };

// Codes of the checks of one of the two given properties.
struct Codes {
    int temperature, pressure, density;
};

void check(const SUBSTANCE& substance, int property, double value, const Codes& codes) {
    refuseWhen(property == temperature && value < substance.TMIN, codes.temperature,
               limitMessage("Error: Temperature was less than minimum temperature (", substance.TMIN, " K)"));
    refuseWhen(property == pressure && value < substance.PMIN, codes.pressure,
               limitMessage("Error: Pressure was less than minimum pressure (", substance.PMIN, " kPa)"));
    refuseWhen(property == density && value < 0.0, codes.density, "Error: Density was less or equal than zero");
}

}  // namespace

void SPECIFSTATEPOINT(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT) {
    static constinit STATEPT point{};
    INITSUBSTANCE(substance);
    check(substance, request.PT1VAR, request.PT1VALUE, {104201, 104203, 104205});
    check(substance, request.PT2VAR, request.PT2VALUE, {104211, 104213, 104215});

    point = substance.PTBAD;  // of one property twice, or of one that there is not
    const auto given = [&](Property property) {
        return request.PT1VAR == property ? request.PT1VALUE : request.PT2VALUE;
    };
    const auto known = [](int property) { return property >= temperature && property <= density; };
    const bool pair = known(request.PT1VAR) && known(request.PT2VAR) && request.PT1VAR != request.PT2VAR;
    switch (pair ? 6 - (request.PT1VAR + request.PT2VAR) : 0) {
        case temperature:
            PROPSIMPLEPD(substance, given(pressure), given(density), point);
            break;
        case pressure:
            PROPSIMPLETD(substance, given(temperature), given(density), point);
            break;
        case density:
            PROPSIMPLEPT(substance, given(pressure), given(temperature), point);
            break;
        default:
            break;
    }

    ResultWriter writer(FILEOUT);
    integerRow(writer, "Request type", 1, request.REQTYPE);
    fillers(writer, 3);
    integerRow(writer, "Operation", 2, request.REQSUB);
    stateCells(writer, point, true);
    fillers(writer, 2);
    writer.close();
}

}  // namespace frigana
