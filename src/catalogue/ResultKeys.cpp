#include "ResultKeys.h"

#include <unordered_map>

#include "Words.h"

namespace frigana::catalogue {

namespace {

struct Word {
    std::string_view name, key;
};

// clang-format off
constexpr Word circuits[] = {
    {"High temperature circuit", "high"},
    {"Medium temperature circuit", "medium"},
    {"Low temperature circuit", "low"},
    {"Pumped loop", "loop"},
    {"System", "system"},
};

// Headings of the sections. A number of a stage in them is taken out before.
constexpr Word sections[] = {
    {"EVAPORATOR", "evaporator"},
    {"MT EVAPORATOR", "mt_evaporator"},
    {"LT EVAPORATOR", "lt_evaporator"},
    {"BOILER", "boiler"},
    {"SUCTION LINE", "suction_line"},
    {"SUCTION LINE - BEFORE HEAT EXCHANGER", "suction_line_before_exchanger"},
    {"SUCTION LINE - AFTER HEAT EXCHANGER", "suction_line_after_exchanger"},
    {"SUCTION LINE - AFTER EXCHANGER", "suction_line_after_exchanger"},
    {"HIGH PRESSURE VAPOR LINE", "high_pressure_vapor_line"},
    {"LOW PRESSURE VAPOR LINE", "low_pressure_vapor_line"},
    {"HIGH PRESSURE LIQUID LINE", "high_pressure_liquid_line"},
    {"COMPRESSOR", "compressor"},
    {"LOW COMPRESSOR", "low_compressor"},
    {"HIGH COMPRESSOR", "high_compressor"},
    {"LAST STAGE COMPRESSOR", "last_compressor"},
    {"LOW STAGE COMPRESSOR", "low_stage_compressor"},
    {"HIGH STAGE COMPRESSOR", "high_stage_compressor"},
    {"TURBINE", "turbine"},
    {"PUMP", "pump"},
    {"DISCHARGE LINE", "discharge_line"},
    {"CONDENSER", "condenser"},
    {"GAS COOLER", "gas_cooler"},
    {"LIQUID LINE", "liquid_line"},
    {"LIQUID LINE - BEFORE HEAT EXCHANGER", "liquid_line_before_exchanger"},
    {"LIQUID LINE - AFTER HEAT EXCHANGER", "liquid_line_after_exchanger"},
    {"LIQUID LINE - BEFORE MECHANICAL SUBCOOLING", "liquid_line_before_subcooler"},
    {"LIQUID LINE - AFTER MECHANICAL SUBCOOLING", "liquid_line_after_subcooler"},
    {"EXPANSION DEVICE", "expansion_device"},
    {"EXPANSION DEVICE NEAR TO EVAPORATOR", "expansion_device"},
    {"MT EXPANSION DEVICE", "mt_expansion_device"},
    {"LT EXPANSION DEVICE", "lt_expansion_device"},
    {"HIGH PRESSURE CONTROL VALVE (EXPANSION DEVICE)", "high_pressure_valve"},
    {"BYPASS VALVE (EXPANSION DEVICE)", "bypass_valve"},
    {"LIQUID INJECTION LINE", "injection_line"},
    {"LIQUID INJECTION EXPANSION VALVE", "injection_valve"},
    {"HEAT EXCHANGER", "heat_exchanger"},
    {"HEAT EXCHANGER (SUCTION LINE - LIQUID LINE)", "heat_exchanger"},
    {"MECHANICAL SUBCOOLING (HEAT EXCHANGER)", "subcooler"},
    {"NUMBER OF STAGES", ""},
    {"EXPANSION VALVE", "expansion_valve"},
    {"FLASH TANK", "flash_tank"},
    {"VAPOR INJECTION LINE", "injection_line"},
    {"COOLING WATER", "cooling_water"},
    {"GAS EXHAUSTION", "heat_source"},
    {"PERFORMANCE PARAMETERS", "performance"},
    {"OVERALL PARAMETERS", ""},
    {"CYCLE data for graphic P-h", "diagram.ph"},
    {"PRESSURE & ENTHALPY data for graphic P-h", "diagram.ph"},
    {"CYCLE data for graphic T-s", "diagram.ts"},
    {"Temperature & enthalpy data for graphic T-s", "diagram.ts"},
    {"OPTIONS FOR SUCTION LINE (Condition:Full Load)", "pipes.suction_line.full_load"},
    {"OPTIONS FOR SUCTION LINE (Condition:Partial Load)", "pipes.suction_line.partial_load"},
    {"OPTIONS FOR DISCHARGE LINE (Condition:Full Load)", "pipes.discharge_line.full_load"},
    {"OPTIONS FOR DISCHARGE LINE (Condition:Partial Load)", "pipes.discharge_line.partial_load"},
    {"OPTIONS FOR LIQUID LINE (Condition:Full Load)", "pipes.liquid_line.full_load"},
    {"OPTIONS FOR LIQUID LINE (Condition:Partial Load)", "pipes.liquid_line.partial_load"},
};

constexpr Word groups[] = {
    {"Inlet", "inlet"},
    {"Outlet", "outlet"},
    {"Liquid inlet", "liquid_inlet"},
    {"Liquid outlet", "liquid_outlet"},
    {"Liquid side", "liquid_side"},
    {"Vapor inlet", "vapor_inlet"},
    {"Vapor outlet", "vapor_outlet"},
    {"Vapor side", "vapor_side"},
    {"Hot inlet", "hot_inlet"},
    {"Hot outlet", "hot_outlet"},
    {"Hot side", "hot_side"},
    {"Injection inlet", "injection_inlet"},
    {"Injection outlet", "injection_outlet"},
    {"Injection side", "injection_side"},
    {"Liquid", "liquid"},
    {"Vapor", "vapor"},
    {"High compressor", "high_compressor"},
    {"Low compressor", "low_compressor"},
    {"Last compressor", "last_compressor"},
    {"High stage", "high_stage"},
    {"Low stage", "low_stage"},
    {"Stage", "stage"},
    {"Cycle", "cycle"},
    {"Dome", "dome"},
    {"Option", ""},
    {"Components", "components"},
    {"Saturation table", "table"},
    {"Isoproperty table", "table"},
};

constexpr Word names[] = {
    // The head of a result.
    {"Request type", "request.type"},
    {"Cycle", "request.subtype"},
    {"Operation", "request.subtype"},
    {"Title", "title"},
    {"Fluid and global warming potential", "fluid_and_gwp"},
    {"Fluid", "fluid"},
    {"Kind of fluid", "fluid_kind"},
    {"Number of components", "component_count"},
    {"Component", "name"},
    {"Mass fraction", "mass_fraction"},
    {"Mole fraction", "mole_fraction"},
    {"Number of stages", "stages"},
    // States.
    {"pressure", "pressure"},
    {"temperature", "temperature"},
    {"density", "density"},
    {"enthalpy", "enthalpy"},
    {"entropy", "entropy"},
    {"quality", "quality"},
    {"saturation temperature", "saturation_temperature"},
    {"Pressure", "pressure"},
    {"Temperature", "temperature"},
    {"Density", "density"},
    {"Enthalpy", "enthalpy"},
    {"Entropy", "entropy"},
    {"Quality", "quality"},
    {"Specific volume", "specific_volume"},
    {"Internal energy", "internal_energy"},
    {"Isochoric heat capacity", "cv"},
    {"Isobaric heat capacity", "cp"},
    {"Speed of sound", "speed_of_sound"},
    {"Thermal conductivity", "thermal_conductivity"},
    {"Viscosity", "viscosity"},
    {"Prandtl number", "prandtl_number"},
    {"Surface tension", "surface_tension"},
    {"Temperature, liquid", "liquid.temperature"},
    {"Temperature, vapor", "vapor.temperature"},
    {"Pressure, liquid", "liquid.pressure"},
    {"Pressure, vapor", "vapor.pressure"},
    {"Density, liquid", "liquid.density"},
    {"Density, vapor", "vapor.density"},
    {"Specific volume, liquid", "liquid.specific_volume"},
    {"Specific volume, vapor", "vapor.specific_volume"},
    {"Internal energy, liquid", "liquid.internal_energy"},
    {"Internal energy, vapor", "vapor.internal_energy"},
    {"Enthalpy, liquid", "liquid.enthalpy"},
    {"Enthalpy, vapor", "vapor.enthalpy"},
    {"Entropy, liquid", "liquid.entropy"},
    {"Entropy, vapor", "vapor.entropy"},
    {"Isochoric heat capacity, liquid", "liquid.cv"},
    {"Isochoric heat capacity, vapor", "vapor.cv"},
    {"Isobaric heat capacity, liquid", "liquid.cp"},
    {"Isobaric heat capacity, vapor", "vapor.cp"},
    {"Speed of sound, liquid", "liquid.speed_of_sound"},
    {"Speed of sound, vapor", "vapor.speed_of_sound"},
    {"Thermal conductivity, liquid", "liquid.thermal_conductivity"},
    {"Thermal conductivity, vapor", "vapor.thermal_conductivity"},
    {"Viscosity, liquid", "liquid.viscosity"},
    {"Viscosity, vapor", "vapor.viscosity"},
    {"Prandtl number, liquid", "liquid.prandtl_number"},
    {"Prandtl number, vapor", "vapor.prandtl_number"},
    {"Enthalpy of the liquid", "liquid.enthalpy"},
    {"Enthalpy of the vapor", "vapor.enthalpy"},
    {"Entropy of the liquid", "liquid.entropy"},
    {"Entropy of the vapor", "vapor.entropy"},
    // Tables.
    {"Constant property (1 temperature, 2 pressure, 3 density)", "constant_property"},
    {"Running property (1 temperature, 2 pressure, 3 density)", "running_property"},
    {"Running property (1 temperature, 2 pressure)", "running_property"},
    {"Constant value", "constant_value"},
    {"From", "from"},
    {"To", "to"},
    {"Step", "step"},
    {"Number of rows", "row_count"},
    // Facts of a fluid.
    {"Molar mass", "molar_mass"},
    {"Triple point temperature", "triple_point_temperature"},
    {"Normal boiling point", "normal_boiling_point"},
    {"Critical temperature", "critical_temperature"},
    {"Critical pressure", "critical_pressure"},
    {"Critical density", "critical_density"},
    {"Lowest temperature", "lowest_temperature"},
    {"Highest temperature", "highest_temperature"},
    {"Highest pressure", "highest_pressure"},
    {"Highest density", "highest_density"},
    {"Global warming potential", "gwp"},
    {"Safety class", "safety_class"},
    // Devices and lines.
    {"Glide", "glide"},
    {"Drop of saturation temperature", "saturation_drop"},
    {"drop of saturation temperature", "saturation_drop"},
    {"drop of saturation temperature (not computed)", "saturation_drop"},
    {"Superheat", "superheat"},
    {"Superheat at the inlet", "inlet_superheat"},
    {"Superheat at the outlet", "outlet_superheat"},
    {"Subcooling", "subcooling"},
    {"Mass flow", "mass_flow"},
    {"Mass flow of the liquid", "liquid_mass_flow"},
    {"Mass flow of the vapor", "vapor_mass_flow"},
    {"Mass flow of the hot side", "hot_mass_flow"},
    {"Mass flow of the injection", "injection_mass_flow"},
    {"Mass flow into the tank", "mass_flow"},
    {"Mass flow of the condenser", "condenser_mass_flow"},
    {"Pressure drop", "pressure_drop"},
    {"pressure drop", "pressure_drop"},
    {"Capacity", "capacity"},
    {"Temperature rise", "temperature_rise"},
    {"temperature rise", "temperature_rise"},
    {"temperature rise (not computed)", "temperature_rise"},
    {"Temperature fall", "temperature_fall"},
    {"temperature fall", "temperature_fall"},
    {"Heat gain", "heat_gain"},
    {"Heat loss", "heat_loss"},
    {"Heat exchanged", "heat"},
    {"Isentropic efficiency", "isentropic_efficiency"},
    {"isentropic efficiency", "isentropic_efficiency"},
    {"Volumetric efficiency", "volumetric_efficiency"},
    {"volumetric efficiency", "volumetric_efficiency"},
    {"Swept volume", "swept_volume"},
    {"swept volume", "swept_volume"},
    {"Pressure ratio", "pressure_ratio"},
    {"Expansion ratio", "expansion_ratio"},
    {"Power", "power"},
    {"power", "power"},
    {"Enthalpy change times mass flow", "enthalpy_change"},
    {"Unused", "unused"},
    {"Reserved", "reserved"},
    // Performance.
    {"Volumetric cooling capacity", "volumetric_cooling_capacity"},
    {"Volumetric heating capacity", "volumetric_heating_capacity"},
    {"Volumetric cooling capacity, low compressor", "volumetric_cooling_capacity"},
    {"Volumetric heating capacity, high compressor", "volumetric_heating_capacity"},
    {"Volumetric cooling capacity, compressor 1", "volumetric_cooling_capacity"},
    {"Volumetric heating capacity, last compressor", "volumetric_heating_capacity"},
    {"Net volumetric cooling capacity", "net_volumetric_cooling_capacity"},
    {"Evaporator capacity", "evaporator_capacity"},
    {"Condenser capacity", "condenser_capacity"},
    {"Gas cooler capacity", "gas_cooler_capacity"},
    {"Capacity of both evaporators", "both_evaporators_capacity"},
    {"MT evaporator capacity", "mt_evaporator_capacity"},
    {"LT evaporator capacity", "lt_evaporator_capacity"},
    {"Net medium temperature capacity", "net_capacity"},
    {"Compressor power", "compressor_power"},
    {"Pump power", "pump_power"},
    {"Turbine power", "turbine_power"},
    {"Boiler heat", "boiler_heat"},
    {"Condenser heat", "condenser_heat"},
    {"Isentropic efficiency of the turbine", "turbine_isentropic_efficiency"},
    {"Isentropic efficiency of the pump", "pump_isentropic_efficiency"},
    {"Efficiency of the cycle", "cycle_efficiency"},
    {"COP of cooling", "cop_cooling"},
    {"EER of cooling", "eer_cooling"},
    {"COP of heating", "cop_heating"},
    {"EER of heating", "eer_heating"},
    {"COP of cooling of the system", "system_cop_cooling"},
    {"EER of cooling of the system", "system_eer_cooling"},
    {"COP of cooling of the net capacity", "net_cop_cooling"},
    {"EER of cooling of the net capacity", "net_eer_cooling"},
    {"Subcooling at the liquid line outlet", "liquid_line_subcooling"},
    {"Subcooling at the expansion device", "expansion_device_subcooling"},
    {"Superheat at the evaporator outlet", "evaporator_superheat"},
    {"Superheat at the MT evaporator outlet", "mt_evaporator_superheat"},
    {"Superheat at the LT evaporator outlet", "lt_evaporator_superheat"},
    {"Superheat at the suction line outlet", "suction_line_superheat"},
    {"Superheat at the compressor inlet", "compressor_superheat"},
    {"Superheat at the compressor outlet", "compressor_outlet_superheat"},
    {"Superheat at the low compressor inlet", "low_compressor_superheat"},
    {"Superheat at the low compressor outlet", "low_compressor_outlet_superheat"},
    {"Superheat at the high compressor inlet", "high_compressor_superheat"},
    {"Superheat at the last compressor inlet", "last_compressor_superheat"},
    {"Superheat at the inlet of compressor 1", "first_compressor_superheat"},
    {"Superheat at the inlet of the next compressor", "next_compressor_superheat"},
    {"Superheat at the high stage inlet", "high_stage_superheat"},
    {"Superheat at the low stage inlet", "low_stage_superheat"},
    {"Superheat at the injection line outlet (not computed)", "injection_line_superheat"},
    {"Superheat at the turbine outlet", "turbine_outlet_superheat"},
    {"Temperature at the compressor outlet", "compressor_outlet_temperature"},
    {"Temperature at the high compressor outlet", "high_compressor_outlet_temperature"},
    {"Temperature at the last compressor outlet", "last_compressor_outlet_temperature"},
    {"Temperature at the boiler outlet", "boiler_outlet_temperature"},
    {"Quality at the turbine outlet", "turbine_outlet_quality"},
    {"Specific cooling effect", "specific_cooling"},
    {"Specific heat rejection", "specific_heat_rejection"},
    {"Evaporator capacity per mass flow of the condenser", "specific_cooling"},
    {"Condenser capacity per mass flow of the condenser", "specific_heat_rejection"},
    {"Heat exchanged in the subcooler", "subcooler_heat"},
    {"Pressure drop of the subcooler", "subcooler_pressure_drop"},
    {"Exchanger effectiveness", "effectiveness"},
    {"Mean condensing temperature", "condensing_temperature"},
    {"Mean evaporating temperature", "evaporating_temperature"},
    {"Mean evaporating temperature, MT", "mt_evaporating_temperature"},
    {"Mean evaporating temperature, LT", "lt_evaporating_temperature"},
    {"Mean of gas cooler inlet and outlet temperature", "gas_cooler_temperature"},
    {"Mean boiler temperature", "boiler_temperature"},
    {"Injected fraction", "injected_fraction"},
    {"Injected fraction of the compressor's flow", "injected_fraction"},
    {"Injected vapor over the condenser's flow", "injected_fraction"},
    {"Mass flow of the injected vapor", "injection_mass_flow"},
    {"Mass flow of the compressor", "compressor_mass_flow"},
    {"Mass flow of the evaporator", "evaporator_mass_flow"},
    {"Mass flow, condenser", "condenser_mass_flow"},
    {"Mass flow, evaporator", "evaporator_mass_flow"},
    {"Mass flow, low compressor", "low_compressor_mass_flow"},
    {"Mass flow, injection", "injection_mass_flow"},
    {"Mass flow of the high stage", "high_stage_mass_flow"},
    {"Mass flow of the flash gas", "flash_gas_mass_flow"},
    {"Mass flow of the receiver's liquid", "receiver_liquid_mass_flow"},
    {"Mass flow of the MT evaporator", "mt_evaporator_mass_flow"},
    {"Mass flow of the LT evaporator", "lt_evaporator_mass_flow"},
    // A system of two circuits.
    {"Fluid of the high temperature circuit", "high_fluid"},
    {"Fluid of the low temperature circuit", "low_fluid"},
    {"Capacity of the system", "capacity"},
    {"Heat rejected by the system", "heat_rejected"},
    {"Total power", "power"},
    {"Mean evaporating temperature of the low temperature circuit", "evaporating_temperature"},
    {"Mean condensing temperature of the high temperature circuit", "condensing_temperature"},
    // Pipes.
    {"Inner diameter", "inner_diameter"},
    {"Outer diameter", "outer_diameter"},
    {"Velocity", "velocity"},
    {"Pressure loss", "pressure_drop"},
    {"Size", "size"},
};
// clang-format on

// A table by its names: a result has hundreds of values.
struct Dictionary {
    std::unordered_map<std::string_view, std::string_view> keys;
    explicit Dictionary(std::span<const Word> words) {
        for (const Word& word : words) keys.emplace(word.name, word.key);
    }
};
const Dictionary circuitDictionary(circuits), sectionDictionary(sections), groupDictionary(groups),
    nameDictionary(names);

// Letters and digits of a name, small, with underscores between.
std::string spelled(std::string_view name) {
    std::string key;
    for (const char c : name) {
        if (isSmall(smallLetter(c)) || isDigit(c))
            key += smallLetter(c);
        else if (!key.empty() && key.back() != '_')
            key += '_';
    }
    while (!key.empty() && key.back() == '_') key.pop_back();
    return key;
}

struct KeyMaker {
    KeyOfResult result{{}, true};

