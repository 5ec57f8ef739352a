#include "shell/drawing/frame.h"

#include <algorithm>
#include <cmath>

#include "shell/drawing/depth_order.h"
#include "shell/drawing/labels.h"

namespace {

constexpr double kDotRadius = 3;
constexpr double kSunRadius = 7;
constexpr double kRayPixels = 30;  // the length of a light's ray

// Builds the frame's primitives.
class Builder {
 public:
  Builder(TsFrame& frame, const std::vector<TsSceneObject>& scene, const TsCamera& camera,
          const std::vector<TsVec3>& view, const std::vector<std::uint32_t>& first_view)
      : m_frame(frame), m_scene(scene), m_camera(camera), m_view(view), m_first_view(first_view) {}

  void Object(int index) {
    const TsSceneObject& object = m_scene[index];
    TsDrawnObject& drawn = m_frame.objects[index];
    drawn.first_primitive = static_cast<std::uint32_t>(m_frame.primitives.size());
    const TsLook look = TsLookOf(object.kind, object.state);
    const TsPoint2* p = &m_frame.pixels[drawn.first_pixel];
    const std::uint32_t n = drawn.pixel_count;
    if (object.state == TsObjectState::outline) {
      Outline(index, object, look, p, n);
    } else {
      switch (object.kind) {
        case TsShapeKind::box:
          if (n == 8) {
            Box(index, look, p, &m_view[m_first_view[index]]);
            break;
          }
          [[fallthrough]];
        case TsShapeKind::polyline:
          Add(index, TsPrimitiveKind::polyline, look, p, n);
          break;
        case TsShapeKind::point:
          AddDot(index, look.edge, look.edge, look.width, kDotRadius, p[0]);
          break;
        case TsShapeKind::light:
          Light(index, object, look, p[0]);
          break;
      }
    }
    drawn.primitive_count =
        static_cast<std::uint32_t>(m_frame.primitives.size()) - drawn.first_primitive;
  }

 private:
  TsPrimitive& Add(int index, TsPrimitiveKind kind, const TsLook& look, const TsPoint2* p,
                   std::uint32_t n) {
    TsPrimitive primitive;
    primitive.kind = kind;
    primitive.object = index;
    primitive.first = static_cast<std::uint32_t>(m_frame.points.size());
    primitive.count = n;
    primitive.stroke = look.edge;
    primitive.width = static_cast<float>(look.width);
    primitive.dashed = look.dashed;
    m_frame.points.resize(m_frame.points.size() + n);
    std::copy(p, p + n, m_frame.points.data() + primitive.first);
    m_frame.primitives.push_back(primitive);
    return m_frame.primitives.back();
  }

  void AddDot(int index, const TsColor& fill, const TsColor& stroke, double width, double radius,
              const TsPoint2& at) {
    TsLook look;
    look.edge = stroke;
    look.width = width;
    TsPrimitive& dot = Add(index, TsPrimitiveKind::dot, look, &at, 1);
    dot.fill = fill;
    dot.radius = static_cast<float>(radius);
  }

  // The faces that face the viewer, each shaded by its normal, with its edges. Opposite faces
  // share a normal's direction: of each pair the one on the viewer's side is drawn.
  void Box(int index, const TsLook& look, const TsPoint2* p, const TsVec3* v) {
    const TsVec3 u = v[1] - v[0], w = v[3] - v[0], h = v[4] - v[0];
    const double eye = m_camera.EyeDistance();
    // Each pair: its direction, pointing from the first face of the pair to the second (faces of
    // kTsBoxFaces), and the edge that goes from the first to the second.
    const TsVec3 across[3] = {Cross(u, w), Cross(u, h), Cross(w, h)};
    const TsVec3 along[3] = {h, w, u};
    static const int kPairs[3][2] = {{0, 1}, {2, 4}, {5, 3}};
    int faces = 0;
    for (int k = 0; k < 3; ++k) {
      TsVec3 normal = across[k];
      const double length = Length(normal);
      if (!(length > 1e-12)) continue;  // a flat box's sides
      normal = normal * (1 / length);
      if (Dot(normal, along[k]) < 0) normal = -normal;  // now toward the second face
      for (int side = 0; side < 2; ++side) {
        const int* face = kTsBoxFaces[kPairs[k][side]];
        const TsVec3 outward = side == 0 ? -normal : normal;
        double facing = outward.z;
        if (eye > 0) {
          const TsVec3 middle = (v[face[0]] + v[face[2]]) * 0.5;
          facing = Dot(outward, TsVec3{0, 0, eye} - middle);
        }
        if (facing <= 1e-9) continue;
        const TsPoint2 corners[4] = {p[face[0]], p[face[1]], p[face[2]], p[face[3]]};
        TsPrimitive& polygon = Add(index, TsPrimitiveKind::polygon, look, corners, 4);
        polygon.fill = Shade(look.fill, outward);
        ++faces;
      }
    }
    if (faces == 0) Edges(index, look, p);  // seen edge on
  }

