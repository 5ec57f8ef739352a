#include "shell/window/svg_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <cctype>
#include <cmath>
#include <cstdlib>

#include "host/platform/resources.h"

namespace {

// The commands and numbers of a path's data, one at a time.
class PathData {
 public:
  explicit PathData(const QString& data) : m_text(data.toStdString()) {}

  // The next command letter, or 0 when a number (a repeated command) or the end follows.
  char Command() {
    Skip();
    if (m_at < m_text.size() && std::isalpha(static_cast<unsigned char>(m_text[m_at]))) {
      return m_text[m_at++];
    }
    return 0;
  }
  bool AtEnd() {
    Skip();
    return m_at >= m_text.size();
  }
  // False, with the data at its end, when no number follows.
  bool Number(double& value) {
    Skip();
    const char* start = m_text.c_str() + m_at;
    char* end = nullptr;
    value = std::strtod(start, &end);
    if (end == start) {
      m_at = m_text.size();
      return false;
    }
    m_at += static_cast<size_t>(end - start);
    return true;
  }

 private:
  void Skip() {
    while (m_at < m_text.size() &&
           (std::isspace(static_cast<unsigned char>(m_text[m_at])) || m_text[m_at] == ',')) {
      ++m_at;
    }
  }

  std::string m_text;
  size_t m_at = 0;
};

double Angle(double ux, double uy, double vx, double vy) {
  return std::atan2(ux * vy - uy * vx, ux * vx + uy * vy) * 180 / M_PI;
}

// An elliptical arc from the path's current point to `to`, without rotation of its axes, as the
// drawing's format defines it by its end points and flags.
void ArcTo(QPainterPath& path, double rx, double ry, bool large, bool sweep, QPointF to) {
  const QPointF from = path.currentPosition();
  rx = std::fabs(rx);
  ry = std::fabs(ry);
  if (rx < 1e-9 || ry < 1e-9 || from == to) {
    path.lineTo(to);
    return;
  }
  const double x1 = (from.x() - to.x()) / 2, y1 = (from.y() - to.y()) / 2;
  const double lambda = x1 * x1 / (rx * rx) + y1 * y1 / (ry * ry);
  if (lambda > 1) {
    rx *= std::sqrt(lambda);
    ry *= std::sqrt(lambda);
  }
  const double num = rx * rx * ry * ry - rx * rx * y1 * y1 - ry * ry * x1 * x1;
  const double den = rx * rx * y1 * y1 + ry * ry * x1 * x1;
  const double coef = (large != sweep ? 1 : -1) * std::sqrt(std::max(0.0, num / den));
  const double cx1 = coef * rx * y1 / ry, cy1 = -coef * ry * x1 / rx;
  const QPointF centre(cx1 + (from.x() + to.x()) / 2, cy1 + (from.y() + to.y()) / 2);
  const double ux = (x1 - cx1) / rx, uy = (y1 - cy1) / ry;
  const double start = Angle(1, 0, ux, uy);
  double span = Angle(ux, uy, (-x1 - cx1) / rx, (-y1 - cy1) / ry);
  if (!sweep && span > 0) span -= 360;
  if (sweep && span < 0) span += 360;
  // The painter counts angles counter-clockwise on the screen, the drawing clockwise.
  path.arcTo(QRectF(centre.x() - rx, centre.y() - ry, 2 * rx, 2 * ry), -start, -span);
}

QPainterPath PathOf(const QString& data) {
  QPainterPath path;
  PathData d(data);
  char command = 0;
  QPointF start;
  while (!d.AtEnd()) {
    if (const char next = d.Command()) command = next;
    const bool relative = std::islower(static_cast<unsigned char>(command)) != 0;
    const QPointF at = relative ? path.currentPosition() : QPointF();
    double v[7];
    const auto numbers = [&d, &v](int count) {
      for (int i = 0; i < count; ++i) {
        if (!d.Number(v[i])) return false;
      }
      return true;
    };
    switch (std::toupper(static_cast<unsigned char>(command))) {
      case 'M':
        if (!numbers(2)) return path;
        path.moveTo(at + QPointF(v[0], v[1]));
        start = path.currentPosition();
        command = relative ? 'l' : 'L';  // further pairs draw lines
        break;
      case 'L':
        if (!numbers(2)) return path;
        path.lineTo(at + QPointF(v[0], v[1]));
        break;
      case 'H':
        if (!numbers(1)) return path;
        path.lineTo(at.x() + v[0], path.currentPosition().y());
        break;
      case 'V':
        if (!numbers(1)) return path;
        path.lineTo(path.currentPosition().x(), at.y() + v[0]);
        break;
      case 'A':
        if (!numbers(7)) return path;
        ArcTo(path, v[0], v[1], v[3] != 0, v[4] != 0, at + QPointF(v[5], v[6]));
        break;
      case 'Z':
        path.closeSubpath();
        path.moveTo(start);
        break;
      default:
        return path;  // a command this painter does not know ends the path
    }
  }
  return path;
}

double Number(const QXmlStreamAttributes& attributes, const char* name, double otherwise = 0) {
  bool ok = false;
  const double value = attributes.value(QLatin1String(name)).toDouble(&ok);
  return ok ? value : otherwise;
}

// A paint attribute: no paint for "none" or a colour the painter cannot read.
QColor Paint(const QXmlStreamAttributes& attributes, const char* name, const char* otherwise,
             const char* opacity) {
  const QString text = attributes.hasAttribute(QLatin1String(name))
                           ? attributes.value(QLatin1String(name)).toString()
                           : QString::fromLatin1(otherwise);
  QColor colour(text);
  if (!colour.isValid()) return QColor();
  colour.setAlphaF(static_cast<float>(Number(attributes, opacity, 1)));
  return colour;
}

void Draw(QPainter& painter, const QXmlStreamAttributes& a, const QPainterPath& shape) {
  const QColor fill = Paint(a, "fill", "black", "fill-opacity");
  const QColor stroke = Paint(a, "stroke", "none", "stroke-opacity");
  if (fill.isValid()) painter.fillPath(shape, fill);
  if (!stroke.isValid()) return;
  QPen pen(stroke, Number(a, "stroke-width", 1));
  pen.setCapStyle(a.value(QLatin1String("stroke-linecap")) == QLatin1String("round") ? Qt::RoundCap
                                                                                     : Qt::FlatCap);
  pen.setJoinStyle(a.value(QLatin1String("stroke-linejoin")) == QLatin1String("round")
                       ? Qt::RoundJoin
                       : Qt::MiterJoin);
  const QStringList dashes = a.value(QLatin1String("stroke-dasharray"))
                                 .toString()
                                 .split(QRegularExpression("[ ,]+"), Qt::SkipEmptyParts);
  if (!dashes.isEmpty()) {
    QList<qreal> pattern;
    for (const QString& dash : dashes) pattern.append(dash.toDouble() / pen.widthF());
    if (pattern.size() % 2 == 1) pattern.append(pattern);  // the format repeats an odd list
    pen.setDashPattern(pattern);
  }
  painter.strokePath(shape, pen);
}

void DrawElement(QPainter& painter, const QXmlStreamReader& xml) {
  const QXmlStreamAttributes a = xml.attributes();
  QPainterPath shape;
  if (xml.name() == QLatin1String("rect")) {
    shape.addRect(Number(a, "x"), Number(a, "y"), Number(a, "width"), Number(a, "height"));
  } else if (xml.name() == QLatin1String("circle")) {
    const double r = Number(a, "r");
    shape.addEllipse(QPointF(Number(a, "cx"), Number(a, "cy")), r, r);
  } else if (xml.name() == QLatin1String("path")) {
    shape = PathOf(a.value(QLatin1String("d")).toString());
  } else {
    return;
  }
  Draw(painter, a, shape);
}

}  // namespace

