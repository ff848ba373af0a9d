#include "TextTable.h"

#include <algorithm>
#include <ostream>

#include "FixedText.h"
#include "Units.h"

namespace frigana::app {

using catalogue::characters;

std::string padLeft(const std::string& text, std::size_t width) {
    const std::size_t used = characters(text);
    return used < width ? std::string(width - used, ' ') + text : text;
}
std::string padRight(const std::string& text, std::size_t width) {
    const std::size_t used = characters(text);
    return used < width ? text + std::string(width - used, ' ') : text;
}

namespace {

// A heading in lines no longer than the widest value, broken between words.
std::vector<std::string> wrapped(const std::string& heading, std::size_t width) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < heading.size();) {
        std::size_t end = heading.find(' ', at);
        if (end == std::string::npos) end = heading.size();
        // A unit is one word, although it may hold a blank.
        if (heading[at] == '[') end = heading.size();
        const std::string word = heading.substr(at, end - at);
        if (!lines.empty() && characters(lines.back()) + 1 + characters(word) <= width)
            lines.back() += " " + word;
        else
            lines.push_back(word);
        at = end + 1;
    }
    if (lines.empty()) lines.emplace_back();
    return lines;
}

void printColumns(std::ostream& out, const std::vector<std::vector<std::string>>& rows,
                  const std::vector<std::vector<std::string>>& headingLines, const std::vector<std::size_t>& widths,
                  std::size_t first, std::size_t last) {
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
}  // namespace

void Table::print(std::ostream& out) const {
    constexpr std::size_t narrowest = 9, widestLine = 118;
    std::vector<std::vector<std::string>> headingLines;
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < headings.size(); ++i) {
        std::size_t width = i == 0 ? characters(headings[0]) : narrowest;
        for (const auto& row : rows)
            if (i < row.size()) width = std::max(width, characters(row[i]));
        headingLines.push_back(wrapped(headings[i], width));
        std::size_t needed = i == 0 ? width : 0;
        for (const auto& line : headingLines.back()) needed = std::max(needed, characters(line));
        for (const auto& row : rows)
            if (i < row.size()) needed = std::max(needed, characters(row[i]));
        widths.push_back(needed);
    }
    for (std::size_t first = 1; first < headings.size();) {
        std::size_t last = first, width = widths[0] + 2;
        while (last < headings.size() && (last == first || width + widths[last] + 2 <= widestLine))
            width += widths[last++] + 2;
        if (first > 1) out << '\n';
        printColumns(out, rows, headingLines, widths, first, last);
        first = last;
    }
}

void printLeft(std::ostream& out, const Table& table) {
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < table.headings.size(); ++i) {
        std::size_t width = characters(table.headings[i]);
        for (const auto& row : table.rows) width = std::max(width, characters(row[i]));
        widths.push_back(width);
    }
    const auto line = [&](const std::vector<std::string>& cells) {
        std::string text;
        for (std::size_t i = 0; i < cells.size(); ++i) text += "  " + padRight(cells[i], widths[i]);
        out << trimRight(text) << '\n';
    };
    line(table.headings);
    for (const auto& row : table.rows) line(row);
}

}  // namespace frigana::app
