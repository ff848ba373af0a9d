// frigana REQUEST.fi1: one positional request, with its result beside it.
#include <fstream>
#include <iostream>
#include <memory>

#include "14_ErrorControl.h"
#include "ChartOutput.h"
#include "Commands.h"
#include "Platform.h"
#include "Report.h"

namespace frigana::app {

namespace {

struct Options {
    std::string request, data, json, csv;
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

int runPositional(const CLI::App& program, Options& options) {
    const auto& [request, data, json, csv, chart] = options;
    if (request.empty()) {
        std::cerr << "REQUEST is required\nRun with --help for more information.\n";
        return usageError;
    }
    Text255 path{std::string_view(request)};
    int position = 0;
    MYFINDFI1(path, position);
    if (position == 0 && (request.ends_with(".toml") || request.ends_with(".json")))
        return complain(usageError, request + ": a named request is run by frigana run " + request);
    if (!fits(request) || position == 0)
        return complain(usageError,
                        request + ": the path of a request has the extension .fi1 and at most 255 characters");
    if (const int status = findDataFolder(program, options.data, " with --data")) return status;
    const std::string address = data + "/frigana";
    if (!fits(address)) return complain(usageError, data + ": the path is too long");

    // A result of an earlier run shall never be taken for that of this one.
    removeFile(std::string(trimRight(path.slice(1, position - 4))) + ".fo1");

    const RunResult result = catalogue::runPositional(request, {data, false});
    const ReportStyle style{catalogue::UnitSystem::SI, true, request, data};
    if (json != "-" && csv != "-") printReport(std::cout, result, style);
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
    addChartOptions(program, options->chart);
    return [&program, options] { return runPositional(program, *options); };
}

}  // namespace frigana::app
