#include <algorithm>

#include "adapters/qt/typed_edit_view.h"
#include "adapters/qt/view_registry.h"
#include "widgets/vorek_currency.h"
#include "widgets/vorek_time.h"

// Amounts of time and of money.
namespace vorek::qt {
namespace {

QString LatinDigits(QString text) {
  for (QChar& character : text) {
    if (character.digitValue() >= 0) character = QChar('0' + character.digitValue());
  }
  return text;
}

// Figures run from left to right in any form.
class FiguresView : public TypedEditView {
 public:
  using TypedEditView::TypedEditView;

  void Set(std::string_view property) override {
    if (property == "RightToLeft") {
      Edit().setLayoutDirection(Qt::LeftToRight);
    } else {
      TypedEditView::Set(property);
    }
  }
};

// Hours and minutes with ":" filled into the four digits of a time of the day.
class MinutesView : public FiguresView {
 public:
  MinutesView(Presenter& presenter, MinutesControl& minutes, QWidget& parent)
      : FiguresView(presenter, minutes, parent), minutes_(minutes) {
    Edit().setAlignment(Qt::AlignCenter);
    Edit().setPlaceholderText("--:--");
    Edit().setMaxLength(kLongest);
  }

 protected:
  QString ShownText() const override {
    return ToQt(OfDay() ? static_cast<VorekTime&>(minutes_).GetTimeFormatted()
                        : static_cast<VorekDuration&>(minutes_).GetDuration());
  }
  void Typed(const QString& text) override {
    const bool four =
        text.size() == 4 && Edit().cursorPosition() == 4 &&
        std::all_of(text.begin(), text.end(), [](QChar c) { return c.digitValue() >= 0; });
    if (OfDay() && four) Edit().setText(text.left(2) + ':' + text.mid(2));
  }

 private:
  static constexpr int kLongest = 16;  // with blanks and what a pasted text brings along

  bool OfDay() const { return minutes_.Kind() == "VorekTime"; }

  MinutesControl& minutes_;
};

// Digits are grouped while they are typed; the cursor stays behind the digit that it was behind.
class CurrencyView : public FiguresView {
 public:
  CurrencyView(Presenter& presenter, VorekCurrency& amount, QWidget& parent)
      : FiguresView(presenter, amount, parent), amount_(amount) {
    Edit().setAlignment(Qt::AlignRight | Qt::AlignAbsolute);
  }

 protected:
  QString ShownText() const override { return ToQt(amount_.Text()); }
  void Typed(const QString& text) override {
    const auto counted = [](const QString& part) { return part.size() - part.count('/'); };
    const qsizetype behind = counted(text.mid(Edit().cursorPosition()));
    const QString grouped = Grouped(LatinDigits(text));
    Edit().setText(grouped);
    qsizetype cursor = grouped.size();
    while (cursor > 0 && counted(grouped.mid(cursor)) < behind) --cursor;
    while (cursor > 0 && grouped.at(cursor - 1) == '/') --cursor;
    Edit().setCursorPosition(static_cast<int>(cursor));
  }

 private:
  static QString Grouped(QString text) {
    text.remove('/').remove(',');
    qsizetype first = 0;
    while (first < text.size() && !text.at(first).isDigit()) ++first;
    qsizetype end = first;
    while (end < text.size() && text.at(end).isDigit()) ++end;
    for (qsizetype at = end - 3; at > first; at -= 3) text.insert(at, '/');
    return text;
  }

  VorekCurrency& amount_;
};

}  // namespace

ControlView* MakeCurrencyView(Presenter& presenter, Control& control, QWidget& parent) {
  return new CurrencyView(presenter, static_cast<VorekCurrency&>(control), parent);
}

ControlView* MakeMinutesView(Presenter& presenter, Control& control, QWidget& parent) {
  return new MinutesView(presenter, static_cast<MinutesControl&>(control), parent);
}

}  // namespace vorek::qt
