#ifndef VOREK_ADAPTERS_XLSX_CHART_PART_H_
#define VOREK_ADAPTERS_XLSX_CHART_PART_H_

#include <string>

#include "vorek/sheet_chart.h"

namespace vorek::xlsx {

// What a new workbook holds of a chart beside the sheet with its numbers.
struct ChartParts {
  std::string sheet;    // its name
  std::string drawing;  // the part that says where on the sheet the chart stands
  std::string chart;
};

// The element of the sheet that leads to its drawing.
extern const char* const kDrawingElement;
constexpr double kChartColumnWidth = 18;  // characters, of the table of numbers

// The numbers stand from A1 on: the categories in the first column, a series in each one behind,
// their names in the first row. As on screen a chart runs from the right: its axis of categories is
// turned, and with it that of the values stands at the right. Source of the elements: ECMA-376,
// part 1, 21.2 (charts) and 20.5 (drawings on sheets).
ChartParts PartsOf(const SheetChart& chart);

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_CHART_PART_H_
