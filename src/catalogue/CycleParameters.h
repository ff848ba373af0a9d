// Parameters of the cycle requests: options that cycles share, and the tables of all circuits.
#pragma once

#include "Catalogue.h"

namespace frigana::catalogue {

// clang-format off

using Q = Quantity;

// ---- options, with their numbers -------------------------------------------------------------------------------------

inline constexpr Option levelOptions[] = {
    {1, "temperature", "mean temperature", Q::temperature},
    {2, "pressure", "mean pressure", Q::pressure}};
inline constexpr Option outletOptions[] = {
    {1, "outlet_temperature", "outlet temperature", Q::temperature},
    {2, "superheat", "superheat at the outlet", Q::temperatureDifference}};
inline constexpr Option superheatOptions[] = {
    {2, "superheat", "superheat at the outlet", Q::temperatureDifference}};
inline constexpr Option wetOutletOptions[] = {
    {1, "outlet_temperature", "outlet temperature", Q::temperature},
    {2, "superheat", "superheat at the outlet", Q::temperatureDifference},
    {3, "outlet_quality", "quality at the outlet", Q::quality}};
inline constexpr Option subcooledOptions[] = {
    {1, "outlet_temperature", "outlet temperature", Q::temperature},
    {2, "subcooling", "subcooling at the outlet", Q::temperatureDifference}};
inline constexpr Option subcoolingOptions[] = {
    {2, "subcooling", "subcooling at the outlet", Q::temperatureDifference}};
inline constexpr Option dropOptions[] = {
    {1, "pressure_drop", "pressure drop", Q::pressureDifference},
    {2, "saturation_drop", "drop of saturation temperature", Q::temperatureDifference}};
inline constexpr Option pressureDropOptions[] = {
    {1, "pressure_drop", "pressure drop", Q::pressureDifference}};
inline constexpr Option sizedDropOptions[] = {
    {1, "pressure_drop", "pressure drop", Q::pressureDifference},
    {2, "saturation_drop", "drop of saturation temperature", Q::temperatureDifference},
    {3, "inner_diameter", "inner diameter of the pipe", Q::diameter},
    {4, "size_for_saturation_drop", "drop of saturation temperature to size the pipe for", Q::temperatureDifference}};
inline constexpr Option riseOptions[] = {
    {1, "outlet_temperature", "outlet temperature", Q::temperature},
    {2, "temperature_rise", "temperature rise", Q::temperatureDifference}};
inline constexpr Option onlyRiseOptions[] = {
    {2, "temperature_rise", "temperature rise", Q::temperatureDifference}};
inline constexpr Option firstRiseOptions[] = {
    {1, "temperature_rise", "temperature rise", Q::temperatureDifference}};
inline constexpr Option wetRiseOptions[] = {
    {1, "outlet_temperature", "outlet temperature", Q::temperature},
    {2, "temperature_rise", "temperature rise", Q::temperatureDifference},
    {3, "outlet_quality", "quality at the outlet", Q::quality}};
inline constexpr Option fallOptions[] = {
    {1, "outlet_temperature", "outlet temperature", Q::temperature},
    {2, "temperature_fall", "temperature fall", Q::temperatureDifference}};
inline constexpr Option liquidLineOptions[] = {
    {1, "outlet_temperature", "outlet temperature", Q::temperature},
    {2, "temperature_fall", "temperature fall", Q::temperatureDifference},
    {3, "outlet_subcooling", "subcooling at the outlet", Q::temperatureDifference}};
inline constexpr Option capacityOptions[] = {
    {1, "swept_volume", "swept volume flow", Q::volumeFlow},
    {2, "capacity.condenser", "heat of the condenser", Q::power},
    {3, "capacity.evaporator", "capacity of the evaporator", Q::power}};
inline constexpr Option gasCoolerCapacityOptions[] = {
    {1, "swept_volume", "swept volume flow", Q::volumeFlow},
    {2, "capacity.gas_cooler", "heat of the gas cooler", Q::power},
    {3, "capacity.evaporator", "capacity of the evaporator", Q::power}};
inline constexpr Option lowCapacityOptions[] = {
    {1, "swept_volume", "swept volume flow", Q::volumeFlow},
    {3, "capacity.evaporator", "capacity of the evaporator", Q::power}};
inline constexpr Option sweptVolumeOptions[] = {
    {1, "swept_volume", "swept volume flow", Q::volumeFlow}};
inline constexpr Option twoStageCapacityOptions[] = {
    {1, "low_compressor.swept_volume", "swept volume flow of the low compressor", Q::volumeFlow},
    {2, "high_compressor.swept_volume", "swept volume flow of the high compressor", Q::volumeFlow},
    {3, "capacity.condenser", "heat of the condenser", Q::power},
    {4, "capacity.evaporator", "capacity of the evaporator", Q::power}};
inline constexpr Option rankineSizeOptions[] = {
    {1, "boiler.heat", "heat of the boiler", Q::power},
    {2, "turbine.power", "power of the turbine", Q::power}};
inline constexpr Option boosterCapacityOptions[] = {
    {1, "mt_evaporator", "capacity of the MT evaporator", Q::power},
    {2, "both_evaporators", "capacity of both evaporators", Q::power}};
inline constexpr Option boosterShareOptions[] = {
    {1, "lt_evaporator", "capacity of the LT evaporator", Q::power},
    {2, "mt_fraction", "part of the MT evaporator in the capacity of both", Q::fraction},
    {3, "lt_fraction", "part of the LT evaporator in the capacity of both", Q::fraction}};
inline constexpr Option loopCapacityOptions[] = {{1, "capacity", "capacity", Q::power}};
inline constexpr Option isentropicOptions[] = {{1, "isentropic_efficiency", "isentropic efficiency", Q::fraction}};
inline constexpr Option volumetricOptions[] = {{1, "volumetric_efficiency", "volumetric efficiency", Q::fraction}};
inline constexpr Option liquidExchangerOptions[] = {
    {1, "effectiveness", "effectiveness", Q::fraction},
    {2, "liquid_temperature_fall", "temperature fall of the liquid", Q::temperatureDifference},
    {3, "liquid_outlet_temperature", "outlet temperature of the liquid", Q::temperature},
    {4, "vapor_temperature_rise", "temperature rise of the vapor", Q::temperatureDifference},
    {5, "vapor_outlet_temperature", "outlet temperature of the vapor", Q::temperature}};
inline constexpr Option hotExchangerOptions[] = {
    {1, "effectiveness", "effectiveness; 0 for none", Q::fraction},
    {2, "hot_temperature_fall", "temperature fall of the hot side", Q::temperatureDifference},
    {3, "hot_outlet_temperature", "outlet temperature of the hot side", Q::temperature},
    {4, "vapor_temperature_rise", "temperature rise of the vapor", Q::temperatureDifference},
    {5, "vapor_outlet_temperature", "outlet temperature of the vapor", Q::temperature}};
inline constexpr Option liquidSideDropOptions[] = {
    {1, "liquid_pressure_drop", "pressure drop of the liquid side", Q::pressureDifference},
    {2, "liquid_saturation_drop", "drop of saturation temperature of the liquid side", Q::temperatureDifference}};
inline constexpr Option vaporSideDropOptions[] = {
    {1, "vapor_pressure_drop", "pressure drop of the vapor side", Q::pressureDifference},
    {2, "vapor_saturation_drop", "drop of saturation temperature of the vapor side", Q::temperatureDifference}};
inline constexpr Option hotSideDropOptions[] = {
    {1, "hot_pressure_drop", "pressure drop of the hot side", Q::pressureDifference}};
inline constexpr Option liquidSidePressureOptions[] = {
    {1, "liquid_pressure_drop", "pressure drop of the liquid side", Q::pressureDifference}};
inline constexpr Option injectionSidePressureOptions[] = {
    {1, "injection_pressure_drop", "pressure drop of the injection side", Q::pressureDifference}};
inline constexpr Option injectionSuperheatOptions[] = {
    {1, "injection_superheat", "superheat of the injected vapor behind the exchanger", Q::temperatureDifference}};
inline constexpr Option liquidFallOptions[] = {
    {1, "liquid_temperature_fall", "temperature fall of the liquid", Q::temperatureDifference}};
inline constexpr Option subcoolerOptions[] = {
    {1, "heat", "heat taken from the liquid", Q::power},
    {2, "temperature_fall", "temperature fall of the liquid", Q::temperatureDifference},
    {3, "outlet_temperature", "outlet temperature of the liquid", Q::temperature}};
inline constexpr Option gasCoolerPressureOptions[] = {{2, "pressure", "mean pressure", Q::pressure}};
inline constexpr Option outletTemperatureOptions[] = {
    {1, "outlet_temperature", "outlet temperature", Q::temperature}};
inline constexpr Option inletTemperatureOptions[] = {{1, "inlet_temperature", "inlet temperature", Q::temperature}};
inline constexpr Option temperatureOptions[] = {{1, "temperature", "temperature", Q::temperature}};
inline constexpr Option receiverPressureOptions[] = {{1, "pressure", "pressure", Q::pressure}};
inline constexpr Option highestTemperatureOptions[] = {
    {1, "highest_outlet_temperature", "highest temperature at the outlet", Q::temperature}};
inline constexpr Option intermediateOptions[] = {
    {1, "temperature_difference", "condensing temperature below less evaporating temperature above", Q::temperatureDifference},
    {2, "evaporating_temperature", "evaporating temperature of the high temperature circuit", Q::temperature}};
inline constexpr Option intermediatePressureOptions[] = {
    {1, "pressure", "pressure of the injected vapor behind the exchanger", Q::pressure},
    {2, "geometric_mean", "geometric mean of the pressures of suction and discharge", Q::none, Form::yes}};
inline constexpr Option stageTemperatureOptions[] = {
    {1, "equal_pressure_ratios", "the same pressure ratio for all stages", Q::none, Form::yes},
    {2, "saturation_temperature", "mean saturation temperature of the stage", Q::temperature}};
inline constexpr Option stageCountOptions[] = {{0, "stages", "number of compressors", Q::count, Form::count}};
inline constexpr Option pipeOptions[] = {
    {1, "pipe.copper", "copper tube by its outer diameter; its wall, 1 for the thickest of three", Q::count},
    {2, "pipe.steel", "steel pipe by its nominal size; its wall, 1 for the thinner of two", Q::count},
    {3, "pipe.smooth", "pipe of the sizes of steel, as smooth as drawn metal; its wall, 1 for the thinner of two", Q::count}};
inline constexpr Option lengthOptions[] = {{1, "equivalent_length", "equivalent length", Q::length}};
inline constexpr Option elevationOptions[] = {{1, "elevation", "elevation", Q::length}};
inline constexpr Option fittingsOptions[] = {
    {1, "fittings", "number of fittings", Q::ratio},
    {2, "fittings_value", "a value of the fittings, without effect", Q::ratio}};
inline constexpr Option receiverOptions[] = {
    {1, "receiver", "the liquid line leads to a receiver", Q::none, Form::yes},
    {2, "receiver", "the liquid line leads to no receiver", Q::none, Form::no}};
inline constexpr Option partialLoadOptions[] = {{1, "partial_load", "part of the full mass flow", Q::fraction}};
inline constexpr Option runOptions[] = {
    {1, "", "first run", Q::none, Form::yes}, {2, "", "second run", Q::none, Form::yes}};
inline constexpr Option pickedOptions[] = {
    {0, "picked", "number of the pipe picked for the second run, 1 to 6", Q::count, Form::count}};

// ---- parameters, in the order of the request -------------------------------------------------------------------------

inline constexpr Absent zero = Absent::zero;

// k, place, label, options, typical option and value, what stands where it is left out
inline constexpr Parameter basicParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 268.15}},
    {2, "evaporator", "evaporator outlet", outletOptions, {2, 5}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 0}, zero},
    {4, "suction_line", "temperature of the suction line", riseOptions, {2, 2}, zero},
    {5, "suction_line", "drop of the suction line", dropOptions, {1, 0}, zero},
    {6, "compressor", "size of the plant", capacityOptions, {1, 0.0028}},
    {7, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.7}},
    {8, "compressor", "volumetric efficiency", volumetricOptions, {1, 0.85}},
    {9, "discharge_line", "temperature of the discharge line", fallOptions, {2, 0}, zero},
    {10, "discharge_line", "drop of the discharge line", dropOptions, {1, 0}, zero},
    {11, "condenser", "condensing level", levelOptions, {1, 313.15}},
    {12, "condenser", "condenser outlet", subcooledOptions, {2, 3}},
    {13, "condenser", "drop of the condenser", dropOptions, {1, 0}, zero},
    {14, "liquid_line", "temperature of the liquid line", liquidLineOptions, {2, 0}, zero},
    {15, "liquid_line", "drop of the liquid line", dropOptions, {1, 0}, zero},
};

