// TsCamera: how the model is seen in a viewport of pixels. The camera turns the model by a
// rotation (model to view: x to the right, y up, z toward the viewer), looks at a target point,
// which the viewport's centre shows, and scales by pixels per model unit (at the target, for a
// perspective). It orbits as a turntable about the model's z axis and the view's horizontal
// axis through the target, pans in the view's plane, zooms about a pixel, takes the standard
// views and fits points into the viewport.
#pragma once

#include <vector>

#include "shell/drawing/vector_math.h"

enum class TsStandardView { top, front, right, iso };
enum class TsProjection { orthographic, perspective };

// A model point as the viewport shows it: its pixel (x to the right, y down) and its depth in the
// view (larger is nearer the viewer); `visible` is false for a point behind a perspective's eye.
struct TsProjected {
  double x = 0, y = 0, depth = 0;
  bool visible = true;
};

class TsCamera {
 public:
  // The angle a perspective sees across the viewport's longer side, in degrees.
  static constexpr double kFieldOfView = 40;
  // How far an orbit turns per pixel dragged, in radians.
  static constexpr double kOrbitPerPixel = 0.01;

  void SetViewport(double width, double height);
  double Width() const { return m_width; }
  double Height() const { return m_height; }

  // Looks at the model from the top (x to the right, y up), the front (x to the right, z up),
  // the right side (y to the right, z up) or isometrically from the front, right and top; the
  // target and the scale stay.
  void SetStandardView(TsStandardView view);
  void SetProjection(TsProjection projection) { m_projection = projection; }
  TsProjection Projection() const { return m_projection; }
  void SetOrientation(const TsQuat& orientation) { m_orientation = orientation.Normalized(); }
  const TsQuat& Orientation() const { return m_orientation; }
  void SetTarget(const TsVec3& target) { m_target = target; }
  const TsVec3& Target() const { return m_target; }
  // Kept between a billionth of a pixel and a billion pixels a unit.
  void SetScale(double pixels_per_unit);
  double Scale() const { return m_scale; }

  // Turns the model as a drag by (dx, dy) pixels does: a drag to the right turns it to the right
  // about the model's z axis, a drag down tips its top toward the viewer, about the target.
  void Orbit(double dx, double dy);
  // Moves the view as a drag by (dx, dy) pixels does: what was under the pointer stays under it.
  void Pan(double dx, double dy);
  // Scales by `factor` (above 1: nearer) keeping the point of the target's plane under the pixel
  // (x, y) where it is.
  void ZoomAt(double factor, double x, double y);
  // Places the target and the scale so that every point shows inside the viewport with `margin`
  // pixels to spare on each side. No points: nothing changes. False when there were none.
  bool Fit(const std::vector<TsVec3>& points, double margin);

  // The point in view coordinates: relative to the target, turned by the orientation.
  TsVec3 ToView(const TsVec3& model) const { return m_orientation.Rotate(model - m_target); }
  // The view coordinates' point as the viewport shows it.
  TsProjected ProjectView(const TsVec3& view) const;
  TsProjected Project(const TsVec3& model) const { return ProjectView(ToView(model)); }
  // In view coordinates: how far the eye of a perspective is from the target (0 for an
  // orthographic view, whose eye is infinitely far).
  double EyeDistance() const;
  // The pixels a perspective's eye sees across at one unit from the eye: its focal length.
  double FocalLength() const;

 private:
  double m_width = 640, m_height = 480;
  TsQuat m_orientation;
  TsVec3 m_target;
  double m_scale = 1;
  TsProjection m_projection = TsProjection::orthographic;
};
