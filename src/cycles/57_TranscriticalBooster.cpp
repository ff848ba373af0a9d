#include "57_TranscriticalBooster.h"

#include <algorithm>

#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "23_SpecificPoints.h"
#include "25_SubCoolSupHeat.h"
#include "28_IsentropProcess.h"
#include "31_FluidInformation.h"
#include "CycleBricks.h"
#include "SecantDriver.h"
#include "TranscriticalBricks.h"

namespace frigana {

namespace {

// ---- checks, in the order in which they fire ------------------------------------------------------------------------

constexpr HighSideChecks highSide{
    {214202, "Error: Gas cooler pressure is less than or equal to critical pressure!"},
    {214204, "Error: Gas cooler - inlet pressure is less than or equal to critical pressure!"},
    {214205, "Error: Gas cooler - outlet pressure is less than or equal to critical pressure!"},
    {214206, "Error: Gas cooler - outlet temperature is out of range!"},
    {214208, "Error: Liquid line before heat exchanger - pressure drop is out of range!"},
    {214209, "Error: Liquid line before heat exchanger - outlet pressure was less than or equal to zero!"},
    {214210, "Error: Liquid line before heat exchanger - outlet temperature is out of range!"},
    {214211, "Error: Liquid line before heat exchanger - temperature change is out of range!"},
    {214213, "Error: Liquid side at heat exchanger - pressure drop is out of range!"},
    {214215, "Error: Liquid side at heat exchanger - inlet pressure is less than or equal to zero!"},
    {214216, "Error: Liquid side at heat exchanger - inlet temperature was less than or equal to zero!"},
    {214217, "Error: Liquid line after heat exchanger - pressure drop is out of range!"},
    {214219, "Error: Liquid line after heat exchanger - outlet temperature is out of range!"},
    {214220, "Error: Liquid line after heat exchanger - temperature change is out of range!"},
};
constexpr Check receiverP{214222, "Error: Receiver pressure >= critical pressure!"};
constexpr EvaporatingChecks mediumTemperature{
    {214223, "Error: MT Evaporating temperature > critical temperature (", " K)"},
    {},  // there is no condensing temperature to compare with
    {214225, "Error: MT Evaporating pressure > critical pressure (", " kPa)"},
    {214226, "Error: MT Evaporating pressure > gas cooler pressure!"},
    {214229, "Error: MT Evaporator - inlet pressure > gas cooler pressure!"},
    {214230, "Error: MT Evaporator - outlet pressure was less than or equal to zero!"},
};
constexpr Check mediumTemperatureSuperheat{214231, "Error: MT Evaporator - superheat is out of range!"};
constexpr EvaporatingChecks lowTemperature{
    {214232, "Error: LT Evaporating temperature > critical temperature (", " K)"},
    {},  // there is no condensing temperature to compare with
    {214234, "Error: LT Evaporating pressure > critical pressure (", " kPa)"},
    {214235, "Error: LT Evaporating pressure > gas cooler pressure!"},
    {214238, "Error: LT Evaporator - inlet pressure > gas cooler pressure!"},
    {214239, "Error: LT Evaporator - outlet pressure was less than or equal to zero!"},
};
constexpr Check lowTemperatureSuperheat{214240, "Error: LT Evaporator - superheat is out of range!"};
constexpr Check bypassP{214242,
                        "Error: Bypass valve (expansion device) - outlet pressure was less than or equal to zero!"};
constexpr Check suctionInletP{
    214243, "Error: Suction line before heat exchanger - inlet pressure was less than or equal to zero!"};
constexpr SuctionChecks suctionLine{
    {{214244, "Error: Suction line before heat exchanger - pressure drop is out of range!"},
     {214245, "Error: Suction line before heat exchanger - drop of saturation temperature is out of range!"}},
    {214246, "Error: Suction line before heat exchanger - outlet pressure was less than or equal to zero!"},
    {214247, "Error: Suction line before heat exchanger - Outlet temperature > critical temperature (", " K)"},
    {214248, "Error: Suction line before heat exchanger - temperature change is out of range!"},
    {{214250, "Error: Vapor side at heat exchanger - pressure drop is out of range!"},
     {214251, "Error: Vapor side at heat exchanger - drop of saturation temperature is out of range!"}},
    {214252, "Error: Heat exchanger - the heat trasfer is negative!"},
    {214253, "Error: Vapor side at heat exchanger - temperature change is out of range!"},
    {.drop = {{214254, "Error: Suction line after heat exchanger - pressure drop is out of range!"},
              {214255, "Error: Suction line after heat exchanger - drop of saturation temperature is out of range!"}},
     .temperature = {214256, "Error: Suction line after heat exchanger - outlet temperature is out of range!"},
     .change = {214257, "Error: Suction line after heat exchanger - temperature change is out of range!"}},
};
constexpr DischargeChecks dischargeLine{
    {214259, "Error: Discharge line - pressure drop is out of range!"},
    {214262, "Error: Discharge line - temperature change is out of range!"},
};

// ---- the solution ---------------------------------------------------------------------------------------------------

struct Evaporator {
    Level level;
    STATEPT inlet, outlet;
    OutletSetting superheat;
};

// What the two capacities and their sum are, by which of them are given.
struct Capacities {
    double total, medium, low;
};

// Everything that a run works out; each begins with it at zero.
struct Cycle {
    HighSide high;
    STATEPT receiver, flashGas, liquid;  // points 5, 6, 7
    Evaporator medium, low;              // 8, 9; 10, 11
    STATEPT lowStageOutlet;              // 12
    STATEPT vapors;                      // 13: MT vapor and low stage discharge, mixed
    STATEPT bypass;                      // 14: bypass valve outlet
    STATEPT mixture;                     // 15: suction line inlet
    SuctionSide suction;                 // 16, 17, 18
    STATEPT highStageOutlet;             // 19
    STATEPT gasCoolerInlet;              // 20
    TemperatureChange discharge;
    Capacities capacity;
    double totalM, flashM, liquidM, mediumM, lowM;
    double highV, lowV;
    double lowSuperheat;  // of the vapor that the low stage takes in
    double highPower, lowPower, highRatio, exchangerHeat, effectiveness;
    Performance performance;
    Device mediumRows, lowRows, suctionBeforeRows, suctionAfterRows, highStageRows, lowStageRows, dischargeRows,
        gasCoolerRows, liquidBeforeRows, liquidAfterRows, highPressureValveRows, bypassRows, mediumExpansionRows,
        lowExpansionRows, liquidSideRows, vaporSideRows;
};

Cycle c;

void receiver(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double P = cycle.VDAT[23];
    refuseIf(P >= substance.PC, receiverP);
    PROPSIMPLEPH(substance, P, c.high.p4.H, c.receiver);  // expansion is isenthalpic
    PROPSIMPLEPQ(substance, P, 1.0, c.flashGas);
    PROPSIMPLEPQ(substance, P, 0.0, c.liquid);
}

void evaporatorsToLowStage(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double inletH = c.liquid.H;
    c.medium.superheat = evaporate(substance, cycle, 1, inletH, c.high.gasCooler, mediumTemperature,
                                   mediumTemperatureSuperheat, c.medium.level, c.medium.inlet, c.medium.outlet);
    c.low.superheat = evaporate(substance, cycle, 24, inletH, c.high.gasCooler, lowTemperature, lowTemperatureSuperheat,
                                c.low.level, c.low.inlet, c.low.outlet);
    SUPHEATDEGREE_TIN(substance, c.low.outlet.P, c.low.superheat.T, c.lowSuperheat);
    // The low stage delivers to the outlet of the MT evaporator, without a line of its own.
    COMPISOENTRO(substance, cycle.VDAT[27], c.low.outlet, c.medium.outlet.P, c.lowStageOutlet);
}

//   Given   first   option 1: of the MT evaporator, 2: of both
//           second  option 1: of the LT evaporator, 2: fraction of the MT evaporator, 3: fraction of the LT evaporator
Capacities capacities(Parameter first, Parameter second) {
    const bool totalGiven = first.option == 2;
    if (second.option == 1) {
        const double low = second.value;
        if (totalGiven) return {first.value, first.value - low, low};
        return {first.value + low, first.value, low};
    }
    const double mediumFraction = second.option == 2 ? second.value : 1.0 - second.value;
    const double lowFraction = second.option == 2 ? 1.0 - second.value : second.value;
    if (totalGiven) return {first.value, mediumFraction * first.value, lowFraction * first.value};
    const double total = first.value / mediumFraction;
    return {total, first.value, lowFraction * total};
}

void flows(const CYCLEIN& cycle) {
    c.capacity = capacities(parameter(cycle, 8), parameter(cycle, 28));
    c.mediumM = c.capacity.medium / (c.medium.outlet.H - c.medium.inlet.H);
    c.lowM = c.capacity.low / (c.low.outlet.H - c.low.inlet.H);
    c.liquidM = c.mediumM + c.lowM;
    // A receiver that is fed with subcooled liquid has no flash gas.
    const double quality = std::clamp(c.receiver.Q, 0.0, 1.0);
    c.totalM = c.liquidM / (1.0 - quality);
    c.flashM = c.totalM * quality;
}

void mixing(const SUBSTANCE& substance) {
    const double P = c.medium.outlet.P;
    PROPSIMPLEPH(substance, P, (c.mediumM * c.medium.outlet.H + c.lowM * c.lowStageOutlet.H) / c.liquidM, c.vapors);
    refuseIf(P <= 0.0, bypassP);
    PROPSIMPLEPH(substance, P, c.flashGas.H, c.bypass);
    refuseIf(P <= 0.0, suctionInletP);
    PROPSIMPLEPH(substance, P, (c.flashM * c.bypass.H + c.liquidM * c.vapors.H) / c.totalM, c.mixture);
}

void performance(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const STATEPT& p2 = c.high.p2;
    const STATEPT& p3 = c.high.p3;
    const STATEPT& p16 = c.suction.beforeOutlet;
    const STATEPT& p18 = c.suction.afterOutlet;
    c.highV = c.totalM / (p18.D * cycle.VDAT[10]);
    c.lowV = c.lowM / (c.low.outlet.D * cycle.VDAT[29]);
    c.highPower = c.totalM * (c.highStageOutlet.H - p18.H);
    c.highRatio = c.highStageOutlet.P / p18.P;
    c.lowPower = c.lowM * (c.lowStageOutlet.H - c.low.outlet.H);
    const double gasCoolerHeat = c.totalM * (c.gasCoolerInlet.H - c.high.p1.H);
    c.performance = performanceOf(c.capacity.total, gasCoolerHeat, c.highPower + c.lowPower);
    c.exchangerHeat = c.totalM * (p2.H - p3.H);
    c.effectiveness = exchangerEffectiveness(substance, c.totalM, p2, p3, p16, c.suction.vaporOutlet);
}

void deviceRowsOfCircuit(SUBSTANCE& substance) {
    const auto& [gasCooler, p1, p2, p3, p4, before, after, fall] = c.high;
    c.mediumRows = {c.medium.inlet, c.medium.outlet};
    c.lowRows = {c.low.inlet, c.low.outlet};
    c.suctionBeforeRows = {c.mixture, c.suction.beforeOutlet};
    c.suctionAfterRows = {c.suction.vaporOutlet, c.suction.afterOutlet};
    c.highStageRows = {c.suction.afterOutlet, c.highStageOutlet};
    c.lowStageRows = {c.low.outlet, c.lowStageOutlet};
    c.dischargeRows = {c.highStageOutlet, c.gasCoolerInlet};
    c.gasCoolerRows = {c.gasCoolerInlet, p1};
    c.liquidBeforeRows = {p1, p2};
    c.liquidAfterRows = {p3, p4};
    c.highPressureValveRows = {p4, c.receiver};
    c.bypassRows = {c.flashGas, c.bypass};
    c.mediumExpansionRows = {c.liquid, c.medium.inlet};
    c.lowExpansionRows = {c.liquid, c.low.inlet};
    c.liquidSideRows = {p2, p3};
    c.vaporSideRows = {c.suction.beforeOutlet, c.suction.vaporOutlet};

    // The dome that is drawn reaches down to the low temperature; the second call writes over the first.
    INITDATADOME(substance, domeStart * c.medium.level.P);
    INITDATADOME(substance, domeStart * c.low.level.P);

    for (Device* device : {&c.highPressureValveRows, &c.bypassRows, &c.mediumExpansionRows, &c.lowExpansionRows})
        finishTwoPhaseRow(device->outlet);
    for (Device* device : {&c.mediumRows, &c.lowRows}) {
        finishTwoPhaseRow(device->inlet);
        finishRow(substance, dewSide, device->outlet);
    }
    for (Device* device : {&c.suctionBeforeRows, &c.suctionAfterRows, &c.vaporSideRows})
        finishRows(substance, dewSide, *device);
    for (Device* device : {&c.highStageRows, &c.lowStageRows}) finishRow(substance, dewSide, device->inlet);

    finishDevice(c.mediumRows, c.mediumM, Heat::gained);
    finishDevice(c.lowRows, c.lowM, Heat::gained);
    finishDevice(c.lowStageRows, c.lowM, Heat::gained);
    for (Device* device : {&c.suctionBeforeRows, &c.suctionAfterRows, &c.highStageRows, &c.vaporSideRows})
        finishDevice(*device, c.totalM, Heat::gained);
    for (Device* device : {&c.dischargeRows, &c.gasCoolerRows, &c.liquidBeforeRows, &c.liquidAfterRows,
                           &c.highPressureValveRows, &c.liquidSideRows})
        finishDevice(*device, c.totalM, Heat::lost);
    finishDevice(c.bypassRows, c.flashM, Heat::lost);
    finishDevice(c.mediumExpansionRows, c.mediumM, Heat::lost);
    finishDevice(c.lowExpansionRows, c.lowM, Heat::lost);
}

// ---- the report -----------------------------------------------------------------------------------------------------

// Readers of the file know the line of the low stage's pressure ratio as 1, and find the flow of the high stage in that
// of its mass flow, while it carries the flow of the LT evaporator.
void writeLowStage(ResultWriter& writer, const Efficiencies& efficiencies) {
    constexpr double inItsPlace = 1.0;
    highSideCompressorEnds(writer, "LOW STAGE COMPRESSOR", c.lowStageRows);
    writer.value("Isentropic efficiency", "-", efficiencies.isentropic);
    writer.value("Volumetric efficiency", "-", efficiencies.volumetric);
    writer.value("Swept volume", "m3/s", c.lowV);
    writer.noValue("Pressure ratio", "-", inItsPlace);
    writer.value("Mass flow of the high stage", "kg/s", c.totalM);
    writer.value("Power", "kW", c.lowPower);
}

void writePerformance(ResultWriter& writer, const Efficiencies& highStage, const Efficiencies& lowStage) {
    const double V = c.highV + c.lowV;
    const double gasCoolerHeat = c.gasCoolerRows.heat;
    writer.heading("PERFORMANCE PARAMETERS");
    writer.value("Mass flow of the high stage", "kg/s", c.totalM);
    writer.value("Mass flow of the flash gas", "kg/s", c.flashM);
    writer.value("Mass flow of the receiver's liquid", "kg/s", c.liquidM);
    writer.value("Mass flow of the MT evaporator", "kg/s", c.mediumM);
    writer.value("Mass flow of the LT evaporator", "kg/s", c.lowM);
    writer.value("Volumetric cooling capacity", "kJ/m3", c.capacity.total / V);
    writer.value("Volumetric heating capacity", "kJ/m3", gasCoolerHeat / V);
    writer.value("Capacity of both evaporators", "kW", c.capacity.total);
    writer.value("MT evaporator capacity", "kW", c.capacity.medium);
    writer.value("LT evaporator capacity", "kW", c.capacity.low);
    writer.value("Gas cooler capacity", "kW", gasCoolerHeat);
    compressorRows(writer, "High stage", c.highPower, highStage, c.highV);
    compressorRows(writer, "Low stage", c.lowPower, lowStage, c.lowV);
    performanceRows(writer, c.performance);
    writer.value("Superheat at the MT evaporator outlet", "K", c.medium.superheat.degree);
    writer.value("Superheat at the LT evaporator outlet", "K", c.low.superheat.degree);
    writer.value("Superheat at the high stage inlet", "K", c.suction.after.temperature.degree);
    writer.value("Superheat at the low stage inlet", "K", c.lowSuperheat);
    writer.value("Specific cooling effect", "kJ/kg", c.capacity.total / c.totalM);
    writer.value("Specific heat rejection", "kJ/kg", gasCoolerHeat / c.totalM);
    writer.value("Heat exchanged", "kW", c.exchangerHeat);
    writer.value("Exchanger effectiveness", "-", c.effectiveness);
    writer.value("Mean of gas cooler inlet and outlet temperature", "K", (c.gasCoolerInlet.T + c.high.p1.T) / 2.0);
    writer.value("Mean evaporating temperature, MT", "K", c.medium.level.T);
    writer.value("Mean evaporating temperature, LT", "K", c.low.level.T);
}

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    const Efficiencies highStage{cycle.VDAT[9], cycle.VDAT[10]};
    const Efficiencies lowStage{cycle.VDAT[27], cycle.VDAT[29]};
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "MT EVAPORATOR", c.mediumRows, c.medium.level, c.medium.superheat.degree);
    evaporatorSection(writer, "LT EVAPORATOR", c.lowRows, c.low.level, c.low.superheat.degree);
    lineSection(writer, "SUCTION LINE - BEFORE HEAT EXCHANGER", c.suctionBeforeRows, c.suction.beforeDrop,
                c.suction.before.change, Heat::gained);
    lineSection(writer, "SUCTION LINE - AFTER HEAT EXCHANGER", c.suctionAfterRows, c.suction.after, Heat::gained);
    highSideCompressorSection(writer, "HIGH STAGE COMPRESSOR", c.highStageRows, highStage, c.highV, c.highRatio,
                              c.totalM, c.highPower);
    writeLowStage(writer, lowStage);
    highSideLineSection(writer, "DISCHARGE LINE", c.dischargeRows, c.discharge.change);
    gasCoolerSection(writer, c.gasCoolerRows);
    highSideLineSection(writer, "LIQUID LINE - BEFORE HEAT EXCHANGER", c.liquidBeforeRows, c.high.before.change);
    highSideLineSection(writer, "LIQUID LINE - AFTER HEAT EXCHANGER", c.liquidAfterRows, c.high.after.change);
    highSideExpansionSection(writer, "HIGH PRESSURE CONTROL VALVE (EXPANSION DEVICE)", c.highPressureValveRows);
    highSideExpansionSection(writer, "BYPASS VALVE (EXPANSION DEVICE)", c.bypassRows);
    highSideExpansionSection(writer, "MT EXPANSION DEVICE", c.mediumExpansionRows);
    highSideExpansionSection(writer, "LT EXPANSION DEVICE", c.lowExpansionRows);
    exchangerSection(writer, c.liquidSideRows, c.high.fall, c.vaporSideRows, c.suction, c.exchangerHeat);
    writePerformance(writer, highStage, lowStage);

