#include "export/plain_money.h"

#include <algorithm>

#include "text/cell_text.h"
#include "text/character_set.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek {
namespace {

constexpr std::size_t kShortest = 4;  // characters of a text with a digit group

std::string_view BeforePoint(std::string_view text) {
  const std::size_t point = text.find('.');
  return point == 0 ? text : text.substr(0, point);
}

// The byte at which the fourth character from the right begins; npos in a shorter text.
std::size_t FourthFromRight(std::string_view text) {
  std::size_t at = text.size();
  for (std::size_t count = 0; count < kShortest; ++count) {
    if (at == 0) return std::string_view::npos;
    --at;
    while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80) --at;
  }
  return at;
}

bool IsWitness(std::string_view text) {
  const std::size_t at = FourthFromRight(text);
  return at != std::string_view::npos && text[at] == '/';
}

bool IsAgainst(std::string_view text) {
  return text.find('/') == std::string_view::npos &&
         FourthFromRight(text) != std::string_view::npos;
}

// Whether the source gives all of its records as numbers without digit groups. Other rows, as those
// of sums, may have them.
bool SourceHasNoGroups(const Grid& grid, std::int32_t column) {
  const TextSource* const source = grid.ColumnSource(column);
  if (source == nullptr || !source->GivesNumbers()) return false;
  const std::optional<CellForm> form = grid.SourceForm(column);
  return form == CellForm::kPlain || form == CellForm::kNumber;
}

enum class Cells { kAll, kWritten };

template <typename Test>
bool AnyCell(const Grid& grid, std::int32_t column, Cells cells, const Test& test) {
  std::string scratch;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    if (cells == Cells::kWritten && grid.IsSourced(row, column)) continue;
    if (test(BeforePoint(grid.CellView(row, column, scratch)))) return true;
  }
  return false;
}

// The money form of a field's own number is the one that it shows, save for a bracketed one of more
// digits than brackets keep.
bool StaysAsItIs(const Grid& grid, std::int32_t row, std::int32_t column, bool money_form) {
  constexpr double kFewDigits = -1e10;  // with four decimals
  return money_form && grid.IsNumber(row, column) && grid.CellValue(row, column) > kFewDigits;
}

void PutColumnBack(Grid& grid, std::int32_t column) {
  const std::optional<CellForm> form = grid.SourceForm(column);
  const bool money_form = form == CellForm::kMoney || form == CellForm::kNumberMoney;
  std::string scratch;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    if (StaysAsItIs(grid, row, column, money_form)) continue;
    const std::string_view shown = grid.CellView(row, column, scratch);
    // A number beyond all money stays as it was.
    IgnoreErrors([&] {
      std::string text = UnformatNumber(shown);
      FormatMoney(text);
      if (text != shown) grid.WriteCell(row, column, text);
    });
  }
}

}  // namespace

bool LooksLikeMoney(const Grid& grid, std::int32_t column) {
  const Cells cells = SourceHasNoGroups(grid, column) ? Cells::kWritten : Cells::kAll;
  if (cells == Cells::kWritten && grid.IsSourced(column)) return false;
  return AnyCell(grid, column, cells, IsWitness) && !AnyCell(grid, column, Cells::kAll, IsAgainst);
}

Grid& GridOnShow(ReportContext& report) {
  return report.state.ReportDistributed != "توزيع شده" ? report.flxTranspose : report.flxMain;
}

PlainMoney::PlainMoney(ReportContext& report)
    : report_(report),
      main_(static_cast<std::size_t>(report.flxMain.Cols())),
      transpose_(static_cast<std::size_t>(report.flxTranspose.Cols())) {
  TakeMoneyFields();
  TakeCrossTable();
  TakeMoneyTexts();
}

PlainMoney::~PlainMoney() {
  IgnoreAllErrors([this] { PutBack(); });
}

void PlainMoney::TakeMoneyFields() {
  const std::vector<FieldInfo>& fields = report_.state.QueryFields;
  for (std::size_t field = 0; field < fields.size(); ++field) {
    const std::size_t column = field + 1;
    const bool money = IsMoneyField(fields[field].type);
    if (column <= ColumnLayoutTable::kLast) {
      report_.layouts()[static_cast<std::int32_t>(column)].is_money_column = money;
    }
    if (money && column < main_.size()) main_[column] = true;
  }
}

void PlainMoney::TakeCrossTable() {
  if (&GridOnShow(report_) != &report_.flxTranspose) return;
  const std::size_t known = static_cast<std::size_t>(ColumnLayoutTable::kLast) + 1;
  for (std::size_t column = 1; column < std::min(transpose_.size(), known); ++column) {
    const auto number = static_cast<std::int32_t>(column);
    if (report_.transpose_layouts()[number].is_money_column) transpose_[column] = true;
  }
}

void PlainMoney::TakeMoneyTexts() {
  Grid& grid = GridOnShow(report_);
  Columns& columns = &grid == &report_.flxMain ? main_ : transpose_;
  for (std::size_t column = 1; column < columns.size(); ++column) {
    if (columns[column]) continue;
    if (LooksLikeMoney(grid, static_cast<std::int32_t>(column))) columns[column] = true;
  }
}

std::string_view PlainMoney::Text(const Grid& grid, std::int32_t row, std::int32_t col,
                                  std::string& scratch) const {
  if (row < 1 || !Takes(grid, col)) return grid.CellView(row, col, scratch);
  return TextOf(grid.ColumnCells(col), grid.RowHandle(row), scratch);
}

std::string_view PlainMoney::TextOf(const GridColumn& cells, std::uint32_t handle,
                                    std::string& scratch) {
  const std::string_view plain = cells.Plain(handle, scratch);
  static constexpr text::CharacterSet kReadOtherwise("()/ ");
  if (!kReadOtherwise.AnyIn(plain)) return plain;
  scratch = UnformatNumber(plain);
  return scratch;
}

void PlainMoney::TakeOut() {
  std::string scratch;
  for (Grid* const grid : {&report_.flxMain, &report_.flxTranspose}) {
    const Columns& columns = ColumnsOf(*grid);
    for (std::size_t column = 1; column < columns.size(); ++column) {
      if (!columns[column]) continue;
      const auto number = static_cast<std::int32_t>(column);
      for (std::int32_t row = 1; row < grid->Rows(); ++row) {
        grid->WriteCell(row, number, Text(*grid, row, number, scratch));
      }
    }
  }
}

void PlainMoney::PutBack() {
  if (put_back_) return;
  put_back_ = true;
  for (Grid* const grid : {&report_.flxMain, &report_.flxTranspose}) {
    const Columns& columns = ColumnsOf(*grid);
    for (std::size_t column = 1; column < columns.size(); ++column) {
      const auto number = static_cast<std::int32_t>(column);
      if (columns[column] && number < grid->Cols()) PutColumnBack(*grid, number);
    }
  }
}

}  // namespace vorek
