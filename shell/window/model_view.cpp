#include "shell/window/model_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRubberBand>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "shell/object_listing.h"
#include "shell/top_view_picture.h"

namespace {

constexpr double kMargin = 40;     // room for names at the edges
constexpr double kPickPixels = 5;  // how near a click must come to an object's lines
constexpr double kDragPixels = 4;  // how far the pointer moves before a click becomes a drag

// Selected objects, and those an object prompt has picked so far, stand out.
QPen PenFor(const CTarsaObject& object) {
  const std::vector<ZK_UUID>& picked = CTarsaStandIn::CommandLine().Question().picked;
  if (object.IsSelected() ||
      std::find(picked.begin(), picked.end(), object.ModelObjectId()) != picked.end()) {
    return QPen(QColor(0xe8, 0x70, 0x0a), 3);
  }
  if (object.ObjectState() == CTarsaObject::locked_object) return QPen(QColor(0x88, 0x88, 0x88), 1);
  return QPen(QColor(0x1f, 0x3a, 0x5f), 1.5);
}

// The lines an object is drawn with, between its drawn points: a box's edges, a polyline's
// segments; none for a single point.
std::vector<std::pair<int, int>> Segments(const CTarsaObject& object, size_t points) {
  std::vector<std::pair<int, int>> segments;
  if (object.ObjectType() == ZK_Box::kObjectType && points == 8) {
    for (const auto& edge : kTsBoxEdges) segments.emplace_back(edge[0], edge[1]);
  } else {
    for (size_t i = 1; i < points; ++i) segments.emplace_back(int(i) - 1, int(i));
  }
  return segments;
}

double DistanceToSegment(const QPointF& p, const QPointF& a, const QPointF& b) {
  const QPointF ab = b - a;
  const double length2 = QPointF::dotProduct(ab, ab);
  const double t =
      length2 > 0 ? std::clamp(QPointF::dotProduct(p - a, ab) / length2, 0.0, 1.0) : 0.0;
  const QPointF d = p - (a + t * ab);
  return std::hypot(d.x(), d.y());
}

}  // namespace

TsModelView::TsModelView(QWidget* parent) : QWidget(parent) {
  setMinimumSize(320, 240);
  setAutoFillBackground(true);
  QPalette white = palette();
  white.setColor(QPalette::Window, Qt::white);
  setPalette(white);
  m_band = new QRubberBand(QRubberBand::Rectangle, this);
}

void TsModelView::SetDirection(Direction direction) {
  m_direction = direction;
  ZoomToFit();
}

void TsModelView::ZoomToFit() {
  Fit(Shown());
  update();
}

void TsModelView::Zoom(double factor, const QPointF& centre) {
  if (!(factor > 0)) return;
  m_scale *= factor;
  m_pixel_origin = centre + (m_pixel_origin - centre) * factor;
  update();
}

void TsModelView::Pan(const QPointF& by) {
  m_pixel_origin += by;
  update();
}

std::vector<const CTarsaObject*> TsModelView::Shown() const {
  std::vector<const CTarsaObject*> shown;
  CTarsaDoc* doc = CTarsaStandIn::CommandLine().Document();
  if (doc == nullptr) return shown;
  for (const CTarsaObject* object : TsEveryObject(*doc)) {
    if (object->ObjectState() != CTarsaObject::hidden_object) shown.push_back(object);
  }
  return shown;
}

QPointF TsModelView::At(double x, double y, double z) const {
  const QPointF model = m_direction == Direction::top     ? QPointF(x, y)
                        : m_direction == Direction::front ? QPointF(x, z)
                                                          : QPointF(y, z);
  const QPointF d = (model - m_model_origin) * m_scale;
  return m_pixel_origin + QPointF(d.x(), -d.y());  // the view's second axis points up
}

std::vector<QPointF> TsModelView::Drawn(const CTarsaObject& object) const {
  std::vector<QPointF> drawn;
  for (const ZK_3dPoint& p : TsTopViewPoints(object)) drawn.push_back(At(p.x, p.y, p.z));
  return drawn;
}

void TsModelView::Fit(const std::vector<const CTarsaObject*>& shown) {
  CTarsaDoc* doc = CTarsaStandIn::CommandLine().Document();
  m_fitted_document = doc ? doc->RuntimeSerialNumber() : 0;
  // The extent in the view's axes, taken from the points as drawn at scale 1 about 0, 0.
  m_scale = 1;
  m_model_origin = QPointF();
  m_pixel_origin = QPointF();
  double left = 0, top = 0, right = 0, bottom = 0;
  m_fitted_to_something = false;
  for (const CTarsaObject* object : shown) {
    for (const QPointF& p : Drawn(*object)) {
      const bool first = !m_fitted_to_something;
      left = first ? p.x() : std::min(left, p.x());
      right = first ? p.x() : std::max(right, p.x());
      top = first ? p.y() : std::min(top, p.y());
      bottom = first ? p.y() : std::max(bottom, p.y());
      m_fitted_to_something = true;
    }
  }
  const QRectF extent(QPointF(left, top), QPointF(right, bottom));
  const double room_x = std::max(width() - 2 * kMargin, 1.0);
  const double room_y = std::max(height() - 2 * kMargin, 1.0);
  const double scale = std::min(extent.width() > 1e-9 ? room_x / extent.width() : 1e9,
                                extent.height() > 1e-9 ? room_y / extent.height() : 1e9);
  m_scale = scale >= 1e9 ? 1 : scale;
  // The extent's centre (a drawn point at scale 1: y is flipped) goes to the widget's centre.
  m_model_origin = QPointF(extent.center().x(), -extent.center().y());
  m_pixel_origin = QPointF(width() / 2.0, height() / 2.0);
}

