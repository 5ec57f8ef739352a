// TsModelView: the window's view of the model in 3-D, drawn through the drawing module
// (shell/drawing/): boxes solid and shaded in depth order with their edges, points, polylines and
// lights with their symbols, the selection (and what an object prompt has picked so far)
// highlighted, hidden objects left out, and every name placed where it overlaps no other.
//
// It starts isometric and fits the visible objects when it first shows a document, on a standard
// view and on ZoomToFit; otherwise it keeps its camera while the model changes, so that an object
// that moves is seen to move: when an object it shows stands elsewhere than when it was last
// drawn (a restore, an undo, a move, from any front end), it glides there over 0.4 s, its centre
// along a straight line and its turn by quaternion slerp (shell/drawing/glide.h). The model has
// changed at once; the glide only shows it, picking takes the objects where they are drawn, and
// SetAnimate(false) shows every change at once. A preview (SetPreview) draws objects as dashed
// outlines where a restore would put them, and changes nothing. A left drag orbits about the middle
// of the view, a drag with Shift or with the middle or right button pans, the wheel zooms about the
// pointer. A click picks the frontmost object under the pointer; a drag with Ctrl picks the objects
// wholly inside its window; the owner says what a pick does, and what a right click (without a
// drag) does. It reads the active document each time it draws, so an update() after a command shows
// the model as the command left it. Owned by the main window.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QWidget>
#include <functional>
#include <unordered_map>
#include <vector>

#include "host/zefkit/zk_uuid.h"
#include "shell/drawing/camera.h"
#include "shell/drawing/frame.h"
#include "shell/drawing/glide.h"
#include "shell/stance_preview.h"

class CTarsaObject;
class QRubberBand;
class QTimer;

class TsModelView : public QWidget {
 public:
  // Called with the objects the user picked (none when a click hit nothing), and whether they are
  // to be added to what was picked before (Shift or Ctrl held for a click, Shift for a window).
  using Picked = std::function<void(const std::vector<const CTarsaObject*>& objects, bool add)>;

  explicit TsModelView(QWidget* parent = nullptr);
  ~TsModelView() override;

  void SetPicked(Picked picked) { m_picked = std::move(picked); }
  void SetRightClicked(std::function<void()> clicked) { m_right_clicked = std::move(clicked); }

  // Turns to a standard view and fits the visible objects.
  void SetStandardView(TsStandardView view);
  void SetProjection(TsProjection projection);
  const TsCamera& Camera() const { return m_camera; }
  // Fits the visible objects into the view.
  void ZoomToFit();
  // Scales the view by `factor` about `centre` (in the widget's pixels).
  void Zoom(double factor, const QPointF& centre);
  void Pan(const QPointF& by);
  // Turns the model as a drag by `by` pixels does.
  void Orbit(const QPointF& by);

  // Whether changes glide (the default) or show at once; off ends the glides under way.
  void SetAnimate(bool animate);
  bool Animate() const { return m_animate; }
  // Whether an object glides now.
  bool Gliding();
  // The clock glides are timed by, in seconds (the default: the time since the view was made).
  void SetClock(std::function<double()> clock) { m_clock = std::move(clock); }

  // A preview of where a restore would put objects: each object named, when it is shown and its
  // move is not the identity, is also drawn as an outline moved by its move, over everything else.
  // None: no preview.
  void SetPreview(std::vector<TsPreviewMove> moves);
  const std::vector<TsPreviewMove>& Preview() const { return m_preview; }

  // Where the object's points are drawn now, in the widget's pixels: empty when it is not drawn
  // (hidden, deleted, out of sight, no such object, no document).
  std::vector<QPointF> DrawnPoints(const ZK_UUID& id);
  // The frontmost object drawn under `at` (or within a few pixels of its lines or symbol), or
  // null.
  const CTarsaObject* ObjectAt(const QPointF& at);
  // The drawn objects whose points are all inside `window`, in the document's order.
  std::vector<const CTarsaObject*> ObjectsInside(const QRectF& window);
  // The frame as the view draws the model now.
  const TsFrame& Frame();
  // The scene object each of the frame's objects draws: its document object, or null for none.
  const std::vector<const CTarsaObject*>& Sources() const { return m_sources; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  // Draws the active document's scene into the frame, fitting the view first when it needs to.
  const TsFrame& Draw();
  void Fit(const std::vector<TsSceneObject>& scene);

  // Each moving object's glide, and where each object shown was when last drawn, for the
  // document drawn last.
  void Glide(double now);
  struct Moving {
    TsGlide glide;
    double start = 0;
  };
  std::unordered_map<ZK_UUID, Moving, ZK_UuidHash> m_glides;
  std::unordered_map<ZK_UUID, std::vector<TsVec3>, ZK_UuidHash> m_seen;
  unsigned int m_seen_document = 0;
  bool m_animate = true;
  std::function<double()> m_clock;
  QTimer* m_tick = nullptr;  // redraws while objects glide

  std::vector<TsPreviewMove> m_preview;

  TsCamera m_camera;
  TsDrawing m_drawing;
  std::vector<TsSceneObject> m_scene;
  std::vector<const CTarsaObject*> m_sources;
  unsigned int m_fitted_document = 0;
  bool m_fitted_to_something = false;
  bool m_interacting = false;  // a drag turns or moves the view: drawn quickly
  Picked m_picked;
  std::function<void()> m_right_clicked;
  // The drag in progress: its button, its modifiers at the press, where it started and was
  // last, and whether it went far enough to be a drag.
  Qt::MouseButton m_drag = Qt::NoButton;
  Qt::KeyboardModifiers m_drag_modifiers;
  QPointF m_drag_start;
  QPointF m_drag_last;
  bool m_dragged = false;
  QRubberBand* m_band = nullptr;
};
