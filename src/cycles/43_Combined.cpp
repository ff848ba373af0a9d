#include "43_Combined.h"

#include "14_ErrorControl.h"
#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "31_FluidInformation.h"
#include "41_BasicCycle.h"
#include "CoupledCircuits.h"
#include "CycleBricks.h"
#include "SecantDriver.h"

namespace frigana {

namespace {

// ---- checks of the low temperature circuit, in the order in which they fire -----------------------------------------

constexpr CondensingChecks condensing{
    {203201, "Error: Condenser temperature > critical temperature(", " K)"},
    {203202, "Error: Condenser pressure > Critical pressure(", " kPa)"},
    {203205, "Error: Condenser outlet pressure was less than or equal  to zero!"},
};
constexpr SubcooledChecks condenserOutlet{
    {203206, "Error: Condenser - outlet temperature is out of range!"},
    {203207, "Error: Condenser - subcooling is out of range!"},
};
constexpr LineChecks liquidLineBefore{
    .drop = {{203208, "Error: Liquid line before subcooler - pressure drop is out of range!"},
             {203209, "Error: Liquid line before subcooler - drop of saturation temperature is out of range!"}},
    .pressure = {203210, "Error: Liquid line before subcooler - outlet pressure was less than or equal to zero!"},
    .temperature = {203211, "Error: Liquid line before subcooler - outlet temperature is out of range!"},
    .change = {203212, "Error: Liquid line before subcooler - temperature change is out of range!"},
    .degree = {203213, "Error: Liquid line before subcooler - outlet subcooling is out of range!"},
};
constexpr Check subcoolerFall{203214, "Error: Subcooler - temperature change is out of range!"};
constexpr Check subcoolerT{203215, "Error: Subcooler - outlet temperature is out of range!"};
constexpr DropChecks subcoolerDrop{
    {203216, "Error: Subcooler - pressure drop is out of range!"},
    {203217, "Error: Subcooler - drop of saturation temperature is out of range!"},
};
constexpr LineChecks liquidLineAfter{
    .drop = {{203218, "Error: Liquid line after subcooler - pressure drop is out of range!"},
             {203219, "Error: Liquid line after subcooler - drop of saturation temperature is out of range!"}},
    // The texts speak of drops while they guard the temperature, its fall and the subcooling; front ends know them so.
    .temperature = {203220, "Error: Liquid line after subcooler - pressure drop is out of range!"},
    .change = {203221, "Error: Liquid line after subcooler - drop of saturation temperature is out of range!"},
    .degree = {203222, "Error: Liquid line after subcooler - drop of saturation temperature is out of range!"},
};
constexpr EvaporatingChecks evaporating{
    {203223, "Error: Evaporating temperature > critical temperature(", " K)"},
    {203224, "Error: Evaporating temperature > condenser temperature!"},
    {203225, "Error: Evaporating pressure > critical pressure(", " kPa)"},
    {203226, "Error: Evaporating pressure > condenser pressure!"},
    {203229, "Error: Evaporator - inlet pressure > condenser pressure!"},
    {203230, "Error: Evaporator - outlet pressure was less than or equal to zero!"},
};
constexpr Check evaporatorSuperheat{203231, "Error: Evaporator - superheat is out of range!"};
constexpr LineChecks suctionLineChecks{
    .drop = {{203232, "Error: Suction line - pressure drop is out of range!"},
             {203233, "Error: Suction line - drop of saturation temperature is out of range!"}},
    .pressure = {203234, "Error: Compressor - inlet pressure was less than or equal to zero!"},
    .aboveTC = {203235, "Error: Suction line - outlet temperature > critical temperature(", " K)"},
    .change = {203236, "Error: Suction line - temperature change is out of range!"},
    // The text speaks of the saturation temperature while it guards the superheat; so it stays.
    .degree = {203237, "Error: Suction line drop of saturation temperature is out of range!"},
};
constexpr DropChecks dischargeDrop{
    {203238, "Error: Discharge line - pressure drop is out of range!"},
    {203239, "Error: Discharge line - drop of saturation temperature is out of range!"},
};
constexpr Check wetCompression{203300, "Error: wet compression in low temperature cycle, increase the inlet superheat"};
constexpr Check dischargeFall{203240, "Error: Discharge line - temperature change is out of range!"};

// ---- the low temperature circuit ------------------------------------------------------------------------------------

// Everything that a run works out; each begins with it at zero. Points by their number in flow order.
struct Cycle {
    Level condenser, evaporator;
    STATEPT p1;  // condenser outlet
    STATEPT p2;  // liquid line before the subcooler, outlet
    STATEPT p3;  // subcooler outlet
    STATEPT p4;  // liquid line after the subcooler, outlet: expansion device inlet
    STATEPT p5;  // evaporator inlet
    STATEPT p6;  // evaporator outlet
    STATEPT p7;  // compressor inlet
    STATEPT p8;  // compressor outlet
    STATEPT p9;  // condenser inlet
    OutletSetting subcooling, superheat;
    Line liquidBefore, liquidAfter, suction;
    PressureChange subcooler, discharge;
    TemperatureChange subcoolerT, dischargeT;
    double inletSuperheat;
    Flow flow;
    double power, ratio;
    Performance performance;
    Device evaporatorRows, suctionRows, compressorRows, dischargeRows, condenserRows, liquidBeforeRows, liquidAfterRows,
        expansionRows, subcoolerRows;
};

Cycle c;

// Parameter 18: how the subcooler is given.
constexpr int subcoolerSetting = 18;
enum SubcoolerOption { capacityGiven = 1, fallGiven = 2, outletTemperatureGiven = 3 };

TemperatureChange subcoolerChange(Parameter given, double inletT) {
    if (given.option == fallGiven) return {inletT - given.value, given.value};
    return {given.value, inletT - given.value};
}

void condenserToSubcooler(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.subcooling = condense(substance, cycle, 11, condensing, condenserOutlet, c.condenser, c.p1);
    c.liquidBefore =
        liquidLine(substance, cycle, 14, {c.p1, c.condenser.outletP(), c.subcooling.T}, liquidLineBefore, c.p2);
}

void subcoolerToExpansion(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.subcoolerT = subcoolerChange(parameter(cycle, subcoolerSetting), c.liquidBefore.temperature.T);
    const double T3 = c.subcoolerT.T;
    refuseOutside(c.subcoolerT.change, changeLimits, subcoolerFall);
    refuseOutside(T3, temperatureLimits, subcoolerT);
    const double P2 = c.liquidBefore.P;
    c.subcooler = pressureChange(substance, parameter(cycle, 19), P2, bubbleSide, subcoolerDrop);
    const double P3 = P2 - c.subcooler.DP;
    // Where nothing changes a flash at P and T could take a saturated liquid for its vapor.
    linePoint(substance, c.p2, c.subcooler.DP, c.subcoolerT.change, P3, T3, c.p3);

    c.liquidAfter = liquidLine(substance, cycle, 16, {c.p3, P3, T3}, liquidLineAfter, c.p4);
}

void evaporatorToCompressor(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double H5 = c.p4.H;  // expansion is isenthalpic
    c.superheat =
        evaporate(substance, cycle, 1, H5, c.condenser, evaporating, evaporatorSuperheat, c.evaporator, c.p5, c.p6);
    c.suction = vaporLine(substance, cycle, 4, {c.p6, c.evaporator.outletP(), c.superheat.T}, suctionLineChecks, c.p7);
}

void compressorToCondenser(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double P9 = c.condenser.inletP();
    c.discharge = pressureChangeBackwards(substance, parameter(cycle, 10), P9, dischargeDrop);
    compress(substance, cycle.VDAT[7], c.p7, P9 + c.discharge.DP, c.condenser.dew.H, wetCompression, c.p8);
    c.dischargeT = dischargeOutlet(substance, parameter(cycle, 9), c.p8, P9, dischargeFall, c.p9);
    c.inletSuperheat = c.dischargeT.T - c.condenser.dew.T;
}

void flowsAndPerformance(const CYCLEIN& cycle) {
    c.flow = massFlow(parameter(cycle, 6), c.p7.D, cycle.VDAT[8], c.p9.H - c.p1.H, c.p6.H - c.p5.H);
    c.power = c.flow.M * (c.p8.H - c.p7.H);
    c.ratio = c.p8.P / c.p7.P;
    c.performance = performanceOf(c.flow.evaporator, c.flow.condenser, c.power);
}

void deviceRowsOfCircuit(SUBSTANCE& substance, const Text255& FILEOUT) {
    c.evaporatorRows = {c.p5, c.p6};
    c.suctionRows = {c.p6, c.p7};
    c.compressorRows = {c.p7, c.p8};
    c.dischargeRows = {c.p8, c.p9};
    c.condenserRows = {c.p9, c.p1};
    c.liquidBeforeRows = {c.p1, c.p2};
    c.liquidAfterRows = {c.p3, c.p4};
    c.expansionRows = {c.p4, c.p5};
    c.subcoolerRows = {c.p2, c.p3};

    INITDATADOME(substance, domeStart * c.evaporator.P, !isTrial(FILEOUT));

    finishTwoPhaseRow(c.evaporatorRows.inlet);
    finishTwoPhaseRow(c.expansionRows.outlet);
    for (Device* device : {&c.suctionRows, &c.compressorRows, &c.dischargeRows})
        finishRows(substance, dewSide, *device);
    finishRow(substance, dewSide, c.evaporatorRows.outlet);
    finishRow(substance, dewSide, c.condenserRows.inlet);
    for (Device* device : {&c.liquidBeforeRows, &c.liquidAfterRows, &c.subcoolerRows})
        finishRows(substance, bubbleSide, *device);
    finishRow(substance, bubbleSide, c.condenserRows.outlet);
    // This row keeps the saturation temperature that the point was computed with, which is none.
    const double TSAT4 = c.expansionRows.inlet.TSAT;
    finishTwoPhaseRow(c.expansionRows.inlet);
    c.expansionRows.inlet.TSAT = TSAT4;

    const double M = c.flow.M;
    for (Device* device : {&c.evaporatorRows, &c.suctionRows, &c.compressorRows})
        finishDevice(*device, M, Heat::gained);
    for (Device* device : {&c.dischargeRows, &c.condenserRows, &c.liquidBeforeRows, &c.liquidAfterRows,
                           &c.expansionRows, &c.subcoolerRows})
        finishDevice(*device, M, Heat::lost);
}

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    const double M = c.flow.M;
    const Efficiencies efficiencies{cycle.VDAT[7], cycle.VDAT[8]};
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "EVAPORATOR", c.evaporatorRows, c.evaporator, c.superheat.degree);
    lineSection(writer, "SUCTION LINE", c.suctionRows, c.suction, Heat::gained);
    compressorSection(writer, "COMPRESSOR", c.compressorRows, efficiencies, c.flow.V, c.ratio, c.power);
    lineSection(writer, "DISCHARGE LINE", c.dischargeRows, c.discharge, c.dischargeT.change, Heat::lost);
    condenserSection(writer, "CONDENSER", c.condenserRows, c.condenser, c.inletSuperheat, c.subcooling.degree);
    lineSection(writer, "LIQUID LINE - BEFORE MECHANICAL SUBCOOLING", c.liquidBeforeRows, c.liquidBefore, Heat::lost);
    lineSection(writer, "LIQUID LINE - AFTER MECHANICAL SUBCOOLING", c.liquidAfterRows, c.liquidAfter, Heat::lost);
    expansionSection(writer, "EXPANSION DEVICE", c.expansionRows);
    lineSection(writer, "MECHANICAL SUBCOOLING (HEAT EXCHANGER)", c.subcoolerRows, c.subcooler, c.subcoolerT.change,
                Heat::lost, "Heat exchanged");

