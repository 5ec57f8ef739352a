// Paints a drawn frame (shell/drawing/frame.h) with Qt, as it stands: its primitives in order,
// antialiased unless asked not to (quicker, for a view that turns under the mouse), then its
// labels with their backgrounds and leader lines in `font`. The window's view paints through it,
// and so does the benchmark of the drawing.
#pragma once

#include <QFont>

#include "shell/drawing/frame.h"

class QPainter;

void TsPaintFrame(QPainter& painter, const TsFrame& frame, const QFont& font,
                  bool antialiased = true);

// The drawing's options for text in `font`: its widths, height and ascent.
TsDrawOptions TsTextOptions(const QFont& font);
