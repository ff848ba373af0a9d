#include "FluidFilePath.h"

#include "Message.h"
#include "TextFile.h"

namespace frigana {

namespace {

using Path = FixedText<longestPath>;
struct KnownPath {
    int length = 0;
    char path[longestPath];
};
ComponentArray<KnownPath> paths;

}  // namespace

void noteFluidFile(int icomp, std::string_view path) {
    if (icomp < 1) return;
    KnownPath& known = paths[icomp];
    known.length = path.size() <= longestPath ? static_cast<int>(path.copy(known.path, longestPath)) : 0;
}

bool openBesideFluid(int icomp, std::string_view extension, int& iunit) {
    const std::string_view path(paths[icomp].path, static_cast<std::size_t>(paths[icomp].length));
    const auto period = path.rfind('.');
    if (period == std::string_view::npos) return false;
    const std::string_view ending = path.substr(period);
    if (ending != ".FLD" && ending != ".fld") return false;
    Path beside;
    message(beside, path.substr(0, period), extension);
    iunit = firstFreeUnit(iunit);
    return openForReading(iunit, beside.trimmed());
}

}  // namespace frigana
