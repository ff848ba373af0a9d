// A chart as what is to be seen, before it has a size: axes, lines, labels, points. Places are shares of the window.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Plane.h"

namespace frigana::charts {

using diagrams::Place;

struct Tick {
    double place = 0.0;  // share of the axis
    std::string label;   // empty for a minor tick
};

struct PlotAxis {
    std::string title;
    double low = 0.0, high = 1.0;  // as shown
    bool logarithmic = false;
};

// How a line looks; the style sheet of the picture has a class of the same name.
enum class Look {
    dome,
    isotherm,
    isentrope,
    isochore,
    quality,
    isobar,
    isenthalp,
    cycle,
    secondCycle,
    ideal,   // what a machine would do without losses
    series,  // of a line chart: the looks of several follow each other
};

struct PlotLine {
    Look look = Look::series;
    int number = 0;  // of a series, from 0
    std::vector<Place> points;
    std::string label;            // stands on the line; empty for none
    std::optional<Place> anchor;  // where the label is wanted
    std::string hover;            // the full value
};

struct PlotPoint {
    Place place;
    std::string label;
    std::string hover;
    Look look = Look::cycle;
};

// What the lines of one look are.
struct LegendEntry {
    Look look = Look::series;
    int number = 0;
    std::string text;
};

struct Plot {
    std::string title;
    std::vector<std::string> notes;  // below the title
    std::vector<LegendEntry> legend;
    PlotAxis x, y;
    std::optional<PlotAxis> otherX, otherY;  // the same in other units, on top and on the right
    std::vector<PlotLine> lines;
    std::vector<PlotPoint> points;
};

// Round ticks of an axis.
//   Given     length  of the axis [px]
std::vector<Tick> ticksOf(const PlotAxis& axis, double length);

// A number for a label: the digits it needs for its step, with a real minus sign.
std::string shownNumber(double value, double step);
// The same with some significant digits, no zeros behind the last one.
std::string shownNumber(double value, int significantDigits);

}  // namespace frigana::charts
