#include "report_tab.h"

#include <QSettings>
#include <QVBoxLayout>

#include "engine/report_control.h"

namespace vorek::desk {

ReportTab::ReportTab(const Session& session, std::int32_t report, QSettings& settings,
                     QWidget* parent)
    : QWidget(parent),
      report_(report),
      settings_(settings),
      widget_(std::make_unique<VorekReportWidget>(Session::Services())) {
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(widget_.get());
  setFocusProxy(widget_.get());
  const Login& who = session.Who();
  widget_->SetUserID(who.user);
  widget_->SetPositionID(who.position);
  widget_->SetEmployeeID(who.employee);
  widget_->SetPeriodID(who.period);
  widget_->SetOleConnectionString(QString::fromStdString(ConnectionOf(who)));
}

ReportTab::~ReportTab() = default;

bool ReportTab::View() {
  const bool shown = widget_->View(report_);
  TakeWidths();
  return shown;
}

QString ReportTab::WidthsKey() const { return QString("widths/%1").arg(report_); }

void ReportTab::TakeWidths() {
  Grid& grid = widget_->Report().Impl().flxMain;
  const QVariantMap kept = settings_.value(WidthsKey()).toMap();
  for (std::int32_t col = 0; col < grid.Cols(); ++col) {
    own_widths_[col] = grid.ColWidth(col);
    const auto width = kept.find(QString::number(col));
    if (width != kept.end()) grid.ResizeByUser(col, width->toInt());
  }
}

void ReportTab::RememberWidths() {
  const Grid& grid = widget_->Report().Impl().flxMain;
  QVariantMap kept;
  for (const auto& [col, own] : own_widths_) {
    if (col < grid.Cols() && grid.ColWidth(col) != own) {
      kept[QString::number(col)] = grid.ColWidth(col);
    }
  }
  if (!own_widths_.empty() && grid.Cols() > 2) settings_.setValue(WidthsKey(), kept);
}

}  // namespace vorek::desk
