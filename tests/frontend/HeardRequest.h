// A request through the entry point, with every value of its result as the library computed it: the file keeps six
// decimals of it, the listener all digits.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "11_MainFrigana.h"
#include "14_ErrorControl.h"
#include "Requests.h"
#include "ResultFile.h"
#include "ResultWriter.h"

namespace frigana::test {

class Heard {
  public:
    explicit Heard(Plant& plant, const Request& request) : file("") {
        std::filesystem::remove(plant.result);
        listenToResult(hear, this);
        plant(request);
        listenToResult(nullptr, nullptr);
        end = runReport.end;
        code = runReport.IERR;
        text = runReport.HERR.trimmed();
        if (plant.hasResult()) file = ResultFile(plant.resultText());
    }
    // All reals of a line; empty where there is no such line.
    const std::vector<double>& values(int line) const {
        static const std::vector<double> none;
        return line >= 1 && line < static_cast<int>(lines_.size()) ? lines_[static_cast<std::size_t>(line)] : none;
    }
    // The lines with at least this many reals: the rows of a table.
    std::vector<std::vector<double>> rows(std::size_t width) const {
        std::vector<std::vector<double>> found;
        for (const auto& line : lines_)
            if (line.size() >= width) found.push_back(line);
        return found;
    }
    // Every real of the result in its order.
    std::vector<double> all() const {
        std::vector<double> flat;
        for (const auto& line : lines_) flat.insert(flat.end(), line.begin(), line.end());
        return flat;
    }
    bool answered() const { return end == RunEnd::returned && file.count() > 0 && !file.refused(); }

    ResultFile file;
    RunEnd end = RunEnd::returned;
    int code = 0;
    std::string text;

  private:
    static void hear(void* context, const ResultEntry& entry) {
        auto& lines = static_cast<Heard*>(context)->lines_;
        if (entry.kind == ResultEntry::Kind::start) lines.clear();
        if (entry.kind != ResultEntry::Kind::value) return;
        const auto line = static_cast<std::size_t>(entry.line);
        if (lines.size() <= line) lines.resize(line + 1);
        lines[line].push_back(entry.value);
    }
    std::vector<std::vector<double>> lines_;
};

// A state of the property requests, from the columns of a row; stride 2 where liquid and vapor alternate.
struct Cells {
    double T, P, D, V, U, H, S, CV, CP, W, TCX, ETA, PR;
};
inline Cells phaseCells(const std::vector<double>& row, std::size_t phase) {
    const auto at = [&](std::size_t i) { return row.at(2 * i + phase); };
    return {at(0), at(1), at(2), at(3), at(4), at(5), at(6), at(7), at(8), at(9), at(10), at(11), at(12)};
}
// The row of a state point has the quality before the transport properties, the row of a table has none.
inline Cells stateCells(const std::vector<double>& row) {
    const std::size_t q = row.size() == 15 ? 1 : 0;
    return {row.at(0), row.at(1), row.at(2), row.at(3),      row.at(4),      row.at(5),     row.at(6),
            row.at(7), row.at(8), row.at(9), row.at(10 + q), row.at(11 + q), row.at(12 + q)};
}

struct Component {
    std::string name;
    double fraction;
};

// A property request of a blend listed by its components.
inline Request listedRequest(const std::vector<Component>& components, bool byMass, int sub,
                             const std::string& toolLine = "", const std::string& name = "Blend") {
    Request request;
    request.line("1").line("3").line(std::to_string(components.size())).line(byMass ? "1" : "2");
    for (const Component& component : components) {
        char value[40];
        std::snprintf(value, sizeof value, "%.17g", component.fraction);
        request.line(component.name).line(value);
    }
    request.line(name).line("2 DEF").line(std::to_string(sub));
    for (int tool = 2; tool < sub && sub <= 6; ++tool) request.line("0");
    if (!toolLine.empty()) request.line(toolLine);
    return request;
}

// A line of numbers as a front end writes it.
inline std::string numbers(std::initializer_list<double> values) {
    std::string line;
    for (const double value : values) {
        char field[40];
        std::snprintf(field, sizeof field, "%.17g ", value);
        line += field;
    }
    return line;
}

}  // namespace frigana::test
