// States of the phase envelope next to the critical point of a mixture, where the temperature no longer tells them
// apart: dew points lie above the critical temperature, two at each one, and both lines end in the same point. The
// density of the mixture rises all along the envelope, so it is the variable there.
#include <algorithm>
#include <cmath>

#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB_INVERSE_LINES.h"
#include "SAT_SUB_METHODS.h"
#include "SAT_SUB_NEWTON.h"
#include "SAT_SUB_SPLINE.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {
namespace {

constexpr double closestPhases = 0.01;  // difference of the densities over the density: closer phases are one

// The mixture of density rho, and the incipient phase beside it.
struct EnvelopePlace {
    double T = 0.0, p = 0.0, rho = 0.0, rhoIncipient = 0.0;
    Composition incipient{};
};

bool twoPhases(const EnvelopePlace& a) {
    return a.rho > 0.0 && a.rhoIncipient > 0.0 && std::fabs(a.rhoIncipient - a.rho) > closestPhases * a.rho;
}

// The place at a density, from a start on the straight continuation of two places (or at one, given twice).
bool placeAt(double rho, const Composition& x, const EnvelopePlace& last, const EnvelopePlace& before,
             EnvelopePlace& found) {
    const double span = last.rho - before.rho;
    const double along = span == 0.0 ? 0.0 : (rho - last.rho) / span;
    const auto extended = [&](double a, double b) { return a * std::pow(a / b, along); };
    // both phases given by their densities first: no choice between the roots of an isotherm is needed
    for (const int ipv : {2, 1}) {
        EnvelopePlace place;
        place.T = extended(last.T, before.T);
        place.p = extended(last.p, before.p);
        place.rho = rho;
        place.rhoIncipient = extended(last.rhoIncipient, before.rhoIncipient);
        double sum = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (x[i] > 0.0) place.incipient[i] = extended(last.incipient[i], before.incipient[i]);
            sum += place.incipient[i];
        }
        for (int i = 1; i <= modelTags.NC; ++i) place.incipient[i] /= sum;
        Composition mixture = x;
        int ierr = 0;
        Text255 herr;
        SATGV(place.T, place.p, x, 1.0, rho, ipv, 6, 0, place.rhoIncipient, place.rho, place.incipient, mixture, ierr,
              herr);
        const bool sameLine = (place.rhoIncipient > rho) == (last.rhoIncipient > last.rho);
        if (ierr == 0 && sameLine && std::fabs(place.T / last.T - 1.0) < 0.02 && twoPhases(place)) {
            found = place;
            return true;
        }
    }
    return false;
}

// The same, and from there once more: next to the critical point the last step of the solution still moves it.
bool settledPlaceAt(double rho, const Composition& x, const EnvelopePlace& last, const EnvelopePlace& before,
                    EnvelopePlace& found) {
    EnvelopePlace first;
    return placeAt(rho, x, last, before, first) && placeAt(rho, x, first, first, found);
}

// What the table of the envelope has at a density.
bool placeOfTable(double rho, const Composition& x, EnvelopePlace& place) {
    const int nc = modelTags.NC;
    int ierr = 0;
    Text255 herr;
    place.T = SPLNVAL(nc + 1, 0, rho, ierr, herr);
    if (ierr != 0) return false;
    place.p = SPLNVAL(nc + 2, 0, rho, ierr, herr);
    place.rho = rho;
    place.rhoIncipient = SPLNVAL(nc + 3, 0, rho, ierr, herr);
    for (int i = 1; i <= nc; ++i) place.incipient[i] = x[i] > 0.0 ? SPLNVAL(i, 0, rho, ierr, herr) : 0.0;
    return twoPhases(place);
}

