// Reading of the mixing parameters, and the estimates for a pair that has none.
#include <cmath>
#include <initializer_list>
#include <utility>

#include "CORE_PR.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ModelTags.h"
#include "OPENFL.h"
#include "ReaderReport.h"
#include "TextFile.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr int mostLines = 20000;
constexpr int mostComments = 1000;

// Keeps file and line of what could not be read; the messages of this file have no room for them. False.
bool refused(int iunit, std::string_view what, ReadStatus status = ReadStatus::malformed) {
    int ierr = 0;
    Text255 herr;
    readFailed(iunit, what, status, ierr, herr);
    return false;
}

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> list) {
    for (const std::string_view item : list)
        if (text == item) return true;
    return false;
}

bool endOfSections(const Text255& line) {
    return line.startsWith("@END") || line.startsWith("@end");
}
bool sectionLine(const Text255& line, std::string_view keyword) {
    return (line[1] == '#' || line[1] == '@') && line.slice(2, 4) == keyword;
}

enum class Search { found, ended, failed };

// Passes over lines up to the heading of a section. Only the mark of the end tells that there is none: a file that
// stops before it has lost its rest.
Search findSection(int iunit, std::string_view keyword) {
    Text255 line;
    for (int count = 0; count < mostLines; ++count) {
        const ReadStatus status = readText(iunit, line, 4);
        if (status != ReadStatus::ok) {
            refused(iunit, "a section or @END", status);
            return Search::failed;
        }
        if (endOfSections(line)) return Search::ended;
        if (sectionLine(line, keyword)) return Search::found;
    }
    return Search::ended;
}

// Passes over lines of comment and, where it stands behind them, the lone mark that ends them.
ReadStatus skipComments(int iunit) {
    for (int count = 0; count <= mostComments; ++count) {
        Text255 line;
        const LinePlace place = nextLinePlace(iunit);
        if (const ReadStatus status = readText(iunit, line, 1); status != ReadStatus::ok) return status;
        if (line[1] == '?') continue;
        if (line[1] != '!') goToLine(iunit, place);
        break;
    }
    return ReadStatus::ok;
}

// The first numbers of a free-form text; false if there are fewer.
bool readNumbers(std::string_view text, double* numbers, int count) {
    FreeRecord record(text);
    for (int k = 0; k < count; ++k)
        if (record.read(numbers[k]) != ReadStatus::ok) return false;
    return true;
}

// The version of the file stands in the first two columns, blanks for 0; what follows is free.
bool readVersion(int iunit, int& version) {
    FixedText<2> columns;
    if (readText(iunit, columns) != ReadStatus::ok) return false;
    version = 0;
    return columns.blank() || FreeRecord(columns.trimmed()).read(version) == ReadStatus::ok;
}

// The lines of one record of the section of pairs, as far as they are known.
struct PairRecord {
    Text255 citation{};
    Text12 first{}, second{};  // CAS numbers
    Text3 mixing{}, tc{}, vc{}, cubic{}, transport{};
    FixedText<226> mixingNumbers{}, tcNumbers{}, vcNumbers{}, cubicNumbers{}, transportNumbers{};

    // Empty again. The texts of numbers count only beside their tags.
    void clear() {
        citation.clear();
        first.clear();
        second.clear();
        for (Text3* tag : {&mixing, &tc, &vc, &cubic, &transport}) tag->clear();
        tcNumbers.clear();
        vcNumbers.clear();
    }
};

// A further line of the citation, set off by a backslash behind the text so far.
void addCitation(const Text255& line, Text255& citation) {
    constexpr std::string_view blanks = "                     ";
    static_assert(blanks.size() == 21);
    if (citation.blank()) {
        citation.assign(line.slice(2, Text255::size));
        return;
    }
    const int at = citation.find(blanks);
    if (at == 0) return;
    citation[at] = '\\';
    citation.assign(at + 1, Text255::size, line.slice(2, Text255::size));
}

// What a data line of the section of pairs holds, by the tag in its columns 27 to 29.
enum class Data { none, mixing, tc, vc, cubic, transport, unknown };

