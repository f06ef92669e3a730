#include "parameters/vorek_parameters.h"

#include <algorithm>
#include <utility>

#include "text/utf8.h"
#include "widgets/property.h"
#include "widgets/typed_control.h"

// What the form is and does once it stands; see parameter_form.cc for its building and
// parameter_confirmation.cc for its confirmation.
namespace vorek {
namespace {

constexpr int kEnter = 13;
constexpr int kEscape = 27;
constexpr int kDelete = 46;
constexpr std::int32_t kButtonHeight = 400;  // twips

// Keeps Enter for itself.
bool TakesEnter(const Control& widget) {
  const std::string& array = widget.Name();
  return array == "slt" || array == "ntp";
}

}  // namespace

VorekParameters::VorekParameters(Control* parent, std::string name, Process& process,
                                 Notices& notices)
    : Frame(parent, std::move(name)),
      widgets(frame, process),
      process_(process),
      notices_(notices) {
  SetVisible(false);
  lblCaption.Move(0, 50, 0, 300);
  lblCaption.SetRightToLeft(true);
  for (Button* button : {&cmdOk, &cmdNew, &cmdCancel}) button->Move(50, 50, 1000, kButtonHeight);
  for (Button* button : {&cmdSaveParameterConfig, &cmdLoadParameterConfig}) {
    button->Move(50, 50, kButtonHeight, kButtonHeight);
    button->SetVisible(false);
  }
  mnuConfig.Load();
  cmdCancel.SetVisible(false);
  cmdFold.Move(50, 50, kButtonHeight, kButtonHeight);
  cmdFold.SetVisible(false);
  lblValues.Move(0, 120, 0, 300);
  lblValues.SetRightToLeft(true);
  lblValues.SetVisible(false);
  ConnectEvents();
}

void VorekParameters::ConnectEvents() {
  // A change of the height alone, as by hiding the panel, moves nothing.
  on_resize = [this] {
    if (Width() != measures_.last_width) Resize();
  };
  cmdOk.on_click = [this] { Confirm(); };
  cmdNew.on_click = [this] { Reset(); };
  cmdCancel.on_click = [this] {
    if (on_cancel) on_cancel();
  };
  cmdFold.on_click = [this] { SetFolded(!folded_); };
  cmdSaveParameterConfig.on_click = [this] { SaveSetting(); };
  cmdLoadParameterConfig.on_click = [this] {
    if (mnuConfig.Size() > 1) process_.windows().PopupMenu(mnuPopup);
  };
  frame.on_key_down = [this](int key_code, int) {
    if (key_code == kEnter) cmdOk.Click();
    if (key_code == kEscape) cmdCancel.Click();
  };
  for (Button* button :
       {&cmdOk, &cmdNew, &cmdCancel, &cmdFold, &cmdSaveParameterConfig, &cmdLoadParameterConfig}) {
    button->on_key_down = [this](int key_code, int) {
      if (key_code == kEscape) cmdCancel.Click();
    };
  }
}

void VorekParameters::ListenToKeys(Control& widget) {
  widget.on_key_down = [this, &widget](int key_code, int) {
    if (key_code == kDelete && widget.Name() == "cmb") ResetWidget(widget);
    if (key_code == kEnter && !TakesEnter(widget)) cmdOk.Click();
    if (key_code == kEscape) Escape(widget);
  };
  if (auto* const typed = dynamic_cast<TypedControl*>(&widget)) {
    typed->on_refusal = [this] { PlaceNotes(); };
  }
}

void VorekParameters::ListenToChanges(Control& widget) {
  const std::int32_t index = widget.Index();
  if (widget.Name() == "slt") {
    widget.on_change = [this, index] { dependencies_.SelectorChanged(index); };
  } else if (widget.Name() == "dat") {
    widget.on_change = [this, index] { dependencies_.DateChanged(index); };
  } else if (widget.Name() == "txt") {
    widget.on_got_focus = [this, index] {
      widgets.txt[static_cast<std::size_t>(index)].SelectAll();
      dependencies_.TextEntered(index);
    };
    widget.on_lost_focus = [this, index] { dependencies_.TextLeft(index); };
  }
}

void VorekParameters::FillInitially() {
  if (dependencies_.FillInitially(PeriodID, CallByReport)) Confirm();
}

// Cancels; where there is nothing to cancel the field shows its value again.
void VorekParameters::Escape(Control& widget) {
  if (cmdCancel.Visible()) {
    cmdCancel.Click();
  } else if (auto* const typed = dynamic_cast<TypedControl*>(&widget)) {
    typed->DropRefusal();
  }
}

void VorekParameters::FocusFirst() {
  const auto takes = [](const Field& field) {
    const Control& widget = *field.widget;
    return widget.Visible() && widget.Enabled() && widget.TabStop() && widget.Name() != "lbl";
  };
  const auto first = std::find_if(fields_.begin(), fields_.end(), takes);
  if (first != fields_.end()) first->widget->SetFocus();
}

void VorekParameters::KeyDown(int key_code, int shift) {
  Frame::KeyDown(key_code, shift);
  if (key_code == kEscape) cmdCancel.Click();
  if (key_code != kEnter) return;
  const Control* const active = Root().ActiveControl();
  const std::string array = active == nullptr ? "" : active->Name();
  if (array != "dat" && array != "cmb" && array != "slt" && array != "ntp") cmdOk.Click();
}

void VorekParameters::SetReportCaption(const std::string& caption) {
  lblCaption.SetCaption(caption);
  caption_width_ = process_.windows().TextWidth(caption, 0) + 100;
  PlaceCaption();
}

void VorekParameters::Reset() {
  widgets.ForEach([](Control& widget) {
    ResetWidget(widget);
    if (auto* const typed = dynamic_cast<TypedControl*>(&widget)) typed->DropRefusal();
  });
  values_.reset();
  if (on_clear) on_clear();
}

void VorekParameters::Resize() {
  const std::int32_t change = Width() - std::exchange(measures_.last_width, Width());
  widgets.ForEachWithLabels([&](Control& control) { control.SetLeft(control.Left() + change); });
  frame.SetWidth(frame.Width() + change);
  if (lblNote.Size() > 0) {
    PlaceNotes();
  } else {
    LayoutButtons();
  }
}

// --- As a script reaches it
// -----------------------------------------------------------------------

namespace {

using Arguments = std::vector<std::string>;

template <typename T>
PropertyEntry PublicField(std::string_view name, T VorekParameters::*field) {
  return {name,
          [field](Control& c, const Arguments&) {
            return property::ToText(static_cast<VorekParameters&>(c).*field);
          },
          [field](Control& c, const Arguments&, const std::string& value) {
            static_cast<VorekParameters&>(c).*field = property::FromText<T>(value);
          }};
}

}  // namespace

const PropertyTable& VorekParameters::OwnProperties() const {
  static const PropertyTable table = {
      PublicField("ListOfParameters", &VorekParameters::ListOfParameters),
      PublicField("ListOfVisualParameters", &VorekParameters::ListOfVisualParameters),
      PublicField("userChoice", &VorekParameters::userChoice),
      PublicField("result", &VorekParameters::result),
      PublicField("CancelVisible", &VorekParameters::CancelVisible),
      PublicField("GivenValue", &VorekParameters::GivenValue),
      PublicField("CallByReport", &VorekParameters::CallByReport),
      PublicField("PeriodID", &VorekParameters::PeriodID)};
  return table;
}

}  // namespace vorek