// A place of a line a little below the critical temperature.
bool placeOfLine(int line, double T, const Composition& x, EnvelopePlace& place) {
    LineState state;
    int ierr;
    Text255 herr;
    if (!stateOnLine(line, T, x, state, ierr, herr) || !(state.rhol > state.rhov)) return false;
    const bool dew = line == vaporLine;
    place = {T, state.p, state.rho, dew ? state.rhol : state.rhov, dew ? state.xliq : state.xvap};
    return twoPhases(place);
}

// The road along the envelope toward the critical point: the last two places, and the last two a whole step apart.
struct Trail {
    EnvelopePlace here, last;
    EnvelopePlace kept[2];
    int count = 0;
};

// Goes on until the root lies between the last two places; false where the road ends before.
template <class Residual>
bool walk(const Composition& x, double step, double Dc, const Residual& residual, Trail& trail) {
    constexpr int mostSteps = 120;
    trail.last = trail.kept[0] = trail.kept[1] = trail.here;
    trail.count = 1;
    const double start = residual(trail.here), whole = std::fabs(step);
    for (int walks = 0; walks < mostSteps; ++walks) {
        const double rho = trail.here.rho + step;
        const bool leaves = step > 0.0 ? rho > 1.5 * Dc : rho < 0.5 * Dc;
        EnvelopePlace next;
        if (leaves) return false;
        if (!placeAt(rho, x, trail.here, trail.last, next)) {
            // phases that are nearly one are taken for one
            step *= 0.5;
            if (std::fabs(step) < 1e-4 * Dc) return false;
            continue;
        }
        trail.last = trail.here;
        trail.here = next;
        if (std::fabs(next.rho - trail.kept[0].rho) > 0.9 * whole) {
            trail.kept[1] = trail.kept[0];
            trail.kept[0] = next;
            ++trail.count;
        }
        if (start * residual(next) <= 0.0) return true;
    }
    return false;
}

// False position between two places with the weight of an end that stays halved.
template <class Residual, class PlaceBetween>
bool refine(EnvelopePlace a, EnvelopePlace b, double tolerance, const Residual& residual, const PlaceBetween& between,
            EnvelopePlace& found) {
    constexpr int mostPasses = 60;
    double fa = residual(a), fb = residual(b), weightA = fa, weightB = fb;
    for (int pass = 1; pass <= mostPasses && std::min(std::fabs(fa), std::fabs(fb)) >= tolerance; ++pass) {
        const double rho = a.rho - weightA * (b.rho - a.rho) / (weightB - weightA);
        EnvelopePlace next;
        if (!between(rho, a, b, next)) return false;
        const double f = residual(next);
        if (f * fb > 0.0) {
            b = next;
            fb = weightB = f;
            weightA *= 0.5;
        } else {
            a = next;
            fa = weightA = f;
            weightB *= 0.5;
        }
    }
    found = std::fabs(fa) < std::fabs(fb) ? a : b;
    // the equilibrium itself is known to a residual of its own
    return std::min(std::fabs(fa), std::fabs(fb)) < 1000.0 * tolerance;
}

// The envelope through the critical point by the cubic through two places on both sides of it. All of it is smooth over
// the density; only the solution for two phases is not, where they become one.
struct Bridge {
    const EnvelopePlace* pier[4];

    EnvelopePlace at(double rho, const Composition& x) const {
        EnvelopePlace place;
        place.rho = rho;
        Composition ratio{};
        for (int k = 0; k < 4; ++k) {
            double weight = 1.0;
            for (int j = 0; j < 4; ++j)
                if (j != k) weight *= (rho - pier[j]->rho) / (pier[k]->rho - pier[j]->rho);
            place.T += weight * pier[k]->T;
            place.rhoIncipient += weight * pier[k]->rhoIncipient;
            for (int i = 1; i <= modelTags.NC; ++i)
                if (x[i] > 0.0) ratio[i] += weight * std::log(pier[k]->incipient[i] / x[i]);
        }
        double sum = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) {
            place.incipient[i] = x[i] > 0.0 ? x[i] * std::exp(ratio[i]) : 0.0;
            sum += place.incipient[i];
        }
        for (int i = 1; i <= modelTags.NC; ++i) place.incipient[i] /= sum;
        PRESS(place.T, rho, x, place.p);
        return place;
    }
};

}  // namespace