Data dataOf(std::string_view tag3) {
    const std::string_view tag = tag3.substr(0, 2);
    if (trimRight(tag).empty()) return Data::none;
    if (tag3 == "TRN") return Data::transport;
    if (isOneOf(tag, {"KW", "GE", "LJ", "LM"}) || tag3 == "TR1") return Data::mixing;
    if (tag == "TC") return Data::tc;
    if (tag == "VC") return Data::vc;
    if (tag == "PR") return Data::cubic;
    return Data::unknown;
}

// The CAS numbers of a data line, in its first 26 columns; false if they are no pair. Blanks leave those of the line
// before.
bool takeNames(std::string_view columns, Text12& first, Text12& second) {
    const std::string_view names = trimRight(columns);
    if (names.empty()) return true;
    const auto slash = names.find('/');
    if (slash == std::string_view::npos) return false;
    first.assign(names.substr(0, slash));
    second.assign(names.substr(slash + 1));
    return true;
}

enum class LineKind { taken, endsRecord, wrong };

LineKind takeDataLine(const Text255& line, PairRecord& record) {
    const std::string_view tag = line.slice(27, 29), numbers = line.slice(30, Text255::size);
    const Data data = dataOf(tag);
    if (data == Data::none) return LineKind::endsRecord;
    if (!takeNames(line.slice(1, 26), record.first, record.second)) return LineKind::wrong;
    const auto take = [&](Text3& to, FixedText<226>& numbersTo) {
        to.assign(tag);
        numbersTo.assign(numbers);
        return LineKind::taken;
    };
    switch (data) {
        case Data::transport:
            return take(record.transport, record.transportNumbers);
        case Data::mixing:
            return take(record.mixing, record.mixingNumbers);
        case Data::tc:
            return take(record.tc, record.tcNumbers);
        case Data::vc:
            return take(record.vc, record.vcNumbers);
        case Data::cubic:
            return take(record.cubic, record.cubicNumbers);
        default:
            return LineKind::wrong;
    }
}

bool estimated(const FixedText<226>& numbers) {
    return numbers.find("EST") != 0;
}

bool readLine(const Text3& tag, std::string_view wanted, const FixedText<226>& numbers, Array1<double, 11>& line) {
    line.fill(0.0);
    return tag.view() != wanted || estimated(numbers) || readNumbers(numbers.trimmed(), line.items, 6);
}

bool readTransport(const PairRecord& record, MixingPair& p) {
    Array1<double, 9> n{};
    if (!record.transport.blank() && !readNumbers(record.transportNumbers.trimmed(), n.items, 9)) return false;
    p.XLJS = n[1];
    p.XLJE = n[2];
    p.XKIJ = n[3];
    p.XLIJ = n[4];
    p.XAJI = n[5];
    p.XKIJK = n[6];
    p.XLIJK = n[7];
    p.XDIJ = n[8];
    p.XDIJ2 = n[9];
    return true;
}

// The record tells of component j first: what depends on the order is turned round.
void turnRound(MixingPair& p) {
    const std::string_view rule = p.HMODMX.slice(1, 2);
    if (rule == "LM" || rule == "LJ") std::swap(p.FMIX[4], p.FMIX[5]);
    if (rule == "KW" || rule == "GE")
        for (const int k : {1, 3}) {
            p.FMIX2[k] = p.FMIX[k];
            p.FMIX[k] = 1.0;
        }
    const auto secondPolynomial = [](Array1<double, 11>& line) {
        for (int k = 2; k <= 6; ++k) {
            line[k + 5] = line[k];
            line[k] = 0.0;
        }
    };
    if (p.HMODTC == "TC1") secondPolynomial(p.FTCIJ);
    if (p.HMODVC == "VC1") secondPolynomial(p.FVCIJ);
}

void readError(int& ierr, Text255& herr) {
    ierr = 118;
    message(herr, "[RDBNC error 118] Error in reading mixture file in RDBNC", nullCharacter);
    ERRMSG(ierr, herr);
}

void storeBothOrders(int i, int j, const MixingPair& pair) {
    mixingParameters.pair[i][j] = mixingParameters.pair[j][i] = pair;
}

// Where the records of a file stand, so that a pair is found without the lines before it. Kept from set-up to set-up
// while the file stays the same; without it, and for a file with a line that cannot be read, every search begins at the
// first line.
constexpr int largestIndex = 4096;

