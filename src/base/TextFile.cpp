#include "TextFile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstring>

#include "NumberText.h"

namespace frigana {

namespace {

constexpr int bufferSize = 32768;
constexpr int closed = -1;

struct OpenFile {
    int unit = 0;  // 0: free
    int handle = closed;
    bool writing = false;
    bool failed = false;
    bool atEnd = false;
    bool tooLong = false;     // the last line
    char beside = '\0';       // digit of the name that it has until it is whole
    int first = 0, last = 0;  // what is still to be read from the buffer, or last bytes to be written
    long long byte = 0;       // place in the file of the first byte of the buffer that was read
    int number = 0;
    int lineLength = 0;
    int pathLength = 0;
    char path[longestPath + 1];
    char line[longestLine];
    char buffer[bufferSize];
};

OpenFile files[mostOpenUnits];
std::int8_t fileOfUnit[largestUnit + 1];  // index + 1 into files; 0 where the unit is closed

OpenFile* fileOf(int unit) {
    if (unit < 1 || unit > largestUnit || fileOfUnit[unit] == 0) return nullptr;
    return &files[fileOfUnit[unit] - 1];
}

void flush(OpenFile& file) {
    if (!file.writing || file.last == 0) return;
    if (!writeFile(file.handle, file.buffer, file.last)) file.failed = true;
    file.last = 0;
}

bool refill(OpenFile& file) {
    if (file.atEnd || file.writing) return false;
    file.byte += file.last;
    const long count = readFile(file.handle, file.buffer, bufferSize);
    file.first = 0;
    file.last = count > 0 ? static_cast<int>(count) : 0;
    file.atEnd = count <= 0;
    file.failed = file.failed || count < 0;
    return !file.atEnd;
}

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// The next line without its end, whatever ends it: LF, CR LF or the end of the file. A mark of the encoding in front of
// the first line does not belong to it.
ReadStatus nextLine(OpenFile& file) {
    file.lineLength = 0;
    file.tooLong = false;
    bool any = false;
    for (;;) {
        if (file.first == file.last && !refill(file)) break;
        any = true;
        const char* begin = file.buffer + file.first;
        const auto available = static_cast<std::size_t>(file.last - file.first);
        const void* end = std::memchr(begin, '\n', available);
        const int count = static_cast<int>(end == nullptr ? available : static_cast<const char*>(end) - begin);
        const int kept = std::min(count, longestLine - file.lineLength);
        std::memcpy(file.line + file.lineLength, begin, static_cast<std::size_t>(kept));
        file.lineLength += kept;
        file.tooLong = file.tooLong || kept < count;
        file.first += count;
        if (end != nullptr) {
            ++file.first;
            break;
        }
    }
    if (file.failed) {  // a line that is cut short is none
        file.lineLength = 0;
        return ReadStatus::malformed;
    }
    if (!any) return ReadStatus::endOfFile;
    if (file.lineLength > 0 && file.line[file.lineLength - 1] == '\r') --file.lineLength;
    ++file.number;
    if (file.tooLong) return ReadStatus::malformed;
    if (file.number == 1 &&
        std::string_view(file.line, static_cast<std::size_t>(file.lineLength)).starts_with(byteOrderMark)) {
        file.lineLength -= static_cast<int>(byteOrderMark.size());
        std::memmove(file.line, file.line + byteOrderMark.size(), static_cast<std::size_t>(file.lineLength));
    }
    return ReadStatus::ok;
}

int openToWrite(const char* native, Writing how, char& beside) {
    if (how == Writing::whole) {
        const int handle = openFileBeside(native, beside);
        if (handle >= 0) return handle;
    }
    beside = '\0';
    return openFileToWrite(native, how == Writing::fresh ? Creation::fresh : Creation::replaced);
}

// Path under which the file stands now; native is its own, longestPath + 3 characters long.
void nameUntilWhole(const OpenFile& file, char* native) {
    const std::size_t length = std::strlen(native);
    const char suffix[3] = {'~', file.beside, '\0'};
    std::memcpy(native + length, suffix, sizeof suffix);
}

bool nameNow(const OpenFile& file, char* native) {
    if (!nativePath(std::string_view(file.path, static_cast<std::size_t>(file.pathLength)), native)) return false;
    if (file.beside != '\0') nameUntilWhole(file, native);
    return true;
}

void removeNow(const OpenFile& file) {
    char native[longestPath + 3];
    if (nameNow(file, native)) removeFile(native);
}

bool giveName(const OpenFile& file) {
    char native[longestPath + 1], beside[longestPath + 3];
    if (!nativePath(std::string_view(file.path, static_cast<std::size_t>(file.pathLength)), native)) return false;
    std::memcpy(beside, native, std::strlen(native) + 1);
    nameUntilWhole(file, beside);
    return renameFile(beside, native);
}

volatile std::sig_atomic_t opening = 0, delayedSignal = 0;

bool openUnitAtOnce(int unit, std::string_view path, bool writing, Writing how) {
    closeUnit(unit);
    if (unit < 1 || unit > largestUnit) return false;
    const auto free = std::find_if(files, files + mostOpenUnits, [](const OpenFile& file) { return file.unit == 0; });
    if (free == files + mostOpenUnits) return false;
    OpenFile& file = *free;
    if (!nativePath(path, file.path)) return false;
    file.beside = '\0';
    file.handle = writing ? openToWrite(file.path, how, file.beside) : openFileToRead(file.path);
    if (file.handle < 0) return false;
    // Messages show the path as it was given.
    const auto given = trimRight(path);
    file.pathLength = static_cast<int>(given.size());
    std::memcpy(file.path, given.data(), given.size());
    file.unit = unit;
    file.writing = writing;
    file.failed = file.atEnd = file.tooLong = false;
    file.first = file.last = file.number = file.lineLength = 0;
    file.byte = 0;
    fileOfUnit[unit] = static_cast<std::int8_t>(free - files + 1);
    return true;
}

bool openUnit(int unit, std::string_view path, bool writing, Writing how) {
    opening = 1;
    const bool open = openUnitAtOnce(unit, path, writing, how);
    opening = 0;
    if (const int signal = delayedSignal; signal != 0) {
        delayedSignal = 0;
        std::raise(signal);
    }
    return open;
}

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\r';
}

// Whether the size of a number in digits and exponent, far too large or too small for a double, is the former.
bool exceedsOne(std::string_view text) {
    const auto e = text.find('e');
    const auto mantissa = text.substr(0, e);
    const auto first = mantissa.find_first_of("123456789");
    const auto point = std::min(mantissa.find('.'), mantissa.size());
    if (e == std::string_view::npos) return first < point;
    long exponent = 0;
    const auto end = std::from_chars(text.data() + e + 1, text.data() + text.size(), exponent);
    if (end.ec == std::errc::result_out_of_range) return text[e + 1] != '-';
    return exponent + static_cast<long>(point) - static_cast<long>(first) > 0;
}

// A real in any usual form. Letters of an exponent are e, d and q; a sign alone starts an exponent as well.
bool parseReal(std::string_view item, double& value) {
    char text[512];
    int length = 0;
    std::size_t i = 0;
    if (i < item.size() && (item[i] == '+' || item[i] == '-')) {
        if (item[i] == '-') text[length++] = '-';
        ++i;
    }
    if (i == item.size()) return false;
    const char lead = item[i];
    const bool number = (lead >= '0' && lead <= '9') || lead == '.';
    if (!number) {
        // Values that are not finite are read back as they were written.
        const auto name = item.substr(i);
        const auto is = [&](std::string_view other) {
            return name.size() == other.size() &&
                   std::equal(name.begin(), name.end(), other.begin(), [](char a, char b) {
                       return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
                   });
        };
        const bool negative = length == 1;
        if (is("nan"))
            value = std::nan("");
        else if (is("inf") || is("infinity"))
            value = negative ? -HUGE_VAL : HUGE_VAL;
        else
            return false;
        return true;
    }
    bool exponent = false;
    for (; i < item.size(); ++i) {
        if (length + 2 > static_cast<int>(sizeof text)) return false;
        const char c = item[i];
        const bool letter = c == 'e' || c == 'E' || c == 'd' || c == 'D' || c == 'q' || c == 'Q';
        const bool sign = c == '+' || c == '-';
        if (!exponent && (letter || sign)) {
            exponent = true;
            text[length++] = 'e';
            if (letter && i + 1 < item.size() && (item[i + 1] == '+' || item[i + 1] == '-')) ++i;
            if (item[i] == '-') text[length++] = '-';
            if (i + 1 == item.size()) return false;
        } else if ((c >= '0' && c <= '9') || (c == '.' && !exponent)) {
            text[length++] = c;
        } else {
            return false;
        }
    }
    double read = 0.0;
    const auto end = fromText(text, text + length, read);
    if (end.ptr != text + length) return false;
    if (end.ec == std::errc::result_out_of_range) {
        // Too small is zero, too large is an error.
        if (exceedsOne(std::string_view(text, static_cast<std::size_t>(length)))) return false;
        read = text[0] == '-' ? -0.0 : 0.0;
    }
    value = read;
    return true;
}

bool parseInteger(std::string_view item, int& value) {
    if (!item.empty() && item[0] == '+') {
        item.remove_prefix(1);
        if (!item.empty() && item[0] == '-') return false;
    }
    int read = 0;
    const auto end = std::from_chars(item.data(), item.data() + item.size(), read);
    if (end.ec != std::errc{} || end.ptr != item.data() + item.size()) return false;
    value = read;
    return true;
}

}  // namespace

