// Interpolation, linear algebra, splines.
#pragma once

#include <span>

#include "EngineLimits.h"

namespace frigana {

double CBRTX(double x);

}  // namespace frigana