struct PairPlace {
    Text12 first{}, second{};  // CAS numbers
    LinePlace place{};         // of the first line of the record
};
struct FileIndex {
    Text255 path{};
    FileStamp stamp{};
    bool complete = false;  // false: the file is searched from its beginning
    int pairs = 0, rules = 0;
    Array1<PairPlace, largestIndex> pair{};
    Array1<LinePlace, largestRules> rule{};  // of the line behind each heading of a departure function
};
FileIndex fileIndex;

constexpr int columnsOfPair = 26;

// The section of pairs behind its heading; afterwards `line` holds what ended it. False for a line that cannot be read.
bool indexPairs(int iunit, int& lines, Text255& line) {
    line.clear();
    if (readText(iunit, line, 3) != ReadStatus::ok || line != "BNC" || skipComments(iunit) != ReadStatus::ok)
        return false;
    PairPlace record;
    record.place = nextLinePlace(iunit);
    for (; lines < mostLines; ++lines) {
        if (skipLine(iunit) != ReadStatus::ok) return false;
        const std::string_view text = currentLine(iunit);
        const char mark = text.empty() ? ' ' : text.front();
        if (mark == '@' || mark == '#') {
            line.assign(text);
            return true;
        }
        if (mark == '?') continue;
        if (mark != '!') {
            const Data data = text.size() <= columnsOfPair ? Data::none : dataOf(text.substr(columnsOfPair, 3));
            if (data == Data::unknown ||
                (data != Data::none && !takeNames(text.substr(0, columnsOfPair), record.first, record.second)))
                return false;
            if (data != Data::none) continue;
        } else {
            if (fileIndex.pairs >= largestIndex) return false;
            fileIndex.pair[++fileIndex.pairs] = record;
        }
        record = {};
        record.place = nextLinePlace(iunit);
    }
    return false;
}

bool indexSections(int iunit) {
    rewindUnit(iunit);
    bool pairsFound = false;
    Text255 line;
    for (int lines = 0; lines < mostLines; ++lines) {
        if (readText(iunit, line, 4) != ReadStatus::ok) return false;
        if (sectionLine(line, "BNC") && !pairsFound) {
            pairsFound = true;
            if (!indexPairs(iunit, lines, line)) return false;
        }
        if (endOfSections(line)) return pairsFound;
        if (sectionLine(line, "MXM")) {
            if (fileIndex.rules >= largestRules) return false;
            fileIndex.rule[++fileIndex.rules] = nextLinePlace(iunit);
        }
    }
    return false;
}

// The index of the open file, made if it is not at hand; null where there is none to be relied on.
const FileIndex* indexOf(int iunit) {
    FileStamp stamp;
    const Text255 path(unitPath(iunit));
    if (!stampOf(iunit, stamp) || !stamp.settled || path.trimmed() != unitPath(iunit)) return nullptr;
    if (!fileIndex.stamp.same(stamp) || fileIndex.path != path) {
        fileIndex.pairs = fileIndex.rules = 0;
        fileIndex.stamp = stamp;
        fileIndex.path = path;
        fileIndex.complete = indexSections(iunit);
    }
    return fileIndex.complete ? &fileIndex : nullptr;
}

// Goes to the first record of a pair in either order, or, without an index, of any pair.
Search findPairs(int iunit, const Text12& casI, const Text12& casJ) {
    if (const FileIndex* index = indexOf(iunit)) {
        for (int k = 1; k <= index->pairs; ++k) {
            const PairPlace& pair = index->pair[k];
            if ((pair.first == casI && pair.second == casJ) || (pair.first == casJ && pair.second == casI)) {
                goToLine(iunit, pair.place);
                return Search::found;
            }
        }
        return Search::ended;
    }
    rewindUnit(iunit);
    const Search search = findSection(iunit, "BNC");
    if (search != Search::found) return search;
    Text255 line;
    ReadStatus status = readText(iunit, line, 3);
    if (status == ReadStatus::ok && line != "BNC") return Search::ended;
    if (status == ReadStatus::ok) status = skipComments(iunit);
    if (status == ReadStatus::ok) return Search::found;
    refused(iunit, "records of pairs", status);
    return Search::failed;
}