void TsModelView::FitIfNeeded(const std::vector<const CTarsaObject*>& shown) {
  CTarsaDoc* doc = CTarsaStandIn::CommandLine().Document();
  const unsigned int serial = doc ? doc->RuntimeSerialNumber() : 0;
  if (serial != m_fitted_document || !m_fitted_to_something) Fit(shown);
}

std::vector<const CTarsaObject*> TsModelView::Visible() {
  const std::vector<const CTarsaObject*> shown = Shown();
  FitIfNeeded(shown);
  return shown;
}

std::vector<QPointF> TsModelView::DrawnPoints(const ZK_UUID& id) {
  for (const CTarsaObject* object : Visible()) {
    if (object->ModelObjectId() == id) return Drawn(*object);
  }
  return {};
}

const CTarsaObject* TsModelView::ObjectAt(const QPointF& at) {
  const CTarsaObject* nearest = nullptr;
  double best = kPickPixels;
  for (const CTarsaObject* object : Visible()) {
    const std::vector<QPointF> p = Drawn(*object);
    double distance = p.empty() ? 1e300 : DistanceToSegment(at, p[0], p[0]);
    for (const auto& segment : Segments(*object, p.size())) {
      distance = std::min(distance, DistanceToSegment(at, p[segment.first], p[segment.second]));
    }
    if (distance <= best) {
      best = distance;
      nearest = object;
    }
  }
  return nearest;
}

std::vector<const CTarsaObject*> TsModelView::ObjectsInside(const QRectF& window) {
  std::vector<const CTarsaObject*> inside;
  for (const CTarsaObject* object : Visible()) {
    const std::vector<QPointF> p = Drawn(*object);
    if (!p.empty() && std::all_of(p.begin(), p.end(),
                                  [&window](const QPointF& q) { return window.contains(q); })) {
      inside.push_back(object);
    }
  }
  return inside;
}

void TsModelView::paintEvent(QPaintEvent*) {
  const std::vector<const CTarsaObject*> shown = Visible();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  for (const CTarsaObject* object : shown) {
    const std::vector<QPointF> p = Drawn(*object);
    if (p.empty()) continue;
    painter.setPen(PenFor(*object));
    if (const ZK_Light* light = ZK_Light::Cast(object->Geometry())) {
      const ZK_3dVector& d = light->m_direction;
      const QPointF ray = At(d.x, d.y, d.z) - At(0, 0, 0);
      const double length = std::max(std::hypot(ray.x(), ray.y()), 1e-9);
      painter.drawLine(p[0], p[0] + ray / length * 30);
      painter.setBrush(QColor(0xff, 0xd8, 0x4a));
      painter.drawEllipse(p[0], 8, 8);
    } else if (p.size() == 1) {
      painter.setBrush(painter.pen().color());
      painter.drawEllipse(p[0], 3, 3);
    } else {
      QPainterPath path;
      for (const auto& segment : Segments(*object, p.size())) {
        path.moveTo(p[segment.first]);
        path.lineTo(p[segment.second]);
      }
      painter.drawPath(path);
    }
    painter.setBrush(Qt::NoBrush);
    const ZK_wString& name = object->Attributes().m_name;
    if (name.IsEmpty()) continue;
    QPointF corner = p[0];
    for (const QPointF& q : p)
      corner = QPointF(std::min(corner.x(), q.x()), std::min(corner.y(), q.y()));
    painter.setPen(QColor(0x22, 0x22, 0x22));
    painter.drawText(corner + QPointF(0, -6), QString::fromStdWString(name.Text()));
  }
}

void TsModelView::mousePressEvent(QMouseEvent* event) {
  if (m_drag != Qt::NoButton) return;
  m_drag = event->button();
  m_drag_start = m_drag_last = event->position();
}

void TsModelView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  if (m_drag == Qt::MiddleButton || m_drag == Qt::RightButton) {
    Pan(at - m_drag_last);
  } else if (m_drag == Qt::LeftButton &&
             (m_band->isVisible() || QLineF(m_drag_start, at).length() > kDragPixels)) {
    m_band->setGeometry(QRectF(m_drag_start, at).normalized().toRect());
    m_band->show();
  }
  m_drag_last = at;
}

void TsModelView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != m_drag) return;
  m_drag = Qt::NoButton;
  if (event->button() == Qt::RightButton && m_right_clicked &&
      QLineF(m_drag_start, event->position()).length() <= kDragPixels) {
    m_right_clicked();
    return;
  }
  if (event->button() != Qt::LeftButton || !m_picked) return;
  const bool add = (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) != 0;
  if (m_band->isVisible()) {
    m_band->hide();
    m_picked(ObjectsInside(QRectF(m_drag_start, event->position()).normalized()), add);
    return;
  }
  const CTarsaObject* object = ObjectAt(event->position());
  m_picked(object ? std::vector<const CTarsaObject*>{object} : std::vector<const CTarsaObject*>{},
           add);
}

void TsModelView::wheelEvent(QWheelEvent* event) {
  Zoom(std::pow(1.2, event->angleDelta().y() / 120.0), event->position());
}
