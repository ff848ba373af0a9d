#include "Layout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace frigana::charts {

namespace {

constexpr double degree = std::numbers::pi / 180.0;

double cross(const Pixel& o, const Pixel& a, const Pixel& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}
double length(const Pixel& a, const Pixel& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}
Pixel between(const Pixel& a, const Pixel& b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
}

bool segmentsCross(const Pixel& a, const Pixel& b, const Pixel& c, const Pixel& d) {
    return cross(a, b, c) * cross(a, b, d) < 0.0 && cross(c, d, a) * cross(c, d, b) < 0.0;
}

bool contains(const Box& box, const Pixel& p) {
    const double c = std::cos(box.angle * degree), s = std::sin(box.angle * degree);
    const double dx = p.x - box.middle.x, dy = p.y - box.middle.y;
    return std::fabs(dx * c + dy * s) <= 0.5 * box.width && std::fabs(-dx * s + dy * c) <= 0.5 * box.height;
}

// Points that a straight line between their neighbours replaces within a distance are left out.
void simplify(const std::vector<Pixel>& points, std::size_t from, std::size_t to, double tolerance,
              std::vector<bool>& kept) {
    double farthest = 0.0;
    std::size_t index = from;
    const double span = length(points[from], points[to]);
    for (std::size_t i = from + 1; i < to; ++i) {
        const double off = span > 1e-9 ? std::fabs(cross(points[from], points[to], points[i])) / span
                                       : length(points[from], points[i]);
        if (off > farthest) {
            farthest = off;
            index = i;
        }
    }
    if (farthest <= tolerance) return;
    kept[index] = true;
    simplify(points, from, index, tolerance, kept);
    simplify(points, index, to, tolerance, kept);
}

std::vector<Pixel> simplified(const std::vector<Pixel>& points) {
    constexpr double tolerance = 0.12;  // [px]
    if (points.size() < 3) return points;
    std::vector<bool> kept(points.size(), false);
    kept.front() = kept.back() = true;
    simplify(points, 0, points.size() - 1, tolerance, kept);
    std::vector<Pixel> result;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (kept[i]) result.push_back(points[i]);
    return result;
}

// A line by the length from its beginning.
class Walk {
  public:
    explicit Walk(const std::vector<Pixel>& points) : points_(points), at_(1, 0.0) {
        for (std::size_t i = 1; i < points.size(); ++i) at_.push_back(at_.back() + length(points[i - 1], points[i]));
    }
    double total() const { return at_.back(); }
    Pixel at(double s) const {
        const std::size_t i = segment(s);
        const double part = at_[i] - at_[i - 1];
        return between(points_[i - 1], points_[i], part > 0.0 ? (s - at_[i - 1]) / part : 0.0);
    }
    std::vector<Pixel> piece(double from, double to) const {
        std::vector<Pixel> result{at(from)};
        for (std::size_t i = 0; i < points_.size(); ++i)
            if (at_[i] > from && at_[i] < to) result.push_back(points_[i]);
        result.push_back(at(to));
        return result;
    }

  private:
    std::size_t segment(double s) const {
        const auto after = std::lower_bound(at_.begin() + 1, at_.end(), s);
        return std::min(static_cast<std::size_t>(after - at_.begin()), at_.size() - 1);
    }
    const std::vector<Pixel>& points_;
    std::vector<double> at_;
};

// Lines that no label may cross: the strongest ones.
bool untouchable(Look look) {
    return look == Look::dome || look == Look::cycle || look == Look::secondCycle;
}

class Labeller {
  public:
    Labeller(Layout& layout, const Plot& plot) : layout_(layout) {
        for (const PlotLine& line : plot.lines) {
            std::vector<Pixel> points;
            for (const Place& place : line.points) points.push_back(layout.at(place));
            drawn_.push_back(simplified(points));
            looks_.push_back(line.look);
        }
    }

