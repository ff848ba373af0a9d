// The reducing values that REDHMX keeps of the last compositions.
#pragma once

namespace frigana {

// They are void: the mixing parameters or the reducing values of the components change. Called with all that is
// memorised of saturation.
void forgetReducingValues();

}  // namespace frigana
