#include "engine/form_report.h"

#include <algorithm>

#include "engine/entry_points.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr int kEscape = 27;
constexpr std::int32_t kLeastSize = 4000;  // twips below which nothing moves
constexpr std::int32_t kWayHeight = 420;
constexpr std::int32_t kMargin = 120;

std::int32_t Grown(std::int32_t size, std::int32_t by) { return std::max(size + by, 0); }

}  // namespace

FormReport::FormReport(ReportControl& caller)
    : Form(caller.world.process.windows(), "FormReport"), caller_(caller), world_(caller.world) {
  SetRightToLeft(true);
  Move(0, 0, 12000, 9000);
  VorekReport11.Move(0, kWayHeight + kMargin, 12000, 7800);
  cmdContinue.SetCaption("بازگشت");
  cmdContinue.Move(kMargin, 8460, 1400, kWayHeight);
  ConnectEvents();
}

void FormReport::ConnectEvents() {
  on_load = [this] { TakeScreen(); };
  on_unload = [this] { End(); };
  on_resize = [this] { Resized(); };
  on_activate = [this] { FocusReport(); };
  on_form_key_down = [this](int key_code, int) {
    if (key_code == kEscape) Unload();
  };
  tmrSetFocus.on_timer = [this] {
    tmrSetFocus.SetEnabled(false);
    FocusReport();
  };
  cmdContinue.on_click = [this] { Unload(); };
  VorekReport11.events.InvokeClearShow = [this](std::int32_t& type, std::string& value) {
    FormTypeID = type;
    InvokedValueStr = value;
    InvokeClearShowRecorded = true;
    InvokeViewRecorded = false;
    Hide();
  };
  VorekReport11.events.InvokeView = [this](std::int32_t& type, std::string& condition,
                                           std::string& value) {
    FormTypeID = type;
    UniqueWC = condition;
    InvokedValueStr = value;
    InvokeViewRecorded = true;
    InvokeClearShowRecorded = false;
    Hide();
  };
}

void FormReport::ViewSystemReport(std::int32_t ID, const std::string& inParameterString) {
  Windows& windows = world_.process.windows();
  VorekReport11.SetConnection(OleConnectionString);
  ReportState& state = VorekReport11.state;
  state.UserID = UserID;
  state.EmployeeID = EmployeeID;
  state.PositionID = PositionID;
  state.ParentID = ParentID;
  state.CallerID = CallerID;
  Load();
  windows.SetMousePointer(11);
  VorekReport11.View(ID, inParameterString, "");
  windows.SetMousePointer(0);
  if (state.ReportID == -1) return;
  if (!text::TrimView(Caption()).empty()) VorekReport11.SetTitle(Caption());
  MakeWay();
  if (world_.process.main.SystemParameter123) {
    ShowModal();
  } else {
    Show();
  }
}

void FormReport::TakeScreen() {
  const ScreenSize screen = world_.process.windows().Size();
  old_width_ = Width();
  old_height_ = Height();
  Move(10, 10, screen.width - 20, screen.height - 20);
}

void FormReport::Resized() {
  PlaceWay();
  if (Width() < kLeastSize || Height() < kLeastSize) return;
  const std::int32_t wider = Width() - old_width_;
  const std::int32_t higher = Height() - old_height_;
  old_width_ = Width();
  old_height_ = Height();
  VorekReport11.Move(VorekReport11.Left(), VorekReport11.Top(), Grown(VorekReport11.Width(), wider),
                     Grown(VorekReport11.Height(), higher));
  cmdContinue.SetTop(cmdContinue.Top() + higher);
}

void FormReport::FocusReport() {
  IgnoreErrors([&] { VorekReport11.GotFocus(); });
}

// What hangs on this window goes first.
void FormReport::End() {
  SetNull(VorekReport11);
  world_.process.dten().cnn.Close();
}

// --- The way here
// --------------------------------------------------------------------------------

std::vector<ReportControl*> FormReport::Way() const {
  std::vector<ReportControl*> way;
  ReportControl* report = &caller_;
  while (report != nullptr) {
    way.push_back(report);
    auto* const window = dynamic_cast<FormReport*>(report->Parent());
    report = window == nullptr ? nullptr : &window->caller_;
  }
  std::reverse(way.begin(), way.end());
  return way;
}

void FormReport::MakeWay() {
  cmdWay.Unload(0);
  for (ReportControl* const report : Way()) {
    Button& step = cmdWay.Load();
    const std::string& title = report->state.Title;
    step.SetCaption(title.empty() ? std::to_string(report->state.ReportID) : title);
    step.SetToolTipText("بازگشت به " + step.Caption());
    step.on_click = [this, report] { GoBackTo(*report); };
  }
  PlaceWay();
}

// From the right, the first report first.
void FormReport::PlaceWay() {
  std::int32_t right = Width() - kMargin;
  for (std::size_t i = 0; i < cmdWay.Size(); ++i) {
    Button& step = cmdWay[i];
    const std::int32_t width = world_.process.windows().TextWidth(step.Caption(), 0) + 400;
    step.Move(right - width, kMargin / 2, width, kWayHeight);
    step.SetVisible(step.Left() >= 0);
    right = step.Left() - kMargin;
  }
}

// Windows that bar the ones below are closed on the way; others stay.
void FormReport::GoBackTo(ReportControl& report) {
  if (!Modal()) {
    report.ComeToFront();
    return;
  }
  FormReport* window = this;
  while (window != nullptr && &window->VorekReport11 != &report) {
    auto* const below = dynamic_cast<FormReport*>(window->caller_.Parent());
    window->Unload();
    window = below;
  }
}

}  // namespace vorek
