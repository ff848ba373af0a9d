// Transport properties by extended corresponding states (tag ECS): the state of a fluid or a mixture is mapped onto a
// reference fluid that has the same residual Helmholtz energy and the same compressibility factor.
//
// Symbols: f = T/T0, h = D0/D of the state (T, D) and its conformal state (T0, D0) in the reference fluid.
// Units: viscosity [uPa s], conductivity [W/(m K)], temperature [K], density [mol/L].
// State: ecsTransport, one record per slot, written by SETTRN (which also writes TMECST, TXECST, PXECST, DXECST and
// HTCXCRECS), sigma and epsilon also by TRNECS and PTRNEC where ILJFLAG has them scaled; the viscosity of the last
// TRNECS, which the critical enhancement needs; the memory of EcsMemory. Source    J. F. Ely, H. J. M. Hanley, Ind.
// Eng. Chem. Fundam. 20 (1981) 323 and 22 (1983) 90; S. A. Klein,
//           M. O. McLinden, A. Laesecke, Int. J. Refrig. 20 (1997) 208; M. O. McLinden, S. A. Klein, R. A. Perkins,
//           Int. J. Refrig. 23 (2000) 43; M. L. Huber, A. Laesecke, R. A. Perkins, Ind. Eng. Chem. Res. 42 (2003) 3163
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestShapeTerms = 20;

struct EcsTransportSlot {
    int ILJFLAG;            // Lennard-Jones values: 0 scaled by the critical points, 2 by f and h, else those below
    double SIGTRN, EPSKTR;  // sigma [nm], epsilon/k [K]
    // rows: coefficient, exponent of the (reduced) temperature, exponent of the reduced density, not used
    int NEUCK;
    double CEUCK[largestShapeTerms][4];  // factor of the internal energy's contribution
    int NPSI1, NPSI2, NPSI3;
    double CPSI[largestShapeTerms][4];  // shape factor of the viscosity
    int NCHI1, NCHI2, NCHI3;
    double CCHI[largestShapeTerms][4];  // shape factor of the conductivity
};

extern SlotArray<EcsTransportSlot> ecsTransport;

// Reader of a TRN section.
//   Given     nread          open unit, the next line being the first of the section
//             icomp          component slot
//             hcas           CAS number, for the message
//   Returned  href           name of the reference fluid's file; blank after a failure
//             heos, hvs, htc tags of its equation of state, viscosity and conductivity
//   Codes     101            no unit
//             1              a line that cannot be read; herr says which
void SETTRN(int nread, int icomp, const Text12& hcas, Text255& href, Text3& heos, Text3& hvs, Text3& htc, int& ierr,
            Text255& herr);

// Viscosity and conductivity of one phase of a pure fluid or of a mixture.
//   Given     T, D, x  temperature, density, mole fractions
//   Returned  eta      [uPa s], -9999990 after a failure
//             tcx      [W/(m K)], -9999990 after a failure; the critical enhancement is part of it
//   Codes     -1       out of bounds; the results are extrapolated
//             -48      the reference fluid's viscosity has no meaning there (eta fails)
//             -58      no conformal state (both fail)
//             -59      no background viscosity of the reference fluid or of the dilute mixture (eta fails)
//             -60      a pure fluid exactly at its critical point (tcx fails)
//             those of CRITP (both fail)
//   Notes     The reference fluid is that of the file; in a set of several fluids it is slot -i for component i alone
//             and slot 0 for a mixture.
void TRNECS(double T, double D, const Composition& x, double& eta, double& tcx, int& ierr, Text255& herr);

// The same of one component with the reference fluid in slot ref, without the critical enhancement.
void PTRNEC(int icomp, double T, double D, double& eta, double& tcx, int& ierr, Text255& herr, int ref);

// Conformal state by Newton's method in two variables.
//   Given     icomp   slot of the fluid in which the state is sought
//             A       reduced residual Helmholtz energy that it must have
//             Z       compressibility factor that it must have
//             T0, D0  start
//   Returned  T0, D0  state
//   Codes     -58     not converged
void CONFTD(int icomp, double A, double Z, double& T0, double& D0, int& ierr, Text255& herr);

// The same by a search over density with the temperature solved at each step; slower, and it needs no derivatives.
//   Codes     -58     not converged
//   Source    R. P. Brent, Algorithms for Minimization without Derivatives, Prentice-Hall 1973, ch. 5
void CONFD(int icomp, double A, double Z, double& T0, double& D0, int& ierr, Text255& herr);
// Temperature at which the fluid has the given residual Helmholtz energy at a density; ierr 1 if there was none.
void CONFT(int icomp, double A, double D0, double& T0, int& ierr, Text255& herr);