  // A face's colour; boxes turned alike share their faces' normals, so the last few are kept.
  TsColor Shade(const TsColor& base, const TsVec3& normal) {
    for (const Shaded& kept : m_shaded) {
      if (std::fabs(kept.normal.x - normal.x) + std::fabs(kept.normal.y - normal.y) +
                  std::fabs(kept.normal.z - normal.z) <
              1e-9 &&
          kept.base == base) {
        return kept.colour;
      }
    }
    const TsColor colour = TsShaded(base, normal);
    m_shaded[m_next_shaded] = {normal, base, colour};
    m_next_shaded = (m_next_shaded + 1) % 6;
    return colour;
  }

  void Edges(int index, const TsLook& look, const TsPoint2* p) {
    TsPoint2 ends[24];
    for (int e = 0; e < 12; ++e) {
      ends[2 * e] = p[kTsBoxEdges[e][0]];
      ends[2 * e + 1] = p[kTsBoxEdges[e][1]];
    }
    Add(index, TsPrimitiveKind::segments, look, ends, 24);
  }

  // A sun at the light's place: a disc with short rays round it, and a long ray toward where it
  // shines.
  void Light(int index, const TsSceneObject& object, const TsLook& look, const TsPoint2& at) {
    const TsProjected tip = m_camera.Project(object.points[0] + Normalized(object.direction));
    double dx = tip.x - at.x, dy = tip.y - at.y;
    const double length = std::hypot(dx, dy);
    TsPoint2 ends[18];
    int count = 0;
    if (tip.visible && length > 1e-9) {
      dx /= length;
      dy /= length;
      ends[count++] = at;
      ends[count++] = {at.x + dx * kRayPixels, at.y + dy * kRayPixels};
    }
    for (int k = 0; k < 8; ++k) {
      const double angle = k * 3.14159265358979323846 / 4;
      const double c = std::cos(angle), s = std::sin(angle);
      ends[count++] = {at.x + c * (kSunRadius + 2), at.y + s * (kSunRadius + 2)};
      ends[count++] = {at.x + c * (kSunRadius + 5), at.y + s * (kSunRadius + 5)};
    }
    TsLook thin = look;
    thin.width = 1.5;
    Add(index, TsPrimitiveKind::segments, thin, ends, static_cast<std::uint32_t>(count));
    AddDot(index, look.fill, look.edge, 1, kSunRadius, at);
  }

  void Outline(int index, const TsSceneObject& object, const TsLook& look, const TsPoint2* p,
               std::uint32_t n) {
    if (object.kind == TsShapeKind::box && n == 8) {
      Edges(index, look, p);
    } else if (object.kind == TsShapeKind::polyline && n >= 2) {
      Add(index, TsPrimitiveKind::polyline, look, p, n);
    } else {
      TsPrimitive& ring = Add(index, TsPrimitiveKind::dot, look, p, 1);
      ring.radius =
          static_cast<float>(object.kind == TsShapeKind::light ? kSunRadius + 2 : kDotRadius + 3);
    }
  }

  TsFrame& m_frame;
  const std::vector<TsSceneObject>& m_scene;
  const TsCamera& m_camera;
  const std::vector<TsVec3>& m_view;
  const std::vector<std::uint32_t>& m_first_view;  // each object's first point in `view`
  struct Shaded {
    TsVec3 normal{2, 2, 2};
    TsColor base, colour;
  };
  Shaded m_shaded[6];
  int m_next_shaded = 0;
};

// How far round an object's points its drawing reaches, in pixels.
double Reach(const TsSceneObject& object) {
  switch (object.kind) {
    case TsShapeKind::light:
      return kRayPixels + 1;
    case TsShapeKind::point:
      return kDotRadius + 3;
    default:
      return 2;
  }
}

// Which object each small cell of the viewport shows once the frame is painted: the last one
// painted over the cell's centre. Made only for labels.
class Coverage : public TsLabelSpace {
 public:
  static constexpr double kCell = 3;  // pixels

