// How the readers of fluid and mixture files read a record and say what was wrong with it: file, line, what was
// expected and what stood there.
#pragma once

#include "EngineLimits.h"
#include "TextFile.h"

namespace frigana {

// Words of the record that was refused last, for a caller whose own code says less. Written by readFailed and
// countFits; blank before the first refusal, or when the caller has blanked it.
extern Text255 lastRefusal;

// Words of a record that could not be read.
//   Given     unit    open unit of the file; the line is the one that was read last
//             what    what was expected there, in the field's terms ("number of terms", "reducing temperature")
//             status  why the reading failed
//             found   what stood there (blank if it is not known)
//   Returned  ierr    1
//             herr    "NAME.FLD, line 12: expected number of terms, found 'abc'", where a file that ended reads
//                     "found end of file"
//   Notes     The name of the file stands without its folder: the message is cut to 182 characters by SETFLD.
void readFailed(int unit, std::string_view what, ReadStatus status, int& ierr, Text255& herr);
void readFailed(int unit, std::string_view what, ReadStatus status, std::string_view found, int& ierr, Text255& herr);

// Refuses a count that is negative or that a table could not hold; true if the count is good. Call it right after the
// line of the count was read, so that the message names that line.
//   Given     unit     open unit of the file
//             what     what is counted ("number of terms")
//             count    number read
//             largest  rows of the table
//   Returned  (value)  true if 0 <= count <= largest; otherwise false and, as by readFailed, ierr and herr
//                      "NAME.FLD, line 12: expected number of terms from 0 to 56, found 57"
bool countFits(int unit, std::string_view what, int count, int largest, int& ierr, Text255& herr);

// A line that ended before the values that it should hold; otherwise as readFailed.
void lineTooShort(int unit, std::string_view what, int& ierr, Text255& herr);

// The values of one free-form record, which stand on one line behind any blank ones.
//   Returned  ok; malformed where one cannot be read or the line ends before the last; endOfFile
//             found   what stood where the value was expected; blank at the end of the line
template <class... Value>
ReadStatus readOneLine(int unit, std::string_view& found, Value&... values) {
    ReadStatus status = skipFilledLine(unit);
    if (status != ReadStatus::ok) return status;
    FreeRecord record(currentLine(unit));
    (void)((status = record.read(values), status == ReadStatus::ok) && ...);
    found = record.offendingText();
    return status == ReadStatus::endOfFile ? ReadStatus::malformed : status;
}

// One free-form record into values (int, double or FixedText each); true if all could be read.
//   Given     unit, what as readFailed
//   Returned  values, and ierr and herr as by readFailed where the result is false; they are not touched otherwise
//   Notes     A record does not go on in the next line: a row with a number too few would take one from the row below.
template <class... Value>
bool readRecord(int unit, std::string_view what, int& ierr, Text255& herr, Value&... values) {
    std::string_view found;
    const ReadStatus status = readOneLine(unit, found, values...);
    if (status == ReadStatus::ok) return true;
    if (status == ReadStatus::malformed && found.empty())
        lineTooShort(unit, what, ierr, herr);
    else
        readFailed(unit, what, status, found, ierr, herr);
    return false;
}

// One free-form record with a single count, checked by countFits.
bool readCount(int unit, std::string_view what, int largest, int& count, int& ierr, Text255& herr);

// One free-form record with a single number above 0; otherwise as readRecord, with what stood there.
bool readPositive(int unit, std::string_view what, int& ierr, Text255& herr, double& value);

// One line of text as it stands; true if there was one. Otherwise as readFailed.
template <int N>
bool readTextLine(int unit, std::string_view what, int& ierr, Text255& herr, FixedText<N>& field, int width = N) {
    const ReadStatus status = readText(unit, field, width);
    if (status == ReadStatus::ok) return true;
    readFailed(unit, what, status, ierr, herr);
    return false;
}

// Passes over lines; true if they were there. Otherwise as readFailed.
bool skipLines(int unit, int lines, int& ierr, Text255& herr);

}  // namespace frigana
