#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "author/finding_text.h"
#include "author/report_check.h"
#include "command.h"
#include "engine/world_state.h"
#include "trouble.h"
#ifdef VOREK_WITH_QT
#include "vorek/xml.h"
#endif

namespace vorek {
namespace {

struct CheckOptions {
  ConnectOptions connect;
  std::vector<std::int32_t> reports;
  std::string format = "text";
  std::string language = "en";
  bool json = false;
  bool all = false;
  bool strict = false;
};

Language LanguageOf(const CheckOptions& options) {
  return options.language == "fa" ? Language::kPersian : Language::kEnglish;
}

void PrintFinding(const Finding& finding, Language language) {
  const bool persian = language == Language::kPersian;
  const FindingText text = TextOf(finding, language);
  std::cout << SeverityName(SeverityOf(finding.rule), language) << ": "
            << PlaceText(finding, language) << ": " << text.what << " [" << CodeOf(finding.rule)
            << "]\n"
            << (persian ? "  نتيجه: " : "  why: ") << text.why << '\n'
            << (persian ? "  به جاي آن: " : "  instead: ") << text.instead << '\n';
}

void PrintCount(const std::vector<Finding>& findings, Language language) {
  const auto count = [&](Severity severity) {
    return std::count_if(findings.begin(), findings.end(), [&](const Finding& finding) {
      return SeverityOf(finding.rule) == severity;
    });
  };
  const auto errors = count(Severity::kError);
  const auto warnings = count(Severity::kWarning);
  if (language == Language::kPersian) {
    std::cout << errors << " خطا، " << warnings << " هشدار\n";
  } else {
    std::cout << errors << (errors == 1 ? " error, " : " errors, ") << warnings
              << (warnings == 1 ? " warning\n" : " warnings\n");
  }
}

void PrintJson(const std::vector<Finding>& findings, Language language) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Finding& finding : findings) {
    const FindingText text = TextOf(finding, language);
    nlohmann::ordered_json place = {{"table", TableName(finding.place.table)},
                                    {"row", finding.place.row},
                                    {"field", finding.place.field}};
    if (finding.place.line > 0) {
      place["line"] = finding.place.line;
      place["column"] = finding.place.column;
    }
    list.push_back({{"severity", SeverityName(SeverityOf(finding.rule), Language::kEnglish)},
                    {"rule", CodeOf(finding.rule)},
                    {"report", finding.report_id},
                    {"place", place},
                    {"what", text.what},
                    {"why", text.why},
                    {"instead", text.instead}});
  }
  std::cout << list.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

// Empty where the program is built without print templates.
XmlReader TemplateReader() {
#ifdef VOREK_WITH_QT
  return PugiXmlReader();
#else
  return {};
#endif
}

std::vector<Finding> FindAll(const CheckOptions& options) {
  World world(ConsoleWorld());
  Process& process = world.State().process;
  process.main.ConnectionText = ConnectionString(options.connect);
  process.data.Rebind(process.main.ConnectionText);
  std::vector<Finding> findings = CheckReports(process, options.reports, TemplateReader());
  std::erase_if(findings, [&](const Finding& finding) {
    return !options.all && SeverityOf(finding.rule) == Severity::kNote;
  });
  return findings;
}

void Check(const CheckOptions& options) {
  std::vector<Finding> findings;
  TellTrouble([&] { findings = FindAll(options); });
  const Language language = LanguageOf(options);
  if (options.json || options.format == "json") {
    PrintJson(findings, language);
  } else {
    for (const Finding& finding : findings) PrintFinding(finding, language);
    PrintCount(findings, language);
  }
  std::cout.flush();
  const Severity least = options.strict ? Severity::kWarning : Severity::kError;
  const bool found = std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
    return SeverityOf(finding.rule) <= least;
  });
  if (found) throw CLI::RuntimeError(kFoundDifferences);
}

}  // namespace

void AddCheckCommand(CLI::App& app) {
  auto options = std::make_shared<CheckOptions>();
  CLI::App* const command = app.add_subcommand(
      "check", "Read report definitions without running them and tell what would go wrong");
  command->add_option("ID", options->reports, "numbers of reports; all if none is given");
  AddDatabaseOption(*command, options->connect);
  command->add_option("--format", options->format, "text or json")
      ->check(CLI::IsMember({"text", "json"}));
  command->add_flag("--json", options->json, "the same as --format json");
  command->add_option("--lang", options->language, "the findings' language: en or fa")
      ->check(CLI::IsMember({"en", "fa"}));
  command->add_flag("--all", options->all,
                    "notes as well: what the check couldn't look up in the database");
  command->add_flag("--strict", options->strict, "warnings make the exit code 1 too");
  command->footer("Exit codes: 0 without errors, 1 with, 2 wrong usage, 3 nothing could be read.");
  command->callback([options] { Check(*options); });
}

}  // namespace vorek