  struct Sight {
    int cells = 0;
    TsRect bounds;    // of the cells seen
    TsPoint2 anchor;  // the seen cell nearest the middle of those seen
  };

  Coverage(const TsFrame& frame, const std::vector<TsSceneObject>& scene)
      : m_columns(std::max(1, TsToInt(std::ceil(frame.width / kCell)))),
        m_rows(std::max(1, TsToInt(std::ceil(frame.height / kCell)))),
        m_cells(static_cast<size_t>(m_columns) * m_rows, -1),
        m_seen(scene.size()) {
    for (const TsPrimitive& p : frame.primitives) {
      if (scene[p.object].state == TsObjectState::outline) continue;
      const TsPoint2* q = &frame.points[p.first];
      switch (p.kind) {
        case TsPrimitiveKind::polygon:
          Polygon(q, p.count, p.object);
          break;
        case TsPrimitiveKind::polyline:
          for (std::uint32_t i = 0; i + 1 < p.count; ++i) Segment(q[i], q[i + 1], p.object);
          break;
        case TsPrimitiveKind::segments:
          for (std::uint32_t i = 0; i + 1 < p.count; i += 2) Segment(q[i], q[i + 1], p.object);
          break;
        case TsPrimitiveKind::dot:
          Disc(q[0], p.radius, p.object);
          break;
      }
    }
    // Each object's cells: how many, their bounds, and the middle of them.
    std::vector<TsPoint2> sums(scene.size());
    for (int y = 0; y < m_rows; ++y) {
      for (int x = 0; x < m_columns; ++x) {
        const int id = m_cells[Cell(x, y)];
        if (id < 0) continue;
        Sight& seen = m_seen[id];
        const TsRect cell{x * kCell, y * kCell, (x + 1) * kCell, (y + 1) * kCell};
        seen.bounds = seen.cells == 0 ? cell
                                      : TsRect{std::min(seen.bounds.left, cell.left),
                                               std::min(seen.bounds.top, cell.top),
                                               std::max(seen.bounds.right, cell.right),
                                               std::max(seen.bounds.bottom, cell.bottom)};
        ++seen.cells;
        sums[id].x += x;
        sums[id].y += y;
      }
    }
    std::vector<double> best(scene.size(), 1e300);
    for (int y = 0; y < m_rows; ++y) {
      for (int x = 0; x < m_columns; ++x) {
        const int id = m_cells[Cell(x, y)];
        if (id < 0) continue;
        Sight& seen = m_seen[id];
        const double mx = sums[id].x / seen.cells, my = sums[id].y / seen.cells;
        const double d = (x - mx) * (x - mx) + (y - my) * (y - my);
        if (d < best[id]) {
          best[id] = d;
          seen.anchor = {(x + 0.5) * kCell, (y + 0.5) * kCell};
        }
      }
    }
  }

  const Sight& Of(int object) const { return m_seen[object]; }

  void Count(const TsRect& box, int object, int& others, int& own, int& cells) const override {
    others = own = cells = 0;
    const int x0 = std::max(0, TsToInt(std::floor(box.left / kCell)));
    const int x1 = std::min(m_columns - 1, TsToInt(std::floor(box.right / kCell)));
    const int y0 = std::max(0, TsToInt(std::floor(box.top / kCell)));
    const int y1 = std::min(m_rows - 1, TsToInt(std::floor(box.bottom / kCell)));
    for (int y = y0; y <= y1; ++y) {
      for (int x = x0; x <= x1; ++x) {
        const int id = m_cells[Cell(x, y)];
        ++cells;
        if (id == object) {
          ++own;
        } else if (id >= 0) {
          ++others;
        }
      }
    }
  }
  int Seen(int object) const override { return m_seen[object].cells; }

 private:
  size_t Cell(int x, int y) const { return static_cast<size_t>(y) * m_columns + x; }
  void Mark(int x, int y, int id) {
    if (x >= 0 && y >= 0 && x < m_columns && y < m_rows) m_cells[Cell(x, y)] = id;
  }

