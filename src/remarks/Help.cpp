// What usually helps where a request was refused.
#include "Remarks.h"

namespace frigana::remarks {

namespace {

// Codes T SS C NN of refusals that come from the course of a calculation, by their last digits; sub 0 stands for every
// cycle.
struct Help {
    int code;
    std::string_view text;
};
constexpr Help helps[] = {
    {201300,
     "The compressor would discharge inside the two-phase region. Either the suction gas has too little superheat, or "
     "the "
     "evaporating pressure has fallen out of the range of the fluid: below its triple point, or because the drops of "
     "evaporator and suction line take more than there is. Give less drop, evaporate warmer, or give more superheat."},
    {202239, "The exchanger has a drop on its liquid side but exchanges nothing. Ask for a fall of the liquid."},
    {202240, "The vapor side of the exchanger would get colder: it has a drop but takes up too little heat."},
    {204201, "The lower circuit has no heat left to pass on: its discharge line cools below the condenser's outlet."},
    {204202, "Let the upper circuit evaporate colder than the lower one condenses: the two means must differ."},
    {209234, "One injection cannot hold the discharge temperature: raise the limit, or evaporate warmer."},
    {100123, "The request names two fluids where one is meant."},
};

}  // namespace

std::string helpFor(const RunResult& refused) {
    for (const Help& help : helps)
        if (help.code == refused.report.IERR) return std::string(help.text);
    return {};
}

}  // namespace frigana::remarks
