#include "report_tab.h"

#include <QSettings>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "engine/report_control.h"
#include "engine/stop_reason.h"
#include "text/utf8.h"

namespace vorek::desk {
namespace {

QVariant ToSettings(const DrawnWidths& widths) {
  QVariantList list;
  for (const DrawnWidth& width : widths) {
    list << QVariant(QVariantList{width.col, QString::fromStdString(width.header), width.twips});
  }
  return list;
}

constexpr int kF5 = 116;

bool HasPanel(ReportControl& control) { return control.VorekParameters1.Visible(); }

bool HasDialog(ReportControl& control) {
  return control.aFormAskUser != nullptr && !text::Trim(control.aFormAskUser->Title).empty();
}

bool HasRows(ReportControl& control) { return control.state.FoundRows >= 0; }

DrawnWidths WidthsFrom(const QVariant& kept) {
  DrawnWidths widths;
  for (const QVariant& entry : kept.toList()) {
    const QVariantList width = entry.toList();
    if (width.size() != 3) continue;
    widths.push_back({width[0].toInt(), width[1].toString().toStdString(), width[2].toInt()});
  }
  return widths;
}

}  // namespace

ReportTab::ReportTab(const Session& session, std::int32_t report, QSettings& settings,
                     const std::string& forms, std::function<void(const QString&)> tell,
                     QWidget* parent)
    : QWidget(parent),
      report_(report),
      user_(session.Who().user),
      settings_(settings),
      tell_(tell),
      head_(new HeadBar(this)),
      widget_(std::make_unique<VorekReportWidget>(Options(forms, std::move(tell)))) {
  auto* const layout = new QVBoxLayout(this);
  setObjectName("reportTab");
  setAttribute(Qt::WA_StyledBackground);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(head_);
  head_->on_change = [this] { Do(ReportAction::kParameters); };
  layout->addWidget(widget_.get(), 1);
  setFocusProxy(widget_.get());
  const Login& who = session.Who();
  widget_->SetUserID(who.user);
  widget_->SetPositionID(who.position);
  widget_->SetEmployeeID(who.employee);
  widget_->SetPeriodID(who.period);
  widget_->SetOleConnectionString(QString::fromStdString(ConnectionOf(who)));
  cards_.SetProcess(&Control().world);
  Control().LeaveHeadToHost();
  widget_->RestoreColumns(settings_.value(ColumnsKey()).toByteArray());
  widget_->SetZoom(settings_.value("view/zoom", 1.0).toDouble());
  SetRowPadding(settings_.value("view/padding", kUsualPadding).toInt());
  ConnectEvents();
}

WorldOptions ReportTab::Options(const std::string& forms,
                                std::function<void(const QString&)> tell) {
  WorldOptions options = Session::Services();
  options.components =
      cards_.MakeComponents(forms, [tell = std::move(tell)](const std::string& reason) {
        tell(QString::fromStdString(reason));
      });
  return options;
}

void ReportTab::ConnectEvents() {
  connect(widget_.get(), &VorekReportWidget::RunGoesOn, this,
          [this](const QString& words, const QString& time) {
            if (!closing_ && on_run) on_run(words, time);
          });
  connect(widget_.get(), &VorekReportWidget::RunEnded, this,
          [this](qint64 milliseconds) { EndRun(milliseconds); });
  connect(widget_.get(), &VorekReportWidget::InvokeView, this,
          [this](int form_type, const QString& condition, const QString&) {
            cards_.Show(form_type, condition.toStdString());
          });
  connect(widget_.get(), &VorekReportWidget::InvokeClearShow, this,
          [this](int form_type, const QString&) { cards_.Show(form_type, ""); });
  // A report of the catalogue isn't put away by a key that people press twice.
  connect(widget_.get(), &VorekReportWidget::CloseParent, this, [] {});
  connect(widget_.get(), &VorekReportWidget::ResultChanged, this, [this] {
    if (closing_) return;
    ShowHead();
    if (on_result) on_result();
  });
  connect(widget_.get(), &VorekReportWidget::ComeToFront, this, [this] {
    if (!closing_ && on_come_to_front) on_come_to_front();
  });
}

ReportTab::~ReportTab() = default;

void ReportTab::Close() {
  hide();
  closing_ = true;
  if (Running() || in_view_) return widget_->Abandon();
  deleteLater();
}

void ReportTab::ShowHead() {
  head_->Show(HeadOf(Control().Context()), HasPanel(Control()) || HasDialog(Control()));
}

void ReportTab::EndRun(qint64 milliseconds) {
  if (!closing_) {
    if (on_run_ended) on_run_ended(milliseconds);
  } else if (!in_view_) {
    deleteLater();
  }
}

ReportControl& ReportTab::Control() { return widget_->Report().Impl(); }

void ReportTab::Start() {
  if (!started_) View();
}

bool ReportTab::View() {
  started_ = true;
  in_view_ = true;
  shown_ = widget_->View(report_);
  in_view_ = false;
  if (closing_) {
    deleteLater();
    return shown_;
  }
  ShowHead();
  TakeWidths();
  const std::string reason = StopReasonOf(Control().state);
  if ((!shown_ || Control().state.Missing) && !reason.empty()) {
    tell_(QString::fromStdString(reason));
  }
  return shown_;
}

bool ReportTab::Loaded() { return !Control().VorekParameters1.Tag().empty(); }

bool ReportTab::Returns() {
  constexpr std::int32_t kEmptied = 2;  // rows that a failed run leaves
  return !started_ || shown_ || Control().flxMain.Rows() > kEmptied;
}

QString ReportTab::WidthsKey() const { return QString("widths/%1/%2").arg(user_).arg(report_); }

void ReportTab::TakeWidths() {
  if (std::exchange(has_widths_, true)) return;
  const QVariantMap kept = settings_.value(WidthsKey()).toMap();
  Control().SetDrawnWidths(WidthsFrom(kept["main"]), WidthsFrom(kept["transposed"]));
}

QString ReportTab::ColumnsKey() const { return QString("columns/%1/%2").arg(user_).arg(report_); }

void ReportTab::RememberColumns() {
  const QByteArray columns = widget_->SaveColumns();
  if (columns.isEmpty()) {
    settings_.remove(ColumnsKey());
  } else {
    settings_.setValue(ColumnsKey(), columns);
  }
}

void ReportTab::RememberWidths() {
  settings_.setValue("view/zoom", widget_->Zoom());
  RememberColumns();
  const DrawnWidths& main = Control().MainWidths();
  const DrawnWidths& transposed = Control().TransposeWidths();
  // A host's hand may have put another report into the tab.
  if (!has_widths_ || Control().state.ReportID != report_) return;
  if (main.empty() && transposed.empty()) return settings_.remove(WidthsKey());
  settings_.setValue(
      WidthsKey(), QVariantMap{{"main", ToSettings(main)}, {"transposed", ToSettings(transposed)}});
}

bool ReportTab::Offers(ReportAction action) {
  if (Running()) return action == ReportAction::kRun;
  ReportControl& control = Control();
  switch (action) {
    case ReportAction::kRun:
      return control.state.ReportID != -1;
    case ReportAction::kParameters:
      return HasPanel(control) || HasDialog(control);
    default:
      return HasRows(control);
  }
}

bool ReportTab::WantsChart() { return HasRows(Control()) && Control().state.ShowDiagram; }

void ReportTab::Do(ReportAction action) {
  if (Running()) {
    if (action == ReportAction::kRun) widget_->CancelRun();
    return;
  }
  HeaderMenu& menu = Control().FlexPopupMenu;
  switch (action) {
    case ReportAction::kRun:
      return widget_->Do([this] { Run(); });
    case ReportAction::kParameters:
      return widget_->Do([this] { TurnParameters(); });
    case ReportAction::kFind:
      return widget_->ShowFindBar();
    case ReportAction::kFilter:
      return OnCurrentColumn([](ReportControl& c) { c.FlexPopupMenu.mnuFilter.Click(); });
    case ReportAction::kSum:
      return OnCurrentColumn([](ReportControl& c) { c.FlexPopupMenu.mnuSum.Click(); });
    case ReportAction::kAverage:
      return OnCurrentColumn([](ReportControl& c) { c.FlexPopupMenu.mnuavg.Click(); });
    case ReportAction::kColumns:
      return widget_->ShowColumnChooser();
    case ReportAction::kChart:
      return widget_->ShowChart();
    case ReportAction::kText:
      return widget_->Do([&menu] { menu.mnuSendToTextFile.Click(); });
    case ReportAction::kPrint:
      return widget_->PrintGrid();
    case ReportAction::kWorkbook:
      return widget_->Do([&menu] { menu.mnuSendToOfficeExcel.Click(); });
    case ReportAction::kQuickWorkbook:
      return widget_->Do([&menu] { menu.mnuSendToOfficeExcellFast.Click(); });
    case ReportAction::kCopyPlain:
      return widget_->CopySelection(VorekReportWidget::Copied::Plain);
    case ReportAction::kCopyWithHeaders:
      return widget_->CopySelection(VorekReportWidget::Copied::WithHeaders);
    case ReportAction::kAccess:
      return widget_->Do([&menu] { menu.mnuSendToAccess.Click(); });
  }
}

// With a panel in sight its search is meant: it takes what is being typed.
void ReportTab::Run() {
  VorekParameters& panel = Control().VorekParameters1;
  if (HasPanel(Control()) && !panel.Folded()) {
    panel.cmdOk.Click();
  } else {
    Control().KeyDown(kF5, 0);
  }
}

void ReportTab::TurnParameters() {
  VorekParameters& panel = Control().VorekParameters1;
  if (HasPanel(Control())) {
    panel.SetFolded(!panel.Folded());
  } else {
    Control().mnuShowAskForm_Click();
  }
}

// The menu's entries work on the column whose header was pressed.
void ReportTab::OnCurrentColumn(void (*work)(ReportControl&)) {
  widget_->Do([this, work] {
    Grid& grid = Control().Context().ActiveGrid();
    grid.PointAt(0, std::max(grid.Col(), grid.FixedCols()));
    work(Control());
  });
}

}  // namespace vorek::desk
