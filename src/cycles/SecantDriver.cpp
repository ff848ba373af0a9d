#include "SecantDriver.h"

namespace frigana {

Text255 trialFileA() {
    return scratchPath("temporalA.txt");
}
Text255 trialFileB() {
    return scratchPath("temporalB.txt");
}

bool isTrial(const Text255& path) {
    return path == trialFileA() || path == trialFileB();
}

void solveExchanger(SUBSTANCE& substance, const CYCLEIN& cycle, const int (&lines)[6], double firstTrial,
                    const Text255& FILEOUT, OneFluidSolver solver) {
    constexpr int exchanger = 20;
    constexpr int fallGiven = 2;
    const int option = cycle.TDAT[exchanger];
    if (option == fallGiven) {
        solver(substance, cycle, FILEOUT);
        return;
    }
    static constinit CYCLEIN trial{};
    trial = cycle;
    trial.TDAT[exchanger] = fallGiven;
    secantDriver({cycle.VDAT[exchanger], lines[option], firstTrial}, FILEOUT, [&](double fall, const Text255& path) {
        trial.VDAT[exchanger] = fall;
        solver(substance, trial, path);
    });
}

}  // namespace frigana
