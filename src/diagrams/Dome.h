// The boundary of the two-phase region and the states inside it.
#pragma once

#include <vector>

#include "ChartFluid.h"

namespace frigana::diagrams {

// A point of the boundary. The composition of the fluid is one of the two phases, the other one is incipient.
struct DomePoint {
    double u = 0.0;  // place along the boundary, rising from the cold end of the bubble line to that of the dew line
    State state;     // quality 0 on the bubble line, 1 on the dew line
    PhasePair pair;
};

class Dome {
  public:
    // Follows both lines from a temperature to the critical point. A pure fluid is solved at temperatures that lie the
    // closer the nearer the critical point; of a blend one density after the other, which passes through its critical
    // point, its hottest and its highest one without a turn.
    //   Given     coldest  [K]
    //   Returned  (value)  false with the reason in `why`
    bool trace(const ChartFluid& fluid, double coldest, std::string& why);

    const ChartFluid& fluid() const { return *fluid_; }
    const std::vector<DomePoint>& points() const { return points_; }
    double coldest() const { return coldest_; }
    const State& critical() const { return critical_; }
    // The hottest state with two phases, and that of highest pressure: of a pure fluid the critical point.
    const State& hottest() const { return hottest_; }
    const State& highest() const { return highest_; }

    // The point at a place; false where no equilibrium was found.
    bool at(double u, DomePoint& point) const;
    // Temperature of the boundary at a density, interpolated [K]; beyond its ends that of the ends.
    double temperatureNear(double D) const;

    // Points where a property has a value, from the cold end of the bubble line on.
    std::vector<DomePoint> crossings(Property property, double value) const;

    // A state of two phases at a temperature or a pressure with the molar share q of vapor.
    bool inside(Property given, double value, double q, State& state) const;
    // The state of two phases at a temperature with the value of another property (density, enthalpy, entropy or
    // quality); false where there is none.
    bool inside(double T, Property property, double value, State& state) const;

  private:
    struct Row {
        double T = 0.0;
        std::vector<PhasePair> pairs;  // at the shares of the table
        std::vector<State> states;
    };

    bool tracePure(std::string& why);
    bool traceBlend(std::string& why);
    bool reach(double u, double known, DomePoint& point) const;
    bool pureAt(double u, DomePoint& point) const;
    bool blendAt(double u, DomePoint& point) const;
    bool findCritical(const std::vector<DomePoint>& dew, const std::vector<DomePoint>& bubble);
    void addExtremum(Property property, State& extremum);
    void fillTable();
    PhasePair seed(double T, double q) const;
    double rowPlace(double T) const;
    double shareNear(double T, Property property, double value, double& slope) const;
    bool solvePair(Property given, double value, double q, PhasePair& pair) const;

    const ChartFluid* fluid_ = nullptr;
    double coldest_ = 0.0;
    std::vector<DomePoint> points_;
    State critical_, hottest_, highest_;
    std::vector<Row> table_;  // of a blend, from the coldest to the hottest row
};

}  // namespace frigana::diagrams
