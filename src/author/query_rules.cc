#include <algorithm>
#include <optional>
#include <set>

#include "author/changing_statement.h"
#include "author/check_context.h"
#include "author/finding_text.h"
#include "author/query_lookup.h"
#include "author/query_tokens.h"
#include "author/sample_text.h"
#include "author/select_list.h"
#include "engine/query_text.h"
#include "engine/special_reports.h"
#include "text/utf8.h"
#include "totals/group_reports.h"

namespace vorek {
namespace {

std::string Name(std::int32_t number) { return "@" + std::to_string(number); }

class QueryRules {
 public:
  explicit QueryRules(CheckContext& check)
      : check_(check),
        query_(check.report.Query()),
        tokens_(ScanQuery(query_).tokens),
        quoted_(QuotedBytes(query_)) {}

  void Run() {
    CheckMarkers();
    CheckQuotedMarkers();
    CheckTokens();
    CheckLetters();
    CheckChanges();
    FindColumns();
    CheckTree();
    CheckSubtotals();
  }

 private:
  void CheckMarkers();
  void CheckMarker(const Marker& marker);
  void CheckQuotedMarkers();
  bool InText(std::size_t at) const;
  void CheckTokens();
  void CheckLetters();
  void CheckChanges();
  bool LacksResult() const;
  void FindColumns();
  bool IsSpecial(const std::string& text);
  bool ComesOfMarkers(Rule rule) const;
  void CheckTree();
  bool HasField(std::string_view name) const;
  void CheckSubtotals();

