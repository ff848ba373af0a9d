// Messages composed of texts and numbers in the edit formats of the system.
#pragma once

#include "FixedText.h"

namespace frigana {

// One number with its edit format; a value too wide for its field fills it with asterisks.
struct FixedPoint {  // Fw.d
    int width, decimals;
    double value;
};
struct General {  // Gw.d
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

// Ends every stored citation and many messages.
inline constexpr std::string_view nullCharacter{"\0", 1};

// Collects the pieces of a message in a field of fixed length; what does not fit is cut.
class Composer {
  public:
    Composer(char* field, int size) : field_(field), size_(size) {}
    void add(std::string_view text);
    void add(const char* text) { add(std::string_view(text)); }
    void add(const FixedPoint& number);
    void add(const General& number);
    void add(const Integer& number);
    void add(const Character& text);
    template <int N>
    void add(const FixedText<N>& text) {
        add(text.view());
    }
    void padWithBlanks();

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

}  // namespace frigana
