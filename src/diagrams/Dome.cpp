#include "Dome.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "SAT_SUB_NEWTON.h"
#include "SilentMessages.h"

namespace frigana::diagrams {

namespace {

constexpr int pureIntervals = 72;  // of each line of a pure fluid
constexpr int shares = 10;         // intervals of the vapor share in the table of a blend
constexpr int tableRows = 16;
constexpr int pressureUnknown = 1, densitiesUnknown = 2;  // what SATGV solves for
constexpr int givenPressure = 0, givenTemperature = 1, givenDensity = 6;

double lerp(double a, double b, double t) {
    return a + (b - a) * t;
}
double lerpLog(double a, double b, double t) {
    return a > 0.0 && b > 0.0 ? std::exp(lerp(std::log(a), std::log(b), t)) : lerp(a, b, t);
}

// Fractions between two compositions, or beyond them, with the sum 1.
Composition mix(const Composition& a, const Composition& b, double t) {
    Composition x{};
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) sum += x[i] = lerpLog(a[i], b[i], t);
    for (int i = 1; i <= modelTags.NC; ++i) x[i] /= sum;
    return x;
}

PhasePair mix(const PhasePair& a, const PhasePair& b, double t) {
    return {lerp(a.T, b.T, t),      lerpLog(a.p, b.p, t), lerpLog(a.Dl, b.Dl, t),
            lerpLog(a.Dv, b.Dv, t), mix(a.x, b.x, t),     mix(a.y, b.y, t)};
}

// All of a pair in logarithms, but for its temperature.
void addLogarithms(const PhasePair& pair, double weight, PhasePair& sum) {
    constexpr double absent = 1e-300;  // of a fraction whose logarithm there is none
    const auto logarithm = [](double fraction) { return std::log(std::fmax(fraction, absent)); };
    sum.p += weight * std::log(pair.p);
    sum.Dl += weight * std::log(pair.Dl);
    sum.Dv += weight * std::log(pair.Dv);
    for (int i = 1; i <= modelTags.NC; ++i) {
        sum.x[i] += weight * logarithm(pair.x[i]);
        sum.y[i] += weight * logarithm(pair.y[i]);
    }
}

PhasePair fromLogarithms(double T, const PhasePair& logarithms) {
    PhasePair pair;
    pair.T = T;
    pair.p = std::exp(logarithms.p);
    pair.Dl = std::exp(logarithms.Dl);
    pair.Dv = std::exp(logarithms.Dv);
    double sumX = 0.0, sumY = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        sumX += pair.x[i] = std::exp(logarithms.x[i]);
        sumY += pair.y[i] = std::exp(logarithms.y[i]);
    }
    for (int i = 1; i <= modelTags.NC; ++i) {
        pair.x[i] /= sumX;
        pair.y[i] /= sumY;
    }
    return pair;
}

