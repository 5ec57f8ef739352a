#include "shell/window/svg_icon.h"

#include <gtest/gtest.h>

#include <QImage>

#include "shell/window/widget_test.h"

namespace {

class SvgIconTest : public testing::Test {
 protected:
  // The picture at 16 × 16, one pixel per unit of a 0 0 16 16 drawing.
  static QImage Painted(const std::string& body) {
    const std::string svg = R"(<svg viewBox="0 0 16 16">)" + body + "</svg>";
    return TsPaintSvg(svg.c_str(), 16).toImage();
  }
  static bool Inked(const QImage& image, int x, int y) { return qAlpha(image.pixel(x, y)) > 128; }
};

TEST_F(SvgIconTest, PaintsShapesWithTheirFillAndStrokeInsideTheViewBox) {
  const QImage filled = Painted(R"(<rect x="2" y="2" width="4" height="4" fill="#FF0000"/>)");
  EXPECT_EQ(filled.pixel(3, 3), qRgb(255, 0, 0));
  EXPECT_FALSE(Inked(filled, 8, 8));

  const QImage outlined =
      Painted(R"(<rect x="2.5" y="2.5" width="10" height="10" fill="none" stroke="#000000"/>)");
  EXPECT_TRUE(Inked(outlined, 2, 7));
  EXPECT_FALSE(Inked(outlined, 7, 7)) << "no fill";

  const QImage faint =
      Painted(R"(<circle cx="8" cy="8" r="4" fill="#0000FF" fill-opacity="0.35"/>)");
  EXPECT_NEAR(qAlpha(faint.pixel(8, 8)), 89, 3);

  // Twice the size scales the drawing with it.
  const QImage big = TsPaintSvg(R"(<svg viewBox="0 0 16 16"><rect x="8" y="8" width="8"
    height="8" fill="#00FF00"/></svg>)",
                                32)
                         .toImage();
  EXPECT_TRUE(Inked(big, 20, 20));
  EXPECT_FALSE(Inked(big, 12, 12));
}

TEST_F(SvgIconTest, PathsDrawLinesArcsAndClosedShapesAbsoluteOrRelative) {
  const QImage lines = Painted(R"(<path d="M1 8 H15 M8 1 v14" stroke="#000" stroke-width="2"
    fill="none"/>)");
  EXPECT_TRUE(Inked(lines, 3, 8));
  EXPECT_TRUE(Inked(lines, 8, 13));
  EXPECT_FALSE(Inked(lines, 3, 3));

  // A half circle around 8,8 from its left to its right end over the top.
  const QImage arc = Painted(R"(<path d="M2 8 A6 6 0 0 1 14 8" stroke="#000" stroke-width="1.5"
    fill="none"/>)");
  EXPECT_TRUE(Inked(arc, 8, 2));
  EXPECT_FALSE(Inked(arc, 8, 13)) << "the arc's sweep flag chooses the upper half";

  const QImage triangle = Painted(R"(<path d="M2 14 L8 2 L14 14 Z" fill="#000"/>)");
  EXPECT_TRUE(Inked(triangle, 8, 10));
  EXPECT_FALSE(Inked(triangle, 2, 3));
}

TEST_F(SvgIconTest, QtsSvgModuleDrawsWhatAnSvgDocumentMayHold) {
  // Groups with transforms, polygons, ellipses and gradients, which a hand-written reader left
  // out.
  const QImage drawn =
      Painted(R"svg(<defs><linearGradient id="g"><stop offset="0" stop-color="#f00"/>
    <stop offset="1" stop-color="#f00"/></linearGradient></defs>
    <g transform="translate(8,8)"><polygon points="0,0 6,0 6,6 0,6" fill="url(#g)"/></g>
    <ellipse cx="3" cy="3" rx="2" ry="1.5" fill="#0000ff"/>)svg");
  EXPECT_EQ(drawn.pixel(11, 11), qRgb(255, 0, 0));
  EXPECT_EQ(drawn.pixel(3, 3), qRgb(0, 0, 255));
  EXPECT_FALSE(Inked(drawn, 3, 11));
}

TEST_F(SvgIconTest, TextThatIsNoDrawingGivesNoPicture) {
  EXPECT_TRUE(TsPaintSvg(nullptr, 16).isNull());
  EXPECT_TRUE(TsPaintSvg("not a drawing", 16).isNull());
  EXPECT_TRUE(TsPaintSvg("<svg viewBox=\"0 0 16 16\"><rect", 16).isNull());
  EXPECT_TRUE(TsIconOf(nullptr).isNull());
  // A broken path draws what came before its error.
  const QImage partial = Painted(R"(<text>x</text><path d="M1 8 H15 Q 3 4" stroke="#000"
    stroke-width="2"/>)");
  EXPECT_TRUE(Inked(partial, 4, 8));
}

}  // namespace
