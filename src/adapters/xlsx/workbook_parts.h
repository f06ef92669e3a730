#ifndef VOREK_ADAPTERS_XLSX_WORKBOOK_PARTS_H_
#define VOREK_ADAPTERS_XLSX_WORKBOOK_PARTS_H_

#include <cstddef>
#include <string>

#include "vorek/spreadsheet.h"

// The parts of a new workbook beside its sheets.
namespace vorek::xlsx {

std::string ContentTypesXml(std::size_t sheets, bool chart);
std::string PackageRelationsXml();
// The last sheet is the chart's where it has a name.
std::string WorkbookXml(std::size_t sheets, const std::string& chart_sheet);
std::string WorkbookRelationsXml(std::size_t sheets);
// From the chart's sheet to its drawing, and from there to the chart.
std::string SheetDrawingXml();
std::string DrawingChartXml();
// Style n of the look is format n + 1 of the workbook; format 0 is the workbook's own.
std::string StylesXml(const WorkbookLook& look);

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_WORKBOOK_PARTS_H_
