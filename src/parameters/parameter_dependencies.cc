#include "parameters/parameter_dependencies.h"

#include <optional>
#include <string_view>
#include <vector>

#include "catalog/report_row.h"
#include "parameters/accounting_reports.h"
#include "text/number.h"
#include "text/persian_date.h"
#include "text/utf8.h"
#include "widgets/typed_text.h"

namespace vorek {
namespace {

constexpr std::int32_t kPeriodAndBranchAlone = 2860;
constexpr std::int32_t kPeriodAlone = 2921;
constexpr std::int32_t kShowsWhenAsked = 2846;  // isn't confirmed at once
constexpr const char* kPeriods = "vwAccountPeriodMajor";
constexpr const char* kClasses = "vwAccountClassMajor";
constexpr const char* kAccounts = "vwAccountTwoLevels";

// A time as a server of any language reads it.
std::string Unambiguous(const std::string& time) { return text::Replace(time, "-", ""); }

// The accounts that are used with a class, and with one object of it.
std::string AccountFilter(std::int32_t class_id, std::optional<std::int32_t> object_id) {
  return " ID in (select AccountID from tblAccountDocumentDetail a inner join "
         "tblAccountDocumentObjects b on a.DocumentID=b.DocumentID and a.Rownumber=b.RowNumber "
         "Where b.ClassID = " +
         std::to_string(class_id) +
         (object_id ? " and b.ObjectID = " + std::to_string(*object_id) : "") + ")";
}

std::string TypedNumber(const TextBox& box) { return text::ExactNumber(PlainTyped(box.Text())); }

void ShowDate(VorekDate& date, const FieldValue& value) {
  const std::optional<text::CalendarDate> day =
      value.IsNull() ? std::nullopt : text::ParseDate(value.Text().substr(0, 10));
  if (day) {
    date.SetValue(*day);
  } else {
    date.Clear();
  }
}

}  // namespace

struct ParameterDependencies::Row {
  std::string id;
  bool on_form = false;  // DepOnParameterIDForm is set, else DepOnParameterIDObject
  std::string major_view;
  std::string minor_view;
};

struct ParameterDependencies::Class {
  std::string name;
  std::string major_view;
  std::string minor_view;
};

void ParameterDependencies::Begin(std::int32_t report_id) {
  report_id_ = report_id;
  entered_.clear();
}

bool ParameterDependencies::IsLedger() const { return IsAccountingReport(report_id_); }

VorekSelector& ParameterDependencies::Selector(std::int32_t index) {
  return widgets_.slt[static_cast<std::size_t>(index)];
}

std::int32_t ParameterDependencies::SelectedID(std::int32_t index) {
  const bool loaded = index >= 0 && index < static_cast<std::int32_t>(widgets_.slt.Size());
  return loaded ? Selector(index).ID() : 0;
}

bool ParameterDependencies::HasPeriod() {
  return widgets_.slt.Size() > 1 && Selector(1).ViewMajor() == kPeriods;
}

// --- At the beginning
// ----------------------------------------------------------------------------

bool ParameterDependencies::FillInitially(std::int32_t period_id, bool call_by_report) {
  if (!IsLedger() && report_id_ != kPeriodAndBranchAlone) return false;
  const bool filled = IgnoreErrors([&] {
    OpenSlot(Slot(), "Select * from tblAccountPeriod Where ID = " + std::to_string(period_id));
    const bool known = !Slot().AtEnd();
    Slot().Close();
    const Silence followed_below(*this);
    if (known && widgets_.slt.Size() > 1) Selector(1).SetID(period_id);
    TakeBranch();
  });
  if (!filled || !IsLedger()) return false;
  if (widgets_.slt.Size() > 1) SelectorChanged(1);
  const auto clear = [&](std::size_t index) {
    if (index < widgets_.chk.Size()) widgets_.chk[index].SetValue(0);
  };
  clear(2);
  const bool first = report_id_ == 2850 || report_id_ == 2851 || report_id_ == 2853;
  clear(first ? 1 : 3);
  return call_by_report && report_id_ != kShowsWhenAsked;
}

void ParameterDependencies::TakeBranch() {
  const std::int32_t branch = process_.main.GlobalBranchID;
  if (branch <= 0) return;
  for (std::size_t i = 1; i < widgets_.slt.Size(); ++i) {
    VorekSelector& selector = widgets_.slt[i];
    if (!text::Contains(selector.ViewMajor(), "Branch")) continue;
    selector.SetID(branch);
    if (selector.ID() >= 1) selector.SetAllowChange(false);
  }
}

// --- The period, the dates and the voucher numbers
// -----------------------------------------------

void ParameterDependencies::SelectorChanged(std::int32_t index) {
  if (silent_ > 0) return;
  IgnoreErrors([&] {
    const bool period = index == 1 && (IsLedger() || report_id_ == kPeriodAlone) && HasPeriod();
    if (period) TakePeriod();
    Follow(index);
  });
}

void ParameterDependencies::TakePeriod() {
  const Silence dates_come_together(*this);
  OpenSlot(Slot(), "Select * from tblAccountPeriod Where ID = " + std::to_string(SelectedID(1)));
  if (!Slot().AtEnd() && widgets_.dat.Size() > 2) {
    widgets_.dat[1].SetFarsiDate(TextOf(Slot(), "FarsiBeginDate"));
    widgets_.dat[2].SetFarsiDate(TextOf(Slot(), "FarsiEndDate"));
  }
  Slot().Close();
  TakeCodeRange();
}

void ParameterDependencies::TakeCodeRange() {
  if (widgets_.dat.Size() <= 2 || widgets_.txt.Size() <= 2) return;
  OpenSlot(Slot(),
           "Select Min(Code) as MinCode,Max(Code) as MaxCode from tblAccountDocument Where Code is "
           "not null and isnull(IsPreDoc,0)=0 and DocumentDate >='" +
               widgets_.dat[1].EnglishDate() + "' and DocumentDate <='" +
               widgets_.dat[2].EnglishDate() + "'");
  if (!Slot().AtEnd()) {
    widgets_.txt[1].SetText(TextOf(Slot(), "MinCode"));
    widgets_.txt[2].SetText(TextOf(Slot(), "MaxCode"));
  }
  Slot().Close();
}

void ParameterDependencies::DateChanged(std::int32_t index) {
  if (silent_ > 0 || !IsLedger() || (index != 1 && index != 2)) return;
  IgnoreErrors([&] { TakeCodeRange(); });
}

void ParameterDependencies::TextEntered(std::int32_t index) {
  entered_ = text::Trim(widgets_.txt[static_cast<std::size_t>(index)].Text());
}

void ParameterDependencies::TextLeft(std::int32_t index) {
  const std::string now = text::Trim(widgets_.txt[static_cast<std::size_t>(index)].Text());
  if (silent_ > 0 || now == entered_ || !IsLedger() || index > 2 || !HasPeriod()) return;
  entered_ = now;
  const Silence numbers_stay(*this);
  IgnoreErrors([&] { TakeDatesOfCodes(); });
}

// The numbers that were typed stay: the dates follow them, not the other way round.
void ParameterDependencies::TakeDatesOfCodes() {
  if (widgets_.dat.Size() <= 2 || widgets_.txt.Size() <= 2) return;
  OpenSlot(Slot(), "Select * from tblAccountPeriod Where ID = " + std::to_string(SelectedID(1)));
  const bool known = !Slot().AtEnd();
  const std::string begin = known ? Unambiguous(TextOf(Slot(), "BeginDate")) : "";
  const std::string end = known ? Unambiguous(TextOf(Slot(), "EndDate")) : "";
  OpenSlot(Slot(),
           "Select Min(DocumentDate) as MinDate,Max(DocumentDate) as MaxDate, Min(ID) as MinID, "
           "Max(ID) as MaxID from tblAccountDocument Where Code is not null and "
           "isnull(IsPreDoc,0)=0 and DocumentDate >='" +
               begin + "' and DocumentDate <='" + end + "' and Code>=" +
               TypedNumber(widgets_.txt[1]) + " and Code<=" + TypedNumber(widgets_.txt[2]));
  if (!Slot().AtEnd()) {
    ShowDate(widgets_.dat[1], Slot().Field("MinDate"));
    ShowDate(widgets_.dat[2], Slot().Field("MaxDate"));
  } else {
    for (const std::size_t i : {1U, 2U}) widgets_.dat[i].Clear();
    for (std::size_t i = 3; i <= 4 && i < widgets_.txt.Size(); ++i) widgets_.txt[i].SetText("");
  }
  Slot().Close();
}

// --- Lists that follow a choice
// ------------------------------------------------------------------

void ParameterDependencies::Follow(std::int32_t index) {
  const std::string tag = Selector(index).Tag();
  std::vector<Row> rows;
  OpenSlot(Slot(),
           "Select ParameterID,DepOnParameterIDForm,DepOnParameterIDObject,isnull(MajorView,'') as "
           "ViewMajor,isnull(MinorView,'') as ViewMinor from tblVorekReportParameter Where "
           "ReportID = " +
               std::to_string(report_id_) + " and (DepOnParameterIDObject = " + tag +
               " or DepOnParameterIDForm = " + tag + ")");
  for (; !Slot().AtEnd(); Slot().MoveNext()) {
    rows.push_back({TextOf(Slot(), "ParameterID"), !Slot().Field("DepOnParameterIDForm").IsNull(),
                    TextOf(Slot(), "ViewMajor"), TextOf(Slot(), "ViewMinor")});
  }
  Slot().Close();
  for (const Row& row : rows) {
    Control* const widget = widgets_.Find(row.id);
    if (widget == nullptr) continue;
    if (row.on_form) {
      FollowChoice(row, index, *widget);
    } else {
      FollowClass(row, index, *widget);
    }
  }
}

ParameterDependencies::Class ParameterDependencies::ReadClass(std::int32_t id) {
  Recordset& slot = process_.dten().rssqlDeps;
  OpenSlot(slot,
           "Select isnull(Name,'') as Name,isnull(ViewMajor,'') as ViewMajor,isnull(ViewMinor,'') "
           "as ViewMinor from tblAccountClass Where ID =" +
               std::to_string(id));
  Class found;
  if (!slot.AtEnd()) {
    found = {TextOf(slot, "Name"), TextOf(slot, "ViewMajor"), TextOf(slot, "ViewMinor")};
  }
  slot.Close();
  return found;
}

void ParameterDependencies::FollowClass(const Row& row, std::int32_t index, Control& widget) {
  const std::int32_t class_id = SelectedID(index);
  const Class of = ReadClass(class_id);
  auto* const selector = dynamic_cast<VorekSelector*>(&widget);
  auto* const list = dynamic_cast<VorekMultiSelect*>(&widget);
  if (of.major_view.empty() || of.minor_view.empty()) {
    if (selector != nullptr) selector->setNull();
    if (list != nullptr) list->setNull();
  } else if (selector != nullptr) {
    selector->SetOleConnectionString(process_.main.ConnectionText);
    selector->SetViewMinor(of.minor_view);
    selector->SetViewMajor(of.major_view);
    selector->setNull();
    selector->SetCaption(of.name);
  } else if (list != nullptr) {
    ShowClass(row, of, class_id, *list);
  }
}

void ParameterDependencies::ShowClass(const Row& row, const Class& of, std::int32_t class_id,
                                      VorekMultiSelect& list) {
  list.setNull();
  list.SetViewMajor(of.major_view);
  list.SetViewMinor(of.minor_view);
  std::string filter;
  if (WritesMetadata(row.major_view, row.minor_view)) {
    // A login may have no right to write: the form goes on without.
    IgnoreErrors([&] {
      OpenSlot(process_.dten().rssqlDeps,
               "Update tblVorekReportParameter Set MajorView ='" +
                   text::Replace(of.major_view, "'", "''") + "', MinorView='Name' Where ReportID=" +
                   std::to_string(report_id_) + " and ParameterID=" + list.Tag());
    });
    process_.dten().rssqlDeps.Close();
  } else {
    list.SetViewMajor(row.major_view);
    list.SetViewMinor(row.minor_view);
    filter = AccountFilter(class_id, std::nullopt);
  }
  list.SetWhereClause(filter);
  list.FillList();
}

void ParameterDependencies::FollowChoice(const Row& row, std::int32_t index, Control& widget) {
  const VorekSelector& choice = Selector(index);
  if (auto* const selector = dynamic_cast<VorekSelector*>(&widget)) {
    if (choice.ViewMajor() != "vwRecPayCashMajor") return;
    if (selector->ViewMajor() != "vwRecPayCashTurnMajor") return;
    const std::string turns = "ID in (Select x.ID from tblRecPayCashTurn x Where x.CashID=" +
                              std::to_string(choice.ID()) + ")";
    selector->SetWhereClauseOfList(turns);
    selector->SetWhereClauseOfTree(turns);
  } else if (auto* const list = dynamic_cast<VorekMultiSelect*>(&widget)) {
    list->setNull();
    list->SetViewMajor(row.major_view);
    list->SetViewMinor(row.minor_view);
    const bool of_class = choice.ViewMajor() == kClasses;
    list->SetWhereClause(of_class ? AccountFilter(choice.ID(), std::nullopt)
                                  : AccountFilter(SelectedID(index - 1), choice.ID()));
    list->FillList();
  }
}

bool WritesMetadata(const std::string& major_view, const std::string& minor_view) {
  return minor_view != "Name" || major_view != kAccounts;
}

}  // namespace vorek
