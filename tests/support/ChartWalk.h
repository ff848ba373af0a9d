// Walks every curve of a chart and counts what a chart must not have.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "FLSH_SUB.h"
#include "FluidChart.h"

namespace frigana::test {

struct ChartWalk {
    int curves = 0, points = 0;
    int outside = 0;     // points outside the window
    int apart = 0;       // neighbours farther apart than longestStep
    int changed = 0;     // points that do not have the constant property
    int different = 0;   // points with other properties when they are evaluated from temperature and density
    int unanswered = 0;  // points beside the critical point that the flash does not find again, or only roughly
    int turning = 0;     // isotherms on which pressure turns with density
    int broken = 0;      // ends within the window that are no end of the fluid's range
    double worst = 0.0;  // largest relative difference of a state evaluated again
    double last = 0.0;   // longest of the straight pieces that end in the critical point, as share of the window
    std::string first;   // of the faults, in words

    int faults() const { return outside + apart + changed + different + turning + broken; }
};

// States evaluated again agree within this, relatively; so do constant properties.
inline constexpr double sameState = 1e-8;

namespace detail {

// Of a difference; what is no number is as far off as can be, where a comparison or std::max would pass over it.
inline double size(double difference) {
    return std::isfinite(difference) ? std::fabs(difference) : HUGE_VAL;
}

inline void fault(ChartWalk& walk, int& count, const char* what, const diagrams::Curve& curve,
                  const diagrams::State& state, double value) {
    ++count;
    if (!walk.first.empty()) return;
    char text[200];
    std::snprintf(text, sizeof text, "%s: role %d, constant %d = %.6g at T %.4f p %.5g h %.5g: %.3g", what,
                  static_cast<int>(curve.role), static_cast<int>(curve.constant), curve.value, state.T, state.p,
                  state.h, value);
    walk.first = text;
}

// Where a curve may end: on the border, at the coldest temperature, the highest pressure, the melting line, in the
// critical point.
inline bool mayEnd(const diagrams::ChartFluid& fluid, const diagrams::FluidChart& chart, const diagrams::State& state) {
    constexpr double onBorder = 1e-5, cold = 1e-4, close = 1e-3;
    const diagrams::Place place = chart.plane(state);
    return std::fabs(place.depth()) < onBorder || state.T < chart.plane.coldest + cold ||
           state.p > chart.plane.highestP * (1.0 - close) || state.p > fluid.meltingPressure(state.T) * (1.0 - close) ||
           diagrams::distance(place, chart.plane(chart.critical)) < onBorder;
}

// What a difference is compared with where the value itself is near zero [kJ/kg, kJ/(kg K), kPa]: the zeros of enthalpy
// and entropy are arbitrary, and the pressure of a cold liquid is the small difference of large terms.
inline double zeroOf(diagrams::Property property) {
    return property == diagrams::Property::enthalpy   ? 10.0
           : property == diagrams::Property::entropy  ? 0.1
           : property == diagrams::Property::pressure ? 10.0
                                                      : 0.0;
}

// The state once more, from temperature and density through the flash, which decides on the phases itself.
inline void evaluateAgain(ChartWalk& walk, const diagrams::ChartFluid& fluid, const diagrams::FluidChart& chart,
                          const diagrams::Curve& curve, const diagrams::State& state) {
    // Where an equation has its critical point elsewhere the top of the dome is a straight line that holds no state.
    constexpr double top = 1e-6;
    if (std::fabs(state.T / chart.critical.T - 1.0) < top) return;
    double p, Dl, Dv, q, e, h, s, cv, cp, w;
    Composition x, y;
    int ierr = 0;
    Text255 herr;
    TDFLSH(state.T, state.D / fluid.molarMass(), fluid.composition(), p, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr,
           herr);
    if (ierr > 0) {
        // Beside the critical point the flash may not know whether there is one phase or two.
        constexpr double beside = 0.01;
        if (std::fabs(state.T / chart.critical.T - 1.0) > beside)
            fault(walk, walk.different, "not found again", curve, state, ierr);
        else
            ++walk.unanswered;
        return;
    }
    const double M = fluid.molarMass();
    const double difference =
        std::max({size((p - state.p) / (state.p + zeroOf(diagrams::Property::pressure))),
                  size((h / M - state.h) / (std::fabs(state.h) + zeroOf(diagrams::Property::enthalpy))),
                  size((s / M - state.s) / (std::fabs(state.s) + zeroOf(diagrams::Property::entropy)))});
    walk.worst = std::max(walk.worst, difference);
    // Nor does it split a blend there as sharply as Newton's method, whose states no further step changes.
    constexpr double besideTop = 1e-3, coarse = 1e-3;
    if (curve.constant == diagrams::Property::quality && std::fabs(state.T / chart.critical.T - 1.0) < besideTop &&
        difference > sameState && difference < coarse)
        ++walk.unanswered;
    else if (difference > sameState)
        fault(walk, walk.different, "different", curve, state, difference);
}

}  // namespace detail

// The longest piece to the critical point, where the equation of a fluid has its own elsewhere: the top of the dome is
// a straight line then, and so is the end of what runs into it.
inline constexpr double longestStraightTop = 0.1;

//   Given     stride       every how many points a state is evaluated again: a flash of a blend beside its critical
//                          point is slow
//             longestLast  piece of the boundary and of lines of quality to the critical point
inline ChartWalk walk(const diagrams::ChartFluid& fluid, const diagrams::FluidChart& chart, int stride = 1,
                      double longestLast = diagrams::longestStep) {
    using namespace diagrams;
    ChartWalk result;
    for (const Curve& curve : chart.curves) {
        ++result.curves;
        const Polyline& points = curve.points;
        const bool isoline = curve.role == Curve::Role::isoline;
        int rises = 0, falls = 0;
        for (std::size_t i = 0; i < points.size(); ++i) {
            ++result.points;
            const State& state = points[i];
            const Place place = chart.plane(state);
            constexpr double edge = 1e-6;
            if (!place.inside(edge)) detail::fault(result, result.outside, "outside", curve, state, place.depth());
            const double constant = valueOf(state, curve.constant);
            if (isoline && detail::size(constant - curve.value) >
                               sameState * (std::fabs(curve.value) + detail::zeroOf(curve.constant)))
                detail::fault(result, result.changed, "changed", curve, state, constant / curve.value - 1.0);
            if (result.points % stride == 0) detail::evaluateAgain(result, fluid, chart, curve, state);
            if (i == 0) continue;
            const auto critical = [&](const State& s) {
                return distance(chart.plane(s), chart.plane(chart.critical)) < edge;
            };
            const bool last = curve.constant == Property::quality && (critical(state) || critical(points[i - 1]));
            const double step = detail::size(distance(place, chart.plane(points[i - 1])));
            if (last) result.last = std::max(result.last, step);
            if (step > (last ? longestLast : longestStep) * (1.0 + edge))
                detail::fault(result, result.apart, "apart", curve, state, step);
            if (isoline && curve.constant == Property::temperature) {
                constexpr double rounding = 1e-10;
                if (state.p > points[i - 1].p * (1.0 + rounding)) ++rises;
                if (state.p < points[i - 1].p * (1.0 - rounding)) ++falls;
            }
        }
        if (rises > 0 && falls > 0) detail::fault(result, result.turning, "turning", curve, points.front(), 0.0);
        if (isoline)
            for (const State* end : {&points.front(), &points.back()})
                if (!detail::mayEnd(fluid, chart, *end))
                    detail::fault(result, result.broken, "broken", curve, *end, 0.0);
    }
    return result;
}

// Whether bubble and dew line meet in the critical point.
inline bool domeIsClosed(const diagrams::FluidChart& chart) {
    using namespace diagrams;
    const Curve *bubble = nullptr, *dew = nullptr;
    for (const Curve& curve : chart.curves) {
        if (curve.role == Curve::Role::bubble) bubble = &curve;
        if (curve.role == Curve::Role::dew) dew = &curve;
    }
    constexpr double same = 1e-9;
    return bubble != nullptr && dew != nullptr &&
           distance(chart.plane(bubble->points.back()), chart.plane(dew->points.front())) < same;
}

}  // namespace frigana::test
