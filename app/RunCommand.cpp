// frigana run: requests of any form, named or positional.
#include <fstream>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "ChartOutput.h"
#include "Commands.h"
#include "NamedRequest.h"
#include "Outputs.h"
#include "Remarks.h"
#include "Report.h"
#include "StoredBlends.h"

namespace frigana::app {

namespace {

using namespace catalogue;

struct Options {
    std::vector<std::string> files;
    std::string data, json, csv, units, fi1, fo1, climateReport;
    bool quiet = false, strict = false;
    ChartOutput chart;
};

// A file whose request cannot be run, with all that is wrong with it.
struct Refused {
    std::string file;
    std::vector<Problem> problems;
    int status;
};

class Runner {
  public:
    explicit Runner(Options& options) : options_(options) {}

    int run() {
        if (!options_.units.empty()) units_ = unitSystemOf(options_.units);
        if (const std::string clash = clashOfOutputs(); !clash.empty())
            return complain(usageError, clash + " would be written over");
        for (const std::string& file : options_.files) {
            runOneFile(file);
            if (isInterrupted()) break;
        }
        releaseSignals();
        if (!keepTexts()) return runtimeError;
        if (!report()) return runtimeError;
        if (const int status = draw()) return status;
        return status_;
    }

  private:
    const std::string blends_ = personalFolder();

    std::string clashOfOutputs() const {
        std::vector<std::string> inputs;
        for (const std::string& file : options_.files) {
            inputs.push_back(file);
            if (!file.ends_with(".fi1")) continue;
            for (const std::string& around : filesAround(file, {})) inputs.push_back(around);
        }
        std::vector<std::string> outputs = filesOf(options_.chart);
        outputs.insert(outputs.end(), {options_.json, options_.csv, options_.fi1, options_.fo1});
        return clashOf(inputs, outputs);
    }

    bool keeping() const { return !options_.fi1.empty() || !options_.fo1.empty(); }

    void runOneFile(const std::string& file) {
        std::string text;
        if (!readInput(file, text)) {
            raise(runtimeError);
            return;
        }
        holdSignals();
        switch (kindOf(file, text)) {
            case FileKind::positional:
                return runPositionalFile(file, text);
            case FileKind::json:
                return runNamed(file, text, NamedFormat::json);
            case FileKind::toml:
                return runNamed(file, text, NamedFormat::toml);
        }
    }

    void add(RunResult result, const std::string& file, UnitSystem units, bool resultFile) {
        const ReportStyle style{units_.value_or(units), resultFile, file, options_.data,
                                climateReportOf(options_.climateReport).value_or(newestReport)};
        addRemarks(result, style);
        raise(exitStatus(result));
        if (options_.strict && remarks::anyWrong(result.remarks)) raise(uselessResult);
        results_.push_back({std::move(result), style});
    }

    void runPositionalFile(const std::string& file, const std::string& text) {
        if (file != "-") {
            if (!fits(file)) {
                complain(usageError, file + ": the path is too long");
                return raise(usageError);
            }
            firstOfFile_.push_back(results_.size());
            return add(runPositional(file, {options_.data, keeping()}), file, UnitSystem::SI, true);
        }
        FilledRequest filled;
        const std::string problem = readPositionalText(text, filled);
        if (!problem.empty()) {
            refused_.push_back({shownName(file), {{0, problem}}, runtimeError});
            return raise(runtimeError);
        }
        firstOfFile_.push_back(results_.size());
        add(runFilled(filled, {options_.data, keeping()}), shownName(file), UnitSystem::SI, false);
    }

    void runNamed(const std::string& file, const std::string& text, NamedFormat format) {
        const NamedRequest named = readNamed(text, format, FluidNames::of(options_.data), blends_);
        if (!named.problems.empty()) {
            const int status = named.request == nullptr ? runtimeError : refused;
            refused_.push_back({shownName(file), named.problems, status});
            return raise(status);
        }
        firstOfFile_.push_back(results_.size());
        for (const FilledRequest& filled : named.runs) {
            if (isInterrupted()) return;
            add(runFilled(filled, {options_.data, keeping(), {}, blends_}), shownName(file), named.units, false);
        }
    }

    static std::string shownName(const std::string& file) { return file == "-" ? "standard input" : file; }
    void raise(int status) { status_ = std::max(status_, status); }

    bool keepTexts() {
        if (!keeping()) return true;
        if (results_.size() != 1) {
            complain(runtimeError,
                     "--fi1 and --fo1 keep one request and its result; here are " + std::to_string(results_.size()));
            return false;
        }
        const RunResult& result = results_.front().result;
        if (!options_.fi1.empty() && result.input.hasListedBlend())
            std::cerr << "frigana: note: " << options_.fi1
                      << " names the blend by a mixture file, which store-blend makes; a positional cycle request "
                         "lists no components\n";
        return (options_.fi1.empty() || writeOutput(options_.fi1, result.positional)) &&
               (options_.fo1.empty() || writeOutput(options_.fo1, result.resultText));
    }

