#include "parameters/parameter_widgets.h"

#include "catalog/report_row.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::int32_t kLineHeight = 315;   // twips, of a field of one line
constexpr std::int32_t kFieldWidth = 1950;  // fits the narrowest cell
constexpr std::int32_t kTimeWidth = 1200;

}  // namespace

ParameterWidgets::ParameterWidgets(Control& frame, Process& process)
    : txt(frame, "txt"),
      lbl(frame, "lbl"),
      tim(frame, "tim"),
      cmb(frame, "cmb"),
      chk(frame, "chk"),
      ACK(frame, "ACK"),
      dat(frame, "dat"),
      dur(frame, "dur"),
      acr(frame, "acr"),
      mlt(frame, "mlt"),
      slt(frame, "slt"),
      app(frame, "app"),
      ntp(frame, "ntp"),
      lblDesc(frame, "lblDesc"),
      process_(process),
      reader_(process.data) {
  ForEachArray([&](auto& array) { MakeTemplate(array, kFieldWidth, kLineHeight); });
  tim[0].SetWidth(kTimeWidth);
  dur[0].SetWidth(kTimeWidth);
  MakeTemplate(lblDesc, kFieldWidth, 255);
}

template <typename C>
void ParameterWidgets::MakeTemplate(ControlArray<C>& array, std::int32_t width,
                                    std::int32_t height) {
  C& hidden = array.Load();
  hidden.SetWidth(width);
  hidden.SetHeight(height);
  hidden.SetVisible(false);
  hidden.SetTabStop(false);
}

void ParameterWidgets::Unload() {
  ForEachArray([](auto& array) { array.Unload(1); });
  lblDesc.Unload(1);
}

Control* ParameterWidgets::Find(const std::string& tag) {
  Control* found = nullptr;
  ForEach([&](Control& control) {
    if (found == nullptr && control.Tag() == tag) found = &control;
  });
  return found;
}

bool ParameterWidgets::HasAlternative(const std::string& view) {
  Recordset& slot = process_.dten().rssqlGeneral2;
  OpenSlot(slot,
           "Select syscolumns.name from syscolumns inner join sysobjects on syscolumns.id = "
           "sysobjects.id and sysobjects.name like '" +
               view + "' and syscolumns.name = 'Alt'");
  const bool found = slot.RecordCount() > 0;
  slot.Close();
  return found;
}

void ParameterWidgets::FillCombo(ComboBox& combo, const std::string& view) {
  combo.Clear();
  if (text::TrimView(view).empty()) return;
  Recordset& slot = process_.dten().rssqlGeneral2;
  IgnoreErrors([&] {
    OpenSlot(slot, "Select ID, Name from " + view);
    for (; !slot.AtEnd(); slot.MoveNext()) {
      combo.AddItem(TextOf(slot, "Name"), slot.Field("ID").Number());
    }
  });
  slot.Close();
}

}  // namespace vorek
