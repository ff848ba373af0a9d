#include "Results.h"

#include <algorithm>
#include <span>

namespace frigana::catalogue {

namespace {

struct ResultValue {
    std::string_view key, name, unit;
};

// Values at a place of the circuit, and those of its inlet and outlet where it has such.
struct ResultPlace {
    std::string_view place;
    std::span<const ResultValue> values;
    std::span<const ResultValue> inlet = {}, outlet = {};
};

struct RequestResults {
    std::string_view request;
    std::span<const ResultPlace> circuits[2];  // by the order of the request's circuits
    std::span<const ResultPlace> common;       // of the system that both circuits make
};

// clang-format off
constexpr ResultValue propertyRequestValues[] = {
    {"type", "Request type", ""},
    {"subtype", "Operation", ""},
};
constexpr ResultValue fluidFactValues[] = {
    {"fluid_kind", "Kind of fluid", ""},
    {"fluid", "Fluid", ""},
    {"component_count", "Number of components", ""},
    {"molar_mass", "Molar mass", "g/mol"},
    {"triple_point_temperature", "Triple point temperature", "K"},
    {"normal_boiling_point", "Normal boiling point", "K"},
    {"critical_temperature", "Critical temperature", "K"},
    {"critical_pressure", "Critical pressure", "kPa"},
    {"critical_density", "Critical density", "kg/m3"},
    {"lowest_temperature", "Lowest temperature", "K"},
    {"highest_temperature", "Highest temperature", "K"},
    {"highest_pressure", "Highest pressure", "kPa"},
    {"highest_density", "Highest density", "kg/m3"},
    {"gwp", "Global warming potential", ""},
    {"safety_class", "Safety class", ""},
};
constexpr ResultValue componentValues[] = {
    {"name", "Component", ""},
    {"mass_fraction", "Mass fraction", "kg/kg"},
    {"mole_fraction", "Mole fraction", "mol/mol"},
};
constexpr ResultValue saturationTableValues[] = {
    {"running_property", "Running property (1 temperature, 2 pressure)", ""},
    {"from", "From", ""},
    {"to", "To", ""},
    {"step", "Step", ""},
    {"row_count", "Number of rows", ""},
};
constexpr ResultValue saturatedLiquidValues[] = {
    {"temperature", "Temperature, liquid", "K"},
    {"pressure", "Pressure, liquid", "kPa"},
    {"density", "Density, liquid", "kg/m3"},
    {"specific_volume", "Specific volume, liquid", "m3/kg"},
    {"internal_energy", "Internal energy, liquid", "kJ/kg"},
    {"enthalpy", "Enthalpy, liquid", "kJ/kg"},
    {"entropy", "Entropy, liquid", "kJ/(kg K)"},
    {"cv", "Isochoric heat capacity, liquid", "kJ/(kg K)"},
    {"cp", "Isobaric heat capacity, liquid", "kJ/(kg K)"},
    {"speed_of_sound", "Speed of sound, liquid", "m/s"},
    {"thermal_conductivity", "Thermal conductivity, liquid", "W/(m K)"},
    {"viscosity", "Viscosity, liquid", "uPa s"},
    {"prandtl_number", "Prandtl number, liquid", "-"},
};
constexpr ResultValue saturatedVaporValues[] = {
    {"temperature", "Temperature, vapor", "K"},
    {"pressure", "Pressure, vapor", "kPa"},
    {"density", "Density, vapor", "kg/m3"},
    {"specific_volume", "Specific volume, vapor", "m3/kg"},
    {"internal_energy", "Internal energy, vapor", "kJ/kg"},
    {"enthalpy", "Enthalpy, vapor", "kJ/kg"},
    {"entropy", "Entropy, vapor", "kJ/(kg K)"},
    {"cv", "Isochoric heat capacity, vapor", "kJ/(kg K)"},
    {"cp", "Isobaric heat capacity, vapor", "kJ/(kg K)"},
    {"speed_of_sound", "Speed of sound, vapor", "m/s"},
    {"thermal_conductivity", "Thermal conductivity, vapor", "W/(m K)"},
    {"viscosity", "Viscosity, vapor", "uPa s"},
    {"prandtl_number", "Prandtl number, vapor", "-"},
};
constexpr ResultValue surfaceTensionValues[] = {
    {"surface_tension", "Surface tension", "N/m"},
};
constexpr ResultValue isopropertyTableValues[] = {
    {"constant_property", "Constant property (1 temperature, 2 pressure, 3 density)", ""},
    {"running_property", "Running property (1 temperature, 2 pressure, 3 density)", ""},
    {"constant_value", "Constant value", ""},
    {"from", "From", ""},
    {"to", "To", ""},
    {"step", "Step", ""},
    {"row_count", "Number of rows", ""},
};
constexpr ResultValue rowValues[] = {
    {"temperature", "Temperature", "K"},
    {"pressure", "Pressure", "kPa"},
    {"density", "Density", "kg/m3"},
    {"specific_volume", "Specific volume", "m3/kg"},
    {"internal_energy", "Internal energy", "kJ/kg"},
    {"enthalpy", "Enthalpy", "kJ/kg"},
    {"entropy", "Entropy", "kJ/(kg K)"},
    {"cv", "Isochoric heat capacity", "kJ/(kg K)"},
    {"cp", "Isobaric heat capacity", "kJ/(kg K)"},
    {"speed_of_sound", "Speed of sound", "m/s"},
    {"thermal_conductivity", "Thermal conductivity", "W/(m K)"},
    {"viscosity", "Viscosity", "uPa s"},
    {"prandtl_number", "Prandtl number", "-"},
    {"surface_tension", "Surface tension", "N/m"},
};
constexpr ResultValue statePointValues[] = {
    {"temperature", "Temperature", "K"},
    {"pressure", "Pressure", "kPa"},
    {"density", "Density", "kg/m3"},
    {"specific_volume", "Specific volume", "m3/kg"},
    {"internal_energy", "Internal energy", "kJ/kg"},
    {"enthalpy", "Enthalpy", "kJ/kg"},
    {"entropy", "Entropy", "kJ/(kg K)"},
    {"cv", "Isochoric heat capacity", "kJ/(kg K)"},
    {"cp", "Isobaric heat capacity", "kJ/(kg K)"},
    {"speed_of_sound", "Speed of sound", "m/s"},
    {"quality", "Quality", "kg/kg"},
    {"thermal_conductivity", "Thermal conductivity", "W/(m K)"},
    {"viscosity", "Viscosity", "uPa s"},
    {"prandtl_number", "Prandtl number", "-"},
    {"surface_tension", "Surface tension", "N/m"},
};
constexpr ResultValue cycleRequestValues[] = {
    {"type", "Request type", ""},
    {"subtype", "Cycle", ""},
};
constexpr ResultValue cycleHeadValues[] = {
    {"title", "Title", ""},
    {"fluid_and_gwp", "Fluid and global warming potential", ""},
};
constexpr ResultValue stateValues[] = {
    {"pressure", "pressure", "kPa"},
    {"temperature", "temperature", "K"},
    {"density", "density", "kg/m3"},
    {"enthalpy", "enthalpy", "kJ/kg"},
    {"entropy", "entropy", "kJ/(kg K)"},
    {"quality", "quality", "kg/kg"},
    {"saturation_temperature", "saturation temperature", "K"},
};
constexpr ResultValue evaporatorValues[] = {
    {"glide", "Glide", "K"},
    {"saturation_drop", "Drop of saturation temperature", "K"},
    {"superheat", "Superheat", "K"},
    {"mass_flow", "Mass flow", "kg/s"},
    {"pressure_drop", "Pressure drop", "kPa"},
    {"capacity", "Capacity", "kW"},
};
constexpr ResultValue warmingLineValues[] = {
    {"pressure_drop", "Pressure drop", "kPa"},
    {"saturation_drop", "Drop of saturation temperature", "K"},
    {"temperature_rise", "Temperature rise", "K"},
    {"mass_flow", "Mass flow", "kg/s"},
    {"heat_gain", "Heat gain", "kW"},
};
constexpr ResultValue compressorValues[] = {
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"volumetric_efficiency", "Volumetric efficiency", "-"},
    {"swept_volume", "Swept volume", "m3/s"},
    {"pressure_ratio", "Pressure ratio", "-"},
    {"mass_flow", "Mass flow", "kg/s"},
    {"power", "Power", "kW"},
};
constexpr ResultValue coolingLineValues[] = {
    {"pressure_drop", "Pressure drop", "kPa"},
    {"saturation_drop", "Drop of saturation temperature", "K"},
    {"temperature_fall", "Temperature fall", "K"},
    {"mass_flow", "Mass flow", "kg/s"},
    {"heat_loss", "Heat loss", "kW"},
};
constexpr ResultValue condenserValues[] = {
    {"glide", "Glide", "K"},
    {"saturation_drop", "Drop of saturation temperature", "K"},
    {"inlet_superheat", "Superheat at the inlet", "K"},
    {"subcooling", "Subcooling", "K"},
    {"mass_flow", "Mass flow", "kg/s"},
    {"pressure_drop", "Pressure drop", "kPa"},
    {"capacity", "Capacity", "kW"},
};
constexpr ResultValue expansionDeviceValues[] = {
    {"mass_flow", "Mass flow", "kg/s"},
    {"pressure_drop", "Pressure drop", "kPa"},
    {"enthalpy_change", "Enthalpy change times mass flow", "kW"},
};
constexpr ResultValue basicPerformanceValues[] = {
    {"mass_flow", "Mass flow", "kg/s"},
    {"volumetric_cooling_capacity", "Volumetric cooling capacity", "kJ/m3"},
    {"volumetric_heating_capacity", "Volumetric heating capacity", "kJ/m3"},
    {"evaporator_capacity", "Evaporator capacity", "kW"},
    {"condenser_capacity", "Condenser capacity", "kW"},
    {"compressor_power", "Compressor power", "kW"},
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"volumetric_efficiency", "Volumetric efficiency", "-"},
    {"swept_volume", "Swept volume", "m3/s"},
    {"cop_cooling", "COP of cooling", "-"},
    {"eer_cooling", "EER of cooling", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"eer_heating", "EER of heating", "Btu/(W h)"},
    {"liquid_line_subcooling", "Subcooling at the liquid line outlet", "K"},
    {"evaporator_superheat", "Superheat at the evaporator outlet", "K"},
    {"suction_line_superheat", "Superheat at the suction line outlet", "K"},
    {"specific_cooling", "Specific cooling effect", "kJ/kg"},
    {"specific_heat_rejection", "Specific heat rejection", "kJ/kg"},
    {"condensing_temperature", "Mean condensing temperature", "K"},
    {"evaporating_temperature", "Mean evaporating temperature", "K"},
};
constexpr ResultValue liquidSideValues[] = {
    {"pressure_drop", "pressure drop", "kPa"},
    {"saturation_drop", "drop of saturation temperature", "K"},
    {"temperature_fall", "temperature fall", "K"},
};
constexpr ResultValue vaporSideValues[] = {
    {"pressure_drop", "pressure drop", "kPa"},
    {"saturation_drop", "drop of saturation temperature", "K"},
    {"temperature_rise", "temperature rise", "K"},
};
constexpr ResultValue liquidExchangerValues[] = {
    {"liquid_mass_flow", "Mass flow of the liquid", "kg/s"},
    {"vapor_mass_flow", "Mass flow of the vapor", "kg/s"},
    {"heat", "Heat exchanged", "kW"},
};
constexpr ResultValue heatExchangerPerformanceValues[] = {
    {"mass_flow", "Mass flow", "kg/s"},
    {"volumetric_cooling_capacity", "Volumetric cooling capacity", "kJ/m3"},
    {"volumetric_heating_capacity", "Volumetric heating capacity", "kJ/m3"},
    {"evaporator_capacity", "Evaporator capacity", "kW"},
    {"condenser_capacity", "Condenser capacity", "kW"},
    {"compressor_power", "Compressor power", "kW"},
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"volumetric_efficiency", "Volumetric efficiency", "-"},
    {"swept_volume", "Swept volume", "m3/s"},
    {"cop_cooling", "COP of cooling", "-"},
    {"eer_cooling", "EER of cooling", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"eer_heating", "EER of heating", "Btu/(W h)"},
    {"expansion_device_subcooling", "Subcooling at the expansion device", "K"},
    {"evaporator_superheat", "Superheat at the evaporator outlet", "K"},
    {"compressor_superheat", "Superheat at the compressor inlet", "K"},
    {"specific_cooling", "Specific cooling effect", "kJ/kg"},
    {"specific_heat_rejection", "Specific heat rejection", "kJ/kg"},
    {"heat", "Heat exchanged", "kW"},
    {"effectiveness", "Exchanger effectiveness", "-"},
    {"condensing_temperature", "Mean condensing temperature", "K"},
    {"evaporating_temperature", "Mean evaporating temperature", "K"},
};
constexpr ResultValue combinedMediumPerformanceValues[] = {
    {"mass_flow", "Mass flow", "kg/s"},
    {"volumetric_cooling_capacity", "Volumetric cooling capacity", "kJ/m3"},
    {"volumetric_heating_capacity", "Volumetric heating capacity", "kJ/m3"},
    {"system_capacity", "Capacity of the system", "kW"},
    {"condenser_capacity", "Condenser capacity", "kW"},
    {"compressor_power", "Compressor power", "kW"},
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"volumetric_efficiency", "Volumetric efficiency", "-"},
    {"swept_volume", "Swept volume", "m3/s"},
    {"system_cop_cooling", "COP of cooling of the system", "-"},
    {"system_eer_cooling", "EER of cooling of the system", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"eer_heating", "EER of heating", "Btu/(W h)"},
    {"liquid_line_subcooling", "Subcooling at the liquid line outlet", "K"},
    {"evaporator_superheat", "Superheat at the evaporator outlet", "K"},
    {"suction_line_superheat", "Superheat at the suction line outlet", "K"},
    {"specific_cooling", "Specific cooling effect", "kJ/kg"},
    {"specific_heat_rejection", "Specific heat rejection", "kJ/kg"},
    {"net_volumetric_cooling_capacity", "Net volumetric cooling capacity", "kJ/m3"},
    {"net_capacity", "Net medium temperature capacity", "kW"},
    {"net_cop_cooling", "COP of cooling of the net capacity", "-"},
    {"net_eer_cooling", "EER of cooling of the net capacity", "Btu/(W h)"},
    {"condensing_temperature", "Mean condensing temperature", "K"},
    {"evaporating_temperature", "Mean evaporating temperature", "K"},
};
constexpr ResultValue subcoolerValues[] = {
    {"pressure_drop", "Pressure drop", "kPa"},
    {"saturation_drop", "Drop of saturation temperature", "K"},
    {"temperature_fall", "Temperature fall", "K"},
    {"mass_flow", "Mass flow", "kg/s"},
    {"heat", "Heat exchanged", "kW"},
};
constexpr ResultValue combinedLowPerformanceValues[] = {
    {"mass_flow", "Mass flow", "kg/s"},
    {"volumetric_cooling_capacity", "Volumetric cooling capacity", "kJ/m3"},
    {"volumetric_heating_capacity", "Volumetric heating capacity", "kJ/m3"},
    {"evaporator_capacity", "Evaporator capacity", "kW"},
    {"condenser_capacity", "Condenser capacity", "kW"},
    {"compressor_power", "Compressor power", "kW"},
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"volumetric_efficiency", "Volumetric efficiency", "-"},
    {"swept_volume", "Swept volume", "m3/s"},
    {"cop_cooling", "COP of cooling", "-"},
    {"eer_cooling", "EER of cooling", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"eer_heating", "EER of heating", "Btu/(W h)"},
    {"expansion_device_subcooling", "Subcooling at the expansion device", "K"},
    {"evaporator_superheat", "Superheat at the evaporator outlet", "K"},
    {"compressor_superheat", "Superheat at the compressor inlet", "K"},
    {"specific_cooling", "Specific cooling effect", "kJ/kg"},
    {"specific_heat_rejection", "Specific heat rejection", "kJ/kg"},
    {"subcooler_heat", "Heat exchanged in the subcooler", "kW"},
    {"subcooler_pressure_drop", "Pressure drop of the subcooler", "kPa"},
    {"condensing_temperature", "Mean condensing temperature", "K"},
    {"evaporating_temperature", "Mean evaporating temperature", "K"},
};
constexpr ResultValue systemValues[] = {
    {"high_fluid", "Fluid of the high temperature circuit", ""},
    {"low_fluid", "Fluid of the low temperature circuit", ""},
    {"capacity", "Capacity of the system", "kW"},
    {"heat_rejected", "Heat rejected by the system", "kW"},
    {"power", "Total power", "kW"},
    {"cop_cooling", "COP of cooling", "-"},
    {"eer_cooling", "EER of cooling", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"evaporating_temperature", "Mean evaporating temperature of the low temperature circuit", "K"},
    {"condensing_temperature", "Mean condensing temperature of the high temperature circuit", "K"},
};
constexpr ResultValue pipeValues[] = {
    {"inner_diameter", "Inner diameter", "m"},
    {"outer_diameter", "Outer diameter", "m"},
    {"velocity", "Velocity", "m/s"},
    {"pressure_drop", "Pressure loss", "kPa"},
    {"saturation_drop", "Drop of saturation temperature", "K"},
    {"size", "Size", ""},
};
constexpr ResultValue turbineValues[] = {
    {"outlet_superheat", "Superheat at the outlet", "K"},
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"expansion_ratio", "Expansion ratio", "-"},
    {"mass_flow", "Mass flow", "kg/s"},
    {"power", "Power", "kW"},
};
constexpr ResultValue rankineCondenserValues[] = {
    {"glide", "Glide", "K"},
    {"saturation_drop", "Drop of saturation temperature", "K"},
    {"unused", "Unused", ""},
    {"mass_flow", "Mass flow", "kg/s"},
    {"pressure_drop", "Pressure drop", "kPa"},
    {"capacity", "Capacity", "kW"},
};
constexpr ResultValue pumpValues[] = {
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"pressure_ratio", "Pressure ratio", "-"},
    {"mass_flow", "Mass flow", "kg/s"},
    {"power", "Power", "kW"},
};
constexpr ResultValue reservedValues[] = {
    {"reserved", "Reserved", ""},
};
constexpr ResultValue rankinePerformanceValues[] = {
    {"mass_flow", "Mass flow", "kg/s"},
    {"boiler_heat", "Boiler heat", "kW"},
    {"turbine_power", "Turbine power", "kW"},
    {"condenser_heat", "Condenser heat", "kW"},
    {"pump_power", "Pump power", "kW"},
    {"turbine_isentropic_efficiency", "Isentropic efficiency of the turbine", "-"},
    {"pump_isentropic_efficiency", "Isentropic efficiency of the pump", "-"},
    {"reserved", "Reserved", ""},
    {"cycle_efficiency", "Efficiency of the cycle", "-"},
    {"boiler_outlet_temperature", "Temperature at the boiler outlet", "K"},
    {"turbine_outlet_quality", "Quality at the turbine outlet", "kg/kg"},
    {"turbine_outlet_superheat", "Superheat at the turbine outlet", "K"},
    {"boiler_temperature", "Mean boiler temperature", "K"},
    {"condensing_temperature", "Mean condensing temperature", "K"},
};
constexpr ResultValue briefStateValues[] = {
    {"pressure", "pressure", "kPa"},
    {"temperature", "temperature", "K"},
    {"density", "density", "kg/m3"},
    {"enthalpy", "enthalpy", "kJ/kg"},
    {"entropy", "entropy", "kJ/(kg K)"},
};
constexpr ResultValue briefCoolingLineValues[] = {
    {"pressure_drop", "Pressure drop", "kPa"},
    {"temperature_fall", "Temperature fall", "K"},
    {"mass_flow", "Mass flow", "kg/s"},
    {"heat_loss", "Heat loss", "kW"},
};
constexpr ResultValue gasCoolerValues[] = {
    {"mass_flow", "Mass flow", "kg/s"},
    {"pressure_drop", "Pressure drop", "kPa"},
    {"capacity", "Capacity", "kW"},
};
constexpr ResultValue hotSideValues[] = {
    {"pressure_drop", "pressure drop", "kPa"},
    {"temperature_fall", "temperature fall", "K"},
};
constexpr ResultValue hotExchangerValues[] = {
    {"hot_mass_flow", "Mass flow of the hot side", "kg/s"},
    {"vapor_mass_flow", "Mass flow of the vapor", "kg/s"},
    {"heat", "Heat exchanged", "kW"},
};
constexpr ResultValue transcriticalPerformanceValues[] = {
    {"mass_flow", "Mass flow", "kg/s"},
    {"volumetric_cooling_capacity", "Volumetric cooling capacity", "kJ/m3"},
    {"volumetric_heating_capacity", "Volumetric heating capacity", "kJ/m3"},
    {"evaporator_capacity", "Evaporator capacity", "kW"},
    {"gas_cooler_capacity", "Gas cooler capacity", "kW"},
    {"compressor_power", "Compressor power", "kW"},
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"volumetric_efficiency", "Volumetric efficiency", "-"},
    {"swept_volume", "Swept volume", "m3/s"},
    {"cop_cooling", "COP of cooling", "-"},
    {"eer_cooling", "EER of cooling", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"eer_heating", "EER of heating", "Btu/(W h)"},
    {"evaporator_superheat", "Superheat at the evaporator outlet", "K"},
    {"compressor_superheat", "Superheat at the compressor inlet", "K"},
    {"specific_cooling", "Specific cooling effect", "kJ/kg"},
    {"specific_heat_rejection", "Specific heat rejection", "kJ/kg"},
    {"heat", "Heat exchanged", "kW"},
    {"effectiveness", "Exchanger effectiveness", "-"},
    {"gas_cooler_temperature", "Mean of gas cooler inlet and outlet temperature", "K"},
    {"evaporating_temperature", "Mean evaporating temperature", "K"},
};
constexpr ResultValue liquidInjectionPerformanceValues[] = {
    {"compressor_mass_flow", "Mass flow of the compressor", "kg/s"},
    {"evaporator_mass_flow", "Mass flow of the evaporator", "kg/s"},
    {"injection_mass_flow", "Mass flow of the injection", "kg/s"},
    {"injected_fraction", "Injected fraction of the compressor's flow", "kg/kg"},
    {"volumetric_cooling_capacity", "Volumetric cooling capacity", "kJ/m3"},
    {"volumetric_heating_capacity", "Volumetric heating capacity", "kJ/m3"},
    {"evaporator_capacity", "Evaporator capacity", "kW"},
    {"condenser_capacity", "Condenser capacity", "kW"},
    {"compressor_power", "Compressor power", "kW"},
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"volumetric_efficiency", "Volumetric efficiency", "-"},
    {"swept_volume", "Swept volume", "m3/s"},
    {"cop_cooling", "COP of cooling", "-"},
    {"eer_cooling", "EER of cooling", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"eer_heating", "EER of heating", "Btu/(W h)"},
    {"liquid_line_subcooling", "Subcooling at the liquid line outlet", "K"},
    {"evaporator_superheat", "Superheat at the evaporator outlet", "K"},
    {"suction_line_superheat", "Superheat at the suction line outlet", "K"},
    {"reserved", "Reserved", ""},
    {"compressor_outlet_temperature", "Temperature at the compressor outlet", "K"},
    {"specific_cooling", "Specific cooling effect", "kJ/kg"},
    {"specific_heat_rejection", "Specific heat rejection", "kJ/kg"},
    {"condensing_temperature", "Mean condensing temperature", "K"},
    {"evaporating_temperature", "Mean evaporating temperature", "K"},
};
constexpr ResultValue injectionSideValues[] = {
    {"pressure_drop", "pressure drop", "kPa"},
    {"saturation_drop", "drop of saturation temperature (not computed)", "K"},
    {"temperature_rise", "temperature rise (not computed)", "K"},
};
constexpr ResultValue injectionExchangerValues[] = {
    {"liquid_mass_flow", "Mass flow of the liquid", "kg/s"},
    {"injection_mass_flow", "Mass flow of the injection", "kg/s"},
    {"heat", "Heat exchanged", "kW"},
};
constexpr ResultValue twoStagePerformanceValues[] = {
    {"condenser_mass_flow", "Mass flow, condenser", "kg/s"},
    {"evaporator_mass_flow", "Mass flow, evaporator", "kg/s"},
    {"low_compressor_mass_flow", "Mass flow, low compressor", "kg/s"},
    {"injection_mass_flow", "Mass flow, injection", "kg/s"},
    {"injected_fraction", "Injected fraction", "kg/kg"},
    {"volumetric_cooling_capacity", "Volumetric cooling capacity, low compressor", "kJ/m3"},
    {"volumetric_heating_capacity", "Volumetric heating capacity, high compressor", "kJ/m3"},
    {"evaporator_capacity", "Evaporator capacity", "kW"},
    {"condenser_capacity", "Condenser capacity", "kW"},
    {"cop_cooling", "COP of cooling", "-"},
    {"eer_cooling", "EER of cooling", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"eer_heating", "EER of heating", "Btu/(W h)"},
    {"expansion_device_subcooling", "Subcooling at the expansion device", "K"},
    {"evaporator_superheat", "Superheat at the evaporator outlet", "K"},
    {"low_compressor_superheat", "Superheat at the low compressor inlet", "K"},
    {"low_compressor_outlet_superheat", "Superheat at the low compressor outlet", "K"},
    {"injection_line_superheat", "Superheat at the injection line outlet (not computed)", "K"},
    {"high_compressor_superheat", "Superheat at the high compressor inlet", "K"},
    {"high_compressor_outlet_temperature", "Temperature at the high compressor outlet", "K"},
    {"specific_cooling", "Specific cooling effect", "kJ/kg"},
    {"specific_heat_rejection", "Specific heat rejection", "kJ/kg"},
    {"condensing_temperature", "Mean condensing temperature", "K"},
    {"evaporating_temperature", "Mean evaporating temperature", "K"},
};
constexpr ResultValue compressorPowerValues[] = {
    {"power", "power", "kW"},
    {"isentropic_efficiency", "isentropic efficiency", "-"},
    {"volumetric_efficiency", "volumetric efficiency", "-"},
    {"swept_volume", "swept volume", "m3/s"},
};
constexpr ResultValue multiStageHeadValues[] = {
    {"title", "Title", ""},
    {"fluid_and_gwp", "Fluid and global warming potential", ""},
    {"stages", "Number of stages", ""},
};
constexpr ResultValue flashTankValues[] = {
    {"mass_flow", "Mass flow into the tank", "kg/s"},
    {"liquid_mass_flow", "Mass flow of the liquid", "kg/s"},
    {"vapor_mass_flow", "Mass flow of the vapor", "kg/s"},
};
constexpr ResultValue multiStagePerformanceValues[] = {
    {"condenser_mass_flow", "Mass flow, condenser", "kg/s"},
    {"evaporator_mass_flow", "Mass flow, evaporator", "kg/s"},
    {"volumetric_cooling_capacity", "Volumetric cooling capacity, compressor 1", "kJ/m3"},
    {"volumetric_heating_capacity", "Volumetric heating capacity, last compressor", "kJ/m3"},
    {"evaporator_capacity", "Evaporator capacity", "kW"},
    {"condenser_capacity", "Condenser capacity", "kW"},
    {"cop_cooling", "COP of cooling", "-"},
    {"eer_cooling", "EER of cooling", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"eer_heating", "EER of heating", "Btu/(W h)"},
    {"expansion_device_subcooling", "Subcooling at the expansion device", "K"},
    {"evaporator_superheat", "Superheat at the evaporator outlet", "K"},
    {"first_compressor_superheat", "Superheat at the inlet of compressor 1", "K"},
    {"last_compressor_superheat", "Superheat at the last compressor inlet", "K"},
    {"last_compressor_outlet_temperature", "Temperature at the last compressor outlet", "K"},
    {"specific_cooling", "Specific cooling effect", "kJ/kg"},
    {"specific_heat_rejection", "Specific heat rejection", "kJ/kg"},
    {"condensing_temperature", "Mean condensing temperature", "K"},
    {"evaporating_temperature", "Mean evaporating temperature", "K"},
};
constexpr ResultValue stagePerformanceValues[] = {
    {"injection_mass_flow", "Mass flow of the injected vapor", "kg/s"},
    {"injected_fraction", "Injected vapor over the condenser's flow", "kg/kg"},
    {"compressor_power", "Compressor power", "kW"},
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"volumetric_efficiency", "Volumetric efficiency", "-"},
    {"swept_volume", "Swept volume", "m3/s"},
    {"injection_line_superheat", "Superheat at the injection line outlet (not computed)", "K"},
    {"compressor_outlet_superheat", "Superheat at the compressor outlet", "K"},
    {"next_compressor_superheat", "Superheat at the inlet of the next compressor", "K"},
};
constexpr ResultValue loopPumpValues[] = {
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"pressure_ratio", "Pressure ratio", "-"},
    {"condenser_mass_flow", "Mass flow of the condenser", "kg/s"},
    {"power", "Power", "kW"},
};
constexpr ResultValue loopPerformanceValues[] = {
    {"mass_flow", "Mass flow", "kg/s"},
    {"volumetric_cooling_capacity", "Volumetric cooling capacity", "kJ/m3"},
    {"volumetric_heating_capacity", "Volumetric heating capacity", "kJ/m3"},
    {"evaporator_capacity", "Evaporator capacity", "kW"},
    {"condenser_capacity", "Condenser capacity", "kW"},
    {"pump_power", "Pump power", "kW"},
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"cop_cooling", "COP of cooling", "-"},
    {"eer_cooling", "EER of cooling", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"eer_heating", "EER of heating", "Btu/(W h)"},
    {"evaporator_superheat", "Superheat at the evaporator outlet", "K"},
    {"specific_cooling", "Evaporator capacity per mass flow of the condenser", "kJ/kg"},
    {"specific_heat_rejection", "Condenser capacity per mass flow of the condenser", "kJ/kg"},
    {"condensing_temperature", "Mean condensing temperature", "K"},
    {"evaporating_temperature", "Mean evaporating temperature", "K"},
};
constexpr ResultValue lowStageCompressorValues[] = {
    {"isentropic_efficiency", "Isentropic efficiency", "-"},
    {"volumetric_efficiency", "Volumetric efficiency", "-"},
    {"swept_volume", "Swept volume", "m3/s"},
    {"pressure_ratio", "Pressure ratio", "-"},
    {"high_stage_mass_flow", "Mass flow of the high stage", "kg/s"},
    {"power", "Power", "kW"},
};
constexpr ResultValue boosterPerformanceValues[] = {
    {"high_stage_mass_flow", "Mass flow of the high stage", "kg/s"},
    {"flash_gas_mass_flow", "Mass flow of the flash gas", "kg/s"},
    {"receiver_liquid_mass_flow", "Mass flow of the receiver's liquid", "kg/s"},
    {"mt_evaporator_mass_flow", "Mass flow of the MT evaporator", "kg/s"},
    {"lt_evaporator_mass_flow", "Mass flow of the LT evaporator", "kg/s"},
    {"volumetric_cooling_capacity", "Volumetric cooling capacity", "kJ/m3"},
    {"volumetric_heating_capacity", "Volumetric heating capacity", "kJ/m3"},
    {"both_evaporators_capacity", "Capacity of both evaporators", "kW"},
    {"mt_evaporator_capacity", "MT evaporator capacity", "kW"},
    {"lt_evaporator_capacity", "LT evaporator capacity", "kW"},
    {"gas_cooler_capacity", "Gas cooler capacity", "kW"},
    {"cop_cooling", "COP of cooling", "-"},
    {"eer_cooling", "EER of cooling", "Btu/(W h)"},
    {"cop_heating", "COP of heating", "-"},
    {"eer_heating", "EER of heating", "Btu/(W h)"},
    {"mt_evaporator_superheat", "Superheat at the MT evaporator outlet", "K"},
    {"lt_evaporator_superheat", "Superheat at the LT evaporator outlet", "K"},
    {"high_stage_superheat", "Superheat at the high stage inlet", "K"},
    {"low_stage_superheat", "Superheat at the low stage inlet", "K"},
    {"specific_cooling", "Specific cooling effect", "kJ/kg"},
    {"specific_heat_rejection", "Specific heat rejection", "kJ/kg"},
    {"heat", "Heat exchanged", "kW"},
    {"effectiveness", "Exchanger effectiveness", "-"},
    {"gas_cooler_temperature", "Mean of gas cooler inlet and outlet temperature", "K"},
    {"mt_evaporating_temperature", "Mean evaporating temperature, MT", "K"},
    {"lt_evaporating_temperature", "Mean evaporating temperature, LT", "K"},
};

