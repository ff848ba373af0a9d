#include "49_WithLiquidInjection.h"

#include <algorithm>
#include <cmath>

#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "23_SpecificPoints.h"
#include "24_SaturationPoints.h"
#include "28_IsentropProcess.h"
#include "31_FluidInformation.h"
#include "CycleBricks.h"

namespace frigana {

namespace {

// ---- checks, in the order in which they fire ------------------------------------------------------------------------

constexpr CondensingChecks condensing{
    {209201, "Error: Condenser temperature > critical temperature (", " K)"},
    {209202, "Error: Condenser pressure > critical pressure (", " kPa)"},
    {209205, "Error: Condenser outlet pressure was less than or equal to   zero!"},
};
constexpr SubcooledChecks condenserOutlet{
    {209206, "Error: Condenser - outlet temperature is out of range!"},
    {209207, "Error: Condenser - subcooling is out of range!"},
};
constexpr DropChecks dischargeDrop{
    {209228, "Error: Discharge line - pressure drop is out of range!"},
    {209229, "Error: Discharge line - drop of saturation temperature is out of range!"},
};
constexpr LineChecks liquidLineChecks{
    .drop = {{209208, "Error: Liquid line - pressure drop is out of range!"},
             {209209, "Error: Liquid line drop of saturation temperature is out of range!"}},
    .pressure = {209210, "Error: Liquid line - outlet pressure was less than or equal to zero!"},
    .change = {209211, "Error: Liquid line - temperature change is out of range!"},
    .degree = {209212, "Error: Liquid line - outlet subcooling is out of range!"},
};
constexpr EvaporatingChecks evaporating{
    {209213, "Error: Evaporating temperature > critical temperature (", " K)"},
    {209214, "Error: Evaporating temperature > condenser temperature!"},
    {209215, "Error: Evaporating pressure > critical pressure (", " kPa)"},
    {209216, "Error: Evaporating pressure > condenser pressure!"},
    {209219, "Error: Evaporator - inlet pressure > condenser pressure!"},
    {209220, "Error: Evaporator - outlet pressure was less than or equal to zero!"},
};
constexpr Check evaporatorSuperheat{209221, "Error: Evaporator - superheat is out of range!"};
constexpr LineChecks suctionLineChecks{
    .drop = {{209222, "Error: Suction line - pressure drop is out of range!"},
             {209223, "Error: Suction line - drop of saturation temperature is out of range!"}},
    .pressure = {209224, "Error: Suction line - outlet pressure is less than or equal to zero!"},
    .aboveTC = {209225, "Error: Suction line - outlet temperature > critical temperature (", " K)"},
    .change = {209226, "Error: Suction line - temperature change is out of range!"},
    // The text speaks of the saturation temperature while it guards the superheat; front ends know it so.
    .degree = {209227, "Error: Suction line drop of saturation temperature is out of range!"},
};
constexpr Check wetCompression{209300, "Error: wet compression, increase the inlet superheat"};
constexpr LineChecks injectionLine{
    .drop = {{209228, "Error: Liquid injection line - pressure drop is out of range!"},
             {209229, "Error: Liquid injection line - drop of saturation temperature is out of range!"}},
    .pressure = {209230, "Error: Liquid injection line - outlet pressure was less than or equal to zero!"},
    .temperature = {209231, "Error: Liquid injection line - outlet temperature is out of range!"},
    .change = {209232, "Error: Liquid injection line - temperature change is out of range!"},
    .degree = {209233, "Error: Liquid injection line - outlet subcooling is out of range!"},
};
constexpr Check injectedFraction{209234, "Error: Fraction mass flow of liquid injection is out of range!"};
constexpr Check dischargeFall{209235, "Error: Discharge line - temperature change is out of range!"};

// ---- the solution ---------------------------------------------------------------------------------------------------

// Everything that a run works out; each begins with it at zero. Points by their number.
struct Cycle {
    Level condenser, evaporator;
    STATEPT p1;                       // condenser outlet
    STATEPT p2;                       // liquid line outlet: expansion device inlet
    STATEPT p3;                       // evaporator inlet
    STATEPT p4;                       // evaporator outlet
    STATEPT p5;                       // suction line outlet
    STATEPT p6;                       // compressor inlet, behind the injection
    STATEPT p7;                       // compressor outlet
    STATEPT p8;                       // condenser inlet
    STATEPT p9;                       // injection line outlet
    STATEPT p10;                      // injection valve outlet
    STATEPT mixingBubble, mixingDew;  // at the pressure of the injection
    OutletSetting subcooling, superheat;
    Line liquid, suction, injection;
    PressureChange discharge;
    TemperatureChange dischargeT;
    double inletSuperheat;
    double fraction;  // of the compressor's flow that is injected
    Flow flow;        // that of the compressor and the condenser
    double evaporatorM, injectionM;
    double power, ratio;
    Performance performance;
    Device evaporatorRows, suctionRows, compressorRows, dischargeRows, condenserRows, liquidRows, expansionRows,
        injectionRows, valveRows;
};

Cycle c;

void condenserToExpansion(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.subcooling = condense(substance, cycle, 11, condensing, condenserOutlet, c.condenser, c.p1);
    c.discharge = pressureChangeBackwards(substance, parameter(cycle, 10), c.condenser.inletP(), dischargeDrop);
    c.liquid = liquidLine(substance, cycle, 14, {c.p1, c.condenser.outletP(), c.subcooling.T}, liquidLineChecks, c.p2);
}

void evaporatorToSuction(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double H3 = c.p2.H;  // expansion is isenthalpic
    c.superheat =
        evaporate(substance, cycle, 1, H3, c.condenser, evaporating, evaporatorSuperheat, c.evaporator, c.p3, c.p4);
    c.suction = vaporLine(substance, cycle, 4, {c.p4, c.evaporator.outletP(), c.superheat.T}, suctionLineChecks, c.p5);
}

// The compressor's inlet so cold that its outlet has the temperature T: five secant steps on the inlet enthalpy, each
// with a probe a little above it, although the solution lies below. There is no test for convergence.
void coolCompressor(const SUBSTANCE& substance, double efficiency, double T) {
    constexpr int steps = 5;
    constexpr double probe = 2.0;  // kJ/kg
    const double inletP = c.p6.P;
    const double outletP = c.p7.P;
    const auto outletTemperature = [&](double H, STATEPT& inlet, STATEPT& outlet) {
        refuseIf(!std::isfinite(H), injectedFraction);
        PROPSIMPLEPH(substance, inletP, H, inlet);
        COMPISOENTRO(substance, efficiency, inlet, outletP, outlet);
        return outlet.T;
    };

    static constinit STATEPT probeInlet{}, probeOutlet{};
    double H = c.p6.H;
    double outletT = outletTemperature(H, c.p6, c.p7);
    for (int step = 1; step <= steps; ++step) {
        const double probeT = outletTemperature(H + probe, probeInlet, probeOutlet);
        const double slope = (H - (H + probe)) / (outletT - probeT);
        H = slope * T + (H - slope * outletT);
        outletT = outletTemperature(H, c.p6, c.p7);
    }
}

// What the injection needs of the condenser's liquid.
void injectLiquid(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.injection = liquidLine(substance, cycle, 17, {c.p1, c.p1.P, c.subcooling.T}, injectionLine, c.p9);

    PROPSIMPLEPH(substance, c.p5.P, c.p9.H, c.p10);
    c.fraction = (c.p5.H - c.p6.H) / (c.p5.H - c.p10.H);
    refuseIf(!std::isfinite(c.fraction), injectedFraction);
    refuseOutside(c.fraction, fractionLimits, injectedFraction);
}

void compressorToCondenser(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double efficiency = cycle.VDAT[7];
    const double highestT = cycle.VDAT[16];
    const double P8 = c.condenser.inletP();
    c.p6 = c.p5;
    c.p9 = c.p1;
    c.p10 = c.p5;
    compress(substance, efficiency, c.p6, P8 + c.discharge.DP, c.condenser.dew.H, wetCompression, c.p7);
    // An outlet that could not be computed is not cool.
    refuseIf(c.p7.T == missingValue, injectedFraction);
    if (!(c.p7.T <= highestT)) {
        coolCompressor(substance, efficiency, highestT);
        refuseIf(c.p7.T == missingValue, injectedFraction);
        injectLiquid(substance, cycle);
    }

    c.dischargeT = dischargeOutlet(substance, parameter(cycle, 9), c.p7, P8, dischargeFall, c.p8);
    c.inletSuperheat = c.dischargeT.T - c.condenser.dew.T;
}

void flowsAndPerformance(const CYCLEIN& cycle) {
    const double evaporatorShare = 1.0 - c.fraction;
    c.flow = massFlow(parameter(cycle, 6), c.p6.D, cycle.VDAT[8], c.p8.H - c.p1.H, evaporatorShare * (c.p4.H - c.p3.H));
    c.evaporatorM = c.flow.M * evaporatorShare;
    c.injectionM = c.flow.M * c.fraction;
    c.power = c.flow.M * (c.p7.H - c.p6.H);
    c.ratio = c.p7.P / c.p6.P;
    c.performance = performanceOf(c.flow.evaporator, c.flow.condenser, c.power);
}

void deviceRowsOfCircuit(SUBSTANCE& substance) {
    c.evaporatorRows = {c.p3, c.p4};
    c.suctionRows = {c.p4, c.p5};
    c.compressorRows = {c.p6, c.p7};
    c.dischargeRows = {c.p7, c.p8};
    c.condenserRows = {c.p8, c.p1};
    c.liquidRows = {c.p1, c.p2};
    c.expansionRows = {c.p2, c.p3};
    c.injectionRows = {c.p1, c.p9};
    c.valveRows = {c.p9, c.p10};

    PROPMIXTUREP_BD(substance, c.p10.P, 1, c.mixingBubble, c.mixingDew);
    INITDATADOME(substance, domeStart * c.evaporator.P);

    for (Device* device : {&c.suctionRows, &c.compressorRows, &c.dischargeRows})
        finishRows(substance, dewSide, *device);
    finishRow(substance, dewSide, c.evaporatorRows.outlet);
    finishRow(substance, dewSide, c.condenserRows.inlet);
    for (Device* device : {&c.liquidRows, &c.injectionRows}) finishRows(substance, bubbleSide, *device);
    finishRow(substance, bubbleSide, c.condenserRows.outlet);
    finishRow(substance, bubbleSide, c.expansionRows.inlet);
    finishRow(substance, bubbleSide, c.valveRows.inlet);
    for (STATEPT* row : {&c.evaporatorRows.inlet, &c.expansionRows.outlet, &c.valveRows.outlet})
        finishTwoPhaseRow(*row);

    finishDevice(c.evaporatorRows, c.evaporatorM, Heat::gained);
    finishDevice(c.suctionRows, c.evaporatorM, Heat::gained);
    finishDevice(c.compressorRows, c.flow.M, Heat::gained);
    finishDevice(c.dischargeRows, c.flow.M, Heat::lost);
    finishDevice(c.condenserRows, c.flow.M, Heat::lost);
    finishDevice(c.liquidRows, c.evaporatorM, Heat::lost);
    finishDevice(c.expansionRows, c.evaporatorM, Heat::lost);
    finishDevice(c.injectionRows, c.injectionM, Heat::lost);
    finishDevice(c.valveRows, c.injectionM, Heat::lost);
}

// ---- the report -----------------------------------------------------------------------------------------------------

void writeGraphs(ResultWriter& writer, const SUBSTANCE& substance) {
    const STATEPT* pressurePoints[] = {&c.p6,
                                       &c.p7,
                                       &c.p8,
                                       &dewPointOfGraph(c.p8, c.condenser.dew),
                                       &c.condenser.bubble,
                                       &c.p1,
                                       &c.p2,
                                       &c.p3,
                                       &c.evaporator.dew,
                                       &c.p4,
                                       &c.p5,
                                       &c.p6,
                                       &c.p1,
                                       &c.p9,
                                       &c.p10,
                                       c.p10.H <= c.mixingDew.H ? &c.mixingDew : &c.p10,
                                       &c.p6};
    constexpr int circuit = 12;  // points before the branch of the injection
    constexpr int behindValve = 15;
    constexpr int all = 17;
    if (!(c.injectionM > 0.0))
        for (int i = circuit; i < all; ++i) pressurePoints[i] = &c.p1;
    const STATEPT* temperaturePoints[all];
    std::copy_n(pressurePoints, all, temperaturePoints);
    if (c.injectionM > 0.0) temperaturePoints[behindValve] = c.p10.S <= c.mixingDew.S ? &c.mixingDew : &c.p10;
    graphs(writer, pressurePoints, temperaturePoints, substance);
}

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    const double M = c.flow.M;
    const double V = c.flow.V;
    const double evaporatorCapacity = c.evaporatorRows.heat;
    const double condenserCapacity = c.condenserRows.heat;
    const Efficiencies efficiencies{cycle.VDAT[7], cycle.VDAT[8]};
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "EVAPORATOR", c.evaporatorRows, c.evaporator, c.superheat.degree);
    lineSection(writer, "SUCTION LINE", c.suctionRows, c.suction, Heat::gained);
    compressorSection(writer, "COMPRESSOR", c.compressorRows, efficiencies, V, c.ratio, c.power);
    lineSection(writer, "DISCHARGE LINE", c.dischargeRows, c.discharge, c.dischargeT.change, Heat::lost);
    condenserSection(writer, "CONDENSER", c.condenserRows, c.condenser, c.inletSuperheat, c.subcooling.degree);
    lineSection(writer, "LIQUID LINE", c.liquidRows, c.liquid, Heat::lost);
    expansionSection(writer, "EXPANSION DEVICE", c.expansionRows);
    lineSection(writer, "LIQUID INJECTION LINE", c.injectionRows, c.injection, Heat::lost);
    expansionSection(writer, "LIQUID INJECTION EXPANSION VALVE", c.valveRows);

