// Words and lists of words, as messages show and compare them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Letters.h"

namespace frigana::catalogue {

// "a", "a and b", "a, b and c".
inline std::string listed(const std::vector<std::string>& words, std::string_view last = " and ",
                          std::string_view between = ", ") {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) text += i + 1 == words.size() ? last : between;
        text += words[i];
    }
    return text;
}

inline std::string inCapitals(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = capitalLetter(c);
    return result;
}
inline std::string inSmallLetters(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = smallLetter(c);
    return result;
}

}  // namespace frigana::catalogue
