#include "ResultChart.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

#include "12_MyVariables.h"
#include "CyclePath.h"
#include "LineChart.h"
#include "Names.h"
#include "OPENFL.h"

namespace frigana::charts {

namespace {

using catalogue::PointState;
using catalogue::RunResult;
using diagrams::Polyline;
using diagrams::Process;
using diagrams::State;

// The ways of the refrigerant through the numbered points; "c" before a point: a machine delivers to it.
struct Ways {
    std::string_view request, circuit;
    std::string_view ways;  // separated by semicolons
};
constexpr std::string_view basicWay = "1 2 3 4 5 c6 7 1";
constexpr std::string_view exchangerWay = "1 2 3 4 5 6 7 8 9 c10 11 1";
constexpr Ways waysOfCycles[] = {
    {"basic", "", basicWay},
    {"minimal", "", basicWay},
    {"heat-exchanger", "", exchangerWay},
    {"combined", "medium", basicWay},
    {"combined", "low", "1 2 3 4 5 6 7 c8 9 1"},
    {"cascade", "high", basicWay},
    {"cascade", "low", basicWay},
    {"line-sizing", "", "1 c2 3 4 5 6 7 1"},
    {"rankine", "", "1 2 c3 4 5 c6 7 1"},
    {"transcritical", "", exchangerWay},
    {"liquid-injection", "", "1 2 3 4 5 6 c7 8 1; 1 9 10 6"},
    {"two-stage", "", "1 2 3 4 5 6 c7 11 c12 13 1; 1 8 9 10 11"},
    {"pumped-co2", "high", basicWay},
    {"pumped-co2", "loop", "5 c6 7 1 2 3 4 5"},
    {"booster", "", "1 2 3 4 5 7 8 9 13 15 16 17 18 c19 20 1; 7 10 11 c12 13; 5 6 14 15"},
};

// Of a multi-stage cycle the tanks are passed from the highest to the lowest, the compressors the other way; a point of
// a stage is written with it, "9.2".
std::string multiStageWays(int stages) {
    std::string down = "1", up = " 5 2 3 4", aside;
    for (int i = stages - 1; i >= 1; --i) down += " 8." + std::to_string(i) + " 9." + std::to_string(i);
    for (int i = 1; i < stages; ++i) {
        const std::string stage = "." + std::to_string(i);
        up += " c12" + stage + " 13" + stage;
        aside += "; 8" + stage + " 10" + stage + " 11" + stage + " 13" + stage;
    }
    return down + up + " c12 6 1" + aside;
}

struct Point {
    State state;
    std::string label, hover;
    bool known = false;
};
using Points = std::map<std::pair<int, int>, Point>;  // by number and stage

bool available(double value) {
    return std::isfinite(value) && value != missingValue;
}

State stateOf(const PointState& point) {
    State state;
    state.T = point.temperature;
    state.p = point.pressure;
    state.D = point.density;
    state.h = point.enthalpy;
    state.s = point.entropy;
    state.q = point.quality >= 0.0 && point.quality <= 1.0 ? point.quality : diagrams::singlePhase;
    return state;
}

std::string hoverOf(const std::string& label, const State& state, catalogue::UnitSystem units) {
    using catalogue::Quantity;
    const auto part = [&](double value, Quantity quantity) {
        constexpr int digits = 6;
        const catalogue::Unit& unit = catalogue::unitIn(units, quantity);
        return ", " + shownNumber(catalogue::fromInner(value, unit), digits) + "\u2009" + printedSymbol(unit);
    };
    return label + part(state.p, Quantity::pressure) + part(state.T, Quantity::temperature) +
           part(state.h, Quantity::specificEnergy) + part(state.s, Quantity::specificHeat);
}

Points pointsOf(const RunResult& result, std::string_view circuit, catalogue::UnitSystem units,
                std::vector<std::string>& remarks) {
    Points points;
    for (const PointState& at : result.points) {
        if (at.circuit != circuit) continue;
        Point point;
        point.state = stateOf(at);
        point.label = std::to_string(at.number) + (at.stage > 0 ? "(" + std::to_string(at.stage) + ")" : "");
        point.known = available(at.pressure) && available(at.temperature) && available(at.enthalpy) &&
                      available(at.entropy) && at.pressure > 0.0;
        if (point.known)
            point.hover = hoverOf(point.label + " " + at.label, point.state, units);
        else
            remarks.push_back("point " + point.label + " (" + at.label +
                              ") is left out: the result has no state there");
        points[{at.number, at.stage}] = point;
    }
    return points;
}

// Behind the mixing of a stage no section of the result holds the state, but the rows of its diagrams do: it lies on
// the isobar between the two that are mixed.
void addMixedPoints(const RunResult& result, int stages, Points& points) {
    for (int stage = 1; stage < stages; ++stage) {
        const Point &injected = points[{11, stage}], &discharged = points[{12, stage}];
        if (!injected.known || !discharged.known) continue;
        const double low = std::min(injected.state.h, discharged.state.h);
        const double high = std::max(injected.state.h, discharged.state.h);
        for (int row = 1;; ++row) {
            const std::string ph = "diagram.ph.cycle." + std::to_string(row),
                              ts = "diagram.ts.cycle." + std::to_string(row);
            const double p = result.number(ph + ".pressure"), h = result.number(ph + ".enthalpy");
            if (!std::isfinite(p)) break;
            constexpr double same = 1e-6;
            if (std::fabs(p / injected.state.p - 1.0) > same || h <= low * (1.0 + same) || h >= high * (1.0 - same))
                continue;
            Point mixed;
            mixed.state = injected.state;
            mixed.state.h = h;
            mixed.state.T = result.number(ts + ".temperature");
            mixed.state.s = result.number(ts + ".entropy");
            mixed.label = "13(" + std::to_string(stage) + ")";
            mixed.hover = mixed.label + " mixed vapors";
            mixed.known = std::isfinite(mixed.state.T) && std::isfinite(mixed.state.s);
            points[{13, stage}] = mixed;
            break;
        }
    }
}

// The figures that a report leads with, as many as a line holds, and the measure of merit first.
std::string figuresOf(const RunResult& result, catalogue::UnitSystem units) {
    constexpr std::size_t most = 4;
    const auto merit = [](std::string_view key) {
        return key.find("cop_cooling") != key.npos || key.find("cycle_efficiency") != key.npos;
    };
    std::vector<std::string_view> keys(result.input.request->leading.begin(), result.input.request->leading.end());
    std::stable_partition(keys.begin(), keys.end(), merit);
    std::string text;
    std::size_t count = 0;
    bool meritShown = false;
    for (const std::string_view key : keys) {
        const catalogue::Value* value = result.find(key);
        if (value == nullptr || !std::isfinite(value->number()) || count == most || (merit(key) && meritShown))
            continue;
        meritShown = meritShown || merit(key);
        constexpr int digits = 4;
        const catalogue::Unit& unit = catalogue::unitIn(units, value->quantity);
        std::string name = value->name;
        if (name[0] >= 'a' && name[0] <= 'z') name[0] = static_cast<char>(name[0] - 'a' + 'A');
        text +=
            (count++ > 0 ? "; " : "") + name + " " + shownNumber(catalogue::fromInner(value->number(), unit), digits);
        if (!unit.symbol.empty() && unit.symbol != "-") text += "\u2009" + printedSymbol(unit);
    }
    return text;
}

class CycleDrawer {
  public:
    CycleDrawer(const diagrams::ChartFluid& fluid, const diagrams::Plane& plane, Look look, Plot& plot)
        : fluid_(fluid), plane_(plane), look_(look), plot_(plot) {}

