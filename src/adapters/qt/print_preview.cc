#include "adapters/qt/print_preview.h"

#include <QApplication>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSpinBox>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>

#include "adapters/qt/qt_windows.h"
#include "adapters/qt/thumbnail_model.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/qt.h"

namespace vorek::qt {
namespace {

constexpr int kGap = 12;  // pixels around pages

// Letters that look the same are the same, as in the grid's quick search.
std::u32string Folded(const std::string& text) {
  std::u32string folded;
  for (std::size_t at = 0; at < text.size();) folded += text::FoldLetter(text::DecodeAt(text, at));
  return folded;
}

// Printers know papers upright.
void SetPaper(QPrinter& printer, const print::Paper& paper) {
  const auto [shorter, longer] = std::minmax(paper.width, paper.height);
  printer.setPageSize(QPageSize(QSizeF(shorter, longer), QPageSize::Millimeter));
  printer.setPageOrientation(paper.width > paper.height ? QPageLayout::Landscape
                                                        : QPageLayout::Portrait);
}

}  // namespace

PageArea::PageArea(std::shared_ptr<const print::Pages> document, QWidget* parent)
    : QAbstractScrollArea(parent),
      document_(std::move(document)),
      painter_(std::make_unique<PrintPainter>(*document_)) {
  setFocusPolicy(Qt::StrongFocus);
}

void PageArea::SetPages(std::shared_ptr<const print::Pages> document) {
  document_ = std::move(document);
  painter_ = std::make_unique<PrintPainter>(*document_);
  SetBars();
  GoTo(0);
  viewport()->update();
}

double PageArea::Dots() const { return zoom_ * logicalDpiX() / 25.4; }

QSize PageArea::PageSize() const {
  const print::Paper& layout = document_->Sheet();
  return {qRound(layout.width * Dots()), qRound(layout.height * Dots())};
}

int PageArea::PageTop(std::size_t page) const {
  return kGap + static_cast<int>(page) * (PageSize().height() + kGap);
}

void PageArea::SetBars() {
  const QSize page = PageSize();
  const int height = PageTop(document_->PageCount());
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(40);
  horizontalScrollBar()->setRange(0, std::max(0, page.width() + 2 * kGap - viewport()->width()));
  horizontalScrollBar()->setPageStep(viewport()->width());
}

void PageArea::SetZoom(double zoom) {
  const std::size_t page = PageInView();
  zoom_ = std::clamp(zoom, 0.1, 5.0);
  SetBars();
  GoTo(page);
  viewport()->update();
}

void PageArea::FitWidth() {
  const double width = document_->Sheet().width * logicalDpiX() / 25.4;
  SetZoom((viewport()->width() - 2 * kGap) / width);
}

void PageArea::GoTo(std::size_t page) {
  verticalScrollBar()->setValue(PageTop(std::min(page, document_->PageCount() - 1)) - kGap);
}

std::size_t PageArea::PageInView() const {
  const int middle = verticalScrollBar()->value() + viewport()->height() / 3;
  const auto page =
      static_cast<std::size_t>(std::max(0, middle - kGap) / (PageSize().height() + kGap));
  return std::min(page, document_->PageCount() - 1);
}

bool PageArea::Find(const QString& text) {
  found_ = text;
  viewport()->update();
  const std::u32string wanted = Folded(text.toStdString());
  const std::size_t from = PageInView();
  for (std::size_t step = 1; !wanted.empty() && step <= document_->PageCount(); ++step) {
    const std::size_t page = (from + step) % document_->PageCount();
    for (const print::DrawnItem& drawn : document_->Page(page)) {
      if (Folded(drawn.text).find(wanted) == std::u32string::npos) continue;
      GoTo(page);
      return true;
    }
  }
  return false;
}

void PageArea::DrawFound(QPainter& painter, std::size_t page) {
  const std::u32string wanted = Folded(found_.toStdString());
  if (wanted.empty()) return;
  for (const print::DrawnItem& drawn : document_->Page(page)) {
    if (Folded(drawn.text).find(wanted) == std::u32string::npos) continue;
    const QRectF place = PrintPainter::PlaceOf(drawn);
    painter.fillRect(QRectF(place.topLeft() * Dots(), place.size() * Dots()),
                     QColor(255, 214, 0, 90));
  }
}

void PageArea::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), palette().color(QPalette::Mid));
  painter.setRenderHint(QPainter::Antialiasing);
  const QSize size = PageSize();
  const int above = verticalScrollBar()->value();
  const int left =
      std::max(kGap, (viewport()->width() - size.width()) / 2) - horizontalScrollBar()->value();
  const auto first = static_cast<std::size_t>(above / (size.height() + kGap));
  for (std::size_t page = first; page < document_->PageCount(); ++page) {
    const int top = PageTop(page) - above;
    if (top > viewport()->height()) break;
    painter.save();
    painter.translate(left, top);
    painter.fillRect(QRect({0, 0}, size), Qt::white);
    painter_->Draw(painter, page, Dots());
    DrawFound(painter, page);
    painter.restore();
  }
}