inline constexpr Parameter exchangerParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 258.15}},
    {2, "evaporator", "evaporator outlet", outletOptions, {2, 5}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {2, 1}, zero},
    {4, "suction_line_before_exchanger", "temperature of the suction line before the exchanger", riseOptions, {2, 3}, zero},
    {5, "suction_line_before_exchanger", "drop of the suction line before the exchanger", dropOptions, {1, 3}, zero},
    {6, "suction_line_after_exchanger", "temperature of the suction line after the exchanger", riseOptions, {2, 2}, zero},
    {7, "suction_line_after_exchanger", "drop of the suction line after the exchanger", dropOptions, {1, 3}, zero},
    {8, "compressor", "size of the plant", capacityOptions, {3, 12}},
    {9, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.68}},
    {10, "compressor", "volumetric efficiency", volumetricOptions, {1, 0.85}},
    {11, "discharge_line", "temperature of the discharge line", fallOptions, {2, 8}, zero},
    {12, "discharge_line", "drop of the discharge line", dropOptions, {1, 15}, zero},
    {13, "condenser", "condensing level", levelOptions, {1, 313.15}},
    {14, "condenser", "condenser outlet", subcooledOptions, {2, 3}},
    {15, "condenser", "drop of the condenser", dropOptions, {1, 10}, zero},
    {16, "liquid_line_before_exchanger", "temperature of the liquid line before the exchanger", fallOptions, {2, 1}, zero},
    {17, "liquid_line_before_exchanger", "drop of the liquid line before the exchanger", dropOptions, {1, 5}, zero},
    {18, "liquid_line_after_exchanger", "temperature of the liquid line after the exchanger", liquidLineOptions, {2, 0.5}, zero},
    {19, "liquid_line_after_exchanger", "drop of the liquid line after the exchanger", dropOptions, {1, 5}, zero},
    {20, "heat_exchanger", "what the exchanger does", liquidExchangerOptions, {1, 0.4}},
    {21, "heat_exchanger", "drop of the liquid side", liquidSideDropOptions, {1, 5}, zero},
    {22, "heat_exchanger", "drop of the vapor side", vaporSideDropOptions, {1, 2}, zero},
};

