#ifndef VOREK_SPREADSHEET_H_
#define VOREK_SPREADSHEET_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vorek/output_file.h"
#include "vorek/pass_watch.h"
#include "vorek/sheet_chart.h"

namespace vorek {

// What a workbook of the office format can hold.
struct WorkbookLimits {
  static constexpr std::int32_t kRows = 1048576;  // of a sheet
  static constexpr std::int32_t kColumns = 16384;
  static constexpr std::size_t kCharacters = 32767;  // of a cell, as UTF-16 counts them
};

enum class SheetAlignment {
  kGeneral,
  kLeft,
  kCentre,
  kRight,
  kFill,
  kJustify,
  kCentreAcross,
  kDistributed
};

// How a cell looks.
struct SheetStyle {
  std::string font = {};  // empty for the workbook's own
  double size = 0;        // points; 0 for the workbook's own
  bool bold = false;
  bool text = false;  // the number format "@": what stands in the cell is a text
  SheetAlignment alignment = SheetAlignment::kGeneral;
  std::string number_format = {};  // of what isn't a text; empty for the general one
};

// What a protected sheet still allows.
struct SheetProtection {
  std::string password;
  bool drawing_objects = false;  // protected too
  bool scenarios = true;
  bool allow_formatting_cells = true;
  bool allow_formatting_columns = true;
  bool allow_formatting_rows = true;
  bool allow_inserting_columns = false;
  bool allow_inserting_rows = false;
  bool allow_inserting_hyperlinks = true;
  bool allow_deleting_columns = false;
  bool allow_deleting_rows = false;
  bool allow_sorting = true;
  bool allow_filtering = true;
  bool allow_using_pivot_tables = false;
};

// What a new workbook looks like, whose sheets are all made alike.
struct WorkbookLook {
  static constexpr double kDefaultWidth = -1;
  static constexpr std::size_t kNoStyle = static_cast<std::size_t>(-1);

  std::string font;      // the standard font; empty for that of the program
  double font_size = 0;  // points
  std::vector<SheetStyle> styles;
  std::size_t row_style = kNoStyle;  // of the rows that are written, beyond their cells too
  bool right_to_left = true;
  std::vector<double> column_widths;  // characters, from column A on; 0 hides a column
  std::unique_ptr<SheetProtection> protection;
};

// A workbook that is written row by row; its memory doesn't grow with the rows. When a sheet is
// full it goes on in another one. A failure is an Error: what a cell can't hold kInvalidCall, in
// Persian, with its place. Dropped before Finish it leaves no file.
class WorkbookWriter {
 public:
  virtual ~WorkbookWriter() = default;

  // Cells of one row go from the left to the right; columns count from 1.
  virtual void BeginRow() = 0;
  // style is an index of the look's styles, or kNoStyle.
  virtual void Text(std::int32_t column, std::string_view text, std::size_t style) = 0;
  // A number as plain text, "-12.5"; see IsSheetNumber.
  virtual void Number(std::int32_t column, std::string_view number, std::size_t style) = 0;
  virtual void EndRow() = 0;
  // Puts a chart and a table of its numbers on a sheet of their own behind the others, locked as
  // they are. REQUIRES: all rows are written, and no chart is.
  virtual void AddChart(const SheetChart& chart) = 0;
  virtual void Finish() = 0;

  // Of rows: a chart's sheet isn't counted.
  virtual std::size_t Sheets() const = 0;
};

// True for a text that a sheet may hold as a number without a change to it: at most 15 digits, no
// needless zeros, no blanks, no sign but "-".
bool IsSheetNumber(std::string_view text);

// The first sheet of a workbook that is filled in place. Rows and columns count from 1; cells that
// don't exist are empty. Everything that isn't touched stays as it is.
class TemplateSheet {
 public:
  virtual ~TemplateSheet() = default;

  // The last column of the row in which a cell exists, 0 for none: nothing stands behind it.
  virtual std::int32_t LastColumn(std::int32_t row) const = 0;

  // What the cell shows, as far as no number format is needed for it, and what it holds; the same
  // but for formulas, whose text begins with "=".
  virtual std::string Text(std::int32_t row, std::int32_t column) const = 0;
  virtual std::string Formula(std::int32_t row, std::int32_t column) const = 0;
  // As if the text were typed: a plain number becomes a number unless the cell's format is "@".
  virtual void SetText(std::int32_t row, std::int32_t column, const std::string& text) = 0;
  // A text that begins with "=" becomes a formula, another one what SetText makes of it.
  virtual void SetFormula(std::int32_t row, std::int32_t column, const std::string& text) = 0;
  virtual void SetTextFormat(std::int32_t row, std::int32_t column) = 0;

  // Puts so many copies of the row below row `before - 1`; rows from `before` on move down, and all
  // references to them follow. Throws Error(kInvalidCall) if the sheet has no room.
  virtual void InsertCopies(std::int32_t row, std::int32_t before, std::int32_t count) = 0;
  virtual void DeleteRow(std::int32_t row) = 0;
  virtual void Protect(const SheetProtection& protection) = 0;

  // Writes the workbook; formulas are calculated when it is opened.
  virtual void Save(OutputFile& out) = 0;
};

// The office program's work on files.
class Spreadsheet {
 public:
  virtual ~Spreadsheet() = default;

  virtual std::unique_ptr<WorkbookWriter> NewWorkbook(std::unique_ptr<OutputFile> out,
                                                      WorkbookLook look) = 0;
  // A workbook by the bytes of its archive. Throws Error(kInvalidCall), in Persian, for what can't
  // be read. The name stands in messages. The question is asked while it opens, is filled and
  // saved.
  virtual std::unique_ptr<TemplateSheet> OpenTemplate(std::string bytes, const std::string& name,
                                                      Question question) = 0;
};

}  // namespace vorek

#endif  // VOREK_SPREADSHEET_H_
