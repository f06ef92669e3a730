#include "grid/cross_table.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "catalog/report_row.h"
#include "grid/column_layout_pass.h"
#include "grid/row_ranks.h"
#include "text/number.h"

namespace vorek {
namespace {

constexpr int kHourglass = 11;
constexpr std::int32_t kTextExact = 7;  // kinds of sort
constexpr std::int32_t kGenericAscending = 1;
constexpr std::int32_t kMostColumns = ColumnLayoutTable::kLast;

// The hourglass and the bar while it lives, and no drawing of the table.
class Pass {
 public:
  explicit Pass(ReportContext& report) : report_(report) {
    report.process.windows().SetMousePointer(kHourglass);
    report.flxTranspose.SetRedraw(false);
    if (report.Progress == nullptr) return;
    report.Progress->SetVisible(true);
    report.Progress->ZOrder();
    report.Progress->SetValue(0);
  }
  ~Pass() {
    if (report_.Progress != nullptr) report_.Progress->SetVisible(false);
    report_.flxTranspose.SetRedraw(true);
    report_.process.windows().SetMousePointer(0);
  }
  Pass(const Pass&) = delete;
  Pass& operator=(const Pass&) = delete;

 private:
  ReportContext& report_;
};

// The rows of the result by their keys, with the place of each row's value among the values.
struct SourceRow {
  std::uint32_t key;
  std::uint32_t value;
};

class CrossTable {
 public:
  explicit CrossTable(ReportContext& report)
      : report_(report),
        source_(report.flxMain),
        table_(report.flxTranspose),
        base_(report.state.TransposeColumns) {
    for (std::int32_t column = 1; column < source_.Cols(); ++column) {
      const bool spread = column == report.state.TransposeRowColumn;
      if (!spread && !isTransposeColumn(report.state, column)) values_.push_back(column);
    }
    // As many as the table has room for; a base column that is named twice counts twice.
    const auto counted = source_.Cols() - 2 - static_cast<std::int32_t>(base_.size());
    has_sub_rows_ = counted >= 2;
    for (const std::int32_t value : values_) sub_rows_.push_back(FirstWithHeaderOf(value));
  }

  // Sub-rows tell by their header in column 1 what they hold: without a base column a value would
  // stand there.
  bool HasItsBase() const { return !has_sub_rows_ || !base_.empty(); }

  // False, and nothing built, if the table would be too wide.
  bool Build() {
    ReadValues();
    if (headers_.size() + base_.size() > static_cast<std::size_t>(kMostColumns)) return false;
    PrepareTable();
    SortByKey();
    AddRows();
    Finish();
    return true;
  }
  std::size_t ValueCount() const { return headers_.size(); }

 private:
  // The values in their order; one that comes again behind another counts again.
  void ReadValues() {
    const std::int32_t column = report_.state.TransposeRowColumn;
    source_.SetCol(column);
    source_.Sort(kTextExact);
    rows_.reserve(static_cast<std::size_t>(source_.Rows()));
    const std::vector<bool> changes = source_.Changes(column);
    for (std::int32_t row = 1; row < source_.Rows(); ++row) {
      Ask(row);
      if (changes[static_cast<std::size_t>(row)]) {
        headers_.push_back(source_.TextMatrix(row, column));
      }
      rows_.push_back({0, static_cast<std::uint32_t>(headers_.size()) - 1});
    }
  }

  void PrepareTable() {
    table_.SetRows(2);
    table_.SetFixedRows(1);
    table_.SetRows(1);
    table_.SetFontSize(source_.FontSize());
    table_.SetRowHeightMin(source_.RowHeightMin());
    table_.SetCols(static_cast<std::int32_t>(headers_.size() + base_.size()) + 1);
    table_.WriteCell(0, 0, "رديف");
    table_.SetOutlineKind(Outline::kCrossTable);
    table_.SetSortedBy({});
    std::int32_t column = 0;
    for (const std::int32_t base : base_) WriteBaseHeader(++column, base);
    for (const std::string& header : headers_) WriteValueHeader(++column, header);
    report_.transpose_layouts()[column + 1].header_text.clear();
    AlignFlexes(report_, false);
  }

  std::int32_t TextWidth(const std::string& text) const {
    return report_.process.windows().TextWidth(text, 0);
  }

  void WriteBaseHeader(std::int32_t column, std::int32_t base) {
    const std::string header = source_.TextMatrix(0, base);
    ColumnLayout& layout = report_.transpose_layouts()[column];
    if (layout.header_text.empty()) {
      layout.alignment = report_.layouts()[base].alignment;
      layout.width = Narrowed(TextWidth(header) + 300);
      layout.is_money_column = report_.layouts()[base].is_money_column;
    }
    WriteHeader(column, header);
  }

