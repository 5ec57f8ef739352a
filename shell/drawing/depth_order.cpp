#include "shell/drawing/depth_order.h"

#include <algorithm>
#include <cmath>

namespace {

using Solid = TsDepthOrderer::Solid;

struct Interval {
  double low, high;
};

Interval Along(const TsOrderItem& item, const Solid& solid, const TsVec3& axis) {
  if (item.box) {
    const double c = Dot(solid.centre, axis);
    const double r = std::fabs(Dot(solid.half[0], axis)) + std::fabs(Dot(solid.half[1], axis)) +
                     std::fabs(Dot(solid.half[2], axis));
    return {c - r, c + r};
  }
  Interval range{Dot(item.view[0], axis), Dot(item.view[0], axis)};
  for (std::uint32_t i = 1; i < item.count; ++i) {
    const double d = Dot(item.view[i], axis);
    range.low = std::min(range.low, d);
    range.high = std::max(range.high, d);
  }
  return range;
}

enum class Relation { unknown, a_first, b_first };

class Comparer {
 public:
  Comparer(const std::vector<TsOrderItem>& items, const std::vector<Solid>& solids, double eye)
      : m_items(items), m_solids(solids), m_eye(eye) {}

  Relation Compare(int a, int b) const {
    const TsOrderItem& ia = m_items[a];
    const TsOrderItem& ib = m_items[b];
    const Solid& sa = m_solids[a];
    const Solid& sb = m_solids[b];
    if (!ia.box && !ib.box) return Relation::unknown;  // lines and points: by their depth
    if (ia.box && ib.box && Aligned(sa, sb)) {
      // Boxes turned alike (the common case) meet unless one of their shared axes parts them.
      for (int k = 0; k < 3; ++k) {
        const TsVec3& axis = sa.axis[k];
        const double ca = Dot(sa.centre, axis), cb = Dot(sb.centre, axis);
        const Interval x{ca - sa.extent[k], ca + sa.extent[k]};
        const Interval y{cb - sb.extent[k], cb + sb.extent[k]};
        Relation relation;
        if (Parted(x, y, axis, 1, relation)) return relation;
      }
      return Meeting(a, b);
    }
    // The boxes' own axes, then (two boxes) the products of their edges.
    TsVec3 axes[15];
    int count = 0;
    if (ia.box) {
      for (const TsVec3& h : sa.half) axes[count++] = h;
    }
    if (ib.box) {
      for (const TsVec3& h : sb.half) axes[count++] = h;
    }
    if (ia.box && ib.box) {
      for (const TsVec3& u : sa.half) {
        for (const TsVec3& v : sb.half) axes[count++] = Cross(u, v);
      }
    }
    for (int k = 0; k < count; ++k) {
      const TsVec3& axis = axes[k];
      const double length = Length(axis);
      if (!(length > 1e-12)) continue;
      Relation relation;
      if (Parted(Along(ia, sa, axis), Along(ib, sb, axis), axis, length, relation)) {
        return relation;
      }
    }
    return Meeting(a, b);
  }

 private:
  static bool Aligned(const Solid& a, const Solid& b) {
    for (int k = 0; k < 3; ++k) {
      if (!(std::fabs(Dot(a.axis[k], b.axis[k])) > 1 - 1e-9)) return false;
    }
    return true;
  }

  // Whether the plane across `axis` between the intervals parts the items, and if so which is
  // painted first: the one away from the eye.
  bool Parted(const Interval& x, const Interval& y, const TsVec3& axis, double length,
              Relation& relation) const {
    const double slack = 1e-7 * (std::fabs(x.low) + std::fabs(x.high) + std::fabs(y.low) +
                                 std::fabs(y.high) + length);
    double plane;
    bool a_low;
    if (x.high <= y.low + slack) {
      plane = (x.high + y.low) / 2;
      a_low = true;
    } else if (y.high <= x.low + slack) {
      plane = (y.high + x.low) / 2;
      a_low = false;
    } else {
      return false;
    }
    // Which side of the plane the eye is on: toward +z for an orthographic view.
    const double side = m_eye > 0 ? axis.z * m_eye - plane : axis.z;
    if (std::fabs(side) <= 1e-9 * length * (m_eye > 0 ? m_eye : 1)) {
      relation = Relation::unknown;  // a plane along the line of sight: they do not overlap
    } else {
      // The eye on the high side: the low one is behind and comes first.
      relation = (side > 0) == a_low ? Relation::a_first : Relation::b_first;
    }
    return true;
  }

