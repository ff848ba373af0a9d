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

constexpr double closestPhases = 1e-3;  // difference of the densities over the density: closer phases are one

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
        if (ierr == 0 && std::fabs(place.T / last.T - 1.0) < 0.02 && twoPhases(place)) {
            found = place;
            return true;
        }
    }
    return false;
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

}  // namespace

bool rootOnEnvelope(LineProperty property, double target, int line, const Composition& x, double tolerance,
                    int& foundLine, LineState& found) {
    constexpr int mostWalks = 120, mostRefinements = 60;
    const QuietMessages quiet;
    double Tc, pc, Dc;
    int ierr;
    Text255 herr;
    CRITP(x, Tc, pc, Dc, ierr, herr);
    if (ierr > 0) return false;
    RMIX(x);
    const auto residual = [&](const EnvelopePlace& a) { return propertyAt(property, a.T, a.rho, x) - target; };
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

    EnvelopePlace here, last;
    double step = (line == vaporLine ? 0.02 : -0.02) * Dc;
    bool started = false;
    if (saturationSpline.SPLINEREADY) {
        double rho = property == LineProperty::density ? target : Dc;
        ierr = 0;
        if (property != LineProperty::density)
            SPLNROOT(modelTags.NC + (property == LineProperty::entropy ? 5 : 4), 0, target, rho, ierr, herr);
        EnvelopePlace table;
        // the table has the enthalpy and not the energy
        if (ierr == 0 && property != LineProperty::energy && placeOfTable(rho, x, table) &&
            placeAt(rho, x, table, table, here)) {
            started = true;
            if (property == LineProperty::density) return take(here);
            // the table is good to far less than a step, on which side of the root is not known
            step *= 0.01;
            EnvelopePlace beside;
            if (placeAt(rho + step, x, here, here, beside) && std::fabs(residual(beside)) > std::fabs(residual(here)) &&
                residual(beside) * residual(here) > 0.0)
                step = -step;
        }
    }
    for (double T = 0.99 * Tc; !started && T > 0.9 * Tc; T *= 0.99) started = placeOfLine(line, T, x, here);
    if (!started) return false;

    // along the envelope until the root lies between two places
    last = here;
    double fHere = residual(here), fLast = fHere;
    EnvelopePlace before = here;
    int walks = 0;
    for (; walks < mostWalks && fLast * fHere > 0.0; ++walks) {
        EnvelopePlace next;
        if (here.rho + step > 1.5 * Dc || here.rho + step < 0.5 * Dc) {
            if ((here.rho > Dc) == (step > 0.0)) return false;
        }
        if (!placeAt(here.rho + step, x, here, last, next)) {
            step *= 0.5;
            if (std::fabs(step) < 1e-4 * Dc) return false;
            continue;
        }
        before = last;
        last = here;
        fLast = fHere;
        here = next;
        fHere = residual(here);
    }
    if (fLast * fHere > 0.0) return false;

    // false position with the weight of an end that stays halved
    EnvelopePlace a = last, b = here;
    double fa = fLast, fb = fHere, weightA = fa, weightB = fb;
    for (int pass = 1; pass <= mostRefinements; ++pass) {
        const EnvelopePlace& best = std::fabs(fa) < std::fabs(fb) ? a : b;
        if (std::min(std::fabs(fa), std::fabs(fb)) < tolerance) return take(best);
        const double rho = a.rho - weightA * (b.rho - a.rho) / (weightB - weightA);
        EnvelopePlace next;
        if (!placeAt(rho, x, a, b, next)) return false;
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
    // the equilibrium itself is known to a residual of its own
    const EnvelopePlace& best = std::fabs(fa) < std::fabs(fb) ? a : b;
    return std::min(std::fabs(fa), std::fabs(fb)) < 1000.0 * tolerance && take(best);
}

}  // namespace frigana
