#include "TranscriticalBricks.h"

#include "23_SpecificPoints.h"
#include "28_IsentropProcess.h"

namespace frigana {

void normaliseExchanger(CYCLEIN& cycle) {
    const Parameter exchanger = parameter(cycle, 20);
    if (exchanger.value == 0.0 && (exchanger.option == 1 || exchanger.option == 2 || exchanger.option == 4)) {
        cycle.TDAT[20] = 2;
        cycle.VDAT[20] = 0.0;
    }
}

namespace {

double pressureDrop(const CYCLEIN& cycle, int k, const Check& check) {
    const double DP = cycle.VDAT[k];
    refuseOutside(DP, pressureDropLimits, check);
    return DP;
}

}  // namespace

void gasCoolerToExpansion(const SUBSTANCE& substance, const CYCLEIN& cycle, const HighSideChecks& checks,
                          HighSide& high) {
    Level& gasCooler = high.gasCooler;
    gasCooler.P = cycle.VDAT[13];
    gasCooler.DP = cycle.VDAT[15];
    refuseIf(gasCooler.P <= substance.PC, checks.gasCoolerP);
    refuseIf(gasCooler.inletP() <= substance.PC, checks.gasCoolerInletP);
    const double P1 = gasCooler.outletP();
    refuseIf(P1 <= substance.PC, checks.gasCoolerOutletP);
    const double T1 = cycle.VDAT[14];
    refuseOutside(T1, temperatureLimits, checks.gasCoolerOutletT);
    PROPSIMPLEPT(substance, P1, T1, high.p1);

    const double P2 = P1 - pressureDrop(cycle, 17, checks.beforeDrop);
    refuseIf(P2 <= 0.0, checks.beforeP);
    high.before = temperatureFall(parameter(cycle, 16), T1);
    const double T2 = high.before.T;
    refuseOutside(T2, temperatureLimits, checks.beforeT);
    refuseOutside(high.before.change, changeLimits, checks.beforeFall);
    PROPSIMPLEPT(substance, P2, T2, high.p2);

    high.fall = cycle.VDAT[20];
    const double hotSideDP = pressureDrop(cycle, 21, checks.hotSideDrop);
    const double P3 = P2 - hotSideDP;
    refuseIf(P3 <= 0.0, checks.hotSideP);
    refuseIf(T2 - high.fall <= 0.0, checks.hotSideT);
    const double T3 = exchangerLiquid(substance, high.p2, T2, hotSideDP, P3, high.fall, high.p3);

    const double P4 = P3 - pressureDrop(cycle, 19, checks.afterDrop);
    high.after = temperatureFall(parameter(cycle, 18), T3);
    refuseOutside(high.after.T, temperatureLimits, checks.afterT);
    refuseOutside(high.after.change, changeLimits, checks.afterFall);
    PROPSIMPLEPT(substance, P4, high.after.T, high.p4);
}

void suctionThroughExchanger(const SUBSTANCE& substance, const CYCLEIN& cycle, const STATEPT& inlet, double inletT,
                             const HighSide& high, const SuctionChecks& checks, SuctionSide& suction) {
    SuctionSide& s = suction;
    s.beforeDrop = pressureChange(substance, parameter(cycle, 5), inlet.P, dewSide, checks.beforeDrop);
    const double beforeP = inlet.P - s.beforeDrop.DP;
    refuseIf(beforeP <= 0.0, checks.beforeP);
    s.before = temperatureRise(parameter(cycle, 4), inletT);
    refuseAbove(s.before.T, substance.TC, checks.beforeAboveTC);
    refuseOutside(s.before.change, changeLimits, checks.beforeRise);
    linePoint(substance, inlet, s.beforeDrop.DP, s.before.change, beforeP, s.before.T, s.beforeOutlet);

    s.vaporDrop = pressureChange(substance, parameter(cycle, 22), beforeP, dewSide, checks.vaporDrop);
    const double vaporP = beforeP - s.vaporDrop.DP;
    const bool exchanges = cycle.VDAT[20] != 0.0;
    refuseIf(exchanges && high.p3.H > high.p2.H, checks.negativeHeat);
    exchangerOutlet(substance, s.beforeOutlet, vaporP, s.beforeOutlet.H + (high.p2.H - high.p3.H), s.vaporOutlet);
    s.rise = s.vaporOutlet.T - s.before.T;
    if (exchanges) refuseOutside(s.rise, changeLimits, checks.vaporRise);

    s.after = vaporLine(substance, cycle, 6, {s.vaporOutlet, vaporP, s.vaporOutlet.T}, checks.after, s.afterOutlet);
}

void compressorToGasCooler(const SUBSTANCE& substance, const CYCLEIN& cycle, const STATEPT& inlet,
                           double gasCoolerInletP, const DischargeChecks& checks, STATEPT& compressorOutlet,
                           TemperatureChange& discharge, STATEPT& gasCoolerInlet) {
    const double outletP = gasCoolerInletP + pressureDrop(cycle, 12, checks.drop);
    COMPISOENTRO(substance, cycle.VDAT[9], inlet, outletP, compressorOutlet);
    discharge = dischargeOutlet(substance, parameter(cycle, 11), compressorOutlet, gasCoolerInletP, checks.fall,
                                gasCoolerInlet);
}

// ---- report ---------------------------------------------------------------------------------------------------------

void highSideCompressorEnds(ResultWriter& writer, std::string_view heading, const Device& device) {
    writer.heading(heading);
    stateRow(writer, "Inlet", device.inlet);
    shortStateRow(writer, "Outlet", device.outlet);
}

void highSideCompressorSection(ResultWriter& writer, std::string_view heading, const Device& device,
                               const Efficiencies& efficiencies, double sweptVolume, double pressureRatio, double M,
                               double power) {
    highSideCompressorEnds(writer, heading, device);
    compressorRows(writer, efficiencies, sweptVolume, pressureRatio, M, power);
}

void highSideLineSection(ResultWriter& writer, std::string_view heading, const Device& line, double fall) {
    writer.heading(heading);
    shortStateRow(writer, "Inlet", line.inlet);
    shortStateRow(writer, "Outlet", line.outlet);
    writer.value("Pressure drop", "kPa", line.DP);
    writer.value("Temperature fall", "K", fall);
    writer.value("Mass flow", "kg/s", line.M);
    writer.value("Heat loss", "kW", line.heat);
}

void gasCoolerSection(ResultWriter& writer, const Device& gasCooler) {
    writer.heading("GAS COOLER");
    shortStateRow(writer, "Inlet", gasCooler.inlet);
    shortStateRow(writer, "Outlet", gasCooler.outlet);
    writer.value("Mass flow", "kg/s", gasCooler.M);
    writer.value("Pressure drop", "kPa", gasCooler.DP);
    writer.value("Capacity", "kW", gasCooler.heat);
}

void highSideExpansionSection(ResultWriter& writer, std::string_view heading, const Device& device) {
    writer.heading(heading);
    shortStateRow(writer, "Inlet", device.inlet);
    stateRow(writer, "Outlet", device.outlet);
    expansionRows(writer, device);
}

void exchangerSection(ResultWriter& writer, const Device& hotSide, double fall, const Device& vaporSide,
                      const SuctionSide& suction, double heat) {
    writer.heading("HEAT EXCHANGER (SUCTION LINE - LIQUID LINE)");
    shortStateRow(writer, "Hot inlet", hotSide.inlet);
    shortStateRow(writer, "Hot outlet", hotSide.outlet);
    writer.group("Hot side");
    writer.value("pressure drop", "kPa", hotSide.DP);
    writer.value("temperature fall", "K", fall);
    writer.group({});
    stateRow(writer, "Vapor inlet", vaporSide.inlet);
    stateRow(writer, "Vapor outlet", vaporSide.outlet);
    exchangerVaporRows(writer, vaporSide, suction.vaporDrop, suction.rise);
    writer.value("Mass flow of the hot side", "kg/s", hotSide.M);
    writer.value("Mass flow of the vapor", "kg/s", vaporSide.M);
    writer.value("Heat exchanged", "kW", heat);
}

}  // namespace frigana
