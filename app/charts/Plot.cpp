#include "Plot.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "FluidChart.h"

namespace frigana::charts {

namespace {

std::string withMinus(std::string text) {
    if (!text.empty() && text[0] == '-') text.replace(0, 1, "\u2212");
    return text;
}

std::vector<Tick> linearTicks(const PlotAxis& axis, double length) {
    constexpr double apart = 70.0;  // [px]
    const int parts = std::max(3, static_cast<int>(length / apart));
    const double range = axis.high - axis.low, step = diagrams::roundStep(std::fabs(range), parts);
    const double leading = step / std::pow(10.0, std::floor(std::log10(step) + 1e-9));
    const int minor = std::fabs(leading - 2.0) < 0.1 ? 4 : 5;
    std::vector<Tick> ticks;
    const double from = std::min(axis.low, axis.high), to = std::max(axis.low, axis.high);
    const auto first = static_cast<long>(std::ceil(minor * from / step - 1e-6));
    for (long i = first; static_cast<double>(i) * step / minor <= to + 1e-6 * step; ++i) {
        const double value = static_cast<double>(i) * step / minor;
        ticks.push_back({(value - axis.low) / range,
                         i % minor == 0 ? shownNumber(std::fabs(value) < 1e-9 * step ? 0.0 : value, step) : ""});
    }
    return ticks;
}

// Ticks at every digit of a decade; labels at 1, 2 and 5 where there is room.
std::vector<Tick> logarithmicTicks(const PlotAxis& axis, double length) {
    std::vector<Tick> ticks;
    const double decades = std::log10(axis.high / axis.low), perDecade = length / decades;
    for (double decade = std::pow(10.0, std::floor(std::log10(axis.low))); decade <= axis.high; decade *= 10.0)
        for (int digit = 1; digit <= 9; ++digit) {
            const double value = digit * decade;
            if (value < axis.low * (1.0 - 1e-9) || value > axis.high * (1.0 + 1e-9)) continue;
            constexpr double roomForThree = 90.0, roomForAll = 400.0;  // [px] of a decade
            const bool labelled =
                digit == 1 || (perDecade > roomForThree && (digit == 2 || digit == 5)) || perDecade > roomForAll;
            ticks.push_back(
                {std::log(value / axis.low) / std::log(axis.high / axis.low), labelled ? shownNumber(value, 3) : ""});
        }
    return ticks;
}

}  // namespace

std::string shownNumber(double value, double step) {
    const int decimals = std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
    char text[40];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return withMinus(text);
}

std::string shownNumber(double value, int significantDigits) {
    char text[40];
    const int before = value == 0.0 ? 1 : static_cast<int>(std::floor(std::log10(std::fabs(value)))) + 1;
    std::snprintf(text, sizeof text, "%.*f", std::max(0, significantDigits - before), value);
    std::string number = text;
    if (number.find('.') != std::string::npos) {
        number.erase(number.find_last_not_of('0') + 1);
        if (number.back() == '.') number.pop_back();
    }
    return withMinus(number);
}

std::vector<Tick> ticksOf(const PlotAxis& axis, double length) {
    return axis.logarithmic ? logarithmicTicks(axis, length) : linearTicks(axis, length);
}

}  // namespace frigana::charts
