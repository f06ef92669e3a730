#include "export/form_access.h"

#include <array>

#include "state/file_dialogs.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/access_file.h"
#include "vorek/error.h"

namespace vorek {
namespace {

constexpr std::array<const char*, 7> kHeaders = {"رديف", "عنوان فيلد", "Description",    "Type",
                                                 "Size", "Required",   "OrdinalPosition"};
enum FieldColumn : std::int32_t { kName = 1, kDescription, kType, kSize, kRequired, kOrdinal };

void AddField(Grid& grid, const AccessField& field) {
  grid.AddItem("");
  const std::int32_t row = grid.Rows() - 1;
  grid.WriteCell(row, kName, field.name);
  grid.WriteCell(row, kDescription, field.description);
  grid.WriteCell(row, kType, std::to_string(field.type));
  grid.WriteCell(row, kSize, std::to_string(field.size));
  grid.WriteCell(row, kRequired, field.required ? "True" : "False");
  grid.WriteCell(row, kOrdinal, std::to_string(field.ordinal));
}

void Clear(Grid& grid) {
  grid.SetRows(1);
  grid.SetCols(static_cast<std::int32_t>(kHeaders.size()));
  for (std::size_t col = 0; col < kHeaders.size(); ++col) {
    grid.WriteCell(0, static_cast<std::int32_t>(col), kHeaders[col]);
  }
}

void SortByOrdinal(Grid& grid) {
  if (grid.Rows() < 2) return;
  grid.SetFixedRows(1);
  grid.SetFixedCols(1);
  grid.SetCol(kOrdinal);
  grid.Sort(1);
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    grid.WriteCell(row, 0, std::to_string(row));
  }
}

}  // namespace

FormAccess::FormAccess(Process& process, Notices& notices)
    : FileForm(
          process, notices, "FormAccess", "ذخيره در فايل اکسس",
          "جهت تهيه فايل اکسس، پس از مشخص كردن مسير فايل نمونه آن، که قبلا شماره ستونهاي گزارش "
          "قرار داده شده است،  دكمه تاييد را بزنيد:") {
  cmdRefresh.SetCaption("بازخواني");
  Place();
  on_load = [this] { Reset(); };
  cmdSave.on_click = [this] { cmdSave_Click(); };
  cmbTables.on_change = [this] { ShowAccessFields(txtSaveFileName.Text(), cmbTables.Text()); };
  cmdRefresh.on_click = [this] { cmdRefresh_Click(); };
  cmdOk.on_click = [this] { cmdOk_Click(); };
}

void FormAccess::Place() {
  constexpr std::int32_t kWidth = 9600;
  PlaceFrame(kWidth, 6480, 900);
  cmbTables.Move(1860, 1440, kWidth - 2040, 400);
  cmdRefresh.Move(180, 1440, 1500, 400);
  flxColumn.Move(180, 1980, kWidth - 360, 3660);
  SetOrder({&lblHelp, &cmdSave, &txtSaveFileName, &cmbTables, &cmdRefresh, &flxColumn, &cmdOk,
            &cmdCancel},
           {&txtSaveFileName});
  Clear(flxColumn);
  constexpr std::array<std::int32_t, 7> kWidths = {600, 2400, 1500, 800, 800, 1000, 1700};
  for (std::size_t col = 0; col < kWidths.size(); ++col) {
    flxColumn.SetColWidth(static_cast<std::int32_t>(col), kWidths[col]);
  }
}

void FormAccess::Reset() {
  txtSaveFileName.SetText("");
  cmbTables.Clear();
  Clear(flxColumn);
  process_.main.ColumnMapping.clear();
}

bool FormAccess::getAccessFileTemplate(std::string& fileName, std::string& tableName) {
  if (!IsAccepted()) return false;
  fileName = txtSaveFileName.Text();
  tableName = cmbTables.Text();
  return true;
}

void FormAccess::cmdSave_Click() {
  std::string file_name = "*.mdb";
  if (!OpenFileDialog(process_, notices_, file_name, "فايل خالي اکسس|*.mdb", "پرسش قالب فايل اکسس",
                      "*.mdb")) {
    return;
  }
  txtSaveFileName.SetText(file_name);
  Clear(flxColumn);  // of the file before
  ListAccessTables(file_name);
}

// A list that stays empty has to say why.
void FormAccess::TellRefusal(const std::function<void()>& read) {
  try {
    read();
  } catch (const Error& error) {
    notices_.ShowMessage("اشکال بازخواني", error.Description());
  }
}

void FormAccess::ListAccessTables(const std::string& fileName) {
  cmbTables.Clear();
  TellRefusal([&] {
    for (const std::string& name : process_.services.access_file->Tables(fileName)) {
      cmbTables.AddItem(name);
    }
  });
  if (cmbTables.ListCount() > 0) cmbTables.SetListIndex(0);
}

void FormAccess::ShowAccessFields(const std::string& fileName, const std::string& tableName) {
  Clear(flxColumn);
  TellRefusal([&] {
    for (const AccessField& field : process_.services.access_file->Fields(fileName, tableName)) {
      AddField(flxColumn, field);
    }
  });
  SortByOrdinal(flxColumn);
}

bool FormAccess::IsChosen() {
  if (!txtSaveFileName.Text().empty() && !cmbTables.Text().empty()) return true;
  notices_.ShowMessage("اشکال بازخواني", "نام فايل يا نام جدول مشخص نشده است!");
  return false;
}

void FormAccess::cmdRefresh_Click() {
  if (IsChosen()) ShowAccessFields(txtSaveFileName.Text(), cmbTables.Text());
}

std::string FormAccess::CellText(std::int32_t row, std::int32_t col) const {
  return text::Trim(flxColumn.TextMatrix(row, col));
}

void FormAccess::MapRow(std::int32_t row) {
  const std::string description = CellText(row, kDescription);
  if (!description.starts_with("#")) return;
  const double column = text::NumericPrefix(std::string_view(description).substr(1));
  process_.main.ColumnMapping.push_back({description, CellText(row, kName), CellText(row, kType),
                                         text::ToInt32(text::NumericPrefix(CellText(row, kSize))),
                                         text::ToLower(CellText(row, kRequired)) == "true",
                                         text::ToInt32(column - 1)});
}

void FormAccess::cmdOk_Click() {
  if (!IsChosen()) return;
  ColumnMappingTable& mapping = process_.main.ColumnMapping;
  mapping.clear();
  const bool read = IgnoreErrors([&] {
    for (std::int32_t row = 1; row < flxColumn.Rows(); ++row) MapRow(row);
  });
  if (!read) {
    notices_.ShowMessage("اشکال", "شماره ستون گزارش در توضيح يکي از فيلدها خوانده نمي شود!");
  } else if (mapping.size() > kMostMappedFields) {
    notices_.ShowMessage("اشکال", "بيش از 101 فيلد جدول به ستونهاي گزارش پيوند خورده است!");
  } else if (mapping.empty()) {
    notices_.ShowMessage("اشکال",
                         "در جدول مشخص شده از فايل مورد نظر، قالب تعريف ستونهاي گزارش يافت نشد!");
  } else {
    Close(true);
  }
}

}  // namespace vorek
