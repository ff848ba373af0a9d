// Looks at a finished result and says what an engineer should know: results that are right by the letter and useless in
// a plant, states beyond the equation, settings that do not mean what they seem to mean.
//
// A remark has a stable name, a weight (`wrong`: the figures describe nothing that can be built; `doubtful`: look
// before you use them; `note`: worth knowing), the place in the circuit, what was seen, and what usually helps. The
// table of all remarks is in Remarks.cpp; those of one topic are judged in one source.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Climate.h"
#include "RunResult.h"

namespace frigana::remarks {

using catalogue::Remark;
using catalogue::RunResult;
using catalogue::UnitSystem;
using catalogue::Weight;

// What a remark of a name is about; for documentation.
struct Kind {
    std::string_view name;
    Weight weight;
    std::string_view about;
};
std::span<const Kind> kinds();

struct Circumstances {
    std::string dataFolder;                 // of the installation, for the limits of the fluids
    UnitSystem units = UnitSystem::metric;  // of the numbers in the texts
    std::size_t climateReport = catalogue::newestReport;
};

// The remarks on a result that is done, the weightiest first; empty for any other.
std::vector<Remark> remarksOn(const RunResult& result, const Circumstances& circumstances);

// What usually helps where a request was refused; empty where code and text say all.
std::string helpFor(const RunResult& refused, const Circumstances& circumstances);

// Whether one of them says that the figures are of no use.
bool anyWrong(std::span<const Remark> remarks);

}  // namespace frigana::remarks
