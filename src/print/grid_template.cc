#include "print/grid_template.h"

#include <algorithm>
#include <utility>

#include "text/utf8.h"

namespace vorek::print {
namespace {

constexpr double kTwipsPerMillimetre = 1440 / 25.4;
constexpr double kRow = 6;
constexpr double kHeader = 8;  // two lines
constexpr double kPadding = 0.8;
constexpr int kMostFields = 50;

struct Column {
  std::string header;
  std::string field;
  double width = 0;  // millimetres
  Align align = Align::kRight;
  Form form = Form::kPlain;
};

Align AlignOf(std::int32_t code) {
  if (code == 4) return Align::kCentre;
  return code == 1 ? Align::kLeft : Align::kRight;
}

// Braces of a title are none of fields.
std::string Literal(const std::string& text) {
  return text::Replace(text::Replace(text, "{", "{{"), "}", "}}");
}

std::vector<Column> ColumnsOf(ReportContext& report) {
  const Grid& grid = report.ActiveGrid();
  const bool transposed = report.state.isTransposedResult;
  const ColumnLayoutTable& layouts = transposed ? report.transpose_layouts() : report.layouts();
  std::vector<Column> columns;
  int number = 0;
  for (std::int32_t col = 1; col < grid.Cols() && number < kMostFields; ++col) {
    const bool hidden = grid.ColWidth(col) == 0;
    if (!hidden || !transposed) ++number;
    if (hidden) continue;
    const bool money =
        !transposed && col <= ColumnLayoutTable::kLast && layouts[col].is_money_column;
    columns.push_back({Literal(grid.TextMatrix(0, col)), "{Column" + std::to_string(number) + "}",
                       grid.ColWidth(col) / kTwipsPerMillimetre, AlignOf(grid.ColAlignment(col)),
                       money ? Form::kMoney : Form::kPlain});
  }
  return columns;
}

Item Text(double right, double top, double width, double height, std::string text) {
  Item item;
  item.right = right;
  item.top = top;
  item.width = width;
  item.height = height;
  item.text = std::move(text);
  item.size = 9;
  return item;
}

Item Line(double top, double width) {
  Item line;
  line.kind = ItemKind::kLine;
  line.top = top;
  line.width = width;
  return line;
}

Band MakeBand(BandKind kind, double height) {
  Band band;
  band.kind = kind;
  band.height = height;
  return band;
}

Band Title(const std::string& title, double width) {
  Band band = MakeBand(BandKind::kReportHeader, 14);
  Item item = Text(0, 2, width, 9, Literal(title));
  item.align = Align::kCentre;
  item.bold = true;
  item.size = 14;
  band.items.push_back(item);
  return band;
}

Band Headers(const std::vector<Column>& columns, double width) {
  Band band = MakeBand(BandKind::kPageHeader, kHeader + 2);
  band.items.push_back(Line(0.5, width));
  double right = 0;
  for (const Column& column : columns) {
    Item item = Text(right + kPadding, 1, column.width - 2 * kPadding, kHeader, column.header);
    item.align = Align::kCentre;
    item.bold = true;
    band.items.push_back(item);
    right += column.width;
  }
  band.items.push_back(Line(kHeader + 1.5, width));
  return band;
}

Band Detail(const std::vector<Column>& columns) {
  Band band = MakeBand(BandKind::kDetail, kRow);
  double right = 0;
  for (const Column& column : columns) {
    Item item = Text(right + kPadding, 0.5, column.width - 2 * kPadding, kRow - 1, column.field);
    item.align = column.align;
    item.form = column.form;
    band.items.push_back(item);
    right += column.width;
  }
  return band;
}

Band Footer(double width) {
  Band band = MakeBand(BandKind::kPageFooter, 8);
  band.items.push_back(Line(1, width));
  band.items.push_back(Text(0, 2, width / 2, 5, "{$-4}"));
  Item number = Text(width / 2, 2, width / 2, 5, "صفحه {page} از {pages}");
  number.align = Align::kLeft;
  band.items.push_back(number);
  return band;
}

}  // namespace

PrintTemplate TemplateForGrid(ReportContext& report) {
  PrintTemplate made;
  made.title = report.state.Title;
  std::vector<Column> columns = ColumnsOf(report);
  double wanted = 0;
  for (const Column& column : columns) wanted += column.width;
  if (wanted > made.PrintableWidth()) std::swap(made.width, made.height);
  const double width = made.PrintableWidth();
  const double scale = wanted > width ? width / wanted : 1;
  double used = 0;
  for (Column& column : columns) {
    column.width = std::max(column.width * scale, 2 * kPadding + 0.2);
    used += column.width;
  }
  made.bands = {Title(made.title, width), Headers(columns, std::min(used, width)), Detail(columns),
                Footer(width)};
  return made;
}

}  // namespace vorek::print
