// The switch that puts all components on the Peng-Robinson equation for a time.
// State: the tags that it replaced, blank while there are none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

struct PreosMemory {
    Text3 HEOSSV{};                 // the top tag
    ComponentArray<Text3> HMXSV{};  // the tags of the components
};

extern PreosMemory preosMemory;

// Switches the Peng-Robinson equation on and off.
//   Given     i    1 or 2: on; 0 or any other: off, the replaced tags come back; -1: asks only
//   Returned  i    after -1: 1 if the equation is on, otherwise 0
//   Notes     Each change fixes the default reference state anew and forgets memorised states of the other model.
void PREOS(int& i);

}  // namespace frigana
