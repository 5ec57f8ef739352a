// The module's resources as the host reads them: the panel's dialog template, and every icon
// group at each size the host may ask for.
#include "panel/panel_resources.h"

#include <gtest/gtest.h>

#include "host/platform/list_control.h"

namespace {

TEST(PanelResourcesTest, TheHostFindsThePanelsTemplateAndEveryIconSize) {
  const HINSTANCE module = TsModuleInstance(KorvoResources());
  const TS_DIALOG_TEMPLATE* dialog = TsFindDialogTemplate(module, 1019);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->style, 0x40080040u);
  EXPECT_EQ(std::vector<int>({dialog->cx, dialog->cy, dialog->point_size, dialog->weight}),
            std::vector<int>({126, 156, 8, 400}));
  EXPECT_STREQ(dialog->font, L"MS Shell Dlg");
  // Each control's id, place and size in dialog units, in template order.
  const std::vector<std::vector<int>> controls = {
      {1064, 0, 3, 119, 126},  {2110, 2, 133, 14, 12},  {2111, 46, 133, 14, 12},
      {6125, 61, 133, 14, 12}, {1956, 76, 133, 14, 12}, {1147, 105, 133, 14, 12},
      {1148, 92, 133, 14, 12}, {1149, 17, 133, 14, 12}, {2112, 32, 133, 14, 12}};
  ASSERT_EQ(dialog->controls.size(), controls.size());
  for (size_t i = 0; i < controls.size(); ++i) {
    const TS_DIALOG_CONTROL& c = dialog->controls[i];
    EXPECT_EQ(std::vector<int>({c.id, c.x, c.y, c.cx, c.cy}), controls[i]);
    EXPECT_EQ(c.style, i == 0 ? 0x50014399u : 0x5001000Bu) << c.id;
    EXPECT_STREQ(c.class_name, i == 0 ? WC_LISTVIEWW : WC_BUTTONW) << c.id;
  }
  for (int group : {1021, 1033, 1034, 1035, 1036, 1037, 1038, 1039, 1040, 1041}) {
    for (int size : {16, 24, 32, 48, 64, 128, 256}) {
      TsIconInfo icon;
      ASSERT_TRUE(TsGetIconInfo(LoadIconWithScaleDown(module, group, size, size), &icon));
      EXPECT_EQ(icon.size, size) << group;
    }
  }
}

}  // namespace