constexpr ResultPlace fluidInformationPlaces[] = {
    {"request", propertyRequestValues},
    {"", fluidFactValues},
    {"components.N", componentValues},
};
constexpr ResultPlace saturationTablePlaces[] = {
    {"request", propertyRequestValues},
    {"", saturationTableValues},
    {"table.N.liquid", saturatedLiquidValues},
    {"table.N.vapor", saturatedVaporValues},
    {"table.N", surfaceTensionValues},
};
constexpr ResultPlace isopropertyTablePlaces[] = {
    {"request", propertyRequestValues},
    {"", isopropertyTableValues},
    {"table.N", rowValues},
};
constexpr ResultPlace statePointPlaces[] = {
    {"request", propertyRequestValues},
    {"", statePointValues},
};
constexpr ResultPlace saturatedPhasesPlaces[] = {
    {"request", propertyRequestValues},
    {"liquid", saturatedLiquidValues},
    {"vapor", saturatedVaporValues},
    {"", surfaceTensionValues},
};
constexpr ResultPlace basicPlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"evaporator", evaporatorValues, stateValues, stateValues},
    {"suction_line", warmingLineValues, stateValues, stateValues},
    {"compressor", compressorValues, stateValues, stateValues},
    {"discharge_line", coolingLineValues, stateValues, stateValues},
    {"condenser", condenserValues, stateValues, stateValues},
    {"liquid_line", coolingLineValues, stateValues, stateValues},
    {"expansion_device", expansionDeviceValues, stateValues, stateValues},
    {"performance", basicPerformanceValues},
};
constexpr ResultPlace heatExchangerPlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"evaporator", evaporatorValues, stateValues, stateValues},
    {"suction_line_before_exchanger", warmingLineValues, stateValues, stateValues},
    {"suction_line_after_exchanger", warmingLineValues, stateValues, stateValues},
    {"compressor", compressorValues, stateValues, stateValues},
    {"discharge_line", coolingLineValues, stateValues, stateValues},
    {"condenser", condenserValues, stateValues, stateValues},
    {"liquid_line_before_exchanger", coolingLineValues, stateValues, stateValues},
    {"liquid_line_after_exchanger", coolingLineValues, stateValues, stateValues},
    {"expansion_device", expansionDeviceValues, stateValues, stateValues},
    {"heat_exchanger.liquid_inlet", stateValues},
    {"heat_exchanger.liquid_outlet", stateValues},
    {"heat_exchanger.liquid_side", liquidSideValues},
    {"heat_exchanger.vapor_inlet", stateValues},
    {"heat_exchanger.vapor_outlet", stateValues},
    {"heat_exchanger.vapor_side", vaporSideValues},
    {"heat_exchanger", liquidExchangerValues},
    {"performance", heatExchangerPerformanceValues},
};
constexpr ResultPlace combinedMediumPlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"evaporator", evaporatorValues, stateValues, stateValues},
    {"suction_line", warmingLineValues, stateValues, stateValues},
    {"compressor", compressorValues, stateValues, stateValues},
    {"discharge_line", coolingLineValues, stateValues, stateValues},
    {"condenser", condenserValues, stateValues, stateValues},
    {"liquid_line", coolingLineValues, stateValues, stateValues},
    {"expansion_device", expansionDeviceValues, stateValues, stateValues},
    {"performance", combinedMediumPerformanceValues},
};
constexpr ResultPlace combinedLowPlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"evaporator", evaporatorValues, stateValues, stateValues},
    {"suction_line", warmingLineValues, stateValues, stateValues},
    {"compressor", compressorValues, stateValues, stateValues},
    {"discharge_line", coolingLineValues, stateValues, stateValues},
    {"condenser", condenserValues, stateValues, stateValues},
    {"liquid_line_before_subcooler", coolingLineValues, stateValues, stateValues},
    {"liquid_line_after_subcooler", coolingLineValues, stateValues, stateValues},
    {"expansion_device", expansionDeviceValues, stateValues, stateValues},
    {"subcooler", subcoolerValues, stateValues, stateValues},
    {"performance", combinedLowPerformanceValues},
};
constexpr ResultPlace systemPlaces[] = {
    {"system", systemValues},
};
constexpr ResultPlace lineSizingPlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"evaporator", evaporatorValues, stateValues, stateValues},
    {"suction_line", warmingLineValues, stateValues, stateValues},
    {"compressor", compressorValues, stateValues, stateValues},
    {"discharge_line", coolingLineValues, stateValues, stateValues},
    {"condenser", condenserValues, stateValues, stateValues},
    {"liquid_line", coolingLineValues, stateValues, stateValues},
    {"expansion_device", expansionDeviceValues, stateValues, stateValues},
    {"performance", basicPerformanceValues},
    {"pipes.suction_line.full_load.N", pipeValues},
    {"pipes.suction_line.partial_load.N", pipeValues},
    {"pipes.discharge_line.full_load.N", pipeValues},
    {"pipes.discharge_line.partial_load.N", pipeValues},
    {"pipes.liquid_line.full_load.N", pipeValues},
    {"pipes.liquid_line.partial_load.N", pipeValues},
};
constexpr ResultPlace rankinePlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"boiler", evaporatorValues, stateValues, stateValues},
    {"high_pressure_vapor_line", coolingLineValues, stateValues, stateValues},
    {"turbine", turbineValues, stateValues, stateValues},
    {"low_pressure_vapor_line", coolingLineValues, stateValues, stateValues},
    {"condenser", rankineCondenserValues, stateValues, stateValues},
    {"pump", pumpValues, stateValues, stateValues},
    {"liquid_line", coolingLineValues, stateValues, stateValues},
    {"cooling_water", reservedValues},
    {"heat_source", reservedValues},
    {"performance", rankinePerformanceValues},
};
constexpr ResultPlace transcriticalPlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"evaporator", evaporatorValues, stateValues, stateValues},
    {"suction_line_before_exchanger", warmingLineValues, stateValues, stateValues},
    {"suction_line_after_exchanger", warmingLineValues, stateValues, stateValues},
    {"compressor", compressorValues, stateValues, briefStateValues},
    {"discharge_line", briefCoolingLineValues, briefStateValues, briefStateValues},
    {"gas_cooler", gasCoolerValues, briefStateValues, briefStateValues},
    {"liquid_line_before_exchanger", briefCoolingLineValues, briefStateValues, briefStateValues},
    {"liquid_line_after_exchanger", briefCoolingLineValues, briefStateValues, briefStateValues},
    {"expansion_device", expansionDeviceValues, briefStateValues, stateValues},
    {"heat_exchanger.hot_inlet", briefStateValues},
    {"heat_exchanger.hot_outlet", briefStateValues},
    {"heat_exchanger.hot_side", hotSideValues},
    {"heat_exchanger.vapor_inlet", stateValues},
    {"heat_exchanger.vapor_outlet", stateValues},
    {"heat_exchanger.vapor_side", vaporSideValues},
    {"heat_exchanger", hotExchangerValues},
    {"performance", transcriticalPerformanceValues},
};
constexpr ResultPlace liquidInjectionPlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"evaporator", evaporatorValues, stateValues, stateValues},
    {"suction_line", warmingLineValues, stateValues, stateValues},
    {"compressor", compressorValues, stateValues, stateValues},
    {"discharge_line", coolingLineValues, stateValues, stateValues},
    {"condenser", condenserValues, stateValues, stateValues},
    {"liquid_line", coolingLineValues, stateValues, stateValues},
    {"expansion_device", expansionDeviceValues, stateValues, stateValues},
    {"injection_line", coolingLineValues, stateValues, stateValues},
    {"injection_valve", expansionDeviceValues, stateValues, stateValues},
    {"performance", liquidInjectionPerformanceValues},
};
constexpr ResultPlace twoStagePlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"evaporator", evaporatorValues, stateValues, stateValues},
    {"suction_line", warmingLineValues, stateValues, stateValues},
    {"low_compressor", compressorValues, stateValues, stateValues},
    {"high_compressor", compressorValues, stateValues, stateValues},
    {"discharge_line", coolingLineValues, stateValues, stateValues},
    {"condenser", condenserValues, stateValues, stateValues},
    {"liquid_line", coolingLineValues, stateValues, stateValues},
    {"expansion_device", expansionDeviceValues, stateValues, stateValues},
    {"injection_valve", expansionDeviceValues, stateValues, stateValues},
    {"heat_exchanger.liquid_inlet", stateValues},
    {"heat_exchanger.liquid_outlet", stateValues},
    {"heat_exchanger.liquid_side", liquidSideValues},
    {"heat_exchanger.injection_inlet", stateValues},
    {"heat_exchanger.injection_outlet", stateValues},
    {"heat_exchanger.injection_side", injectionSideValues},
    {"heat_exchanger", injectionExchangerValues},
    {"performance", twoStagePerformanceValues},
    {"performance.high_compressor", compressorPowerValues},
    {"performance.low_compressor", compressorPowerValues},
};
constexpr ResultPlace multiStagePlaces[] = {
    {"request", cycleRequestValues},
    {"", multiStageHeadValues},
    {"evaporator", evaporatorValues, stateValues, stateValues},
    {"suction_line", warmingLineValues, stateValues, stateValues},
    {"last_compressor", compressorValues, stateValues, stateValues},
    {"discharge_line", coolingLineValues, stateValues, stateValues},
    {"condenser", condenserValues, stateValues, stateValues},
    {"liquid_line", coolingLineValues, stateValues, stateValues},
    {"expansion_device", expansionDeviceValues, stateValues, stateValues},
    {"stageN.expansion_valve", expansionDeviceValues, stateValues, stateValues},
    {"stageN.flash_tank.inlet", stateValues},
    {"stageN.flash_tank.liquid", stateValues},
    {"stageN.flash_tank.vapor", stateValues},
    {"stageN.flash_tank", flashTankValues},
    {"stageN.injection_line", warmingLineValues, stateValues, stateValues},
    {"stageN.compressor", compressorValues, stateValues, stateValues},
    {"performance", multiStagePerformanceValues},
    {"performance.last_compressor", compressorPowerValues},
    {"performance.stage.N", stagePerformanceValues},
};
constexpr ResultPlace pumpedCo2LoopPlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"evaporator", evaporatorValues, stateValues, stateValues},
    {"low_pressure_vapor_line", warmingLineValues, stateValues, stateValues},
    {"condenser", condenserValues, stateValues, stateValues},
    {"high_pressure_liquid_line", warmingLineValues, stateValues, stateValues},
    {"pump", loopPumpValues, stateValues, stateValues},
    {"performance", loopPerformanceValues},
};
constexpr ResultPlace boosterPlaces[] = {
    {"request", cycleRequestValues},
    {"", cycleHeadValues},
    {"mt_evaporator", evaporatorValues, stateValues, stateValues},
    {"lt_evaporator", evaporatorValues, stateValues, stateValues},
    {"suction_line_before_exchanger", warmingLineValues, stateValues, stateValues},
    {"suction_line_after_exchanger", warmingLineValues, stateValues, stateValues},
    {"high_stage_compressor", compressorValues, stateValues, briefStateValues},
    {"low_stage_compressor", lowStageCompressorValues, stateValues, briefStateValues},
    {"discharge_line", briefCoolingLineValues, briefStateValues, briefStateValues},
    {"gas_cooler", gasCoolerValues, briefStateValues, briefStateValues},
    {"liquid_line_before_exchanger", briefCoolingLineValues, briefStateValues, briefStateValues},
    {"liquid_line_after_exchanger", briefCoolingLineValues, briefStateValues, briefStateValues},
    {"high_pressure_valve", expansionDeviceValues, briefStateValues, stateValues},
    {"bypass_valve", expansionDeviceValues, briefStateValues, stateValues},
    {"mt_expansion_device", expansionDeviceValues, briefStateValues, stateValues},
    {"lt_expansion_device", expansionDeviceValues, briefStateValues, stateValues},
    {"heat_exchanger.hot_inlet", briefStateValues},
    {"heat_exchanger.hot_outlet", briefStateValues},
    {"heat_exchanger.hot_side", hotSideValues},
    {"heat_exchanger.vapor_inlet", stateValues},
    {"heat_exchanger.vapor_outlet", stateValues},
    {"heat_exchanger.vapor_side", vaporSideValues},
    {"heat_exchanger", hotExchangerValues},
    {"performance", boosterPerformanceValues},
    {"performance.high_stage", compressorPowerValues},
    {"performance.low_stage", compressorPowerValues},
};

