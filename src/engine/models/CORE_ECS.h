// Extended corresponding states equation of state (tag ECS): shape factors that scale a reference fluid. The Helmholtz
// energy, which needs the reference fluid's equation, stands in CORE_ECS_PHI.
//
// State: ecsTerms, written by SETECS only. Slot -i holds the reference fluid of component i.
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int mostEcsTerms = 20;

// One polynomial of a shape factor.
struct EcsPolynomial {
    int count;                                        // NFECS, NFDECS, NHECS, NHDECS
    Array1<double, mostEcsTerms> coefficient, power;  // FECS, FDECS, HECS, HDECS
};

struct EcsSlot {
    double TMINECS, TMAXECS, PMAXECS, DMAXECS;  // limits [K, K, kPa, mol/L]
    double ACFREF, ZCREF;                       // acentric factor and critical compressibility of the reference
    double ACFECS;                              // acentric factor of the fluid
    EcsPolynomial FECS, FDECS, HECS, HDECS;     // f over temperature and density, h over temperature and density
};

extern SlotArray<EcsSlot> ecsTerms;

// A shape factor with its derivatives in temperature and density.
struct ShapeFactor {
    double value;
    double dT, dD;         // first derivatives [1/K, L/mol]
    double dTT, dTD, dDD;  // second derivatives
};

// Shape factor of temperature: the reference fluid is taken at t/f.
//   Given     icomp   component slot
//             t       temperature [K]
//             rho     density [mol/L]
//   Returned  f
//   Notes     f = (Tc/Tc0) (1 + (omega - omega0) (c1 + c2 ln Tr) + further powers of Tr and of rho/rhoc).
//   Source    J. F. Ely, H. J. M. Hanley, Ind. Eng. Chem. Fundam. 20 (1981) 323; M. L. Huber, J. F. Ely,
//             Int. J. Refrig. 17 (1994) 18
void FJ(int icomp, double t, double rho, ShapeFactor& f);

// Shape factor of density: the reference fluid is taken at rho h; arguments and source as FJ.
void HJ(int icomp, double t, double rho, ShapeFactor& h);

// Critical point of the fluid [K, kPa, mol/L].
void CRTECS(int icomp, double& tc, double& pc, double& rhoc);

// Reads the block of the model and makes its constants those of the fluid.
//   Given     iunit   open unit, at the first line of the block
//             icomp   component slot
//             hcasn   CAS number, for the message
//   Returned  hreff   name of the file of the reference fluid
//             heqn    tag of its equation of state
//   Codes     1       a line cannot be read: herr says which
//             101     no unit
void SETECS(int iunit, int icomp, const Text12& hcasn, Text255& hreff, Text3& heqn, int& ierr, Text255& herr);

}  // namespace frigana