void PageArea::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  SetBars();
}

void PageArea::scrollContentsBy(int, int) {
  viewport()->update();
  if (on_moved) on_moved();
}

void PageArea::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) {
    QAbstractScrollArea::wheelEvent(event);
    return;
  }
  SetZoom(zoom_ * (event->angleDelta().y() > 0 ? 1.1 : 1 / 1.1));
}

PrintPreview::PrintPreview(std::shared_ptr<const print::Pages> document, const QString& title,
                           QWidget* parent)
    : QWidget(parent, Qt::Window),
      document_(std::move(document)),
      pages_(new PageArea(document_, this)),
      page_(new QSpinBox(this)),
      search_(new QLineEdit(this)),
      told_(new QLabel(this)),
      thumbnails_(new QListView(this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setLayoutDirection(Qt::RightToLeft);
  setWindowTitle("پيش نمايش چاپ" + (title.isEmpty() ? QString() : " - " + title));
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(MakeBar());
  auto* const middle = new QHBoxLayout;
  middle->addWidget(MakeThumbnails());
  middle->addWidget(pages_, 1);
  layout->addLayout(middle, 1);
  pages_->on_moved = [this] { Told(); };
  pages_->setAccessibleName("صفحه ها");
  search_->setAccessibleName("جستجو در صفحه ها");
  new QShortcut(Qt::Key_Escape, this, [this] { close(); });
  new QShortcut(QKeySequence::Print, this, [this] { Print(); });
  new QShortcut(QKeySequence::Find, this, [this] { search_->setFocus(); });
  resize(1000, 760);
  pages_->setFocus();
  TakePages();
}

PrintPreview::PrintPreview(MakePages make, const print::PageSetup& setup, const QString& title,
                           QWidget* parent)
    : PrintPreview(make(setup), title, parent) {
  make_ = std::move(make);
  paper_ = new PaperBar(setup, this);
  paper_->on_changed = [this](const print::PageSetup& wanted) { TakePaper(wanted); };
  static_cast<QVBoxLayout*>(layout())->insertWidget(1, paper_);
}

// A paper that the pages have no room on is given back.
void PrintPreview::TakePaper(const print::PageSetup& setup) {
  try {
    document_ = make_(setup);
    TakePages();
    pages_->FitWidth();
  } catch (const Error& error) {
    paper_->TakeBack();
    ShowFailure(this, QString::fromStdString(error.Description()));
  }
}

void PrintPreview::TakePages() {
  pages_->SetPages(document_);
  QAbstractItemModel* const old_model = thumbnails_->model();
  QAbstractItemDelegate* const old_painter = thumbnails_->itemDelegate();
  thumbnails_->setModel(new ThumbnailModel(document_, thumbnails_));
  thumbnails_->setItemDelegate(new ThumbnailPainter(document_, thumbnails_));
  delete old_model;
  delete old_painter;
  page_->setRange(1, static_cast<int>(document_->PageCount()));
  Told();
}

QWidget* PrintPreview::MakeBar() {
  auto* const bar = new QWidget(this);
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& text, const QString& name, auto action) {
    auto* const button = new QPushButton(text, bar);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, action);
    row->addWidget(button);
  };
  add("چاپ...", "print", [this] { Print(); });
  add("PDF...", "pdf", [this] { SaveAsPdf(); });
  add("بزرگتر", "larger", [this] { pages_->SetZoom(pages_->Zoom() * 1.25); });
  add("كوچكتر", "smaller", [this] { pages_->SetZoom(pages_->Zoom() / 1.25); });
  add("هم پهناي پنجره", "fit", [this] { pages_->FitWidth(); });
  SetUpFields();
  row->addWidget(page_);
  row->addWidget(told_);
  row->addStretch(1);
  row->addWidget(search_);
  return bar;
}