inline constexpr Parameter mediumParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 263.15}},
    {2, "evaporator", "evaporator outlet", outletOptions, {2, 6}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 5}, zero},
    {4, "suction_line", "temperature of the suction line", riseOptions, {2, 5}, zero},
    {5, "suction_line", "drop of the suction line", dropOptions, {1, 8}, zero},
    {6, "compressor", "size of the circuit", capacityOptions, {3, 60}},
    {7, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.7}},
    {8, "compressor", "volumetric efficiency", volumetricOptions, {1, 0.85}},
    {9, "discharge_line", "temperature of the discharge line", fallOptions, {2, 5}, zero},
    {10, "discharge_line", "drop of the discharge line", dropOptions, {1, 12}, zero},
    {11, "condenser", "condensing level", levelOptions, {1, 313.15}},
    {12, "condenser", "condenser outlet", subcooledOptions, {2, 3}},
    {13, "condenser", "drop of the condenser", dropOptions, {1, 10}, zero},
    {14, "liquid_line", "temperature of the liquid line", liquidLineOptions, {2, 1}, zero},
    {15, "liquid_line", "drop of the liquid line", dropOptions, {1, 10}, zero},
};

inline constexpr Parameter subcooledParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 241.15}},
    {2, "evaporator", "evaporator outlet", outletOptions, {2, 6}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 4}, zero},
    {4, "suction_line", "temperature of the suction line", riseOptions, {2, 10}, zero},
    {5, "suction_line", "drop of the suction line", dropOptions, {1, 6}, zero},
    {6, "compressor", "size of the circuit", capacityOptions, {3, 20}},
    {7, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.65}},
    {8, "compressor", "volumetric efficiency", volumetricOptions, {1, 0.8}},
    {9, "discharge_line", "temperature of the discharge line", fallOptions, {2, 6}, zero},
    {10, "discharge_line", "drop of the discharge line", dropOptions, {1, 15}, zero},
    {11, "condenser", "condensing level", levelOptions, {1, 313.15}},
    {12, "condenser", "condenser outlet", subcooledOptions, {2, 3}},
    {13, "condenser", "drop of the condenser", dropOptions, {1, 10}, zero},
    {14, "liquid_line_before_subcooler", "temperature of the liquid line before the subcooler", fallOptions, {2, 1}, zero},
    {15, "liquid_line_before_subcooler", "drop of the liquid line before the subcooler", dropOptions, {1, 8}, zero},
    {16, "liquid_line_after_subcooler", "temperature of the liquid line after the subcooler", liquidLineOptions, {2, 1}, zero},
    {17, "liquid_line_after_subcooler", "drop of the liquid line after the subcooler", dropOptions, {1, 5}, zero},
    {18, "subcooler", "what the subcooler does", subcoolerOptions, {1, 5}},
    {19, "subcooler", "drop of the subcooler", dropOptions, {1, 12}, zero},
};