  // The cells whose centres the polygon holds (even-odd), row by row.
  void Polygon(const TsPoint2* q, std::uint32_t n, int id) {
    double top = q[0].y, bottom = q[0].y;
    for (std::uint32_t i = 1; i < n; ++i) {
      top = std::min(top, q[i].y);
      bottom = std::max(bottom, q[i].y);
    }
    const int y0 = std::max(0, TsToInt(std::floor(top / kCell - 0.5)));
    const int y1 = std::min(m_rows - 1, TsToInt(std::ceil(bottom / kCell - 0.5)));
    double crossings[16];
    for (int y = y0; y <= y1; ++y) {
      const double yc = (y + 0.5) * kCell;
      int count = 0;
      for (std::uint32_t i = 0, j = n - 1; i < n && count < 16; j = i++) {
        if ((q[i].y > yc) != (q[j].y > yc)) {
          crossings[count++] = q[i].x + (yc - q[i].y) * (q[j].x - q[i].x) / (q[j].y - q[i].y);
        }
      }
      std::sort(crossings, crossings + count);
      for (int k = 0; k + 1 < count; k += 2) {
        const int x0 = std::max(0, TsToInt(std::ceil(crossings[k] / kCell - 0.5)));
        const int x1 = std::min(m_columns - 1, TsToInt(std::floor(crossings[k + 1] / kCell - 0.5)));
        for (int x = x0; x <= x1; ++x) m_cells[Cell(x, y)] = id;
      }
    }
  }
  void Segment(const TsPoint2& a, const TsPoint2& b, int id) {
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    const int steps = std::min(100000, TsToInt(std::ceil(length / (kCell / 2))) + 1);
    for (int k = 0; k <= steps; ++k) {
      const double t = static_cast<double>(k) / steps;
      Mark(TsToInt(std::floor((a.x + (b.x - a.x) * t) / kCell)),
           TsToInt(std::floor((a.y + (b.y - a.y) * t) / kCell)), id);
    }
  }
  void Disc(const TsPoint2& c, double radius, int id) {
    const int x0 = TsToInt(std::floor((c.x - radius) / kCell));
    const int x1 = TsToInt(std::floor((c.x + radius) / kCell));
    const int y0 = TsToInt(std::floor((c.y - radius) / kCell));
    const int y1 = TsToInt(std::floor((c.y + radius) / kCell));
    for (int y = y0; y <= y1; ++y) {
      for (int x = x0; x <= x1; ++x) {
        if (std::hypot((x + 0.5) * kCell - c.x, (y + 0.5) * kCell - c.y) <= radius + kCell / 2) {
          Mark(x, y, id);
        }
      }
    }
  }

  int m_columns, m_rows;
  std::vector<int> m_cells;
  std::vector<Sight> m_seen;
};

}  // namespace

std::vector<TsVec3> TsScenePoints(const std::vector<TsSceneObject>& scene) {
  std::vector<TsVec3> points;
  for (const TsSceneObject& object : scene) {
    points.insert(points.end(), object.points.begin(), object.points.end());
  }
  return points;
}

double TsApproximateTextWidth(const std::string& text) {
  double width = 0;
  for (unsigned char c : text) {
    if ((c & 0xc0) == 0x80) continue;  // a UTF-8 continuation byte
    width += c == ' ' ? 3.5 : (c >= 'A' && c <= 'Z') || c == 'm' || c == 'w' ? 8.5 : 7;
  }
  return width;
}

TsDrawing::TsDrawing() : m_orderer(std::make_unique<TsDepthOrderer>()) {}
TsDrawing::~TsDrawing() = default;

TsFrame TsDrawScene(const std::vector<TsSceneObject>& scene, const TsCamera& camera,
                    const TsDrawOptions& options) {
  TsDrawing drawing;
  return drawing.Draw(scene, camera, options);
}

