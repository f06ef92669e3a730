#ifndef VOREK_ADAPTERS_XLSX_SHEET_CELLS_H_
#define VOREK_ADAPTERS_XLSX_SHEET_CELLS_H_

#include <cstdint>
#include <functional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/xlsx/references.h"
#include "vorek/pass_watch.h"

namespace vorek::xlsx {

// One cell of a sheet. What isn't changed is written as it was read.
struct SheetCell {
  enum class Kind : std::uint8_t {
    kEmpty,
    kNumber,
    kShared,  // value is the number of a shared string
    kInline,  // value is the text
    kString,  // a formula's text, as it was stored
    kBoolean,
    kError,
    kDate,
    kRich,  // value is the XML of the element "is"
  };
  std::int32_t column = 0;
  std::uint32_t style = 0;
  std::uint32_t formula = 0;  // a place in the sheet's formulas, 0 for none
  Kind kind = Kind::kEmpty;
  bool styled = false;  // the style was told
  std::string value;
};

struct SheetFormula {
  std::string text;
  std::string attributes;  // of an array or a data table: ' t="array"' and what belongs to it
  std::string area;        // its reference, if it covers one
};

struct SheetRow {
  std::int32_t number = 0;
  std::string attributes;  // other than its number and its span
  std::vector<SheetCell> cells;
};

// The cells of a sheet by row and column; rows that hold nothing aren't there.
class SheetCells {
 public:
  // Reads the element sheetData. Formulas that rows share are written out.
  // The question is asked then and while rows are copied.
  SheetCells(const pugi::xml_node& sheet_data, Question question);

  const SheetCell* Find(std::int32_t row, std::int32_t column) const;
  SheetCell& At(std::int32_t row, std::int32_t column);
  const SheetFormula& FormulaOf(const SheetCell& cell) const { return formulas_[cell.formula]; }
  void SetFormula(SheetCell& cell, std::string text);

  // `sheet` is the name of this sheet, which the formulas may use.
  void InsertCopies(std::int32_t row, const RowMove& move, std::string_view sheet);
  void DeleteRow(const RowMove& move, std::string_view sheet);
  // References to the named sheet follow the move; `own` says that it is this sheet itself.
  void MoveFormulas(const RowMove& move, std::string_view sheet, bool own);
  bool HasFormulas() const { return formulas_.size() > 1; }
  std::int32_t LastColumn(std::int32_t row) const;  // 0 for a row without cells
  std::int32_t LastRow() const { return rows_.empty() ? 0 : rows_.back().number; }

  // Writes the element piece by piece; names get the prefix.
  using Sink = std::function<void(std::string_view piece)>;
  void Write(const std::string& prefix, const Sink& out) const;

 private:
  void ReadRow(const pugi::xml_node& row, std::int32_t& number);
  void ReadCell(const pugi::xml_node& cell, std::int32_t row, std::int32_t& column, SheetRow& into);
  void ReadFormula(const pugi::xml_node& formula, std::int32_t row, SheetCell& cell);
  std::size_t IndexOf(std::int32_t row) const;  // of the first row from there on
  SheetRow CopyOf(const SheetRow& row, std::int32_t number);
  void WriteCell(const SheetCell& cell, const std::string& row, const std::string& prefix,
                 std::string& out) const;

  // Row number so-and-so is next.
  void AskAt(std::size_t row) const {
    constexpr std::size_t kRowsBetweenQuestions = 1024;
    if (row % kRowsBetweenQuestions == 0) question_();
  }

  struct Shared {
    std::string text;
    std::int32_t row = 0;
    std::int32_t column = 0;
  };
  Question question_;
  std::vector<SheetRow> rows_;
  std::vector<SheetFormula> formulas_;  // 0 unused
  std::vector<Shared> shared_;          // by number, while the sheet is read
  mutable std::size_t last_ = 0;        // where a row was found last
};

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_SHEET_CELLS_H_