inline constexpr Parameter cascadeHighParameters[] = {
    {1, "", "evaporating level, which follows from the low temperature circuit", {}, {1, 0}, Absent::unused},
    {2, "evaporator", "evaporator outlet", superheatOptions, {2, 5}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 5}, zero},
    {4, "suction_line", "temperature of the suction line", onlyRiseOptions, {2, 3}, zero},
    {5, "suction_line", "drop of the suction line", dropOptions, {1, 5}, zero},
    {6, "", "size, which follows from the low temperature circuit", {}, {1, 0}, Absent::unused},
    {7, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.72}},
    {8, "compressor", "volumetric efficiency", volumetricOptions, {1, 0.86}},
    {9, "discharge_line", "temperature of the discharge line", fallOptions, {2, 5}, zero},
    {10, "discharge_line", "drop of the discharge line", dropOptions, {1, 12}, zero},
    {11, "condenser", "condensing level", levelOptions, {1, 313.15}},
    {12, "condenser", "condenser outlet", subcooledOptions, {2, 3}},
    {13, "condenser", "drop of the condenser", dropOptions, {1, 10}, zero},
    {14, "liquid_line", "temperature of the liquid line", liquidLineOptions, {2, 1}, zero},
    {15, "liquid_line", "drop of the liquid line", dropOptions, {1, 10}, zero},
};

inline constexpr Parameter cascadeLowParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 233.15}},
    {2, "evaporator", "evaporator outlet", outletOptions, {2, 6}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 10}, zero},
    {4, "suction_line", "temperature of the suction line", riseOptions, {2, 5}, zero},
    {5, "suction_line", "drop of the suction line", dropOptions, {1, 10}, zero},
    {6, "compressor", "size of the plant", lowCapacityOptions, {3, 100}},
    {7, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.68}},
    {8, "compressor", "volumetric efficiency", volumetricOptions, {1, 0.85}},
    {9, "discharge_line", "temperature of the discharge line", fallOptions, {2, 5}, zero},
    {10, "discharge_line", "drop of the discharge line", dropOptions, {1, 20}, zero},
    {11, "condenser", "condensing level", levelOptions, {1, 267.15}},
    {12, "condenser", "condenser outlet", subcooledOptions, {2, 1}},
    {13, "condenser", "drop of the condenser", dropOptions, {1, 15}, zero},
    {14, "liquid_line", "temperature of the liquid line", liquidLineOptions, {2, 0.5}, zero},
    {15, "liquid_line", "drop of the liquid line", dropOptions, {1, 20}, zero},
    {16, "intermediate", "temperatures between both circuits", intermediateOptions, {1, 5}},
};

