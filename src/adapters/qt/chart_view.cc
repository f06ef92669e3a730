#include "adapters/qt/chart_view.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QSvgGenerator>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>

#include "adapters/qt/control_view.h"
#include "adapters/qt/theme.h"
#include "export/chart_sheet.h"
#include "messages/persian_reason.h"
#include "vorek/error.h"

namespace vorek::qt {
namespace {

// Both have the same series, so that those which are hidden stay so.
bool SameSeries(const ChartModel& a, const ChartModel& b) {
  const auto same = [](const ChartSeries& x, const ChartSeries& y) { return x.name == y.name; };
  return std::equal(a.series.begin(), a.series.end(), b.series.begin(), b.series.end(), same);
}

}  // namespace

// --- The picture ---------------------------------------------------------------------------------

ChartCanvas::ChartCanvas(QWidget* parent)
    : QWidget(parent), chart_(std::make_shared<ChartModel>()) {
  setObjectName("chartCanvas");
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(320, 240);
  setMouseTracking(true);
}

void ChartCanvas::Show(std::shared_ptr<const ChartModel> chart) {
  const bool same = SameSeries(*chart_, *chart) && look_.kind != ChartKind::kShares;
  // The painter of the chart before goes first.
  painter_.reset();
  chart_ = std::move(chart);
  if (look_.shared >= chart_->series.size()) look_.shared = 0;
  Changed(!same);
}

void ChartCanvas::SetKind(ChartKind kind) {
  const bool other = (kind == ChartKind::kShares) != (look_.kind == ChartKind::kShares);
  look_.kind = kind;
  Changed(other);
}

void ChartCanvas::SetShared(std::size_t series) {
  if (series >= chart_->series.size()) return;
  look_.shared = series;
  Changed(look_.kind == ChartKind::kShares);
}

void ChartCanvas::Toggle(std::size_t entry) {
  if (entry >= look_.shown.size()) return;
  look_.shown[entry] = !look_.shown[entry];
  Changed(false);
}

SheetChart ChartCanvas::ForSheet() const {
  return SheetChartOf(*chart_, look_.kind, look_.shown, look_.shared);
}

QString ChartCanvas::Refusal() const { return ToQt(chart_->Refusal(look_.kind, look_.shared)); }

QPointF ChartCanvas::LegendPlace(std::size_t entry) const {
  for (int y = 0; y < height(); y += 4) {
    for (int x = width() - 1; x >= 0; x -= 4) {
      if (painter_ != nullptr && painter_->LegendAt(QPointF(x, y)) == static_cast<int>(entry)) {
        return QPointF(x, y);
      }
    }
  }
  return {-1, -1};
}

QString ChartCanvas::TextAt(const QPointF& point) const {
  return painter_ == nullptr ? QString() : painter_->TextAt(point);
}

void ChartCanvas::Changed(bool all_shown) {
  painter_.reset();
  look_.theme = &ThemeOf(palette());
  look_.font = font();
  if (Refusal().isEmpty() && !chart_->series.empty()) {
    if (all_shown) look_.shown.clear();
    painter_ = std::make_unique<ChartPainter>(*chart_, look_);
    look_.shown.resize(painter_->LegendSize(), true);
  }
  Describe();
  update();
}

void ChartCanvas::Describe() {
  const QString size =
      QString("%1 رديف، %2 سري").arg(chart_->categories.size()).arg(chart_->series.size());
  setAccessibleName("نمودار " + ToQt(chart_->title));
  setAccessibleDescription(painter_ == nullptr ? Refusal() : size);
}

void ChartCanvas::PaintOn(QPainter& painter, const QRectF& area) {
  if (painter_ != nullptr) return painter_->Paint(painter, area);
  painter.fillRect(area, look_.theme->panel);
  painter.setPen(look_.theme->muted);
  painter.setFont(font());
  painter.setLayoutDirection(Qt::RightToLeft);
  painter.drawText(area.adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap, Refusal());
}

void ChartCanvas::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintOn(painter, rect());
}

QImage ChartCanvas::Picture() {
  constexpr int kSharp = 2;
  QImage picture(size() * kSharp, QImage::Format_ARGB32_Premultiplied);
  picture.setDevicePixelRatio(kSharp);
  QPainter painter(&picture);
  PaintOn(painter, rect());
  return picture;
}

bool ChartCanvas::Save(const QString& file) {
  if (!file.endsWith(".svg", Qt::CaseInsensitive)) return Picture().save(file, "PNG");
  QFile target(file);
  if (!target.open(QFile::WriteOnly)) return false;
  QSvgGenerator drawing;
  drawing.setOutputDevice(&target);
  drawing.setSize(size());
  drawing.setViewBox(rect());
  drawing.setTitle(ToQt(chart_->title));
  QPainter painter(&drawing);
  PaintOn(painter, rect());
  painter.end();
  return target.flush();
}

void ChartCanvas::mousePressEvent(QMouseEvent* event) {
  const int entry = painter_ == nullptr ? -1 : painter_->LegendAt(event->position());
  if (entry >= 0) Toggle(static_cast<std::size_t>(entry));
}

void ChartCanvas::keyPressEvent(QKeyEvent* event) {
  const int digit = event->text().isEmpty() ? -1 : event->text().front().digitValue();
  if (digit > 0) return Toggle(static_cast<std::size_t>(digit) - 1);
  QWidget::keyPressEvent(event);
}

bool ChartCanvas::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    auto* const help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), TextAt(QPointF(help->pos())), this);
    return true;
  }
  const bool look = event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
  if (look && chart_ != nullptr) Changed(false);
  return QWidget::event(event);
}

