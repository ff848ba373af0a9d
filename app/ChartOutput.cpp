#include "ChartOutput.h"

#include <iostream>
#include <set>

#include "Catalogue.h"
#include "Commands.h"
#include "Picture.h"
#include "ResultChart.h"

namespace frigana::app {

namespace {

constexpr double leastSide = 240.0, greatestSide = 8000.0;  // of a picture [px]

std::string pathFor(const std::string& picture, const std::string& circuit) {
    const auto dot = picture.find_last_of('.');
    if (circuit.empty() || dot == std::string::npos) return picture;
    return picture.substr(0, dot) + "-" + circuit + picture.substr(dot);
}

int drawColumns(const ChartOutput& output, const std::vector<const catalogue::RunResult*>& results,
                const charts::ChartStyle& style) {
    const auto colon = output.columns.find(':');
    if (colon == std::string::npos)
        return complain(usageError, output.columns + ": columns are named as density:temperature");
    const std::string names = output.columns.substr(0, colon), over = output.columns.substr(colon + 1);
    charts::Plot plot;
    std::string why;
    const bool drawn = results.size() == 1 ? charts::plotOfTable(*results.front(), names, over, style, plot, why)
                                           : charts::plotOfStudy(results, names, over, style, plot, why);
    if (!drawn) return complain(usageError, why);
    for (const std::string& picture : output.pictures)
        if (!charts::writePicture(plot, output.width, output.height, picture, why)) return complain(runtimeError, why);
    return 0;
}

}  // namespace

void addChartOptions(CLI::App& line, ChartOutput& output) {
    line.add_option("--chart", output.pictures, "draw the result: .svg, .png or .pdf; several times")
        ->take_all()
        ->expected(1);
    line.add_option("--chart-kind", output.kinds, "ph (log p-h, default), ts or hs; one for each --chart")
        ->check(CLI::IsMember({"ph", "ts", "hs"}, CLI::ignore_case))
        ->take_all()
        ->expected(1);
    line.add_option("--chart-columns", output.columns,
                    "a plain chart of columns of a table or of a study: density:temperature, or a,b:c");
    line.add_option("--chart-units", output.otherUnits, "a second pair of axes in SI, metric or imperial units")
        ->check(CLI::IsMember({"SI", "metric", "imperial"}, CLI::ignore_case));
    line.add_option("--chart-width", output.width, "of the picture in pixels")
        ->check(CLI::Range(leastSide, greatestSide));
    line.add_option("--chart-height", output.height, "of the picture in pixels")
        ->check(CLI::Range(leastSide, greatestSide));
}

std::vector<std::string> filesOf(const ChartOutput& output) {
    std::vector<std::string> files = output.pictures;
    if (!output.columns.empty()) return files;
    std::set<std::string> circuits;
    for (const catalogue::Request& request : catalogue::requests())
        for (const catalogue::Circuit& circuit : request.circuits)
            if (!circuit.key.empty()) circuits.emplace(circuit.key);
    for (const std::string& picture : output.pictures)
        for (const std::string& circuit : circuits)
            if (const std::string file = pathFor(picture, circuit); file != picture) files.push_back(file);
    return files;
}

int drawCharts(const ChartOutput& output, const std::vector<const catalogue::RunResult*>& results,
               catalogue::UnitSystem units, const std::string& dataFolder) {
    if (!output.wanted() || results.empty()) return 0;
    charts::ChartStyle style;
    style.units = units;
    if (!output.otherUnits.empty()) style.otherUnits = catalogue::unitSystemOf(output.otherUnits);
    style.width = output.width;
    style.height = output.height;
    for (const std::string& picture : output.pictures) {
        const auto format = charts::formatOf(picture);
        if (!format) return complain(usageError, picture + ": a picture has the extension .svg, .png or .pdf");
        if (!charts::canWrite(*format)) return complain(runtimeError, picture + ": " + charts::onlySvg);
    }
    if (!output.columns.empty()) return drawColumns(output, results, style);
    if (results.size() != 1)
        return complain(
            usageError,
            "several results are drawn by --chart-columns, as performance.cop_cooling:evaporator.temperature");
    for (std::size_t i = 0; i < output.pictures.size(); ++i) {
        const std::string kind = output.kinds.empty() ? "ph" : output.kinds[std::min(i, output.kinds.size() - 1)];
        charts::ResultPlots plots;
        std::string why;
        if (!charts::plotsOfResult(*results.front(), charts::kindOf(kind).value_or(diagrams::ChartKind::ph), style,
                                   dataFolder, plots, why))
            return complain(runtimeError, why);
        for (const std::string& remark : plots.remarks) std::cerr << "frigana: note: " << remark << '\n';
        for (const charts::ResultPlot& one : plots.plots)
            if (!charts::writePicture(one.plot, output.width, output.height, pathFor(output.pictures[i], one.circuit),
                                      why))
                return complain(runtimeError, why);
    }
    return 0;
}

}  // namespace frigana::app
