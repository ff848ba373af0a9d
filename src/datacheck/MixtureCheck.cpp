// Checks of the mixing parameters and of the mixture files.
#include <algorithm>
#include <cmath>

#include "DataCheck.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ModelTags.h"
#include "OPENFL.h"
#include "ReaderReport.h"
#include "SETUP.h"
#include "TextFile.h"
#include "UTILITY.h"

namespace frigana {

namespace {

std::string_view words(const Text255& herr) {
    const std::string_view text = herr.view();
    return trimRight(text.substr(0, text.find('\0')));
}

template <class... Piece>
void fault(FaultList& faults, int line, const Piece&... pieces) {
    Text255 text;
    message(text, pieces...);
    faults.add(line, text);
}

// What the set-up refused, with line and reason where a record is the cause.
void faultOfSetUp(FaultList& faults, int ierr, const Text255& herr) {
    if (lastRefusal.blank())
        fault(faults, 0, "set-up", FreeInteger{ierr}, ": ", words(herr));
    else
        fault(faults, 0, words(lastRefusal));
}

// The installation's fluid of a CAS number, counted from 0; -1 if there is none.
int installed(std::span<const InstalledFluid> fluids, std::string_view cas) {
    for (std::size_t k = 0; k < fluids.size() && k < mostInstalledFluids; ++k)
        if (fluids[k].cas == cas) return static_cast<int>(k);
    return -1;
}

constexpr int mixingTagsAtMost = largestRules;

class ParameterScan {
  public:
    ParameterScan(int unit, const Text255& file, std::span<const InstalledFluid> fluids, ParametersReport& report)
        : unit_(unit), file_(file), fluids_(fluids), report_(report) {}

    void run() {
        if (!next() || line_.slice(1, 3) != "HMX") return fault(report_.faults, 1, "the first line is not HMX");
        bool inPairs = false, ended = false;
        while (!ended && next()) {
            const std::string_view key = line_.slice(2, 4);
            const bool heading = line_[1] == '#' || line_[1] == '@';
            if (heading && (key == "END" || key == "end")) {
                ended = true;
            } else if (heading && key == "MXM") {
                inPairs = false;
                if (!next()) break;
                addFunction(Text3(line_.slice(1, 3)));
            } else if (heading && key == "BNC") {
                // the tag of the section, the lines of its source and the one that ends them
                if (!next() || line_.slice(1, 3) != "BNC") fault(report_.faults, number(), "the section lacks its tag");
                while (next() && line_[1] == '?') {
                }
                inPairs = true;
            } else if (heading) {
                fault(report_.faults, number(), "unknown section ", key);
            } else if (inPairs) {
                pairLine();
            }
        }
        if (!ended) fault(report_.faults, number(), "expected @END, found end of file");
        if (report_.pairs == 0) fault(report_.faults, 0, "there is no pair");
    }

    // Every rule that a pair uses must stand in the file. The functions stand before the pairs or behind them.
    void checkRules() {
        for (int k = 1; k <= tags_; ++k)
            if (!hasFunction(tag_[k]))
                fault(report_.faults, tagLine_[k], "the pair's rule ", tag_[k], " has no departure function (#MXM)");
    }

  private:
    bool next() { return readText(unit_, line_) == ReadStatus::ok; }
    int number() const { return lineNumber(unit_); }

    bool hasFunction(const Text3& tag) const {
        for (int k = 1; k <= std::min(report_.functions, mixingTagsAtMost); ++k)
            if (function_[k] == tag.view()) return true;
        return false;
    }

    void addFunction(const Text3& tag) {
        if (hasFunction(tag)) fault(report_.faults, number(), "the departure function ", tag, " comes twice");
        if (++report_.functions <= mixingTagsAtMost)
            function_[report_.functions] = tag;
        else
            fault(report_.faults, number(), "too many departure functions");
    }

    void noteTag(const Text3& tag) {
        // The TR1 rule is built in.
        if (tag == "TR1") return;
        for (int k = 1; k <= tags_; ++k)
            if (tag_[k] == tag.view()) return;
        if (tags_ == mixingTagsAtMost) return;
        tag_[++tags_] = tag;
        tagLine_[tags_] = number();
    }

