#include "record_form.h"

#include <algorithm>

#include "grid/column_layout_pass.h"

namespace vorek::desk {
namespace {

constexpr int kEscape = 27;
// Twips.
constexpr std::int32_t kMargin = 180;
constexpr std::int32_t kLabel = 2000;
constexpr std::int32_t kField = 3400;
constexpr std::int32_t kLine = 340;
constexpr std::int32_t kStep = 420;
constexpr std::int32_t kTable = 2000;
constexpr std::int32_t kNumbers = 600;
constexpr std::int32_t kColumn = 1600;
constexpr std::int32_t kWidth = 2 * (kLabel + kField) + 4 * kMargin;

class NoNotices : public Notices {
 public:
  void ShowMessage(const std::string&, const std::string&) override {}
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }
};

// Fills a grid as a report without a layout fills its own.
void Fill(Process& process, Grid& grid, const Recordset& rows) {
  ReportState state;
  Grid unused(nullptr, "flxTranspose");
  NoNotices notices;
  EvaluationClass evaluation;
  ReportContext report{process, state, grid, unused, notices, evaluation};
  grid.Bind(rows);
  FormCells(report, FieldsOf(rows));
  grid.NumberRows();
  grid.SetColWidth(0, kNumbers);
  for (std::int32_t col = 1; col < grid.Cols(); ++col) grid.SetColWidth(col, kColumn);
}

}  // namespace

RecordForm::RecordForm(Process& process, std::int32_t form_type, const Record& record)
    : Form(process.windows(), "RecordForm") {
  SetRightToLeft(true);
  SetCaption("مشخصات فرم " + std::to_string(form_type) + " - " + record.master.name);
  ShowFields(process, record.master);
  for (const RecordTable& table : record.details) ShowTable(process, table);
  cmdClose.SetCaption("بستن");
  cmdClose.on_click = [this] { Unload(); };
  on_form_key_down = [this](int key_code, int) {
    if (key_code == kEscape) Unload();
  };
  Place();
}

void RecordForm::ShowFields(Process& process, const RecordTable& master) {
  Grid values(nullptr, "values");
  Fill(process, values, master.rows);
  const auto fields = static_cast<std::int32_t>(master.rows.FieldCount());
  for (std::int32_t field = 1; field <= fields; ++field) {
    Label& label = lblField.Load();
    label.SetCaption(master.rows.FieldName(static_cast<std::size_t>(field) - 1));
    label.SetRightToLeft(true);
    TextBox& text = txtField.Load();
    text.SetRightToLeft(true);
    text.SetLocked(true);
    if (values.Rows() > 1) text.SetText(values.TextMatrix(1, field));
  }
}

void RecordForm::ShowTable(Process& process, const RecordTable& table) {
  Label& label = lblTable.Load();
  label.SetCaption(table.name);
  label.SetRightToLeft(true);
  flxTables.push_back(
      std::make_unique<Grid>(this, "flxTable" + std::to_string(flxTables.size() + 1)));
  Grid& grid = *flxTables.back();
  grid.SetRightToLeft(true);
  Fill(process, grid, table.rows);
}

// Two pairs of a name and a value on a line, from the right.
void RecordForm::Place() {
  std::int32_t top = kMargin;
  for (std::size_t i = 0; i < lblField.Size(); ++i) {
    const bool second = i % 2 == 1;
    const std::int32_t right = kWidth - kMargin - (second ? kLabel + kField + kMargin : 0);
    lblField[i].Move(right - kLabel, top + 40, kLabel, kLine);
    txtField[i].Move(right - kLabel - kField, top, kField, kLine);
    if (second || i + 1 == lblField.Size()) top += kStep;
  }
  for (std::size_t i = 0; i < flxTables.size(); ++i) {
    lblTable[i].Move(kMargin, top + 60, kWidth - 2 * kMargin, kLine);
    flxTables[i]->Move(kMargin, top + kStep, kWidth - 2 * kMargin, kTable);
    top += kStep + kTable + kMargin;
  }
  cmdClose.Move(kMargin, top + kMargin / 2, 1400, kStep);
  Move(0, 0, kWidth, top + kStep + 2 * kMargin);
}

}  // namespace vorek::desk
