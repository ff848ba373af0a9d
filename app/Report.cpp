#include "Report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ostream>

#include "Folders.h"
#include "Operations.h"
#include "Remarks.h"
#include "TextTable.h"

namespace frigana::app {

namespace {

using namespace catalogue;
using Kind = ResultEntry::Kind;

// Values in the units of a system. Those of no known quantity stay as they are.
struct Units {
    UnitSystem system = UnitSystem::SI;

    // A missing value has no unit to be converted to.
    double convert(double value, Quantity quantity) const {
        if (system == UnitSystem::SI || quantity == Quantity::none || value == missingValue) return value;
        return fromInner(value, unitIn(system, quantity));
    }
    double value(const Entry& entry) const { return convert(entry.value, entry.quantity); }
    std::string unit(const Entry& entry) const {
        if (system == UnitSystem::SI || entry.quantity == Quantity::none) return entry.unit;
        const std::string symbol(unitIn(system, entry.quantity).symbol);
        return symbol.empty() ? entry.unit : symbol;
    }
};

std::string shownNumber(double value) {
    if (value == missingValue) return "n/a";
    if (!std::isfinite(value)) return "not finite";
    char field[40];
    std::snprintf(field, sizeof field, "%.6g", value);
    return field;
}

std::string shown(const Entry& entry, const Units& units) {
    if (entry.kind == Kind::text) return visible(entry.text);
    if (entry.kind == Kind::integer)
        return entry.integer == static_cast<int>(missingValue) ? "n/a" : std::to_string(entry.integer);
    return shownNumber(units.value(entry));
}

std::string withUnit(const std::string& name, const std::string& unit) {
    return unit.empty() || unit == "-" ? name : name + " [" + unit + "]";
}

using Entries = std::vector<const Entry*>;

// Rows of a table: the row number, then one column per name.
void printIndexed(std::ostream& out, const Entries& entries, const Units& units) {
    Table table{{entries.front()->group}, {}};
    int row = 0;
    for (const Entry* entry : entries) {
        if (entry->row != row) {
            row = entry->row;
            table.rows.push_back({std::to_string(row)});
        }
        if (table.rows.size() == 1) table.headings.push_back(withUnit(entry->name, units.unit(*entry)));
        table.rows.back().push_back(shown(*entry, units));
    }
    const auto holdsNothing = [&](const Entry* entry) {
        const std::string text = shown(*entry, units);
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
void printPlaces(std::ostream& out, const Entries& entries, const Units& units) {
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
        std::vector<std::string> row{withUnit(name->name, units.unit(*name))};
        for (const auto& place : places) {
            const auto at = std::find_if(entries.begin(), entries.end(), [&](const Entry* entry) {
                return entry->name == name->name && entry->group == place;
            });
            row.push_back(at == entries.end() ? "" : shown(**at, units));
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

void printScalars(std::ostream& out, const Entries& entries, const Units& units) {
    if (const std::size_t period = periodOf(entries); period > 0) {
        Table table{{"#"}, {}};
        for (std::size_t i = 0; i < period; ++i)
            table.headings.push_back(withUnit(entries[i]->name, units.unit(*entries[i])));
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (i % period == 0) table.rows.push_back({std::to_string(i / period + 1)});
            table.rows.back().push_back(shown(*entries[i], units));
        }
        return table.print(out);
    }
    std::size_t nameWidth = 0, valueWidth = 0;
    for (const Entry* entry : entries) {
        nameWidth = std::max(nameWidth, entry->name.size());
        if (entry->isNumber()) valueWidth = std::max(valueWidth, shown(*entry, units).size());
    }
    for (const Entry* entry : entries) {
        std::string line = "  " + padRight(entry->name, nameWidth) + "  ";
        line += entry->isNumber() ? padLeft(shown(*entry, units), valueWidth) : shown(*entry, units);
        const std::string unit = units.unit(*entry);
        if (!unit.empty() && unit != "-") line += " " + unit;
        out << trimRight(line) << '\n';
    }
}

// Entries of one kind that follow one another are shown together.
enum class Manner { scalars, places, indexed };
Manner mannerOf(const Entry& entry) {
    if (entry.row > 0) return Manner::indexed;
    return entry.group.empty() ? Manner::scalars : Manner::places;
}

// Sections of the diagrams hold what is drawn, not what is read.
bool isDiagram(const Entry& entry) {
    return entry.key.find("diagram.") != std::string::npos;
}

// The numbers that a result file begins with say nothing to one who asked by name.
bool isNumberOfRequest(const Entry& entry) {
    return entry.key.starts_with("request.");
}

void printSections(std::ostream& out, const RunResult& result, const Units& units, bool withNumbers) {
    Entries together;
    const auto flush = [&] {
        if (together.empty()) return;
        switch (mannerOf(*together.front())) {
            case Manner::scalars:
                printScalars(out, together, units);
                break;
            case Manner::places:
                printPlaces(out, together, units);
                break;
            case Manner::indexed:
                printIndexed(out, together, units);
                break;
        }
        together.clear();
    };
    std::string circuit, heading;
    for (const Entry& entry : result.entries) {
        if (entry.circuit != circuit) {
            flush();
            circuit = entry.circuit;
            if (!circuit.empty()) out << "\n==== " << circuit << " ====\n";
        }
        if (entry.kind == Kind::heading) {
            flush();
            heading = visible(trimRight(entry.text));
        } else if (entry.isData() && !isDiagram(entry) && (withNumbers || !isNumberOfRequest(entry))) {
            if (!heading.empty()) out << '\n' << heading << '\n';
            heading.clear();
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

// ---- what comes first
// -------------------------------------------------------------------------------------------------

// "evaporator.outlet.temperature" as a person reads it, with the circuit in front.
std::string labelOf(const Entry& entry, const Request& request) {
    std::string key = entry.key, circuit;
    for (const Circuit& own : request.circuits)
        if (!own.key.empty() && key.starts_with(std::string(own.key) + '.')) {
            circuit = std::string(own.label) + ": ";
            key = key.substr(own.key.size() + 1);
        }
    std::string label = key;
    for (const std::string_view head : {"performance.", "system."})
        if (key.starts_with(head)) label = entry.group.empty() ? entry.name : entry.group + ' ' + entry.name;
    if (label == key)
        std::replace_if(
            label.begin(), label.end(), [](char c) { return c == '.' || c == '_'; }, ' ');
    if (!circuit.empty()) {
        if (label[0] >= 'A' && label[0] <= 'Z' && !(label[1] >= 'A' && label[1] <= 'Z'))
            label[0] = static_cast<char>(label[0] - 'A' + 'a');
    } else if (label[0] >= 'a' && label[0] <= 'z') {
        label[0] = static_cast<char>(label[0] - 'a' + 'A');
    }
    return circuit + label;
}

void printLeading(std::ostream& out, const RunResult& result, const Units& units) {
    struct Line {
        std::string label, value, unit;
    };
    std::vector<Line> lines;
    std::size_t labelWidth = 0, valueWidth = 0;
    for (const std::string_view key : result.input.request->leading) {
        const Entry* entry = result.find(key);
        if (entry == nullptr || !std::isfinite(entry->number())) continue;
        const std::string unit = units.unit(*entry);
        lines.push_back({labelOf(*entry, *result.input.request), shown(*entry, units), unit == "-" ? "" : unit});
        labelWidth = std::max(labelWidth, characters(lines.back().label));
        valueWidth = std::max(valueWidth, characters(lines.back().value));
    }
    for (const Line& line : lines) {
        const std::string text =
            "  " + padRight(line.label, labelWidth) + "  " + padLeft(line.value, valueWidth) + ' ' + line.unit;
        out << trimRight(text) << '\n';
    }
}

// Global warming potentials by the report chosen, beside those of the result file where they differ.
void printPotentials(std::ostream& out, const RunResult& result, const ReportStyle& style) {
    constexpr int cycleType = 2;
    const Request& request = *result.input.request;
    if (request.type != cycleType && request.name != "fluid-information") return;
    const std::string report(climateReports[style.climateReport]);
    for (std::size_t i = 0; i < result.input.blocks.size(); ++i) {
        const Climate climate = climateOf(result, i, style.dataFolder, style.climateReport);
        if (!climate.gwp) continue;
        out << "  Global warming potential of " << visible(climate.name) << ", " << report << ": "
            << potentialText(climate);
        if (climate.ofResultFile && *climate.ofResultFile != *climate.gwp)
            out << " (in the result file " << numberText(*climate.ofResultFile) << ')';
        out << '\n';
    }
}

void printPoints(std::ostream& out, const RunResult& result, const Units& units) {
    if (result.points.empty()) return;
    const auto heading = [&](const char* name, Quantity quantity) {
        return withUnit(name, std::string(unitIn(units.system, quantity).symbol));
    };
    std::string circuit = "?";
    Table table;
    const auto flush = [&] {
        if (!table.rows.empty()) table.print(out);
        table = {{"State point", heading("Pressure", Quantity::pressure), heading("Temperature", Quantity::temperature),
                  heading("Density", Quantity::density), heading("Enthalpy", Quantity::specificEnergy),
                  heading("Entropy", Quantity::specificHeat), "Quality",
                  heading("Saturation temperature", Quantity::temperature)},
                 {}};
    };
    for (const PointState& point : result.points) {
        if (point.circuit != circuit) {
            flush();
            circuit = point.circuit;
            out << '\n';
            for (const Circuit& own : result.input.request->circuits)
                if (own.key == circuit && !circuit.empty()) out << own.label << '\n';
        }
        const std::string number =
            std::to_string(point.number) + (point.stage > 0 ? '(' + std::to_string(point.stage) + ')' : std::string());
        const auto cell = [&](double value, Quantity quantity) { return shownNumber(units.convert(value, quantity)); };
        table.rows.push_back({padLeft(number, 2) + "  " + point.label, cell(point.pressure, Quantity::pressure),
                              cell(point.temperature, Quantity::temperature), cell(point.density, Quantity::density),
                              cell(point.enthalpy, Quantity::specificEnergy),
                              cell(point.entropy, Quantity::specificHeat), cell(point.quality, Quantity::quality),
                              cell(point.saturationTemperature, Quantity::temperature)});
    }
    flush();
}

void printRemarks(std::ostream& out, const RunResult& result) {
    for (const Remark& remark : result.remarks) {
        out << "  " << nameOf(remark.weight) << ": " << remark.text;
        if (!remark.place.empty()) out << " (" << remark.place << ')';
        out << '\n';
        if (!remark.advice.empty()) out << "      " << remark.advice << '\n';
    }
}

constexpr int storeNewMixture = 7;

}  // namespace

remarks::Circumstances circumstancesOf(const ReportStyle& style) {
    return {style.dataFolder, style.units, style.climateReport};
}

void addRemarks(RunResult& result, const ReportStyle& style) {
    result.remarks = remarks::remarksOn(result, circumstancesOf(style));
}

int exitStatus(const RunResult& result) {
    switch (result.report.end) {
        case RunEnd::refused:
            return result.report.formWritten ? 2 : 3;
        case RunEnd::runtimeError:
            return 3;
        case RunEnd::returned:
            break;
    }
    return result.resultExists ? 0 : 3;
}

void printReport(std::ostream& out, const RunResult& result, const ReportStyle& style) {
    const RunReport& report = result.report;
    const Units units{style.units};
    switch (report.end) {
        case RunEnd::refused:
            out << requestedName(report) << ": refused\n"
                << "  code     " << report.IERR << '\n'
                << "  message  " << visible(plainText(report.HERR.view())) << '\n';
            if (report.parameter > 0) {
                out << "  from     ";
                if (style.resultFile) {
                    out << "parameter " << report.parameter;
                    if (report.record == 2) out << " of the second circuit";
                    out << ": " << report.parameterName << '\n';
                } else {
                    out << refusedKey(result) << '\n';
                }
            }
            if (const std::string help = remarks::helpFor(result, circumstancesOf(style)); !help.empty())
                out << "  help     " << help << '\n';
            if (style.resultFile) out << "  result   " << visible(shownPath(report.resultPath.view())) << '\n';
            return;
        case RunEnd::runtimeError:
            out << "No result: " << visible(plainText(report.HERR.view())) << '\n';
            return;
        case RunEnd::returned:
            break;
    }
    if (!result.resultExists) {
        out << "No result: there is no operation for " << requestedName(report) << '\n';
        return;
    }
    out << requestedName(report) << (remarks::anyWrong(result.remarks) ? ": done, but\n" : ": done\n");
    printRemarks(out, result);
    if (result.input.request != nullptr) {
        printLeading(out, result, units);
        printPotentials(out, result, style);
        printPoints(out, result, units);
        if (!result.points.empty()) out << '\n';
    }
    printSections(out, result, units, style.resultFile);
    const bool mixture = report.type == 1 && report.sub == storeNewMixture;
    if (style.resultFile || mixture)
        out << (mixture ? "Mixture file: " : "Result file: ") << visible(shownPath(report.resultPath.view())) << '\n';
}

void printPoints(std::ostream& out, const std::vector<Reported>& results) {
    const Units units{results.front().style.units};
    Table table{{"Point"}, {}};
    std::vector<std::string> keys;
    for (const auto& [result, style] : results)
        for (const Entry& entry : result.entries)
            if (entry.isNumber() && !entry.key.starts_with("request.") && result.isDone() &&
                std::find(keys.begin(), keys.end(), entry.key) == keys.end()) {
                keys.push_back(entry.key);
                table.headings.push_back(withUnit(entry.name, units.unit(entry)));
            }
    for (std::size_t i = 0; i < results.size(); ++i) {
        std::vector<std::string> row{std::to_string(i + 1)};
        for (const std::string& key : keys) {
            const Entry* entry = results[i].result.isDone() ? results[i].result.find(key) : nullptr;
            row.push_back(entry == nullptr ? "n/a" : shown(*entry, units));
        }
        table.rows.push_back(std::move(row));
    }
    out << requestedName(results.front().result.report) << ": " << results.size() << " points\n";
    table.print(out);
    for (std::size_t i = 0; i < results.size(); ++i)
        if (!results[i].result.isDone())
            out << "Point " << i + 1 << ": " << plainText(results[i].result.report.HERR.view()) << '\n';
}

std::string requestedName(const RunReport& report) {
    std::string name(operationName(report.type, report.sub));
    if (!name.empty()) return name;
    return "request type " + std::to_string(report.type) + ", sub-type " + std::to_string(report.sub);
}

}  // namespace frigana::app
