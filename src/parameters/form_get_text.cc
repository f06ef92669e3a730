#include "parameters/form_get_text.h"

#include "catalog/report_row.h"
#include "parameters/saved_settings.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr int kNo = 2;  // the second answer of a question

}  // namespace

FormGetText::FormGetText(Process& process, Notices& notices)
    : Form(process.windows(), "FormGetText"), process_(process), notices_(notices) {
  SetCaption("نام تنظيمات");
  SetRightToLeft(true);
  lblName.SetCaption("نام:");
  lblName.SetRightToLeft(true);
  cmb.SetRightToLeft(true);
  cmb.SetEditable(true);
  cmdOk.SetCaption("تاييد");
  cmdDelete.SetCaption("حذف");
  cmdCancel.SetCaption("انصراف");
  Place();
  cmb.on_got_focus = [this] { cmb.SelectAll(); };
  cmdOk.on_click = [this] { Accept(); };
  cmdDelete.on_click = [this] { Delete(); };
  cmdCancel.on_click = [this] { End(false); };
  on_form_key_down = [this](int key_code, int) {
    constexpr int kEscape = 27;
    if (key_code == kEscape) End(false);
  };
  cmb.on_key_down = [this](int key_code, int) {
    constexpr int kEnter = 13;
    if (key_code == kEnter) Accept();
  };
}

void FormGetText::Place() {
  Move(0, 0, 5400, 1500);
  lblName.Move(4500, 330, 600, 300);
  cmb.Move(300, 300, 4100, 360);
  cmdOk.Move(3900, 850, 1200, 400);
  cmdDelete.Move(2600, 850, 1200, 400);
  cmdCancel.Move(300, 850, 1200, 400);
}

bool FormGetText::getText(std::string& result, std::int32_t reportID, bool& changed) {
  report_id_ = reportID;
  accepted_ = changed_ = false;
  FillNames();
  cmb.SetFocus();
  ShowModal();
  if (accepted_) result = Name();
  changed = changed_;
  Unload();
  return accepted_;
}

void FormGetText::FillNames() {
  cmb.Clear();
  Recordset& slot = process_.dten().rssqlGeneral4;
  OpenSlot(slot, "Select * from tblVorekReportParameterConfig Where ReportID=" +
                     std::to_string(report_id_));
  for (; !slot.AtEnd(); slot.MoveNext()) cmb.AddItem(TextOf(slot, "Name"));
  slot.Close();
  cmb.SetListIndex(-1);
}

std::string FormGetText::Name() const { return text::Trim(cmb.Text()); }

void FormGetText::Accept() {
  if (Name().empty()) {
    notices_.ShowMessage("اشکال", "عنوان وارد نشده است");
    cmb.SetFocus();
    return;
  }
  Recordset& slot = process_.dten().rssqlGeneral4;
  OpenSlot(slot,
           "Select * from tblVorekReportParameterConfig Where " + SettingOf(report_id_, Name()));
  const bool known = slot.RecordCount() > 0;
  slot.Close();
  const char* const question = "قبلاً تنظيمي با اين نام ذخيره شده است، آيا بازنويسي شود؟";
  if (known && notices_.ShowConfirm("پرسش", question) == kNo) {
    cmb.SetFocus();
    return;
  }
  changed_ = true;
  End(true);
}

void FormGetText::Delete() {
  process_.dten().rssqlGeneral4.Close();
  process_.dten().rssqlGeneral4.Open("Delete tblVorekReportParameterConfig Where " +
                                     SettingOf(report_id_, Name()));
  FillNames();
  changed_ = true;
}

void FormGetText::End(bool accepted) {
  accepted_ = accepted;
  Hide();
}

}  // namespace vorek
