#include "ResultWriter.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "14_ErrorControl.h"
#include "TextFile.h"

namespace frigana {

namespace {

// ---- store of names -------------------------------------------------------------------------------------------------

constexpr int mostNames = 2048;  // a power of two
constexpr int nameCharacters = 65536;

struct NameStore {
    char characters[nameCharacters];
    int used = 0;
    int count = 1;  // number 0 is the empty name
    struct Name {
        int first, length;
    } names[mostNames];
    short table[2 * mostNames];  // by hash, 0 where free
};
NameStore store;

std::string_view nameOf(int number) {
    const NameStore::Name& name = store.names[number];
    return {store.characters + name.first, static_cast<std::size_t>(name.length)};
}

// Number of a name. When the store is full a new name becomes the empty one: the file is not touched by that.
int numberOf(std::string_view name) {
    if (name.empty()) return 0;
    unsigned hash = 2166136261u;
    for (char character : name) hash = (hash ^ static_cast<unsigned char>(character)) * 16777619u;
    unsigned at = hash % (2 * mostNames);
    while (store.table[at] != 0) {
        if (nameOf(store.table[at]) == name) return store.table[at];
        at = (at + 1) % (2 * mostNames);
    }
    const int length = static_cast<int>(name.size());
    if (store.count == mostNames || store.used + length > nameCharacters) return 0;
    std::memcpy(store.characters + store.used, name.data(), name.size());
    store.names[store.count] = {store.used, length};
    store.used += length;
    store.table[at] = static_cast<short>(store.count);
    return store.count++;
}

// ---- names of the lines of the files written last -------------------------------------------------------------------

constexpr int mostJournals = 6;
constexpr int mostJournalLines = 1200;

struct Journal {
    Text255 path;
    unsigned age = 0;
    int lines = 0;
    struct Line {
        ResultEntry::Kind kind;
        short circuit, section, group, row, name, unit;
        bool missing;
    } line[mostJournalLines];
};
Journal journals[mostJournals];
unsigned journalClock = 0;

int findJournal(const Text255& path) {
    for (int i = 0; i < mostJournals; ++i)
        if (journals[i].age != 0 && journals[i].path == path) return i;
    return -1;
}

int newJournal(const Text255& path) {
    int oldest = findJournal(path);
    if (oldest < 0) {
        oldest = 0;
        for (int i = 1; i < mostJournals; ++i)
            if (journals[i].age < journals[oldest].age) oldest = i;
    }
    journals[oldest].path = path;
    journals[oldest].lines = 0;
    journals[oldest].age = ++journalClock;
    return oldest;
}

ResultListener listener = nullptr;
void* listenerContext = nullptr;

}  // namespace

void listenToResult(ResultListener newListener, void* context) {
    listener = newListener;
    listenerContext = context;
}

// ---- copies ---------------------------------------------------------------------------------------------------------

ResultCopy::ResultCopy(const Text255& path, int unit) : unit_(unit), journal_(findJournal(path)) {
    if (!openForReading(unit, path.view())) fileError(path.view(), "cannot be read");
}

void ResultCopy::skipLines(int count) {
    for (int i = 0; i < count; ++i)
        if (skipLine(unit_) != ReadStatus::ok) readError(unit_, "a line of a result", {});
}

void ResultCopy::close() {
    closeUnit(unit_);
}
int ResultCopy::line() const {
    return lineNumber(unit_);
}

void deleteScratch(const Text255& path) {
    removeFile(path.view());
}

// ---- writer ---------------------------------------------------------------------------------------------------------

ResultWriter::ResultWriter(const Text255& path, int unit)
    : unit_(unit),
      journal_(newJournal(path)),
      result_(path == ERRORFILEOUT || path == runReport.resultPath),
      heard_(result_ && listener != nullptr) {
    if (!openForWriting(unit, path.view(), result_ ? Writing::whole : Writing::direct))
        fileError(path.view(), "cannot be written");
    if (heard_) listener(listenerContext, ResultEntry{.kind = ResultEntry::Kind::start, .line = 0});
}

void ResultWriter::refuse() {
    closeAndDelete(unit_);
    // Nothing of what was heard stands anywhere.
    if (heard_) listener(listenerContext, ResultEntry{.kind = ResultEntry::Kind::start, .line = 0});
    constexpr int ofType = 100000, ofSub = 1000, lastOfRange = 299;
    const bool cycle = runReport.type != 1;
    ERRORCONTROL((cycle ? 2 : 1) * ofType + runReport.sub * ofSub + lastOfRange,
                 cycle ? "Error: the cycle has no solution" : "Error: the state has no finite properties");
    std::abort();
}

void ResultWriter::close() {
    if (result_ && !finite_) refuse();
    const Text255 path(unitPath(unit_));
    if (!closeUnit(unit_)) fileError(path.view(), "cannot be written");
}

int ResultWriter::line() const {
    return lineNumber(unit_);
}

// A line has just been written, or a cell of the line that comes next.
void ResultWriter::tell(ResultEntry entry) {
    Journal& journal = journals[journal_];
    if (entry.line >= 1 && entry.line <= mostJournalLines) {
        journal.line[entry.line - 1] = {.kind = entry.kind,
                                        .circuit = static_cast<short>(circuit_),
                                        .section = static_cast<short>(section_),
                                        .group = static_cast<short>(group_),
                                        .row = static_cast<short>(row_),
                                        .name = static_cast<short>(numberOf(entry.name)),
                                        .unit = static_cast<short>(numberOf(entry.unit)),
                                        .missing = entry.value == missingValue};
        journal.lines = entry.line;
    }
    if (entry.kind == ResultEntry::Kind::value && !std::isfinite(entry.value)) finite_ = false;
    if (!heard_) return;
    entry.circuit = nameOf(circuit_);
    entry.section = nameOf(section_);
    entry.group = nameOf(group_);
    entry.row = row_;
    listener(listenerContext, entry);
}

void ResultWriter::circuit(std::string_view name) {
    circuit_ = numberOf(name);
    section_ = group_ = row_ = 0;
}

void ResultWriter::group(std::string_view name) {
    group_ = numberOf(name);
    row_ = 0;
}

void ResultWriter::row(std::string_view table, int index) {
    group_ = numberOf(table);
    row_ = index;
}

void ResultWriter::heading(std::string_view text) {
    group({});
    section_ = numberOf(trimRight(text));
    writeFree(unit_, text);
    tell({.kind = ResultEntry::Kind::heading, .line = line(), .text = text});
}

void ResultWriter::fixedHeading(std::string_view text) {
    group({});
    section_ = numberOf(trimRight(text));
    writeLine(unit_, text);
    tell({.kind = ResultEntry::Kind::heading, .line = line(), .text = text});
}

void ResultWriter::value(std::string_view name, std::string_view unit, double value) {
    writeFree(unit_, value);
    tell({.kind = ResultEntry::Kind::value, .line = line(), .name = name, .unit = unit, .value = value});
}

void ResultWriter::value(std::string_view name, std::string_view unit, float value) {
    writeFree(unit_, value);
    tell({.kind = ResultEntry::Kind::value,
          .line = line(),
          .name = name,
          .unit = unit,
          .value = static_cast<double>(value)});
}

void ResultWriter::noValue(std::string_view name, std::string_view unit, double inItsPlace) {
    writeFree(unit_, inItsPlace);
    tell({.kind = ResultEntry::Kind::value, .line = line(), .name = name, .unit = unit, .value = missingValue});
}

void ResultWriter::integer(std::string_view name, int value) {
    writeFree(unit_, value);
    tell({.kind = ResultEntry::Kind::integer, .line = line(), .name = name, .integer = value});
}

void ResultWriter::text(std::string_view name, std::string_view text) {
    writeFree(unit_, text);
    tell({.kind = ResultEntry::Kind::text, .line = line(), .name = name, .text = text});
}

void ResultWriter::blankLine() {
    writeFree(unit_, std::string_view{});
    tell({.kind = ResultEntry::Kind::blank, .line = line()});
}

namespace {
template <class Piece>
void writePiece(int unit, const Piece& piece) {
    char field[400];
    Composer composer(field, sizeof field);
    composer.add(piece);
    writeRaw(unit, std::string_view(field, static_cast<std::size_t>(composer.used())));
}
}  // namespace

void ResultWriter::cell(std::string_view name, std::string_view unit, const FixedPoint& value) {
    writePiece(unit_, value);
    tell({.kind = ResultEntry::Kind::value, .line = line() + 1, .name = name, .unit = unit, .value = value.value});
}

void ResultWriter::cell(std::string_view name, std::string_view unit, const Integer& value) {
    writePiece(unit_, value);
    tell({.kind = ResultEntry::Kind::integer, .line = line() + 1, .name = name, .unit = unit, .integer = value.value});
}

void ResultWriter::cell(std::string_view name, std::string_view unit, const Character& value) {
    writePiece(unit_, value);
    tell({.kind = ResultEntry::Kind::text,
          .line = line() + 1,
          .name = name,
          .unit = unit,
          .text = trimRight(value.text)});
}

void ResultWriter::space(int count) {
    writePiece(unit_, Blanks{count});
}

void ResultWriter::endRow() {
    endLine(unit_);
    if (heard_) tell({.kind = ResultEntry::Kind::endOfRow, .line = line()});
}

void ResultWriter::filler() {
    writeLine(unit_, Integer{1, 0});
}

void ResultWriter::copyLines(ResultCopy& source, int count) {
    constexpr int columns = 80;
    for (int i = 0; i < count; ++i) {
        FixedText<columns> field;
        if (readText(source.unit_, field) != ReadStatus::ok) readError(source.unit_, "a line of a result", {});
        const auto text = field.trimmed();
        writeFree(unit_, text);

        ResultEntry entry{.kind = ResultEntry::Kind::text, .line = line(), .text = text};
        const int at = source.line() - 1;
        bool missing = false;
        if (source.journal_ >= 0 && at < journals[source.journal_].lines) {
            const Journal::Line known = journals[source.journal_].line[at];
            entry.kind = known.kind;
            entry.name = nameOf(known.name);
            entry.unit = nameOf(known.unit);
            section_ = known.section;
            group_ = known.group;
            row_ = known.row;
            missing = known.missing;
        }
        const auto first = text.find_first_not_of(' ');
        entry.text = first == std::string_view::npos ? std::string_view{} : text.substr(first);
        FreeRecord record(text);
        if (entry.kind == ResultEntry::Kind::value && record.read(entry.value) != ReadStatus::ok)
            entry.kind = ResultEntry::Kind::text;
        else if (entry.kind == ResultEntry::Kind::integer && record.read(entry.integer) != ReadStatus::ok)
            entry.kind = ResultEntry::Kind::text;
        if (missing) entry.value = missingValue;
        tell(entry);
    }
}

}  // namespace frigana