constexpr RequestResults all[] = {
    {"fluid-information", {fluidInformationPlaces, {}}, {}},
    {"saturation-table", {saturationTablePlaces, {}}, {}},
    {"isoproperty-table", {isopropertyTablePlaces, {}}, {}},
    {"state-point", {statePointPlaces, {}}, {}},
    {"equilibrium-phases", {saturatedPhasesPlaces, {}}, {}},
    {"saturation-point", {saturatedPhasesPlaces, {}}, {}},
    {"store-blend", {{}, {}}, {}},
    {"basic", {basicPlaces, {}}, {}},
    {"heat-exchanger", {heatExchangerPlaces, {}}, {}},
    {"combined", {combinedMediumPlaces, combinedLowPlaces}, {}},
    {"cascade", {basicPlaces, basicPlaces}, systemPlaces},
    {"line-sizing", {lineSizingPlaces, {}}, {}},
    {"rankine", {rankinePlaces, {}}, {}},
    {"transcritical", {transcriticalPlaces, {}}, {}},
    {"liquid-injection", {liquidInjectionPlaces, {}}, {}},
    {"two-stage", {twoStagePlaces, {}}, {}},
    {"multi-stage", {multiStagePlaces, {}}, {}},
    {"minimal", {basicPlaces, {}}, {}},
    {"pumped-co2", {basicPlaces, pumpedCo2LoopPlaces}, systemPlaces},
    {"booster", {boosterPlaces, {}}, {}},
};

