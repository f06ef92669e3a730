#include "author/report_stages.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "author/query_tokens.h"
#include "author/report_definition.h"
#include "author/sample_text.h"
#include "catalog/report_row.h"
#include "engine/query_text.h"
#include "engine/rights.h"
#include "engine/special_reports.h"
#include "text/utf8.h"

namespace vorek {
namespace {

// Where the value of a secret begins that a key at `at` names; npos for none.
std::size_t SecretBegin(const std::string& query, std::size_t at, std::string_view key) {
  std::size_t end = at + key.size();
  while (end < query.size() && query[end] == ' ') ++end;
  if (end >= query.size() || query[end] != '=') return std::string::npos;
  ++end;
  while (end < query.size() && query[end] == ' ') ++end;
  return end;
}

// Where it ends: at a semicolon or a quote, of which a doubled one is part of the value.
std::size_t SecretEnd(const std::string& query, std::size_t begin) {
  std::size_t end = begin;
  while (end < query.size() && query[end] != ';') {
    const bool quote = query[end] == '\'' || query[end] == '"';
    const bool doubled = quote && end + 1 < query.size() && query[end + 1] == query[end];
    if (quote && !doubled) break;
    end += doubled ? 2 : 1;
  }
  return std::min(end, query.size());
}

class Explanation {
 public:
  Explanation(Process& process, const ReportState& host, std::int32_t report_id)
      : process_(process),
        state_(host),
        report_(ReadDefinition(process, report_id)),
        text_(report_.Query()) {
    state_.ReportID = report_id;
    state_.MakeSecure = report_.secure;
    state_.ReportFormTypeID = report_.form_type;
  }

  ReportStages Run(const std::string& parameter_string) {
    result_.found = report_.found;
    if (!report_.found) return std::move(result_);
    result_.title = report_.title;
    Tell("stored", "");
    PutParameters(parameter_string);
    PutTokens();
    PutSecurity();
    if (parameter_string.empty()) Rewrite();
    Finish();
    return std::move(result_);
  }

 private:
  void Tell(std::string name, std::string note) {
    result_.stages.push_back({std::move(name), std::move(note), WithCoveredSecrets(text_)});
  }

  void PutParameters(const std::string& parameter_string) {
    if (!text::Contains(text_, "@")) return Tell("parameters", "the query asks for nothing");
    if (parameter_string.empty()) {
      text_ = SampleParameters(report_).Text();
      return Tell("parameters", "sample values; --params puts others in");
    }
    const bool filled = SubstituteParameters(process_, report_.id, text_, parameter_string);
    Tell("parameters", filled ? "" : "an \"@\" is left: the report stops without a message");
  }

  void PutTokens() {
    const std::string before = text_;
    text_ = ReplaceTokens(
        text_, TokenValuesOf(process_.clock().Now(), state_, process_.main.GlobalUserID));
    Tell("tokens", text_ == before ? "the query names none" : "");
  }

  void PutSecurity() {
    if (!report_.secure) return Tell("security", "MakeSecure is 0");
    const std::string before = text_;
    ApplySecurityClause(process_, state_, text_);
    const bool unchanged = text_ == before;
    Tell("security", !state_.MakeSecure
                         ? "the query gives no form type or no key: it runs unrestricted"
                     : unchanged ? "no form of the records is secured: it runs unrestricted"
                                 : "");
  }

  // A procedure whose arguments are left in tables first.
  void Rewrite() {
    special_ = SpecialQueryOf(process_, text_);
    if (!special_) return;
    std::string all;
    for (const std::string& statement : special_->statements) all += statement + ";\n";
    result_.stages.push_back(
        {"rewritten", "its arguments are left in tables of the database", WithCoveredSecrets(all)});
  }

  void Finish() {
    const bool stops = text_.empty() || text::Contains(text_, "@");
    if (stops) return;
    if (special_) {
      result_.statements = special_->statements;
    } else {
      result_.statements = {DropEmptyAliases(text_)};
    }
  }

  Process& process_;
  ReportState state_;
  ReportDefinition report_;
  std::string text_;
  std::optional<SpecialQuery> special_;
  ReportStages result_;
};

}  // namespace

std::string WithCoveredSecrets(const std::string& query) {
  std::string covered = query;
  for (const std::string_view key : {"password", "pwd", "passphrase", "secret", "token"}) {
    for (std::size_t at = text::FindIgnoreCase(covered, key); at != std::string::npos;
         at = text::FindIgnoreCase(covered, key, at + key.size())) {
      const std::size_t begin = SecretBegin(covered, at, key);
      if (begin == std::string::npos || !QuotedBytes(covered)[at]) continue;
      covered.replace(begin, SecretEnd(covered, begin) - begin, "***");
    }
  }
  return covered;
}

ReportStages ExplainReport(Process& process, const ReportState& host, std::int32_t report_id,
                           const std::string& parameter_string) {
  return Explanation(process, host, report_id).Run(parameter_string);
}

}  // namespace vorek
