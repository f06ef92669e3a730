#include <algorithm>
#include <array>

#include "adapters/sqlite/parser.h"
#include "text/utf8.h"

namespace vorek::sqlite {
namespace {

// A setting of a session and the values that are taken: those that change nothing here, and the
// few that are done.
struct SettingRule {
  std::string_view name;
  std::string_view values;  // parted by blanks; "*" for any
  bool done = false;
};

constexpr std::array<SettingRule, 35> kSettings = {{
    {"nocount", "on off"},
    {"xact_abort", "on off", true},
    {"quoted_identifier", "on off", true},
    {"dateformat", "mdy dmy ymd", true},
    {"datefirst", "7"},
    {"language", "us_english english"},
    {"rowcount", "0"},
    {"ansi_nulls", "on"},
    {"ansi_padding", "on off"},
    {"ansi_warnings", "on"},
    {"ansi_null_dflt_on", "on"},
    {"ansi_null_dflt_off", "off"},
    {"ansi_defaults", "off"},
    {"arithabort", "on off"},
    {"arithignore", "off"},
    {"concat_null_yields_null", "on"},
    {"numeric_roundabort", "off"},
    {"implicit_transactions", "off"},
    {"cursor_close_on_commit", "on off"},
    {"identity_insert", "on off"},
    {"noexec", "off"},
    {"parseonly", "off"},
    {"fmtonly", "off"},
    {"showplan_all", "off"},
    {"showplan_text", "off"},
    {"showplan_xml", "off"},
    {"statistics", "on off"},
    {"forceplan", "on off"},
    {"no_browsetable", "on off"},
    {"remote_proc_transactions", "on off"},
    {"lock_timeout", "*"},
    {"deadlock_priority", "*"},
    {"query_governor_cost_limit", "*"},
    {"textsize", "2147483647 -1"},
    {"offsets", "off"},
}};

bool TakesValue(const SettingRule& rule, const std::string& value) {
  return rule.values == "*" ||
         (" " + std::string(rule.values) + " ").find(" " + value + " ") != std::string::npos;
}

}  // namespace

void Parser::Setting(Statement& set) {
  set.kind = StatementKind::kNothing;
  if (TakeWords({"transaction", "isolation", "level"})) {
    while (AtName() || AtWord("read")) Take();
    return;
  }
  std::vector<const SettingRule*> rules;
  do {
    const Token word = Take();
    const auto* rule = std::find_if(kSettings.begin(), kSettings.end(), [&](const auto& row) {
      return word.kind == TokenKind::kName && SameWord(row.name, word.value);
    });
    if (rule == kSettings.end()) RefuseWord(word);
    rules.push_back(rule);
  } while (TakeSymbol(","));
  const std::string last(rules.back()->name);
  if (last == "identity_insert") Object();
  if (last == "statistics") {
    do Name();
    while (TakeSymbol(","));
  }
  const std::size_t at = Here();
  std::string value = TakeSymbol("-") ? "-" : "";
  value += LowerWord(Take().value);
  for (const SettingRule* rule : rules) {
    if (!TakesValue(*rule, value)) {
      Refuse(source_, at,
             "SET " + std::string(rule->name) + " " + text::Left(value, 60) + " is not supported");
    }
    if (!rule->done) continue;
    if (rules.size() > 1 && rule->name != "quoted_identifier") RefuseHere();
    set.kind = StatementKind::kSetting;
    set.word = rule->name;
    set.variable = value;
  }
}

}  // namespace vorek::sqlite
