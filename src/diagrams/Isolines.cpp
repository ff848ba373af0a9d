#include "Isolines.h"

#include <algorithm>
#include <cmath>

#include "MELTING.h"

namespace frigana::diagrams {

namespace {

constexpr int singlePhaseIntervals = 64, twoPhaseIntervals = 4;

}  // namespace

Bounds::Bounds(const ChartFluid& fluid, const Plane& plane) : fluid_(fluid), plane_(plane) {
    constexpr double noMeltingLine = 1e11;
    int ierr = 0;
    Text255 herr;
    MELTP(plane.highestP, fluid.composition(), hottestSolid_, ierr, herr);
    if (ierr > 0 || fluid.meltingPressure(fluid.lowestT() + 1.0) > noMeltingLine) hottestSolid_ = 0.0;
}

double Bounds::depth(const State& state) const {
    constexpr double slack = 1e-9, pressureSlack = 1e-6;  // pressures of liquids come out less sharp
    double depth = plane_(state).depth();
    depth = std::min(depth, (state.T - plane_.coldest) / plane_.coldest + slack);
    depth = std::min(depth, std::log(plane_.highestP / state.p) + pressureSlack);
    if (state.T < hottestSolid_ && state.q == singlePhase)
        depth = std::min(depth, std::log(fluid_.meltingPressure(state.T) / state.p));
    return depth;
}

IsolineMaker::IsolineMaker(const Dome& dome, const Plane& plane)
    : dome_(dome), fluid_(dome.fluid()), plane_(plane), bounds_(fluid_, plane) {}

void IsolineMaker::make(Property property, double value, std::vector<Curve>& curves) {
    parts_.clear();
    property_ = property;
    value_ = value;
    if (property == Property::quality) {
        quality();
    } else if (property == Property::density) {
        isochore();
    } else {
        crossings_ = dome_.crossings(property, value);
        singlePhaseParts();
        if (property == Property::pressure) belowGreatestDensity();
        twoPhaseParts();
    }
    for (Polyline& line : joined()) curves.push_back({Curve::Role::isoline, property, value, std::move(line)});
}

void IsolineMaker::boundary(std::vector<Curve>& curves) {
    for (const bool bubble : {true, false}) {
        parts_.clear();
        std::vector<double> places;
        for (const DomePoint& point : dome_.points())
            if (bubble ? point.u <= uCritical() : point.u >= uCritical()) places.push_back(point.u);
        const double quality = bubble ? 0.0 : 1.0;
        traceParts(places, [&, this](double u, State& state) {
            DomePoint point;
            if (!dome_.at(u, point)) return false;
            state = point.state;
            state.q = quality;
            return true;
        });
        for (Polyline& line : parts_)
            curves.push_back(
                {bubble ? Curve::Role::bubble : Curve::Role::dew, Property::quality, quality, std::move(line)});
    }
}

double IsolineMaker::uCritical() const {
    return fluid_.pure() ? 0.0 : -std::log(dome_.critical().D / fluid_.molarMass());
}

// Densities between which every curve of the chart lies [kg/m3].
double IsolineMaker::thinnest() const {
    const double lowest = plane_.kind == ChartKind::ph ? plane_.y.low : 1e-25 * dome_.critical().p;
    constexpr double gasConstant = 8.314;  // a bound needs no more digits
    return 0.2 * lowest * fluid_.molarMass() / (gasConstant * fluid_.highestT());
}
double IsolineMaker::densest() const {
    // A liquid that freezes is densest where its melting line leaves the chart, or at its coldest.
    double densest = dome_.points().front().state.D;
    bool found = false;
    for (const double T : {dome_.coldest(), bounds_.hottestSolid()}) {
        State state;
        if (T < dome_.coldest() ||
            !fluid_.atPressure(T, std::min(plane_.highestP, fluid_.meltingPressure(T)), -1, state))
            continue;
        densest = std::max(densest, state.D);
        found = true;
    }
    return found ? densest : 1.2 * densest;
}

void IsolineMaker::traceParts(const std::vector<double>& places, const StateOf& stateOf) {
    traceCurve(
        plane_, places, stateOf, [this](const State& s) { return bounds_.depth(s); }, parts_);
}

// A state of one phase with the constant property, by its density.
bool IsolineMaker::singleState(double lnD, State& state) {
    const double D = std::exp(lnD);
    double T = value_;
    if (property_ != Property::temperature) {
        constexpr double below = 0.97;  // the boundary is known by interpolation
        const double coldest = below * dome_.temperatureNear(D);
        if (!fluid_.temperatureAt(D, property_, value_, coldest, std::max(guess_, coldest), T)) return false;
    }
    guess_ = T;
    // In a cold liquid the pressure is sharper by the density than by the temperature.
    state = property_ == Property::pressure ? fluid_.settled(T, value_, D / fluid_.molarMass()) : fluid_.at(T, D);
    return true;
}

// Between the densities at which it meets the boundary the curve is in one phase or in two.
void IsolineMaker::singlePhaseParts() {
    std::vector<End> ends{{std::log(thinnest())}};
    for (const DomePoint& point : crossings_) ends.push_back({std::log(point.state.D), &point.state});
    std::sort(ends.begin(), ends.end(), [](const End& a, const End& b) { return a.place < b.place; });
    // What meets the boundary nowhere may be vapor that is thinner than all of it, or liquid that is denser.
    const State &bubble = dome_.points().front().state, &dew = dome_.points().back().state;
    const bool belowDome = property_ == Property::pressure && value_ < dew.p;
    const double last = std::log(belowDome ? dew.D : densest()), liquid = std::log(bubble.D);
    if (liquid > ends.back().place && liquid < last) ends.push_back({liquid});
    if (last > ends.back().place) ends.push_back({last});
    for (std::size_t i = 1; i < ends.size(); ++i) singlePhasePart(ends[i - 1], ends[i]);
}

// Water expands again when it is cooled below 4 degrees Celsius, under pressure below less: an isobar over density ends
// there, or just before, and goes on over temperature.
void IsolineMaker::belowGreatestDensity() {
    const State* densest = nullptr;
    for (const Polyline& part : parts_)
        for (const State* end : {&part.front(), &part.back()})
            if (densest == nullptr || end->D > densest->D) densest = end;
    constexpr double border = 1e-6;
    if (densest == nullptr || bounds_.depth(*densest) < border) return;
    const State from = *densest;
    for (const DomePoint& crossing : crossings_)
        if (distance(plane_(crossing.state), plane_(from)) < border) return;
    constexpr int intervals = 8;
    traceParts(evenly(plane_.coldest, from.T, intervals), [&, this](double T, State& state) {
        state = from;
        if (T == from.T) return true;
        if (!fluid_.atPressure(T, value_, -1, state)) return false;
        state = fluid_.settled(T, value_, state.D / fluid_.molarMass());
        return true;
    });
}

// Whether the curve is inside the dome between two densities.
bool IsolineMaker::twoPhases(const End& thin, const End& dense) {
    // An isotherm and an isobar enter once and leave once: beside the liquid line they can be so close to it that no
    // look at a point between would tell.
    const bool dewBehind = dense.state != nullptr && dense.state->q == 1.0, free = thin.state == nullptr;
    const bool bubbleBefore = thin.state != nullptr && thin.state->q == 0.0, open = dense.state == nullptr;
    if (property_ == Property::temperature || property_ == Property::pressure) {
        const bool liquid = std::exp(thin.place) >= 0.999999 * dome_.points().front().state.D;
        if (crossings_.empty() || liquid || (dewBehind && free) || (bubbleBefore && open)) return false;
        return !(crossings_.size() > 1 && (free || open));
    }
    // A point beside an end on the boundary: farther away the curve may already have left the range of the fluid.
    constexpr double aside = 0.05;  // in the logarithm of density
    const double offset = std::min(aside, 0.5 * (dense.place - thin.place));
    double lnD = 0.5 * (thin.place + dense.place);
    if (dense.state != nullptr)
        lnD = dense.place - offset;
    else if (thin.state != nullptr)
        lnD = thin.place + offset;
    State beside;
    if (!singleState(lnD, beside)) return dense.state != nullptr || thin.state != nullptr;
    return beside.D < dome_.points().front().state.D && beside.T <= dome_.temperatureNear(beside.D);
}

void IsolineMaker::singlePhasePart(const End& thin, const End& dense) {
    constexpr double empty = 1e-10, longest = 0.2;  // in the logarithm of density
    const double length = dense.place - thin.place;
    if (length < empty) return;
    guess_ = thin.state != nullptr ? thin.state->T : dense.state != nullptr ? dense.state->T : fluid_.highestT();
    if (twoPhases(thin, dense)) return;
    const int n = std::clamp(static_cast<int>(std::ceil(length / longest)), 8, singlePhaseIntervals);
    traceParts(evenly(thin.place, dense.place, n), [&, this](double lnD, State& state) {
        const State* end = lnD == thin.place ? thin.state : lnD == dense.place ? dense.state : nullptr;
        if (end == nullptr) return singleState(lnD, state);
        state = *end;
        state.q = singlePhase;
        return true;
    });
}

// Over temperature: between the crossings, and from the cold end.
void IsolineMaker::twoPhaseParts() {
    if (property_ == Property::temperature || property_ == Property::pressure) return acrossTheDome();
    std::vector<End> ends{{dome_.coldest()}};
    for (const DomePoint& point : crossings_) ends.push_back({point.state.T, &point.state});
    std::sort(ends.begin(), ends.end(), [](const End& a, const End& b) { return a.place < b.place; });
    for (std::size_t i = 1; i < ends.size(); ++i) twoPhasePart(ends[i - 1], ends[i]);
}

void IsolineMaker::twoPhasePart(const End& cold, const End& hot) {
    constexpr double empty = 1e-9;  // [K]
    if (hot.place - cold.place < empty) return;
    State middle;
    if (!dome_.inside(0.5 * (cold.place + hot.place), property_, value_, middle)) return;
    traceParts(evenly(cold.place, hot.place, twoPhaseIntervals), [&, this](double T, State& state) {
        const State* end = T == cold.place ? cold.state : T == hot.place ? hot.state : nullptr;
        if (end == nullptr) return dome_.inside(T, property_, value_, state);
        state = *end;
        return true;
    });
}

// Isotherms and isobars, from the bubble to the dew line.
void IsolineMaker::acrossTheDome() {
    if (crossings_.size() == 1 && crossings_.front().state.q == 1.0 && property_ == Property::pressure)
        return twoPhasePart({dome_.coldest()}, {crossings_.front().state.T, &crossings_.front().state});
    if (crossings_.size() < 2) return;
    const State bubble = crossings_.front().state, dew = crossings_.back().state;
    if (bubble.q == dew.q) {
        // Two points of one line, beside the critical point of a blend: the part is short and nearly straight.
        const bool drawn = bounds_.depth(bubble) >= 0.0 && bounds_.depth(dew) >= 0.0;
        if (drawn && distance(plane_(bubble), plane_(dew)) < longestStep) parts_.push_back({bubble, dew});
        return;
    }
    traceParts(evenly(0.0, 1.0, twoPhaseIntervals), [&, this](double q, State& state) {
        if (q != 0.0 && q != 1.0) return dome_.inside(property_, value_, q, state);
        state = q == 0.0 ? bubble : dew;
        return true;
    });
}

void IsolineMaker::isochore() {
    crossings_ = dome_.crossings(Property::density, value_);
    const State* end = crossings_.empty() ? nullptr : &crossings_.front().state;
    const double from = end != nullptr ? end->T : dome_.coldest(), hottest = 1.5 * fluid_.highestT();
    traceParts(evenly(from, hottest, singlePhaseIntervals), [&, this](double T, State& state) {
        if (T == from && end != nullptr) {
            state = *end;
            state.q = singlePhase;
        } else {
            state = fluid_.at(T, value_);
        }
        return true;
    });
    if (end != nullptr) twoPhasePart({dome_.coldest()}, {end->T, end});
}

// From the cold end up to where the lines run together in the critical point, by the square root of the distance from
// the critical temperature.
void IsolineMaker::quality() {
    const double coldest = dome_.coldest(), Tc = dome_.critical().T;
    std::vector<double> places{1.0, 0.8, 0.6, 0.42, 0.27, 0.18, 0.1, 0.06, 0.03};
    if (fluid_.pure()) places.insert(places.end(), {0.01, 0.003, 0.001});
    traceParts(places, [&, this](double w, State& state) {
        return dome_.inside(Tc - (Tc - coldest) * w * w, Property::quality, value_, state);
    });
    if (parts_.empty()) return;
    // What is missing below the critical point is straight.
    State top = dome_.critical();
    top.q = value_;
    constexpr double farthest = 0.1;
    if (plane_(top).inside() && distance(plane_(top), plane_(parts_.back().back())) < farthest)
        parts_.back().push_back(top);
}

// Parts that end where another one begins become one line.
std::vector<Polyline> IsolineMaker::joined() {
    std::vector<Polyline> lines;
    constexpr double same = 1e-7;
    for (Polyline& part : parts_) {
        Polyline line = std::move(part);
        for (bool again = true; again;) {
            again = false;
            for (std::size_t i = 0; i < lines.size() && !again; ++i) {
                Polyline& other = lines[i];
                const auto meets = [&](const State& a, const State& b) {
                    return distance(plane_(a), plane_(b)) < same;
                };
                if (meets(line.front(), other.front()) || meets(line.back(), other.back()))
                    std::reverse(line.begin(), line.end());
                if (meets(other.back(), line.front())) {
                    other.insert(other.end(), line.begin() + 1, line.end());
                    line = std::move(other);
                    again = true;
                } else if (meets(line.back(), other.front())) {
                    line.insert(line.end(), other.begin() + 1, other.end());
                    again = true;
                }
                if (again) lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

}  // namespace frigana::diagrams
