// Icons of the window drawn from the small SVG drawings that the host's and the plug-in's
// resources hold (host/platform/resources.h). The window toolkit's own SVG support is a module
// the program does not link, so the drawings are painted here: the elements `rect`, `circle` and
// `path` (commands M L H V A Z, absolute or relative), with fill, fill-opacity, stroke,
// stroke-width, stroke-dasharray, stroke-linecap and stroke-linejoin, inside the `viewBox`.
// Anything else in a drawing is left out; text that is no drawing gives a null picture.
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
