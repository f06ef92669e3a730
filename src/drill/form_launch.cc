#include "drill/form_launch.h"

#include "catalog/report_row.h"
#include "drill/cell_number.h"
#include "drill/form_component.h"
#include "drill/form_metadata_reader.h"
#include "drill/query_columns.h"
#include "drill/record_condition.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr const char* kFormRunner = "comScreenMill.comScreenRun.dll";
constexpr std::int32_t kSaleReturn = 903;        // a form type
constexpr std::int32_t kAccountTurnover = 2844;  // a report that its forms change

class FormLaunch {
 public:
  FormLaunch(ReportContext& report, DrillHost& host, std::int32_t row)
      : report_(report), host_(host), state_(report.state), grid_(report.flxMain), row_(row) {}

  // A procedure's form is told by the headers; what that doesn't settle goes on with the query.
  void Run() {
    IgnoreErrors([&] {
      if (!state_.IsStoredProcedure || LaunchByHeaders()) LaunchByQuery();
    });
  }

 private:
  Recordset& Slot() { return report_.process.dten().rssqlGeneral1; }
  bool IsOnRow() const { return row_ >= 1 && row_ < grid_.Rows(); }
  bool HostShowsForms() const { return report_.process.main.SystemParameter123; }
  std::int32_t NumberAt(std::int32_t column) { return CellWholeNumber(grid_, row_, column); }
  std::string KeyCondition(std::int32_t column) {
    return " ID=" + std::to_string(NumberAt(column));
  }

  bool LaunchByHeaders();
  bool AskHostForRunner(std::int32_t key_column);
  bool ShowProcedureForm(const std::string& file_name, std::int32_t key_column);
  void ShowRecord(Component& form, std::int32_t key_column);
  void TellReturnType(Component& form, std::int32_t key_column);

  void LaunchByQuery();
  bool TakeFormType();
  void ShowByHost();
  void ShowByComponent();

  std::string FileNameOf(std::int32_t form_type);
  bool IsSystemBuilt(std::int32_t form_type);

  ReportContext& report_;
  DrillHost& host_;
  ReportState& state_;
  Grid& grid_;
  std::int32_t row_;
  std::string list_;  // the select list where it was needed, else ""
};

// --- By the headers of a procedure's result
// --------------------------------------------------------

// False if the double click ends here.
bool FormLaunch::LaunchByHeaders() {
  if (state_.ReportFormTypeID == -1) {
    const auto type_column = FindColumn("FormTypeID", grid_);
    if (!type_column) return false;
    state_.FormTypeID = NumberAt(*type_column);
  } else {
    state_.FormTypeID = state_.ReportFormTypeID;
  }
  const auto key_column = FindColumn("FormID", grid_);
  if (!key_column) return false;
  const std::string file_name = FileNameOf(state_.FormTypeID);
  if (file_name.empty()) return false;
  if (file_name == kFormRunner) return AskHostForRunner(*key_column);
  return ShowProcedureForm(file_name, *key_column);
}

// The runner can be driven by the host alone.
bool FormLaunch::AskHostForRunner(std::int32_t key_column) {
  if (!IsOnRow() || state_.IsResultEmpty()) {
    if (HostShowsForms()) host_.RaiseInvokeClearShow(state_.FormTypeID, "");
    return true;
  }
  const std::string condition = KeyCondition(key_column);
  if (!HostShowsForms()) return true;
  host_.RaiseInvokeView(state_.FormTypeID, condition, "");
  return false;
}

// False if there is no such component.
bool FormLaunch::ShowProcedureForm(const std::string& file_name, std::int32_t key_column) {
  const std::unique_ptr<Component> form = MakeFormComponent(report_, file_name, state_.FormTypeID);
  if (form == nullptr) return false;
  if (IsOnRow() && state_.FormTypeID == kSaleReturn) TellReturnType(*form, key_column);
  ShowRecord(*form, key_column);
  if (IsOnRow() && state_.ReportID == kAccountTurnover) host_.RunAgain();
  return true;
}

void FormLaunch::ShowRecord(Component& form, std::int32_t key_column) {
  IgnoreErrors([&] {
    if (IsOnRow()) {
      form.Call("View", {grid_.TextMatrix(row_, key_column)});
    } else {
      form.Call("ClearShow", {});
    }
  });
}

