// Fluids beyond the table of the program. Their reference rows stand in files of their own.
#pragma once

namespace frigana::test {

inline constexpr const char* furtherFluids[] = {
    "R1234ZEZ", "R1336MZZ", "R1336MZE", "R1224YD",  "R1243ZF",  "R1123",   "R1132A",   "R1132E",   "R1130E",
    "R161",     "R41",      "R13",      "R14",      "R40",      "R21",     "RC318",    "R236EA",   "R245CA",
    "R365MFC",  "ETHANE",   "METHANE",  "CYCLOPEN", "CYCLOPRO", "HEXANE",  "HEPTANE",  "TOLUENE",  "MM",
    "MDM",      "NOVEC649", "WATER",    "DME",      "SO2",      "ARGON",   "OXYGEN",   "HYDROGEN", "N2O",
    "KRYPTON",  "XENON",    "CO",       "NEOPENTN", "IHEXANE",  "OCTANE",  "CYCLOHEX", "BENZENE",  "1BUTENE",
    "IBUTENE",  "C2BUTENE", "T2BUTENE", "RE143A",   "MD2M",     "ACETONE", "ETHANOL",
};

}  // namespace frigana::test
