// Paints a drawn frame (shell/drawing/frame.h) with Qt, as it stands: its primitives in order,
// then its labels with their backgrounds and leader lines in `font`. Finely, antialiased; or
// quickly, for a view that turns under the mouse: without antialiasing, and the faces of objects
// smaller than kTsQuickEdgePixels without their edges. The window's view paints through it, and
// so does the benchmark of the drawing.
#pragma once

#include <QFont>

#include "shell/drawing/frame.h"

class QPainter;

void TsPaintFrame(QPainter& painter, const TsFrame& frame, const QFont& font, bool finely = true);

constexpr double kTsQuickEdgePixels = 12;
// Whether the primitive is painted with its edges.
bool TsPaintsEdges(const TsFrame& frame, const TsPrimitive& primitive, bool finely);

// The drawing's options for text in `font`: its widths, height and ascent.
TsDrawOptions TsTextOptions(const QFont& font);