  CheckContext& check_;
  std::string query_;
  std::vector<QueryToken> tokens_;
  std::vector<bool> quoted_;
};

void QueryRules::CheckMarkers() {
  std::set<std::int32_t> seen;
  for (const Marker& marker : MarkersOf(query_)) {
    if (seen.insert(marker.number).second) CheckMarker(marker);
  }
}

void QueryRules::CheckMarker(const Marker& marker) {
  const Place place = check_.report.PlaceInQuery(marker.at);
  if (marker.number == -1) return check_.Tell(Rule::kLoneAt, place);
  const std::vector<DefinedParameter>& known = check_.report.parameters;
  const auto is = [&](const DefinedParameter& p) { return p.row.parameter_id == marker.number; };
  if (std::any_of(known.begin(), known.end(), is)) return;
  // "@12" without a row is taken for "@1" with a "2" behind it.
  const std::string name = Name(marker.number);
  const auto head = std::find_if(known.begin(), known.end(), [&](const DefinedParameter& p) {
    return name.starts_with(p.row.Marker());
  });
  if (head == known.end()) {
    check_.Tell(Rule::kUnknownMarker, place, {name});
  } else {
    check_.Tell(Rule::kMarkerOfOther, place, {name, head->row.Marker()});
  }
}

// In brackets, or in front of a comma, a value comes as it is, and in a call without a condition: a
// number may stand in a text there.
void QueryRules::CheckQuotedMarkers() {
  if (text::StartsWithIgnoreCase(query_, "exec ")) return;
  for (const Marker& marker : MarkersOf(query_)) {
    if (marker.number == -1 || !InText(marker.at)) continue;
    const std::string name = Name(marker.number);
    const std::size_t end = marker.at + name.size();
    const char behind = end < query_.size() ? query_[end] : ' ';
    const bool alone = (query_[marker.at - 1] == '(' && behind == ')') || behind == ',';
    if (!alone) check_.Tell(Rule::kQuotedMarker, check_.report.PlaceInQuery(marker.at), {name});
  }
}

// True for a byte of a text in single quotes.
bool QueryRules::InText(std::size_t at) const {
  const auto behind = std::find_if(tokens_.begin(), tokens_.end(),
                                   [&](const QueryToken& token) { return token.begin > at; });
  return quoted_[at] && behind != tokens_.begin() && query_[(behind - 1)->begin] == '\'';
}

void QueryRules::CheckTokens() {
  for (const auto& [token, value] : TokenReplacements({})) {
    for (std::size_t at = text::FindIgnoreCase(query_, token); at != std::string::npos;
         at = text::FindIgnoreCase(query_, token, at + 1)) {
      if (!quoted_[at]) continue;
      check_.Tell(Rule::kQuotedToken, check_.report.PlaceInQuery(at), {token});
      break;
    }
  }
}

void QueryRules::CheckLetters() {
  for (const QueryToken& token : tokens_) {
    if (query_[token.begin] != '\'') continue;
    const std::string written =
        text::Replace(text::Replace(token.text, "\u06CC", "\u064A"), "\u06A9", "\u0643");
    if (written == token.text) continue;
    check_.Tell(Rule::kOtherLetters, check_.report.PlaceInQuery(token.begin),
                {token.text, written});
  }
}

void QueryRules::CheckChanges() {
  const std::optional<std::size_t> change = FindChange(tokens_);
  if (!change) return;
  const QueryToken& word = tokens_[*change];
  check_.Tell(Rule::kChangesRows, check_.report.PlaceInQuery(word.begin),
              {text::ToUpper(word.text)});
}

bool QueryRules::LacksResult() const {
  return std::none_of(tokens_.begin(), tokens_.end(), [](const QueryToken& token) {
    return IsKeyword(token, "select") || IsKeyword(token, "exec") || IsKeyword(token, "execute");
  });
}

// Its arguments are left in tables first: it runs otherwise than it says.
bool QueryRules::IsSpecial(const std::string& text) {
  try {
    SpecialQuery special;
    return RewriteSpecialQuery(
        text, [](const std::string&) { return "tblAccount"; }, special);
  } catch (const Error& error) {
    check_.Tell(Rule::kArguments, check_.report.WholeQuery(), {error.Description()});
    return true;
  }
}

// A marker or a parameter that was told of breaks the text as well.
bool QueryRules::ComesOfMarkers(Rule rule) const {
  if (rule != Rule::kSyntax && rule != Rule::kRefused) return false;
  return std::any_of(check_.findings.begin(), check_.findings.end(), [&](const Finding& finding) {
    return finding.report_id == check_.report.id && SeverityOf(finding.rule) == Severity::kError;
  });
}

// Tells what the database refuses, and takes the result's columns from it, else from the text.
void QueryRules::FindColumns() {
  if (const auto names = SelectListNames(DropEmptyAliases(query_))) {
    check_.fields.emplace();
    for (const std::string& name : *names) check_.fields->push_back({name});
  }
  const text::TracedText sample = SampleText(check_.report);
  if (text::Contains(sample.Text(), "@") || IsSpecial(sample.Text())) return;
  const QueryLookup found = LookUp(check_.process, sample.Text());
  if (found.fault && !ComesOfMarkers(found.fault->rule)) {
    const Place place = found.fault->at
                            ? check_.report.PlaceInQuery(sample.Origin(*found.fault->at))
                            : check_.report.WholeQuery();
    check_.Tell(found.fault->rule, place, found.fault->values);
  }
  if (!found.fault && LacksResult()) check_.Tell(Rule::kNoResult, check_.report.WholeQuery());
  if (found.columns == nullptr) return;
  check_.fields.emplace();
  for (const ResultColumn& column : found.columns->columns) {
    check_.fields->push_back({column.Name(), column.AdoType()});
  }
}

bool QueryRules::HasField(std::string_view name) const {
  return std::any_of(check_.fields->begin(), check_.fields->end(), [&](const ResultField& field) {
    return text::EqualsIgnoreCase(field.name, name);
  });
}

void QueryRules::CheckTree() {
  const std::int32_t tree = check_.report.tree;
  if (tree == 0) return;
  if (tree != 1) {
    return check_.Tell(Rule::kTreeValue, {.field = "MakeTree"}, {std::to_string(tree)});
  }
  for (const char* const name : {"ID", "ParentID"}) {
    if (check_.fields && !HasField(name)) {
      check_.Tell(Rule::kTreeFields, {.field = "MakeTree"}, {name});
    }
  }
}

void QueryRules::CheckSubtotals() {
  const GroupReport* const shape = FindGroupReport(check_.report.id);
  if (shape == nullptr || !check_.fields) return;
  const std::int32_t needed = LastColumnOf(*shape);
  const auto has = static_cast<std::int32_t>(check_.fields->size());
  if (has >= needed) return;
  check_.Tell(Rule::kLedgerColumns, check_.report.WholeQuery(),
              {std::to_string(needed), std::to_string(has)});
}

}  // namespace

void CheckQuery(CheckContext& check) { QueryRules(check).Run(); }

}  // namespace vorek
