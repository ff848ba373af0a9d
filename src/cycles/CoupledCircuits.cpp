#include "CoupledCircuits.h"

#include "14_ErrorControl.h"
#include "41_BasicCycle.h"
#include "CycleBricks.h"

namespace frigana {

namespace {

constexpr Check noHeat{204201, "Error: Heat Transfer in Intermediate Heat Exchanger was less or equal of zero!"};
constexpr Check noDifference{204202, "Error: Condenser temperature  was less than or equal to evaporator temperature!"};

// Parameters of the high circuit that the low one determines.
constexpr int evaporatingLevelOf = 1;
constexpr int capacityOf = 6;
constexpr int evaporatorCapacityGiven = 3;
enum IntermediateSetting { approachGiven = 1, temperatureGiven = 2 };

void overallRows(const CoupledSystem& system, const Text255& highFile, const Text255& lowFile, ResultWriter& writer) {
    Text255 highFluid, lowFluid;
    DATARECOVERS(highFile, BasicCycleLines::fluid, highFluid);
    DATARECOVERS(lowFile, BasicCycleLines::fluid, lowFluid);
    const double QE = resultValue(lowFile, system.evaporator);
    const double QC = resultValue(highFile, BasicCycleLines::condenser);
    const double W = resultValue(highFile, BasicCycleLines::power) + resultValue(lowFile, system.power);
    const double coolingCOP = QE / W;

    writer.circuit("System");
    writer.heading("OVERALL PARAMETERS");
    writer.text("Fluid of the high temperature circuit", highFluid.trimmed());
    writer.text("Fluid of the low temperature circuit", lowFluid.trimmed());
    writer.value("Capacity of the system", "kW", QE);
    writer.value("Heat rejected by the system", "kW", QC);
    writer.value("Total power", "kW", W);
    writer.value("COP of cooling", "-", coolingCOP);
    writer.value("EER of cooling", "Btu/(W h)", energyEfficiencyRatio(coolingCOP));
    writer.value("COP of heating", "-", QC / W);
    writer.value("Mean evaporating temperature of the low temperature circuit", "K",
                 resultValue(lowFile, system.evaporatingT));
    writer.value("Mean condensing temperature of the high temperature circuit", "K",
                 resultValue(highFile, BasicCycleLines::condensingT));
}

}  // namespace

double resultValue(const Text255& path, int line) {
    double value = 0.0;
    DATARECOVERY(path, line, value);
    return value;
}

void copySecondCircuit(ResultWriter& writer, std::string_view name, const Text255& path, int lines) {
    writer.circuit({});
    writer.blankLine();
    writer.blankLine();
    ResultCopy source(path, 2);
    writer.circuit(name);
    writer.copyLines(source, lines);
    source.close();
}

void solveCoupled(const CoupledSystem& system, SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2,
                  const CYCLEIN& cycle2, const Text255& FILEOUT) {
    const Text255 highFile = scratchPath("temporal1.txt");
    const Text255 lowFile = scratchPath("temporal2.txt");

    system.solveLow(substance2, cycle2, lowFile);
    const double QI = resultValue(lowFile, system.condenser);
    refuseIf(QI <= 0.0, noHeat);
    const double TI = (resultValue(lowFile, system.graphBubbleT) + resultValue(lowFile, system.graphDewT)) / 2.0;

    const Parameter setting = parameter(cycle2, system.setting);
    cycle1.TDAT[evaporatingLevelOf] = 1;
    cycle1.VDAT[evaporatingLevelOf] = setting.option == approachGiven ? TI - setting.value : setting.value;
    refuseIf(TI <= cycle1.VDAT[evaporatingLevelOf], noDifference);
    cycle1.TDAT[capacityOf] = evaporatorCapacityGiven;
    cycle1.VDAT[capacityOf] = QI;
    SOLBASICCYCLE(substance1, cycle1, highFile);

    ResultCopy high(highFile, 1);
    ResultWriter writer(FILEOUT, 3);
    writer.circuit("High temperature circuit");
    writer.copyLines(high, BasicCycleLines::all);
    high.close();
    copySecondCircuit(writer, system.lowName, lowFile, system.lines);
    writer.circuit({});
    writer.blankLine();
    writer.blankLine();
    overallRows(system, highFile, lowFile, writer);
    writer.close();
    deleteScratch(highFile);
    deleteScratch(lowFile);
}

}  // namespace frigana
