#ifndef VOREK_QT_H_
#define VOREK_QT_H_

#include <QString>
#include <QWidget>
#include <functional>
#include <memory>

#include "vorek/print.h"
#include "vorek/report.h"
#include "vorek/world.h"

namespace vorek {

namespace qt {
class BusyScreen;
}

// What takes no input while a statement or a long pass of a world is under way: all windows of the
// program, or the world's own widgets and forms alone. Then others work on within the wait: what
// they wait for has to end first, before the earlier one goes on; and the host must keep a widget
// that is Running() until RunEnded, as its callers are still to be returned to.
enum class Locks { kProgram, kOwnWidgets };

// Gives the options a screen and file dialogs by Qt, and has their providers, which must stand in
// them already, run statements on threads of their own: windows stay alive meanwhile, and Escape or
// a button cancels. Qt's own texts become Persian, in the menus of fields, the file dialog and the
// like; a translator that the host installs later comes first. REQUIRES a QApplication; the world
// is to be used from its thread.
void AddQtServices(WorldOptions& options, Locks locks = Locks::kProgram);

// Where prints go: a preview window, from which they are printed or kept as PDF; a PDF file.
std::shared_ptr<print::PrintOutput> PrintPreviews();
std::shared_ptr<print::PrintOutput> PdfFile(const QString& path);

// A report control as a widget of a host, above a line that tells how many rows it shows and the
// filter in force. It takes the width and height that its layout gives it,
// and follows the application's font and palette.
class VorekReportWidget : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int UserID READ UserID WRITE SetUserID)
  Q_PROPERTY(int PositionID READ PositionID WRITE SetPositionID)
  Q_PROPERTY(int EmployeeID READ EmployeeID WRITE SetEmployeeID)
  Q_PROPERTY(int PeriodID READ PeriodID WRITE SetPeriodID)
  Q_PROPERTY(QString OleConnectionString READ OleConnectionString WRITE SetOleConnectionString)
  Q_PROPERTY(bool Editable READ Editable WRITE SetEditable)
  Q_PROPERTY(QString Title READ Title)

 public:
  // A widget with a world of its own, so that it shares neither user nor connection with another.
  explicit VorekReportWidget(WorldOptions options, QWidget* parent = nullptr);
  // A widget in a world that others share: all of them have to show reports for one user over one
  // connection. The world must outlive the widget.
  explicit VorekReportWidget(World& world, QWidget* parent = nullptr);
  ~VorekReportWidget() override;

  // The control behind it, with everything that isn't repeated here. Its Events() are taken by the
  // signals below; a host that assigns one of them takes the event over.
  VorekReport1& Report();

  // See VorekReport1::View. An error on the way goes to Failed and gives false.
  bool View(int ID, const QString& inParameterString = {}, const QString& inCallerStringValue = {});

  // Something that was asked of the widget's world takes long enough to let windows live, and
  // hasn't ended. Until then View fails and Do does nothing. CancelRun ends it as Escape does,
  // Abandon cancels that and all that would follow, in silence, since the widget is to be closed.
  bool Running() const;
  void CancelRun();
  void Abandon();

  // Does what a button or menu of the host stands for. An error that it throws goes to Failed.
  void Do(const std::function<void()>& work);

  // How large the grids are drawn, from 0.5 to 3; 1 at first.
  double Zoom() const;
  void SetZoom(double zoom);
  // The pixels that rows leave above and below their texts together; 6 at first.
  void SetRowPadding(int pixels);
  // Puts the selection on the clipboard, as text and as a table: as it is shown, with numbers in
  // plain digits, or below the headers of its columns.
  enum class Copied { Shown, Plain, WithHeaders };
  void CopySelection(Copied form);
  // Opens the menu in which the user hides, moves and freezes the columns of the grid on view.
  void ShowColumnChooser();
  // What the user has done there, for the next time that the report is shown. A text that
  // SaveColumns didn't make changes nothing.
  QByteArray SaveColumns() const;
  void RestoreColumns(const QByteArray& kept);

  // Opens a preview of the grid as it is shown, from which it is printed or kept as a PDF; no other
  // window takes input meanwhile, and it closes when the rows change. An error goes to Failed.
  void PrintGrid();

  // Opens the box that looks for a text in all columns of the grid on view.
  void ShowFindBar();

  // Opens a window with the chart of the grid on view, of its selection where several cells are
  // selected. It follows the rows that the report shows until it is closed.
  void ShowChart();

  int UserID() const;
  void SetUserID(int id);
  int PositionID() const;
  void SetPositionID(int id);
  int EmployeeID() const;
  void SetEmployeeID(int id);
  int PeriodID() const;
  void SetPeriodID(int id);
  QString OleConnectionString() const;
  void SetOleConnectionString(const QString& text);
  bool Editable() const;
  void SetEditable(bool on);
  QString Title() const;

 Q_SIGNALS:
  // A slot that is connected directly may set *Cancel, which ends the drill-through.
  void DblClick(bool* Cancel);
  void KeyDown(int KeyCode, int Shift);
  void Cancel();
  void ViewCelChange();
  void InvokeClearShow(int FormTypeID, const QString& InvokedValueStr);
  void InvokeView(int FormTypeID, const QString& UniqueWC, const QString& InvokedValueStr);
  // Escape on a grid asks for the end of the window that shows the report. Unless a slot is
  // connected, the widget's window is closed.
  void CloseParent();
  // The window of a related report leads back here; the widget's window comes to the front by
  // itself.
  void ComeToFront();
  // The buttons of an Editable control; see ReportEvents.
  void AddClick();
  void EditClick();
  void DeleteClick();
  // The rows on show, their number or the report are others now; once for all changes of an event.
  void ResultChanged();
  // Something is under way for longer: told several times a second, in words and as the time that
  // has gone by ("0:07"); and has ended, after so many milliseconds.
  void RunGoesOn(const QString& words, const QString& time);
  void RunEnded(qint64 milliseconds);
  // An error that nothing in the control caught. Unless a slot is connected, it is shown.
  void Failed(const QString& description);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  bool event(QEvent* event) override;

 private:
  struct Parts;

  void Begin();
  void Show(const std::shared_ptr<qt::BusyScreen>& screen);
  void ConnectEvents();
  void TakeSize();
  void Tell(const QString& failure);

  std::unique_ptr<Parts> parts_;
};

}  // namespace vorek

#endif  // VOREK_QT_H_
