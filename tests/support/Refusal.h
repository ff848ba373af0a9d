// What a piece of a solver does with a request that it refuses.
#pragma once

#include "14_ErrorControl.h"
#include "TemporaryFolder.h"
#include "Trap.h"

namespace frigana::test {

// Code with which a run was refused, 0 where it came to its end.
template <class Run>
int refusalOf(Run run) {
    const TemporaryFolder folder;
    ERRORFILEOUT = Text255(folder.path("refused.fo1"));
    runReport.IERR = 0;
    const bool returned = runContained([](void* context) { (*static_cast<Run*>(context))(); }, &run);
    return returned ? 0 : runReport.IERR;
}

}  // namespace frigana::test
