// frigana chart: charts of fluids as pictures.
#include <iostream>
#include <memory>
#include <vector>

#include "Commands.h"
#include "Names.h"
#include "OPENFL.h"
#include "Outputs.h"
#include "Picture.h"
#include "StateChart.h"
#include "StoredBlends.h"
#include "Units.h"

namespace frigana::app {

namespace {

struct ChartOptions {
    std::string kind, data, units = "metric", otherUnits, from, to, reference = "DEF";
    std::vector<std::string> fluids, pictures;
    double width = 1200.0, height = 800.0;
};

constexpr double leastSide = 240.0, greatestSide = 8000.0;  // of a picture [px]

// A temperature as a person writes it.
//   Returned  (value)  0, or the exit status after a complaint
int readTemperature(const std::string& text, catalogue::UnitSystem units, const char* option,
                    std::optional<double>& value) {
    if (text.empty()) return 0;
    const catalogue::Parsed parsed = catalogue::parseQuantity(
        text, catalogue::Quantity::temperature, &catalogue::unitIn(units, catalogue::Quantity::temperature));
    if (!parsed.problem.empty()) return complain(usageError, std::string(option) + " " + text + ": " + parsed.problem);
    value = parsed.value;
    return 0;
}

int findFluids(const ChartOptions& options, std::vector<diagrams::FluidSelection>& selections) {
    const catalogue::FluidNames& names = catalogue::FluidNames::of(options.data);
    for (const std::string& name : options.fluids) {
        catalogue::Fluid fluid;
        fluid.referenceState = options.reference;
        const std::string unknown = catalogue::findFluid(name, names, catalogue::personalFolder(), fluid);
        if (!unknown.empty()) return complain(usageError, name + ' ' + unknown);
        selections.push_back(charts::selectionOf(fluid, names));
    }
    return 0;
}

int draw(const charts::Plot& plot, const ChartOptions& options) {
    std::string why;
    for (const std::string& picture : options.pictures)
        if (!charts::writePicture(plot, options.width, options.height, picture, why))
            return complain(runtimeError, why);
    return 0;
}

int run(ChartOptions& options) {
    const std::optional<diagrams::ChartKind> kind = charts::kindOf(options.kind);
    if (!kind) return complain(usageError, options.kind + ": a chart is ph, ts, hs or pT");
    charts::ChartStyle style;
    style.width = options.width;
    style.height = options.height;
    const auto units = catalogue::unitSystemOf(options.units);
    if (!units) return complain(usageError, options.units + ": units are SI, metric or imperial");
    style.units = *units;
    if (!options.otherUnits.empty()) {
        style.otherUnits = catalogue::unitSystemOf(options.otherUnits);
        if (!style.otherUnits) return complain(usageError, options.otherUnits + ": units are SI, metric or imperial");
    }
    if (const std::string clash = clashOf({}, options.pictures); !clash.empty())
        return complain(usageError, clash + " would be written over");
    for (const std::string& picture : options.pictures) {
        const auto format = charts::formatOf(picture);
        if (!format) return complain(usageError, picture + ": a picture has the extension .svg, .png or .pdf");
        if (!charts::canWrite(*format)) return complain(runtimeError, picture + ": " + charts::onlySvg);
    }
    std::optional<double> from, to;
    if (const int status = readTemperature(options.from, *units, "--from", from)) return status;
    if (const int status = readTemperature(options.to, *units, "--to", to)) return status;
    if (from && to && !(*from < *to)) return complain(usageError, "--from is not below --to");
    std::vector<diagrams::FluidSelection> fluids;
    if (const int status = findFluids(options, fluids)) return status;
    SETPATH(options.data);

    charts::Plot plot;
    std::string why;
    if (*kind == diagrams::ChartKind::pt) {
        if (!charts::plotOfVaporPressures(fluids, from, to, style, plot, why)) return complain(runtimeError, why);
        return draw(plot, options);
    }
    if (fluids.size() != 1) return complain(usageError, "a chart of this kind has one fluid; pT takes several");
    diagrams::ChartFluid fluid;
    diagrams::ChartRequest request;
    request.kind = *kind;
    request.scales = charts::scalesOf(*units);
    request.lines = charts::linesFor(options.width);
    request.from = from;
    request.to = to;
    diagrams::Dome dome;
    diagrams::FluidChart chart;
    if (!fluid.load(fluids.front(), why) || !diagrams::makeFluidChart(fluid, request, dome, chart, why))
        return complain(runtimeError, why);
    return draw(charts::plotOf(chart, fluid.name(), style), options);
}

}  // namespace

Command addChart(CLI::App& program) {
    CLI::App* line =
        program.add_subcommand("chart", "draws a chart of a fluid (ph, ts, hs) or the vapor pressures of several (pT)");
    const auto options = std::make_shared<ChartOptions>();
    line->add_option("KIND", options->kind, "ph (log p-h), ts (T-s), hs (h-s) or pT (vapor pressure)")->required();
    line->add_option("FLUID", options->fluids, "fluid or blend, as R134a or propane")->required();
    line->add_option("--out", options->pictures, "picture to write, .svg, .png or .pdf; several times; - for SVG here")
        ->required()
        ->take_all()
        ->expected(1);
    line->add_option("--from", options->from, "lowest temperature, as -60C");
    line->add_option("--to", options->to, "highest temperature");
    line->add_option("--units", options->units, "SI, metric (default) or imperial");
    line->add_option("--other-units", options->otherUnits, "a second pair of axes in these units");
    line->add_option("--reference", options->reference, "zero of enthalpy and entropy: IIR, ASH, NBP or DEF (default)")
        ->check(CLI::IsMember({"IIR", "ASH", "NBP", "DEF"}));
    line->add_option("--width", options->width, "of the picture in pixels")->check(CLI::Range(leastSide, greatestSide));
    line->add_option("--height", options->height, "of the picture in pixels")
        ->check(CLI::Range(leastSide, greatestSide));
    line->add_option("--data", options->data, dataFolderHelp);
    return {line, [&program, options] {
                if (const int status = findDataFolder(program, options->data, " with --data")) return status;
                return run(*options);
            }};
}

}  // namespace frigana::app
