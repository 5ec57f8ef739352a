#include "shell/drawing/labels.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kGap = 3;        // between an object and a label beside it
constexpr double kSpacing = 2;    // kept free round every label
constexpr double kGridCell = 64;  // of the grid that finds placed labels near a place

// The labels placed so far, found by a grid of the viewport.
class Placed {
 public:
  Placed(double width, double height)
      : m_columns(std::max(1, static_cast<int>(std::ceil(width / kGridCell)))),
        m_rows(std::max(1, static_cast<int>(std::ceil(height / kGridCell)))),
        m_cells(static_cast<size_t>(m_columns) * m_rows) {}

  bool Overlaps(const TsRect& box) const {
    const TsRect wide = box.Inflated(kSpacing);
    bool overlaps = false;
    ForCells(wide, [&](size_t cell) {
      for (int i : m_cells[cell]) overlaps = overlaps || m_boxes[i].Intersects(wide);
    });
    return overlaps;
  }
  bool Crosses(const TsPoint2& a, const TsPoint2& b) const {
    const TsRect span{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                      std::max(a.y, b.y)};
    bool crosses = false;
    ForCells(span.Inflated(1), [&](size_t cell) {
      for (int i : m_cells[cell]) crosses = crosses || SegmentMeets(a, b, m_boxes[i]);
    });
    return crosses;
  }
  void Add(const TsRect& box) {
    const int index = static_cast<int>(m_boxes.size());
    m_boxes.push_back(box);
    ForCells(box.Inflated(kSpacing), [&](size_t cell) { m_cells[cell].push_back(index); });
  }

 private:
  template <typename Visit>
  void ForCells(const TsRect& r, Visit visit) const {
    const int x0 = std::clamp(TsToInt(std::floor(r.left / kGridCell)), 0, m_columns - 1);
    const int x1 = std::clamp(TsToInt(std::floor(r.right / kGridCell)), 0, m_columns - 1);
    const int y0 = std::clamp(TsToInt(std::floor(r.top / kGridCell)), 0, m_rows - 1);
    const int y1 = std::clamp(TsToInt(std::floor(r.bottom / kGridCell)), 0, m_rows - 1);
    for (int y = y0; y <= y1; ++y) {
      for (int x = x0; x <= x1; ++x) visit(static_cast<size_t>(y) * m_columns + x);
    }
  }
  // Whether the segment from a to b meets the rectangle (Liang-Barsky clipping).
  static bool SegmentMeets(const TsPoint2& a, const TsPoint2& b, const TsRect& r) {
    double t0 = 0, t1 = 1;
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {a.x - r.left, r.right - a.x, a.y - r.top, r.bottom - a.y};
    for (int i = 0; i < 4; ++i) {
      if (p[i] == 0) {
        if (q[i] < 0) return false;
        continue;
      }
      const double t = q[i] / p[i];
      if (p[i] < 0) {
        t0 = std::max(t0, t);
      } else {
        t1 = std::min(t1, t);
      }
      if (t0 > t1) return false;
    }
    return true;
  }

  int m_columns, m_rows;
  std::vector<std::vector<int>> m_cells;
  std::vector<TsRect> m_boxes;
};

// The point of the rectangle nearest to p.
TsPoint2 Nearest(const TsRect& r, const TsPoint2& p) {
  return {std::clamp(p.x, r.left, r.right), std::clamp(p.y, r.top, r.bottom)};
}

}  // namespace

std::vector<TsLabel> TsPlaceLabels(std::vector<TsLabelRequest> requests, double width,
                                   double height, const TsLabelSpace* space) {
  std::stable_sort(requests.begin(), requests.end(),
                   [](const TsLabelRequest& a, const TsLabelRequest& b) {
                     if (a.priority != b.priority) return a.priority < b.priority;
                     if (a.seen != b.seen) return a.seen > b.seen;
                     return a.object < b.object;
                   });
  const TsRect view{0, 0, width, height};
  Placed placed(width, height);
  std::vector<TsLabel> labels;
  constexpr double kPi = 3.14159265358979323846;
  for (const TsLabelRequest& request : requests) {
    const double w = request.width + 2 * kTsLabelPadding;
    const double h = request.height + 2 * kTsLabelPadding;
    const TsRect& o = request.around;
    const TsPoint2& a = request.anchor;
    const double cx = (o.left + o.right) / 2, cy = (o.top + o.bottom) / 2;
    const auto at = [w, h](double left, double top) {
      return TsRect{left, top, left + w, top + h};
    };
    // Beside the object: at a corner of its anchor, above or below it, to a side, then on it.
    const TsRect near[] = {at(a.x + kGap, a.y - kGap - h),   at(a.x - kGap - w, a.y - kGap - h),
                           at(a.x + kGap, a.y + kGap),       at(a.x - kGap - w, a.y + kGap),
                           at(cx - w / 2, o.top - kGap - h), at(cx - w / 2, o.bottom + kGap),
                           at(o.right + kGap, cy - h / 2),   at(o.left - kGap - w, cy - h / 2),
                           at(a.x - w / 2, a.y - h / 2)};
    // What a place costs: what it hides of the other objects (a share of the label) and of its
    // own (a share of what is seen of it), and then how far it is from the object.
    const auto hides = [&](const TsRect& box) {
      if (space == nullptr) return 0.0;
      int others = 0, own = 0, cells = 0;
      space->Count(box, request.object, others, own, cells);
      const int seen = std::max(1, space->Seen(request.object));
      return (cells > 0 ? static_cast<double>(others) / cells : 0.0) +
             static_cast<double>(own) / seen;
    };
    const auto free = [&](const TsRect& box) {
      return box.left >= view.left && box.top >= view.top && box.right <= view.right &&
             box.bottom <= view.bottom && !placed.Overlaps(box);
    };
    TsLabel best;
    double best_cost = 1e300;
    int index = 0;
    for (const TsRect& box : near) {
      const double order = 0.02 * index++;
      if (order >= best_cost || !free(box)) continue;
      const double cost = hides(box) + order;
      if (cost < best_cost) {
        best_cost = cost;
        best.box = box;
      }
    }
    // Farther away, with a leader: round the object at growing distances.
    for (double distance : {18.0, 36.0, 60.0, 90.0, 130.0}) {
      const double moved = 0.25 + distance / 500;
      if (moved >= best_cost) break;
      for (int step = 0; step < 16; ++step) {
        // Starting up and to the right, the way most labels read.
        const double angle = kPi / 4 + step * kPi / 8;
        const double dx = std::cos(angle), dy = -std::sin(angle);
        // The centre of a label that keeps `distance` from the object's rectangle.
        const double reach_x = o.Width() / 2 + w / 2 + distance;
        const double reach_y = o.Height() / 2 + h / 2 + distance;
        const TsRect box = at(cx + dx * reach_x - w / 2, cy + dy * reach_y - h / 2);
        if (!free(box)) continue;
        const TsPoint2 from = Nearest(box, a);
        if (placed.Crosses(from, a)) continue;
        const double cost = hides(box) + moved;
        if (cost >= best_cost) continue;
        best_cost = cost;
        best.box = box;
        best.leader = true;
        best.leader_from = from;
        best.leader_to = a;
      }
    }
    if (best_cost >= 1e300) continue;
    best.object = request.object;
    best.text = request.text;
    best.baseline = {best.box.left + kTsLabelPadding,
                     best.box.top + kTsLabelPadding + request.ascent};
    placed.Add(best.box);
    labels.push_back(std::move(best));
  }
  return labels;
}