bool rootOnEnvelope(LineProperty property, double target, int line, const Composition& x, double tolerance,
                    int& foundLine, LineState& found) {
    const SilentMessages quiet;
    double Tc, pc, Dc;
    int ierr;
    Text255 herr;
    CRITP(x, Tc, pc, Dc, ierr, herr);
    if (ierr > 0) return false;
    RMIX(x);
    const auto residual = [&](const EnvelopePlace& a) { return propertyAt(property, a.T, a.rho, x) - target; };
    const auto settled = [&](double rho, const EnvelopePlace& a, const EnvelopePlace& b, EnvelopePlace& next) {
        return settledPlaceAt(rho, x, a, b, next);
    };
    const auto take = [&](const EnvelopePlace& a) {
        const bool dew = a.rhoIncipient > a.rho;
        foundLine = dew ? vaporLine : liquidLine;
        found = {a.T,
                 a.p,
                 a.rho,
                 dew ? a.rhoIncipient : a.rho,
                 dew ? a.rho : a.rhoIncipient,
                 dew ? a.incipient : x,
                 dew ? x : a.incipient};
        return true;
    };
    EnvelopePlace root;

    // the table has the enthalpy and not the energy
    if (saturationSpline.SPLINEREADY && property != LineProperty::energy) {
        double rho = property == LineProperty::density ? target : Dc;
        ierr = 0;
        if (property != LineProperty::density)
            SPLNROOT(modelTags.NC + (property == LineProperty::entropy ? 5 : 4), 0, target, rho, ierr, herr);
        EnvelopePlace table;
        Trail trail;
        if (ierr == 0 && placeOfTable(rho, x, table) && settledPlaceAt(rho, x, table, table, trail.here)) {
            if (property == LineProperty::density) return take(trail.here);
            // the table is good to far less than a step; on which side the root lies is not known
            const EnvelopePlace start = trail.here;
            for (const double step : {2e-4 * Dc, -2e-4 * Dc}) {
                EnvelopePlace beside;
                if (!placeAt(rho + step, x, start, start, beside)) continue;
                if (std::fabs(residual(beside)) > std::fabs(residual(start)) &&
                    residual(beside) * residual(start) > 0.0)
                    continue;
                trail.here = start;
                if (walk(x, step, Dc, residual, trail) &&
                    refine(trail.last, trail.here, tolerance, residual, settled, root))
                    return take(root);
            }
        }
    }

    Trail trails[2];  // from the line given, and from the other one
    for (int k = 0; k < 2; ++k) {
        const int side = k == 0 ? line : liquidLine + vaporLine - line;
        Trail& trail = trails[k];
        bool started = false;
        for (double T = 0.99 * Tc; !started && T > 0.9 * Tc; T *= 0.99) started = placeOfLine(side, T, x, trail.here);
        if (started && walk(x, (side == vaporLine ? 0.02 : -0.02) * Dc, Dc, residual, trail) &&
            refine(trail.last, trail.here, tolerance, residual, settled, root))
            return take(root);
    }

    // between the ends of both
    const Trail &a = trails[0], &b = trails[1];
    if (a.count < 3 || b.count < 3 || !(std::fabs(a.here.rho - b.here.rho) < 0.08 * Dc)) return false;
    if (!(residual(a.here) * residual(b.here) <= 0.0)) return false;
    const Bridge bridge{{&a.kept[1], &a.kept[0], &b.kept[0], &b.kept[1]}};
    const auto onBridge = [&](double rho, const EnvelopePlace&, const EnvelopePlace&, EnvelopePlace& next) {
        next = bridge.at(rho, x);
        return true;
    };
    return refine(a.here, b.here, tolerance, residual, onBridge, root) && take(root);
}

}  // namespace frigana
