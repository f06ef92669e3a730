#include "export/form_send_to_text_file.h"

#include "state/file_dialogs.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::int32_t kChecked = 1;
constexpr int kYes = 1;

}  // namespace

FormSendToTextFile::FormSendToTextFile(Process& process, Notices& notices)
    : FileForm(
          process, notices, "FormSendToTextFile", "تهيه فايل متني از روي گزارش",
          "جهت تهيه فايل متني، جداكننده ستونهاي گزارش را مشخص كنيد و پس از مشخص كردن مسير فايل "
          " دكمه تاييد را بزنيد:") {
  lblDelimiter.SetCaption("جدا كننده:");
  txtDelimiter.SetToolTipText("^t=Tab");
  chkNewLine.SetCaption("در انتها يك خط اضافه شود.");
  chkHeader.SetCaption("سر ستونها منتقل شود.");
  chkRemoveMoney.SetCaption("مقادير مالي بدون جداکننده ارسال شوند.");
  Place();
  on_load = [this] { Reset(); };
  txtDelimiter.on_got_focus = [this] { txtDelimiter.SelectAll(); };
  cmdSave.on_click = [this] { cmdSave_Click(); };
  cmdOk.on_click = [this] { cmdOk_Click(); };
}

void FormSendToTextFile::Place() {
  constexpr std::int32_t kWidth = 7200;
  constexpr std::int32_t kInner = kWidth - 360;
  PlaceFrame(kWidth, 4080, 2760);
  lblDelimiter.Move(kWidth - 1500, 900, 1320, 360);
  txtDelimiter.Move(kWidth - 2900, 900, 1300, 360);
  chkNewLine.Move(180, 1380, kInner, 360);
  chkHeader.Move(180, 1800, kInner, 360);
  chkRemoveMoney.Move(180, 2220, kInner, 360);
  SetOrder({&lblHelp, &lblDelimiter, &txtDelimiter, &chkNewLine, &chkHeader, &chkRemoveMoney,
            &cmdSave, &txtSaveFileName, &cmdOk, &cmdCancel},
           {&txtSaveFileName, &txtDelimiter});
}

void FormSendToTextFile::Reset() {
  chosen_.clear();
  txtDelimiter.SetText("");
  txtSaveFileName.SetText("");
  chkNewLine.SetValue(kChecked);
  chkHeader.SetValue(0);
  chkRemoveMoney.SetValue(0);
}

bool FormSendToTextFile::IsThere(const std::string& file_name) const {
  bool there = false;
  IgnoreErrors([&] {
    there = process_.services.files != nullptr && process_.services.files->Exists(file_name);
  });
  return there;
}

void FormSendToTextFile::cmdSave_Click() {
  if (!SaveFileDialog(process_, chosen_, "فايل متني|*.txt")) return;
  if (IsThere(chosen_) &&
      notices_.ShowConfirm("هشدار", "فايل مورد نظر تكراري است، آيا بازنويسي شود؟") != kYes) {
    return;
  }
  txtSaveFileName.SetText(chosen_);
}

void FormSendToTextFile::cmdOk_Click() {
  if (txtSaveFileName.Text().empty()) {
    notices_.ShowMessage("خطا", "لطفاً با دكمه ذخيره در، نام فايل را مشخص كنيد.");
    return;
  }
  Close(true);
}

bool FormSendToTextFile::getTextFileName(std::string& fileName, std::string& delimiter,
                                         bool& newLine, bool& header, bool& removeMoney) {
  if (!IsAccepted()) return false;
  fileName = chosen_;
  delimiter = txtDelimiter.Text();
  if (text::EqualsIgnoreCase(text::TrimView(delimiter), "^t")) delimiter = "\t";
  newLine = chkNewLine.Value() == kChecked;
  header = chkHeader.Value() == kChecked;
  removeMoney = chkRemoveMoney.Value() == kChecked;
  return true;
}

}  // namespace vorek
