// Letters and digits of ASCII, whatever the locale.
#pragma once

namespace frigana {

constexpr bool isCapital(char c) {
    return c >= 'A' && c <= 'Z';
}
constexpr bool isSmall(char c) {
    return c >= 'a' && c <= 'z';
}
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr char capitalLetter(char c) {
    return isSmall(c) ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char smallLetter(char c) {
    return isCapital(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace frigana
