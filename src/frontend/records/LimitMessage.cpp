#include "LimitMessage.h"

#include "Message.h"

namespace frigana {

Text255 limitMessage(std::string_view before, double limit, std::string_view after) {
    FixedText<12> number;
    message(number, FixedPoint{12, 4, limit});
    std::string_view digits = number.trimmed();
    while (!digits.empty() && digits.front() == ' ') digits.remove_prefix(1);
    Text255 text;
    message(text, before, digits, after);
    return text;
}

}  // namespace frigana