inline constexpr Parameter lineSizingParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 268.15}},
    {2, "evaporator", "evaporator outlet", outletOptions, {2, 5}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 0}, zero},
    {4, "suction_line", "temperature of the suction line", riseOptions, {2, 4}, zero},
    {5, "suction_line", "drop or pipe of the suction line", sizedDropOptions, {4, 1}},
    {6, "compressor", "size of the plant", capacityOptions, {3, 10}},
    {7, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.7}},
    {8, "compressor", "volumetric efficiency", volumetricOptions, {1, 0.85}},
    {9, "discharge_line", "temperature of the discharge line", fallOptions, {2, 4}, zero},
    {10, "discharge_line", "drop or pipe of the discharge line", sizedDropOptions, {4, 0.5}},
    {11, "condenser", "condensing level", levelOptions, {1, 313.15}},
    {12, "condenser", "condenser outlet", subcooledOptions, {2, 4}},
    {13, "condenser", "drop of the condenser", dropOptions, {1, 0}, zero},
    {14, "liquid_line", "temperature of the liquid line", liquidLineOptions, {2, 1}, zero},
    {15, "liquid_line", "drop or pipe of the liquid line", sizedDropOptions, {4, 0.4}},
    {16, "suction_line", "material and wall of the suction pipe", pipeOptions, {1, 1}},
    {17, "suction_line", "equivalent length of the suction pipe", lengthOptions, {1, 15}},
    {18, "suction_line", "elevation of the suction pipe", elevationOptions, {1, 2}, zero},
    {19, "suction_line", "fittings of the suction pipe", fittingsOptions, {1, 4}, zero},
    {20, "discharge_line", "material and wall of the discharge pipe", pipeOptions, {1, 1}},
    {21, "discharge_line", "equivalent length of the discharge pipe", lengthOptions, {1, 12}},
    {22, "discharge_line", "elevation of the discharge pipe", elevationOptions, {1, 0}, zero},
    {23, "discharge_line", "fittings of the discharge pipe", fittingsOptions, {1, 3}, zero},
    {24, "liquid_line", "material and wall of the liquid pipe", pipeOptions, {1, 1}},
    {25, "liquid_line", "equivalent length of the liquid pipe", lengthOptions, {1, 14}},
    {26, "liquid_line", "elevation of the liquid pipe", elevationOptions, {1, 0}, zero},
    {27, "liquid_line", "fittings of the liquid pipe", fittingsOptions, {1, 4}, zero},
    {28, "liquid_line", "receiver", receiverOptions, {2, 0}},
    {29, "", "partial load", partialLoadOptions, {1, 0.5}},
    {30, "", "run", runOptions, {1, 0}, Absent::derived},
    {31, "suction_line", "pipe picked for the suction line", pickedOptions, {4, 0}, Absent::optional},
    {32, "discharge_line", "pipe picked for the discharge line", pickedOptions, {5, 0}, Absent::optional},
    {33, "liquid_line", "pipe picked for the liquid line", pickedOptions, {3, 0}, Absent::optional},
};

inline constexpr Parameter rankineParameters[] = {
    {1, "boiler", "boiler level", levelOptions, {1, 383.15}},
    {2, "boiler", "boiler outlet", outletOptions, {2, 5}},
    {3, "boiler", "drop of the boiler", dropOptions, {1, 20}, zero},
    {4, "high_pressure_vapor_line", "temperature of the high pressure vapor line", fallOptions, {2, 2}, zero},
    {5, "high_pressure_vapor_line", "drop of the high pressure vapor line", dropOptions, {1, 10}, zero},
    {6, "", "size of the plant", rankineSizeOptions, {1, 500}},
    {7, "turbine", "isentropic efficiency of the turbine", isentropicOptions, {1, 0.8}},
    {8, "", "no meaning", {}, {1, 0}, Absent::unused},
    {9, "low_pressure_vapor_line", "temperature of the low pressure vapor line", fallOptions, {2, 2}, zero},
    {10, "low_pressure_vapor_line", "drop of the low pressure vapor line", dropOptions, {1, 5}, zero},
    {11, "condenser", "condensing level", levelOptions, {1, 308.15}},
    {12, "", "no meaning", {}, {1, 0}, Absent::unused},
    {13, "condenser", "drop of the condenser", dropOptions, {1, 0}, zero},
    {14, "pump", "isentropic efficiency of the pump", isentropicOptions, {1, 0.65}},
    {15, "liquid_line", "temperature of the liquid line", fallOptions, {2, 0}, zero},
    {16, "liquid_line", "drop of the liquid line", dropOptions, {1, 10}, zero},
    {17, "heat_source", "inlet temperature of the heat source", inletTemperatureOptions, {1, 430}},
    {18, "heat_source", "outlet temperature of the heat source", outletTemperatureOptions, {1, 390}},
    {19, "cooling_water", "inlet temperature of the cooling water", inletTemperatureOptions, {1, 293}},
    {20, "cooling_water", "outlet temperature of the cooling water", outletTemperatureOptions, {1, 300}},
};

