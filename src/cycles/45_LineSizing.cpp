#include "45_LineSizing.h"

#include <algorithm>
#include <cmath>

#include "14_ErrorControl.h"
#include "23_SpecificPoints.h"
#include "26_SaturatTempDrop.h"
#include "41_BasicCycle.h"
#include "CycleBricks.h"
#include "Platform.h"
#include "ResultWriter.h"

namespace frigana {

// ---- one pipe -------------------------------------------------------------------------------------------------------

namespace {

// Single-precision constants; they count in the last digits of a size.
constexpr double quarterPi = static_cast<double>(0.7854f);
constexpr double gravity = static_cast<double>(9.81f);  // m/s2
// 4/pi, each with the quarter of pi of its place.
constexpr double fourOverPiOfVelocity = 1.2738852500915527;
constexpr double fourOverPiOfLimit = 1.273240566253662;

// Churchill 1977: f is an eighth of Darcy's factor raised to the weight 12.
double frictionFactor(double Re, double relativeRoughness) {
    const double B = std::pow(37530.0 / Re, 16.0);
    const double A = std::pow(-static_cast<double>(2.457f) * std::log(std::pow(7.0 / Re, static_cast<double>(0.9f)) +
                                                                      static_cast<double>(0.27f) * relativeRoughness),
                              16.0);
    return std::pow(std::pow(8.0 / Re, 12.0) + 1.0 / std::pow(A + B, 1.5), static_cast<double>(0.08333f));
}

}  // namespace

void PIPING_MRDM(const PipeFlow& flow, const PipeRun& run, double D, double& v, double& dp) {
    const double rho = flow.rho;
    v = flow.m / (rho * quarterPi * (D * D));
    if (flow.mu == missingValue) {
        dp = missingValue;
        return;
    }
    const double Re = (rho * v * D / flow.mu) * 1000000.0;
    const double f = frictionFactor(Re, run.eps / D);
    dp = 8.0 * f * (run.L / D) * (rho / 2.0) * (v * v) + (rho / 2.0) * (2.0 * run.n) * (v * v) + rho * gravity * run.h;
    dp = dp / 1000.0;
}

void PIPING_MRDP(const PipeFlow& flow, const PipeRun& run, const VelocityRange& velocity, double& t, double& D,
                 double& v) {
    constexpr int mostPasses = 10;
    constexpr double firstDiameter = static_cast<double>(0.0127f);
    constexpr double firstProbe = static_cast<double>(0.01f);
    constexpr double smallestDiameter = static_cast<double>(0.0005f);
    constexpr double flat = static_cast<double>(0.1f);  // kPa: the probe no longer changes the loss
    constexpr double accepted = 1.0;                    // kPa

    double d = firstDiameter;
    double s = firstProbe;
    double p = 0.0;
    PIPING_MRDM(flow, run, d, v, p);
    // Without a viscosity there is no loss to search by.
    for (int pass = 1; pass <= mostPasses && p != missingValue; ++pass) {
        s = s / 2.0;
        const double d1 = d + s;
        double p1 = 0.0;
        PIPING_MRDM(flow, run, d1, v, p1);
        if (std::fabs(p1 - p) < flat) break;
        const double slope = (d1 - d) / (p1 - p);
        d = slope * t + (d - slope * p);
        if (d < 0.0) d = smallestDiameter;
        PIPING_MRDM(flow, run, d, v, p);
    }
    if (p != missingValue && std::fabs(t - p) <= accepted) {
        D = d;
        return;
    }
    const double mean = (velocity.vmin + velocity.vmax) / 2.0;
    D = std::sqrt((flow.m / (flow.rho * mean)) * fourOverPiOfVelocity);
    PIPING_MRDM(flow, run, D, v, t);
}

// ---- the pipes of a line --------------------------------------------------------------------------------------------

namespace {

double saturationDropOf(const SUBSTANCE& substance, double P, double loss, int phase) {
    if (loss == missingValue) return missingValue;
    double drop = 0.0;
    SATTEMPDROP_DP(substance, P, loss, phase, drop);
    return drop;
}

}  // namespace

void SOLTUBES(int option, const PipeFlow& flow, const PipeRun& run, double value, const SUBSTANCE& substance, double P,
              int phase, int material, int wallOption, const VelocityRange& velocity, PIPEOPT& record) {
    constexpr int diameterGiven = 3;
    constexpr int widest = 6;
    static constinit PIPEOPT limit{};

    double D = value;
    if (option == diameterGiven) {
        PIPING_MRDM(flow, run, D, record.VEL[wantedPipe], record.DP[wantedPipe]);
    } else {
        double loss = 0.0;
        SATTEMPDROP_DTSAT(substance, P, value, phase, loss);
        PIPING_MRDP(flow, run, velocity, loss, D, record.VEL[wantedPipe]);
        record.DP[wantedPipe] = loss;
    }
    record.DTSAT[wantedPipe] = saturationDropOf(substance, P, record.DP[wantedPipe], phase);
    PIPING_NEIGHBORS(material, wallOption, D, record);

    // The widest pipe on offer still keeps the lowest velocity.
    const double limitD = std::sqrt(fourOverPiOfLimit * (flow.m / (flow.rho * velocity.vmin)));
    PIPING_NEIGHBORS(material, wallOption, limitD, limit);
    record.DEXT[widest] = limit.DEXT[2];
    record.DINT[widest] = limit.DINT[2];
    record.NOMI[widest] = limit.NOMI[2];

    for (int i : {1, 2, 4, 5, 6}) {
        PIPING_MRDM(flow, run, record.DINT[i], record.VEL[i], record.DP[i]);
        record.DTSAT[i] = saturationDropOf(substance, P, record.DP[i], phase);
    }

    // At the ends of the table the same size stands in several places.
    const auto clearRepeat = [&](int i, int of) {
        if (record.DEXT[i] == record.DEXT[of]) clearPipe(record, i);
    };
    clearRepeat(1, 2);
    clearRepeat(2, 3);
    clearRepeat(5, 4);
    clearRepeat(4, 3);
}

// ---- the two runs ---------------------------------------------------------------------------------------------------

namespace {

constexpr int runSetting = 30;
constexpr int firstRun = 1;  // its option; 2 is the second
constexpr Check otherPlant{205201,
                           "Error: The first run was that of another plant: its title or fluid is another one!"};

// Parameters and lines of one of the three lines of the plant. Line 1 of a section is its heading.
struct Line {
    int number;          // for its velocities
    int setting;         // parameter of its pressure change; those of the pipe follow one another
    int pipe;            // parameter of its material and wall
    int picked;          // parameter of the option picked
    int phase;           // side of the dome
    int inletP, inletH;  // lines in the result of the basic cycle
    int outletP, outletH;
    int options;  // line of the first option in the result
    std::string_view full, partial;
};
constexpr Line lines[] = {
    {1, 5, 16, 31, dewSide, 27, 30, 34, 37, 287, "OPTIONS FOR SUCTION LINE (Condition:Full Load)",
     "OPTIONS FOR SUCTION LINE (Condition:Partial Load)"},
    {2, 10, 20, 32, dewSide, 68, 71, 75, 78, 361, "OPTIONS FOR DISCHARGE LINE (Condition:Full Load)",
     "OPTIONS FOR DISCHARGE LINE (Condition:Partial Load)"},
    {3, 15, 24, 33, bubbleSide, 110, 113, 117, 120, 435, "OPTIONS FOR LIQUID LINE (Condition:Full Load)",
     "OPTIONS FOR LIQUID LINE (Condition:Partial Load)"},
};
constexpr int lineCount = 3;
constexpr int linesPerOption = 6;
constexpr int lossOfOption = 3;  // lines behind its diameter

constexpr int mostWallOptions = 3, mostFittings = 200;

constexpr int massFlowLine = 148, sweptVolumeLine = 156;  // of the basic cycle
constexpr int basicCycleLines = 283;

struct LinePipes {
    PIPEOPT full, partial;
};
LinePipes pipes[lineCount];

CYCLEIN work;

bool isSized(const CYCLEIN& cycle, const Line& line) {
    return cycle.TDAT[line.setting] >= 3;
}

double recovered(const Text255& path, int line) {
    double value = 0.0;
    DATARECOVERY(path, line, value);
    return value;
}

// The cycle without pressure drops in the lines.
void setFirstRun() {
    for (const Line& line : lines) {
        work.TDAT[line.setting] = 1;
        work.VDAT[line.setting] = 0.0;
    }
}

bool sameLetters(std::string_view a, std::string_view b) {
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return upper(x) == upper(y); });
}

