#include "grid/tree_rows.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "catalog/filter.h"
#include "grid/expression_columns.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

constexpr std::string_view kNoChildren = "  ";

// Which keys have children in a result, and which records they are.
class Children {
 public:
  Children(const ResultSetPtr& result, std::int32_t parent_column)
      : result_(result), column_(result->columns[static_cast<std::size_t>(parent_column)]) {
    const bool whole = column_.Kind() == ResultColumn::Storage::kScaled && column_.Scale() == 0;
    if (whole) index_.emplace(column_);
  }

  bool Has(std::int32_t key) const {
    return index_ ? index_->First(key) != KeyIndex::kNone : !Of(key).empty();
  }

  // In the order of the result.
  std::vector<std::uint32_t> Of(std::int32_t key) const {
    std::vector<std::uint32_t> rows;
    if (index_) {
      for (std::uint32_t row = index_->First(key); row != KeyIndex::kNone;
           row = index_->Next(row)) {
        rows.push_back(row);
      }
      return rows;
    }
    const RecordFilter filter("[" + column_.Name() + "] = " + std::to_string(key), *result_);
    for (std::size_t row = 0; row < result_->rows; ++row) {
      if (filter.Matches(row)) rows.push_back(static_cast<std::uint32_t>(row));
    }
    return rows;
  }

 private:
  ResultSetPtr result_;
  const ResultColumn& column_;
  std::optional<KeyIndex> index_;  // of a key of whole numbers
};

std::int32_t IdOf(const ReportContext& report, std::int32_t row) {
  std::string scratch;
  return text::TextToNumber(report.flxMain.CellView(row, report.state.IDColumn + 1, scratch));
}

// "3+" becomes "3-", "2-3+" becomes "2-3-".
std::string OpenMark(const std::string& text) {
  if (text::Length(text) <= 1) return "-";
  if (!text::Contains(text, "-")) return text.substr(0, text.find('+')) + "-";
  return text::Replace(text, "+", "") + "-";
}

std::string ClosedMark(const std::string& text) {
  const std::string trimmed = text::Trim(text);
  const std::size_t blanks = text.size() - trimmed.size();
  return trimmed.substr(0, trimmed.size() - 1) + "+" + std::string(blanks, ' ');
}

void SelectRow(Grid& grid, std::int32_t row) {
  grid.SetRow(row);
  grid.SetCol(1);
  grid.SetColSel(grid.Cols() - 1);
}

// The rows directly below that descend from the row, one behind the last of them.
std::int32_t EndOfDescendants(const ReportContext& report, std::int32_t row) {
  const Grid& grid = report.flxMain;
  std::unordered_set<std::int32_t> ids = {IdOf(report, row)};
  std::string scratch;
  std::int32_t end = row + 1;
  for (; end < grid.Rows(); ++end) {
    grid.AskAt(end);
    const std::string_view parent = grid.CellView(end, report.state.ParentIDColumn + 1, scratch);
    if (parent.empty() || ids.count(text::TextToNumber(parent)) == 0) break;
    ids.insert(IdOf(report, end));
  }
  return end;
}

}  // namespace

char TreeMark(const Grid& grid, std::int32_t row) {
  std::string scratch;
  const std::string_view text = grid.CellView(row, 0, scratch);
  return text.empty() ? '\0' : text.back();
}

std::int32_t ShadeColor(std::int32_t color, std::int32_t step) {
  std::int32_t shaded = 0;
  for (const int shift : {16, 8, 0}) {
    const std::int32_t byte = (color >> shift) & 0xFF;
    shaded |= std::clamp(byte + 20 * step, 0, 255) << shift;
  }
  return shaded;
}

std::int32_t TreeLevel(std::string_view text) {
  const std::string number = text::PlainNumber(text::NumericPrefix(text));
  if (text::TrimView(text) == number) return 1;
  const std::string rest = text::Mid(text, 2);
  return static_cast<std::int32_t>(std::count(rest.begin(), rest.end(), '-')) + 1;
}

void MarkTopRows(ReportContext& report, const Recordset& result) {
  Grid& grid = report.flxMain;
  grid.SetColWidth(0, grid.ColWidth(0) * 2);
  grid.SetCol(0);
  grid.SetCellAlignment(4);
  grid.SetFixedAlignment(0, 1);
  grid.SetOutlineKind(Outline::kTree);
  const Children children(result.SharedResult(), report.state.ParentIDColumn);
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    grid.AskAt(row);
    grid.WriteCell(row, 0, std::to_string(row) + (children.Has(IdOf(report, row)) ? "+" : ""));
  }
}

