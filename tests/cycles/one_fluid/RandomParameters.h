// Random parameters of requests: what is usual for a cycle, and now and then anything that its checks allow.
#pragma once

#include <cstdint>
#include <vector>

#include "Requests.h"

namespace frigana::test {

// Uniform numbers, the same in every run.
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    double between(double low, double high) {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return low + (high - low) * static_cast<double>(state_ >> 11U) * 0x1p-53;
    }
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(between(0.0, static_cast<double>(count))); }

  private:
    std::uint64_t state_;
};

struct Range {
    double low, high;
};

// What a parameter may be: its option with what is usual and what the request's check allows.
struct Choice {
    int option;
    Range usual, allowed;
};
using Choices = std::vector<Choice>;

inline constexpr Range anyTemperature{100.0, 600.0}, anyChange{0.0, 200.0}, anyDrop{0.0, 1000.0};

inline Choice change(int option, double usual) {
    return {option, {0.0, usual}, anyChange};
}
inline Choice temperature(double low, double high) {
    return {1, {low, high}, anyTemperature};
}
inline const Choice drop{1, {0.0, 20.0}, anyDrop};
inline const Choices someDrop{drop, change(2, 1.5)};
inline const Choices noneOrChange{change(2, 0.0), change(2, 8.0)};
inline const Choices capacity{
    {1, {0.001, 0.1}, {0.0001, 800.0}}, {2, {1.0, 100.0}, {0.2, 800000.0}}, {3, {1.0, 100.0}, {0.2, 800000.0}}};
inline const Choices efficiency{{1, {0.5, 0.9}, {0.25, 1.0}}};

inline Choices pressureOr(double low, double high, double lowP, double highP, Range allowedP) {
    return {temperature(low, high), {2, {lowP, highP}, allowedP}};
}
inline constexpr Range evaporatorP{0.1, 8000.0}, condenserP{20.0, 20000.0};

inline std::vector<Parameter> randomParameters(const std::vector<Choices>& choices, Random& random) {
    // One request in four takes one or several parameters from all that is allowed.
    const double wild = random.between(0.0, 1.0) < 0.25 ? 0.2 : 0.0;
    std::vector<Parameter> all;
    for (const Choices& options : choices) {
        const Choice& choice = options[random.below(options.size())];
        const bool anything = random.between(0.0, 1.0) < wild;
        const Range range = anything ? choice.allowed : choice.usual;
        all.push_back({choice.option, random.between(range.low, range.high)});
    }
    return all;
}

}  // namespace frigana::test
