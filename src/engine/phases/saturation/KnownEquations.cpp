#include "KnownEquations.h"

#include <algorithm>
#include <utility>

#include "DISPATCH.h"
#include "FluidConstants.h"
#include "LIMITS.h"
#include "ModelTags.h"

namespace frigana {

EquationValues describeEquation(const Composition& z, const CriticalPoint& critical) {
    EquationValues equation;
    equation.components = modelTags.NC;
    equation.x = z;
    double* value = equation.values.data();
    for (const double each : {critical.T, critical.p, critical.D, fluidConstants.R}) *value++ = each;
    double tz, rhoz, tmin, tmax, Dmax, pmax;
    REDX(z, tz, rhoz);
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    for (const double each : {tz, rhoz, tmin, tmax, Dmax}) *value++ = each;
    struct State {
        double tau, del;
    };
    for (const State& s : {State{1.2, 0.7}, State{1.05, 2.1}})
        for (const auto& [itau, idel] : {std::pair{0, 0}, {0, 1}, {1, 0}, {0, 2}})
            *value++ = PHIX(itau, idel, s.tau, s.del, z);
    return equation;
}

bool sameEquation(const EquationValues& a, const EquationValues& b) {
    return a.components > 0 && a.components == b.components && a.values == b.values &&
           std::equal(a.x.begin(), a.x.begin() + a.components, b.x.begin());
}

}  // namespace frigana
