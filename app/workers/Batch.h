// Many cases on all workers: cases in, answers in the order of the cases, however many there are.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "Pool.h"

namespace frigana::workers {

// Both are called one at a time, from threads of the batch.
struct Batch {
    std::function<bool(std::string& request)> next;                    // the next case; false: there are no more
    std::function<bool(std::size_t number, Answer&& answer)> deliver;  // in order, from 0; false: enough
};

// Runs a batch to its end, until it is cancelled, the pool is stopped, or `deliver` has enough. What `next` or
// `deliver` throws ends the batch and is thrown on. Memory does not grow with the number of cases: those that wait for
// a slower one before them are bounded in number.
//   Returned  (value)   answers delivered; those of cases that ended as cancelled or stopped are not
std::size_t runBatch(Pool& pool, const Batch& batch, const Cancel* cancel = nullptr);

}  // namespace frigana::workers