QPixmap TsPaintSvg(const char* svg, int size) {
  if (svg == nullptr || size <= 0) return QPixmap();
  QXmlStreamReader xml{QByteArray(svg)};
  if (!xml.readNextStartElement() || xml.name() != QLatin1String("svg")) return QPixmap();
  const QStringList box = xml.attributes()
                              .value(QLatin1String("viewBox"))
                              .toString()
                              .split(QRegularExpression("[ ,]+"), Qt::SkipEmptyParts);
  const QRectF view = box.size() == 4 ? QRectF(box[0].toDouble(), box[1].toDouble(),
                                               box[2].toDouble(), box[3].toDouble())
                                      : QRectF(0, 0, size, size);
  if (view.width() <= 0 || view.height() <= 0) return QPixmap();
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / view.width(), size / view.height());
  painter.translate(-view.topLeft());
  while (!xml.atEnd()) {
    if (xml.readNext() == QXmlStreamReader::StartElement) DrawElement(painter, xml);
  }
  painter.end();
  return xml.hasError() ? QPixmap() : pixmap;
}

QIcon TsIconOf(HICON icon) {
  TsIconInfo info;
  if (!TsGetIconInfo(icon, &info)) return QIcon();
  const QPixmap pixmap = TsPaintSvg(info.svg, info.size);
  return pixmap.isNull() ? QIcon() : QIcon(pixmap);
}
