#include "engine/report_check.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "catalog/report_row.h"
#include "engine/print_template_check.h"
#include "engine/query_text.h"
#include "engine/query_tokens.h"
#include "engine/rights.h"
#include "engine/security_check.h"
#include "engine/select_list.h"
#include "grid/formula_check.h"
#include "parameters/parameter_dependencies.h"
#include "text/number.h"
#include "text/utf8.h"
#include "totals/group_reports.h"

namespace vorek {
namespace {

// The numbers behind the "@" of a text; -1 stands for an "@" without a number.
std::vector<std::int32_t> Markers(const std::string& query) {
  std::vector<std::int32_t> markers;
  for (std::size_t at = query.find('@'); at != std::string::npos; at = query.find('@', at)) {
    while (at < query.size() && query[at] == '@') ++at;
    std::size_t end = at;
    while (end < query.size() && query[end] >= '0' && query[end] <= '9') ++end;
    const std::string digits = query.substr(at, std::min<std::size_t>(end - at, 9));
    markers.push_back(digits.empty() ? -1 : std::stoi(digits));
  }
  return markers;
}

std::string Marker(std::int32_t id) { return "@" + std::to_string(id); }

class ReportCheck {
 public:
  ReportCheck(Process& process, std::int32_t id, std::vector<Finding>& findings)
      : process_(process), id_(id), findings_(findings) {}

  void Run() {
    if (!ReadDefinition()) {
      Tell(true, "ID", "there is no report " + std::to_string(id_), "it shows an empty grid");
      return;
    }
    ReadParameters();
    CheckMarkers();
    CheckParameters();
    CheckTokens();
    CheckLayout();
    CheckSecurity();
    CheckFormulas();
    CheckLinks();
    CheckPopup();
    CheckDependencies();
    CheckSubtotals();
  }

 private:
  Recordset& Slot() { return process_.dten().rssqlGeneral1; }
  std::string Where() const { return " Where ReportID=" + std::to_string(id_); }

  void Tell(bool error, std::string field, std::string what, std::string why) {
    findings_.push_back({error, id_, std::move(field), std::move(what), std::move(why)});
  }

  bool ReadDefinition();
  void ReadParameters();
  void CheckMarkers();
  void CheckParameters();
  void CheckTokens();
  void CheckLayout();
  void CheckLayoutRow(std::int32_t column);
  void CheckSecurity();
  void CheckSecuredText();
  void CheckFormulas();
  void CheckFormula(const std::string& name, const std::string& field, const std::string& formula);
  void CheckLinks();
  void CheckPassedParameter(const std::string& field, const std::string& called,
                            const std::string& parameter);
  void CheckPopup();
  void CheckDependencies();
  void CheckSubtotals();
  bool ReportExists(const std::string& id);

