// States of the phase envelope next to the critical point of a mixture, where the temperature no longer tells them
// apart: dew points lie above the critical temperature, two at each one, and both lines end in the same point. The
// density of the mixture rises all along the envelope, so it is the variable there.
#include <algorithm>
#include <cmath>

#include "LineProperty.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "RootBracket.h"
#include "SAT_SUB_LINES.h"
#include "SAT_SUB_NEWTON.h"
#include "SAT_SUB_SPLINE.h"
#include "SaturationExtrema.h"
#include "SaturationSpline.h"
#include "SilentMessages.h"
#include "UTILITY.h"

namespace frigana {
namespace {

constexpr double closestPhases = 0.01;  // difference of the densities over the density: closer phases are one

// A place of the envelope: the mixture stands in the place of the vapor (Dv, y), the incipient phase in that of the
// liquid (Dl, x), whichever of them is the denser one.
using Place = PhasePair;

bool mixtureIsThinner(const Place& a) {
    return a.Dl > a.Dv;
}

bool twoPhases(const Place& a) {
    return a.Dl > 0.0 && a.Dv > 0.0 && std::fabs(a.Dl - a.Dv) > closestPhases * a.Dv;
}

// The place at a density of the mixture, from the start that stands in it.
bool placeAt(double rho, const Composition& z, const Place& last, Place& place) {
    const Place start = place;
    // both phases given by their densities first: no choice between the roots of an isotherm is needed
    for (const int ipv : {2, 1}) {
        place = start;
        place.Dv = rho;
        place.y = z;
        int ierr = 0;
        Text255 herr;
        SATGV(place.T, place.p, z, 1.0, rho, ipv, 6, 0, place.Dl, place.Dv, place.x, place.y, ierr, herr);
        if (ierr == 0 && mixtureIsThinner(place) == mixtureIsThinner(last) &&
            std::fabs(place.T / last.T - 1.0) < 0.02 && twoPhases(place))
            return true;
    }
    return false;
}

// The same from two places, and from there once more: next to the critical point the last step of the solution still
// moves it.
bool settledPlaceAt(double rho, const Composition& z, const Place& last, const Place& before, Place& place) {
    const double span = last.Dv - before.Dv;
    place = span == 0.0 ? last : continued(last, before, (rho - last.Dv) / span);
    return placeAt(rho, z, last, place) && placeAt(rho, z, Place(place), place);
}

// What the table of the envelope has at a density.
bool placeOfTable(double rho, const Composition& z, Place& place) {
    const int nc = modelTags.NC;
    int ierr = 0;
    Text255 herr;
    place.T = SPLNVAL(nc + 1, 0, rho, ierr, herr);
    if (ierr != 0) return false;
    place.p = SPLNVAL(nc + 2, 0, rho, ierr, herr);
    place.Dv = rho;
    place.Dl = SPLNVAL(nc + 3, 0, rho, ierr, herr);
    place.y = z;
    for (int i = 1; i <= nc; ++i) place.x[i] = z[i] > 0.0 ? SPLNVAL(i, 0, rho, ierr, herr) : 0.0;
    return twoPhases(place);
}

// A place of a line a little below the critical temperature.
bool placeOfLine(int line, double T, const Composition& z, Place& place) {
    int ierr;
    Text255 herr;
    place.T = T;
    if (newtonEquilibrium(place, z, line, 0, ierr, herr) != NewtonEnd::found &&
        !newtonFromOtherStarts(place, z, line, ierr, herr))
        return false;
    if (!(place.Dl > place.Dv)) return false;
    if (line == liquidLine) {
        std::swap(place.Dl, place.Dv);
        std::swap(place.x, place.y);
    }
    return twoPhases(place);
}

// The place of a line from which the walk starts, a little colder where it is not found there. A mixture may have none
// on a line, and the flashes ask at each of their temperatures.
bool startOfLine(int line, const CriticalPoint& critical, const Composition& z, Place& place) {
    SaturationMemo::EnvelopeStart& start = saturationMemo.envelopeStart[line - liquidLine];
    double& residual = saturationExtrema.highestEnergy.value;
    bool known = start.known;
    for (int i = 1; i <= modelTags.NC; ++i) known = known && std::fabs(z[i] - start.x[i]) <= 1e-9;
    if (!known) {
        bool found = false;
        for (double T = 0.99 * critical.T; !found && T > 0.9 * critical.T; T *= 0.99)
            found = placeOfLine(line, T, z, place);
        start = {.known = true, .found = found, .x = z, .at = place, .residual = residual};
    }
    place = start.at;
    residual = start.residual;
    return start.found;
}

// The road along the envelope toward the critical point: the last two places, and the last two a whole step apart.
struct Trail {
    Place here, last;
    Place kept[2];
    int count = 0;
};

// Goes on until the root lies between the last two places; false where the road ends before.
template <class Residual>
bool walk(const Composition& z, double step, double Dc, const Residual& residual, Trail& trail) {
    constexpr int mostSteps = 120;
    trail.last = trail.kept[0] = trail.kept[1] = trail.here;
    trail.count = 1;
    const double start = residual(trail.here), whole = std::fabs(step);
    // phases that are nearly one are taken for one
    const WalkSteps way{trail.here.Dv, step > 0.0 ? 1.5 * Dc : 0.5 * Dc, step, 1e-4 * Dc, mostSteps};
    const auto solve = [&](double rho, const Place& last, Place& place) { return placeAt(rho, z, last, place); };
    const auto passed = [&](const Place& last, const Place& place) {
        trail.last = last;
        if (std::fabs(place.Dv - trail.kept[0].Dv) > 0.9 * whole) {
            trail.kept[1] = trail.kept[0];
            trail.kept[0] = place;
            ++trail.count;
        }
        return start * residual(place) <= 0.0;
    };
    return walkLine(way, trail.here, solve, passed) == WalkEnd::stopped;
}

// False position between two places.
template <class Residual, class PlaceBetween>
bool refine(Place a, Place b, double tolerance, const Residual& residual, const PlaceBetween& between, Place& found) {
    constexpr int mostPasses = 60;
    double fa = residual(a), fb = residual(b);
    FalsePosition ends{a.Dv, fa, b.Dv, fb};
    for (int pass = 1; pass <= mostPasses && std::min(std::fabs(fa), std::fabs(fb)) >= tolerance; ++pass) {
        Place next;
        if (!between(ends.next(), a, b, next)) return false;
        const double f = residual(next);
        ends.take(next.Dv, f);
        const bool sideOfA = (f < 0.0) == (fa < 0.0);
        (sideOfA ? a : b) = next;
        (sideOfA ? fa : fb) = f;
    }
    found = std::fabs(fa) < std::fabs(fb) ? a : b;
    // the equilibrium itself is known to a residual of its own
    return std::min(std::fabs(fa), std::fabs(fb)) < 1000.0 * tolerance;
}

// The envelope through the critical point by the cubic through two places on both sides of it. All of it is smooth over
// the density; only the solution for two phases is not, where they become one.
struct Bridge {
    const Place* pier[4];

