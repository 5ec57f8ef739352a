// The model as the drawing (shell/drawing/) draws it: a scene of every object of a document that
// is not hidden, each through its points (a box's eight corners, a polyline's points, a point, a
// light's location and direction), in the look of its state (selected or picked by the prompt that
// asks for objects, locked, or neither), labelled with its name, its SVG group named by its id.
// The window's view, the Picture command's SVG and the --picture PNG draw through it.
#pragma once

#include <string>
#include <vector>

#include "host/zefkit/zk_uuid.h"
#include "host/zefkit/zk_xform.h"
#include "shell/drawing/camera.h"
#include "shell/drawing/scene.h"

class CTarsaDoc;
class CTarsaObject;

struct TsModelScene {
  std::vector<TsSceneObject> objects;
  std::vector<const CTarsaObject*> sources;  // the document's object each scene object draws
};

// The points an object is drawn through, in model coordinates: a light's location, the points of
// a point, polyline or box (a box's eight corners, bottom then top); none for other geometry.
std::vector<ZK_3dPoint> TsDrawnPoints(const CTarsaObject& object);

// The object as a scene object in `state`; false for geometry the drawing does not draw.
bool TsSceneObjectOf(const CTarsaObject& object, TsObjectState state, TsSceneObject& drawn);

// Every object of the document that is not hidden, in the document's order; those selected and
// those in `picked` look selected.
TsModelScene TsSceneOf(CTarsaDoc& doc, const std::vector<ZK_UUID>& picked);

// The names of the standard views, as the Picture command and the View menu give them.
const std::vector<std::wstring>& TsViewNames();
const wchar_t* TsViewName(TsStandardView view);
bool TsViewNamed(const std::wstring& name, TsStandardView& view);

// The SVG picture of the document seen from `view`, orthographically: the model fitted into 640
// pixels, with room round it for the names.
std::string TsPictureSvg(CTarsaDoc& doc, TsStandardView view);
// Writes it to `path`: false with a message in `error`, and nothing written, when the file
// cannot be written.
bool TsWritePictureSvg(CTarsaDoc& doc, TsStandardView view, const std::string& path,
                       std::wstring& error);
