#include <algorithm>
#include <iterator>
#include <string_view>

#include "author/check_context.h"
#include "author/query_tokens.h"
#include "catalog/report_row.h"
#include "parameters/parameter_dependencies.h"
#include "parameters/parameter_kind.h"
#include "parameters/parameter_text.h"
#include "text/utf8.h"

namespace vorek {
namespace {

enum class TypeGroup { kNone, kNumber, kDate, kText };

// By what a literal of the type looks like.
TypeGroup GroupOf(std::string_view type) {
  const std::string literal = Literal(type, {"q", "d"});
  if (literal == "q") return TypeGroup::kNumber;
  if (literal == "'q'") return TypeGroup::kDate;
  return literal == "'d'" ? TypeGroup::kText : TypeGroup::kNone;
}

// A kind of field with a type that it doesn't go with.
struct BadPair {
  std::int32_t control_type;
  TypeGroup group;
  Rule rule;
  const char* gets;     // what the query gets
  const char* instead;  // types that fit
};
constexpr BadPair kBadPairs[] = {
    {1, TypeGroup::kNumber, Rule::kDateAsNumber, "", ""},
    {2, TypeGroup::kText, Rule::kNameAsText, "", ""},
    {2, TypeGroup::kDate, Rule::kKindAndType, "'5'", "int"},
    {3, TypeGroup::kDate, Rule::kKindAndType, "'510'", "int"},
    {4, TypeGroup::kText, Rule::kNameAsText, "", ""},
    {4, TypeGroup::kDate, Rule::kKindAndType, "'5'", "int"},
    {9, TypeGroup::kText, Rule::kNameAsText, "", ""},
    {9, TypeGroup::kDate, Rule::kKindAndType, "'5'", "int"},
    {10, TypeGroup::kDate, Rule::kKindAndType, "'510'", "int"},
    {11, TypeGroup::kDate, Rule::kKindAndType, "'1234'", "money"},
    {11, TypeGroup::kText, Rule::kKindAndType, "'1/234'", "money"},
    {13, TypeGroup::kNumber, Rule::kKindAndType, "FormTypeID=901&FormID=5", "nvarchar"},
    {13, TypeGroup::kDate, Rule::kKindAndType, "'FormTypeID=901&FormID=5'", "nvarchar"},
    {1001, TypeGroup::kNumber, Rule::kKindAndType, "()", "nvarchar"},
    {1001, TypeGroup::kDate, Rule::kKindAndType, "''", "nvarchar"},
    {1002, TypeGroup::kDate, Rule::kKindAndType, "'1405'", "nvarchar"},
    {1003, TypeGroup::kText, Rule::kNameAsText, "", ""},
    {1003, TypeGroup::kDate, Rule::kKindAndType, "'5'", "int"},
    {1006, TypeGroup::kDate, Rule::kKindAndType, "'1'", "bit"},
    {1007, TypeGroup::kText, Rule::kKindAndType, "'11,12'", "int"},
    {1007, TypeGroup::kDate, Rule::kKindAndType, "'(11,12)'", "int"},
};

constexpr std::int32_t kText = 1002;
constexpr std::int32_t kSeveral = 1007;

class ParameterRules {
 public:
  explicit ParameterRules(CheckContext& check)
      : check_(check), query_(check.report.Query()), tokens_(ScanQuery(query_).tokens) {}

  void Run() {
    for (const DefinedParameter& parameter : check_.report.parameters) {
      const ParameterRow& row = parameter.row;
      CheckRows(row);
      if (!CheckUse(row)) continue;
      CheckKind(row);
      if (!row.has_spans) check_.Tell(Rule::kNoSpans, At(row, "ColSpan"));
      CheckMarkerPlaces(row);
      CheckDependency(parameter);
    }
    CheckNotes();
  }

 private:
  static Place At(const ParameterRow& row, const char* field) {
    return {.table = CatalogueTable::kParameter, .row = row.Id(), .field = field};
  }
  void CheckRows(const ParameterRow& row);
  bool CheckUse(const ParameterRow& row);
  void CheckKind(const ParameterRow& row);
  void CheckMarkerPlaces(const ParameterRow& row);
  void CheckComparison(const ParameterRow& row, std::size_t token);
  void CheckListPlace(const ParameterRow& row, std::size_t token);
  void CheckDependency(const DefinedParameter& parameter);
  void CheckNotes();
  bool Has(const std::string& text) const { return text::ContainsIgnoreCase(query_, text); }

