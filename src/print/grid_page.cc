#include "print/grid_page.h"

#include <algorithm>
#include <utility>

#include "print/paper_color.h"
#include "text/utf8.h"

namespace vorek::print {
namespace {

constexpr std::int32_t kHeaderFill = 0xE8ECF1;
constexpr std::int32_t kTotalsFill = 0xF3F5F8;
constexpr std::int32_t kLineColor = 0xA9B1BC;
constexpr double kHairLine = 0.1;
constexpr double kMarkEms = 1.1;  // a sign with the gap behind it
constexpr double kMillimetresPerPoint = 25.4 / 72;

// 1 left, 4 centre, 7 right; the numbers beside each of them are its top and its bottom.
Align AlignOf(std::int32_t code) {
  if (code >= 6 && code <= 8) return Align::kRight;
  return code >= 3 && code <= 5 ? Align::kCentre : Align::kLeft;
}

}  // namespace

GridPage::GridPage(const GridPrint& print, std::size_t page)
    : print_(print),
      grid_(print.grid_),
      measures_(print.measures_),
      sheet_(print.sheets_.sheets[page % print.sheets_.sheets.size()]),
      page_(page),
      band_(page / print.sheets_.sheets.size()),
      width_(WidthOf(sheet_)),
      top_(print.setup_.margin) {}

std::vector<DrawnItem> GridPage::Draw() {
  DrawHead();
  lines_top_ = ruled_from_ = top_;
  DrawHeaders();
  DrawRows();
  DrawLines();
  DrawFooter();
  return std::move(drawn_);
}

// --- Around the grid
// ------------------------------------------------------------------------------

// The first page tells all conditions, the others the title alone: it's one list.
void GridPage::DrawHead() {
  const double room = print_.setup_.RoomAcross();
  if (band_ == 0) {
    AddText(print_.heading_.title, 0, room, measures_.title - 2, {Align::kCentre, -1, 0, true},
            GridMeasures::kTitlePoints);
    top_ += measures_.title;
    AddText(print_.heading_.conditions, 0, room, std::max(measures_.conditions - 1.5, 0.0), {},
            GridMeasures::kHeadingPoints);
    top_ += measures_.conditions;
    return;
  }
  AddText(print_.heading_.title, 0, room, measures_.later_title - 2, {Align::kRight, -1, 0, true},
          GridMeasures::kHeadingPoints);
  top_ += measures_.later_title;
}

void GridPage::DrawFooter() {
  constexpr double kPoints = 8;
  const PageSetup& setup = print_.setup_;
  const double room = setup.RoomAcross();
  top_ = setup.PaperHeight() - setup.margin - GridMeasures::kFooter + 2;
  const std::string number =
      "صفحه " + std::to_string(page_ + 1) + " از " + std::to_string(print_.PageCount());
  const double height = GridMeasures::kFooter - 2;
  AddText(print_.heading_.printed, 0, room / 2, height, {}, kPoints);
  AddText(number, room / 2, room / 2, height, {Align::kLeft, -1, 0, false}, kPoints);
}

// --- The grid
// -------------------------------------------------------------------------------------

void GridPage::DrawHeaders() {
  for (std::int32_t row = 0; row < grid_.FixedRows(); ++row) DrawRow(row, measures_.header_row);
}

void GridPage::DrawRows() {
  const bool totals = !print_.totals_.empty();
  const bool last = band_ + 1 == print_.breaks_.Count();
  const PageBreaks::Rows rows = print_.breaks_.On(band_);
  if (totals && band_ > 0) DrawTotals("نقل از صفحه قبل", &ColumnTotals::Before);
  for (std::size_t place = rows.first; place < rows.end; ++place) {
    DrawRow(print_.rows_.RowAt(place), measures_.row);
  }
  if (totals && rows.end > rows.first) DrawTotals("جمع صفحه", &ColumnTotals::OnPage);
  if (totals && !last) DrawTotals("نقل به صفحه بعد", &ColumnTotals::Through);
  for (std::size_t i = 0; last && i < print_.rows_.SummaryCount(); ++i) {
    DrawRow(print_.rows_.RowAt(print_.rows_.Count() + i), measures_.row);
  }
}

void GridPage::DrawRow(std::int32_t row, double height) {
  std::vector<Look> looks;
  for (const SheetColumn& at : sheet_) looks.push_back(LookOf(row, at.column));
  DrawFills(looks, height);
  for (std::size_t i = 0; i < sheet_.size(); ++i) DrawCell(row, sheet_[i], looks[i], height);
  EndLine(height);
}

GridPage::Look GridPage::LookOf(std::int32_t row, std::int32_t col) const {
  const CellFormat format = grid_.FormatAt(row, col);
  const bool header = row < grid_.FixedRows();
  const bool fixed = header || col < grid_.FixedCols();
  const std::int32_t alignment = format.alignment >= 0 ? format.alignment
                                 : fixed               ? grid_.FixedAlignment(col)
                                                       : grid_.ColAlignment(col);
  const PaperColors colors = ColorsOnPaper(format.back_color, format.fore_color);
  const bool own_ground = header && format.back_color < 0;
  return {AlignOf(alignment), own_ground ? kHeaderFill : colors.fill, colors.text,
          format.bold || header};
}

// Neighbours of one colour are one box.
void GridPage::DrawFills(const std::vector<Look>& looks, double height) {
  for (std::size_t first = 0; first < looks.size();) {
    std::size_t end = first + 1;
    while (end < looks.size() && looks[end].fill == looks[first].fill) ++end;
    const double begin = sheet_[first].before;
    const double width = sheet_[end - 1].before + sheet_[end - 1].width - begin;
    if (looks[first].fill >= 0) AddFill(begin, width, height, looks[first].fill);
    first = end;
  }
}

void GridPage::DrawCell(std::int32_t row, const SheetColumn& at, const Look& look, double height) {
  const std::string text = grid_.TextMatrix(row, at.column);
  const OutlineMark mark = MarkOf(grid_, row, at.column, text);
  if (mark.in_outline) {
    DrawOutlined(mark, at, look, height);
    return;
  }
  const double width = at.width - 2 * measures_.padding;
  AddText(text, at.before + measures_.padding, width, height, look, measures_.points);
}

// The sign, then the text beside it; a lower level is set in as far as there is room.
void GridPage::DrawOutlined(const OutlineMark& mark, const SheetColumn& at, const Look& look,
                            double height) {
  const double em = measures_.points * kMillimetresPerPoint;
  const double sign = kMarkEms * em;
  const double text = AboutWidth(text::Length(mark.text), measures_.points);
  const double room = std::max(at.width - 2 * measures_.padding - sign, 0.0);
  const double step = std::clamp(mark.depth * em, 0.0, std::max(room - text, 0.0));
  const double before = at.before + measures_.padding + step;
  Look beside = look;
  beside.align = Align::kCentre;
  if (mark.sign != '\0') {
    AddText(std::string(1, mark.sign), before, sign, height, beside, measures_.points);
  }
  beside.align = grid_.RightToLeft() ? Align::kRight : Align::kLeft;
  AddText(std::string(mark.text), before + sign, room - step, height, beside, measures_.points);
}

const ColumnTotals* GridPage::TotalsOf(std::int32_t column) const {
  const auto found =
      std::find_if(print_.totals_.begin(), print_.totals_.end(),
                   [column](const ColumnTotals& totals) { return totals.column == column; });
  return found == print_.totals_.end() ? nullptr : &*found;
}

// The first columns side by side without totals that have the room for a label, or the widest ones.
SheetColumn GridPage::LabelPlace() const {
  const double wanted = AboutWidth(text::Length("نقل از صفحه قبل"), measures_.points);
  std::vector<SheetColumn> runs(1);
  for (const SheetColumn& at : sheet_) {
    SheetColumn& run = runs.back();
    if (TotalsOf(at.column) != nullptr) {
      runs.emplace_back();
    } else if (run.width == 0) {
      run = at;
    } else {
      run.width += at.width;
    }
  }
  const auto by_width = [](const SheetColumn& a, const SheetColumn& b) {
    return a.width < b.width;
  };
  const auto first = std::find_if(runs.begin(), runs.end(),
                                  [&](const SheetColumn& run) { return run.width >= wanted; });
  return first != runs.end() ? *first : *std::max_element(runs.begin(), runs.end(), by_width);
}

void GridPage::DrawTotals(const char* label, Total total) {
  const double height = measures_.row;
  const double padding = measures_.padding;
  RuleColumns();
  AddFill(0, width_, height, kTotalsFill);
  const SheetColumn place = LabelPlace();
  AddText(label, place.before + padding, place.width - 2 * padding, height,
          {grid_.RightToLeft() ? Align::kRight : Align::kLeft, -1, 0, true}, measures_.points);
  for (const SheetColumn& at : sheet_) {
    const ColumnTotals* const totals = TotalsOf(at.column);
    if (totals == nullptr) continue;
    const Look look{AlignOf(grid_.ColAlignment(at.column)), -1, 0, true};
    AddText((totals->*total)(band_), at.before + padding, at.width - 2 * padding, height, look,
            measures_.points);
  }
  EndLine(height);
  ruled_from_ = top_;
}

// Long lines, not four a cell: a page is drawn in less time and takes less of a file.
void GridPage::DrawLines() {
  RuleColumns();
  AddLine(0, lines_top_, width_, 0);
  for (const double end : line_ends_) AddLine(0, end, width_, 0);
  AddLine(0, lines_top_, 0, top_ - lines_top_);
  AddLine(width_, lines_top_, 0, top_ - lines_top_);
}

// The lines between the columns, down to here; through a line of totals there are none.
void GridPage::RuleColumns() {
  for (std::size_t i = 1; i < sheet_.size() && top_ > ruled_from_; ++i) {
    AddLine(sheet_[i].before, ruled_from_, 0, top_ - ruled_from_);
  }
}

// --- Items
// ----------------------------------------------------------------------------------------

double GridPage::LeftOf(double before, double width) const {
  const PageSetup& setup = print_.setup_;
  if (!grid_.RightToLeft()) return setup.margin + before;
  return setup.PaperWidth() - setup.margin - before - width;
}

void GridPage::Add(Item item, double before, std::string text) {
  auto own = std::make_shared<const Item>(std::move(item));
  const double left = LeftOf(before, own->width);
  drawn_.push_back({own.get(), left, top_, std::move(text), own});
}

void GridPage::AddText(const std::string& text, double before, double width, double height,
                       const Look& look, double points) {
  if (text.empty() || width <= 0) return;
  Item item;
  item.width = width;
  item.height = height;
  item.align = look.align;
  item.size = points;
  item.bold = look.bold;
  item.color = look.color;
  Add(std::move(item), before, text);
}

void GridPage::AddFill(double before, double width, double height, std::int32_t color) {
  Item box;
  box.kind = ItemKind::kBox;
  box.width = width;
  box.height = height;
  box.thickness = 0;
  box.fill = color;
  Add(std::move(box), before);
}

void GridPage::AddLine(double before, double top, double width, double height) {
  Item line;
  line.kind = ItemKind::kLine;
  line.color = kLineColor;
  line.thickness = kHairLine;
  line.width = width;
  line.height = height;
  Add(std::move(line), before);
  drawn_.back().top = top;
}

void GridPage::EndLine(double height) {
  top_ += height;
  line_ends_.push_back(top_);
}

}  // namespace vorek::print