// Background viscosity of a component of a mixture that has no correlation of its own.
//   Given     i       component
//             T, D    state of the mixture
//             f, h    conformal ratios of the component; fx, hx those of the mixture
//   Returned  etab    [uPa s]
//   Codes     -48, -58 as TRNECS
void ETABKP(int i, double T, double D, double f, double fx, double h, double hx, double& etab, int& ierr,
            Text255& herr);

// Background conductivity of such a component; arguments as ETABKP.
void TCBKP(int i, double T, double D, double f, double fx, double h, double hx, double& tcxb, int& ierr, Text255& herr);

// Limits between which a component is evaluated in a mixture: its own, and those of its reference fluid by simple
// scaling.
//   Given     icomp, ref   component, slot of its reference fluid
//   Returned  tmin, dmax   lowest temperature, highest density
void ECSLIM(int icomp, int ref, double& tmin, double& dmax);

// Factor of the contribution of the internal energy to the conductivity of the dilute gas.
double FINT(int icomp, double T);
// Shape factors of viscosity and conductivity, over reduced temperature and density.
double PSI(int icomp, double Tr, double Dr);
double CHI(int icomp, double Tr, double Dr);

// Viscosity of the dilute gas from kinetic theory.
//   Returned  (value)  [uPa s]; 0 where sigma or epsilon is not given
double ETA0DG(int icomp, double T);

// Collision integrals of the Lennard-Jones potential in closed form, without the oscillating terms.
//   Given     i, j     1, 1 diffusion; any other pair viscosity (2, 2)
//             tstar    T over epsilon/k
//   Source    P. D. Neufeld, A. R. Janzen, R. A. Aziz, J. Chem. Phys. 57 (1972) 1100, eqs. 1 and 2
double OMEGAS(int i, int j, double tstar);

// Dilute-gas viscosity of a mixture.
//   Source    J. O. Hirschfelder, C. F. Curtiss, R. B. Bird, Molecular Theory of Gases and Liquids, Wiley 1954,
//             eqs. 8.2-25 to 8.2-28
double ETAMIX(double T, const Composition& x);

// Conductivity of a mixture without the critical enhancement.
//   Given     T, D, x    state
//             f, h       conformal ratios of the mixture to the fluid of slot 0
//             FJ, HJ     those of the components
//   Returned  tcx        [W/(m K)]
//   Codes     -58        no conformal state of a component
void TCBKMX(double T, double D, const Composition& x, double f, double h, const Composition& FJ, const Composition& HJ,
            double& tcx, int& ierr, Text255& herr);

// First density coefficient of the conductivity of a gas.
//   Given     T         temperature
//             sigma, epsilon  [nm, K]
//             ratio     conductivity of the dilute gas over its translational part
//   Returned  (value)   [L/mol]
//   Source    D. G. Friend, J. C. Rainwater, Chem. Phys. Lett. 107 (1984) 590
double TCKVIR(double T, double sigma, double epsilon, double ratio);

// Correction of the viscosity of a dense mixture for differences of size and mass: hard spheres of the mixture less
// those of the equivalent single fluid.
//   Returned  delta     [uPa s]
//   Notes     Kept for comparison; the model does not use it.
//   Source    J. F. Ely, J. Res. Natl. Bur. Stand. 86 (1981) 597
void DELHSV(double T, double D, const Composition& x, double& delta);
// Viscosity of a dense mixture of hard spheres.
//   Given     n           number of components
//             T, D, x     state
//             sigma       diameters [0.1 nm]
//             mass        molar masses [g/mol]
//   Returned  eta         [uPa s]
void ENSKOG(int n, double T, double D, const Composition& x, const Composition& sigma, const Composition& mass,
            double& eta);

// Viscosity that the last TRNECS found [uPa s].
extern double viscosityOfTRNECS;

// While one of these lives, the last result of the model for a pure fluid is kept and given again for the same state.
// Parameters do not change within such a time.
class EcsMemory {
  public:
    EcsMemory();
    ~EcsMemory();
    EcsMemory(const EcsMemory&) = delete;
    EcsMemory& operator=(const EcsMemory&) = delete;
};

// Viscosity of a pure component from the model, for an enhancement whose fluid has no correlation of its own.
void viscosityByCorrespondingStates(int icomp, double T, double D, double& eta, int& ierr, Text255& herr);

}  // namespace frigana
