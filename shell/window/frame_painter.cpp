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

  // `edged` false: the primitive's faces are painted without their edges.
  void Set(const TsPrimitive& p, bool edged) {
    const TsColor stroke = edged ? p.stroke : TsColor{0, 0, 0, 0};
    if (!m_set || stroke != m_stroke || p.width != m_width || p.dashed != m_dashed) {
      QPen pen(Colour(stroke), p.width);
      pen.setJoinStyle(Qt::RoundJoin);
      pen.setCapStyle(Qt::RoundCap);
      if (p.dashed) pen.setDashPattern({5 / p.width, 3 / p.width});
      if (stroke.a == 0) pen = QPen(Qt::NoPen);
      m_painter.setPen(pen);
      m_stroke = stroke;
      m_width = p.width;
      m_dashed = p.dashed;
    }
    const bool filled = p.kind == TsPrimitiveKind::polygon || p.kind == TsPrimitiveKind::dot;
    const TsColor fill = filled ? p.fill : TsColor{0, 0, 0, 0};
    if (!m_set || fill != m_fill) {
      m_painter.setBrush(BrushOf(fill));
      m_fill = fill;
    }
    m_set = true;
  }

 private:
  // The brushes of the last few colours: faces alike in a frame share a handful of shades.
  const QBrush& BrushOf(const TsColor& colour) {
    for (const auto& kept : m_brushes) {
      if (kept.first == colour) return kept.second;
    }
    if (m_brushes.size() >= 16) m_brushes.erase(m_brushes.begin());
    m_brushes.emplace_back(colour, colour.a == 0 ? QBrush(Qt::NoBrush) : QBrush(Colour(colour)));
    return m_brushes.back().second;
  }
  std::vector<std::pair<TsColor, QBrush>> m_brushes;

  QPainter& m_painter;
  bool m_set = false;
  TsColor m_stroke, m_fill;
  float m_width = 0;
  bool m_dashed = false;
};

}  // namespace

bool TsPaintsEdges(const TsFrame& frame, const TsPrimitive& primitive, bool finely) {
  if (finely || primitive.kind != TsPrimitiveKind::polygon) return true;
  const TsRect& bounds = frame.objects[primitive.object].bounds;
  return bounds.Width() >= kTsQuickEdgePixels || bounds.Height() >= kTsQuickEdgePixels;
}

void TsPaintFrame(QPainter& painter, const TsFrame& frame, const QFont& font, bool finely) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, finely);
  Style style(painter);
  std::vector<QPointF> points;
  for (const TsPrimitive& p : frame.primitives) {
    style.Set(p, TsPaintsEdges(frame, p, finely));
    points.resize(p.count);
    for (std::uint32_t i = 0; i < p.count; ++i) {
      points[i] = QPointF(frame.points[p.first + i].x, frame.points[p.first + i].y);
    }
    switch (p.kind) {
      case TsPrimitiveKind::polygon:
        painter.drawConvexPolygon(points.data(), static_cast<int>(points.size()));
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
