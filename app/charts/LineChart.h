// The plain chart: columns over another one, of tables and studies.
#pragma once

#include <string>
#include <vector>

#include "StateChart.h"

namespace frigana::charts {

struct Column {
    std::string name;  // "Density"
    catalogue::Quantity quantity = catalogue::Quantity::none;
    std::vector<double> values;  // in the inner unit; not a number where there is none: the line has a gap there
};

// Columns of one quantity over another column.
//   Returned  (value)  false with the reason in `why`: fewer than two points, or columns of different quantities
bool plotOfColumns(const std::string& title, const Column& x, const std::vector<Column>& columns,
                   const ChartStyle& style, Plot& plot, std::string& why);

}  // namespace frigana::charts
