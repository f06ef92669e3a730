#include <QJsonDocument>
#include <QMetaMethod>
#include <QPointer>
#include <QResizeEvent>
#include <QTimer>
#include <algorithm>
#include <array>
#include <utility>

#include "adapters/qt/background_provider.h"
#include "adapters/qt/busy_screen.h"
#include "adapters/qt/chart_view.h"
#include "adapters/qt/column_chooser.h"
#include "adapters/qt/control_view.h"
#include "adapters/qt/find_bar.h"
#include "adapters/qt/grid_area.h"
#include "adapters/qt/memory.h"
#include "adapters/qt/presenter.h"
#include "adapters/qt/print_preview.h"
#include "adapters/qt/qt_clipboard.h"
#include "adapters/qt/qt_file_dialogs.h"
#include "adapters/qt/qt_windows.h"
#include "adapters/qt/result_bar.h"
#include "adapters/qt/selection_watch.h"
#include "adapters/qt/translations.h"
#include "chart/chart_reader.h"
#include "engine/grid_heading.h"
#include "engine/report_control.h"
#include "engine/report_export.h"
#include "vorek/qt.h"

namespace vorek {
namespace {

bool IsInside(const Control& control, const Control& container) {
  const Control* above = &control;
  while (above != nullptr && above != &container) above = above->Parent();
  return above != nullptr;
}

}  // namespace

void AddQtServices(WorldOptions& options, Locks locks) {
  qt::InstallPersianTexts();
  const auto windows = std::make_shared<qt::QtWindows>();
  if (locks == Locks::kOwnWidgets) windows->Busy()->LockOwnPlacesOnly();
  options.windows = windows;
  options.file_dialogs = std::make_shared<qt::QtFileDialogs>(windows->Busy());
  options.clipboard = std::make_shared<qt::QtClipboard>();
  for (std::shared_ptr<DatabaseProvider>& provider : options.providers) {
    provider = std::make_shared<qt::BackgroundProvider>(std::move(provider), windows->Busy());
  }
}

struct VorekReportWidget::Parts {
  Parts(World& world, QWidget& widget) : report(world), presenter(report.Root(), widget) {}
  Parts(std::unique_ptr<World> world, QWidget& widget)
      : own_world(std::move(world)), report(*own_world), presenter(report.Root(), widget) {}

  Windows& Screen() { return report.Impl().world.process.windows(); }
  // Null in a world without a screen of ours, which has nothing to wait for.
  std::shared_ptr<qt::BusyScreen> Waiting() {
    const auto* const screen = dynamic_cast<const qt::QtWindows*>(&Screen());
    return screen == nullptr ? nullptr : screen->Busy();
  }
  bool Busy() { return presenter.Locked(); }

  bool IsBig() {
    constexpr std::int32_t kBig = 20'000;  // rows
    return std::max(report.Impl().flxMain.Rows(), report.Impl().flxTranspose.Rows()) > kBig;
  }

  ReportControl& Control() { return report.Impl(); }

  // The line below goes through the rows: once for all changes of an event.
  void NoteChange(const vorek::Control& control, std::string_view property) {
    constexpr std::array<std::string_view, 4> kRows = {"Rows", "Cells", "RowHeight", "Visible"};
    const bool grid = &control == &Control().flxMain || &control == &Control().flxTranspose;
    if (!grid) return;
    figures->Changed();
    if (property == "Selection") FollowSelection();
    if (std::find(kRows.begin(), kRows.end(), property) == kRows.end()) return;
    if (!preview.isNull()) preview->close();
    if (!told.isActive()) told.start();
  }

  void ShowPreview(QWidget* window) {
    const auto make = [this](const print::PageSetup& setup) {
      ReportContext context = Control().Context();
      return std::make_shared<print::GridPrint>(context, ShownColumns(), HeadingOf(context), setup);
    };
    const print::PageSetup paper =
        print::PaperFor(Control().Context().ActiveGrid(), ShownColumns());
    preview = new qt::PrintPreview(make, paper, qt::ToQt(Control().state.Title), window);
    preview->setWindowModality(Qt::ApplicationModal);
    preview->show();
    preview->Pages().FitWidth();
  }

