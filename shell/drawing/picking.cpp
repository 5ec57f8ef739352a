#include "shell/drawing/picking.h"

#include <algorithm>
#include <cmath>

namespace {

double DistanceToSegment(const TsPoint2& p, const TsPoint2& a, const TsPoint2& b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double length2 = dx * dx + dy * dy;
  const double t =
      length2 > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length2, 0.0, 1.0) : 0.0;
  return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

// Whether the closed polygon contains p (crossings of a ray to the right).
bool Contains(const TsPoint2* q, std::uint32_t n, const TsPoint2& p) {
  bool inside = false;
  for (std::uint32_t i = 0, j = n - 1; i < n; j = i++) {
    if ((q[i].y > p.y) != (q[j].y > p.y) &&
        p.x < (q[j].x - q[i].x) * (p.y - q[i].y) / (q[j].y - q[i].y) + q[i].x) {
      inside = !inside;
    }
  }
  return inside;
}

bool Hits(const TsFrame& frame, const TsPrimitive& primitive, const TsPoint2& at,
          double tolerance) {
  const TsPoint2* q = &frame.points[primitive.first];
  const std::uint32_t n = primitive.count;
  switch (primitive.kind) {
    case TsPrimitiveKind::dot:
      return std::hypot(at.x - q[0].x, at.y - q[0].y) <= primitive.radius + tolerance;
    case TsPrimitiveKind::polygon:
      if (n >= 3 && Contains(q, n, at)) return true;
      for (std::uint32_t i = 0; i < n; ++i) {
        if (DistanceToSegment(at, q[i], q[(i + 1) % n]) <= tolerance) return true;
      }
      return false;
    case TsPrimitiveKind::polyline:
      for (std::uint32_t i = 0; i + 1 < n; ++i) {
        if (DistanceToSegment(at, q[i], q[i + 1]) <= tolerance) return true;
      }
      return n == 1 && DistanceToSegment(at, q[0], q[0]) <= tolerance;
    case TsPrimitiveKind::segments:
      for (std::uint32_t i = 0; i + 1 < n; i += 2) {
        if (DistanceToSegment(at, q[i], q[i + 1]) <= tolerance) return true;
      }
      return false;
  }
  return false;
}

}  // namespace

int TsPickAt(const TsFrame& frame, const std::vector<TsSceneObject>& scene, const TsPoint2& at,
             double tolerance) {
  // Labels lie over everything.
  for (auto label = frame.labels.rbegin(); label != frame.labels.rend(); ++label) {
    if (label->box.Contains(at)) return label->object;
  }
  for (auto it = frame.order.rbegin(); it != frame.order.rend(); ++it) {
    const int index = *it;
    if (scene[index].state == TsObjectState::outline) continue;
    const TsDrawnObject& drawn = frame.objects[index];
    if (!drawn.bounds.Inflated(tolerance).Contains(at)) continue;
    for (std::uint32_t k = 0; k < drawn.primitive_count; ++k) {
      if (Hits(frame, frame.primitives[drawn.first_primitive + k], at, tolerance)) return index;
    }
  }
  return -1;
}

std::vector<int> TsPickInside(const TsFrame& frame, const std::vector<TsSceneObject>& scene,
                              const TsRect& window) {
  std::vector<int> inside;
  for (size_t i = 0; i < frame.objects.size(); ++i) {
    const TsDrawnObject& drawn = frame.objects[i];
    if (!drawn.drawn || drawn.pixel_count == 0 || scene[i].state == TsObjectState::outline) {
      continue;
    }
    const TsPoint2* p = &frame.pixels[drawn.first_pixel];
    if (std::all_of(p, p + drawn.pixel_count,
                    [&window](const TsPoint2& q) { return window.Contains(q); })) {
      inside.push_back(static_cast<int>(i));
    }
  }
  return inside;
}
