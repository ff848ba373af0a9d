// frigana study: one request over many values, on all processors.
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <system_error>
#include <thread>

#include "Batch.h"
#include "CaseRun.h"
#include "Commands.h"
#include "LineChart.h"
#include "NamedRequest.h"
#include "Outputs.h"
#include "Picture.h"
#include "Rows.h"
#include "Study.h"

namespace frigana::app {

namespace {

namespace fs = std::filesystem;
using workers::Clock;

struct Options {
    std::string file, data, csv, jsonLines, columns;
    std::vector<std::string> charts;
    int jobs = 0;
    bool resume = false, quiet = false;
};

constexpr int mostJobs = 256;
constexpr int endedBySignal = 128;  // and the signal's number: exit status, as shells know it

// ---- the description ------------------------------------------------------------------------------------------------

std::string readBeside(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    if (!file) throw studies::Faulty{{{0, path.string() + " cannot be read"}}};
    return content.str();
}

// Given     file    the description
// Returned  status  exit status where the study cannot be read
//           inputs  every file that was read
std::unique_ptr<studies::Study> readStudy(const std::string& file, int& status, std::vector<std::string>& inputs) {
    inputs.push_back(file);
    std::string text;
    if (!readInput(file, text)) {
        status = runtimeError;
        return nullptr;
    }
    catalogue::Node tree;
    std::vector<catalogue::Problem> problems =
        kindOf(file, text) == FileKind::json ? catalogue::readJson(text, tree) : catalogue::readToml(text, tree);
    try {
        if (problems.empty())
            return std::make_unique<studies::Study>(tree, [&](const std::string& name) {
                const fs::path path = fs::absolute(file).parent_path() / name;
                inputs.push_back(path.string());
                return readBeside(path);
            });
    } catch (const studies::Faulty& faulty) {
        problems = faulty.problems;
    }
    for (const catalogue::Problem& problem : problems) std::cerr << catalogue::message(file, problem) << '\n';
    status = refused;
    return nullptr;
}

// ---- progress -------------------------------------------------------------------------------------------------------

std::string shownTime(double seconds) {
    const long whole = std::lround(seconds);
    if (whole < 60) return std::to_string(whole) + " s";
    if (whole < 3600) return std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
    return std::to_string(whole / 3600) + " h " + std::to_string(whole % 3600 / 60) + " min";
}

// One line on a terminal that is written over; nothing elsewhere.
class Progress {
  public:
    Progress(std::size_t first, std::size_t all, bool wanted) : first_(first), all_(all), wanted_(wanted) {}

    void show(std::size_t done, bool atOnce = false) {
        const auto now = Clock::now();
        if (!wanted_ || (!atOnce && now - shown_ < std::chrono::milliseconds(200))) return;
        shown_ = now;
        constexpr std::size_t width = 30;
        const std::size_t filled = all_ == 0 ? width : done * width / all_;
        const double rate = static_cast<double>(done - first_) / std::chrono::duration<double>(now - start_).count();
        const std::string left =
            rate > 0.0 ? ", " + shownTime(static_cast<double>(all_ - done) / rate) + " left" : std::string();
        std::string line = "[" + std::string(filled, '#') + std::string(width - filled, '.') + "] " +
                           std::to_string(done) + " of " + std::to_string(all_) + " cases, " +
                           catalogue::numberText(rate, 3) + " per second" + left;
        std::cerr << '\r' << line << "\x1b[K" << std::flush;
    }
    void clear() const {
        if (wanted_) std::cerr << "\r\x1b[K" << std::flush;
    }
    double seconds() const { return std::chrono::duration<double>(Clock::now() - start_).count(); }

  private:
    std::size_t first_, all_;
    bool wanted_;
    Clock::time_point start_ = Clock::now(), shown_ = start_;
};

// ---- files ----------------------------------------------------------------------------------------------------------

// A file of rows that is begun, or gone on with behind those that it has.
class RowFile {
  public:
    RowFile(std::string path, studies::RowForm form) : path_(std::move(path)), form_(form) {}

