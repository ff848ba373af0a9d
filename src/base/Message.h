// Messages composed of texts and numbers in the edit formats of the system.
#pragma once

#include "FixedText.h"

namespace frigana {

// One number with its edit format. It stands at the right of its field; a value too wide for its field fills it with
// asterisks. A width of 0 means as many columns as the value needs.
struct FixedPoint {  // Fw.d
    int width, decimals;
    double value;
};
// Gw.d: fixed form with d significant digits and four blanks behind it while 0.1 <= |value| < 10**d after rounding (and
// for zero), else the exponent form 0.ddddE+ee.
struct General {
    int width, digits;
    double value;
};
struct Integer {  // Iw
    int width, value;
};
struct Character {  // Aw: the first width characters of a text, padded with blanks
    int width;
    std::string_view text;
};
// Free form: a leading blank and as many digits as the type needs to be read back bit for bit (17 significant digits
// of a double, 9 of a single-precision number).
struct FreeDouble {
    double value;
};
struct FreeSingle {
    float value;
};
struct FreeInteger {
    int value;
};
struct Blanks {  // nX
    int count;
};

// Ends every stored citation and many messages.
inline constexpr std::string_view nullCharacter{"\0", 1};

// Collects the pieces of a message in a field of fixed length; what does not fit is cut.
class Composer {
  public:
    Composer(char* field, int size) : field_(field), size_(size) {}
    void add(std::string_view text);
    void add(const char* text) { add(std::string_view(text)); }
    void add(char character) { add(std::string_view(&character, 1)); }
    void add(const FixedPoint& number);
    void add(const General& number);
    void add(const Integer& number);
    void add(const Character& text);
    void add(const FreeDouble& number);
    void add(const FreeSingle& number);
    void add(const FreeInteger& number);
    void add(const Blanks& blanks);
    template <int N>
    void add(const FixedText<N>& text) {
        add(text.view());
    }
    void padWithBlanks();
    // Number of characters collected so far.
    int used() const { return used_; }

  private:
    char* field_;
    int size_;
    int used_ = 0;
};

// Replaces herr by the pieces, one after the other, padded with blanks.
//   message(herr, "[SATT error 121] ... T =", General{12, 5, t}, " K.", nullCharacter);
// The pieces are copied before herr is written, so herr itself may be one of them.
template <int N, class... Piece>
void message(FixedText<N>& herr, const Piece&... pieces) {
    FixedText<N> composed;
    Composer composer(composed.data(), N);
    (composer.add(pieces), ...);
    composer.padWithBlanks();
    herr = composed;
}

// A number in its edit format as a text of its own, moved to the left of its field.
//   message(herr, "... (", leftJustified(FixedPoint{12, 4, tc}).trimmed(), " K)");
template <class Number>
FixedText<40> leftJustified(const Number& number) {
    FixedText<40> field;
    message(field, number);
    const auto text = field.view();
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? field : FixedText<40>(text.substr(first));
}

}  // namespace frigana
