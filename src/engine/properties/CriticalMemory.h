// The pressure at the estimated critical point that criticalPressureAt keeps of the last composition.
#pragma once

namespace frigana {

// It is void: an equation or a mixing parameter changes. Called with all that is memorised of saturation.
void forgetCriticalPressure();

}  // namespace frigana
