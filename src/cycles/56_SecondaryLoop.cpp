#include "56_SecondaryLoop.h"

#include <algorithm>

#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "23_SpecificPoints.h"
#include "27_PSatAverage.h"
#include "28_IsentropProcess.h"
#include "31_FluidInformation.h"
#include "CycleBricks.h"

namespace frigana {

namespace {

// ---- checks, in the order in which they fire ------------------------------------------------------------------------

constexpr Check evaporatingAboveTC{201213, "Error: Evaporating temperature > Critical temperature (", " K)"};
constexpr Check evaporatingAbovePC{201215, "Error: Evaporating pressure > Critical pressure (", " kPa)"};
constexpr Check evaporatorOutletP{201220, "Error: Evaporator - outlet pressure was less or equal than zero!"};
constexpr Check evaporatorSuperheat{201221, "Error: Evaporator - superheat is out of range!"};
constexpr DropChecks vaporLineDrop{
    {201222, "Error: Low pressure vapor line - pressure drop is out of range!"},
    {201223, "Error: Low pressure vapor line - drop of saturation temperature is out of range!"},
};
constexpr Check receiverP{201224, "Error: Receiver - vapor inlet pressure was less or equal than zero!"};
constexpr Check vaporLineAboveTC{201225, "Error: Low pressure vapor line - outlet temperature > critical temperature (",
                                 " K)"};
constexpr Check vaporLineRise{201226, "Error: Low pressure vapor line - temperature change is out of range!"};
// The text speaks of the saturation temperature while it guards the superheat; so it stays.
constexpr Check vaporLineSuperheat{201227,
                                   "Error: Low pressure vapor line drop of saturation temperature is out of range!"};
constexpr Check condensingAbovePC{201202, "Error: Condenser pressure > Critical pressure (", " kPa)"};
constexpr Check evaporatingBelowCondensingP{201216, "Error: Evaporating pressure < condenser pressure!"};
constexpr Check inletBelowCondensingP{201219, "Error: Evaporator - inlet pressure < condenser pressure!"};
constexpr Check evaporatingBelowCondensingT{201214, "Error: Evaporator temperature < Condenser temperature!"};
constexpr Check condenserOutletP{201205, "Error: Condenser outlet pressure was less or  equal than zero!"};
constexpr SubcooledChecks condenserOutlet{
    {201206, "Error: Condenser - outlet temperature is out of range!"},
    {201207, "Error: Condenser - subcooling is out of range!"},
};
constexpr DropChecks liquidLineDrop{
    {201228, "Error: High pressure liquid line - pressure drop is out of range!"},
    {201229, "Error: High pressure liquid line - drop of saturation temperature is out of range!"},
};
constexpr Check liquidLineRise{201230, "Error: High pressure liquid line - temperature change is out of range!"};

// The condenser may be this much warmer than the evaporator.
constexpr double warmestCondenser = -2.0;  // K

// ---- the circuit ----------------------------------------------------------------------------------------------------

// A state that may be two-phase: its temperature, distance from saturation, and the quality where that is 0.
struct WetOutlet {
    double T = 0, superheat = 0, Q = 0;
};

// Everything that a run works out; each begins with it at zero. Points by their number in flow order.
struct Cycle {
    Level evaporator, condenser;
    STATEPT p1;  // evaporator outlet
    STATEPT p2;  // low pressure vapor line outlet: receiver inlet
    STATEPT p3;  // saturated vapor in the receiver: condenser inlet
    STATEPT p4;  // condenser outlet
    STATEPT p5;  // saturated liquid in the receiver: pump inlet
    STATEPT p6;  // pump outlet
    STATEPT p7;  // high pressure liquid line outlet: evaporator inlet
    WetOutlet evaporatorOutlet;
    PressureChange vaporLine, liquidLine;
    double vaporRise;
    OutletSetting subcooling;
    TemperatureChange liquidLineT;
    double evaporatorFlow, condenserFlow, evaporatorCapacity, condenserCapacity;
    double power, ratio;
    Performance performance;
    Device evaporatorRows, vaporLineRows, condenserRows, liquidLineRows, pumpRows;
};

Cycle c;

enum OutletOption { temperatureGiven = 1, changeGiven = 2, qualityGiven = 3 };

void evaporatingSide(const SUBSTANCE& substance, Parameter level, Parameter drop) {
    Level& e = c.evaporator;
    if (level.option == 1) {
        e.T = level.value;
        refuseAbove(e.T, substance.TC, evaporatingAboveTC);
        if (drop.option == 1) {
            e.DP = drop.value;
            PEVAP_TDP_SEC(substance, e.T, e.DP, e.P, e.DT, e.glide, e.bubble, e.dew);
        } else {
            e.DT = drop.value;
            PEVAP_TDT_SEC(substance, e.T, e.DT, e.P, e.DP, e.glide, e.bubble, e.dew);
        }
    } else {
        e.P = level.value;
        refuseAbove(e.P, substance.PC, evaporatingAbovePC);
        if (drop.option == 1) {
            e.DP = drop.value;
            TEVAP_PDP_SEC(substance, e.P, e.DP, e.T, e.DT, e.glide, e.bubble, e.dew);
        } else {
            e.DT = drop.value;
            TEVAP_PDT_SEC(substance, e.P, e.DT, e.T, e.DP, e.glide, e.bubble, e.dew);
        }
    }
    refuseIf(e.outletP() <= 0.0, evaporatorOutletP);
}

WetOutlet evaporatorOutletOf(Parameter given, double dewT) {
    switch (given.option) {
        case temperatureGiven:
            return {given.value, given.value - dewT, 1.0};
        case changeGiven:
            return {dewT + given.value, given.value, 1.0};
        default:
            return {dewT, 0.0, given.value};
    }
}

void evaporatorToReceiver(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    evaporatingSide(substance, parameter(cycle, 1), parameter(cycle, 3));
    const double P1 = c.evaporator.outletP();
    c.evaporatorOutlet = evaporatorOutletOf(parameter(cycle, 2), c.evaporator.dew.T);
    const WetOutlet& outlet = c.evaporatorOutlet;
    refuseOutside(outlet.superheat, changeLimits, evaporatorSuperheat);
    if (outlet.superheat == 0.0)
        PROPSIMPLEPQ(substance, P1, outlet.Q, c.p1);
    else
        PROPSIMPLEPT(substance, P1, outlet.T, c.p1);

    c.vaporLine = pressureChange(substance, parameter(cycle, 5), P1, dewSide, vaporLineDrop);
    const double P2 = P1 - c.vaporLine.DP;
    refuseIf(P2 <= 0.0, receiverP);
    const Parameter given = parameter(cycle, 4);
    WetOutlet line{outlet.T, 0.0, given.value};
    if (given.option != qualityGiven) {
        const TemperatureChange change = riseWithSuperheat(substance, given, outlet.T, P2);
        line = {change.T, change.degree, 1.0};
        c.vaporRise = change.change;
    }
    refuseAbove(line.T, substance.TC, vaporLineAboveTC);
    refuseOutside(c.vaporRise, changeLimits, vaporLineRise);
    refuseOutside(line.superheat, changeLimits, vaporLineSuperheat);
    if (c.vaporLine.DP != 0.0 && c.vaporRise == 0.0)
        PROPSIMPLEPQ(substance, P2, line.Q, c.p2);
    else
        linePoint(substance, c.p1, c.vaporLine.DP, c.vaporRise, P2, line.T, c.p2);
}

void receiverToPump(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double PK = c.evaporator.outletP() - c.vaporLine.DP;
    PROPSIMPLEPQ(substance, PK, 1.0, c.p3);
    refuseAbove(PK, substance.PC, condensingAbovePC);
    refuseIf(c.evaporator.P < PK, evaporatingBelowCondensingP);
    refuseIf(c.evaporator.inletP() < PK, inletBelowCondensingP);

    Level& k = c.condenser;
    k.P = PK;
    TCOND_PDP(substance, k.P, k.DP, k.T, k.DT, k.glide, k.bubble, k.dew);
    refuseIf(c.evaporator.T - k.T < warmestCondenser, evaporatingBelowCondensingT);
    refuseIf(PK <= 0.0, condenserOutletP);
    c.subcooling = subcooledOutlet(substance, parameter(cycle, 8), PK, k.bubble.T, condenserOutlet, c.p4);
    PROPSIMPLEPQ(substance, PK, 0.0, c.p5);
}

void pumpToEvaporator(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double P7 = c.evaporator.inletP();
    c.liquidLine = pressureChangeBackwards(substance, parameter(cycle, 10), P7, liquidLineDrop);
    COMPISOENTRO(substance, cycle.VDAT[7], c.p5, P7 + c.liquidLine.DP, c.p6);

    // What is not given by one of its two options stays 0.
    const Parameter given = parameter(cycle, 9);
    if (given.option == temperatureGiven || given.option == changeGiven) c.liquidLineT = temperatureRise(given, c.p6.T);
    refuseOutside(c.liquidLineT.change, changeLimits, liquidLineRise);
    PROPSIMPLETQ(substance, c.liquidLineT.T, std::clamp(c.p6.Q, 0.0, 1.0), c.p7);
}

void flowsAndPerformance(const CYCLEIN& cycle) {
    const Parameter capacity = parameter(cycle, 6);
    if (capacity.option == 1) {
        c.evaporatorCapacity = capacity.value;
        c.evaporatorFlow = c.evaporatorCapacity / (c.p1.H - c.p7.H);
        // Energy balance of the receiver: the vapor that leaves it is what the pumped liquid brings back.
        c.condenserFlow = c.evaporatorFlow * (c.p2.H - c.p5.H) / (c.p3.H - c.p4.H);
        c.condenserCapacity = c.condenserFlow * (c.p3.H - c.p4.H);
    }
    c.power = c.evaporatorFlow * (c.p6.H - c.p5.H);
    c.ratio = c.p6.P / c.p5.P;
    c.performance = performanceOf(c.evaporatorCapacity, c.condenserCapacity, c.power);
}

void deviceRowsOfCircuit(SUBSTANCE& substance) {
    c.evaporatorRows = {c.p7, c.p1};
    c.vaporLineRows = {c.p1, c.p2};
    c.condenserRows = {c.p3, c.p4};
    c.liquidLineRows = {c.p6, c.p7};
    c.pumpRows = {c.p5, c.p6};

    INITDATADOME(substance, domeStart * c.evaporator.P);

    finishTwoPhaseRow(c.evaporatorRows.inlet);
    finishRow(substance, dewSide, c.evaporatorRows.outlet);
    finishRows(substance, dewSide, c.vaporLineRows);
    finishRow(substance, dewSide, c.condenserRows.inlet);
    finishRow(substance, bubbleSide, c.condenserRows.outlet);
    finishRows(substance, bubbleSide, c.liquidLineRows);
    finishRow(substance, bubbleSide, c.pumpRows.inlet);
    finishTwoPhaseRow(c.pumpRows.outlet);

    for (Device* device : {&c.evaporatorRows, &c.vaporLineRows, &c.liquidLineRows, &c.pumpRows})
        finishDevice(*device, c.evaporatorFlow, Heat::gained);
    finishDevice(c.condenserRows, c.condenserFlow, Heat::lost);
}

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    const double ME = c.evaporatorFlow;
    const double MC = c.condenserFlow;
    const double efficiency = cycle.VDAT[7];
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "EVAPORATOR", c.evaporatorRows, c.evaporator, c.evaporatorOutlet.superheat);
    lineSection(writer, "LOW PRESSURE VAPOR LINE", c.vaporLineRows, c.vaporLine, c.vaporRise, Heat::gained);
    // The vapor leaves the receiver saturated: its superheat is never worked out and prints 0.
    constexpr double noSuperheat = 0.0;
    condenserSection(writer, "CONDENSER", c.condenserRows, c.condenser, noSuperheat, c.subcooling.degree);
    lineSection(writer, "HIGH PRESSURE LIQUID LINE", c.liquidLineRows, c.liquidLine, c.liquidLineT.change,
                Heat::gained);
    deviceRows(writer, "PUMP", c.pumpRows);
    writer.value("Isentropic efficiency", "-", efficiency);
    writer.value("Pressure ratio", "-", c.ratio);
    // The section of the pump shows the flow of the condenser, while its power counts with the flow of the evaporator.
    writer.value("Mass flow of the condenser", "kg/s", MC);
    writer.value("Power", "kW", c.power);

