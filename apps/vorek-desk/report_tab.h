#ifndef VOREK_APPS_VOREK_DESK_REPORT_TAB_H_
#define VOREK_APPS_VOREK_DESK_REPORT_TAB_H_

#include <QWidget>
#include <cstdint>
#include <map>
#include <memory>

#include "session.h"
#include "vorek/qt.h"

class QSettings;

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
  // Keeps the widths that differ from the report's own.
  void RememberWidths();

 private:
  void TakeWidths();
  QString WidthsKey() const;

  std::int32_t report_;
  QSettings& settings_;
  std::unique_ptr<VorekReportWidget> widget_;
  std::map<std::int32_t, std::int32_t> own_widths_;  // by column, as the report has them
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_REPORT_TAB_H_