    void add(std::string_view part) {
        if (part.empty()) return;
        if (!result.key.empty()) result.key += '.';
        result.key += part;
    }
    void addKnown(const Dictionary& words, std::string_view name) {
        if (name.empty()) return;
        if (const auto word = words.keys.find(name); word != words.keys.end()) return add(word->second);
        result.known = false;
        add(spelled(name));
    }
};

// "STAGE  2 - FLASH TANK" is the flash tank of stage 2.
std::string_view withoutStage(std::string_view section, std::string& stage) {
    constexpr std::string_view head = "STAGE ", dash = " - ";
    const auto end = section.find(dash);
    if (!section.starts_with(head) || end == std::string_view::npos) return section;
    std::string_view number = section.substr(head.size(), end - head.size());
    while (!number.empty() && number.front() == ' ') number.remove_prefix(1);
    stage = "stage" + std::string(number);
    return section.substr(end + dash.size());
}

}  // namespace

KeyOfResult resultKey(const ResultPlace& place) {
    KeyMaker maker;
    maker.addKnown(circuitDictionary, place.circuit);
    std::string stage;
    const std::string_view section = withoutStage(place.section, stage);
    maker.add(stage);
    maker.addKnown(sectionDictionary, section);
    maker.addKnown(groupDictionary, place.group);
    if (place.row > 0) maker.add(std::to_string(place.row));
    // What a circuit takes over from the system it belongs to is told apart from its own.
    if (section == "PERFORMANCE PARAMETERS" && place.name == "Capacity of the system")
        maker.add("system_capacity");
    else
        maker.addKnown(nameDictionary, place.name);
    return maker.result;
}

}  // namespace frigana::catalogue
