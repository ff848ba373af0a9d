#include "FluidChart.h"

#include <algorithm>
#include <cmath>

#include "SAT_SUB.h"
#include "SilentMessages.h"

namespace frigana::diagrams {

namespace {

double roundDown(double value, double step) {
    return step * std::floor(value / step + 1e-9);
}
double roundUp(double value, double step) {
    return step * std::ceil(value / step - 1e-9);
}

// Extremes of a property over states.
struct Range {
    double low = 1e300, high = -1e300;
    void take(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    double width() const { return high - low; }
};

void roundAxis(Axis& axis, const Range& range, const Scale& scale, int parts) {
    Range shown;
    shown.take(scale.shown(range.low));
    shown.take(scale.shown(range.high));
    const double step = roundStep(shown.width(), parts);
    const double a = scale.value(roundDown(shown.low, step)), b = scale.value(roundUp(shown.high, step));
    axis.low = std::min(a, b);
    axis.high = std::max(a, b);
}

double bubblePressure(const ChartFluid& fluid, double T) {
    double p, Dl, Dv;
    Composition x, y;
    int ierr = 0;
    Text255 herr;
    SATT(T, fluid.composition(), 1, p, Dl, Dv, x, y, ierr, herr);
    return ierr > 0 ? 0.0 : p;
}
double bubbleTemperature(const ChartFluid& fluid, double p) {
    double T, Dl, Dv;
    Composition x, y;
    int ierr = 0;
    Text255 herr;
    SATP(p, fluid.composition(), 1, T, Dl, Dv, x, y, ierr, herr);
    return ierr > 0 ? 0.0 : T;
}

constexpr double aboveTriplePoint = 0.01;                  // [K]
constexpr double coldestShare = 0.55, hottestShare = 1.2;  // of the critical temperature, where nobody asks

// The temperatures that a chart spans, and the lowest pressure of a log p-h chart.
struct Span {
    double cold = 0.0, hot = 0.0, lowestP = 0.0;
};
Span spanOf(const ChartFluid& fluid, const ChartRequest& request) {
    const double Tc = fluid.estimatedCritical().T;
    const double lowest = fluid.lowestT() + aboveTriplePoint;
    Span span;
    span.cold = request.from.value_or(coldestShare * Tc);
    span.hot = request.to.value_or(hottestShare * Tc);
    double lowestShownP = 1e300;
    for (const State& state : request.shown) {
        if (!request.from) span.cold = std::min(span.cold, state.T - 5.0);
        if (!request.to) span.hot = std::max(span.hot, state.T + 15.0);
        lowestShownP = std::min(lowestShownP, state.p);
    }
    span.hot = std::max(std::min(span.hot, fluid.highestT()), span.cold + 10.0);
    span.cold = std::clamp(span.cold, lowest, 0.97 * Tc);
    const Scale& scale = request.scales.pressure;
    const double least = bubblePressure(fluid, lowest);
    const double wanted = std::min(bubblePressure(fluid, span.cold), 0.95 * lowestShownP);
    span.lowestP = scale.value(roundOnDecade(scale.shown(wanted), false));
    // Below the lowest temperature of the fluid there is no dome to draw.
    if (span.lowestP < least) span.lowestP = std::min(least * (1.0 + 1e-9), 0.95 * lowestShownP);
    return span;
}

}  // namespace

const Scale& Scales::of(Property property) const {
    switch (property) {
        case Property::temperature:
            return temperature;
        case Property::pressure:
            return pressure;
        case Property::density:
            return volume;
        case Property::enthalpy:
            return enthalpy;
        case Property::entropy:
            return entropy;
        default:
            return quality;
    }
}

double roundStep(double range, int parts) {
    const double rough = range / parts, decade = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double m : {1.0, 2.0, 5.0})
        if (m * decade >= 0.75 * rough) return m * decade;
    return 10.0 * decade;
}

double roundOnDecade(double value, bool up) {
    const double decade = std::pow(10.0, std::floor(std::log10(value)));
    double best = up ? 10.0 : 1.0;
    for (const double m : {1.0, 2.0, 5.0, 10.0}) {
        const double candidate = m * decade;
        if (up ? candidate >= value * (1.0 - 1e-9) && m < best : candidate <= value * (1.0 + 1e-9) && m > best)
            best = m;
    }
    return best * decade;
}

std::span<const Property> familiesOf(ChartKind kind) {
    static constexpr Property ph[] = {Property::quality, Property::density, Property::entropy, Property::temperature};
    static constexpr Property ts[] = {Property::quality, Property::density, Property::enthalpy, Property::pressure};
    static constexpr Property hs[] = {Property::quality, Property::temperature, Property::pressure};
    switch (kind) {
        case ChartKind::ph:
            return ph;
        case ChartKind::ts:
            return ts;
        case ChartKind::hs:
            return hs;
        default:
            return {};
    }
}

namespace {

// The extremes that a property has in the states a window shall hold: a bubble point, a dew point and the hot vapor.
void takeEnds(const ChartFluid& fluid, double bubbleT, double dewT, double hot, double lowP, Property property,
              Range& range) {
    double p, Dl, Dv;
    Composition x, y;
    int ierr = 0;
    Text255 herr;
    for (const int kph : {1, 2}) {
        const double T = kph == 1 ? bubbleT : dewT;
        SATT(T, fluid.composition(), kph, p, Dl, Dv, x, y, ierr, herr);
        if (ierr <= 0) range.take(valueOf(fluid.at(T, (kph == 1 ? Dl : Dv) * fluid.molarMass()), property));
    }
    State vapor;
    if (fluid.atPressure(hot, lowP, 2, vapor)) range.take(valueOf(vapor, property));
}

constexpr double thinShare = 0.03;  // of the critical pressure: the lowest that counts for the width of T-s and h-s
constexpr int axisParts = 14;
constexpr int fullSet = 10;  // isolines of a family; in a chart with fewer, lines of quality too are every second one

Plane planeOf(const ChartFluid& fluid, const ChartRequest& request, const Span& span) {
    Plane plane;
    plane.kind = request.kind;
    const Scales& scales = request.scales;
    double highest = 2.5 * fluid.estimatedCritical().p;
    for (const State& state : request.shown) highest = std::max(highest, 1.2 * state.p);
    plane.highestP =
        std::min(scales.pressure.value(roundOnDecade(scales.pressure.shown(highest), true)), fluid.highestP());
    // The dome is whole even where the range of the equation ends at its top.
    constexpr double aboveTop = 1.05;
    plane.highestP = std::max(plane.highestP, aboveTop * fluid.estimatedCritical().p);
    const double lowest = fluid.lowestT() + aboveTriplePoint;
    const bool ph = request.kind == ChartKind::ph, ts = request.kind == ChartKind::ts;
    plane.coldest = span.cold;
    if (ph) {
        plane.coldest = std::max(bubbleTemperature(fluid, span.lowestP), lowest);
    } else {
        Range T;
        T.take(span.cold);
        T.take(span.hot);
        Axis rounded;
        roundAxis(rounded, T, scales.temperature, axisParts);
        plane.coldest = std::max(rounded.low, lowest);
        if (ts) plane.y = rounded;
    }
    plane.x.property = ph ? Property::enthalpy : Property::entropy;
    plane.y.property = ph ? Property::pressure : ts ? Property::temperature : Property::enthalpy;
    const double lowP = ph ? span.lowestP : thinShare * fluid.estimatedCritical().p;
    // The liquid is a thin sickle in an h-s chart: only its hot end is shown where nothing else is asked for.
    constexpr double hotLiquid = 0.85;  // of the critical temperature
    const double bubbleT = ph || ts ? plane.coldest : std::max(plane.coldest, hotLiquid * fluid.estimatedCritical().T);
    const auto fit = [&](Axis& axis) {
        Range range;
        takeEnds(fluid, bubbleT, plane.coldest, span.hot, lowP, axis.property, range);
        for (const State& state : request.shown) range.take(valueOf(state, axis.property));
        roundAxis(axis, range, scales.of(axis.property), axisParts);
    };
    fit(plane.x);
    if (ph) {
        plane.y.logarithmic = true;
        plane.y.low = span.lowestP;
        plane.y.high = plane.highestP;
    } else if (!ts) {
        fit(plane.y);
    }
    return plane;
}

// Between which values of a property there are isolines in a chart; volumes in place of densities.
Range rangeOf(Property family, const Dome& dome, const Plane& plane, double hottest) {
    const ChartFluid& fluid = dome.fluid();
    const State &bubble = dome.points().front().state, &dew = dome.points().back().state;
    const bool ph = plane.kind == ChartKind::ph;
    const double lowP = ph ? plane.y.low : thinShare * dome.critical().p;
    Range range;
    State vapor;
    const bool hasVapor = fluid.atPressure(hottest, lowP, 2, vapor);
    switch (family) {
        case Property::temperature:
            range.take(plane.coldest);
            range.take(std::max(hottest, 1.35 * dome.critical().T));
            break;
        case Property::density:
            range.take(1.0 / bubble.D);
            range.take(hasVapor ? 1.0 / vapor.D : 1.0 / dew.D);
            break;
        case Property::pressure:
            range.take(0.5 * dew.p);
            range.take(plane.highestP);
            break;
        default:
            range.take(valueOf(bubble, family));
            range.take(valueOf(dew, family));
            if (hasVapor) range.take(valueOf(vapor, family));
    }
    return range;
}

// The values of the isolines of a property, as shown: steps of 1, 2, 5 for what spans decades, even ones otherwise.
std::vector<double> stepsOf(Property family, const Range& range, const Scale& scale, int lines) {
    std::vector<double> steps;
    const double low = std::min(scale.shown(range.low), scale.shown(range.high));
    const double high = std::max(scale.shown(range.low), scale.shown(range.high));
    if (family == Property::density || family == Property::pressure) {
        for (double value = roundOnDecade(low, false); value <= high; value = roundOnDecade(1.01 * value, true))
            steps.push_back(value);
        return steps;
    }
    const double step = roundStep(high - low, lines);
    for (int i = 0; roundUp(low, step) + i * step <= high; ++i) steps.push_back(roundUp(low, step) + i * step);
    return steps;
}

}  // namespace

bool makeFluidChart(const ChartFluid& fluid, const ChartRequest& request, Dome& dome, FluidChart& chart,
                    std::string& why) {
    const SilentMessages silent;
    chart = FluidChart{};
    const Span span = spanOf(fluid, request);
    chart.plane = planeOf(fluid, request, span);
    if (!dome.trace(fluid, chart.plane.coldest, why)) return false;
    chart.critical = dome.critical();
    chart.criticalShown = chart.plane(chart.critical).inside();

    IsolineMaker maker(dome, chart.plane);
    maker.boundary(chart.curves);
    for (const Property family : familiesOf(request.kind)) {
        if (family == Property::quality) {
            const int tenths = request.lines < fullSet ? 2 : 1;
            for (int tenth = tenths; tenth <= 9; tenth += tenths) maker.make(family, 0.1 * tenth, chart.curves);
            continue;
        }
        const Scale& scale = request.scales.of(family);
        for (const double shown : stepsOf(family, rangeOf(family, dome, chart.plane, span.hot), scale, request.lines)) {
            const double value = scale.value(shown);
            maker.make(family, family == Property::density ? 1.0 / value : value, chart.curves);
        }
    }
    return true;
}

}  // namespace frigana::diagrams
