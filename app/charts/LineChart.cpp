#include "LineChart.h"

#include <algorithm>
#include <cmath>

namespace frigana::charts {

namespace {

std::string titleOf(const Column& column, bool several, const catalogue::Unit& unit) {
    std::string name = several ? std::string(catalogue::nameOf(column.quantity)) : column.name;
    if (several && !name.empty() && name[0] >= 'a' && name[0] <= 'z') name[0] = static_cast<char>(name[0] - 'a' + 'A');
    if (unit.symbol.empty() || unit.symbol == "-") return name;
    return name + " / " + printedSymbol(unit);
}

// An axis from round number to round number around values, as shown.
PlotAxis roundAxis(double low, double high) {
    if (!(high > low)) {
        const double around = low == 0.0 ? 1.0 : 0.05 * std::fabs(low);
        low -= around;
        high += around;
    }
    constexpr int parts = 10;
    const double step = diagrams::roundStep(high - low, parts);
    PlotAxis axis;
    axis.low = step * std::floor(low / step + 1e-9);
    axis.high = step * std::ceil(high / step - 1e-9);
    return axis;
}

}  // namespace

bool plotOfColumns(const std::string& title, const Column& x, const std::vector<Column>& columns,
                   const ChartStyle& style, Plot& plot, std::string& why) {
    plot = {};
    plot.title = title;
    const catalogue::Unit& xUnit = catalogue::unitIn(style.units, x.quantity);
    const catalogue::Unit& yUnit = catalogue::unitIn(style.units, columns.front().quantity);
    double low[2] = {1e300, 1e300}, high[2] = {-1e300, -1e300};
    int count = 0;
    for (const Column& column : columns) {
        if (column.quantity != columns.front().quantity) {
            why = column.name + " and " + columns.front().name + " have no common axis";
            return false;
        }
        for (std::size_t i = 0; i < column.values.size(); ++i) {
            const double at[2] = {catalogue::fromInner(x.values[i], xUnit),
                                  catalogue::fromInner(column.values[i], yUnit)};
            if (!std::isfinite(at[0]) || !std::isfinite(at[1])) continue;
            ++count;
            for (int k = 0; k < 2; ++k) {
                low[k] = std::min(low[k], at[k]);
                high[k] = std::max(high[k], at[k]);
            }
        }
    }
    if (count < 2) {
        why = "there are fewer than two points to draw";
        return false;
    }
    plot.x = roundAxis(low[0], high[0]);
    plot.y = roundAxis(low[1], high[1]);
    plot.x.title = titleOf(x, false, xUnit);
    plot.y.title = titleOf(columns.front(), columns.size() > 1, yUnit);
    for (std::size_t c = 0; c < columns.size(); ++c) {
        PlotLine line;
        line.number = static_cast<int>(c);
        line.hover = columns[c].name;
        const auto finish = [&] {
            if (line.points.size() > 1) plot.lines.push_back(line);
            if (line.points.size() == 1) plot.points.push_back({line.points.front(), "", columns[c].name, Look::dome});
            line.points.clear();
        };
        for (std::size_t i = 0; i < columns[c].values.size(); ++i) {
            const double a = catalogue::fromInner(x.values[i], xUnit);
            const double b = catalogue::fromInner(columns[c].values[i], yUnit);
            if (std::isfinite(a) && std::isfinite(b))
                line.points.push_back(
                    {(a - plot.x.low) / (plot.x.high - plot.x.low), (b - plot.y.low) / (plot.y.high - plot.y.low)});
            else
                finish();
        }
        finish();
        if (columns.size() > 1) plot.legend.push_back({Look::series, static_cast<int>(c), columns[c].name});
    }
    return true;
}

}  // namespace frigana::charts