// Behind the values of every circuit of a cycle.
constexpr ResultValue pressurePathValues[] = {{"pressure", "Pressure", "kPa"}, {"enthalpy", "Enthalpy", "kJ/kg"}};
constexpr ResultValue temperaturePathValues[] = {{"temperature", "Temperature", "K"}, {"entropy", "Entropy", "kJ/(kg K)"}};
constexpr ResultValue domePressureValues[] = {{"pressure", "Pressure", "kPa"}};
constexpr ResultValue domeTemperatureValues[] = {{"temperature", "Temperature", "K"}};
constexpr ResultValue liquidEnthalpyValues[] = {{"enthalpy", "Enthalpy of the liquid", "kJ/kg"}};
constexpr ResultValue vaporEnthalpyValues[] = {{"enthalpy", "Enthalpy of the vapor", "kJ/kg"}};
constexpr ResultValue liquidEntropyValues[] = {{"entropy", "Entropy of the liquid", "kJ/(kg K)"}};
constexpr ResultValue vaporEntropyValues[] = {{"entropy", "Entropy of the vapor", "kJ/(kg K)"}};
constexpr ResultPlace diagramPlaces[] = {
    {"diagram.ph.cycle.N", pressurePathValues},
    {"diagram.ph.dome.N", domePressureValues},
    {"diagram.ph.dome.N.liquid", liquidEnthalpyValues},
    {"diagram.ph.dome.N.vapor", vaporEnthalpyValues},
    {"diagram.ts.cycle.N", temperaturePathValues},
    {"diagram.ts.dome.N", domeTemperatureValues},
    {"diagram.ts.dome.N.liquid", liquidEntropyValues},
    {"diagram.ts.dome.N.vapor", vaporEntropyValues},
};
// clang-format on

