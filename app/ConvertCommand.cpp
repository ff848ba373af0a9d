// frigana convert: positional requests to named ones and back.
#include <iostream>
#include <memory>

#include "Commands.h"
#include "NamedRequest.h"
#include "Outputs.h"
#include "RunResult.h"
#include "StoredBlends.h"

namespace frigana::app {

using namespace catalogue;

namespace {

struct Options {
    std::string file, out, units = "metric", data;
};

int toNamed(const Options& options, const std::string& text) {
    FilledRequest filled;
    const std::string problem = readPositionalText(text, filled);
    if (!problem.empty()) return complain(runtimeError, options.file + ": " + problem);
    const WritingStyle style{*unitSystemOf(options.units), false, true};
    const std::string named = namedText(filled, FluidNames::of(options.data), style);
    // What no named request may say is told here, not when it is run.
    const NamedRequest again = readNamed(named, NamedFormat::toml, FluidNames::of(options.data));
    for (const Problem& one : again.problems) std::cerr << message(options.file, {0, one.text}) << '\n';
    if (!again.problems.empty()) return refused;
    return writeOutput(options.out, named) ? 0 : runtimeError;
}

int toPositional(const Options& options, const std::string& text, NamedFormat format) {
    const NamedRequest named = readNamed(text, format, FluidNames::of(options.data), personalFolder());
    for (const Problem& problem : named.problems) std::cerr << message(options.file, problem) << '\n';
    if (!named.problems.empty()) return named.request == nullptr ? runtimeError : refused;
    if (named.runs.size() != 1)
        return complain(refused, options.file + ": a positional request has one point, this one has " +
                                     std::to_string(named.runs.size()));
    if (named.runs.front().hasListedBlend())
        return complain(refused, options.file +
                                     ": a positional cycle request lists no components; store the blend "
                                     "with store-blend and name its file");
    return writeOutput(options.out, positionalText(named.runs.front())) ? 0 : runtimeError;
}

}  // namespace

Command addConvert(CLI::App& program) {
    CLI::App* line = program.add_subcommand("convert", "converts a positional request to a named one, and back");
    const auto options = std::make_shared<Options>();
    line->add_option("FILE", options->file, "request: .fi1, .toml or .json; - reads standard input")->required();
    line->add_option("--out", options->out, "file to write; standard output if left out");
    line->add_option("--units", options->units, "units of a named request: SI, metric (if left out) or imperial")
        ->check([](const std::string& name) {
            return unitSystemOf(name) ? std::string() : "allowed are SI, metric and imperial";
        });
    line->add_option("--data", options->data, dataFolderHelp);
    return {line, [&program, options] {
                if (const int status = findDataFolder(program, options->data, " with --data")) return status;
                if (const std::string clash = clashOf({options->file}, {options->out}); !clash.empty())
                    return complain(usageError, clash + " would be written over");
                std::string text;
                if (!readInput(options->file, text)) return runtimeError;
                switch (kindOf(options->file, text)) {
                    case FileKind::positional:
                        return toNamed(*options, text);
                    case FileKind::json:
                        return toPositional(*options, text, NamedFormat::json);
                    default:
                        return toPositional(*options, text, NamedFormat::toml);
                }
            }};
}

}  // namespace frigana::app
