#include "chart/cross_chart.h"

#include <algorithm>
#include <utility>

#include "chart/chart_area.h"
#include "chart/chart_builder.h"
#include "chart/chart_reader.h"
#include "grid/cross_table.h"
#include "grid/outline_mark.h"
#include "grid/summary_label.h"

namespace vorek {
namespace {

// A row of values: the base row itself, or one of its sub-rows.
struct CrossRow {
  std::int32_t row = 0;
  std::string base;
  std::string value;  // the header of the value column that it holds
  FigureKind kind = FigureKind::kNumber;
};

struct CrossColumn {
  std::int32_t column = 0;
  std::string name;
};

class CrossChart {
 public:
  CrossChart(const ReportContext& report, const ColumnView& view, ChartModel& chart)
      : report_(report),
        source_(report.flxMain),
        table_(report.flxTranspose),
        area_(AreaOf(table_, view)),
        bases_(static_cast<std::int32_t>(report.state.TransposeColumns.size())),
        chart_(chart) {
    has_sub_rows_ = source_.Cols() - 2 - bases_ >= 2;
    for (std::int32_t column = 1; column < source_.Cols(); ++column) {
      const bool spread = column == report.state.TransposeRowColumn;
      if (!spread && !isTransposeColumn(report.state, column)) values_.push_back(column);
    }
  }

  void Read(bool turned) {
    ReadRows();
    ReadColumns();
    NameRows();
    if (rows_.size() > kMostChartCategories) {
      chart_.refusal = TooManyCategories(rows_.size());
      return;
    }
    chart_.cross_table = true;
    const bool rows_are_longer = rows_.size() > columns_.size();
    ChartBuilder builder(chart_);
    if (rows_are_longer != turned) {
      SeriesByColumn(builder);
    } else {
      SeriesByRow(builder);
    }
    builder.Finish();
  }

 private:
  // The rows that show. Where only base rows do, whose cells are empty, the first value of each
  // stands for it.
  void ReadRows() {
    std::string base;
    std::vector<CrossRow> closed;
    bool first = false;
    for (std::int32_t row = table_.FixedRows(); row <= area_.last_row; ++row) {
      if (IsSummaryRow(table_, row)) continue;
      const bool shows = table_.RowHeight(row) != 0;
      const bool taken = row >= area_.first_row;
      if (!has_sub_rows_ || !table_.TextMatrix(row, 0).empty()) {
        base = BaseName(row);
        first = true;
        if (!has_sub_rows_ && shows && taken) AddRow(row, base, rows_);
      } else {
        if (taken && (shows || first)) AddRow(row, base, shows ? rows_ : closed);
        first = false;
      }
    }
    if (rows_.empty()) rows_ = std::move(closed);
  }

  void AddRow(std::int32_t row, const std::string& base, std::vector<CrossRow>& rows) const {
    if (values_.empty()) return;
    const std::string header = table_.TextMatrix(row, 1);
    const auto found = std::find_if(values_.begin(), values_.end(), [&](std::int32_t column) {
      return source_.TextMatrix(0, column) == header;
    });
    const bool named = has_sub_rows_ && found != values_.end();
    const std::int32_t value = named ? *found : values_.front();
    rows.push_back({row, base, source_.TextMatrix(0, value), FigureKindOf(report_.state, value)});
  }

  std::string BaseName(std::int32_t row) const {
    std::string name;
    for (std::int32_t column = 1; column <= bases_; ++column) {
      const std::string text = table_.TextMatrix(row, column);
      if (!name.empty() && !text.empty()) name += " - ";
      name += text;
    }
    return name;
  }

  // Without the columns that are closed, and without an open one, for which those below it stand.
  void ReadColumns() {
    for (const std::int32_t column : area_.columns) {
      if (column <= bases_) continue;
      std::string name = table_.TextMatrix(0, column);
      const char sign = HeaderSign(table_, column, name);
      if (sign == '-') continue;
      if (sign == '+') name.erase(0, 1);
      columns_.push_back({column, std::move(name)});
    }
  }

  // One value that all rows hold names the axis, several ones name their rows.
  void NameRows() {
    std::erase_if(rows_, [](const CrossRow& row) { return row.kind == FigureKind::kNone; });
    if (rows_.empty()) return;
    const bool one = std::all_of(rows_.begin(), rows_.end(), [this](const CrossRow& row) {
      return row.value == rows_.front().value;
    });
    if (one) {
      chart_.value_title = rows_.front().value;
      return;
    }
    for (CrossRow& row : rows_) row.base += " - " + row.value;
  }

  ChartCell Cell(const CrossRow& row, const CrossColumn& column) const {
    return ReadChartCell(table_, row.row, column.column, row.kind);
  }

  void SeriesByRow(ChartBuilder& builder) {
    chart_.category_title = source_.TextMatrix(0, report_.state.TransposeRowColumn);
    for (const CrossColumn& column : columns_) chart_.categories.push_back(column.name);
    for (const CrossRow& row : rows_) {
      std::vector<ChartValue> values;
      for (const CrossColumn& column : columns_) {
        builder.Take(Cell(row, column), row.base, column.name, values);
      }
      builder.Add(row.base, row.kind, std::move(values));
    }
  }

  // A series holds the values of one kind: rows of another one than the first's are left out.
  void SeriesByColumn(ChartBuilder& builder) {
    for (std::int32_t column = 1; column <= bases_; ++column) {
      chart_.category_title += (column > 1 ? " - " : "") + table_.TextMatrix(0, column);
    }
    if (rows_.empty()) return;
    const FigureKind kind = rows_.front().kind;
    std::erase_if(rows_, [&](const CrossRow& row) {
      if (row.kind != kind) builder.LeaveOut(row.base);
      return row.kind != kind;
    });
    for (const CrossRow& row : rows_) chart_.categories.push_back(row.base);
    for (const CrossColumn& column : columns_) {
      std::vector<ChartValue> values;
      for (const CrossRow& row : rows_) {
        builder.Take(Cell(row, column), column.name, row.base, values);
      }
      builder.Add(column.name, kind, std::move(values));
    }
  }

  const ReportContext& report_;
  const Grid& source_;
  const Grid& table_;
  ChartArea area_;
  std::int32_t bases_;
  ChartModel& chart_;
  bool has_sub_rows_ = false;
  std::vector<std::int32_t> values_;  // columns of the source
  std::vector<CrossRow> rows_;
  std::vector<CrossColumn> columns_;
};

}  // namespace

std::string TooManyCategories(std::size_t count) {
  return "نمودار " + GroupDigits(static_cast<FixedPoint>(count)) + " رديف رسم نمي شود؛ تا " +
         GroupDigits(static_cast<FixedPoint>(kMostChartCategories)) +
         " رديف را انتخاب يا فيلتر كنيد.";
}

void ReadCrossChart(const ReportContext& report, const ColumnView& view, bool turned,
                    ChartModel& chart) {
  CrossChart(report, view, chart).Read(turned);
}

}  // namespace vorek