    const STATEPT* const points[] = {&c.suction.afterOutlet,
                                     &c.highStageOutlet,
                                     &c.gasCoolerInlet,
                                     &c.high.p1,
                                     &c.high.p2,
                                     &c.high.p3,
                                     &c.high.p4,
                                     &c.receiver,
                                     &c.flashGas,
                                     &c.bypass,
                                     &c.liquid,
                                     &c.medium.inlet,
                                     &c.medium.outlet,
                                     &c.low.inlet,
                                     &c.low.outlet,
                                     &c.lowStageOutlet,
                                     &c.vapors,
                                     &c.mixture,
                                     &c.suction.beforeOutlet,
                                     &c.suction.vaporOutlet,
                                     &c.suction.afterOutlet};
    graphs(writer, points, substance);
    writer.close();
}

// Line of the result that holds what parameter 20 asks for, by its option.
constexpr int exchangerLines[] = {0, 312, 0, 255, 277, 269};
constexpr double firstFall = 1.0;  // K

}  // namespace

void SOLTRANSCRIBOOSTER_MATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    gasCoolerToExpansion(substance, cycle, highSide, c.high);
    receiver(substance, cycle);
    evaporatorsToLowStage(substance, cycle);
    flows(cycle);
    mixing(substance);
    suctionThroughExchanger(substance, cycle, c.mixture, c.mixture.T, c.high, suctionLine, c.suction);
    compressorToGasCooler(substance, cycle, c.suction.afterOutlet, c.high.gasCooler.inletP(), dischargeLine,
                          c.highStageOutlet, c.discharge, c.gasCoolerInlet);
    performance(substance, cycle);
    deviceRowsOfCircuit(substance);
    writeResult(substance, cycle, FILEOUT);
}

void SOLTRANSCRIBOOSTER(SUBSTANCE& substance, CYCLEIN& cycle, const Text255& FILEOUT) {
    normaliseExchanger(cycle);
    solveExchanger(substance, cycle, exchangerLines, firstFall, FILEOUT, SOLTRANSCRIBOOSTER_MATRIZ);
}

}  // namespace frigana
