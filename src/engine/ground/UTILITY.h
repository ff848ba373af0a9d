// Selectors, information and conversions on which the whole engine leans; text of messages.
// State: none of its own. RMIX writes fluidConstants.R.
#pragma once

#include <cmath>

#include "FluidConstants.h"
#include "ModelTags.h"

namespace frigana {

// Which component a composition consists of.
//   Given     x       mole fractions
//   Returned  icomp   slot of the pure fluid: 1 for a single component; the slot that PUREFLD selected, whatever x is;
//                     the first component whose fraction is 1 within 1e-12; 0 for a mixture
// Inline: every property call begins here.
inline void ISPURE(const Composition& x, int& icomp) {
    const int count = modelTags.NC;
    if (count == 1) {
        icomp = 1;
        return;
    }
    icomp = modelTags.IPUREFLD;
    if (icomp > 0) return;
    icomp = 0;
    for (int i = 1; i <= count; ++i) {
        if (std::fabs(x[i] - 1.0) < 1e-12) {
            icomp = i;
            return;
        }
    }
}

// Gas constant of a composition.
//   Given     x       mole fractions
//   Returned  rgas    that of the pure fluid's equation of state, otherwise the mole-fraction mean [J/(mol K)];
//                     8.314472 where none is known
inline void RMIX2(const Composition& x, double& rgas) {
    int pure;
    ISPURE(x, pure);
    if (pure > 0) {
        rgas = fluidConstants.REOS[pure];
    } else {
        rgas = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) rgas += x[i] * fluidConstants.REOS[i];
    }
    if (rgas < 1e-10) rgas = defaultGasConstant;
}

// Makes the gas constant of a composition the one in use, fluidConstants.R.
inline void RMIX(const Composition& x) {
    RMIX2(x, fluidConstants.R);
}

// Molar mass of a composition.
//   Given     x        mole fractions
//   Returned  (value)  molar mass [g/mol]
double WMOL(const Composition& x);

// Mole fractions to mass fractions.
//   Given     xmole   mole fractions
//   Returned  xmass   mass fractions; for a pure composition exactly 1 and 0
//             mmix    mean molar mass [g/mol]
void XMASS(const Composition& xmole, Composition& xmass, double& mmix);

// Mass fractions to mole fractions.
//   Given     xmass   mass fractions
//   Returned  xmole   mole fractions; for a pure composition exactly 1 and 0
//             mmix    mean molar mass [g/mol]
void XMOLE(const Composition& xmass, Composition& xmole, double& mmix);

// Molar quality and phase compositions to mass quality.
//   Given     qmole   moles of vapor per mole of mixture
//             xl, xv  mole fractions of liquid and vapor
//   Returned  qmass   mass of vapor per mass of mixture
//             xliqm, xvapm  mass fractions of the phases
//             mliq, mvap    their molar masses [g/mol]
//   Codes     -19     quality out of range: qmass is qmole
void QMASS(double qmole, const Composition& xl, const Composition& xv, double& qmass, Composition& xliqm,
           Composition& xvapm, double& mliq, double& mvap, int& ierr, Text255& herr);

// Mass quality and phase compositions to molar quality: the inverse of QMASS.
//   Given     qmass         mass of vapor per mass of mixture
//             xliqm, xvapm  mass fractions of liquid and vapor
//   Returned  qmole         moles of vapor per mole of mixture
//             xl, xv        mole fractions of the phases
//             mliq, mvap    their molar masses [g/mol]
//   Codes     -19           quality out of range: qmole is qmass
void QMOLE(double qmass, const Composition& xliqm, const Composition& xvapm, double& qmole, Composition& xl,
           Composition& xv, double& mliq, double& mvap, int& ierr, Text255& herr);

// Constants of a component.
//   Given     icomp      slot; a negative one is a reference fluid
//   Returned  molarmass  [g/mol]
//             ttriple, tboil, tc  [K]
//             pc         [kPa]
//             Dc         [mol/L]
//             Zc, acentric
//             dipole_m   [debye]
//             rgas       gas constant of the equation of state [J/(mol K)]
//   Notes     For a slot beyond the components all are 0, but rgas is the gas constant in use.
void INFO(int icomp, double& molarmass, double& ttriple, double& tboil, double& tc, double& pc, double& Dc, double& Zc,
          double& acentric, double& dipole_m, double& rgas);

// Names of a component.
//   Given     icomp   slot; a negative one is a reference fluid
//   Returned  hname   short name
//             hnam80  full chemical name
//             hcas    CAS number
//   Notes     For a slot beyond the components all read "not defined".
void NAME(int icomp, Text12& hname, FixedText<80>& hnam80, Text12& hcas);

// Tidies the blanks that number fields leave in a message, and prints it where the print level asks for that.
//   Given     ierr    code that belongs to the text
//   Changed   herr    text
//   Notes     Prints to the standard output for a non-zero code: with modelTags.IPRINTERR above 0 errors only, below 0
//             warnings too.
void ERRMSG(int ierr, Text255& herr);

// Letters a to z of the first n characters to upper case.
//   Given     n       how many characters, at most 255
//   Changed   text
void UCASE(Text255& text, int n);

}  // namespace frigana