    Place at(double rho, const Composition& z) const {
        Place place;
        place.Dv = rho;
        place.y = z;
        Composition ratio{};
        for (int k = 0; k < 4; ++k) {
            double weight = 1.0;
            for (int j = 0; j < 4; ++j)
                if (j != k) weight *= (rho - pier[j]->Dv) / (pier[k]->Dv - pier[j]->Dv);
            place.T += weight * pier[k]->T;
            place.Dl += weight * pier[k]->Dl;
            for (int i = 1; i <= modelTags.NC; ++i)
                if (z[i] > 0.0) ratio[i] += weight * std::log(pier[k]->x[i] / z[i]);
        }
        for (int i = 1; i <= modelTags.NC; ++i) place.x[i] = z[i] > 0.0 ? z[i] * std::exp(ratio[i]) : 0.0;
        normalize(place.x);
        PRESS(place.T, rho, z, place.p);
        return place;
    }
};

// Column of the table that holds a property; 0 for the energy, which it does not have.
int columnOf(char letter) {
    const int nc = modelTags.NC;
    return letter == 'T' ? nc + 1 : letter == 'H' ? nc + 4 : letter == 'S' ? nc + 5 : 0;
}

}  // namespace

bool rootOnEnvelope(char letter, double target, int line, const Composition& z, double tolerance, int& foundLine,
                    PhasePair& found) {
    const SilentMessages quiet;
    int ierr;
    Text255 herr;
    const CriticalPoint critical = criticalPointOf(z, ierr, herr);
    const double Dc = critical.D;
    if (ierr > 0) return false;
    RMIX(z);
    const auto residual = [&](const Place& a) { return propertyByLetter(letter, a.T, a.Dv, z) - target; };
    const auto settled = [&](double rho, const Place& a, const Place& b, Place& next) {
        return settledPlaceAt(rho, z, a, b, next);
    };
    const auto take = [&](const Place& a) {
        foundLine = mixtureIsThinner(a) ? vaporLine : liquidLine;
        found = a;
        found.q = 1.0;
        if (foundLine == liquidLine) found = {a.T, a.p, a.Dv, a.Dl, 0.0, a.y, a.x};
        return true;
    };
    Place root;

    const int column = columnOf(letter);
    if (saturationSpline.SPLINEREADY && (letter == 'D' || column > 0)) {
        double rho = letter == 'D' ? target : Dc;
        ierr = 0;
        if (column > 0) SPLNROOT(column, 0, target, rho, ierr, herr);
        Place table;
        Trail trail;
        if (ierr == 0 && placeOfTable(rho, z, table) && settledPlaceAt(rho, z, table, table, trail.here)) {
            if (letter == 'D') return take(trail.here);
            // the table is good to far less than a step; on which side the root lies is not known
            const Place start = trail.here;
            for (const double step : {2e-4 * Dc, -2e-4 * Dc}) {
                Place beside = start;
                if (!placeAt(rho + step, z, start, beside)) continue;
                if (std::fabs(residual(beside)) > std::fabs(residual(start)) &&
                    residual(beside) * residual(start) > 0.0)
                    continue;
                trail.here = start;
                if (walk(z, step, Dc, residual, trail) &&
                    refine(trail.last, trail.here, tolerance, residual, settled, root))
                    return take(root);
            }
        }
    }

    Trail trails[2];  // from the line given, and from the other one
    for (int k = 0; k < 2; ++k) {
        const int side = k == 0 ? line : liquidLine + vaporLine - line;
        Trail& trail = trails[k];
        if (startOfLine(side, critical, z, trail.here) &&
            walk(z, (side == vaporLine ? 0.02 : -0.02) * Dc, Dc, residual, trail) &&
            refine(trail.last, trail.here, tolerance, residual, settled, root))
            return take(root);
    }

    // between the ends of both
    const Trail &a = trails[0], &b = trails[1];
    if (a.count < 3 || b.count < 3 || !(std::fabs(a.here.Dv - b.here.Dv) < 0.08 * Dc)) return false;
    if (!(residual(a.here) * residual(b.here) <= 0.0)) return false;
    const Bridge bridge{{&a.kept[1], &a.kept[0], &b.kept[0], &b.kept[1]}};
    const auto onBridge = [&](double rho, const Place&, const Place&, Place& next) {
        next = bridge.at(rho, z);
        return true;
    };
    return refine(a.here, b.here, tolerance, residual, onBridge, root) && take(root);
}

}  // namespace frigana
