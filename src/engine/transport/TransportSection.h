// What the readers and models of the transport sections share: one table row, reading with a failure that sticks, and
// powers with the exponents that correlations use.
// State: none.
#pragma once

#include <cmath>

#include "EngineLimits.h"
#include "Message.h"
#include "ReaderReport.h"

namespace frigana {

// A row of the term table of a viscosity or conductivity model.
struct TransportTerm {
    double c;  // coefficient
    double t;  // exponent of the reduced temperature
    double d;  // exponent of the reduced density
    double e;  // third exponent, by the model
    int i;     // exponent inside the exponential; 0 none
};

// The rows of a term table as the sources number them, from 1.
template <class Row>
struct FromOne {
    const Row* rows;
    const Row& operator[](int k) const { return rows[k - 1]; }
};

// x to the power e. Integer and half-integer exponents, which most terms have, take no logarithm.
inline double power(double x, double e) {
    const double twice = e + e;
    if (!(std::fabs(twice) <= 120.0)) return std::pow(x, e);
    const int n = static_cast<int>(twice);
    if (static_cast<double>(n) != twice) return std::pow(x, e);
    if (n % 2 != 0 && x < 0.0) return std::pow(x, e);
    int count = (n < 0 ? -n : n) / 2;
    double result = n % 2 != 0 ? std::sqrt(x) : 1.0;
    for (double square = x; count > 0; count /= 2, square *= square)
        if (count % 2 != 0) result *= square;
    return n < 0 ? 1.0 / result : result;
}

// Reads the lines of a section; after the first failure, which stands in ierr and herr, all further reads do nothing.
class SectionReader {
  public:
    // A unit of 0 or below means built-in data, which there are none of: code 101 in the words of the routine.
    SectionReader(const char* routine, int nread, const Text12& hcas, int& ierr, Text255& herr)
        : unit_(nread), ierr_(ierr), herr_(herr) {
        ierr = 0;
        herr.clear();
        if (nread > 0) return;
        ierr = 101;
        message(herr, "[", routine, " error 101] illegal file specified; nread = ", Integer{4, nread},
                "; CAS no. = ", hcas, nullCharacter);
    }
    bool good() const { return ierr_ == 0; }
    int unit() const { return unit_; }

    template <class... Value>
    bool line(std::string_view what, Value&... values) {
        return good() && readRecord(unit_, what, ierr_, herr_, values...);
    }
    // One record of n numbers, which may go on over several lines.
    bool numbers(std::string_view what, double* values, int n) {
        if (!good()) return false;
        FreeRecord record(unit_);
        for (int k = 0; k < n; ++k) {
            const ReadStatus status = record.read(values[k]);
            if (status == ReadStatus::ok) continue;
            readFailed(unit_, what, status, record.offendingText(), ierr_, herr_);
            return false;
        }
        return true;
    }
    bool tag(std::string_view what, Text3& value) { return good() && readTextLine(unit_, what, ierr_, herr_, value); }
    bool text(std::string_view what, Text255& value) {
        return good() && readTextLine(unit_, what, ierr_, herr_, value);
    }
    bool skip(int lines) { return good() && skipLines(unit_, lines, ierr_, herr_); }
    bool count(std::string_view what, int value, int largest) {
        return good() && countFits(unit_, what, value, largest, ierr_, herr_);
    }
    // Lower and upper temperature [K], upper pressure [kPa], upper density [mol/L], one a line.
    bool limits(double& tmin, double& tmax, double& pmax, double& dmax) {
        return line("lower temperature limit", tmin) && line("upper temperature limit", tmax) &&
               line("upper pressure limit", pmax) && line("upper density limit", dmax);
    }
    // Rows of `columns` real numbers and, if asked for, an integer.
    bool terms(TransportTerm* rows, int n, int columns, bool integer) {
        for (int k = 0; k < n && good(); ++k) {
            TransportTerm& row = rows[k] = {};
            double value[4] = {};
            FreeRecord record(unit_);
            ReadStatus status = ReadStatus::ok;
            for (int column = 0; column < columns && status == ReadStatus::ok; ++column)
                status = record.read(value[column]);
            if (integer && status == ReadStatus::ok) status = record.read(row.i);
            if (status != ReadStatus::ok)
                readFailed(unit_, "row of coefficients", status, record.offendingText(), ierr_, herr_);
            row.c = value[0];
            row.t = value[1];
            row.d = value[2];
            row.e = value[3];
        }
        return good();
    }

  private:
    int unit_;
    int& ierr_;
    Text255& herr_;
};

}  // namespace frigana
