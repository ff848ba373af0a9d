#include "47_Transcritical.h"

#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "31_FluidInformation.h"
#include "CycleBricks.h"
#include "SecantDriver.h"
#include "TranscriticalBricks.h"

namespace frigana {

namespace {

// ---- checks, in the order in which they fire ------------------------------------------------------------------------

constexpr HighSideChecks highSide{
    {207202, "Error: Gas cooler pressure is less than or equal to critical pressure!"},
    {207204, "Error: Gas cooler - inlet pressure is less than or equal to critical pressure!"},
    {207205, "Error: Gas cooler - outlet pressure is less than or equal to critical pressure!"},
    {207206, "Error: Gas cooler - outlet temperature is out of range!"},
    {207208, "Error: Liquid line before heat exchanger - pressure drop is out of range!"},
    {207209, "Error: Liquid line before heat exchanger - outlet pressure was less than or equal to zero!"},
    {207210, "Error: Liquid line before heat exchanger - outlet temperature is out of range!"},
    {207211, "Error: Liquid line before heat exchanger - temperature change is out of range!"},
    {207213, "Error: Liquid side at heat exchanger - pressure drop is out of range!"},
    {207215, "Error: Liquid side at heat exchanger - inlet pressure is less than or equal to zero!"},
    {207216, "Error: Liquid side at heat exchanger - inlet temperature was less than or equal to zero!"},
    {207217, "Error: Liquid line after heat exchanger - pressure drop is out of range!"},
    {207219, "Error: Liquid line after heat exchanger - outlet temperature is out of range!"},
    {207220, "Error: Liquid line after heat exchanger - temperature change is out of range!"},
};
constexpr EvaporatingChecks evaporating{
    {207222, "Error: Evaporating temperature > critical temperature (", " K)"},
    {},  // there is no condensing temperature to compare with
    {207224, "Error: Evaporating pressure > critical pressure (", " kPa)"},
    {207225, "Error: Evaporating pressure > gas cooler pressure!"},
    {207228, "Error: Evaporator - inlet pressure > gas cooler pressure!"},
    {207229, "Error: Evaporator - outlet pressure was less than or equal to zero!"},
};
constexpr Check evaporatorSuperheat{207230, "Error: Evaporator - superheat is out of range!"};
constexpr SuctionChecks suctionLine{
    {{207231, "Error: Suction line before heat exchanger - pressure drop is out of range!"},
     {207232, "Error: Suction line before heat exchanger - drop of saturation temperature is out of range!"}},
    {207233, "Error: Suction line before heat exchanger - outlet pressure was less than or equal to zero!"},
    {207234, "Error: Suction line before heat exchanger - Outlet temperature > critical temperature (", " K)"},
    {207235, "Error: Suction line before heat exchanger - temperature change is out of range!"},
    {{207237, "Error: Vapor side at heat exchanger - pressure drop is out of range!"},
     {207238, "Error: Vapor side at heat exchanger - drop of saturation temperature is out of range!"}},
    {207239, "Error: Heat exchanger - the heat trasfer is negative!"},
    {207240, "Error: Vapor side at heat exchanger - temperature change is out of range!"},
    {.drop = {{207241, "Error: Suction line after heat exchanger - pressure drop is out of range!"},
              {207242, "Error: Suction line after heat exchanger - drop of saturation temperature is out of range!"}},
     .temperature = {207243, "Error: Suction line after heat exchanger - outlet temperature is out of range!"},
     .change = {207244, "Error: Suction line after heat exchanger - temperature change is out of range!"}},
};
constexpr DischargeChecks dischargeLine{
    {207246, "Error: Discharge line - pressure drop is out of range!"},
    {207248, "Error: Discharge line - temperature change is out of range!"},
};

// ---- the solution ---------------------------------------------------------------------------------------------------

// Everything that a run works out; each begins with it at zero. Points 1 to 4 are those of the high side, 7 to 9 those
// of the suction line: before the exchanger, behind it, and at the compressor.
struct Cycle {
    HighSide high;
    Level evaporator;
    STATEPT p5;  // evaporator inlet
    STATEPT p6;  // evaporator outlet
    SuctionSide suction;
    STATEPT p10;  // compressor outlet
    STATEPT p11;  // gas cooler inlet
    OutletSetting superheat;
    TemperatureChange discharge;
    Flow flow;  // that of the condenser is the gas cooler's
    double power, ratio, exchangerHeat, effectiveness;
    Performance performance;
    Device evaporatorRows, suctionBeforeRows, suctionAfterRows, compressorRows, dischargeRows, gasCoolerRows,
        liquidBeforeRows, liquidAfterRows, expansionRows, liquidSideRows, vaporSideRows;
};

Cycle c;

void evaporatorToCompressor(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double H5 = c.high.p4.H;  // expansion is isenthalpic
    // The gas cooler has no temperature level to compare with.
    c.superheat = evaporate(substance, cycle, 1, H5, c.high.gasCooler, evaporating, evaporatorSuperheat, c.evaporator,
                            c.p5, c.p6);
    suctionThroughExchanger(substance, cycle, c.p6, c.superheat.T, c.high, suctionLine, c.suction);
}

void flowsAndPerformance(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const auto& [gasCooler, p1, p2, p3, p4, before, after, fall] = c.high;
    const STATEPT& p7 = c.suction.beforeOutlet;
    const STATEPT& p9 = c.suction.afterOutlet;
    c.flow = massFlow(parameter(cycle, 8), p9.D, cycle.VDAT[10], c.p11.H - p1.H, c.p6.H - c.p5.H);
    c.power = c.flow.M * (c.p10.H - p9.H);
    c.ratio = c.p10.P / p9.P;
    c.performance = performanceOf(c.flow.evaporator, c.flow.condenser, c.power);
    c.exchangerHeat = c.flow.M * (p2.H - p3.H);
    c.effectiveness = exchangerEffectiveness(substance, c.flow.M, p2, p3, p7, c.suction.vaporOutlet);
}

void deviceRowsOfCircuit(SUBSTANCE& substance, const Text255& FILEOUT) {
    c.evaporatorRows = {c.p5, c.p6};
    c.suctionBeforeRows = {c.p6, c.suction.beforeOutlet};
    c.suctionAfterRows = {c.suction.vaporOutlet, c.suction.afterOutlet};
    c.compressorRows = {c.suction.afterOutlet, c.p10};
    c.dischargeRows = {c.p10, c.p11};
    c.gasCoolerRows = {c.p11, c.high.p1};
    c.liquidBeforeRows = {c.high.p1, c.high.p2};
    c.liquidAfterRows = {c.high.p3, c.high.p4};
    c.expansionRows = {c.high.p4, c.p5};
    c.liquidSideRows = {c.high.p2, c.high.p3};
    c.vaporSideRows = {c.suction.beforeOutlet, c.suction.vaporOutlet};

    INITDATADOME(substance, domeStart * c.evaporator.P, !isTrial(FILEOUT));

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

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    const double M = c.flow.M;
    const Efficiencies efficiencies{cycle.VDAT[9], cycle.VDAT[10]};
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "EVAPORATOR", c.evaporatorRows, c.evaporator, c.superheat.degree);
    lineSection(writer, "SUCTION LINE - BEFORE HEAT EXCHANGER", c.suctionBeforeRows, c.suction.beforeDrop,
                c.suction.before.change, Heat::gained);
    lineSection(writer, "SUCTION LINE - AFTER HEAT EXCHANGER", c.suctionAfterRows, c.suction.after, Heat::gained);
    highSideCompressorSection(writer, "COMPRESSOR", c.compressorRows, efficiencies, c.flow.V, c.ratio,
                              c.compressorRows.M, c.power);
    highSideLineSection(writer, "DISCHARGE LINE", c.dischargeRows, c.discharge.change);
    gasCoolerSection(writer, c.gasCoolerRows);
    highSideLineSection(writer, "LIQUID LINE - BEFORE HEAT EXCHANGER", c.liquidBeforeRows, c.high.before.change);
    highSideLineSection(writer, "LIQUID LINE - AFTER HEAT EXCHANGER", c.liquidAfterRows, c.high.after.change);
    highSideExpansionSection(writer, "EXPANSION DEVICE", c.expansionRows);
    exchangerSection(writer, c.liquidSideRows, c.high.fall, c.vaporSideRows, c.suction, c.exchangerHeat);

