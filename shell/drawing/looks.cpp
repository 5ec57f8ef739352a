#include <algorithm>
#include <cmath>

#include "shell/drawing/scene.h"

const int kTsBoxFaces[6][4] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4},
                               {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}};
const int kTsBoxEdges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};

const TsColor kTsLabelText{0x22, 0x22, 0x22, 0xff};
const TsColor kTsLabelBackground{0xff, 0xff, 0xff, 0xd0};
const TsColor kTsLeader{0x55, 0x55, 0x55, 0xff};

TsLook TsLookOf(TsShapeKind kind, TsObjectState state) {
  TsLook look;
  switch (state) {
    case TsObjectState::normal:
      look.fill = {0x9d, 0xb4, 0xd3, 0xff};
      look.edge = {0x1f, 0x3a, 0x5f, 0xff};
      look.width = 1;
      break;
    case TsObjectState::selected:
      look.fill = {0xf6, 0xb2, 0x6b, 0xff};
      look.edge = {0xe8, 0x70, 0x0a, 0xff};
      look.width = 2.5;
      break;
    case TsObjectState::locked:
      look.fill = {0xc8, 0xc8, 0xc8, 0xff};
      look.edge = {0x88, 0x88, 0x88, 0xff};
      look.width = 1;
      break;
    case TsObjectState::outline:
      look.fill = {0, 0, 0, 0};
      look.edge = {0x0b, 0x8a, 0x6f, 0xff};
      look.width = 1.5;
      look.dashed = true;
      break;
  }
  if (kind == TsShapeKind::light && state != TsObjectState::outline) {
    look.fill = {0xff, 0xd8, 0x4a, 0xff};
  }
  if ((kind == TsShapeKind::polyline || kind == TsShapeKind::light) &&
      state != TsObjectState::outline) {
    look.width += 1;
  }
  return look;
}

TsColor TsShaded(const TsColor& base, const TsVec3& n) {
  static const TsVec3 light = Normalized({-0.45, 0.6, 0.66});
  const double lit = 0.55 + 0.45 * std::max(0.0, Dot(n, light));
  const auto channel = [lit](std::uint8_t c) {
    return static_cast<std::uint8_t>(std::lround(std::min(255.0, c * lit + (1 - lit) * 40)));
  };
  return {channel(base.r), channel(base.g), channel(base.b), base.a};
}
