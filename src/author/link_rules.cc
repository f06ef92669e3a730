#include <algorithm>

#include "author/check_context.h"
#include "catalog/report_row.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

class LinkRules {
 public:
  explicit LinkRules(CheckContext& check) : check_(check) {}

  void Run() {
    for (const LinkRow& link : check_.report.links) CheckLink(link);
    if (check_.report.popup) CheckPopup();
  }

 private:
  void CheckLink(const LinkRow& link);
  void CheckPopup();
  bool Finds(const std::string& query);
  bool HasColumn(const std::string& header) const;

  CheckContext& check_;
};

bool LinkRules::Finds(const std::string& query) {
  Recordset& slot = check_.process.dten().rssqlGeneral2;
  OpenSlot(slot, query);
  const bool found = !slot.AtEnd();
  slot.Close();
  return found;
}

bool LinkRules::HasColumn(const std::string& header) const {
  const auto is = [&](const auto& column) {
    return text::EqualsIgnoreCase(text::Trim(column.name), header);
  };
  const std::vector<ExpressionRow>& calculated = check_.report.expressions;
  return std::any_of(check_.fields->begin(), check_.fields->end(), is) ||
         std::any_of(calculated.begin(), calculated.end(), is);
}

// A cross table's link names the report in other columns.
void LinkRules::CheckLink(const LinkRow& link) {
  const auto at = [&](const char* field) {
    return Place{.table = CatalogueTable::kLink, .row = link.called, .field = field};
  };
  const std::string called = std::to_string(text::TextToNumber(link.called));
  const bool there = Finds(ReportRowQuery(text::TextToNumber(link.called)));
  if (!there) check_.Tell(Rule::kLinkMissing, at("CalledReportID"), {called});
  const bool passes = there && !link.parameter.empty();
  if (passes && !Finds("Select ParameterID from tblVorekReportParameter Where ReportID=" + called +
                       " and ParameterID=" + std::to_string(text::TextToNumber(link.parameter)))) {
    check_.Tell(Rule::kLinkParameter, at("CalledParameterID"), {link.parameter});
  }
  if (!link.column.empty() && check_.fields && !HasColumn(link.column)) {
    check_.Tell(Rule::kLinkColumn, at("CallerReportColumn"), {link.column});
  }
}

// A window on the children of a row is opened with the parameters of the report.
void LinkRules::CheckPopup() {
  if (check_.report.parameters.empty()) {
    check_.Tell(Rule::kPopupParameter, {.field = "ShowPopupTree"});
  }
  if (!check_.fields) return;
  const auto parent = std::find_if(
      check_.fields->begin(), check_.fields->end(),
      [](const ResultField& field) { return text::EqualsIgnoreCase(field.name, "ParentID"); });
  const bool after_key = parent != check_.fields->begin() && parent != check_.fields->end() &&
                         text::EqualsIgnoreCase((parent - 1)->name, "ID");
  if (!after_key) check_.Tell(Rule::kPopupKey, {.field = "ShowPopupTree"});
}

}  // namespace

void CheckLinks(CheckContext& check) { LinkRules(check).Run(); }

}  // namespace vorek
