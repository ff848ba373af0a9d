// Requests in the engineer's own words: TOML or JSON with names and units, read into the records of a request, and
// written from them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "FilledRequest.h"
#include "Names.h"
#include "RequestTree.h"

namespace frigana::catalogue {

enum class NamedFormat { toml, json };

struct NamedRequest {
    const Request* request = nullptr;
    UnitSystem units = UnitSystem::SI;  // as the file says; SI where it says nothing
    bool unitsGiven = false;
    std::vector<FilledRequest> runs;  // one, or one for each of a list of points
    std::vector<Problem> problems;    // by line; nothing may be run where there is one
};

// Reads a named request.
//   Given     text    the file
//             names   fluids of the installation
//             blends  folder of the blends that a person has stored, where a name may be that of one of them
//   Returned  (value) the request, or all that is wrong with it
NamedRequest readNamed(std::string_view text, NamedFormat format, const FluidNames& names,
                       const std::string& blends = {});

// A problem as a person reads it: "chiller.toml:7: ...".
std::string message(const std::string& file, const Problem& problem);

// How a named file is written.
struct WritingStyle {
    UnitSystem units = UnitSystem::SI;
    bool explained = false;  // comments with labels, options and limits
    bool zeros = true;       // natural zeros stand in the file too
};

// The TOML of a request: readNamed() gives the same request again, number for number.
std::string namedText(const FilledRequest& filled, const FluidNames& names, const WritingStyle& style);

// A request with the typical values of the catalogue.
//   Given     fluid  in place of the typical ones, where wanted
FilledRequest typicalRequest(const Request& request, const std::optional<Fluid>& fluid = std::nullopt);

// The keys of a file that stand beside those of the parameters, with what they mean.
struct GeneralKey {
    std::string_view key, meaning, allowed;
};
std::span<const GeneralKey> generalKeys();

// Allowed values of an option in a system of units: "-173.15 °C to 326.85 °C"; empty where nothing limits it.
std::string limitsText(const Limits& limits, Quantity quantity, const Unit& unit);

}  // namespace frigana::catalogue
