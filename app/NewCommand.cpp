// frigana new: a request with every key, ready to run.
#include <memory>

#include "Commands.h"
#include "NamedRequest.h"
#include "StoredBlends.h"

namespace frigana::app {

using namespace catalogue;

namespace {

struct Options {
    std::string name, fluid, units = "metric", data, out;
};

}  // namespace

Command addNew(CLI::App& program) {
    CLI::App* line =
        program.add_subcommand("new", "writes a request with every key, its options and limits, ready to run");
    const auto options = std::make_shared<Options>();
    line->add_option("NAME", options->name, "name of a request, as listed by frigana explain")->required();
    line->add_option("--fluid", options->fluid, "fluid or blend in place of the usual one");
    line->add_option("--units", options->units, "SI, metric (if left out) or imperial")
        ->check([](const std::string& name) {
            return unitSystemOf(name) ? std::string() : "allowed are SI, metric and imperial";
        });
    line->add_option("--out", options->out, "file to write; standard output if left out");
    line->add_option("--data", options->data, dataFolderHelp);
    return {line, [&program, options] {
                const Request* request = findRequest(options->name);
                if (request == nullptr)
                    return complain(usageError,
                                    options->name + ": there is no such request; frigana explain lists them");
                if (const int status = findDataFolder(program, options->data, " with --data")) return status;
                const FluidNames& names = FluidNames::of(options->data);
                std::optional<Fluid> fluid;
                if (!options->fluid.empty()) {
                    const std::string problem = findFluid(options->fluid, names, personalFolder(), fluid.emplace());
                    if (!problem.empty()) return complain(usageError, options->fluid + ' ' + problem);
                }
                const FilledRequest typical = typicalRequest(*request, fluid);
                const WritingStyle style{*unitSystemOf(options->units), true, true};
                return writeOutput(options->out, namedText(typical, names, style)) ? 0 : runtimeError;
            }};
}

}  // namespace frigana::app
