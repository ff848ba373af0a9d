#include "ReaderReport.h"

#include "Message.h"

namespace frigana {

Text255 lastRefusal{};

namespace {

std::string_view fileName(int unit) {
    const std::string_view path = unitPath(unit);
    const auto separator = path.find_last_of("\\/:");
    return trimRight(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

// Longer finds are cut, so that a line of garbage does not push the file and line number out of a message.
std::string_view excerpt(std::string_view text) {
    return text.substr(0, 40);
}

std::string_view digitsOf(int value, char (&buffer)[12]) {
    int position = 12;
    unsigned magnitude = value < 0 ? 0U - static_cast<unsigned>(value) : static_cast<unsigned>(value);
    do {
        buffer[--position] = static_cast<char>('0' + magnitude % 10U);
        magnitude /= 10U;
    } while (magnitude > 0U);
    if (value < 0) buffer[--position] = '-';
    return {buffer + position, static_cast<std::size_t>(12 - position)};
}

}  // namespace

void readFailed(int unit, std::string_view what, ReadStatus status, int& ierr, Text255& herr) {
    readFailed(unit, what, status, {}, ierr, herr);
}

void readFailed(int unit, std::string_view what, ReadStatus status, std::string_view found, int& ierr, Text255& herr) {
    char line[12];
    ierr = 1;
    if (status == ReadStatus::endOfFile)
        message(herr, fileName(unit), ", line ", digitsOf(lineNumber(unit), line), ": expected ", what,
                ", found end of file");
    else if (found.empty())
        message(herr, fileName(unit), ", line ", digitsOf(lineNumber(unit), line), ": expected ", what,
                ", found something else");
    else
        message(herr, fileName(unit), ", line ", digitsOf(lineNumber(unit), line), ": expected ", what, ", found '",
                excerpt(found), "'");
    lastRefusal = herr;
}

void lineTooShort(int unit, std::string_view what, int& ierr, Text255& herr) {
    char line[12];
    ierr = 1;
    message(herr, fileName(unit), ", line ", digitsOf(lineNumber(unit), line), ": expected ", what,
            ", found the end of the line");
    lastRefusal = herr;
}

bool countFits(int unit, std::string_view what, int count, int largest, int& ierr, Text255& herr) {
    if (count >= 0 && count <= largest) return true;
    char line[12], limit[12], value[12];
    ierr = 1;
    message(herr, fileName(unit), ", line ", digitsOf(lineNumber(unit), line), ": expected ", what, " from 0 to ",
            digitsOf(largest, limit), ", found ", digitsOf(count, value));
    lastRefusal = herr;
    return false;
}

bool readCount(int unit, std::string_view what, int largest, int& count, int& ierr, Text255& herr) {
    return readRecord(unit, what, ierr, herr, count) && countFits(unit, what, count, largest, ierr, herr);
}

bool readPositive(int unit, std::string_view what, int& ierr, Text255& herr, double& value) {
    if (!readRecord(unit, what, ierr, herr, value)) return false;
    if (value > 0.0) return true;
    readFailed(unit, what, ReadStatus::malformed, currentLine(unit), ierr, herr);
    return false;
}

bool skipLines(int unit, int lines, int& ierr, Text255& herr) {
    for (int i = 0; i < lines; ++i) {
        const ReadStatus status = skipLine(unit);
        if (status != ReadStatus::ok) {
            readFailed(unit, "a further line", status, ierr, herr);
            return false;
        }
    }
    return true;
}

}  // namespace frigana
