// The curves on which one property is constant, through one phase and two, and the boundary itself.
#pragma once

#include "Dome.h"
#include "Tracing.h"

namespace frigana::diagrams {

// A curve on which one property is constant, or a line of the boundary.
struct Curve {
    enum class Role { bubble, dew, isoline };
    Role role = Role::isoline;
    Property constant = Property::temperature;
    double value = 0.0;  // of the constant property, unit of State
    Polyline points;
};

// How far a state is inside what a chart shows, in shares of the window: within the window, above the coldest
// temperature, below the highest pressure and the melting line; negative outside.
class Bounds {
  public:
    Bounds(const ChartFluid& fluid, const Plane& plane);
    double depth(const State& state) const;
    // Above this temperature nothing freezes in the chart [K]; 0 without a melting line.
    double hottestSolid() const { return hottestSolid_; }

  private:
    const ChartFluid& fluid_;
    const Plane& plane_;
    double hottestSolid_ = 0.0;
};

class IsolineMaker {
  public:
    IsolineMaker(const Dome& dome, const Plane& plane);

    // The curve of a value: of temperature, pressure, density, enthalpy or entropy with its parts in one phase and in
    // two joined exactly at the boundary; of quality by mass from the cold end to the critical point.
    void make(Property property, double value, std::vector<Curve>& curves);
    // Bubble and dew line.
    void boundary(std::vector<Curve>& curves);

  private:
    struct End {
        double place = 0.0;
        const State* state = nullptr;  // on the boundary; none where the curve just ends
    };

    double uCritical() const;
    double thinnest() const;
    double densest() const;
    void traceParts(const std::vector<double>& places, const StateOf& stateOf);
    bool singleState(double lnD, State& state);
    bool twoPhases(const End& thin, const End& dense);
    void singlePhaseParts();
    void belowGreatestDensity();
    void singlePhasePart(const End& thin, const End& dense);
    void twoPhaseParts();
    void twoPhasePart(const End& cold, const End& hot);
    void acrossTheDome();
    void isochore();
    void quality();
    std::vector<Polyline> joined();

    const Dome& dome_;
    const ChartFluid& fluid_;
    const Plane& plane_;
    Bounds bounds_;
    Property property_ = Property::temperature;
    double value_ = 0.0, guess_ = 0.0;
    std::vector<DomePoint> crossings_;
    std::vector<Polyline> parts_;
};

}  // namespace frigana::diagrams
