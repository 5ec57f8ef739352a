// Scenes the drawing's tests share: shapes from their points, boxes from two corners, and the demo
// pump of examples/assembly.tsc as it stands assembled and exploded.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "shell/drawing/scene.h"

inline TsSceneObject TestShape(TsShapeKind kind, const std::string& name,
                               std::vector<TsVec3> points,
                               TsObjectState state = TsObjectState::normal) {
  TsSceneObject shape;
  shape.kind = kind;
  shape.state = state;
  shape.label = shape.id = name;
  shape.points = std::move(points);
  return shape;
}

inline TsSceneObject TestBox(const std::string& name, TsVec3 a, TsVec3 b,
                             TsObjectState state = TsObjectState::normal) {
  TsSceneObject box = TestShape(TsShapeKind::box, name, {}, state);
  box.points = {{a.x, a.y, a.z}, {b.x, a.y, a.z}, {b.x, b.y, a.z}, {a.x, b.y, a.z},
                {a.x, a.y, b.z}, {b.x, a.y, b.z}, {b.x, b.y, b.z}, {a.x, b.y, b.z}};
  return box;
}

inline TsSceneObject Moved(TsSceneObject object, TsVec3 by) {
  for (TsVec3& p : object.points) p += by;
  return object;
}

// The demo pump: assembled, or exploded as its Exploded stance puts it.
inline std::vector<TsSceneObject> DemoScene(bool exploded) {
  const auto move = [exploded](TsSceneObject object, TsVec3 by) {
    return exploded ? Moved(std::move(object), by) : object;
  };
  std::vector<TsSceneObject> scene = {
      TestBox("base", {0, 0, 0}, {12, 8, 1}),
      TestBox("housing", {2, 2, 1}, {10, 6, 5}),
      move(TestBox("cover", {2, 2, 5}, {10, 6, 5.5}), {0, 9, 0}),
      move(TestBox("screw-1", {2.2, 2.2, 5.5}, {2.8, 2.8, 6}), {0, 14, 0}),
      move(TestBox("screw-2", {9.2, 2.2, 5.5}, {9.8, 2.8, 6}), {0, 14, 0}),
      move(TestBox("screw-3", {9.2, 5.2, 5.5}, {9.8, 5.8, 6}), {0, 13, 0}),
      move(TestBox("screw-4", {2.2, 5.2, 5.5}, {2.8, 5.8, 6}), {0, 13, 0}),
  };
  scene.push_back(
      move(TestShape(TsShapeKind::polyline, "shaft", {{0, 4, 3}, {12, 4, 3}}), {0, -9, 0}));
  scene.push_back(move(TestBox("impeller", {5, 3, 2}, {7, 5, 4}), {0, -9, 0}));
  scene.push_back(move(TestBox("bearing-front", {1.5, 3.5, 2.5}, {2, 4.5, 3.5}), {-4, 0, 0}));
  scene.push_back(move(TestBox("bearing-back", {10, 3.5, 2.5}, {10.5, 4.5, 3.5}), {4, 0, 0}));
  scene.push_back(move(TestBox("inlet", {10.5, 3.6, 2.6}, {13, 4.4, 3.4}), {8, 0, 0}));
  TsSceneObject light = TestShape(TsShapeKind::light, "work-light", {{6, -3, 8}});
  light.direction = {0, 1, -1};
  scene.push_back(light);
  return scene;
}
