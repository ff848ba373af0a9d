// What stands in a fluid file, by the rules of its format alone: header, sections in their order, and the faults that
// the set-up would pass over in silence. State: none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// A fault of a file, with its line; 0 for the file as a whole.
struct Fault {
    int line = 0;
    Text255 text{};
};
inline constexpr int mostFaults = 12;

// The first faults that were found.
struct FaultList {
    int count = 0;  // all of them, also those that are not kept
    Array1<Fault, mostFaults> kept{};

    void add(int line, const Text255& text);
    int keptCount() const { return count < mostFaults ? count : mostFaults; }
};

struct SectionFound {
    char mark = ' ';  // # may be chosen by default, @ alternative
    Text3 key{}, tag{};
    int line = 0;  // of its heading
    int body = 0;  // first line of its data
};
inline constexpr int mostSections = 60;

// A deviation that the publication itself explains. A source line of any section states it:
//   ?Known: FIGURE up to BOUND: REASON
// and further source lines, up to an empty one, continue the reason.
struct KnownDeviation {
    FixedText<40> figure{};
    double bound = 0.0;
    Text255 reason{};
};
inline constexpr int mostKnown = 8;

struct FluidFileScan {
    FixedText<60> name{};
    Text12 cas{};
    // of the header [K, kPa, mol/L, g/mol]
    double molarMass = 0.0, triplePoint = 0.0, boilingPoint = 0.0;
    double criticalTemperature = 0.0, criticalPressure = 0.0, criticalDensity = 0.0;
    double acentricFactor = 0.0;
    int sections = 0;
    Array1<SectionFound, mostSections> section{};
    int knownCount = 0;
    Array1<KnownDeviation, mostKnown> known{};
    FaultList faults{};

    // The first section of a key and tag (any tag where it is blank), at or behind a number; 0 if there is none.
    int find(std::string_view key, std::string_view tag = "", int from = 1) const;
};

// Scans a file.
//   Given     file    name in the folder of fluids of the installation that SETPATH named
//   Returned  scan    faults: a header that cannot be read, an unknown key, a section that comes twice, a line of data
//                     that would be taken for a heading, a missing END, and each needed section that is not there
void scanFluidFile(std::string_view file, FluidFileScan& scan);

}  // namespace frigana
