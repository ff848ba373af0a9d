// The plane that a chart of states is drawn in, with its window.
#pragma once

#include <cmath>

#include "ChartFluid.h"

namespace frigana::diagrams {

enum class ChartKind { ph, ts, hs, pt };

// A place in the window: 0 to 1 from left to right and from the bottom to the top.
struct Place {
    double x = 0.0, y = 0.0;
    bool inside(double margin = 0.0) const {
        return x >= -margin && x <= 1.0 + margin && y >= -margin && y <= 1.0 + margin;
    }
    // Distance from the border, negative outside.
    double depth() const { return std::fmin(std::fmin(x, 1.0 - x), std::fmin(y, 1.0 - y)); }
};

inline double distance(const Place& a, const Place& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

struct Axis {
    Property property = Property::enthalpy;
    double low = 0.0, high = 1.0;  // [unit of State]
    bool logarithmic = false;

    double share(double value) const {
        return logarithmic ? std::log(value / low) / std::log(high / low) : (value - low) / (high - low);
    }
};

struct Plane {
    ChartKind kind = ChartKind::ph;
    Axis x, y;
    double coldest = 0.0;   // no state below this temperature is drawn [K]
    double highestP = 0.0;  // and none above this pressure [kPa]

    Place operator()(const State& state) const {
        return {x.share(valueOf(state, x.property)), y.share(valueOf(state, y.property))};
    }
};

}  // namespace frigana::diagrams