char composedLine[longestLine];

bool openForReading(int unit, std::string_view path) {
    return openUnit(unit, path, false, Writing::direct);
}
bool openForWriting(int unit, std::string_view path, Writing how) {
    return openUnit(unit, path, true, how);
}
bool unitIsOpen(int unit) {
    return fileOf(unit) != nullptr;
}

int firstFreeUnit(int start) {
    int unit = std::max(start, 1);
    while (unit <= largestUnit && unitIsOpen(unit)) ++unit;
    return unit;
}

void rewindUnit(int unit) {
    OpenFile* file = fileOf(unit);
    if (file == nullptr) return;
    flush(*file);
    rewindFile(file->handle);
    file->writing = file->atEnd = false;
    file->first = file->last = file->number = file->lineLength = 0;
    file->byte = 0;
}

LinePlace nextLinePlace(int unit) {
    const OpenFile* file = fileOf(unit);
    if (file == nullptr) return {};
    return {file->byte + file->first, file->number};
}

void goToLine(int unit, const LinePlace& place) {
    OpenFile* file = fileOf(unit);
    if (file == nullptr || file->writing) return;
    if (place.byte >= file->byte && place.byte <= file->byte + file->last) {
        file->first = static_cast<int>(place.byte - file->byte);
    } else {
        placeFile(file->handle, place.byte);
        file->byte = place.byte;
        file->first = file->last = 0;
    }
    file->atEnd = false;
    file->number = place.linesBefore;
    file->lineLength = 0;
}

