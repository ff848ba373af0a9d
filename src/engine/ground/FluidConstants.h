// Constants of the fluids per component slot, and the gas constant in use.
// Written by SETFLD and the readers of fluid files, SETUP, RMIX and PASSCMN.
#pragma once

#include "EngineLimits.h"

namespace frigana {

struct FluidConstants {
    double R = defaultGasConstant;  // gas constant in use [J/(mol K)]

    SlotArray<double> REOS{};                              // gas constant of the equation of state [J/(mol K)]
    SlotArray<double> WMAS{};                              // molar mass [g/mol]
    SlotArray<double> TTPN{};                              // triple point temperature [K]
    SlotArray<double> PTPN{};                              // ... pressure [kPa]
    SlotArray<double> DTPN{};                              // ... density of the liquid [mol/L]
    SlotArray<double> DTPV{};                              // ... density of the vapor [mol/L]
    SlotArray<double> TNBP{};                              // normal boiling point [K]
    SlotArray<double> DNBPL{}, DNBPV{};                    // densities there [mol/L]
    SlotArray<double> TCRIT{}, PCRIT{}, DCRIT{}, ZCRIT{};  // critical point [K, kPa, mol/L, -]
    SlotArray<double> ACCEN{};                             // acentric factor
    SlotArray<double> DIPOLE{};                            // dipole moment [debye]
    SlotArray<double> TZ{}, RHOZ{};  // reducing temperature and density of the equation of state [K, mol/L]

    // limits of the equation of state [K, K, kPa, mol/L]
    SlotArray<double> TMEOS{}, TXEOS{}, PEOS{}, DEOS{};
    // limits of surface tension [K], conductivity, viscosity and corresponding-states transport [K, K, kPa, mol/L]
    SlotArray<double> TMINST{}, TMAXST{};
    SlotArray<double> TMTCX{}, TXTCX{}, PXTCX{}, DXTCX{};
    SlotArray<double> TMETA{}, TXETA{}, PXETA{}, DXETA{};
    SlotArray<double> TMECST{}, TXECST{}, PXECST{}, DXECST{};

    SlotArray<double> VERFL{};   // version of the fluid file
    SlotArray<int> IGENFL{};     // 1: the file holds an FEX equation
    SlotArray<double> HCMBST{};  // heat of combustion [kJ/mol], -1 unknown

    // block of the user's own data
    SlotArray<double> TMINUN{}, TMAXUN{}, PMAXUN{}, RHOMUN{};
    SlotArray<int> IUNFLG{}, NTRMUN{};
    SlotArray<Array1<double, 20>> PRMUN{};
};

extern FluidConstants fluidConstants;

}  // namespace frigana
