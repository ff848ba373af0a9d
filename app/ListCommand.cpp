// frigana list: what a request may name.
#include <iostream>
#include <memory>

#include "Commands.h"
#include "Listing.h"

namespace frigana::app {

Command addList(CLI::App& program) {
    CLI::App* line = program.add_subcommand(
        "list", "lists the fluids and blends that a request may name, with potential, safety class and components");
    const auto folder = std::make_shared<std::string>();
    line->add_option("DIR,--data", *folder, dataFolderHelp);
    return {line, [&program, folder] {
                if (const int status = findDataFolder(program, *folder, ": frigana list DIR")) return status;
                Listing listing;
                if (!listData(*folder, listing))
                    return complain(runtimeError, *folder + ": there is no folder fluids in it");
                printListing(std::cout, listing);
                return 0;
            }};
}

}  // namespace frigana::app
