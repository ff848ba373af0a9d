// The checks of a cycle request: before anything is solved, every number of the request is held against fixed limits
// that are nonsense to leave for any fluid. What depends on the fluid is checked by the solvers.
//
// There is one table of rows per cycle (40_RangeChecks_Tables.h), walked in its order: the first bad parameter ends
// the run, so the order of the rows is the order of the messages that a user meets. Parameters that no row names are
// not looked at.
#pragma once

#include <span>
#include <string_view>

#include "12_MyVariables.h"
#include "40_RangeChecks_Tables.h"
#include "FixedText.h"

namespace frigana {

// True if an option lies outside a range whose two bounds belong to it.
//   Given     value   option
//             lower   smallest allowed option
//             upper   largest allowed option
//   Returned  (value) true below lower or above upper
bool ISOUTI(int value, int lower, int upper);

// True if a value lies outside a range whose two bounds belong to it.
//   Given     value   value of a parameter
//             lower   smallest allowed value, single precision
//             upper   largest allowed value, single precision
//   Returned  (value) true below lower or above upper; false for a value that is not a number
//   Notes     The bounds are widened for the comparison, so a lower bound of 0.1 is in truth 0.10000000149011612 and
//             keeps a value of 0.1 out. The solvers use it for their own checks too.
bool ISOUTR(double value, float lower, float upper);

// All rows of one cycle, in the order of checking.
struct RequestCheck {
    int reqsub;
    std::span<const requestchecks::CheckRow> first;
    std::span<const requestchecks::CheckRow> second = {};
    std::span<const requestchecks::CheckRow> stage = {};  // once for every stage but the last
};

// The checks of all cycles, for who describes requests.
std::span<const RequestCheck> requestChecks();

// Why a request is refused, and which parameter it came from.
struct Refusal {
    enum Kind {
        none,         // the request passes
        option,       // TDAT(parameter) is not an allowed option
        value,        // VDAT(parameter) is outside the limits of the chosen option
        beyondRecord  // the request asks for a parameter that a record has no room for; there is no code for it
    };
    Kind kind = none;
    int code = 0;           // six digits, 0 unless kind is option or value
    Text255 text;           // the message that goes with the code
    int record = 0;         // 1 or 2: first or second record of the request
    int parameter = 0;      // index k of TDAT(k) and VDAT(k)
    std::string_view name;  // the parameter as an engineer knows it; texts do not always say it right
};

// The first parameter of a cycle request that its check refuses.
//   Given     reqsub  sub-type of the cycle, 1 to 14
//             first   record of a request with one fluid, first record of a request with two
//             second  second record; not looked at for a request with one fluid
//   Returned  (value) the refusal; kind none if the request passes or the sub-type has no check (8, or no cycle)
Refusal firstRefusal(int reqsub, const CYCLEIN& first, const CYCLEIN& second);
Refusal firstRefusal(int reqsub, const CYCLEIN& only);

// Check of the request of one cycle.
//   Given     first   record of the request, or the first of two
//             second  second record of a combined, cascade or pumped system
//   Codes     2SS101 and up, with SS the sub-type: odd for an option, even for a value
//   Notes     Returns if all is well. A refusal ends the run by ERRORCONTROL, before any fluid is set up.
void RANGECHECKS0201(const CYCLEIN& first);                         // basic cycle
void RANGECHECKS0202(const CYCLEIN& first);                         // cycle with heat exchanger
void RANGECHECKS0203(const CYCLEIN& first, const CYCLEIN& second);  // combined cycle
void RANGECHECKS0204(const CYCLEIN& first, const CYCLEIN& second);  // cascade cycle
void RANGECHECKS0205(const CYCLEIN& first);                         // line sizing
void RANGECHECKS0206(const CYCLEIN& first);                         // Rankine cycle
void RANGECHECKS0207(const CYCLEIN& first);                         // transcritical cycle
void RANGECHECKS0209(const CYCLEIN& first);                         // cycle with liquid injection
void RANGECHECKS0210(const CYCLEIN& first);                         // two-stage cycle with heat exchanger
void RANGECHECKS0212(const CYCLEIN& first);                         // minimal basic cycle
void RANGECHECKS0213(const CYCLEIN& first, const CYCLEIN& second);  // pumped CO2 system
void RANGECHECKS0214(const CYCLEIN& first);                         // transcritical booster

// Check of the multi-stage cycle with flash tanks.
//   Given     first   record of the request; TDAT(16) is the number of stages N, 2 to 18
//   Codes     211101 to 211131, then 211133 to 211142 for stage 1 and 10 more for every further stage
//   Notes     Five parameters are checked for each of the first N - 1 stages. A record holds 50 parameters, so from
//             8 stages on the last of them do not exist: such a run ends at the bound of the record, with no result
//             file, unless an earlier parameter is refused. The true ceiling is 7 stages.
void RANGECHECKS0211(const CYCLEIN& first);  // multi-stage cycle with flash tanks

}  // namespace frigana
