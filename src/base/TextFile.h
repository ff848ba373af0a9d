// Text files behind small unit numbers, read and written by lines.
#pragma once

#include <string_view>

#include "FixedText.h"

namespace frigana {

enum class FileStatus { unknown, old };        // unknown creates a missing file when it is written to
enum class ReadStatus { ok, endOfFile, malformed };

inline constexpr int largestUnit = 99;

// Opens path (backslashes, slashes or a mix) for reading by lines. False if there is no such readable file.
bool openForReading(int unit, std::string_view path);
// Opens path for writing from its beginning, creating it if it is missing. False if that cannot be done.
bool openForWriting(int unit, std::string_view path);
bool unitIsOpen(int unit);
// First unit number from start upward that is not open.
int firstFreeUnit(int start);
void rewindUnit(int unit);
void closeUnit(int unit);
void closeAndDelete(int unit);
// Number of the line that was read last (1 for the first), for messages.
int lineNumber(int unit);
// Path that the unit was opened with.
std::string_view unitPath(int unit);

// One line as it stands: its first `width` characters into a field, padded with blanks.
ReadStatus readTextField(int unit, char* field, int fieldSize, int width);
template <int N>
ReadStatus readText(int unit, FixedText<N>& field, int width = N) {
    return readTextField(unit, field.data(), N, width);
}
ReadStatus skipLine(int unit);

// A free-form record: values separated by blanks or commas, text bare or quoted, exponents with e or d. Blank lines
// are passed over, a record with too few values goes on in the next line, and the rest of the last line is dropped.
class FreeRecord {
  public:
    explicit FreeRecord(int unit) : unit_(unit) {}
    ReadStatus read(int& value);
    ReadStatus read(double& value);
    template <int N>
    ReadStatus read(FixedText<N>& value) {
        return readTextValue(value.data(), N);
    }
    // What stood where the value was expected, for messages.
    std::string_view offendingText() const;

  private:
    ReadStatus readTextValue(char* field, int size);
    ReadStatus nextItem();
    int unit_;
    int position_ = -1;  // in the current line; -1 before the first line
    int itemFirst_ = 0, itemLast_ = 0, repeat_ = 0;
};

// Reads all values of one free-form record; stops at the first that fails.
template <class... Value>
ReadStatus readValues(int unit, Value&... values) {
    FreeRecord record(unit);
    ReadStatus status = ReadStatus::ok;
    (void)((status = record.read(values), status == ReadStatus::ok) && ...);
    return status;
}

}  // namespace frigana
