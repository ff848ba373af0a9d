// Thermal conductivity models of pure fluids (tags TC0 to TC6), the critical enhancement (TK1 to TK6, NH3, CH4), and
// the readers of their sections. The functions are reached through TCXK0, TCXKB and TCXKC (TRNSP.h).
//
// Units: conductivity [W/(m K)], temperature [K], density [mol/L].
// State: conductivityTerms, one record per slot, written by the readers; a section that cannot be read leaves the slot
// without terms. The readers also write the limits TMTCX, TXTCX, PXTCX, DXTCX and the tags HMDTCX, HTCXCR and
// HTCXCRECS. TCX5DG makes 8.314472 the gas constant in use and keeps its result for TCX5BK.
#pragma once

#include "EngineLimits.h"
#include "TransportSection.h"

namespace frigana {

inline constexpr int largestConductivityTerms = 40;
inline constexpr int largestEnhancementTerms = 20;

// A row of a critical enhancement: c, a, b, e, f and an integer.
struct EnhancementTerm {
    double c, a, b, e, f;
    int i;
};

struct EnhancementSection {
    double TMTCK, TXTCK, PXTCK, DXTCK;  // limits [K, K, kPa, mol/L]
    int NNUMTCK, NDENTCK, NEXPTCK, NSPAREK;
    double TRTCK, DRTCK, PRTCK, TCXRED;             // reducing values [K, mol/L, kPa, W/(m K)]
    double TREDEX, DREDEX;                          // those of the exponential block
    EnhancementTerm CTCK[largestEnhancementTerms];  // ITCK is the integer of the row
};

struct ConductivitySlot {
    Text3 HTCXHC{};                                // sub-tag of TC0
    int NDGNUM, NDGDEN, NBKNUM, NBKDEN;            // counts, the rows in this order
    double TRDDGT, TCXDGT;                         // reducing values of the dilute part [K, W/(m K)]
    double TRDBKT, DRDBKT, TCXBKT;                 // those of the background [K, mol/L, W/(m K)]
    TransportTerm CTCX[largestConductivityTerms];  // ITCX is the integer of the row
    // TC5
    double SIGCHK, EPSCHK;                   // Lennard-Jones sigma [nm], epsilon/k [K]
    double ACCHK, DDIPK, HBKK;               // acentric factor, reduced dipole moment, association
    double CCTCX[7];                         // the seven constants of the fluid, from the general table
    EnhancementSection enhancement;          // CTCK
    EnhancementSection correspondingStates;  // CTCKE: that of the fluid under corresponding states
};

extern SlotArray<ConductivitySlot> conductivityTerms;

// Readers of the conductivity sections.
//   Given     nread   open unit, the next line being the first of the section
//             icomp   component slot
//             hcas    CAS number, for the message
//   Codes     101     no unit (39 for SETTK1, SETTK3, SETTK6)
//             1       a line that cannot be read; herr says which
//             39      SETTC6: the model is not implemented
void SETTC0(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTC1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTC2(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTC3(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTC5(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTC6(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
// Readers of the enhancement sections.
void SETTK1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTK3(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTK4(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTK6(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);

// Dilute gas and background of the general form.
//   Notes     Exponents below -90 of the dilute part are codes that bring in heat capacity and viscosity of the dilute
//             gas and work on the sum as built so far. An exponent of -99 in the third column of the background divides
//             the sum so far by a saturated density of propane's equation.
double TCX1DG(int icomp, double T);
double TCX1BK(int icomp, double T, double D);

// Model of methane and ethane of the seventies, in its two versions.
//   Source    B. A. Younglove, J. F. Ely, J. Phys. Chem. Ref. Data 16 (1987) 577; B. A. Younglove, J. Phys. Chem. Ref.
//             Data 11 Suppl. 1 (1982)
double TCX2DG(int icomp, double T);
double TCX2BK(int icomp, double T, double D);
double TCX3DG(int icomp, double T);
double TCX3BK(int icomp, double T, double D);

// Corresponding states of Chung et al.
//   Source    T. H. Chung, M. Ajlan, L. L. Lee, K. E. Starling, Ind. Eng. Chem. Res. 27 (1988) 671
double TCX5DG(int icomp, double T);
double TCX5BK(int icomp, double T, double D);

// Critical enhancements; 0 for D below 1e-6 (but for TCX1CR, TCCNH3 and TCCCH4, which are closed forms).
// A rational form times an exponential.
double TCX1CR(int icomp, double T, double D);
// Closed forms of Younglove and Ely, and their generalisation.
double TCX2CR(int icomp, double T, double D);
double TCX4CR(int icomp, double T, double D);
// Simplified crossover; 0 above its reference temperature. Water takes TCCR_2010.
//   Source    G. A. Olchowy, J. V. Sengers, Int. J. Thermophys. 10 (1989) 417
double TCX3CR(int icomp, double T, double D);
// The same for a composition and for a component under corresponding states.
//   Codes     -60     pure fluid exactly at its critical point, where the value has no meaning
void TCXM1C(const Composition& x, double T, double D, double& tcx, int& ierr, Text255& herr);
// Water.
//   Given     qd      cutoff wave number [1/m]
//   Source    IAPWS R15-11; M. L. Huber et al., J. Phys. Chem. Ref. Data 41 (2012) 033102
double TCCR_2010(double T, double D, double qd);
// Ammonia.
//   Source    R. Tufeu, D. Y. Ivanov, Y. Garrabos, B. Le Neindre, Ber. Bunsenges. Phys. Chem. 88 (1984) 422
double TCCNH3(int icomp, double T, double D);
// Methane.
//   Source    D. G. Friend, J. F. Ely, H. Ingham, J. Phys. Chem. Ref. Data 18 (1989) 583, eq. 40
double TCCCH4(int icomp, double T, double D);

// Correlations of a single fluid, by the sub-tag HTCXHC; their banners stand in TRNS_TCX_FLUIDS.cpp.
//   Codes     39      unknown sub-tag
double TCX0HC(int icomp, double T, double D, int& ierr, Text255& herr);
double TCXETY(int icomp, double T, double D);
double TCXR23(int icomp, double T, double D);
double TCXD2O(int icomp, double T, double D);
double TCXH2O(int icomp, double T, double D);
double TCXHE(int icomp, double T, double D);
double TCXH2(int icomp, double T, double D);
// Factor of deuterium to hydrogen.
double deuteriumFactor(int icomp, double T, double D);

}  // namespace frigana
