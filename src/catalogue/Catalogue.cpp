#include "Catalogue.h"

#include <algorithm>

#include "40_RangeChecks.h"
#include "CycleParameters.h"

namespace frigana::catalogue {

namespace {

// clang-format off

// ---- points, numbered as in the drawings -----------------------------------------------------------------------------

constexpr Point basicPoints[] = {
    {1, "condenser.outlet", "condenser outlet"},
    {2, "expansion_device.inlet", "expansion device inlet"},
    {3, "evaporator.inlet", "evaporator inlet"},
    {4, "evaporator.outlet", "evaporator outlet"},
    {5, "compressor.inlet", "compressor inlet"},
    {6, "compressor.outlet", "compressor outlet"},
    {7, "condenser.inlet", "condenser inlet"},
};
constexpr Point exchangerPoints[] = {
    {1, "condenser.outlet", "condenser outlet"},
    {2, "heat_exchanger.liquid_inlet", "liquid inlet of the exchanger"},
    {3, "heat_exchanger.liquid_outlet", "liquid outlet of the exchanger"},
    {4, "expansion_device.inlet", "expansion device inlet"},
    {5, "evaporator.inlet", "evaporator inlet"},
    {6, "evaporator.outlet", "evaporator outlet"},
    {7, "heat_exchanger.vapor_inlet", "vapor inlet of the exchanger"},
    {8, "heat_exchanger.vapor_outlet", "vapor outlet of the exchanger"},
    {9, "compressor.inlet", "compressor inlet"},
    {10, "compressor.outlet", "compressor outlet"},
    {11, "condenser.inlet", "condenser inlet"},
};
constexpr Point subcooledPoints[] = {
    {1, "condenser.outlet", "condenser outlet"},
    {2, "subcooler.inlet", "liquid inlet of the subcooler"},
    {3, "subcooler.outlet", "liquid outlet of the subcooler"},
    {4, "expansion_device.inlet", "expansion device inlet"},
    {5, "evaporator.inlet", "evaporator inlet"},
    {6, "evaporator.outlet", "evaporator outlet"},
    {7, "compressor.inlet", "compressor inlet"},
    {8, "compressor.outlet", "compressor outlet"},
    {9, "condenser.inlet", "condenser inlet"},
};
constexpr Point lineSizingPoints[] = {
    {1, "compressor.inlet", "compressor inlet"},
    {2, "compressor.outlet", "compressor outlet"},
    {3, "condenser.inlet", "condenser inlet"},
    {4, "condenser.outlet", "condenser outlet"},
    {5, "expansion_device.inlet", "expansion device inlet"},
    {6, "evaporator.inlet", "evaporator inlet"},
    {7, "evaporator.outlet", "evaporator outlet"},
};
constexpr Point rankinePoints[] = {
    {1, "boiler.outlet", "boiler outlet"},
    {2, "turbine.inlet", "turbine inlet"},
    {3, "turbine.outlet", "turbine outlet"},
    {4, "condenser.inlet", "condenser inlet"},
    {5, "condenser.outlet", "condenser outlet"},
    {6, "pump.outlet", "pump outlet"},
    {7, "boiler.inlet", "boiler inlet"},
};
constexpr Point transcriticalPoints[] = {
    {1, "gas_cooler.outlet", "gas cooler outlet"},
    {2, "heat_exchanger.hot_inlet", "hot inlet of the exchanger"},
    {3, "heat_exchanger.hot_outlet", "hot outlet of the exchanger"},
    {4, "expansion_device.inlet", "expansion device inlet"},
    {5, "evaporator.inlet", "evaporator inlet"},
    {6, "evaporator.outlet", "evaporator outlet"},
    {7, "heat_exchanger.vapor_inlet", "vapor inlet of the exchanger"},
    {8, "heat_exchanger.vapor_outlet", "vapor outlet of the exchanger"},
    {9, "compressor.inlet", "compressor inlet"},
    {10, "compressor.outlet", "compressor outlet"},
    {11, "gas_cooler.inlet", "gas cooler inlet"},
};
constexpr Point injectionPoints[] = {
    {1, "condenser.outlet", "condenser outlet"},
    {2, "expansion_device.inlet", "expansion device inlet"},
    {3, "evaporator.inlet", "evaporator inlet"},
    {4, "evaporator.outlet", "evaporator outlet"},
    {5, "suction_line.outlet", "suction line outlet"},
    {6, "compressor.inlet", "compressor inlet"},
    {7, "compressor.outlet", "compressor outlet"},
    {8, "condenser.inlet", "condenser inlet"},
    {9, "injection_line.outlet", "injection line outlet"},
    {10, "injection_valve.outlet", "injection valve outlet"},
};
constexpr Point twoStagePoints[] = {
    {1, "condenser.outlet", "condenser outlet"},
    {2, "heat_exchanger.liquid_outlet", "liquid outlet of the exchanger"},
    {3, "expansion_device.inlet", "expansion device inlet"},
    {4, "evaporator.inlet", "evaporator inlet"},
    {5, "evaporator.outlet", "evaporator outlet"},
    {6, "low_compressor.inlet", "low compressor inlet"},
    {7, "low_compressor.outlet", "low compressor outlet"},
    {8, "injection_valve.outlet", "injection valve outlet"},
    {9, "heat_exchanger.injection_outlet", "injected vapor behind the exchanger"},
    {10, "injection_line.outlet", "injection line outlet", 18},
    {11, "high_compressor.inlet", "high compressor inlet"},
    {12, "high_compressor.outlet", "high compressor outlet"},
    {13, "condenser.inlet", "condenser inlet"},
};
constexpr Point multiStagePoints[] = {
    {1, "condenser.outlet", "condenser outlet"},
    {2, "evaporator.inlet", "evaporator inlet"},
    {3, "evaporator.outlet", "evaporator outlet"},
    {4, "suction_line.outlet", "suction line outlet"},
    {5, "liquid_line.outlet", "liquid line outlet"},
    {6, "condenser.inlet", "condenser inlet"},
    {12, "last_compressor.outlet", "outlet of the last compressor"},
};
constexpr Point stagePoints[] = {
    {8, "expansion_valve.outlet", "valve outlet"},
    {9, "flash_tank.liquid", "liquid of the tank"},
    {10, "flash_tank.vapor", "vapor of the tank"},
    {11, "injection_line.outlet", "injection line outlet"},
    {12, "compressor.outlet", "compressor outlet"},
};
constexpr Point loopPoints[] = {
    {1, "evaporator.outlet", "evaporator outlet"},
    {2, "low_pressure_vapor_line.outlet", "receiver inlet"},
    {3, "condenser.inlet", "saturated vapor of the receiver"},
    {4, "condenser.outlet", "condenser outlet"},
    {5, "pump.inlet", "saturated liquid of the receiver"},
    {6, "pump.outlet", "pump outlet"},
    {7, "evaporator.inlet", "evaporator inlet"},
};
constexpr Point boosterPoints[] = {
    {1, "gas_cooler.outlet", "gas cooler outlet"},
    {2, "heat_exchanger.hot_inlet", "hot inlet of the exchanger"},
    {3, "heat_exchanger.hot_outlet", "hot outlet of the exchanger"},
    {4, "high_pressure_valve.inlet", "inlet of the high pressure control valve"},
    {5, "high_pressure_valve.outlet", "receiver inlet"},
    {6, "bypass_valve.inlet", "vapor of the receiver"},
    {7, "mt_expansion_device.inlet", "liquid of the receiver"},
    {8, "mt_evaporator.inlet", "MT evaporator inlet"},
    {9, "mt_evaporator.outlet", "MT evaporator outlet"},
    {10, "lt_evaporator.inlet", "LT evaporator inlet"},
    {11, "lt_evaporator.outlet", "LT evaporator outlet"},
    {12, "low_stage_compressor.outlet", "low stage outlet"},
    {13, "mixed_vapors", "MT vapor and low stage discharge mixed", 17},
    {14, "bypass_valve.outlet", "bypass valve outlet"},
    {15, "suction_line_before_exchanger.inlet", "all vapors mixed"},
    {16, "heat_exchanger.vapor_inlet", "vapor inlet of the exchanger"},
    {17, "heat_exchanger.vapor_outlet", "vapor outlet of the exchanger"},
    {18, "high_stage_compressor.inlet", "high stage inlet"},
    {19, "high_stage_compressor.outlet", "high stage outlet"},
    {20, "gas_cooler.inlet", "gas cooler inlet"},
};

// ---- parameters of property requests ---------------------------------------------------------------------------------

constexpr PropertyName properties[] = {
    {1, "temperature", Q::temperature, Q::temperatureDifference},
    {2, "pressure", Q::pressure, Q::pressureDifference},
    {3, "density", Q::density, Q::density},
};
constexpr Option saturationPropertyOptions[] = {
    {1, "property", "temperature", Q::none, Form::word},
    {2, "property", "pressure", Q::none, Form::word}};
constexpr Option runningPropertyOptions[] = {
    {1, "property", "temperature", Q::none, Form::word},
    {2, "property", "pressure", Q::none, Form::word},
    {3, "property", "density", Q::none, Form::word}};
constexpr Option constantOptions[] = {
    {1, "constant.temperature", "constant temperature", Q::temperature},
    {2, "constant.pressure", "constant pressure", Q::pressure},
    {3, "constant.density", "constant density", Q::density}};
// The quantity is that of the property.
constexpr Option fromOptions[] = {{1, "from", "first value of the property"}};
constexpr Option toOptions[] = {{1, "to", "last value of the property"}};
constexpr Option stepOptions[] = {
    {1, "step", "step of the property"},
    {2, "count", "number of rows in place of a step, 3 to 2000", Q::count},
    {3, "suggested_limits", "the limits that suit the fluid, in place of a table", Q::none, Form::yes}};
constexpr Option stateOptions[] = {
    {1, "temperature", "temperature", Q::temperature},
    {2, "pressure", "pressure", Q::pressure},
    {3, "density", "density", Q::density}};
constexpr Option sideOptions[] = {
    {1, "bubble.temperature", "bubble point at a temperature", Q::temperature},
    {2, "dew.temperature", "dew point at a temperature", Q::temperature},
    {3, "bubble.pressure", "bubble point at a pressure", Q::pressure},
    {4, "dew.pressure", "dew point at a pressure", Q::pressure}};

constexpr Parameter saturationTableParameters[] = {
    {runningProperty, "", "property that runs", saturationPropertyOptions, {1, 0}},
    {tableFrom, "", "beginning of the table", fromOptions, {1, 240}},
    {tableTo, "", "end of the table", toOptions, {1, 320}},
    {tableStep, "", "step of the table", stepOptions, {1, 5}},
};
constexpr Parameter isopropertyParameters[] = {
    {constantProperty, "", "property that is constant", constantOptions, {2, 1000}},
    {runningProperty, "", "property that runs", runningPropertyOptions, {1, 0}},
    {tableFrom, "", "beginning of the table", fromOptions, {1, 280}},
    {tableTo, "", "end of the table", toOptions, {1, 400}},
    {tableStep, "", "step of the table", stepOptions, {1, 10}},
};
constexpr Parameter stateParameters[] = {
    {firstProperty, "", "first property", stateOptions, {1, 300}},
    {secondProperty, "", "second property", stateOptions, {2, 1000}},
};
constexpr Parameter equilibriumParameters[] = {
    {saturationSide, "", "the saturated phase", sideOptions, {3, 500}},
};
constexpr Parameter saturationPointParameters[] = {
    {saturationSide, "", "the saturation point", sideOptions, {1, 280}},
};

// ---- circuits --------------------------------------------------------------------------------------------------------

constexpr std::string_view high = "High temperature circuit", medium = "Medium temperature circuit",
                           low = "Low temperature circuit", loop = "Pumped loop";

// key, name in the result, fluid and title of a template, parameters, their number in the block, points
constexpr Circuit fluidOnly[] = {{"", "", "R1234YF.FLD", "", {}, 0, {}}};
constexpr Circuit saturationTable[] = {{"", "", "AMMONIA.FLD", "", saturationTableParameters, 0, {}}};
constexpr Circuit isopropertyTable[] = {{"", "", "PROPANE.FLD", "", isopropertyParameters, 0, {}}};
constexpr Circuit statePoint[] = {{"", "", "R134A.FLD", "", stateParameters, 0, {}}};
constexpr Circuit equilibriumPhases[] = {{"", "", "R407C.MIX", "", equilibriumParameters, 0, {}}};
constexpr Circuit saturationPoint[] = {{"", "", "R410A.MIX", "", saturationPointParameters, 0, {}}};
constexpr Circuit basic[] = {{"", "", "R134A.FLD", "Small chiller", basicParameters, 15, basicPoints}};
constexpr Circuit exchanger[] = {{"", "", "R134A.FLD", "Cold store", exchangerParameters, 22, exchangerPoints}};
constexpr Circuit combined[] = {
    {"medium", medium, "R134A.FLD", "Supermarket with mechanical subcooling", mediumParameters, 15, basicPoints},
    {"low", low, "R404A.MIX", "Frozen food", subcooledParameters, 19, subcooledPoints}};
constexpr Circuit cascade[] = {
    {"high", high, "R134A.FLD", "Cold store, R134a above CO2", cascadeHighParameters, 15, basicPoints},
    {"low", low, "CO2.FLD", "Cold store at -35 °C", cascadeLowParameters, 15, basicPoints}};
constexpr Circuit lineSizing[] = {{"", "", "R134A.FLD", "Lines of a small chiller", lineSizingParameters, 30, lineSizingPoints}};
constexpr Circuit rankine[] = {{"", "", "R245FA.FLD", "Power from waste heat", rankineParameters, 20, rankinePoints}};
constexpr Circuit transcritical[] = {{"", "", "CO2.FLD", "Heat pump", transcriticalParameters, 22, transcriticalPoints}};
constexpr Circuit liquidInjection[] = {{"", "", "R22.FLD", "Freezer", injectionParameters, 18, injectionPoints}};
constexpr Circuit twoStage[] = {{"", "", "R410A.MIX", "Freezer with vapor injection", twoStageParameters, 25, twoStagePoints}};
constexpr Circuit multiStage[] = {{"", "", "R134A.FLD", "Freezer with flash tanks", multiStageParameters, 16, multiStagePoints}};
constexpr Circuit minimal[] = {{"", "", "PROPANE.FLD", "Ideal water chiller", minimalParameters, 7, basicPoints}};
constexpr Circuit pumped[] = {
    {"high", high, "AMMONIA.FLD", "Distribution centre", pumpedHighParameters, 15, basicPoints},
    {"loop", loop, "CO2.FLD", "Overfed air coolers", loopParameters, 10, loopPoints}};
constexpr Circuit booster[] = {{"", "", "CO2.FLD", "Supermarket", boosterParameters, 29, boosterPoints}};

// ---- what a report leads with ----------------------------------------------------------------------------------------

constexpr std::string_view basicLeading[] = {
    "performance.evaporator_capacity", "performance.condenser_capacity", "performance.compressor_power",
    "performance.cop_cooling", "performance.cop_heating", "performance.mass_flow", "performance.swept_volume",
    "compressor.outlet.temperature", "compressor.pressure_ratio", "performance.evaporating_temperature",
    "performance.condensing_temperature"};
constexpr std::string_view exchangerLeading[] = {
    "performance.evaporator_capacity", "performance.condenser_capacity", "performance.compressor_power",
    "performance.cop_cooling", "performance.cop_heating", "performance.mass_flow", "performance.swept_volume",
    "compressor.outlet.temperature", "compressor.pressure_ratio", "performance.effectiveness", "heat_exchanger.heat",
    "performance.evaporating_temperature", "performance.condensing_temperature"};
constexpr std::string_view combinedLeading[] = {
    "medium.performance.system_capacity", "medium.performance.system_cop_cooling", "medium.performance.net_capacity",
    "medium.performance.net_cop_cooling", "medium.performance.compressor_power", "low.performance.evaporator_capacity",
    "low.performance.compressor_power", "low.performance.cop_cooling", "low.subcooler.heat",
    "medium.compressor.outlet.temperature", "low.compressor.outlet.temperature", "medium.compressor.pressure_ratio",
    "low.compressor.pressure_ratio"};
constexpr std::string_view cascadeLeading[] = {
    "system.capacity", "system.heat_rejected", "system.power", "system.cop_cooling", "system.cop_heating",
    "high.compressor.outlet.temperature", "low.compressor.outlet.temperature", "high.compressor.pressure_ratio",
    "low.compressor.pressure_ratio", "system.evaporating_temperature", "system.condensing_temperature"};
constexpr std::string_view pumpedLeading[] = {
    "system.capacity", "system.heat_rejected", "system.power", "system.cop_cooling", "system.cop_heating",
    "loop.pump.power", "high.compressor.outlet.temperature", "high.compressor.pressure_ratio",
    "system.evaporating_temperature", "system.condensing_temperature"};
constexpr std::string_view rankineLeading[] = {
    "performance.turbine_power", "performance.pump_power", "performance.boiler_heat", "performance.condenser_heat",
    "performance.cycle_efficiency", "performance.mass_flow", "turbine.inlet.temperature", "turbine.expansion_ratio",
    "performance.boiler_temperature", "performance.condensing_temperature"};
constexpr std::string_view transcriticalLeading[] = {
    "performance.evaporator_capacity", "performance.gas_cooler_capacity", "performance.compressor_power",
    "performance.cop_cooling", "performance.cop_heating", "performance.mass_flow", "performance.swept_volume",
    "compressor.outlet.temperature", "compressor.pressure_ratio", "performance.effectiveness",
    "performance.evaporating_temperature"};
constexpr std::string_view injectionLeading[] = {
    "performance.evaporator_capacity", "performance.condenser_capacity", "performance.compressor_power",
    "performance.cop_cooling", "performance.cop_heating", "performance.injected_fraction",
    "performance.compressor_mass_flow", "performance.swept_volume", "compressor.outlet.temperature",
    "compressor.pressure_ratio", "performance.evaporating_temperature", "performance.condensing_temperature"};
constexpr std::string_view twoStageLeading[] = {
    "performance.evaporator_capacity", "performance.condenser_capacity", "performance.low_compressor.power",
    "performance.high_compressor.power", "performance.cop_cooling", "performance.cop_heating",
    "performance.injected_fraction", "high_compressor.outlet.temperature", "low_compressor.pressure_ratio",
    "high_compressor.pressure_ratio", "performance.evaporating_temperature", "performance.condensing_temperature"};
constexpr std::string_view multiStageLeading[] = {
    "performance.evaporator_capacity", "performance.condenser_capacity", "performance.last_compressor.power",
    "performance.cop_cooling", "performance.cop_heating", "last_compressor.outlet.temperature",
    "last_compressor.pressure_ratio", "performance.evaporating_temperature", "performance.condensing_temperature"};
constexpr std::string_view boosterLeading[] = {
    "performance.both_evaporators_capacity", "performance.mt_evaporator_capacity", "performance.lt_evaporator_capacity",
    "performance.gas_cooler_capacity", "performance.high_stage.power", "performance.low_stage.power",
    "performance.cop_cooling", "performance.cop_heating", "high_stage_compressor.outlet.temperature",
    "high_stage_compressor.pressure_ratio", "performance.effectiveness", "performance.mt_evaporating_temperature",
    "performance.lt_evaporating_temperature"};

// ---- requests --------------------------------------------------------------------------------------------------------

constexpr int multiStageCountIndex = 16, mostMultiStages = 7;
constexpr Stages stages{multiStageCountIndex, mostMultiStages, stageParameters, stagePoints};

constexpr Request all[] = {
    {"fluid-information", "Fluid information", "constants, limits, global warming potential and safety class of a fluid", 1, 1, fluidOnly},
    {"saturation-table", "Saturation table", "saturated liquid and vapor over temperature or pressure", 1, 2, saturationTable},
    {"isoproperty-table", "Isoproperty table", "states along a line of constant temperature, pressure or density", 1, 3, isopropertyTable},
    {"state-point", "State point", "all properties from two of temperature, pressure and density", 1, 4, statePoint},
    {"equilibrium-phases", "Phases in equilibrium", "a saturated phase and the other one that stands beside it", 1, 5, equilibriumPhases},
    {"saturation-point", "Saturation point", "bubble and dew point of one composition", 1, 6, saturationPoint},
    {"store-blend", "Store a blend", "a mixture file of the installation for later requests", 1, 7, fluidOnly},
    {"basic", "Basic cycle", "vapor compression with line losses and pressure drops", 2, 1, basic, {}, basicLeading},
    {"heat-exchanger", "Cycle with heat exchanger", "vapor compression with an exchanger between suction and liquid line", 2, 2, exchanger, {}, exchangerLeading},
    {"combined", "Combined cycle", "two circuits, the one subcools the liquid of the other", 2, 3, combined, {}, combinedLeading},
    {"cascade", "Cascade cycle", "two circuits, the one condenses in the evaporator of the other", 2, 4, cascade, {}, cascadeLeading},
    {"line-sizing", "Line sizing", "pipes for suction, discharge and liquid line of a basic cycle", 2, 5, lineSizing, {}, basicLeading},
    {"rankine", "Rankine cycle", "power from heat with boiler, turbine, condenser and pump", 2, 6, rankine, {}, rankineLeading},
    {"transcritical", "Transcritical cycle", "gas cooler above the critical pressure, with an exchanger", 2, 7, transcritical, {}, transcriticalLeading},
    {"liquid-injection", "Cycle with liquid injection", "injected liquid holds the discharge temperature", 2, 9, liquidInjection, {}, injectionLeading},
    {"two-stage", "Two-stage cycle with heat exchanger", "vapor is injected between two compressors", 2, 10, twoStage, {}, twoStageLeading},
    {"multi-stage", "Multi-stage cycle with flash tanks", "two to seven compressors with a tank between each two of them", 2, 11, multiStage, stages, multiStageLeading},
    {"minimal", "Minimal basic cycle", "the basic cycle from seven parameters", 2, 12, minimal, {}, basicLeading},
    {"pumped-co2", "Pumped CO2 system", "a pumped two-phase loop below a basic cycle", 2, 13, pumped, {}, pumpedLeading},
    {"booster", "Transcritical booster", "two evaporators, a receiver and two stages", 2, 14, booster, {}, boosterLeading},
};
// clang-format on

std::span<const requestchecks::CheckRow> rowsOf(const Request& request, int circuit, bool stage) {
    for (const RequestCheck& check : requestChecks())
        if (check.reqsub == request.sub) return stage ? check.stage : circuit == 1 ? check.second : check.first;
    return {};
}

}  // namespace

std::span<const Request> requests() {
    return all;
}

const Request* findRequest(std::string_view name) {
    for (const Request& request : all)
        if (request.name == name) return &request;
    return nullptr;
}

const Request* findRequest(int type, int sub) {
    for (const Request& request : all)
        if (request.type == type && request.sub == sub) return &request;
    return nullptr;
}

std::span<const PropertyName> propertyNames() {
    return properties;
}

const PropertyName& propertyName(int code) {
    for (const PropertyName& property : properties)
        if (property.code == code) return property;
    return properties[0];
}

std::string prefixOf(const Circuit& circuit) {
    std::string prefix(circuit.key);
    if (!prefix.empty()) prefix += '.';
    return prefix;
}

std::string keyOf(const Parameter& parameter, const Option& option) {
    std::string key(parameter.place);
    if (!key.empty()) key += '.';
    return key += option.key;
}

std::string keyOf(const Circuit& circuit, int stage, const Parameter& parameter, const Option& option) {
    std::string key;
    // What lies between two circuits belongs to neither.
    if (parameter.place != "intermediate") key = prefixOf(circuit);
    if (stage > 0) key += "stage" + std::to_string(stage) + '.';
    return key += keyOf(parameter, option);
}

const Option& zeroOption(const Parameter& parameter) {
    return *std::find_if(parameter.options.begin(), parameter.options.end(), [](const Option& option) {
        return option.quantity != Quantity::temperature && option.quantity != Quantity::pressure;
    });
}

std::optional<Limits> limitsOf(const Request& request, int circuit, bool stage, const Parameter& parameter,
                               const Option& option) {
    if (request.type != 2) return std::nullopt;
    for (const requestchecks::CheckRow& row : rowsOf(request, circuit, stage)) {
        if (row.index != parameter.index) continue;
        if (option.form == Form::count) {
            const bool ofStages = request.stages.countIndex == parameter.index && !stage;
            return Limits{static_cast<double>(row.options.first),
                          static_cast<double>(ofStages ? request.stages.most : row.options.last)};
        }
        if (option.form != Form::quantity || option.number > requestchecks::mostOptions) return std::nullopt;
        const requestchecks::Limits& limits = row.limits.byOption[option.number - 1];
        if (limits.kind == requestchecks::Limits::none) return std::nullopt;
        return Limits{limits.lower, limits.upper, limits.kind == requestchecks::Limits::open};
    }
    return std::nullopt;
}

}  // namespace frigana::catalogue