// The number of the page in view, and the text to look for.
void PrintPreview::SetUpFields() {
  page_->setObjectName("page");
  page_->setAccessibleName("صفحه");
  connect(page_, &QSpinBox::valueChanged, this, [this](int page) {
    if (pages_->PageInView() + 1 != static_cast<std::size_t>(page)) {
      pages_->GoTo(static_cast<std::size_t>(page) - 1);
    }
  });
  search_->setObjectName("search");
  search_->setPlaceholderText("جستجو در صفحه ها");
  search_->setClearButtonEnabled(true);
  connect(search_, &QLineEdit::returnPressed, this, [this] { Search(); });
}

QWidget* PrintPreview::MakeThumbnails() {
  thumbnails_->setUniformItemSizes(true);
  thumbnails_->setFixedWidth(150);
  thumbnails_->setAccessibleName("نماي صفحه ها");
  connect(thumbnails_, &QListView::clicked, this, [this](const QModelIndex& index) {
    pages_->GoTo(static_cast<std::size_t>(index.row()));
  });
  return thumbnails_;
}

void PrintPreview::Told() {
  const std::size_t page = pages_->PageInView() + 1;
  page_->setValue(static_cast<int>(page));
  told_->setText(QString("از %1").arg(document_->PageCount()));
}

void PrintPreview::Search() {
  const bool found = pages_->Find(search_->text());
  if (!found && !search_->text().isEmpty()) told_->setText("يافت نشد");
}

void PrintPreview::SaveAsPdf() {
  const QString path = QFileDialog::getSaveFileName(this, "ذخيره PDF", {}, "PDF (*.pdf)");
  if (path.isEmpty()) return;
  try {
    WritePdf(*document_, path);
  } catch (const Error& error) {
    ShowFailure(this, QString::fromStdString(error.Description()));
  }
}

void PrintPreview::Print() {
  QPrinter printer(QPrinter::HighResolution);
  SetPaper(printer, document_->Sheet());
  printer.setFullPage(true);
  QPrintDialog dialog(&printer, this);
  dialog.setMinMax(1, static_cast<int>(document_->PageCount()));
  if (dialog.exec() != QDialog::Accepted) return;
  const int pages = static_cast<int>(document_->PageCount());
  const int first = printer.fromPage() > 0 ? printer.fromPage() : 1;
  const int last = printer.toPage() > 0 ? std::min(printer.toPage(), pages) : pages;
  QPainter painter(&printer);
  PrintPainter on_paper(*document_);
  for (int page = first; page <= last; ++page) {
    if (page > first) printer.newPage();
    on_paper.Draw(painter, static_cast<std::size_t>(page) - 1, printer.resolution() / 25.4);
  }
}

void PreviewOutput::Show(std::shared_ptr<const print::Pages> document, const std::string& title) {
  auto* const window = new PrintPreview(std::move(document), QString::fromStdString(title),
                                        QApplication::activeWindow());
  window->show();
  window->Pages().FitWidth();
}

void PdfOutput::Show(std::shared_ptr<const print::Pages> document, const std::string&) {
  WritePdf(*document, path_);
}

}  // namespace vorek::qt

namespace vorek {

std::shared_ptr<print::PrintOutput> PrintPreviews() {
  return std::make_shared<qt::PreviewOutput>();
}

std::shared_ptr<print::PrintOutput> PdfFile(const QString& path) {
  return std::make_shared<qt::PdfOutput>(path);
}

}  // namespace vorek
