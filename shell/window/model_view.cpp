#include "shell/window/model_view.h"

#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPainter>
#include <QRubberBand>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_doc.h"
#include "shell/drawing/picking.h"
#include "shell/model_scene.h"
#include "shell/window/frame_painter.h"

namespace {

constexpr double kMargin = 40;     // room for names at the edges when the view fits
constexpr double kPickPixels = 5;  // how near a click must come to an object's lines
constexpr double kDragPixels = 4;  // how far the pointer moves before a click becomes a drag
// A frame of more primitives than this is drawn without antialiasing while the view turns or
// moves, so that it keeps up with the mouse.
constexpr size_t kQuickPrimitives = 4000;

// The points an object glides through: its own, and for a light the tip of its direction.
std::vector<TsVec3> Pose(const TsSceneObject& object) {
  std::vector<TsVec3> pose = object.points;
  if (object.kind == TsShapeKind::light && !pose.empty()) {
    pose.push_back(pose[0] + Normalized(object.direction));
  }
  return pose;
}

void SetPose(TsSceneObject& object, const std::vector<TsVec3>& pose) {
  if (object.kind == TsShapeKind::light && pose.size() == 2) {
    object.points = {pose[0]};
    object.direction = pose[1] - pose[0];
  } else {
    object.points = pose;
  }
}

}  // namespace

TsModelView::TsModelView(QWidget* parent) : QWidget(parent) {
  auto elapsed = std::make_shared<QElapsedTimer>();
  elapsed->start();
  m_clock = [elapsed] { return elapsed->nsecsElapsed() / 1e9; };
  m_tick = new QTimer(this);
  m_tick->setInterval(15);
  connect(m_tick, &QTimer::timeout, this, [this] { update(); });
  setMinimumSize(320, 240);
  setAutoFillBackground(true);
  QPalette white = palette();
  white.setColor(QPalette::Window, Qt::white);
  setPalette(white);
  setMouseTracking(false);
  m_band = new QRubberBand(QRubberBand::Rectangle, this);
  m_camera.SetStandardView(TsStandardView::iso);
}

TsModelView::~TsModelView() = default;

void TsModelView::SetStandardView(TsStandardView view) {
  m_camera.SetStandardView(view);
  ZoomToFit();
}

void TsModelView::SetProjection(TsProjection projection) {
  m_camera.SetProjection(projection);
  ZoomToFit();
}

void TsModelView::ZoomToFit() {
  Draw();
  Fit(m_scene);
  update();
}

void TsModelView::Zoom(double factor, const QPointF& centre) {
  m_camera.ZoomAt(factor, centre.x(), centre.y());
  update();
}

void TsModelView::Pan(const QPointF& by) {
  m_camera.Pan(by.x(), by.y());
  update();
}

void TsModelView::Orbit(const QPointF& by) {
  m_camera.Orbit(by.x(), by.y());
  update();
}

void TsModelView::SetAnimate(bool animate) {
  m_animate = animate;
  if (animate) return;
  m_glides.clear();
  m_tick->stop();
  update();
}

bool TsModelView::Gliding() {
  Draw();
  return !m_glides.empty();
}

