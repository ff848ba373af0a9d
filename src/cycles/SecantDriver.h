// Finds a value that a solver cannot be told directly: the solver is run as a whole, from a trial value to a finished
// result file, and the wanted quantity is read back from that file by its line number.
#pragma once

#include "14_ErrorControl.h"
#include "ResultWriter.h"

namespace frigana {

// What is looked for, and where it stands in a result file.
struct SecantSearch {
    double target;      // value that the quantity is to take
    int line;           // its line in the result file
    double firstTrial;  // first value of the unknown
};

inline constexpr int secantPasses = 3;  // always all of them: there is no test for convergence
inline constexpr double secantStep = static_cast<double>(0.1f);

// The scratch files of the two trials. Their names are no others'.
Text255 trialFileA();
Text255 trialFileB();

// True if a solver is to write a trial, of which one line is read.
bool isTrial(const Text255& path);

// The unknown after three secant steps, each from two fresh trial solutions.
//   Given     solve(x, path)  writes the whole result of the trial value x to path
//             fileA, fileB    scratch files, one for each of the two trials; they stay where a trial fails
//   Returned  (value)         the last step, whether or not it met the target. It is not finite where both trials gave
//                             the same value
template <class Solve>
double secantUnknown(const SecantSearch& search, const Text255& fileA, const Text255& fileB, Solve solve) {
    double x = search.firstTrial;
    for (int pass = 1; pass <= secantPasses; ++pass) {
        double y1 = 0.0;
        double y2 = 0.0;
        solve(x, fileA);
        DATARECOVERY(fileA, search.line, y1);
        solve(x + secantStep, fileB);
        DATARECOVERY(fileB, search.line, y2);
        const double step = (x + secantStep) - x;
        const double slope = step / (y2 - y1);
        x = slope * search.target + (x - slope * y1);
    }
    return x;
}

// The whole search with the scratch files "temporalA.txt" and "temporalB.txt": the seventh solution is the result, and
// the scratch files are removed.
template <class Solve>
void secantDriver(const SecantSearch& search, const Text255& FILEOUT, Solve solve) {
    const Text255 fileA = trialFileA();
    const Text255 fileB = trialFileB();
    const double x = secantUnknown(search, fileA, fileB, solve);
    solve(x, FILEOUT);
    deleteScratch(fileA);
    deleteScratch(fileB);
}

// A cycle whose exchanger between suction line and liquid line may be given in several ways (parameter 20). Its solver
// takes the fall of the liquid, option 2; any other option is looked for on its line of the result.
using OneFluidSolver = void (*)(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);
void solveExchanger(SUBSTANCE& substance, const CYCLEIN& cycle, const int (&lines)[6], double firstTrial,
                    const Text255& FILEOUT, OneFluidSolver solver);

}  // namespace frigana
