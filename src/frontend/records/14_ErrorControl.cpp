#include "14_ErrorControl.h"

#include <cmath>

#include "Message.h"
#include "TextFile.h"
#include "Trap.h"

namespace frigana {

Text255 ADDRESS;
Text255 TEMPORALFILEOUT;
int temporalLength = 0;
char FNDFLDFLAG = 'N';
Text255 ERRORFILEOUT;
RunReport runReport;

namespace {

constexpr int resultUnit = 1;
constexpr int longestFound = 60;  // of what stood in the file, more would bury the message

[[noreturn]] void endInRuntimeError(std::string_view line) {
    writeStandardError(line);
    runReport.end = RunEnd::runtimeError;
    runReport.HERR = line.substr(0, line.find('\n'));
    divideByZero();
}

void openResult(const Text255& path) {
    if (!openForReading(resultUnit, path.view())) fileError(path.view(), "cannot be read");
}

}  // namespace

namespace {

bool writeFailureForm(int IERR, const Text255& HERR) {
    if (!openForWriting(resultUnit, ERRORFILEOUT.view(), Writing::whole)) return false;
    writeFree(resultUnit, 0);
    writeFree(resultUnit, IERR);
    writeFree(resultUnit, HERR.view());
    return closeUnit(resultUnit);
}

// What a message quotes of a file or a path, without what would move a terminal.
void addShown(Composer& line, std::string_view text) {
    for (const char character : text) line.add(static_cast<unsigned char>(character) < ' ' ? '?' : character);
}

void addQuoted(Composer& line, std::string_view text) {
    line.add('"');
    addShown(line, text.substr(0, longestFound));
    line.add(text.size() > longestFound ? "...\"" : "\"");
}

void addPlace(Composer& line, int unit, int number) {
    line.add("frigana: ");
    addShown(line, unitPath(unit));
    line.add(", line ");
    line.add(Integer{0, number});
    line.add(": ");
}

}  // namespace

void ERRORCONTROL(int IERR, const Text255& HERR) {
    if (IERR <= 0) return;
    runReport.end = RunEnd::refused;
    runReport.IERR = IERR;
    runReport.HERR = HERR;
    runReport.resultPath = ERRORFILEOUT;
    runReport.formWritten = writeFailureForm(IERR, HERR);
    if (!runReport.formWritten) {
        FixedText<1600> text;
        Composer line(text.data(), text.size);
        line.add("frigana: ");
        addShown(line, ERRORFILEOUT.trimmed());
        line.add(": cannot be written; the request is refused: ");
        line.add(Integer{0, IERR});
        line.add(' ');
        addShown(line, HERR.trimmed());
        line.add("\n");
        writeStandardError(text.trimmed());
    }
    divideByZero();
}

[[noreturn]] void readError(int unit, std::string_view expected, std::string_view found) {
    FixedText<1600> text;
    Composer line(text.data(), text.size);
    const std::string_view problem = readProblem(unit);
    const bool beyond = found.empty() && problem.empty();
    addPlace(line, unit, lineNumber(unit) + (beyond ? 1 : 0));
    line.add("expected ");
    line.add(expected);
    line.add(", found ");
    if (!problem.empty())
        line.add(problem);
    else if (beyond)
        line.add("the end of the file");
    else
        addQuoted(line, found);
    line.add("\n");
    endInRuntimeError(text.trimmed());
}

[[noreturn]] void decimalCommaError(int unit) {
    FixedText<1600> text;
    Composer line(text.data(), text.size);
    addPlace(line, unit, lineNumber(unit));
    line.add("decimal point expected, found ");
    addQuoted(line, currentLine(unit));
    line.add("\n");
    endInRuntimeError(text.trimmed());
}

[[noreturn]] void fileError(std::string_view path, std::string_view problem) {
    FixedText<1600> text;
    Composer line(text.data(), text.size);
    line.add("frigana: ");
    addShown(line, trimRight(path));
    line.add(": ");
    line.add(problem);
    line.add("\n");
    endInRuntimeError(text.trimmed());
}

void MYNROUND(double X, int N, double& R) {
    const double whole = std::floor(X);
    // The conversion of what no 32-bit integer holds is the one that the processor makes of it.
    const int I = whole >= -2147483648.0 && whole <= 2147483647.0 ? static_cast<int>(whole) : -2147483647 - 1;
    const auto multiple = static_cast<double>(std::pow(10.0f, static_cast<float>(N)));
    R = I - std::fmod(static_cast<double>(I), multiple);
}

void DATARECOVERY(const Text255& FILEIN, int LINE, double& VALUE) {
    openResult(FILEIN);
    for (int line = 1; line < LINE; ++line)
        if (skipLine(resultUnit) != ReadStatus::ok) readError(resultUnit, "a line of a result", {});
    FreeRecord record(resultUnit);
    if (record.read(VALUE) != ReadStatus::ok) readError(resultUnit, "a number", record.offendingText());
    closeUnit(resultUnit);
}

void DATARECOVERS(const Text255& FILEIN, int LINE, Text255& RCTEXT) {
    constexpr int columns = 80;
    openResult(FILEIN);
    for (int line = 1; line < LINE; ++line)
        if (skipLine(resultUnit) != ReadStatus::ok) readError(resultUnit, "a line of a result", {});
    if (readText(resultUnit, RCTEXT, columns) != ReadStatus::ok) readError(resultUnit, "a line of text", {});
    closeUnit(resultUnit);
}

void MYFINDFI1(const Text255& STRINPUT, int& POS) {
    for (int i = 1; i <= Text255::size - 3; ++i) {
        const auto letter = [&](int offset) { return STRINPUT[i + offset]; };
        if (letter(0) == '.' && (letter(1) == 'F' || letter(1) == 'f') && (letter(2) == 'I' || letter(2) == 'i') &&
            letter(3) == '1') {
            POS = i + 3;
            return;
        }
    }
}

}  // namespace frigana
