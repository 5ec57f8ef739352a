#include "shell/window/svg_icon.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>

#include "host/platform/resources.h"

namespace {

// Whether the text is a whole XML document whose root is <svg>: the renderer draws what it can of
// a broken one, which an icon must not show.
bool IsSvgDocument(const QByteArray& text) {
  QXmlStreamReader xml(text);
  if (!xml.readNextStartElement() || xml.name() != QLatin1String("svg")) return false;
  while (!xml.atEnd()) xml.readNext();
  return !xml.hasError();
}

}  // namespace

QPixmap TsPaintSvg(const char* svg, int size) {
  if (svg == nullptr || size <= 0) return QPixmap();
  const QByteArray text(svg);
  if (!IsSvgDocument(text)) return QPixmap();
  QSvgRenderer renderer(text);
  if (!renderer.isValid()) return QPixmap();
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  renderer.render(&painter, QRectF(0, 0, size, size));
  painter.end();
  return pixmap;
}

QIcon TsIconOf(HICON icon) {
  TsIconInfo info;
  if (!TsGetIconInfo(icon, &info)) return QIcon();
  const QPixmap pixmap = TsPaintSvg(info.svg, info.size);
  return pixmap.isNull() ? QIcon() : QIcon(pixmap);
}
