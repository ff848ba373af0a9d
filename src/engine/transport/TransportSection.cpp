#include "TransportSection.h"

#include "Message.h"

namespace frigana {

SectionReader::SectionReader(const char* routine, int nread, const Text12& hcas, int& ierr, Text255& herr)
    : unit_(nread), ierr_(ierr), herr_(herr) {
    ierr = 0;
    herr.clear();
    if (nread > 0) return;
    ierr = 101;
    message(herr, "[", routine, " error 101] illegal file specified; nread = ", Integer{4, nread}, "; CAS no. = ", hcas,
            nullCharacter);
}

bool SectionReader::numbers(std::string_view what, double* values, int n) {
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

bool SectionReader::tag(std::string_view what, Text3& value) {
    return good() && readTextLine(unit_, what, ierr_, herr_, value);
}

bool SectionReader::text(std::string_view what, Text255& value) {
    return good() && readTextLine(unit_, what, ierr_, herr_, value);
}

bool SectionReader::skip(int lines) {
    return good() && skipLines(unit_, lines, ierr_, herr_);
}

bool SectionReader::count(std::string_view what, int value, int largest) {
    return good() && countFits(unit_, what, value, largest, ierr_, herr_);
}

bool SectionReader::limits(double& tmin, double& tmax, double& pmax, double& dmax) {
    return line("lower temperature limit", tmin) && line("upper temperature limit", tmax) &&
           line("upper pressure limit", pmax) && line("upper density limit", dmax);
}

bool SectionReader::terms(TransportTerm* rows, int n, int columns, bool integer) {
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

}  // namespace frigana
