#include "FluidFileScan.h"

#include <algorithm>
#include <iterator>

#include "Letters.h"
#include "Message.h"
#include "OPENFL.h"
#include "ReaderReport.h"

namespace frigana {

void FaultList::add(int line, const Text255& text) {
    if (++count <= mostFaults) kept[count] = {line, text};
}

int FluidFileScan::find(std::string_view key, std::string_view tag, int from) const {
    for (int k = from; k <= sections; ++k)
        if (section[k].key == key && (tag.empty() || section[k].tag == tag)) return k;
    return 0;
}

namespace {

constexpr std::string_view keys[] = {"EOS", "AUX", "TRN", "ETA", "VIS", "TCX", "STN", "DE",
                                     "MLT", "SBL", "PS",  "PL",  "DL",  "DV",  "END"};
// In small letters the set-up knows them too, but for these two.
constexpr std::string_view onlyCapitals[] = {"AUX", "END"};

// What a fluid needs to be used alone and in mixtures.
constexpr std::string_view neededKeys[] = {"EOS", "AUX", "TRN", "STN", "PS", "DL", "DV"};

// The key in capitals; blank where it is none, as in letters of both kinds.
Text3 knownKey(std::string_view text) {
    const Text3 given(text);
    Text3 upper(text), lower(text);
    for (int k = 1; k <= 3; ++k) {
        upper[k] = capitalLetter(given[k]);
        lower[k] = smallLetter(given[k]);
    }
    const auto knows = [&](const auto& list) { return std::find(std::begin(list), std::end(list), upper.trimmed()); };
    if (knows(keys) == std::end(keys)) return {};
    if (given == upper) return upper;
    return given == lower && knows(onlyCapitals) == std::end(onlyCapitals) ? upper : Text3{};
}

class Scanner {
  public:
    Scanner(int unit, FluidFileScan& scan) : unit_(unit), scan_(scan) {}

    void run() {
        if (!header() || !body()) return;
        for (const std::string_view key : neededKeys)
            if (scan_.find(key) == 0) fault(0, "there is no section ", key);
    }

  private:
    template <class... Piece>
    void fault(int line, const Piece&... pieces) {
        Text255 text;
        message(text, pieces...);
        scan_.faults.add(line, text);
    }

    bool refused(const Text255& herr) {
        scan_.faults.add(lineNumber(unit_), herr);
        return false;
    }

    bool header() {
        int ierr = 0;
        Text255 herr, text;
        Text3 reference;
        double version = 0.0, dipole = 0.0;
        const auto number = [&](std::string_view what, double& value) {
            return readRecord(unit_, what, ierr, herr, value);
        };
        const bool good =
            readTextLine(unit_, "short name", ierr, herr, scan_.name) &&
            readTextLine(unit_, "CAS number", ierr, herr, scan_.cas) &&
            readTextLine(unit_, "full name", ierr, herr, text) && readTextLine(unit_, "formula", ierr, herr, text) &&
            readTextLine(unit_, "synonym", ierr, herr, text) && number("molar mass", scan_.molarMass) &&
            number("triple point temperature", scan_.triplePoint) &&
            number("normal boiling point", scan_.boilingPoint) &&
            number("critical temperature", scan_.criticalTemperature) &&
            number("critical pressure", scan_.criticalPressure) && number("critical density", scan_.criticalDensity) &&
            number("acentric factor", scan_.acentricFactor) && number("dipole moment", dipole) &&
            readTextLine(unit_, "default reference state", ierr, herr, reference) &&
            (!reference.startsWith("OT") || skipLines(unit_, 1, ierr, herr)) && number("file version", version);
        if (!good) return refused(herr);
        if (const int mark = scan_.name.find("!"); mark > 0)
            scan_.name.assign(FixedText<60>(scan_.name).slice(1, mark - 1));
        do {
            if (!readTextLine(unit_, "blank line behind the header", ierr, herr, text)) return refused(herr);
            if (text[1] == '#' || text[1] == '@')
                fault(lineNumber(unit_), "a section stands in the header: the blank line behind it is missing");
        } while (!text.blank());
        return true;
    }

