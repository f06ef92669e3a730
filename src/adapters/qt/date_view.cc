#include <QAction>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyle>
#include <QTextCharFormat>
#include <QToolTip>
#include <QVBoxLayout>

#include "adapters/qt/view_registry.h"
#include "widgets/vorek_date.h"

namespace vorek::qt {
namespace {

QCalendar Persian() { return QCalendar(QCalendar::System::Jalali); }

// Month names and digits in Persian, the week from Saturday, Friday marked.
class CalendarPopup : public QFrame {
 public:
  explicit CalendarPopup(QWidget* parent) : QFrame(parent, Qt::Popup), days(this) {
    setFrameShape(QFrame::StyledPanel);
    setLayoutDirection(Qt::RightToLeft);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&days);
    days.setLocale(QLocale(QLocale::Persian, QLocale::Iran));
    days.setCalendar(Persian());
    days.setFirstDayOfWeek(Qt::Saturday);
    days.setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    QTextCharFormat plain;
    plain.setForeground(palette().color(QPalette::Text));
    QTextCharFormat friday;
    friday.setForeground(QColor(0xD0, 0x30, 0x30));
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
      days.setWeekdayTextFormat(day, plain);
    days.setWeekdayTextFormat(Qt::Friday, friday);
  }

  QCalendarWidget days;
};

// A text in which "/" is filled in while it is typed at its end, with a calendar behind a button.
class DateView : public ControlView {
 public:
  DateView(Presenter& presenter, VorekDate& date, QWidget& parent)
      : ControlView(presenter, date, new QLineEdit(&parent)), date_(date) {
    Edit().setMaxLength(10);
    Edit().setAlignment(Qt::AlignCenter);
    const QIcon icon = Edit().style()->standardIcon(QStyle::SP_ArrowDown);
    QAction* const open = Edit().addAction(icon, QLineEdit::TrailingPosition);
    open->setText("تقويم");
    connect(open, &QAction::triggered, this, [this] { OpenCalendar(); });
    connect(&Edit(), &QLineEdit::textEdited, this, [this](const QString& text) { Typed(text); });
  }

  void Set(std::string_view property) override {
    if (property == "FarsiDate") {
      ShowDate();
    } else if (property == "RightToLeft") {
      Edit().setLayoutDirection(Qt::LeftToRight);  // the parts of a date never turn round
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    ShowDate();
  }

  void Commit() override {
    if (!std::exchange(half_typed_, false)) return;
    const std::string text = Edit().text().toStdString();
    try {
      date_.Type(text);
    } catch (const Error& error) {
      QToolTip::showText(Edit().mapToGlobal(QPoint(0, Edit().height())), ToQt(error.Description()),
                         &Edit());
    }
    if (!Retired()) ShowDate();
  }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (object == &Widget() && event->type() == QEvent::KeyPress) {
      const auto* const key = static_cast<QKeyEvent*>(event);
      const bool alt_down = key->key() == Qt::Key_Down && key->modifiers() == Qt::AltModifier;
      if (alt_down || key->key() == Qt::Key_F4) {
        OpenCalendar();
        return true;
      }
    }
    return ControlView::eventFilter(object, event);
  }

 private:
  QLineEdit& Edit() { return static_cast<QLineEdit&>(Widget()); }

  void ShowDate() {
    if (!half_typed_) Edit().setText(ToQt(date_.FarsiDate()));
  }

  void Typed(const QString& text) {
    half_typed_ = true;
    const bool grew = text.size() > length_;
    length_ = text.size();
    const bool part_ends = (text.size() == 4 && !text.contains('/')) ||
                           (text.size() == 7 && text.count('/') == 1 && text.at(4) == '/');
    if (!grew || !part_ends || Edit().cursorPosition() != text.size()) return;
    Edit().setText(text + '/');
    length_ = Edit().text().size();
  }

  void OpenCalendar() {
    Commit();
    auto* const popup = new CalendarPopup(&Edit());
    popup->setAttribute(Qt::WA_DeleteOnClose);
    if (const auto& value = date_.Value()) {
      popup->days.setSelectedDate(QDate(value->year, value->month, value->day));
    }
    connect(&popup->days, &QCalendarWidget::activated, this, [this, popup](QDate day) {
      Feed([&] { date_.SetValue({day.year(), day.month(), day.day()}); });
      popup->close();
    });
    connect(&popup->days, &QCalendarWidget::clicked, this, [this, popup](QDate day) {
      Feed([&] { date_.SetValue({day.year(), day.month(), day.day()}); });
      popup->close();
    });
    popup->move(Edit().mapToGlobal(QPoint(0, Edit().height())));
    popup->show();
    popup->days.setFocus();
  }

  VorekDate& date_;
  bool half_typed_ = false;
  qsizetype length_ = 0;
};

}  // namespace

ControlView* MakeDateView(Presenter& presenter, Control& control, QWidget& parent) {
  return new DateView(presenter, static_cast<VorekDate&>(control), parent);
}

}  // namespace vorek::qt