// --- The window ----------------------------------------------------------------------------------

ChartView::ChartView(Source source, QWidget* parent)
    : QWidget(parent, Qt::Window),
      source_(std::move(source)),
      canvas_(new ChartCanvas(this)),
      shared_(new QComboBox(this)) {
  setObjectName("chartView");
  setLayoutDirection(Qt::RightToLeft);
  resize(880, 560);
  auto* const column = new QVBoxLayout(this);
  auto* const bar = new QHBoxLayout;
  column->addLayout(bar);
  bar->setContentsMargins(12, 6, 12, 6);
  bar->setSpacing(4);
  AddKinds(*bar);
  AddRest(*bar);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(canvas_, 1);
  canvas_->setFocus();
  buttons_.Recolor(palette());
}

QAction* ChartView::AddAction(QHBoxLayout& row, const QString& icon, const QString& text,
                              const QKeySequence& key) {
  auto* const action = new QAction(text, this);
  action->setShortcut(key);
  action->setObjectName(icon);
  action->setToolTip(TipOf(text, key));
  addAction(action);
  buttons_.Add(row, icon, text, key)->setDefaultAction(action);
  return action;
}

void ChartView::AddKinds(QHBoxLayout& row) {
  struct Entry {
    ChartKind kind;
    const char* icon;
    const char* text;
    int key;
  };
  constexpr Entry kKinds[] = {{ChartKind::kBars, "bars", "ستوني", Qt::Key_B},
                              {ChartKind::kStackedBars, "stacked", "ستوني انباشته", Qt::Key_K},
                              {ChartKind::kLines, "lines", "خطي", Qt::Key_L},
                              {ChartKind::kShares, "shares", "سهم از كل", Qt::Key_H}};
  auto* const group = new QActionGroup(this);
  for (const Entry& entry : kKinds) {
    QAction* const action = AddAction(row, entry.icon, entry.text, Qt::ALT | Qt::Key(entry.key));
    action->setCheckable(true);
    action->setChecked(entry.kind == ChartKind::kBars);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, kind = entry.kind] {
      canvas_->SetKind(kind);
      shared_->setVisible(kind == ChartKind::kShares && shared_->count() > 1);
    });
  }
}

void ChartView::AddRest(QHBoxLayout& row) {
  turn_ = AddAction(row, "turn", "جابجايي رديف و ستون", Qt::ALT | Qt::Key_T);
  turn_->setCheckable(true);
  connect(turn_, &QAction::triggered, this, [this] { Read(); });
  shared_->setObjectName("shared");
  shared_->setAccessibleName("سري نمودار سهم");
  shared_->hide();
  connect(shared_, &QComboBox::activated, this,
          [this](int index) { canvas_->SetShared(static_cast<std::size_t>(index)); });
  row.addWidget(shared_);
  row.addStretch();
  const auto add = [&](const char* icon, const char* text, const QKeySequence& key, auto work) {
    connect(AddAction(row, icon, text, key), &QAction::triggered, this, work);
  };
  add("refresh", "از نو، از انتخاب جاري", QKeySequence(Qt::Key_F5), [this] { Read(); });
  add("copy", "كپي تصوير", QKeySequence::Copy,
      [this] { QApplication::clipboard()->setImage(canvas_->Picture()); });
  add("save", "ذخيره تصوير PNG", QKeySequence::Save, [this] { SavePicture("png"); });
  add("vector", "ذخيره تصوير SVG", Qt::CTRL | Qt::SHIFT | Qt::Key_S,
      [this] { SavePicture("svg"); });
  add("workbook", "ذخيره گزارش و نمودار در اكسل", Qt::ALT | Qt::Key_X, [this] { SaveWorkbook(); });
  add("close", "بستن", Qt::Key_Escape, [this] { close(); });
}

void ChartView::Read() {
  auto chart = std::make_shared<const ChartModel>(source_.read(turn_->isChecked()));
  setWindowTitle("نمودار - " + ToQt(chart->title));
  turn_->setEnabled(chart->cross_table);
  OfferSeries(*chart);
  canvas_->Show(std::move(chart));
}

void ChartView::OfferSeries(const ChartModel& chart) {
  const int before = std::max(shared_->currentIndex(), 0);
  shared_->clear();
  for (const ChartSeries& series : chart.series) shared_->addItem(ToQt(series.name));
  shared_->setCurrentIndex(before < shared_->count() ? before : 0);
  shared_->setVisible(canvas_->Kind() == ChartKind::kShares && shared_->count() > 1);
}

QString ChartView::AskForFile(const QString& ending) {
  QFileDialog dialog(this, "ذخيره نمودار");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(ending);
  dialog.setNameFilter(ending.toUpper() + " (*." + ending + ")");
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void ChartView::SavePicture(const QString& ending) {
  const QString file = AskForFile(ending);
  if (!file.isEmpty() && !canvas_->Save(file)) Tell("فايل «" + file.toStdString() + "» نوشته نشد.");
}

void ChartView::SaveWorkbook() {
  // The table is written as it is now.
  Read();
  try {
    const SheetChart chart = canvas_->ForSheet();
    const QString file = AskForFile("xlsx");
    if (file.isEmpty()) return;
    const std::string note = source_.write_workbook(file.toStdString(), chart);
    if (!note.empty()) Tell(note);
  } catch (const Error& error) {
    Tell(PersianReason(error.Description()));
  }
}

void ChartView::Tell(const std::string& reason) {
  QMessageBox::warning(this, "اشکال", ToQt(reason));
}

void ChartView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) buttons_.Recolor(palette());
}

}  // namespace vorek::qt