  // As the user arranged them.
  print::PrintedColumns ShownColumns() {
    const Grid& grid = Control().Context().ActiveGrid();
    qt::GridArea* const area = Area();
    const ColumnView plain(grid);
    return print::PrintedColumns(area == nullptr ? plain : area->Geometry().Arrangement(), grid);
  }

  // The area of the grid on view, null before it is made.
  qt::GridArea* Area() { return AreaOf(Control().Context().ActiveGrid()); }

  qt::GridArea* AreaOf(const Grid& grid) {
    qt::ControlView* const view = presenter.ViewOf(grid);
    return view == nullptr ? nullptr : static_cast<qt::GridArea*>(&view->Widget());
  }

  template <typename Change>
  void ForEachArea(const Change& change) {
    presenter.Sync();
    for (const Grid* grid : {&Control().flxMain, &Control().flxTranspose}) {
      if (qt::GridArea* const area = AreaOf(*grid); area != nullptr) change(*area);
    }
  }

  // Null for what needs no figures: no result, and whole rows, whose columns are no sum.
  std::unique_ptr<SelectionScan> ScanSelection() {
    const ReportContext context = Control().Context();
    const Grid& grid = context.ActiveGrid();
    if (context.state.FoundRows < 0) return nullptr;
    std::vector<std::int32_t> columns;
    if (qt::GridArea* const area = AreaOf(grid); area != nullptr) {
      columns = area->SelectedColumns();
      const std::size_t all = area->Geometry().Arrangement().Shown().size();
      if (columns.size() == all && all > 1) columns.clear();
    }
    return std::make_unique<SelectionScan>(context, std::move(columns));
  }

  ChartModel Chart(bool turned) {
    ChartModel chart;
    presenter.Feed([&] {
      const ReportContext context = Control().Context();
      qt::GridArea* const area = AreaOf(context.ActiveGrid());
      const ColumnView own(context.ActiveGrid());
      chart = ReadChart(context, area == nullptr ? own : area->Geometry().Arrangement(), turned);
    });
    return chart;
  }

  // Returns what the user should know.
  std::string WriteWithChart(const std::string& path, const SheetChart& chart) {
    if (Busy()) return "گزارش در حال اجرا است.";
    std::string note;
    presenter.Feed([&] { note = ExportWithChart(Control(), path, chart); });
    return note;
  }

  void ShowResult(const ResultLine& line) {
    bar->Show(line);
    if (qt::GridArea* const area = AreaOf(Control().flxMain)) area->MarkFiltered(line.filtered);
  }

  // A chart of a selection follows it, in a moment in which the keys rest.
  void FollowSelection() {
    if (chart_view == nullptr || !chart_view->isVisible()) return;
    const Grid& grid = Control().Context().ActiveGrid();
    const bool several = grid.Row() != grid.RowSel() || grid.Col() != grid.ColSel();
    if (std::exchange(chart_selected, several) || several) charted.start();
  }

  // Not while a run waits for the database: what it shows is neither the old nor the new. True if
  // it was told.
  bool TellResultOnBar() {
    constexpr int kAgain = 50;  // milliseconds
    told.setInterval(Busy() ? kAgain : 0);
    if (Busy()) {
      told.start();
      return false;
    }
    ReportContext context = Control().Context();
    presenter.Feed([&] { ShowResult(TellResult(context)); });
    figures->Changed();
    find->RowsChanged();
    if (chart_view != nullptr && chart_view->isVisible()) chart_view->Read();
    return true;
  }

