#include "Answer.h"

#include <array>
#include <cstddef>

namespace frigana::workers {

std::string_view nameOf(End end) {
    constexpr std::array names = {"done",      "threw",     "died",    "too slow", "out of memory",
                                  "too large", "cancelled", "stopped", "no worker"};
    return names[static_cast<std::size_t>(end)];
}

}  // namespace frigana::workers
