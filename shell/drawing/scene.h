// What the drawing draws: objects by kind, with the points they are drawn through in model
// coordinates, the state that chooses their look, and the name they are labelled with. The
// drawing knows nothing of documents; the host program makes a scene of a document
// (shell/model_scene.h).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/drawing/vector_math.h"

enum class TsShapeKind {
  point,     // one point: a dot
  polyline,  // its points joined in order
  box,       // eight corners, bottom 0-3 then top 4-7 above them: solid faces with their edges
  light,     // one point, the light's location, and a direction: a sun with a ray
};

enum class TsObjectState {
  normal,
  selected,  // selected, or picked by the prompt that asks for objects: highlighted
  locked,    // grey
  outline,   // a preview: edges only, dashed, over everything else, never labelled
};

struct TsSceneObject {
  TsShapeKind kind = TsShapeKind::point;
  TsObjectState state = TsObjectState::normal;
  std::vector<TsVec3> points;
  TsVec3 direction{0, 0, -1};  // a light's
  std::string label;           // UTF-8; empty: none
  std::string id;              // names the object's group in an SVG drawing; may be empty
};

// The corners of each face of a box, going round the face.
extern const int kTsBoxFaces[6][4];
// The corners each edge of a box joins.
extern const int kTsBoxEdges[12][2];

// An RGBA colour; alpha 0 is none.
struct TsColor {
  std::uint8_t r = 0, g = 0, b = 0, a = 255;
  bool operator==(const TsColor& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
  bool operator!=(const TsColor& o) const { return !(*this == o); }
};

// How an object of a kind in a state looks: the colour of a box's faces before shading (and of
// a light's sun), of its edges, lines and dots, the width of its lines in pixels, and whether
// they are dashed.
struct TsLook {
  TsColor fill;
  TsColor edge;
  double width = 1;
  bool dashed = false;
};
TsLook TsLookOf(TsShapeKind kind, TsObjectState state);
// A face's colour: `base` lit from above, left and in front of the viewer, by the face's
// outward normal in view coordinates (unit length).
TsColor TsShaded(const TsColor& base, const TsVec3& view_normal);
// The colour of labels, their backgrounds and leader lines.
extern const TsColor kTsLabelText;
extern const TsColor kTsLabelBackground;
extern const TsColor kTsLeader;