// The headings of the departure functions, one after the other.
class RuleSearch {
  public:
    explicit RuleSearch(int iunit) : iunit_(iunit), index_(indexOf(iunit)) {
        if (index_ == nullptr) rewindUnit(iunit);
    }
    Search next() {
        if (index_ == nullptr) return findSection(iunit_, "MXM");
        if (found_ >= index_->rules) return Search::ended;
        goToLine(iunit_, index_->rule[++found_]);
        return Search::found;
    }

  private:
    int iunit_, found_ = 0;
    const FileIndex* index_;
};

// A record of the pair (i, j); false if it cannot be read or has no mixing parameters (ierr says which).
bool storeRecord(const PairRecord& record, int i, int j, int k, bool reversed, int& ierr, Text255& herr) {
    MixingPair p{};
    mixingParameters.HBIN[k] = record.citation;
    p.HMODMX = record.mixing;
    p.HMODTC = record.tc;
    p.HMODVC = record.vc;
    p.HPRKIJ = record.cubic;
    p.FMIX2.fill(1.0);
    if (record.mixing.blank()) {
        storeBothOrders(i, j, p);
        ierr = -118;
        message(herr, "[RDBNC error] Binary pair found, but equilibrium interaction parameters are not available:  ",
                fluidFiles.HCAS[i].trimmed(), "/", fluidFiles.HCAS[j].trimmed(), nullCharacter);
        ERRMSG(ierr, herr);
        return false;
    }
    Array1<double, 6> cubic{};
    const bool readable =
        readNumbers(record.mixingNumbers.trimmed(), p.FMIX.items, 6) &&
        readLine(p.HMODTC, "TC1", record.tcNumbers, p.FTCIJ) && readLine(p.HMODVC, "VC1", record.vcNumbers, p.FVCIJ) &&
        (p.HPRKIJ != "PR1" || readNumbers(record.cubicNumbers.trimmed(), cubic.items, 6)) && readTransport(record, p);
    if (!readable) {
        readError(ierr, herr);
        return false;
    }
    int sum = 0;
    if (estimated(record.tcNumbers)) {
        p.HMODTC = "EST";
        sum -= 1;
    }
    if (estimated(record.vcNumbers)) {
        p.HMODVC = "EST";
        sum -= 2;
    }
    ierr = sum < 0 ? sum - 113 : 0;  // not that of a GE record that this one replaces
    if (reversed) turnRound(p);
    FPRKIJ[i][j] = FPRKIJ[j][i] = cubic;
    storeBothOrders(i, j, p);
    return true;
}

}  // namespace