    void draw(const Points& points, const std::string& ways) {
        std::istringstream all(ways);
        for (std::string way; std::getline(all, way, ';');) drawWay(points, way);
        addMarkers(points);
    }
    bool complete() const { return complete_; }

  private:
    static const Point* find(const Points& points, const std::string& name) {
        const auto dot = name.find('.');
        const auto at = points.find(
            {std::stoi(name.substr(0, dot)), dot == std::string::npos ? 0 : std::stoi(name.substr(dot + 1))});
        return at == points.end() || !at->second.known ? nullptr : &at->second;
    }

    void drawWay(const Points& points, const std::string& way) {
        PlotLine line;
        line.look = look_;
        const auto finish = [&] {
            if (line.points.size() > 1) plot_.lines.push_back(line);
            line.points.clear();
        };
        std::istringstream names(way);
        const Point* before = nullptr;
        for (std::string name; names >> name;) {
            const bool machine = name[0] == 'c';
            const Point* point = find(points, machine ? name.substr(1) : name);
            if (point == nullptr) {
                // What is not known is left out, and the way goes on behind it.
                finish();
            } else if (before != nullptr) {
                Polyline path;
                complete_ = diagrams::tracePath(fluid_, plane_, before->state, point->state,
                                                machine ? Process::machine : Process::exchange, path) &&
                            complete_;
                for (std::size_t i = line.points.empty() ? 0 : 1; i < path.size(); ++i)
                    line.points.push_back(plane_(path[i]));
                if (machine) isentrope(before->state, point->state.p);
            }
            before = point;
        }
        finish();
    }

