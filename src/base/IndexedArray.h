// Arrays with the index bases of the field's tables: 1 to N, or the component slots -30 to 20.
#pragma once

#ifdef FRIGANA_CHECK_BOUNDS
#include <cstdio>
#include <cstdlib>
#endif

namespace frigana {

// A plain, contiguous array whose first index is First and whose last is Last.
template <class T, int First, int Last>
struct IndexedArray {
    static constexpr int first = First;
    static constexpr int last = Last;
    static constexpr int count = Last - First + 1;

    T items[count];

    constexpr T& operator[](int i) {
        check(i);
        return items[i - First];
    }
    constexpr const T& operator[](int i) const {
        check(i);
        return items[i - First];
    }
    static constexpr bool holds(int i) { return i >= First && i <= Last; }

    constexpr void fill(const T& value) {
        for (T& item : items) item = value;
    }
    constexpr T* begin() { return items; }
    constexpr T* end() { return items + count; }
    constexpr const T* begin() const { return items; }
    constexpr const T* end() const { return items + count; }

  private:
    static constexpr void check([[maybe_unused]] int i) {
#ifdef FRIGANA_CHECK_BOUNDS
        if (!holds(i)) {
            std::fprintf(stderr, "index %d outside %d to %d\n", i, First, Last);
            std::abort();
        }
#endif
    }
};

template <class T, int N>
using Array1 = IndexedArray<T, 1, N>;

}  // namespace frigana
