#include "print/print_document.h"

#include <algorithm>
#include <numeric>

#include "print/page_pass.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::print {
namespace {

std::string Money(const std::string& text) {
  std::string plain = UnformatNumber(text);
  std::string money = text;
  // What is too long for digit groups stands whole.
  IgnoreErrors([&] { money = FormatMoney(plain); });
  return money;
}

std::string Formed(const std::string& text, Form form) {
  if (form == Form::kPlain || text::TrimView(text).empty()) return text;
  if (form == Form::kMoney) return Money(text);
  std::string time = text;
  IgnoreErrors([&] { time = MinutesToTime(TimeToMinutes(text)); });
  return time;
}

}  // namespace

PrintDocument::PrintDocument(PrintTemplate print_template, FieldValues values)
    : template_(std::move(print_template)),
      paper_{template_.width, template_.height, template_.font, template_.title},
      values_(std::move(values)) {
  OrderRows();
  FindGroups();
  Bind();
  PagePass(*this).Run();
  TotalPages();
}

void PrintDocument::OrderRows() {
  const ResultSet& rows = *values_.rows;
  order_.resize(rows.rows);
  std::iota(order_.begin(), order_.end(), 0U);
  const auto sequence = std::find_if(
      rows.columns.begin(), rows.columns.end(),
      [](const ResultColumn& column) { return text::EqualsIgnoreCase(column.Name(), "Sequence"); });
  if (sequence == rows.columns.end()) return;
  std::stable_sort(order_.begin(), order_.end(), [&](std::uint32_t a, std::uint32_t b) {
    return sequence->Number(a) < sequence->Number(b);
  });
}

// A group ends where its own value or that of a group around it changes.
void PrintDocument::FindGroups() {
  group_names_ = template_.Groups();
  groups_.resize(group_names_.size());
  std::vector<const ResultColumn*> columns;
  for (const std::string& name : group_names_) {
    columns.push_back(&values_.rows->columns[ColumnNamed(*values_.rows, name)]);
  }
  std::string text, before;
  for (std::size_t i = 0; i < order_.size(); ++i) {
    bool begins = i == 0;
    for (std::size_t level = 0; level < columns.size(); ++level) {
      if (!begins) {
        text.clear();
        before.clear();
        columns[level]->AppendDisplay(order_[i], text);
        columns[level]->AppendDisplay(order_[i - 1], before);
        begins = text != before;
      }
      if (begins) groups_[level].push_back({i, i});
      groups_[level].back().last = i + 1;
    }
  }
}

// --- What is found once for each item
// -------------------------------------------------------------

void PrintDocument::Bind() {
  for (const Band& band : template_.bands) {
    for (const Item& item : band.items) Bind(item);
  }
}

void PrintDocument::Bind(const Item& item) {
  BoundItem bound{BoundText(item.kind == ItemKind::kText ? item.text : "", values_),
                  BoundText(item.when, values_), 0};
  if (item.kind == ItemKind::kSum) bound.sum = SumField(item.field);
  bound_.emplace(&item, std::move(bound));
}

std::size_t PrintDocument::SumField(const std::string& name) {
  const std::size_t column = ColumnNamed(*values_.rows, name);
  for (std::size_t i = 0; i < summed_.size(); ++i) {
    if (summed_[i].column == column) return i;
  }
  Summed summed{column, {}, {}};
  summed.values.reserve(order_.size());
  std::string text;
  for (const std::uint32_t row : order_) {
    text.clear();
    values_.rows->columns[column].AppendDisplay(row, text);
    summed.values.push_back(CellFixedPoint(text));
  }
  summed_.push_back(std::move(summed));
  return summed_.size() - 1;
}

void PrintDocument::TotalPages() {
  for (Summed& summed : summed_) {
    FixedTotal total;
    summed.before_page.push_back(total);
    for (const PageOfBands& page : pages_) {
      for (std::size_t row = page.first_row; row < page.last_row; ++row) {
        total.Add(summed.values[row]);
      }
      summed.before_page.push_back(total);
    }
  }
}

// --- What stands on a page
// ------------------------------------------------------------------------

std::vector<DrawnItem> PrintDocument::Page(std::size_t n) const {
  std::vector<DrawnItem> drawn;
  for (const Placed& placed : pages_.at(n).bands) {
    const Place place{placed.row, placed.has_row, n + 1, pages_.size()};
    for (const Item& item : placed.band->items) {
      if (!IsShown(bound_.at(&item), place)) continue;
      const double from_left = template_.width - template_.margin_right - item.right - item.width;
      drawn.push_back({&item, from_left, template_.margin_top + placed.top + item.top,
                       TextOf(item, placed, n, place)});
    }
  }
  return drawn;
}

// A condition that can't be computed is none that holds.
bool PrintDocument::IsShown(const BoundItem& bound, const Place& place) const {
  const std::string formula = bound.when.FormulaAt(values_, place);
  if (formula.empty()) return true;
  evaluation_.Expresion(formula);
  const DynamicValue value = evaluation_.AnalizaExpr();
  return evaluation_.CErr() == 0 && value.Number() != 0;
}

std::string PrintDocument::TextOf(const Item& item, const Placed& placed, std::size_t page,
                                  const Place& place) const {
  if (item.kind == ItemKind::kSum) return Formed(SumText(item, placed, page), item.form);
  if (item.kind != ItemKind::kText) return {};
  const BoundText& text = bound_.at(&item).text;
  const std::string value = text.At(values_, place);
  return text.IsField() ? Formed(value, item.form) : value;
}

std::string PrintDocument::SumText(const Item& item, const Placed& placed, std::size_t page) const {
  const Summed& summed = summed_[bound_.at(&item).sum];
  switch (item.over) {
    case SumOver::kBefore:
      return summed.before_page[page].Text();
    case SumOver::kThrough:
      return summed.before_page[page + 1].Text();
    case SumOver::kReport:
      return summed.before_page.back().Text();
    case SumOver::kPage:
      return TotalOf(summed, {pages_[page].first_row, pages_[page].last_row}).Text();
    case SumOver::kGroup:
      break;
  }
  return TotalOf(summed, groups_[placed.level][placed.group]).Text();
}

FixedTotal PrintDocument::TotalOf(const Summed& summed, const Span& span) const {
  FixedTotal total;
  for (std::size_t row = span.first; row < span.last; ++row) total.Add(summed.values[row]);
  return total;
}

}  // namespace vorek::print
