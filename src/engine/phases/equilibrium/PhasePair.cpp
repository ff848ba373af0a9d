#include "PhasePair.h"

#include "ModelTags.h"

namespace frigana {

void normalize(Composition& x) {
    double sum = 0;
    for (int i = 1; i <= modelTags.NC; ++i) sum += x[i];
    if (std::abs(sum) < 1e-20) return;
    for (int i = 1; i <= modelTags.NC; ++i) x[i] /= sum;
}

double bulkDensity(double q, double Dl, double Dv) {
    return 1 / ((1 - q) / Dl + q / Dv);
}

double volumeQuality(double D, double Dl, double Dv) {
    return (1 / D - 1 / Dl) / (1 / Dv - 1 / Dl);
}

void compositionsAtQuality(double q, const Composition& z, const Composition& xdew, const Composition& ybub,
                           Composition& x, Composition& y) {
    for (int i = 1; i <= modelTags.NC; ++i) {
        x[i] = (1 - q) * z[i] + q * xdew[i];
        y[i] = q * z[i] + (1 - q) * ybub[i];
    }
    normalize(x);
    normalize(y);
}

PhasePair betweenLines(double q, const Composition& z, const PhasePair& bubble, const PhasePair& dew) {
    PhasePair s;
    s.T = (1 - q) * bubble.T + q * dew.T;
    s.p = std::exp((1 - q) * std::log(bubble.p) + q * std::log(dew.p));
    s.Dl = bulkDensity(q, bubble.Dl, dew.Dl);
    s.Dv = bulkDensity(q, bubble.Dv, dew.Dv);
    compositionsAtQuality(q, z, dew.x, bubble.y, s.x, s.y);
    s.q = q;
    return s;
}

PhasePair continued(const PhasePair& last, const PhasePair& before, double along) {
    const auto extended = [along](double a, double b) { return a > 0 && b > 0 ? a * std::pow(a / b, along) : a; };
    PhasePair next;
    next.T = extended(last.T, before.T);
    next.p = extended(last.p, before.p);
    next.Dl = extended(last.Dl, before.Dl);
    next.Dv = extended(last.Dv, before.Dv);
    next.q = last.q + along * (last.q - before.q);
    for (int i = 1; i <= modelTags.NC; ++i) {
        next.x[i] = extended(last.x[i], before.x[i]);
        next.y[i] = extended(last.y[i], before.y[i]);
    }
    normalize(next.x);
    normalize(next.y);
    return next;
}

}  // namespace frigana
