// What the readers and models of the transport sections share: one table row, reading with a failure that sticks, and
// powers with the exponents that correlations use.
// State: none.
#pragma once

#include <cmath>

#include "EngineLimits.h"
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
    SectionReader(const char* routine, int nread, const Text12& hcas, int& ierr, Text255& herr);
    bool good() const { return ierr_ == 0; }

    template <class... Value>
    bool line(std::string_view what, Value&... values) {
        return good() && readRecord(unit_, what, ierr_, herr_, values...);
    }
    // One record of n numbers, which may go on over several lines.
    bool numbers(std::string_view what, double* values, int n);
    bool tag(std::string_view what, Text3& value);
    bool text(std::string_view what, Text255& value);
    bool skip(int lines);
    bool count(std::string_view what, int value, int largest);
    // Lower and upper temperature [K], upper pressure [kPa], upper density [mol/L], one a line.
    bool limits(double& tmin, double& tmax, double& pmax, double& dmax);
    // Rows of `columns` real numbers and, if asked for, an integer.
    bool terms(TransportTerm* rows, int n, int columns, bool integer);

  private:
    int unit_;
    int& ierr_;
    Text255& herr_;
};

}  // namespace frigana
