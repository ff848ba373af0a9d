// The bits of a value as another type of its size: std::bit_cast, also where the standard library has none yet.
#pragma once

namespace frigana {

template <class To, class From>
constexpr To bitCast(const From& value) {
    static_assert(sizeof(To) == sizeof(From));
    return __builtin_bit_cast(To, value);
}

}  // namespace frigana
