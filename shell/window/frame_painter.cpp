#include "shell/window/frame_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPen>
#include <vector>

namespace {

QColor Colour(const TsColor& c) { return QColor(c.r, c.g, c.b, c.a); }

// The pen and brush of the primitive painted last, so that a run of faces alike sets them once.
class Style {
 public:
  explicit Style(QPainter& painter) : m_painter(painter) {}

  void Set(const TsPrimitive& p) {
    if (!m_set || p.stroke != m_stroke || p.width != m_width || p.dashed != m_dashed) {
      QPen pen(Colour(p.stroke), p.width);
      pen.setJoinStyle(Qt::RoundJoin);
      pen.setCapStyle(Qt::RoundCap);
      if (p.dashed) pen.setDashPattern({5 / p.width, 3 / p.width});
      if (p.stroke.a == 0) pen = QPen(Qt::NoPen);
      m_painter.setPen(pen);
      m_stroke = p.stroke;
      m_width = p.width;
      m_dashed = p.dashed;
    }
    const bool filled = p.kind == TsPrimitiveKind::polygon || p.kind == TsPrimitiveKind::dot;
    const TsColor fill = filled ? p.fill : TsColor{0, 0, 0, 0};
    if (!m_set || fill != m_fill) {
      if (fill.a == 0) {
        m_painter.setBrush(Qt::NoBrush);
      } else {
        m_painter.setBrush(Colour(fill));
      }
      m_fill = fill;
    }
    m_set = true;
  }

 private:
  QPainter& m_painter;
  bool m_set = false;
  TsColor m_stroke, m_fill;
  float m_width = 0;
  bool m_dashed = false;
};

}  // namespace

void TsPaintFrame(QPainter& painter, const TsFrame& frame, const QFont& font, bool antialiased) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, antialiased);
  Style style(painter);
  std::vector<QPointF> points;
  for (const TsPrimitive& p : frame.primitives) {
    style.Set(p);
    points.resize(p.count);
    for (std::uint32_t i = 0; i < p.count; ++i) {
      points[i] = QPointF(frame.points[p.first + i].x, frame.points[p.first + i].y);
    }
    switch (p.kind) {
      case TsPrimitiveKind::polygon:
        painter.drawPolygon(points.data(), static_cast<int>(points.size()));
        break;
      case TsPrimitiveKind::polyline:
        painter.drawPolyline(points.data(), static_cast<int>(points.size()));
        break;
      case TsPrimitiveKind::segments:
        painter.drawLines(points.data(), static_cast<int>(points.size() / 2));
        break;
      case TsPrimitiveKind::dot:
        painter.drawEllipse(points[0], p.radius, p.radius);
        break;
    }
  }
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(font);
  for (const TsLabel& label : frame.labels) {
    if (label.leader) {
      painter.setPen(QPen(Colour(kTsLeader), 1));
      painter.setBrush(Colour(kTsLeader));
      painter.drawLine(QPointF(label.leader_from.x, label.leader_from.y),
                       QPointF(label.leader_to.x, label.leader_to.y));
      painter.drawEllipse(QPointF(label.leader_to.x, label.leader_to.y), 2, 2);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(Colour(kTsLabelBackground));
    painter.drawRoundedRect(
        QRectF(label.box.left, label.box.top, label.box.Width(), label.box.Height()), 3, 3);
    painter.setPen(Colour(kTsLabelText));
    painter.drawText(QPointF(label.baseline.x, label.baseline.y),
                     QString::fromStdString(label.text));
  }
  painter.restore();
}

TsDrawOptions TsTextOptions(const QFont& font) {
  const QFontMetricsF metrics(font);
  TsDrawOptions options;
  options.text_width = [metrics](const std::string& text) {
    return metrics.horizontalAdvance(QString::fromStdString(text));
  };
  options.text_height = metrics.height();
  options.text_ascent = metrics.ascent();
  return options;
}
