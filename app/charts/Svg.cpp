#include "Svg.h"

#include <cmath>
#include <cstdio>
#include <string_view>

namespace frigana::charts {

namespace {

// Colours of Okabe and Ito, which the colour-blind tell apart; every family has a dash of its own besides, so that the
// chart is read in black and white.
constexpr std::string_view styleSheet = R"(
svg{font-family:Arial,"Helvetica Neue","Liberation Sans","DejaVu Sans",sans-serif;font-size:12px;font-variant-numeric:tabular-nums}
.ground{fill:#fff}.frame{fill:none;stroke:#333;stroke-width:1}
.ticks{stroke:#333;stroke-width:1;fill:none}.text{fill:#222}.title{fill:#222;font-size:14px;font-weight:bold}
.axis{fill:#222;font-size:14px}.note{fill:#444}
.line{fill:none;stroke-width:.8;stroke-linejoin:round}
.dome{stroke:#333;stroke-width:2}
.isotherm{stroke:#c6511b}.isentrope{stroke:#007a5a;stroke-dasharray:9 2 2 2}.isochore{stroke:#0067a5;stroke-dasharray:6 3}
.quality{stroke:#8a8a8a;stroke-dasharray:1 3;stroke-width:1}.isobar{stroke:#666}.isenthalp{stroke:#9a6a00;stroke-dasharray:12 3}
.cycle,.secondCycle{stroke:#a3267f;stroke-width:2}.secondCycle{stroke:#d98300}
.ideal{stroke:#a3267f;stroke-width:1;stroke-dasharray:3 3}.ideal.second{stroke:#d98300}
.s0{stroke:#0067a5}.s1{stroke:#c6511b;stroke-dasharray:8 3}.s2{stroke:#007a5a;stroke-dasharray:2 2}.s3{stroke:#a3267f;stroke-dasharray:10 2 2 2}
.s4{stroke:#9a6a00;stroke-dasharray:5 2}.s5{stroke:#444;stroke-dasharray:1 2}.series{stroke-width:1.6}
.label{text-anchor:middle;paint-order:stroke;stroke:#fff;stroke-width:3px;stroke-linejoin:round}
.label.lisotherm,.t1{fill:#a8400f}.label.lisentrope,.t2{fill:#00664b}.label.lisochore,.t0{fill:#00578c}.label.lquality{fill:#666}
.label.lisobar{fill:#444}.label.lisenthalp,.t4{fill:#7d5600}.label.lcycle,.t3{fill:#861f68}.label.lsecondCycle{fill:#9c5d00}.t5{fill:#444}
.label.ldome{fill:#333}.point{stroke:#fff;stroke-width:1;fill:#a3267f}.point.pdome{fill:#333}.point.psecondCycle{fill:#d98300}
@media (prefers-color-scheme:dark){
.ground{fill:#15171a}.frame,.ticks{stroke:#bbb}.text,.title,.axis{fill:#e4e4e4}.note{fill:#bbb}.dome{stroke:#ddd}
.isotherm{stroke:#e9823f}.isentrope{stroke:#2fbf92}.isochore{stroke:#56b4e9}.quality{stroke:#888}.isobar{stroke:#aaa}.isenthalp{stroke:#d9a520}
.cycle,.ideal{stroke:#e07cc0}.secondCycle,.ideal.second{stroke:#f0b040}.s0{stroke:#56b4e9}.s1{stroke:#e9823f}.s2{stroke:#2fbf92}.s3{stroke:#e07cc0}.s4{stroke:#d9a520}.s5{stroke:#bbb}
.label{stroke:#15171a}.label.lisotherm,.t1{fill:#f0a070}.label.lisentrope,.t2{fill:#5ad0aa}.label.lisochore,.t0{fill:#8fcdf0}.label.lquality{fill:#aaa}
.label.lisobar,.t5{fill:#ccc}.label.lisenthalp,.t4{fill:#e5bf5c}.label.lcycle,.t3{fill:#eea6d5}.label.lsecondCycle{fill:#f5c878}.label.ldome{fill:#ddd}
.point{stroke:#15171a;fill:#e07cc0}.point.pdome{fill:#ddd}.point.psecondCycle{fill:#f0b040}}
)";

constexpr int seriesLooks = 6;

std::string classOf(Look look, int number) {
    static constexpr std::string_view names[] = {"dome",        "isotherm", "isentrope", "isochore",
                                                 "quality",     "isobar",   "isenthalp", "cycle",
                                                 "secondCycle", "ideal",    "series"};
    std::string name(names[static_cast<std::size_t>(look)]);
    if (look == Look::series) name += " s" + std::to_string(number % seriesLooks);
    if (look == Look::ideal && number > 0) name += " second";
    return name;
}
std::string labelClassOf(Look look, int number) {
    return look == Look::series ? "t" + std::to_string(number % seriesLooks) : "l" + classOf(look, number);
}

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '>')
            result += "&gt;";
        else if (c == '"')
            result += "&quot;";
        else if (static_cast<unsigned char>(c) >= ' ')
            result += c;
    }
    return result;
}

// A coordinate with one decimal, without what says nothing.
std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", value);
    std::string result = text;
    if (result.ends_with(".0")) result.resize(result.size() - 2);
    return result == "-0" ? "0" : result;
}

class Writer {
  public:
    Writer(const Plot& plot, const Layout& layout) : plot_(plot), l_(layout) {}

    std::string write() {
        const std::string w = number(l_.width), h = number(l_.height);
        out_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + w + "\" height=\"" + h + "\" viewBox=\"0 0 " + w +
               " " + h + "\" role=\"img\">\n<title>" + escaped(plot_.title) + "</title>\n<style>" +
               std::string(styleSheet) + "</style>\n<rect class=\"ground\" width=\"" + w + "\" height=\"" + h +
               "\"/>\n";
        heading();
        lines();
        axes();
        points();
        labels();
        out_ += "</svg>\n";
        return std::move(out_);
    }

  private:
    void text(const std::string& name, double x, double y, const std::string& content, const std::string& more = "") {
        out_ += "<text class=\"" + name + "\" x=\"" + number(x) + "\" y=\"" + number(y) + "\"" + more + ">" +
                escaped(content) + "</text>\n";
    }

    void heading() {
        double y = 28.0;
        for (const std::string& row : l_.titleRows) {
            text("title", l_.left, y, row);
            y += 18.0;
        }
        for (const std::string& row : l_.noteRows) {
            text("note", l_.left, y, row);
            y += 18.0;
        }
        for (const auto& row : l_.legendRows) {
            double x = l_.left;
            for (const LegendEntry& entry : row) {
                out_ += "<path class=\"line " + classOf(entry.look, entry.number) + "\" d=\"M" + number(x) + " " +
                        number(y - 4.0) + "h28\"/>\n";
                text("text", x + 34.0, y, entry.text);
                x += 52.0 + textWidth(entry.text, labelSize);
            }
            y += 18.0;
        }
    }

    void lines() {
        for (const PlacedLine& line : l_.lines) {
            std::string path;
            for (const auto& piece : line.pieces) {
                if (piece.size() < 2) continue;
                for (std::size_t i = 0; i < piece.size(); ++i)
                    path += (i == 0 ? "M" : i == 1 ? "L" : " ") + number(piece[i].x) + " " + number(piece[i].y);
            }
            if (path.empty()) continue;
            out_ += "<path class=\"line " + classOf(line.look, line.number) + "\" d=\"" + path + "\"";
            out_ += line.hover.empty() ? "/>\n" : "><title>" + escaped(line.hover) + "</title></path>\n";
        }
    }

    void axes() {
        const double w = l_.right - l_.left, h = l_.bottom - l_.top;
        out_ += "<rect class=\"frame\" x=\"" + number(l_.left) + "\" y=\"" + number(l_.top) + "\" width=\"" +
                number(w) + "\" height=\"" + number(h) + "\"/>\n";
        ticks(l_.xTicks, true, false);
        ticks(l_.yTicks, false, false);
        ticks(l_.otherXTicks, true, true);
        ticks(l_.otherYTicks, false, true);
        const std::string middle = " text-anchor=\"middle\"";
        text("axis", l_.left + 0.5 * w, l_.height - 14.0, plot_.x.title, middle);
        vertical(26.0, plot_.y.title);
        if (plot_.otherX) text("axis", l_.left + 0.5 * w, l_.top - 26.0, plot_.otherX->title, middle);
        if (plot_.otherY) vertical(l_.width - 12.0, plot_.otherY->title);
    }

    void vertical(double x, const std::string& title) {
        const double y = 0.5 * (l_.top + l_.bottom);
        text("axis", x, y, title,
             " text-anchor=\"middle\" transform=\"rotate(-90 " + number(x) + " " + number(y) + ")\"");
    }

    void ticks(const std::vector<Tick>& all, bool horizontal, bool other) {
        if (all.empty()) return;
        std::string path;
        for (const Tick& tick : all) {
            const double size = tick.label.empty() ? 4.0 : 7.0, inward = other ? 1.0 : -1.0;
            if (horizontal)
                path += "M" + number(l_.left + tick.place * (l_.right - l_.left)) + " " +
                        number(other ? l_.top : l_.bottom) + "v" + number(inward * size);
            else
                path += "M" + number(other ? l_.right : l_.left) + " " +
                        number(l_.bottom - tick.place * (l_.bottom - l_.top)) + "h" + number(-inward * size);
        }
        out_ += "<path class=\"ticks\" d=\"" + path + "\"/>\n";
        for (const Tick& tick : all) {
            if (tick.label.empty()) continue;
            if (horizontal)
                text("text", l_.left + tick.place * (l_.right - l_.left), other ? l_.top - 7.0 : l_.bottom + 17.0,
                     tick.label, " text-anchor=\"middle\"");
            else
                text("text", other ? l_.right + 6.0 : l_.left - 6.0,
                     l_.bottom - tick.place * (l_.bottom - l_.top) + 4.0, tick.label,
                     other ? "" : " text-anchor=\"end\"");
        }
    }

    void points() {
        for (const PlacedPoint& point : l_.points) {
            out_ += "<circle class=\"point p" + classOf(point.look, 0) + "\" cx=\"" + number(point.middle.x) +
                    "\" cy=\"" + number(point.middle.y) + "\" r=\"3.5\"";
            out_ += point.hover.empty() ? "/>\n" : "><title>" + escaped(point.hover) + "</title></circle>\n";
        }
    }

    void labels() {
        for (const PlacedLabel& label : l_.labels) {
            const Box& box = label.box;
            // The middle of the digits, not of the line of text, stands on the curve.
            constexpr double toBaseline = 4.2;
            std::string transform = "translate(" + number(box.middle.x) + " " + number(box.middle.y) + ")";
            if (std::fabs(box.angle) > 0.05) transform += " rotate(" + number(box.angle) + ")";
            out_ += "<text class=\"label " + labelClassOf(label.look, label.number) + "\" transform=\"" + transform +
                    "\" y=\"" + number(toBaseline) + "\">" + escaped(label.text) + "</text>\n";
        }
    }

    const Plot& plot_;
    const Layout& l_;
    std::string out_;
};

}  // namespace

std::string svgOf(const Plot& plot, const Layout& layout) {
    return Writer(plot, layout).write();
}

}  // namespace frigana::charts