    writer.heading("PERFORMANCE PARAMETERS");
    writer.value("Mass flow", "kg/s", ME);
    writer.value("Volumetric cooling capacity", "kJ/m3", c.evaporatorRows.heat / (ME / c.p5.D));
    writer.value("Volumetric heating capacity", "kJ/m3", c.condenserRows.heat / (ME / c.p5.D));
    writer.value("Evaporator capacity", "kW", c.evaporatorRows.heat);
    writer.value("Condenser capacity", "kW", c.condenserRows.heat);
    writer.value("Pump power", "kW", c.power);
    writer.value("Isentropic efficiency", "-", efficiency);
    performanceRows(writer, c.performance);
    writer.value("Superheat at the evaporator outlet", "K", c.evaporatorOutlet.superheat);
    writer.value("Evaporator capacity per mass flow of the condenser", "kJ/kg", c.evaporatorRows.heat / MC);
    writer.value("Condenser capacity per mass flow of the condenser", "kJ/kg", c.condenserRows.heat / MC);
    writer.value("Mean condensing temperature", "K", c.condenser.T);
    writer.value("Mean evaporating temperature", "K", c.evaporator.T);

    const STATEPT* const points[] = {&c.p5,
                                     &c.p6,
                                     &c.p7,
                                     &c.evaporator.dew,
                                     &c.p1,
                                     &c.p2,
                                     &c.p3,
                                     &dewPointOfGraph(c.p3, c.condenser.dew),
                                     &c.condenser.bubble,
                                     &c.p4,
                                     &c.p5};
    graphs(writer, points, substance);
    writer.close();
}

}  // namespace

void SOLSECONDARYCYCLE(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    evaporatorToReceiver(substance, cycle);
    receiverToPump(substance, cycle);
    pumpToEvaporator(substance, cycle);
    flowsAndPerformance(cycle);
    deviceRowsOfCircuit(substance);
    writeResult(substance, cycle, FILEOUT);
}

}  // namespace frigana
