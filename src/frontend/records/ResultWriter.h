// The vocabulary of result files: every value is written together with its name and its unit. The file gets the value
// alone, as its readers expect; whoever listens in process gets the name, the unit and the line as well.
//
//   ResultWriter writer(FILEOUT);                  opens the file on unit 1, from its beginning
//   writer.integer("Request type", cycle.REQTYPE);
//   writer.heading("EVAPORATOR");                  a line of its own; the section of what follows
//   writer.group("Inlet");                         what the next values belong to; group({}) ends it
//   writer.value("pressure", "kPa", point.P);
//   writer.group({});
//   writer.row("Dome", i);                         the next values are row i of a table; group({}) ends it
//   writer.value("Pressure", "kPa", ...);
//   writer.blankLine();
//   writer.close();
//
// Files in fixed format are made of rows of cells:
//   writer.cell("Request type", "", Integer{1, 1});  writer.endRow();
//   writer.filler();                               a line with a 0 that holds the place of another tool
//   writer.row("Saturation table", i);
//   writer.cell("Temperature, liquid", "K", FixedPoint{16, 6, T});  writer.space(1);  ...  writer.endRow();
//
// A result made of another one (a system of two circuits) keeps the names of what it copies:
//   ResultCopy source(scratchPath("temporal1.txt"), 1);
//   ResultWriter writer(FILEOUT, 3);
//   writer.circuit("High temperature circuit");
//   writer.copyLines(source, 150);
//   source.skipLines(1);                           line 151 is replaced
//   writer.value("Capacity of the system", "kW", Qt);
//   writer.copyLines(source, 283 - 151);
//   source.close();
// The names are remembered by path for the files written last in this process; from an older file come plain texts.
//
// The result of the run takes its name when it is whole. A figure in it that is not finite ends the run instead: the
// last code of the operation's range, 2SS299 of a cycle and 1SS299 of a property request, and no result.
//
// Names and units may be composed texts; they are kept in a store of their own. Nothing here uses the heap.
#pragma once

#include <string_view>

#include "FixedText.h"
#include "Message.h"

namespace frigana {

// What is told to the listener, line by line in the order of the file.
struct ResultEntry {
    enum class Kind {
        start,    // the result file is opened; what was heard before no longer counts
        heading,  // text
        value,    // value, a real of a line of its own or a cell
        integer,  // integer
        text,     // text
        blank,    // an empty line
        endOfRow  // the cells of one line are complete
    };
    Kind kind = Kind::start;
    int line = 0;                // number of the line in the file, 1 for the first
    std::string_view circuit{};  // in results of two circuits, else empty
    std::string_view section{};  // heading of the section
    std::string_view group{};    // such as Inlet, or the name of a table
    int row = 0;                 // row of that table, 0 outside tables
    std::string_view name{}, unit{};
    double value = 0.0;
    int integer = 0;
    std::string_view text{};
};

// Names the routine that hears the entries of the run's own result file; none by default. Scratch files of trial
// solutions are not told.
using ResultListener = void (*)(void* context, const ResultEntry& entry);
void listenToResult(ResultListener listener, void* context);

// A finished result that lines are copied from, read as text fields of 80 columns.
class ResultCopy {
  public:
    // Opens path on unit; a file that cannot be read ends the run in the runtime's own error.
    ResultCopy(const Text255& path, int unit);
    void skipLines(int count);
    void close();
    // Number of the line that was read last.
    int line() const;

  private:
    friend class ResultWriter;
    int unit_;
    int journal_;  // names of its lines, -1 if they are not known
};

// Removes a scratch file.
void deleteScratch(const Text255& path);

class ResultWriter {
  public:
    // Opens path on unit; a file that cannot be written ends the run in the runtime's own error.
    explicit ResultWriter(const Text255& path, int unit = 1);
    // No work is left to a destructor, since the road of a failure does not pass by it. Units that the result was made
    // from are closed before.
    void close();

    void circuit(std::string_view name);
    void heading(std::string_view text);
    void fixedHeading(std::string_view text);  // in fixed format: no blank in front of it
    void group(std::string_view name);
    void row(std::string_view table, int index);

    // One line each, in free form.
    void value(std::string_view name, std::string_view unit, double value);
    void value(std::string_view name, std::string_view unit, float value);
    // A line for which nothing was worked out: the file has a number in its place, and who listens hears a missing
    // value.
    void noValue(std::string_view name, std::string_view unit, double inItsPlace);
    void integer(std::string_view name, int value);
    void text(std::string_view name, std::string_view text);
    void blankLine();  // holds one blank

    // Cells of a line in fixed format.
    void cell(std::string_view name, std::string_view unit, const FixedPoint& value);
    void cell(std::string_view name, std::string_view unit, const Integer& value);
    void cell(std::string_view name, std::string_view unit, const Character& value);
    void space(int count);
    void endRow();
    void filler();

    void copyLines(ResultCopy& source, int count);
    // Number of the line that was written last.
    int line() const;

  private:
    void tell(ResultEntry entry);
    [[noreturn]] void refuse();

    int unit_;
    int journal_;
    bool result_;  // the run's own result, not a scratch file
    bool heard_;
    bool finite_ = true;                                   // all figures so far
    int circuit_ = 0, section_ = 0, group_ = 0, row_ = 0;  // as stored names
};

}  // namespace frigana