bool stampOf(int unit, FileStamp& stamp) {
    const OpenFile* file = fileOf(unit);
    return file != nullptr && fileStamp(file->handle, stamp);
}

bool closeUnit(int unit) {
    OpenFile* file = fileOf(unit);
    if (file == nullptr) return true;
    flush(*file);
    // A file that cannot be removed is empty at least.
    if (file->failed && file->writing) emptyFile(file->handle);
    if (!closeFile(file->handle)) file->failed = true;
    if (file->beside != '\0' && !file->failed && !giveName(*file)) file->failed = true;
    if (file->failed && (file->writing || file->beside != '\0')) removeNow(*file);
    file->handle = closed;
    file->beside = '\0';
    file->unit = 0;
    fileOfUnit[unit] = 0;
    return !file->failed;
}

void closeAndDelete(int unit) {
    OpenFile* file = fileOf(unit);
    if (file == nullptr) return;
    closeFile(file->handle);
    removeNow(*file);
    file->handle = closed;
    file->beside = '\0';
    file->unit = 0;
    fileOfUnit[unit] = 0;
}

void closeAllUnits() {
    for (int unit = 1; unit <= largestUnit; ++unit) closeUnit(unit);
}

void abandonAllUnits() {
    for (int unit = 1; unit <= largestUnit; ++unit) {
        const OpenFile* file = fileOf(unit);
        if (file != nullptr && (file->writing || file->beside != '\0'))
            closeAndDelete(unit);
        else
            closeUnit(unit);
    }
}

