#include "shell/window/svg_icon.h"

#include <gtest/gtest.h>

#include <QImage>

#include "shell/window/widget_test.h"

namespace {

bool Inked(const QImage& image, int x, int y) { return qAlpha(image.pixel(x, y)) > 128; }

// The drawing is Qt's; what is ours is that its viewBox fills the square asked for, on a
// transparent ground, and that text which is no whole SVG document gives no picture.
TEST(SvgIconTest, TheViewBoxFillsTheSquareOnATransparentGroundAndTextThatIsNoDrawingGivesNone) {
  const char* svg = R"(<svg viewBox="0 0 16 16"><rect x="8" y="8" width="8" height="8"
    fill="#FF0000"/></svg>)";
  const QImage small = TsPaintSvg(svg, 16).toImage();
  EXPECT_EQ(small.pixel(11, 11), qRgb(255, 0, 0));
  EXPECT_FALSE(Inked(small, 5, 5));
  const QImage big = TsPaintSvg(svg, 32).toImage();
  EXPECT_TRUE(Inked(big, 20, 20));
  EXPECT_FALSE(Inked(big, 12, 12));

  for (const char* text : {static_cast<const char*>(nullptr), "not a drawing",
                           "<svg viewBox=\"0 0 16 16\"><rect", "<html><body/></html>"}) {
    EXPECT_TRUE(TsPaintSvg(text, 16).isNull()) << (text ? text : "null");
  }
  EXPECT_TRUE(TsPaintSvg(R"(<svg viewBox="0 0 16 16"/>)", 0).isNull());
  EXPECT_TRUE(TsIconOf(nullptr).isNull());
}

}  // namespace
