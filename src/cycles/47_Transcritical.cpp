#include "47_Transcritical.h"

#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "23_SpecificPoints.h"
#include "28_IsentropProcess.h"
#include "31_FluidInformation.h"
#include "CycleBricks.h"
#include "SecantDriver.h"

namespace frigana {

namespace {

// ---- checks, in the order in which they fire ------------------------------------------------------------------------

constexpr Check gasCoolerP{207202, "Error: Gas cooler pressure is less than or equal to critical pressure!"};
constexpr Check gasCoolerInletP{207204,
                                "Error: Gas cooler - inlet pressure is less than or equal to critical pressure!"};
constexpr Check gasCoolerOutletP{207205,
                                 "Error: Gas cooler - outlet pressure is less than or equal to critical pressure!"};
constexpr Check gasCoolerOutletT{207206, "Error: Gas cooler - outlet temperature is out of range!"};
constexpr Check liquidBeforeDrop{207208, "Error: Liquid line before heat exchanger - pressure drop is out of range!"};
constexpr Check liquidBeforeP{
    207209, "Error: Liquid line before heat exchanger - outlet pressure was less than or equal to zero!"};
constexpr Check liquidBeforeT{207210, "Error: Liquid line before heat exchanger - outlet temperature is out of range!"};
constexpr Check liquidBeforeFall{207211,
                                 "Error: Liquid line before heat exchanger - temperature change is out of range!"};
constexpr Check liquidSideDrop{207213, "Error: Liquid side at heat exchanger - pressure drop is out of range!"};
constexpr Check liquidSideP{207215,
                            "Error: Liquid side at heat exchanger - inlet pressure is less than or equal to zero!"};
constexpr Check liquidSideT{207216,
                            "Error: Liquid side at heat exchanger - inlet temperature was less than or equal to zero!"};
constexpr Check liquidAfterDrop{207217, "Error: Liquid line after heat exchanger - pressure drop is out of range!"};
constexpr Check liquidAfterT{207219, "Error: Liquid line after heat exchanger - outlet temperature is out of range!"};
constexpr Check liquidAfterFall{207220,
                                "Error: Liquid line after heat exchanger - temperature change is out of range!"};
constexpr EvaporatingChecks evaporating{
    {207222, "Error: Evaporating temperature > critical temperature (", " K)"},
    {},  // there is no condensing temperature to compare with
    {207224, "Error: Evaporating pressure > critical pressure (", " kPa)"},
    {207225, "Error: Evaporating pressure > gas cooler pressure!"},
    {207228, "Error: Evaporator - inlet pressure > gas cooler pressure!"},
    {207229, "Error: Evaporator - outlet pressure was less than or equal to zero!"},
};
constexpr Check evaporatorSuperheat{207230, "Error: Evaporator - superheat is out of range!"};
constexpr DropChecks suctionBeforeDrop{
    {207231, "Error: Suction line before heat exchanger - pressure drop is out of range!"},
    {207232, "Error: Suction line before heat exchanger - drop of saturation temperature is out of range!"},
};
constexpr Check suctionBeforeP{
    207233, "Error: Suction line before heat exchanger - outlet pressure was less than or equal to zero!"};
constexpr Check suctionBeforeAboveTC{
    207234, "Error: Suction line before heat exchanger - Outlet temperature > critical temperature (", " K)"};
constexpr Check suctionBeforeRise{207235,
                                  "Error: Suction line before heat exchanger - temperature change is out of range!"};
constexpr DropChecks vaporSideDrop{
    {207237, "Error: Vapor side at heat exchanger - pressure drop is out of range!"},
    {207238, "Error: Vapor side at heat exchanger - drop of saturation temperature is out of range!"},
};
constexpr Check negativeHeat{207239, "Error: Heat exchanger - the heat trasfer is negative!"};
constexpr Check vaporSideRise{207240, "Error: Vapor side at heat exchanger - temperature change is out of range!"};
constexpr DropChecks suctionAfterDrop{
    {207241, "Error: Suction line after heat exchanger - pressure drop is out of range!"},
    {207242, "Error: Suction line after heat exchanger - drop of saturation temperature is out of range!"},
};
constexpr Check suctionAfterT{207243, "Error: Suction line after heat exchanger - outlet temperature is out of range!"};
constexpr Check suctionAfterRise{207244,
                                 "Error: Suction line after heat exchanger - temperature change is out of range!"};
constexpr Check dischargeDrop{207246, "Error: Discharge line - pressure drop is out of range!"};
constexpr Check dischargeFall{207248, "Error: Discharge line - temperature change is out of range!"};

// ---- the solution ---------------------------------------------------------------------------------------------------

// Everything that a run works out; each begins with it at zero. Points by their number in flow order.
struct Cycle {
    Level gasCooler, evaporator;  // the gas cooler has pressures only
    STATEPT p1;                   // gas cooler outlet
    STATEPT p2;                   // line before the exchanger, outlet
    STATEPT p3;                   // exchanger, hot outlet
    STATEPT p4;                   // line after the exchanger, outlet: expansion device inlet
    STATEPT p5;                   // evaporator inlet
    STATEPT p6;                   // evaporator outlet
    STATEPT p7;                   // suction line before the exchanger, outlet
    STATEPT p8;                   // exchanger, vapor outlet
    STATEPT p9;                   // suction line after the exchanger, outlet: compressor inlet
    STATEPT p10;                  // compressor outlet
    STATEPT p11;                  // gas cooler inlet
    OutletSetting superheat;
    PressureChange suctionBefore, vaporSide, suctionAfter;
    TemperatureChange liquidBeforeT, liquidAfterT, suctionBeforeT, suctionAfterT, dischargeT;
    double liquidFall, vaporRise;
    Flow flow;  // that of the condenser is the gas cooler's
    double power, ratio, exchangerHeat, effectiveness;
    Performance performance;
    Device evaporatorRows, suctionBeforeRows, suctionAfterRows, compressorRows, dischargeRows, gasCoolerRows,
        liquidBeforeRows, liquidAfterRows, expansionRows, liquidSideRows, vaporSideRows;
};

Cycle c;

// Above the critical pressure there is no saturation temperature: drops are given in kPa only.
double pressureDrop(const CYCLEIN& cycle, int k, const Check& check) {
    const double DP = cycle.VDAT[k];
    refuseOutside(DP, pressureDropLimits, check);
    return DP;
}

void gasCoolerToExpansion(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.gasCooler.P = cycle.VDAT[13];
    c.gasCooler.DP = cycle.VDAT[15];
    refuseIf(c.gasCooler.P <= substance.PC, gasCoolerP);
    refuseIf(c.gasCooler.inletP() <= substance.PC, gasCoolerInletP);
    const double P1 = c.gasCooler.outletP();
    refuseIf(P1 <= substance.PC, gasCoolerOutletP);
    const double T1 = cycle.VDAT[14];
    refuseOutside(T1, temperatureLimits, gasCoolerOutletT);
    PROPSIMPLEPT(substance, P1, T1, c.p1);

    const double P2 = P1 - pressureDrop(cycle, 17, liquidBeforeDrop);
    refuseIf(P2 <= 0.0, liquidBeforeP);
    c.liquidBeforeT = temperatureFall(parameter(cycle, 16), T1);
    const double T2 = c.liquidBeforeT.T;
    refuseOutside(T2, temperatureLimits, liquidBeforeT);
    refuseOutside(c.liquidBeforeT.change, changeLimits, liquidBeforeFall);
    PROPSIMPLEPT(substance, P2, T2, c.p2);

    c.liquidFall = cycle.VDAT[20];
    const double liquidSideDP = pressureDrop(cycle, 21, liquidSideDrop);
    const double P3 = P2 - liquidSideDP;
    const double T3 = T2 - c.liquidFall;
    refuseIf(P3 <= 0.0, liquidSideP);
    refuseIf(T3 <= 0.0, liquidSideT);
    linePoint(substance, c.p2, liquidSideDP, c.liquidFall, P3, T3, c.p3);

    const double P4 = P3 - pressureDrop(cycle, 19, liquidAfterDrop);
    c.liquidAfterT = temperatureFall(parameter(cycle, 18), T3);
    refuseOutside(c.liquidAfterT.T, temperatureLimits, liquidAfterT);
    refuseOutside(c.liquidAfterT.change, changeLimits, liquidAfterFall);
    PROPSIMPLEPT(substance, P4, c.liquidAfterT.T, c.p4);
}

void evaporatorToCompressor(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double H5 = c.p4.H;  // expansion is isenthalpic
    evaporatingLevel(substance, parameter(cycle, 1), parameter(cycle, 3), H5, 0.0, c.gasCooler.P, evaporating,
                     c.evaporator);
    PROPSIMPLEPH(substance, c.evaporator.inletP(), H5, c.p5);
    const double P6 = c.evaporator.outletP();
    c.superheat = superheatedOutlet(substance, parameter(cycle, 2), P6, c.evaporator.dew.T, evaporatorSuperheat, c.p6);

    c.suctionBefore = pressureChange(substance, parameter(cycle, 5), P6, dewSide, suctionBeforeDrop);
    const double P7 = P6 - c.suctionBefore.DP;
    refuseIf(P7 <= 0.0, suctionBeforeP);
    c.suctionBeforeT = temperatureRise(parameter(cycle, 4), c.superheat.T);
    const double T7 = c.suctionBeforeT.T;
    refuseAbove(T7, substance.TC, suctionBeforeAboveTC);
    refuseOutside(c.suctionBeforeT.change, changeLimits, suctionBeforeRise);
    linePoint(substance, c.p6, c.suctionBefore.DP, c.suctionBeforeT.change, P7, T7, c.p7);

    c.vaporSide = pressureChange(substance, parameter(cycle, 22), P7, dewSide, vaporSideDrop);
    const double P8 = P7 - c.vaporSide.DP;
    refuseIf(c.p3.H > c.p2.H, negativeHeat);
    exchangerOutlet(substance, c.p7, P8, c.p7.H + (c.p2.H - c.p3.H), c.p8);
    c.vaporRise = c.p8.T - T7;
    refuseOutside(c.vaporRise, changeLimits, vaporSideRise);

    c.suctionAfter = pressureChange(substance, parameter(cycle, 7), P8, dewSide, suctionAfterDrop);
    const double P9 = P8 - c.suctionAfter.DP;
    c.suctionAfterT = riseWithSuperheat(substance, parameter(cycle, 6), c.p8.T, P9);
    refuseOutside(c.suctionAfterT.T, temperatureLimits, suctionAfterT);
    refuseOutside(c.suctionAfterT.change, changeLimits, suctionAfterRise);
    linePoint(substance, c.p8, c.suctionAfter.DP, c.suctionAfterT.change, P9, c.suctionAfterT.T, c.p9);
}

void compressorToGasCooler(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double P11 = c.gasCooler.inletP();
    const double P10 = P11 + pressureDrop(cycle, 12, dischargeDrop);
    COMPISOENTRO(substance, cycle.VDAT[9], c.p9, P10, c.p10);
    c.dischargeT = temperatureFall(parameter(cycle, 11), c.p10.T);
    refuseOutside(c.dischargeT.change, changeLimits, dischargeFall);
    PROPSIMPLEPT(substance, P11, c.dischargeT.T, c.p11);
}

void flowsAndPerformance(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.flow = massFlow(parameter(cycle, 8), c.p9.D, cycle.VDAT[10], c.p11.H - c.p1.H, c.p6.H - c.p5.H);
    c.power = c.flow.M * (c.p10.H - c.p9.H);
    c.ratio = c.p10.P / c.p9.P;
    c.performance = performanceOf(c.flow.evaporator, c.flow.condenser, c.power);
    c.exchangerHeat = c.flow.M * (c.p2.H - c.p3.H);
    c.effectiveness =
        c.exchangerHeat / (c.flow.M * smallerHeatCapacity(substance, c.p2, c.p3, c.p7, c.p8) * (c.p2.T - c.p7.T));
}

void deviceRowsOfCircuit(SUBSTANCE& substance) {
    c.evaporatorRows = {c.p5, c.p6};
    c.suctionBeforeRows = {c.p6, c.p7};
    c.suctionAfterRows = {c.p8, c.p9};
    c.compressorRows = {c.p9, c.p10};
    c.dischargeRows = {c.p10, c.p11};
    c.gasCoolerRows = {c.p11, c.p1};
    c.liquidBeforeRows = {c.p1, c.p2};
    c.liquidAfterRows = {c.p3, c.p4};
    c.expansionRows = {c.p4, c.p5};
    c.liquidSideRows = {c.p2, c.p3};
    c.vaporSideRows = {c.p7, c.p8};

    INITDATADOME(substance, domeStart * c.evaporator.P);

    // The rows of the high side show neither quality nor saturation temperature.
    finishTwoPhaseRow(c.evaporatorRows.inlet);
    finishTwoPhaseRow(c.expansionRows.outlet);
    for (Device* device : {&c.suctionBeforeRows, &c.suctionAfterRows, &c.vaporSideRows})
        finishRows(substance, dewSide, *device);
    finishRow(substance, dewSide, c.evaporatorRows.outlet);
    finishRow(substance, dewSide, c.compressorRows.inlet);

    const double M = c.flow.M;
    for (Device* device :
         {&c.evaporatorRows, &c.suctionBeforeRows, &c.suctionAfterRows, &c.compressorRows, &c.vaporSideRows})
        finishDevice(*device, M, Heat::gained);
    for (Device* device : {&c.dischargeRows, &c.gasCoolerRows, &c.liquidBeforeRows, &c.liquidAfterRows,
                           &c.expansionRows, &c.liquidSideRows})
        finishDevice(*device, M, Heat::lost);
}

// ---- the report -----------------------------------------------------------------------------------------------------

void writeCompressor(ResultWriter& writer, const Efficiencies& efficiencies) {
    writer.heading("COMPRESSOR");
    stateRow(writer, "Inlet", c.compressorRows.inlet);
    shortStateRow(writer, "Outlet", c.compressorRows.outlet);
    compressorRows(writer, efficiencies, c.flow.V, c.ratio, c.compressorRows.M, c.power);
}

void highSideLine(ResultWriter& writer, std::string_view heading, const Device& line, double fall) {
    writer.heading(heading);
    shortStateRow(writer, "Inlet", line.inlet);
    shortStateRow(writer, "Outlet", line.outlet);
    writer.value("Pressure drop", "kPa", line.DP);
    writer.value("Temperature fall", "K", fall);
    writer.value("Mass flow", "kg/s", line.M);
    writer.value("Heat loss", "kW", line.heat);
}

void writeGasCooler(ResultWriter& writer) {
    writer.heading("GAS COOLER");
    shortStateRow(writer, "Inlet", c.gasCoolerRows.inlet);
    shortStateRow(writer, "Outlet", c.gasCoolerRows.outlet);
    writer.value("Mass flow", "kg/s", c.gasCoolerRows.M);
    writer.value("Pressure drop", "kPa", c.gasCoolerRows.DP);
    writer.value("Capacity", "kW", c.gasCoolerRows.heat);
}

void writeExpansion(ResultWriter& writer) {
    writer.heading("EXPANSION DEVICE");
    shortStateRow(writer, "Inlet", c.expansionRows.inlet);
    stateRow(writer, "Outlet", c.expansionRows.outlet);
    expansionRows(writer, c.expansionRows);
}

void writeExchanger(ResultWriter& writer) {
    writer.heading("HEAT EXCHANGER (SUCTION LINE - LIQUID LINE)");
    shortStateRow(writer, "Hot inlet", c.liquidSideRows.inlet);
    shortStateRow(writer, "Hot outlet", c.liquidSideRows.outlet);
    writer.group("Hot side");
    writer.value("pressure drop", "kPa", c.liquidSideRows.DP);
    writer.value("temperature fall", "K", c.liquidFall);
    writer.group({});
    stateRow(writer, "Vapor inlet", c.vaporSideRows.inlet);
    stateRow(writer, "Vapor outlet", c.vaporSideRows.outlet);
    exchangerVaporRows(writer, c.vaporSideRows, c.vaporSide, c.vaporRise);
    writer.value("Mass flow of the hot side", "kg/s", c.liquidSideRows.M);
    writer.value("Mass flow of the vapor", "kg/s", c.vaporSideRows.M);
    writer.value("Heat exchanged", "kW", c.exchangerHeat);
}

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    const double M = c.flow.M;
    const Efficiencies efficiencies{cycle.VDAT[9], cycle.VDAT[10]};
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "EVAPORATOR", c.evaporatorRows, c.evaporator, c.superheat.degree);
    lineSection(writer, "SUCTION LINE - BEFORE HEAT EXCHANGER", c.suctionBeforeRows, c.suctionBefore,
                "Temperature rise", c.suctionBeforeT.change, "Heat gain");
    lineSection(writer, "SUCTION LINE - AFTER HEAT EXCHANGER", c.suctionAfterRows, c.suctionAfter, "Temperature rise",
                c.suctionAfterT.change, "Heat gain");
    writeCompressor(writer, efficiencies);
    highSideLine(writer, "DISCHARGE LINE", c.dischargeRows, c.dischargeT.change);
    writeGasCooler(writer);
    highSideLine(writer, "LIQUID LINE - BEFORE HEAT EXCHANGER", c.liquidBeforeRows, c.liquidBeforeT.change);
    highSideLine(writer, "LIQUID LINE - AFTER HEAT EXCHANGER", c.liquidAfterRows, c.liquidAfterT.change);
    writeExpansion(writer);
    writeExchanger(writer);

