// Picking in a drawn frame, as a person sees it: a click takes the frontmost object drawn under
// the pointer (inside a face that covers it, on its label, or within a few pixels of its lines,
// dots and symbols); a window takes every object drawn wholly inside it. Previews' outlines are
// never picked.
#pragma once

#include <vector>

#include "shell/drawing/frame.h"

// The scene index of the object picked at `at`, or -1.
int TsPickAt(const TsFrame& frame, const std::vector<TsSceneObject>& scene, const TsPoint2& at,
             double tolerance);
// The scene indices, in the scene's order, of the drawn objects whose points are all inside
// `window`.
std::vector<int> TsPickInside(const TsFrame& frame, const std::vector<TsSceneObject>& scene,
                              const TsRect& window);
