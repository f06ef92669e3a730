#include <QCalendarWidget>
#include <QTextCharFormat>
#include <QVBoxLayout>
#include <algorithm>

#include "adapters/qt/popup_place.h"
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

// A text in which "/" is filled in between the parts of a run of digits that is typed at its end,
// once the next part begins; with a calendar behind a button.
class DateView : public TypedEditView {
 public:
  DateView(Presenter& presenter, VorekDate& date, QWidget& parent)
      : TypedEditView(presenter, date, parent), date_(date) {
    Edit().setMaxLength(kLongest);
    Edit().setAlignment(Qt::AlignCenter);
    AddOpener("تقويم", QLineEdit::LeadingPosition, [this] { OpenCalendar(); });
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
    if (Edit().cursorPosition() != text.size()) return;
    if (VorekDate::EndsByItself(text.toStdString())) {
      Commit();
    } else if (BeginsPart(text)) {
      Edit().setText(text.left(text.size() - 1) + '/' + text.back());
    }
  }

 private:
  static constexpr int kLongest = 24;  // with blanks and what a pasted text brings along

  // The last digit is the first of a month or a day: of a year of four digits alone, since two
  // digits in front may be a day as well.
  static bool BeginsPart(const QString& text) {
    const auto digits = [](const QString& part) {
      return std::all_of(part.begin(), part.end(), [](QChar c) { return c.digitValue() >= 0; });
    };
    const auto is_year = [&](const QString& part) {
      return part.size() == 4 && digits(part) && part.at(0).digitValue() == 1 &&
             (part.at(1).digitValue() == 3 || part.at(1).digitValue() == 4);
    };
    const bool month = text.size() == 5 && digits(text);
    const bool day = text.size() == 8 && text.at(4) == '/' && digits(text.mid(5));
    return (month || day) && is_year(text.left(4));
  }

  void OpenCalendar() {
    Commit();
    auto* const popup = new CalendarPopup(&Edit());
    popup->setAttribute(Qt::WA_DeleteOnClose);
    const text::CalendarDate shown = date_.Value().value_or(date_.Today());
    popup->days.setSelectedDate(QDate(shown.year, shown.month, shown.day));
    popup->days.showSelectedDate();
    connect(&popup->days, &QCalendarWidget::activated, this, [this, popup](QDate day) {
      Feed([&] { date_.SetValue({day.year(), day.month(), day.day()}); });
      popup->close();
    });
    connect(&popup->days, &QCalendarWidget::clicked, this, [this, popup](QDate day) {
      Feed([&] { date_.SetValue({day.year(), day.month(), day.day()}); });
      popup->close();
    });
    PlacePopup(*popup, Edit(), popup->sizeHint());
    popup->show();
    popup->days.setFocus();
  }

  VorekDate& date_;
};

}  // namespace

ControlView* MakeDateView(Presenter& presenter, Control& control, QWidget& parent) {
  return new DateView(presenter, static_cast<VorekDate&>(control), parent);
}

}  // namespace vorek::qt
