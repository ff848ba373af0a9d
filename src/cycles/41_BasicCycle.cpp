#include "41_BasicCycle.h"

#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "31_FluidInformation.h"
#include "CycleBricks.h"

namespace frigana {

namespace {

constexpr CondensingChecks condensing{
    {201201, "Error: Condenser temperature > Critical temperature (", " K)"},
    {201202, "Error: Condenser pressure > Critical pressure (", " kPa)"},
    {201205, "Error: Condenser outlet pressure was less or  equal than zero!"},
};
constexpr SubcooledChecks condenserOutlet{
    {201206, "Error: Condenser - outlet temperature is out of range!"},
    {201207, "Error: Condenser - subcooling is out of range!"},
};
constexpr LineChecks liquidLineChecks{
    .drop = {{201208, "Error: Liquid line - pressure drop is out of range!"},
             {201209, "Error: Liquid line - drop of saturation temperature is out of range!"}},
    .pressure = {201210, "Error: Liquid line - outlet pressure was less or equal than zero!"},
    .change = {201211, "Error: Liquid line - change temperature is out of range!"},
    .degree = {201212, "Error: Liquid line - outlet subcooling is out of range!"},
};
constexpr EvaporatingChecks evaporating{
    {201213, "Error: Evaporating temperature > Critical temperature (", " K)"},
    {201214, "Error: Evaporator temperature > Condenser temperature!"},
    {201215, "Error: Evaporating pressure > Critical pressure (", " kPa)"},
    {201216, "Error: Evaporating pressure > condenser pressure!"},
    {201219, "Error: Evaporator - inlet pressure > condenser pressure!"},
    {201220, "Error: Evaporator - outlet pressure was less or equal than zero!"},
};
constexpr Check evaporatorSuperheat{201221, "Error: Evaporator - superheat is out of range!"};
constexpr LineChecks suctionLineChecks{
    .drop = {{201222, "Error: Suction line - pressure drop is out of range!"},
             {201223, "Error: Suction line - drop of saturation temperature is out of range!"}},
    .pressure = {201224, "Error: Compressor - inlet pressure was less or equal than zero!"},
    .aboveTC = {201225, "Error: Suction line - outlet temperature > critical temperature (", " K)"},
    .change = {201226, "Error: Suction line - temperature change is out of range!"},
    // The text speaks of the saturation temperature while it guards the superheat; front ends know it so.
    .degree = {201227, "Error: Suction line drop of saturation temperature is out of range!"},
};
constexpr DropChecks dischargeLineDrop{
    {201228, "Error: Discharge line - pressure drop is out of range!"},
    {201229, "Error: Discharge line - drop of saturation temperature is out of range!"},
};
constexpr Check dischargeLineFall{201230, "Error: Discharge line - temperature change is out of range!"};
constexpr Check wetCompression{201300, "Error: wet compression, increase the inlet superheat"};

// Everything that a run works out; each begins with it at zero.
struct Cycle {
    Level condenser, evaporator;
    OutletSetting subcooling, superheat;
    double inletSuperheat;
    Line liquid, suction;
    PressureChange dischargeDrop;
    TemperatureChange discharge;
    STATEPT condenserOutlet, expansionInlet, evaporatorInlet, evaporatorOutlet, compressorInlet, compressorOutlet,
        condenserInlet;
    Flow flow;
    double power, ratio;
    Performance performance;
    Device compressorRows, dischargeRows, condenserRows, liquidRows, expansionRows, evaporatorRows, suctionRows;
};

Cycle c;

void condenserToExpansion(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.subcooling = condense(substance, cycle, 11, condensing, condenserOutlet, c.condenser, c.condenserOutlet);
    c.liquid = liquidLine(substance, cycle, 14, {c.condenserOutlet, c.condenser.outletP(), c.subcooling.T},
                          liquidLineChecks, c.expansionInlet);
}

void evaporatorToCompressor(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double inletH = c.expansionInlet.H;  // expansion is isenthalpic
    c.superheat = evaporate(substance, cycle, 1, inletH, c.condenser, evaporating, evaporatorSuperheat, c.evaporator,
                            c.evaporatorInlet, c.evaporatorOutlet);
    c.suction = vaporLine(substance, cycle, 4, {c.evaporatorOutlet, c.evaporator.outletP(), c.superheat.T},
                          suctionLineChecks, c.compressorInlet);
}

void compressorToCondenser(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double condenserP = c.condenser.inletP();
    c.dischargeDrop = pressureChangeBackwards(substance, parameter(cycle, 10), condenserP, dischargeLineDrop);
    compress(substance, cycle.VDAT[7], c.compressorInlet, condenserP + c.dischargeDrop.DP, c.condenser.dew.H,
             wetCompression, c.compressorOutlet);

    c.discharge = dischargeOutlet(substance, parameter(cycle, 9), c.compressorOutlet, condenserP, dischargeLineFall,
                                  c.condenserInlet);
    c.inletSuperheat = c.discharge.T - c.condenser.dew.T;
}

void flowsAndPerformance(const CYCLEIN& cycle) {
    c.flow = massFlow(parameter(cycle, 6), c.compressorInlet.D, cycle.VDAT[8], c.condenserInlet.H - c.condenserOutlet.H,
                      c.evaporatorOutlet.H - c.evaporatorInlet.H);
    c.power = c.flow.M * (c.compressorOutlet.H - c.compressorInlet.H);
    c.ratio = c.compressorOutlet.P / c.compressorInlet.P;
    c.performance = performanceOf(c.flow.evaporator, c.flow.condenser, c.power);
}

void deviceRowsOfCircuit(SUBSTANCE& substance) {
    c.compressorRows = {c.compressorInlet, c.compressorOutlet};
    c.dischargeRows = {c.compressorOutlet, c.condenserInlet};
    c.condenserRows = {c.condenserInlet, c.condenserOutlet};
    c.liquidRows = {c.condenserOutlet, c.expansionInlet};
    c.expansionRows = {c.expansionInlet, c.evaporatorInlet};
    c.evaporatorRows = {c.evaporatorInlet, c.evaporatorOutlet};
    c.suctionRows = {c.evaporatorOutlet, c.compressorInlet};

    INITDATADOME(substance, domeStart * c.evaporator.P);

    for (STATEPT* row :
         {&c.evaporatorRows.outlet, &c.suctionRows.inlet, &c.suctionRows.outlet, &c.compressorRows.inlet,
          &c.compressorRows.outlet, &c.dischargeRows.inlet, &c.dischargeRows.outlet, &c.condenserRows.inlet})
        finishRow(substance, dewSide, *row);
    for (STATEPT* row : {&c.condenserRows.outlet, &c.liquidRows.inlet, &c.liquidRows.outlet, &c.expansionRows.inlet})
        finishRow(substance, bubbleSide, *row);
    finishTwoPhaseRow(c.expansionRows.outlet);
    finishTwoPhaseRow(c.evaporatorRows.inlet);

    const double M = c.flow.M;
    finishDevice(c.evaporatorRows, M, Heat::gained);
    finishDevice(c.suctionRows, M, Heat::gained);
    finishDevice(c.compressorRows, M, Heat::gained);
    finishDevice(c.dischargeRows, M, Heat::lost);
    finishDevice(c.condenserRows, M, Heat::lost);
    finishDevice(c.liquidRows, M, Heat::lost);
    finishDevice(c.expansionRows, M, Heat::lost);
}

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    const double M = c.flow.M;
    const Efficiencies efficiencies{cycle.VDAT[7], cycle.VDAT[8]};
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "EVAPORATOR", c.evaporatorRows, c.evaporator, c.superheat.degree);
    lineSection(writer, "SUCTION LINE", c.suctionRows, c.suction, Heat::gained);
    compressorSection(writer, "COMPRESSOR", c.compressorRows, efficiencies, c.flow.V, c.ratio, c.power);
    lineSection(writer, "DISCHARGE LINE", c.dischargeRows, c.dischargeDrop, c.discharge.change, Heat::lost);
    condenserSection(writer, "CONDENSER", c.condenserRows, c.condenser, c.inletSuperheat, c.subcooling.degree);
    lineSection(writer, "LIQUID LINE", c.liquidRows, c.liquid, Heat::lost);
    expansionSection(writer, "EXPANSION DEVICE", c.expansionRows);