    // Source lines of a section, with the known deviations among them.
    bool source() {
        KnownDeviation* known = nullptr;
        int ierr = 0;
        for (Text255 line, herr;;) {
            if (!readTextLine(unit_, "line behind the source of a section", ierr, herr, line)) return refused(herr);
            if (line[1] != '?') return true;
            if (line.startsWith("?Known:")) {
                known = beginKnown(line);
            } else if (line.length() <= 1) {
                known = nullptr;
            } else if (known != nullptr) {
                message(known->reason, known->reason.trimmed(), " ", line.slice(2, Text255::size));
            }
        }
    }

    KnownDeviation* beginKnown(const Text255& line) {
        constexpr int behindMark = 8;
        constexpr std::string_view upTo = " up to ";
        const std::string_view text = trimRight(line.slice(behindMark, Text255::size));
        const auto bound = text.find(upTo), reason = text.find(": ");
        KnownDeviation known;
        const bool complete =
            bound != std::string_view::npos && reason != std::string_view::npos && bound < reason &&
            FreeRecord(text.substr(bound + upTo.size(), reason - bound - upTo.size())).read(known.bound) ==
                ReadStatus::ok;
        if (!complete || scan_.knownCount == mostKnown) {
            fault(lineNumber(unit_), complete ? "too many known deviations"
                                              : "a known deviation reads ?Known: FIGURE up to BOUND: REASON");
            return nullptr;
        }
        const std::string_view name = text.substr(0, bound);
        known.figure.assign(name.substr(std::min(name.find_first_not_of(' '), name.size())));
        known.reason.assign(text.substr(reason + 2));
        scan_.known[++scan_.knownCount] = known;
        return &scan_.known[scan_.knownCount];
    }

    void addSection(const SectionFound& found) {
        if (knownKey(found.key.view()).blank()) {
            fault(found.line, "unknown section ", found.key);
            return;
        }
        for (int k = 1; k <= scan_.sections; ++k)
            if (scan_.section[k].key == found.key.view() && scan_.section[k].tag == found.tag.view())
                fault(found.line, "the section ", found.key.trimmed(), " ", found.tag.trimmed(), " comes twice");
        if (scan_.sections == mostSections) {
            fault(found.line, "too many sections");
            return;
        }
        scan_.section[++scan_.sections] = found;
    }

    bool body() {
        int ierr = 0;
        for (Text255 line, herr;;) {
            if (!readTextLine(unit_, "a section or END", ierr, herr, line)) return refused(herr);
            const std::string_view key = line.slice(2, 4);
            const Text3 known = knownKey(key);
            if (line[1] == '!') continue;
            if (line[1] != '#' && line[1] != '@') {
                if (known == "END") return true;
                if (!known.blank())
                    fault(lineNumber(unit_), "characters 2 to 4 of a line of data read ", key, " like a heading");
                continue;
            }
            SectionFound found;
            found.mark = line[1];
            found.key = known.blank() ? Text3(key) : known;
            found.line = lineNumber(unit_);
            if (!readTextLine(unit_, "model tag of a section", ierr, herr, line)) return refused(herr);
            found.tag.assign(line.slice(1, 3));
            if (!source()) return false;
            if (known == "END") return true;
            found.body = lineNumber(unit_) + 1;
            addSection(found);
        }
    }

    int unit_;
    FluidFileScan& scan_;
};

}  // namespace

void scanFluidFile(std::string_view file, FluidFileScan& scan) {
    scan = FluidFileScan{};
    int unit = 12, ierr = 0;
    Text255 name{file}, herr;
    OPENFL(unit, name, 1, ierr, herr);
    if (ierr != 0) {
        message(herr, "cannot be opened");
        scan.faults.add(0, herr);
        return;
    }
    Scanner(unit, scan).run();
    closeUnit(unit);
}

}  // namespace frigana
