#include "46_Rankine.h"

#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "23_SpecificPoints.h"
#include "28_IsentropProcess.h"
#include "31_FluidInformation.h"
#include "CycleBricks.h"

namespace frigana {

namespace {

// ---- checks, in the order in which they fire ------------------------------------------------------------------------

constexpr Check boilerAboveTC{206201, "Error: Boiler temperature > critical temperature (", " K)"};
constexpr Check boilerAbovePC{206202, "Error: Boiler pressure > critical pressure(", " kPa)"};
constexpr Check boilerOutletP{206205, "Error: Boiler outlet pressure was less than or equal to   zero!"};
// These two carry the numbers of another cycle; front ends know them so.
constexpr SuperheatedChecks boilerOutlet{
    {201206, "Error: Boiler - outlet temperature is out of range!"},
    {201207, "Error: Boiler - superheat is out of range!"},
};
constexpr DropChecks liquidDrop{
    {206208, "Error: Liquid line - pressure drop is out of range!"},
    {206209, "Error: Liquid line - drop of saturation temperature is out of range!"},
};
constexpr DropChecks highPressureDrop{
    {206211, "Error: High pressure vapor line - pressure drop is out of range!"},
    {206212, "Error: High pressure vapor line - drop saturation of temperature is out of range!"},
};
constexpr Check highPressureP{206213,
                              "Error: High pressure vapor line - outlet pressure is less than or equal to zero!"};
constexpr Check highPressureT{206214, "Error: High pressure vapor line - outlet temperature is out of range!"};
constexpr Check highPressureFall{206215, "Error: High pressure vapor line - temperature change is out of range!"};
constexpr Check condenserAboveTC{206216, "Error: Condenser temperature > critical temperature (", " K)"};
constexpr Check condenserAboveBoilerT{206217, "Error: Condenser temperature > boiler temperature!"};
constexpr Check condenserAbovePC{206218, "Error: Condenser pressure > critical pressure!"};
constexpr Check condenserAboveBoilerP{206219, "Error: Condenser pressure > boiler pressure!"};
constexpr Check condenserInletP{206222, "Error: Condenser - inlet pressure > boiler pressure!"};
constexpr Check condenserOutletP{206223, "Error: Condenser - outlet pressure was less than or equal to zero!"};
constexpr DropChecks lowPressureDrop{
    {206224, "Error: Low pressure vapor line - pressure drop is out of range!"},
    {206225, "Error: Low pressure vapor line - drop of saturation temperature is out of range!"},
};
constexpr Check lowPressureT{206227, "Error: Low pressure vapor line - outlet temperature is out of range!"};
constexpr Check lowPressureFall{206228, "Error: Low pressure vapor line - temperature change is out of range!"};
constexpr Check liquidChange{206229, "Error: Liquid line - temperature change is out of range!"};

// ---- the solution ---------------------------------------------------------------------------------------------------

// Everything that a run works out; each begins with it at zero. Points by their number in flow order.
struct Cycle {
    Level boiler, condenser;
    STATEPT p1;  // boiler outlet
    STATEPT p2;  // high pressure vapor line outlet: turbine inlet
    STATEPT p3;  // turbine outlet
    STATEPT p4;  // low pressure vapor line outlet: condenser inlet
    STATEPT p5;  // condenser outlet: pump inlet, saturated liquid
    STATEPT p6;  // pump outlet
    STATEPT p7;  // liquid line outlet: boiler inlet
    OutletSetting outlet;
    PressureChange highPressure, lowPressure, liquid;
    TemperatureChange highPressureT, lowPressureT, liquidT;
    double boilerSuperheat, turbineSuperheat;
    double M, boilerHeat, condenserHeat, turbinePower, pumpPower, turbineRatio, pumpRatio, efficiency;
    Device boilerRows, highPressureRows, turbineRows, lowPressureRows, condenserRows, pumpRows, liquidRows;
};

Cycle c;

// Mean level with the drop from the bubble end to the dew end, against the direction of a condenser's flow.
void levelFromBubbleToDew(const SUBSTANCE& substance, Parameter mean, Parameter drop, Level& level) {
    condensingLevel(substance, mean, {drop.option, -drop.value}, {}, level);
    level.DP = 0.0 - level.DP;  // no negative zero
    level.DT = 0.0 - level.DT;
    level.glide = level.dew.T - level.bubble.T;
}

void boilerAndItsLines(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const Parameter mean = parameter(cycle, 1);
    if (mean.option == 1)
        refuseAbove(mean.value, substance.TC, boilerAboveTC);
    else
        refuseAbove(mean.value, substance.PC, boilerAbovePC);
    levelFromBubbleToDew(substance, mean, parameter(cycle, 3), c.boiler);
    c.boiler.DT = c.boiler.glide;  // what is reported
    const double P7 = c.boiler.inletP();
    const double P1 = c.boiler.outletP();
    refuseIf(P1 <= 0.0, boilerOutletP);
    c.outlet = superheatedOutlet(substance, parameter(cycle, 2), P1, c.boiler.dew.T, boilerOutlet, c.p1);
    c.boilerSuperheat = c.outlet.T - c.boiler.dew.T;

    c.liquid = pressureChangeBackwards(substance, parameter(cycle, 16), P7, liquidDrop, bubbleSide);

    c.highPressure = pressureChange(substance, parameter(cycle, 5), P1, dewSide, highPressureDrop);
    const double P2 = P1 - c.highPressure.DP;
    refuseIf(P2 <= 0.0, highPressureP);
    c.highPressureT = fallWithSuperheat(substance, parameter(cycle, 4), c.outlet.T, P2);
    refuseOutside(c.highPressureT.T, temperatureLimits, highPressureT);
    refuseOutside(c.highPressureT.change, changeLimits, highPressureFall);
    // Saturated vapor that loses nothing stays what it is: pressure and temperature would not tell its side.
    linePoint(substance, c.p1, c.highPressure.DP, c.highPressureT.change, P2, c.highPressureT.T, c.p2);
}

void condenserLevel(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const Parameter mean = parameter(cycle, 11);
    if (mean.option == 1) {
        refuseAbove(mean.value, substance.TC, condenserAboveTC);
        refuseIf(mean.value >= c.boiler.T, condenserAboveBoilerT);
    } else {
        refuseIf(mean.value > substance.PC, condenserAbovePC);
        refuseIf(mean.value >= c.boiler.P, condenserAboveBoilerP);
    }
    levelFromBubbleToDew(substance, mean, parameter(cycle, 13), c.condenser);
    refuseIf(c.condenser.inletP() > c.boiler.P, condenserInletP);
    refuseIf(c.condenser.outletP() <= 0.0, condenserOutletP);
}

void turbineToPump(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double P4 = c.condenser.inletP();
    c.lowPressure = pressureChangeBackwards(substance, parameter(cycle, 10), P4, lowPressureDrop);
    EXPAISOENTRO(substance, cycle.VDAT[7], c.p2, P4 + c.lowPressure.DP, c.p3);

    c.lowPressureT = temperatureFall(parameter(cycle, 9), c.p3.T);
    refuseOutside(c.lowPressureT.T, temperatureLimits, lowPressureT);
    refuseOutside(c.lowPressureT.change, changeLimits, lowPressureFall);
    if (c.lowPressureT.change == 0.0)
        PROPSIMPLEPH(substance, P4, c.p3.H, c.p4);  // may be two-phase
    else
        PROPSIMPLEPT(substance, P4, c.lowPressureT.T, c.p4);

    c.p5 = c.condenser.bubble;
    const double P7 = c.boiler.inletP();
    COMPISOENTRO(substance, cycle.VDAT[14], c.p5, P7 + c.liquid.DP, c.p6);
    c.liquidT = dischargeOutlet(substance, parameter(cycle, 15), c.p6, P7, liquidChange, c.p7);
}

void flowAndPowers(const CYCLEIN& cycle) {
    const Parameter size = parameter(cycle, 6);
    const double boilerRise = c.p1.H - c.p7.H;
    const double turbineFall = c.p2.H - c.p3.H;
    if (size.option == 1) {
        c.boilerHeat = size.value;
        c.M = c.boilerHeat / boilerRise;
        c.turbinePower = c.M * turbineFall;
    } else {
        c.turbinePower = size.value;
        c.M = c.turbinePower / turbineFall;
        c.boilerHeat = c.M * boilerRise;
    }
    c.condenserHeat = c.M * (c.p4.H - c.p5.H);
    c.pumpPower = c.M * (c.p6.H - c.p5.H);
    c.turbineRatio = c.p2.P / c.p3.P;
    c.pumpRatio = c.p6.P / c.p5.P;
    c.turbineSuperheat = c.p3.Q > 1.0 ? c.p3.T - c.condenser.dew.T : missingValue;
    const double input = c.boilerHeat + c.pumpPower;
    c.efficiency = input != 0.0 ? c.turbinePower / input : missingValue;  // none of a plant of capacity 0
}

void finishTurbineOutlet(const SUBSTANCE& substance, STATEPT& row) {
    if (row.Q > 0.0 && row.Q < 1.0)
        finishTwoPhaseRow(row);
    else
        finishRow(substance, dewSide, row);
}

void deviceRowsOfCircuit(SUBSTANCE& substance) {
    c.boilerRows = {c.p7, c.p1};
    c.highPressureRows = {c.p1, c.p2};
    c.turbineRows = {c.p2, c.p3};
    c.lowPressureRows = {c.p3, c.p4};
    c.condenserRows = {c.p4, c.p5};
    c.pumpRows = {c.p5, c.p6};
    c.liquidRows = {c.p6, c.p7};

    INITDATADOME(substance, domeStart * c.condenser.P);

    finishRow(substance, bubbleSide, c.boilerRows.inlet);
    finishRow(substance, dewSide, c.boilerRows.outlet);
    finishRows(substance, dewSide, c.highPressureRows);
    finishRow(substance, dewSide, c.turbineRows.inlet);
    finishTurbineOutlet(substance, c.turbineRows.outlet);
    finishTurbineOutlet(substance, c.lowPressureRows.inlet);
    finishRow(substance, dewSide, c.lowPressureRows.outlet);
    finishRow(substance, dewSide, c.condenserRows.inlet);
    finishRow(substance, bubbleSide, c.condenserRows.outlet);
    finishRows(substance, bubbleSide, c.pumpRows);
    finishRows(substance, bubbleSide, c.liquidRows);

    finishDevice(c.boilerRows, c.M, Heat::gained);
    finishDevice(c.pumpRows, c.M, Heat::gained);
    for (Device* device : {&c.highPressureRows, &c.turbineRows, &c.lowPressureRows, &c.condenserRows, &c.liquidRows})
        finishDevice(*device, c.M, Heat::lost);
}

// ---- the report -----------------------------------------------------------------------------------------------------

// Lines that wait for the heat source and the heat sink, which are not computed.
void reservedLines(ResultWriter& writer, int count) {
    for (int line = 1; line <= count; ++line) writer.value("Reserved", "", static_cast<float>(missingValue));
}

void writeTurbine(ResultWriter& writer, double efficiency) {
    deviceRows(writer, "TURBINE", c.turbineRows);
    writer.value("Superheat at the outlet", "K", c.turbineSuperheat);
    writer.value("Isentropic efficiency", "-", efficiency);
    writer.value("Expansion ratio", "-", c.turbineRatio);
    writer.value("Mass flow", "kg/s", c.turbineRows.M);
    writer.value("Power", "kW", c.turbinePower);
}

void writeCondenser(ResultWriter& writer) {
    deviceRows(writer, "CONDENSER", c.condenserRows);
    writer.value("Glide", "K", c.condenser.glide);
    writer.value("Drop of saturation temperature", "K", c.condenser.DT);
    writer.noValue("Unused", "", 0.0);
    writer.value("Mass flow", "kg/s", c.condenserRows.M);
    writer.value("Pressure drop", "kPa", c.condenserRows.DP);
    writer.value("Capacity", "kW", c.condenserRows.heat);
}

void writePump(ResultWriter& writer, double efficiency) {
    deviceRows(writer, "PUMP", c.pumpRows);
    writer.value("Isentropic efficiency", "-", efficiency);
    writer.value("Pressure ratio", "-", c.pumpRatio);
    writer.value("Mass flow", "kg/s", c.pumpRows.M);
    writer.value("Power", "kW", c.pumpPower);
}

void writePerformance(ResultWriter& writer, const CYCLEIN& cycle) {
    writer.heading("PERFORMANCE PARAMETERS");
    writer.value("Mass flow", "kg/s", c.M);
    writer.value("Boiler heat", "kW", c.boilerHeat);
    writer.value("Turbine power", "kW", c.turbinePower);
    writer.value("Condenser heat", "kW", c.condenserHeat);
    writer.value("Pump power", "kW", c.pumpPower);
    writer.value("Isentropic efficiency of the turbine", "-", cycle.VDAT[7]);
    writer.value("Isentropic efficiency of the pump", "-", cycle.VDAT[14]);
    reservedLines(writer, 1);
    writer.value("Efficiency of the cycle", "-", c.efficiency);
    writer.value("Temperature at the boiler outlet", "K", c.p1.T);
    writer.value("Quality at the turbine outlet", "kg/kg", c.turbineRows.outlet.Q);
    writer.value("Superheat at the turbine outlet", "K", c.turbineSuperheat);
    reservedLines(writer, 8);
    writer.value("Mean boiler temperature", "K", c.boiler.T);
    writer.value("Mean condensing temperature", "K", c.condenser.T);
}

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "BOILER", c.boilerRows, c.boiler, c.boilerSuperheat);
    lineSection(writer, "HIGH PRESSURE VAPOR LINE", c.highPressureRows, c.highPressure, c.highPressureT.change,
                Heat::lost);
    writeTurbine(writer, cycle.VDAT[7]);
    lineSection(writer, "LOW PRESSURE VAPOR LINE", c.lowPressureRows, c.lowPressure, c.lowPressureT.change, Heat::lost);
    writeCondenser(writer);
    writePump(writer, cycle.VDAT[14]);
    lineSection(writer, "LIQUID LINE", c.liquidRows, c.liquid, c.liquidT.change, Heat::lost);
    writer.heading("COOLING WATER");
    reservedLines(writer, 3);
    writer.heading("GAS EXHAUSTION");
    reservedLines(writer, 3);
    writePerformance(writer, cycle);

    const STATEPT* const points[] = {&c.p2,
                                     &c.p3,
                                     &c.p4,
                                     c.turbineSuperheat > 0.0 ? &c.condenser.dew : &c.p4,
                                     &c.condenser.bubble,
                                     &c.p5,
                                     &c.p6,
                                     &c.p7,
                                     &c.boiler.bubble,
                                     &c.boiler.dew,
                                     &c.p1,
                                     &c.p2};
    // This heading has no blank at its end in this cycle alone.
    graphs(writer, points, points, substance, "CYCLE data for graphic P-h");
    writer.close();
}

}  // namespace

void SOLRANKCYCLE(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    boilerAndItsLines(substance, cycle);
    condenserLevel(substance, cycle);
    turbineToPump(substance, cycle);
    flowAndPowers(cycle);
    deviceRowsOfCircuit(substance);
    writeResult(substance, cycle, FILEOUT);
}

}  // namespace frigana
