#include "SaturationPoint.h"

#include "21_InitSubstance.h"
#include "FixedRows.h"

namespace frigana {

void answerSaturationPoint(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT, SaturationPair atT,
                           SaturationPair atP) {
    static constinit STATEPT liquid{}, vapor{};
    INITSUBSTANCE(substance);
    const double value = request.SATPTVALUE;
    const bool temperature = request.SATPTVAR == 1 || request.SATPTVAR == 2;
    const bool pressure = request.SATPTVAR == 3 || request.SATPTVAR == 4;
    refuseWhen(temperature && value < substance.TMIN, 105201,
               limitMessage("Error: Temperature was less than minimum temperature (", substance.TMIN, " K)"));
    refuseWhen(temperature && value > substance.TC, 105202,
               limitMessage("Error: Temperature was higher than critical temperature (", substance.TC, " K)"));
    refuseWhen(pressure && value < substance.PMIN, 105211,
               limitMessage("Error: Pressure was less than minimum pressure (", substance.PMIN, " kPa)"));
    refuseWhen(pressure && value > substance.PC, 105212,
               limitMessage("Error: Pressure was higher than critical pressure (", substance.PC, " kPa)"));

    liquid = vapor = substance.PTBAD;  // of a setting that there is not
    const int side = request.SATPTVAR == 1 || request.SATPTVAR == 3 ? 1 : 2;
    if (temperature)
        atT(substance, value, side, liquid, vapor);
    else if (pressure)
        atP(substance, value, side, liquid, vapor);

    ResultWriter writer(FILEOUT);
    integerRow(writer, "Request type", 1, request.REQTYPE);
    fillers(writer, 4);
    integerRow(writer, "Operation", 2, request.REQSUB);
    saturationCells(writer, liquid, vapor);
    writer.filler();
    writer.close();
}

}  // namespace frigana
