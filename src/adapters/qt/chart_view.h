#ifndef VOREK_ADAPTERS_QT_CHART_VIEW_H_
#define VOREK_ADAPTERS_QT_CHART_VIEW_H_

#include <QImage>
#include <QWidget>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "adapters/qt/chart_painter.h"
#include "adapters/qt/icon_buttons.h"
#include "chart/chart_model.h"
#include "vorek/sheet_chart.h"

class QAction;
class QComboBox;
class QHBoxLayout;

namespace vorek::qt {

// The picture of a chart, or the words for why there is none. A click on an entry of the legend, or
// its number on the keyboard, hides it and shows it again; the pointer over the picture tells the
// values of its category.
class ChartCanvas : public QWidget {
 public:
  explicit ChartCanvas(QWidget* parent);

  // The chart as a workbook holds it. Throws Error for what it can't.
  SheetChart ForSheet() const;
  // A chart of other series shows all of them.
  void Show(std::shared_ptr<const ChartModel> chart);
  void SetKind(ChartKind kind);
  void SetShared(std::size_t series);
  void Toggle(std::size_t entry);

  ChartKind Kind() const { return look_.kind; }
  const std::vector<bool>& Shown() const { return look_.shown; }
  // "" while there is a picture.
  QString Refusal() const;
  // Of the picture on show; see ChartPainter.
  QPointF LegendPlace(std::size_t entry) const;
  QString TextAt(const QPointF& point) const;

  void PaintOn(QPainter& painter, const QRectF& area);
  QImage Picture();
  // By the ending: a PNG of twice the size on screen, or an SVG. False if it can't be written.
  bool Save(const QString& file);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void Changed(bool all_shown);
  void Describe();

  std::shared_ptr<const ChartModel> chart_;
  ChartLook look_;
  std::unique_ptr<ChartPainter> painter_;  // of the picture on show
};

// A window with the chart of a report.
class ChartView : public QWidget {
 public:
  struct Source {
    // The chart of the report as it is shown now; turned: a cross table's sides change places.
    std::function<ChartModel(bool turned)> read;
    // Writes the report with the chart into a workbook, tells the user if it can't, and returns
    // what else he should know.
    std::function<std::string(const std::string& path, const SheetChart& chart)> write_workbook;
  };
  ChartView(Source source, QWidget* parent);

  // Reads the chart anew.
  void Read();
  ChartCanvas& Canvas() { return *canvas_; }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  QAction* AddAction(QHBoxLayout& row, const QString& icon, const QString& text,
                     const QKeySequence& key);
  void AddKinds(QHBoxLayout& row);
  void AddRest(QHBoxLayout& row);
  void OfferSeries(const ChartModel& chart);
  // The file that the user chose; empty for none.
  QString AskForFile(const QString& ending);
  void SavePicture(const QString& ending);
  void SaveWorkbook();
  void Tell(const std::string& reason);

  Source source_;
  ChartCanvas* canvas_;
  QComboBox* shared_;  // the series of a share chart
  QAction* turn_ = nullptr;
  IconButtons buttons_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_CHART_VIEW_H_
