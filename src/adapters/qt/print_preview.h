#ifndef VOREK_ADAPTERS_QT_PRINT_PREVIEW_H_
#define VOREK_ADAPTERS_QT_PRINT_PREVIEW_H_

#include <QAbstractScrollArea>
#include <QWidget>
#include <functional>
#include <memory>

#include "adapters/qt/paper_bar.h"
#include "adapters/qt/print_painter.h"
#include "print/print_output.h"

class QLabel;
class QLineEdit;
class QListView;
class QSpinBox;

namespace vorek::qt {

// Pages below one another, of which only those in view are painted.
class PageArea : public QAbstractScrollArea {
 public:
  explicit PageArea(std::shared_ptr<const print::Pages> document, QWidget* parent);

  // Other pages in their place, from the first one on.
  void SetPages(std::shared_ptr<const print::Pages> document);
  double Zoom() const { return zoom_; }
  void SetZoom(double zoom);  // 1 for the paper's own size
  void FitWidth();
  void GoTo(std::size_t page);
  std::size_t PageInView() const;
  // Goes to the next page, from that in view on and round, that holds the text; false if none does.
  bool Find(const QString& text);

  std::function<void()> on_moved;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  double Dots() const;  // pixels a millimetre
  QSize PageSize() const;
  int PageTop(std::size_t page) const;
  void SetBars();
  void DrawFound(QPainter& painter, std::size_t page);

  std::shared_ptr<const print::Pages> document_;
  std::unique_ptr<PrintPainter> painter_;
  double zoom_ = 1;
  QString found_;
};

// Makes the pages anew for another paper. Throws Error for one that they have no room on.
using MakePages = std::function<std::shared_ptr<const print::Pages>(const print::PageSetup&)>;

// A window with the pages of a document: zoom, small pictures, search, PDF, a printer.
class PrintPreview : public QWidget {
 public:
  PrintPreview(std::shared_ptr<const print::Pages> document, const QString& title, QWidget* parent);

  // The pages are made by make, which the user may have do it again for another paper.
  PrintPreview(MakePages make, const print::PageSetup& setup, const QString& title,
               QWidget* parent);

  PageArea& Pages() { return *pages_; }
  // To a file that the user chooses, to a printer.
  void SaveAsPdf();
  void Print();

 private:
  QWidget* MakeBar();
  void SetUpFields();
  QWidget* MakeThumbnails();
  void TakePaper(const print::PageSetup& setup);
  void TakePages();
  void Told();
  void Search();

  std::shared_ptr<const print::Pages> document_;
  MakePages make_;  // null for pages of one paper
  PaperBar* paper_ = nullptr;
  PageArea* pages_;
  QSpinBox* page_;
  QLineEdit* search_;
  QLabel* told_;
  QListView* thumbnails_;
};

// Shows documents in windows.
class PreviewOutput : public print::PrintOutput {
 public:
  void Show(std::shared_ptr<const print::Pages> document, const std::string& title) override;
};

// Writes documents to one PDF.
class PdfOutput : public print::PrintOutput {
 public:
  explicit PdfOutput(QString path) : path_(std::move(path)) {}
  void Show(std::shared_ptr<const print::Pages> document, const std::string& title) override;

 private:
  QString path_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_PRINT_PREVIEW_H_
