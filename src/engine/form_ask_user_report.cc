#include "engine/form_ask_user_report.h"

#include "engine/entry_points.h"

namespace vorek {

FormAskUserReport::FormAskUserReport(WorldState& world)
    : Form(world.process.windows(), "FormAskUserReport"),
      VorekReport11(world, this, "VorekReport11"),
      world_(world) {
  Move(0, 0, 12000, 9000);
  on_load = [this] { TakeGlobals(); };
  on_unload = [this] { SetNull(VorekReport11); };
  on_resize = [this] {
    VorekReport11.SetLeft(0);
    VorekReport11.SetTop(0);
    SizeReport();
  };
  VorekReport11.events.DblClick = [this](bool&) { Hide(); };
}

void FormAskUserReport::TakeGlobals() {
  const MainModule& main = world_.process.main;
  VorekReport11.state.OleConnectionString = main.ConnectionText;
  VorekReport11.state.UserID = main.GlobalUserID;
  VorekReport11.state.EmployeeID = main.GlobalEmployeeID;
  VorekReport11.state.PositionID = main.GlobalPositionID;
}

void FormAskUserReport::SizeReport() {
  VorekReport11.SetHeight(Height() - 400);
  VorekReport11.SetWidth(Width() - 100);
}

bool FormAskUserReport::ShowSearch(std::int32_t& ID) {
  Load();
  SetCaption("جستجو");
  SizeReport();
  VorekReport11.state.CancelVisible = true;
  VorekReport11.View(ID, "", "");
  SizeReport();
  VorekParameters& panel = VorekReport11.VorekParameters1;
  if (panel.Visible()) panel.FocusFirst();
  ShowModal();
  return false;
}

}  // namespace vorek
