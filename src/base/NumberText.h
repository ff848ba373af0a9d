// Doubles to text and back, correct in every digit and whatever the locale: std::to_chars and std::from_chars, also
// where the standard library has them for whole numbers alone.
#pragma once

#include <charconv>

#if defined(_LIBCPP_VERSION) && !defined(__cpp_lib_to_chars)
#define FRIGANA_NO_CHARS_OF_DOUBLES 1
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#endif

namespace frigana {

#ifndef FRIGANA_NO_CHARS_OF_DOUBLES

inline std::to_chars_result toText(char* first, char* last, double value, std::chars_format form, int decimals) {
    return std::to_chars(first, last, value, form, decimals);
}
// The shortest text that is read as the same number.
inline std::to_chars_result toText(char* first, char* last, double value) {
    return std::to_chars(first, last, value);
}
inline std::from_chars_result fromText(const char* first, const char* last, double& value) {
    return std::from_chars(first, last, value);
}

#else

// The functions of C round correctly there, too, and know one locale only.
inline std::to_chars_result toText(char* first, char* last, double value, std::chars_format form, int decimals) {
    const char* const pattern = form == std::chars_format::fixed ? "%.*f" : "%.*e";
    const int length = std::snprintf(first, static_cast<std::size_t>(last - first), pattern, decimals, value);
    if (length < 0 || length >= last - first) return {last, std::errc::value_too_large};
    return {first + length, {}};
}
// Of the shortest digits that are read as the same number, the shorter of both forms.
inline std::to_chars_result toText(char* first, char* last, double value) {
    constexpr int mostDigits = 17;
    char text[32];
    int digits = 0;
    do std::snprintf(text, sizeof text, "%.*e", digits, value);
    while (std::strtod(text, nullptr) != value && ++digits < mostDigits);
    const char* const exponent = std::strchr(text, 'e');
    const int decimals = exponent == nullptr ? 0 : std::max(0, digits - std::atoi(exponent + 1));
    const int plain = std::snprintf(nullptr, 0, "%.*f", decimals, value);
    if (exponent != nullptr && plain > static_cast<int>(std::strlen(text)))
        return toText(first, last, value, std::chars_format::scientific, digits);
    return toText(first, last, value, std::chars_format::fixed, decimals);
}
// The text has the form of a number, without a sign in front but a minus.
inline std::from_chars_result fromText(const char* first, const char* last, double& value) {
    constexpr long longest = 511;
    char text[longest + 1];
    const long length = std::min(static_cast<long>(last - first), longest);
    std::memcpy(text, first, static_cast<std::size_t>(length));
    text[length] = '\0';
    char* end = text;
    errno = 0;
    const double read = std::strtod(text, &end);
    const char* const behind = first + (end - text);
    if (end == text) return {first, std::errc::invalid_argument};
    // What is too small for a normal number is none the less one.
    if (errno == ERANGE && (read == 0.0 || read == HUGE_VAL || read == -HUGE_VAL))
        return {behind, std::errc::result_out_of_range};
    value = read;
    return {behind, {}};
}

#endif

}  // namespace frigana
