#include "widgets/list_control.h"

#include <utility>

#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/property.h"
#include "widgets/typed_text.h"

namespace vorek {
namespace {

// No name is longer; a server refuses patterns of some thousand signs.
constexpr std::size_t kLongestPattern = 400;  // code points

// Takes a word like "Where" off the head of a clause.
std::string Clause(const std::string& text, std::string_view word) {
  const std::string trimmed = text::Trim(text);
  const bool headed = text::StartsWithIgnoreCase(trimmed, std::string(word) + " ");
  return headed ? text::Trim(std::string_view(trimmed).substr(word.size())) : trimmed;
}

}  // namespace

// --- What the user does
// ---------------------------------------------------------------------------

std::string ListControl::TakeTyped(const std::string& typed) {
  if (text::TrimView(typed).empty()) {
    setNull();
    return {};
  }
  std::string reason;
  if (RowTyped(typed, reason)) {
    Choose(0);
  } else {
    offers_ = !rows_.empty();
  }
  return reason;
}

std::optional<ListRow> ListControl::RowTyped(const std::string& typed, std::string& reason) {
  if (!HoldOrTell([&] { return RowsTyped(typed); })) {
    reason = "فهرست خوانده نشد";
    return std::nullopt;
  }
  if (ListCount() == 1) return At(0);
  reason = rows_.empty() ? NoRowText(typed) : SeveralRowsText(typed);
  return std::nullopt;
}

// The rows that a text may stand for: the only one that has it as a whole, or all that hold it.
std::vector<ListRow> ListControl::RowsTyped(const std::string& typed) {
  if (const auto key = TypedKey(typed)) {
    const std::string column(KeyColumn());
    return Read({ListClause(), column + " = " + std::to_string(*key)}, kHeldRows + 1);
  }
  std::vector<ListRow> whole = Matching(typed, true, 2);
  return whole.size() == 1 ? whole : Matching(typed, false, kHeldRows + 1);
}

const ListRow& ListControl::At(std::int32_t index) const {
  if (index >= 0 && index < ListCount()) return rows_[static_cast<std::size_t>(index)];
  throw Error(ErrorNumber::kSubscript, Path() + " has no line " + std::to_string(index));
}

// --- Where the rows come from
// ---------------------------------------------------------------------

void ListControl::SetOleConnectionString(const std::string& text) {
  if (Assign(connection_, text, "OleConnectionString")) Forget();
}
void ListControl::SetViewMajor(const std::string& text) {
  if (Assign(view_major_, text, "ViewMajor")) Forget();
}
void ListControl::SetViewMinor(const std::string& text) {
  if (Assign(view_minor_, text, "ViewMinor")) Forget();
}
void ListControl::SetWhereClause(const std::string& text) {
  if (Assign(where_, text, "WhereClause")) Forget();
}
void ListControl::SetOrderByClause(const std::string& text) {
  if (Assign(order_, text, "OrderByClause")) Forget();
}
void ListControl::SetSupportAlternative(bool on) {
  if (Assign(support_alternative_, on, "SupportAlternative")) Forget();
}

void ListControl::Forget() { Hold({}); }

void ListControl::Hold(std::vector<ListRow> rows) {
  offers_ = false;
  more_ = rows.size() > kHeldRows;
  if (more_) rows.resize(kHeldRows);
  rows_ = std::move(rows);
  Changed("List");
}

bool ListControl::HoldOrTell(const std::function<std::vector<ListRow>()>& read) {
  list_error_.clear();
  try {
    Hold(read());
    return true;
  } catch (const Error& error) {
    Hold({});
    list_error_ = error.Description();
    return false;
  }
}

void ListControl::FillList() {
  HoldOrTell([&] { return Read({ListClause()}, kHeldRows + 1); });
}

void ListControl::FillMatching(const std::string& typed) {
  HoldOrTell([&] { return Matching(typed, false, kHeldRows + 1); });
}

void ListControl::Search(const std::string& typed) { Hold(Matching(typed, false, kHeldRows + 1)); }

std::vector<ListRow> ListControl::Matching(const std::string& typed, bool whole,
                                           std::size_t limit) {
  const std::string_view trimmed = text::TrimView(typed);
  if (text::Length(trimmed) > kLongestPattern) return {};
  const std::string pattern = LikePattern(trimmed);
  return Read({ListClause(), Matches(whole ? pattern : "%" + pattern + "%")}, limit);
}

std::string ListControl::Matches(const std::string& pattern) const {
  std::string condition = TextColumn() + " like " + SqlText(pattern);
  if (support_alternative_) condition += " or Alt like " + SqlText(pattern);
  return condition;
}

std::optional<ListRow> ListControl::Lookup(std::int32_t id) {
  const std::vector<ListRow> rows = Run({"ID = " + std::to_string(id)}, 1);
  return rows.empty() ? std::nullopt : std::optional<ListRow>(rows.front());
}

std::string ListControl::TextColumn() const {
  const std::string minor = text::Trim(view_minor_);
  return minor.empty() ? "Name" : minor;
}

std::vector<std::string> ListControl::Columns() const {
  std::vector<std::string> columns = {TextColumn(), "ID"};
  if (support_alternative_) columns.emplace_back("Alt");
  return columns;
}

ListRow ListControl::RowOf(const ResultSet& result, std::size_t row) const {
  ListRow read;
  read.text = result.columns[0].Display(row);
  const FieldValue id(result.columns[1], row);
  read.id = id.IsNull() ? 0 : id.Number();
  if (result.columns.size() > 2) read.alternative = result.columns[2].Display(row);
  return read;
}

std::vector<ListRow> ListControl::Read(std::vector<std::string> conditions, std::size_t limit) {
  conditions.push_back(Clause(where_, "where"));
  return Run(conditions, limit);
}

std::string ListControl::Query(const std::vector<std::string>& conditions,
                               std::size_t limit) const {
  std::string query = "Select Top " + std::to_string(limit);
  const char* separator = " ";
  for (const std::string& column : Columns()) query += std::exchange(separator, ", ") + column;
  query += " from " + view_major_;
  separator = " Where ";
  for (const std::string& condition : conditions) {
    if (!condition.empty()) query += std::exchange(separator, " and ") + ("(" + condition + ")");
  }
  const std::string order = Clause(order_, "order by");
  return query + " Order by " + (order.empty() ? TextColumn() : order);
}

std::vector<ListRow> ListControl::Run(const std::vector<std::string>& conditions,
                                      std::size_t limit) {
  std::vector<ListRow> rows;
  if (reader_ == nullptr || connection_.empty() || text::TrimView(view_major_).empty()) return rows;
  const ResultSetPtr result = reader_->Read(Query(conditions, limit));
  if (result == nullptr || result->columns.size() < Columns().size()) return rows;
  for (std::size_t row = 0; row < result->rows && row < limit; ++row) {
    rows.push_back(RowOf(*result, row));
  }
  return rows;
}

// --- As a script reaches it
// -----------------------------------------------------------------------

namespace {

using Arguments = std::vector<std::string>;

// A field of one of the rows that are held.
template <typename Field>
PropertyEntry OfRow(std::string_view name, Field ListRow::*field) {
  return {
      name,
      [field](Control& c, const Arguments& a) {
        return property::ToText(static_cast<ListControl&>(c).At(property::Argument(a, 0)).*field);
      },
      nullptr};
}

}  // namespace

const PropertyTable& ListControl::OwnProperties() const {
  using property::ReadOnly;
  using property::ReadWrite;
  static const PropertyTable own = {
      ReadOnly("ListCount", &ListControl::ListCount),
      ReadOnly("MoreRows", &ListControl::MoreRows),
      ReadOnly("ListError", &ListControl::ListError),
      OfRow("List", &ListRow::text),
      OfRow("ItemData", &ListRow::id),
      OfRow("Alt", &ListRow::alternative),
      ReadWrite("OleConnectionString", &ListControl::OleConnectionString,
                &ListControl::SetOleConnectionString),
      ReadWrite("ViewMajor", &ListControl::ViewMajor, &ListControl::SetViewMajor),
      ReadWrite("ViewMinor", &ListControl::ViewMinor, &ListControl::SetViewMinor),
      ReadWrite("Caption", &ListControl::Caption, &ListControl::SetCaption),
      ReadWrite("WhereClause", &ListControl::WhereClause, &ListControl::SetWhereClause),
      ReadWrite("OrderByClause", &ListControl::OrderByClause, &ListControl::SetOrderByClause),
      ReadWrite("SupportAlternative", &ListControl::SupportAlternative,
                &ListControl::SetSupportAlternative)};
  static const PropertyTable table = property::Join(own, TypedControl::OwnProperties());
  return table;
}

}  // namespace vorek
