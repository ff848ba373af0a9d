#include "50_TwoStageWithHEx.h"

#include <array>
#include <cmath>

#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "23_SpecificPoints.h"
#include "24_SaturationPoints.h"
#include "25_SubCoolSupHeat.h"
#include "28_IsentropProcess.h"
#include "31_FluidInformation.h"
#include "CycleBricks.h"

namespace frigana {

namespace {

// ---- checks, in the order in which they fire ------------------------------------------------------------------------

constexpr CondensingChecks condensing{
    {210201, "Error: Condenser temperature > critical temperature (", " K)"},
    {210202, "Error: Condenser pressure > critical pressure (", " kPa)"},
    {210205, "Error: Condenser outlet pressure was less than or equal to   zero!"},
};
constexpr SubcooledChecks condenserOutlet{
    {210206, "Error: Condenser - outlet temperature is out of range!"},
    {210207, "Error: Condenser - subcooling is out of range!"},
};
// Their texts speak of subcooling while they guard the drops; front ends know them so.
constexpr DropChecks dischargeDrop{
    {210208, "Error: Discharge line - subcooling is out of range!"},
    {210209, "Error: Discharge line - subcooling is out of range!"},
};
constexpr Check liquidSideP{210210,
                            "Error: Heat exchanger-liquid side outlet pressure  is less than or equal to zero!"};
constexpr Check liquidSideT{210211,
                            "Error: Heat exchanger- liquid side  outlet temperature is less than or equal to zero!"};
constexpr LineChecks liquidLineChecks{
    .drop = {{210212, "Error: Liquid line - pressure drop is out of range!"},
             {210213, "Error: Liquid line drop of saturation temperature is out of range!"}},
    .pressure = {210214, "Error: Liquid line - outlet pressure is less than or equal to zero!"},
    .change = {210215, "Error: Liquid line - change in temperature is out of range!"},
    .degree = {210216, "Error: Liquid line - outlet subcooling is out of range!"},
};
constexpr EvaporatingChecks evaporating{
    {210217, "Error: Evaporating temperature > critical temperature (", " K)"},
    {210218, "Error: Evaporating temperature > condenser temperature!"},
    {210219, "Error: Evaporating pressure > critical pressure (", " kPa)"},
    {210220, "Error: Evaporating pressure > condenser pressure!"},
    {210223, "Error: Evaporator - inlet pressure > condenser pressure!"},
    {210224, "Error: Evaporator - outlet pressure was less than or equal to zero!"},
};
constexpr Check evaporatorSuperheat{210225, "Error: Evaporator - superheat is out of range!"};
constexpr LineChecks suctionLineChecks{
    .drop = {{210226, "Error: Suction line - pressure drop is out of range!"},
             {210227, "Error: Suction line - drop of saturation temperature is out of range!"}},
    .pressure = {210228, "Error: Compressor - inlet pressure was less than or equal to zero!"},
    .aboveTC = {210229, "Error: Suction line - outlet temperature > critical temperature (", " K)"},
    .change = {210230, "Error: Suction line - temperature change is out of range!"},
    .degree = {210231, "Error: Suction line drop of saturation temperature is out of range!"},
};
constexpr Check injectionAboveCondenser{
    210233, "Error: Liquid line injection - inlet pressure was greater than condenser outlet pressure!"};
constexpr Check injectionBelowEvaporator{
    210240, "Error: Liquid line injection - inlet pressure was less than evaporator outlet pressure!"};
// The code is that of another cycle; so it stays.
constexpr Check injectionLineP{201205,
                               "Error: Injection line pressure drop  - injection line pressure drop was out of range!"};
constexpr Check exchangerAboveCondenser{
    210234, "Error: Heat Exchanger - inlet pressure was greater than condenser outlet pressure!"};
constexpr Check injectionTooHot{210236, "Error: Heat Exchanger - Injection Vapor Outlet superheat should be reduced!"};
constexpr Check wetCompression{210301, "Error: wet compression in high stage compressor, increase the inlet superheat"};
constexpr Check dischargeFall{210235, "Error: Discharge line - temperature change is out of range!"};

// ---- the solution ---------------------------------------------------------------------------------------------------

// Everything that a run works out; each begins with it at zero. Points by their number.
struct Cycle {
    Level condenser, evaporator;
    STATEPT p1;                             // condenser outlet, inlet of the injection valve too
    STATEPT p2;                             // exchanger, liquid outlet
    STATEPT p3;                             // liquid line outlet: expansion device inlet
    STATEPT p4;                             // evaporator inlet
    STATEPT p5;                             // evaporator outlet
    STATEPT p6;                             // suction line outlet: low compressor inlet
    STATEPT p7;                             // low compressor outlet
    STATEPT p8;                             // injection valve outlet: exchanger, injection inlet
    STATEPT p9;                             // exchanger, injection outlet
    STATEPT p10;                            // injection line outlet
    STATEPT p11;                            // high compressor inlet, behind the mixing
    STATEPT p12;                            // high compressor outlet
    STATEPT p13;                            // condenser inlet
    STATEPT injectionBubble, injectionDew;  // at the pressure of point 10
    OutletSetting subcooling, superheat;
    Line liquid, suction;
    PressureChange liquidSide, discharge;
    TemperatureChange dischargeT;
    double P7, P9, P10;  // intermediate pressures; that of point 11 is P7
    double lowOutletSuperheat, highInletSuperheat, condenserInletSuperheat;
    double x;                                    // part of the condenser's flow that is injected
    double mt, ml, mi;                           // total, low-stage and injected flow
    double VL, VH, WL, WH, lowRatio, highRatio;  // of the compressors
    double exchangerHeat;
    Performance performance;
    // The injection side's drop of saturation temperature, its rise and the superheat behind the injection line are
    // not worked out; their lines print 0.
    double neverFilled;
    Device evaporatorRows, suctionRows, lowRows, highRows, dischargeRows, condenserRows, liquidRows, expansionRows,
        valveRows, liquidSideRows, injectionSideRows;
};

Cycle c;

void condenserToExpansion(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.subcooling = condense(substance, cycle, 13, condensing, condenserOutlet, c.condenser, c.p1);
    const double P1 = c.condenser.outletP();
    c.discharge = pressureChangeBackwards(substance, parameter(cycle, 12), c.condenser.inletP(), dischargeDrop);

    c.liquidSide.DP = cycle.VDAT[20];
    SATTEMPDROP_DP(substance, P1, c.liquidSide.DP, bubbleSide, c.liquidSide.DT);
    const double P2 = P1 - c.liquidSide.DP;
    refuseIf(P2 <= 0.0, liquidSideP);
    const double T2 = c.subcooling.T - cycle.VDAT[19];
    refuseIf(T2 <= 0.0, liquidSideT);
    PROPSIMPLEPT(substance, P2, T2, c.p2);

    c.liquid = liquidLine(substance, cycle, 16, {c.p2, P2, T2}, liquidLineChecks, c.p3);
}

void evaporatorToLowCompressor(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const double H4 = c.p3.H;  // expansion is isenthalpic
    c.superheat =
        evaporate(substance, cycle, 1, H4, c.condenser, evaporating, evaporatorSuperheat, c.evaporator, c.p4, c.p5);
    c.suction = vaporLine(substance, cycle, 4, {c.p5, c.evaporator.outletP(), c.superheat.T}, suctionLineChecks, c.p6);
}

// The pressures between the stages.
void intermediatePressures(const CYCLEIN& cycle) {
    const double P1 = c.condenser.outletP();
    const double P6 = c.suction.P;
    const double P12 = c.condenser.inletP() + c.discharge.DP;
    const double lineDrop = cycle.VDAT[23];
    if (cycle.TDAT[25] == 1) {
        c.P9 = cycle.VDAT[25];
        refuseIf(c.P9 > P1, injectionAboveCondenser);
        refuseIf(c.P9 < P6, injectionBelowEvaporator);
        c.P10 = c.P9 - lineDrop;
        c.P7 = c.P10;
        refuseIf(c.P10 <= 0.0, injectionLineP);
    } else if (cycle.TDAT[25] == 2) {
        c.P7 = c.P10 = std::sqrt(P6 * P12);
        c.P9 = c.P10 + lineDrop;
        refuseIf(c.P9 >= P1, injectionAboveCondenser);
    }
}

void injection(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    COMPISOENTRO(substance, cycle.VDAT[7], c.p6, c.P7, c.p7);
    SUPHEATDEGREE_TIN(substance, c.P7, c.p7.T, c.lowOutletSuperheat);

    const double P8 = c.P9 + cycle.VDAT[21];
    refuseIf(P8 >= c.condenser.outletP(), exchangerAboveCondenser);
    PROPSIMPLEPH(substance, P8, c.p1.H, c.p8);  // fed from the condenser outlet, not from the exchanger

    const double superheat = cycle.VDAT[18];
    PROPSIMPLEPQ(substance, c.P9, 1.0, c.p9);
    const double T9 = c.p9.T + superheat;
    refuseIf(T9 >= c.p7.T, injectionTooHot);
    if (superheat != 0.0) PROPSIMPLEPT(substance, c.P9, T9, c.p9);

    const double liquidFall = c.p1.H - c.p2.H;
    c.x = liquidFall / ((c.p9.H - c.p8.H) + liquidFall);

    const double rise = cycle.VDAT[22];
    linePoint(substance, c.p9, cycle.VDAT[23], rise, c.P10, T9 + rise, c.p10);
}

void highCompressorToCondenser(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    PROPSIMPLEPH(substance, c.P7, c.x * c.p10.H + (1.0 - c.x) * c.p7.H, c.p11);
    SUPHEATDEGREE_TIN(substance, c.P7, c.p11.T, c.highInletSuperheat);
    const double P13 = c.condenser.inletP();
    compress(substance, cycle.VDAT[9], c.p11, P13 + c.discharge.DP, c.condenser.dew.H, wetCompression, c.p12);
    c.dischargeT = dischargeOutlet(substance, parameter(cycle, 11), c.p12, P13, dischargeFall, c.p13);
    c.condenserInletSuperheat = c.dischargeT.T - c.condenser.dew.T;
}

void flowsAndPerformance(const CYCLEIN& cycle) {
    const double lowDensity = c.p6.D * cycle.VDAT[8];
    const double highDensity = c.p11.D * cycle.VDAT[10];
    const double HC = c.p13.H - c.p1.H;
    const double HE = c.p5.H - c.p4.H;
    const double given = cycle.VDAT[6];
    switch (cycle.TDAT[6]) {
        case 1:
            c.VL = given;
            c.ml = c.p6.D * cycle.VDAT[8] * c.VL;
            c.mt = c.ml / (1.0 - c.x);
            c.VH = c.mt / highDensity;
            break;
        case 2:
            c.VH = given;
            c.mt = c.p11.D * cycle.VDAT[10] * c.VH;
            c.ml = c.mt * (1.0 - c.x);
            c.VL = c.ml / lowDensity;
            break;
        case 3:
            c.mt = given / HC;
            c.ml = c.mt * (1.0 - c.x);
            c.VH = c.mt / highDensity;
            c.VL = c.ml / lowDensity;
            break;
        default:
            c.ml = given / HE;
            c.mt = c.ml / (1.0 - c.x);
            c.VH = c.mt / highDensity;
            c.VL = c.ml / lowDensity;
            break;
    }
    c.mi = c.mt * c.x;
    c.WH = c.mt * (c.p12.H - c.p11.H);
    c.highRatio = c.p12.P / c.p11.P;
    c.WL = c.ml * (c.p7.H - c.p6.H);
    c.lowRatio = c.p7.P / c.p6.P;
    c.performance = performanceOf(c.ml * HE, c.mt * HC, c.WH + c.WL);
    c.exchangerHeat = c.ml * (c.p1.H - c.p2.H);
}

void deviceRowsOfCircuit(SUBSTANCE& substance) {
    c.evaporatorRows = {c.p4, c.p5};
    c.suctionRows = {c.p5, c.p6};
    c.lowRows = {c.p6, c.p7};
    c.highRows = {c.p11, c.p12};
    c.dischargeRows = {c.p12, c.p13};
    c.condenserRows = {c.p13, c.p1};
    c.liquidRows = {c.p2, c.p3};
    c.expansionRows = {c.p3, c.p4};
    c.valveRows = {c.p1, c.p8};
    c.liquidSideRows = {c.p1, c.p2};
    c.injectionSideRows = {c.p8, c.p9};

    PROPMIXTUREP_BD(substance, c.P10, 1, c.injectionBubble, c.injectionDew);
    INITDATADOME(substance, domeStart * c.evaporator.P);

    for (Device* device : {&c.suctionRows, &c.lowRows, &c.highRows, &c.dischargeRows})
        finishRows(substance, dewSide, *device);
    for (STATEPT* row : {&c.evaporatorRows.outlet, &c.condenserRows.inlet, &c.injectionSideRows.outlet})
        finishRow(substance, dewSide, *row);
    for (Device* device : {&c.liquidRows, &c.liquidSideRows}) finishRows(substance, bubbleSide, *device);
    for (STATEPT* row : {&c.condenserRows.outlet, &c.expansionRows.inlet, &c.valveRows.inlet})
        finishRow(substance, bubbleSide, *row);
    for (STATEPT* row :
         {&c.evaporatorRows.inlet, &c.expansionRows.outlet, &c.valveRows.outlet, &c.injectionSideRows.inlet})
        finishTwoPhaseRow(*row);

    finishDevice(c.evaporatorRows, c.ml, Heat::gained);
    finishDevice(c.suctionRows, c.ml, Heat::gained);
    finishDevice(c.lowRows, c.ml, Heat::gained);
    finishDevice(c.highRows, c.mt, Heat::gained);
    finishDevice(c.dischargeRows, c.mt, Heat::lost);
    finishDevice(c.condenserRows, c.mt, Heat::lost);
    finishDevice(c.liquidRows, c.ml, Heat::lost);
    finishDevice(c.expansionRows, c.ml, Heat::lost);
    finishDevice(c.valveRows, c.mi, Heat::lost);
    finishDevice(c.liquidSideRows, c.ml, Heat::lost);
    finishDevice(c.injectionSideRows, c.mi, Heat::gained);
}

// ---- the report -----------------------------------------------------------------------------------------------------

void writeExchanger(ResultWriter& writer, const CYCLEIN& cycle) {
    writer.heading("HEAT EXCHANGER");
    stateRow(writer, "Liquid inlet", c.liquidSideRows.inlet);
    stateRow(writer, "Liquid outlet", c.liquidSideRows.outlet);
    writer.group("Liquid side");
    writer.value("pressure drop", "kPa", c.liquidSideRows.DP);
    writer.value("drop of saturation temperature", "K", c.liquidSide.DT);
    writer.value("temperature fall", "K", cycle.VDAT[19]);
    writer.group({});
    stateRow(writer, "Injection inlet", c.injectionSideRows.inlet);
    stateRow(writer, "Injection outlet", c.injectionSideRows.outlet);
    writer.group("Injection side");
    writer.value("pressure drop", "kPa", c.injectionSideRows.DP);
    writer.value("drop of saturation temperature (not computed)", "K", c.neverFilled);
    writer.value("temperature rise (not computed)", "K", c.neverFilled);
    writer.group({});
    writer.value("Mass flow of the liquid", "kg/s", c.ml);
    writer.value("Mass flow of the injection", "kg/s", c.mi);
    writer.value("Heat exchanged", "kW", c.exchangerHeat);
}

void writePerformance(ResultWriter& writer, const Efficiencies& low, const Efficiencies& high) {
    writer.heading("PERFORMANCE PARAMETERS");
    writer.value("Mass flow, condenser", "kg/s", c.mt);
    writer.value("Mass flow, evaporator", "kg/s", c.ml);
    writer.value("Mass flow, low compressor", "kg/s", c.ml);
    writer.value("Mass flow, injection", "kg/s", c.mi);
    writer.value("Injected fraction", "kg/kg", c.x);
    writer.value("Volumetric cooling capacity, low compressor", "kJ/m3", c.evaporatorRows.heat / c.VL);
    writer.value("Volumetric heating capacity, high compressor", "kJ/m3", c.condenserRows.heat / c.VH);
    writer.value("Evaporator capacity", "kW", c.evaporatorRows.heat);
    writer.value("Condenser capacity", "kW", c.condenserRows.heat);
    compressorRows(writer, "High compressor", c.WH, high, c.VH);
    compressorRows(writer, "Low compressor", c.WL, low, c.VL);
    performanceRows(writer, c.performance);
    writer.value("Subcooling at the expansion device", "K", c.liquid.temperature.degree);
    writer.value("Superheat at the evaporator outlet", "K", c.superheat.degree);
    writer.value("Superheat at the low compressor inlet", "K", c.suction.temperature.degree);
    writer.value("Superheat at the low compressor outlet", "K", c.lowOutletSuperheat);
    writer.value("Superheat at the injection line outlet (not computed)", "K", c.neverFilled);
    writer.value("Superheat at the high compressor inlet", "K", c.highInletSuperheat);
    writer.value("Temperature at the high compressor outlet", "K", c.p12.T);
    writer.value("Specific cooling effect", "kJ/kg", c.evaporatorRows.heat / c.mt);
    writer.value("Specific heat rejection", "kJ/kg", c.condenserRows.heat / c.mt);
    writer.value("Mean condensing temperature", "K", c.condenser.T);
    writer.value("Mean evaporating temperature", "K", c.evaporator.T);
}

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    const Efficiencies low{cycle.VDAT[7], cycle.VDAT[8]};
    const Efficiencies high{cycle.VDAT[9], cycle.VDAT[10]};
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "EVAPORATOR", c.evaporatorRows, c.evaporator, c.superheat.degree);
    lineSection(writer, "SUCTION LINE", c.suctionRows, c.suction, Heat::gained);
    compressorSection(writer, "LOW COMPRESSOR", c.lowRows, low, c.VL, c.lowRatio, c.WL);
    compressorSection(writer, "HIGH COMPRESSOR", c.highRows, high, c.VH, c.highRatio, c.WH);
    lineSection(writer, "DISCHARGE LINE", c.dischargeRows, c.discharge, c.dischargeT.change, Heat::lost);
    condenserSection(writer, "CONDENSER", c.condenserRows, c.condenser, c.condenserInletSuperheat, c.subcooling.degree);
    lineSection(writer, "LIQUID LINE", c.liquidRows, c.liquid, Heat::lost);
    expansionSection(writer, "EXPANSION DEVICE", c.expansionRows);
    expansionSection(writer, "LIQUID INJECTION EXPANSION VALVE", c.valveRows);
    writeExchanger(writer, cycle);
    writePerformance(writer, low, high);

