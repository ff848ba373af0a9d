// Setting up fluids for transport, and the rows of tests/reference.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "CORE_STN.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "PureFluid.h"
#include "SAT_SUB.h"
#include "TPRHO.h"
#include "TRNSP.h"
#include "TRNS_ECS.h"
#include "TRNS_ECS_STATE.h"
#include "TRNS_TCX.h"
#include "TRNS_VIS.h"

namespace frigana::test {

// A message without what follows its null character.
inline std::string words(const Text255& text) {
    std::string_view view = text.view();
    view = view.substr(0, view.find('\0'));
    return std::string(trimRight(view));
}

struct TransportPoint {
    double eta = 0.0, tcx = 0.0;
    int ierr = 0;
    std::string message;
};

inline TransportPoint transport(double T, double D, const Composition& x = unitComposition(1)) {
    TransportPoint point;
    Text255 herr;
    TRNPRP(T, D, x, point.eta, point.tcx, point.ierr, herr);
    point.message = words(herr);
    return point;
}

// Saturated densities of the pure fluid in slot 1; false where the engine found none.
inline bool saturation(double T, double& p, double& Dl, double& Dv) {
    Composition xl{}, xv{};
    int ierr = 0;
    Text255 herr;
    SATT(T, unitComposition(1), 1, p, Dl, Dv, xl, xv, ierr, herr);
    return ierr <= 0;
}

// Whether a state of a fluid under corresponding states is scaled by the critical points alone.
bool simplyScaled(double T, double D);

// The correlation of slot 1 may not be the default of its file: forces viscosity and conductivity, "NBS" the default.
testing::AssertionResult setUpForced(std::string_view fluid, const char* viscosity, const char* conductivity);

// Rows of a file of tests/reference, split at commas, without the header line.
std::vector<std::vector<std::string>> referenceRows(std::string_view file);

struct PublishedValue {
    std::string fluid, property, source;
    double T = 0.0, rho = 0.0, value = 0.0, tolerance = 0.0;
    bool perMass = false;  // rho in kg/m3, else mol/L
};
std::vector<PublishedValue> publishedValues(std::string_view file = "published_values.json");

}  // namespace frigana::test