bool removeHalfFiles(int signal) {
    if (opening != 0) {
        delayedSignal = signal;
        return false;
    }
    char native[longestPath + 3];
    for (const OpenFile& file : files)
        if (file.unit != 0 && (file.writing || file.beside != '\0') && nameNow(file, native))
            removeOpenFile(file.handle, native);
    return true;
}

int lineNumber(int unit) {
    const OpenFile* file = fileOf(unit);
    return file == nullptr ? 0 : file->number;
}

std::string_view unitPath(int unit) {
    const OpenFile* file = fileOf(unit);
    if (file == nullptr) return {};
    return {file->path, static_cast<std::size_t>(file->pathLength)};
}

std::string_view currentLine(int unit) {
    const OpenFile* file = fileOf(unit);
    if (file == nullptr) return {};
    return {file->line, static_cast<std::size_t>(file->lineLength)};
}

std::string_view readProblem(int unit) {
    const OpenFile* file = fileOf(unit);
    if (file == nullptr) return {};
    if (file->failed) return "an error of reading";
    if (file->tooLong) return "a line of more than 8192 columns";
    return {};
}

ReadStatus readTextField(int unit, char* field, int fieldSize, int width) {
    OpenFile* file = fileOf(unit);
    if (file == nullptr) return ReadStatus::endOfFile;
    const ReadStatus status = nextLine(*file);
    if (status != ReadStatus::ok) return status;
    const int count = std::min({fieldSize, width, file->lineLength});
    std::memcpy(field, file->line, static_cast<std::size_t>(count));
    std::fill(field + count, field + fieldSize, ' ');
    return ReadStatus::ok;
}

ReadStatus skipLine(int unit) {
    OpenFile* file = fileOf(unit);
    return file == nullptr ? ReadStatus::endOfFile : nextLine(*file);
}

ReadStatus skipFilledLine(int unit) {
    OpenFile* file = fileOf(unit);
    if (file == nullptr) return ReadStatus::endOfFile;
    for (;;) {
        const ReadStatus status = nextLine(*file);
        if (status != ReadStatus::ok || !std::all_of(file->line, file->line + file->lineLength, isBlank)) return status;
    }
}

FreeRecord::Found FreeRecord::nextItem(bool numeric) {
    if (ended_) return Found::null;
    if (repeats_ > 0) {
        --repeats_;
        return repeatsNull_ ? Found::null : Found::item;
    }
    item_ = {};
    for (;;) {
        if (position_ < 0 || position_ >= static_cast<int>(line_.size())) {
            if (unit_ == 0) return Found::endOfFile;
            const ReadStatus status = skipLine(unit_);
            if (status == ReadStatus::endOfFile) return Found::endOfFile;
            if (status != ReadStatus::ok) return Found::malformed;
            line_ = currentLine(unit_);
            position_ = 0;
            continue;
        }
        const char c = line_[static_cast<std::size_t>(position_)];
        if (isBlank(c)) {
            ++position_;
        } else if (c == ',') {
            ++position_;
            if (!commaAllowed_) return Found::null;
            commaAllowed_ = false;
        } else {
            break;
        }
    }
    commaAllowed_ = true;
    const auto at = [this](int i) {
        return i < static_cast<int>(line_.size()) ? line_[static_cast<std::size_t>(i)] : ' ';
    };
    const auto piece = [this](int first, int end) {
        return line_.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first));
    };

    // A repeat count before a number, a quoted text or nothing.
    int start = position_;
    int digits = start;
    while (at(digits) >= '0' && at(digits) <= '9') ++digits;
    if (digits > start && at(digits) == '*') {
        const char next = at(digits + 1);
        const bool null = isBlank(next) || next == ',';
        if (numeric || null || next == '\'' || next == '"') {
            int count = 0;
            if (!parseInteger(piece(start, digits), count) || count < 1) {
                item_ = piece(start, digits + 1);
                return Found::malformed;
            }
            repeats_ = count - 1;
            repeatsNull_ = null;
            start = digits + 1;
            if (null) {
                position_ = start;
                return Found::null;
            }
        }
    }

    const char quote = at(start);
    int end = start;
    if (!numeric && (quote == '\'' || quote == '"')) {
        for (++end;; ++end) {
            if (end >= static_cast<int>(line_.size())) {
                item_ = piece(start, end);
                return Found::malformed;
            }
            if (at(end) != quote) continue;
            if (at(end + 1) != quote) break;
            ++end;
        }
        ++end;
    } else {
        while (!isBlank(at(end)) && at(end) != ',' && !(numeric && at(end) == '/')) ++end;
        if (end == start) {  // a slash in the place of a number
            ended_ = true;
            return Found::null;
        }
    }
    item_ = piece(start, end);
    position_ = end;
    return Found::item;
}