    const STATEPT& condenserDew = dewPointOfGraph(c.p13, c.condenser.dew);
    // The injected vapor is drawn by way of the dew line where it is superheated: by enthalpy in one diagram, by
    // entropy in the other, and with the test the other way round than for the condenser.
    const STATEPT& byEnthalpy = c.p10.H <= c.injectionDew.H ? c.injectionDew : c.p10;
    const STATEPT& byEntropy = c.p10.S <= c.injectionDew.S ? c.injectionDew : c.p10;
    using Points = std::array<const STATEPT*, 20>;
    const auto points = [&](const STATEPT& injected) -> Points {
        return {&c.p6,
                &c.p7,
                &c.p11,
                &c.p12,
                &c.p13,
                &condenserDew,
                &c.condenser.bubble,
                &c.p1,
                &c.p2,
                &c.p3,
                &c.p4,
                &c.evaporator.dew,
                &c.p5,
                &c.p6,
                &c.p1,
                &c.p8,
                &c.p9,
                &c.p10,
                &injected,
                &c.p11};
    };
    graphs(writer, points(byEnthalpy), points(byEntropy), substance);
    writer.close();
}

}  // namespace

void SOLTWOSTAGEWTHEX_MATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    condenserToExpansion(substance, cycle);
    evaporatorToLowCompressor(substance, cycle);
    intermediatePressures(cycle);
    injection(substance, cycle);
    highCompressorToCondenser(substance, cycle);
    flowsAndPerformance(cycle);
    deviceRowsOfCircuit(substance);
    writeResult(substance, cycle, FILEOUT);
}

void SOLTWOSTAGEWTHEX(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    SOLTWOSTAGEWTHEX_MATRIZ(substance, cycle, FILEOUT);
}

}  // namespace frigana
