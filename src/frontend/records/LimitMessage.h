// Messages that quote a limit.
#pragma once

#include "FixedText.h"

namespace frigana {

// Text with a limit in it: 12 columns with 4 decimals, left-justified and trimmed, between the fixed parts.
Text255 limitMessage(std::string_view before, double limit, std::string_view after);

}  // namespace frigana
