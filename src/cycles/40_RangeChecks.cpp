#include "40_RangeChecks.h"

#include <span>

#include "14_ErrorControl.h"
#include "Message.h"

namespace frigana {

using namespace requestchecks;

bool ISOUTI(int value, int lower, int upper) {
    return value < lower || value > upper;
}

bool ISOUTR(double value, float lower, float upper) {
    return value < static_cast<double>(lower) || value > static_cast<double>(upper);
}

namespace {

constexpr RequestCheck allChecks[] = {
    {1, basicCycleRows},
    {2, exchangerCycleRows},
    {3, combinedMediumRows, combinedLowRows},
    {4, cascadeHighRows, cascadeLowRows},
    {5, lineSizingRows},
    {6, rankineRows},
    {7, transcriticalRows},
    {9, liquidInjectionRows},
    {10, twoStageRows},
    {11, multiStageRows, {}, multiStageStageRows},
    {12, minimalCycleRows},
    {13, pumpedCO2HighRows, pumpedCO2LowRows},
    {14, boosterRows},
};

constexpr int stageCountIndex = 16;  // TDAT(16) is the number of stages, and stage 1 follows behind it
constexpr int codesPerStage = 10;

bool isIn(const OptionRange& range, int option) {
    return range.first > 0 && !ISOUTI(option, range.first, range.last);
}

bool applies(const CheckRow& row, const CYCLEIN& record) {
    for (const Condition& condition : row.onlyIf) {
        if (condition.index > 0 && ISOUTI(record.TDAT[condition.index], condition.first, condition.last)) return false;
    }
    return true;
}

bool isOut(double value, const Limits& limits) {
    switch (limits.kind) {
        case Limits::closed:
            return ISOUTR(value, limits.lower, limits.upper);
        case Limits::open:  // a value that is not a number is inside here too
            return value <= static_cast<double>(limits.lower) || value >= static_cast<double>(limits.upper);
        default:
            return false;
    }
}

// What a row says about its parameter at position k of the record.
Refusal::Kind verdict(const CheckRow& row, const CYCLEIN& record, int k) {
    if (!applies(row, record)) return Refusal::none;
    if (!record.TDAT.holds(k)) return Refusal::beyondRecord;
    const int option = record.TDAT[k];
    if (ISOUTI(option, row.options.first, row.options.last) || isIn(row.refused, option)) return Refusal::option;
    if (option <= mostOptions && isOut(record.VDAT[k], row.limits.byOption[option - 1])) return Refusal::value;
    return Refusal::none;
}

void composeText(Text255& composed, std::string_view text, int number) {
    const auto gap = text.find(stageNumberGap);
    if (gap == std::string_view::npos) {
        composed = text;
    } else {
        message(composed, text.substr(0, gap), Integer{2, number}, text.substr(gap + stageNumberGap.size()));
    }
}

// Walks the rows of one record. Rows of a stage stand at base + index, and their codes rise with the stage.
Refusal walk(std::span<const CheckRow> rows, const CYCLEIN& record, int recordNumber, int base = 0, int stage = 1) {
    Refusal refusal;
    for (const CheckRow& row : rows) {
        const int k = base + row.index;
        refusal.kind = verdict(row, record, k);
        if (refusal.kind == Refusal::none) continue;
        refusal.record = recordNumber;
        refusal.parameter = k;
        refusal.name = row.name;
        const int codeShift = codesPerStage * (stage - 1);
        if (refusal.kind == Refusal::option) {
            refusal.code = row.optionCode + codeShift;
            composeText(refusal.text, row.optionText, k);
        } else if (refusal.kind == Refusal::value) {
            refusal.code = row.valueCode + codeShift;
            composeText(refusal.text, row.valueText, stage);
        }
        break;
    }
    return refusal;
}

Refusal walkAll(const RequestCheck& check, const CYCLEIN& first, const CYCLEIN& second) {
    Refusal refusal = walk(check.first, first, 1);
    if (refusal.kind == Refusal::none) refusal = walk(check.second, second, 2);
    if (check.stage.empty()) return refusal;
    const int stages = first.TDAT[stageCountIndex];
    for (int stage = 1; stage < stages && refusal.kind == Refusal::none; ++stage) {
        const int base = stageCountIndex + static_cast<int>(check.stage.size()) * (stage - 1);
        refusal = walk(check.stage, first, 1, base, stage);
    }
    return refusal;
}

void endAtRefusal(const Refusal& refusal) {
    if (refusal.kind == Refusal::beyondRecord) {
        Text255 problem;
        message(problem, "the stages ask for parameter ", Integer{2, refusal.parameter}, ", a record holds ",
                Integer{2, mostParameters});
        fileError("cycle request", problem.trimmed());
    }
    if (refusal.kind == Refusal::none) return;
    runReport.record = refusal.record;
    runReport.parameter = refusal.parameter;
    runReport.parameterName = refusal.name;
    ERRORCONTROL(refusal.code, refusal.text);
}

}  // namespace

std::span<const RequestCheck> requestChecks() {
    return allChecks;
}

Refusal firstRefusal(int reqsub, const CYCLEIN& first, const CYCLEIN& second) {
    for (const RequestCheck& check : allChecks) {
        if (check.reqsub == reqsub) return walkAll(check, first, second);
    }
    return {};
}

Refusal firstRefusal(int reqsub, const CYCLEIN& only) {
    return firstRefusal(reqsub, only, only);
}

void RANGECHECKS0201(const CYCLEIN& first) {
    endAtRefusal(firstRefusal(1, first));
}

void RANGECHECKS0202(const CYCLEIN& first) {
    endAtRefusal(firstRefusal(2, first));
}

void RANGECHECKS0203(const CYCLEIN& first, const CYCLEIN& second) {
    endAtRefusal(firstRefusal(3, first, second));
}

void RANGECHECKS0204(const CYCLEIN& first, const CYCLEIN& second) {
    endAtRefusal(firstRefusal(4, first, second));
}

void RANGECHECKS0205(const CYCLEIN& first) {
    endAtRefusal(firstRefusal(5, first));
}

void RANGECHECKS0206(const CYCLEIN& first) {
    endAtRefusal(firstRefusal(6, first));
}

void RANGECHECKS0207(const CYCLEIN& first) {
    endAtRefusal(firstRefusal(7, first));
}

void RANGECHECKS0209(const CYCLEIN& first) {
    endAtRefusal(firstRefusal(9, first));
}

void RANGECHECKS0210(const CYCLEIN& first) {
    endAtRefusal(firstRefusal(10, first));
}

void RANGECHECKS0211(const CYCLEIN& first) {
    endAtRefusal(firstRefusal(11, first));
}

void RANGECHECKS0212(const CYCLEIN& first) {
    endAtRefusal(firstRefusal(12, first));
}

void RANGECHECKS0213(const CYCLEIN& first, const CYCLEIN& second) {
    endAtRefusal(firstRefusal(13, first, second));
}

void RANGECHECKS0214(const CYCLEIN& first) {
    endAtRefusal(firstRefusal(14, first));
}

}  // namespace frigana
