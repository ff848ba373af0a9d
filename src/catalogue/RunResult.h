// A finished run: every value under its key, the numbered points, the remarks; and the runs themselves, with nothing
// left beside a named request.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "14_ErrorControl.h"
#include "FilledRequest.h"
#include "ResultWriter.h"

namespace frigana::catalogue {

// One entry of the result file, in the words of the writer, with its key. Headings and blank lines are entries too.
struct Value {
    ResultEntry::Kind kind;
    int line;
    std::string circuit, section, group;
    int row;
    std::string name, unit;
    double value;
    int integer;
    std::string text;
    std::string key = {};
    Quantity quantity = Quantity::none;

    bool isNumber() const { return kind == ResultEntry::Kind::value || kind == ResultEntry::Kind::integer; }
    bool isData() const { return isNumber() || kind == ResultEntry::Kind::text; }
    // The number of a value that is there; not a number where it is missing or a text.
    double number() const;
};

// A state of the circuit by its number in the drawing. What is not available is missingValue.
struct PointState {
    int number;
    int stage;            // of a multi-stage cycle, else 0
    std::string circuit;  // key of the circuit, empty for a single one
    std::string key;      // full: "low.evaporator.outlet"
    std::string label;
    double pressure = missingValue, temperature = missingValue, density = missingValue, enthalpy = missingValue,
           entropy = missingValue, quality = missingValue, saturationTemperature = missingValue;
};

// What an engineer should know of a finished result.
enum class Weight { note, doubtful, wrong };
struct Remark {
    std::string name;  // stable: "liquid_line_vapor"
    Weight weight;
    std::string place;   // key of a device or value
    std::string text;    // what was seen
    std::string advice;  // what usually helps
};
std::string_view nameOf(Weight weight);

struct RunResult {
    FilledRequest input;  // its request is null where it could not be read
    RunReport report;
    bool resultExists = false;
    std::vector<Value> entries;
    std::vector<PointState> points;
    std::vector<Remark> remarks;
    std::string positional;  // text of the request, where texts were asked for
    std::string resultText;  // text of the result file, likewise

    // The values by key; build after the entries are complete.
    void indexKeys();
    const Value* find(std::string_view key) const;
    // The number under a key, not a number where there is none or it is missing.
    double number(std::string_view key) const;
    std::string_view text(std::string_view key) const;

    // Whether there is an answer.
    bool isDone() const { return report.end == RunEnd::returned && resultExists; }

  private:
    std::vector<std::uint32_t> byKey_;
};

// Hears the entries of the run that comes next; stopGathering() gives them keys and ends it.
void gatherEntries(std::vector<Value>& entries);
void stopGathering(std::vector<Value>& entries);

struct RunOptions {
    std::string dataFolder;         // holds the folders fluids and mixtures
    bool keepTexts = false;         // positional request and result become part of the RunResult
    std::string outputFolder = {};  // of a positional request: where its result goes instead of beside it
    std::string blendFolder = {};   // of a named request: where a blend is stored instead of in the installation
};

// Runs a request in a private folder that is gone afterwards. The second run of line sizing makes its first run
// itself; a cycle with a blend listed by its components stores that blend for itself alone.
RunResult runFilled(const FilledRequest& filled, const RunOptions& options);

// Runs a positional request, with its result beside it.
RunResult runPositional(const std::string& path, const RunOptions& options);

// Reads the text of a positional request, as readPositional() does its file.
std::string readPositionalText(const std::string& text, FilledRequest& filled);

// The parameter that a refusal by the fixed ranges came from, by its key; empty where it came from elsewhere.
std::string refusedKey(const RunResult& result);

}  // namespace frigana::catalogue
