// What is worth keeping of a mixture over set-ups: a cycle sets the same blend up again and again, and a server takes a
// few in turns.
//
// An equation with its mixing parameters, limits and composition is known by its own values at a few states, so that a
// changed file or parameter makes another one.
// State: none of its own; each KnownEquations belongs to the source that keeps something.
#pragma once

#include <array>

#include "CriticalPoint.h"
#include "EngineLimits.h"

namespace frigana {

struct EquationValues {
    int components = 0;  // 0: none
    Composition x{};
    std::array<double, 17> values{};
};

// Evaluates the equation, so that what follows meets its models away from every state that was asked for before.
EquationValues describeEquation(const Composition& z, const CriticalPoint& critical);

bool sameEquation(const EquationValues& a, const EquationValues& b);

// What was found for the last four equations.
template <class Found>
class KnownEquations {
  public:
    const Found* find(const EquationValues& wanted) const {
        for (const Entry& entry : entries_)
            if (sameEquation(entry.equation, wanted)) return &entry.found;
        return nullptr;
    }
    void keep(const EquationValues& equation, const Found& found) {
        entries_[oldest_] = {equation, found};
        oldest_ = (oldest_ + 1) % most;
    }

  private:
    struct Entry {
        EquationValues equation;
        Found found{};
    };
    static constexpr int most = 4;
    Entry entries_[most]{};
    int oldest_ = 0;
};

}  // namespace frigana
