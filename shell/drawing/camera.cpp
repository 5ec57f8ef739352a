#include "shell/drawing/camera.h"

#include <algorithm>

namespace {

constexpr double kPi = 3.14159265358979323846;

}  // namespace

void TsCamera::SetViewport(double width, double height) {
  m_width = std::max(width, 1.0);
  m_height = std::max(height, 1.0);
}

void TsCamera::SetScale(double pixels_per_unit) {
  if (pixels_per_unit > 0 && std::isfinite(pixels_per_unit)) {
    m_scale = std::clamp(pixels_per_unit, 1e-9, 1e9);
  }
}

void TsCamera::SetStandardView(TsStandardView view) {
  // The rows are the view's axes in model coordinates: right, up, toward the viewer.
  switch (view) {
    case TsStandardView::top:
      m_orientation = TsQuat();
      break;
    case TsStandardView::front:
      m_orientation = TsQuat::FromRows({1, 0, 0}, {0, 0, 1}, {0, -1, 0});
      break;
    case TsStandardView::right:
      m_orientation = TsQuat::FromRows({0, 1, 0}, {0, 0, 1}, {1, 0, 0});
      break;
    case TsStandardView::iso: {
      const TsVec3 toward = Normalized({1, -1, 1});
      const TsVec3 up = Normalized({-1, 1, 2});
      m_orientation = TsQuat::FromRows(Cross(up, toward), up, toward);
      break;
    }
  }
}

void TsCamera::Orbit(double dx, double dy) {
  // Turntable: about the model's z axis first (the model turns right for a drag to the right),
  // then about the view's x axis (a drag down tips the top toward the viewer).
  const TsQuat spin = TsQuat::AxisAngle({0, 0, 1}, dx * kOrbitPerPixel);
  const TsQuat tip = TsQuat::AxisAngle({1, 0, 0}, dy * kOrbitPerPixel);
  m_orientation = (tip * m_orientation * spin).Normalized();
}

void TsCamera::Pan(double dx, double dy) {
  // The target moves against the drag in the view's plane.
  m_target = m_target + m_orientation.Inverse().Rotate({-dx / m_scale, dy / m_scale, 0});
}

void TsCamera::ZoomAt(double factor, double x, double y) {
  if (!(factor > 0) || !std::isfinite(factor)) return;
  // Between a billionth of a pixel and a billion pixels a unit.
  factor = std::clamp(factor, 1e-9 / m_scale, 1e9 / m_scale);
  // The target's plane point under the pixel, relative to the target, in view units.
  const TsVec3 under{(x - m_width / 2) / m_scale, -(y - m_height / 2) / m_scale, 0};
  m_scale *= factor;
  // The same point, at the new scale, must stay under the pixel.
  m_target = m_target + m_orientation.Inverse().Rotate(under - under * (1 / factor));
}

bool TsCamera::Fit(const std::vector<TsVec3>& points, double margin) {
  if (points.empty()) return false;
  // The extent in view coordinates, about the present target.
  TsVec3 low = ToView(points.front()), high = low;
  for (const TsVec3& p : points) {
    const TsVec3 v = ToView(p);
    low = {std::min(low.x, v.x), std::min(low.y, v.y), std::min(low.z, v.z)};
    high = {std::max(high.x, v.x), std::max(high.y, v.y), std::max(high.z, v.z)};
  }
  const TsVec3 centre = (low + high) * 0.5;
  m_target = m_target + m_orientation.Inverse().Rotate(centre);
  const double room_x = std::max(m_width - 2 * margin, 1.0);
  const double room_y = std::max(m_height - 2 * margin, 1.0);
  const double extent_x = high.x - low.x, extent_y = high.y - low.y;
  double scale = std::min(extent_x > 1e-9 ? room_x / extent_x : 1e300,
                          extent_y > 1e-9 ? room_y / extent_y : 1e300);
  if (scale >= 1e300) scale = extent_x > 1e-9 || extent_y > 1e-9 ? m_scale : 1;
  if (m_projection == TsProjection::perspective) {
    // The nearest points come closer to the eye and grow: leave them room.
    const double depth = (high.z - low.z) / 2;
    const double focal = std::max(m_width, m_height) / 2 / std::tan(kFieldOfView * kPi / 360);
    // At scale s the eye is focal / s from the target; a point `depth` nearer grows by
    // d / (d - depth). Solve s * d / (d - depth) = scale for s.
    scale = focal * scale / (focal + depth * scale);
  }
  SetScale(scale);
  return true;
}

double TsCamera::FocalLength() const {
  return std::max(m_width, m_height) / 2 / std::tan(kFieldOfView * kPi / 360);
}

double TsCamera::EyeDistance() const {
  return m_projection == TsProjection::perspective ? FocalLength() / m_scale : 0;
}

TsProjected TsCamera::ProjectView(const TsVec3& v) const {
  TsProjected p;
  p.depth = v.z;
  if (m_projection == TsProjection::orthographic) {
    p.x = m_width / 2 + v.x * m_scale;
    p.y = m_height / 2 - v.y * m_scale;
    return p;
  }
  const double eye = EyeDistance();
  const double ahead = eye - v.z;  // how far in front of the eye
  if (ahead < eye * 0.01) {
    p.visible = false;
    return p;
  }
  const double f = FocalLength() / ahead;
  p.x = m_width / 2 + v.x * f;
  p.y = m_height / 2 - v.y * f;
  return p;
}