const TsFrame& TsDrawing::Draw(const std::vector<TsSceneObject>& scene, const TsCamera& camera,
                               const TsDrawOptions& options) {
  TsFrame& frame = m_frame;
  frame.width = camera.Width();
  frame.height = camera.Height();
  frame.points.clear();
  frame.primitives.clear();
  frame.labels.clear();
  frame.pixels.clear();
  frame.order.clear();
  frame.objects.assign(scene.size(), TsDrawnObject());
  const TsRect viewport{0, 0, frame.width, frame.height};
  size_t total = 0;
  for (const TsSceneObject& object : scene) total += object.points.size();
  m_view.clear();
  m_view.reserve(total);
  frame.pixels.reserve(total);
  m_first_view.assign(scene.size(), 0);
  m_items.clear();
  m_item_object.clear();
  m_outlines.clear();
  // The camera's turn as the rows of a matrix.
  const TsQuat back = camera.Orientation().Inverse();
  const TsVec3 r0 = back.Rotate({1, 0, 0}), r1 = back.Rotate({0, 1, 0}),
               r2 = back.Rotate({0, 0, 1});
  const TsVec3& target = camera.Target();
  // Every point in view coordinates and as a pixel; what the viewport does not show is left out.
  for (size_t i = 0; i < scene.size(); ++i) {
    const TsSceneObject& object = scene[i];
    TsDrawnObject& drawn = frame.objects[i];
    m_first_view[i] = static_cast<std::uint32_t>(m_view.size());
    drawn.first_pixel = static_cast<std::uint32_t>(frame.pixels.size());
    if (object.points.empty()) continue;
    bool visible = true;
    TsRect bounds{1e300, 1e300, -1e300, -1e300};
    for (const TsVec3& p : object.points) {
      const TsVec3 d = p - target;
      const TsVec3 v{Dot(r0, d), Dot(r1, d), Dot(r2, d)};
      const TsProjected q = camera.ProjectView(v);
      visible = visible && q.visible;
      m_view.push_back(v);
      frame.pixels.push_back({q.x, q.y});
      bounds = {std::min(bounds.left, q.x), std::min(bounds.top, q.y), std::max(bounds.right, q.x),
                std::max(bounds.bottom, q.y)};
    }
    drawn.pixel_count = static_cast<std::uint32_t>(object.points.size());
    drawn.bounds = bounds.Inflated(Reach(object));
    if (!visible || !drawn.bounds.Intersects(viewport)) continue;
    drawn.drawn = true;
    if (object.state == TsObjectState::outline) {
      m_outlines.push_back(static_cast<int>(i));
      continue;
    }
    TsOrderItem item;
    // Boxes overlap where their faces do; a symbol reaches round its point.
    item.bounds = object.kind == TsShapeKind::box ? bounds : drawn.bounds;
    item.count = drawn.pixel_count;
    item.box = object.kind == TsShapeKind::box && object.points.size() == 8;
    m_items.push_back(item);
    m_item_object.push_back(static_cast<int>(i));
  }
  for (size_t k = 0; k < m_items.size(); ++k)
    m_items[k].view = &m_view[m_first_view[m_item_object[k]]];
  const std::vector<int>& order = m_orderer->Order(m_items, camera.EyeDistance());
  Builder builder(frame, scene, camera, m_view, m_first_view);
  frame.primitives.reserve(m_items.size() * 3 + m_outlines.size());
  frame.points.reserve(m_items.size() * 12);
  frame.order.reserve(m_items.size() + m_outlines.size());
  for (int k : order) {
    frame.order.push_back(m_item_object[k]);
    builder.Object(m_item_object[k]);
  }
  for (int i : m_outlines) {
    frame.order.push_back(i);
    builder.Object(i);
  }
  if (!options.text_width) return frame;
  // What is seen of each object once everything is painted: labels go beside that, and an
  // object nothing of which is seen gets none.
  const Coverage coverage(frame, scene);
  // The names: the selection's first, then the rest, the more that is seen of an object the
  // sooner.
  std::vector<TsLabelRequest> requests;
  for (const int i : frame.order) {
    const TsSceneObject& object = scene[i];
    if (object.label.empty() || object.state == TsObjectState::outline) continue;
    const Coverage::Sight& seen = coverage.Of(i);
    if (seen.cells == 0) continue;
    TsLabelRequest request;
    request.object = i;
    request.text = object.label;
    request.width = options.text_width(object.label);
    request.height = options.text_height;
    request.ascent = options.text_ascent;
    request.anchor = seen.anchor;
    request.seen = seen.cells;
    // A light's rectangle is its sun's, not its ray's.
    const TsPoint2& first = frame.pixels[frame.objects[i].first_pixel];
    request.around = object.kind == TsShapeKind::light
                         ? TsRect{first.x, first.y, first.x, first.y}.Inflated(kSunRadius + 5)
                         : seen.bounds;
    request.priority = object.state == TsObjectState::selected ? 0
                       : object.state == TsObjectState::normal ? 1
                                                               : 2;
    requests.push_back(std::move(request));
  }
  frame.labels = TsPlaceLabels(std::move(requests), frame.width, frame.height, &coverage);
  return frame;
}