  // They meet. What lies wholly inside a box comes before it; a line or point through a box
  // comes after it, so that it shows.
  Relation Meeting(int a, int b) const {
    const TsOrderItem& ia = m_items[a];
    const TsOrderItem& ib = m_items[b];
    if (ia.box && Inside(ib, m_solids[b], ia, m_solids[a])) return Relation::b_first;
    if (ib.box && Inside(ia, m_solids[a], ib, m_solids[b])) return Relation::a_first;
    if (!ia.box) return Relation::b_first;
    if (!ib.box) return Relation::a_first;
    return Relation::unknown;
  }

  // Whether every point of `inner` lies within the box `outer`.
  static bool Inside(const TsOrderItem& inner, const Solid& si, const TsOrderItem& outer,
                     const Solid& so) {
    for (const TsVec3& h : so.half) {
      const Interval in = Along(inner, si, h);
      const Interval out = Along(outer, so, h);
      const double slack = 1e-7 * (std::fabs(out.low) + std::fabs(out.high) + Dot(h, h));
      if (in.low < out.low - slack || in.high > out.high + slack) return false;
    }
    return true;
  }

  const std::vector<TsOrderItem>& m_items;
  const std::vector<Solid>& m_solids;
  double m_eye;
};

}  // namespace

namespace {

// Whether the shadows of two silhouettes on one of the three directions lie apart: then the
// silhouettes do not overlap.
bool ShadowsApart(const TsDepthOrderer::Shadow& a, const TsDepthOrderer::Shadow& b) {
  for (int k = 0; k < 3; ++k) {
    if (std::fabs(a.middle[k] - b.middle[k]) >= a.reach[k] + b.reach[k]) return true;
  }
  return false;
}

}  // namespace

void TsDepthOrderer::MakeShadows(const std::vector<TsOrderItem>& items, double eye_distance) {
  m_shadows.clear();
  // Seen orthographically, a box's silhouette is a hexagon whose edges run along its projected
  // edges: across those directions of the first box, shadows part every two boxes turned like it
  // whose silhouettes do not overlap (and some others). A perspective bends the edges.
  if (eye_distance > 0) return;
  int first = -1;
  for (size_t i = 0; i < items.size() && first < 0; ++i) {
    if (items[i].box) first = static_cast<int>(i);
  }
  if (first < 0) return;
  double normal[3][2];
  for (int k = 0; k < 3; ++k) {
    const TsVec3& h = m_solids[first].half[k];
    const double length = std::hypot(h.x, h.y);
    if (!(length > 1e-12)) return;  // an edge seen end on: no direction across it
    normal[k][0] = -h.y / length;
    normal[k][1] = h.x / length;
  }
  m_shadows.resize(items.size());
  for (size_t i = 0; i < items.size(); ++i) {
    const TsOrderItem& item = items[i];
    const Solid& s = m_solids[i];
    Shadow& shadow = m_shadows[i];
    for (int k = 0; k < 3; ++k) {
      const double nx = normal[k][0], ny = normal[k][1];
      double middle, reach;
      if (item.box) {
        middle = s.centre.x * nx + s.centre.y * ny;
        reach = std::fabs(s.half[0].x * nx + s.half[0].y * ny) +
                std::fabs(s.half[1].x * nx + s.half[1].y * ny) +
                std::fabs(s.half[2].x * nx + s.half[2].y * ny);
      } else {
        double low = 1e300, high = -1e300;
        for (std::uint32_t j = 0; j < item.count; ++j) {
          const double d = item.view[j].x * nx + item.view[j].y * ny;
          low = std::min(low, d);
          high = std::max(high, d);
        }
        middle = (low + high) / 2;
        reach = (high - low) / 2;
      }
      // A little larger, so that rounding never parts what touches.
      shadow.middle[k] = static_cast<float>(middle);
      shadow.reach[k] = static_cast<float>(reach * (1 + 1e-5) + 1e-6 * (std::fabs(middle) + 1));
    }
  }
}

