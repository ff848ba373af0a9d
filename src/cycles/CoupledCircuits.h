// What systems of two circuits are made of: each circuit is solved as a whole into a scratch file, the figures of the
// system are taken from the lines of these files, and one result is composed of both.
#pragma once

#include <string_view>

#include "12_MyVariables.h"
#include "ResultWriter.h"

namespace frigana {

// Lines of a basic cycle's result that systems read or change.
struct BasicCycleLines {
    static constexpr int fluid = 4;
    static constexpr int volumetricCooling = 149;
    static constexpr int evaporator = 151;  // capacities
    static constexpr int condenser = 152;
    static constexpr int power = 153;
    static constexpr int sweptVolume = 156;
    static constexpr int coolingCOP = 157;
    static constexpr int specificHeatRejection = 165;
    static constexpr int condensingT = 166;  // means
    static constexpr int evaporatingT = 167;
    static constexpr int graphDewT = 235;  // condenser's ends in the temperature-entropy diagram
    static constexpr int graphBubbleT = 237;
    static constexpr int all = 283;
};

// Number on a line of a finished result.
double resultValue(const Text255& path, int line);

// Two blank lines and all lines of a circuit's result behind what has been written.
void copySecondCircuit(ResultWriter& writer, std::string_view name, const Text255& path, int lines);

// A system whose low circuit's condenser is the evaporator of its high circuit.
struct CoupledSystem {
    void (*solveLow)(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);
    std::string_view lowName;
    int lines;                         // of the low circuit's result
    int evaporator, condenser, power;  // its lines: capacities and power
    int graphDewT, graphBubbleT;       // both ends of its condensation in the diagram
    int evaporatingT;                  // its mean evaporating temperature
    int setting;                       // parameter of the low circuit that sets the high one's evaporation:
                                       // 1 approach [K], 2 evaporating temperature [K]
};

// Solves the low circuit, then the high one with the heat that the low one rejects, and composes the result: the high
// circuit, the low circuit, and "OVERALL PARAMETERS".
//   Given     CYCLEIN1  high circuit, parameters of the basic cycle; 1 and 6 are written here
//             CYCLEIN2  low circuit
//   Codes     204201 no heat to be passed on, 204202 no temperature difference to pass it on; those of both solvers
//   Notes     The scratch files "temporal1.txt" and "temporal2.txt" stay after a failure.
void solveCoupled(const CoupledSystem& system, SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2,
                  const CYCLEIN& cycle2, const Text255& FILEOUT);

}  // namespace frigana
