#include "LimitMessage.h"

#include "Message.h"

namespace frigana {

Text255 limitMessage(std::string_view before, double limit, std::string_view after) {
    FixedText<12> number;
    message(number, FixedPoint{12, 4, limit});
    std::string_view digits = number.trimmed();
    digits.remove_prefix(digits.find_first_not_of(' '));  // there is always one
    Text255 text;
    message(text, before, digits, after);
    return text;
}

}  // namespace frigana
