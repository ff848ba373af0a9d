// Paths of saturation that ordinary fluids do not take: a fluid treated as one whose lines are ancillary equations, the
// gas mixture model without a liquid, a start given with a negative temperature, a blend whose vapor has a largest
// entropy.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "FlashState.h"
#include "ModelTags.h"
#include "SETAGA.h"
#include "Saturation.h"

namespace frigana {
namespace {

using test::flash;
using test::FlashState;
using test::satt;
using test::Saturated;

Composition binary(double first) {
    Composition z{};
    z[1] = first;
    z[2] = 1 - first;
    return z;
}

TEST(SaturationPaths, PseudoPureFluidLeadsBackToItsStatesByEveryPair) {
    ASSERT_LE(test::setUp("R134A"), 0);
    modelTags.IANC[1] = 1;
    RESETA();
    const Composition z = unitComposition(1);
    for (const double T : {240.0, 280.0, 320.0})
        for (const double q : {0.2, 0.7}) {
            FlashState wet = flash("TQ", T, q, z);
            ASSERT_LE(wet.ierr, 0) << wet.herr.trimmed();
            EXPECT_GT(wet.Dl, wet.Dv);
            for (const char* letters : {"PQ", "PH", "PS", "PE", "PD", "TH", "TS", "TD"}) {
                FlashState from = wet;
                from.q = q;
                const FlashState state = flash(letters, from[letters[0]], from[letters[1]], z);
                ASSERT_LE(state.ierr, 0) << letters << " " << state.herr.trimmed();
                EXPECT_NEAR(state.T, T, 2e-3) << letters << " " << q;
                if (letters[1] != 'Q') {
                    EXPECT_NEAR(state.q, q, 1e-3) << letters << " " << T;
                }
            }
        }
    modelTags.IANC[1] = 0;
    RESETA();
}

TEST(SaturationPaths, GasMixtureModelIsBackAfterEveryCall) {
    ASSERT_LE(test::setUp({"CO2", "PROPANE"}), 0);
    const Composition z = binary(0.4);
    const Saturated helmholtz = satt(260.0, test::dew, z);
    ASSERT_EQ(helmholtz.ierr, 0);
    int ierr = 0;
    Text255 herr;
    SETAGA(ierr, herr);
    ASSERT_EQ(ierr, 0);
    RESETA();
    for (const int kph : {test::bubble, test::dew}) {
        const Saturated atT = satt(260.0, kph, z);
        EXPECT_EQ(atT.ierr, 0) << atT.text();
        EXPECT_EQ(modelTags.HEOS, "AGA");
        const Saturated atP = test::satp(atT.p, kph, z);
        EXPECT_EQ(atP.ierr, 0) << atP.text();
        EXPECT_EQ(modelTags.HEOS, "AGA");
        EXPECT_NEAR(atP.T, 260.0, 1e-4);
        // refused calls leave the model as it was, too
        const Saturated refused = satt(900.0, kph, z);
        EXPECT_NE(refused.ierr, 0);
        EXPECT_EQ(modelTags.HEOS, "AGA");
    }
    EXPECT_NEAR(satt(260.0, test::dew, z).p / helmholtz.p, 1.0, 1e-4);
    UNSETAGA();
    modelTags.LFORCESETUP = true;
}

// Above the critical temperature there are two dew points: without a start the lower one, from a start beside the upper
// one that one.
TEST(SaturationPaths, NegativeTemperatureChoosesBetweenTwoDewPoints) {
    ASSERT_LE(test::setUp({"CO2", "BUTANE"}), 0);
    const Composition z = binary(0.7);
    double Tc, pc, Dc;
    int ierr;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    const double T = 1.02 * Tc;
    const Saturated lower = satt(T, test::dew, z);
    ASSERT_EQ(lower.ierr, 0) << lower.text();
    FlashState last;
    for (double p = 1.1 * lower.p; p < 1.5 * pc; p *= 1.01) {
        const FlashState wet = flash("TP", T, p, z);
        if (wet.ierr > 0 || !wet.twoPhase()) break;
        last = wet;
    }
    ASSERT_GT(last.p, 1.3 * lower.p);
    Saturated upper = lower;
    upper.p = last.p;
    upper.rhol = last.Dl;
    upper.rhov = last.Dv;
    upper.xliq = last.x;
    upper.xvap = last.y;
    SATT(-T, z, test::dew, upper.p, upper.rhol, upper.rhov, upper.xliq, upper.xvap, upper.ierr, upper.herr);
    ASSERT_EQ(upper.ierr, 0) << upper.text();
    EXPECT_GT(upper.p, 1.2 * lower.p);
    EXPECT_NEAR(upper.p / last.p, 1.0, 0.03);
    // and is not remembered as the answer of a call without a start
    EXPECT_EQ(satt(T, test::dew, z).p, lower.p);
}

TEST(SaturationPaths, EntropyOfADryBlendHasARootOnEitherSideOfItsMaximum) {
    ASSERT_LE(test::setUp({"ISOBUTAN", "PENTANE"}), 0);
    const Composition z = binary(0.5);
    double Tc, pc, Dc;
    int ierr;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    LineExtremum high, low, liquid;
    SMAXX(z, high, low, liquid, ierr, herr);
    ASSERT_EQ(ierr, 0);
    ASSERT_GT(high.T, 0.8 * Tc) << "a dry blend";
    int found = 0;
    for (const double T : {0.7 * Tc, 0.75 * Tc, 0.8 * Tc, 0.85 * Tc, 0.97 * Tc}) {
        const Saturated dew = satt(T, test::dew, z);
        ASSERT_EQ(dew.ierr, 0) << dew.text();
        double s;
        ENTRO(T, dew.rhov, z, s);
        const test::Roots roots = test::sats(s, test::dew, z);
        EXPECT_EQ(roots.ierr, 0) << T << " " << roots.text();
        for (std::size_t k = 0; k < 3; ++k) {
            if (k < static_cast<std::size_t>(roots.count) && std::fabs(roots.T[k] - T) < 1e-3) ++found;
        }
    }
    EXPECT_EQ(found, 5);
}

}  // namespace
}  // namespace frigana
