// A request as its records hold it: what a named file, a positional file and a form all become. From here it goes to
// the entry as the positional text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Catalogue.h"

namespace frigana::catalogue {

struct Fluid {
    int kind = 1;      // 1 pure fluid, 2 predefined blend, 3 blend of the components listed
    std::string file;  // of kinds 1 and 2
    struct Component {
        std::string file;
        double fraction;
    };
    std::vector<Component> components;  // of kind 3
    bool byMass = true;
    std::string blendName;  // of kind 3
    int referenceOf = 2;    // 1 of the pure fluids, 2 of the composition
    std::string referenceState = "DEF";
};

struct Setting {
    int option = 1;      // TDAT(k)
    double value = 0.0;  // VDAT(k)
};

// One record of a cycle; of a property request the fluid alone.
struct Block {
    std::string title;
    Fluid fluid;
    std::vector<Setting> settings;  // parameter k at k - 1
};

// The fields of PROPREQ.
struct PropertyQuestion {
    int running = 0;   // SATVAR, ISOSWEEP
    int constant = 0;  // ISOVAR
    double constantValue = 0.0;
    double from = 0.0, to = 0.0, step = 0.0;  // a step of 0 asks for suggested limits
    int first = 0, second = 0;                // codes of the properties of a state point
    double firstValue = 0.0, secondValue = 0.0;
    int side = 0;
    double sideValue = 0.0;
};

struct FilledRequest {
    const Request* request = nullptr;
    std::vector<Block> blocks;  // one for each circuit
    PropertyQuestion question;

    // The number of settings that the block of a circuit counts, stages and picked pipes included.
    int countOf(int circuit) const;
    // The number of the compressors of a multi-stage cycle, 0 for other requests.
    int stages() const;
    // Whether the request is the second run of line sizing, which needs the result of the first.
    bool isSecondRun() const;
    // The same request as a first run.
    FilledRequest firstRun() const;
    // Whether a cycle is asked for with a blend listed by its components, which a positional request cannot name.
    bool hasListedBlend() const;
};

// Largest number of columns of a title.
inline constexpr std::size_t titleColumns = 80;

// The text of the positional request.
std::string positionalText(const FilledRequest& filled);

// Reads a positional request.
//   Given     path      file with the extension .fi1
//   Returned  filled    the request
//             (value)  why it cannot be read; empty where it could
std::string readPositional(const std::string& path, FilledRequest& filled);

}  // namespace frigana::catalogue