    writer.heading("PERFORMANCE PARAMETERS");
    flowRows(writer, M, c.flow.V, c.evaporatorRows.heat, c.gasCoolerRows.heat, c.power, efficiencies,
             "Gas cooler capacity");
    performanceRows(writer, c.performance);
    writer.value("Superheat at the evaporator outlet", "K", c.superheat.degree);
    writer.value("Superheat at the compressor inlet", "K", c.suction.after.temperature.degree);
    writer.value("Specific cooling effect", "kJ/kg", c.evaporatorRows.heat / M);
    writer.value("Specific heat rejection", "kJ/kg", c.gasCoolerRows.heat / M);
    writer.value("Heat exchanged", "kW", c.exchangerHeat);
    writer.value("Exchanger effectiveness", "-", c.effectiveness);
    writer.value("Mean of gas cooler inlet and outlet temperature", "K", (c.p11.T + c.high.p1.T) / 2.0);
    writer.value("Mean evaporating temperature", "K", c.evaporator.T);

    const STATEPT* const points[] = {&c.suction.afterOutlet,
                                     &c.p10,
                                     &c.p11,
                                     &c.high.p1,
                                     &c.high.p2,
                                     &c.high.p3,
                                     &c.high.p4,
                                     &c.p5,
                                     &c.evaporator.dew,
                                     &c.p6,
                                     &c.suction.beforeOutlet,
                                     &c.suction.vaporOutlet,
                                     &c.suction.afterOutlet};
    graphs(writer, points, substance);
    writer.close();
}

// Line of the result that holds what parameter 20 asks for, by its option.
constexpr int exchangerLines[] = {0, 212, 0, 167, 189, 181};
constexpr double firstFall = 1.0;  // K

}  // namespace

void SOLTRANSCRICYCLE_MATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    gasCoolerToExpansion(substance, cycle, highSide, c.high);
    evaporatorToCompressor(substance, cycle);
    compressorToGasCooler(substance, cycle, c.suction.afterOutlet, c.high.gasCooler.inletP(), dischargeLine, c.p10,
                          c.discharge, c.p11);
    flowsAndPerformance(substance, cycle);
    deviceRowsOfCircuit(substance, FILEOUT);
    writeResult(substance, cycle, FILEOUT);
}

void SOLTRANSCRICYCLE(SUBSTANCE& substance, CYCLEIN& cycle, const Text255& FILEOUT) {
    normaliseExchanger(cycle);
    solveExchanger(substance, cycle, exchangerLines, firstFall, FILEOUT, SOLTRANSCRICYCLE_MATRIZ);
}

}  // namespace frigana