void RDBNC(int iunit, int i, int j, int k, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (iunit <= 0) {
        ierr = 1;
        message(herr, "[RDBNC error] Block data option not available", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    const Text12 &casI = fluidFiles.HCAS[i], &casJ = fluidFiles.HCAS[j];
    bool stored = false;  // a GE record that a later one may replace
    const Search search = findPairs(iunit, casI, casJ);
    if (search == Search::failed) return readError(ierr, herr);
    if (search == Search::found) {
        Text255 line;
        PairRecord record;
        for (int count = 0; count < mostLines; ++count) {
            if (const ReadStatus status = readText(iunit, line); status != ReadStatus::ok) {
                refused(iunit, "a record of a pair or @END", status);
                return readError(ierr, herr);
            }
            if (line[1] == '@' || line[1] == '#') break;
            if (line[1] == '?') {
                addCitation(line, record.citation);
                continue;
            }
            if (line[1] != '!') {
                const LineKind kind = takeDataLine(line, record);
                if (kind == LineKind::wrong) {
                    refused(iunit, "CAS numbers and a tag of a pair");
                    return readError(ierr, herr);
                }
                if (kind == LineKind::endsRecord) record.clear();
                continue;
            }
            const bool forward = record.first == casI && record.second == casJ;
            const bool reversed = record.first == casJ && record.second == casI;
            if (forward || reversed) {
                if (!storeRecord(record, i, j, k, reversed, ierr, herr)) {
                    if (ierr > 0) refused(iunit, "numbers in the lines above");
                    return;
                }
                MixingPair &p = mixingParameters.pair[i][j], &mirror = mixingParameters.pair[j][i];
                if (!p.HMODMX.startsWith("GE")) return;
                p.HMODMX.assign(1, 2, "KW");
                mirror.HMODMX = p.HMODMX;
                if (mixingParameters.IGERG != 0) return;
                stored = true;
            }
            record.clear();
        }
    }
    if (stored) return;
    ierr = -117;
    message(herr, "[RDBNC error] Binary pair not found (end of file):  ", casI.trimmed(), "/", casJ.trimmed(),
            nullCharacter);
    ERRMSG(ierr, herr);
}

namespace {

void ruleError(int& ierr, Text255& herr) {
    ierr = 118;
    message(herr, "[RDMIX error 118] Error in reading mixture file in RDMIX", nullCharacter);
    ERRMSG(ierr, herr);
}

// One departure function as it stands in the file.
struct RuleRecord {
    MixingRule rule{};
    int n1 = 0, n2 = 0;
    Array1<Array1<double, 7>, largestMixTerms> ATERM{};
};

// Numbers of one line behind any blank ones.
bool readRow(int iunit, double* numbers, int count) {
    return skipFilledLine(iunit) == ReadStatus::ok && readNumbers(currentLine(iunit), numbers, count);
}

bool readRule(int iunit, RuleRecord& r) {
    Text255 line;
    ReadStatus status = readText(iunit, line, 254);
    if (status != ReadStatus::ok) return refused(iunit, "tag of a departure function", status);
    r.rule.HRULE = line;
    status = skipComments(iunit);
    if (status == ReadStatus::ok) status = readText(iunit, line);
    if (status != ReadStatus::ok) return refused(iunit, "names of the parameters", status);
    for (int k = 1; k <= 6; ++k) r.rule.HBPAR[k].assign(line.slice(9 * k - 8, 9 * k - 1));
    if (!readRow(iunit, r.rule.BIDEAL.items, 6)) return refused(iunit, "parameters of an ideal mixture");
    int c1 = 0, f = 0, c2 = 0;
    std::string_view found;
    if (readOneLine(iunit, found, r.n1, c1, f, r.n2, c2) != ReadStatus::ok)
        return refused(iunit, "five counts of a departure function");
    if (c1 < 0 || c1 > 7 || c2 < 0 || c2 > 7) return refused(iunit, "columns from 0 to 7");
    if (f == 1) ++c1;
    if (r.n1 < 0 || r.n1 > largestMixTerms || r.n2 < 0 || r.n2 > largestMixTerms - r.n1 || c1 > 7)
        return refused(iunit, "terms from 0 to 15");
    for (int n = 1; n <= r.n1 + r.n2; ++n)
        if (!readRow(iunit, r.ATERM[n].items, n <= r.n1 ? c1 : c2))
            return refused(iunit, "row of a departure function");
    return true;
}

void giveRule(const RuleRecord& r, int i, int j, PairMarks& LIJ) {
    for (MixingPair* p : {&mixingParameters.pair[i][j], &mixingParameters.pair[j][i]}) {
        p->NAMIX = r.n1;
        p->NAMIX2 = r.n2;
        p->AMIX = r.ATERM;
    }
    LIJ[i][j] = LIJ[j][i] = true;
}

bool keepRule(const MixingRule& rule) {
    MixingParameters& m = mixingParameters;
    for (int k = 1; k <= m.rules; ++k)
        if (m.rule[k].HRULE.slice(1, 3) == rule.HRULE.slice(1, 3)) return true;
    if (m.rules >= largestRules) return false;
    m.rule[++m.rules] = rule;
    return true;
}

}  // namespace

void RDMIX(int iunit, int i, int j, const Text3& hmodij, PairMarks& LIJ, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    clearDepartureCache();
    const bool all = hmodij == "ALL";
    // A pair that changes its rule has no terms until they are found: those of the rule before, under the new tag,
    // would enter the saved state that all pairs of this tag share.
    if (!all)
        for (MixingPair* p : {&mixingParameters.pair[i][j], &mixingParameters.pair[j][i]}) p->NAMIX = p->NAMIX2 = 0;
    RuleSearch search(iunit);
    for (;;) {
        const Search found = search.next();
        if (found == Search::failed) return ruleError(ierr, herr);
        if (found == Search::ended) return;
        RuleRecord r;
        if (!readRule(iunit, r)) return ruleError(ierr, herr);
        const std::string_view tag = r.rule.HRULE.slice(1, 3);
        if (all) {
            if (!keepRule(r.rule)) return ruleError(ierr, herr);
            for (int a = 1; a < modelTags.NC; ++a)
                for (int b = a + 1; b <= modelTags.NC; ++b)
                    if (mixingParameters.pair[a][b].HMODMX.view() == tag) giveRule(r, a, b, LIJ);
        } else if (hmodij.view() == tag) {
            if (!keepRule(r.rule)) return ruleError(ierr, herr);
            giveRule(r, i, j, LIJ);
            return;
        }
    }
}

namespace {

constexpr std::string_view outsideEstimate[] = {
    "7732-18-5",   // water
    "7789-20-0",   // heavy water
    "7664-41-7",   // ammonia
    "7440-59-7",   // helium
    "1333-74-0",   // hydrogen
    "1333-74-0p",  // parahydrogen
    "7440-01-9",   // neon
    "7782-41-4",   // fluorine
    "7782-39-0",   // deuterium
    "67-56-1",     // methanol
    "64-17-5",     // ethanol
    "7783-54-2",   // nitrogen trifluoride
};

bool canEstimate(int i) {
    for (const std::string_view cas : outsideEstimate)
        if (fluidFiles.HCAS[i] == cas) return false;
    return true;
}

// First of the pair for the estimate: the larger dipole moment, of equal ones the larger Tc / (Pc omega).
int firstOfPair(int i, int j) {
    const FluidConstants& c = fluidConstants;
    if (std::fabs(c.DIPOLE[i] - c.DIPOLE[j]) >= 1e-5) return c.DIPOLE[i] > c.DIPOLE[j] ? i : j;
    const auto size = [&](int k) {
        return c.TCRIT[k] / (c.PCRIT[k] * c.ACCEN[k]);  // NOLINT(clang-analyzer-core.CallAndMessage): c is the record
    };
    return size(i) >= size(j) ? i : j;
}

void estimateWarning(int& ierr, Text255& herr) {
    ierr = -117;
    message(herr,
            "[SETUP warning -117] No mixture data are available for one or more binary pairs in the specified mixture. "
            "The mixing parameters have been estimated.",
            nullCharacter);
}

// The variant that takes the pair for an ideal solution; the estimate serves better.
constexpr bool assumeIdealSolution = false;

}  // namespace

void ESTBNC(int i, int j, int k, int& ierr, Text255& herr) {
    MixingParameters& m = mixingParameters;
    MixingPair p = m.pair[i][j];
    p.FMIX2.fill(1.0);
    if (assumeIdealSolution) {
        p.HMODMX = "LIN";
        p.FMIX = {{1.0, 1.0, 0.0, 1.0, 1.0, 0.0}};
        storeBothOrders(i, j, p);
        ierr = 117;
        m.HBIN[k] = "No mixture data are available for this binary pair. Ideal solution behavior will be assumed.";
        return;
    }
    p.HMODMX = "LJ6";
    if (!canEstimate(i) || !canEstimate(j)) {
        storeBothOrders(i, j, p);
        m.HBIN[k] = "Estimation of mixing parameters is not possible for this mixture.";
        ierr = 117;
        message(herr,
                "[SETUP error 117] Estimation of mixing parameters is not possible for most mixtures containing water, "
                "heavy water, helium, hydrogen, parahydrogen, deuterium, neon, ammonia, fluorine, methanol, or "
                "ethanol.",
                nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    estimateWarning(ierr, herr);
    m.HBIN[k] = "No mixture data are available for this binary pair. The mixing parameters have been estimated.";

    const FluidConstants& c = fluidConstants;
    const int first = firstOfPair(i, j), second = first == i ? j : i;
    double rT = c.TCRIT[second] / c.TCRIT[first];
    double rp = c.PCRIT[second] / c.PCRIT[first];
    double romega = c.ACCEN[second] / c.ACCEN[first];
    if (rT / rp / romega > 5.0 && std::fabs(romega) < 0.1 && rT > 0.75 && rT < 1.25) {
        rT = 1.0 / rT;
        rp = 1.0 / rp;
        romega = 1.0 / romega;
    }
    double F1 = (40.4 - 25.03 * std::pow(2.0, rT / rp / romega)) / rT;
    if (!(std::fabs(F1) <= 200.0)) {
        F1 = F1 > 500.0 ? 500.0 : F1 < -500.0 ? -500.0 : F1;
        ierr = 117;
        message(herr,
                "[SETUP error 117] No mixture data are available for one or more binary pairs in the specified "
                "mixture. The mixture is outside the range of the model and calculations will not be made.",
                nullCharacter);
    }
    p.FMIX = {{F1, 0.0, 0.0, 1.0, 1.0, 0.0}};
    storeBothOrders(i, j, p);
    ERRMSG(ierr, herr);
}

namespace {

void estimateLine(int i, int j, Text3 MixingPair::*tag, Array1<double, 11> MixingPair::*numbers,
                  std::string_view name) {
    for (MixingPair* p : {&mixingParameters.pair[i][j], &mixingParameters.pair[j][i]}) {
        (p->*tag).assign(name);
        (p->*numbers).fill(0.0);
    }
}

}  // namespace

void ESTTC(int i, int j, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    estimateLine(i, j, &MixingPair::HMODTC, &MixingPair::FTCIJ, "TC1");
    mixingParameters.pair[i][j].HPRKIJ.clear();
    mixingParameters.pair[j][i].HPRKIJ.clear();
}

void ESTVC(int i, int j, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    estimateLine(i, j, &MixingPair::HMODVC, &MixingPair::FVCIJ, "VC1");
}

namespace {

void clearParameters() {
    MixingParameters& m = mixingParameters;
    const int nc = modelTags.NC;
    for (int i = 1; i <= nc; ++i)
        for (int j = 1; j <= nc; ++j) {
            m.pair[i][j] = MixingPair{};
            FPRKIJ[i][j].fill(0.0);
        }
    for (int i = 1; i <= nc; ++i) m.pair[i][i].HMODMX = m.pair[i][i].HMODTC = m.pair[i][i].HMODVC = "i=j";
    m.rules = 0;
    m.AMMONIAWATER = m.IWATERCOMP = m.IALCOHOLCOMP = 0;
    clearDepartureCache();
}

void findWaterAndAlcohol() {
    MixingParameters& m = mixingParameters;
    for (int i = 1; i <= modelTags.NC; ++i) {
        const std::string_view cas = fluidFiles.HCAS[i].trimmed();
        if (cas == "7732-18-5") m.IWATERCOMP = i;
        if (isOneOf(cas, {"67-56-1", "64-17-5", "71-23-8", "67-63-0", "71-36-3", "78-83-1", "78-92-2"}))
            m.IALCOHOLCOMP = i;
    }
}

// Turns an estimated pair into the equal KW form, whose derivatives in the fractions are known. The pair takes the
// departure function of its new tag too, since pairs of one tag share the saved state of it.
//   Returned  (value)  true for an estimated pair, whether it was estimated here or stands as such in the file
bool convertEstimate(int iunit, int i, int j, PairMarks& LIJ, int& ierr, Text255& herr) {
    MixingPair p = mixingParameters.pair[i][j];
    const FluidConstants& c = fluidConstants;
    if (p.HMODMX != "LJ6" || p.FMIX[4] != 1.0 || p.FMIX[5] != 1.0 || p.FMIX[3] != 0.0) return false;
    const double Ti = c.TZ[i], Tj = c.TZ[j], vi = 1.0 / c.RHOZ[i], vj = 1.0 / c.RHOZ[j];
    const double side = std::cbrt(vi) + std::cbrt(vj), meanV = side * side * side / 8.0;
    const double gammaT = (p.FMIX[1] + Ti + Tj) / (2.0 * std::sqrt(Ti * Tj));
    const double gammaV = (p.FMIX[2] + vi + vj) / (2.0 * meanV);
    p.FMIX = {{1.0, gammaT, 1.0, gammaV, p.FMIX[3], p.FMIX[6]}};
    for (int k = 1; k <= 4; ++k) p.FMIX2[k] = 1.0;
    p.HMODMX = "KW0";
    storeBothOrders(i, j, p);
    RDMIX(iunit, i, j, p.HMODMX, LIJ, ierr, herr);
    return true;
}

// Reads, or estimates, all pairs and their departure functions from the open file.
void readPairs(int iunit, const Text255& hfmix, int& ierr, Text255& herr) {
    MixingParameters& m = mixingParameters;
    const int nc = modelTags.NC;
    const auto keep = [&](int code, const Text255& text) {
        if (code == 0 || ierr > 0) return;
        ierr = code;
        herr = text;
    };
    int status = 0;
    Text255 text;
    for (int i = 1, k = 1; i < nc; ++i)
        for (int j = i + 1; j <= nc; ++j, ++k) {
            m.HMFILE[k] = hfmix;
            RDBNC(iunit, i, j, k, status, text);
            keep(status, text);
            if (status != 0) {
                m.HMFILE[k] = "estimated by ESTBNC";
                ESTBNC(i, j, k, status, text);
                keep(status, text);
                ESTTC(i, j, status, text);
                ESTVC(i, j, status, text);
            }
            if (std::fabs(FPRKIJ[i][j][1]) < 1e-20) ESTPR(i, j);
        }
    PairMarks LIJ{};
    RDMIX(iunit, 1, 2, Text3("ALL"), LIJ, status, text);
    keep(status, text);
    bool complete = true;
    for (int i = 1; i < nc; ++i)
        for (int j = i + 1; j <= nc; ++j) complete = complete && LIJ[i][j];
    if (!complete && ierr != 117 && ierr != -117) {
        message(text, "[SETHMX error] Mixing term not found for one or more binary pair(s)", nullCharacter);
        ERRMSG(-117, text);
        keep(-117, text);
    }
    // An estimate that stands in the file, beside a critical line that cannot be estimated, is one all the same.
    for (int i = 1; i < nc; ++i)
        for (int j = i + 1; j <= nc; ++j)
            if (convertEstimate(iunit, i, j, LIJ, status, text) && ierr == 0) {
                estimateWarning(ierr, herr);
                ERRMSG(ierr, herr);
            }
}

void checkAmmoniaWater(int& ierr, Text255& herr) {
    MixingParameters& m = mixingParameters;
    if (modelTags.NC < 2 || m.pair[1][2].HMODMX != "TR1") return;
    constexpr std::string_view ammonia = "7664-41-7", water = "7732-18-5";
    const Text12 &first = fluidFiles.HCAS[1], &second = fluidFiles.HCAS[2];
    if (first == ammonia && second == water) {
        m.AMMONIAWATER = 1;
    } else if (first == water && second == ammonia) {
        m.AMMONIAWATER = 2;
    } else {
        ierr = 106;
        message(herr, "[SETMHX error 106] Wrong components; model TR1 valid for ammonia + water only", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    if (modelTags.NC != 2) {
        ierr = 107;
        message(herr, "[SETMHX error 107] Wrong number of components; model TR1 valid for binary mixtures only",
                nullCharacter);
        ERRMSG(ierr, herr);
    }
}

}  // namespace

void SETHMX(const Text255& hfmix, int& ierr, Text255& herr) {
    MixingParameters& m = mixingParameters;
    ierr = 0;
    herr.clear();
    m.HFMIX = hfmix;
    m.HMFILE[0] = hfmix;
    clearParameters();
    if (hfmix.startsWith("BDATA") || hfmix.startsWith("bdata")) {
        ierr = 1;
        message(herr, "[SETHMX error] Block data option not available", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    int iunit = 12, status = 0;
    Text255 file = hfmix, text;
    OPENFL(iunit, file, 1, status, text);
    if (status != 0) {
        ierr = 111;
        message(herr, "[SETHMX error] Error in opening mixture file", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    Text3 model;
    if (readText(iunit, model) != ReadStatus::ok || model != modelTags.HEOS || !readVersion(iunit, m.version)) {
        ierr = 1;
        message(herr, "[SETHMX error] Mixture file does not match model", nullCharacter);
        ERRMSG(ierr, herr);
    } else {
        readPairs(iunit, hfmix, ierr, herr);
        findWaterAndAlcohol();
        if (ierr <= 0) checkAmmoniaWater(ierr, herr);
    }
    rewindUnit(iunit);
    closeUnit(iunit);
}

}  // namespace frigana