  std::unique_ptr<World> own_world;  // null for a shared one
  VorekReport1 report;
  qt::Presenter presenter;
  qt::ResultBar* bar = nullptr;
  qt::FindBar* find = nullptr;
  qt::ChartView* chart_view = nullptr;  // made when it is first asked for
  std::unique_ptr<qt::SelectionWatch> figures;
  QPointer<qt::PrintPreview> preview;  // reads the grid
  QTimer told;                         // runs out when the bar has to be told
  QTimer charted;                      // runs out when the chart has to be read
  bool chart_selected = false;         // it shows a selection
};

VorekReportWidget::VorekReportWidget(WorldOptions options, QWidget* parent)
    : QWidget(parent),
      parts_(std::make_unique<Parts>(std::make_unique<World>(std::move(options)), *this)) {
  Begin();
}

VorekReportWidget::VorekReportWidget(World& world, QWidget* parent)
    : QWidget(parent), parts_(std::make_unique<Parts>(world, *this)) {
  Begin();
}

void VorekReportWidget::Begin() {
  setLayoutDirection(Qt::RightToLeft);
  setFocusPolicy(Qt::ClickFocus);  // Tab comes to what stands in it
  setMinimumSize(200, 120);
  Show(parts_->Waiting());
  parts_->presenter.on_failure = [this](const QString& text) { Tell(text); };
  parts_->bar = new qt::ResultBar(
      this, [this] { parts_->presenter.Feed([this] { parts_->Control().TakeFilterAway(); }); });
  parts_->find = new qt::FindBar(this, [this] { return parts_->Area(); });
  parts_->figures = std::make_unique<qt::SelectionWatch>(
      [this] { return !parts_->Busy() && parts_->Control().Context().ActiveGrid().Drawn(); },
      [this] { return parts_->ScanSelection(); },
      [this](const SelectionFigures& figures) { parts_->bar->ShowFigures(figures); });
  parts_->presenter.on_changed = [this](const Control& control, std::string_view property) {
    parts_->NoteChange(control, property);
  };
  parts_->told.setSingleShot(true);
  connect(&parts_->told, &QTimer::timeout, this, [this] {
    if (parts_->TellResultOnBar()) Q_EMIT ResultChanged();
  });
  constexpr int kRest = 200;  // milliseconds
  parts_->charted.setSingleShot(true);
  parts_->charted.setInterval(kRest);
  connect(&parts_->charted, &QTimer::timeout, this, [this] {
    if (parts_->Busy()) {
      parts_->charted.start();
    } else if (parts_->chart_view->isVisible()) {
      parts_->chart_view->Read();
    }
  });
  ConnectEvents();
}

void VorekReportWidget::Show(const std::shared_ptr<qt::BusyScreen>& screen) {
  parts_->presenter.SetScreen(screen);
  if (screen == nullptr) return;
  screen->AddPlace({.widget = this,
                    .tell =
                        [this](const qt::RunProgress& progress) {
                          Q_EMIT RunGoesOn(qt::ProgressInWords(progress),
                                           qt::TimeInWords(progress.milliseconds));
                        },
                    .end = [this](qint64 milliseconds) { Q_EMIT RunEnded(milliseconds); },
                    .come_to_front = [this] { Q_EMIT ComeToFront(); }});
}

bool VorekReportWidget::Running() const {
  const auto screen = parts_->Waiting();
  return screen != nullptr && screen->Running();
}

void VorekReportWidget::CancelRun() {
  if (const auto screen = parts_->Waiting()) screen->Cancel();
}

void VorekReportWidget::Abandon() {
  if (const auto screen = parts_->Waiting()) screen->Abandon();
}

VorekReportWidget::~VorekReportWidget() {
  const bool big = parts_->IsBig();
  delete parts_->preview;
  parts_.reset();
  if (big) qt::ReturnMemory();
}

VorekReport1& VorekReportWidget::Report() { return parts_->report; }

void VorekReportWidget::ConnectEvents() {
  ReportEvents& events = parts_->report.Events();
  events.DblClick = [this](bool& cancel) { Q_EMIT DblClick(&cancel); };
  events.KeyDown = [this](std::int16_t& key, std::int16_t& shift) { Q_EMIT KeyDown(key, shift); };
  events.Cancel = [this] { Q_EMIT Cancel(); };
  events.ViewCelChange = [this] { Q_EMIT ViewCelChange(); };
  events.InvokeClearShow = [this](std::int32_t& type, std::string& value) {
    Q_EMIT InvokeClearShow(type, qt::ToQt(value));
  };
  events.InvokeView = [this](std::int32_t& type, std::string& condition, std::string& value) {
    Q_EMIT InvokeView(type, qt::ToQt(condition), qt::ToQt(value));
  };
  events.CloseParent = [this] {
    if (isSignalConnected(QMetaMethod::fromSignal(&VorekReportWidget::CloseParent))) {
      Q_EMIT CloseParent();
    } else {
      // Not in the midst of the key's event.
      QMetaObject::invokeMethod(window(), &QWidget::close, Qt::QueuedConnection);
    }
  };
  events.ComeToFront = [this] {
    Q_EMIT ComeToFront();
    window()->raise();
    window()->activateWindow();
    setFocus();
  };
  events.AddClick = [this] { Q_EMIT AddClick(); };
  events.EditClick = [this] { Q_EMIT EditClick(); };
  events.DeleteClick = [this] { Q_EMIT DeleteClick(); };
}

bool VorekReportWidget::View(int ID, const QString& inParameterString,
                             const QString& inCallerStringValue) {
  if (parts_->Busy()) {
    Tell("اين گزارش در حال اجراست.");
    return false;
  }
  bool shown = false;
  const bool was_big = parts_->IsBig();
  parts_->presenter.Feed([&] {
    shown =
        parts_->report.View(ID, inParameterString.toStdString(), inCallerStringValue.toStdString());
  });
  parts_->presenter.Sync();
  if (was_big) qt::ReturnMemory();
  // A report that waits for its panel is asked for it at once.
  VorekParameters& panel = parts_->report.Impl().VorekParameters1;
  if (panel.Visible() && !panel.result) panel.FocusFirst();
  return shown;
}

double VorekReportWidget::Zoom() const {
  const qt::GridArea* const area = parts_->Area();
  return area == nullptr ? 1 : area->Zoom();
}

void VorekReportWidget::SetZoom(double zoom) {
  parts_->ForEachArea([zoom](qt::GridArea& area) { area.SetZoom(zoom); });
}

void VorekReportWidget::SetRowPadding(int pixels) {
  parts_->ForEachArea([pixels](qt::GridArea& area) { area.SetPadding(pixels); });
}

void VorekReportWidget::CopySelection(Copied form) {
  qt::GridArea* const area = parts_->Area();
  if (area == nullptr) return;
  area->Copy(form == Copied::Plain         ? CopyForm::kPlain
             : form == Copied::WithHeaders ? CopyForm::kWithHeaders
                                           : CopyForm::kShown);
}

void VorekReportWidget::ShowColumnChooser() {
  qt::GridArea* const area = parts_->Area();
  if (area == nullptr) return;
  ReportControl& control = parts_->Control();
  const bool drawn = !control.MainWidths().empty() || !control.TransposeWidths().empty();
  const auto forget = [this, &control] {
    control.SetDrawnWidths({}, {});
    Do([&control] { control.Refresh(false, control.state.ParameterString, ""); });
  };
  qt::ChooseColumns(*area, drawn ? std::function<void()>(forget) : nullptr);
}

QByteArray VorekReportWidget::SaveColumns() const {
  QJsonObject kept;
  parts_->ForEachArea([&kept](qt::GridArea& area) {
    const ColumnWishes& wishes = area.Geometry().Arrangement().Wishes();
    if (wishes != ColumnWishes()) kept[area.objectName()] = qt::ToJson(wishes);
  });
  return kept.isEmpty() ? QByteArray() : QJsonDocument(kept).toJson(QJsonDocument::Compact);
}

void VorekReportWidget::RestoreColumns(const QByteArray& kept) {
  const QJsonObject grids = QJsonDocument::fromJson(kept).object();
  parts_->ForEachArea([&grids](qt::GridArea& area) {
    area.Geometry().Arrangement().SetWishes(qt::WishesFrom(grids[area.objectName()].toObject()));
    area.LayoutChanged();
  });
}

void VorekReportWidget::PrintGrid() {
  Do([this] { parts_->ShowPreview(window()); });
}

void VorekReportWidget::ShowFindBar() { parts_->find->Open(); }

void VorekReportWidget::ShowChart() {
  if (parts_->chart_view == nullptr) {
    parts_->chart_view =
        new qt::ChartView({[this](bool turned) { return parts_->Chart(turned); },
                           [this](const std::string& path, const SheetChart& chart) {
                             return parts_->WriteWithChart(path, chart);
                           }},
                          this);
  }
  parts_->chart_view->Read();
  parts_->chart_view->show();
  parts_->chart_view->raise();
  parts_->chart_view->activateWindow();
}

void VorekReportWidget::Do(const std::function<void()>& work) {
  parts_->presenter.Feed(work);
  parts_->presenter.Sync();
}

void VorekReportWidget::Tell(const QString& failure) {
  if (isSignalConnected(QMetaMethod::fromSignal(&VorekReportWidget::Failed))) {
    Q_EMIT Failed(failure);
  } else if (!parts_->Screen().TellCancelled("اجراي گزارش لغو شد.")) {
    qt::ShowFailure(this, failure);
  }
}

// While a run waits for the database the control keeps its size.
void VorekReportWidget::TakeSize() {
  constexpr int kAgain = 50;  // milliseconds
  if (parts_->Busy()) {
    QTimer::singleShot(kAgain, this, [this] { TakeSize(); });
    return;
  }
  // The layout gives the grid the focus; who is typing in the panel keeps it.
  Control* const active = parts_->report.Root().ActiveControl();
  const qt::Scale& scale = parts_->presenter.Measure();
  const int bar = parts_->bar->sizeHint().height();
  parts_->bar->setGeometry(0, height() - bar, width(), bar);
  parts_->report.Resize(scale.Twips(width()), scale.Twips(height() - bar));
  if (active != nullptr && IsInside(*active, parts_->report.Impl().VorekParameters1)) {
    active->SetFocus();
  }
}

void VorekReportWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  TakeSize();
}

