// The drawing of a scene: TsDrawScene projects every object through the camera, leaves out what
// lies outside the viewport, orders the rest back to front, turns each into primitives with its
// look (a box's faces that face the viewer, shaded by their normals, with their edges; lines;
// dots; a light's sun and ray), draws the outlines of previews over them, and places the labels
// so that no two overlap. What it makes is a frame of pixels that a painter draws as it stands,
// in order: the window's view with Qt (shell/window/frame_painter.h), a picture as SVG
// (shell/drawing/svg_writer.h). Picking reads the same frame (shell/drawing/picking.h).
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "shell/drawing/camera.h"
#include "shell/drawing/scene.h"

struct TsPoint2 {
  double x = 0, y = 0;
  bool operator==(const TsPoint2& o) const { return x == o.x && y == o.y; }
};

// A pixel coordinate as an int, however far off the viewport it lies (a perspective close to
// the eye throws points far out): kept within a billion, NaN as 0.
inline int TsToInt(double value) {
  if (!(value == value)) return 0;
  return static_cast<int>(value < -1e9 ? -1e9 : value > 1e9 ? 1e9 : value);
}

// A rectangle of pixels, y down.
struct TsRect {
  double left = 0, top = 0, right = 0, bottom = 0;
  double Width() const { return right - left; }
  double Height() const { return bottom - top; }
  bool Intersects(const TsRect& o) const {
    return left < o.right && o.left < right && top < o.bottom && o.top < bottom;
  }
  bool Contains(const TsPoint2& p) const {
    return p.x >= left && p.x <= right && p.y >= top && p.y <= bottom;
  }
  TsRect Inflated(double by) const { return {left - by, top - by, right + by, bottom + by}; }
};

enum class TsPrimitiveKind : std::uint8_t {
  polygon,   // closed, filled with `fill` and edged with `stroke`
  polyline,  // open, stroked
  segments,  // its points taken two at a time, each pair a line
  dot,       // a circle of `radius` about its one point, filled and edged
};

struct TsPrimitive {
  TsPrimitiveKind kind = TsPrimitiveKind::polygon;
  bool dashed = false;
  int object = -1;                     // the scene object it draws
  std::uint32_t first = 0, count = 0;  // its points in TsFrame::points
  TsColor fill{0, 0, 0, 0};
  TsColor stroke;
  float width = 1;
  float radius = 0;
};

// A name placed beside its object: the rectangle of its background, the start of the text's
// baseline, and the leader line from the label to the object when it was moved away.
struct TsLabel {
  int object = -1;
  std::string text;
  TsRect box;
  TsPoint2 baseline;
  bool leader = false;
  TsPoint2 leader_from, leader_to;
};

// One scene object as drawn: whether it is, its points as pixels (TsFrame::pixels), the pixels
// it covers, and its primitives.
struct TsDrawnObject {
  bool drawn = false;
  std::uint32_t first_pixel = 0, pixel_count = 0;
  TsRect bounds;
  std::uint32_t first_primitive = 0, primitive_count = 0;
};

struct TsFrame {
  double width = 0, height = 0;
  std::vector<TsPoint2> points;         // the primitives' points
  std::vector<TsPrimitive> primitives;  // in the order they are painted
  std::vector<TsLabel> labels;          // painted after the primitives
  std::vector<TsDrawnObject> objects;   // by scene index
  std::vector<TsPoint2> pixels;         // each drawn object's points as pixels
  std::vector<int> order;               // the drawn objects in the order they are painted
};

// The width in pixels of a UTF-8 text as the painter draws it.
using TsTextWidth = std::function<double(const std::string& text)>;

struct TsDrawOptions {
  TsTextWidth text_width;   // null: no labels
  double text_height = 15;  // a line of text, in pixels
  double text_ascent = 11;  // from its top to its baseline
};

class TsDepthOrderer;
struct TsOrderItem;

// Draws frame after frame, keeping its memory from one to the next: once it has drawn the largest
// it allocates nothing more (but the labels' texts).
class TsDrawing {
 public:
  TsDrawing();
  ~TsDrawing();
  TsDrawing(const TsDrawing&) = delete;
  TsDrawing& operator=(const TsDrawing&) = delete;

  // The scene's frame through the camera; it stays until the next Draw.
  const TsFrame& Draw(const std::vector<TsSceneObject>& scene, const TsCamera& camera,
                      const TsDrawOptions& options);
  const TsFrame& Frame() const { return m_frame; }

 private:
  TsFrame m_frame;
  std::vector<TsVec3> m_view;
  std::vector<std::uint32_t> m_first_view;
  std::vector<TsOrderItem> m_items;
  std::vector<int> m_item_object;
  std::vector<int> m_outlines;
  std::unique_ptr<TsDepthOrderer> m_orderer;
};

// One frame, drawn with memory of its own.
TsFrame TsDrawScene(const std::vector<TsSceneObject>& scene, const TsCamera& camera,
                    const TsDrawOptions& options);

// Every point of every object of the scene (a light's location): what a fit takes in.
std::vector<TsVec3> TsScenePoints(const std::vector<TsSceneObject>& scene);

// The width the SVG pictures reckon for a text in their 12-pixel sans-serif font, a little more
// than most fonts take.
double TsApproximateTextWidth(const std::string& text);
