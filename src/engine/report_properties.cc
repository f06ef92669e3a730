#include "drill/result_line.h"
#include "engine/report_control.h"
#include "totals/selection_figures.h"
#include "widgets/property.h"

// The properties and public fields of the control as a script reaches them.
namespace vorek {
namespace {

using Arguments = std::vector<std::string>;
using property::FromText;
using property::ToText;

ReportControl& Report(Control& control) { return static_cast<ReportControl&>(control); }

// A field that is stored and returned only.
template <typename T>
PropertyEntry Stored(std::string_view name, T ReportState::*field) {
  return {name, [field](Control& c, const Arguments&) { return ToText(Report(c).state.*field); },
          [field](Control& c, const Arguments&, const std::string& value) {
            Report(c).state.*field = FromText<T>(value);
          }};
}

template <typename T>
PropertyEntry Shown(std::string_view name, T ReportState::*field) {
  PropertyEntry entry = Stored(name, field);
  entry.set = nullptr;
  return entry;
}

// A field with an effect: the setter is a member of the control.
template <typename T, typename V>
PropertyEntry Acting(std::string_view name, T ReportState::*field, void (ReportControl::*set)(V)) {
  PropertyEntry entry = Stored(name, field);
  entry.set = [set](Control& c, const Arguments&, const std::string& value) {
    (Report(c).*set)(FromText<std::remove_cvref_t<V>>(value));
  };
  return entry;
}

std::string InWords(const SelectionFigures& figures) {
  return "rows " + std::to_string(figures.rows) + ", numbers " + std::to_string(figures.numbers) +
         ", sum " + figures.sum + ", average " + figures.average + ", least " + figures.least +
         ", greatest " + figures.greatest;
}

PropertyTable HostProperties() {
  return {Stored("UserID", &ReportState::UserID),
          Stored("PeriodID", &ReportState::PeriodID),
          Stored("PositionID", &ReportState::PositionID),
          Stored("EmployeeID", &ReportState::EmployeeID),
          Stored("FormID", &ReportState::FormID),
          Stored("FormTypeID", &ReportState::FormTypeID),
          Stored("UseThisQuery", &ReportState::UseThisQuery),
          Stored("Enable_DbClick", &ReportState::Enable_DbClick),
          Stored("ShowDiagram", &ReportState::ShowDiagram),
          Stored("CancelVisible", &ReportState::CancelVisible),
          Stored("isTransposedResult", &ReportState::isTransposedResult),
          Stored("ParentID", &ReportState::ParentID),
          Stored("CallerID", &ReportState::CallerID),
          Stored("local_ParentID", &ReportState::local_ParentID),
          Stored("flxMainRows", &ReportState::flxMainRows),
          Stored("flxMainHeight", &ReportState::flxMainHeight),
          Stored("flxMainRowHeight", &ReportState::flxMainRowHeight),
          Acting("OleConnectionString", &ReportState::OleConnectionString,
                 &ReportControl::SetConnection),
          Acting("Editable", &ReportState::Editable, &ReportControl::SetEditable),
          Shown("Title", &ReportState::Title),
          Shown("UniqueWC", &ReportState::UniqueWC),
          Shown("ReportID", &ReportState::ReportID),
          Shown("ReportNotes", &ReportState::ReportNotes),
          Shown("QueryText", &ReportState::QueryText),
          Shown("QuerySource", &ReportState::QuerySource),
          Shown("QueryRecordCount", &ReportState::QueryRecordCount),
          Shown("ParameterString", &ReportState::ParameterString),
          Shown("CallerStringValue", &ReportState::CallerStringValue),
          Shown("SQLQuery", &ReportState::SQLQuery),
          Shown("ListOfParameters", &ReportState::ListOfParameters),
          Shown("ListOfVisualParameters", &ReportState::ListOfVisualParameters),
          Shown("ReportDistributed", &ReportState::ReportDistributed)};
}

}  // namespace

const PropertyTable& ReportControl::OwnProperties() const {
  static const PropertyTable table = [] {
    PropertyTable all = HostProperties();
    all.push_back(
        {"OperationMode",
         [](Control& c, const Arguments&) { return std::to_string(Report(c).state.OperationMode); },
         [](Control& c, const Arguments&, const std::string& value) {
           Report(c).state.OperationMode = static_cast<std::int16_t>(FromText<std::int32_t>(value));
         }});
    all.push_back({"Enabled",
                   [](Control& c, const Arguments&) { return ToText(Report(c).state.Enabled); },
                   [](Control& c, const Arguments&, const std::string& value) {
                     Report(c).SetEnabledGrids(FromText<bool>(value));
                   }});
    all.push_back({"flxMainTopRow",
                   [](Control& c, const Arguments&) { return ToText(Report(c).flxMain.TopRow()); },
                   [](Control& c, const Arguments&, const std::string& value) {
                     Report(c).SetMainTopRow(FromText<std::int32_t>(value));
                   }});
    all.push_back({"RowCounts",
                   [](Control& c, const Arguments&) {
                     ReportContext report = Report(c).Context();
                     return TellResult(report).counts;
                   },
                   nullptr});
    all.push_back({"SelectionFigures",
                   [](Control& c, const Arguments&) {
                     return InWords(FiguresOfSelection(Report(c).Context()));
                   },
                   nullptr});
    all.push_back({"FilterInForce",
                   [](Control& c, const Arguments&) {
                     ReportContext report = Report(c).Context();
                     return FilterInForce(report);
                   },
                   nullptr});
    return all;
  }();
  return table;
}

}  // namespace vorek
