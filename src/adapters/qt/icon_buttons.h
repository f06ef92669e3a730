#ifndef VOREK_ADAPTERS_QT_ICON_BUTTONS_H_
#define VOREK_ADAPTERS_QT_ICON_BUTTONS_H_

#include <QColor>
#include <QKeySequence>
#include <QString>
#include <vector>

class QBoxLayout;
class QPalette;
class QToolButton;

namespace vorek::qt {

struct Theme;

// "Find (Ctrl+F)": a tip tells the key too.
QString TipOf(const QString& text, const QKeySequence& key);

// Makes the buttons of a bar, each with an icon of the family, and keeps them in the colours of the
// palette in force.
class IconButtons {
 public:
  // A button of the row's widget, named after its icon, which is all that it shows; the text is its
  // tip, beside the key, and its name for a screen reader. The key isn't set.
  QToolButton* Add(QBoxLayout& row, const QString& icon, const QString& text,
                   const QKeySequence& key = {});
  // Gives a button another icon.
  void SetIcon(QToolButton& button, const QString& icon);
  // A button on a ground of the accent's colour.
  void SetOnAccent(QToolButton& button);
  void Recolor(const QPalette& palette);

 private:
  struct Entry {
    QToolButton* button;
    QString icon;
    bool on_accent = false;
  };
  Entry& EntryOf(const QToolButton& button);
  void Paint(const Entry& entry) const;

  const Theme* theme_ = nullptr;  // of the last palette
  std::vector<Entry> entries_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_ICON_BUTTONS_H_
