#include "shell/window/top_view_widget.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <vector>

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "shell/object_listing.h"
#include "shell/session.h"
#include "shell/top_view_picture.h"

namespace {

constexpr double kMargin = 40;  // room for names at the edges

struct Frame {
  double min_x = 0, max_y = 0, scale = 1, left = 0, top = 0;
  QPointF At(const ZK_3dPoint& p) const {
    return {left + (p.x - min_x) * scale, top + (max_y - p.y) * scale};  // y points up
  }
};

Frame FrameFor(const std::vector<const CTarsaObject*>& objects, const QSizeF& size) {
  double min_x = 0, min_y = 0, max_x = 0, max_y = 0;
  bool any = false;
  for (const CTarsaObject* object : objects) {
    for (const ZK_3dPoint& p : TsTopViewPoints(*object)) {
      min_x = any ? std::min(min_x, p.x) : p.x;
      min_y = any ? std::min(min_y, p.y) : p.y;
      max_x = any ? std::max(max_x, p.x) : p.x;
      max_y = any ? std::max(max_y, p.y) : p.y;
      any = true;
    }
  }
  const double room_x = std::max(size.width() - 2 * kMargin, 1.0);
  const double room_y = std::max(size.height() - 2 * kMargin, 1.0);
  const double width = max_x - min_x, height = max_y - min_y;
  Frame frame;
  frame.min_x = min_x;
  frame.max_y = max_y;
  frame.scale =
      std::min(width > 1e-9 ? room_x / width : 1e9, height > 1e-9 ? room_y / height : 1e9);
  if (frame.scale >= 1e9) frame.scale = 1;
  frame.left = kMargin + (room_x - width * frame.scale) / 2;
  frame.top = kMargin + (room_y - height * frame.scale) / 2;
  return frame;
}

QPen PenFor(const CTarsaObject& object) {
  if (object.IsSelected()) return QPen(QColor(0xe8, 0x70, 0x0a), 3);
  if (object.ObjectState() == CTarsaObject::locked_object) return QPen(QColor(0x88, 0x88, 0x88), 1);
  return QPen(QColor(0x1f, 0x3a, 0x5f), 1.5);
}

void DrawShape(QPainter& painter, const Frame& f, const CTarsaObject& object) {
  const std::vector<ZK_3dPoint> p = TsTopViewPoints(object);
  if (p.empty()) return;
  if (const ZK_Light* light = ZK_Light::Cast(object.Geometry())) {
    const ZK_3dVector& d = light->m_direction;
    const double length = std::max(std::hypot(d.x, d.y), 1e-9);
    const QPointF centre = f.At(p[0]);
    painter.drawLine(centre, centre + QPointF(d.x / length * 30, -d.y / length * 30));
    painter.setBrush(QColor(0xff, 0xd8, 0x4a));
    painter.drawEllipse(centre, 8, 8);
    painter.setBrush(Qt::NoBrush);
    return;
  }
  if (p.size() == 1) {
    painter.setBrush(painter.pen().color());
    painter.drawEllipse(f.At(p[0]), 3, 3);
    painter.setBrush(Qt::NoBrush);
    return;
  }
  QPainterPath path;
  if (object.ObjectType() == ZK_Box::kObjectType && p.size() == 8) {
    for (const auto& edge : kTsBoxEdges) {
      path.moveTo(f.At(p[edge[0]]));
      path.lineTo(f.At(p[edge[1]]));
    }
  } else {
    path.moveTo(f.At(p[0]));
    for (size_t i = 1; i < p.size(); ++i) path.lineTo(f.At(p[i]));
  }
  painter.drawPath(path);
}

void DrawName(QPainter& painter, const Frame& f, const CTarsaObject& object) {
  const ZK_wString& name = object.Attributes().m_name;
  const std::vector<ZK_3dPoint> p = TsTopViewPoints(object);
  if (name.IsEmpty() || p.empty()) return;
  ZK_3dPoint corner = p[0];
  for (const ZK_3dPoint& point : p) {
    corner.x = std::min(corner.x, point.x);
    corner.y = std::max(corner.y, point.y);
  }
  painter.setPen(QColor(0x22, 0x22, 0x22));
  painter.drawText(f.At(corner) + QPointF(0, -6), QString::fromStdWString(name.Text()));
}

}  // namespace

TsTopViewWidget::TsTopViewWidget(QWidget* parent) : QWidget(parent) {
  setMinimumSize(320, 240);
  setAutoFillBackground(true);
  QPalette white = palette();
  white.setColor(QPalette::Window, Qt::white);
  setPalette(white);
}

void TsTopViewWidget::paintEvent(QPaintEvent*) {
  CTarsaDoc* doc = TarsaSession().Document();
  if (doc == nullptr) return;
  std::vector<const CTarsaObject*> shown;
  for (const CTarsaObject* object : TsEveryObject(*doc)) {
    if (object->ObjectState() != CTarsaObject::hidden_object) shown.push_back(object);
  }
  const Frame frame = FrameFor(shown, size());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  for (const CTarsaObject* object : shown) {
    painter.setPen(PenFor(*object));
    DrawShape(painter, frame, *object);
    DrawName(painter, frame, *object);
  }
}
