// What the standard library of emscripten does not have yet: the algorithms of ranges that this tree uses, with their
// names and meaning. Included by the compiler itself, ahead of every source above the entry.
#pragma once

#include <version>

#if defined(_LIBCPP_VERSION) && _LIBCPP_VERSION < 15000
#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace std::ranges {

template <class Range, class Test, class Projection = identity>
constexpr auto find_if(Range&& range, Test test, Projection projection = {}) {
    auto at = std::begin(range);
    while (at != std::end(range) && !std::invoke(test, std::invoke(projection, *at))) ++at;
    return at;
}

template <class Range, class Value, class Projection = identity>
constexpr auto find(Range&& range, const Value& value, Projection projection = {}) {
    return ranges::find_if(
        range, [&value](const auto& element) { return element == value; }, projection);
}

template <class Range, class Test, class Projection = identity>
constexpr bool any_of(Range&& range, Test test, Projection projection = {}) {
    return ranges::find_if(range, test, projection) != std::end(range);
}

template <class Range, class Test, class Projection = identity>
constexpr bool all_of(Range&& range, Test test, Projection projection = {}) {
    return !ranges::any_of(
        range, [&test](const auto& element) { return !std::invoke(test, element); }, projection);
}

template <class Range, class Value>
constexpr void replace(Range&& range, const Value& older, const Value& newer) {
    std::replace(std::begin(range), std::end(range), older, newer);
}

template <class Range, class Output, class Function>
constexpr void transform(Range&& range, Output output, Function function) {
    std::transform(std::begin(range), std::end(range), output, std::move(function));
}

template <class First, class Second, class Test = std::equal_to<>>
constexpr bool equal(First&& first, Second&& second, Test test = {}) {
    return std::equal(std::begin(first), std::end(first), std::begin(second), std::end(second), std::move(test));
}

template <class Range, class Less = std::less<>, class Projection = identity>
constexpr auto min_element(Range&& range, Less before = {}, Projection projection = {}) {
    return std::min_element(std::begin(range), std::end(range), [&](const auto& a, const auto& b) {
        return std::invoke(before, std::invoke(projection, a), std::invoke(projection, b));
    });
}

}  // namespace std::ranges
#endif