inline constexpr Parameter transcriticalParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 268.15}},
    {2, "evaporator", "evaporator outlet", outletOptions, {2, 5}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {2, 0.5}, zero},
    {4, "suction_line_before_exchanger", "temperature of the suction line before the exchanger", riseOptions, {2, 2}, zero},
    {5, "suction_line_before_exchanger", "drop of the suction line before the exchanger", dropOptions, {1, 10}, zero},
    {6, "suction_line_after_exchanger", "temperature of the suction line after the exchanger", riseOptions, {2, 1}, zero},
    {7, "suction_line_after_exchanger", "drop of the suction line after the exchanger", dropOptions, {1, 10}, zero},
    {8, "compressor", "size of the plant", gasCoolerCapacityOptions, {3, 20}},
    {9, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.7}},
    {10, "compressor", "volumetric efficiency", volumetricOptions, {1, 0.85}},
    {11, "discharge_line", "temperature of the discharge line", fallOptions, {2, 5}, zero},
    {12, "discharge_line", "drop of the discharge line", pressureDropOptions, {1, 20}, zero},
    {13, "gas_cooler", "pressure of the gas cooler", gasCoolerPressureOptions, {2, 9500}},
    {14, "gas_cooler", "gas cooler outlet", outletTemperatureOptions, {1, 308.15}},
    {15, "gas_cooler", "drop of the gas cooler", pressureDropOptions, {1, 30}, zero},
    {16, "liquid_line_before_exchanger", "temperature of the line before the exchanger", fallOptions, {2, 0.5}, zero},
    {17, "liquid_line_before_exchanger", "drop of the line before the exchanger", pressureDropOptions, {1, 10}, zero},
    {18, "liquid_line_after_exchanger", "temperature of the line after the exchanger", fallOptions, {2, 0}, zero},
    {19, "liquid_line_after_exchanger", "drop of the line after the exchanger", pressureDropOptions, {1, 5}, zero},
    {20, "heat_exchanger", "what the exchanger does", hotExchangerOptions, {1, 0.5}},
    {21, "heat_exchanger", "drop of the hot side", hotSideDropOptions, {1, 10}, zero},
    {22, "heat_exchanger", "drop of the vapor side", vaporSideDropOptions, {1, 5}, zero},
};

inline constexpr Parameter injectionParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 243.15}},
    {2, "evaporator", "evaporator outlet", outletOptions, {2, 6}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 5}, zero},
    {4, "suction_line", "temperature of the suction line", riseOptions, {2, 8}, zero},
    {5, "suction_line", "drop of the suction line", dropOptions, {2, 0.7}, zero},
    {6, "compressor", "size of the plant", capacityOptions, {3, 15}},
    {7, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.65}},
    {8, "compressor", "volumetric efficiency", volumetricOptions, {1, 0.8}},
    {9, "discharge_line", "temperature of the discharge line", fallOptions, {2, 4}, zero},
    {10, "discharge_line", "drop of the discharge line", dropOptions, {2, 0.5}, zero},
    {11, "condenser", "condensing level", levelOptions, {1, 315.15}},
    {12, "condenser", "condenser outlet", subcooledOptions, {2, 4}},
    {13, "condenser", "drop of the condenser", dropOptions, {1, 10}, zero},
    {14, "liquid_line", "temperature of the liquid line", liquidLineOptions, {2, 1}, zero},
    {15, "liquid_line", "drop of the liquid line", dropOptions, {1, 8}, zero},
    {16, "compressor", "highest temperature at the outlet of the compressor", highestTemperatureOptions, {1, 373.15}},
    {17, "injection_line", "temperature of the injection line", liquidLineOptions, {2, 3}, zero},
    {18, "injection_line", "drop of the injection line", dropOptions, {1, 8}, zero},
};

