// frigana check-data: the data files of an installation against themselves.
#include <iostream>
#include <memory>

#include "Commands.h"
#include "DataReport.h"

namespace frigana::app {

Command addCheckData(CLI::App& program) {
    CLI::App* line = program.add_subcommand(
        "check-data", "checks every fluid, the mixing parameters and every mixture of a data folder");
    const auto folder = std::make_shared<std::string>();
    line->add_option("DIR,--data", *folder, dataFolderHelp);
    return {line, [&program, folder] {
                if (const int status = findDataFolder(program, *folder, ": frigana check-data DIR")) return status;
                DataCheckResult result;
                if (!checkData(*folder, result))
                    return complain(runtimeError, *folder + ": there is no folder fluids in it");
                printDataCheck(std::cout, result);
                return result.clean() ? 0 : faultyData;
            }};
}

}  // namespace frigana::app
