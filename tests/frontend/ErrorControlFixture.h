// Routines that may end in the trap, and a result file for what they leave.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "14_ErrorControl.h"
#include "TemporaryFolder.h"
#include "TextFile.h"
#include "Trap.h"

namespace frigana {

// True if the routine came back, false if it ended in the trap.
template <class Routine>
bool comesBack(Routine routine) {
    const bool back = runContained([](void* context) { (*static_cast<Routine*>(context))(); }, &routine);
    abandonAllUnits();
    return back;
}

struct ErrorControl : testing::Test {
    test::TemporaryFolder folder;
    std::string result = folder.path("plant.fo1");
    void SetUp() override {
        ERRORFILEOUT = Text255(std::string_view(result));
        runReport = {};
    }
};

}  // namespace frigana
