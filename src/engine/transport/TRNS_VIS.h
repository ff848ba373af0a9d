// Viscosity models of pure fluids (tags VS0 to VS6): readers of their sections, dilute-gas and residual functions.
// The functions are reached through ETAK0, ETAK1 and ETAKR (TRNSP.h).
//
// Units: viscosity [uPa s], temperature [K], density [mol/L].
// State: viscosityTerms, one record per slot, written by the readers; a section that cannot be read leaves the slot
// without terms. The readers also write the limits TMETA, TXETA, PXETA, DXETA and the tags HMDETA and HETACR.
#pragma once

#include "EngineLimits.h"
#include "TransportSection.h"

namespace frigana {

inline constexpr int largestViscosityTerms = 80;

struct ViscositySlot {
    Text3 HETAHC{};                   // sub-tag of VS0
    double SIGMAV, EPSKV;             // Lennard-Jones sigma [nm] and epsilon/k [K] (SIGCHV, EPSCHV of VS5)
    double TRDDGE, ETADGE;            // reducing values of the dilute part [K, uPa s] (TRDDG3, ETADG3 of VS3)
    double TREDB2, ETARB2;            // those of the second virial part
    double TREDETA, DREDETA, ETARED;  // those of the residual part [K, mol/L, uPa s]

    // Rows of CETA, in the order of these counts. VS3 uses NDGETA and NDG3 for NDGNM3 and NDGDN3, and NNUMETA and
    // NDENETA for NBKNM3 and NBKDN3.
    int NDGETA, NDG2, NDG3, NDG4, NDG5, NDG6, NB2ETA;
    int NDEL0;  // negative: the first row is the numerator of a quotient
    int NPOLY, NNUMETA, NDENETA, NEXPN, NEXPD;
    int B2FIRST, RESFIRST;  // row at which the second virial part and the residual part begin (from 0)
    TransportTerm CETA[largestViscosityTerms];  // IETA is the integer of the row

    // VS2: two rows of the dilute part and c1 to c11 of the residual part
    double CDG2, EDG2, C2[11], DCR2;
    // VS4: rows x0, x1, x2, n of the friction coefficients a, b, c, A, B, C, D, E
    double FTM[8][4];  // ASFTM, BSFTM, CSFTM, ABFTM, BBFTM, CBFTM, DBFTM, EBFTM
    // VS5
    double ACCHV, DDIPV, HBVK;  // acentric factor, reduced dipole moment, association
    double CCETA[10];           // the ten constants of the fluid, from the general table
};

extern SlotArray<ViscositySlot> viscosityTerms;

// Readers of the viscosity sections.
//   Given     nread   open unit, the next line being the first of the section
//             icomp   component slot
//             hcas    CAS number, for the message
//   Codes     101     no unit
//             1       a line that cannot be read; herr says which
void SETVS0(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS2(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS3(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS4(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS5(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
// The section of the model that is not implemented: its limits only.
void SETVS6(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);

// Viscosity of the dilute gas by a row over the collision integral and further powers of temperature.
//   Given     icomp    component slot
//             T        temperature [K]
//   Returned  (value)  [uPa s]; 0 without terms and for T >= 1e8
//   Source    kinetic theory, e.g. J. O. Hirschfelder, C. F. Curtiss, R. B. Bird, Molecular Theory of Gases and
//             Liquids, Wiley 1954, eq. 8.2-18
double ETA1DG(int icomp, double T);

// Second viscosity virial coefficient [L/mol].
//   Source    D. G. Friend, J. C. Rainwater, Chem. Phys. Lett. 107 (1984) 590
double ETA1B2(int icomp, double T);

// Residual part: close-packed density, polynomial and quotients of polynomials; 0 for D < 1e-10.
//   Source    E. Vogel et al., J. Phys. Chem. Ref. Data 27 (1998) 947 (form of the quotient and close-packed density)
double ETA1RS(int icomp, double T, double D);

// Dilute gas and residual part of the model of methane and ethane of the seventies.
//   Source    B. A. Younglove, J. F. Ely, J. Phys. Chem. Ref. Data 16 (1987) 577, eqs. 21 to 23
double ETA2DG(int icomp, double T);
double ETA2RS(int icomp, double T, double D);

// Quotients of polynomials in temperature (dilute gas), and in temperature and density (residual part).
//   Notes     A density that is not positive, or a denominator of at most 1e-20, leaves the numerator alone.
double ETA3DG(int icomp, double T);
double ETA3RS(int icomp, double T, double D);

// Friction theory: the dilute gas of VS1 times one and over another polynomial; friction by the repulsive and
// attractive pressure of the fluid's own equation of state.
//   Source    S. E. Quinones-Cisneros, U. K. Deiters, J. Phys. Chem. B 110 (2006) 12820
double ETA4DG(int icomp, double T);
double ETA4RS(int icomp, double T, double D);

// Corresponding states of Chung et al.; the residual part is the value less that of the dilute gas.
//   Source    T. H. Chung, M. Ajlan, L. L. Lee, K. E. Starling, Ind. Eng. Chem. Res. 27 (1988) 671
double ETA5DG(int icomp, double T);
double ETA5RS(int icomp, double T, double D);

// Correlations of a single fluid, by the sub-tag HETAHC.
//   Returned  (value)  viscosity [uPa s]; -9999990 with a code
//   Codes     49       unknown sub-tag, or one whose published constants the program does not hold (NEO, HE, H2, H2A,
//                      D2, T2, HE3, MEO, SF6)
double ETA0HC(int icomp, double T, double D, int& ierr, Text255& herr);

// Ethylene.
//   Source    P. M. Holland, B. E. Eaton, H. J. M. Hanley, J. Phys. Chem. Ref. Data 12 (1983) 917
double ETAETY(int icomp, double T, double D);

// Trifluoromethane. The constants stand in five rows of the polynomial block.
//   Source    Z. Shan, S. G. Penoncello, R. T. Jacobsen, ASHRAE Trans. 106 (2000) 757
double ETAR23(int icomp, double T, double D);

// Water. The coefficients of the dilute gas stand in the NDEL0 rows, those of the finite density in the NPOLY rows. The
// critical enhancement belongs to files above version 8.
//   Source    IAPWS R12-08; M. L. Huber et al., J. Phys. Chem. Ref. Data 38 (2009) 101, eqs. 10 to 23
double ETAH2O(int icomp, double T, double D);

// The two factors of the formulation for water without the enhancement.
void viscosityFactorsWater(int icomp, double T, double D, double& eta0, double& eta1);

// Correlation length of water [m]; 0 where it is not defined.
//   Source    IAPWS R12-08, eqs. 20 and 21
double XI_FUN(int icomp, double T, double D);

}  // namespace frigana