void TsDepthOrderer::MakeGrid(const std::vector<TsOrderItem>& items) {
  TsRect all = items[0].bounds;
  double widths = 0, heights = 0;
  for (const TsOrderItem& item : items) {
    all = {std::min(all.left, item.bounds.left), std::min(all.top, item.bounds.top),
           std::max(all.right, item.bounds.right), std::max(all.bottom, item.bounds.bottom)};
    widths += item.bounds.Width();
    heights += item.bounds.Height();
  }
  m_origin = {all.left, all.top};
  // Cells of an item's mean width and height, so that an item reaches a few cells and a cell
  // holds a few items.
  const double n = static_cast<double>(items.size());
  m_cell_width = std::max({widths / n, all.Width() / 2000, 1.0});
  m_cell_height = std::max({heights / n, all.Height() / 2000, 1.0});
  m_columns = std::max(1, static_cast<int>(std::ceil(all.Width() / m_cell_width)) + 1);
  m_rows = std::max(1, static_cast<int>(std::ceil(all.Height() / m_cell_height)) + 1);
  const size_t cells = static_cast<size_t>(m_columns) * m_rows;
  m_cell_start.assign(cells + 1, 0);
  m_ranges.resize(items.size());
  const auto column = [this](double x) {
    return std::clamp(TsToInt((x - m_origin.x) / m_cell_width), 0, m_columns - 1);
  };
  const auto row = [this](double y) {
    return std::clamp(TsToInt((y - m_origin.y) / m_cell_height), 0, m_rows - 1);
  };
  for (size_t i = 0; i < items.size(); ++i) {
    const TsRect& b = items[i].bounds;
    Range& r = m_ranges[i];
    r = {column(b.left), row(b.top), column(b.right), row(b.bottom)};
    for (int y = r.y0; y <= r.y1; ++y) {
      for (int x = r.x0; x <= r.x1; ++x) ++m_cell_start[static_cast<size_t>(y) * m_columns + x + 1];
    }
  }
  for (size_t c = 1; c <= cells; ++c) m_cell_start[c] += m_cell_start[c - 1];
  m_cell_entries.resize(m_cell_start.back());
  m_cell_filled.assign(m_cell_start.begin(), m_cell_start.end() - 1);
  for (size_t i = 0; i < items.size(); ++i) {
    const Range& r = m_ranges[i];
    const TsRect& b = items[i].bounds;
    const Entry entry{static_cast<float>(b.left),     static_cast<float>(b.top),
                      static_cast<float>(b.right),    static_cast<float>(b.bottom),
                      static_cast<std::int32_t>(i),   static_cast<std::int16_t>(r.x0),
                      static_cast<std::int16_t>(r.y0)};
    for (int y = r.y0; y <= r.y1; ++y) {
      for (int x = r.x0; x <= r.x1; ++x) {
        m_cell_entries[m_cell_filled[static_cast<size_t>(y) * m_columns + x]++] = entry;
      }
    }
  }
}

