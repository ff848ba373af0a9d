#include "CaseFile.h"

#include <algorithm>
#include <cmath>

#include "NumberText.h"
#include "Tree.h"
#include "Units.h"

namespace frigana::studies {

namespace {

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

bool isNumber(std::string_view text, double& number) {
    const auto [end, error] = fromText(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && std::isfinite(number);
}

CaseColumn columnOf(const std::string& heading) {
    const std::size_t open = heading.rfind('[');
    if (open == heading.npos || !heading.ends_with(']')) return {heading, {}, {}, {}};
    return {std::string(trimmed(std::string_view(heading).substr(0, open))),
            std::string(trimmed(std::string_view(heading).substr(open + 1, heading.size() - open - 2))),
            {},
            {}};
}

// A column that has met its first text: what came before are texts, too.
void becomeTexts(CaseColumn& column) {
    for (const double number : column.numbers) column.texts.push_back(textNode(catalogue::numberText(number)));
    column.numbers.clear();
}

}  // namespace

std::vector<std::string> cellsOf(std::string_view line) {
    std::vector<std::string> cells(1);
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"' && quoted && i + 1 < line.size() && line[i + 1] == '"')
            cells.back() += line[++i];
        else if (line[i] == '"')
            quoted = !quoted;
        else if (line[i] == ',' && !quoted)
            cells.emplace_back();
        else
            cells.back() += line[i];
    }
    for (std::string& cell : cells) cell = std::string(trimmed(cell));
    return cells;
}

std::vector<CaseColumn> readCaseFile(std::string_view text, std::string& problem) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";  // of UTF-8, as spreadsheets write it
    if (text.starts_with(mark)) text.remove_prefix(mark.size());
    std::vector<CaseColumn> columns;
    int number = 0;
    std::size_t rows = 0;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        ++number;
        if (trimmed(line).empty()) continue;
        const std::vector<std::string> cells = cellsOf(line);
        if (columns.empty()) {
            for (const std::string& heading : cells) columns.push_back(columnOf(heading));
            continue;
        }
        if (cells.size() != columns.size()) {
            problem = ":" + std::to_string(number) + ": " + std::to_string(cells.size()) + " cells below " +
                      std::to_string(columns.size()) + " headings";
            return {};
        }
        for (std::size_t i = 0; i < cells.size(); ++i) {
            CaseColumn& column = columns[i];
            double value = 0.0;
            if (column.texts.empty() && isNumber(cells[i], value)) {
                column.numbers.push_back(value);
                continue;
            }
            if (!column.unit.empty()) {
                problem = ":" + std::to_string(number) + ": " + cells[i] + " is no number, as the heading " +
                          column.key + " [" + column.unit + "] promises";
                return {};
            }
            if (column.texts.empty()) becomeTexts(column);
            column.texts.push_back(textNode(cells[i]));
        }
        ++rows;
    }
    if (rows == 0) problem = ": there are no cases in it";
    return columns;
}

}  // namespace frigana::studies
