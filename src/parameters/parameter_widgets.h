#ifndef VOREK_PARAMETERS_PARAMETER_WIDGETS_H_
#define VOREK_PARAMETERS_PARAMETER_WIDGETS_H_

#include <string>

#include "parameters/parameter_row.h"
#include "state/process.h"
#include "widgets/form.h"
#include "widgets/vorek_currency.h"
#include "widgets/vorek_date.h"
#include "widgets/vorek_entity_picker.h"
#include "widgets/vorek_multi_select.h"
#include "widgets/vorek_selector.h"
#include "widgets/vorek_time.h"

namespace vorek {

// The control arrays of the parameter form. Member 0 of each is a hidden template, whose size the
// members take; a member carries its ParameterID in its Tag.
class ParameterWidgets {
 public:
  // Both must outlive it.
  ParameterWidgets(Control& frame, Process& process);

  // Removes all members but the templates.
  void Unload();

  // The widget with that Tag, null for none. Labels of other widgets don't count.
  Control* Find(const std::string& tag);
  // Calls use(control) for each widget, array after array, and with labels for these too.
  template <typename Use>
  void ForEach(Use use);
  template <typename Use>
  void ForEachWithLabels(Use use);

  // Makes the next member of an array.
  template <typename C>
  C& Load(ControlArray<C>& array);
  // The same, and prepares it for reading rows.
  template <typename C>
  C& LoadList(ControlArray<C>& array);

  // True if the view has a column Alt.
  bool HasAlternative(const std::string& view);
  // Fills from "Select ID, Name" of the view, as far as that can be read.
  void FillCombo(ComboBox& combo, const std::string& view);

  Process& process() { return process_; }

  ControlArray<TextBox> txt;
  ControlArray<Label> lbl;
  ControlArray<VorekTime> tim;
  ControlArray<ComboBox> cmb;
  ControlArray<CheckBox> chk;
  ControlArray<CheckBox> ACK;  // no kind of parameter loads it
  ControlArray<VorekDate> dat;
  ControlArray<VorekDuration> dur;
  ControlArray<VorekCurrency> acr;
  ControlArray<VorekMultiSelect> mlt;
  ControlArray<VorekSelector> slt;
  ControlArray<VorekPickerPanel> app;
  ControlArray<VorekEntityPicker> ntp;
  ControlArray<Label> lblDesc;

 private:
  template <typename Use>
  void ForEachArray(Use use);
  template <typename C>
  void MakeTemplate(ControlArray<C>& array, std::int32_t width, std::int32_t height);

  Process& process_;
  SessionRowReader reader_;
};

template <typename Use>
void ParameterWidgets::ForEachArray(Use use) {
  use(txt);
  use(lbl);
  use(dat);
  use(slt);
  use(cmb);
  use(mlt);
  use(ACK);
  use(chk);
  use(tim);
  use(dur);
  use(ntp);
  use(acr);
  use(app);
}

template <typename Use>
void ParameterWidgets::ForEach(Use use) {
  ForEachArray([&](auto& array) {
    for (std::size_t i = 1; i < array.Size(); ++i) use(static_cast<Control&>(array[i]));
  });
}

template <typename Use>
void ParameterWidgets::ForEachWithLabels(Use use) {
  ForEach(use);
  for (std::size_t i = 1; i < lblDesc.Size(); ++i) use(static_cast<Control&>(lblDesc[i]));
}

template <typename C>
C& ParameterWidgets::Load(ControlArray<C>& array) {
  C& member = array.Load();
  member.SetWidth(array[0].Width());
  member.SetHeight(array[0].Height());
  return member;
}

template <typename C>
C& ParameterWidgets::LoadList(ControlArray<C>& array) {
  C& member = Load(array);
  member.SetReader(&reader_);
  member.SetOleConnectionString(process_.main.ConnectionText);
  return member;
}

}  // namespace vorek

#endif  // VOREK_PARAMETERS_PARAMETER_WIDGETS_H_