    writer.heading("PERFORMANCE PARAMETERS");
    flowRows(writer, M, c.flow.V, c.evaporatorRows.heat, c.condenserRows.heat, c.power, efficiencies);
    performanceRows(writer, c.performance);
    writer.value("Subcooling at the expansion device", "K", c.liquidAfter.temperature.degree);
    writer.value("Superheat at the evaporator outlet", "K", c.superheat.degree);
    writer.value("Superheat at the compressor inlet", "K", c.suction.temperature.degree);
    writer.value("Specific cooling effect", "kJ/kg", c.evaporatorRows.heat / M);
    writer.value("Specific heat rejection", "kJ/kg", c.condenserRows.heat / M);
    writer.value("Heat exchanged in the subcooler", "kW", c.subcoolerRows.heat);
    writer.value("Pressure drop of the subcooler", "kPa", c.subcoolerRows.DP);
    writer.value("Mean condensing temperature", "K", c.condenser.T);
    writer.value("Mean evaporating temperature", "K", c.evaporator.T);

    const STATEPT* const points[] = {&c.p7,
                                     &c.p8,
                                     &c.p9,
                                     &dewPointOfGraph(c.p9, c.condenser.dew),
                                     &c.condenser.bubble,
                                     &c.p1,
                                     &c.p2,
                                     &c.p3,
                                     &c.p4,
                                     &c.p5,
                                     &c.evaporator.dew,
                                     &c.p6,
                                     &c.p7};
    graphs(writer, points, substance);
    writer.close();
}

