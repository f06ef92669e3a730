#ifndef VOREK_ADAPTERS_QT_TRANSLATIONS_H_
#define VOREK_ADAPTERS_QT_TRANSLATIONS_H_

#include <QTranslator>

namespace vorek::qt {

// The texts of Qt itself that come with our windows, in Persian: menus of fields and scroll bars,
// standard buttons, Qt's own file dialog. What it doesn't hold is left to other translators.
class PersianTexts : public QTranslator {
 public:
  using QTranslator::QTranslator;
  QString translate(const char* context, const char* source, const char* disambiguation,
                    int n) const override;
  bool isEmpty() const override { return false; }
};

// Installs them for the application, once; a translator that is installed later comes first.
void InstallPersianTexts();

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_TRANSLATIONS_H_