inline constexpr Parameter twoStageParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 238.15}},
    {2, "evaporator", "evaporator outlet", outletOptions, {2, 6}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 8}, zero},
    {4, "suction_line", "temperature of the suction line", riseOptions, {2, 5}, zero},
    {5, "suction_line", "drop of the suction line", dropOptions, {2, 0.7}, zero},
    {6, "", "size of the plant", twoStageCapacityOptions, {4, 25}},
    {7, "low_compressor", "isentropic efficiency of the low compressor", isentropicOptions, {1, 0.68}},
    {8, "low_compressor", "volumetric efficiency of the low compressor", volumetricOptions, {1, 0.82}},
    {9, "high_compressor", "isentropic efficiency of the high compressor", isentropicOptions, {1, 0.7}},
    {10, "high_compressor", "volumetric efficiency of the high compressor", volumetricOptions, {1, 0.84}},
    {11, "discharge_line", "temperature of the discharge line", fallOptions, {2, 4}, zero},
    {12, "discharge_line", "drop of the discharge line", dropOptions, {2, 0.5}, zero},
    {13, "condenser", "condensing level", levelOptions, {1, 295.15}},
    {14, "condenser", "condenser outlet", subcooledOptions, {2, 3}},
    {15, "condenser", "drop of the condenser", dropOptions, {1, 15}, zero},
    {16, "liquid_line", "temperature of the liquid line", liquidLineOptions, {2, 1}, zero},
    {17, "liquid_line", "drop of the liquid line", dropOptions, {1, 10}, zero},
    {18, "heat_exchanger", "superheat of the injected vapor", injectionSuperheatOptions, {1, 5}},
    {19, "heat_exchanger", "fall of the liquid", liquidFallOptions, {1, 15}},
    {20, "heat_exchanger", "drop of the liquid side", liquidSidePressureOptions, {1, 10}, zero},
    {21, "heat_exchanger", "drop of the injection side", injectionSidePressureOptions, {1, 8}, zero},
    {22, "injection_line", "temperature of the injection line", firstRiseOptions, {1, 2}, zero},
    {23, "injection_line", "drop of the injection line", pressureDropOptions, {1, 4}, zero},
    {24, "", "no meaning", {}, {1, 0}, Absent::unused},
    {25, "intermediate", "intermediate pressure", intermediatePressureOptions, {2, 0}},
};

inline constexpr Parameter multiStageParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 238.15}},
    {2, "evaporator", "evaporator outlet", outletOptions, {2, 6}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 5}, zero},
    {4, "suction_line", "temperature of the suction line", riseOptions, {2, 5}, zero},
    {5, "suction_line", "drop of the suction line", dropOptions, {1, 3}, zero},
    {6, "last_compressor", "size of the plant", capacityOptions, {3, 50}},
    {7, "last_compressor", "isentropic efficiency of the last compressor", isentropicOptions, {1, 0.74}},
    {8, "last_compressor", "volumetric efficiency of the last compressor", volumetricOptions, {1, 0.86}},
    {9, "discharge_line", "temperature of the discharge line", fallOptions, {2, 5}, zero},
    {10, "discharge_line", "drop of the discharge line", dropOptions, {2, 0.5}, zero},
    {11, "condenser", "condensing level", levelOptions, {1, 295.15}},
    {12, "condenser", "condenser outlet", subcooledOptions, {2, 3}},
    {13, "condenser", "drop of the condenser", dropOptions, {1, 10}, zero},
    {14, "liquid_line", "temperature of the liquid line", liquidLineOptions, {2, 2}, zero},
    {15, "liquid_line", "drop of the liquid line", dropOptions, {2, 0.5}, zero},
    {16, "", "number of compressors", stageCountOptions, {3, 0}},
};

// Of each stage but the last; the index counts from the stage's base.
inline constexpr Parameter stageParameters[] = {
    {1, "injection_line", "temperature of the vapor injection line", onlyRiseOptions, {2, 2}, zero},
    {2, "injection_line", "drop of the vapor injection line", dropOptions, {1, 2}, zero},
    {3, "compressor", "isentropic efficiency of the compressor", isentropicOptions, {1, 0.68}},
    {4, "compressor", "volumetric efficiency of the compressor", volumetricOptions, {1, 0.82}},
    {5, "", "intermediate pressure", stageTemperatureOptions, {1, 0}},
};

inline constexpr Parameter minimalParameters[] = {
    {1, "evaporator", "evaporating temperature", temperatureOptions, {1, 275.15}},
    {2, "evaporator", "evaporator outlet", superheatOptions, {2, 5}},
    {3, "suction_line", "temperature of the suction line", riseOptions, {2, 0}, zero},
    {4, "compressor", "swept volume flow", sweptVolumeOptions, {1, 0.01}},
    {5, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.7}},
    {6, "condenser", "condensing temperature", temperatureOptions, {1, 313.15}},
    {7, "condenser", "condenser outlet", subcoolingOptions, {2, 2}},
};

inline constexpr Parameter pumpedHighParameters[] = {
    {1, "", "evaporating level, which follows from the loop", {}, {1, 0}, Absent::unused},
    {2, "evaporator", "evaporator outlet", superheatOptions, {2, 4}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 2}, zero},
    {4, "suction_line", "temperature of the suction line", onlyRiseOptions, {2, 2}, zero},
    {5, "suction_line", "drop of the suction line", dropOptions, {1, 3}, zero},
    {6, "", "size, which follows from the loop", {}, {1, 0}, Absent::unused},
    {7, "compressor", "isentropic efficiency", isentropicOptions, {1, 0.76}},
    {8, "compressor", "volumetric efficiency", volumetricOptions, {1, 0.86}},
    {9, "discharge_line", "temperature of the discharge line", fallOptions, {2, 8}, zero},
    {10, "discharge_line", "drop of the discharge line", dropOptions, {1, 10}, zero},
    {11, "condenser", "condensing level", levelOptions, {1, 308.15}},
    {12, "condenser", "condenser outlet", subcooledOptions, {2, 2}},
    {13, "condenser", "drop of the condenser", dropOptions, {1, 5}, zero},
    {14, "liquid_line", "temperature of the liquid line", liquidLineOptions, {2, 1}, zero},
    {15, "liquid_line", "drop of the liquid line", dropOptions, {1, 5}, zero},
};

