#include "author/report_check.h"

#include "author/check_context.h"
#include "author/print_template_check.h"
#include "catalog/report_row.h"

namespace vorek {
namespace {

bool HasQuery(const ReportDefinition& report) {
  const std::string query = report.procedure ? report.sql_sp : report.Query();
  return query.find_first_not_of(" \t\r\n") != std::string::npos;
}

void CheckReport(Process& process, std::int32_t id, std::vector<Finding>& findings) {
  const ReportDefinition report = ReadDefinition(process, id);
  CheckContext check{process, report, findings, std::nullopt};
  if (!report.found) return check.Tell(Rule::kNoReport, {.field = "ID"}, {std::to_string(id)});
  if (!HasQuery(report)) {
    return check.Tell(Rule::kNoQuery, report.WholeQuery());
  }
  CheckParameters(check);
  CheckLists(check);
  CheckQuery(check);
  CheckLayout(check);
  CheckFormulas(check);
  CheckSecurity(check);
  CheckLinks(check);
}

}  // namespace

std::vector<Finding> CheckReports(Process& process, const std::vector<std::int32_t>& report_ids,
                                  const XmlReader& read_xml) {
  std::vector<std::int32_t> ids = report_ids;
  if (ids.empty()) {
    for (const CatalogEntry& entry : ReadCatalog(process.dten().rssqlGeneral1)) {
      ids.push_back(entry.id);
    }
  }
  std::vector<Finding> findings;
  for (const std::int32_t id : ids) {
    CheckReport(process, id, findings);
    if (read_xml) CheckPrintTemplates(process, id, read_xml, findings);
  }
  return findings;
}

}  // namespace vorek
