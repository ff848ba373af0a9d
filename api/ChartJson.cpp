#include "ChartJson.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "11_MainFrigana.h"
#include "Layout.h"
#include "NamedRequest.h"
#include "OPENFL.h"
#include "ResultChart.h"
#include "RunResult.h"
#include "StoredBlends.h"
#include "Svg.h"
#include "Tree.h"

namespace frigana::programs {

namespace {

using namespace catalogue;
using Json = nlohmann::ordered_json;

constexpr double leastSide = 240.0, greatestSide = 4000.0;  // of a picture [px]
constexpr std::size_t mostFluids = 20;

std::string_view nameOf(charts::Look look) {
    constexpr std::string_view names[] = {"dome",      "isotherm", "isentrope",    "isochore", "quality", "isobar",
                                          "isenthalp", "cycle",    "second_cycle", "ideal",    "series"};
    return names[static_cast<int>(look)];
}

double onAxis(const charts::PlotAxis& axis, double share) {
    if (axis.logarithmic) return axis.low * std::pow(axis.high / axis.low, share);
    return axis.low + share * (axis.high - axis.low);
}

Json placeJson(const charts::Plot& plot, const charts::Place& place) {
    return {onAxis(plot.x, place.x), onAxis(plot.y, place.y)};
}

Json axisJson(const charts::PlotAxis& axis) {
    return {{"title", axis.title}, {"low", axis.low}, {"high", axis.high}, {"logarithmic", axis.logarithmic}};
}

Json plotJson(const std::string& circuit, const charts::Plot& plot, const charts::ChartStyle& style) {
    Json lines = Json::array(), points = Json::array();
    for (const charts::PlotLine& line : plot.lines) {
        Json places = Json::array();
        for (const charts::Place& place : line.points) places.push_back(placeJson(plot, place));
        lines.push_back({{"look", nameOf(line.look)},
                         {"number", line.number},
                         {"label", line.label},
                         {"hover", line.hover},
                         {"points", std::move(places)}});
    }
    for (const charts::PlotPoint& point : plot.points)
        points.push_back({{"look", nameOf(point.look)},
                          {"label", point.label},
                          {"hover", point.hover},
                          {"place", placeJson(plot, point.place)}});
    return {{"circuit", circuit},
            {"title", plot.title},
            {"svg", charts::svgOf(plot, charts::layOut(plot, style.width, style.height))},
            {"x", axisJson(plot.x)},
            {"y", axisJson(plot.y)},
            {"lines", std::move(lines)},
            {"points", std::move(points)}};
}

// Reads what a body asks for, and draws it.
class Drawing {
  public:
    Drawing(const Node& body, const std::string& dataFolder) : body_(body), dataFolder_(dataFolder) {}
    Json drawn();
    std::vector<Problem> problems;

  private:
    void problem(const std::string& text) { problems.push_back({0, text}); }
    void readStyle();
    double readSide(const char* name, double usual);
    std::vector<diagrams::FluidSelection> fluidsNamed();
    void drawResult(const Node& request);
    void drawFluid();
    void drawVaporPressures();