    writer.heading("PERFORMANCE PARAMETERS");
    writer.value("Mass flow of the compressor", "kg/s", M);
    writer.value("Mass flow of the evaporator", "kg/s", c.evaporatorM);
    writer.value("Mass flow of the injection", "kg/s", c.injectionM);
    writer.value("Injected fraction of the compressor's flow", "kg/kg", c.fraction);
    capacityRows(writer, V, evaporatorCapacity, condenserCapacity, c.power, efficiencies);
    performanceRows(writer, c.performance);
    writer.value("Subcooling at the liquid line outlet", "K", c.liquid.temperature.degree);
    writer.value("Superheat at the evaporator outlet", "K", c.superheat.degree);
    writer.value("Superheat at the suction line outlet", "K", c.suction.temperature.degree);
    for (int reserved = 1; reserved <= 2; ++reserved) writer.value("Reserved", "", missingValue);
    writer.value("Temperature at the compressor outlet", "K", c.p7.T);
    writer.value("Specific cooling effect", "kJ/kg", evaporatorCapacity / M);
    writer.value("Specific heat rejection", "kJ/kg", condenserCapacity / M);
    writer.value("Mean condensing temperature", "K", c.condenser.T);
    writer.value("Mean evaporating temperature", "K", c.evaporator.T);

    writeGraphs(writer, substance);
    writer.close();
}

}  // namespace

void SOLLIQINJECTION(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    condenserToExpansion(substance, cycle);
    evaporatorToSuction(substance, cycle);
    compressorToCondenser(substance, cycle);
    flowsAndPerformance(cycle);
    deviceRowsOfCircuit(substance);
    writeResult(substance, cycle, FILEOUT);
}

}  // namespace frigana
