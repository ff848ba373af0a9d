// How many states of a kind a test looks at. Under the sanitizers a step takes ten to thirty times as long, and what
// they look for hardly depends on the number of states: there samples are thinner, and no kind is left out.
#pragma once

namespace frigana::test {

#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool sanitized = true;
#else
inline constexpr bool sanitized = false;
#endif

constexpr int samples(int number, int underSanitizers) {
    return sanitized ? underSanitizers : number;
}

}  // namespace frigana::test
