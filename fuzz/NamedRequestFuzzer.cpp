// Damaged named requests. Whatever the file holds, it becomes a request or a list of problems; what became a request
// can be written as TOML and is read again as the same one.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "NamedRequest.h"
#include "TimeLimit.h"

namespace {

using namespace frigana::catalogue;

#ifdef FRIGANA_FUZZ_JSON
constexpr NamedFormat format = NamedFormat::json;
#else
constexpr NamedFormat format = NamedFormat::toml;
#endif

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const FluidNames& names = FluidNames::of(FRIGANA_DATA);
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const frigana::fuzz::TimeLimit limit;
    const NamedRequest named = readNamed(text, format, names);
    if (named.problems.empty() == named.runs.empty()) std::abort();
    for (const Problem& problem : named.problems)
        if (problem.text.empty() || problem.line < 0) std::abort();
    if (named.runs.size() != 1) return 0;
    const FilledRequest& filled = named.runs.front();
    const std::string written = namedText(filled, names, {UnitSystem::metric, false, true});
    const NamedRequest again = readNamed(written, NamedFormat::toml, names);
    if (!again.problems.empty() || positionalText(again.runs.front()) != positionalText(filled)) std::abort();
    return 0;
}
