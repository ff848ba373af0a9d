// Natural logarithms of the reduced variables. The equations of all components of a mixture and its departure functions
// are asked at one tau and one del, so that the logarithm of the last argument mostly serves again.
// State: sharedLogTau, sharedLogDel.
#pragma once

#include <cmath>

namespace frigana {

struct SharedLogarithm {
    double argument = 1.0, logarithm = 0.0;
    double of(double value) {
        if (value != argument) {
            argument = value;
            logarithm = std::log(value);
        }
        return logarithm;
    }
};

inline SharedLogarithm sharedLogTau, sharedLogDel;

}  // namespace frigana