    // What the machine would do without losses.
    void isentrope(const State& from, double p) {
        State ideal;
        Polyline path;
        if (!fluid_.fromPressure(p, diagrams::Property::entropy, from.s, ideal) ||
            !diagrams::tracePath(fluid_, plane_, from, ideal, Process::machine, path))
            return;
        PlotLine line;
        line.look = Look::ideal;
        line.number = look_ == Look::secondCycle ? 1 : 0;
        line.hover = "Isentropic";
        for (const State& state : path) line.points.push_back(plane_(state));
        plot_.lines.insert(plot_.lines.begin(), line);
    }

    // Points that fall together share a label.
    void addMarkers(const Points& points) {
        constexpr double together = 0.006;  // of the window
        const std::size_t first = plot_.points.size();
        for (const auto& [number, point] : points) {
            if (!point.known) continue;
            const Place place = plane_(point.state);
            bool joined = false;
            for (std::size_t i = first; i < plot_.points.size() && !joined; ++i) {
                if (diagrams::distance(plot_.points[i].place, place) > together) continue;
                plot_.points[i].label += ", " + point.label;
                plot_.points[i].hover += "; " + point.hover;
                joined = true;
            }
            if (!joined) plot_.points.push_back({place, point.label, point.hover, look_});
        }
    }