  void WriteValueHeader(std::int32_t column, const std::string& header) {
    ColumnLayout& layout = report_.transpose_layouts()[column];
    if (layout.header_text.empty()) {
      layout.width = Narrowed(TextWidth(header) + 300);
      layout.alignment = 4;
    }
    WriteHeader(column, header);
  }

  static std::int16_t Narrowed(std::int32_t twips) {
    return static_cast<std::int16_t>(std::min(twips, 32767));
  }

  // Values are looked for by their header among all columns, the base columns' headers too.
  void WriteHeader(std::int32_t column, const std::string& header) {
    report_.transpose_layouts()[column].header_text = header;
    table_.WriteCell(0, column, header);
    columns_.try_emplace(header, column);
  }

  // The keys are the texts of the base columns one behind the other, without anything between.
  void SortByKey() {
    RowRanks ranks(rows_.size(), true);
    std::string key;
    std::string scratch;
    for (std::int32_t row = 1; row < source_.Rows(); ++row) {
      Ask(row);
      key.clear();
      for (const std::int32_t base : base_) key += source_.CellView(row, base, scratch);
      rows_[static_cast<std::size_t>(row) - 1].key = ranks.Add(key, false);
    }
    const std::vector<std::uint32_t> sorted = ranks.Sorted(true, false, [this] { Ask(0); });
    source_.Rearrange(BehindFixedRows(1, sorted));
    std::vector<SourceRow> moved;
    moved.reserve(rows_.size());
    for (const std::uint32_t row : sorted) moved.push_back(rows_[row]);
    rows_ = std::move(moved);
  }

  void Ask(std::int32_t row) { report_.process.watch.At(row); }

  void AddRows() {
    const std::size_t quarter = std::max<std::size_t>(rows_.size() / 4, 1);
    std::size_t next = quarter;
    // The sorts before have moved the bar.
    if (report_.Progress != nullptr) report_.Progress->SetValue(0);
    target_.assign(headers_.size(), 0);
    for (std::size_t value = 0; value < headers_.size(); ++value) {
      target_[value] = columns_.at(headers_[value]);
    }
    last_row_.assign(static_cast<std::size_t>(table_.Cols()), 0);
    for (std::size_t begin = 0; begin < rows_.size();) {
      Ask(table_.Rows());
      std::size_t end = begin + 1;
      while (end < rows_.size() && rows_[end].key == rows_[begin].key) ++end;
      AddKey(begin, end);
      begin = end;
      for (; begin >= next; next += quarter) Advance();
    }
  }

  void Advance() {
    if (report_.Progress != nullptr) report_.Progress->SetValue(report_.Progress->Value() + 25);
  }

  void Finish() {
    if (table_.Rows() > 1) {
      table_.SetFixedCols(1);
      table_.SetColWidth(0, source_.ColWidth(0));
    } else {
      table_.Clear();
      table_.SetRows(2);
      table_.SetCols(2);
    }
    table_.SetFixedRows(1);
    source_.SetRow(0);
    source_.SetCol(source_.Cols() - 1);
  }

  // The rows of one key: of several for one cell the last one counts.
  void AddKey(std::size_t begin, std::size_t end) {
    const auto first = static_cast<std::int32_t>(begin) + 1;
    const std::int32_t row = table_.Rows();
    table_.AddItem(std::to_string(row));
    for (std::size_t i = 0; i < base_.size(); ++i) {
      table_.WriteCell(row, static_cast<std::int32_t>(i) + 1,
                       source_.CellView(first, base_[i], scratch_));
    }
    if (has_sub_rows_) AddSubRows(row);
    touched_.clear();
    for (std::size_t i = begin; i < end; ++i) {
      const std::int32_t column = target_[rows_[i].value];
      std::int32_t& last = last_row_[static_cast<std::size_t>(column)];
      if (last == 0) touched_.push_back(column);
      last = static_cast<std::int32_t>(i) + 1;
    }
    for (const std::int32_t column : touched_) {
      WriteValues(std::exchange(last_row_[static_cast<std::size_t>(column)], 0), row, column);
    }
  }

  void AddSubRows(std::int32_t row) {
    table_.WriteCell(row, 0, "+");
    table_.WriteCell(0, 0, "");
    for (const std::int32_t value : values_) {
      const std::int32_t sub_row = table_.Rows();
      table_.AddItem("");
      table_.WriteCell(sub_row, 1, source_.CellView(0, value, scratch_));
      table_.SetRowHeight(sub_row, 0);
      table_.SetRowBackColor(sub_row, kLightBlue);
    }
    table_.SetRow(table_.Rows() - 1);
    table_.SetCol(1);
    table_.SetColSel(table_.Cols() - 1);
  }

  void WriteValues(std::int32_t from, std::int32_t row, std::int32_t column) {
    for (std::size_t i = 0; i < values_.size(); ++i) {
      const std::int32_t to = has_sub_rows_ ? row + 1 + sub_rows_[i] : row;
      table_.WriteCell(to, column, source_.CellView(from, values_[i], scratch_));
    }
  }

