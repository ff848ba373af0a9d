#include "51_MStageWithFlashTank.h"

#include <array>
#include <cmath>
#include <initializer_list>
#include <span>

#include "14_ErrorControl.h"
#include "21_InitSubstance.h"
#include "22_InitVaporDome.h"
#include "23_SpecificPoints.h"
#include "24_SaturationPoints.h"
#include "25_SubCoolSupHeat.h"
#include "27_PSatAverage.h"
#include "28_IsentropProcess.h"
#include "31_FluidInformation.h"
#include "CycleBricks.h"

namespace frigana {

namespace {

// ---- checks, in the order in which they fire ------------------------------------------------------------------------

constexpr CondensingChecks condensing{
    {211201, "Error: Condenser temperature > critical temperature (", " K)"},
    {211202, "Error: Condenser pressure > critical pressure (", " kPa)"},
    {211205, "Error: Condenser outlet pressure was less than or equal to zero!"},
};
constexpr SubcooledChecks condenserOutlet{
    {211206, "Error: Condenser - outlet temperature is out of range!"},
    {211207, "Error: Condenser - subcooling is out of range!"},
};
constexpr DropChecks dischargeDrop{
    {211208, "Error: Discharge line - pressure drop is out of range!"},
    {211209, "Error: Discharge line - drop of saturation temperature is out of range!"},
};
constexpr EvaporatingChecks evaporating{
    {211210, "Error: Evaporating temperature > critical temperature (", " K)"},
    {211211, "Error: Evaporating temperature > condenser temperature!"},
    {211212, "Error: Evaporating pressure > critical pressure (", " kPa)"},
    {211213, "Error: Evaporating pressure > condenser pressure!"},
    {211216, "Error: Evaporator - inlet pressure > condenser pressure!"},
    {211217, "Error: Evaporator - outlet pressure is less than or equal to zero!"},
};
constexpr Check evaporatorSuperheat{211218, "Error: Evaporator - superheat is out of range!"};
constexpr LineChecks suctionLineChecks{
    .drop = {{211219, "Error: Suction line - pressure drop is out of range!"},
             {211220, "Error: Suction line - drop of saturation temperature is out of range!"}},
    .pressure = {211221, "Error: Suction line - outlet pressure is less than or equal to zero!"},
    .aboveTC = {211222, "Error: Suction line - outlet temperature > critical temperature (", " K)"},
    .change = {211223, "Error: Suction line - temperature change is out of range!"},
    .degree = {211224, "Error: Suction line drop of saturation temperature is out of range!"},
};
// Between text and tail stands the number of the stage.
constexpr Check stageTemperature{
    211234, "Out of range: Stage ",
    " - Average saturation temperature should be between condensing and evaporating temperature"};
constexpr Check injectionDrop{211225, "Error: Vapor injection line - stage ",
                              " - high pressure drop may be a problem for this cycle!"};
constexpr Check noVapor{211226, "Error: Vapor injection line - stage ",
                        " - injection mass flow rate was less than or equal to zero!"};
constexpr Check onlyVapor{211227, "Error: Vapor injection line - stage ",
                          " - injection mass flow was greater than possible!"};
constexpr Check unknownVapor{211228, "Error: Vapor injection line - stage ", " -  injection mass flow is undefinited!"};
constexpr LineChecks liquidLineChecks{
    .drop = {{211228, "Error: Liquid line - pressure drop is out of range!"},
             {211229, "Error: Liquid line drop of saturation temperature is out of range!"}},
    .pressure = {211230, "Error: Liquid line - outlet pressure was less than or equal to zero!"},
    .change = {211231, "Error: Liquid line - change in temperature is out of range!"},
    .degree = {211232, "Error: Liquid line - outlet subcooling is out of range!"},
};
constexpr Check wetCompression{211300, "Error: wet compression in last stage compressor, increase the inlet superheat"};
constexpr Check dischargeFall{211233, "Error: Discharge line - temperature change is out of range!"};

void refuseStageIf(bool condition, const Check& check, int stage) {
    if (!condition) return;
    Text255 text;
    message(text, check.text, leftJustified(Integer{2, stage}).trimmed(), check.tail);
    ERRORCONTROL(check.code, text);
}

// ---- the solution ---------------------------------------------------------------------------------------------------

constexpr int mostStages = 7;  // a record's parameters reach no further
constexpr int mostTanks = mostStages - 1;
template <class T>
using PerStage = Array1<T, mostTanks>;

struct Compressor {
    Efficiencies efficiency;
    double inletSuperheat, outletSuperheat;
    double V, power, ratio;
    Device rows;
};
struct FlashTank {
    double in, liquid, vapor;  // mass flows
    double vaporFraction;
    STATEPT inletRow, liquidRow, vaporRow;
};
struct InjectionLine {
    double change;  // of temperature
    Parameter given;
    PressureChange drop;
    Device rows;
};

// Everything that a run works out; each begins with it at zero. Single points by their number; those of the stages
// from 1, the lowest, upward.
struct Cycle {
    int N;  // number of compressors
    Level condenser, evaporator;
    STATEPT p1;              // condenser outlet
    STATEPT p2;              // evaporator inlet
    STATEPT p3;              // evaporator outlet
    STATEPT p4;              // suction line outlet: inlet of compressor 1
    STATEPT p5;              // liquid line outlet: expansion device inlet
    STATEPT p6;              // condenser inlet
    STATEPT p12;             // outlet of the last compressor
    PerStage<STATEPT> PT08;  // expansion valve outlet: tank inlet
    PerStage<STATEPT> PT09;  // tank, liquid
    PerStage<STATEPT> PT10;  // tank, vapor
    PerStage<STATEPT> PT11;  // injection line outlet
    PerStage<STATEPT> PT12;  // compressor outlet
    PerStage<STATEPT> PT13;  // behind the mixing: inlet of the next compressor
    OutletSetting subcooling, superheat;
    Line suction, liquid;
    PressureChange discharge;
    TemperatureChange dischargeT;
    double P4, P12;  // inlet pressure of the first, outlet pressure of the last compressor
    double condenserInletSuperheat;
    double mc, me;  // flow of condenser and last compressor, of the evaporator
    Performance performance;
    double neverFilled;  // its lines print 0
    Array1<Compressor, mostStages> COMP2;
    PerStage<FlashTank> FTNK2;
    PerStage<InjectionLine> VILN2;
    PerStage<Device> VVXP2;  // expansion valve
    Device evaporatorRows, suctionRows, dischargeRows, condenserRows, liquidRows, expansionRows;
};

Cycle c;

// Inlet of compressor i.
const STATEPT& compressorInlet(int i) {
    return i == 1 ? c.p4 : c.PT13[i - 1];
}

int firstParameter(int stage) {
    return 16 + 5 * (stage - 1);
}

void stageParameters(const CYCLEIN& cycle) {
    c.N = cycle.TDAT[16];
    for (int i = 1; i < c.N; ++i) {
        const int b = firstParameter(i);
        c.VILN2[i].change = cycle.VDAT[b + 1];
        c.VILN2[i].given = parameter(cycle, b + 2);
        c.COMP2[i].efficiency = {cycle.VDAT[b + 3], cycle.VDAT[b + 4]};
    }
    c.COMP2[c.N].efficiency = {cycle.VDAT[7], cycle.VDAT[8]};
}

void condenser(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    c.subcooling = condense(substance, cycle, 11, condensing, condenserOutlet, c.condenser, c.p1);
    c.discharge = pressureChangeBackwards(substance, parameter(cycle, 10), c.condenser.inletP(), dischargeDrop);
    c.P12 = c.condenser.inletP() + c.discharge.DP;
}

void evaporatorToFirstCompressor(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    // The liquid that feeds the evaporator is known only when all tanks are solved; until then it counts as two-phase
    // with little vapor.
    constexpr double estimatedQuality = static_cast<double>(0.1f);
    if (cycle.TDAT[1] == 1)
        PROPSIMPLETQ(substance, cycle.VDAT[1], estimatedQuality, c.p2);
    else
        PROPSIMPLEPQ(substance, cycle.VDAT[1], estimatedQuality, c.p2);
    evaporatingLevel(substance, parameter(cycle, 1), parameter(cycle, 3), c.p2.H, c.condenser.T, c.condenser.P,
                     evaporating, c.evaporator);
    const double P3 = c.evaporator.outletP();
    c.superheat = superheatedOutlet(substance, parameter(cycle, 2), P3, c.evaporator.dew.T, evaporatorSuperheat, c.p3);

    c.suction = vaporLine(substance, cycle, 4, {c.p3, P3, c.superheat.T}, suctionLineChecks, c.p4);
    c.P4 = c.suction.P;
    c.COMP2[1].inletSuperheat = c.suction.temperature.degree;
}

// PT11(i).P: the pressures at which the stages meet.
void intermediatePressures(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    constexpr int equalRatios = 1;
    if (cycle.TDAT[firstParameter(1) + 5] == equalRatios) {
        const double ratio = std::pow(c.P12 / c.P4, 1.0 / c.N);
        for (int i = 1; i < c.N; ++i) c.PT11[i].P = c.P4 * std::pow(ratio, i);
        return;
    }
    for (int i = 1; i < c.N; ++i) {
        static constinit STATEPT bubble{}, dew{};
        const double T = cycle.VDAT[firstParameter(i) + 5];
        refuseStageIf(T >= c.condenser.T || T <= c.evaporator.T, stageTemperature, i);
        double DT = 0.0;
        double glide = 0.0;
        PCOND_TDP(substance, T, 0.0, c.PT11[i].P, DT, glide, bubble, dew);
    }
}

PressureChange injectionPressureChange(const SUBSTANCE& substance, Parameter given, double outletP) {
    // A drop of saturation temperature has no effect on the pressure and is only reported; results are known so.
    if (given.option == 2) return {0.0, given.value};
    return pressureChangeBackwards(substance, given, outletP, {});
}

void solveStage(const SUBSTANCE& substance, int i) {
    static constinit STATEPT liquidAbove{}, vaporAbove{};
    const bool highest = i == c.N - 1;
    const double stageP = c.PT11[i].P;
    // To the stage above; for the highest one the mean condensing pressure, not that of the discharge.
    const double ratio = (highest ? c.condenser.P : c.PT11[i + 1].P) / stageP;
    InjectionLine& line = c.VILN2[i];
    line.drop = injectionPressureChange(substance, line.given, stageP);
    refuseStageIf(line.drop.DP >= stageP * (ratio - 1.0), injectionDrop, i);
    const double tankP = stageP + line.drop.DP;

    double feedH = c.p1.H;
    if (!highest) {
        // The liquid of the tank above, taken at this stage's ratio.
        PROPMIXTUREP_BD(substance, tankP * ratio, 1, liquidAbove, vaporAbove);
        feedH = liquidAbove.H;
    }
    PROPSIMPLEPH(substance, tankP, feedH, c.PT08[i]);
    PROPMIXTUREP_BD(substance, tankP, 1, c.PT09[i], c.PT10[i]);
    linePoint(substance, c.PT10[i], line.drop.DP, line.change, stageP, c.PT10[i].T + line.change, c.PT11[i]);

    COMPISOENTRO(substance, c.COMP2[i].efficiency.isentropic, compressorInlet(i), stageP, c.PT12[i]);

    // The quality behind the valve is the whole mass balance of the stage.
    const double q = c.PT08[i].Q;
    c.FTNK2[i].vaporFraction = q;
    PROPSIMPLEPH(substance, stageP, q * c.PT11[i].H + (1.0 - q) * c.PT12[i].H, c.PT13[i]);
    SUPHEATDEGREE_TIN(substance, stageP, c.PT13[i].T, c.COMP2[i + 1].inletSuperheat);
    refuseStageIf(q <= 0.0, noVapor, i);
    refuseStageIf(q >= 1.0, onlyVapor, i);
    refuseStageIf(std::isnan(q), unknownVapor, i);
}

void liquidLineToEvaporator(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    const STATEPT& inlet = c.PT09[1];
    c.liquid = liquidLine(substance, cycle, 14, {inlet, inlet.P, inlet.T}, liquidLineChecks, c.p5);
    // Expansion is isenthalpic. The evaporator's pressures stay those of the estimated inlet.
    PROPSIMPLEPH(substance, c.evaporator.inletP(), c.p5.H, c.p2);
}

void lastCompressorToCondenser(const SUBSTANCE& substance, const CYCLEIN& cycle) {
    compress(substance, c.COMP2[c.N].efficiency.isentropic, compressorInlet(c.N), c.P12, c.condenser.dew.H,
             wetCompression, c.p12);
    c.dischargeT = dischargeOutlet(substance, parameter(cycle, 9), c.p12, c.condenser.inletP(), dischargeFall, c.p6);
    c.condenserInletSuperheat = c.dischargeT.T - c.condenser.dew.T;
}

// Splits what flows into tank i.
void splitFlow(int i, double in) {
    FlashTank& tank = c.FTNK2[i];
    tank.in = in;
    tank.liquid = in * (1.0 - tank.vaporFraction);
    tank.vapor = in * tank.vaporFraction;
}

void flows(const CYCLEIN& cycle) {
    const int last = c.N - 1;
    const double density = compressorInlet(c.N).D * c.COMP2[c.N].efficiency.volumetric;
    const double HC = c.p6.H - c.p1.H;
    const double HE = c.p3.H - c.p2.H;
    double& VN = c.COMP2[c.N].V;
    const double given = cycle.VDAT[6];
    switch (cycle.TDAT[6]) {
        case 1:
            VN = given;
            c.mc = density * VN;
            for (int j = last; j >= 1; --j) splitFlow(j, j == last ? c.mc : c.FTNK2[j + 1].liquid);
            c.me = c.FTNK2[1].liquid;
            break;
        case 2:
            c.mc = given / HC;
            // Walked from above while each tank but the first asks for the flow of the one below it, which is not
            // known yet and counts as zero. Results with more than one tank are known so.
            for (int j = last; j >= 1; --j) splitFlow(j, j == 1 ? c.mc : c.FTNK2[j - 1].liquid);
            c.me = c.FTNK2[1].liquid;
            VN = c.mc / density;
            break;
        default:
            c.me = given / HE;
            for (int i = 1; i <= last; ++i) {
                FlashTank& tank = c.FTNK2[i];
                tank.liquid = i == 1 ? c.me : c.FTNK2[i - 1].in;
                tank.in = tank.liquid / (1.0 - tank.vaporFraction);
                tank.vapor = tank.in * tank.vaporFraction;
            }
            c.mc = c.FTNK2[last].in;
            VN = c.mc / density;
            break;
    }
}

void powersAndPerformance(const SUBSTANCE& substance) {
    double power = 0.0;
    for (int i = 1; i <= c.N; ++i) {
        Compressor& compressor = c.COMP2[i];
        const STATEPT& inlet = compressorInlet(i);
        const bool last = i == c.N;
        const STATEPT& outlet = last ? c.p12 : c.PT12[i];
        const double M = last ? c.mc : c.FTNK2[i].liquid;
        if (!last) {
            compressor.V = M / (inlet.D * compressor.efficiency.volumetric);
            SUPHEATDEGREE_TIN(substance, outlet.P, outlet.T, compressor.outletSuperheat);
        }
        compressor.power = M * (outlet.H - inlet.H);
        compressor.ratio = outlet.P / inlet.P;
        power += compressor.power;
    }
    c.performance = performanceOf(c.me * (c.p3.H - c.p2.H), c.mc * (c.p6.H - c.p1.H), power);
}

void deviceRowsOfCircuit(SUBSTANCE& substance) {
    c.evaporatorRows = {c.p2, c.p3};
    c.suctionRows = {c.p3, c.p4};
    c.dischargeRows = {c.p12, c.p6};
    c.condenserRows = {c.p6, c.p1};
    c.liquidRows = {c.PT09[1], c.p5};
    c.expansionRows = {c.p5, c.p2};
    c.COMP2[c.N].rows = {compressorInlet(c.N), c.p12};

    INITDATADOME(substance, domeStart * c.evaporator.P);

    for (Device* device : {&c.suctionRows, &c.dischargeRows, &c.COMP2[c.N].rows})
        finishRows(substance, dewSide, *device);
    for (STATEPT* row : {&c.evaporatorRows.outlet, &c.condenserRows.inlet}) finishRow(substance, dewSide, *row);
    finishRows(substance, bubbleSide, c.liquidRows);
    for (STATEPT* row : {&c.condenserRows.outlet, &c.expansionRows.inlet}) finishRow(substance, bubbleSide, *row);
    for (STATEPT* row : {&c.evaporatorRows.inlet, &c.expansionRows.outlet}) finishTwoPhaseRow(*row);

    finishDevice(c.evaporatorRows, c.me, Heat::gained);
    finishDevice(c.suctionRows, c.me, Heat::gained);
    finishDevice(c.COMP2[c.N].rows, c.mc, Heat::gained);
    finishDevice(c.dischargeRows, c.mc, Heat::lost);
    finishDevice(c.condenserRows, c.mc, Heat::lost);
    finishDevice(c.liquidRows, c.me, Heat::lost);
    finishDevice(c.expansionRows, c.me, Heat::lost);
}

void deviceRowsOfStage(const SUBSTANCE& substance, int i) {
    FlashTank& tank = c.FTNK2[i];
    Device& valve = c.VVXP2[i];
    Device& line = c.VILN2[i].rows;
    Device& compressor = c.COMP2[i].rows;
    valve = {i == c.N - 1 ? c.p1 : c.PT09[i + 1], c.PT08[i]};
    tank.inletRow = c.PT08[i];
    tank.liquidRow = c.PT09[i];
    tank.vaporRow = c.PT10[i];
    line = {c.PT10[i], c.PT11[i]};
    compressor = {compressorInlet(i), c.PT12[i]};

    for (STATEPT* row : {&valve.inlet, &tank.inletRow, &tank.liquidRow}) finishRow(substance, bubbleSide, *row);
    finishTwoPhaseRow(valve.outlet);
    finishRow(substance, dewSide, tank.vaporRow);
    finishRows(substance, dewSide, line);
    finishRows(substance, dewSide, compressor);

    finishDevice(valve, tank.liquid + tank.vapor, Heat::lost);
    finishDevice(line, tank.vapor, Heat::gained);
    finishDevice(compressor, tank.liquid, Heat::gained);
}

// ---- the report -----------------------------------------------------------------------------------------------------

// The titles of the stages are written in fixed format: the number takes two columns, and no blank stands in front.
void stageTitle(ResultWriter& writer, int stage, std::string_view device) {
    FixedText<60> title;
    message(title, "STAGE ", Integer{2, stage}, device);
    writer.fixedHeading(title.trimmed());
}

void writeStage(ResultWriter& writer, int i) {
    const FlashTank& tank = c.FTNK2[i];
    const InjectionLine& line = c.VILN2[i];
    const Compressor& compressor = c.COMP2[i];

    stageTitle(writer, i, " - EXPANSION VALVE");
    endRows(writer, c.VVXP2[i]);
    expansionRows(writer, c.VVXP2[i]);

    stageTitle(writer, i, " - FLASH TANK");
    stateRow(writer, "Inlet", tank.inletRow);
    stateRow(writer, "Liquid", tank.liquidRow);
    stateRow(writer, "Vapor", tank.vaporRow);
    writer.value("Mass flow into the tank", "kg/s", tank.in);
    writer.value("Mass flow of the liquid", "kg/s", tank.liquid);
    writer.value("Mass flow of the vapor", "kg/s", tank.vapor);

    stageTitle(writer, i, " - VAPOR INJECTION LINE");
    endRows(writer, line.rows);
    lineRows(writer, line.rows, line.drop, line.change, Heat::gained);

    stageTitle(writer, i, " - COMPRESSOR");
    endRows(writer, compressor.rows);
    compressorRows(writer, compressor.efficiency, compressor.V, compressor.ratio, compressor.rows.M, compressor.power);
}

void writePerformance(ResultWriter& writer) {
    const Compressor& last = c.COMP2[c.N];
    const double QE = c.evaporatorRows.heat;
    const double QC = c.condenserRows.heat;
    writer.heading("PERFORMANCE PARAMETERS");
    writer.value("Mass flow, condenser", "kg/s", c.mc);
    writer.value("Mass flow, evaporator", "kg/s", c.me);
    writer.value("Volumetric cooling capacity, compressor 1", "kJ/m3", QE / c.COMP2[1].V);
    writer.value("Volumetric heating capacity, last compressor", "kJ/m3", QC / last.V);
    writer.value("Evaporator capacity", "kW", QE);
    writer.value("Condenser capacity", "kW", QC);
    compressorRows(writer, "Last compressor", last.power, last.efficiency, last.V);
    performanceRows(writer, c.performance);
    writer.value("Subcooling at the expansion device", "K", c.liquid.temperature.degree);
    writer.value("Superheat at the evaporator outlet", "K", c.superheat.degree);
    writer.value("Superheat at the inlet of compressor 1", "K", c.suction.temperature.degree);
    writer.value("Superheat at the last compressor inlet", "K", last.inletSuperheat);
    writer.value("Temperature at the last compressor outlet", "K", c.p12.T);
    writer.value("Specific cooling effect", "kJ/kg", QE / c.me);
    writer.value("Specific heat rejection", "kJ/kg", QC / c.mc);
    for (int i = 1; i < c.N; ++i) {
        const Compressor& compressor = c.COMP2[i];
        writer.row("Stage", i);
        writer.value("Mass flow of the injected vapor", "kg/s", c.FTNK2[i].vapor);
        writer.value("Injected vapor over the condenser's flow", "kg/kg", c.FTNK2[i].vapor / c.mc);
        writer.value("Compressor power", "kW", compressor.power);
        writer.value("Isentropic efficiency", "-", compressor.efficiency.isentropic);
        writer.value("Volumetric efficiency", "-", compressor.efficiency.volumetric);
        writer.value("Swept volume", "m3/s", compressor.V);
        writer.value("Superheat at the injection line outlet (not computed)", "K", c.neverFilled);
        writer.value("Superheat at the compressor outlet", "K", compressor.outletSuperheat);
        writer.value("Superheat at the inlet of the next compressor", "K", c.COMP2[i + 1].inletSuperheat);
    }
    writer.group({});
    writer.value("Mean condensing temperature", "K", c.condenser.T);
    writer.value("Mean evaporating temperature", "K", c.evaporator.T);
}

void writeGraphs(ResultWriter& writer, const SUBSTANCE& substance) {
    constexpr std::size_t ofEveryCycle = 11;
    constexpr std::size_t ofEveryStage = 8;
    static std::array<const STATEPT*, ofEveryCycle + ofEveryStage * mostTanks> points;
    std::size_t count = 0;
    const auto draw = [&](std::initializer_list<const STATEPT*> next) {
        for (const STATEPT* point : next) points[count++] = point;
    };
    draw({&c.p4});
    for (int i = 1; i < c.N; ++i) draw({&c.PT12[i], &c.PT13[i]});
    draw({&c.p12, &c.p6, &dewPointOfGraph(c.p6, c.condenser.dew), &c.condenser.bubble, &c.p1});
    for (int j = c.N - 1; j >= 1; --j) draw({&c.PT08[j], &c.PT09[j]});
    draw({&c.p5, &c.p2, &c.evaporator.dew, &c.p3, &c.p4});
    for (int i = 1; i < c.N; ++i) draw({&c.PT08[i], &c.PT10[i], &c.PT11[i], &c.PT13[i]});
    graphs(writer, std::span(points).first(count), substance);
}

void writeResult(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    const Compressor& last = c.COMP2[c.N];
    ResultWriter writer(FILEOUT);
    resultHeader(writer, cycle, substance);

    evaporatorSection(writer, "EVAPORATOR", c.evaporatorRows, c.evaporator, c.superheat.degree);
    lineSection(writer, "SUCTION LINE", c.suctionRows, c.suction, Heat::gained);
    compressorSection(writer, "LAST STAGE COMPRESSOR", last.rows, last.efficiency, last.V, last.ratio, last.power);
    lineSection(writer, "DISCHARGE LINE", c.dischargeRows, c.discharge, c.dischargeT.change, Heat::lost);
    condenserSection(writer, "CONDENSER", c.condenserRows, c.condenser, c.condenserInletSuperheat, c.subcooling.degree);
    lineSection(writer, "LIQUID LINE", c.liquidRows, c.liquid, Heat::lost);
    expansionSection(writer, "EXPANSION DEVICE NEAR TO EVAPORATOR", c.expansionRows);
    writer.heading("NUMBER OF STAGES");
    writer.integer("Number of stages", c.N);
    for (int i = 1; i < c.N; ++i) writeStage(writer, i);
    writePerformance(writer);
    writeGraphs(writer, substance);
    writer.close();
}

}  // namespace

void SOLMULTISTAGEFTK(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    c = {};
    INITSUBSTANCE(substance);
    FLUIDGWP(substance);
    stageParameters(cycle);
    condenser(substance, cycle);
    evaporatorToFirstCompressor(substance, cycle);
    intermediatePressures(substance, cycle);
    for (int i = 1; i < c.N; ++i) solveStage(substance, i);
    liquidLineToEvaporator(substance, cycle);
    lastCompressorToCondenser(substance, cycle);
    flows(cycle);
    powersAndPerformance(substance);
    deviceRowsOfCircuit(substance);
    for (int i = 1; i < c.N; ++i) deviceRowsOfStage(substance, i);
    writeResult(substance, cycle, FILEOUT);
}

}  // namespace frigana
