#include "CycleRequests.h"

#include <cstdio>
#include <vector>

namespace {

struct Setting {
    int option;
    double value;
};
using Settings = std::vector<Setting>;

void append(Settings& settings, const Settings& more) {
    settings.insert(settings.end(), more.begin(), more.end());
}

// Parameters 1 to 5: evaporator and suction line.
const Settings coldSide = {{1, 268.15}, {2, 5}, {1, 0}, {2, 2}, {1, 0}};

Settings basicCycle() {
    Settings settings = coldSide;
    append(settings, {{1, 0.0028}, {1, 0.7}, {1, 0.85}, {2, 0}, {1, 0}});
    append(settings, {{1, 313.15}, {2, 3}, {1, 0}, {2, 0}, {1, 0}});
    return settings;
}

// High side of a cascade: the levels that couple it to the low side (1 and 6) are not the user's, and no check may
// look at them.
Settings cascadeHighSide() {
    Settings settings = basicCycle();
    settings[0] = {9, -5};
    settings[5] = {-9, 1e9};
    return settings;
}

Settings exchangerCycle() {
    Settings settings = coldSide;
    append(settings, {{2, 2}, {1, 0}, {1, 0.0028}, {1, 0.7}, {1, 0.85}, {2, 0}, {1, 0}, {1, 313.15}, {2, 3}, {1, 0}});
    append(settings, {{2, 0}, {1, 0}, {2, 0}, {1, 0}, {1, 0.5}, {1, 0}, {1, 0}});
    return settings;
}

Settings transcriticalCycle() {
    Settings settings = exchangerCycle();
    settings[12] = {2, 9000};
    settings[13] = {1, 308.15};
    return settings;
}

Settings firstSettings(int reqsub) {
    Settings settings = basicCycle();
    switch (reqsub) {
        case 2:
            return exchangerCycle();
        case 4:
        case 13:
            return cascadeHighSide();
        case 5:
            for (int pipe = 1; pipe <= 3; ++pipe) append(settings, {{1, 1}, {1, 10}, {1, 0}, {1, 4}});
            append(settings, {{1, 0}, {1, 0.5}, {1, 0}, {1, 0}, {1, 0}, {1, 0}});
            return settings;
        case 6:  // parameters 8 and 12 do not exist in this cycle
            return {{1, 373.15}, {2, 5}, {1, 0}, {2, 0},   {1, 0}, {1, 100}, {1, 0.8}, {0, 0},   {2, 0},   {1, 0},
                    {1, 303.15}, {0, 0}, {1, 0}, {1, 0.6}, {2, 0}, {1, 0},   {1, 400}, {1, 350}, {1, 290}, {1, 300}};
        case 7:
            return transcriticalCycle();
        case 9:
            append(settings, {{1, 353.15}, {2, 0}, {1, 0}});
            return settings;
        case 10:  // parameter 24 is not used, 25 is not checked
            settings = coldSide;
            append(settings, {{1, 0.0028}, {1, 0.7}, {1, 0.85}, {1, 0.7}, {1, 0.85}, {2, 0}, {1, 0}, {1, 313.15}});
            append(settings, {{2, 3}, {1, 0}, {2, 0}, {1, 0}, {1, 5}, {1, 10}, {1, 0}, {1, 0}, {1, 0}, {1, 0}});
            append(settings, {{0, 0}, {2, 0}});
            return settings;
        case 11:
            append(settings, {{2, 0}});
            while (settings.size() < 50) append(settings, {{2, 0}, {1, 0}, {1, 0.7}, {1, 0.85}, {2, 283.15}});
            settings.resize(50);
            return settings;
        case 12:
            return {{1, 268.15}, {2, 5}, {2, 0}, {1, 0.0028}, {1, 0.7}, {1, 313.15}, {2, 3}};
        case 14:
            settings = transcriticalCycle();
            settings[7] = {1, 50};
            append(settings, {{1, 3500}, {1, 243.15}, {2, 5}, {1, 0}, {1, 0.7}, {1, 20}, {1, 0.85}});
            return settings;
        default:
            return settings;
    }
}

Settings secondSettings(int reqsub) {
    Settings settings = basicCycle();
    switch (reqsub) {
        case 3:
            append(settings, {{2, 0}, {1, 0}, {2, 5}, {1, 0}});
            return settings;
        case 4:
            append(settings, {{1, 5}});
            return settings;
        case 13:  // parameter 6 is not checked
            return {{1, 268.15}, {2, 0}, {1, 0}, {2, 0}, {1, 0}, {-3, -1}, {1, 0.6}, {2, 0}, {2, 0}, {1, 0}, {1, 5}};
        default:
            return {};
    }
}

frigana::CYCLEIN recordOf(int reqsub, const Settings& settings) {
    frigana::CYCLEIN record{};
    record.TITLE = "Range checks";
    record.REQTYPE = 2;
    record.REQSUB = reqsub;
    record.NDAT = static_cast<int>(settings.size());
    for (int k = 1; k <= record.NDAT; ++k) {
        record.TDAT[k] = settings[static_cast<std::size_t>(k - 1)].option;
        record.VDAT[k] = settings[static_cast<std::size_t>(k - 1)].value;
    }
    return record;
}

std::string parameterLine(const frigana::CYCLEIN& record, int k) {
    char line[64];
    std::snprintf(line, sizeof line, "%d %.17g\n", record.TDAT[k], record.VDAT[k]);
    return line;
}

std::string block(const frigana::CYCLEIN& record, int parameters) {
    std::string text = "2\nRange checks\nR134A.FLD\n2 DEF\n";
    text += std::to_string(record.REQSUB) + "\n" + std::to_string(parameters) + "\n";
    for (int k = 1; k <= parameters; ++k) text += parameterLine(record, k);
    return text;
}

}  // namespace

bool hasTwoFluids(int reqsub) {
    return reqsub == 3 || reqsub == 4 || reqsub == 13;
}

void CycleRequest::set(const Change& change) {
    if (change.record == 0) return;
    record(change.record).TDAT[change.k] = change.option;
    record(change.record).VDAT[change.k] = change.value;
}

CycleRequest passingRequest(int reqsub) {
    CycleRequest request;
    request.reqsub = reqsub;
    request.first = recordOf(reqsub, firstSettings(reqsub));
    if (hasTwoFluids(reqsub)) request.second = recordOf(reqsub, secondSettings(reqsub));
    return request;
}

std::string requestText(const CycleRequest& request) {
    std::string text = block(request.first, request.first.NDAT);
    if (!hasTwoFluids(request.reqsub)) return text;
    // The setting that couples the circuits stands on a line of its own, behind two more lines of text.
    const bool coupled = request.reqsub != 3;
    const int last = request.second.NDAT;
    text += "-\nSecond circuit\n" + block(request.second, coupled ? last - 1 : last);
    if (coupled) text += "-\nIntermediate temperatures\n" + parameterLine(request.second, last);
    return text;
}