void add(std::vector<ListedResult>& results, const std::string& place, std::span<const ResultValue> values) {
    for (const ResultValue& value : values) {
        const std::string key = (place.empty() ? place : place + '.') + std::string(value.key);
        results.push_back(
            {key, std::string(value.name), std::string(value.unit), quantityOfResult(value.name, value.unit)});
    }
}

void add(std::vector<ListedResult>& results, const std::string& circuit, std::span<const ResultPlace> places) {
    for (const ResultPlace& one : places) {
        const std::string place = circuit + (circuit.empty() || one.place.empty() ? "" : ".") + std::string(one.place);
        add(results, place + ".inlet", one.inlet);
        add(results, place + ".outlet", one.outlet);
        add(results, place, one.values);
    }
}

bool isNumber(std::string_view word) {
    return !word.empty() && word.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

std::vector<ListedResult> resultsOf(const Request& request) {
    constexpr int cycleType = 2;
    std::vector<ListedResult> results;
    for (const RequestResults& one : all) {
        if (one.request != request.name) continue;
        for (std::size_t i = 0; i < request.circuits.size(); ++i) {
            const std::string circuit(request.circuits[i].key);
            add(results, circuit, one.circuits[i]);
            if (request.type == cycleType) add(results, circuit, diagramPlaces);
        }
        add(results, "", one.common);
    }
    return results;
}

std::string listedKey(std::string_view key) {
    constexpr std::string_view stage = "stage";
    std::string listed;
    while (!key.empty()) {
        const std::string_view word = key.substr(0, key.find('.'));
        if (!listed.empty()) listed += '.';
        if (isNumber(word))
            listed += 'N';
        else if (word.starts_with(stage) && isNumber(word.substr(stage.size())))
            listed += "stageN";
        else
            listed += word;
        key.remove_prefix(std::min(key.size(), word.size() + 1));
    }
    return listed;
}

}  // namespace frigana::catalogue
