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

}  // namespace frigana::test
