#ifndef VOREK_ADAPTERS_XLSX_SHEET_MARKS_H_
#define VOREK_ADAPTERS_XLSX_SHEET_MARKS_H_

#include <cstdint>
#include <pugixml.hpp>
#include <string_view>

#include "adapters/xlsx/references.h"

// What a sheet says of its cells beside them: merged cells, conditional formats, validations,
// links, filters, page breaks.
namespace vorek::xlsx {

// Moves all of it. `copied` is the row that the new rows are copies of, as it is numbered before
// the move, 0 for none: they get its formats, validations, links and merged cells.
void MoveSheetMarks(pugi::xml_node sheet, const RowMove& move, std::string_view name,
                    std::int32_t copied);
// The formulas in it that use another sheet whose rows moved.
void MoveMarkFormulas(pugi::xml_node sheet, const RowMove& move, std::string_view name, bool own);

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_SHEET_MARKS_H_
