#include "adapters/qt/qt_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "adapters/qt/control_view.h"

namespace vorek::qt {

void QtClipboard::Clear() { QGuiApplication::clipboard()->clear(); }

void QtClipboard::Put(const std::string& text, const std::string& html) {
  auto* const data = new QMimeData;
  data->setText(ToQt(text));
  if (!html.empty()) data->setHtml(ToQt(html));
  QGuiApplication::clipboard()->setMimeData(data);
}

}  // namespace vorek::qt
