#include "Remarks.h"

#include <algorithm>
#include <array>

#include "Judge.h"

namespace frigana::remarks {

namespace {

// clang-format off
constexpr Kind allKinds[] = {
    {"liquid_line_left_liquid",      Weight::wrong,    "a line of liquid ends in two phases or in vapor"},
    {"vapor_line_left_vapor",        Weight::wrong,    "a line of vapor ends in two phases or in liquid"},
    {"wet_compressor_inlet",         Weight::wrong,    "the compressor draws in liquid"},
    {"wet_turbine_inlet",            Weight::wrong,    "the turbine is fed with liquid"},
    {"liquid_condenser_inlet",       Weight::wrong,    "what enters the condenser is condensed already"},
    {"evaporator_outlet_wet",        Weight::wrong,    "the evaporator of a compressor does not evaporate all"},
    {"expansion_from_vapor",         Weight::wrong,    "the expansion device takes in vapor"},
    {"negative_capacity",            Weight::wrong,    "a capacity, power or coefficient of performance is negative"},
    {"meaningless_ratio",            Weight::wrong,    "a pressure ratio that does not belong to its pressures"},
    {"balance_open",                 Weight::doubtful, "heat and power of a circuit do not add up within 0.1 %"},
    {"state_missing",                Weight::wrong,    "the equation gives no state at a place of the circuit"},
    {"figure_missing",               Weight::wrong,    "a main figure could not be computed"},
    {"negative_drop",                Weight::wrong,    "the pressure rises along the flow"},
    {"exchanger_beyond_ideal",       Weight::wrong,    "an exchanger passes more heat than any exchanger can"},
    {"temperatures_cross",           Weight::wrong,    "heat would flow from cold to warm"},
    {"receiver_below_evaporator",    Weight::wrong,    "the receiver has a lower pressure than the evaporator that it feeds"},
    {"injection_limit_wet",          Weight::wrong,    "the limit of the discharge temperature lies inside the glide"},
    {"glide_in_saturation_drop",     Weight::doubtful, "a drop of saturation temperature counts the glide of the blend too"},
    {"state_beyond_equation",        Weight::doubtful, "a state lies outside the range of the equation of its fluid"},
    {"below_triple_point",           Weight::doubtful, "evaporating below the triple point of the fluid"},
    {"drop_without_effect",          Weight::doubtful, "a drop of saturation temperature that nothing follows from"},
    {"two_liquids",                  Weight::doubtful, "the liquid of the blend falls apart into two in the model"},
    {"mixing_parameters_estimated",  Weight::doubtful, "two components of a blend have no measured mixing parameters"},
    {"viscosity_estimated",          Weight::doubtful, "pipes are sized with a viscosity that is an estimate"},
    {"transport_beyond_range",       Weight::doubtful, "viscosity or conductivity outside the range of its correlation"},
    {"diameter_not_found",           Weight::doubtful, "no diameter has the wanted drop; one of a usual velocity stands for it"},
    {"sizes_do_not_bracket",         Weight::doubtful, "the table of sizes ends before it encloses the wanted pipe"},
    {"pipe_too_slow",                Weight::doubtful, "the widest pipe offered is slower than what carries the oil"},
    {"reference_state_unknown",      Weight::note,     "the reference state is none that is known; the default is taken"},
    {"potential_unknown",            Weight::note,     "the global warming potential of the fluid, or of a part of it, is not known"},
    {"class_unknown",                Weight::note,     "the safety class of the fluid is not known"},
    {"name_in_other_case",           Weight::note,     "the file of a fluid has its name in other letters"},
    {"critical_point_estimated",     Weight::note,     "the critical point of a blend is an estimate"},
    {"drop_from_outlet",             Weight::note,     "a drop of saturation temperature counts from the outlet of its line"},
    {"transport_missing",            Weight::note,     "a viscosity or conductivity could not be computed"},
    {"transport_estimated",          Weight::note,     "viscosity, conductivity or surface tension are estimates"},
    {"discharge_hot",                Weight::note,     "a compressor discharges above 120 degrees Celsius"},
    {"pressure_ratio_high",          Weight::note,     "a compressor has a pressure ratio above 12"},
    {"below_atmosphere",             Weight::note,     "evaporating below atmospheric pressure: air leaks in"},
};
// clang-format on

}  // namespace

std::span<const Kind> kinds() {
    return allKinds;
}

std::vector<Remark> remarksOn(const RunResult& result, const Circumstances& circumstances) {
    if (!result.isDone() || result.input.request == nullptr) return {};
    Judge judge(result, circumstances);
    for (const auto topic : {judgePhases, judgeEnergies, judgeExchangers, judgeSettings, judgeFluids, judgeStates,
                             judgePipes, judgeLevels})
        topic(judge);
    std::stable_sort(judge.found.begin(), judge.found.end(),
                     [](const Remark& a, const Remark& b) { return a.weight > b.weight; });
    return std::move(judge.found);
}

bool anyWrong(std::span<const Remark> remarks) {
    return std::any_of(remarks.begin(), remarks.end(),
                       [](const Remark& remark) { return remark.weight == Weight::wrong; });
}

}  // namespace frigana::remarks
