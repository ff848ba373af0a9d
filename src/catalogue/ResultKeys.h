// Stable dotted keys of the values of a result, from what the writer tells of them: circuit, section, group, row, name.
//
//   EVAPORATOR / Inlet / temperature           evaporator.inlet.temperature
//   PERFORMANCE PARAMETERS / COP of cooling    performance.cop_cooling
//   Low temperature circuit / CONDENSER / ...  low.condenser. ...
//   STAGE  2 - FLASH TANK / Liquid / ...       stage2.flash_tank.liquid. ...
//   Isoproperty table, row 12 / Density        table.12.density
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "Units.h"

namespace frigana::catalogue {

// Where a value stands in a result, in the words of the writer.
struct ResultPlace {
    std::string_view circuit, section, group;
    int row;
    std::string_view name, unit;
};

struct KeyOfResult {
    std::string key;
    bool known;  // false where a word of the place stands in no table, and its letters make the key
};

KeyOfResult resultKey(const ResultPlace& place);

}  // namespace frigana::catalogue
