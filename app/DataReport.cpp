#include "DataReport.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <ostream>

#include "Folders.h"
#include "OPENFL.h"

namespace frigana::app {

namespace {

namespace fs = std::filesystem;

std::string plain(std::string_view text) {
    text = trimRight(text.substr(0, text.find('\0')));
    std::string result;
    for (const char character : text) result += static_cast<unsigned char>(character) < ' ' ? ' ' : character;
    return result;
}

std::string padded(const std::string& text, std::size_t width, bool left = false) {
    const std::string blanks(text.size() < width ? width - text.size() : 0, ' ');
    return left ? text + blanks : blanks + text;
}

std::string shortNumber(double value) {
    char field[40];
    std::snprintf(field, sizeof field, "%.2g", value);
    if (std::fabs(value) < 5e-7) return "0";
    return field;
}

// A value beyond its bound has a mark behind it: ! out of bound, * known.
std::string cell(const Figure& figure) {
    switch (figure.verdict) {
        case Verdict::absent:
            return "- ";
        case Verdict::clean:
            return shortNumber(figure.value) + " ";
        case Verdict::known:
            return shortNumber(figure.value) + "*";
        case Verdict::outOfBound:
            break;
    }
    return (figure.computed ? shortNumber(figure.value) : std::string("fails")) + "!";
}

using Row = std::vector<std::string>;

void printTable(std::ostream& out, const std::vector<Row>& rows) {
    std::vector<std::size_t> widths;
    for (const Row& row : rows)
        for (std::size_t i = 0; i < row.size() && row.size() > 1; ++i) {  // a lone text may run over the columns
            if (i == widths.size()) widths.push_back(0);
            widths[i] = std::max(widths[i], row[i].size());
        }
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) line += "  " + padded(row[i], widths[i], i == 0);
        out << trimRight(line) << '\n';
    }
}

void printFigures(std::ostream& out, const DataCheckResult& result) {
    std::vector<Row> rows(3);
    rows[0] = {"Fluid"};
    rows[1] = {""};
    rows[2] = {"bound"};
    for (const FigureKind& kind : figureKinds) {
        rows[0].push_back(std::string(kind.heading) + " ");
        rows[1].push_back("[" + std::string(kind.unit) + "] ");
        rows[2].push_back((kind.bound == noBound ? std::string("-") : shortNumber(kind.bound)) + " ");
    }
    for (const FluidReport& fluid : result.fluids) {
        rows.push_back({plain(fluid.file.view())});
        if (!fluid.readable) rows.back()[0] += "  cannot be set up!";
        if (fluid.readable)
            for (const Figure& figure : fluid.figures) rows.back().push_back(cell(figure));
    }
    out << "Figures: largest deviation of each\n";
    printTable(out, rows);
    out << '\n';
    for (const FigureKind& kind : figureKinds)
        out << "  " << padded(std::string(kind.heading), 7, true) << ' ' << kind.meaning << '\n';
    out << "  ! out of its bound, or failed   * out of its bound for a known reason\n\n";
}

// Keys in the order of the file, an alternative with its mark, repeated ones once.
std::string sectionsOf(const FluidFileScan& scan) {
    std::string text;
    for (int k = 1; k <= scan.sections; ++k) {
        const SectionFound& section = scan.section[k];
        const std::string name = (section.mark == '@' ? "@" : "") + plain(section.key.view());
        const std::string pair = name + " " + plain(section.tag.view());
        text += (text.empty() ? "" : ", ") + pair;
    }
    return text;
}

void printModels(std::ostream& out, const DataCheckResult& result) {
    std::vector<Row> rows = {
        {"Fluid", "equation", "ideal gas", "viscosity", "conductivity", "enhancement", "surface", "sections"}};
    for (const FluidReport& fluid : result.fluids) {
        if (!fluid.readable) continue;
        const ModelsChosen& m = fluid.models;
        rows.push_back({plain(fluid.file.view())});
        for (const Text3* tag :
             {&m.equation, &m.idealGas, &m.viscosity, &m.conductivity, &m.enhancement, &m.surfaceTension})
            rows.back().push_back(plain(tag->view()));
        rows.back().push_back(std::to_string(fluid.scan.sections));
    }
    out << "Models chosen\n";
    printTable(out, rows);
    out << "\nSections found (@ alternative)\n";
    for (const FluidReport& fluid : result.fluids)
        out << "  " << padded(plain(fluid.file.view()), 12, true) << "  " << sectionsOf(fluid.scan) << '\n';
    out << '\n';
}

void printFaults(std::ostream& out, const std::string& file, const FaultList& faults) {
    for (int k = 1; k <= faults.keptCount(); ++k) {
        const std::string text = plain(faults.kept[k].text.view());
        // Readers of records name file and line themselves.
        const bool named = text.find(", line ") != std::string::npos && text.rfind(file, 0) == 0;
        out << "  ";
        if (!named) {
            out << file;
            if (faults.kept[k].line > 0) out << ", line " << faults.kept[k].line;
            out << ": ";
        }
        out << text << '\n';
    }
    if (faults.count > faults.keptCount())
        out << "  " << file << ": " << faults.count - faults.keptCount() << " more\n";
}

std::string place(const Figure& figure) {
    char text[80] = "";
    if (figure.T > 0.0 && figure.D > 0.0)
        std::snprintf(text, sizeof text, " at %.6g K and %.6g mol/L", figure.T, figure.D);
    else if (figure.T > 0.0)
        std::snprintf(text, sizeof text, " at %.6g K", figure.T);
    return text;
}

