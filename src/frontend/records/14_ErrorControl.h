// The road of a failure, and the small routines that every operation uses.
#pragma once

#include <string_view>

#include "12_MyVariables.h"

namespace frigana {

// How a run ended, for the one who called in process; the result file tells the rest of the world.
enum class RunEnd {
    returned,     // the operation came to its end
    refused,      // ERRORCONTROL: the result file has the failure form
    runtimeError  // input or output failed: one line on standard error, no result file
};
struct RunReport {
    RunEnd end = RunEnd::returned;
    int type = 0, sub = 0;    // what was asked for
    int IERR = 0;             // code of a refusal
    bool formWritten = true;  // false where a refusal's form could not be written: then code and text stand only here
    Text255 HERR;             // its text; the line on standard error
    Text255 resultPath;       // the result file, or the mixture file that was written
    // Where a refusal by the fixed ranges came from: circuit 1 or 2, number of the parameter (0 where the refusal came
    // from elsewhere), and what the parameter is.
    int record = 0, parameter = 0;
    std::string_view parameterName{};
};
extern RunReport runReport;

// Ends the run with a message in the result file.
//   Given     IERR   code; 0 and negative codes (warnings) do nothing
//             HERR   text
//   Notes     Never returns for a positive code: the result file is written anew with 0, the code and the whole text,
//             then an integer division by zero unwinds out of the library. No file may be open. Where the form cannot
//             be written, code and text go to standard error and into runReport all the same.
void ERRORCONTROL(int IERR, const Text255& HERR);

// Path that ERRORCONTROL writes to: the entry's copy of the result path, whatever becomes of the caller's.
extern Text255 ERRORFILEOUT;

// Ends the run in the input runtime's own error: one line on standard error, no result file.
//   Given     unit      open unit at the line that cannot be used
//             expected  what was to be read
//             found     what stood there
[[noreturn]] void readError(int unit, std::string_view expected, std::string_view found);
// The same for a file that cannot be opened, written, or an item beyond the end.
[[noreturn]] void fileError(std::string_view path, std::string_view problem);
// The same for a number with a decimal comma: what stands behind the comma would be dropped.
[[noreturn]] void decimalCommaError(int unit);

// X cut down to a whole multiple of 10**N.
//   Given     X   floor of it is taken first, as a 32-bit integer
//             N   power of ten
//   Returned  R   multiple of 10**N; may be the same variable as X. A negative X moves towards zero after the floor
void MYNROUND(double X, int N, double& R);

// One line of a finished result file, by its number.
//   Given     FILEIN  path
//             LINE    line, 1 for the first
//   Returned  VALUE   the line read as one number in free form / RCTEXT its first 80 columns
//   Codes     a line beyond the end, or no number on it, ends the run in the runtime's own error
void DATARECOVERY(const Text255& FILEIN, int LINE, double& VALUE);
void DATARECOVERS(const Text255& FILEIN, int LINE, Text255& RCTEXT);

// Position of the last character of the first ".fi1" (letters in either case); POS is untouched if there is none.
void MYFINDFI1(const Text255& STRINPUT, int& POS);

}  // namespace frigana
