#include "Tracing.h"

#include <cmath>

namespace frigana::diagrams {

namespace {

constexpr int deepest = 14;        // halvings of the interval between two first points
constexpr double onBorder = 1e-9;  // as share of the window
constexpr int mostBorderSteps = 80;

struct Sample {
    double u = 0.0, depth = 0.0;
    bool exists = false;
    State state;
    bool drawn() const { return exists && depth >= -onBorder; }
};

double offChord(const Place& a, const Place& middle, const Place& b) {
    const double length = distance(a, b);
    if (length < 1e-12) return distance(a, middle);
    return std::fabs((b.x - a.x) * (middle.y - a.y) - (b.y - a.y) * (middle.x - a.x)) / length;
}

class Tracer {
  public:
    Tracer(const Plane& plane, const StateOf& stateOf, const DepthOf& depthOf)
        : plane_(plane), stateOf_(stateOf), depthOf_(depthOf) {}

    Sample sample(double u) const {
        Sample s;
        s.u = u;
        s.exists = stateOf_(u, s.state) && std::isfinite(s.state.p) && std::isfinite(s.state.h) && s.state.p > 0.0;
        s.depth = s.exists ? depthOf_(s.state) : -1.0;
        return s;
    }

    // The last drawn point between one that is and one that is not.
    Sample border(Sample in, Sample out) const {
        if (in.depth <= onBorder) return in;
        double fIn = in.depth, fOut = out.depth;
        for (int step = 1, side = 0; step <= mostBorderSteps; ++step) {
            double share = out.exists ? fIn / (fIn - fOut) : 0.5;
            if (!(share > 0.0 && share < 1.0) || step % 8 == 0) share = 0.5;
            const Sample s = sample(in.u + share * (out.u - in.u));
            if (s.drawn()) {
                in = s;
                fIn = s.depth;
                if (s.depth <= onBorder) break;
                if (side == 1) fOut *= 0.5;
                side = 1;
            } else {
                out = s;
                fOut = s.depth;
                if (side == -1) fIn *= 0.5;
                side = -1;
            }
            if (std::fabs(out.u - in.u) <= 1e-14 * std::fabs(in.u)) break;
            if (!out.exists && distance(plane_(in.state), plane_(s.exists ? s.state : in.state)) < 1e-4 &&
                std::fabs(out.u - in.u) <= 1e-5 * (std::fabs(in.u) + 1e-3))
                break;
        }
        return in;
    }

    void refine(const Sample& a, const Sample& b, int depth, Polyline& line) const {
        const Place pa = plane_(a.state), pb = plane_(b.state);
        const double length = distance(pa, pb);
        if (depth < deepest && length > flattest) {
            const Sample middle = sample(0.5 * (a.u + b.u));
            if (middle.drawn()) {
                // The middle becomes a point in any case: half the step remains, and a quarter of the bend.
                const Place pm = plane_(middle.state);
                const double half = std::fmax(distance(pa, pm), distance(pm, pb));
                if (half > longestStep || half > length || offChord(pa, pm, pb) > 4.0 * flattest) {
                    refine(a, middle, depth + 1, line);
                    refine(middle, b, depth + 1, line);
                    return;
                }
                line.push_back(middle.state);
            }
        }
        line.push_back(b.state);
    }

  private:
    const Plane& plane_;
    const StateOf& stateOf_;
    const DepthOf& depthOf_;
};

}  // namespace

void traceCurve(const Plane& plane, const std::vector<double>& places, const StateOf& stateOf, const DepthOf& depthOf,
                std::vector<Polyline>& parts) {
    const Tracer tracer(plane, stateOf, depthOf);
    Polyline line;
    const auto finish = [&] {
        if (line.size() > 1) parts.push_back(line);
        line.clear();
    };
    Sample before;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Sample now = tracer.sample(places[i]);
        if (i > 0 && (before.drawn() || now.drawn())) {
            const Sample from = before.drawn() ? before : tracer.border(now, before);
            const Sample to = now.drawn() ? now : tracer.border(before, now);
            if (line.empty()) line.push_back(from.state);
            tracer.refine(from, to, 0, line);
            if (!now.drawn()) finish();
        }
        before = now;
    }
    finish();
}

std::vector<double> evenly(double from, double to, int n) {
    std::vector<double> places;
    for (int i = 0; i <= n; ++i) places.push_back(i == n ? to : from + (to - from) * i / n);
    return places;
}

}  // namespace frigana::diagrams
