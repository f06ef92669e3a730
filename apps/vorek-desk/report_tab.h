#ifndef VOREK_APPS_VOREK_DESK_REPORT_TAB_H_
#define VOREK_APPS_VOREK_DESK_REPORT_TAB_H_

#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "head_bar.h"
#include "record_cards.h"
#include "report_action.h"
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
  // forms is the folder of form libraries, "" for none; tell gets what is wrong with one of them.
  ReportTab(const Session& session, std::int32_t report, QSettings& settings,
            const std::string& forms, std::function<void(const QString&)> tell, QWidget* parent);
  ~ReportTab() override;

  std::int32_t ReportNumber() const { return report_; }
  VorekReportWidget& Widget() { return *widget_; }
  // Runs the report, unless it has run already.
  void Start();
  bool View();
  // False if the report could not even be loaded, as when the user has no right to it.
  bool Loaded();
  // Whether the next start of the program shall bring the tab back: not one whose run failed.
  bool Returns();
  // Keeps the widths that the user drew, if any, and how large the grid is drawn.
  void RememberWidths();
  RecordCards& Cards() { return cards_; }
  // How far rows stand apart, in pixels.
  void SetRowPadding(int pixels) { widget_->SetRowPadding(pixels); }
  static constexpr int kUsualPadding = 6;

  // The tab must be kept meanwhile: Close puts it away and deletes it when the run has ended.
  bool Running() const { return widget_->Running(); }
  // A View hasn't returned: it may be running, or wait for a message to be answered.
  bool InView() const { return in_view_; }
  void Close();

  // Whether the report on show has something to do it with, and doing it.
  bool Offers(ReportAction action);
  void Do(ReportAction action);
  // The catalogue says that the report is meant to be seen as a chart.
  bool WantsChart();

  // The way of a related report leads back here.
  std::function<void()> on_come_to_front;
  // It runs for longer: told several times a second, see VorekReportWidget::RunGoesOn; and it has
  // ended, after so many milliseconds.
  std::function<void(const QString& words, const QString& time)> on_run;
  std::function<void(qint64 milliseconds)> on_run_ended;
  // What can be done with the report may be something else now.
  std::function<void()> on_result;

 private:
  WorldOptions Options(const std::string& forms, std::function<void(const QString&)> tell);
  void ConnectEvents();
  ReportControl& Control();
  void ShowHead();
  void EndRun(qint64 milliseconds);
  void Run();
  void TurnParameters();
  void OnCurrentColumn(void (*work)(ReportControl&));
  void TakeWidths();
  QString WidthsKey() const;
  QString ColumnsKey() const;
  void RememberColumns();

  std::int32_t report_;
  int user_;
  QSettings& settings_;
  std::function<void(const QString&)> tell_;
  bool started_ = false;
  bool in_view_ = false;
  bool closing_ = false;
  bool shown_ = false;       // the run went well
  bool has_widths_ = false;  // of the settings; later ones are the control's
  RecordCards cards_;
  HeadBar* head_;
  std::unique_ptr<VorekReportWidget> widget_;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_REPORT_TAB_H_