    writer.heading("PERFORMANCE PARAMETERS");
    flowRows(writer, M, c.flow.V, c.evaporatorRows.heat, c.condenserRows.heat, c.power, efficiencies);
    performanceRows(writer, c.performance);
    writer.value("Subcooling at the liquid line outlet", "K", c.liquid.temperature.degree);
    writer.value("Superheat at the evaporator outlet", "K", c.superheat.degree);
    writer.value("Superheat at the suction line outlet", "K", c.suction.temperature.degree);
    writer.value("Specific cooling effect", "kJ/kg", c.evaporatorRows.heat / M);
    writer.value("Specific heat rejection", "kJ/kg", c.condenserRows.heat / M);
    writer.value("Mean condensing temperature", "K", c.condenser.T);
    writer.value("Mean evaporating temperature", "K", c.evaporator.T);

    const STATEPT* const points[] = {&c.compressorInlet,  &c.compressorOutlet,
                                     &c.condenserInlet,   &dewPointOfGraph(c.condenserInlet, c.condenser.dew),
                                     &c.condenser.bubble, &c.condenserOutlet,
                                     &c.expansionInlet,   &c.evaporatorInlet,
                                     &c.evaporator.dew,   &c.evaporatorOutlet,
                                     &c.compressorInlet};
    graphs(writer, points, substance);
    writer.close();
}

}  // namespace

void SOLBASICCYCLE(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    condenserToExpansion(substance, cycle);
    evaporatorToCompressor(substance, cycle);
    compressorToCondenser(substance, cycle);
    flowsAndPerformance(cycle);
    deviceRowsOfCircuit(substance);
    writeResult(substance, cycle, FILEOUT);
}

}  // namespace frigana