    const Node& body_;
    const std::string& dataFolder_;
    diagrams::ChartKind kind_ = diagrams::ChartKind::ph;
    charts::ChartStyle style_;
    Json charts_ = Json::array(), remarks_ = Json::array();
};

double Drawing::readSide(const char* name, double usual) {
    const Node* side = body_.find(name);
    if (side == nullptr) return usual;
    if (side->kind == Node::Kind::number && side->number >= leastSide && side->number <= greatestSide)
        return side->number;
    problem(std::string(name) + " = " + side->shown() + ": allowed are " + numberText(leastSide) + " to " +
            numberText(greatestSide));
    return usual;
}

void Drawing::readStyle() {
    for (const auto& [key, node] : body_.members) {
        constexpr std::string_view known[] = {"kind",  "fluid", "fluids", "request",
                                              "units", "width", "height", "reference"};
        if (std::ranges::find(known, key) == std::end(known)) problem(key + ": a chart has no such key");
    }
    const Node* kind = body_.find("kind");
    const auto known = kind != nullptr ? charts::kindOf(kind->text) : std::nullopt;
    if (!known) problem("kind" + (kind != nullptr ? " = " + kind->shown() : "") + ": a chart is ph, ts, hs or pT");
    kind_ = known.value_or(kind_);
    if (const Node* units = body_.find("units")) {
        const auto system = unitSystemOf(units->text);
        if (!system) problem("units = " + units->shown() + ": allowed are SI, metric, imperial");
        style_.units = system.value_or(style_.units);
    }
    style_.width = readSide("width", style_.width);
    style_.height = readSide("height", style_.height);
}

std::vector<diagrams::FluidSelection> Drawing::fluidsNamed() {
    std::vector<const Node*> named;
    if (const Node* one = body_.find("fluid")) named.push_back(one);
    if (const Node* several = body_.find("fluids"))
        for (const Node& one : several->items) named.push_back(&one);
    std::string reference = "DEF";
    if (const Node* node = body_.find("reference")) {
        reference = node->text;
        constexpr std::string_view allowed[] = {"DEF", "IIR", "ASH", "NBP"};
        if (std::ranges::find(allowed, reference) == std::end(allowed))
            problem("reference = " + node->shown() + ": allowed are DEF, IIR, ASH, NBP");
    }
    if (named.empty() || named.size() > mostFluids)
        problem("a chart has a request, or a fluid, or up to " + std::to_string(mostFluids) + " fluids");
    const FluidNames& names = FluidNames::of(dataFolder_);
    std::vector<diagrams::FluidSelection> fluids;
    for (const Node* node : named) {
        Fluid fluid;
        fluid.referenceState = reference;
        const std::string unknown =
            findFluid(node->kind == Node::Kind::text ? node->text : "", names, personalFolder(), fluid);
        if (unknown.empty())
            fluids.push_back(charts::selectionOf(fluid, names));
        else
            problem("fluid = " + node->shown() + ": " + unknown);
    }
    return fluids;
}

void Drawing::drawResult(const Node& request) {
    const NamedRequest named =
        readNamed(studies::jsonOf(request), NamedFormat::json, FluidNames::of(dataFolder_), personalFolder());
    problems = named.problems;
    if (problems.empty() && named.runs.size() != 1) problem("a chart has one request");
    if (!problems.empty()) return;
    clearRecords();
    const RunResult result = runFilled(named.runs.front(), {dataFolder_, false});
    charts::ResultPlots plots;
    std::string why;
    if (!charts::plotsOfResult(result, kind_, style_, dataFolder_, plots, why)) return problem(why);
    for (const charts::ResultPlot& plot : plots.plots) charts_.push_back(plotJson(plot.circuit, plot.plot, style_));
    for (const std::string& remark : plots.remarks) remarks_.push_back(remark);
}

void Drawing::drawVaporPressures() {
    const auto fluids = fluidsNamed();
    if (!problems.empty()) return;
    charts::Plot plot;
    std::string why;
    if (!charts::plotOfVaporPressures(fluids, std::nullopt, std::nullopt, style_, plot, why)) return problem(why);
    charts_.push_back(plotJson("", plot, style_));
}

void Drawing::drawFluid() {
    const auto fluids = fluidsNamed();
    if (problems.empty() && fluids.size() != 1) problem("a chart of this kind has one fluid; pT takes several");
    if (!problems.empty()) return;
    diagrams::ChartFluid fluid;
    diagrams::ChartRequest request;
    request.kind = kind_;
    request.scales = charts::scalesOf(style_.units);
    request.lines = charts::linesFor(style_.width);
    diagrams::Dome dome;
    diagrams::FluidChart chart;
    std::string why;
    if (!fluid.load(fluids.front(), why) || !diagrams::makeFluidChart(fluid, request, dome, chart, why))
        return problem(why);
    charts_.push_back(plotJson("", charts::plotOf(chart, fluid.name(), style_), style_));
}

Json Drawing::drawn() {
    readStyle();
    if (!problems.empty()) return {};
    SETPATH(dataFolder_);
    if (const Node* request = body_.find("request"))
        drawResult(*request);
    else if (kind_ == diagrams::ChartKind::pt)
        drawVaporPressures();
    else
        drawFluid();
    return {{"charts", charts_}, {"remarks", remarks_}};
}

}  // namespace

std::vector<Problem> chartJson(std::string_view body, const std::string& dataFolder, std::string& json) {
    Node tree;
    if (auto problems = readJson(body, tree); !problems.empty()) return problems;
    Drawing drawing(tree, dataFolder);
    const Json drawn = drawing.drawn();
    json = drawn.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    return drawing.problems;
}

}  // namespace frigana::programs
