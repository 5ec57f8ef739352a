#include "shell/drawing/svg_writer.h"

#include <cstdio>
#include <sstream>

namespace {

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

std::string Colour(const TsColor& c) {
  if (c.a == 0) return "none";
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", c.r, c.g, c.b);
  return text;
}

std::string Opacity(const char* what, const TsColor& c) {
  if (c.a == 0 || c.a == 255) return "";
  char text[48];
  std::snprintf(text, sizeof text, " %s-opacity=\"%.2f\"", what, c.a / 255.0);
  return text;
}

const char* KindName(TsShapeKind kind) {
  switch (kind) {
    case TsShapeKind::point:
      return "point";
    case TsShapeKind::polyline:
      return "polyline";
    case TsShapeKind::box:
      return "box";
    case TsShapeKind::light:
      return "light";
  }
  return "";
}

const char* StateName(TsObjectState state) {
  switch (state) {
    case TsObjectState::normal:
      return "";
    case TsObjectState::selected:
      return " selected";
    case TsObjectState::locked:
      return " locked";
    case TsObjectState::outline:
      return " outline";
  }
  return "";
}

void Primitive(std::ostringstream& svg, const TsFrame& frame, const TsPrimitive& p) {
  const TsPoint2* q = &frame.points[p.first];
  const std::string stroke = " stroke=\"" + Colour(p.stroke) + "\" stroke-width=\"" +
                             Number(p.width) + "\"" + Opacity("stroke", p.stroke) +
                             (p.dashed ? " stroke-dasharray=\"5 3\"" : "");
  if (p.kind == TsPrimitiveKind::dot) {
    svg << "<circle cx=\"" << Number(q[0].x) << "\" cy=\"" << Number(q[0].y) << "\" r=\""
        << Number(p.radius) << "\" fill=\"" << Colour(p.fill) << "\"" << Opacity("fill", p.fill)
        << stroke << "/>";
    return;
  }
  std::string d;
  for (std::uint32_t i = 0; i < p.count; ++i) {
    const bool move = i == 0 || (p.kind == TsPrimitiveKind::segments && i % 2 == 0);
    d += (move ? "M" : "L") + Number(q[i].x) + " " + Number(q[i].y);
  }
  if (p.kind == TsPrimitiveKind::polygon) d += "Z";
  svg << "<path d=\"" << d << "\" fill=\"" << Colour(p.fill) << "\"" << Opacity("fill", p.fill)
      << stroke << " stroke-linejoin=\"round\"/>";
}

}  // namespace

std::string TsFrameSvg(const TsFrame& frame, const std::vector<TsSceneObject>& scene,
                       const std::string& title) {
  std::ostringstream svg;
  svg << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << Number(frame.width)
      << "\" height=\"" << Number(frame.height)
      << "\" font-family=\"sans-serif\" font-size=\"12\">\n<title>" << Escaped(title)
      << "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
  for (const int index : frame.order) {
    const TsSceneObject& object = scene[index];
    const TsDrawnObject& drawn = frame.objects[index];
    svg << "<g";
    if (!object.id.empty()) svg << " id=\"" << Escaped(object.id) << "\"";
    svg << " class=\"" << KindName(object.kind) << StateName(object.state) << "\">";
    for (std::uint32_t k = 0; k < drawn.primitive_count; ++k) {
      Primitive(svg, frame, frame.primitives[drawn.first_primitive + k]);
    }
    svg << "</g>\n";
  }
  for (const TsLabel& label : frame.labels) {
    const TsSceneObject& object = scene[label.object];
    svg << "<g class=\"label\"";
    if (!object.id.empty()) svg << " data-object=\"" << Escaped(object.id) << "\"";
    svg << ">";
    if (label.leader) {
      svg << "<path d=\"M" << Number(label.leader_from.x) << " " << Number(label.leader_from.y)
          << "L" << Number(label.leader_to.x) << " " << Number(label.leader_to.y) << "\" stroke=\""
          << Colour(kTsLeader) << "\" stroke-width=\"1\"/><circle cx=\""
          << Number(label.leader_to.x) << "\" cy=\"" << Number(label.leader_to.y)
          << "\" r=\"2\" fill=\"" << Colour(kTsLeader) << "\"/>";
    }
    svg << "<rect x=\"" << Number(label.box.left) << "\" y=\"" << Number(label.box.top)
        << "\" width=\"" << Number(label.box.Width()) << "\" height=\""
        << Number(label.box.Height()) << "\" rx=\"3\" fill=\"" << Colour(kTsLabelBackground) << "\""
        << Opacity("fill", kTsLabelBackground) << "/><text x=\"" << Number(label.baseline.x)
        << "\" y=\"" << Number(label.baseline.y) << "\" fill=\"" << Colour(kTsLabelText) << "\">"
        << Escaped(label.text) << "</text></g>\n";
  }
  svg << "</svg>\n";
  return svg.str();
}
