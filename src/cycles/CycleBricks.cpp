#include "CycleBricks.h"

#include <algorithm>

#include "14_ErrorControl.h"
#include "23_SpecificPoints.h"
#include "25_SubCoolSupHeat.h"
#include "27_PSatAverage.h"
#include "28_IsentropProcess.h"
#include "40_RangeChecks.h"
#include "LimitMessage.h"

namespace frigana {

// ---- checks ---------------------------------------------------------------------------------------------------------

void refuseIf(bool condition, const Check& check) {
    if (condition && check.code > 0) ERRORCONTROL(check.code, Text255(check.text));
}

void refuseAbove(double value, double limit, const Check& check) {
    if (!(value > limit) || check.code <= 0) return;
    ERRORCONTROL(check.code, limitMessage(check.text, limit, check.tail));
}

void refuseOutside(double value, const Limits& limits, const Check& check) {
    refuseIf(ISOUTR(value, limits.low, limits.high), check);
}

// ---- parameters -----------------------------------------------------------------------------------------------------

Parameter parameter(const CYCLEIN& cycle, int k) {
    return {cycle.TDAT[k], cycle.VDAT[k]};
}

// ---- pressure and temperature levels --------------------------------------------------------------------------------

void condensingLevel(const SUBSTANCE& substance, Parameter level, Parameter drop, const CondensingChecks& checks,
                     Level& condenser) {
    Level& c = condenser;
    if (level.option == 1) {
        c.T = level.value;
        refuseAbove(c.T, substance.TC, checks.aboveTC);
        if (drop.option == 1) {
            c.DP = drop.value;
            PCOND_TDP(substance, c.T, c.DP, c.P, c.DT, c.glide, c.bubble, c.dew);
        } else {
            c.DT = drop.value;
            PCOND_TDT(substance, c.T, c.DT, c.P, c.DP, c.glide, c.bubble, c.dew);
        }
    } else {
        c.P = level.value;
        refuseAbove(c.P, substance.PC, checks.abovePC);
        if (drop.option == 1) {
            c.DP = drop.value;
            TCOND_PDP(substance, c.P, c.DP, c.T, c.DT, c.glide, c.bubble, c.dew);
        } else {
            c.DT = drop.value;
            TCOND_PDT(substance, c.P, c.DT, c.T, c.DP, c.glide, c.bubble, c.dew);
        }
    }
    refuseIf(c.outletP() <= 0.0, checks.outletPressure);
}

void evaporatingLevel(const SUBSTANCE& substance, Parameter level, Parameter drop, double inletH, double highT,
                      double highP, const EvaporatingChecks& checks, Level& evaporator) {
    Level& e = evaporator;
    if (level.option == 1) {
        e.T = level.value;
        refuseAbove(e.T, substance.TC, checks.aboveTC);
        refuseIf(e.T >= highT, checks.notBelowCondenserT);
        if (drop.option == 1) {
            e.DP = drop.value;
            PEVAP_TDP(substance, e.T, inletH, e.DP, e.P, e.DT, e.glide, e.bubble, e.dew);
        } else {
            e.DT = drop.value;
            PEVAP_TDT(substance, e.T, inletH, e.DT, e.P, e.DP, e.glide, e.bubble, e.dew);
        }
    } else {
        e.P = level.value;
        refuseAbove(e.P, substance.PC, checks.abovePC);
        refuseIf(e.P >= highP, checks.notBelowCondenserP);
        if (drop.option == 1) {
            e.DP = drop.value;
            TEVAP_PDP(substance, e.P, inletH, e.DP, e.T, e.DT, e.glide, e.bubble, e.dew);
        } else {
            e.DT = drop.value;
            TEVAP_PDT(substance, e.P, inletH, e.DT, e.T, e.DP, e.glide, e.bubble, e.dew);
        }
    }
    refuseIf(e.inletP() > highP, checks.inletAboveCondenser);
    refuseIf(e.outletP() <= 0.0, checks.outletPressure);
}

PressureChange pressureChange(const SUBSTANCE& substance, Parameter drop, double inletP, int side,
                              const DropChecks& checks) {
    PressureChange change;
    if (drop.option == 1) {
        change.DP = drop.value;
        SATTEMPDROP_DP(substance, inletP, change.DP, side, change.DT);
    } else {
        change.DT = drop.value;
        SATTEMPDROP_DTSAT(substance, inletP, change.DT, side, change.DP);
    }
    refuseOutside(change.DP, pressureDropLimits, checks.pressure);
    refuseOutside(change.DT, changeLimits, checks.temperature);
    return change;
}

PressureChange pressureChangeBackwards(const SUBSTANCE& substance, Parameter drop, double outletP,
                                       const DropChecks& checks, int side) {
    PressureChange change;
    double negated = 0.0;
    if (drop.option == 1) {
        change.DP = drop.value;
        SATTEMPDROP_DP(substance, outletP, -change.DP, side, negated);
        change.DT = 0.0 - negated;  // no negative zero
    } else {
        change.DT = drop.value;
        SATTEMPDROP_DTSAT(substance, outletP, -change.DT, side, negated);
        change.DP = 0.0 - negated;
    }
    refuseOutside(change.DP, pressureDropLimits, checks.pressure);
    refuseOutside(change.DT, changeLimits, checks.temperature);
    return change;
}

TemperatureChange temperatureFall(Parameter given, double inletT) {
    if (given.option == 1) return {given.value, inletT - given.value};
    return {inletT - given.value, given.value};
}

TemperatureChange temperatureRise(Parameter given, double inletT) {
    if (given.option == 1) return {given.value, given.value - inletT};
    return {inletT + given.value, given.value};
}

TemperatureChange fallWithSubcooling(const SUBSTANCE& substance, Parameter given, double inletT, double outletP) {
    TemperatureChange line;
    if (given.option == 3) {
        line.degree = given.value;
        SUBCOOLDEGREE_SUBC(substance, outletP, line.degree, line.T);
        line.change = inletT - line.T;
    } else {
        line = temperatureFall(given, inletT);
        SUBCOOLDEGREE_TIN(substance, outletP, line.T, line.degree);
    }
    return line;
}

TemperatureChange riseWithSuperheat(const SUBSTANCE& substance, Parameter given, double inletT, double outletP) {
    TemperatureChange line;
    if (given.option == 3) {
        line.degree = given.value;
        SUPHEATDEGREE_SUPH(substance, outletP, line.degree, line.T);
        line.change = line.T - inletT;
    } else {
        line = temperatureRise(given, inletT);
        SUPHEATDEGREE_TIN(substance, outletP, line.T, line.degree);
    }
    return line;
}

TemperatureChange fallWithSuperheat(const SUBSTANCE& substance, Parameter given, double inletT, double outletP) {
    TemperatureChange line;
    if (given.option == 3) {
        line.degree = given.value;
        SUPHEATDEGREE_SUPH(substance, outletP, line.degree, line.T);
        line.change = inletT - line.T;
    } else {
        line = temperatureFall(given, inletT);
        SUPHEATDEGREE_TIN(substance, outletP, line.T, line.degree);
    }
    return line;
}

void exchangerOutlet(const SUBSTANCE& substance, const STATEPT& inlet, double P, double H, STATEPT& outlet) {
    if (P == inlet.P && H == inlet.H)
        outlet = inlet;
    else
        PROPSIMPLEPH(substance, P, H, outlet);
}

double exchangerLiquid(const SUBSTANCE& substance, const STATEPT& inlet, double inletT, double DP, double P,
                       double& fall, STATEPT& outlet) {
    if (fall == 0.0 && DP != 0.0) {
        PROPSIMPLEPH(substance, P, inlet.H, outlet);
        outlet.H = inlet.H;  // to the last digit, so that no heat is left over
        fall = inletT - outlet.T;
        return outlet.T;
    }
    const double T = inletT - fall;
    linePoint(substance, inlet, DP, fall, P, T, outlet);
    return T;
}

double exchangerEffectiveness(const SUBSTANCE& substance, double M, const STATEPT& liquidInlet,
                              const STATEPT& liquidOutlet, const STATEPT& vaporInlet, const STATEPT& vaporOutlet) {
    static constinit STATEPT liquid{}, vapor{};
    const double meanT = (liquidInlet.T + vaporInlet.T) / 2.0;
    PROPSIMPLEPT(substance, (liquidInlet.P + liquidOutlet.P) / 2.0, meanT, liquid);
    PROPSIMPLEPT(substance, (vaporInlet.P + vaporOutlet.P) / 2.0, meanT, vapor);
    const double heat = M * (liquidInlet.H - liquidOutlet.H);
    return heat / (M * std::min(liquid.CP, vapor.CP) * (liquidInlet.T - vaporInlet.T));
}

void linePoint(const SUBSTANCE& substance, const STATEPT& inlet, double DP, double change, double P, double T,
               STATEPT& outlet) {
    if (DP == 0.0 && change == 0.0)
        outlet = inlet;
    else
        PROPSIMPLEPT(substance, P, T, outlet);
}

OutletSetting subcooledOutlet(const SUBSTANCE& substance, Parameter given, double P, double bubbleT,
                              const SubcooledChecks& checks, STATEPT& outlet) {
    OutletSetting setting;
    if (given.option == 1)
        setting = {given.value, bubbleT - given.value};
    else
        setting = {bubbleT - given.value, given.value};
    refuseOutside(setting.T, temperatureLimits, checks.temperature);
    refuseOutside(setting.degree, changeLimits, checks.subcooling);
    if (setting.degree == 0.0)
        PROPSIMPLEPQ(substance, P, 0.0, outlet);
    else
        PROPSIMPLEPT(substance, P, setting.T, outlet);
    return setting;
}

OutletSetting superheatedOutlet(const SUBSTANCE& substance, Parameter given, double P, double dewT,
                                const SuperheatedChecks& checks, STATEPT& outlet) {
    OutletSetting setting;
    if (given.option == 1)
        setting = {given.value, given.value - dewT};
    else
        setting = {dewT + given.value, given.value};
    refuseOutside(setting.T, temperatureLimits, checks.temperature);
    refuseOutside(setting.degree, changeLimits, checks.superheat);
    if (setting.degree == 0.0) {
        PROPSIMPLEPQ(substance, P, 1.0, outlet);
        // A dew point at another pressure than the outlet's is warmer or colder than the vapor that leaves.
        if (outlet.T != missingValue) setting.T = outlet.T;
    } else {
        PROPSIMPLEPT(substance, P, setting.T, outlet);
    }
    return setting;
}

OutletSetting superheatedOutlet(const SUBSTANCE& substance, Parameter given, double P, double dewT, const Check& range,
                                STATEPT& outlet) {
    return superheatedOutlet(substance, given, P, dewT, SuperheatedChecks{{}, range}, outlet);
}

// ---- steps of a circuit ---------------------------------------------------------------------------------------------

OutletSetting condense(const SUBSTANCE& substance, const CYCLEIN& cycle, int k, const CondensingChecks& levelChecks,
                       const SubcooledChecks& outletChecks, Level& condenser, STATEPT& outlet) {
    condensingLevel(substance, parameter(cycle, k), parameter(cycle, k + 2), levelChecks, condenser);
    return subcooledOutlet(substance, parameter(cycle, k + 1), condenser.outletP(), condenser.bubble.T, outletChecks,
                           outlet);
}

OutletSetting evaporate(const SUBSTANCE& substance, const CYCLEIN& cycle, int k, double inletH, const Level& high,
                        const EvaporatingChecks& levelChecks, const Check& superheat, Level& evaporator, STATEPT& inlet,
                        STATEPT& outlet) {
    evaporatingLevel(substance, parameter(cycle, k), parameter(cycle, k + 2), inletH, high.T, high.P, levelChecks,
                     evaporator);
    PROPSIMPLEPH(substance, evaporator.inletP(), inletH, inlet);
    return superheatedOutlet(substance, parameter(cycle, k + 1), evaporator.outletP(), evaporator.dew.T, superheat,
                             outlet);
}

Line liquidLine(const SUBSTANCE& substance, const CYCLEIN& cycle, int k, const LineInlet& inlet,
                const LineChecks& checks, STATEPT& outlet) {
    const Parameter given = parameter(cycle, k);
    Line line;
    line.drop = pressureChange(substance, parameter(cycle, k + 1), inlet.P, bubbleSide, checks.drop);
    line.P = inlet.P - line.drop.DP;
    refuseIf(line.P <= 0.0, checks.pressure);
    line.temperature = fallWithSubcooling(substance, given, inlet.T, line.P);
    const auto& [T, change, degree] = line.temperature;
    refuseOutside(T, temperatureLimits, checks.temperature);
    refuseOutside(change, changeLimits, checks.change);
    refuseOutside(degree, changeLimits, checks.degree);
    const bool changed = line.drop.DP != 0.0 || change != 0.0;
    if (changed && given.option == 3 && given.value == 0.0)
        PROPSIMPLEPQ(substance, line.P, 0.0, outlet);
    else
        linePoint(substance, inlet.point, line.drop.DP, change, line.P, T, outlet);
    return line;
}

Line vaporLine(const SUBSTANCE& substance, const CYCLEIN& cycle, int k, const LineInlet& inlet,
               const LineChecks& checks, STATEPT& outlet) {
    Line line;
    line.drop = pressureChange(substance, parameter(cycle, k + 1), inlet.P, dewSide, checks.drop);
    line.P = inlet.P - line.drop.DP;
    refuseIf(line.P <= 0.0, checks.pressure);
    line.temperature = riseWithSuperheat(substance, parameter(cycle, k), inlet.T, line.P);
    const auto& [T, change, degree] = line.temperature;
    refuseAbove(T, substance.TC, checks.aboveTC);
    refuseOutside(T, temperatureLimits, checks.temperature);
    refuseOutside(change, changeLimits, checks.change);
    refuseOutside(degree, changeLimits, checks.degree);
    linePoint(substance, inlet.point, line.drop.DP, change, line.P, T, outlet);
    return line;
}

TemperatureChange dischargeOutlet(const SUBSTANCE& substance, Parameter given, const STATEPT& inlet, double P,
                                  const Check& fall, STATEPT& outlet) {
    const TemperatureChange line = temperatureFall(given, inlet.T);
    refuseOutside(line.change, changeLimits, fall);
    PROPSIMPLEPT(substance, P, line.T, outlet);
    return line;
}

// ---- flows and devices ----------------------------------------------------------------------------------------------

void compress(const SUBSTANCE& substance, double efficiency, const STATEPT& inlet, double outletP, double dewH,
              const Check& wet, STATEPT& outlet) {
    COMPISOENTRO(substance, efficiency, inlet, outletP, outlet);
    refuseIf(outlet.H < dewH, wet);
}

Flow massFlow(Parameter capacity, double D, double ETAV, double HC, double HE) {
    Flow flow;
    switch (capacity.option) {
        case 1:
            flow.V = capacity.value;
            flow.M = D * (ETAV * flow.V);
            flow.condenser = flow.M * HC;
            flow.evaporator = flow.M * HE;
            break;
        case 2:
            flow.condenser = capacity.value;
            flow.M = flow.condenser / HC;
            flow.V = flow.M / (D * ETAV);
            flow.evaporator = flow.M * HE;
            break;
        default:
            flow.evaporator = capacity.value;
            flow.M = flow.evaporator / HE;
            flow.V = flow.M / (D * ETAV);
            flow.condenser = flow.M * HC;
            break;
    }
    return flow;
}

double energyEfficiencyRatio(double COP) {
    return COP * 12000.0 / 3517.0;
}

void finishDevice(Device& device, double M, Heat direction) {
    device.M = M;
    device.DP = device.inlet.P - device.outlet.P;
    device.heat =
        direction == Heat::gained ? M * (device.outlet.H - device.inlet.H) : M * (device.inlet.H - device.outlet.H);
}

void finishTwoPhaseRow(STATEPT& row) {
    if (row.Q < 0.0) row.Q = 0.0;
    if (row.Q > 1.0) row.Q = 1.0;
    row.TSAT = row.T;
}

void finishRow(const SUBSTANCE& substance, int side, STATEPT& row) {
    finishTwoPhaseRow(row);
    SATTEMP_P(substance, row.P, side, row.TSAT);
}

void finishRows(const SUBSTANCE& substance, int side, Device& device) {
    finishRow(substance, side, device.inlet);
    finishRow(substance, side, device.outlet);
}

// ---- report ---------------------------------------------------------------------------------------------------------

void resultHeader(ResultWriter& writer, const CYCLEIN& cycle, const SUBSTANCE& substance) {
    writer.integer("Request type", cycle.REQTYPE);
    writer.integer("Cycle", cycle.REQSUB);
    writer.text("Title", cycle.TITLE.trimmed());

    FixedText<5> number;
    message(number, Integer{5, substance.GWP});
    const auto first = number.view().find_first_not_of(' ');
    FixedText<300> fluid;
    message(fluid, substance.FLUIDNAME.trimmed(), " ", number.view().substr(first));
    writer.text("Fluid and global warming potential", fluid.trimmed());
}

void shortStateRow(ResultWriter& writer, std::string_view where, const STATEPT& point) {
    writer.group(where);
    writer.value("pressure", "kPa", point.P);
    writer.value("temperature", "K", point.T);
    writer.value("density", "kg/m3", point.D);
    writer.value("enthalpy", "kJ/kg", point.H);
    writer.value("entropy", "kJ/(kg K)", point.S);
    writer.group({});
}

void stateRow(ResultWriter& writer, std::string_view where, const STATEPT& point) {
    shortStateRow(writer, where, point);
    writer.group(where);
    writer.value("quality", "kg/kg", point.Q);
    if (point.TSAT != 0.0)
        writer.value("saturation temperature", "K", point.TSAT);
    else
        writer.noValue("saturation temperature", "K", point.TSAT);  // of a row for which none was worked out
    writer.group({});
}

void endRows(ResultWriter& writer, const Device& device) {
    stateRow(writer, "Inlet", device.inlet);
    stateRow(writer, "Outlet", device.outlet);
}

void deviceRows(ResultWriter& writer, std::string_view heading, const Device& device) {
    writer.heading(heading);
    endRows(writer, device);
}

void lineRows(ResultWriter& writer, const Device& line, const PressureChange& drop, double change, Heat direction,
              std::string_view heatName) {
    const bool gained = direction == Heat::gained;
    writer.value("Pressure drop", "kPa", line.DP);
    writer.value("Drop of saturation temperature", "K", drop.DT);
    writer.value(gained ? "Temperature rise" : "Temperature fall", "K", change);
    writer.value("Mass flow", "kg/s", line.M);
    if (heatName.empty()) heatName = gained ? "Heat gain" : "Heat loss";
    writer.value(heatName, "kW", line.heat);
}

void lineSection(ResultWriter& writer, std::string_view heading, const Device& line, const PressureChange& drop,
                 double change, Heat direction, std::string_view heatName) {
    deviceRows(writer, heading, line);
    lineRows(writer, line, drop, change, direction, heatName);
}

void lineSection(ResultWriter& writer, std::string_view heading, const Device& rows, const Line& line, Heat direction) {
    lineSection(writer, heading, rows, line.drop, line.temperature.change, direction);
}

void evaporatorSection(ResultWriter& writer, std::string_view heading, const Device& device, const Level& level,
                       double superheat) {
    deviceRows(writer, heading, device);
    writer.value("Glide", "K", level.glide);
    writer.value("Drop of saturation temperature", "K", level.DT);
    writer.value("Superheat", "K", superheat);
    writer.value("Mass flow", "kg/s", device.M);
    writer.value("Pressure drop", "kPa", device.DP);
    writer.value("Capacity", "kW", device.heat);
}

void compressorRows(ResultWriter& writer, const Efficiencies& efficiencies, double sweptVolume, double pressureRatio,
                    double M, double power) {
    writer.value("Isentropic efficiency", "-", efficiencies.isentropic);
    writer.value("Volumetric efficiency", "-", efficiencies.volumetric);
    writer.value("Swept volume", "m3/s", sweptVolume);
    writer.value("Pressure ratio", "-", pressureRatio);
    writer.value("Mass flow", "kg/s", M);
    writer.value("Power", "kW", power);
}

void compressorSection(ResultWriter& writer, std::string_view heading, const Device& device,
                       const Efficiencies& efficiencies, double sweptVolume, double pressureRatio, double power) {
    deviceRows(writer, heading, device);
    compressorRows(writer, efficiencies, sweptVolume, pressureRatio, device.M, power);
}

void condenserSection(ResultWriter& writer, std::string_view heading, const Device& device, const Level& level,
                      double inletSuperheat, double subcooling) {
    deviceRows(writer, heading, device);
    writer.value("Glide", "K", level.glide);
    writer.value("Drop of saturation temperature", "K", level.DT);
    writer.value("Superheat at the inlet", "K", inletSuperheat);
    writer.value("Subcooling", "K", subcooling);
    writer.value("Mass flow", "kg/s", device.M);
    writer.value("Pressure drop", "kPa", device.DP);
    writer.value("Capacity", "kW", device.heat);
}

void expansionRows(ResultWriter& writer, const Device& device) {
    writer.value("Mass flow", "kg/s", device.M);
    writer.value("Pressure drop", "kPa", device.DP);
    writer.value("Enthalpy change times mass flow", "kW", device.heat);
}

void expansionSection(ResultWriter& writer, std::string_view heading, const Device& device) {
    deviceRows(writer, heading, device);
    expansionRows(writer, device);
}

void exchangerVaporRows(ResultWriter& writer, const Device& side, const PressureChange& drop, double rise) {
    writer.group("Vapor side");
    writer.value("pressure drop", "kPa", side.DP);
    writer.value("drop of saturation temperature", "K", drop.DT);
    writer.value("temperature rise", "K", rise);
    writer.group({});
}

void flowRows(ResultWriter& writer, double M, double V, double evaporatorCapacity, double condenserCapacity,
              double power, const Efficiencies& efficiencies, std::string_view capacityName) {
    writer.value("Mass flow", "kg/s", M);
    capacityRows(writer, V, evaporatorCapacity, condenserCapacity, power, efficiencies, capacityName);
}

void capacityRows(ResultWriter& writer, double V, double evaporatorCapacity, double condenserCapacity, double power,
                  const Efficiencies& efficiencies, std::string_view capacityName) {
    writer.value("Volumetric cooling capacity", "kJ/m3", evaporatorCapacity / V);
    writer.value("Volumetric heating capacity", "kJ/m3", condenserCapacity / V);
    writer.value("Evaporator capacity", "kW", evaporatorCapacity);
    writer.value(capacityName, "kW", condenserCapacity);
    writer.value("Compressor power", "kW", power);
    writer.value("Isentropic efficiency", "-", efficiencies.isentropic);
    writer.value("Volumetric efficiency", "-", efficiencies.volumetric);
    writer.value("Swept volume", "m3/s", V);
}

void compressorRows(ResultWriter& writer, std::string_view name, double power, const Efficiencies& efficiencies,
                    double sweptVolume) {
    writer.group(name);
    writer.value("power", "kW", power);
    writer.value("isentropic efficiency", "-", efficiencies.isentropic);
    writer.value("volumetric efficiency", "-", efficiencies.volumetric);
    writer.value("swept volume", "m3/s", sweptVolume);
    writer.group({});
}

Performance performanceOf(double evaporatorCapacity, double condenserCapacity, double power) {
    const double cooling = evaporatorCapacity / power;
    const double heating = condenserCapacity / power;
    return {cooling, energyEfficiencyRatio(cooling), heating, energyEfficiencyRatio(heating)};
}

void performanceRows(ResultWriter& writer, const Performance& performance) {
    writer.value("COP of cooling", "-", performance.coolingCOP);
    writer.value("EER of cooling", "Btu/(W h)", performance.coolingEER);
    writer.value("COP of heating", "-", performance.heatingCOP);
    writer.value("EER of heating", "Btu/(W h)", performance.heatingEER);
}

const STATEPT& dewPointOfGraph(const STATEPT& condenserInlet, const STATEPT& dew) {
    return condenserInlet.H > dew.H ? dew : condenserInlet;
}

namespace {

struct GraphColumn {
    std::string_view name, unit;
    double STATEPT::*field;
};
struct Graph {
    std::string_view information, dome;
    GraphColumn up, along, liquid, vapor;
    DomeTable SUBSTANCE::*liquidSide;
    DomeTable SUBSTANCE::*vaporSide;
};
constexpr Graph pressureEnthalpy{
    "INFORMATION FOR GRAPHIC P-h",
    "PRESSURE & ENTHALPY data for graphic P-h",
    {"Pressure", "kPa", &STATEPT::P},
    {"Enthalpy", "kJ/kg", &STATEPT::H},
    {"Enthalpy of the liquid", "kJ/kg", &STATEPT::H},
    {"Enthalpy of the vapor", "kJ/kg", &STATEPT::H},
    &SUBSTANCE::PTSPL,
    &SUBSTANCE::PTSPV,
};
// The heading of its dome speaks of enthalpy, and entropies follow; front ends find their way by it.
constexpr Graph temperatureEntropy{
    "INFORMATION FOR GRAPHIC T-s",
    "Temperature & enthalpy data for graphic T-s",
    {"Temperature", "K", &STATEPT::T},
    {"Entropy", "kJ/(kg K)", &STATEPT::S},
    {"Entropy of the liquid", "kJ/(kg K)", &STATEPT::S},
    {"Entropy of the vapor", "kJ/(kg K)", &STATEPT::S},
    &SUBSTANCE::PTSTL,
    &SUBSTANCE::PTSTV,
};

void graphValue(ResultWriter& writer, const GraphColumn& column, const STATEPT& point) {
    writer.value(column.name, column.unit, point.*column.field);
}

void graphOf(ResultWriter& writer, const Graph& graph, std::string_view cycleHeading,
             std::span<const STATEPT* const> points, const SUBSTANCE& substance) {
    writer.heading(graph.information);
    writer.heading(cycleHeading);
    int row = 0;
    for (const STATEPT* point : points) {
        writer.row("Cycle", ++row);
        graphValue(writer, graph.up, *point);
        graphValue(writer, graph.along, *point);
    }
    writer.group({});
    writer.blankLine();
    writer.blankLine();
    writer.heading(graph.dome);
    for (int i = 1; i <= domeRows; ++i) {
        const STATEPT& liquid = (substance.*graph.liquidSide)[i];
        writer.row("Dome", i);
        graphValue(writer, graph.up, liquid);
        graphValue(writer, graph.liquid, liquid);
        graphValue(writer, graph.vapor, (substance.*graph.vaporSide)[i]);
    }
    writer.group({});
}

}  // namespace

void graphs(ResultWriter& writer, std::span<const STATEPT* const> points, const SUBSTANCE& substance) {
    graphs(writer, points, points, substance);
}

void graphs(ResultWriter& writer, std::span<const STATEPT* const> pressurePoints,
            std::span<const STATEPT* const> temperaturePoints, const SUBSTANCE& substance,
            std::string_view pressureHeading) {
    graphOf(writer, pressureEnthalpy, pressureHeading, pressurePoints, substance);
    writer.blankLine();
    writer.blankLine();
    graphOf(writer, temperatureEntropy, "CYCLE data for graphic T-s ", temperaturePoints, substance);
}

}  // namespace frigana