    void place(const Plot& plot) {
        placePoints(plot);
        std::vector<std::size_t> order(plot.lines.size());
        for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            return rank(plot.lines[a].look) < rank(plot.lines[b].look);
        });
        layout_.lines.resize(plot.lines.size());
        for (const std::size_t i : order) placeLine(plot.lines[i], i);
    }

  private:
    static int rank(Look look) {
        switch (look) {
            case Look::series:
                return 0;
            case Look::isotherm:
            case Look::isobar:
                return 1;
            case Look::isochore:
                return 2;
            case Look::isentrope:
            case Look::isenthalp:
                return 3;
            default:
                return 4;
        }
    }

    bool inWindow(const Box& box) const {
        constexpr double margin = 3.0;
        return std::ranges::all_of(box.corners(), [&](const Pixel& p) {
            return p.x > layout_.left + margin && p.x < layout_.right - margin && p.y > layout_.top + margin &&
                   p.y < layout_.bottom - margin;
        });
    }

    bool free(const Box& box) const {
        constexpr double pointRadius = 5.0;
        for (const PlacedLabel& other : layout_.labels)
            if (overlap(box, other.box)) return false;
        for (const PlacedPoint& point : layout_.points)
            if (contains({box.middle, box.width + 2 * pointRadius, box.height + 2 * pointRadius, box.angle},
                         point.middle))
                return false;
        return true;
    }

    // How many lines run through a box; -1 where one of them must not.
    int linesThrough(const Box& box, std::size_t except, bool strict) const {
        int count = 0;
        const double reach = 0.5 * std::hypot(box.width, box.height);
        for (std::size_t i = 0; i < drawn_.size(); ++i) {
            if (i == except) continue;
            for (std::size_t j = 1; j < drawn_[i].size(); ++j) {
                const Pixel &a = drawn_[i][j - 1], &b = drawn_[i][j];
                if (std::max(a.x, b.x) < box.middle.x - reach || std::min(a.x, b.x) > box.middle.x + reach ||
                    std::max(a.y, b.y) < box.middle.y - reach || std::min(a.y, b.y) > box.middle.y + reach)
                    continue;
                if (!crosses(box, a, b)) continue;
                if (strict && untouchable(looks_[i])) return -1;
                ++count;
                break;
            }
        }
        return count;
    }

    // Numbers of points stand beside them, where no line runs.
    void placePoints(const Plot& plot) {
        for (const PlotPoint& point : plot.points)
            layout_.points.push_back({layout_.at(point.place), point.hover, point.look});
        for (std::size_t i = 0; i < plot.points.size(); ++i) {
            const std::string& text = plot.points[i].label;
            if (text.empty()) continue;
            const Pixel middle = layout_.points[i].middle;
            Box best;
            double least = 1e300;
            for (const double away : {12.0, 18.0, 26.0})
                for (int direction = 0; direction < 16; ++direction) {
                    const double angle = (direction * 22.5 - 45.0) * degree;
                    const double width = textWidth(text, labelSize) + 4.0;
                    const Box box{
                        {middle.x + (away + 0.3 * width - 3.0) * std::cos(angle), middle.y + away * std::sin(angle)},
                        width,
                        labelSize + 2.0,
                        0.0};
                    if (!inWindow(box) || !free(box)) continue;
                    const double penalty =
                        10.0 * strongLines(box) + linesThrough(box, drawn_.size(), false) + 0.1 * away;
                    if (penalty < least) {
                        least = penalty;
                        best = box;
                    }
                }
            if (least < 1e300) layout_.labels.push_back({best, text, plot.points[i].look, 0, true});
        }
    }
    int strongLines(const Box& box) const { return linesThrough(box, drawn_.size(), true) < 0 ? 1 : 0; }

    void placeLine(const PlotLine& line, std::size_t index) {
        PlacedLine& placed = layout_.lines[index];
        placed.look = line.look;
        placed.number = line.number;
        placed.hover = line.hover;
        const std::vector<Pixel>& points = drawn_[index];
        placed.pieces = {points};
        if (line.label.empty() || points.size() < 2) return;
        const Walk walk(points);
        const double width = textWidth(line.label, labelSize) + 6.0;
        constexpr double ends = 6.0, step = 9.0;
        double bestPenalty = 1e300, bestAt = 0.0;
        Box best;
        for (double s = ends + 0.5 * width; s <= walk.total() - ends - 0.5 * width; s += step) {
            const Box box = boxAt(walk, s, width);
            if (!inWindow(box)) continue;
            // A label does not stand where its line bends.
            constexpr double straight = 2.5;  // [px]
            const Pixel onLine = walk.at(s), a = walk.at(s - 0.5 * width), b = walk.at(s + 0.5 * width);
            if (length(onLine, between(a, b, 0.5)) > straight || length(a, b) < 0.97 * width) continue;
            if (!free(box)) continue;
            double penalty = 0.0;
            if (line.anchor) penalty += 0.02 * length(onLine, layout_.at(*line.anchor));
            if (penalty >= bestPenalty) continue;
            const int through = linesThrough(box, index, true);
            if (through < 0) continue;
            penalty += 4.0 * through;
            if (penalty < bestPenalty) {
                bestPenalty = penalty;
                bestAt = s;
                best = box;
            }
        }
        if (bestPenalty >= 1e300) return;
        layout_.labels.push_back({best, line.label, line.look, line.number, false});
        placed.pieces = {walk.piece(0.0, bestAt - 0.5 * width), walk.piece(bestAt + 0.5 * width, walk.total())};
    }

    // Turned with its line, and upright.
    static Box boxAt(const Walk& walk, double s, double width) {
        const Pixel a = walk.at(s - 0.5 * width), b = walk.at(s + 0.5 * width);
        double angle = std::atan2(b.y - a.y, b.x - a.x) / degree;
        if (angle > 90.0) angle -= 180.0;
        if (angle <= -90.0) angle += 180.0;
        return {between(a, b, 0.5), width, labelSize + 1.0, angle};
    }

    Layout& layout_;
    std::vector<std::vector<Pixel>> drawn_;
    std::vector<Look> looks_;
};

