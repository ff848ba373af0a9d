#include "13_ReadInputData.h"

#include <cmath>
#include <type_traits>

#include "14_ErrorControl.h"
#include "TextFile.h"

namespace frigana {

namespace {

constexpr int requestUnit = 1;
constexpr int titleColumns = 80;

void openRequest(const Text255& FILEIN) {
    if (!openForReading(requestUnit, FILEIN.view())) fileError(FILEIN.view(), "the request cannot be read");
}

// Texts of another kind would be met as numbers that make no sense.
void refuseOtherTexts(const Text255& FILEIN) {
    if (skipLine(requestUnit) == ReadStatus::ok) {
        const std::string_view line = currentLine(requestUnit);
        const bool marked = line.starts_with("\xFF\xFE") || line.starts_with("\xFE\xFF");
        if (marked || line.find('\0') != std::string_view::npos)
            fileError(FILEIN.view(), "the request is UTF-16; a request is plain text of single bytes, or UTF-8");
        if (line.find('\r') != std::string_view::npos)
            fileError(FILEIN.view(),
                      "the lines of the request end with a carriage return alone; a line feed is needed");
    }
    rewindUnit(requestUnit);
}

template <class Value>
bool isFinite(const Value&) {
    return true;
}
bool isFinite(double value) {
    return std::isfinite(value);
}

// A comma separates values, so that 1,5 would be 1 and what stands behind it dropped.
bool isDecimalComma(std::string_view rest) {
    while (!rest.empty() && (rest.back() == ' ' || rest.back() == '\t')) rest.remove_suffix(1);
    return rest.size() > 1 && rest[0] == ',' && rest.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

template <class... Value>
void readLine(std::string_view expected, Value&... values) {
    FreeRecord record(requestUnit);
    bool real = false;  // the last value
    const auto read = [&](auto& value) {
        real = std::is_same_v<std::remove_reference_t<decltype(value)>, double>;
        return record.read(value) == ReadStatus::ok && isFinite(value);
    };
    if (!(read(values) && ...)) readError(requestUnit, expected, record.offendingText());
    if (real && isDecimalComma(record.rest())) decimalCommaError(requestUnit);
}

void ignoreLine(std::string_view expected) {
    if (skipFilledLine(requestUnit) != ReadStatus::ok) readError(requestUnit, expected, {});
}

void ignoreFixedText(std::string_view expected) {
    if (skipLine(requestUnit) != ReadStatus::ok) readError(requestUnit, expected, {});
}

// Stops at the line of the count, before anything is stored beyond the end of an array.
void refuseAbove(int count, int most, std::string_view expected) {
    if (count > most) readError(requestUnit, expected, currentLine(requestUnit));
}

void readBlock(SUBSTANCE& substance, CYCLEIN& cycle) {
    readLine("the request type (an integer)", cycle.REQTYPE);
    if (readText(requestUnit, cycle.TITLE, titleColumns) != ReadStatus::ok)
        readError(requestUnit, "the title of the study", {});
    readLine("the name of the fluid", substance.REFSNAME[1]);
    readLine("the reference state (an integer and a code)", substance.IXREF, substance.HRF);
    readLine("the sub-type of the cycle (an integer)", cycle.REQSUB);
    readLine("the number of parameters (an integer)", cycle.NDAT);
    refuseAbove(cycle.NDAT, mostParameters, "a number of parameters up to 50");
    for (int k = 1; k <= cycle.NDAT; ++k)
        readLine("a parameter (its option, an integer, and its value)", cycle.TDAT[k], cycle.VDAT[k]);

    const auto name = substance.REFSNAME[1].trimmed();
    const char third = name.size() < 3 ? ' ' : name[name.size() - 3];
    substance.FLUIDKIND = third == 'f' || third == 'F' ? 1 : 2;
    substance.NREFS = 1;
    substance.ZTYPE = 1;
    substance.ZCOMP[1] = 1.0;
    substance.MIXNAME = substance.REFSNAME[1];
}

void readTwoBlocks(SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2, CYCLEIN& cycle2) {
    readBlock(substance1, cycle1);
    ignoreFixedText("a header line of the second cycle");
    ignoreFixedText("a header line of the second cycle");
    readBlock(substance2, cycle2);
}

void readLastParameter(CYCLEIN& cycle, int k) {
    ignoreFixedText("a header line of the intermediate setting");
    ignoreFixedText("a header line of the intermediate setting");
    readLine("the intermediate setting (its option, an integer, and its value)", cycle.TDAT[k], cycle.VDAT[k]);
}

}  // namespace

void READINPUTTYPE(const Text255& FILEIN, int& TYPE, int& SUB) {
    openRequest(FILEIN);
    refuseOtherTexts(FILEIN);
    readLine("the request type (an integer)", TYPE);
    if (TYPE == 1) {
        int names = 0;
        ignoreLine("the kind of the fluid");
        readLine("the number of names (an integer)", names);
        ignoreLine("the basis of the composition");
        for (int i = 1; i <= names; ++i) {
            ignoreLine("the name of a fluid");
            ignoreLine("the fraction of a fluid");
        }
        ignoreLine("the name of the mixture");
        ignoreLine("the reference state");
        readLine("the sub-type of the request (an integer)", SUB);
    } else if (TYPE == 2) {
        ignoreFixedText("the title of the study");
        ignoreLine("the name of the fluid");
        ignoreLine("the reference state");
        readLine("the sub-type of the cycle (an integer)", SUB);
    }
    closeUnit(requestUnit);
}

void READINPUTPROPS(const Text255& FILEIN, SUBSTANCE& substance, PROPREQ& request, int& STEPFLAG) {
    request.TABSTEP = 0.0;
    openRequest(FILEIN);
    readLine("the request type (an integer)", request.REQTYPE);
    readLine("the kind of the fluid (an integer)", substance.FLUIDKIND);
    readLine("the number of names (an integer)", substance.NREFS);
    refuseAbove(substance.NREFS, mostComponents, "a number of names up to 20");
    readLine("the basis of the composition (an integer)", substance.ZTYPE);
    for (int i = 1; i <= substance.NREFS; ++i) {
        readLine("the name of a fluid", substance.REFSNAME[i]);
        readLine("the fraction of a fluid (a number)", substance.ZCOMP[i]);
    }
    readLine("the name of the mixture", substance.MIXNAME);
    readLine("the reference state (an integer and a code)", substance.IXREF, substance.HRF);
    readLine("the sub-type of the request (an integer)", request.REQSUB);

    // The lines of the tools keep one order; those of the tools before come first.
    constexpr int firstTool = 2, lastTool = 6;
    if (request.REQSUB >= firstTool && request.REQSUB <= lastTool) {
        int ignored = 0;
        for (int tool = firstTool; tool < request.REQSUB; ++tool)
            readLine("a line of another tool, beginning with an integer", ignored);
    }
    switch (request.REQSUB) {
        case 2:
            readLine("the saturation table (an integer and three numbers)", request.SATVAR, request.TABFROM,
                     request.TABTO, request.TABSTEP);
            break;
        case 3:
            readLine("the isoproperty table (two integers and four numbers)", request.ISOVAR, request.ISOSWEEP,
                     request.ISOVALUE, request.TABFROM, request.TABTO, request.TABSTEP);
            break;
        case 4:
            readLine("the state point (twice an integer and a number)", request.PT1VAR, request.PT1VALUE,
                     request.PT2VAR, request.PT2VALUE);
            break;
        case 5:
        case 6:
            readLine("the saturation point (an integer and a number)", request.SATPTVAR, request.SATPTVALUE);
            break;
        default:
            break;
    }
    closeUnit(requestUnit);

    STEPFLAG = request.TABSTEP == 0.0 ? 0 : 1;
    const Text3 name(substance.REFSNAME[1].view());
    if (substance.NREFS == 1 && substance.FLUIDKIND == 2 && (name == "air" || name == "AIR")) substance.IXREF = 1;
}

void READINPUTCYCLE(const Text255& FILEIN, SUBSTANCE& substance, CYCLEIN& cycle) {
    openRequest(FILEIN);
    readBlock(substance, cycle);
    closeUnit(requestUnit);
}

void READINPUTCOMBINED(const Text255& FILEIN, SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2,
                       CYCLEIN& cycle2) {
    openRequest(FILEIN);
    readTwoBlocks(substance1, cycle1, substance2, cycle2);
    closeUnit(requestUnit);
}

void READINPUTCASCADE(const Text255& FILEIN, SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2,
                      CYCLEIN& cycle2) {
    openRequest(FILEIN);
    readTwoBlocks(substance1, cycle1, substance2, cycle2);
    readLastParameter(cycle2, 16);
    closeUnit(requestUnit);
}

void READINPUTPUMPED(const Text255& FILEIN, SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2,
                     CYCLEIN& cycle2) {
    openRequest(FILEIN);
    readTwoBlocks(substance1, cycle1, substance2, cycle2);
    readLastParameter(cycle2, 11);
    closeUnit(requestUnit);
}

}  // namespace frigana
