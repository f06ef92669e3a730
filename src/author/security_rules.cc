#include "author/security_rules.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "author/check_context.h"
#include "author/query_tokens.h"
#include "author/sample_text.h"
#include "engine/rights.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

class SecuredText {
 public:
  explicit SecuredText(std::string_view query) : query_(query), scan_(ScanQuery(query)) {
    from_ = Find("from");
    where_ = Find("where", from_);
    order_ = Find("order", from_);
  }

  std::vector<QueryFault> Check() {
    CheckJoints();
    CheckFrom();
    CheckWhere();
    CheckGroup();
    CheckOrder();
    CheckEnd();
    return std::move(faults_);
  }

 private:
  const std::vector<QueryToken>& Tokens() const { return scan_.tokens; }
  // token: the index of one; kNowhere for the query as a whole.
  void Tell(Rule rule, std::size_t token, std::vector<std::string> values = {}) {
    std::optional<std::size_t> at;
    if (token != kNowhere) at = Place(token);
    faults_.push_back({rule, at, std::move(values), {}});
  }

  // The first such word outside all brackets, by its index; kNowhere without one.
  std::size_t Find(std::string_view word, std::size_t begin = 0) const {
    for (std::size_t i = begin; i < Tokens().size(); ++i) {
      if (Tokens()[i].depth == 0 && IsKeyword(Tokens()[i], word)) return i;
    }
    return kNowhere;
  }
  // Where the clause finds its text, less the blank in front; kNowhere if it doesn't.
  std::size_t Seen(std::string_view text, std::size_t begin = 0) const {
    const std::size_t at = text::FindIgnoreCase(query_, text, begin);
    return at == kNowhere ? kNowhere : at + 1;
  }
  std::size_t Place(std::size_t token) const {
    return token == kNowhere ? kNowhere : Tokens()[token].begin;
  }

  void CheckJoints() {
    for (const char* joint : {"union", "except", "intersect"}) {
      const std::size_t at = Find(joint);
      if (at != kNowhere) Tell(Rule::kSecuredJoined, at, {text::ToUpper(joint)});
    }
  }

  void CheckFrom() {
    if (from_ != kNowhere && Seen(" from ") != Place(from_)) Tell(Rule::kSecuredFrom, from_);
  }

  void CheckWhere() {
    const std::size_t seen = Seen(" where ", from_ == kNowhere ? 0 : Place(from_));
    if (where_ == kNowhere) {
      if (seen != kNowhere) TellOfInnerWhere();
      return;
    }
    if (seen == kNowhere) Tell(Rule::kSecuredWhereBorder, where_);
    CheckTopOfWhere();
  }

  // The condition is put with AND behind what stands last.
  void TellOfInnerWhere() {
    for (const char* join : {"left", "right", "full"}) {
      const std::size_t at = Find(join);
      if (at != kNowhere) return Tell(Rule::kSecuredWhereOuterJoin, at);
    }
    Tell(Rule::kSecuredWhereInner, kNowhere);
  }

  void CheckTopOfWhere() {
    for (std::size_t i = where_ + 1; i < Tokens().size(); ++i) {
      const QueryToken& token = Tokens()[i];
      if (token.depth != 0 || token.kind != QueryToken::Kind::kWord) continue;
      if (IsKeyword(token, "group") || IsKeyword(token, "order")) return;
      if (IsKeyword(token, "or")) return Tell(Rule::kSecuredOr, i);
      if (token.text.starts_with('@')) return Tell(Rule::kSecuredMarker, i, {token.text});
    }
  }

  void CheckGroup() {
    const std::size_t group = Find("group");
    if (group != kNowhere) Tell(Rule::kSecuredGroup, group);
  }

  void CheckOrder() {
    const bool by =
        order_ != kNowhere && order_ + 1 < Tokens().size() && IsKeyword(Tokens()[order_ + 1], "by");
    const std::size_t seen = Seen(" order by ");
    if (by && seen == kNowhere) {
      Tell(Rule::kSecuredOrderBorder, order_);
    } else if (seen != kNowhere && seen != Place(order_)) {
      Tell(Rule::kSecuredOrderInner, order_);
    }
  }

  void CheckEnd() {
    const std::string_view body = query_.substr(0, text::FindIgnoreCase(query_, " order by "));
    if (ScanQuery(body).ends_in_comment) {
      Tell(Rule::kSecuredComment, kNowhere);
    } else if (!Tokens().empty() && IsSign(Tokens().back(), ";")) {
      Tell(Rule::kSecuredSemicolon, Tokens().size() - 1);
    }
  }

  std::string_view query_;
  QueryScan scan_;
  std::size_t from_ = kNowhere;
  std::size_t where_ = kNowhere;
  std::size_t order_ = kNowhere;
  std::vector<QueryFault> faults_;
};

// The query with its condition, as the database would be given it; nothing if there is none.
bool PutClause(CheckContext& check, std::string& query) {
  ReportState state;
  state.ReportID = check.report.id;
  state.MakeSecure = true;
  state.ReportFormTypeID = check.report.form_type;
  const std::string before = query;
  ApplySecurityClause(check.process, state, query);
  if (state.MakeSecure && query != before) return true;
  check.Tell(state.MakeSecure ? Rule::kSecuredNoForm : Rule::kSecuredNot, {.field = "MakeSecure"});
  return false;
}

// Where the plain text is taken and the secured one isn't, the condition broke it.
void LookUpSecured(CheckContext& check, const text::TracedText& sample,
                   const std::string& secured) {
  if (text::Contains(sample.Text(), "@") || LookUp(check.process, sample.Text()).fault) return;
  const QueryLookup found = LookUp(check.process, secured);
  if (!found.fault || found.fault->rule == Rule::kNotLookedUp) return;
  check.Tell(Rule::kSecuredRefused, check.report.WholeQuery(), {found.fault->message});
}

// Shows rows that the condition should keep out; the others end in the server's refusal.
bool Leaks(Rule rule) {
  return rule == Rule::kSecuredJoined || rule == Rule::kSecuredOr || rule == Rule::kSecuredMarker ||
         rule == Rule::kSecuredWhereOuterJoin || rule == Rule::kSecuredComment;
}

}  // namespace

std::vector<QueryFault> FindSecurityFaults(std::string_view query) {
  return SecuredText(query).Check();
}

void CheckSecurity(CheckContext& check) {
  const std::string query = check.report.Query();
  if (!check.report.secure || text::TrimView(query).empty()) return;
  const text::TracedText sample = SampleText(check.report);
  std::string secured = sample.Text();
  const bool put = PutClause(check, secured);
  const std::vector<QueryFault> faults = FindSecurityFaults(query);
  for (const QueryFault& fault : faults) {
    // What would leak as soon as a condition is put is told at once.
    if (!put && !Leaks(fault.rule)) continue;
    const Place place = fault.at ? check.report.PlaceInQuery(*fault.at) : check.report.WholeQuery();
    check.Tell(fault.rule, place, fault.values);
  }
  if (put && faults.empty()) LookUpSecured(check, sample, secured);
}

}  // namespace vorek