ReadStatus FreeRecord::read(int& value) {
    switch (nextItem(true)) {
        case Found::null:
            return ReadStatus::ok;
        case Found::endOfFile:
            return ReadStatus::endOfFile;
        case Found::malformed:
            return ReadStatus::malformed;
        case Found::item:
            break;
    }
    return parseInteger(item_, value) ? ReadStatus::ok : ReadStatus::malformed;
}

ReadStatus FreeRecord::read(double& value) {
    switch (nextItem(true)) {
        case Found::null:
            return ReadStatus::ok;
        case Found::endOfFile:
            return ReadStatus::endOfFile;
        case Found::malformed:
            return ReadStatus::malformed;
        case Found::item:
            break;
    }
    return parseReal(item_, value) ? ReadStatus::ok : ReadStatus::malformed;
}

ReadStatus FreeRecord::readTextValue(char* field, int size) {
    switch (nextItem(false)) {
        case Found::null:
            return ReadStatus::ok;
        case Found::endOfFile:
            return ReadStatus::endOfFile;
        case Found::malformed:
            return ReadStatus::malformed;
        case Found::item:
            break;
    }
    std::string_view text = item_;
    const char quote = text.empty() ? ' ' : text.front();
    const bool quoted = (quote == '\'' || quote == '"') && text.size() >= 2 && text.back() == quote;
    int length = 0;
    if (quoted) text = text.substr(1, text.size() - 2);
    for (std::size_t i = 0; i < text.size() && length < size; ++i) {
        field[length++] = text[i];
        if (quoted && text[i] == quote) ++i;
    }
    std::fill(field + length, field + size, ' ');
    return ReadStatus::ok;
}

void writeRaw(int unit, std::string_view characters) {
    OpenFile* file = fileOf(unit);
    if (file == nullptr || !file->writing) return;
    while (!characters.empty()) {
        if (file->last == bufferSize) flush(*file);
        const auto count = std::min(characters.size(), static_cast<std::size_t>(bufferSize - file->last));
        std::memcpy(file->buffer + file->last, characters.data(), count);
        file->last += static_cast<int>(count);
        characters.remove_prefix(count);
    }
}

void endLine(int unit) {
    writeRaw(unit, lineEnd);
    if (OpenFile* file = fileOf(unit); file != nullptr) ++file->number;
}

void writeFree(int unit, double value) {
    writeLine(unit, FreeDouble{value});
}
void writeFree(int unit, float value) {
    writeLine(unit, FreeSingle{value});
}
void writeFree(int unit, int value) {
    writeLine(unit, FreeInteger{value});
}

void writeFree(int unit, std::string_view text) {
    writeRaw(unit, " ");
    writeRaw(unit, text);
    endLine(unit);
}

}  // namespace frigana
