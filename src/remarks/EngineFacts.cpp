#include "EngineFacts.h"

#include <cmath>
#include <limits>

#include "FluidFiles.h"
#include "LIMITS.h"
#include "MIX_HMX.h"
#include "ModelTags.h"
#include "PROP_SUB_FUGACITY.h"
#include "PhaseCheck.h"
#include "Reason.h"
#include "Refrigerants.h"
#include "SAT_SUB.h"
#include "SilentMessages.h"
#include "StateQuery.h"
#include "TPRHO.h"
#include "TRNSP.h"
#include "UTILITY.h"

namespace frigana::remarks {

namespace {

constexpr int liquidPhase = 1, bubblePoint = 1;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// The fluid that the engine holds.
SUBSTANCE loaded;

bool load(const Fluid& fluid, const std::string& dataFolder) {
    return catalogue::loadFluid(fluid, dataFolder, loaded).empty();
}

std::string componentName(int i) {
    return std::string(trimRight(fluidFiles.HNAME[i].view()));
}

bool isEstimated(int i, int j) {
    return mixingParameters.HBIN[pairNumber(i, j, modelTags.NC)].view().find("have been estimated") !=
           std::string_view::npos;
}

// Exchanges of a liquid nearly pure in a component by its fugacities, towards the liquid that lies furthest below the
// plane that touches the Gibbs energy of z. Far from ideal blends swing about it: the distance itself tells of every
// step.
//   Returned  (value)  true where one of them lies below that plane and is another liquid
bool findsOtherLiquid(double T, double p, const Composition& z, const Composition& feed, int component) {
    constexpr int mostExchanges = 60;
    constexpr double nearlyPure = 0.98, settled = 1e-8, below = 1e-5, otherFraction = 0.02, liquidPacking = 1.5;
    const int count = modelTags.NC;
    Composition w{};
    for (int i = 1; i <= count; ++i) w[i] = i == component ? nearlyPure : (1.0 - nearlyPure) / (count - 1);
    double rho = 0.0, change = 1.0;
    for (int pass = 1; pass <= mostExchanges && change > settled; ++pass) {
        int ierr = 0;
        Text255 herr;
        Composition fugacity{}, next{};
        TPRHO(T, p, w, liquidPhase, 0, rho, ierr, herr);
        if (ierr <= 0) FGCTY2(T, rho, w, fugacity, ierr, herr);
        if (ierr > 0) return false;
        double sum = 0.0, distance = 0.0, farthest = 0.0;  // over RT
        for (int i = 1; i <= count; ++i) {
            farthest = std::max(farthest, std::fabs(w[i] - z[i]));
            if (!(fugacity[i] > 0.0)) continue;
            sum += next[i] = w[i] * feed[i] / fugacity[i];
            distance += w[i] * std::log(fugacity[i] / feed[i]);
        }
        if (!(sum > 0.0)) return false;
        if (distance < -below && farthest > otherFraction && packing(rho, w) > liquidPacking) return true;
        change = 0.0;
        for (int i = 1; i <= count; ++i) {
            next[i] /= sum;
            change += std::fabs(next[i] - w[i]);
        }
        w = next;
    }
    return false;
}

TransportAnswer transportOf(const Place& place) {
    TransportAnswer answer;
    const Composition& z = loaded.ZMOL;
    const double D = place.D / loaded.WM;
    int pure = 0, ierr = 0;
    Text255 herr;
    ISPURE(z, pure);
    // A correlation of its own; corresponding states tell by a warning where they do not reach.
    const auto beyond = [&](const char* property, const Text3& tag) {
        if (pure == 0 || tag.view().starts_with("EC") || tag == "NUL") return false;
        double tmin, tmax, Dmax, pmax;
        int code = 0;
        Text255 ignored;
        LIMITX(property, place.T, D, 0.0, z, tmin, tmax, Dmax, pmax, code, ignored);
        return code != 0;
    };
    answer.viscosityBeyond = beyond("ETA", modelTags.HETA[pure]);
    answer.conductivityBeyond = beyond("TCX", modelTags.HTCX[pure]);
    double eta = 0.0, tcx = 0.0;
    TRNPRP(place.T, D, z, eta, tcx, ierr, herr);
    if (ierr != 0) answer.why = reasonOf(herr.view());
    return answer;
}

}  // namespace

Estimates estimatesOf(const Fluid& fluid, const std::string& dataFolder) {
    Estimates estimates;
    if (!load(fluid, dataFolder)) return estimates;
    std::vector<std::string> components;
    for (int i = 1; i <= modelTags.NC; ++i) {
        std::string file(trimRight(fluidFiles.HFILE[i].view()));
        components.push_back(file.substr(file.find_last_of("/\\") + 1));
        for (int j = i + 1; j <= modelTags.NC; ++j)
            if (isEstimated(i, j)) estimates.pairs.push_back(componentName(i) + " + " + componentName(j));
    }
    if (modelTags.NC > 1) {
        constexpr int noCriticalLine = -131;
        double T, p, D;
        int ierr = 0;
        Text255 herr;
        CRITP(loaded.ZMOL, T, p, D, ierr, herr);
        estimates.criticalPoint = ierr == noCriticalLine;
    }
    estimates.transport = catalogue::estimatedProperties(dataFolder, components.front(), components);
    return estimates;
}

std::vector<TransportAnswer> transportAt(const Fluid& fluid, const std::string& dataFolder,
                                         std::span<const Place> places) {
    std::vector<TransportAnswer> answers;
    if (!load(fluid, dataFolder)) return answers;
    const SilentMessages quiet;
    for (const Place& place : places) answers.push_back(transportOf(place));
    return answers;
}

std::string whyNoState(const Fluid& fluid, const std::string& dataFolder, char first, double a, char second, double b) {
    const SilentMessages quiet;
    return catalogue::stateOf(fluid, dataFolder, {catalogue::findStateProperty(first), a},
                              {catalogue::findStateProperty(second), b})
        .problem;
}

bool liquidFallsApart(const Fluid& fluid, const std::string& dataFolder, double T) {
    if (!load(fluid, dataFolder) || modelTags.NC < 2 || !(modelTags.HEOS == "HMX")) return false;
    const SilentMessages quiet;
    const Composition& z = loaded.ZMOL;
    double p, rhol, rhov;
    Composition xliq{}, xvap{}, feed{};
    int ierr = 0;
    Text255 herr;
    SATT(T, z, bubblePoint, p, rhol, rhov, xliq, xvap, ierr, herr);
    if (ierr > 0) return false;
    // A little above its own vapor.
    constexpr double above = 1.01;
    p *= above;
    TPRHO(T, p, z, liquidPhase, 0, rhol, ierr, herr);
    if (ierr <= 0) FGCTY2(T, rhol, z, feed, ierr, herr);
    if (ierr > 0) return false;
    for (int component = 1; component <= modelTags.NC; ++component)
        if (findsOtherLiquid(T, p, z, feed, component)) return true;
    return false;
}

double dewPressure(const Fluid& fluid, const std::string& dataFolder, double T) {
    const SilentMessages quiet;
    const catalogue::StateAnswer answer = catalogue::stateOf(fluid, dataFolder, {catalogue::findStateProperty('T'), T},
                                                             {catalogue::findStateProperty('Q'), 1.0});
    return answer.problem.empty() ? answer.point.P : notANumber;
}

}  // namespace frigana::remarks
