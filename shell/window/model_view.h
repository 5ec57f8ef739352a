// TsModelView: the window's view of the model, looking along one of the model's axes: from the
// top (the default: x to the right, y up), from the front (x to the right, z up) or from the
// right side (y to the right, z up). It draws every object that is not hidden from the same
// points as the SVG top view, with its name: selected objects highlighted, locked ones grey,
// lights as a sun with a ray toward where they shine.
//
// The view keeps its scale and position while the model changes, so that an object that moves
// is seen to move; it fits the visible objects when it first shows a document, when the direction
// changes and on ZoomToFit. The wheel zooms about the pointer; dragging with the middle or right
// button pans. A click picks the object under the pointer, a drag with the left button picks
// the objects wholly inside its window; the owner says what a pick does, and what a right click
// (without a drag) does. It reads the active
// document each time it paints, so an update() after a command shows the model as the command
// left it. Owned by the main window.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QWidget>
#include <functional>
#include <vector>

#include "host/zefkit/zk_uuid.h"

class CTarsaObject;
class QRubberBand;

class TsModelView : public QWidget {
 public:
  enum class Direction { top, front, right };
  // Called with the objects the user picked (none when a click hit nothing), and whether Shift
  // or Ctrl was held to add them to what was picked before.
  using Picked = std::function<void(const std::vector<const CTarsaObject*>& objects, bool add)>;

  explicit TsModelView(QWidget* parent = nullptr);

  void SetPicked(Picked picked) { m_picked = std::move(picked); }
  void SetRightClicked(std::function<void()> clicked) { m_right_clicked = std::move(clicked); }
  void SetDirection(Direction direction);
  Direction ViewDirection() const { return m_direction; }
  // Fits the visible objects into the view.
  void ZoomToFit();
  // Scales the view by `factor` about `centre` (in the widget's pixels).
  void Zoom(double factor, const QPointF& centre);
  void Pan(const QPointF& by);

  // Where the object's points are drawn now, in the widget's pixels: empty when it is not drawn
  // (hidden, deleted, no such object, no document).
  std::vector<QPointF> DrawnPoints(const ZK_UUID& id);
  // The drawn object nearest to `at` within a few pixels of its lines or points, or null.
  const CTarsaObject* ObjectAt(const QPointF& at);
  // The drawn objects whose points are all inside `window`, in the document's order.
  std::vector<const CTarsaObject*> ObjectsInside(const QRectF& window);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  // The objects drawn: every visible object of the active document.
  std::vector<const CTarsaObject*> Shown() const;
  // The objects drawn, with the view fitted first when it needs to be.
  std::vector<const CTarsaObject*> Visible();
  // Fits the frame when it has not been fitted to the active document, or fitted to nothing.
  void FitIfNeeded(const std::vector<const CTarsaObject*>& shown);
  void Fit(const std::vector<const CTarsaObject*>& shown);
  std::vector<QPointF> Drawn(const CTarsaObject& object) const;
  // The pixel of a model point.
  QPointF At(double x, double y, double z) const;

  Direction m_direction = Direction::top;
  // Pixels per model unit, and a model point (in the view's two axes) with its pixel.
  double m_scale = 1;
  QPointF m_model_origin;
  QPointF m_pixel_origin;
  unsigned int m_fitted_document = 0;
  bool m_fitted_to_something = false;
  Picked m_picked;
  std::function<void()> m_right_clicked;
  // The drag in progress: its button and where it started and was last.
  Qt::MouseButton m_drag = Qt::NoButton;
  QPointF m_drag_start;
  QPointF m_drag_last;
  QRubberBand* m_band = nullptr;
};