    bool wanted() const { return !path_.empty(); }
    // What of the study it has; a complaint where it is not of this study.
    std::string look(const studies::Study& study, std::size_t& rows) {
        std::size_t size = 0;
        return studies::wholeRows(study, form_, path_, rows, size);
    }
    bool open(const studies::Study& study, std::size_t rows) {
        if (path_ == "-") {
            out_ = &std::cout;
        } else {
            std::error_code error;
            // Half a row, and rows that another file of this study has not, are calculated again.
            const std::size_t size = rows > 0 ? studies::sizeOfRows(path_, rows) : 0;
            if (rows > 0) fs::resize_file(path_, size, error);
            file_.open(path_, std::ios::binary | (rows > 0 ? std::ios::app : std::ios::trunc));
            out_ = &file_;
            if (error || !file_) return complained();
        }
        if (rows == 0)
            *out_ << (form_ == studies::RowForm::csv ? studies::csvHead(study) : studies::headOf(study)) << '\n';
        return good();
    }
    bool put(const studies::Study& study, std::size_t number, const workers::Answer& answer) {
        if (out_ == nullptr) return true;
        *out_ << (form_ == studies::RowForm::csv ? studies::csvRow(study, number, answer)
                                                 : studies::jsonRow(study, number, answer))
              << '\n';
        return static_cast<bool>(*out_);
    }
    bool flush() {
        if (out_ != nullptr) out_->flush();
        return good();
    }

  private:
    bool good() { return out_ == nullptr || *out_ || complained(); }
    bool complained() const {
        complain(runtimeError, path_ + ": cannot be written");
        return false;
    }

    std::string path_;
    studies::RowForm form_;
    std::ofstream file_;
    std::ostream* out_ = nullptr;
};

// ---- chart ----------------------------------------------------------------------------------------------------------

// Columns for a chart, kept as numbers while the study runs.
class ChartColumns {
  public:
    // Given  columns  "results:input", empty for the first result over the key that varies fastest
    std::string choose(const studies::Study& study, const std::string& columns) {
        const std::size_t colon = columns.find(':');
        over_ = colon != columns.npos ? columns.substr(colon + 1)
                                      : (study.variedKeys().empty() ? std::string() : study.variedKeys().back());
        std::string names = columns.empty() ? study.resultKeys().front() : columns.substr(0, colon);
        while (!names.empty()) {
            const std::string name = names.substr(0, names.find(','));
            names.erase(0, name.size() + 1);
            const auto at = std::ranges::find(study.resultKeys(), name);
            if (at == study.resultKeys().end()) return name + ": the study has no such result";
            values_.push_back(static_cast<std::size_t>(at - study.resultKeys().begin()));
        }
        const auto at = std::ranges::find(study.variedKeys(), over_);
        if (at == study.variedKeys().end()) return over_ + ": no such key varies in the study";
        input_ = static_cast<std::size_t>(at - study.variedKeys().begin());
        // One line for each combination of the others, where the key of the axis is the fastest.
        const bool fastest = input_ + 1 == study.variedKeys().size();
        length_ = fastest && study.fastest() > 1 ? study.fastest() : study.cases();
        if (study.cases() / length_ * values_.size() > mostLines)
            return "a chart has at most " + std::to_string(mostLines) + " lines; this one would have " +
                   std::to_string(study.cases() / length_ * values_.size());
        if (study.cases() > mostPoints) return "a chart has at most " + std::to_string(mostPoints) + " points";
        wanted_ = true;
        return {};
    }
    bool wanted() const { return wanted_; }

    void put(const studies::Study& study, std::size_t number, const workers::Answer& answer) {
        if (!wanted_) return;
        const auto settings = study.settings(number);
        if (number < length_) x_.values.push_back(numberOf(settings[input_].value, study.quantityOf(over_)));
        if (number % length_ == 0) beginLines(study, settings);
        const nlohmann::json outcome = nlohmann::json::parse(answer.text, nullptr, false);
        const auto values = outcome.is_object() ? outcome.find("values") : outcome.end();
        for (std::size_t i = 0; i < values_.size(); ++i) {
            const bool there = values != outcome.end() && (*values)[values_[i]].is_number();
            lines_[lines_.size() - values_.size() + i].values.push_back(there ? (*values)[values_[i]].get<double>()
                                                                              : std::nan(""));
        }
    }

