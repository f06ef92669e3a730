#include "engine/entry_points.h"
#include "engine/pass_bar.h"
#include "engine/property_bag.h"
#include "engine/report_control.h"
#include "engine/stop_reason.h"
#include "grid/column_layout_pass.h"
#include "grid/column_sort.h"
#include "grid/merged_rows.h"
#include "platform/attempt.h"
#include "totals/summary_rows.h"
#include "vorek/report.h"

// The host's face of the control: every member hands the work on.
namespace vorek {

VorekReport1::VorekReport1(World& world) : impl_(std::make_unique<ReportControl>(world.State())) {}
VorekReport1::~VorekReport1() = default;

bool VorekReport1::View(std::int32_t ID, const std::string& inParameterString,
                        const std::string& inCallerStringValue) {
  bool shown = false;
  ForHost([&] { shown = impl_->View(ID, inParameterString, inCallerStringValue); });
  return shown;
}

bool VorekReport1::Refresh(bool DoFilter, const std::string& inParameterString,
                           const std::string& inCallerStringValue) {
  bool shown = false;
  ForHost([&] { shown = impl_->Refresh(DoFilter, inParameterString, inCallerStringValue); });
  return shown;
}

std::string VorekReport1::StopReason() const { return StopReasonOf(impl_->state); }

void VorekReport1::ObjectEvent(const std::string& name) {
  ForHost([&] { impl_->ObjectEvent(name); });
}

void VorekReport1::AlignFlexes(bool RetriveFromDB) {
  ReportContext report = impl_->Context();
  ChangeRows(*impl_, [&] { vorek::AlignFlexes(report, RetriveFromDB); });
}

bool VorekReport1::ShowWithParams(std::int32_t ID) {
  ForHost([&] { vorek::ShowWithParams(*impl_, ID); });
  return true;
}

bool VorekReport1::ViewRepotRelations(std::int32_t ID, const std::string& inParameterString) {
  ForHost([&] { vorek::ViewRepotRelations(*impl_, ID, inParameterString); });
  return true;
}

void VorekReport1::ViewReportWithoutParameters(std::int32_t& calledRepportID,
                                               std::string& CallerStr, std::string& InvRepTitle) {
  ForHost(
      [&] { vorek::ViewReportWithoutParameters(*impl_, calledRepportID, CallerStr, InvRepTitle); });
}

void VorekReport1::Clear() { ClearReport(*impl_); }
bool VorekReport1::setNull() { return SetNull(*impl_); }
bool VorekReport1::DropUnusedrows() { return DropUnusedRows(*impl_); }

void VorekReport1::SortflxMain(std::int32_t column) {
  ReportContext report = impl_->Context();
  ChangeRows(*impl_, [&] { vorek::SortflxMain(report, column); });
}

void VorekReport1::MakeFlexMerged() {
  ReportContext report = impl_->Context();
  ChangeRows(*impl_, [&] { vorek::MakeFlexMerged(report); });
}

bool VorekReport1::SetSharedFilters() {
  if (impl_->VorekParameters1.Visible()) impl_->VorekParameters1.SetSharedFilters();
  return false;
}

void VorekReport1::mnuAvg_Click() {
  ReportContext report = impl_->Context();
  ChangeRows(*impl_, [&] { vorek::mnuAvg_Click(report); });
}

void VorekReport1::InitProperties() { vorek::InitProperties(*impl_); }
void VorekReport1::ReadProperties(PropertyStore& store) { vorek::ReadProperties(*impl_, store); }
void VorekReport1::WriteProperties(PropertyStore& store) { vorek::WriteProperties(*impl_, store); }

void VorekReport1::Mark(const char* key) {
  if (PropertyChanged) PropertyChanged(key);
}

bool VorekReport1::MakeTree() const { return impl_->state.MakeTree(); }
bool VorekReport1::isTransposeFlexTree() const { return impl_->state.isTransposeFlexTree(); }

std::int16_t VorekReport1::UserID() const { return static_cast<std::int16_t>(impl_->state.UserID); }
void VorekReport1::SetUserID(std::int16_t id) {
  impl_->state.UserID = id;
  Mark("UserID");
}
std::int32_t VorekReport1::PeriodID() const { return impl_->state.PeriodID; }
void VorekReport1::SetPeriodID(std::int32_t id) {
  impl_->state.PeriodID = id;
  Mark("PeriodID");
}
std::int16_t VorekReport1::OperationMode() const { return impl_->state.OperationMode; }
void VorekReport1::SetOperationMode(std::int16_t mode) {
  impl_->state.OperationMode = mode;
  Mark("OperationMode");
}
std::int16_t VorekReport1::PositionID() const {
  return static_cast<std::int16_t>(impl_->state.PositionID);
}
void VorekReport1::SetPositionID(std::int16_t id) {
  impl_->state.PositionID = id;
  Mark("PositionID");
}
std::int16_t VorekReport1::EmployeeID() const {
  return static_cast<std::int16_t>(impl_->state.EmployeeID);
}
void VorekReport1::SetEmployeeID(std::int16_t id) {
  impl_->state.EmployeeID = id;
  Mark("EmployeeID");
}

const std::string& VorekReport1::OleConnectionString() const {
  return impl_->state.OleConnectionString;
}
void VorekReport1::SetOleConnectionString(const std::string& text) {
  impl_->SetConnection(text);
  Mark("OleConnectionString");
}

const std::string& VorekReport1::Title() const { return impl_->state.Title; }
std::int32_t VorekReport1::FormID() const { return impl_->state.FormID; }
void VorekReport1::SetFormID(std::int32_t id) {
  impl_->state.FormID = id;
  Mark("FormID");
}
std::int32_t VorekReport1::FormTypeID() const { return impl_->state.FormTypeID; }
void VorekReport1::SetFormTypeID(std::int32_t id) {
  impl_->state.FormTypeID = id;
  Mark("FormTypeID");
}
const std::string& VorekReport1::UniqueWC() const { return impl_->state.UniqueWC; }
bool VorekReport1::Enabled() const { return impl_->state.Enabled; }
void VorekReport1::SetEnabled(bool on) {
  impl_->SetEnabledGrids(on);
  Mark("Enabled");
}
const std::string& VorekReport1::UseThisQuery() const { return impl_->state.UseThisQuery; }
void VorekReport1::SetUseThisQuery(const std::string& text) {
  impl_->state.UseThisQuery = text;
  Mark("UseThisQuery");
}
bool VorekReport1::Enable_DbClick() const { return impl_->state.Enable_DbClick; }
void VorekReport1::SetEnable_DbClick(bool on) {
  impl_->state.Enable_DbClick = on;
  Mark("Enable_DbClick");
}
bool VorekReport1::Editable() const { return impl_->state.Editable; }
void VorekReport1::SetEditable(bool on) { impl_->SetEditable(on); }
std::int32_t VorekReport1::flxMainRows() const { return impl_->state.flxMainRows; }
void VorekReport1::SetflxMainRows(std::int32_t rows) { impl_->state.flxMainRows = rows; }
std::int32_t VorekReport1::flxMainHeight() const { return impl_->state.flxMainHeight; }
void VorekReport1::SetflxMainHeight(std::int32_t twips) { impl_->state.flxMainHeight = twips; }
std::int32_t VorekReport1::flxMainRowHeight() const { return impl_->state.flxMainRowHeight; }
void VorekReport1::SetflxMainRowHeight(std::int32_t twips) {
  impl_->state.flxMainRowHeight = twips;
}
bool VorekReport1::ShowDiagram() const { return impl_->state.ShowDiagram; }
void VorekReport1::SetShowDiagram(bool on) { impl_->state.ShowDiagram = on; }
bool VorekReport1::CancelVisible() const { return impl_->state.CancelVisible; }
void VorekReport1::SetCancelVisible(bool on) { impl_->state.CancelVisible = on; }
bool VorekReport1::isTransposedResult() const { return impl_->state.isTransposedResult; }
void VorekReport1::SetisTransposedResult(bool on) { impl_->state.isTransposedResult = on; }
std::int32_t VorekReport1::ParentID() const { return impl_->state.ParentID; }
void VorekReport1::SetParentID(std::int32_t id) { impl_->state.ParentID = id; }
std::int32_t VorekReport1::CallerID() const { return impl_->state.CallerID; }
void VorekReport1::SetCallerID(std::int32_t id) { impl_->state.CallerID = id; }
std::int32_t VorekReport1::local_ParentID() const { return impl_->state.local_ParentID; }
void VorekReport1::Setlocal_ParentID(std::int32_t id) { impl_->state.local_ParentID = id; }
std::int32_t VorekReport1::flxMainTopRow() const { return impl_->flxMain.TopRow(); }
void VorekReport1::SetflxMainTopRow(std::int32_t row) { impl_->SetMainTopRow(row); }

void VorekReport1::Resize(std::int32_t width, std::int32_t height) {
  impl_->Move(impl_->Left(), impl_->Top(), width, height);
}

FlexGrid& VorekReport1::getflxMain() { return impl_->flxMain; }
FlexGrid& VorekReport1::getflxTranspose() { return impl_->flxTranspose; }
std::string VorekReport1::TextMatrix(std::int32_t Row, std::int32_t Col) const {
  return impl_->CellText(Row, Col);
}
std::int32_t VorekReport1::Rows() const { return impl_->Context().ActiveGrid().Rows(); }
std::int32_t VorekReport1::Cols() const { return impl_->Context().ActiveGrid().Cols(); }
std::int32_t VorekReport1::QueryRecordCount() const { return impl_->state.QueryRecordCount; }

ReportEvents& VorekReport1::Events() { return impl_->events; }
Control& VorekReport1::Root() { return *impl_; }

}  // namespace vorek
