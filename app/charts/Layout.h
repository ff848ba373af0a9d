// Where everything of a plot stands in a picture of a size: the window, the lines with the gaps of their labels, the
// labels themselves.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "Plot.h"

namespace frigana::charts {

struct Pixel {
    double x = 0.0, y = 0.0;  // [px] from the left, from the top
};

// A turned rectangle around a label.
struct Box {
    Pixel middle;
    double width = 0.0, height = 0.0, angle = 0.0;  // [px, px, degrees clockwise]
    std::array<Pixel, 4> corners() const;
};
bool overlap(const Box& a, const Box& b);
bool crosses(const Box& box, const Pixel& from, const Pixel& to);

struct PlacedLabel {
    Box box;
    std::string text;
    Look look = Look::series;
    int number = 0;
    bool ofPoint = false;
};

struct PlacedLine {
    Look look = Look::series;
    int number = 0;
    std::string hover;
    std::vector<std::vector<Pixel>> pieces;  // one, or two with the gap of the label between them
};

struct PlacedPoint {
    Pixel middle;
    std::string hover;
    Look look = Look::cycle;
};

struct Layout {
    double width = 0.0, height = 0.0;                         // of the picture [px]
    double left = 0.0, top = 0.0, right = 0.0, bottom = 0.0;  // borders of the window [px]
    std::vector<PlacedLine> lines;
    std::vector<PlacedPoint> points;
    std::vector<PlacedLabel> labels;
    std::vector<Tick> xTicks, yTicks, otherXTicks, otherYTicks;
    std::vector<std::string> titleRows, noteRows;
    std::vector<std::vector<LegendEntry>> legendRows;

    Pixel at(const Place& place) const { return {left + place.x * (right - left), bottom - place.y * (bottom - top)}; }
};

inline constexpr double labelSize = 12.0, textSize = 14.0;  // [px]

// Width of a text [px], rather too wide than too narrow: no more than the widest of the usual sans-serif families.
double textWidth(const std::string& text, double size);

Layout layOut(const Plot& plot, double width, double height);

}  // namespace frigana::charts
