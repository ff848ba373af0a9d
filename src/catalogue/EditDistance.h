// How far two words are from each other, for the names that a message suggests.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

namespace frigana::catalogue {

// Number of letters to change, put in or leave out, from one word to another (V. I. Levenshtein, Soviet Physics
// Doklady 10 (1966) 707); words whose lengths alone are further apart than asked for are not looked at.
inline std::size_t editDistance(std::string_view a, std::string_view b, std::size_t farthest) {
    const std::size_t apart = a.size() < b.size() ? b.size() - a.size() : a.size() - b.size();
    if (apart > farthest) return apart;
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t change = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, change});
        }
    }
    return row.back();
}

}  // namespace frigana::catalogue