// The first run of another plant would be taken for this one's: title and fluid tell them apart.
void refuseOtherPlant(const SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& firstResult) {
    constexpr int titleLine = 3, fluidLine = 4, columns = 80;
    Text255 title, fluid;
    DATARECOVERS(firstResult, titleLine, title);
    DATARECOVERS(firstResult, fluidLine, fluid);
    // Copied once, a line has two blanks in front, and the 80 columns that are read hold the rest of it.
    FixedText<columns> written;
    written.assign(3, columns, cycle.TITLE.view());
    std::string_view name = fluid.trimmed();
    name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
    name = name.substr(0, name.find(' '));
    refuseIf(title.trimmed() != written.trimmed() || !sameLetters(name, substance.REFSNAME[1].trimmed()), otherPlant);
}

// The cycle with the losses of the pipes picked and the swept volume of the first run.
void setSecondRun(const SUBSTANCE& substance, CYCLEIN& cycle, const Text255& firstResult) {
    if (!fileExists(firstResult.view()))
        fileError(firstResult.view(), "is missing; the first run (option 1 of parameter 30) writes it");
    refuseOtherPlant(substance, cycle, firstResult);
    for (const Line& line : lines) {
        if (!isSized(work, line)) continue;
        const int option = line.options + linesPerOption * (cycle.TDAT[line.picked] - 1);
        work.TDAT[line.setting] = 1;
        work.VDAT[line.setting] = recovered(firstResult, option + lossOfOption);
        cycle.TDAT[line.setting] = 3;
        cycle.VDAT[line.setting] = recovered(firstResult, option);
    }
    work.TDAT[6] = 1;
    work.VDAT[6] = recovered(firstResult, sweptVolumeLine);
}