    const diagrams::ChartFluid& fluid_;
    const diagrams::Plane& plane_;
    Look look_;
    Plot& plot_;
    bool complete_ = true;
};

// The chart of a fluid with a window for states.
bool chartFor(const catalogue::Fluid& choice, diagrams::ChartKind kind, const ChartStyle& style,
              const std::string& dataFolder, const std::vector<State>& shown, diagrams::ChartFluid& fluid,
              ResultPlot& result, std::string& why) {
    SETPATH(dataFolder);
    if (!fluid.load(selectionOf(choice, catalogue::FluidNames::of(dataFolder)), why)) return false;
    diagrams::ChartRequest request;
    request.kind = kind;
    request.scales = scalesOf(style.units);
    request.lines = linesFor(style.width);
    request.shown = shown;
    diagrams::Dome dome;
    diagrams::FluidChart chart;
    if (!diagrams::makeFluidChart(fluid, request, dome, chart, why)) return false;
    result.plot = plotOf(chart, fluid.name(), style);
    result.plane = chart.plane;
    return true;
}

bool plotsOfCycle(const RunResult& result, diagrams::ChartKind kind, const ChartStyle& style,
                  const std::string& dataFolder, ResultPlots& plots, std::string& why) {
    const catalogue::Request& request = *result.input.request;
    const int stages = result.input.stages();
    for (std::size_t i = 0; i < request.circuits.size(); ++i) {
        const catalogue::Circuit& circuit = request.circuits[i];
        std::string ways = stages > 0 ? multiStageWays(stages) : "";
        for (const Ways& row : waysOfCycles)
            if (row.request == request.name && row.circuit == circuit.key) ways = row.ways;
        Points points = pointsOf(result, circuit.key, style.units, plots.remarks);
        if (stages > 0) addMixedPoints(result, stages, points);
        std::vector<State> shown;
        for (const auto& [number, point] : points)
            if (point.known) shown.push_back(point.state);
        if (ways.empty() || shown.empty()) {
            why = "the result has no states to draw";
            return false;
        }
        ResultPlot one;
        one.circuit = circuit.key;
        diagrams::ChartFluid fluid;
        if (!chartFor(result.input.blocks[i].fluid, kind, style, dataFolder, shown, fluid, one, why)) return false;
        const Look look = i == 0 ? Look::cycle : Look::secondCycle;
        CycleDrawer drawer(fluid, one.plane, look, one.plot);
        drawer.draw(points, ways);
        if (!drawer.complete())
            plots.remarks.push_back("a process is drawn as a straight line: a state on its way was not found");
        std::string heading = result.input.blocks[i].title;
        if (!circuit.label.empty()) heading += (heading.empty() ? "" : ", ") + std::string(circuit.label);
        one.plot.title += heading.empty() ? "" : ": " + heading;
        const std::string figures = figuresOf(result, style.units);
        if (!figures.empty()) one.plot.notes.push_back(figures);
        one.plot.legend.insert(one.plot.legend.begin(), {look, 0, "Cycle"});
        plots.plots.push_back(std::move(one));
    }
    return true;
}

constexpr std::string_view table = "table.";

int rowsOf(const RunResult& result) {
    const double rows = result.number("row_count");
    return std::isfinite(rows) ? static_cast<int>(rows) : 0;
}

// The states of the rows of a table, the ones of one phase: "", "liquid.", "vapor.".
std::vector<std::optional<State>> statesOf(const RunResult& result, const std::string& phase) {
    std::vector<std::optional<State>> states;
    for (int row = 1; row <= rowsOf(result); ++row) {
        const std::string key = std::string(table) + std::to_string(row) + "." + phase;
        State state;
        state.T = result.number(key + "temperature");
        state.p = result.number(key + "pressure");
        state.D = result.number(key + "density");
        state.h = result.number(key + "enthalpy");
        state.s = result.number(key + "entropy");
        const bool known =
            available(state.T) && available(state.p) && available(state.h) && available(state.s) && state.p > 0.0;
        states.push_back(known ? std::optional(state) : std::nullopt);
    }
    return states;
}

bool plotOfTableStates(const RunResult& result, diagrams::ChartKind kind, const ChartStyle& style,
                       const std::string& dataFolder, ResultPlots& plots, std::string& why) {
    const bool saturation = result.find("table.1.liquid.temperature") != nullptr;
    std::vector<std::vector<std::optional<State>>> columns;
    for (const char* phase : {"", "liquid.", "vapor."})
        if (saturation != (*phase == '\0')) columns.push_back(statesOf(result, phase));
    std::vector<State> shown;
    int missing = 0;
    for (const auto& column : columns)
        for (const std::optional<State>& state : column)
            if (state)
                shown.push_back(*state);
            else
                ++missing;
    if (shown.empty()) {
        why = "the table has no states to draw";
        return false;
    }
    if (missing > 0)
        plots.remarks.push_back(std::to_string(missing) +
                                " states of the table are left out: the result has none there");
    ResultPlot one;
    diagrams::ChartFluid fluid;
    if (!chartFor(result.input.blocks.front().fluid, kind, style, dataFolder, shown, fluid, one, why)) return false;
    constexpr std::size_t mostMarkers = 80;
    for (const auto& column : columns) {
        PlotLine line;
        line.look = Look::cycle;
        const auto finish = [&] {
            if (line.points.size() > 1) one.plot.lines.push_back(line);
            line.points.clear();
        };
        for (const std::optional<State>& state : column) {
            if (!state) {
                finish();
                continue;
            }
            line.points.push_back(one.plane(*state));
            if (column.size() <= mostMarkers)
                one.plot.points.push_back({line.points.back(), "", hoverOf("Row", *state, style.units), Look::cycle});
        }
        finish();
    }
    one.plot.legend.insert(one.plot.legend.begin(),
                           {Look::cycle, 0, saturation ? "Saturation table" : "Isoproperty table"});
    plots.plots.push_back(std::move(one));
    return true;
}

std::vector<std::string> separated(const std::string& names) {
    std::vector<std::string> parts;
    std::istringstream stream(names);
    for (std::string name; std::getline(stream, name, ',');)
        if (!name.empty()) parts.push_back(name);
    return parts;
}

// A column by its key in every row; the value tells its name and quantity.
template <class ValueOf>
bool columnOf(std::size_t rows, const std::string& name, ValueOf valueOf, Column& column, std::string& why) {
    for (std::size_t row = 0; row < rows; ++row) {
        const catalogue::Value* value = valueOf(row, name);
        if (value == nullptr || !value->isNumber()) {
            column.values.push_back(std::nan(""));
            continue;
        }
        column.name = value->name;
        column.quantity = value->quantity;
        column.values.push_back(value->number());
    }
    if (!column.name.empty()) return true;
    why = name + ": no such values in the result";
    return false;
}

template <class ValueOf>
bool plotOfNames(const std::string& title, std::size_t rows, const std::string& names, const std::string& over,
                 ValueOf valueOf, const ChartStyle& style, Plot& plot, std::string& why) {
    Column x;
    if (!columnOf(rows, over, valueOf, x, why)) return false;
    std::vector<Column> columns;
    for (const std::string& name : separated(names)) {
        columns.emplace_back();
        if (!columnOf(rows, name, valueOf, columns.back(), why)) return false;
    }
    if (columns.empty()) {
        why = "no values are named to draw";
        return false;
    }
    return plotOfColumns(title, x, columns, style, plot, why);
}

}  // namespace

bool plotsOfResult(const RunResult& result, diagrams::ChartKind kind, const ChartStyle& style,
                   const std::string& dataFolder, ResultPlots& plots, std::string& why) {
    plots = {};
    if (result.input.request == nullptr || !result.isDone() || result.input.blocks.empty()) {
        why = "there is no result to draw";
        return false;
    }
    if (kind == diagrams::ChartKind::pt) {
        why = "the chart of a result is ph, ts or hs";
        return false;
    }
    if (!result.points.empty()) return plotsOfCycle(result, kind, style, dataFolder, plots, why);
    if (rowsOf(result) > 0) return plotOfTableStates(result, kind, style, dataFolder, plots, why);
    why = "a result of this kind has no chart";
    return false;
}

bool plotOfTable(const RunResult& result, const std::string& columns, const std::string& over, const ChartStyle& style,
                 Plot& plot, std::string& why) {
    const auto valueOf = [&](std::size_t row, const std::string& name) {
        return result.find(std::string(table) + std::to_string(row + 1) + "." + name);
    };
    const std::string title = result.input.request == nullptr ? "" : std::string(result.input.request->title);
    return plotOfNames(title, static_cast<std::size_t>(rowsOf(result)), columns, over, valueOf, style, plot, why);
}

bool plotOfStudy(const std::vector<const RunResult*>& results, const std::string& keys, const std::string& over,
                 const ChartStyle& style, Plot& plot, std::string& why) {
    const auto valueOf = [&](std::size_t row, const std::string& name) { return results[row]->find(name); };
    const bool titled = !results.empty() && !results.front()->input.blocks.empty();
    return plotOfNames(titled ? results.front()->input.blocks.front().title : "", results.size(), keys, over, valueOf,
                       style, plot, why);
}

}  // namespace frigana::charts
