// A picture of the model without any window system: the top view (looking down the z axis) as
// SVG. Every object of the document is drawn with its name: boxes by their edges, polylines,
// points as dots, lights as a sun with a ray toward where they shine. Selected objects are drawn
// highlighted, hidden ones faint and dashed, locked ones grey. The view fits the objects.
#pragma once

#include <string>
#include <vector>

#include "host/zefkit/zk_xform.h"

class CTarsaDoc;
class CTarsaObject;

// The points an object is drawn through, in model coordinates: a light's location, the points of
// a point, polyline or box (a box's eight corners, bottom then top, joined by kTsBoxEdges); none
// for other geometry.
std::vector<ZK_3dPoint> TsTopViewPoints(const CTarsaObject& object);
extern const int kTsBoxEdges[12][2];

// The SVG text of the document's top view.
std::string TsTopViewSvg(CTarsaDoc& doc);
// Writes it to `path`: false with a message in `error`, and nothing written, when the file
// cannot be written.
bool TsWriteTopViewSvg(CTarsaDoc& doc, const std::string& path, std::wstring& error);