const std::vector<int>& TsDepthOrderer::Order(const std::vector<TsOrderItem>& items,
                                              double eye_distance) {
  const int n = static_cast<int>(items.size());
  m_order.clear();
  if (n == 0) return m_order;
  m_solids.resize(items.size());
  for (int i = 0; i < n; ++i) {
    const TsOrderItem& item = items[i];
    Solid& s = m_solids[i];
    if (item.box && item.count == 8) {
      const TsVec3* p = item.view;
      s.half[0] = (p[1] - p[0]) * 0.5;
      s.half[1] = (p[3] - p[0]) * 0.5;
      s.half[2] = (p[4] - p[0]) * 0.5;
      s.centre = p[0] + s.half[0] + s.half[1] + s.half[2];
      for (int k = 0; k < 3; ++k) {
        s.extent[k] = Length(s.half[k]);
        s.axis[k] = s.extent[k] > 0 ? s.half[k] * (1 / s.extent[k]) : TsVec3{};
      }
    } else {
      TsVec3 sum;
      for (std::uint32_t k = 0; k < item.count; ++k) sum += item.view[k];
      s.centre = item.count > 0 ? sum * (1.0 / item.count) : TsVec3{};
    }
    s.depth = s.centre.z;
  }
  // Which must come before which: every two items whose bounds overlap, met in the first cell of
  // the grid they share.
  m_edges.clear();
  const Comparer comparer(items, m_solids, eye_distance);
  MakeShadows(items, eye_distance);
  MakeGrid(items);
  const bool shadows = !m_shadows.empty();
  for (int y = 0; y < m_rows; ++y) {
    for (int x = 0; x < m_columns; ++x) {
      const size_t c = static_cast<size_t>(y) * m_columns + x;
      const Entry* begin = &m_cell_entries[0] + m_cell_start[c];
      const Entry* end = &m_cell_entries[0] + m_cell_start[c + 1];
      for (const Entry* ea = begin; ea != end; ++ea) {
        for (const Entry* eb = ea + 1; eb != end; ++eb) {
          // Once, in the first cell the two share; only when their bounds overlap.
          if (std::max(ea->x0, eb->x0) != x || std::max(ea->y0, eb->y0) != y) continue;
          if (!(ea->left < eb->right && eb->left < ea->right && ea->top < eb->bottom &&
                eb->top < ea->bottom)) {
            continue;
          }
          const int a = ea->item, b = eb->item;
          if (shadows && ShadowsApart(m_shadows[a], m_shadows[b])) continue;
          switch (comparer.Compare(a, b)) {
            case Relation::a_first:
              m_edges.emplace_back(a, b);
              break;
            case Relation::b_first:
              m_edges.emplace_back(b, a);
              break;
            case Relation::unknown:
              break;
          }
        }
      }
    }
  }
  // Each item's predecessors, those that must come before it.
  m_start.assign(items.size() + 1, 0);
  for (const auto& e : m_edges) ++m_start[e.second + 1];
  for (size_t i = 1; i < m_start.size(); ++i) m_start[i] += m_start[i - 1];
  m_before.resize(m_edges.size());
  m_filled.assign(m_start.begin(), m_start.end() - 1);
  for (const auto& e : m_edges) m_before[m_filled[e.second]++] = e.first;
  // Farthest first; but before each item, every one of its predecessors not yet painted (and
  // theirs, depth first). A predecessor met again on the way (a cycle) waits for its turn.
  m_by_depth.resize(items.size());
  for (int i = 0; i < n; ++i) m_by_depth[i] = {m_solids[i].depth, i};
  std::sort(m_by_depth.begin(), m_by_depth.end());
  m_state.assign(items.size(), 0);  // 0: waiting, 1: on the way, 2: painted
  m_order.reserve(items.size());
  for (const auto& entry : m_by_depth) {
    if (m_state[entry.second] != 0) continue;
    m_stack.clear();
    m_stack.push_back({entry.second, m_start[entry.second]});
    m_state[entry.second] = 1;
    while (!m_stack.empty()) {
      auto& top = m_stack.back();
      if (top.second < m_start[top.first + 1]) {
        const int before = m_before[top.second++];
        if (m_state[before] == 0) {
          m_state[before] = 1;
          m_stack.push_back({before, m_start[before]});
        }
        continue;
      }
      m_state[top.first] = 2;
      m_order.push_back(top.first);
      m_stack.pop_back();
    }
  }
  return m_order;
}

std::vector<int> TsDepthOrder(const std::vector<TsOrderItem>& items, double eye_distance) {
  TsDepthOrderer orderer;
  return orderer.Order(items, eye_distance);
}