  Process& process_;
  std::int32_t id_;
  std::vector<Finding>& findings_;
  std::string query_;
  std::string query_field_;
  bool secure_ = false;
  bool popup_ = false;
  std::int32_t form_type_ = -1;
  std::vector<std::int32_t> parameters_;
  std::vector<std::int32_t> markers_;
  std::optional<std::vector<std::string>> columns_;  // of the query, where they can be seen
  std::vector<std::string> calculated_;
};

bool ReportCheck::ReadDefinition() {
  OpenSlot(Slot(), ReportRowQuery(id_));
  const bool found = !Slot().AtEnd();
  if (found) {
    bool procedure = false;
    IgnoreErrors([&] { procedure = FlagOf(Slot(), "IsStoredProcedure", false); });
    query_field_ = procedure ? "SQLSP" : "SQLQuery";
    query_ = procedure ? "EXEC " + TextOf(Slot(), "SQLSP") : TextOf(Slot(), "SQLQuery");
    if (!procedure) IgnoreErrors([&] { query_ += TextOf(Slot(), "Reserved"); });
    secure_ = FlagOf(Slot(), "MakeSecure", false);
    IgnoreErrors([&] { popup_ = FlagOf(Slot(), "ShowPopupTree", false); });
    form_type_ = NumberOf(Slot(), "FormTypeID");
  }
  Slot().Close();
  columns_ = SelectListNames(DropEmptyAliases(query_));
  return found;
}

void ReportCheck::ReadParameters() {
  OpenSlot(Slot(),
           "Select ParameterID from tblVorekReportParameter" + Where() + " Order by ParameterID");
  for (; !Slot().AtEnd(); Slot().MoveNext()) parameters_.push_back(NumberOf(Slot(), "ParameterID"));
  Slot().Close();
  markers_ = Markers(query_);
}

void ReportCheck::CheckMarkers() {
  for (const std::int32_t marker : std::set<std::int32_t>(markers_.begin(), markers_.end())) {
    if (marker == -1) {
      Tell(true, query_field_, "an \"@\" that is no marker",
           "with a parameter string the report stops without a message");
      continue;
    }
    if (std::count(parameters_.begin(), parameters_.end(), marker) > 0) continue;
    // "@12" without a row is taken for "@1" with a "2" behind it.
    const std::string digits = std::to_string(marker);
    const auto prefix = std::find_if(parameters_.begin(), parameters_.end(), [&](std::int32_t id) {
      return digits.starts_with(std::to_string(id));
    });
    const std::string what = "the marker " + Marker(marker) + " has no parameter";
    if (prefix == parameters_.end()) {
      Tell(true, query_field_, what, "the form says that a parameter isn't defined and stays away");
    } else {
      Tell(true, query_field_, what,
           "it is taken for " + Marker(*prefix) +
               ", and the rest of its number stays behind the value");
    }
  }
}

void ReportCheck::CheckParameters() {
  for (const std::int32_t id : parameters_) {
    const std::string field = "parameter " + std::to_string(id);
    if (std::count(markers_.begin(), markers_.end(), id) == 0) {
      Tell(false, field, "no marker of the query uses it", "it isn't asked for");
      continue;
    }
    const std::string marker = Marker(id);
    if (!text::Contains(query_, marker + ")")) {
      Tell(false, field, "no closing bracket stands behind " + marker,
           "a parameter string can't fill it: the report then stops without a message");
    }
    const bool seen = text::Contains(query_, marker + ")") ||
                      text::Contains(query_, marker + ",") || text::Contains(query_, marker + " ");
    if (!seen) {
      Tell(true, field, marker + " stands at the very end of the query",
           "the form doesn't find it and says that a parameter isn't defined");
    }
  }
}

// A choice of a class of accounts writes the view of a list that follows it into the catalogue.
void ReportCheck::CheckDependencies() {
  std::vector<std::string> written;
  IgnoreErrors([&] {
    OpenSlot(Slot(), "Select ParameterID, MajorView, MinorView from tblVorekReportParameter" +
                         Where() +
                         " and ControlTypeID = 1007 and DepOnParameterIDForm is null and "
                         "DepOnParameterIDObject is not null Order by ParameterID");
    for (; !Slot().AtEnd(); Slot().MoveNext()) {
      const bool writes = WritesMetadata(TextOf(Slot(), "MajorView"), TextOf(Slot(), "MinorView"));
      if (writes) written.push_back(TextOf(Slot(), "ParameterID"));
    }
  });
  Slot().Close();
  if (written.empty()) return;
  const bool may_write = IgnoreErrors([&] {
    OpenSlot(Slot(), "Update tblVorekReportParameter Set MajorView = MajorView Where 1 = 0");
  });
  Slot().Close();
  for (const std::string& id : written) {
    if (may_write) break;
    Tell(false, "parameter " + id, "this login may not write tblVorekReportParameter",
         "a class that is chosen isn't noted in the catalogue; its list is shown all the same");
  }
}

void ReportCheck::CheckSubtotals() {
  const GroupReport* const shape = FindGroupReport(id_);
  if (shape == nullptr || !columns_) return;
  const std::int32_t needed = LastColumnOf(*shape);
  if (static_cast<std::int32_t>(columns_->size()) >= needed) return;
  Tell(true, query_field_,
       "subtotals of this report need " + std::to_string(needed) + " columns, it has " +
           std::to_string(columns_->size()),
       "it shows no subtotals");
}

void ReportCheck::CheckTokens() {
  static constexpr const char* kTokens[] = {
      "تاريخ اجراي گزارش",  "<FarsiReportDate>", "مشخصه كارمند", "<EmployeeID>",
      "مشخصه موقعيت كاربر", "<PositionID>",      "مشخصه زبان",   "<LanguageID>",
      "زمان اجراي گزارش",   "<ReportTime>",      "مشخصه كاربر",  "<UserID>"};
  const std::vector<bool> quoted = QuotedBytes(query_);
  for (const char* token : kTokens) {
    for (std::size_t at = text::FindIgnoreCase(query_, token); at != std::string::npos;
         at = text::FindIgnoreCase(query_, token, at + 1)) {
      if (!quoted[at]) continue;
      Tell(false, query_field_, std::string("the token ") + token + " stands in a text or a name",
           "it is replaced there too; dates and times bring quotes of their own");
      break;
    }
  }
}

void ReportCheck::CheckLayout() {
  OpenSlot(Slot(), "Select Count(*) as n from tblVorekReportExpression" + Where());
  const std::int32_t calculated = Slot().Field("n").Number();
  OpenSlot(Slot(), RunLayoutQuery(id_));
  int spread = 0;
  for (; !Slot().AtEnd(); Slot().MoveNext()) {
    if (Slot().Field("ColumnNumber").IsNull()) continue;
    const std::int32_t column = Slot().Field("ColumnNumber").Number();
    if (NumberOf(Slot(), "TransposeType") == 1) ++spread;
    const std::string field = "layout column " + std::to_string(column);
    const bool beyond =
        columns_ && column > static_cast<std::int32_t>(columns_->size()) + calculated;
    if (column > ColumnLayoutTable::kLast || column < 0) {
      Tell(true, field, "columns end at 2500", "the row is passed over");
    } else if (beyond) {
      Tell(false, field, "the result has " + std::to_string(columns_->size()) + " columns",
           "the row lays out nothing");
    }
  }
  Slot().Close();
  if (spread > 1) {
    Tell(true, "TransposeType", std::to_string(spread) + " columns are to be spread",
         "a cross table spreads one: the last one read wins");
  }
}

void ReportCheck::CheckSecurity() {
  if (!secure_) return;
  ReportState state;
  state.ReportID = id_;
  state.MakeSecure = true;
  state.ReportFormTypeID = form_type_;
  std::string query = query_;
  ApplySecurityClause(process_, state, query);
  if (!state.MakeSecure) {
    Tell(true, "MakeSecure", "the query gives no form type or no key",
         "it runs unrestricted: everybody sees all rows");
  } else if (query == query_) {
    Tell(true, "MakeSecure", "no form that the records belong to is secured",
         "it runs unrestricted: everybody sees all rows");
  } else {
    CheckSecuredText();
  }
}

void ReportCheck::CheckSecuredText() {
  const std::vector<QueryToken> tokens = ScanQuery(query_).tokens;
  const bool grouped = std::any_of(tokens.begin(), tokens.end(), [](const QueryToken& token) {
    return token.depth == 0 && IsKeyword(token, "group");
  });
  if (grouped) {
    Tell(false, "MakeSecure", "the condition comes behind the query's GROUP BY",
         "the server refuses the text");
  }
  for (const SecurityFault& fault : FindSecurityFaults(query_)) {
    Tell(fault.leaks, "MakeSecure", fault.what, fault.why);
  }
}

void ReportCheck::CheckFormulas() {
  OpenSlot(Slot(), "Select * from tblVorekReportExpression" + Where() + " Order by ColumnNumber");
  std::vector<std::pair<std::string, std::string>> formulas;
  for (; !Slot().AtEnd(); Slot().MoveNext()) {
    calculated_.push_back(TextOf(Slot(), "Name"));
    formulas.emplace_back(TextOf(Slot(), "GeneralExpression"),
                          TextOf(Slot(), "FirstRowExpression"));
  }
  Slot().Close();
  for (std::size_t i = 0; i < formulas.size(); ++i) {
    CheckFormula(calculated_[i], "GeneralExpression", formulas[i].first);
    CheckFormula(calculated_[i], "FirstRowExpression", formulas[i].second);
  }
}

void ReportCheck::CheckFormula(const std::string& name, const std::string& field,
                               const std::string& formula) {
  if (RaisesNegativeToFraction(formula)) {
    Tell(false, field + " of " + name, "a power with a fraction stands behind a minus",
         "the minus is taken for a sign, the power can't be computed, and both vanish: write a "
         "bracket as in 0-(C1^0.5)");
  }
  if (!columns_) return;
  const auto last = static_cast<std::int32_t>(columns_->size() + calculated_.size());
  for (std::size_t at = 0; at + 1 < formula.size(); ++at) {
    const bool reference = (formula[at] == 'C' || formula[at] == 'P') && formula[at + 1] >= '0' &&
                           formula[at + 1] <= '9';
    if (!reference) continue;
    const double column = text::NumericPrefix(text::Mid(formula.substr(at + 1), 1, 9));
    if (column <= last) continue;
    Tell(true, field + " of " + name,
         std::string(1, formula[at]) + text::PlainNumber(column) +
             " refers to a column beyond the " + std::to_string(last) + " of the report",
         "the reference isn't replaced, and the formula fails");
  }
}

bool ReportCheck::ReportExists(const std::string& id) {
  Recordset& slot = process_.dten().rssqlGeneral2;
  OpenSlot(slot, ReportRowQuery(text::TextToNumber(id)));
  const bool exists = !slot.AtEnd();
  slot.Close();
  return exists;
}

// A called report gets what its markers and its parameters both know.
void ReportCheck::CheckPassedParameter(const std::string& field, const std::string& called,
                                       const std::string& parameter) {
  if (parameter.empty()) return;
  Recordset& slot = process_.dten().rssqlGeneral2;
  OpenSlot(slot, "Select ParameterID from tblVorekReportParameter Where ReportID=" +
                     std::to_string(text::TextToNumber(called)) +
                     " and ParameterID=" + std::to_string(text::TextToNumber(parameter)));
  const bool known = !slot.AtEnd();
  slot.Close();
  if (known || !ReportExists(called)) return;
  Tell(true, field, "the called report has no parameter " + parameter,
       "its query doesn't get the value, and may stop without a message");
}

// A window on the children of a row is opened with the parameters of the report.
void ReportCheck::CheckPopup() {
  if (!popup_) return;
  if (parameters_.empty()) {
    Tell(true, "ShowPopupTree", "the report has no parameter to pass on",
         "a double click on a closed row opens nothing");
  }
  if (!columns_) return;
  const auto parent = std::find_if(columns_->begin(), columns_->end(), [](const std::string& name) {
    return text::EqualsIgnoreCase(name, "ParentID");
  });
  const bool after_key = parent != columns_->begin() && parent != columns_->end() &&
                         text::EqualsIgnoreCase(*(parent - 1), "ID");
  if (after_key) return;
  Tell(true, "ShowPopupTree", "the field before ParentID isn't ID",
       "the window shows the children of another row, or none");
}

void ReportCheck::CheckLinks() {
  OpenSlot(Slot(),
           "Select * from tblVorekRelatedReports Where CallerReportID=" + std::to_string(id_));
  for (; !Slot().AtEnd(); Slot().MoveNext()) {
    const std::string called = TextOf(Slot(), "CalledReportID");
    const std::string column = text::Trim(TextOf(Slot(), "CallerReportColumn"));
    const std::string field = "link to report " + called;
    if (!ReportExists(called)) {
      Tell(true, field, "there is no such report", "a double click opens an empty window");
    }
    CheckPassedParameter(field, called, TextOf(Slot(), "CalledParameterID"));
    const auto has = [&](const std::vector<std::string>& names) {
      return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
        return text::EqualsIgnoreCase(text::Trim(name), column);
      });
    };
    if (column.empty() || !columns_ || has(*columns_) || has(calculated_)) continue;
    Tell(true, field, "the result has no column \"" + column + "\"",
         "the called report doesn't get its value");
  }
  Slot().Close();
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
    ReportCheck(process, id, findings).Run();
    if (read_xml) CheckPrintTemplates(process, id, read_xml, findings);
  }
  return findings;
}

}  // namespace vorek
