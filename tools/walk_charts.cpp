// Walks the charts of every fluid and blend of the installation and tells the faults:
//
//   walk_charts [--every n] [FILE...]
//
//   --every  evaluates only every n-th point again: a flash of a blend beside its critical point is slow
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <set>
#include <string>

#include "ChartWalk.h"
#include "OPENFL.h"
#include "TreeFolders.h"

using namespace frigana;
using namespace frigana::diagrams;

namespace {

Scales metricScales() {
    Scales scales;
    scales.temperature = {1.0, -273.15};
    scales.pressure = {0.01, 0.0};
    return scales;
}

// Fluids whose equation has its critical point elsewhere than it is published.
const std::set<std::string> straightTops{"R13.FLD", "R21.FLD", "R40.FLD", "R114.FLD"};

// Returns the number of faults of all charts of a fluid.
int walkFluid(const std::string& file, bool blend, int stride) {
    FluidSelection selection;
    selection.kind = blend ? FluidSelection::Kind::mixtureFile : FluidSelection::Kind::pure;
    selection.name = file;
    selection.files = {file};
    ChartFluid fluid;
    std::string why;
    if (!fluid.load(selection, why)) {
        std::printf("%-14s %s\n", file.c_str(), why.c_str());
        return 1;
    }
    static constexpr const char* names[] = {"ph", "ts", "hs"};
    int faults = 0;
    for (const ChartKind kind : {ChartKind::ph, ChartKind::ts, ChartKind::hs}) {
        ChartRequest request;
        request.kind = kind;
        request.scales = metricScales();
        Dome dome;
        FluidChart chart;
        const std::clock_t start = std::clock();
        const bool made = makeFluidChart(fluid, request, dome, chart, why);
        const double ms = 1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        if (!made) {
            std::printf("%-14s %s %s\n", file.c_str(), names[static_cast<int>(kind)], why.c_str());
            ++faults;
            continue;
        }
        const test::ChartWalk walk =
            test::walk(fluid, chart, stride, straightTops.contains(file) ? test::longestStraightTop : longestStep);
        const bool closed = !chart.criticalShown || test::domeIsClosed(chart);
        faults += walk.faults() + (closed ? 0 : 1);
        std::printf(
            "%-14s %s %7.1f ms  %3d curves %5d points, again within %.1e, last piece %.3f; outside %d apart %d changed "
            "%d "
            "different %d unanswered %d turning %d broken %d%s  %s\n",
            file.c_str(), names[static_cast<int>(kind)], ms, walk.curves, walk.points, walk.worst, walk.last,
            walk.outside, walk.apart, walk.changed, walk.different, walk.unanswered, walk.turning, walk.broken,
            closed ? "" : " dome open", walk.first.c_str());
        std::fflush(stdout);
    }
    return faults;
}

}  // namespace

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    const std::string data = test::dataFolder;
    SETPATH(data);
    std::set<std::string> wanted(argv + 1, argv + argc);
    int faults = 0, stride = 1;
    if (argc > 2 && std::string(argv[1]) == "--every") {
        stride = std::max(1, std::atoi(argv[2]));
        wanted.erase(argv[1]);
        wanted.erase(argv[2]);
    }
    for (const auto& [folder, extension] : {std::pair("fluids", ".FLD"), std::pair("mixtures", ".MIX")}) {
        std::set<std::string> files;
        for (const auto& entry : fs::directory_iterator(fs::path(data) / folder))
            if (entry.path().extension() == extension) files.insert(entry.path().filename().string());
        for (const std::string& file : files)
            if (wanted.empty() || wanted.count(file) > 0)
                faults += walkFluid(file, extension == std::string(".MIX"), stride);
    }
    std::printf("%d faults\n", faults);
    return faults == 0 ? 0 : 1;
}
