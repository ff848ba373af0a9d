// Runs a request whole and judges what came of it, by what must hold of every answer whatever was asked.
#pragma once

#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>

#include "11_MainFrigana.h"
#include "14_ErrorControl.h"
#include "Operations.h"
#include "Platform.h"
#include "ResultWriter.h"
#include "TextFile.h"
#include "TimeLimit.h"

namespace frigana::fuzz {

// A folder with an installation of its own: requests that store a blend write there.
class OwnFolder {
  public:
    explicit OwnFolder(const std::string& data) {
        namespace fs = std::filesystem;
        folder_ = fs::temp_directory_path() / ("frigana-whole-" + std::to_string(getpid()));
        fs::create_directories(folder_ / "installed/mixtures");
        fs::create_directory_symlink(data + "/fluids", folder_ / "installed/fluids");
        for (const auto& entry : fs::directory_iterator(data + "/mixtures"))
            fs::create_symlink(entry.path(), folder_ / "installed/mixtures" / entry.path().filename());
        fs::current_path(folder_);
    }
    ~OwnFolder() {
        std::error_code ignored;
        std::filesystem::current_path("/", ignored);
        std::filesystem::remove_all(folder_, ignored);
    }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;
    std::string request() const { return (folder_ / "plant.fi1").string(); }
    std::string installation() const { return (folder_ / "installed/frigana").string(); }

  private:
    std::filesystem::path folder_;
};

struct Verdict {
    std::string cause;  // how the run ended, for a summary
    std::string wrong;  // what must not be; empty if all is well
};

class RunOracle {
  public:
    Verdict run(const std::string& request, const std::string& installation) {
        *this = RunOracle();
        listenToResult([](void* context, const ResultEntry& entry) { static_cast<RunOracle*>(context)->hear(entry); },
                       this);
        const ProcessorTime time;
        runRequest(request, installation);
        const bool tooLong = time.tooLong();
        const double seconds = time.seconds();
        listenToResult(nullptr, nullptr);
        Verdict verdict = judge();
        if (firstFreeUnit(1) != 1) verdict.wrong = "a unit is open";
        if (tooLong) verdict.wrong = "it took " + std::to_string(seconds) + " s";
        return verdict;
    }

  private:
    void hear(const ResultEntry& entry) {
        if (entry.kind == ResultEntry::Kind::start) {
            *this = RunOracle();
            return;
        }
        last_ = entry.line;
        if (entry.kind != ResultEntry::Kind::value) return;
        if (!std::isfinite(entry.value)) finite_ = false;
        const bool missing = entry.value == missingValue;
        if (entry.section == "PERFORMANCE PARAMETERS")
            performanceMissing_ = performanceMissing_ || missing;
        else
            anyMissing_ = anyMissing_ || missing;
        addToBalance(entry);
    }

    // The heats and powers of the devices of a circuit, into the fluid. What one device of it gives to another, an
    // exchanger or a throttle, is in neither.
    void addToBalance(const ResultEntry& entry) {
        if (entry.unit != "kW" || !entry.group.empty() || entry.section == "PERFORMANCE PARAMETERS") return;
        const auto of = [&](std::string_view device) { return entry.section.find(device) != std::string_view::npos; };
        double sign = 0.0;
        if (entry.name == "Heat gain") sign = 1.0;
        if (entry.name == "Heat loss") sign = -1.0;
        if (entry.name == "Capacity") sign = of("EVAPORATOR") || of("BOILER") ? 1.0 : -1.0;
        if (entry.name == "Power") sign = of("TURBINE") ? -1.0 : 1.0;
        if (sign == 0.0) return;
        Balance& balance = balances_[std::string(entry.circuit)];
        balance.sum += sign * entry.value;
        balance.largest = std::fmax(balance.largest, std::fabs(entry.value));
    }

    Verdict judge() const {
        const std::string path(runReport.resultPath.trimmed());
        const bool exists = fileExists(path);
        const std::string name(operationName(runReport.type, runReport.sub));
        switch (runReport.end) {
            case RunEnd::runtimeError:
                return {"cannot be read", exists ? "a result of a run that ended in an error" : ""};
            case RunEnd::refused:
                return {name + " refused " + std::to_string(runReport.IERR), isForm(path) ? "" : "no failure form"};
            case RunEnd::returned:
                break;
        }
        if (name.empty()) return {"no operation", exists ? "a result of no operation" : ""};
        return {name + " done", exists ? ofSuccess(path) : "no result"};
    }

    static bool isForm(const std::string& path) {
        std::ifstream file(path);
        int zero = -1, code = 0;
        return static_cast<bool>(file >> zero >> code) && zero == 0 && code == runReport.IERR;
    }

    std::string ofSuccess(const std::string& path) const {
        constexpr int storeNewMixture = 7;
        if (runReport.type == 1 && runReport.sub == storeNewMixture) return "";
        std::ifstream file(path);
        int lines = 0;
        for (std::string line; std::getline(file, line);) ++lines;
        // Lines that hold the place of another tool are not told.
        if (lines < last_) return "the result has " + std::to_string(lines) + " lines, not " + std::to_string(last_);
        if (!finite_) return "a figure that is not finite";
        if (runReport.type != 2) return "";
        // Some figures of a combined system and reserved ones of a cycle with liquid injection are missing by design.
        // The heat that subcools the liquid of a combined system, and that of the lines of an injected flow, stand
        // nowhere.
        constexpr int combined = 3, liquidInjection = 9, twoStage = 10, multiStage = 11;
        constexpr double closed = 1e-6;  // of the largest of them; the figures have all their digits
        const bool told = runReport.sub != combined && runReport.sub != twoStage && runReport.sub != multiStage;
        for (const auto& [circuit, balance] : balances_)
            if (told && !anyMissing_ && std::fabs(balance.sum) > closed * balance.largest)
                return "the first law is open by " + std::to_string(balance.sum / balance.largest);
        const bool all = runReport.sub != combined && runReport.sub != liquidInjection;
        if (all && performanceMissing_ && !anyMissing_)
            return "a figure of performance is missing although no state failed";
        return "";
    }

    int last_ = 0;
    bool finite_ = true, performanceMissing_ = false, anyMissing_ = false;
    struct Balance {
        double sum = 0.0, largest = 0.0;
    };
    std::map<std::string, Balance> balances_;
};

}  // namespace frigana::fuzz
