#include "Report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <ostream>

#include "Folders.h"
#include "Operations.h"

namespace frigana::app {

namespace {

using Kind = ResultEntry::Kind;

bool isValue(const Entry& entry) {
    return entry.kind == Kind::value || entry.kind == Kind::integer;
}
bool isData(const Entry& entry) {
    return isValue(entry) || entry.kind == Kind::text;
}

std::string shown(const Entry& entry) {
    if (entry.kind == Kind::text) return entry.text;
    if (entry.kind == Kind::integer)
        return entry.integer == static_cast<int>(missingValue) ? "n/a" : std::to_string(entry.integer);
    if (entry.value == missingValue) return "n/a";
    if (!std::isfinite(entry.value)) return "not finite";
    char field[40];
    std::snprintf(field, sizeof field, "%.6g", entry.value);
    return field;
}

std::string padLeft(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}
std::string padRight(const std::string& text, std::size_t width) {
    return text.size() < width ? text + std::string(width - text.size(), ' ') : text;
}

std::string withUnit(const Entry& entry) {
    const bool bare = entry.unit.empty() || entry.unit == "-";
    return bare ? entry.name : entry.name + " [" + entry.unit + "]";
}

// A heading in lines no longer than the widest value, broken between words.
std::vector<std::string> wrapped(const std::string& heading, std::size_t width) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < heading.size();) {
        std::size_t end = heading.find(' ', at);
        if (end == std::string::npos) end = heading.size();
        // A unit is one word, although it may hold a blank.
        if (heading[at] == '[') end = heading.size();
        const std::string word = heading.substr(at, end - at);
        if (!lines.empty() && lines.back().size() + 1 + word.size() <= width)
            lines.back() += " " + word;
        else
            lines.push_back(word);
        at = end + 1;
    }
    if (lines.empty()) lines.emplace_back();
    return lines;
}

// Rows of texts under headings, each column as wide as it must be. What does not fit side by side follows below, the
// first column before it again.
struct Table {
    std::vector<std::string> headings;
    std::vector<std::vector<std::string>> rows;

    void print(std::ostream& out) const {
        constexpr std::size_t narrowest = 9, widestLine = 118;
        std::vector<std::vector<std::string>> headingLines;
        std::vector<std::size_t> widths;
        for (std::size_t i = 0; i < headings.size(); ++i) {
            std::size_t width = i == 0 ? headings[0].size() : narrowest;
            for (const auto& row : rows)
                if (i < row.size()) width = std::max(width, row[i].size());
            headingLines.push_back(wrapped(headings[i], width));
            std::size_t needed = i == 0 ? width : 0;
            for (const auto& line : headingLines.back()) needed = std::max(needed, line.size());
            for (const auto& row : rows)
                if (i < row.size()) needed = std::max(needed, row[i].size());
            widths.push_back(needed);
        }
        for (std::size_t first = 1; first < headings.size();) {
            std::size_t last = first, width = widths[0] + 2;
            while (last < headings.size() && (last == first || width + widths[last] + 2 <= widestLine))
                width += widths[last++] + 2;
            if (first > 1) out << '\n';
            printColumns(out, headingLines, widths, first, last);
            first = last;
        }
    }

  private:
    void printColumns(std::ostream& out, const std::vector<std::vector<std::string>>& headingLines,
                      const std::vector<std::size_t>& widths, std::size_t first, std::size_t last) const {
        std::size_t height = headingLines[0].size();
        for (std::size_t i = first; i < last; ++i) height = std::max(height, headingLines[i].size());
        // Headings stand on the rows.
        const auto headingAt = [&](std::size_t column, std::size_t line) {
            const auto& lines = headingLines[column];
            const std::size_t above = height - lines.size();
            return line < above ? std::string() : lines[line - above];
        };
        for (std::size_t line = 0; line < height; ++line) {
            std::string text = "  " + padRight(headingAt(0, line), widths[0]);
            for (std::size_t i = first; i < last; ++i) text += "  " + padLeft(headingAt(i, line), widths[i]);
            out << trimRight(text) << '\n';
        }
        for (const auto& row : rows) {
            std::string text = "  " + padRight(row.empty() ? "" : row[0], widths[0]);
            for (std::size_t i = first; i < last; ++i) text += "  " + padLeft(i < row.size() ? row[i] : "", widths[i]);
            out << trimRight(text) << '\n';
        }
    }
};

using Entries = std::vector<const Entry*>;

