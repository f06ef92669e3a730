#include <algorithm>

#include "parameters/parameter_kind.h"
#include "parameters/vorek_parameters.h"
#include "text/utf8.h"

// The panel folds to a line that tells the values in force, and is never higher than its room.
namespace vorek {
namespace {

constexpr std::int32_t kLeastCaption = 1500;  // twips; less of a title tells nothing
constexpr std::int32_t kGap = 50;

// A description as it stands in front of a value.
std::string WithoutColon(const std::string& description) {
  const std::string trimmed = text::Trim(description);
  return trimmed.ends_with(':') ? text::Trim(trimmed.substr(0, trimmed.size() - 1)) : trimmed;
}

// What a person calls the value: rows of a list by their number, a check box by a word.
std::string ValueInWords(const ParameterRow& row, Control& widget) {
  if (const auto* const check = dynamic_cast<const CheckBox*>(&widget)) {
    return check->Value() != 0 ? "بلي" : "خير";
  }
  if (const auto* const many = dynamic_cast<const VorekMultiSelect*>(&widget)) {
    const std::string ids = many->SelectedIDs();
    return std::to_string(std::count(ids.begin(), ids.end(), ',') + 1) + " مورد";
  }
  if (const auto* const entity = dynamic_cast<const VorekEntityPicker*>(&widget)) {
    return std::to_string(entity->FormTypeID()) + ":" + std::to_string(entity->FormID());
  }
  return FindKind(row.control_type)->read(widget).display_value;
}

}  // namespace

std::vector<ConfirmedValue> VorekParameters::ReadValues() const {
  std::vector<ConfirmedValue> values;
  for (const Field& field : fields_) {
    if (!field.row.visible || field.widget->Name() == "lbl" || IsEmptyWidget(*field.widget)) {
      continue;
    }
    values.push_back({WithoutColon(field.row.description), ValueInWords(field.row, *field.widget)});
  }
  return values;
}

void VorekParameters::SetFolded(bool folded) {
  if (folded_ == folded) return;
  folded_ = folded;
  ShowFold();
  if (on_content_change) on_content_change();
  if (!folded_) {
    FocusFirst();
  } else if (!HeadElsewhere) {
    cmdFold.SetFocus();
  }
}

void VorekParameters::SetRoom(std::int32_t height) {
  if (room_ == height) return;
  room_ = height;
  TakeHeight();
}

// The line is the button and the values; all else hides.
void VorekParameters::ShowFold() {
  const bool gone = folded_ && HeadElsewhere;
  cmdFold.SetVisible(CanFold && !gone);
  cmdFold.SetCaption(folded_ ? "▼" : "▲");
  cmdFold.SetToolTipText(folded_ ? "باز كردن پارامترها" : "جمع كردن پارامترها");
  for (Control* control : {static_cast<Control*>(&frame), static_cast<Control*>(&cmdOk),
                           static_cast<Control*>(&cmdNew)}) {
    control->SetVisible(!folded_);
  }
  ShowSettingButtons();
  lblValues.SetVisible(folded_ && !gone);
  const std::string title = lblCaption.Caption();
  lblValues.SetCaption((title.empty() ? "" : title + " - ") +
                       (values_ ? InWords(*values_) : "جستجو نشده"));
  LayoutButtons();
}

// The title stands in the middle, or as near to it as the buttons leave room.
void VorekParameters::PlaceCaption() {
  std::int32_t left = kGap;
  for (const Button* button : {&cmdCancel, &cmdFold}) {
    if (button->Visible()) left = std::max(left, button->Left() + button->Width() + kGap);
  }
  std::int32_t right = cmdNew.Left();
  for (const Button* button : {&cmdOk, &cmdSaveParameterConfig, &cmdLoadParameterConfig}) {
    if (button->Visible()) right = std::min(right, button->Left());
  }
  right -= kGap;
  const std::int32_t width = std::min(caption_width_, right - left);
  lblCaption.SetVisible(!HeadElsewhere && !folded_ &&
                        width >= std::min(caption_width_, kLeastCaption));
  lblCaption.SetWidth(std::max(width, 0));
  const std::int32_t middle = (Width() - lblCaption.Width()) / 2;
  lblCaption.SetLeft(std::clamp(middle, left, std::max(left, right - lblCaption.Width())));
}

std::int32_t VorekParameters::ContentHeight() const {
  if (folded_ && HeadElsewhere) return 0;
  return folded_ ? cmdFold.Top() + cmdFold.Height() + kGap : frame.Top() + frame.Height() + kGap;
}

void VorekParameters::TakeHeight() {
  SetHeight(room_ > 0 ? std::min(ContentHeight(), room_) : ContentHeight());
}

}  // namespace vorek