    template <class Print>
    bool writeTo(const std::string& path, Print print) {
        if (path.empty()) return true;
        if (path == "-") {
            print(std::cout);
            return true;
        }
        std::ofstream file(path);
        print(file);
        file.close();
        if (!file) complain(runtimeError, path + ": cannot be written");
        return static_cast<bool>(file);
    }

    bool report() {
        for (const Refused& one : refused_)
            for (const Problem& problem : one.problems) std::cerr << message(one.file, problem) << '\n';
        if (!options_.quiet && options_.json != "-" && options_.csv != "-") printReports();
        const bool single = results_.size() == 1 && refused_.empty();
        return writeTo(options_.json,
                       [&](std::ostream& out) {
                           if (!refused_.empty())
                               printRefused(out);
                           else if (single)
                               printJson(out, results_.front().result, results_.front().style);
                           else
                               printJson(out, results_);
                       }) &&
               writeTo(options_.csv, [&](std::ostream& out) {
                   if (single)
                       printCsv(out, results_.front().result, results_.front().style);
                   else
                       printCsv(out, results_);
               });
    }

    // Charts of what was answered, in the units of its report; those of a request in SI units in degrees Celsius and
    // bar.
    int draw() const {
        std::vector<const RunResult*> answered;
        for (const Reported& one : results_)
            if (one.result.isDone()) answered.push_back(&one.result);
        if (answered.empty()) return 0;
        const UnitSystem units = results_.front().style.units;
        return drawCharts(options_.chart, answered, units == UnitSystem::SI && !units_ ? UnitSystem::metric : units,
                          options_.data);
    }

    // The results of one file are one request, or points of one.
    void printReports() {
        for (std::size_t i = 0; i < firstOfFile_.size(); ++i) {
            const std::size_t first = firstOfFile_[i];
            const std::size_t last = i + 1 < firstOfFile_.size() ? firstOfFile_[i + 1] : results_.size();
            if (firstOfFile_.size() > 1) std::cout << (i > 0 ? "\n" : "") << results_[first].style.source << '\n';
            if (last - first == 1)
                printReport(std::cout, results_[first].result, results_[first].style);
            else
                printPoints(std::cout, {results_.begin() + static_cast<std::ptrdiff_t>(first),
                                        results_.begin() + static_cast<std::ptrdiff_t>(last)});
        }
    }

    void printRefused(std::ostream& out) {
        using json = nlohmann::ordered_json;
        json list = json::array();
        for (const Refused& one : refused_) {
            json problems = json::array();
            for (const Problem& problem : one.problems)
                problems.push_back({{"line", problem.line}, {"text", problem.text}});
            list.push_back({{"source", one.file},
                            {"exit_status", one.status},
                            {"outcome", one.status == refused ? "refused" : "runtime error"},
                            {"problems", std::move(problems)}});
        }
        const json& root = list.size() == 1 && results_.empty() ? list.front() : list;
        out << root.dump(2, ' ', false, json::error_handler_t::replace) << '\n';
    }

    Options& options_;
    std::optional<UnitSystem> units_;
    std::vector<Reported> results_;
    std::vector<std::size_t> firstOfFile_;  // place of a file's first result
    std::vector<Refused> refused_;
    int status_ = 0;
};

}  // namespace

Command addRun(CLI::App& program) {
    CLI::App* line = program.add_subcommand("run", "runs requests: .toml and .json by names, .fi1 by places");
    const auto options = std::make_shared<Options>();
    line->add_option("FILE", options->files, "requests; - reads one from standard input")->required();
    line->add_option("--data", options->data, dataFolderHelp);
    line->add_option("--json", options->json,
                     "write every value with its key, name and unit to this file as JSON; - writes it here in place of "
                     "the report");
    line->add_option("--csv", options->csv, "the same as CSV");
    line->add_option("--units", options->units, "SI, metric or imperial; those of the request if left out")
        ->check([](const std::string& name) {
            return unitSystemOf(name) ? std::string() : "allowed are SI, metric and imperial";
        });
    line->add_option("--fi1", options->fi1, "keep the positional request in this file");
    line->add_option("--fo1", options->fo1, "keep the positional result in this file");
    addClimateReport(*line, options->climateReport);
    addChartOptions(*line, options->chart);
    line->add_flag("--quiet", options->quiet, "no report");
    line->add_flag("--strict", options->strict, "exit status 5 where a remark says that the figures are wrong");
    return {line, [&program, options] {
                if (const int status = findDataFolder(program, options->data, " with --data")) return status;
                if (!fits(options->data + "/frigana"))
                    return complain(usageError, options->data + ": the path is too long");
                return Runner(*options).run();
            }};
}

}  // namespace frigana::app
