// The pieces that all cycle solvers are made of: one routine per step of a circuit. A solver hands over the request's
// parameters and the codes and texts of its own checks as data, and reads like its circuit.
//
// Units: K, kPa, kg/m3, kJ/kg, kJ/(kg K), kg/s, kW, m3/s throughout. Drops, rises and falls are positive in the
// direction of the flow. A check ends the run; one with the code 0 stands for a check that the solver does not make.
#pragma once

#include <span>
#include <string_view>

#include "12_MyVariables.h"
#include "26_SaturatTempDrop.h"
#include "ResultWriter.h"

namespace frigana {

// ---- checks ---------------------------------------------------------------------------------------------------------

// Code and message of a check. Where the message quotes a limit, it stands between text and tail (F12.4, trimmed).
struct Check {
    int code = 0;
    std::string_view text{};
    std::string_view tail{};
};

// Closed range; the limits are single-precision constants, widened for the comparison.
struct Limits {
    float low, high;
};
inline constexpr Limits temperatureLimits{100.0f, 600.0f};  // K
inline constexpr Limits changeLimits{0.0f, 200.0f};         // K: change, subcooling, superheat, saturation drop
inline constexpr Limits pressureDropLimits{0.0f, 1000.0f};  // kPa
inline constexpr Limits fractionLimits{0.0f, 1.0f};         // kg/kg

void refuseIf(bool condition, const Check& check);
void refuseAbove(double value, double limit, const Check& check);  // the message quotes the limit
void refuseOutside(double value, const Limits& limits, const Check& check);

// ---- parameters -----------------------------------------------------------------------------------------------------

// How a parameter is to be read, and its value.
struct Parameter {
    int option;
    double value;
};
Parameter parameter(const CYCLEIN& cycle, int k);

// ---- pressure and temperature levels --------------------------------------------------------------------------------

// Mean level of a condenser or an evaporator, with its saturation points.
struct Level {
    double T = 0, P = 0;    // mean temperature and pressure
    double DP = 0, DT = 0;  // drop of pressure and of saturation temperature
    double glide = 0;
    STATEPT bubble{}, dew{};
    double inletP() const { return P + DP / 2.0; }
    double outletP() const { return P - DP / 2.0; }
};

struct CondensingChecks {
    Check aboveTC, abovePC, outletPressure;
};
// Level 1: mean temperature, 2: mean pressure; drop 1: of pressure, 2: of saturation temperature. Checks the level
// before, the outlet pressure after the solution.
void condensingLevel(const SUBSTANCE& substance, Parameter level, Parameter drop, const CondensingChecks& checks,
                     Level& condenser);

struct EvaporatingChecks {
    Check aboveTC, notBelowCondenserT, abovePC, notBelowCondenserP, inletAboveCondenser, outletPressure;
};
// As above with the enthalpy of the two-phase inlet.
//   Given     highT, highP  the level that the evaporator must stay below, mean condensing temperature and pressure
void evaporatingLevel(const SUBSTANCE& substance, Parameter level, Parameter drop, double inletH, double highT,
                      double highP, const EvaporatingChecks& checks, Level& evaporator);

// Pressure change of a line or of a side of an exchanger.
struct PressureChange {
    double DP = 0;  // drop of pressure
    double DT = 0;  // drop of saturation temperature
};
struct DropChecks {
    Check pressure, temperature;
};
// Option 1: drop of pressure given, 2: drop of saturation temperature; side is that of the fluid in the line.
PressureChange pressureChange(const SUBSTANCE& substance, Parameter drop, double inletP, int side,
                              const DropChecks& checks);
// The same for a line worked out backwards from the pressure at its outlet.
PressureChange pressureChangeBackwards(const SUBSTANCE& substance, Parameter drop, double outletP,
                                       const DropChecks& checks, int side = dewSide);

// Temperature change of a line.
struct TemperatureChange {
    double T = 0;       // at the outlet
    double change = 0;  // fall of a liquid or discharge line, rise of a suction line
    double degree = 0;  // subcooling or superheat at the outlet
};
// Option 1: outlet temperature given, 2: fall given.
TemperatureChange temperatureFall(Parameter given, double inletT);
// Option 1: outlet temperature given, 2: rise given.
TemperatureChange temperatureRise(Parameter given, double inletT);
// The same with the subcooling at the outlet pressure; option 3: subcooling given.
TemperatureChange fallWithSubcooling(const SUBSTANCE& substance, Parameter given, double inletT, double outletP);
// The same with the superheat; option 3: superheat given.
TemperatureChange riseWithSuperheat(const SUBSTANCE& substance, Parameter given, double inletT, double outletP);
// The same for a fall.
TemperatureChange fallWithSuperheat(const SUBSTANCE& substance, Parameter given, double inletT, double outletP);

// Outlet of a side of an exchanger by its energy balance: a copy of the inlet at equal pressure and enthalpy.
void exchangerOutlet(const SUBSTANCE& substance, const STATEPT& inlet, double P, double H, STATEPT& outlet);

// Outlet of the liquid side of an exchanger, from the fall of its temperature. An exchanger without a fall exchanges
// nothing: where its pressure drops, the liquid keeps its enthalpy.
//   Given     inletT  temperature of the inlet as it was set;  P  pressure at the outlet, lower by DP
//   Returned  fall    of an exchanger that exchanges nothing, what the drop of pressure makes of it
//             (value) temperature at the outlet
double exchangerLiquid(const SUBSTANCE& substance, const STATEPT& inlet, double inletT, double DP, double P,
                       double& fall, STATEPT& outlet);

// Effectiveness of an exchanger with the same flow on both sides: its heat over mass flow, smaller heat capacity and
// difference of the inlet temperatures.
//   Notes     The isobaric heat capacities are those of each side at its mean pressure, both at the mean of the two
//             inlet temperatures.
double exchangerEffectiveness(const SUBSTANCE& substance, double M, const STATEPT& liquidInlet,
                              const STATEPT& liquidOutlet, const STATEPT& vaporInlet, const STATEPT& vaporOutlet);

// Outlet of a line: a copy of its inlet where nothing changes, otherwise the state at P and T.
void linePoint(const SUBSTANCE& substance, const STATEPT& inlet, double DP, double change, double P, double T,
               STATEPT& outlet);

// Temperature of a condenser's or an evaporator's outlet, and its distance from saturation.
struct OutletSetting {
    double T = 0;
    double degree = 0;  // subcooling or superheat
};
// Outlet of a condenser. Option 1: temperature given, 2: subcooling. A subcooling of exactly 0 is the bubble point.
struct SubcooledChecks {
    Check temperature, subcooling;
};
OutletSetting subcooledOutlet(const SUBSTANCE& substance, Parameter given, double P, double bubbleT,
                              const SubcooledChecks& checks, STATEPT& outlet);
// Outlet of an evaporator. Option 1: temperature given, 2: superheat. A superheat of exactly 0 is the dew point.
struct SuperheatedChecks {
    Check temperature, superheat;
};
OutletSetting superheatedOutlet(const SUBSTANCE& substance, Parameter given, double P, double dewT,
                                const SuperheatedChecks& checks, STATEPT& outlet);
// The same where the temperature is not checked.
OutletSetting superheatedOutlet(const SUBSTANCE& substance, Parameter given, double P, double dewT, const Check& range,
                                STATEPT& outlet);

// ---- steps of a circuit ---------------------------------------------------------------------------------------------

// Condenser: its level, and the state at its outlet. Parameter k: level, k + 1: outlet, k + 2: drop.
OutletSetting condense(const SUBSTANCE& substance, const CYCLEIN& cycle, int k, const CondensingChecks& levelChecks,
                       const SubcooledChecks& outletChecks, Level& condenser, STATEPT& outlet);

// Evaporator: its level, the state at its inlet behind an isenthalpic expansion, and the state at its outlet.
// Parameter k: level, k + 1: outlet, k + 2: drop.
//   Given     inletH  enthalpy of the liquid before the expansion
//             high    the level that the evaporator must stay below
OutletSetting evaporate(const SUBSTANCE& substance, const CYCLEIN& cycle, int k, double inletH, const Level& high,
                        const EvaporatingChecks& levelChecks, const Check& superheat, Level& evaporator, STATEPT& inlet,
                        STATEPT& outlet);

// In the order in which they fire.
struct LineChecks {
    DropChecks drop{};
    Check pressure{};     // outlet at zero pressure or below
    Check aboveTC{};      // outlet of a vapor line above the critical temperature
    Check temperature{};  // of the outlet
    Check change{};       // of the temperature
    Check degree{};       // subcooling or superheat at the outlet
};
// What enters a line: the state, and its pressure and temperature as they were set.
struct LineInlet {
    const STATEPT& point;
    double P, T;
};
struct Line {
    PressureChange drop;
    TemperatureChange temperature;
    double P = 0;  // at the outlet
};
// A line in which liquid cools. Parameter k: temperature or subcooling at the outlet, k + 1: drop.
//   Notes     Where a subcooling of exactly 0 is given the outlet is the bubble point itself: by pressure and
//             temperature it could not be told from vapor.
Line liquidLine(const SUBSTANCE& substance, const CYCLEIN& cycle, int k, const LineInlet& inlet,
                const LineChecks& checks, STATEPT& outlet);
// A line in which vapor is heated. Parameter k: temperature or superheat at the outlet, k + 1: drop.
Line vaporLine(const SUBSTANCE& substance, const CYCLEIN& cycle, int k, const LineInlet& inlet,
               const LineChecks& checks, STATEPT& outlet);

// Outlet of the line behind a compressor or a pump.
//   Given     P  pressure at the outlet: that of the device which follows
TemperatureChange dischargeOutlet(const SUBSTANCE& substance, Parameter given, const STATEPT& inlet, double P,
                                  const Check& fall, STATEPT& outlet);

// ---- flows and devices ----------------------------------------------------------------------------------------------

// Compressor with isentropic efficiency; an outlet enthalpy below that of dewH is wet compression.
void compress(const SUBSTANCE& substance, double efficiency, const STATEPT& inlet, double outletP, double dewH,
              const Check& wet, STATEPT& outlet);

// Mass flow and capacities.
struct Flow {
    double M = 0;          // mass flow
    double V = 0;          // swept volume flow
    double condenser = 0;  // capacities
    double evaporator = 0;
};
// Option 1: swept volume given, 2: condenser capacity, 3: evaporator capacity.
//   Given   D     density at the compressor inlet;  ETAV  volumetric efficiency
//           HC    enthalpy fall of the condenser;   HE    enthalpy rise of the evaporator
Flow massFlow(Parameter capacity, double D, double ETAV, double HC, double HE);

double energyEfficiencyRatio(double COP);

// A device or line with its own copies of the points at its ends.
struct Device {
    STATEPT inlet{}, outlet{};
    double M = 0;
    double heat = 0;  // positive in the device's normal direction
    double DP = 0;
};
enum class Heat { gained, lost };
void finishDevice(Device& device, double M, Heat direction);

// TSAT of a row at its own pressure, and its quality held within 0 to 1.
void finishRow(const SUBSTANCE& substance, int side, STATEPT& row);
// The same for a two-phase row, which takes its own temperature.
void finishTwoPhaseRow(STATEPT& row);

// Both rows of a device on one side of the dome.
void finishRows(const SUBSTANCE& substance, int side, Device& device);

// The dome tables start from this part of the mean evaporating pressure.
inline constexpr double domeStart = static_cast<double>(0.95f);

// ---- report ---------------------------------------------------------------------------------------------------------

// REQTYPE, REQSUB, TITLE, and the fluid with its global warming potential: four lines.
void resultHeader(ResultWriter& writer, const CYCLEIN& cycle, const SUBSTANCE& substance);

// P, T, D, H, S, Q, TSAT: seven lines. The names begin with where, such as "Inlet".
void stateRow(ResultWriter& writer, std::string_view where, const STATEPT& point);
// P, T, D, H, S: five lines.
void shortStateRow(ResultWriter& writer, std::string_view where, const STATEPT& point);

// The rows of both ends.
void endRows(ResultWriter& writer, const Device& device);
// Heading and the rows of both ends.
void deviceRows(ResultWriter& writer, std::string_view heading, const Device& device);

// The lines of a line behind its rows: pressure drop, drop of saturation temperature, temperature change, mass flow,
// heat. A line that gains heat shows its "Temperature rise" and "Heat gain", another "Temperature fall" and "Heat
// loss", unless the heat is named.
void lineRows(ResultWriter& writer, const Device& line, const PressureChange& drop, double change, Heat direction,
              std::string_view heatName = {});
// A line: heading, rows of both ends and the lines above.
void lineSection(ResultWriter& writer, std::string_view heading, const Device& line, const PressureChange& drop,
                 double change, Heat direction, std::string_view heatName = {});
void lineSection(ResultWriter& writer, std::string_view heading, const Device& rows, const Line& line, Heat direction);

struct Efficiencies {
    double isentropic, volumetric;
};

// Sections of the devices: heading, both rows and the device's own results. The mass flow is the device's.
void evaporatorSection(ResultWriter& writer, std::string_view heading, const Device& device, const Level& level,
                       double superheat);
// The lines of a compressor behind its rows.
void compressorRows(ResultWriter& writer, const Efficiencies& efficiencies, double sweptVolume, double pressureRatio,
                    double M, double power);
void compressorSection(ResultWriter& writer, std::string_view heading, const Device& device,
                       const Efficiencies& efficiencies, double sweptVolume, double pressureRatio, double power);
void condenserSection(ResultWriter& writer, std::string_view heading, const Device& device, const Level& level,
                      double inletSuperheat, double subcooling);
// The lines of an expansion device behind its rows.
void expansionRows(ResultWriter& writer, const Device& device);
void expansionSection(ResultWriter& writer, std::string_view heading, const Device& device);
// The lines of an exchanger's vapor side behind its rows.
void exchangerVaporRows(ResultWriter& writer, const Device& side, const PressureChange& drop, double rise);

// Mass flow, volumetric capacities, capacities, power, efficiencies, swept volume: the nine lines that open the
// performance parameters of a circuit with one compressor.
// The heat is rejected in a condenser or, by its name, in another device.
void flowRows(ResultWriter& writer, double M, double V, double evaporatorCapacity, double condenserCapacity,
              double power, const Efficiencies& efficiencies, std::string_view capacityName = "Condenser capacity");
// The same without the mass flow.
void capacityRows(ResultWriter& writer, double V, double evaporatorCapacity, double condenserCapacity, double power,
                  const Efficiencies& efficiencies, std::string_view capacityName = "Condenser capacity");

// Power, efficiencies and swept volume of one of several compressors: four lines.
void compressorRows(ResultWriter& writer, std::string_view name, double power, const Efficiencies& efficiencies,
                    double sweptVolume);

// The four coefficients of performance.
struct Performance {
    double coolingCOP, coolingEER, heatingCOP, heatingEER;
};
Performance performanceOf(double evaporatorCapacity, double condenserCapacity, double power);
void performanceRows(ResultWriter& writer, const Performance& performance);

// The dew point, or the condenser inlet once more where that inlet lies inside the dome or at its edge.
const STATEPT& dewPointOfGraph(const STATEPT& condenserInlet, const STATEPT& dew);

// Both diagrams: the cycle's points in order as pairs, and the dome.
void graphs(ResultWriter& writer, std::span<const STATEPT* const> points, const SUBSTANCE& substance);
// The same with the points of each diagram, and another heading of the cycle in the first one.
inline constexpr std::string_view pressureEnthalpyHeading = "CYCLE data for graphic P-h ";
void graphs(ResultWriter& writer, std::span<const STATEPT* const> pressurePoints,
            std::span<const STATEPT* const> temperaturePoints, const SUBSTANCE& substance,
            std::string_view pressureHeading = pressureEnthalpyHeading);

}  // namespace frigana