    int draw(const studies::Study& study, const std::vector<std::string>& pictures) {
        x_.name = over_;
        x_.quantity = study.quantityOf(over_);
        charts::ChartStyle style;
        charts::Plot plot;
        std::string why;
        std::vector<charts::Column> whole = lines_;
        for (charts::Column& line : whole) line.values.resize(x_.values.size(), std::nan(""));
        if (!charts::plotOfColumns("", x_, whole, style, plot, why)) return complain(runtimeError, "--chart: " + why);
        plot.y.title = study.resultKeys()[values_.front()];
        for (const std::string& picture : pictures)
            if (!charts::writePicture(plot, style.width, style.height, picture, why))
                return complain(runtimeError, why);
        return 0;
    }

  private:
    static constexpr std::size_t mostLines = 6;  // looks that can be told apart
    static constexpr std::size_t mostPoints = 1'000'000;

    static double numberOf(const catalogue::Node& value, catalogue::Quantity quantity) {
        if (value.kind == catalogue::Node::Kind::number) return value.number;
        const catalogue::Parsed parsed = catalogue::parseQuantity(value.text, quantity, nullptr);
        return parsed.problem.empty() ? parsed.value : std::nan("");
    }

    void beginLines(const studies::Study& study, const std::vector<studies::Setting>& settings) {
        std::string others;
        for (std::size_t i = 0; length_ < study.cases() && i < settings.size(); ++i)
            if (i != input_) others += (others.empty() ? "" : ", ") + settings[i].value.shown();
        std::erase(others, '"');
        for (const std::size_t value : values_) {
            const std::string& key = study.resultKeys()[value];
            lines_.push_back({others.empty() ? key : values_.size() > 1 ? key + ", " + others : others, {}, {}});
        }
    }

    bool wanted_ = false;
    std::string over_;
    std::vector<std::size_t> values_;  // places among the results
    std::size_t input_ = 0, length_ = 0;
    charts::Column x_;
    std::vector<charts::Column> lines_;
};

// ---- the run --------------------------------------------------------------------------------------------------------

std::string folderOfData;  // of the workers

std::string calculate(std::string_view task) {
    return studies::runCase(task, folderOfData);
}

// Told by the handler of the signals that end a study.
workers::Flag* stopFlag = nullptr;
volatile std::sig_atomic_t endingSignal = 0;

void stopOnSignals(workers::Flag& flag) {
    stopFlag = &flag;
    struct sigaction action = {};
    action.sa_handler = [](int number) {
        endingSignal = number;
        stopFlag->raise();
    };
    action.sa_flags = SA_RESTART | SA_RESETHAND;  // a second Ctrl-C ends the program at once
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction former = {};
        sigaction(number, nullptr, &former);
        if (former.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);  // nohup tells it to live on
    }
}

class StudyRun {
  public:
    StudyRun(const Options& options, const studies::Study& study) : options_(options), study_(study) {}

    // What is there already, and what cannot be.
    int prepare() {
        for (RowFile* file : {&csv_, &json_}) {
            std::size_t rows = 0;
            if (!options_.resume || !file->wanted()) continue;
            if (const std::string problem = file->look(study_, rows); !problem.empty())
                return complain(refused, problem);
            first_ = any_ ? std::min(first_, rows) : rows;
            any_ = true;
        }
        if (!options_.charts.empty()) {
            if (first_ > 0) return complain(usageError, "--chart is drawn of whole studies, not of resumed ones");
            if (const std::string problem = chart_.choose(study_, options_.columns); !problem.empty())
                return complain(usageError, "--chart: " + problem);
        }
        return 0;
    }

    int run(workers::Pool& pool) {
        for (RowFile* file : {&csv_, &json_})
            if (file->wanted() && !file->open(study_, first_)) return runtimeError;
        workers::Flag stop;
        stopOnSignals(stop);
        Progress progress(first_, study_.cases(), !options_.quiet && isatty(STDERR_FILENO) != 0);
        std::size_t asked = first_, done = first_;
        auto flushed = Clock::now();
        bool writable = true;
        const auto next = [&](std::string& request) {
            if (asked == study_.cases()) return false;
            request = studies::caseTask(study_, asked++);
            return true;
        };
        const auto deliver = [&](std::size_t number, workers::Answer&& answer) {
            const std::size_t one = first_ + number;
            refused_ += studies::isRefused(answer);
            writable = csv_.put(study_, one, answer) && json_.put(study_, one, answer);
            chart_.put(study_, one, answer);
            done = one + 1;
            if (Clock::now() - flushed > std::chrono::milliseconds(500)) {
                writable = csv_.flush() && json_.flush() && writable;
                flushed = Clock::now();
            }
            progress.show(done);
            return writable;
        };
        workers::runBatch(pool, {next, deliver}, &stop);
        progress.clear();
        writable = csv_.flush() && json_.flush() && writable;
        return finish(done, progress.seconds(), writable);
    }

