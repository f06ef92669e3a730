#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "command.h"
#include "engine/report_check.h"
#include "engine/world_state.h"
#ifdef VOREK_WITH_QT
#include "vorek/xml.h"
#endif

namespace vorek {
namespace {

struct CheckOptions {
  ConnectOptions connect;
  std::vector<std::int32_t> reports;
  bool json = false;
};

void PrintLines(const std::vector<Finding>& findings) {
  for (const Finding& finding : findings) {
    std::cout << (finding.error ? "error" : "warning") << ": report " << finding.report_id << ", "
              << finding.field << ": " << finding.what << "; " << finding.why << '\n';
  }
}

void PrintJson(const std::vector<Finding>& findings) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Finding& finding : findings) {
    list.push_back({{"severity", finding.error ? "error" : "warning"},
                    {"report", finding.report_id},
                    {"field", finding.field},
                    {"what", finding.what},
                    {"why", finding.why}});
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

void Check(const CheckOptions& options) {
  World world(ConsoleWorld());
  Process& process = world.State().process;
  process.main.ConnectionText = ConnectionString(options.connect);
  process.data.Rebind(process.main.ConnectionText);
  const std::vector<Finding> findings = CheckReports(process, options.reports, TemplateReader());
  if (options.json) {
    PrintJson(findings);
  } else {
    PrintLines(findings);
  }
  std::cout.flush();
  const bool errors = std::any_of(findings.begin(), findings.end(),
                                  [](const Finding& finding) { return finding.error; });
  if (errors) throw CLI::RuntimeError(1);
}

}  // namespace

void AddCheckCommand(CLI::App& app) {
  auto options = std::make_shared<CheckOptions>();
  CLI::App* const command = app.add_subcommand(
      "check", "Read report definitions without running them and tell what would go wrong");
  command->add_option("ID", options->reports, "numbers of reports; all if none is given");
  AddDatabaseOption(*command, options->connect);
  command->add_flag("--json", options->json, "findings as json");
  command->callback([options] { Check(*options); });
}

}  // namespace vorek