    writer.heading("PERFORMANCE PARAMETERS");
    flowRows(writer, M, c.flow.V, c.evaporatorRows.heat, c.gasCoolerRows.heat, c.power, efficiencies,
             "Gas cooler capacity");
    performanceRows(writer, c.performance);
    writer.value("Superheat at the evaporator outlet", "K", c.superheat.degree);
    writer.value("Superheat at the compressor inlet", "K", c.suctionAfterT.degree);
    writer.value("Specific cooling effect", "kJ/kg", c.evaporatorRows.heat / M);
    writer.value("Specific heat rejection", "kJ/kg", c.gasCoolerRows.heat / M);
    writer.value("Heat exchanged", "kW", c.exchangerHeat);
    writer.value("Exchanger effectiveness", "-", c.effectiveness);
    writer.value("Mean of gas cooler inlet and outlet temperature", "K", (c.p11.T + c.p1.T) / 2.0);
    writer.value("Mean evaporating temperature", "K", c.evaporator.T);

    const STATEPT* const points[] = {&c.p9, &c.p10, &c.p11, &c.p1, &c.p2, &c.p3, &c.p4, &c.p5, &c.evaporator.dew,
                                     &c.p6, &c.p7,  &c.p8,  &c.p9};
    graphs(writer, points, substance);
    writer.close();
}

