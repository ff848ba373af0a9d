// Global warming potential and safety class of the fluid of a request: by the report that a person has chosen, and
// beside it the figure of the library's own table, which result files show.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Refrigerants.h"
#include "RunResult.h"

namespace frigana::catalogue {

inline constexpr std::size_t newestReport = climateReports.size() - 1;
// Place of a report in climateReports by its name, in any case; nothing where there is none.
std::optional<std::size_t> climateReportOf(std::string_view name);

struct Climate {
    std::string name;                    // of the fluid, as people call it
    std::string safetyClass;             // empty where not known
    std::optional<double> gwp;           // of the report, over 100 years
    bool below = false;                  // the report gives it as a bound
    std::vector<std::string> leftOut;    // components of a blend that the report has no figure of, counted as 0
    std::optional<double> ofResultFile;  // of the library's own table
};

// Of a fluid, without a figure of a result file. A blend listed by its components has the sum of theirs by mass.
Climate climateOf(const Fluid& fluid, const std::string& dataFolder, std::size_t report);
// Of a circuit (0 or 1) of a result.
Climate climateOf(const RunResult& result, std::size_t circuit, const std::string& dataFolder, std::size_t report);

// "1530", "<1", or "-" where the report has none.
std::string potentialText(const Climate& climate);

}  // namespace frigana::catalogue