void fillLegend(const Plot& plot, Layout& layout) {
    constexpr double sample = 34.0, gap = 18.0;
    double used = 0.0;
    for (const LegendEntry& entry : plot.legend) {
        const double width = sample + textWidth(entry.text, labelSize) + gap;
        if (layout.legendRows.empty() || used + width > layout.right - layout.left + gap) {
            layout.legendRows.emplace_back();
            used = 0.0;
        }
        layout.legendRows.back().push_back(entry);
        used += width;
    }
}

// A text in rows no wider than the window, broken between words or, where it has them, between its parts.
std::vector<std::string> rowsOf(const std::string& text, double size, double width) {
    const std::string_view separator = text.find("; ") != std::string::npos ? "; " : " ";
    std::vector<std::string> rows;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(separator, at), text.size());
        const std::string part = text.substr(at, end - at);
        const std::string joined = rows.empty() ? part : rows.back() + std::string(separator) + part;
        if (rows.empty() || textWidth(joined, size) > width)
            rows.push_back(part);
        else
            rows.back() = joined;
        at = end + separator.size();
    }
    return rows;
}

double widestLabel(const std::vector<Tick>& ticks) {
    double widest = 0.0;
    for (const Tick& tick : ticks) widest = std::max(widest, textWidth(tick.label, labelSize));
    return widest;
}

}  // namespace

std::array<Pixel, 4> Box::corners() const {
    const double c = std::cos(angle * degree), s = std::sin(angle * degree), w = 0.5 * width, h = 0.5 * height;
    return {Pixel{middle.x - w * c + h * s, middle.y - w * s - h * c},
            Pixel{middle.x + w * c + h * s, middle.y + w * s - h * c},
            Pixel{middle.x + w * c - h * s, middle.y + w * s + h * c},
            Pixel{middle.x - w * c - h * s, middle.y - w * s + h * c}};
}

