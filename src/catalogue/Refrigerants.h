// What is known of a fluid or blend beyond its equations: designation, names, family, safety class, ozone depletion and
// global warming potentials, from refrigerants.json beside the folders of the files. That file tells the source of each
// column and what is uncertain.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace frigana::catalogue {

// Reports of the Intergovernmental Panel on Climate Change, in the order of the figures below.
inline constexpr std::array<std::string_view, 3> climateReports = {"AR4", "AR5", "AR6"};

struct Refrigerant {
    std::string name;  // of its file, without the extension
    bool blend = false;
    std::string family, designation, cas, safetyClass, note;  // empty where not known
    std::vector<std::string> aliases;
    std::optional<double> odp;
    // Global warming potential over 100 years, by report. A report may print a bound only; of a blend, the components
    // without a figure were counted as 0 and are named.
    std::array<std::optional<double>, climateReports.size()> gwp, gwpBelow;
    std::array<std::vector<std::string>, climateReports.size()> gwpLeftOut;
};

// Families of pure fluids in the order of lists.
inline constexpr std::array<std::string_view, 10> fluidFamilies = {
    "HFO", "HFC", "HCFC", "CFC", "PFC", "hydrocarbons", "natural", "siloxanes", "gases", "others"};

class Refrigerants {
  public:
    // Empty where the folder has no such file, or one that is no JSON.
    explicit Refrigerants(const std::string& dataFolder);

    // By the name of a file with or without extension, in any case; null where it is not listed.
    const Refrigerant* find(std::string_view file) const;
    const std::vector<Refrigerant>& all() const { return all_; }

    // Those of a data folder, kept for the next one who asks.
    static const Refrigerants& of(const std::string& dataFolder);

  private:
    std::vector<Refrigerant> all_;
    std::unordered_map<std::string, std::size_t> byName_;  // in capitals
};

// Figure of a report as lists show it: four digits, "<1" for a bound, "-" where there is none.
std::string shownPotential(const Refrigerant& refrigerant, std::size_t report);

// Properties of a fluid that rest on an estimate, not on a published correlation ("viscosity", "conductivity", "surface
// tension"), as its file marks them; of a blend, those of any component.
std::vector<std::string> estimatedProperties(const std::string& dataFolder, std::string_view file,
                                             const std::vector<std::string>& components = {});

}  // namespace frigana::catalogue
