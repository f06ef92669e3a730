#include "chart/chart_reader.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "chart/chart_area.h"
#include "chart/chart_builder.h"
#include "chart/cross_chart.h"
#include "grid/outline_mark.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

bool IsTextOrDate(int type) {
  constexpr int kTypes[] = {kDate,    kDBDate,      kDBTime,   kDBTimeStamp, kChar,
                            kVarChar, kLongVarChar, kVarWChar, kWChar,       kLongVarWChar};
  return std::find(std::begin(kTypes), std::end(kTypes), type) != std::end(kTypes);
}

class GridChart {
 public:
  GridChart(const ReportContext& report, const ColumnView& view, ChartModel& chart)
      : report_(report),
        grid_(report.flxMain),
        view_(view),
        area_(AreaOf(grid_, view)),
        chart_(chart) {}

  void Read() {
    rows_ = ChartRows(report_, area_);
    if (rows_.size() > kMostChartCategories) {
      chart_.refusal = TooManyCategories(rows_.size());
      return;
    }
    ReadCategories();
    ChartBuilder builder(chart_);
    for (const std::int32_t column : SeriesColumns()) ReadSeries(column, builder);
    builder.Finish();
    if (chart_.series.size() == 1) chart_.value_title = chart_.series[0].name;
  }

 private:
  // Null for a calculated column.
  const FieldInfo* Field(std::int32_t column) const {
    const auto field = static_cast<std::size_t>(column) - 1;
    const std::vector<FieldInfo>& fields = report_.state.QueryFields;
    return field < fields.size() ? &fields[field] : nullptr;
  }

  bool IsCategory(std::int32_t column) const {
    const FieldInfo* const field = Field(column);
    return field != nullptr && IsTextOrDate(field->type);
  }

  // The first text or date of the area, else the first one of all, else the numbers of the rows.
  std::int32_t CategoryColumn() const {
    for (const auto* const columns : {&area_.columns, &view_.Shown()}) {
      const auto found = std::find_if(columns->begin(), columns->end(),
                                      [this](std::int32_t column) { return IsCategory(column); });
      if (found != columns->end()) return *found;
    }
    return 0;
  }

  void ReadCategories() {
    const std::int32_t column = CategoryColumn();
    chart_.category_title = grid_.TextMatrix(0, column);
    chart_.categories.reserve(rows_.size());
    std::string scratch;
    for (const std::int32_t row : rows_) {
      const std::string_view text = grid_.CellView(row, column, scratch);
      chart_.categories.emplace_back(MarkOf(grid_, row, column, text).text);
    }
  }

  // What is shown with digit groups or as a time, and what is calculated.
  bool IsAmount(std::int32_t column) const {
    const FieldInfo* const field = Field(column);
    const std::optional<CellForm> form = grid_.SourceForm(column);
    return field == nullptr || IsMoneyField(field->type) || form == CellForm::kMoney ||
           form == CellForm::kNumberMoney ||
           FigureKindOf(report_.state, column) == FigureKind::kTime;
  }

  // The numbers that show. Beside amounts plain numbers are codes and counts: left out unless the
  // user chose the columns.
  std::vector<std::int32_t> SeriesColumns() const {
    std::vector<std::int32_t> numbers;
    std::copy_if(area_.columns.begin(), area_.columns.end(), std::back_inserter(numbers),
                 [this](std::int32_t column) {
                   return FigureKindOf(report_.state, column) != FigureKind::kNone;
                 });
    const auto amount = [this](std::int32_t column) { return IsAmount(column); };
    if (!area_.columns_chosen && std::any_of(numbers.begin(), numbers.end(), amount)) {
      std::erase_if(numbers, [&](std::int32_t column) { return !amount(column); });
    }
    return numbers;
  }

  void ReadSeries(std::int32_t column, ChartBuilder& builder) const {
    const FigureKind kind = FigureKindOf(report_.state, column);
    const std::string name = grid_.TextMatrix(0, column);
    std::vector<ChartValue> values;
    values.reserve(rows_.size());
    bool texts = false;
    for (std::size_t at = 0; at < rows_.size(); ++at) {
      const ChartCell cell = ReadChartCell(grid_, rows_[at], column, kind);
      texts = texts || cell.other;
      builder.Take(cell, name, chart_.categories[at], values);
    }
    // A calculated column of texts with a number among them is no series.
    if (texts && Field(column) == nullptr) return;
    builder.Add(name, kind, std::move(values));
  }

  const ReportContext& report_;
  const Grid& grid_;
  const ColumnView& view_;
  ChartArea area_;
  ChartModel& chart_;
  std::vector<std::int32_t> rows_;
};

}  // namespace

ChartModel ReadChart(const ReportContext& report, const ColumnView& view, bool turned) {
  ChartModel chart;
  chart.title = report.state.Title;
  if (report.state.FoundRows < 0) {
    chart.refusal = "هنوز نتيجه اي براي رسم نمودار نيست.";
  } else if (report.state.isTransposedResult) {
    ReadCrossChart(report, view, turned, chart);
  } else {
    GridChart(report, view, chart).Read();
  }
  return chart;
}

}  // namespace vorek
