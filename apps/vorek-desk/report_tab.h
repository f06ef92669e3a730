#ifndef VOREK_APPS_VOREK_DESK_REPORT_TAB_H_
#define VOREK_APPS_VOREK_DESK_REPORT_TAB_H_

#include <QWidget>
#include <cstdint>
#include <memory>

#include "session.h"
#include "vorek/qt.h"

class QSettings;

namespace vorek {
class ReportControl;
}

namespace vorek::desk {

// A report in a tab, with a world of its own, so that tabs share no column layouts, and with the
// column widths that the user drew in it before.
class ReportTab : public QWidget {
 public:
  ReportTab(const Session& session, std::int32_t report, QSettings& settings, QWidget* parent);
  ~ReportTab() override;

  std::int32_t ReportNumber() const { return report_; }
  VorekReportWidget& Widget() { return *widget_; }
  bool View();
  // Keeps the widths that the user drew; without any nothing is written.
  void RememberWidths();

 private:
  ReportControl& Control();
  void TakeWidths();
  QString WidthsKey() const;

  std::int32_t report_;
  QSettings& settings_;
  bool has_widths_ = false;  // of the settings; later ones are the control's
  std::unique_ptr<VorekReportWidget> widget_;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_REPORT_TAB_H_