void TsModelView::Glide(double now) {
  CTarsaDoc* doc = CTarsaStandIn::CommandLine().Document();
  const unsigned int serial = doc ? doc->RuntimeSerialNumber() : 0;
  if (serial != m_seen_document) {  // another document: nothing of it was seen before
    m_seen.clear();
    m_glides.clear();
    m_seen_document = serial;
  }
  std::unordered_map<ZK_UUID, std::vector<TsVec3>, ZK_UuidHash> seen;
  std::vector<TsVec3> at;
  for (size_t i = 0; i < m_scene.size(); ++i) {
    const ZK_UUID& id = m_sources[i]->ModelObjectId();
    std::vector<TsVec3> pose = Pose(m_scene[i]);
    const auto known = m_seen.find(id);
    auto moving = m_glides.find(id);
    if (m_animate && known != m_seen.end() && known->second != pose) {
      // It moved since it was last drawn: it glides from where it is drawn now.
      std::vector<TsVec3> from = known->second;
      if (moving != m_glides.end()) {
        moving->second.glide.At((now - moving->second.start) / kTsGlideSeconds, from);
      }
      moving = m_glides.insert_or_assign(id, Moving{TsGlide(from, pose), now}).first;
    }
    if (moving != m_glides.end()) {
      const double t = (now - moving->second.start) / kTsGlideSeconds;
      if (t >= 1) {
        m_glides.erase(moving);
      } else {
        moving->second.glide.At(t, at);
        SetPose(m_scene[i], at);
      }
    }
    seen.emplace(id, std::move(pose));
  }
  // What is no longer shown glides no more.
  for (auto it = m_glides.begin(); it != m_glides.end();) {
    it = seen.count(it->first) ? std::next(it) : m_glides.erase(it);
  }
  m_seen = std::move(seen);
  if (m_glides.empty()) {
    m_tick->stop();
  } else if (!m_tick->isActive()) {
    m_tick->start();
  }
}

void TsModelView::SetPreview(std::vector<TsPreviewMove> moves) {
  const auto same = [](const std::vector<TsPreviewMove>& a, const std::vector<TsPreviewMove>& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
      if (!(a[i].object == b[i].object)) return false;
      for (int k = 0; k < 16; ++k) {
        if (a[i].move(k / 4, k % 4) != b[i].move(k / 4, k % 4)) return false;
      }
    }
    return true;
  };
  if (same(moves, m_preview)) return;
  m_preview = std::move(moves);
  update();
}

void TsModelView::Fit(const std::vector<TsSceneObject>& scene) {
  CTarsaDoc* doc = CTarsaStandIn::CommandLine().Document();
  m_fitted_document = doc ? doc->RuntimeSerialNumber() : 0;
  m_camera.SetViewport(width(), height());
  m_fitted_to_something = m_camera.Fit(TsScenePoints(scene), kMargin);
}

const TsFrame& TsModelView::Draw() {
  m_scene.clear();
  m_sources.clear();
  CTarsaDoc* doc = CTarsaStandIn::CommandLine().Document();
  if (doc != nullptr) {
    TsModelScene scene = TsSceneOf(*doc, CTarsaStandIn::CommandLine().Question().picked);
    m_scene = std::move(scene.objects);
    m_sources = std::move(scene.sources);
  }
  m_camera.SetViewport(width(), height());
  const unsigned int serial = doc ? doc->RuntimeSerialNumber() : 0;
  if (serial != m_fitted_document || !m_fitted_to_something) Fit(m_scene);
  Glide(m_clock());
  // The preview's outlines, of the objects shown, at the places it gives them.
  for (const TsPreviewMove& preview : m_preview) {
    if (preview.move.IsIdentity(1e-12)) continue;  // already where the stance puts it
    const auto shown = std::find_if(m_sources.begin(), m_sources.end(), [&](const CTarsaObject* o) {
      return o != nullptr && o->ModelObjectId() == preview.object;
    });
    TsSceneObject outline;
    if (shown == m_sources.end() || !TsSceneObjectOf(**shown, TsObjectState::outline, outline)) {
      continue;
    }
    for (TsVec3& p : outline.points) {
      const ZK_3dPoint moved = preview.move * ZK_3dPoint{p.x, p.y, p.z};
      p = {moved.x, moved.y, moved.z};
    }
    const ZK_3dVector d =
        preview.move * ZK_3dVector{outline.direction.x, outline.direction.y, outline.direction.z};
    outline.direction = {d.x, d.y, d.z};
    m_scene.push_back(std::move(outline));
    m_sources.push_back(nullptr);
  }
  return m_drawing.Draw(m_scene, m_camera, TsTextOptions(font()));
}

const TsFrame& TsModelView::Frame() { return Draw(); }

