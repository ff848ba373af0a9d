// frigana list: what a request may name.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "Listing.h"
#include "Names.h"
#include "StoredBlends.h"

namespace frigana::app {

namespace {

struct Options {
    std::string what, folder, report;
    bool json = false;
};

int listOneFluid(const Options& options) {
    catalogue::Fluid named;
    const std::string unknown = catalogue::findFluid(options.what, catalogue::FluidNames::of(options.folder),
                                                     catalogue::personalFolder(), named);
    if (!unknown.empty()) return complain(runtimeError, options.what + ' ' + unknown);
    const ListedFluid fluid = named.kind == 3 ? listOwn(options.folder, {named.blendName, named, {}})
                                              : listOne(options.folder, named.file, named.kind == 2);
    if (options.json)
        printOneJson(std::cout, fluid, options.folder);
    else
        printOne(std::cout, fluid, options.folder);
    return 0;
}

int listAll(const Options& options) {
    Listing listing;
    if (!listData(options.folder, catalogue::personalFolder(), listing))
        return complain(runtimeError, options.folder + ": there is no folder fluids in it");
    const auto report = std::find(catalogue::climateReports.begin(), catalogue::climateReports.end(), options.report);
    if (options.json)
        printListingJson(std::cout, listing);
    else
        printListing(std::cout, listing, static_cast<std::size_t>(report - catalogue::climateReports.begin()));
    return 0;
}

}  // namespace

Command addList(CLI::App& program) {
    CLI::App* line = program.add_subcommand(
        "list",
        "lists the fluids and blends that a request may name, by family, with designation, class and potential");
    const auto options = std::make_shared<Options>();
    line->add_option("NAME", options->what, "one fluid or blend by any of its names; or a data folder, as --data");
    line->add_option("--data", options->folder, dataFolderHelp);
    addClimateReport(*line, options->report);
    line->add_flag("--json", options->json, "writes all that is known as JSON");
    return {line, [&program, options] {
                std::error_code error;
                const bool folderNamed = std::filesystem::is_directory(options->what, error);
                if (folderNamed) options->folder = options->what;
                if (const int status = findDataFolder(program, options->folder, ": frigana list --data DIR"))
                    return status;
                return options->what.empty() || folderNamed ? listAll(*options) : listOneFluid(*options);
            }};
}

}  // namespace frigana::app