  CheckContext& check_;
  std::string query_;
  std::vector<QueryToken> tokens_;
};

void ParameterRules::CheckRows(const ParameterRow& row) {
  const std::vector<DefinedParameter>& all = check_.report.parameters;
  const auto same = [&](const DefinedParameter& p) {
    return p.row.parameter_id == row.parameter_id;
  };
  const auto rows = std::count_if(all.begin(), all.end(), same);
  const bool first = &std::find_if(all.begin(), all.end(), same)->row == &row;
  if (rows > 1 && first) {
    check_.Tell(Rule::kSameParameter, At(row, "ParameterID"), {std::to_string(rows)});
  }
}

// False if the query doesn't name it.
bool ParameterRules::CheckUse(const ParameterRow& row) {
  const std::string marker = row.Marker();
  if (!HasMarker(query_, row.parameter_id)) {
    check_.Tell(Rule::kUnusedParameter, At(row, ""), {marker});
    return false;
  }
  if (!Has(marker + ")")) check_.Tell(Rule::kMarkerWithoutBracket, At(row, ""), {marker});
  if (!Has(marker + ")") && !Has(marker + ",") && !Has(marker + " ")) {
    check_.Tell(Rule::kMarkerUnseen, At(row, ""), {marker});
  }
  return true;
}

void ParameterRules::CheckKind(const ParameterRow& row) {
  const std::string kind = std::to_string(row.control_type);
  if (FindKind(row.control_type) == nullptr) {
    check_.Tell(Rule::kUnknownKind, At(row, "ControlTypeID"),
                {row.control_type == -1 ? "NULL" : kind});
    return;
  }
  const TypeGroup group = GroupOf(row.type);
  if (group == TypeGroup::kNone && row.control_type != 1001) {
    check_.Tell(Rule::kUnknownType, At(row, "Type"), {row.type.empty() ? "NULL" : row.type});
    return;
  }
  const auto* const bad =
      std::find_if(std::begin(kBadPairs), std::end(kBadPairs), [&](const BadPair& pair) {
        return pair.control_type == row.control_type && pair.group == group;
      });
  if (bad == std::end(kBadPairs)) return;
  if (bad->rule == Rule::kDateAsNumber) {
    check_.Tell(bad->rule, At(row, "Type"), {row.type});
  } else {
    check_.Tell(bad->rule, At(row, "Type"), {kind, row.type, bad->gets, bad->instead});
  }
}

void ParameterRules::CheckMarkerPlaces(const ParameterRow& row) {
  const bool text = row.control_type == kText && GroupOf(row.type) == TypeGroup::kText;
  const bool list = row.control_type == kSeveral && GroupOf(row.type) == TypeGroup::kNumber;
  for (std::size_t i = 0; i < tokens_.size(); ++i) {
    const bool marker = tokens_[i].kind == QueryToken::Kind::kWord &&
                        (tokens_[i].text == row.Marker() || tokens_[i].text == "@" + row.Marker());
    if (marker && text) CheckComparison(row, i);
    if (marker && list) CheckListPlace(row, i);
  }
}

// What stands between quotes as it was typed, behind "=" and its like.
void ParameterRules::CheckComparison(const ParameterRow& row, std::size_t token) {
  std::size_t end = token;
  if (end > 0 && IsSign(tokens_[end - 1], "(")) --end;
  std::string sign;
  while (end > 0 && tokens_[end - 1].kind == QueryToken::Kind::kSign &&
         std::string_view("=<>!").find(tokens_[end - 1].text[0]) != std::string_view::npos) {
    sign.insert(0, tokens_[--end].text);
  }
  if (sign.empty()) return;
  check_.Tell(Rule::kTextCompared, check_.report.PlaceInQuery(tokens_[token].begin),
              {row.Marker(), sign});
}

// A list stands alone in brackets, as an argument, or behind IN and two blanks.
void ParameterRules::CheckListPlace(const ParameterRow& row, std::size_t token) {
  const std::size_t at = tokens_[token].begin;
  const std::size_t end = at + tokens_[token].text.size();
  const char before = at == 0 ? ' ' : query_[at - 1];
  const char behind = end < query_.size() ? query_[end] : ' ';
  const bool alone = (before == '(' && behind == ')') || behind == ',' ||
                     (at >= 2 && query_.substr(at - 2, 2) == ", " && behind == ')');
  const bool in = at >= 5 && text::EqualsIgnoreCase(query_.substr(at - 5, 5), " in  ");
  if (alone || in || text::StartsWithIgnoreCase(query_, "exec ")) return;
  check_.Tell(Rule::kListMarker, check_.report.PlaceInQuery(at), {row.Marker()});
}

void ParameterRules::CheckDependency(const DefinedParameter& parameter) {
  const std::vector<DefinedParameter>& all = check_.report.parameters;
  const auto check = [&](std::int32_t followed, const char* field) {
    if (followed == -1) return;
    const bool selector = std::any_of(all.begin(), all.end(), [&](const DefinedParameter& p) {
      const bool kind = p.row.control_type == 2 || p.row.control_type == 4;
      return kind && p.row.parameter_id == followed;
    });
    if (selector) return;
    check_.Tell(Rule::kNoDependency, At(parameter.row, field), {std::to_string(followed)});
  };
  check(parameter.follows_form, "DepOnParameterIDForm");
  check(parameter.follows_object, "DepOnParameterIDObject");
}

// A choice of a class of accounts writes the view of a list that follows it into the catalogue.
void ParameterRules::CheckNotes() {
  std::vector<const ParameterRow*> written;
  for (const DefinedParameter& p : check_.report.parameters) {
    const bool follows = p.follows_form == -1 && p.follows_object != -1;
    const bool writes = p.row.control_type == kSeveral && follows &&
                        WritesMetadata(p.row.major_view, p.row.minor_view);
    if (writes) written.push_back(&p.row);
  }
  if (written.empty()) return;
  Recordset& slot = check_.process.dten().rssqlGeneral1;
  const bool may_write = IgnoreErrors([&] {
    OpenSlot(slot, "Update tblVorekReportParameter Set MajorView = MajorView Where 1 = 0");
  });
  slot.Close();
  for (const ParameterRow* const row : written) {
    if (!may_write) check_.Tell(Rule::kCannotNote, At(*row, "MajorView"));
  }
}

}  // namespace

void CheckParameters(CheckContext& check) { ParameterRules(check).Run(); }

}  // namespace vorek
