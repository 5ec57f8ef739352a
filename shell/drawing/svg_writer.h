// A drawn frame as an SVG document: a white page of the frame's size, then each object's
// primitives in the order they are painted, in a group named by the object's id with its kind and
// state as classes, then the labels with their backgrounds and leader lines.
#pragma once

#include <string>
#include <vector>

#include "shell/drawing/frame.h"

std::string TsFrameSvg(const TsFrame& frame, const std::vector<TsSceneObject>& scene,
                       const std::string& title);