// ---- the system -----------------------------------------------------------------------------------------------------

// Lines of the low temperature circuit's result.
constexpr int lowLines = 333;
constexpr int lowEvaporator = 191;
constexpr int lowPower = 193;
constexpr int lowSubcooler = 206;

constexpr double firstFall = 1.0;  // K

// What both circuits give together.
struct System {
    double netCapacity, netVolumetric, netCOP, capacity, COP;
};

System systemOf(const Text255& mediumFile, const Text255& lowFile) {
    const double QE1 = resultValue(mediumFile, BasicCycleLines::evaporator);
    const double W1 = resultValue(mediumFile, BasicCycleLines::power);
    const double V1 = resultValue(mediumFile, BasicCycleLines::sweptVolume);
    const double QS = resultValue(lowFile, lowSubcooler);
    const double QE2 = resultValue(lowFile, lowEvaporator);
    const double W2 = resultValue(lowFile, lowPower);
    System system;
    system.netCapacity = QE1 - QS;
    system.netVolumetric = system.netCapacity / V1;
    system.netCOP = system.netCapacity / W1;
    system.capacity = QE2 + system.netCapacity;
    system.COP = system.capacity / (W1 + W2);
    return system;
}

void writeSystem(const System& system, const Text255& mediumFile, const Text255& lowFile, const Text255& FILEOUT) {
    // Replaced: both volumetric capacities, the capacity, and the cooling COP and EER. Inserted behind the specific
    // heat rejection: four lines of the net medium temperature capacity.
    ResultCopy medium(mediumFile, 1);
    ResultWriter writer(FILEOUT, 3);
    const auto copyUpTo = [&](int line) { writer.copyLines(medium, line - medium.line()); };
    writer.circuit("Medium temperature circuit");
    copyUpTo(BasicCycleLines::volumetricCooling - 1);
    medium.skipLines(3);
    writer.value("Volumetric cooling capacity", "kJ/m3", static_cast<float>(missingValue));
    writer.value("Volumetric heating capacity", "kJ/m3", static_cast<float>(missingValue));
    writer.value("Capacity of the system", "kW", system.capacity);
    copyUpTo(BasicCycleLines::coolingCOP - 1);
    medium.skipLines(2);
    writer.value("COP of cooling of the system", "-", system.COP);
    writer.value("EER of cooling of the system", "Btu/(W h)", energyEfficiencyRatio(system.COP));
    copyUpTo(BasicCycleLines::specificHeatRejection);
    writer.value("Net volumetric cooling capacity", "kJ/m3", system.netVolumetric);
    writer.value("Net medium temperature capacity", "kW", system.netCapacity);
    writer.value("COP of cooling of the net capacity", "-", system.netCOP);
    writer.value("EER of cooling of the net capacity", "Btu/(W h)", energyEfficiencyRatio(system.netCOP));
    copyUpTo(BasicCycleLines::all);
    medium.close();

    copySecondCircuit(writer, "Low temperature circuit", lowFile, lowLines);
    writer.close();
}

}  // namespace

