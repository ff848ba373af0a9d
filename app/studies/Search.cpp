#include "Search.h"

#include <algorithm>
#include <cmath>
#include <nlopt.hpp>

namespace frigana::studies {

namespace {

constexpr int intervalsOfOne = 16, intervalsOfTwo = 8;
constexpr int mostTrials = 300;  // of the simplex

using Function = std::function<double(const std::vector<double>&)>;

// A refused trial, as a number that the simplex can compare: worse than all of the grid.
struct Bounded {
    const Function& function;
    double worst;
    double bestValue;
    std::vector<double> best;

    double operator()(const std::vector<double>& at) {
        const double value = function(at);
        if (value < bestValue) {
            bestValue = value;
            best = at;
        }
        return std::min(value, worst);
    }
};

double simplexObjective(const std::vector<double>& at, std::vector<double>&, void* context) {
    return (*static_cast<Bounded*>(context))(at);
}

}  // namespace

bool searchLeast(const std::vector<SearchedRange>& ranges, const Function& function, std::vector<double>& best) {
    const std::size_t dimensions = ranges.size();
    const int intervals = dimensions == 1 ? intervalsOfOne : intervalsOfTwo;
    std::vector<int> place(dimensions, 0);
    std::vector<double> at(dimensions);
    double least = refusedTrial, greatest = -refusedTrial;
    for (bool more = true; more;) {
        for (std::size_t i = 0; i < dimensions; ++i)
            at[i] = ranges[i].from + (ranges[i].to - ranges[i].from) * place[i] / intervals;
        const double value = function(at);
        if (value < least) {
            least = value;
            best = at;
        }
        if (value != refusedTrial) greatest = std::max(greatest, value);
        more = false;
        for (std::size_t i = 0; i < dimensions && !more; ++i) {
            more = ++place[i] <= intervals;
            if (!more) place[i] = 0;
        }
    }
    if (least == refusedTrial) return false;

    nlopt::opt simplex(nlopt::LN_SBPLX, static_cast<unsigned>(dimensions));
    std::vector<double> low(dimensions), high(dimensions), step(dimensions), tolerance(dimensions);
    for (std::size_t i = 0; i < dimensions; ++i) {
        const double width = (ranges[i].to - ranges[i].from) / intervals;
        low[i] = std::max(ranges[i].from, best[i] - width);
        high[i] = std::min(ranges[i].to, best[i] + width);
        // Into the range, where the best of the grid stands at its end.
        step[i] = best[i] + 0.5 * width <= high[i] ? 0.5 * width : -0.5 * width;
        tolerance[i] = 0.5 * ranges[i].tolerance;
    }
    Bounded bounded{function, greatest + 1.0 + std::abs(greatest), least, best};
    simplex.set_min_objective(simplexObjective, &bounded);
    simplex.set_lower_bounds(low);
    simplex.set_upper_bounds(high);
    simplex.set_initial_step(step);
    simplex.set_xtol_abs(tolerance);
    simplex.set_xtol_rel(0.0);
    simplex.set_maxeval(mostTrials);
    std::vector<double> found = best;
    double value = least;
    try {
        simplex.optimize(found, value);
    } catch (const nlopt::roundoff_limited&) {
        // The numbers are as near to each other as they can be.
    }
    best = bounded.best;
    return true;
}

}  // namespace frigana::studies