// Line of the result that holds what parameter 20 asks for, by its option.
constexpr int exchangerLines[] = {0, 212, 0, 167, 189, 181};
constexpr double firstFall = 1.0;  // K

// No exchanger, in whichever way that is asked for. An outlet temperature of 0 is a temperature.
void normaliseExchanger(CYCLEIN& cycle) {
    const Parameter exchanger = parameter(cycle, 20);
    if (exchanger.value == 0.0 && (exchanger.option == 1 || exchanger.option == 2 || exchanger.option == 4)) {
        cycle.TDAT[20] = 2;
        cycle.VDAT[20] = 0.0;
    }
}

}  // namespace

void SOLTRANSCRICYCLE_MATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    gasCoolerToExpansion(substance, cycle);
    evaporatorToCompressor(substance, cycle);
    compressorToGasCooler(substance, cycle);
    flowsAndPerformance(substance, cycle);
    deviceRowsOfCircuit(substance);
    writeResult(substance, cycle, FILEOUT);
}

void SOLTRANSCRICYCLE(SUBSTANCE& substance, CYCLEIN& cycle, const Text255& FILEOUT) {
    normaliseExchanger(cycle);
    solveExchanger(substance, cycle, exchangerLines, firstFall, FILEOUT, SOLTRANSCRICYCLE_MATRIZ);
}

}  // namespace frigana