bool overlap(const Box& a, const Box& b) {
    const auto ca = a.corners(), cb = b.corners();
    const auto apartAlong = [&](double angle) {
        const double c = std::cos(angle), s = std::sin(angle);
        double lowA = 1e300, highA = -1e300, lowB = 1e300, highB = -1e300;
        for (int i = 0; i < 4; ++i) {
            const auto k = static_cast<std::size_t>(i);
            lowA = std::min(lowA, ca[k].x * c + ca[k].y * s);
            highA = std::max(highA, ca[k].x * c + ca[k].y * s);
            lowB = std::min(lowB, cb[k].x * c + cb[k].y * s);
            highB = std::max(highB, cb[k].x * c + cb[k].y * s);
        }
        return highA <= lowB || highB <= lowA;
    };
    for (const double angle : {a.angle, a.angle + 90.0, b.angle, b.angle + 90.0})
        if (apartAlong(angle * degree)) return false;
    return true;
}

bool crosses(const Box& box, const Pixel& from, const Pixel& to) {
    if (contains(box, from) || contains(box, to)) return true;
    const auto corners = box.corners();
    for (std::size_t i = 0; i < 4; ++i)
        if (segmentsCross(from, to, corners[i], corners[(i + 1) % 4])) return true;
    return false;
}

double textWidth(const std::string& text, double size) {
    double width = 0.0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if ((c & 0xC0U) == 0x80U) continue;  // not the first byte of a sign
        if (c >= 0xC0U)
            width += c == 0xE2U && text.compare(i, 3, "\u2009") == 0 ? 0.25 : 0.75;
        else if (c == 'i' || c == 'l' || c == 'j' || c == '.' || c == ',' || c == ' ' || c == '/' || c == '(' ||
                 c == ')')
            width += 0.36;
        else if (c == 'm' || c == 'w' || c == 'W' || c == 'M' || c == '%')
            width += 0.98;
        else
            width += c >= 'A' && c <= 'Z' ? 0.72 : 0.64;
    }
    return width * size;
}

Layout layOut(const Plot& plot, double width, double height) {
    Layout layout;
    layout.width = width;
    layout.height = height;
    constexpr double border = 16.0, titleHeight = 22.0, noteHeight = 18.0, legendHeight = 18.0;
    const double axisText = labelSize + 10.0;
    // The width of the labels on the left depends on the ticks, these on the height of the window: a first guess
    // serves.
    layout.yTicks = ticksOf(plot.y, height - 150.0);
    layout.left = border + textSize + 12.0 + widestLabel(layout.yTicks);
    layout.right = width - border - 8.0;
    if (plot.otherY) layout.right -= textSize + 10.0 + widestLabel(ticksOf(*plot.otherY, height - 150.0));
    fillLegend(plot, layout);
    constexpr double bold = 1.06;
    const double room = layout.right - layout.left;
    layout.titleRows = rowsOf(plot.title, bold * textSize, room);
    for (const std::string& note : plot.notes)
        for (std::string& row : rowsOf(note, labelSize, room)) layout.noteRows.push_back(std::move(row));
    layout.top = border + (layout.titleRows.empty() ? 0.0 : titleHeight - noteHeight) +
                 noteHeight * static_cast<double>(layout.titleRows.size() + layout.noteRows.size()) +
                 legendHeight * static_cast<double>(layout.legendRows.size()) + (plot.otherX ? 2.0 * axisText : 0.0);
    layout.bottom = height - border - textSize - axisText - 4.0;
    layout.xTicks = ticksOf(plot.x, layout.right - layout.left);
    layout.yTicks = ticksOf(plot.y, layout.bottom - layout.top);
    if (plot.otherX) layout.otherXTicks = ticksOf(*plot.otherX, layout.right - layout.left);
    if (plot.otherY) layout.otherYTicks = ticksOf(*plot.otherY, layout.bottom - layout.top);
    Labeller(layout, plot).place(plot);
    return layout;
}

}  // namespace frigana::charts
