// Texts side by side, for reports.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace frigana::app {

// Texts with blanks up to a width, counted in characters as they are seen.
std::string padLeft(const std::string& text, std::size_t width);
std::string padRight(const std::string& text, std::size_t width);

// Rows of texts under headings, each column as wide as it must be. What does not fit side by side follows below, the
// first column before it again.
struct Table {
    std::vector<std::string> headings;
    std::vector<std::vector<std::string>> rows;

    void print(std::ostream& out) const;
};

// A table of texts: every column begins at the left, the last one as long as it is.
void printLeft(std::ostream& out, const Table& table);

}  // namespace frigana::app
