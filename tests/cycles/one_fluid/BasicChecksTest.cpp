// The checks of the basic cycle, which line sizing shares: every one that a request can reach, in their order.
#include "OneFluidCycles.h"

namespace frigana::test {
namespace {

const CycleKind basic{1, "R134A.FLD", basicParameters(), 299, {1, 11}};

// The second run of line sizing, with the drops of its lines given as in the basic cycle; the first has none.
CycleKind secondRunOfSizing() {
    CycleKind kind = basic;
    kind.sub = 5;
    for (int pipe = 1; pipe <= 3; ++pipe)
        kind.parameters.insert(kind.parameters.end(), {{1, 1.0}, {1, 10.0}, {1, 0.0}, {1, 4.0}});
    kind.parameters.insert(kind.parameters.end(), {{2, 1.0}, {1, 0.5}, {1, 0.0}});
    kind.before = kind.parameters;
    kind.parameters.back() = {2, 0.0};
    kind.parameters.insert(kind.parameters.end(), 3, {1, 0.0});
    return kind;
}

// Drops so large that a saturation point fails count with -777, and the check of that drop finds them.
const CodeCase rows[] = {
    {201201, "Error: Condenser temperature > Critical temperature (374.2100 K)", {{11, {1, 380.0}}}},
    {201202, "Error: Condenser pressure > Critical pressure (4059.2800 kPa)", {{11, {2, 4100.0}}}},
    {201205, "Error: Condenser outlet pressure was less or  equal than zero!", {{11, {2, 100.0}}, {13, {1, 200.0}}}},
    {201206, "Error: Condenser - outlet temperature is out of range!", {{11, {1, 280.0}}, {12, {2, 190.0}}}},
    {201207, "Error: Condenser - subcooling is out of range!", {{12, {1, 320.0}}}},
    {201208, "Error: Liquid line - pressure drop is out of range!", {{11, {1, 370.0}}, {15, {2, 60.0}}}},
    {201209,
     "Error: Liquid line - drop of saturation temperature is out of range!",
     {{11, {2, 700.0}}, {15, {1, 698.0}}},
     "C12.FLD"},
    {201210, "Error: Liquid line - outlet pressure was less or equal than zero!", {{11, {2, 200.0}}, {15, {2, 150.0}}}},
    {201211, "Error: Liquid line - change temperature is out of range!", {{14, {1, 320.0}}}},
    {201212, "Error: Liquid line - outlet subcooling is out of range!", {{12, {2, 50.0}}, {14, {2, 190.0}}}},
    {201213, "Error: Evaporating temperature > Critical temperature (374.2100 K)", {{1, {1, 380.0}}}},
    {201214, "Error: Evaporator temperature > Condenser temperature!", {{1, {1, 320.0}}}},
    {201215, "Error: Evaporating pressure > Critical pressure (4059.2800 kPa)", {{1, {2, 4100.0}}}},
    {201216, "Error: Evaporating pressure > condenser pressure!", {{1, {2, 2000.0}}}},
    {201219, "Error: Evaporator - inlet pressure > condenser pressure!", {{1, {2, 1000.0}}, {3, {1, 100.0}}}},
    {201220, "Error: Evaporator - outlet pressure was less or equal than zero!", {{1, {2, 200.0}}, {3, {1, 500.0}}}},
    {201221, "Error: Evaporator - superheat is out of range!", {{2, {1, 250.0}}}},
    {201222, "Error: Suction line - pressure drop is out of range!", {{5, {2, 150.0}}}},
    {201223, "Error: Suction line - drop of saturation temperature is out of range!", {{5, {1, 300.0}}}},
    {201224, "Error: Compressor - inlet pressure was less or equal than zero!", {{1, {2, 100.0}}, {5, {2, 150.0}}}},
    {201225, "Error: Suction line - outlet temperature > critical temperature (374.2100 K)", {{4, {1, 380.0}}}},
    {201226, "Error: Suction line - temperature change is out of range!", {{4, {1, 270.0}}}},
    {201227,
     "Error: Suction line drop of saturation temperature is out of range!",
     {{1, {1, 172.0}}, {2, {2, 15.0}}, {4, {2, 186.0}}}},
    {201228, "Error: Discharge line - pressure drop is out of range!", {{10, {2, 50.0}}}},
    {201229,
     "Error: Discharge line - drop of saturation temperature is out of range!",
     {{10, {1, 900.0}}, {11, {2, 3500.0}}}},
    {201300,
     "Error: wet compression, increase the inlet superheat",
     {{2, {2, 0.0}}, {4, {2, 0.0}}, {7, {1, 1.0}}},
     "ISOBUTAN.FLD"},
    {201230, "Error: Discharge line - temperature change is out of range!", {{9, {1, 400.0}}}},
};

TEST(BasicCycleCodes, EveryReachableCheckEndsTheRunWithItsText) {
    checkCodes(basic, rows, {}, 27);
}

TEST(LineSizingCodes, EveryReachableCheckEndsTheRunWithItsText) {
    checkCodes(secondRunOfSizing(), rows, {}, 27);
}

}  // namespace
}  // namespace frigana::test
