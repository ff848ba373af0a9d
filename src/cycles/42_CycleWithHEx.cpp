#include "42_CycleWithHEx.h"

#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "23_SpecificPoints.h"
#include "31_FluidInformation.h"
#include "CycleBricks.h"
#include "SecantDriver.h"

namespace frigana {

namespace {

// ---- checks, in the order in which they fire ------------------------------------------------------------------------

constexpr CondensingChecks condensing{
    {202201, "Error: Condenser temperature > critical temperature(", " K)"},
    {202202, "Error: Condenser pressure > Critical pressure(", " kPa)"},
    {202205, "Error: Condenser - outlet pressure was less than or equal to zero!"},
};
constexpr SubcooledChecks condenserOutlet{
    {202206, "Error: Condenser - outlet temperature is out of range!"},
    {202207, "Error: Condenser - subcooling is out of range!"},
};
constexpr DropChecks liquidBeforeDrop{
    {202208, "Error: Liquid line before heat exchanger - pressure drop is out of range!"},
    {202209, "Error: Liquid line before heat exchanger - drop of saturation temperature is out of range!"},
};
// The text speaks of a pressure drop while it guards the temperature; front ends know it so.
constexpr Check liquidBeforeT{202210, "Error: Liquid line before heat exchanger - pressure drop is out of range!"};
constexpr Check liquidBeforeFall{202211,
                                 "Error: Liquid line before heat exchanger - temperature change is out of range!"};
constexpr DropChecks liquidSideDrop{
    {202213, "Error: Liquid side at heat exchanger - pressure drop is out of range!"},
    {202214, "Error: Liquid side at heat exchanger - drop of saturation temperature is out of range!"},
};
constexpr Check liquidSideP{202215,
                            "Error: Liquid side at heat exchanger - inlet pressure was less than or equal to zero!"};
constexpr Check liquidSideT{202216,
                            "Error: Liquid side at heat exchanger - inlet temperature was less than or equal to zero!"};
constexpr LineChecks liquidAfter{
    .drop = {{202217, "Error: Liquid line after heat exchanger - pressure drop is out of range!"},
             {202218, "Error: Liquid line after heat exchanger - drop of saturation temperature is out of range!"}},
    .temperature = {202219, "Error: Liquid line after heat exchanger - outlet temperature is out of range!"},
    .change = {202220, "Error: Liquid line after heat exchanger - temperature change is out of range!"},
    .degree = {202221, "Error: Liquid line after heat exchanger - outlet subcooling is out of range!"},
};
constexpr EvaporatingChecks evaporating{
    {202222, "Error: Evaporating temperature > critical temperature (", " K)"},
    {202223, "Error: Evaporating temperature > condenser temperature!"},
    {202224, "Error: Evaporating pressure > critical pressure(", " kPa)"},
    {202225, "Error: Evaporating pressure > condenser pressure!"},
    {202228, "Error: Evaporator - inlet pressure > condenser pressure!"},
    {202229, "Error: Evaporator - outlet pressure was less than or equal to zero!"},
};
constexpr Check evaporatorSuperheat{202230, "Error: Evaporator - superheat is out of range!"};
constexpr LineChecks suctionBefore{
    .drop = {{202231, "Error: Suction line before heat exchanger - pressure drop is out of range!"},
             {202232, "Error: Suction line before heat exchanger - drop of saturation temperature is out of range!"}},
    .pressure = {202233, "Error: Suction line before heat exchanger - outlet pressure was less than or equal to zero!"},
    .aboveTC = {202234, "Error: Suction line before heat exchanger - Outlet temperature > critical temperature (",
                " K)"},
    .change = {202235, "Error: Suction line before heat exchanger - temperature change is out of range!"},
    // The text speaks of the saturation temperature while it guards the superheat; so it stays.
    .degree = {202236, "Error: Suction line before heat exchanger - drop of saturation temperature is out of range!"},
};
constexpr DropChecks vaporSideDrop{
    {202237, "Error: Vapor side at heat exchanger - pressure drop is out of range!"},
    {202238, "Error: Vapor side at heat exchanger - drop of saturation temperature is out of range!"},
};
constexpr Check negativeHeat{202239, "Error: Heat exchanger - the heat trasfer was negative!"};
constexpr Check vaporSideRise{202240, "Error: Vapor side at heat exchanger - temperature change is out of range!"};
constexpr LineChecks suctionAfter{
    .drop = {{202241, "Error: Suction line after heat exchanger - pressure drop is out of range!"},
             {202242, "Error: Suction line after heat exchanger - drop of saturation temperature is out of range!"}},
    .temperature = {202243, "Error: Suction line after heat exchanger - outlet temperature is out of range!"},
    .change = {202244, "Error: Suction line after heat exchanger - temperature change is out of range!"},
    .degree = {202245, "Error: Suction line after heat exchanger - outlet superheat is out of range!"},
};
constexpr DropChecks dischargeDrop{
    {202246, "Error: Discharge line - pressure drop is out of range!"},
    {202247, "Error: Discharge line - drop of saturation temperature is out of range!"},
};
constexpr Check wetCompression{202300, "Error: wet compression, increase the inlet superheat"};
constexpr Check dischargeFall{202248, "Error: Discharge line - temperature change is out of range!"};

// ---- the solution ---------------------------------------------------------------------------------------------------

// Everything that a run works out; each begins with it at zero. Points by their number in flow order.
struct Cycle {
    Level condenser, evaporator;
    STATEPT p1;   // condenser outlet
    STATEPT p2;   // liquid line before the exchanger, outlet
    STATEPT p3;   // exchanger, liquid outlet
    STATEPT p4;   // liquid line after the exchanger, outlet: expansion device inlet
    STATEPT p5;   // evaporator inlet
    STATEPT p6;   // evaporator outlet
    STATEPT p7;   // suction line before the exchanger, outlet
    STATEPT p8;   // exchanger, vapor outlet
    STATEPT p9;   // suction line after the exchanger, outlet: compressor inlet
    STATEPT p10;  // compressor outlet
    STATEPT p11;  // condenser inlet
    OutletSetting subcooling, superheat;
    PressureChange liquidBefore, liquidSide, vaporSide, discharge;
    TemperatureChange liquidBeforeT, dischargeT;
    Line liquidAfter, suctionBefore, suctionAfter;
    double liquidFall, vaporRise, inletSuperheat;
    Flow flow;
    double power, ratio, exchangerHeat, effectiveness;
    Performance performance;
    Device evaporatorRows, suctionBeforeRows, suctionAfterRows, compressorRows, dischargeRows, condenserRows,
        liquidBeforeRows, liquidAfterRows, expansionRows, liquidSideRows, vaporSideRows;
};

Cycle c;

void condenserToExpansion(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.subcooling = condense(substance, cycle, 13, condensing, condenserOutlet, c.condenser, c.p1);
    const double P1 = c.condenser.outletP();

    c.liquidBefore = pressureChange(substance, parameter(cycle, 17), P1, bubbleSide, liquidBeforeDrop);
    const double P2 = P1 - c.liquidBefore.DP;
    c.liquidBeforeT = temperatureFall(parameter(cycle, 16), c.subcooling.T);
    const double T2 = c.liquidBeforeT.T;
    refuseOutside(T2, temperatureLimits, liquidBeforeT);
    refuseOutside(c.liquidBeforeT.change, changeLimits, liquidBeforeFall);
    linePoint(substance, c.p1, c.liquidBefore.DP, c.liquidBeforeT.change, P2, T2, c.p2);

    c.liquidFall = cycle.VDAT[20];
    c.liquidSide = pressureChange(substance, parameter(cycle, 21), P2, bubbleSide, liquidSideDrop);
    const double P3 = P2 - c.liquidSide.DP;
    refuseIf(P3 <= 0.0, liquidSideP);
    refuseIf(T2 - c.liquidFall <= 0.0, liquidSideT);
    const double T3 = exchangerLiquid(substance, c.p2, T2, c.liquidSide.DP, P3, c.liquidFall, c.p3);

    c.liquidAfter = liquidLine(substance, cycle, 18, {c.p3, P3, T3}, liquidAfter, c.p4);
}

void evaporatorToCompressor(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double H5 = c.p4.H;  // expansion is isenthalpic
    c.superheat =
        evaporate(substance, cycle, 1, H5, c.condenser, evaporating, evaporatorSuperheat, c.evaporator, c.p5, c.p6);
    c.suctionBefore =
        vaporLine(substance, cycle, 4, {c.p6, c.evaporator.outletP(), c.superheat.T}, suctionBefore, c.p7);

    c.vaporSide = pressureChange(substance, parameter(cycle, 22), c.suctionBefore.P, dewSide, vaporSideDrop);
    const double P8 = c.suctionBefore.P - c.vaporSide.DP;
    const bool exchanges = cycle.VDAT[20] != 0.0;
    refuseIf(exchanges && c.p3.H > c.p2.H, negativeHeat);
    exchangerOutlet(substance, c.p7, P8, c.p7.H + (c.p2.H - c.p3.H), c.p8);
    c.vaporRise = c.p8.T - c.suctionBefore.temperature.T;
    if (exchanges) refuseOutside(c.vaporRise, changeLimits, vaporSideRise);

    c.suctionAfter = vaporLine(substance, cycle, 6, {c.p8, P8, c.p8.T}, suctionAfter, c.p9);
}

void compressorToCondenser(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double P11 = c.condenser.inletP();
    c.discharge = pressureChangeBackwards(substance, parameter(cycle, 12), P11, dischargeDrop);
    compress(substance, cycle.VDAT[9], c.p9, P11 + c.discharge.DP, c.condenser.dew.H, wetCompression, c.p10);
    c.dischargeT = dischargeOutlet(substance, parameter(cycle, 11), c.p10, P11, dischargeFall, c.p11);
    c.inletSuperheat = c.dischargeT.T - c.condenser.dew.T;
}

void flowsAndPerformance(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.flow = massFlow(parameter(cycle, 8), c.p9.D, cycle.VDAT[10], c.p11.H - c.p1.H, c.p6.H - c.p5.H);
    c.power = c.flow.M * (c.p10.H - c.p9.H);
    c.ratio = c.p10.P / c.p9.P;
    c.performance = performanceOf(c.flow.evaporator, c.flow.condenser, c.power);
    c.exchangerHeat = c.flow.M * (c.p2.H - c.p3.H);
    c.effectiveness = exchangerEffectiveness(substance, c.flow.M, c.p2, c.p3, c.p7, c.p8);
}

void deviceRowsOfCircuit(SUBSTANCE& substance, const Text255& FILEOUT) {
    c.evaporatorRows = {c.p5, c.p6};
    c.suctionBeforeRows = {c.p6, c.p7};
    c.suctionAfterRows = {c.p8, c.p9};
    c.compressorRows = {c.p9, c.p10};
    c.dischargeRows = {c.p10, c.p11};
    c.condenserRows = {c.p11, c.p1};
    c.liquidBeforeRows = {c.p1, c.p2};
    c.liquidAfterRows = {c.p3, c.p4};
    c.expansionRows = {c.p4, c.p5};
    c.liquidSideRows = {c.p2, c.p3};
    c.vaporSideRows = {c.p7, c.p8};

    INITDATADOME(substance, domeStart * c.evaporator.P, !isTrial(FILEOUT));

    finishTwoPhaseRow(c.evaporatorRows.inlet);
    finishTwoPhaseRow(c.expansionRows.outlet);
    for (Device* device :
         {&c.suctionBeforeRows, &c.suctionAfterRows, &c.compressorRows, &c.dischargeRows, &c.vaporSideRows})
        finishRows(substance, dewSide, *device);
    finishRow(substance, dewSide, c.evaporatorRows.outlet);
    finishRow(substance, dewSide, c.condenserRows.inlet);
    for (Device* device : {&c.liquidBeforeRows, &c.liquidAfterRows, &c.liquidSideRows})
        finishRows(substance, bubbleSide, *device);
    finishRow(substance, bubbleSide, c.condenserRows.outlet);
    finishRow(substance, bubbleSide, c.expansionRows.inlet);

    const double M = c.flow.M;
    for (Device* device :
         {&c.evaporatorRows, &c.suctionBeforeRows, &c.suctionAfterRows, &c.compressorRows, &c.vaporSideRows})
        finishDevice(*device, M, Heat::gained);
    for (Device* device : {&c.dischargeRows, &c.condenserRows, &c.liquidBeforeRows, &c.liquidAfterRows,
                           &c.expansionRows, &c.liquidSideRows})
        finishDevice(*device, M, Heat::lost);
}

// ---- the report -----------------------------------------------------------------------------------------------------

void writeExchanger(ResultWriter& writer) {
    writer.heading("HEAT EXCHANGER (SUCTION LINE - LIQUID LINE)");
    stateRow(writer, "Liquid inlet", c.liquidSideRows.inlet);
    stateRow(writer, "Liquid outlet", c.liquidSideRows.outlet);
    writer.group("Liquid side");
    writer.value("pressure drop", "kPa", c.liquidSideRows.DP);
    writer.value("drop of saturation temperature", "K", c.liquidSide.DT);
    writer.value("temperature fall", "K", c.liquidFall);
    writer.group({});
    stateRow(writer, "Vapor inlet", c.vaporSideRows.inlet);
    stateRow(writer, "Vapor outlet", c.vaporSideRows.outlet);
    exchangerVaporRows(writer, c.vaporSideRows, c.vaporSide, c.vaporRise);
    writer.value("Mass flow of the liquid", "kg/s", c.liquidSideRows.M);
    writer.value("Mass flow of the vapor", "kg/s", c.vaporSideRows.M);
    writer.value("Heat exchanged", "kW", c.exchangerHeat);
}

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    const double M = c.flow.M;
    const Efficiencies efficiencies{cycle.VDAT[9], cycle.VDAT[10]};
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "EVAPORATOR", c.evaporatorRows, c.evaporator, c.superheat.degree);
    lineSection(writer, "SUCTION LINE - BEFORE HEAT EXCHANGER", c.suctionBeforeRows, c.suctionBefore, Heat::gained);
    lineSection(writer, "SUCTION LINE - AFTER EXCHANGER", c.suctionAfterRows, c.suctionAfter, Heat::gained);
    compressorSection(writer, "COMPRESSOR", c.compressorRows, efficiencies, c.flow.V, c.ratio, c.power);
    lineSection(writer, "DISCHARGE LINE", c.dischargeRows, c.discharge, c.dischargeT.change, Heat::lost);
    condenserSection(writer, "CONDENSER", c.condenserRows, c.condenser, c.inletSuperheat, c.subcooling.degree);
    lineSection(writer, "LIQUID LINE - BEFORE HEAT EXCHANGER", c.liquidBeforeRows, c.liquidBefore,
                c.liquidBeforeT.change, Heat::lost);
    lineSection(writer, "LIQUID LINE - AFTER HEAT EXCHANGER", c.liquidAfterRows, c.liquidAfter, Heat::lost);
    expansionSection(writer, "EXPANSION DEVICE", c.expansionRows);
    writeExchanger(writer);

