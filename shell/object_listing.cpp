#include "shell/object_listing.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/standin/zk_point_geometry.h"

namespace {

const wchar_t* Kind(const CTarsaObject& object) {
  switch (object.ObjectType()) {
    case ZK_Point::kObjectType:
      return L"point";
    case ZK_Polyline::kObjectType:
      return L"polyline";
    case ZK_Box::kObjectType:
      return L"box";
    case ZK_Light::kObjectType:
      return L"light";
  }
  return L"object";
}

std::wstring State(const CTarsaObject& object) {
  std::wstring state;
  switch (object.ObjectState()) {
    case CTarsaObject::locked_object:
      state = L"locked";
      break;
    case CTarsaObject::hidden_object:
      state = L"hidden";
      break;
    default:
      state = L"normal";
  }
  if (object.IsReference()) state += L" reference";
  if (object.IsSelected()) state += L" selected";
  if (object.HistoryRecord()) state += L" history";
  return state;
}

// A light's location and direction; the corners of the box around any other shape.
std::wstring Where(const CTarsaObject& object) {
  if (const ZK_Light* light = ZK_Light::Cast(object.Geometry())) {
    const ZK_3dVector& d = light->m_direction;
    return L"at " + TsFormatPoint(light->m_location) + L" toward " +
           TsFormatPoint(ZK_3dPoint{d.x, d.y, d.z});
  }
  const ZK_PointGeometry* shape = ZK_PointGeometry::Cast(object.Geometry());
  if (shape == nullptr || shape->Points().empty()) return L"";
  const std::vector<ZK_3dPoint>& points = shape->Points();
  if (points.size() == 1) return L"at " + TsFormatPoint(points[0]);
  ZK_3dPoint low = points[0], high = points[0];
  for (const ZK_3dPoint& p : points) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
  }
  return L"from " + TsFormatPoint(low) + L" to " + TsFormatPoint(high);
}

std::wstring Padded(const std::wstring& text, size_t width) {
  return text + std::wstring(width - text.size(), L' ');
}

}  // namespace

std::wstring TsFormatNumber(double value) {
  if (std::fabs(value) < 0.0005) value = 0;
  wchar_t text[64];
  std::swprintf(text, 64, L"%.3f", value);
  std::wstring result = text;
  while (result.back() == L'0') result.pop_back();
  if (result.back() == L'.') result.pop_back();
  return result;
}

std::wstring TsFormatPoint(const ZK_3dPoint& point) {
  return TsFormatNumber(point.x) + L"," + TsFormatNumber(point.y) + L"," + TsFormatNumber(point.z);
}

std::wstring TsListObjects(const std::vector<const CTarsaObject*>& objects) {
  std::vector<std::vector<std::wstring>> rows;
  std::vector<size_t> widths(5, 0);
  for (const CTarsaObject* object : objects) {
    const ZK_wString& name = object->Attributes().m_name;
    rows.push_back({name.IsEmpty() ? L"(unnamed)" : name.Text(), Kind(*object), State(*object),
                    Where(*object), ZK_UuidToString(object->ModelObjectId()).Text()});
    for (size_t i = 0; i < widths.size(); ++i)
      widths[i] = std::max(widths[i], rows.back()[i].size());
  }
  std::wstring text;
  for (const std::vector<std::wstring>& row : rows) {
    for (size_t i = 0; i + 1 < row.size(); ++i) text += Padded(row[i], widths[i]) + L"  ";
    text += row.back() + L"\n";
  }
  return text;
}

std::vector<const CTarsaObject*> TsEveryObject(CTarsaDoc& doc) {
  CTarsaObjectIterator it(
      doc, CTarsaObject::normal_object | CTarsaObject::locked_object | CTarsaObject::hidden_object,
      CTarsaObject::active_object | CTarsaObject::reference_object);
  it.IncludeLights(true);
  it.EnableVisibleFilter(false);
  std::vector<const CTarsaObject*> objects;
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    objects.push_back(object);
  }
  return objects;
}
