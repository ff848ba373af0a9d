#include "CORE_DE.h"

#include "ReaderReport.h"

namespace frigana {

SlotArray<DielectricSlot> dielectricTerms;

void SETDE(int iunit, int icomp, [[maybe_unused]] const Text12& hcasn, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    DielectricSlot read{};
    if (!readRecord(iunit, "lower temperature limit", ierr, herr, read.TMINDE)) return;
    if (!readRecord(iunit, "upper temperature limit", ierr, herr, read.TMAXDE)) return;
    if (!skipLines(iunit, 2, ierr, herr)) return;
    if (!readRecord(iunit, "reducing temperature, density and pressure", ierr, herr, read.TREDDE, read.DREDDE,
                    read.PREDDE))
        return;
    if (!readRecord(iunit, "six numbers of terms", ierr, herr, read.count[0], read.count[1], read.count[2],
                    read.count[3], read.count[4], read.count[5]))
        return;
    int total = 0;
    for (int family = 0; family < 3; ++family) {
        if (!countFits(iunit, "number of terms", read.count[family], mostDielectricTerms - total, ierr, herr)) return;
        total += read.count[family];
    }
    for (int k = 0; k < total; ++k) {
        DielectricTerm& term = read.term[k];
        if (!readRecord(iunit, "coefficient and three exponents", ierr, herr, term.DECF, term.DEEXPT, term.DEEXPD,
                        term.DEEXPP))
            return;
    }
    dielectricTerms[icomp] = read;
}

}  // namespace frigana