    void pairLine() {
        if (line_[1] == '?') return;
        if (line_[1] == '!') return endPair();
        const std::string_view names = trimRight(line_.slice(1, 26));
        const Text3 tag(line_.slice(27, 29));
        if (tag.blank()) return;
        if (!names.empty()) {
            const auto slash = names.find('/');
            if (slash == std::string_view::npos)
                return fault(report_.faults, number(), "expected two CAS numbers, found '", names, "'");
            first_.assign(names.substr(0, slash));
            second_.assign(names.substr(slash + 1));
            beginning_ = number();
        }
        int numbers = 6;
        const std::string_view family = tag.slice(1, 2);
        if (family == "KW" || family == "GE" || family == "LJ" || family == "LM" || tag == "TR1") {
            rule_ = tag;
            // The set-up takes a GE record for one of the KW form.
            if (family == "GE") rule_.assign(1, 2, "KW");
            noteTag(rule_);
        } else if (tag == "TRN") {
            numbers = 9;
        } else if (family != "TC" && family != "VC" && family != "PR") {
            return fault(report_.faults, number(), "unknown tag ", tag, " of a pair");
        }
        const std::string_view text = line_.slice(30, Text255::size);
        if (text.find("EST") != std::string_view::npos) return;
        FreeRecord record{text};
        for (int k = 1; k <= numbers; ++k) {
            double value = 0.0;
            if (record.read(value) == ReadStatus::ok && std::isfinite(value)) continue;
            return fault(report_.faults, number(), "expected", FreeInteger{numbers}, " numbers, found '",
                         record.offendingText().substr(0, 40), "' as number", FreeInteger{k});
        }
    }

    void endPair() {
        if (first_.blank()) return;
        ++report_.pairs;
        if (rule_.blank()) fault(report_.faults, beginning_, "the pair has no mixing rule");
        if (rule_ == "LJ6") ++report_.estimated;
        const int i = installed(fluids_, first_.view()), j = installed(fluids_, second_.view());
        if (i >= 0 && j >= 0) {
            bool& seen = seen_[std::min(i, j)][std::max(i, j)];
            // Of two records of a pair the first would be taken, but for the GE form, whose second replaces it.
            if (seen)
                fault(report_.faults, beginning_, "the pair ", first_.trimmed(), "/", second_.trimmed(),
                      " comes twice");
            seen = true;
            setUp(fluids_[static_cast<std::size_t>(i)], fluids_[static_cast<std::size_t>(j)]);
        }
        first_.clear();
        second_.clear();
        rule_.clear();
    }

    void setUp(const InstalledFluid& a, const InstalledFluid& b) {
        FileNames names{};
        names[1] = a.file;
        names[2] = b.file;
        Text3 reference = "NA";
        int ierr = 0;
        Text255 herr;
        ++report_.tried;
        lastRefusal.clear();
        modelTags.LFORCESETUP = true;
        SETUP(2, names, file_, reference, ierr, herr);
        constexpr int estimatedPair = -117;
        const bool estimate = rule_ == "LJ6" && ierr == estimatedPair;
        if (ierr != 0 && !estimate) {
            fault(report_.faults, beginning_, a.file.trimmed(), " + ", b.file.trimmed(), ": set-up", FreeInteger{ierr},
                  ": ", lastRefusal.blank() ? words(herr) : words(lastRefusal));
            return;
        }
        Composition x{};
        x[1] = x[2] = 0.5;
        double Tr = 0.0, Dr = 0.0;
        REDHMX(x, Tr, Dr);
        if (!(Tr > 0.0 && Dr > 0.0 && std::isfinite(Tr) && std::isfinite(Dr)))
            fault(report_.faults, beginning_, a.file.trimmed(), " + ", b.file.trimmed(),
                  ": the reducing temperature or density is not positive");
    }