// 0 for a return that belongs to no invoice, else 1.
void FormLaunch::TellReturnType(Component& form, std::int32_t key_column) {
  IgnoreErrors([&] {
    Recordset& slot = report_.process.dten().rssqlGeneral2;
    OpenSlot(slot, "Select * from tblSaleReturn Where SaleInvoiceID is null and ID = " +
                       std::to_string(NumberAt(key_column)));
    const bool free = slot.RecordCount() > 0;
    slot.Close();
    form.Set("ReturnType", free ? 0 : 1);
  });
}

// --- By the report's query
// -------------------------------------------------------------------------

void FormLaunch::LaunchByQuery() {
  StoredQueryOf(report_);
  if (!TakeFormType()) return;
  if (IsSystemBuilt(state_.FormTypeID)) {
    ShowByHost();
  } else {
    ShowByComponent();
  }
}

bool FormLaunch::TakeFormType() {
  if (state_.ReportFormTypeID != -1) {
    state_.FormTypeID = state_.ReportFormTypeID;
    return true;
  }
  const StoredQuery& query = StoredQueryOf(report_);
  if (!query.select_list) return false;
  list_ = *query.select_list;
  auto at = FindInList(list_, ".FormTypeID");
  if (!at) at = FindInList(list_, " as FormTypeID");
  if (!at) return false;
  const std::int32_t column = CommaColumn(list_, *at);
  if (!IsOnRow() || column >= grid_.Cols()) return false;
  state_.FormTypeID = NumberAt(column);
  return true;
}

void FormLaunch::ShowByHost() {
  const auto clear = [&] {
    if (HostShowsForms()) host_.RaiseInvokeClearShow(state_.FormTypeID, state_.CallerStringValue);
  };
  if (!IsOnRow() || state_.IsResultEmpty()) {
    clear();
    return;
  }
  RecordCondition condition = MakeRecordCondition(report_, state_.FormTypeID, row_);
  if (!condition.complete) {
    auto at = FindInList(list_, ".FormID");
    if (!at) at = FindInList(list_, ".ID");
    if (!at) {
      clear();
      return;
    }
    condition.text = KeyCondition(CommaColumn(list_, *at));
  }
  if (!HostShowsForms()) return;
  host_.RaiseInvokeView(state_.FormTypeID, condition.text, state_.CallerStringValue);
}

void FormLaunch::ShowByComponent() {
  const StoredQuery& query = StoredQueryOf(report_);
  if (!query.select_list) return;
  const std::string& list = *query.select_list;
  const bool fixed = state_.ReportFormTypeID != -1;
  const std::string table = FormTableOf(report_, state_.FormTypeID, list);
  const std::string file_name = FileNameOf(state_.FormTypeID);
  if (file_name.empty() || (table.empty() && fixed)) return;
  const auto at = FindInList(list, fixed ? table + ".ID" : ".FormID");
  if (!at) return;
  const std::unique_ptr<Component> form = MakeFormComponent(report_, file_name, state_.FormTypeID);
  if (form != nullptr) ShowRecord(*form, CommaColumn(list, *at));
}

// --- Metadata of the form
// --------------------------------------------------------------------------

// "" for a form type that isn't there.
std::string FormLaunch::FileNameOf(std::int32_t form_type) {
  OpenSlot(Slot(),
           "Select IsNull(tblVorekFormType.FileName,'') as FileName From tblVorekFormType "
           "Where tblVorekFormType.ID=" +
               std::to_string(form_type));
  const std::string name = Slot().AtEnd() ? "" : TextOf(Slot(), "FileName");
  Slot().Close();
  return name;
}

bool FormLaunch::IsSystemBuilt(std::int32_t form_type) {
  OpenSlot(Slot(), "Select * from tblVorekFormType Where ID = " + std::to_string(form_type));
  const bool built = !Slot().AtEnd() && FlagOf(Slot(), "IsSystemBuilt", false);
  Slot().Close();
  return built;
}

}  // namespace

void LaunchForm(ReportContext& report, DrillHost& host, std::int32_t row) {
  FormLaunch(report, host, row).Run();
}

}  // namespace vorek
