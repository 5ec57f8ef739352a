#include "host/platform/dialog.h"

#include <gtest/gtest.h>

namespace {

constexpr DWORD kChild = WS_CHILD | WS_VISIBLE;

const TS_MODULE_RESOURCES kModule = {
    L"test",
    {{7, kChild, 100, 80, L"MS Shell Dlg", 8, 400, {{11, WC_BUTTONW, 4, 8, 20, 16, kChild}}}},
    {}};

// A dialog that binds control 11, or also the missing control 12.
class TwoButtons : public CDialog {
 public:
  explicit TwoButtons(bool bind_missing) : m_bind_missing(bind_missing) {}
  void DoDataExchange(CDataExchange* exchange) override {
    DDX_Control(exchange, 11, m_first);
    if (m_bind_missing) DDX_Control(exchange, 12, m_second);
  }
  int OnInitDialog() override {
    ++m_initialised;
    return 1;
  }
  bool OnCommand(int control_id) override { return m_clicked = control_id == 11; }

  CButton m_first;
  CButton m_second;
  int m_initialised = 0;
  bool m_clicked = false;

 private:
  bool m_bind_missing;
};

TEST(Dialog, AreMadeFromTheirTemplateInPixelsOfTheResolutionOrLeaveNoWindowWithoutIt) {
  TwoButtons dialog(false);
  ASSERT_TRUE(dialog.Create(TsModuleInstance(kModule), 7, nullptr, 144));
  EXPECT_EQ(dialog.m_initialised, 1);
  RECT client;
  dialog.GetClientRect(&client);
  EXPECT_EQ(client.right, 225);   // 100 units * 6 / 4 * 1.5
  EXPECT_EQ(client.bottom, 195);  // 80 units * 13 / 8 * 1.5
  const RECT button = dialog.m_first.WindowRect();
  EXPECT_EQ(button.left, 9);
  EXPECT_EQ(button.top, 19);
  EXPECT_TRUE(CTsDialogEvents::Click(dialog, 11));
  dialog.m_first.EnableWindow(false);
  EXPECT_FALSE(CTsDialogEvents::Click(dialog, 11)) << "a disabled button cannot be clicked";

  TwoButtons missing_control(true);
  EXPECT_FALSE(missing_control.Create(TsModuleInstance(kModule), 7, nullptr, 96));
  EXPECT_EQ(missing_control.GetSafeHwnd(), nullptr);
  EXPECT_EQ(missing_control.m_first.GetSafeHwnd(), nullptr) << "its controls went with it";
  EXPECT_EQ(missing_control.m_initialised, 0);
  TwoButtons missing_template(false);
  EXPECT_FALSE(missing_template.Create(TsModuleInstance(kModule), 8, nullptr, 96));
  EXPECT_FALSE(missing_template.Create(nullptr, 7, nullptr, 96));
}

}  // namespace
