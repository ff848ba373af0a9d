// The records that carry everything between the readers, the fluid set-up, the state-point services, the tools and the
// solvers, and the few variables of a run that lower floors need. Plain storage; nothing here has code of its own.
//
// Units everywhere outside the engine: K, kPa, kg/m3, m3/kg, kJ/kg, kJ/(kg K), m/s, m3/s, kW, W/(m K), uPa s, N/m.
#pragma once

#include "FixedText.h"
#include "IndexedArray.h"

namespace frigana {

// The value of a quantity that is not available, in records and in result files.
inline constexpr double missingValue = -777.0;

inline constexpr int mostComponents = 20;
inline constexpr int mostParameters = 50;
inline constexpr int domeRows = 10;

// One thermodynamic state.
struct STATEPT {
    double T;     // temperature [K]
    double TSAT;  // saturation temperature at P [K]; filled by the solvers just before printing
    double P;     // pressure [kPa]
    double D;     // density [kg/m3]
    double V;     // specific volume [m3/kg], 1/D
    double U;     // internal energy [kJ/kg]
    double H;     // enthalpy [kJ/kg]
    double S;     // entropy [kJ/(kg K)]
    double CV;    // isochoric heat capacity [kJ/(kg K)]; -777 in the two-phase region
    double CP;    // isobaric heat capacity [kJ/(kg K)]; -777 in the two-phase region
    double W;     // speed of sound [m/s]; -777 in the two-phase region
    double Q;     // vapour quality by mass; outside 0 to 1 as the engine reported it, or -777
    double TCX;   // thermal conductivity [W/(m K)]
    double ETA;   // viscosity [uPa s]
    double PR;    // Prandtl number
    double STN;   // surface tension [N/m]
    int IERR;     // engine code of a failed calculation
    Text255 HERR;
};

using DomeTable = Array1<STATEPT, domeRows>;

// One fluid or blend. The record is not made anew for a request: readers and INITSUBSTANCE write over it.
struct SUBSTANCE {
    int FLUIDKIND;                                // 1 pure fluid, 2 predefined mixture, 3 mixture listed by components
    int NREFS;                                    // number of names in the request; 1 for kinds 1 and 2
    int ZTYPE;                                    // basis of ZCOMP: 1 mass fractions, else mole fractions
    Array1<double, mostComponents> ZCOMP;         // composition as the request gave it
    Array1<double, mostComponents> ZMOL;          // mole fractions, handed to the engine
    Array1<double, mostComponents> ZKG;           // mass fractions
    Array1<Text255, mostComponents> REFSNAME;     // file names as the request gave them; the first is FREF1 (FREF2)
    Text255 FLUIDNAME;                            // name printed and looked up
    Text255 MIXNAME;                              // mixture name of the request
    int IXREF;                                    // reference-state selector handed to SETREF
    Text3 HRF;                                    // reference-state code handed to SETUP, SETMIX and SETREF
    int NMIX;                                     // number of components of a mixture
    Array1<Text255, mostComponents> REFSNAMEMIX;  // component file names, no folder in front
    int GWP;                                      // global warming potential, -777 when unknown
    Text255 SAFETYCLASS;                          // such as A1, A2L, NA
    double WM;                                    // molar mass [g/mol]
    double TTRP;                                  // triple-point temperature [K]; -777 for a mixture
    double TNBP;                                  // normal boiling point [K]; -777 for a mixture
    double TC, PC, DC;                            // critical point [K, kPa, kg/m3]
    double TMIN, TMAX;                            // allowed temperatures [K]
    double PMAX;                                  // highest allowed pressure [kPa]
    double DMAX;                                  // highest allowed density [kg/m3]; -777 for a mixture
    double PMIN;                                  // bubble pressure at TMIN + 1 K [kPa]
    DomeTable PTSPL, PTSPV;                       // dome by pressure: liquid side, vapour side
    DomeTable PTSTL, PTSTV;                       // dome by temperature: liquid side, vapour side
    STATEPT PTBAD;                                // template of a failed point
};

// A property request.
struct PROPREQ {
    int REQTYPE;                     // 1
    int REQSUB;                      // 1 to 7
    int SATVAR;                      // saturation table: 1 over temperature, 2 over pressure
    double TABFROM, TABTO, TABSTEP;  // table; a step of 0 asks for suggested limits
    int ISOVAR, ISOSWEEP;            // constant and running property: 1 temperature, 2 pressure, 3 density
    double ISOVALUE;                 // value of the constant property
    int PT1VAR, PT2VAR;              // codes of the two properties of a state point, as above
    double PT1VALUE, PT2VALUE;
    int SATPTVAR;  // 1 temperature, bubble; 2 temperature, dew; 3 pressure, bubble; 4 pressure, dew
    double SATPTVALUE;
};

// The input of one cycle.
struct CYCLEIN {
    Text255 TITLE;
    int REQTYPE;                          // 2
    int REQSUB;                           // number of the cycle
    int NDAT;                             // number of parameters given
    Array1<int, mostParameters> TDAT;     // TDAT(k): how parameter k is to be read
    Array1<double, mostParameters> VDAT;  // VDAT(k): its value
};

// Variables of the run, set by the entry.
extern Text255 ADDRESS;          // path of a file in the installation folder
extern Text255 TEMPORALFILEOUT;  // folder of the result file with its separator, in front of the names of scratch files
extern int temporalLength;       // its length
extern char FNDFLDFLAG;          // 'Y' when the last lookup found the fluid in the library

// Path of a scratch file in the folder of the result file. The names are fixed: from the first of them to the end of
// the run the folder is locked, and another run that needs them there waits. A path that does not fit into its field,
// and a folder that cannot be locked, end the run in the runtime's own error.
Text255 scratchPath(std::string_view name);

}  // namespace frigana
