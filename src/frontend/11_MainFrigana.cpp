#include "11_MainFrigana.h"

#include "13_ReadInputData.h"
#include "14_ErrorControl.h"
#include "21_InitSubstance.h"
#include "45_LineSizing.h"
#include "54_Find_Refigerant.h"
#include "Message.h"
#include "ModelTags.h"
#include "Operations.h"
#include "Platform.h"
#include "RunLock.h"
#include "ScratchFiles.h"
#include "TextFile.h"
#include "Trap.h"

namespace frigana {

namespace {

// A field that a request does not give keeps the value of the request before.
SUBSTANCE substance1, substance2;
CYCLEIN cycle1, cycle2;
PROPREQ propertyRequest;
Text255 FILEIN, FILEOUT;
Text255 resultFolder;  // blank: beside the request

constexpr int storeNewMixture = 7;
constexpr int lineSizing = 5;

// What an earlier run has left under the name of a result must never be taken for the answer of this one.
void clearOldResult(const Text255& path) {
    if (!clearFile(path.view())) fileError(path.view(), "the old result cannot be removed");
}

void refuseNull(std::string_view path) {
    if (path.find('\0') != std::string_view::npos) fileError(path, "a path holds no null character");
}

// Beside the request with the same base name, or with that name in the folder of the results.
void nameResult(std::string_view base) {
    base = trimRight(base);
    if (resultFolder.blank()) {
        message(FILEOUT, base, ".fo1");
        return;
    }
    base.remove_prefix(static_cast<std::size_t>(lastSeparator(base)));
    const std::string_view folder = resultFolder.trimmed();
    const bool closed = lastSeparator(folder) == static_cast<int>(folder.size());
    message(FILEOUT, folder, closed ? "" : "/", base, ".fo1");
    if (!FILEOUT.trimmed().ends_with(".fo1")) fileError(FILEOUT.trimmed(), "the path has more than 255 characters");
}

// A missing request deletes nothing.
void refuseMissing(const Text255& path) {
    constexpr int unit = 1;
    if (!openForReading(unit, path.view())) fileError(path.view(), "the request cannot be read");
    closeUnit(unit);
}

void runPropertyRequest(int sub) {
    int stepFlag = 0;
    READINPUTPROPS(FILEIN, substance1, propertyRequest, stepFlag);
    INITSUBSTANCE(substance1);
    CHECKREF_PROPERTIES(substance1);
    // Setting up wrote over the record: it shall stand as the request gave it.
    READINPUTPROPS(FILEIN, substance1, propertyRequest, stepFlag);

    if (sub == storeNewMixture) {
        message(FILEOUT, ADDRESS.slice(1, lastSeparator(ADDRESS.view())), "mixtures\\", substance1.MIXNAME.trimmed(),
                ".mix");
        if (!FILEOUT.trimmed().ends_with(".mix")) fileError(FILEOUT.trimmed(), "the path has more than 255 characters");
    }
    for (const PropertyOperation& operation : propertyOperations) {
        if (operation.sub != sub) continue;
        const auto tool = operation.limits != nullptr && stepFlag == 0 ? operation.limits : operation.tool;
        tool(substance1, propertyRequest, FILEOUT);
    }
}

void runCycleRequest(int sub) {
    for (const CycleOperation& operation : cycleOperations) {
        if (operation.sub != sub) continue;
        switch (operation.reader) {
            case CycleReader::oneFluid:
                READINPUTCYCLE(FILEIN, substance1, cycle1);
                break;
            case CycleReader::combined:
                READINPUTCOMBINED(FILEIN, substance1, cycle1, substance2, cycle2);
                break;
            case CycleReader::cascade:
                READINPUTCASCADE(FILEIN, substance1, cycle1, substance2, cycle2);
                break;
            case CycleReader::pumped:
                READINPUTPUMPED(FILEIN, substance1, cycle1, substance2, cycle2);
                break;
        }
        if (sub == lineSizing && isFirstRun(cycle1)) clearOldResult(firstRunPath(FILEOUT));
        if (operation.check != nullptr) operation.check(cycle1);
        if (operation.checkTwo != nullptr) operation.checkTwo(cycle1, cycle2);
        if (operation.solve != nullptr)
            operation.solve(substance1, cycle1, FILEOUT);
        else
            operation.solveTwo(substance1, cycle1, substance2, cycle2, FILEOUT);
    }
}

void run(void*) {
    FNDFLDFLAG = 'N';
    int position = 0;
    MYFINDFI1(FILEIN, position);
    if (position == 0) fileError(FILEIN.view(), "the path of a request has the extension .fi1");
    FILEIN.assign(FILEIN.slice(1, position));
    refuseNull(FILEIN.trimmed());
    refuseNull(ADDRESS.slice(1, lastSeparator(ADDRESS.view())));

    nameResult(FILEIN.slice(1, position - 4));
    ERRORFILEOUT = FILEOUT;
    runReport.resultPath = FILEOUT;
    TEMPORALFILEOUT = FILEOUT;
    temporalLength = lastSeparator(TEMPORALFILEOUT.view());
    TEMPORALFILEOUT.assign(TEMPORALFILEOUT.slice(1, temporalLength));

    refuseMissing(FILEIN);
    clearOldResult(FILEOUT);
    int type = 0, sub = 0;
    READINPUTTYPE(FILEIN, type, sub);
    runReport.type = type;
    runReport.sub = sub;
    // What no table names falls through and leaves no result.
    if (type == 1) runPropertyRequest(sub);
    if (type == 2) runCycleRequest(sub);
}

}  // namespace

void runRequest(std::string_view requestPath, std::string_view installationPath, std::string_view folder) {
    const bool leftBehind = beginRun();
    if (leftBehind) {
        forgetContained();
        abandonAllUnits();
        releaseScratchFolder();
        // The fluid may be half set up.
        modelTags.LFORCESETUP = true;
    }
    runReport = {};
    FILEIN = requestPath;
    ADDRESS = installationPath;
    resultFolder = folder;
    const bool returned = runContained(run, nullptr);
    if (!returned && runReport.end == RunEnd::returned) {
        constexpr std::string_view text = "frigana: an integer was divided by zero in the calculation";
        writeStandardError(text);
        writeStandardError("\n");
        runReport.end = RunEnd::runtimeError;
        runReport.HERR = text;
        modelTags.LFORCESETUP = true;  // the engine was left in the middle of a calculation
    }
    abandonAllUnits();
    releaseScratchFolder();
    endRun();
}

void clearRecords() {
    const bool leftBehind = beginRun();
    static_cast<void>(leftBehind);
    substance1 = substance2 = {};
    cycle1 = cycle2 = {};
    propertyRequest = {};
    endRun();
}

}  // namespace frigana
