#include "UTILITY.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "FluidFiles.h"
#include "Message.h"

namespace frigana {

namespace {

// Removes count characters at a position; blanks move in from the right.
void removeAt(Text255& text, int position, int count) {
    char* at = text.data() + position - 1;
    const auto rest = static_cast<std::size_t>(Text255::size - position + 1 - count);
    std::memmove(at, at + count, rest);
    std::memset(at + rest, ' ', static_cast<std::size_t>(count));
}

void insertBlank(Text255& text, int position) {
    char* at = text.data() + position - 1;
    std::memmove(at + 1, at, static_cast<std::size_t>(Text255::size - position));
    *at = ' ';
}

// Position of a piece of a message that has at most three blanks at its end; 0 where it does not stand. Most of a
// message's field is blank behind its text.
int findInText(const Text255& text, std::string_view piece) {
    const int end = std::min(text.length() + 3, Text255::size);
    const auto at = text.slice(1, end).find(piece);
    return at == std::string_view::npos ? 0 : static_cast<int>(at) + 1;
}

bool tidyOnce(Text255& text) {
    for (const char* unit : {"   K", "   MPa", "   mol", "   J/mol"}) {
        if (const int at = findInText(text, unit); at > 0) {
            removeAt(text, at, 2);
            return true;
        }
    }
    if (const int at = findInText(text, "=0"); at > 0) {
        insertBlank(text, at + 1);
        return true;
    }
    return false;
}

void unitFractions(int pure, Composition& fractions) {
    fractions.fill(0.0);
    fractions[pure] = 1.0;
}

bool qualityInRange(double q) {
    return q >= -1e-8 && q <= 1.00000001;
}

}  // namespace

double WMOL(const Composition& x) {
    int pure;
    ISPURE(x, pure);
    if (pure > 0) return fluidConstants.WMAS[pure];
    double mass = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) mass += x[i] * fluidConstants.WMAS[i];
    return mass;
}

void XMASS(const Composition& xmole, Composition& xmass, double& mmix) {
    int pure;
    ISPURE(xmole, pure);
    if (pure > 0) {
        unitFractions(pure, xmass);
        mmix = fluidConstants.WMAS[pure];
        return;
    }
    mmix = WMOL(xmole);
    const double factor = std::fabs(mmix) < 1e-10 ? 1.0 : 1.0 / mmix;
    Composition mass{};
    for (int i = 1; i <= modelTags.NC; ++i) mass[i] = xmole[i] * fluidConstants.WMAS[i] * factor;
    xmass = mass;
}

void XMOLE(const Composition& xmass, Composition& xmole, double& mmix) {
    int pure;
    ISPURE(xmass, pure);
    if (pure > 0) {
        unitFractions(pure, xmole);
        mmix = fluidConstants.WMAS[pure];
        return;
    }
    Composition moles{};
    double total = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (fluidConstants.WMAS[i] > 0.0) moles[i] = xmass[i] / fluidConstants.WMAS[i];
        total += moles[i];
    }
    const double factor = std::fabs(total) < 1e-10 ? 1.0 : 1.0 / total;
    for (int i = 1; i <= modelTags.NC; ++i) moles[i] *= factor;
    xmole = moles;
    mmix = WMOL(xmole);
}

void QMASS(double qmole, const Composition& xl, const Composition& xv, double& qmass, Composition& xliqm,
           Composition& xvapm, double& mliq, double& mvap, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    XMASS(xl, xliqm, mliq);
    XMASS(xv, xvapm, mvap);
    if (!qualityInRange(qmole)) {
        qmass = qmole;
        ierr = -19;
        message(herr, "[QMASS warning 19] input quality out of range", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    const double total = qmole * mvap + (1.0 - qmole) * mliq;
    qmass = std::fabs(total) < 1e-10 ? qmole : qmole * mvap / total;
}

void QMOLE(double qmass, const Composition& xliqm, const Composition& xvapm, double& qmole, Composition& xl,
           Composition& xv, double& mliq, double& mvap, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    XMOLE(xliqm, xl, mliq);
    XMOLE(xvapm, xv, mvap);
    if (!qualityInRange(qmass)) {
        qmole = qmass;
        ierr = -19;
        message(herr, "[QMOLE warning 19] input quality out of range", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    if (std::fabs(mliq) < 1e-10 || std::fabs(mvap) < 1e-10) {
        qmole = qmass;
        return;
    }
    const double vapor = qmass / mvap;
    qmole = vapor / (vapor + (1.0 - qmass) / mliq);
}

void INFO(int icomp, double& molarmass, double& ttriple, double& tboil, double& tc, double& pc, double& Dc, double& Zc,
          double& acentric, double& dipole_m, double& rgas) {
    const FluidConstants& fluid = fluidConstants;
    if (std::abs(icomp) > modelTags.NC) {
        molarmass = ttriple = tboil = tc = pc = Dc = Zc = acentric = dipole_m = 0.0;
        rgas = fluid.R;
        return;
    }
    molarmass = fluid.WMAS[icomp];
    ttriple = fluid.TTPN[icomp];
    tboil = fluid.TNBP[icomp];
    tc = fluid.TCRIT[icomp];
    pc = fluid.PCRIT[icomp];
    Dc = fluid.DCRIT[icomp];
    Zc = fluid.ZCRIT[icomp];
    acentric = fluid.ACCEN[icomp];
    dipole_m = fluid.DIPOLE[icomp];
    rgas = fluid.REOS[icomp] < 1e-10 ? fluid.R : fluid.REOS[icomp];
}

void NAME(int icomp, Text12& hname, FixedText<80>& hnam80, Text12& hcas) {
    if (std::abs(icomp) > modelTags.NC) {
        hname = "not defined";
        hnam80 = "not defined";
        hcas = "not defined";
        return;
    }
    hname = fluidFiles.HNAME[icomp];
    hnam80 = fluidFiles.HNAM80[icomp];
    hcas = fluidFiles.HCAS[icomp];
}

void ERRMSG(int ierr, Text255& herr) {
    constexpr int mostPasses = 10;
    for (int pass = 1; pass <= mostPasses && tidyOnce(herr); ++pass) {
    }
    constexpr std::string_view danglingEnds[] = {";   ", {"; \0", 3}, {";  \0", 4}};
    for (const std::string_view end : danglingEnds)
        if (const int at = findInText(herr, end); at > 0) removeAt(herr, at, 1);

    if (ierr == 0 || modelTags.IPRINTERR == 0) return;
    if (ierr < 0 && modelTags.IPRINTERR > 0) return;
    int last = Text255::size;
    while (last > 0 && (herr[last] == ' ' || herr[last] == '\0')) --last;
    std::printf("%.*s (ierr=%4d)\n", last, herr.data(), ierr);
}

void UCASE(Text255& text, int n) {
    const int count = std::min(n, Text255::size);
    for (int i = 1; i <= count; ++i)
        if (text[i] >= 'a' && text[i] <= 'z') text[i] = static_cast<char>(text[i] - 'a' + 'A');
}

}  // namespace frigana
