#include "StateChart.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "VaporPressure.h"

namespace frigana::charts {

namespace {

using catalogue::Quantity;
using catalogue::Unit;
using catalogue::UnitSystem;
using diagrams::ChartKind;
using diagrams::Curve;
using diagrams::Property;

diagrams::Scale scaleOf(Quantity quantity, UnitSystem units) {
    const Unit& unit = catalogue::unitIn(units, quantity);
    return {1.0 / unit.factor, -unit.shift};
}

std::string_view wordOf(Property property) {
    switch (property) {
        case Property::temperature:
            return "Temperature";
        case Property::pressure:
            return "Pressure";
        case Property::density:
            return "Specific volume";
        case Property::enthalpy:
            return "Specific enthalpy";
        case Property::entropy:
            return "Specific entropy";
        default:
            return "Vapor quality";
    }
}

std::string titleOf(Property property, UnitSystem units) {
    const std::string symbol = printedSymbol(catalogue::unitIn(units, quantityOf(property)));
    return std::string(wordOf(property)) + (symbol.empty() ? "" : " / " + symbol);
}

Look lookOf(Property property) {
    switch (property) {
        case Property::temperature:
            return Look::isotherm;
        case Property::pressure:
            return Look::isobar;
        case Property::density:
            return Look::isochore;
        case Property::enthalpy:
            return Look::isenthalp;
        case Property::entropy:
            return Look::isentrope;
        default:
            return Look::quality;
    }
}

std::string_view nameOf(ChartKind kind) {
    switch (kind) {
        case ChartKind::ph:
            return "log p-h chart";
        case ChartKind::ts:
            return "T-s chart";
        case ChartKind::hs:
            return "h-s chart";
        default:
            return "vapor pressure";
    }
}

// Where the label of an isoline is wanted: those of one family stand in a row.
Place wantedPlace(ChartKind kind, const Curve& curve, const std::vector<Place>& places) {
    const auto nearest = [&](double Place::*along, double value) {
        return *std::ranges::min_element(places, {},
                                         [&](const Place& place) { return std::fabs(place.*along - value); });
    };
    constexpr double low = 0.06, high = 0.94;
    switch (curve.constant) {
        case Property::temperature: {
            if (kind != ChartKind::ph) return nearest(&Place::x, high);
            std::vector<Place> inside;
            for (std::size_t i = 0; i < places.size(); ++i)
                if (curve.points[i].q > 0.3 && curve.points[i].q < 0.7) inside.push_back(places[i]);
            return inside.empty() ? nearest(&Place::y, 2.0 * low) : inside[inside.size() / 2];
        }
        case Property::pressure:
        case Property::entropy:
            return nearest(&Place::y, high);
        case Property::density:
            return kind == ChartKind::ph ? nearest(&Place::x, high) : nearest(&Place::y, 0.85);
        case Property::enthalpy:
            return nearest(&Place::x, high);
        default:
            return nearest(&Place::y, low);
    }
}

double shownValue(const Curve& curve, const diagrams::Scales& scales) {
    return scales.of(curve.constant).shown(curve.constant == Property::density ? 1.0 / curve.value : curve.value);
}

}  // namespace

namespace {

// The value of an isoline, in families of even steps with as many decimals as any of them needs.
std::string labelOf(const diagrams::FluidChart& chart, const Curve& curve, const diagrams::Scales& scales) {
    constexpr int digits = 4;
    const auto shown = [&](const Curve& any) { return shownNumber(shownValue(any, scales), digits); };
    if (curve.constant == Property::density || curve.constant == Property::pressure) return shown(curve);
    const auto decimals = [](const std::string& text) {
        const auto dot = text.find('.');
        return dot == std::string::npos ? 0 : static_cast<int>(text.size() - dot) - 1;
    };
    int most = 0;
    for (const Curve& other : chart.curves)
        if (other.role == Curve::Role::isoline && other.constant == curve.constant)
            most = std::max(most, decimals(shown(other)));
    return shownNumber(shownValue(curve, scales), std::pow(10.0, -most));
}

}  // namespace

std::optional<ChartKind> kindOf(const std::string& name) {
    std::string folded;
    for (const char c : name) folded += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    if (folded == "ph") return ChartKind::ph;
    if (folded == "ts") return ChartKind::ts;
    if (folded == "hs") return ChartKind::hs;
    if (folded == "pt") return ChartKind::pt;
    return std::nullopt;
}

std::string printedSymbol(const Unit& unit) {
    std::string printed;
    for (const char c : unit.symbol) {
        const bool power = (c == '2' || c == '3') && !printed.empty() && std::isalpha(printed.back());
        printed += !power ? std::string(1, c) : c == '2' ? "\u00b2" : "\u00b3";
    }
    return printed;
}

catalogue::Quantity quantityOf(Property property) {
    switch (property) {
        case Property::temperature:
            return Quantity::temperature;
        case Property::pressure:
            return Quantity::pressure;
        case Property::density:
            return Quantity::specificVolume;
        case Property::enthalpy:
            return Quantity::specificEnergy;
        case Property::entropy:
            return Quantity::specificHeat;
        default:
            return Quantity::ratio;
    }
}

diagrams::FluidSelection selectionOf(const catalogue::Fluid& fluid, const catalogue::FluidNames& names) {
    using Kind = diagrams::FluidSelection::Kind;
    diagrams::FluidSelection selection;
    selection.reference = fluid.referenceState;
    selection.referenceMode = fluid.referenceOf;
    if (fluid.kind == 3) {
        selection.kind = Kind::listed;
        selection.name = fluid.blendName.empty() ? "Blend" : fluid.blendName;
        selection.byMass = fluid.byMass;
        double sum = 0.0;
        for (const auto& component : fluid.components) sum += component.fraction;
        for (const auto& component : fluid.components) {
            selection.files.push_back(component.file);
            selection.fractions.push_back(component.fraction / sum);
        }
        return selection;
    }
    selection.kind = fluid.kind == 1 ? Kind::pure : Kind::mixtureFile;
    selection.name = names.shownName(fluid.file);
    selection.files = {fluid.file};
    return selection;
}

diagrams::Scales scalesOf(UnitSystem units) {
    diagrams::Scales scales;
    scales.temperature = scaleOf(Quantity::temperature, units);
    scales.pressure = scaleOf(Quantity::pressure, units);
    scales.enthalpy = scaleOf(Quantity::specificEnergy, units);
    scales.entropy = scaleOf(Quantity::specificHeat, units);
    scales.volume = scaleOf(Quantity::specificVolume, units);
    return scales;
}

int linesFor(double width) {
    constexpr double widePicture = 900.0;
    return width < widePicture ? 7 : 13;
}

PlotAxis axisOf(const diagrams::Axis& axis, UnitSystem units) {
    const diagrams::Scale scale = scalesOf(units).of(axis.property);
    return {titleOf(axis.property, units), scale.shown(axis.low), scale.shown(axis.high), axis.logarithmic};
}

Plot plotOf(const diagrams::FluidChart& chart, const std::string& fluid, const ChartStyle& style) {
    const diagrams::Scales scales = scalesOf(style.units);
    const ChartKind kind = chart.plane.kind;
    Plot plot;
    plot.title = fluid + ", " + std::string(nameOf(kind));
    plot.x = axisOf(chart.plane.x, style.units);
    plot.y = axisOf(chart.plane.y, style.units);
    if (style.otherUnits) {
        plot.otherX = axisOf(chart.plane.x, *style.otherUnits);
        plot.otherY = axisOf(chart.plane.y, *style.otherUnits);
    }
    for (const Curve& curve : chart.curves) {
        PlotLine line;
        for (const diagrams::State& state : curve.points) {
            const Place place = chart.plane(state);
            line.points.push_back({std::clamp(place.x, 0.0, 1.0), std::clamp(place.y, 0.0, 1.0)});
        }
        if (curve.role != Curve::Role::isoline) {
            line.look = Look::dome;
            line.hover = curve.role == Curve::Role::bubble ? "Bubble line" : "Dew line";
        } else {
            line.look = lookOf(curve.constant);
            line.label = labelOf(chart, curve, scales);
            const std::string symbol = printedSymbol(catalogue::unitIn(style.units, quantityOf(curve.constant)));
            line.hover =
                std::string(wordOf(curve.constant)) + " " + line.label + (symbol.empty() ? "" : "\u2009" + symbol);
            line.anchor = wantedPlace(kind, curve, line.points);
        }
        plot.lines.push_back(std::move(line));
    }
    // The dome last, above everything that ends on it.
    std::stable_partition(plot.lines.begin(), plot.lines.end(),
                          [](const PlotLine& line) { return line.look != Look::dome; });
    const auto families = diagrams::familiesOf(kind);
    for (auto family = families.rbegin(); family != families.rend(); ++family)
        plot.legend.push_back({lookOf(*family), 0, titleOf(*family, style.units)});
    if (chart.criticalShown) {
        const Place place = chart.plane(chart.critical);
        plot.points.push_back({place, "", "Critical point", Look::dome});
    }
    return plot;
}

namespace {

struct FluidCurves {
    std::string name;
    diagrams::VaporPressureCurves curves;
};

constexpr double coldestShare = 0.6;  // of the lowest critical temperature, where the chart begins on its own

}  // namespace

bool plotOfVaporPressures(const std::vector<diagrams::FluidSelection>& fluids, std::optional<double> from,
                          std::optional<double> to, const ChartStyle& style, Plot& plot, std::string& why) {
    plot = {};
    diagrams::ChartFluid fluid;
    double cold = 1e300, hot = 0.0;
    for (const diagrams::FluidSelection& selection : fluids) {
        if (!fluid.load(selection, why)) return false;
        const double Tc = fluid.estimatedCritical().T;
        cold = std::min(cold, std::max(coldestShare * Tc, fluid.lowestT()));
        hot = std::max(hot, Tc);
    }
    const diagrams::Scale temperatures = scalesOf(style.units).temperature;
    const auto rounded = [&](double T, bool up) {
        constexpr double step = 10.0;
        const double shown = temperatures.shown(T) / step;
        return temperatures.value(step * (up ? std::ceil(shown) : std::floor(shown)));
    };
    diagrams::Plane plane;
    plane.kind = ChartKind::pt;
    plane.x = {Property::temperature, from.value_or(rounded(cold, false)), to.value_or(rounded(hot, true)), false};
    if (!(plane.x.low < plane.x.high)) {
        why = "the lower temperature is not below the upper one";
        return false;
    }
    std::vector<FluidCurves> all;
    double low = 1e300, high = 0.0;
    for (const diagrams::FluidSelection& selection : fluids) {
        FluidCurves one{selection.name, {}};
        if (!fluid.load(selection, why)) return false;
        if (!diagrams::traceVaporPressure(fluid, plane.x.low, plane.x.high, one.curves, why)) return false;
        for (const diagrams::Polyline* line : {&one.curves.bubble, &one.curves.dew})
            for (const diagrams::State& state : *line) {
                low = std::min(low, state.p);
                high = std::max(high, state.p);
            }
        all.push_back(std::move(one));
    }
    const diagrams::Scale pressures = scalesOf(style.units).pressure;
    plane.y = {Property::pressure, pressures.value(diagrams::roundOnDecade(pressures.shown(low), false)),
               pressures.value(diagrams::roundOnDecade(pressures.shown(high), true)), true};
    plot.title = "Vapor pressure";
    plot.x = axisOf(plane.x, style.units);
    plot.y = axisOf(plane.y, style.units);
    if (style.otherUnits) {
        plot.otherX = axisOf(plane.x, *style.otherUnits);
        plot.otherY = axisOf(plane.y, *style.otherUnits);
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        const int number = static_cast<int>(i);
        for (const diagrams::Polyline* points : {&all[i].curves.bubble, &all[i].curves.dew}) {
            if (points->empty()) continue;
            PlotLine line;
            line.number = number;
            for (const diagrams::State& state : *points) line.points.push_back(plane(state));
            const bool bubble = points == &all[i].curves.bubble, blend = !all[i].curves.dew.empty();
            if (bubble) line.label = all[i].name;
            line.hover = all[i].name + (blend ? bubble ? ", bubble line" : ", dew line" : "");
            // The names one below the other, from the middle outwards.
            const double share = (static_cast<double>(i) + 1.0) / (static_cast<double>(all.size()) + 1.0);
            line.anchor = line.points[static_cast<std::size_t>((0.3 + 0.5 * share) *
                                                               static_cast<double>(line.points.size() - 1))];
            plot.lines.push_back(std::move(line));
        }
        plot.legend.push_back({Look::series, number, all[i].name});
    }
    return true;
}

}  // namespace frigana::charts
