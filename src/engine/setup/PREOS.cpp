#include "PREOS.h"

#include "CORE_PR.h"
#include "ReferenceState.h"
#include "SETUP.h"

namespace frigana {

PreosMemory preosMemory;

namespace {

void defaultReferenceState() {
    RESETA();
    referenceState.HSVRF.clear();
    Text3 defaultState = "DEF";
    int ierr;
    Text255 herr;
    SETREF(defaultState, 1, unitComposition(1), 0.0, 0.0, 0.0, 0.0, ierr, herr);
}

}  // namespace

void PREOS(int& i) {
    if (i == -1) {
        i = pengRobinsonSelected() ? 1 : 0;
        return;
    }
    if (i == 1 || i == 2) {
        if (!pengRobinsonSelected()) {
            preosMemory.HEOSSV = modelTags.HEOS;
            for (int k = 1; k <= ncmax; ++k) preosMemory.HMXSV[k] = modelTags.HMXEOS[k];
        }
        modelTags.HEOS = "PR";
        for (int k = 1; k <= ncmax; ++k) modelTags.HMXEOS[k] = "PR";
        defaultReferenceState();
        return;
    }
    if (preosMemory.HEOSSV.blank()) return;
    modelTags.HEOS = preosMemory.HEOSSV;
    for (int k = 1; k <= ncmax; ++k) modelTags.HMXEOS[k] = preosMemory.HMXSV[k];
    preosMemory.HEOSSV.clear();
    for (Text3& tag : preosMemory.HMXSV) tag.clear();
    defaultReferenceState();
}

}  // namespace frigana
