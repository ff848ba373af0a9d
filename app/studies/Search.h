// The least value of a function over a bounded range of one or two numbers, where the function may have no value.
#pragma once

#include <functional>
#include <limits>
#include <vector>

namespace frigana::studies {

// What a function gives where it has no value.
inline constexpr double refusedTrial = std::numeric_limits<double>::infinity();

struct SearchedRange {
    double from, to, tolerance;  // tolerance of the place
};

// Searches.
//   Returned  best     the place; (value) false where no trial had a value
//   Notes     A coarse grid finds where the function has values and its best one among them, a simplex (NLopt's
//   subspace
//             simplex, which compares values and needs no derivatives) goes on from there within the neighbours. A
//             range with several minima is searched in the best cell of the grid: 16 intervals for one number, 8 by 8
//             for two.
//   Source    T. H. Rowan, Functional stability analysis of numerical algorithms, University of Texas at Austin (1990)
bool searchLeast(const std::vector<SearchedRange>& ranges,
                 const std::function<double(const std::vector<double>&)>& function, std::vector<double>& best);

}  // namespace frigana::studies
