#include "export/file_form.h"

#include <algorithm>
#include <utility>

namespace vorek {

FileForm::FileForm(Process& process, Notices& notices, std::string name, const std::string& caption,
                   const std::string& help)
    : Form(process.windows(), std::move(name)), process_(process), notices_(notices) {
  SetCaption(caption);
  SetRightToLeft(true);
  lblHelp.SetCaption(help);
  cmdSave.SetCaption("...ذخيره در");
  cmdOk.SetCaption("تاييد");
  cmdCancel.SetCaption("انصراف");
  txtSaveFileName.SetLocked(true);
  cmdCancel.on_click = [this] { Close(false); };
}

void FileForm::PlaceFrame(std::int32_t width, std::int32_t height, std::int32_t file_top) {
  constexpr std::int32_t kEdge = 180;
  const std::int32_t bottom = height - 660;
  Move(0, 0, width, height);
  lblHelp.Move(kEdge, kEdge, width - 2 * kEdge, 600);
  cmdSave.Move(width - 1500 - kEdge, file_top, 1500, 400);
  txtSaveFileName.Move(kEdge, file_top, width - 1800 - kEdge, 400);
  cmdOk.Move(1680, bottom, 1320, 420);
  cmdCancel.Move(kEdge, bottom, 1320, 420);
}

void FileForm::SetOrder(const std::vector<Control*>& controls,
                        const std::vector<Control*>& from_left) {
  std::int32_t tab = 0;
  for (Control* const control : controls) {
    control->SetRightToLeft(std::ranges::count(from_left, control) == 0);
    control->SetTabIndex(tab++);
  }
}

bool FileForm::IsAccepted() {
  accepted_ = false;
  ShowModal();
  return accepted_;
}

void FileForm::Close(bool accepted) {
  accepted_ = accepted;
  Unload();
}

}  // namespace vorek