// Rows of a table: the row number, then one column per name.
void printIndexed(std::ostream& out, const Entries& entries) {
    Table table{{entries.front()->group}, {}};
    int row = 0;
    for (const Entry* entry : entries) {
        if (entry->row != row) {
            row = entry->row;
            table.rows.push_back({std::to_string(row)});
        }
        if (table.rows.size() == 1) table.headings.push_back(withUnit(*entry));
        table.rows.back().push_back(shown(*entry));
    }
    const auto holdsNothing = [](const Entry* entry) {
        const std::string text = shown(*entry);
        return text.empty() || text == "n/a";
    };
    if (std::all_of(entries.begin(), entries.end(), holdsNothing)) {
        out << "  none\n";
        return;
    }
    for (auto& cells : table.rows) cells.resize(table.headings.size());
    table.print(out);
}

// The same names at several places: one row per name, one column per place.
void printPlaces(std::ostream& out, const Entries& entries) {
    std::vector<std::string> places;
    std::vector<const Entry*> names;
    for (const Entry* entry : entries) {
        if (std::find(places.begin(), places.end(), entry->group) == places.end()) places.push_back(entry->group);
        if (std::none_of(names.begin(), names.end(), [&](const Entry* known) { return known->name == entry->name; }))
            names.push_back(entry);
    }
    Table table{{""}, {}};
    for (const auto& place : places) table.headings.push_back(place);
    for (const Entry* name : names) {
        std::vector<std::string> row{withUnit(*name)};
        for (const auto& place : places) {
            const auto at = std::find_if(entries.begin(), entries.end(), [&](const Entry* entry) {
                return entry->name == name->name && entry->group == place;
            });
            row.push_back(at == entries.end() ? "" : shown(**at));
        }
        table.rows.push_back(row);
    }
    table.print(out);
}

// Names that come back in the same order, such as pressure and enthalpy of the points of a diagram: how many there are
// before the first comes back; 0 if they are not such a list.
std::size_t periodOf(const Entries& entries) {
    for (std::size_t period = 1; 3 * period <= entries.size(); ++period) {
        if (entries.size() % period != 0) continue;
        bool same = true;
        for (std::size_t i = period; i < entries.size() && same; ++i)
            same = entries[i]->name == entries[i - period]->name;
        if (same) return period;
    }
    return 0;
}

void printScalars(std::ostream& out, const Entries& entries) {
    if (const std::size_t period = periodOf(entries); period > 0) {
        Table table{{"#"}, {}};
        for (std::size_t i = 0; i < period; ++i) table.headings.push_back(withUnit(*entries[i]));
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (i % period == 0) table.rows.push_back({std::to_string(i / period + 1)});
            table.rows.back().push_back(shown(*entries[i]));
        }
        return table.print(out);
    }
    std::size_t nameWidth = 0, valueWidth = 0;
    for (const Entry* entry : entries) {
        nameWidth = std::max(nameWidth, entry->name.size());
        if (isValue(*entry)) valueWidth = std::max(valueWidth, shown(*entry).size());
    }
    for (const Entry* entry : entries) {
        std::string line = "  " + padRight(entry->name, nameWidth) + "  ";
        line += isValue(*entry) ? padLeft(shown(*entry), valueWidth) : shown(*entry);
        if (!entry->unit.empty() && entry->unit != "-") line += " " + entry->unit;
        out << trimRight(line) << '\n';
    }
}

// Entries of one kind that follow one another are shown together.
enum class Manner { scalars, places, indexed };
Manner mannerOf(const Entry& entry) {
    if (entry.row > 0) return Manner::indexed;
    return entry.group.empty() ? Manner::scalars : Manner::places;
}

void printSuccess(std::ostream& out, const RunResult& result) {
    Entries together;
    const auto flush = [&] {
        if (together.empty()) return;
        switch (mannerOf(*together.front())) {
            case Manner::scalars:
                printScalars(out, together);
                break;
            case Manner::places:
                printPlaces(out, together);
                break;
            case Manner::indexed:
                printIndexed(out, together);
                break;
        }
        together.clear();
    };
    std::string circuit;
    for (const Entry& entry : result.entries) {
        if (entry.circuit != circuit) {
            flush();
            circuit = entry.circuit;
            if (!circuit.empty()) out << "\n==== " << circuit << " ====\n";
        }
        if (entry.kind == Kind::heading) {
            flush();
            out << '\n' << trimRight(entry.text) << '\n';
        } else if (isData(entry)) {
            if (!together.empty()) {
                const Entry& before = *together.front();
                const bool other = mannerOf(before) != mannerOf(entry) ||
                                   (mannerOf(entry) == Manner::indexed && before.group != entry.group);
                if (other) flush();
            }
            together.push_back(&entry);
        }
    }
    flush();
    out << '\n';
}

std::string requested(const RunReport& report) {
    const std::string name(operationName(report.type, report.sub));
    if (!name.empty()) return name;
    return "request type " + std::to_string(report.type) + ", sub-type " + std::to_string(report.sub);
}

constexpr int storeNewMixture = 7;

}  // namespace

