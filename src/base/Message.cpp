#include "Message.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "NumberText.h"

namespace frigana {

namespace {

// The largest double has 309 digits before the point; a format asks for no more than 30 behind it.
constexpr int longestNumber = 360;
constexpr int mostDecimals = 40;

// A number before it is set into its field: at most one sign, digits, point, exponent.
struct Digits {
    char text[longestNumber];
    int length = 0;

    std::string_view view() const { return {text, static_cast<std::size_t>(length)}; }
    void put(char character) {
        if (length < longestNumber) text[length++] = character;
    }
    void put(std::string_view characters) {
        for (char character : characters) put(character);
    }
};

bool notFinite(double value, Digits& digits, int width) {
    if (std::isfinite(value)) return false;
    if (std::isnan(value)) {
        digits.put("NaN");
    } else {
        if (value < 0.0) digits.put('-');
        digits.put(width == 0 || width >= digits.length + 8 ? "Infinity" : "Inf");
    }
    return true;
}

// Value rounded to `count` significant digits: the digits without a point and the power of ten of the first of them.
struct Significant {
    char digits[mostDecimals + 2];
    int exponent;
};
Significant significant(double value, int count) {
    Significant result{};
    char text[mostDecimals + 16];
    const auto end = toText(text, text + sizeof text, std::fabs(value), std::chars_format::scientific, count - 1);
    // d.ddde+xx, or de+xx for one digit
    char* at = text;
    int n = 0;
    for (; at != end.ptr && *at != 'e'; ++at)
        if (*at != '.') result.digits[n++] = *at;
    if (at != end.ptr) {
        ++at;
        if (*at == '+') ++at;
        std::from_chars(at, end.ptr, result.exponent);
    }
    return result;
}

void putFixed(Digits& out, double value, int decimals) {
    char text[longestNumber];
    const auto end = toText(text, text + sizeof text, std::fabs(value), std::chars_format::fixed, decimals);
    if (value < 0.0) out.put('-');
    out.put(std::string_view(text, static_cast<std::size_t>(end.ptr - text)));
    if (decimals == 0) out.put('.');
}

void putExponent(Digits& out, double value, int digits) {
    const Significant s = significant(value, digits);
    int exponent = value == 0.0 ? 0 : s.exponent + 1;
    if (value < 0.0) out.put('-');
    out.put("0.");
    for (int i = 0; i < digits; ++i) out.put(s.digits[i]);
    // A third digit of the exponent takes the place of the letter.
    if (exponent > -100 && exponent < 100) out.put('E');
    out.put(exponent < 0 ? '-' : '+');
    exponent = std::abs(exponent);
    if (exponent >= 100) out.put(static_cast<char>('0' + exponent / 100));
    out.put(static_cast<char>('0' + exponent / 10 % 10));
    out.put(static_cast<char>('0' + exponent % 10));
}

void putInField(Composer& composer, const Digits& digits, int width) {
    std::string_view text = digits.view();
    if (width == 0) return composer.add(text);
    // The zero before the point gives way where one column is missing.
    char shorter[longestNumber];
    if (static_cast<int>(text.size()) == width + 1) {
        const std::size_t zero = text[0] == '-' ? 1 : 0;
        if (text.size() > zero + 1 && text[zero] == '0' && text[zero + 1] == '.') {
            std::memcpy(shorter, text.data(), zero);
            std::memcpy(shorter + zero, text.data() + zero + 1, text.size() - zero - 1);
            text = std::string_view(shorter, text.size() - 1);
        }
    }
    const int spare = width - static_cast<int>(text.size());
    if (spare < 0) {
        for (int i = 0; i < width; ++i) composer.add('*');
        return;
    }
    composer.add(Blanks{spare});
    composer.add(text);
}

// Fixed form while the value is neither small nor too large for its digits, else exponent form with one digit before
// the point.
void putFree(Digits& out, double value, int digits) {
    out.put(' ');
    if (notFinite(value, out, 0)) return;
    const bool negative = std::signbit(value);
    if (value == 0.0) {
        if (negative) out.put('-');
        out.put("0.");
        for (int i = 1; i < digits; ++i) out.put('0');
        return;
    }
    const Significant s = significant(value, digits);
    if (negative) out.put('-');
    if (s.exponent >= -1 && s.exponent < digits) {
        if (s.exponent < 0) out.put("0.");
        for (int i = 0; i < digits; ++i) {
            out.put(s.digits[i]);
            if (i == s.exponent) out.put('.');
        }
        return;
    }
    out.put(s.digits[0]);
    out.put('.');
    for (int i = 1; i < digits; ++i) out.put(s.digits[i]);
    out.put('E');
    out.put(s.exponent < 0 ? '-' : '+');
    const int exponent = std::abs(s.exponent);
    if (exponent >= 100) out.put(static_cast<char>('0' + exponent / 100));
    out.put(static_cast<char>('0' + exponent / 10 % 10));
    out.put(static_cast<char>('0' + exponent % 10));
}

}  // namespace

void Composer::add(std::string_view text) {
    const int count = std::min(size_ - used_, static_cast<int>(text.size()));
    if (count <= 0) return;
    std::memmove(field_ + used_, text.data(), static_cast<std::size_t>(count));
    used_ += count;
}

void Composer::add(const FixedPoint& number) {
    Digits digits;
    if (!notFinite(number.value, digits, number.width)) putFixed(digits, number.value, number.decimals);
    putInField(*this, digits, number.width);
}

void Composer::add(const General& number) {
    Digits digits;
    const int d = std::clamp(number.digits, 1, mostDecimals);
    if (notFinite(number.value, digits, number.width)) return putInField(*this, digits, number.width);
    // The choice between the forms is made on the rounded value; zero stands as a number with one digit before the
    // point.
    const int beforePoint = number.value == 0.0 ? 1 : significant(number.value, d).exponent + 1;
    if (beforePoint < 0 || beforePoint > d) {
        putExponent(digits, number.value, d);
        return putInField(*this, digits, number.width);
    }
    putFixed(digits, number.value, d - beforePoint);
    putInField(*this, digits, number.width == 0 ? 0 : number.width - 4);
    if (number.width != 0) add(Blanks{4});
}

void Composer::add(const Integer& number) {
    Digits digits;
    const auto end = std::to_chars(digits.text, digits.text + longestNumber, number.value);
    digits.length = static_cast<int>(end.ptr - digits.text);
    putInField(*this, digits, number.width);
}

void Composer::add(const Character& text) {
    const int given = static_cast<int>(text.text.size());
    if (text.width <= given) return add(text.text.substr(0, static_cast<std::size_t>(std::max(text.width, 0))));
    add(text.text);
    add(Blanks{text.width - given});
}

void Composer::add(const FreeDouble& number) {
    Digits digits;
    putFree(digits, number.value, std::numeric_limits<double>::max_digits10);
    add(digits.view());
}

void Composer::add(const FreeSingle& number) {
    Digits digits;
    putFree(digits, static_cast<double>(number.value), std::numeric_limits<float>::max_digits10);
    add(digits.view());
}

void Composer::add(const FreeInteger& number) {
    add(' ');
    add(Integer{0, number.value});
}

void Composer::add(const Blanks& blanks) {
    for (int i = 0; i < blanks.count && used_ < size_; ++i) field_[used_++] = ' ';
}

void Composer::padWithBlanks() {
    add(Blanks{size_ - used_});
}

}  // namespace frigana