void SOLBASICCYCLE_CON_MECHCOOLMATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    condenserToSubcooler(substance, cycle);
    subcoolerToExpansion(substance, cycle);
    evaporatorToCompressor(substance, cycle);
    compressorToCondenser(substance, cycle);
    flowsAndPerformance(cycle);
    deviceRowsOfCircuit(substance, FILEOUT);
    writeResult(substance, cycle, FILEOUT);
}

void SOLBASICCYCLE_CON_MECHCOOLING(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    if (cycle.TDAT[subcoolerSetting] != capacityGiven) {
        SOLBASICCYCLE_CON_MECHCOOLMATRIZ(substance, cycle, FILEOUT);
        return;
    }
    static constinit CYCLEIN trial{};
    trial = cycle;
    trial.TDAT[subcoolerSetting] = fallGiven;
    const double target = cycle.VDAT[subcoolerSetting];
    secantDriver({target, lowSubcooler, firstFall}, FILEOUT, [&](double fall, const Text255& path) {
        trial.VDAT[subcoolerSetting] = fall;
        SOLBASICCYCLE_CON_MECHCOOLMATRIZ(substance, trial, path);
    });
}

void SOLCOMBINEDCYCLE(SUBSTANCE& substance1, const CYCLEIN& cycle1, SUBSTANCE& substance2, const CYCLEIN& cycle2,
                      const Text255& FILEOUT) {
    const Text255 mediumFile = scratchPath("temporal1.txt");
    const Text255 lowFile = scratchPath("temporal2.txt");
    SOLBASICCYCLE(substance1, cycle1, mediumFile);
    SOLBASICCYCLE_CON_MECHCOOLING(substance2, cycle2, lowFile);
    writeSystem(systemOf(mediumFile, lowFile), mediumFile, lowFile, FILEOUT);
    deleteScratch(mediumFile);
    deleteScratch(lowFile);
}

}  // namespace frigana