    int unit_;
    const Text255& file_;
    std::span<const InstalledFluid> fluids_;
    ParametersReport& report_;
    Text255 line_{};
    Text12 first_{}, second_{};
    Text3 rule_{};
    int beginning_ = 0;
    Array1<Text3, mixingTagsAtMost> function_{}, tag_{};
    Array1<int, mixingTagsAtMost> tagLine_{};
    int tags_ = 0;
    bool seen_[mostInstalledFluids][mostInstalledFluids] = {};
};

}  // namespace

void checkParameters(std::string_view file, std::span<const InstalledFluid> fluids, ParametersReport& report) {
    report = ParametersReport{};
    report.file.assign(file);
    int unit = 12, ierr = 0;
    Text255 name{file}, herr;
    OPENFL(unit, name, 1, ierr, herr);
    if (ierr != 0) {
        fault(report.faults, 0, "cannot be opened");
        return;
    }
    ParameterScan scan(unit, report.file, fluids, report);
    scan.run();
    closeUnit(unit);
    scan.checkRules();
    report.clean = report.faults.count == 0;
}

namespace {

constexpr double sumTolerance = 1e-7;    // beyond it the set-up normalizes
constexpr double massTolerance = 0.001;  // [%]

// What stands in a mixture file; false, with a fault, where it cannot be read.
bool scanMixture(int unit, MixtureReport& report, double& molarMass, FileNames& names) {
    int ierr = 0, count = 0;
    Text255 herr;
    double Tc = 0.0, pc = 0.0, Dc = 0.0;
    const auto refused = [&] {
        report.faults.add(lineNumber(unit), herr);
        return false;
    };
    if (!readTextLine(unit, "name of the mixture", ierr, herr, report.name) ||
        !readRecord(unit, "molar mass and critical point", ierr, herr, molarMass, Tc, pc, Dc) ||
        !readCount(unit, "number of components", ncmax, count, ierr, herr))
        return refused();
    if (count == 0) fault(report.faults, lineNumber(unit), "there is no component");
    report.components = count;
    for (int i = 1; i <= count; ++i)
        if (!readTextLine(unit, "name of a fluid file", ierr, herr, names[i])) return refused();
    for (int i = 1; i <= count; ++i) {
        double fraction = 0.0;
        if (!readRecord(unit, "mole fraction", ierr, herr, fraction)) return refused();
        if (!(fraction >= 0.0 && fraction <= 1.0))
            fault(report.faults, lineNumber(unit), "the mole fraction is not from 0 to 1");
        report.sum += fraction;
    }
    return true;
}

}  // namespace

void checkMixture(std::string_view file, std::string_view parameters, MixtureReport& report) {
    report = MixtureReport{};
    report.file.assign(file);
    int unit = 12, status = 0;
    Text255 name{file}, herr;
    OPENFL(unit, name, 2, status, herr);
    if (status != 0) {
        fault(report.faults, 0, "cannot be opened");
        return;
    }
    FileNames names{};
    double molarMass = 0.0;
    const bool scanned = scanMixture(unit, report, molarMass, names);
    closeUnit(unit);
    if (!scanned) return;

    for (int i = 1; i <= report.components; ++i) {
        int component = 12;
        Text255 componentName = names[i];
        OPENFL(component, componentName, 1, status, herr);
        if (status == 0)
            closeUnit(component);
        else
            fault(report.faults, 0, "there is no fluid file ", names[i].trimmed());
        for (int j = 1; j < i; ++j)
            if (names[i] == names[j]) fault(report.faults, 0, "it holds ", names[i].trimmed(), " twice");
    }
    if (!(std::fabs(report.sum - 1.0) <= sumTolerance))
        fault(report.faults, 0, "the mole fractions add up to", FreeDouble{report.sum});
    if (report.faults.count > 0) return;

    Text3 reference = "DEF";
    Composition x{};
    int nc = 0;
    lastRefusal.clear();
    modelTags.LFORCESETUP = true;
    SETMIX(report.file, Text255(parameters), reference, nc, names, x, report.ierr, herr);
    constexpr int estimatedPair = -117;
    if (report.ierr != 0 && report.ierr != estimatedPair) faultOfSetUp(report.faults, report.ierr, herr);
    if (report.ierr <= 0) {
        const double mass = WMOL(x);
        report.molarMass = 100.0 * (molarMass - mass) / mass;
        if (!(std::fabs(report.molarMass) <= massTolerance))
            fault(report.faults, 2, "the molar mass is not that of the fractions,", FreeDouble{mass}, " g/mol");
        double Tr = 0.0, Dr = 0.0;
        REDHMX(x, Tr, Dr);
        if (!(Tr > 0.0 && Dr > 0.0 && std::isfinite(Tr) && std::isfinite(Dr)))
            fault(report.faults, 0, "the reducing temperature or density is not positive");
    }
    report.clean = report.faults.count == 0;
}

}  // namespace frigana
