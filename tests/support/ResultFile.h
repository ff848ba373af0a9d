// A result file by its lines, as a front end reads it.
#pragma once

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace frigana::test {

class ResultFile {
  public:
    explicit ResultFile(const std::string& bytes) {
        std::istringstream stream(bytes);
        for (std::string line; std::getline(stream, line);) lines_.push_back(line);
    }
    int count() const { return static_cast<int>(lines_.size()); }
    bool refused() const { return count() > 0 && trimmed(1) == "0"; }
    // Line by its number, 1 for the first; empty beyond the end.
    std::string raw(int line) const {
        return line >= 1 && line <= count() ? lines_[static_cast<std::size_t>(line - 1)] : std::string();
    }
    std::string trimmed(int line) const {
        const std::string text = raw(line);
        const auto first = text.find_first_not_of(' ');
        if (first == std::string::npos) return {};
        return text.substr(first, text.find_last_not_of(' ') - first + 1);
    }
    // The number of a line, not a number where there is none.
    double number(int line) const {
        std::istringstream stream(raw(line));
        double value = 0.0;
        return stream >> value ? value : std::nan("");
    }
    // All numbers of a line.
    std::vector<double> numbers(int line) const {
        std::istringstream stream(raw(line));
        std::vector<double> values;
        for (double value = 0; stream >> value;) values.push_back(value);
        return values;
    }
    // Line of the heading, 0 if there is none; from is where the search begins.
    int find(const std::string& heading, int from = 1) const {
        for (int line = from; line <= count(); ++line)
            if (trimmed(line) == heading) return line;
        return 0;
    }

  private:
    std::vector<std::string> lines_;
};

// One state row of a cycle's result: P, T, D, H, S, Q, TSAT.
struct StateRow {
    double P, T, D, H, S, Q, TSAT;
};
inline StateRow stateRow(const ResultFile& file, int first) {
    return {file.number(first),     file.number(first + 1), file.number(first + 2), file.number(first + 3),
            file.number(first + 4), file.number(first + 5), file.number(first + 6)};
}

// Whether a circuit whose evaporator (or boiler) is its first device takes heat up there: the heat is the flow times
// the rise of enthalpy, and positive where the fluid enters wetter than it leaves. start is the line before the
// circuit. Circuits with points that could not be computed have nothing to say.
inline bool takesHeatUp(const ResultFile& file, int start = 0) {
    const StateRow inlet = stateRow(file, start + 6), outlet = stateRow(file, start + 13);
    const double M = file.number(start + 23), heat = file.number(start + 25);
    constexpr double missing = -777.0;
    for (int line = start + 6; line <= start + 25; ++line)
        if (file.number(line) == missing) return true;
    const double expected = M * (outlet.H - inlet.H);
    if (!(std::fabs(heat - expected) <= 1e-9 * std::fabs(expected))) return false;
    // Saturated vapor of a lower pressure has less enthalpy, which a large drop makes more than the last wetness.
    const bool leavesSaturatedByDrop = file.number(start + 22) == 0.0 && outlet.T < inlet.T;
    return inlet.Q >= 1.0 || outlet.Q < 1.0 || outlet.H > inlet.H || leavesSaturatedByDrop;
}

}  // namespace frigana::test
