#include <QCalendarWidget>
#include <QTextCharFormat>
#include <QVBoxLayout>

#include "adapters/qt/typed_edit_view.h"
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
class DateView : public TypedEditView {
 public:
  DateView(Presenter& presenter, VorekDate& date, QWidget& parent)
      : TypedEditView(presenter, date, parent), date_(date) {
    Edit().setMaxLength(10);
    Edit().setAlignment(Qt::AlignCenter);
    AddOpener("تقويم", [this] { OpenCalendar(); });
  }

  void Set(std::string_view property) override {
    if (property == "RightToLeft") {
      Edit().setLayoutDirection(Qt::LeftToRight);  // the parts of a date never turn round
    } else {
      TypedEditView::Set(property);
    }
  }

 protected:
  QString ShownText() const override { return ToQt(date_.FarsiDate()); }

  void Typed(const QString& text) override {
    const bool grew = text.size() > length_;
    length_ = text.size();
    const bool part_ends = (text.size() == 4 && !text.contains('/')) ||
                           (text.size() == 7 && text.count('/') == 1 && text.at(4) == '/');
    if (!grew || !part_ends || Edit().cursorPosition() != text.size()) return;
    Edit().setText(text + '/');
    length_ = Edit().text().size();
  }

 private:
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
  qsizetype length_ = 0;
};

}  // namespace

ControlView* MakeDateView(Presenter& presenter, Control& control, QWidget& parent) {
  return new DateView(presenter, static_cast<VorekDate&>(control), parent);
}

}  // namespace vorek::qt
