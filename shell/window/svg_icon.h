// Icons of the window drawn from the small SVG drawings that the host's and the plug-in's
// resources hold (host/platform/resources.h), by Qt's own SVG module (QSvgRenderer): the drawing's
// viewBox fills the square it is painted on. Text that is no SVG document gives a null picture.
#pragma once

#include <QIcon>
#include <QPixmap>

struct HICON__;
typedef HICON__* HICON;

// The drawing painted on a transparent square of size × size pixels: a null pixmap when `svg`
// is no SVG document.
QPixmap TsPaintSvg(const char* svg, int size);

// The picture of a resource icon at its own size: a null icon for a null handle or a drawing
// that cannot be painted.
QIcon TsIconOf(HICON icon);