// SATGV in both forms of its unknowns, from the same start: a start here has good densities, from which they are found
// without a density root in every step.
bool solveAt(double share, double value, int given, const Composition& z, PhasePair& pair) {
    const PhasePair start = pair;
    for (const int unknowns : {densitiesUnknown, pressureUnknown}) {
        pair = start;
        int ierr = 0;
        Text255 herr;
        SATGV(pair.T, pair.p, z, share, value, unknowns, given, 0, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
        const bool apart = std::fabs(pair.Dl / pair.Dv - 1.0) > 1e-7;
        if (ierr != 0 || !apart || !std::isfinite(pair.T) || !std::isfinite(pair.p)) continue;
        // The pressure of the thinner phase is the sharper one.
        if (unknowns == densitiesUnknown && given != givenPressure)
            PRESS(pair.T, std::fmin(pair.Dl, pair.Dv), pair.Dl < pair.Dv ? pair.x : pair.y, pair.p);
        return true;
    }
    pair = start;
    return false;
}

// Where both phases have one composition SATGV knows no solution. The lines are smooth there: it is taken from four
// solutions beside it.
bool solveAzeotrope(double share, double value, int given, const Composition& z, PhasePair& pair) {
    constexpr double nearlyOne = 1e-3, aside = 2e-5;  // of the ratio of fractions; of the value
    for (int i = 1; i <= modelTags.NC; ++i)
        if (std::fabs(pair.y[i] - pair.x[i]) > nearlyOne * pair.x[i]) return false;
    PhasePair sum;
    double T = 0.0;
    for (const auto& [distance, weight] :
         {std::pair(-2, -1.0 / 6.0), {-1, 4.0 / 6.0}, {1, 4.0 / 6.0}, {2, -1.0 / 6.0}}) {
        PhasePair beside = pair;
        // Ratios of one from the start would be taken for the trivial solution.
        for (int i = 1; i <= modelTags.NC; ++i) beside.y[i] *= 1.0 + (i % 2 == 0 ? aside : -aside);
        if (!solveAt(share, value * (1.0 + distance * aside), given, z, beside)) return false;
        addLogarithms(beside, weight, sum);
        T += weight * beside.T;
    }
    pair = fromLogarithms(given == givenTemperature ? value : T, sum);
    return true;
}

bool solve(double share, double value, int given, const Composition& z, PhasePair& pair) {
    if (!solveAt(share, value, given, z, pair)) return solveAzeotrope(share, value, given, z, pair);
    // Where the phases become alike the last step of Newton's method leaves more than elsewhere.
    constexpr double alike = 2.5;  // ratio of the densities
    if (pair.Dl < alike * pair.Dv && pair.Dv < alike * pair.Dl) solveAt(share, value, given, z, pair);
    return true;
}

// While a boundary is followed, the fluid is the phase y of SATGV on both lines; points hold liquid and vapor by name.
PhasePair feedAsVapor(const DomePoint& point) {
    PhasePair pair = point.pair;
    if (point.state.q == 0.0) {
        std::swap(pair.Dl, pair.Dv);
        std::swap(pair.x, pair.y);
    }
    return pair;
}

DomePoint pointOf(const ChartFluid& fluid, PhasePair pair) {
    DomePoint point;
    point.u = -std::log(pair.Dv);
    point.state = fluid.settled(pair.T, pair.p, pair.Dv);
    point.state.q = 1.0;
    if (pair.Dv > pair.Dl) {
        std::swap(pair.Dl, pair.Dv);
        std::swap(pair.x, pair.y);
        point.state.q = 0.0;
    }
    point.pair = pair;
    return point;
}

// Value at x of the polynomial through n points.
double polynomial(const double* xs, const double* ys, int n, double x) {
    double value = 0.0;
    for (int i = 0; i < n; ++i) {
        double term = ys[i];
        for (int j = 0; j < n; ++j)
            if (j != i) term *= (x - xs[j]) / (xs[i] - xs[j]);
        value += term;
    }
    return value;
}

// How far the two phases are apart: its sign tells on which line a point lies, and it is 0 in the critical point.
double apart(const DomePoint& point) {
    const double ratio = std::log(point.pair.Dl / point.pair.Dv);
    return point.state.q == 0.0 ? -ratio : ratio;
}

// Follows one line from its cold end towards a density, as far as it can be found.
std::vector<DomePoint> follow(const ChartFluid& fluid, const DomePoint& first, double uEnd, int steps) {
    std::vector<DomePoint> line{first};
    const double stride = (uEnd - first.u) / steps;
    double u = first.u, step = stride;
    while ((uEnd - u) * stride > 1e-9 * stride * stride) {
        if (std::fabs(step) > std::fabs(uEnd - u)) step = uEnd - u;
        const double next = u + step;
        const std::size_t n = line.size();
        PhasePair pair = feedAsVapor(line[n - 1]);
        if (n > 1) {
            const double t = (next - line[n - 2].u) / (line[n - 1].u - line[n - 2].u);
            pair = mix(feedAsVapor(line[n - 2]), pair, t);
        }
        pair.y = fluid.composition();
        pair.Dv = std::exp(-next);
        DomePoint point;
        bool found = solve(1.0, std::exp(-next), givenDensity, fluid.composition(), pair);
        if (found) {
            point = pointOf(fluid, pair);
            found = std::fabs(point.u - next) < 1e-9 && point.state.q == first.state.q &&
                    std::fabs(point.state.T / line[n - 1].state.T - 1.0) < 0.08;
        }
        if (found) {
            line.push_back(point);
            u = next;
            step = std::fabs(step * 2.0) > std::fabs(stride) ? stride : step * 2.0;
        } else {
            step *= 0.5;
            if (std::fabs(step) < std::fabs(stride) / 16.0) break;
        }
    }
    return line;
}

// The point at a density between two others of one line, by its temperature: a cold liquid of given density has a
// pressure that says nothing before the temperature is exact.
bool betweenByTemperature(const ChartFluid& fluid, const DomePoint& a, const DomePoint& b, double u, DomePoint& point) {
    if (a.state.q != b.state.q) return false;
    const int kph = a.state.q == 0.0 ? 1 : 2;
    double Ta = a.state.T, Tb = b.state.T, fa = a.u - u, fb = b.u - u;
    constexpr int mostSteps = 40;
    constexpr double close = 1e-12, accepted = 1e-9;  // in the logarithm of density
    double difference = 1.0;
    for (int step = 1, side = 0; step <= mostSteps && std::fabs(difference) > close; ++step) {
        PhasePair pair;
        pair.T = (Ta * fb - Tb * fa) / (fb - fa);
        int ierr = 0;
        Text255 herr;
        SATT(pair.T, fluid.composition(), kph, pair.p, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
        if (ierr > 0) return false;
        if (kph == 1) {
            std::swap(pair.Dl, pair.Dv);
            std::swap(pair.x, pair.y);
        }
        point = pointOf(fluid, pair);
        difference = point.u - u;
        const bool below = (difference < 0.0) == (fa < 0.0);
        (below ? Ta : Tb) = pair.T;
        (below ? fa : fb) = difference;
        if (side == (below ? 1 : -1)) (below ? fb : fa) *= 0.5;
        side = below ? 1 : -1;
    }
    return std::fabs(difference) <= accepted;
}

}  // namespace

bool Dome::trace(const ChartFluid& fluid, double coldest, std::string& why) {
    const SilentMessages silent;
    fluid_ = &fluid;
    coldest_ = coldest;
    points_.clear();
    table_.clear();
    return fluid.pure() ? tracePure(why) : traceBlend(why);
}

bool Dome::at(double u, DomePoint& point) const {
    return fluid_->pure() ? pureAt(u, point) : blendAt(u, point);
}

// u is the cube root of the distance from the critical temperature, so that equal steps in it are nearly equal steps in
// density near the critical point; negative on the bubble line.
bool Dome::pureAt(double u, DomePoint& point) const {
    const SilentMessages silent;
    point.u = u;
    const CriticalPoint& critical = fluid_->estimatedCritical();
    const double T = critical.T - (critical.T - coldest_) * std::fabs(u * u * u);
    PhasePair& pair = point.pair;
    pair.x = pair.y = fluid_->composition();
    pair.T = T;
    constexpr double criticalItself = 1e-7;  // [K] nearer than that both lines are one
    if (critical.T - T <= criticalItself) {
        pair.p = critical_.p;
        pair.Dl = pair.Dv = critical.D;
        point.state = critical_;
        point.state.q = u < 0.0 ? 0.0 : 1.0;
        return true;
    }
    int ierr = 0;
    Text255 herr;
    SATT(T, fluid_->composition(), 1, pair.p, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
    if (ierr > 0) return false;
    point.state = fluid_->settled(T, pair.p, u < 0.0 ? pair.Dl : pair.Dv);
    point.state.q = u < 0.0 ? 0.0 : 1.0;
    return true;
}

bool Dome::tracePure(std::string& why) {
    const CriticalPoint& critical = fluid_->estimatedCritical();
    critical_ = fluid_->at(critical.T, critical.D * fluid_->molarMass());
    hottest_ = highest_ = critical_;
    for (int i = -pureIntervals; i <= pureIntervals; ++i) {
        DomePoint point;
        if (pureAt(static_cast<double>(i) / pureIntervals, point)) points_.push_back(point);
    }
    if (points_.size() > pureIntervals) return true;
    why = "the saturation lines of " + fluid_->name() + " were not found";
    return false;
}

bool Dome::blendAt(double u, DomePoint& point) const {
    const SilentMessages silent;
    const auto after = std::upper_bound(points_.begin(), points_.end(), u,
                                        [](double value, const DomePoint& p) { return value < p.u; });
    const auto last = std::clamp<std::ptrdiff_t>(after - points_.begin(), 1, std::ssize(points_) - 1);
    const DomePoint& a = points_[static_cast<std::size_t>(last - 1)];
    const DomePoint& b = points_[static_cast<std::size_t>(last)];
    if (u == a.u || u == b.u) {
        point = u == a.u ? a : b;
        return true;
    }
    PhasePair pair = mix(feedAsVapor(a), feedAsVapor(b), (u - a.u) / (b.u - a.u));
    pair.y = fluid_->composition();
    pair.Dv = std::exp(-u);
    const double expected = pair.T;
    if (solve(1.0, std::exp(-u), givenDensity, fluid_->composition(), pair) &&
        std::fabs(pair.T / expected - 1.0) < 0.01 && std::fabs(std::log(pair.Dv) + u) < 1e-9) {
        point = pointOf(*fluid_, pair);
        point.u = u;
        return true;
    }
    // Beside the critical point both phases are too much alike to be told apart; the line is smooth there.
    if (std::fabs(apart(a)) > 0.3 && std::fabs(apart(b)) > 0.3) return betweenByTemperature(*fluid_, a, b, u, point);
    constexpr int neighbours = 4;
    const auto from = std::clamp<std::ptrdiff_t>(last - neighbours / 2, 0, std::ssize(points_) - neighbours);
    double places[neighbours], temperatures[neighbours];
    for (int i = 0; i < neighbours; ++i) {
        places[i] = points_[static_cast<std::size_t>(from + i)].u;
        temperatures[i] = points_[static_cast<std::size_t>(from + i)].state.T;
    }
    point = a;
    point.u = u;
    const double q = u < -std::log(critical_.D / fluid_->molarMass()) ? 0.0 : 1.0;
    point.state = fluid_->at(polynomial(places, temperatures, neighbours, u), std::exp(-u) * fluid_->molarMass());
    point.state.q = q;
    return true;
}

bool Dome::findCritical(const std::vector<DomePoint>& dew, const std::vector<DomePoint>& bubble) {
    constexpr int ofEach = 2;
    if (dew.size() < ofEach || bubble.size() < ofEach) return false;
    double r[2 * ofEach], u[2 * ofEach], T[2 * ofEach], lnP[2 * ofEach];
    for (int i = 0; i < 2 * ofEach; ++i) {
        const auto& line = i < ofEach ? dew : bubble;
        const DomePoint& point = line[line.size() - static_cast<std::size_t>(i < ofEach ? ofEach - i : i - ofEach + 1)];
        r[i] = apart(point);
        u[i] = point.u;
        T[i] = point.state.T;
        lnP[i] = std::log(point.state.p);
    }
    const double uc = polynomial(r, u, 2 * ofEach, 0.0);
    double tc = polynomial(u, T, 2 * ofEach, uc), pc = std::exp(polynomial(u, lnP, 2 * ofEach, uc)), rhoc = 0.0;
    const double interpolated = tc;
    int ierr = 0;
    Text255 herr;
    CRTPNT(fluid_->composition(), tc, pc, rhoc, ierr, herr);
    const bool found = ierr <= 0 && std::fabs(tc - interpolated) < 0.002 * tc && std::fabs(std::log(rhoc) + uc) < 0.2;
    critical_ = found ? fluid_->at(tc, rhoc * fluid_->molarMass())
                      : fluid_->at(interpolated, std::exp(-uc) * fluid_->molarMass());
    return true;
}

// A turn of the line in temperature or pressure becomes a point of its own, so that no curve passes below it.
void Dome::addExtremum(Property property, State& extremum) {
    const auto top = std::max_element(points_.begin(), points_.end(), [&](const DomePoint& a, const DomePoint& b) {
        return valueOf(a.state, property) < valueOf(b.state, property);
    });
    extremum = top->state;
    if (top == points_.begin() || top + 1 == points_.end()) return;
    double low = (top - 1)->u, high = (top + 1)->u;
    const double golden = 0.5 * (std::sqrt(5.0) - 1.0);
    DomePoint a, b, best = *top;
    double ua = high - golden * (high - low), ub = low + golden * (high - low);
    if (!at(ua, a) || !at(ub, b)) return;
    constexpr int steps = 16;
    for (int step = 1; step <= steps; ++step) {
        const bool left = valueOf(a.state, property) > valueOf(b.state, property);
        if (valueOf((left ? a : b).state, property) > valueOf(best.state, property)) best = left ? a : b;
        if (left) {
            high = ub;
            ub = ua;
            b = a;
            ua = high - golden * (high - low);
            if (!at(ua, a)) break;
        } else {
            low = ua;
            ua = ub;
            a = b;
            ub = low + golden * (high - low);
            if (!at(ub, b)) break;
        }
    }
    extremum = best.state;
    if (best.u == top->u) return;
    points_.insert(std::upper_bound(points_.begin(), points_.end(), best.u,
                                    [](double value, const DomePoint& p) { return value < p.u; }),
                   best);
}

bool Dome::traceBlend(std::string& why) {
    const Composition& z = fluid_->composition();
    DomePoint ends[2];
    for (const int kph : {1, 2}) {
        PhasePair pair;
        int ierr = 0;
        Text255 herr;
        SATT(coldest_, z, kph, pair.p, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
        if (ierr > 0) {
            why = "the saturation lines of " + fluid_->name() + " were not found";
            return false;
        }
        pair.T = coldest_;
        if (kph == 1) {
            std::swap(pair.Dl, pair.Dv);
            std::swap(pair.x, pair.y);
        }
        ends[kph - 1] = pointOf(*fluid_, pair);
    }
    constexpr int bubbleSteps = 24, dewSteps = 48;
    const double uc = -std::log(fluid_->estimatedCritical().D);
    const std::vector<DomePoint> bubble = follow(*fluid_, ends[0], uc - 0.06, bubbleSteps);
    const std::vector<DomePoint> dew = follow(*fluid_, ends[1], uc + 0.06, dewSteps);
    if (!findCritical(dew, bubble)) {
        why = "the critical point of " + fluid_->name() + " was not found";
        return false;
    }
    points_ = bubble;
    DomePoint top;
    top.state = critical_;
    top.u = -std::log(critical_.D / fluid_->molarMass());
    top.pair = {critical_.T, critical_.p, std::exp(-top.u), std::exp(-top.u), z, z};
    top.state.q = 0.0;
    std::erase_if(points_, [&](const DomePoint& point) { return point.u >= top.u; });
    points_.push_back(top);
    for (auto point = dew.rbegin(); point != dew.rend(); ++point)
        if (point->u > top.u) points_.push_back(*point);
    // closer beside the critical point
    for (const double distance : {0.2, 0.12, 0.07, 0.04, 0.025})
        for (const double side : {-1.0, 1.0}) {
            DomePoint point;
            if (!at(top.u + side * distance, point)) continue;
            points_.insert(std::upper_bound(points_.begin(), points_.end(), point.u,
                                            [](double value, const DomePoint& p) { return value < p.u; }),
                           point);
        }
    addExtremum(Property::temperature, hottest_);
    addExtremum(Property::pressure, highest_);
    fillTable();
    return true;
}

double Dome::temperatureNear(double D) const {
    const auto after = std::lower_bound(points_.begin(), points_.end(), D,
                                        [](const DomePoint& p, double value) { return p.state.D > value; });
    if (after == points_.begin() || after == points_.end()) return coldest_;
    const State &a = (after - 1)->state, &b = after->state;
    return lerp(a.T, b.T, std::log(D / a.D) / std::log(b.D / a.D));
}

namespace {

// The state on the straight line between two at which a property has a value.
State between(const State& a, const State& b, Property property, double value) {
    const double t = (value - valueOf(a, property)) / (valueOf(b, property) - valueOf(a, property));
    return {lerp(a.T, b.T, t), lerp(a.p, b.p, t), lerp(a.D, b.D, t), lerp(a.h, b.h, t), lerp(a.s, b.s, t), a.q};
}

}  // namespace

// A point at a place, or where there is none, beside the critical point of a pure fluid, at one nearer to a known
// place.
bool Dome::reach(double u, double known, DomePoint& point) const {
    constexpr int mostHalvings = 20;
    for (int halving = 0; halving <= mostHalvings; ++halving, u = 0.5 * (u + known)) {
        if (at(u, point)) return true;
        if (!fluid_->pure()) return false;
    }
    return false;
}

std::vector<DomePoint> Dome::crossings(Property property, double value) const {
    std::vector<DomePoint> found;
    for (std::size_t i = 1; i < points_.size(); ++i) {
        const DomePoint *low = &points_[i - 1], *high = &points_[i];
        double ua = low->u, ub = high->u;
        double fa = valueOf(low->state, property) - value, fb = valueOf(high->state, property) - value;
        if (fa == 0.0) {
            found.push_back(*low);
            continue;
        }
        if (fa * fb >= 0.0) {
            if (fb == 0.0 && i + 1 == points_.size()) found.push_back(*high);
            continue;
        }
        // false position, the end that stays halved
        DomePoint below = *low, above = *high, point = std::fabs(fa) < std::fabs(fb) ? *low : *high;
        double least = std::min(std::fabs(fa), std::fabs(fb));
        constexpr int mostSteps = 60;
        const double close = 1e-12 * (std::fabs(value) + 1e-3);
        for (int step = 1, side = 0; step <= mostSteps && least > close && std::fabs(ub - ua) >= 1e-15; ++step) {
            DomePoint next;
            if (!reach((ua * fb - ub * fa) / (fb - fa), std::fabs(ua) > std::fabs(ub) ? ua : ub, next)) break;
            const double f = valueOf(next.state, property) - value;
            if (std::fabs(f) < least) {
                least = std::fabs(f);
                point = next;
            }
            if ((f < 0.0) == (fa < 0.0)) {
                ua = next.u;
                fa = f;
                below = next;
                if (side == -1) fb *= 0.5;
                side = -1;
            } else {
                ub = next.u;
                fb = f;
                above = next;
                if (side == 1) fa *= 0.5;
                side = 1;
            }
        }
        // What is left is the accuracy of equilibria, or the straight top of a fluid whose equation has its critical
        // point elsewhere.
        if (least > close) point.state = between(below.state, above.state, property, value);
        found.push_back(point);
    }
    return found;
}

// States of two phases of a blend on a net of temperatures and vapor shares: what every later one starts from.
void Dome::fillTable() {
    const Composition& z = fluid_->composition();
    const double Tc = critical_.T;
    PhasePair first = points_.front().pair;
    for (int i = 0; i <= tableRows; ++i) {
        const double w = i < tableRows ? 1.0 - static_cast<double>(i) / tableRows : 0.5 / tableRows;
        Row row;
        row.T = Tc - (Tc - coldest_) * w * w;
        for (int j = 0; j <= shares; ++j) {
            const double q = static_cast<double>(j) / shares;
            PhasePair pair = j == 0 ? first : row.pairs.back();
            const std::size_t known = table_.size();
            if (known == 1) {
                pair = table_[0].pairs[static_cast<std::size_t>(j)];
            } else if (known > 1) {
                const Row &a = table_[known - 2], &b = table_[known - 1];
                const double t = (1.0 / row.T - 1.0 / a.T) / (1.0 / b.T - 1.0 / a.T);
                pair = mix(a.pairs[static_cast<std::size_t>(j)], b.pairs[static_cast<std::size_t>(j)], t);
            }
            pair.T = row.T;
            if (!solve(q, row.T, givenTemperature, z, pair)) return;
            row.pairs.push_back(pair);
            row.states.push_back(fluid_->between(pair, q));
        }
        table_.push_back(std::move(row));
    }
}

namespace {

// Interpolation by the polynomial through neighbouring nodes: the first of them, and what each counts.
struct Nodes {
    static constexpr std::size_t most = 4;
    std::size_t first = 0, count = 0;
    double weight[most]{};
};

// Nodes around a value, which rise or fall steadily. Beyond the ends only the last two count.
template <class Get>
Nodes nodesAround(std::size_t count, double value, Get get) {
    Nodes nodes;
    const bool rising = get(count - 1) > get(0);
    std::size_t after = 1;
    while (after + 1 < count && (get(after) < value) == rising) ++after;
    const bool beyond = (value - get(0)) * (value - get(count - 1)) > 0.0;
    nodes.count = beyond ? 2 : std::min(Nodes::most, count);
    const std::size_t before = after >= nodes.count / 2 ? after - nodes.count / 2 : 0;
    nodes.first = std::min(before, count - nodes.count);
    for (std::size_t i = 0; i < nodes.count; ++i) {
        nodes.weight[i] = 1.0;
        for (std::size_t j = 0; j < nodes.count; ++j) {
            const double own = get(nodes.first + i), other = get(nodes.first + j);
            if (j != i) nodes.weight[i] *= (value - other) / (own - other);
        }
    }
    return nodes;
}

Nodes sharesAround(double q) {
    return nodesAround(shares + 1, q * shares, [](std::size_t j) { return static_cast<double>(j); });
}

// A pair moved as far as one start lies from another.
PhasePair moved(const PhasePair& pair, const PhasePair& from, const PhasePair& to) {
    PhasePair sum;
    addLogarithms(pair, 1.0, sum);
    addLogarithms(to, 1.0, sum);
    addLogarithms(from, -1.0, sum);
    return fromLogarithms(to.T, sum);
}

// What the accuracy of a property is taken from where its value is near zero, which is arbitrary.
double zeroOf(Property property) {
    switch (property) {
        case Property::enthalpy:
            return 1.0;  // [kJ/kg]
        case Property::entropy:
        case Property::quality:
            return 0.01;  // [kJ/(kg K)], share
        default:
            return 0.0;
    }
}

}  // namespace

// The rows lie evenly in the square root of the distance from the critical temperature, over which all lines are
// smooth.
double Dome::rowPlace(double T) const {
    return std::sqrt(std::max(0.0, (critical_.T - T) / (critical_.T - coldest_)));
}

PhasePair Dome::seed(double T, double q) const {
    const Nodes rows = nodesAround(table_.size(), rowPlace(T), [&](std::size_t i) { return rowPlace(table_[i].T); });
    const Nodes columns = sharesAround(q);
    PhasePair sum;
    for (std::size_t i = 0; i < rows.count; ++i)
        for (std::size_t j = 0; j < columns.count; ++j)
            addLogarithms(table_[rows.first + i].pairs[columns.first + j], rows.weight[i] * columns.weight[j], sum);
    return fromLogarithms(T, sum);
}

// The share at which a property has a value, from the table alone, and how fast the value changes with the share.
double Dome::shareNear(double T, Property property, double value, double& slope) const {
    const bool reciprocal = property == Property::density;  // volumes, not densities, are nearly linear
    const double wanted = reciprocal ? 1.0 / value : value;
    const Nodes rows = nodesAround(table_.size(), rowPlace(T), [&](std::size_t i) { return rowPlace(table_[i].T); });
    double values[shares + 1]{};
    for (std::size_t j = 0; j <= shares; ++j)
        for (std::size_t i = 0; i < rows.count; ++i) {
            const double at = valueOf(table_[rows.first + i].states[j], property);
            values[j] += rows.weight[i] * (reciprocal ? -std::log(at) : at);
        }
    if (reciprocal)
        for (double& logarithm : values) logarithm = std::exp(logarithm);
    const auto placeOf = [&](double at) {
        const Nodes around = nodesAround(shares + 1, at, [&](std::size_t j) { return values[j]; });
        double place = 0.0;
        for (std::size_t j = 0; j < around.count; ++j)
            place += around.weight[j] * static_cast<double>(around.first + j);
        return place / shares;
    };
    const double q = placeOf(wanted), aside = 1e-4 * (values[shares] - values[0]);
    slope = aside / (placeOf(wanted + aside) - q);
    return std::clamp(q, 0.0, 1.0);
}

bool Dome::solvePair(Property given, double value, double q, PhasePair& pair) const {
    if (fluid_->pure()) {
        int ierr = 0;
        Text255 herr;
        if (given == Property::temperature) {
            pair.T = value;
            SATT(value, fluid_->composition(), 1, pair.p, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
        } else {
            pair.p = value;
            SATP(value, fluid_->composition(), 1, pair.T, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
        }
        return ierr <= 0;
    }
    if (table_.size() < 2) return false;
    double T = value;
    if (given == Property::pressure) {
        const Nodes columns = sharesAround(q);
        const auto lnP = [&](std::size_t row) {
            double sum = 0.0;
            for (std::size_t j = 0; j < columns.count; ++j)
                sum += columns.weight[j] * std::log(table_[row].pairs[columns.first + j].p);
            return sum;
        };
        const Nodes rows = nodesAround(table_.size(), std::log(value), lnP);
        double reciprocal = 0.0;
        for (std::size_t i = 0; i < rows.count; ++i) reciprocal += rows.weight[i] / table_[rows.first + i].T;
        T = 1.0 / reciprocal;
    }
    pair = seed(T, q);
    if (given == Property::pressure) pair.p = value;
    return solve(q, value, given == Property::pressure ? givenPressure : givenTemperature, fluid_->composition(), pair);
}

bool Dome::inside(Property given, double value, double q, State& state) const {
    const SilentMessages silent;
    PhasePair pair;
    if (!solvePair(given, value, q, pair)) return false;
    state = fluid_->between(pair, q);
    return true;
}

bool Dome::inside(double T, Property property, double value, State& state) const {
    const SilentMessages silent;
    PhasePair pair;
    if (fluid_->pure()) {
        if (!solvePair(Property::temperature, T, 0.0, pair)) return false;
        const State liquid = fluid_->between(pair, 0.0), vapor = fluid_->between(pair, 1.0);
        double low = valueOf(liquid, property), high = valueOf(vapor, property), wanted = value;
        if (property == Property::density) low = 1.0 / low, high = 1.0 / high, wanted = 1.0 / wanted;
        const double q = (wanted - low) / (high - low);
        constexpr double rounding = 1e-7;
        if (!(q >= -rounding && q <= 1.0 + rounding)) return false;
        state = fluid_->between(pair, std::clamp(q, 0.0, 1.0));
        return true;
    }
    if (table_.size() < 2) return false;
    // Secant in the share; the property is nearly linear in it.
    const bool reciprocal = property == Property::density;
    const auto difference = [&](const State& s) {
        return reciprocal ? 1.0 / s.D - 1.0 / value : valueOf(s, property) - value;
    };
    double slope = 0.0, q = shareNear(T, property, value, slope), fBefore = 0.0, before = 0.0;
    PhasePair start = seed(T, q);
    pair = start;
    const double close = 1e-9 * (reciprocal ? 1.0 / value : std::fabs(value) + zeroOf(property));
    constexpr int mostSteps = 12;
    for (int step = 1; step <= mostSteps; ++step) {
        if (!solve(q, T, givenTemperature, fluid_->composition(), pair)) return false;
        state = fluid_->between(pair, q);
        const double f = difference(state);
        if (std::fabs(f) <= close) return true;
        if (step > 1) slope = (f - fBefore) / (q - before);
        const double next = std::clamp(q - f / slope, 0.0, 1.0);
        if (next == q) return std::fabs(f) <= 10.0 * close;
        // The solution lies as far from the one at the next share as the starts do.
        const PhasePair other = seed(T, next);
        pair = moved(pair, start, other);
        start = other;
        before = q;
        fBefore = f;
        q = next;
    }
    return false;
}

}  // namespace frigana::diagrams