void VorekReportWidget::focusInEvent(QFocusEvent* event) { QWidget::focusInEvent(event); }

void VorekReportWidget::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  parts_->presenter.TakeFocusLate();
}

bool VorekReportWidget::event(QEvent* event) {
  if (event->type() == QEvent::ApplicationFontChange && parts_ != nullptr) {
    parts_->presenter.SetAll();
    TakeSize();
  }
  return QWidget::event(event);
}

int VorekReportWidget::UserID() const { return parts_->report.UserID(); }
void VorekReportWidget::SetUserID(int id) {
  parts_->report.SetUserID(static_cast<std::int16_t>(id));
}
int VorekReportWidget::PositionID() const { return parts_->report.PositionID(); }
void VorekReportWidget::SetPositionID(int id) {
  parts_->report.SetPositionID(static_cast<std::int16_t>(id));
}
int VorekReportWidget::EmployeeID() const { return parts_->report.EmployeeID(); }
void VorekReportWidget::SetEmployeeID(int id) {
  parts_->report.SetEmployeeID(static_cast<std::int16_t>(id));
}
int VorekReportWidget::PeriodID() const { return parts_->report.PeriodID(); }
void VorekReportWidget::SetPeriodID(int id) { parts_->report.SetPeriodID(id); }
QString VorekReportWidget::OleConnectionString() const {
  return qt::ToQt(parts_->report.OleConnectionString());
}
void VorekReportWidget::SetOleConnectionString(const QString& text) {
  parts_->presenter.Feed([&] { parts_->report.SetOleConnectionString(text.toStdString()); });
}
bool VorekReportWidget::Editable() const { return parts_->report.Editable(); }
void VorekReportWidget::SetEditable(bool on) { parts_->report.SetEditable(on); }
QString VorekReportWidget::Title() const { return qt::ToQt(parts_->report.Title()); }

}  // namespace vorek
