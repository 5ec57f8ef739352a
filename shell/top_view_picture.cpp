#include "shell/top_view_picture.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <vector>

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "shell/object_listing.h"

const int kTsBoxEdges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};

namespace {

constexpr double kSize = 640;   // the longer side of the drawing, in pixels
constexpr double kMargin = 40;  // room for names at the edges

struct Frame {
  double min_x = 0, min_y = 0, scale = 1, height = 0;
  double X(double x) const { return kMargin + (x - min_x) * scale; }
  double Y(double y) const { return height - kMargin - (y - min_y) * scale; }  // y points up
};

Frame FrameFor(const std::vector<const CTarsaObject*>& objects) {
  bool any = false;
  double min_x = 0, min_y = 0, max_x = 1, max_y = 1;
  for (const CTarsaObject* object : objects) {
    for (const ZK_3dPoint& p : TsTopViewPoints(*object)) {
      min_x = any ? std::min(min_x, p.x) : p.x;
      min_y = any ? std::min(min_y, p.y) : p.y;
      max_x = any ? std::max(max_x, p.x) : p.x;
      max_y = any ? std::max(max_y, p.y) : p.y;
      any = true;
    }
  }
  const double extent = std::max({max_x - min_x, max_y - min_y, 1e-9});
  Frame frame;
  frame.min_x = min_x;
  frame.min_y = min_y;
  frame.scale = any && extent > 1e-9 ? kSize / extent : 1;
  frame.height = (max_y - min_y) * frame.scale + 2 * kMargin;
  return frame;
}

std::string Number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", value);
  return text;
}

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string Style(const CTarsaObject& object) {
  if (object.ObjectState() == CTarsaObject::hidden_object) {
    return R"( class="hidden" stroke="#999999" stroke-dasharray="4 3" opacity="0.5")";
  }
  if (object.IsSelected()) return R"( class="selected" stroke="#e8700a" stroke-width="3")";
  if (object.ObjectState() == CTarsaObject::locked_object)
    return R"( class="locked" stroke="#888888")";
  return R"( stroke="#1f3a5f")";
}

std::string Line(const Frame& f, const ZK_3dPoint& a, const ZK_3dPoint& b) {
  return "M" + Number(f.X(a.x)) + " " + Number(f.Y(a.y)) + "L" + Number(f.X(b.x)) + " " +
         Number(f.Y(b.y));
}

// The object's shape as SVG elements.
std::string Shape(const Frame& f, const CTarsaObject& object) {
  const std::vector<ZK_3dPoint> p = TsTopViewPoints(object);
  if (const ZK_Light* light = ZK_Light::Cast(object.Geometry())) {
    const ZK_3dVector& d = light->m_direction;
    const double length = std::max(std::hypot(d.x, d.y), 1e-9);
    const double ray = 30 / f.scale;
    const ZK_3dPoint tip{p[0].x + d.x / length * ray, p[0].y + d.y / length * ray, 0};
    return "<circle cx=\"" + Number(f.X(p[0].x)) + "\" cy=\"" + Number(f.Y(p[0].y)) +
           "\" r=\"8\" fill=\"#ffd84a\"/><path d=\"" + Line(f, p[0], tip) + "\"/>";
  }
  if (p.size() == 1) {
    return "<circle cx=\"" + Number(f.X(p[0].x)) + "\" cy=\"" + Number(f.Y(p[0].y)) +
           "\" r=\"3\" fill=\"currentColor\"/>";
  }
  std::string path;
  if (object.ObjectType() == ZK_Box::kObjectType && p.size() == 8) {
    for (const auto& edge : kTsBoxEdges) path += Line(f, p[edge[0]], p[edge[1]]);
  } else {
    for (size_t i = 0; i + 1 < p.size(); ++i) path += Line(f, p[i], p[i + 1]);
  }
  return "<path d=\"" + path + "\"/>";
}

std::string Label(const Frame& f, const CTarsaObject& object) {
  const ZK_wString& name = object.Attributes().m_name;
  const std::vector<ZK_3dPoint> p = TsTopViewPoints(object);
  if (name.IsEmpty() || p.empty()) return "";
  double x = p[0].x, y = p[0].y;
  for (const ZK_3dPoint& point : p) {
    x = std::min(x, point.x);
    y = std::max(y, point.y);
  }
  return "<text x=\"" + Number(f.X(x)) + "\" y=\"" + Number(f.Y(y) - 6) +
         "\" stroke=\"none\" fill=\"#222222\">" + Escaped(name.ToUtf8()) + "</text>";
}

}  // namespace

std::vector<ZK_3dPoint> TsTopViewPoints(const CTarsaObject& object) {
  if (const ZK_Light* light = ZK_Light::Cast(object.Geometry())) return {light->m_location};
  const ZK_PointGeometry* shape = ZK_PointGeometry::Cast(object.Geometry());
  return shape ? shape->Points() : std::vector<ZK_3dPoint>();
}

std::string TsTopViewSvg(CTarsaDoc& doc) {
  const std::vector<const CTarsaObject*> objects = TsEveryObject(doc);
  const Frame frame = FrameFor(objects);
  double width = 2 * kMargin;
  for (const CTarsaObject* object : objects) {
    for (const ZK_3dPoint& p : TsTopViewPoints(*object))
      width = std::max(width, frame.X(p.x) + kMargin);
  }
  std::ostringstream svg;
  svg << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << Number(width) << "\" height=\""
      << Number(frame.height) << "\" font-family=\"sans-serif\" font-size=\"12\">\n"
      << "<title>Top view</title>\n<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
  for (const CTarsaObject* object : objects) {
    svg << "<g id=\"" << ZK_UuidToString(object->ModelObjectId()).ToUtf8() << "\" fill=\"none\""
        << Style(*object) << ">" << Shape(frame, *object) << Label(frame, *object) << "</g>\n";
  }
  svg << "</svg>\n";
  return svg.str();
}

bool TsWriteTopViewSvg(CTarsaDoc& doc, const std::string& path, std::wstring& error) {
  const std::string svg = TsTopViewSvg(doc);
  std::ofstream file(path, std::ios::binary);
  if (file && file.write(svg.data(), static_cast<std::streamsize>(svg.size())) && file.flush()) {
    return true;
  }
  error = L"Could not write the picture " + ZK_wString::FromUtf8(path).Text() + L".";
  return false;
}