std::string valueOf(const Figure& figure, const FigureKind& kind) {
    const std::string name = std::string(kind.name) + ' ', unit = ' ' + std::string(kind.unit);
    if (!figure.computed) return name + "fails" + place(figure);
    return name + shortNumber(figure.value) + unit + place(figure) + ", bound " + shortNumber(kind.bound) + unit;
}

void printNotes(std::ostream& out, const FluidReport& fluid) {
    const std::string file = plain(fluid.file.view());
    printFaults(out, file, fluid.scan.faults);
    if (fluid.ierr != 0) out << "  " << file << ": " << plain(fluid.message.view()) << '\n';
    const std::string refusal = plain(fluid.refusal.view());
    bool told = refusal.empty() || plain(fluid.message.view()).find(refusal) != std::string::npos;
    for (int k = 1; k <= fluid.scan.faults.keptCount(); ++k)
        told = told || plain(fluid.scan.faults.kept[k].text.view()) == refusal;
    if (!told) out << "  " << refusal << '\n';
    for (int i = 0; i < figureCount; ++i) {
        const Figure& figure = fluid.figures[i];
        if (figure.verdict != Verdict::outOfBound) continue;
        out << "  " << file << ": " << valueOf(figure, figureKinds[i]);
        const std::string note = plain(figure.note.view());
        if (!note.empty()) out << ": " << note;
        out << '\n';
    }
}

// Each reason once, with the figures that it explains.
void printKnown(std::ostream& out, const DataCheckResult& result) {
    std::vector<std::pair<std::string, std::string>> reasons;
    for (const FluidReport& fluid : result.fluids)
        for (int i = 0; i < figureCount; ++i) {
            const Figure& figure = fluid.figures[i];
            if (figure.verdict != Verdict::known) continue;
            const std::string reason = plain(figure.note.view());
            auto at = std::find_if(reasons.begin(), reasons.end(), [&](const auto& r) { return r.first == reason; });
            if (at == reasons.end()) at = reasons.insert(reasons.end(), {reason, ""});
            at->second += "    " + plain(fluid.file.view()) + ": " + valueOf(figure, figureKinds[i]) + '\n';
        }
    for (const auto& [reason, figures] : reasons) {
        out << "Known: " << reason << '\n' << figures << '\n';
    }
}

void printMixtures(std::ostream& out, const DataCheckResult& result) {
    const ParametersReport& p = result.parameters;
    out << "Mixing parameters: " << plain(p.file.view()) << ", " << p.functions << " departure functions, " << p.pairs
        << " pairs (" << p.estimated << " estimated), " << p.tried << " set up\n";
    int components = 0, estimated = 0;
    for (const MixtureReport& mixture : result.mixtures) {
        components += mixture.components;
        if (mixture.ierr == -117) ++estimated;
    }
    out << "Mixtures: " << result.mixtures.size() << " files, " << components << " components; " << estimated
        << " have a pair without published parameters\n\n";
}

}  // namespace

bool DataCheckResult::clean() const {
    const auto isClean = [](const auto& report) { return report.clean; };
    return parameters.clean && std::all_of(fluids.begin(), fluids.end(), isClean) &&
           std::all_of(mixtures.begin(), mixtures.end(), isClean);
}

bool checkData(const std::string& folder, DataCheckResult& result) {
    result = DataCheckResult{};
    result.folder = folder;
    std::error_code error;
    if (!fs::is_directory(fs::path(folder) / "fluids", error)) return false;
    SETPATH(folder);
    std::vector<InstalledFluid> installed;
    for (const std::string& name : filesOf(fs::path(folder) / "fluids", ".FLD")) {
        result.fluids.emplace_back();
        FluidReport& report = result.fluids.back();
        checkFluid(name, report);
        if (report.readable) installed.push_back({report.file, report.scan.cas});
    }
    constexpr std::string_view parameters = "HMX.BNC";
    checkParameters(parameters, installed, result.parameters);
    for (const std::string& name : filesOf(fs::path(folder) / "mixtures", ".MIX")) {
        result.mixtures.emplace_back();
        checkMixture(name, parameters, result.mixtures.back());
    }
    return true;
}

void printDataCheck(std::ostream& out, const DataCheckResult& result) {
    out << "Data of " << result.folder << "\n\n";
    printFigures(out, result);
    printModels(out, result);
    printMixtures(out, result);

    printKnown(out, result);
    if (!result.clean()) {
        out << "Faults\n";
        for (const FluidReport& fluid : result.fluids)
            if (!fluid.clean) printNotes(out, fluid);
        printFaults(out, plain(result.parameters.file.view()), result.parameters.faults);
        for (const MixtureReport& mixture : result.mixtures)
            printFaults(out, plain(mixture.file.view()), mixture.faults);
        out << '\n';
    }
    const auto dirty = [](const auto& reports) {
        return std::count_if(reports.begin(), reports.end(), [](const auto& report) { return !report.clean; });
    };
    const auto faulty = dirty(result.fluids) + dirty(result.mixtures) + (result.parameters.clean ? 0 : 1);
    if (faulty == 0)
        out << "Clean: " << result.fluids.size() << " fluids, " << result.mixtures.size() << " mixtures\n";
    else
        out << faulty << " of " << result.fluids.size() + result.mixtures.size() + 1 << " files have faults\n";
}

}  // namespace frigana::app
