// The window's drawing (shell/drawing/ painted by shell/window/frame_painter.h) of many boxes into
// an offscreen image of 1000 × 700 pixels, seen isometrically: a grid of boxes of random sizes,
// each frame projected, ordered back to front, shaded and painted. The baselines paint the same
// polygons, with the same pens and brushes, in the order the drawing computed beforehand, so
// that a row's ratio is what the drawing adds to Qt's painting. An orbit turns the view a little
// each frame and paints without antialiasing, as the view does while the mouse turns it; a glide
// moves 1,000 boxes (each shifted and turned) against a still view of them. Every benchmark
// reports its frames per second.
#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <random>
#include <vector>

#include "bench/ratio_table.h"
#include "shell/drawing/frame.h"
#include "shell/drawing/glide.h"
#include "shell/window/frame_painter.h"

namespace {

constexpr int kWidth = 1000;
constexpr int kHeight = 700;

void GlideSize(benchmark::internal::Benchmark* b) { b->Arg(1000)->Unit(benchmark::kMillisecond); }

TsSceneObject Box(const TsVec3& a, const TsVec3& b) {
  TsSceneObject box;
  box.kind = TsShapeKind::box;
  box.points = {{a.x, a.y, a.z}, {b.x, a.y, a.z}, {b.x, b.y, a.z}, {a.x, b.y, a.z},
                {a.x, a.y, b.z}, {b.x, a.y, b.z}, {b.x, b.y, b.z}, {a.x, b.y, b.z}};
  return box;
}

// `count` boxes on a square grid one unit apart, each of a random footprint and height.
std::vector<TsSceneObject> Grid(int count) {
  const int side = static_cast<int>(std::ceil(std::sqrt(count)));
  std::mt19937 random(2024);
  std::uniform_real_distribution<double> footprint(0.3, 0.9), height(0.3, 2.0);
  std::vector<TsSceneObject> scene;
  scene.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) {
    const double x = i % side, y = i / side;
    scene.push_back(Box({x, y, 0}, {x + footprint(random), y + footprint(random), height(random)}));
  }
  return scene;
}

TsCamera Iso(const std::vector<TsSceneObject>& scene) {
  TsCamera camera;
  camera.SetViewport(kWidth, kHeight);
  camera.SetStandardView(TsStandardView::iso);
  camera.Fit(TsScenePoints(scene), 20);
  return camera;
}

QImage Image() {
  QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::white);
  return image;
}

