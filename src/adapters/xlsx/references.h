#ifndef VOREK_ADAPTERS_XLSX_REFERENCES_H_
#define VOREK_ADAPTERS_XLSX_REFERENCES_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vorek/error.h"

// References to cells, as formulas and attributes of a workbook write them.
namespace vorek::xlsx {

// Rows of one sheet that come or go: `count` empty ones before row `at`, or row `at` taken away.
struct RowMove {
  std::int32_t at = 1;
  std::int32_t count = 0;  // -1 takes the row away

  // Where a row goes; nothing for one that is taken away or pushed off the sheet.
  std::optional<std::int32_t> Place(std::int32_t row) const;
};

// A rectangle of cells, rows and columns from 1.
struct Area {
  std::int32_t top = 0;
  std::int32_t left = 0;
  std::int32_t bottom = 0;
  std::int32_t right = 0;
};

// "B5" or "B5:D9"; nothing for another text. Dollar signs are passed over.
std::optional<Area> ReadArea(std::string_view text);
std::string AreaText(const Area& area);
// The area after the move; nothing if all of it is gone. Rows within it stretch it.
std::optional<Area> MoveArea(const Area& area, const RowMove& move);

// A reference over many sheets, "Sheet1:Sheet3!A5", of which one moves: it can't follow. Told in
// Persian.
class UnmovedReference : public Error {
 public:
  explicit UnmovedReference(std::string_view formula);
};

// A formula after rows of a sheet moved: references to that sheet follow, those to what is gone
// become #REF!. `own` says that references without a sheet's name mean that sheet, which is the
// workbook's first. Throws UnmovedReference.
std::string MoveFormula(std::string_view formula, const RowMove& move, std::string_view sheet,
                        bool own);
// A formula that is copied so many rows down: references without a dollar sign follow.
std::string ShiftFormula(std::string_view formula, std::int32_t rows, std::int32_t columns);

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_REFERENCES_H_