inline constexpr Parameter loopParameters[] = {
    {1, "evaporator", "evaporating level", levelOptions, {1, 265.15}},
    {2, "evaporator", "evaporator outlet", wetOutletOptions, {3, 0.6}},
    {3, "evaporator", "drop of the evaporator", dropOptions, {1, 30}, zero},
    {4, "low_pressure_vapor_line", "end of the low pressure vapor line", wetRiseOptions, {3, 0.6}, zero},
    {5, "low_pressure_vapor_line", "drop of the low pressure vapor line", dropOptions, {1, 20}, zero},
    {6, "evaporator", "capacity of the evaporator", loopCapacityOptions, {1, 150}},
    {7, "pump", "isentropic efficiency of the pump", isentropicOptions, {1, 0.6}},
    {8, "condenser", "condenser outlet", subcooledOptions, {2, 1}},
    {9, "high_pressure_liquid_line", "temperature of the high pressure liquid line", riseOptions, {2, 0.2}, zero},
    {10, "high_pressure_liquid_line", "drop of the high pressure liquid line", dropOptions, {1, 60}, zero},
    {11, "intermediate", "temperatures between both circuits", intermediateOptions, {1, 4}},
};

inline constexpr Parameter boosterParameters[] = {
    {1, "mt_evaporator", "level of the MT evaporator", levelOptions, {1, 265.15}},
    {2, "mt_evaporator", "outlet of the MT evaporator", outletOptions, {2, 8}},
    {3, "mt_evaporator", "drop of the MT evaporator", dropOptions, {1, 20}, zero},
    {4, "suction_line_before_exchanger", "temperature of the suction line before the exchanger", riseOptions, {2, 3}, zero},
    {5, "suction_line_before_exchanger", "drop of the suction line before the exchanger", dropOptions, {1, 15}, zero},
    {6, "suction_line_after_exchanger", "temperature of the suction line after the exchanger", riseOptions, {2, 2}, zero},
    {7, "suction_line_after_exchanger", "drop of the suction line after the exchanger", dropOptions, {1, 10}, zero},
    {8, "capacity", "first capacity", boosterCapacityOptions, {1, 60}},
    {9, "high_stage_compressor", "isentropic efficiency of the high stage", isentropicOptions, {1, 0.72}},
    {10, "high_stage_compressor", "volumetric efficiency of the high stage", volumetricOptions, {1, 0.86}},
    {11, "discharge_line", "temperature of the discharge line", fallOptions, {2, 4}, zero},
    {12, "discharge_line", "drop of the discharge line", pressureDropOptions, {1, 50}, zero},
    {13, "gas_cooler", "pressure of the gas cooler", gasCoolerPressureOptions, {2, 9500}},
    {14, "gas_cooler", "gas cooler outlet", outletTemperatureOptions, {1, 309.15}},
    {15, "gas_cooler", "drop of the gas cooler", pressureDropOptions, {1, 60}, zero},
    {16, "liquid_line_before_exchanger", "temperature of the line before the exchanger", fallOptions, {2, 1}, zero},
    {17, "liquid_line_before_exchanger", "drop of the line before the exchanger", pressureDropOptions, {1, 30}, zero},
    {18, "liquid_line_after_exchanger", "temperature of the line after the exchanger", fallOptions, {2, 0.5}, zero},
    {19, "liquid_line_after_exchanger", "drop of the line after the exchanger", pressureDropOptions, {1, 20}, zero},
    {20, "heat_exchanger", "what the exchanger does", hotExchangerOptions, {1, 0.4}},
    {21, "heat_exchanger", "drop of the hot side", hotSideDropOptions, {1, 30}, zero},
    {22, "heat_exchanger", "drop of the vapor side", vaporSideDropOptions, {1, 20}, zero},
    {23, "receiver", "pressure of the receiver", receiverPressureOptions, {1, 3500}},
    {24, "lt_evaporator", "level of the LT evaporator", levelOptions, {1, 241.15}},
    {25, "lt_evaporator", "outlet of the LT evaporator", outletOptions, {2, 8}},
    {26, "lt_evaporator", "drop of the LT evaporator", dropOptions, {1, 15}, zero},
    {27, "low_stage_compressor", "isentropic efficiency of the low stage", isentropicOptions, {1, 0.68}},
    {28, "capacity", "second capacity", boosterShareOptions, {1, 25}},
    {29, "low_stage_compressor", "volumetric efficiency of the low stage", volumetricOptions, {1, 0.8}},
};
// clang-format on

}  // namespace frigana::catalogue
