// The pieces of the cycles whose high side lies above the critical pressure: from the gas cooler to the expansion
// device, along the suction line through the heat exchanger, and from the compressor to the gas cooler. Parameters 4 to
// 7 and 11 to 22 mean the same in all of them.
#pragma once

#include <string_view>

#include "CycleBricks.h"

namespace frigana {

// No exchanger, in whichever way that is asked for (0 under option 1, 2 or 4 of parameter 20), becomes a fall of 0. An
// outlet temperature of 0 is a temperature.
void normaliseExchanger(CYCLEIN& cycle);

// ---- from the gas cooler to the expansion device --------------------------------------------------------------------

// In the order in which they fire. Drops are given in kPa: above the critical pressure there is no saturation
// temperature.
struct HighSideChecks {
    Check gasCoolerP, gasCoolerInletP, gasCoolerOutletP, gasCoolerOutletT;  // parameters 13, 15, 14
    Check beforeDrop, beforeP, beforeT, beforeFall;                         // line before the exchanger: 17, 16
    Check hotSideDrop, hotSideP, hotSideT;                                  // exchanger: 21, 20
    Check afterDrop, afterT, afterFall;                                     // line after the exchanger: 19, 18
};
struct HighSide {
    Level gasCooler;  // pressures only
    STATEPT p1;       // gas cooler outlet
    STATEPT p2;       // line before the exchanger, outlet
    STATEPT p3;       // exchanger, hot outlet
    STATEPT p4;       // line after the exchanger, outlet: expansion device inlet
    TemperatureChange before, after;
    double fall;  // of the hot side of the exchanger
};
void gasCoolerToExpansion(const SUBSTANCE& substance, const CYCLEIN& cycle, const HighSideChecks& checks,
                          HighSide& high);

// ---- along the suction line -----------------------------------------------------------------------------------------

// In the order in which they fire.
struct SuctionChecks {
    DropChecks beforeDrop;                     // line before the exchanger: parameter 5
    Check beforeP, beforeAboveTC, beforeRise;  // parameter 4
    DropChecks vaporDrop;                      // exchanger: parameter 22
    Check negativeHeat, vaporRise;
    LineChecks after;  // line after the exchanger: parameters 6, 7
};
struct SuctionSide {
    STATEPT beforeOutlet, vaporOutlet, afterOutlet;
    PressureChange beforeDrop, vaporDrop;
    TemperatureChange before;
    double rise;  // of the vapor in the exchanger
    Line after;   // the degree is the superheat at the compressor
};
// The vapor takes up in the exchanger what the hot side gives away at the same mass flow.
//   Given     inlet, inletT  state that enters the line, and its temperature as it was set
void suctionThroughExchanger(const SUBSTANCE& substance, const CYCLEIN& cycle, const STATEPT& inlet, double inletT,
                             const HighSide& high, const SuctionChecks& checks, SuctionSide& suction);

// ---- from the compressor to the gas cooler --------------------------------------------------------------------------

struct DischargeChecks {
    Check drop, fall;  // parameters 12, 11
};
// Compressor of the isentropic efficiency of parameter 9, and the line behind it.
void compressorToGasCooler(const SUBSTANCE& substance, const CYCLEIN& cycle, const STATEPT& inlet,
                           double gasCoolerInletP, const DischargeChecks& checks, STATEPT& compressorOutlet,
                           TemperatureChange& discharge, STATEPT& gasCoolerInlet);

// ---- report ---------------------------------------------------------------------------------------------------------

// Rows above the critical pressure show neither quality nor saturation temperature.
void highSideCompressorEnds(ResultWriter& writer, std::string_view heading, const Device& device);
void highSideCompressorSection(ResultWriter& writer, std::string_view heading, const Device& device,
                               const Efficiencies& efficiencies, double sweptVolume, double pressureRatio, double M,
                               double power);
void highSideLineSection(ResultWriter& writer, std::string_view heading, const Device& line, double fall);
void gasCoolerSection(ResultWriter& writer, const Device& gasCooler);
// An expansion device whose inlet is a short row.
void highSideExpansionSection(ResultWriter& writer, std::string_view heading, const Device& device);
void exchangerSection(ResultWriter& writer, const Device& hotSide, double fall, const Device& vaporSide,
                      const SuctionSide& suction, double heat);

}  // namespace frigana
