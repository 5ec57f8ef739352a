#include "shell/model_scene.h"

#include <algorithm>
#include <fstream>

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "shell/drawing/frame.h"
#include "shell/drawing/svg_writer.h"
#include "shell/object_listing.h"

namespace {

constexpr double kPictureSize = 640;   // the longer side of the model in a picture, in pixels
constexpr double kPictureMargin = 70;  // room for names round it

TsVec3 Vec(const ZK_3dPoint& p) { return {p.x, p.y, p.z}; }

}  // namespace

std::vector<ZK_3dPoint> TsDrawnPoints(const CTarsaObject& object) {
  if (const ZK_Light* light = ZK_Light::Cast(object.Geometry())) return {light->m_location};
  const ZK_PointGeometry* shape = ZK_PointGeometry::Cast(object.Geometry());
  return shape ? shape->Points() : std::vector<ZK_3dPoint>();
}

bool TsSceneObjectOf(const CTarsaObject& object, TsObjectState state, TsSceneObject& drawn) {
  const std::vector<ZK_3dPoint> points = TsDrawnPoints(object);
  if (points.empty()) return false;
  drawn = TsSceneObject();
  drawn.state = state;
  for (const ZK_3dPoint& p : points) drawn.points.push_back(Vec(p));
  if (const ZK_Light* light = ZK_Light::Cast(object.Geometry())) {
    drawn.kind = TsShapeKind::light;
    drawn.direction = {light->m_direction.x, light->m_direction.y, light->m_direction.z};
  } else if (object.ObjectType() == ZK_Box::kObjectType && points.size() == 8) {
    drawn.kind = TsShapeKind::box;
  } else {
    drawn.kind = points.size() == 1 ? TsShapeKind::point : TsShapeKind::polyline;
  }
  drawn.label = object.Attributes().m_name.ToUtf8();
  drawn.id = ZK_UuidToString(object.ModelObjectId()).ToUtf8();
  return true;
}

TsModelScene TsSceneOf(CTarsaDoc& doc, const std::vector<ZK_UUID>& picked) {
  TsModelScene scene;
  for (const CTarsaObject* object : TsEveryObject(doc)) {
    if (object->ObjectState() == CTarsaObject::hidden_object) continue;
    const bool highlighted =
        object->IsSelected() ||
        std::find(picked.begin(), picked.end(), object->ModelObjectId()) != picked.end();
    const TsObjectState state = highlighted ? TsObjectState::selected
                                : object->ObjectState() == CTarsaObject::locked_object
                                    ? TsObjectState::locked
                                    : TsObjectState::normal;
    TsSceneObject drawn;
    if (!TsSceneObjectOf(*object, state, drawn)) continue;
    scene.objects.push_back(std::move(drawn));
    scene.sources.push_back(object);
  }
  return scene;
}

const std::vector<std::wstring>& TsViewNames() {
  static const std::vector<std::wstring> names = {L"Top", L"Front", L"Right", L"Iso"};
  return names;
}

const wchar_t* TsViewName(TsStandardView view) {
  return TsViewNames()[static_cast<size_t>(view)].c_str();
}

bool TsViewNamed(const std::wstring& name, TsStandardView& view) {
  for (size_t i = 0; i < TsViewNames().size(); ++i) {
    if (ZK_wString(TsViewNames()[i].c_str()).CompareNoCase(name.c_str()) == 0) {
      view = static_cast<TsStandardView>(i);
      return true;
    }
  }
  return false;
}

std::string TsPictureSvg(CTarsaDoc& doc, TsStandardView view) {
  const TsModelScene scene = TsSceneOf(doc, {});
  // The model's extent as the view sees it, at one pixel a unit, gives the picture's size.
  TsCamera camera;
  camera.SetStandardView(view);
  const std::vector<TsVec3> points = TsScenePoints(scene.objects);
  double width = 0, height = 0;
  if (!points.empty()) {
    TsVec3 low = camera.ToView(points[0]), high = low;
    for (const TsVec3& p : points) {
      const TsVec3 v = camera.ToView(p);
      low = {std::min(low.x, v.x), std::min(low.y, v.y), 0};
      high = {std::max(high.x, v.x), std::max(high.y, v.y), 0};
    }
    width = high.x - low.x;
    height = high.y - low.y;
  }
  const double longer = std::max(width, height);
  const double scale = longer > 1e-9 ? kPictureSize / longer : 1;
  camera.SetViewport(std::max(width * scale, 160.0) + 2 * kPictureMargin,
                     std::max(height * scale, 80.0) + 2 * kPictureMargin);
  camera.Fit(points, kPictureMargin);
  if (longer <= 1e-9) camera.SetScale(1);
  TsDrawOptions options;
  options.text_width = TsApproximateTextWidth;
  const TsFrame frame = TsDrawScene(scene.objects, camera, options);
  return TsFrameSvg(frame, scene.objects, ZK_wString(TsViewName(view)).ToUtf8() + " view");
}

bool TsWritePictureSvg(CTarsaDoc& doc, TsStandardView view, const std::string& path,
                       std::wstring& error) {
  const std::string svg = TsPictureSvg(doc, view);
  std::ofstream file(path, std::ios::binary);
  if (file && file.write(svg.data(), static_cast<std::streamsize>(svg.size())) && file.flush()) {
    return true;
  }
  error = L"Could not write the picture " + ZK_wString::FromUtf8(path).Text() + L".";
  return false;
}
