#include "shell/window/panel_dock.h"

#include <QApplication>
#include <QListWidget>
#include <QPushButton>

#include "host/tarsa/tarsa_dockbar.h"
#include "host/tarsa/tarsa_named_object_panel.h"
#include "panel/stances_panel.h"
#include "testing/stance_document_test.h"

namespace {

using Panel = CTsNamedDocObjectManagerDlg;

QApplication& Application() {
  static int argc = 1;
  static char name[] = "panel_dock_test";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static QApplication application(argc, argv);
  return application;
}

class PanelDockTest : public StanceDocumentTest {
 protected:
  void SetUp() override {
    StanceDocumentTest::SetUp();
    Application();
    dock_ = std::make_unique<TsPanelDock>(nullptr, [this] { Refresh(); });
  }
  void TearDown() override {
    dock_.reset();
    StanceDocumentTest::TearDown();
  }

  void Open() {
    ASSERT_TRUE(TarsaUiOpenDockbarTab(g_stances_panel_tab_id));
    Refresh();
  }
  // What the program does after each action: the host's idle work, then the dock drawn again.
  void Refresh() {
    CTarsaStandIn::RunIdleWork();
    dock_->Refresh();
  }
  QListWidgetItem* Item(int row) const { return dock_->List()->item(row); }
  bool Enabled(int control_id) const { return dock_->Button(control_id)->isEnabled(); }
  // The dock's list, in its order, as the user sees it.
  std::vector<std::wstring> Shown() const {
    std::vector<std::wstring> shown;
    for (int i = 0; i < dock_->List()->count(); ++i)
      shown.push_back(Item(i)->text().toStdWString());
    return shown;
  }

  std::unique_ptr<TsPanelDock> dock_;
};

TEST_F(PanelDockTest, ShowsTheHostPanelsListAndFollowsItsSelection) {
  Save(L"Open", {AddNamed(L"lid")});
  Save(L"Closed", {AddNamed(L"door")});
  Open();
  EXPECT_FALSE(dock_->isHidden());
  EXPECT_EQ(dock_->windowTitle().toStdWString(), L"Stances");
  const std::vector<std::wstring> host = {
      CTarsaStandIn::Panel(g_stances_panel_tab_id)->List().GetItemText(0),
      CTarsaStandIn::Panel(g_stances_panel_tab_id)->List().GetItemText(1)};
  EXPECT_EQ(Shown(), host);
  EXPECT_FALSE(Enabled(Panel::restore_button));

  Item(1)->setSelected(true);
  EXPECT_TRUE(Enabled(Panel::restore_button));
  EXPECT_TRUE(Enabled(Panel::rename_button));
  Item(0)->setSelected(true);
  EXPECT_TRUE(Enabled(Panel::restore_button));
  EXPECT_FALSE(Enabled(Panel::rename_button));
  dock_->List()->clearSelection();
  EXPECT_FALSE(Enabled(Panel::restore_button));
}

TEST_F(PanelDockTest, ADoubleClickRestoresTheStance) {
  const ZK_UUID lid = AddNamed(L"lid");
  Save(L"Shut", {lid});
  const std::vector<ZK_3dPoint> saved = Placement(lid);
  Move(lid, ZK_Xform::Translation(5, 0, 0));
  Open();
  emit dock_->List()->itemDoubleClicked(Item(0));
  EXPECT_EQ(CTarsaStandIn::TakeScripts().size(), 1u) << "the panel's restore command";
  ExpectNear(Placement(lid), saved);
  TakeStanceChanges();
}

}  // namespace
