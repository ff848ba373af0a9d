// Text files behind small unit numbers, read and written by lines. No routine takes memory from the heap.
#pragma once

#include <string_view>

#include "FixedText.h"
#include "Message.h"
#include "Platform.h"

namespace frigana {

// Malformed is also a line that is too long, and a file that could not be read to its end.
enum class ReadStatus { ok, endOfFile, malformed };

inline constexpr int largestUnit = 99;
inline constexpr int mostOpenUnits = 16;
inline constexpr int longestLine = 8192;  // a longer line is malformed

// Units. A unit that is open is closed before it is opened again.
// Opens path (backslashes, slashes or a mix) for reading by lines. False if there is no such readable file.
bool openForReading(int unit, std::string_view path);
// Opens path for writing from its beginning. False if that cannot be done.
enum class Writing {
    direct,  // under its own name; an older file is replaced
    whole,   // under another name in the same folder, its own when the unit is closed: nobody meets a part of it, and
             // where something goes wrong there is none, or the older one still. Where the folder takes no new file
             // an older one is written over
    fresh    // under its own name, where there is no such file yet
};
bool openForWriting(int unit, std::string_view path, Writing how = Writing::direct);
bool unitIsOpen(int unit);
// First unit number from start upward that is not open.
int firstFreeUnit(int start);
// The next read takes the first line, also of a file that has just been written.
void rewindUnit(int unit);
// Where the next line of a file that is read begins, and going back there; a line of a place has the number that it
// had.
struct LinePlace {
    long long byte = 0;
    int linesBefore = 0;
};
LinePlace nextLinePlace(int unit);
void goToLine(int unit, const LinePlace& place);
// False if there is no such file.
bool stampOf(int unit, FileStamp& stamp);
// False if something that was written did not reach the file; then none is left.
bool closeUnit(int unit);
void closeAndDelete(int unit);
void closeAllUnits();
// Closes what a failed run left open; what was being written is incomplete and is deleted.
void abandonAllUnits();
// Removes the names of the files that are being written, for the handler of a signal that ends the program.
//   Returned  (value)  false in the midst of an opening, when nobody knows yet whose the file is: the signal comes
//   again
//                      at once behind it
bool removeHalfFiles(int signal);
// Number of the line that was read or written last (1 for the first), for messages.
int lineNumber(int unit);
// Path that the unit was opened with.
std::string_view unitPath(int unit);
// The line that was read last, without its end; valid until the next read.
std::string_view currentLine(int unit);
// Why the last line could not be read although the file has one; empty if there was no such trouble.
std::string_view readProblem(int unit);

// One line as it stands: its first `width` characters into a field, padded with blanks.
ReadStatus readTextField(int unit, char* field, int fieldSize, int width);
template <int N>
ReadStatus readText(int unit, FixedText<N>& field, int width = N) {
    return readTextField(unit, field.data(), N, width);
}
ReadStatus skipLine(int unit);
// Passes over blank lines and one line that holds something.
ReadStatus skipFilledLine(int unit);

// A free-form record: values separated by blanks (or tabs) or by one comma, text bare or quoted, exponents with e, d
// or a sign alone. Blank lines are passed over, a record with too few values goes on in the next line, and the rest of
// the last line is dropped.
//   Notes     3*0.0 stands for three values. Nothing between two commas, or 3*, leaves the variables as they were. A
//             slash in the place of a number ends the record, and the values that are left stay as they were; in
//             bare text it is a character like any other, since names and paths hold it.
//             Quoted text ends on its own line; a doubled quote stands for one.
class FreeRecord {
  public:
    explicit FreeRecord(int unit) : unit_(unit) {}
    // Values out of a text in memory instead of a file; its end is the end of the file.
    explicit FreeRecord(std::string_view text) : line_(text), position_(0) {}
    ReadStatus read(int& value);
    ReadStatus read(double& value);
    template <int N>
    ReadStatus read(FixedText<N>& value) {
        return readTextValue(value.data(), N);
    }
    // What stood where the value was expected, for messages; empty at the end of the file.
    std::string_view offendingText() const { return item_; }
    // What stands behind the last value on its line.
    std::string_view rest() const {
        return position_ < 0 ? std::string_view{} : line_.substr(static_cast<std::size_t>(position_));
    }

  private:
    enum class Found { item, null, endOfFile, malformed };
    ReadStatus readTextValue(char* field, int size);
    Found nextItem(bool numeric);

    int unit_ = 0;  // 0: out of memory
    std::string_view line_{};
    int position_ = -1;  // next character of the line; -1 before the first line
    std::string_view item_{};
    int repeats_ = 0;            // how often the last item is still to be given
    bool commaAllowed_ = false;  // behind an item one comma belongs to it
    bool ended_ = false;
    bool repeatsNull_ = false;
};

// Reads all values of one free-form record; stops at the first that fails.
template <class... Value>
ReadStatus readValues(int unit, Value&... values) {
    FreeRecord record(unit);
    ReadStatus status = ReadStatus::ok;
    (void)((status = record.read(values), status == ReadStatus::ok) && ...);
    return status;
}

// Writing. Failures are kept and told by closeUnit.
// One line in fixed format out of the pieces of Message.h.
void writeRaw(int unit, std::string_view characters);  // no line end
void endLine(int unit);
extern char composedLine[longestLine];  // one run at a time writes one line at a time
template <class... Piece>
void writeLine(int unit, const Piece&... pieces) {
    char* const line = composedLine;
    Composer composer(line, longestLine);
    (composer.add(pieces), ...);
    writeRaw(unit, std::string_view(line, static_cast<std::size_t>(composer.used())));
    endLine(unit);
}
// One value in free form on a line of its own, a blank before it.
void writeFree(int unit, double value);
void writeFree(int unit, float value);
void writeFree(int unit, int value);
void writeFree(int unit, std::string_view text);

}  // namespace frigana
