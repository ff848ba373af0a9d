#include <charconv>
#include <cmath>
#include <cstring>
#include <span>

#include "CORE_FEQ.h"
#include "FluidConstants.h"
#include "SAT_SUB_EXPANSION.h"
#include "TextFile.h"

namespace frigana {

namespace {

constexpr int formOfFile = 1;
constexpr double meeting = 1e-11;  // relative, by which two pieces may miss each other

// Fowler, Noll and Vo, by numbers instead of bytes.
class Fingerprint {
  public:
    void add(double value) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        add(bits);
    }
    void add(int value) { add(static_cast<std::uint64_t>(value)); }
    template <class Values>
    void add(const Values& values, int count) {
        for (int k = 1; k <= count; ++k) add(values[k]);
    }
    std::uint64_t value() const { return hash_; }

  private:
    // the upper half of a product depends on all bits, and takes part in the next
    void add(std::uint64_t bits) {
        hash_ = (hash_ ^ bits) * 1099511628211ull;
        hash_ ^= hash_ >> 32;
    }
    std::uint64_t hash_ = 14695981039346656037ull;
};

bool readFingerprint(int unit, std::uint64_t& fingerprint) {
    constexpr int digits = 16;
    FixedText<digits> text;
    if (readText(unit, text) != ReadStatus::ok) return false;
    const std::string_view given = text.view();
    const auto end = std::from_chars(given.data(), given.data() + digits, fingerprint, 16);
    return end.ec == std::errc() && end.ptr == given.data() + digits;
}

bool readNumbers(int unit, std::span<double> numbers) {
    FreeRecord record(unit);
    for (double& number : numbers) {
        number = std::nan("");
        if (record.read(number) != ReadStatus::ok || !std::isfinite(number)) return false;
    }
    return true;
}

// Where two pieces of a function meet both have one value. A wrong coefficient shows there, since a polynomial of
// Chebyshev is 1 or -1 at the ends.
bool piecesMeet(const double* coefficients, const ExpansionPieces& pieces, int functions) {
    const auto at = [&](int piece, int function, int k) {
        return coefficients[(piece * pieces.order + k) * functions + function];
    };
    for (int piece = 0; piece + 1 < pieces.count; ++piece) {
        for (int function = 0; function < functions; ++function) {
            double end = 0.0, beginning = 0.0;
            for (int k = 0; k < pieces.order; ++k) {
                end += at(piece, function, k);
                beginning += (k % 2 == 0 ? 1.0 : -1.0) * at(piece + 1, function, k);
            }
            if (!(std::fabs(end - beginning) <= meeting * std::fabs(end))) return false;
        }
    }
    return true;
}

}  // namespace

std::uint64_t equationFingerprint(int icomp) {
    Fingerprint print;
    const FluidConstants& fluid = fluidConstants;
    for (const double value : {fluid.REOS[icomp], fluid.TCRIT[icomp], fluid.PCRIT[icomp], fluid.DCRIT[icomp],
                               fluid.TTPN[icomp], fluid.PTPN[icomp], fluid.TMEOS[icomp], fluid.TXEOS[icomp],
                               fluid.PEOS[icomp], fluid.DEOS[icomp], fluid.TZ[icomp], fluid.RHOZ[icomp]})
        print.add(value);
    const FeqSlot& slot = feqTerms[icomp];
    print.add(slot.T0FEQ);
    print.add(slot.RHO0FEQ);
    print.add(slot.NTERMF);
    print.add(slot.NCRT);
    const int terms = slot.NTERMF + slot.NCRT;
    for (const FeqTermArray* values : {&slot.AFEQ, &slot.TIFEQ, &slot.DIFEQ, &slot.DLIF, &slot.GIF1})
        print.add(*values, terms);
    for (const FeqRowArray* values :
         {&slot.TLIF, &slot.ALPHAF, &slot.BETAF, &slot.GAMMAF, &slot.DELTAF, &slot.ETAF, &slot.EIDF, &slot.EITF})
        print.add(*values, slot.NCRT);
    return print.value();
}

bool readExpansions(int unit, ExpansionTable& table) {
    double form = 0.0;
    double counts[4];
    if (skipLine(unit) != ReadStatus::ok || !readNumbers(unit, {&form, 1}) || form != formOfFile ||
        !readFingerprint(unit, table.fingerprint))
        return false;
    double values[7];
    if (!readNumbers(unit, values) || !readNumbers(unit, counts)) return false;
    table.Tr = values[0];
    table.pr = values[1];
    table.R = values[2];
    table.lowestT = values[3];
    table.highestT = values[4];
    table.lowestP = values[5];
    table.highestP = values[6];
    for (const double count : counts)
        if (!(count >= 0.0 && count <= mostCoefficients)) return false;
    table.overTheta = {.count = static_cast<int>(counts[0]), .order = static_cast<int>(counts[1])};
    table.overPhi = {.count = static_cast<int>(counts[2]), .order = static_cast<int>(counts[3])};
    if (!layPieces(table)) return false;
    const auto total = [](const ExpansionPieces& pieces) {
        return static_cast<std::size_t>(pieces.count) * static_cast<std::size_t>(pieces.order);
    };
    return readNumbers(unit, {table.line, expandedOverTheta * total(table.overTheta)}) &&
           readNumbers(unit, {table.thetas, total(table.overPhi)}) &&
           piecesMeet(table.line, table.overTheta, expandedOverTheta) && piecesMeet(table.thetas, table.overPhi, 1);
}

}  // namespace frigana
