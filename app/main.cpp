// The program frigana: runs one request and says what came of it, or checks the data of an installation.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "14_ErrorControl.h"
#include "DataReport.h"
#include "Installation.h"
#include "Listing.h"
#include "Platform.h"
#include "Report.h"
#include "frigana.h"

namespace {

namespace fs = std::filesystem;
using namespace frigana;

constexpr int usageError = 1;
constexpr int runtimeError = 3;
constexpr int faultyData = 4;

int complain(int status, const std::string& text) {
    std::cerr << "frigana: " << text << '\n';
    return status;
}

// The entry cuts paths at 255 characters: a request or an installation that lies deeper is told so.
bool fits(const std::string& path) {
    return path.size() <= static_cast<std::size_t>(Text255::size);
}

bool writeTo(const std::string& path, const app::RunResult& result,
             void (*print)(std::ostream&, const app::RunResult&)) {
    if (path.empty()) return true;
    if (path == "-") {
        print(std::cout, result);
        return true;
    }
    std::ofstream file(path);
    print(file, result);
    file.close();
    return static_cast<bool>(file);
}

int checkDataOf(std::string folder) {
    if (folder.empty()) folder = app::defaultInstallation();
    if (folder.empty()) return complain(runtimeError, "no data folder found; name one: frigana check-data DIR");
    if (!fits(folder)) return complain(usageError, folder + ": the path is too long");
    app::DataCheckResult result;
    if (!app::checkData(folder, result)) return complain(runtimeError, folder + ": there is no folder fluids in it");
    app::printDataCheck(std::cout, result);
    return result.clean() ? 0 : faultyData;
}

int listDataOf(std::string folder) {
    if (folder.empty()) folder = app::defaultInstallation();
    if (folder.empty()) return complain(runtimeError, "no data folder found; name one: frigana list DIR");
    if (!fits(folder)) return complain(usageError, folder + ": the path is too long");
    app::Listing listing;
    if (!app::listData(folder, listing)) return complain(runtimeError, folder + ": there is no folder fluids in it");
    app::printListing(std::cout, listing);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App options{
        "Runs one refrigeration request and says what came of it, or lists or checks the data of an installation.\n"
        "Exit status: 0 done; 1 wrong command line; 2 the request was refused: code and message are shown\n"
        "and stand in the result file; 3 the request cannot be read, asks for what there is not, or a file\n"
        "cannot be written; 4 the data have faults.",
        "frigana"};
    std::string request, data, json, csv, checked, listed;
    options.add_option("REQUEST", request,
                       "request file with the extension .fi1; its result is left beside it with the extension .fo1");
    options.add_option(
        "--data", data,
        "folder that holds the folders fluids and mixtures (default: the one that came with this program)");
    options.add_option(
        "--json", json,
        "write every value with its name and unit to this file as JSON; - writes it here in place of the report");
    options.add_option("--csv", csv, "the same as CSV");
    options.set_version_flag("--version", "frigana " FRIGANA_VERSION);
    CLI::App* checkData = options.add_subcommand(
        "check-data", "checks every fluid, the mixing parameters and every mixture of a data folder");
    checkData->add_option(
        "DIR", checked,
        "folder that holds the folders fluids and mixtures (default: the one that came with this program)");
    CLI::App* list = options.add_subcommand(
        "list", "lists the fluids and blends that a request may name, with potential, safety class and components");
    list->add_option(
        "DIR", listed,
        "folder that holds the folders fluids and mixtures (default: the one that came with this program)");
    for (CLI::App* subcommand : {checkData, list}) subcommand->add_option("--data", data, "the same as DIR");
    try {
        options.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return options.exit(error) == 0 ? 0 : usageError;
    }

    if (checkData->parsed()) return checkDataOf(checked.empty() ? data : checked);
    if (list->parsed()) return listDataOf(listed.empty() ? data : listed);
    if (request.empty()) {
        std::cerr << "REQUEST is required\nRun with --help for more information.\n";
        return usageError;
    }

    Text255 path{std::string_view(request)};
    int position = 0;
    MYFINDFI1(path, position);
    if (!fits(request) || position == 0)
        return complain(usageError,
                        request + ": the path of a request has the extension .fi1 and at most 255 characters");
    if (data.empty()) data = app::defaultInstallation();
    if (data.empty()) return complain(runtimeError, "no data folder found; name one with --data");
    const std::string address = data + "/frigana";
    if (!fits(address)) return complain(usageError, data + ": the path is too long");

    // A result of an earlier run shall never be taken for that of this one.
    const std::string resultPath(trimRight(path.slice(1, position - 4)));
    removeFile(resultPath + ".fo1");

    app::RunResult result;
    app::gatherEntries(result.entries);
    Frigana(request.data(), address.data(), static_cast<int>(request.size()), static_cast<int>(address.size()));
    listenToResult(nullptr, nullptr);

    result.report = runReport;
    result.resultExists = fileExists(runReport.resultPath.view());
    if (json != "-" && csv != "-") app::printReport(std::cout, result);
    if (!writeTo(json, result, app::printJson)) return complain(runtimeError, json + ": cannot be written");
    if (!writeTo(csv, result, app::printCsv)) return complain(runtimeError, csv + ": cannot be written");
    return app::exitStatus(result);
}