  // Which value column is the first with this one's header: its sub-row takes both.
  std::int32_t FirstWithHeaderOf(std::int32_t value) const {
    const auto same = std::find_if(values_.begin(), values_.end(), [&](std::int32_t other) {
      return source_.TextMatrix(0, other) == source_.TextMatrix(0, value);
    });
    return static_cast<std::int32_t>(same - values_.begin());
  }

  ReportContext& report_;
  Grid& source_;
  Grid& table_;
  const std::vector<std::int32_t>& base_;
  std::vector<std::int32_t> values_;    // columns whose cells are spread
  std::vector<std::int32_t> sub_rows_;  // of each of them, counted from the one behind the base row
  std::vector<std::string> headers_;
  std::unordered_map<std::string, std::int32_t> columns_;  // of the table, by header
  std::vector<SourceRow> rows_;                            // of flxMain from row 1 on
  std::vector<std::int32_t> target_;                       // the column of each value
  std::vector<std::int32_t> last_row_;                     // of a key, by column; 0 for none
  std::vector<std::int32_t> touched_;
  bool has_sub_rows_ = false;
  std::string scratch_;
};

// One stored row; each statement that fails is passed over.
void LayOutColumn(Grid& table, const Recordset& row) {
  std::int32_t column = 0;
  if (!IgnoreErrors([&] { column = row.Field("ColumnNumber").Number(); })) return;
  IgnoreErrors([&] { table.SetColAlignment(column, row.Field("Alignment").Number()); });
  IgnoreErrors([&] { table.SetColWidth(column, row.Field("Width").Number()); });
  IgnoreErrors([&] {
    if (!row.Field("SortedAfterTransporting").Flag()) return;
    table.SetCol(column);
    table.Sort(kGenericAscending);
    table.SetSortedBy({column, false});
    table.NumberRows();
  });
}

// The stored layout of the cross table, or widths by the headers.
void LayOutTable(ReportContext& report) {
  Grid& table = report.flxTranspose;
  Recordset& slot = report.process.dten().rssqlGeneral1;
  OpenSlot(slot, CrossTableQuery(report.state.ReportID, table.Cols() - 1));
  if (slot.RecordCount() == 0) {
    for (std::int32_t column = 0; column < table.Cols(); ++column) {
      const std::int32_t width = report.process.windows().TextWidth(table.TextMatrix(0, column), 0);
      table.SetColAlignment(column, 7);
      table.SetColWidth(column, std::max(1200, text::ToInt32(width * 1.05 + 200)));
    }
  }
  for (; !slot.AtEnd(); slot.MoveNext()) LayOutColumn(table, slot);
  slot.Close();
}

void ShowTable(ReportContext& report) {
  report.flxTranspose.ZOrder();
  report.flxTranspose.SetFocusRect(0);
  report.flxTranspose.SetHighLight(1);
  report.flxTranspose.SetVisible(true);
  report.flxMain.SetVisible(false);
  report.state.ReportDistributed = "نمايش معمولي";
}

void TellTooWide(ReportContext& report, std::size_t values) {
  const std::string header = report.flxMain.TextMatrix(0, report.state.TransposeRowColumn);
  report.notices.ShowMessage(
      "اشکال", "گزارش " + std::to_string(report.state.ReportID) + " «" + report.state.Title +
                   "»: ستون «" + header + "» " + std::to_string(values) +
                   " مقدار متفاوت دارد و جدول متقاطع بيش از 2500 ستون نمي پذيرد.");
}

// True if the table stands.
bool BuildTable(ReportContext& report) {
  CrossTable table(report);
  if (!table.HasItsBase()) {
    report.notices.ShowMessage("اشکال", "ستونهاي پايه به درستي انتخاب نشده است.");
    return false;
  }
  if (!table.Build()) {
    TellTooWide(report, table.ValueCount());
    return false;
  }
  return true;
}

}  // namespace

bool isTransposeColumn(const ReportState& state, std::int32_t column) {
  return std::count(state.TransposeColumns.begin(), state.TransposeColumns.end(), column) > 0;
}

void ApplyTranspose(ReportContext& report) {
  report.state.isTransposedResult = true;
  ReadColumnLayout(report);
  bool built = false;
  if (report.state.TransposeRowColumn != -1) {
    const Pass pass(report);
    IgnoreErrors([&] { built = BuildTable(report); });
    // What isn't built isn't on view either, and nobody may read it for the report.
    report.state.isTransposedResult = built;
    if (built) LayOutTable(report);
  }
  if (built) {
    ShowTable(report);
  } else {
    report.flxTranspose.SetVisible(false);
    report.flxMain.SetVisible(true);
  }
}

}  // namespace vorek