std::vector<QPointF> TsModelView::DrawnPoints(const ZK_UUID& id) {
  const TsFrame& frame = Draw();
  for (size_t i = 0; i < m_sources.size(); ++i) {
    if (m_sources[i] == nullptr || !(m_sources[i]->ModelObjectId() == id)) continue;
    const TsDrawnObject& drawn = frame.objects[i];
    if (!drawn.drawn) return {};
    std::vector<QPointF> points;
    for (std::uint32_t k = 0; k < drawn.pixel_count; ++k) {
      const TsPoint2& p = frame.pixels[drawn.first_pixel + k];
      points.emplace_back(p.x, p.y);
    }
    return points;
  }
  return {};
}

const CTarsaObject* TsModelView::ObjectAt(const QPointF& at) {
  const TsFrame& frame = Draw();
  const int picked = TsPickAt(frame, m_scene, {at.x(), at.y()}, kPickPixels);
  return picked < 0 ? nullptr : m_sources[picked];
}

std::vector<const CTarsaObject*> TsModelView::ObjectsInside(const QRectF& window) {
  const TsFrame& frame = Draw();
  std::vector<const CTarsaObject*> inside;
  for (const int i : TsPickInside(frame, m_scene,
                                  {window.left(), window.top(), window.right(), window.bottom()})) {
    if (m_sources[i] != nullptr) inside.push_back(m_sources[i]);
  }
  return inside;
}

void TsModelView::paintEvent(QPaintEvent*) {
  const TsFrame& frame = Draw();
  QPainter painter(this);
  const bool moving = m_interacting || !m_glides.empty();
  TsPaintFrame(painter, frame, font(), !(moving && frame.primitives.size() > kQuickPrimitives));
}

void TsModelView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  m_camera.SetViewport(width(), height());
}

void TsModelView::mousePressEvent(QMouseEvent* event) {
  if (m_drag != Qt::NoButton) return;
  m_drag = event->button();
  m_drag_modifiers = event->modifiers();
  m_drag_start = m_drag_last = event->position();
  m_dragged = false;
}

void TsModelView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  if (m_drag == Qt::NoButton) return;
  if (!m_dragged && QLineF(m_drag_start, at).length() <= kDragPixels) return;
  m_dragged = true;
  const bool window = m_drag == Qt::LeftButton && (m_drag_modifiers & Qt::ControlModifier);
  const bool pan = m_drag == Qt::MiddleButton || m_drag == Qt::RightButton ||
                   (m_drag == Qt::LeftButton && (m_drag_modifiers & Qt::ShiftModifier));
  if (window) {
    m_band->setGeometry(QRectF(m_drag_start, at).normalized().toRect());
    m_band->show();
  } else {
    m_interacting = true;
    if (pan) {
      Pan(at - m_drag_last);
    } else if (m_drag == Qt::LeftButton) {
      Orbit(at - m_drag_last);
    }
  }
  m_drag_last = at;
}

void TsModelView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != m_drag) return;
  m_drag = Qt::NoButton;
  const bool dragged = m_dragged;
  m_dragged = false;
  if (m_interacting) {
    m_interacting = false;
    update();  // drawn finely again
  }
  if (event->button() == Qt::RightButton && m_right_clicked && !dragged) {
    m_right_clicked();
    return;
  }
  if (event->button() != Qt::LeftButton || !m_picked) return;
  if (m_band->isVisible()) {
    m_band->hide();
    m_picked(ObjectsInside(QRectF(m_drag_start, event->position()).normalized()),
             (m_drag_modifiers & Qt::ShiftModifier) != 0);
    return;
  }
  if (dragged) return;  // an orbit or a pan
  const bool add = (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) != 0;
  const CTarsaObject* object = ObjectAt(event->position());
  m_picked(object ? std::vector<const CTarsaObject*>{object} : std::vector<const CTarsaObject*>{},
           add);
}

void TsModelView::wheelEvent(QWheelEvent* event) {
  Zoom(std::pow(1.2, event->angleDelta().y() / 120.0), event->position());
}
