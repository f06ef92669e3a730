#include "adapters/qt/qt_windows.h"

#include <QApplication>
#include <QCursor>
#include <QEventLoop>
#include <QFontMetricsF>
#include <QMenu>
#include <QMessageBox>
#include <QOperatingSystemVersion>
#include <QScreen>
#include <cmath>
#include <utility>

#include "adapters/qt/control_view.h"
#include "adapters/qt/told_line.h"
#include "messages/persian_reason.h"

namespace vorek::qt {
namespace {

constexpr int kHourglass = 11;

// Dots before a caption say that more is asked for; in a menu that runs from the right they belong
// behind the words.
QString MenuText(const Menu& menu) {
  QString text = ToQt(menu.Caption());
  if (text.startsWith("...")) text = text.mid(3) + "...";
  return text;
}

void Fill(QMenu& shown, Menu& menu) {
  shown.setToolTipsVisible(true);
  for (Control* const child : menu.Children()) {
    auto* const entry = dynamic_cast<Menu*>(child);
    if (entry == nullptr || !entry->Visible()) continue;
    if (entry->Caption() == "-") {
      shown.addSeparator();
      continue;
    }
    if (!entry->Children().empty()) {
      QMenu* const below = shown.addMenu(MenuText(*entry));
      below->setEnabled(entry->Enabled());
      below->menuAction()->setToolTip(ToQt(entry->ToolTipText()));
      Fill(*below, *entry);
      continue;
    }
    QAction* const action = shown.addAction(MenuText(*entry));
    action->setEnabled(entry->Enabled());
    action->setObjectName(ToQt(entry->Name()));
    action->setToolTip(ToQt(entry->ToolTipText()));
    action->setData(QVariant::fromValue(static_cast<void*>(entry)));
  }
}

}  // namespace

void ShowFailure(QWidget* over, const QString& description) {
  const QString reason = ToQt(PersianReason(description.toStdString()));
  QMessageBox box(QMessageBox::Warning, "خطا", reason, QMessageBox::NoButton, over);
  box.setTextFormat(Qt::PlainText);
  box.setLayoutDirection(Qt::RightToLeft);
  box.addButton("تاييد", QMessageBox::AcceptRole);
  box.exec();
}

QtWindows::~QtWindows() {
  for (const auto& [form, window] : std::exchange(modeless_, {})) delete window;
  if (hourglass_ && qApp != nullptr) busy_->SetCursor(false);
}

void QtWindows::ShowModal(Form& form) {
  Drop(form);
  if (busy_->Abandoned()) {
    if (form.Shown()) form.CloseBox();
    return;
  }
  busy_->ComeToFront();
  const BusyScreen::Asking asking(*busy_);
  FormWindow window(form, QApplication::activeWindow());
  AddPlace(window);
  window.setWindowModality(Qt::ApplicationModal);
  QEventLoop loop;
  window.on_hidden = [&loop] { loop.quit(); };
  window.on_failure = [&window](const QString& text) { ShowFailure(&window, text); };
  window.Open();
  if (form.Shown()) loop.exec();
}

void QtWindows::Show(Form& form) {
  FormWindow*& window = modeless_[&form];
  if (window == nullptr) {
    window = new FormWindow(form, QApplication::activeWindow());
    AddPlace(*window);
    window->on_hidden = [this, &form] { Drop(form); };
    window->on_failure = [window](const QString& text) { ShowFailure(window, text); };
  }
  window->Open();
}

void QtWindows::AddPlace(FormWindow& window) {
  window.SetScreen(busy_);
  busy_->AddPlace({.widget = &window, .tell = {}, .end = {}, .come_to_front = {}});
}

// The window may be in the midst of an event.
void QtWindows::Drop(const Form& form) {
  const auto found = modeless_.find(&form);
  if (found == modeless_.end()) return;
  FormWindow* const window = found->second;
  modeless_.erase(found);
  window->on_hidden = nullptr;
  window->Release();
  window->hide();
  window->deleteLater();
}

void QtWindows::PopupMenu(Menu& menu) {
  QMenu shown(QApplication::activeWindow());
  shown.setLayoutDirection(Qt::RightToLeft);
  Fill(shown, menu);
  const QAction* chosen = nullptr;
  {
    const BusyScreen::Asking asking(*busy_);
    chosen = shown.exec(QCursor::pos());
  }
  if (chosen == nullptr) return;
  static_cast<Menu*>(chosen->data().value<void*>())->Click();
}

std::int32_t QtWindows::TextWidth(std::string_view text, double size) const {
  const QFontMetricsF metrics(Scale::Font(size));
  return Scale::OfApplication().Twips(std::ceil(metrics.horizontalAdvance(ToQt(text))));
}

void QtWindows::SetMousePointer(int shape) {
  const bool wanted = shape == kHourglass;
  if (std::exchange(hourglass_, wanted) == wanted) return;
  busy_->SetCursor(wanted);
}

bool QtWindows::TellCancelled(std::string_view line) {
  if (busy_->Abandoned()) return true;
  if (!busy_->TakeCancelled()) return false;
  ToldLine::Show(ToQt(std::string(line)), busy_->Front());
  return true;
}

void QtWindows::Beep(std::int32_t, std::int32_t) { QApplication::beep(); }

ScreenPoint QtWindows::ClientToScreen(const Control& control) const {
  const auto* const presenter = dynamic_cast<Presenter*>(control.Observer());
  const ControlView* const view = presenter == nullptr ? nullptr : presenter->ViewOf(control);
  if (view == nullptr) return {};
  const QPoint corner = view->Widget().mapToGlobal(QPoint(0, 0));
  return {corner.x(), corner.y()};
}

double QtWindows::TwipsPerPixel() const { return Scale::OfApplication().TwipsPerPixel(); }

ScreenSize QtWindows::Size() const {
  const QSize room = QGuiApplication::primaryScreen()->availableSize();
  const Scale scale = Scale::OfApplication();
  return {scale.Twips(room.width()), scale.Twips(room.height())};
}

// Qt has no way to choose the user's layout: it stays as the user has set it.
void QtWindows::LoadKeyboardLayout(std::string_view) {}

int QtWindows::OsMajorVersion() const {
  const QOperatingSystemVersion system = QOperatingSystemVersion::current();
  return system.type() == QOperatingSystemVersion::Windows ? system.majorVersion() : 0;
}

}  // namespace vorek::qt
