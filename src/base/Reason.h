// Messages of the engine as people read them.
#pragma once

#include <string>
#include <string_view>

#include "FixedText.h"

namespace frigana {

// A message in one piece: up to its null character, and without the blanks of the fields in it.
inline std::string reasonOf(std::string_view message) {
    std::string text;
    for (const char character : message.substr(0, message.find('\0')))
        if (character != ' ' || !text.ends_with(' ')) text += character;
    return std::string(trimRight(text));
}

}  // namespace frigana