// Whole part of a parameter. The check of the request lets a value pass that is not a number: it counts as the lowest.
int wholePart(double value, int lowest, int highest) {
    if (!(value >= lowest)) return lowest;
    return value < highest ? static_cast<int>(value) : highest;
}

// State at an end of a line. A saturated one comes back from its printed pressure and enthalpy two-phase by a hair, and
// two phases have no viscosity: then it is the saturated state itself.
void pipeState(const SUBSTANCE& substance, double P, double H, int phase, STATEPT& state) {
    constexpr double hair = 1e-6;
    const double saturated = phase == bubbleSide ? 0.0 : 1.0;
    PROPSIMPLEPH(substance, P, H, state);
    if (std::fabs(state.Q - saturated) <= hair) PROPSIMPLEPQ(substance, P, saturated, state);
}

void sizeLine(const SUBSTANCE& substance, const CYCLEIN& cycle, const Line& line, const Text255& solution,
              LinePipes& sized) {
    static constinit STATEPT inlet{}, outlet{};
    const double P = recovered(solution, line.inletP);
    pipeState(substance, P, recovered(solution, line.inletH), line.phase, inlet);
    pipeState(substance, recovered(solution, line.outletP), recovered(solution, line.outletH), line.phase, outlet);

    // A line of which an end could not be computed keeps its table without values.
    if (inlet.D == missingValue || outlet.D == missingValue) return;

    const int material = cycle.TDAT[line.pipe];
    const int wallOption = wholePart(cycle.VDAT[line.pipe], 1, mostWallOptions);
    const bool counted = cycle.TDAT[line.pipe + 3] == 1;
    const double fittings = cycle.VDAT[line.pipe + 3];
    const PipeRun run{pipeRoughness(material), cycle.VDAT[line.pipe + 1], cycle.VDAT[line.pipe + 2],
                      counted ? wholePart(fittings, 0, mostFittings) : 0, counted ? 0.0 : fittings};
    const int receiver = cycle.TDAT[28] == 1 ? 1 : 0;
    VelocityRange velocity{};
    PIPE_VLIMITS(line.number, run.h, receiver, velocity.vmin, velocity.vmax);

    const bool viscous = inlet.ETA != missingValue && outlet.ETA != missingValue;
    PipeFlow flow{recovered(solution, massFlowLine), (inlet.D + outlet.D) / 2.0,
                  viscous ? (inlet.ETA + outlet.ETA) / 2.0 : missingValue};
    SOLTUBES(cycle.TDAT[line.setting], flow, run, cycle.VDAT[line.setting], substance, P, line.phase, material,
             wallOption, velocity, sized.full);
    flow.m = cycle.VDAT[29] * flow.m;
    SOLTUBES(3, flow, run, sized.full.DINT[wantedPipe], substance, P, line.phase, material, wallOption, velocity,
             sized.partial);
}

