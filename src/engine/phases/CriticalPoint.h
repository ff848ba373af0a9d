// The critical point as one record.
#pragma once

namespace frigana {

struct CriticalPoint {
    double T = 0, p = 0, D = 0;  // [K, kPa, mol/L]
};

}  // namespace frigana