void Frames(benchmark::State& state) {
  state.counters["fps"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

// Checks that a frame was drawn: a face of every box at least, and ink on a tenth of the image.
bool Drew(benchmark::State& state, const TsFrame& frame, const QImage& image, size_t boxes) {
  int inked = 0, samples = 0;
  for (int y = 0; y < kHeight; y += 7) {
    for (int x = 0; x < kWidth; x += 7) {
      ++samples;
      inked += image.pixel(x, y) != qRgb(255, 255, 255);
    }
  }
  if (frame.primitives.size() < boxes || inked * 10 < samples) {
    state.SkipWithError("nothing was drawn");
    return false;
  }
  return true;
}

// The drawing: every frame projected, ordered, shaded and painted.
void Draw(benchmark::State& state, bool quickly, bool orbit) {
  const std::vector<TsSceneObject> scene = Grid(static_cast<int>(state.range(0)));
  TsCamera camera = Iso(scene);
  TsDrawing drawing;
  drawing.Draw(scene, camera, TsDrawOptions());  // the memory the view keeps from frame to frame
  QImage image = Image();
  const QFont font;
  for (auto _ : state) {
    if (orbit) camera.Orbit(2, 0);
    const TsFrame& frame = drawing.Draw(scene, camera, TsDrawOptions());
    image.fill(Qt::white);
    QPainter painter(&image);
    TsPaintFrame(painter, frame, font, !quickly);
  }
  if (Drew(state, drawing.Frame(), image, scene.size())) Frames(state);
}

// The same polygons, already in the drawing's order, painted with the same pens and brushes.
void Paint(benchmark::State& state, bool quickly, bool orbit) {
  const std::vector<TsSceneObject> scene = Grid(static_cast<int>(state.range(0)));
  TsCamera camera = Iso(scene);
  if (orbit) camera.Orbit(2, 0);
  TsDrawing drawing;
  const TsFrame& frame = drawing.Draw(scene, camera, TsDrawOptions());
  std::vector<QPolygonF> polygons;
  std::vector<QBrush> brushes;
  std::vector<char> edged;
  polygons.reserve(frame.primitives.size());
  for (const TsPrimitive& p : frame.primitives) {
    edged.push_back(TsPaintsEdges(frame, p, !quickly));
    QPolygonF polygon;
    for (std::uint32_t i = 0; i < p.count; ++i) {
      polygon << QPointF(frame.points[p.first + i].x, frame.points[p.first + i].y);
    }
    polygons.push_back(polygon);
    brushes.emplace_back(QColor(p.fill.r, p.fill.g, p.fill.b, p.fill.a));
  }
  const TsPrimitive& first = frame.primitives.front();
  QPen pen(QColor(first.stroke.r, first.stroke.g, first.stroke.b), first.width);
  pen.setJoinStyle(Qt::RoundJoin);
  pen.setCapStyle(Qt::RoundCap);
  QImage image = Image();
  for (auto _ : state) {
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, !quickly);
    const QBrush* brush = nullptr;
    int pen_set = -1;
    for (size_t i = 0; i < polygons.size(); ++i) {
      if (edged[i] != pen_set) {
        painter.setPen(edged[i] ? pen : QPen(Qt::NoPen));
        pen_set = edged[i];
      }
      if (brush == nullptr || brushes[i] != *brush) {
        painter.setBrush(brushes[i]);
        brush = &brushes[i];
      }
      painter.drawConvexPolygon(polygons[i]);
    }
  }
  if (Drew(state, frame, image, scene.size())) Frames(state);
}

void BM_DrawBoxes(benchmark::State& state) { Draw(state, false, false); }
void BM_PaintOrderedPolygons(benchmark::State& state) { Paint(state, false, false); }
void BM_OrbitBoxes(benchmark::State& state) { Draw(state, true, true); }
void BM_PaintOrderedPolygonsQuickly(benchmark::State& state) { Paint(state, true, true); }
BENCHMARK(BM_DrawBoxes)->Apply(ModelSizes);
BENCHMARK(BM_PaintOrderedPolygons)->Apply(ModelSizes);
BENCHMARK(BM_OrbitBoxes)->Apply(ModelSizes);
BENCHMARK(BM_PaintOrderedPolygonsQuickly)->Apply(ModelSizes);

// A frame of the boxes: still, or each a fraction of the way through a glide that shifts it by
// (3, 2, 1) and turns it by 90 degrees about a vertical axis, as a restore would. The glide's
// frames step through 0.4 s at 60 frames a second, over and over.
void Glide(benchmark::State& state, bool gliding) {
  const std::vector<TsSceneObject> still = Grid(static_cast<int>(state.range(0)));
  std::vector<TsSceneObject> scene = still;
  std::vector<TsGlide> glides;
  const TsQuat turn = TsQuat::AxisAngle({0, 0, 1}, 3.14159265358979323846 / 2);
  for (const TsSceneObject& object : still) {
    std::vector<TsVec3> from;
    for (const TsVec3& p : object.points) from.push_back(turn.Rotate(p) + TsVec3{3, 2, 1});
    glides.emplace_back(from, object.points);
  }
  TsCamera camera = Iso(still);
  camera.SetScale(camera.Scale() * 0.8);  // room for where the glide starts
  TsDrawing drawing;
  drawing.Draw(scene, camera, TsDrawOptions());
  QImage image = Image();
  const QFont font;
  int frame_number = 0;
  for (auto _ : state) {
    if (gliding) {
      const double t = (frame_number++ % 24) / 24.0;
      for (size_t i = 0; i < glides.size(); ++i) glides[i].At(t, scene[i].points);
    }
    const TsFrame& frame = drawing.Draw(scene, camera, TsDrawOptions());
    image.fill(Qt::white);
    QPainter painter(&image);
    TsPaintFrame(painter, frame, font);
  }
  if (Drew(state, drawing.Frame(), image, still.size())) Frames(state);
}

void BM_GlideBoxes(benchmark::State& state) { Glide(state, true); }
void BM_StillBoxes(benchmark::State& state) { Glide(state, false); }
BENCHMARK(BM_GlideBoxes)->Apply(GlideSize);
BENCHMARK(BM_StillBoxes)->Apply(GlideSize);

KORVO_RATIO_ROW("Drawing N boxes, solid and ordered / Qt painting them pre-ordered", "BM_DrawBoxes",
                "BM_PaintOrderedPolygons", 1.5);
// An orbit's goal is its frame rate (above 30 at 10,000 boxes); Qt's quick painting is so much
// cheaper that the drawing's share of a frame weighs more here.
KORVO_RATIO_ROW("Orbiting N boxes, drawn quickly / Qt painting them pre-ordered, quickly",
                "BM_OrbitBoxes", "BM_PaintOrderedPolygonsQuickly", 2.0);
KORVO_RATIO_ROW("Glide of 1,000 moving boxes / a still view of them", "BM_GlideBoxes",
                "BM_StillBoxes", 1.1);

}  // namespace
