// A plot as SVG: text as text, one style sheet for light and dark.
#pragma once

#include <string>

#include "Layout.h"

namespace frigana::charts {

std::string svgOf(const Plot& plot, const Layout& layout);

}  // namespace frigana::charts
