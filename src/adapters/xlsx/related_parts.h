#ifndef VOREK_ADAPTERS_XLSX_RELATED_PARTS_H_
#define VOREK_ADAPTERS_XLSX_RELATED_PARTS_H_

#include <pugixml.hpp>
#include <string_view>

#include "adapters/xlsx/references.h"

// Parts of a workbook beside its sheets that speak of a sheet's rows. Each function changes the
// part's tree in place.
namespace vorek::xlsx {

void MoveDefinedNames(pugi::xml_node workbook, const RowMove& move, std::string_view sheet);
// Pictures and charts of the sheet, by the cells that they are fastened to.
void MoveAnchors(pugi::xml_node drawing, const RowMove& move);
void MoveComments(pugi::xml_node comments, const RowMove& move);
// The boxes of comments and other controls.
void MoveBoxes(pugi::xml_node vml, const RowMove& move);
void MoveTable(pugi::xml_node table, const RowMove& move, std::string_view sheet);
void MovePivotSource(pugi::xml_node cache, const RowMove& move, std::string_view sheet);
void MoveChart(pugi::xml_node chart, const RowMove& move, std::string_view sheet);
// Takes the stored values away that a chart draws from until it is drawn anew.
void DropChartValues(pugi::xml_node chart);

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_RELATED_PARTS_H_