void writeOptions(ResultWriter& writer, std::string_view heading, const PIPEOPT& record) {
    writer.heading(heading);
    for (int i = 1; i <= pipeOptions; ++i) {
        writer.row("Option", i);
        writer.value("Inner diameter", "m", record.DINT[i]);
        writer.value("Outer diameter", "m", record.DEXT[i]);
        writer.value("Velocity", "m/s", record.VEL[i]);
        writer.value("Pressure loss", "kPa", record.DP[i]);
        writer.value("Drop of saturation temperature", "K", record.DTSAT[i]);
        writer.text("Size", record.NOMI[i].trimmed());
    }
    writer.group({});
}

void writeResult(const Text255& solution, const Text255& path) {
    runReport.resultPath = path;
    ResultCopy source(solution, 1);
    ResultWriter writer(path, 3);
    writer.copyLines(source, basicCycleLines);
    source.close();
    writer.blankLine();
    writer.blankLine();
    for (int i = 0; i < lineCount; ++i) {
        writeOptions(writer, lines[i].full, pipes[i].full);
        writeOptions(writer, lines[i].partial, pipes[i].partial);
    }
    writer.close();
}

}  // namespace

bool isFirstRun(const CYCLEIN& cycle) {
    return cycle.TDAT[runSetting] == firstRun;
}

Text255 firstRunPath(const Text255& FILEOUT) {
    Text255 path = FILEOUT;
    path[path.length()] = '0';
    return path;
}

void SOLLINESIZING(SUBSTANCE& substance, CYCLEIN& cycle, const Text255& FILEOUT) {
    for (LinePipes& line : pipes) {
        clearPipes(line.full);
        clearPipes(line.partial);
    }
    const Text255 fileA = scratchPath("temporalA.txt");
    const Text255 fileB = scratchPath("temporalB.txt");
    const Text255 firstResult = firstRunPath(FILEOUT);

    work = cycle;
    const bool first = isFirstRun(cycle);
    if (first)
        setFirstRun();
    else
        setSecondRun(substance, cycle, firstResult);
    const Text255& solution = first ? fileA : fileB;
    SOLBASICCYCLE(substance, work, solution);

    for (int i = 0; i < lineCount; ++i)
        if (isSized(cycle, lines[i])) sizeLine(substance, cycle, lines[i], solution, pipes[i]);
    writeResult(solution, first ? firstResult : FILEOUT);
    deleteScratch(fileA);
    deleteScratch(fileB);
}

}  // namespace frigana