  private:
    int finish(std::size_t done, double seconds, bool writable) {
        if (!writable) return complain(runtimeError, "the rows cannot be written");
        const double rate = static_cast<double>(done - first_) / std::max(seconds, 1e-9);
        if (!options_.quiet)
            std::cerr << "frigana: " << done << " of " << study_.cases() << " cases, " << refused_
                      << " of them refused, " << catalogue::numberText(rate, 3) << " per second\n";
        if (done < study_.cases()) return interrupted();
        if (chart_.wanted())
            if (const int status = chart_.draw(study_, options_.charts)) return status;
        return refused_ == study_.cases() ? refused : 0;
    }

    int interrupted() const {
        if (endingSignal == 0) return complain(runtimeError, "the processes that calculate have ended");
        const bool goesOn = !options_.csv.empty() || !options_.jsonLines.empty();
        return complain(endedBySignal + endingSignal,
                        goesOn ? "interrupted; the same command with --resume goes on" : "interrupted");
    }

    const Options& options_;
    const studies::Study& study_;
    RowFile csv_{options_.csv.empty() && options_.jsonLines.empty() ? "-" : options_.csv, studies::RowForm::csv};
    RowFile json_{options_.jsonLines, studies::RowForm::json};
    ChartColumns chart_;
    std::size_t first_ = 0, refused_ = 0;
    bool any_ = false;
};

int runStudy(const Options& options) {
    int status = 0;
    std::vector<std::string> inputs;
    const std::unique_ptr<studies::Study> study = readStudy(options.file, status, inputs);
    if (study == nullptr) return status;
    if (options.resume && options.csv.empty() && options.jsonLines.empty())
        return complain(usageError, "--resume goes on with the file of --csv or --json-lines");
    for (const std::string& picture : options.charts) {
        const auto format = charts::formatOf(picture);
        if (!format || !charts::canWrite(*format))
            return complain(usageError, picture + ": a picture has the extension .svg, .png or .pdf");
    }
    std::vector<std::string> outputs = options.charts;
    const bool rowsHere = options.csv.empty() && options.jsonLines.empty();
    outputs.insert(outputs.end(), {rowsHere ? "-" : options.csv, options.jsonLines});
    if (const std::string clash = clashOf(inputs, outputs); !clash.empty())
        return complain(usageError, clash + " would be written over");
    StudyRun run(options, *study);
    if (const int wrong = run.prepare()) return wrong;
    folderOfData = fs::absolute(options.data).string();
    const int processors = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    // The workers are forked before there is any thread.
    workers::Pool pool(calculate, options.jobs > 0 ? options.jobs : processors);
    return run.run(pool);
}

}  // namespace

Command addStudy(CLI::App& program) {
    CLI::App* line = program.add_subcommand("study", "runs one request over many values, on all processors");
    const auto options = std::make_shared<Options>();
    line->add_option("FILE", options->file, "description of the study, in TOML or JSON")->required();
    line->add_option("--jobs", options->jobs, "processes that calculate (default: one for each processor)")
        ->check(CLI::Range(1, mostJobs));
    line->add_option("--csv", options->csv, "file for the rows as CSV; - or nothing writes them here");
    line->add_option("--json-lines", options->jsonLines, "file for the rows as JSON, one a line");
    line->add_option("--chart", options->charts, "draw a result: .svg, .png or .pdf; several times")
        ->take_all()
        ->expected(1);
    line->add_option("--chart-columns", options->columns,
                     "results over a key that varies, as performance.cop_cooling:evaporator.temperature (default: the "
                     "first result over the key that varies fastest)");
    line->add_flag("--resume", options->resume, "go on with the files of an interrupted study");
    line->add_flag("--quiet", options->quiet, "neither progress nor summary");
    line->add_option("--data", options->data, dataFolderHelp);
    return {line, [&program, options] {
                if (const int status = findDataFolder(program, options->data, " with --data")) return status;
                try {
                    return runStudy(*options);
                } catch (const std::system_error& failure) {
                    return complain(runtimeError, failure.what());
                }
            }};
}

}  // namespace frigana::app
