// frigana REQUEST.fi1: one positional request, with its result beside it.
#include <csignal>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>

#include "14_ErrorControl.h"
#include "ChartOutput.h"
#include "Commands.h"
#include "Folders.h"
#include "Outputs.h"
#include "PrivateFolder.h"
#include "Report.h"
#include "ScratchFiles.h"
#include "TextFile.h"

namespace frigana::app {

namespace {

struct Options {
    std::string request, data, json, csv, output, climateReport;
    ChartOutput chart;
};

using Print = void (*)(std::ostream&, const RunResult&, const ReportStyle&);

bool writeTo(const std::string& path, const RunResult& result, Print print, const ReportStyle& style) {
    if (path.empty()) return true;
    if (path == "-") {
        print(std::cout, result, style);
        return true;
    }
    std::ofstream file(path);
    print(file, result, style);
    file.close();
    return static_cast<bool>(file);
}

// An interrupted run leaves neither scratch files nor half a result.
void removeOnSignals() {
    for (const int signal : {SIGINT, SIGTERM}) {
        if (std::signal(signal, SIG_IGN) == SIG_IGN) continue;  // it was told to live through them
        std::signal(signal, [](int received) {
            if (!removeHalfFiles(received)) return;
            removeScratchFiles();
            std::signal(received, SIG_DFL);
            std::raise(received);
        });
    }
}

// Says what came of the run: a result on standard output, an error once, on standard error.
void report(const RunResult& result, const ReportStyle& style, bool silent) {
    const bool told = result.report.end == RunEnd::runtimeError || !result.report.formWritten;  // by the library
    if (silent || told) return;
    printReport(result.isDone() ? std::cout : std::cerr, result, style);
}

int runPositional(const CLI::App& program, Options& options) {
    const auto& [request, data, json, csv, output, climateReport, chart] = options;
    if (request.empty()) {
        std::cerr << "REQUEST is required\nRun with --help for more information.\n";
        return usageError;
    }
    Text255 path{std::string_view(request)};
    int position = 0;
    MYFINDFI1(path, position);
    if (position == 0 && (request.ends_with(".toml") || request.ends_with(".json")))
        return complain(usageError, request + ": a named request is run by frigana run " + request);
    if (!fits(request) || position == 0 || position != path.length())
        return complain(usageError, request +
                                        ": the path of a request ends with .fi1, the first of it, and has at most "
                                        "255 characters");
    std::vector<std::string> outputs{json, csv, output == "-" ? output : std::string()};
    for (const std::string& picture : filesOf(chart)) outputs.push_back(picture);
    if (const std::string clash = clashOf(filesAround(request, output), outputs); !clash.empty())
        return complain(usageError, clash + " would be written over");
    if (const int status = findDataFolder(program, options.data, " with --data")) return status;
    const std::string address = data + "/frigana";
    if (!fits(address)) return complain(usageError, data + ": the path is too long");

    removeOnSignals();
    // The result goes to standard output from a folder that lives as long as the run.
    std::optional<catalogue::PrivateFolder> own;
    if (output == "-") own.emplace();
    const std::string folder = own ? own->path() : output;
    if (own && folder.empty()) return complain(runtimeError, "no folder for temporary files can be made");
    if (!fits(folder)) return complain(usageError, folder + ": the path is too long");

    RunResult result = catalogue::runPositional(request, {data, false, folder});
    const ReportStyle style{catalogue::UnitSystem::SI, true, request, data,
                            catalogue::climateReportOf(climateReport).value_or(catalogue::newestReport)};
    addRemarks(result, style);
    if (own && result.resultExists) std::cout << std::ifstream(shownPath(result.report.resultPath.view())).rdbuf();
    report(result, style, json == "-" || csv == "-" || (own && result.isDone()));
    if (!writeTo(json, result, printJson, style)) return complain(runtimeError, json + ": cannot be written");
    if (!writeTo(csv, result, printCsv, style)) return complain(runtimeError, csv + ": cannot be written");
    if (result.isDone())
        if (const int status = drawCharts(chart, {&result}, catalogue::UnitSystem::metric, data)) return status;
    return exitStatus(result);
}

}  // namespace

std::function<int()> addPositionalRequest(CLI::App& program) {
    const auto options = std::make_shared<Options>();
    program.add_option("REQUEST", options->request,
                       "request file with the extension .fi1; its result is left beside it with the extension .fo1");
    program.add_option("--data", options->data, dataFolderHelp);
    program.add_option(
        "--json", options->json,
        "write every value with its name and unit to this file as JSON; - writes it here in place of the report");
    program.add_option("--csv", options->csv, "the same as CSV");
    program.add_option("--output", options->output,
                       "folder for the result instead of that of the request; - writes the result here in place of the "
                       "report");
    addClimateReport(program, options->climateReport);
    addChartOptions(program, options->chart);
    return [&program, options] { return runPositional(program, *options); };
}

}  // namespace frigana::app
