#include "adapters/qt/icons.h"

#include <QByteArray>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace vorek::qt {
namespace {

const QHash<QString, QByteArray>& Shapes() {
  static const QHash<QString, QByteArray> shapes = {
      {"run", "<path d='M7 5l11 7-11 7z'/>"},
      {"parameters", "<path d='M4 6h16M7 12h10M10 18h4'/>"},
      {"find", "<circle cx='11' cy='11' r='6'/><path d='M20 20l-4.5-4.5'/>"},
      {"filter", "<path d='M4 5h16l-6 8v6l-4-2v-4z'/>"},
      {"sum", "<path d='M18 5H7l6 7-6 7h11'/>"},
      {"chart", "<path d='M5 20V10M12 20V4M19 20v-7'/>"},
      {"bars", "<path d='M4 20h16M6 20V11h3v9M13 20V5h3v15'/>"},
      {"stacked", "<path d='M4 20h16M6 20V8h4v12M6 14h4M14 20V4h4v16M14 11h4'/>"},
      {"lines", "<path d='M4 18l5-6 5 3 6-9M4 21h16'/>"},
      {"shares", "<circle cx='12' cy='12' r='8'/><path d='M12 4v8l6.5 4.7'/>"},
      {"turn", "<path d='M7 4v13M4 7l3-3 3 3M20 17H8M17 14l3 3-3 3'/>"},
      {"save", "<path d='M5 4h11l3 3v13H5zM8 4v5h7V4M8 20v-6h8v6'/>"},
      {"vector", "<path d='M6 18C6 10 18 14 18 6M4 16h4v4H4zM16 4h4v4h-4z'/>"},
      {"workbook", "<path d='M5 4h14v16H5zM5 9h14M5 14.5h14M11 9v11'/>"},
      {"export", "<path d='M12 4v11M8 11l4 4 4-4M5 20h14'/>"},
      {"print", "<path d='M7 9V4h10v5M7 17H5v-7h14v7h-2M8 14h8v6H8z'/>"},
      {"back", "<path d='M5 12h14M13 6l6 6-6 6'/>"},
      {"menu", "<path d='M4 7h16M4 12h16M4 17h16'/>"},
      {"close", "<path d='M6 6l12 12M18 6L6 18'/>"},
      {"next", "<path d='M6 9l6 6 6-6'/>"},
      {"previous", "<path d='M6 15l6-6 6 6'/>"},
      {"columns", "<path d='M4 5h16v14H4zM9.3 5v14M14.7 5v14'/>"},
      {"star", "<path d='M12 4l2.5 5.2 5.5.7-4 3.9 1 5.6-5-2.7-5 2.7 1-5.6-4-3.9 5.5-.7z'/>"},
      {"star-on",
       "<path fill='currentColor' d='M12 4l2.5 5.2 5.5.7-4 3.9 1 5.6-5-2.7-5 2.7 1-5.6-4-3.9 "
       "5.5-.7z'/>"},
      {"copy", "<path d='M9 9h11v11H9zM15 9V4H4v11h5'/>"},
      {"help",
       "<circle cx='12' cy='12' r='8'/><path d='M9.5 9.5a2.5 2.5 0 1 1 3.5 2.3c-.7.3-1 "
       ".8-1 1.7M12 16.5v.2'/>"},
      {"refresh", "<path d='M19 12a7 7 0 1 1-2-5M19 4v4h-4'/>"},
      {"down", "<path d='M7 10l5 5 5-5'/>"},
  };
  return shapes;
}

// The drawing in a colour: the format's own word for it isn't known to the toolkit's renderer.
QByteArray Drawing(const QByteArray& shape, const QColor& color) {
  QByteArray drawing =
      "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24' fill='none' "
      "stroke='currentColor' stroke-width='1.6' stroke-linecap='round' stroke-linejoin='round'>" +
      shape + "</svg>";
  return drawing.replace("currentColor", color.name().toLatin1());
}

// Draws the shape anew in each size, so that it is sharp on every screen.
class LineIcon : public QIconEngine {
 public:
  LineIcon(QByteArray shape, const QColor& color, const QColor& disabled)
      : shape_(std::move(shape)), color_(color), disabled_(disabled) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    QSvgRenderer(Drawing(shape_, mode == QIcon::Disabled ? disabled_ : color_))
        .render(painter, QRectF(rect));
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return picture;
  }
  QIconEngine* clone() const override { return new LineIcon(*this); }

 private:
  QByteArray shape_;
  QColor color_;
  QColor disabled_;
};

}  // namespace

QIcon IconOf(const QString& name, const QColor& color, const QColor& disabled) {
  const auto shape = Shapes().constFind(name);
  return shape == Shapes().constEnd() ? QIcon() : QIcon(new LineIcon(*shape, color, disabled));
}

}  // namespace vorek::qt
