// The order in which a painter draws solid objects so that nearer ones cover farther ones: for
// every two objects whose pixels may overlap, a plane that separates them in the view says which
// is in front (the one on the eye's side), and the objects are sorted so that each comes after
// all those it covers; where that says nothing, the one whose centre is farther comes first. A box
// inside another comes before it; a line or point that pierces a box comes after it, so that it
// shows. Candidate pairs come from a grid of the viewport, so that the work grows with the objects
// that overlap, not with their square.
#pragma once

#include <cstdint>
#include <vector>

#include "shell/drawing/frame.h"

struct TsOrderItem {
  TsRect bounds;                 // the pixels it covers
  const TsVec3* view = nullptr;  // its points in view coordinates (z toward the viewer)
  std::uint32_t count = 0;
  bool box = false;  // the points are a box's eight corners
};

// Orders items; keeps its working memory from one call to the next, so that drawing frame after
// frame allocates nothing once it has drawn the largest.
class TsDepthOrderer {
 public:
  // The items' indices, back to front. `eye_distance` is the perspective's (0: orthographic).
  const std::vector<int>& Order(const std::vector<TsOrderItem>& items, double eye_distance);

  // A box as the comparisons see it: its centre, its three half edges, and their directions and
  // half lengths; anything else by its points. `depth` is the centre's.
  struct Solid {
    TsVec3 centre;
    TsVec3 half[3];
    TsVec3 axis[3];
    double extent[3] = {0, 0, 0};
    double depth = 0;
  };
  struct Range {
    int x0, y0, x1, y1;
  };
  // An item in a cell of the grid: its bounds, and the first cell it reaches.
  struct Entry {
    float left, top, right, bottom;
    std::int32_t item;
    std::int16_t x0, y0;
  };
  // An item's silhouette seen along three directions of the viewport: the middle and the half
  // width of its shadow on each.
  struct Shadow {
    float middle[3];
    float reach[3];
  };

 private:
  void MakeShadows(const std::vector<TsOrderItem>& items, double eye_distance);
  void MakeGrid(const std::vector<TsOrderItem>& items);

  std::vector<Solid> m_solids;
  std::vector<std::pair<int, int>> m_edges;
  std::vector<std::uint32_t> m_start, m_filled;
  std::vector<int> m_before, m_order;
  std::vector<std::pair<double, int>> m_by_depth;
  std::vector<char> m_state;
  std::vector<std::pair<int, std::uint32_t>> m_stack;
  // The grid of the viewport's pixels: each cell's items, CSR.
  double m_cell_width = 1, m_cell_height = 1;
  TsPoint2 m_origin;
  int m_columns = 0, m_rows = 0;
  std::vector<std::uint32_t> m_cell_start, m_cell_filled;
  std::vector<Entry> m_cell_entries;
  std::vector<Range> m_ranges;
  std::vector<Shadow> m_shadows;
};

// The items' indices, back to front, with working memory of its own.
std::vector<int> TsDepthOrder(const std::vector<TsOrderItem>& items, double eye_distance);