    writer.heading("PERFORMANCE PARAMETERS");
    flowRows(writer, M, c.flow.V, c.evaporatorRows.heat, c.condenserRows.heat, c.power, efficiencies);
    performanceRows(writer, c.performance);
    writer.value("Subcooling at the expansion device", "K", c.liquidAfter.temperature.degree);
    writer.value("Superheat at the evaporator outlet", "K", c.superheat.degree);
    writer.value("Superheat at the compressor inlet", "K", c.suctionAfter.temperature.degree);
    writer.value("Specific cooling effect", "kJ/kg", c.evaporatorRows.heat / M);
    writer.value("Specific heat rejection", "kJ/kg", c.condenserRows.heat / M);
    writer.value("Heat exchanged", "kW", c.exchangerHeat);
    writer.value("Exchanger effectiveness", "-", c.effectiveness);
    writer.value("Mean condensing temperature", "K", c.condenser.T);
    writer.value("Mean evaporating temperature", "K", c.evaporator.T);

    const STATEPT* const points[] = {&c.p9,
                                     &c.p10,
                                     &c.p11,
                                     &dewPointOfGraph(c.p11, c.condenser.dew),
                                     &c.condenser.bubble,
                                     &c.p1,
                                     &c.p2,
                                     &c.p3,
                                     &c.p4,
                                     &c.p5,
                                     &c.evaporator.dew,
                                     &c.p6,
                                     &c.p7,
                                     &c.p8,
                                     &c.p9};
    graphs(writer, points, substance);
    writer.close();
}

// Line of the result that holds what parameter 20 asks for, by its option.
constexpr int exchangerLines[] = {0, 245, 0, 196, 221, 213};
constexpr double firstFall = 2.0;  // K

}  // namespace

void SOLCYCLEWTHEX_MATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    condenserToExpansion(substance, cycle);
    evaporatorToCompressor(substance, cycle);
    compressorToCondenser(substance, cycle);
    flowsAndPerformance(substance, cycle);
    deviceRowsOfCircuit(substance, FILEOUT);
    writeResult(substance, cycle, FILEOUT);
}

void SOLCYCLEWTHEX(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    solveExchanger(substance, cycle, exchangerLines, firstFall, FILEOUT, SOLCYCLEWTHEX_MATRIZ);
}

}  // namespace frigana