// The result of a report's query, whose records go under the rows that are their parents.
class TreeExpansion::Result {
 public:
  explicit Result(ReportContext& report)
      : report_(report), grid_(report.flxMain), query_(report.process.dten().rssqlQuery) {
    query_.Close();
    query_.SetFilter("");
    query_.Open(report_.state.QuerySource);
    children_.emplace(query_.SharedResult(), report_.state.ParentIDColumn);
  }
  ~Result() { query_.Close(); }
  Result(const Result&) = delete;
  Result& operator=(const Result&) = delete;

  void PutUnder(std::int32_t row) {
    const std::int32_t parent = IdOf(report_, row);
    grid_.WriteCell(row, 0, OpenMark(grid_.TextMatrix(row, 0)));
    Insert(row, children_->Of(parent));
  }

 private:
  void Insert(std::int32_t parent, const std::vector<std::uint32_t>& records) {
    if (records.empty()) return;
    grid_.InsertRows(parent + 1, static_cast<std::int32_t>(records.size()));
    const std::string position = grid_.TextMatrix(parent, 0);
    const std::string tail = "-" + position.substr(0, position.size() - 1);
    const CellFormat look = grid_.FormatAt(parent, 1);
    for (std::size_t i = 0; i < records.size(); ++i) {
      const auto row = parent + 1 + static_cast<std::int32_t>(i);
      WriteRecord(row, records[i]);
      grid_.WriteCell(row, 0,
                      std::to_string(i + 1) + tail +
                          std::string(children_->Has(KeyOf(records[i])) ? "+" : kNoChildren));
      SelectRow(grid_, row);
      grid_.SetCellBackColor(ShadeColor(look.back_color, 1));
      grid_.SetCellForeColor(look.fore_color);
    }
    SelectRow(grid_, parent + 1);
  }

  const ResultColumn& Column(std::size_t field) const {
    return query_.SharedResult()->columns[field];
  }

  std::int32_t KeyOf(std::uint32_t record) const {
    const ResultColumn& ids = Column(static_cast<std::size_t>(report_.state.IDColumn));
    return text::ToInt32(ids.Number(record));
  }

  void WriteRecord(std::int32_t row, std::uint32_t record) {
    for (std::size_t field = 0; field < query_.FieldCount(); ++field) {
      const auto column = static_cast<std::int32_t>(field) + 1;
      if (column >= grid_.Cols()) return;
      text_.clear();
      if (Column(field).AdoType() == kCurrency) {
        AppendMoney(Column(field).Display(record), text_);
      } else {
        Column(field).AppendDisplay(record, text_);
      }
      grid_.WriteCell(row, column, text_);
    }
  }

  ReportContext& report_;
  Grid& grid_;
  Recordset& query_;
  std::optional<Children> children_;
  std::string text_;
};

TreeExpansion::TreeExpansion(ReportContext& report)
    : pass_(report), result_(std::make_unique<Result>(report)) {}

TreeExpansion::~TreeExpansion() = default;

void TreeExpansion::Expand(std::int32_t row) { result_->PutUnder(row); }

void ExpandTreeRow(ReportContext& report, std::int32_t row) { TreeExpansion(report).Expand(row); }

bool CollapseTreeRow(ReportContext& report, std::int32_t row) {
  Grid& grid = report.flxMain;
  const UndrawnPass pass(report);
  if (TreeMark(grid, row) == '+') return false;
  grid.RemoveRows(row + 1, EndOfDescendants(report, row) - row - 1);
  grid.SetRow(row);
  grid.SetColSel(grid.Cols() - 1);
  if (TreeMark(grid, row) == '-') grid.WriteCell(row, 0, ClosedMark(grid.TextMatrix(row, 0)));
  return true;
}

void MakeCalculatedColumns(ReportContext& report) {
  const PassWatch::Unbroken rows_have_changed(report.process.watch);
  report.flxMain.SetCols(static_cast<std::int32_t>(report.state.QueryFields.size()) + 1);
  MakeExpressionColumns(report);
}

bool ClickTreeMark(ReportContext& report, std::int32_t row) {
  const char mark = TreeMark(report.flxMain, row);
  if (mark == '+') {
    ExpandTreeRow(report, row);
  } else if (mark == '-') {
    CollapseTreeRow(report, row);
  }
  MakeCalculatedColumns(report);
  return mark == '+' || mark == '-';
}

}  // namespace vorek
