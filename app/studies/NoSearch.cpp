// In the place of Search.cpp, where there is no NLopt: of WebAssembly.
#include <stdexcept>

#include "Search.h"

namespace frigana::studies {

bool searchLeast(const std::vector<SearchedRange>&, const std::function<double(const std::vector<double>&)>&,
                 std::vector<double>&) {
    throw std::runtime_error("an optimum is searched by the program alone");
}

}  // namespace frigana::studies
