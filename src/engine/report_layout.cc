#include <algorithm>

#include "engine/report_control.h"
#include "text/key_list.h"
#include "text/number.h"
#include "text/utf8.h"

// The arithmetic of the control's layout, in twips.
namespace vorek {
namespace {

constexpr std::int32_t kLeastGrid = 1500;  // twips that a panel leaves below it

bool PanelIsOffered(ReportControl& control) {
  if (!control.state.ParameterString.empty() || !control.state.ShowFlatternParameters) return false;
  return text::ToUpper(getParameterValue(control.VorekParameters1.Tag(), "ParametersShowed")) ==
         "TRUE";
}

// False for one that is folded to nothing.
bool TakesRoom(const ReportControl& control, bool panel_shown) {
  return panel_shown && control.VorekParameters1.ContentHeight() > 0;
}

bool PlacePanel(ReportControl& control) {
  VorekParameters& panel = control.VorekParameters1;
  panel.SetRoom(std::max(control.Height() - kLeastGrid, control.Height() / 2));
  panel.SetTop(0);
  panel.SetLeft(0);
  panel.SetWidth(control.Width());
  const bool by_panel =
      control.state.ParameterString.empty() && control.state.ShowFlatternParameters;
  const bool shown = PanelIsOffered(control);
  if (!by_panel) panel.SetHeight(0);
  panel.SetVisible(shown);
  return shown;
}

void PlaceFrame(ReportControl& control, bool panel_shown) {
  const Label& caption = control.lblCaption;
  const std::int32_t below_caption =
      control.VorekParameters1.HeadElsewhere ? 0 : caption.Top() + caption.Height() + 50;
  const VorekParameters& panel = control.VorekParameters1;
  const std::int32_t top = panel_shown ? panel.Top() + panel.Height() : below_caption;
  control.frameMain.Move(panel_shown ? 50 : 0, top, control.Width() - (panel_shown ? 100 : 0),
                         control.Height() - top - (panel_shown ? 200 : 0));
}

void PlaceGrids(ReportControl& control) {
  const Frame& frame = control.frameMain;
  const std::int32_t width =
      frame.Width() - (control.state.Editable ? control.cmdAdd.Width() + 100 : 0);
  control.flxMain.Move(0, 0, width, frame.Height());
  control.flxTranspose.Move(0, 0, width, frame.Height());
}

void PlaceButtons(ReportControl& control) {
  Button& add = control.cmdAdd;
  add.SetTop(0);
  add.SetLeft(control.frameMain.Width() - 50 - add.Width());
  control.cmdEdit.SetTop(add.Top() + add.Height());
  control.cmdEdit.SetLeft(add.Left());
  control.cmdDelete.SetTop(control.cmdEdit.Top() + control.cmdEdit.Height());
  control.cmdDelete.SetLeft(add.Left());
  for (Button* button : {&add, &control.cmdEdit, &control.cmdDelete}) {
    button->SetVisible(control.state.Editable);
  }
}

}  // namespace

void ReportControl::LeaveHeadToHost() {
  VorekParameters1.HeadElsewhere = true;
  Arrange();
}

void ReportControl::LayOut() {
  Arrange();
  FocusGrid();
}

void ReportControl::Arrange() {
  lblCaption.SetLeft(text::ToInt32((Width() - lblCaption.Width()) / 2.0));
  lblCaption.SetTop(0);
  const bool panel_shown = PlacePanel(*this);
  lblCaption.SetVisible(!panel_shown && !VorekParameters1.HeadElsewhere);
  PlaceFrame(*this, TakesRoom(*this, panel_shown));
  PlaceGrids(*this);
  PlaceButtons(*this);
  Progress.SetTop(0);
  Progress.SetLeft(0);
  Progress.SetWidth(frameMain.Width());
  frameMain.SetVisible(true);
  if (!world.process.main.ConnectionText.empty()) {
    flxMain.SetRightToLeft(true);
    flxTranspose.SetRightToLeft(true);
  }
}

void ReportControl::FocusGrid() {
  if (state.isTransposedResult) {
    flxTranspose.SetFocus();
  } else {
    flxMain.SetFocus();
  }
}

}  // namespace vorek