int exitStatus(const RunResult& result) {
    switch (result.report.end) {
        case RunEnd::refused:
            return 2;
        case RunEnd::runtimeError:
            return 3;
        case RunEnd::returned:
            break;
    }
    return result.resultExists ? 0 : 3;
}

void gatherEntries(std::vector<Entry>& entries) {
    listenToResult(
        [](void* context, const ResultEntry& e) {
            auto& gathered = *static_cast<std::vector<Entry>*>(context);
            if (e.kind == Kind::start) return gathered.clear();
            gathered.push_back({e.kind, e.line, std::string(e.circuit), std::string(e.section), std::string(e.group),
                                e.row, std::string(e.name), std::string(e.unit), e.value, e.integer,
                                std::string(e.text)});
        },
        &entries);
}

void printReport(std::ostream& out, const RunResult& result) {
    const RunReport& report = result.report;
    switch (report.end) {
        case RunEnd::refused:
            out << requested(report) << ": refused\n"
                << "  code     " << report.IERR << '\n'
                << "  message  " << plainText(report.HERR.view()) << '\n';
            if (report.parameter > 0) {
                out << "  from     parameter " << report.parameter;
                if (report.record == 2) out << " of the second circuit";
                out << ": " << report.parameterName << '\n';
            }
            out << "  result   " << shownPath(report.resultPath.view()) << '\n';
            return;
        case RunEnd::runtimeError:
            out << "No result: " << plainText(report.HERR.view()) << '\n';
            return;
        case RunEnd::returned:
            break;
    }
    if (!result.resultExists) {
        out << "No result: there is no operation for " << requested(report) << '\n';
        return;
    }
    out << requested(report) << ": done\n";
    printSuccess(out, result);
    const bool mixture = report.type == 1 && report.sub == storeNewMixture;
    out << (mixture ? "Mixture file: " : "Result file: ") << shownPath(report.resultPath.view()) << '\n';
}

void printJson(std::ostream& out, const RunResult& result) {
    using nlohmann::json;
    const RunReport& report = result.report;
    json root;
    root["operation"] = {{"type", report.type}, {"subtype", report.sub}, {"name", requested(report)}};
    root["exit_status"] = exitStatus(result);
    root["result_file"] = shownPath(report.resultPath.view());
    switch (report.end) {
        case RunEnd::refused:
            root["outcome"] = "refused";
            root["code"] = report.IERR;
            root["message"] = plainText(report.HERR.view());
            if (report.parameter > 0)
                root["parameter"] = {{"circuit", report.record},
                                     {"number", report.parameter},
                                     {"name", std::string(report.parameterName)}};
            break;
        case RunEnd::runtimeError:
            root["outcome"] = "runtime error";
            root["message"] = plainText(report.HERR.view());
            break;
        case RunEnd::returned:
            root["outcome"] = result.resultExists ? "success" : "no such operation";
            break;
    }
    json entries = json::array();
    if (report.end == RunEnd::returned) {
        for (const Entry& entry : result.entries) {
            if (!isData(entry)) continue;
            json item = {{"line", entry.line}, {"name", entry.name}};
            if (!entry.circuit.empty()) item["circuit"] = entry.circuit;
            if (!entry.section.empty()) item["section"] = entry.section;
            if (!entry.group.empty()) item["group"] = entry.group;
            if (entry.row > 0) item["row"] = entry.row;
            if (!entry.unit.empty()) item["unit"] = entry.unit;
            if (entry.kind == Kind::value)
                item["value"] = entry.value;
            else if (entry.kind == Kind::integer)
                item["value"] = entry.integer;
            else
                item["value"] = entry.text;
            entries.push_back(std::move(item));
        }
    }
    root["values"] = std::move(entries);
    // Titles may hold bytes that are no UTF-8.
    out << root.dump(2, ' ', false, json::error_handler_t::replace) << '\n';
}

void printCsv(std::ostream& out, const RunResult& result) {
    const auto field = [](const std::string& text) {
        if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
        std::string quoted = "\"";
        for (char character : text) quoted += character == '"' ? std::string("\"\"") : std::string(1, character);
        return quoted + "\"";
    };
    out << "line,circuit,section,group,row,name,unit,value\n";
    if (result.report.end != RunEnd::returned) return;
    for (const Entry& entry : result.entries) {
        if (!isData(entry)) continue;
        out << entry.line << ',' << field(entry.circuit) << ',' << field(entry.section) << ',' << field(entry.group)
            << ',';
        if (entry.row > 0) out << entry.row;
        out << ',' << field(entry.name) << ',' << field(entry.unit) << ',';
        if (entry.kind == Kind::value) {
            char number[40];
            std::snprintf(number, sizeof number, "%.17g", entry.value);
            out << number;
        } else if (entry.kind == Kind::integer) {
            out << entry.integer;
        } else {
            out << field(entry.text);
        }
        out << '\n';
    }
}

}  // namespace frigana::app
