// Names of fluids and blends as people write them: R134a, r-134a, HFC-134a, R134A.FLD, propane, R290, ammonia, NH3.
//
// A name is one of the files of the installation, in any case and with or without extension, blanks and hyphens, or one
// of the designations and other names of refrigerants.json beside the folders of the files.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace frigana::catalogue {

struct FoundFluid {
    std::string file;  // as a request names it: "R134A.FLD"; empty where the name is not known
    bool blend = false;
    std::string problem;  // what to tell, with the nearest names
};

class FluidNames {
  public:
    // The names of an installation; read when they are first needed, and again when its folders have changed.
    explicit FluidNames(std::string dataFolder);
    ~FluidNames();
    FluidNames(const FluidNames&) = delete;
    FluidNames& operator=(const FluidNames&) = delete;

    FoundFluid find(std::string_view name) const;

    // Names near to one that is not known, the nearest first.
    std::vector<std::string> near(std::string_view name) const;

    // The file that a name of a file means in any letters: "R134A.FLD" for "r134a.fld"; empty where there is none.
    std::string fileAs(std::string_view name) const;

    // How people call a file: "R134a" for R134A.FLD. Its stem where it has no designation.
    std::string shownName(std::string_view file) const;

    // The shortest name that find() leads back to exactly this file name.
    std::string nameFor(std::string_view file) const;

    // The names of a data folder, kept for the next one who asks.
    static const FluidNames& of(const std::string& dataFolder);

  private:
    struct Tables;
    std::unique_ptr<Tables> tables_;
};

// A name without what people write differently: "HFC-134a", "r 134A" and "R134a" become "R134A".
std::string foldedName(std::string_view name);

}  // namespace frigana::catalogue
