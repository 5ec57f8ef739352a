#include "shell/window/panel_dock.h"

#include <QInputDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QToolButton>

#include "host/tarsa/tarsa_dockbar.h"
#include "host/tarsa/tarsa_named_object_panel.h"
#include "panel/stances_panel.h"
#include "shell/panel_text.h"
#include "shell/window/widget_test.h"
#include "shell/window/window_answers.h"
#include "testing/stance_document_test.h"

namespace {

using Panel = CTsNamedDocObjectManagerDlg;
using Stances = CTsStancesManagerDlg;

class PanelDockTest : public StanceDocumentTest {
 protected:
  void SetUp() override {
    StanceDocumentTest::SetUp();
    // The program runs each action when the command line takes it; here, at once.
    dock_ = std::make_unique<TsPanelDock>(nullptr, [this](const std::function<void()>& action) {
      action();
      Refresh();
    });
    answers_ = std::make_unique<TsWindowAnswers>(nullptr, *dock_);
    SetUserAnswers(answers_.get());
  }
  void TearDown() override {
    user_.Stop();
    SetUserAnswers(nullptr);
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
  void ThenUser(std::function<bool()> step) { user_.Then(std::move(step)); }
  void Select(int row) { Item(row)->setSelected(true); }
  void Click(int control_id) { dock_->Button(control_id)->click(); }
  QListWidgetItem* Item(int row) const { return dock_->List()->item(row); }
  bool Enabled(int control_id) const { return dock_->Button(control_id)->isEnabled(); }
  // The dock's list, in its order, as the user sees it.
  std::vector<std::wstring> Shown() const {
    std::vector<std::wstring> shown;
    for (int i = 0; i < dock_->List()->count(); ++i)
      shown.push_back(Item(i)->text().toStdWString());
    return shown;
  }
  std::vector<std::wstring> Macros() {
    std::vector<std::wstring> macros;
    for (const auto& script : CTarsaStandIn::TakeScripts()) macros.push_back(script.first);
    return macros;
  }
  Panel& HostPanel() const { return *CTarsaStandIn::Panel(g_stances_panel_tab_id); }

  std::unique_ptr<TsPanelDock> dock_;
  std::unique_ptr<TsWindowAnswers> answers_;
  UserSteps user_;
};

// Which macro each button runs is the panel's; the dock shows the panel's list and buttons,
// follows its selection and clicks them.
TEST_F(PanelDockTest, ShowsTheHostPanelsListAndButtonsAndFollowsItsSelection) {
  Save(L"Open", {AddNamed(L"lid")});
  Save(L"Closed", {AddNamed(L"door")});
  Open();
  EXPECT_FALSE(dock_->isHidden());
  EXPECT_EQ(dock_->windowTitle().toStdWString(), L"Stances");
  EXPECT_FALSE(dock_->windowIcon().isNull()) << "the tab's icon";
  EXPECT_EQ(Shown(), (std::vector<std::wstring>{L"Closed", L"Open"})) << "the host panel's order";
  EXPECT_FALSE(Enabled(Panel::restore_button));

  Select(1);
  EXPECT_TRUE(Enabled(Panel::restore_button));
  EXPECT_TRUE(Enabled(Panel::rename_button));
  Select(0);
  EXPECT_TRUE(Enabled(Panel::restore_button));
  EXPECT_FALSE(Enabled(Panel::rename_button));
  dock_->List()->clearSelection();
  EXPECT_FALSE(Enabled(Panel::restore_button));

  Select(0);
  for (const TsPanelButton& button : TsPanelButtons()) {
    EXPECT_FALSE(dock_->Button(button.control_id)->icon().isNull()) << button.name;
  }
  EXPECT_EQ(dock_->Button(Stances::update_button)->toolTip().toStdWString(),
            L"Update selected stance");
  Click(Stances::update_button);
  Click(Stances::select_button);
  EXPECT_EQ(Macros(), (std::vector<std::wstring>{L"!-_Stance _Update \"Closed\" _ENTER",
                                                 L"!-_Stance _Select \"Closed\" _ENTER"}));
}

TEST_F(PanelDockTest, TheMenuWithRestoreAsItsDefaultTheLabelEditorAndTheSaveDialogRunTheCommand) {
  const ZK_UUID lid = AddNamed(L"lid");
  Save(L"Shut", {lid});
  const std::vector<ZK_3dPoint> saved = Placement(lid);
  Move(lid, ZK_Xform::Translation(5, 0, 0));
  Open();
  Select(0);
  std::vector<std::wstring> offered;
  std::wstring bold;
  ThenUser([&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) return false;
    for (QAction* action : menu->actions()) {
      if (action->isSeparator()) continue;
      offered.push_back(action->text().toStdWString());
      if (action->font().bold()) bold = offered.back();
      if (action->data().toUInt() == Stances::restore_item) menu->setActiveAction(action);
    }
    Press(menu, Qt::Key_Return);
    return true;
  });
  emit dock_->List()->customContextMenuRequested(QPoint(5, 5));
  EXPECT_EQ(offered,
            (std::vector<std::wstring>{L"&Restore Stance", L"&Update Stance", L"&Append Stance",
                                       L"&Delete Stance", L"Rena&me Stance", L"S&elect In Document",
                                       L"&Save Object Positions As Stance...",
                                       L"Restore Selected Objects Only"}));
  EXPECT_EQ(bold, L"&Restore Stance");
  EXPECT_EQ(Macros().size(), 1u) << "the restore";
  ExpectNear(Placement(lid), saved);
  Refresh();
  EXPECT_FALSE(dock_->List()->item(0)->icon().isNull()) << "the model matches Shut now";
  TakeStanceChanges();

  ThenUser([&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) return false;
    Press(menu, Qt::Key_Escape);
    return true;
  });
  emit dock_->List()->customContextMenuRequested(QPoint(5, 5));
  EXPECT_TRUE(Macros().empty()) << "a dismissed menu does nothing";

  // A label edit renames through the command; Escape keeps the name.
  const auto edit = [this](const QString& text, int key) {
    ThenUser([this, text, key] {
      auto* editor = dock_->findChild<QLineEdit*>("label_editor");
      if (editor == nullptr || !editor->isVisible()) return false;
      EXPECT_EQ(editor->text().toStdWString(), L"Shut") << "the editor starts from the name";
      editor->setText(text);
      Press(editor, key);
      return true;
    });
    Click(Panel::rename_button);
  };
  edit("Back", Qt::Key_Escape);
  EXPECT_TRUE(Macros().empty());
  EXPECT_EQ(Shown(), std::vector<std::wstring>{L"Shut"});

  edit("Back", Qt::Key_Return);
  EXPECT_EQ(Macros(), std::vector<std::wstring>{L"!-_Stance _Rename \"Shut\" \"Back\" _ENTER"});
  EXPECT_NE(Table().FindByName(L"Back"), nullptr);
  EXPECT_EQ(Shown(), std::vector<std::wstring>{L"Back"});
  TakeStanceChanges();

  // The save dialog proposes a name and asks before replacing.
  std::wstring proposed, prompt, question;
  ThenUser([&] {
    auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return false;
    proposed = dialog->textValue().toStdWString();
    prompt = dialog->labelText().toStdWString();
    dialog->setTextValue("Back");
    ThenUser([&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return false;
      question = box->text().toStdWString();
      box->button(QMessageBox::Yes)->click();
      return true;
    });
    dialog->accept();
    return false;  // the question's step goes on
  });
  Click(Panel::save_button);
  EXPECT_EQ(proposed, L"Position 01");
  EXPECT_EQ(prompt, L"Save current object positions as:");
  EXPECT_EQ(question, L"The \"Back\" stance already exists, do you want to replace it?");
  EXPECT_EQ(Macros(), std::vector<std::wstring>{L"!-_Stance _Save \"Back\" _PAUSE _ENTER"});
  CTarsaStandIn::CommandLine().TakeOutput();
}
// How the panel stacks its buttons when narrow is the panel's; the dock sizes the panel as it is
// sized, and places each control where the panel has it.
TEST_F(PanelDockTest, TheStanceCommandOpensTheDockWhoseButtonsFollowThePanelsLayoutUntilClosed) {
  EXPECT_EQ(CTarsaStandIn::CommandLine().RunCommand(L"Stance"), CTarsaCommand::success);
  Refresh();
  EXPECT_TRUE(dock_->isVisible());
  dock_->resize(70, 300);
  ASSERT_TRUE(Eventually([&] { return dock_->widget()->width() < 100; }));
  const RECT host = TsWindowObject(HostPanel().GetDlgItem(Panel::help_button))->WindowRect();
  EXPECT_EQ(dock_->Button(Panel::help_button)->geometry(),
            QRect(host.left, host.top, host.right - host.left, host.bottom - host.top));
  EXPECT_GT(dock_->List()->geometry().top(),
            dock_->Button(Panel::help_button)->geometry().bottom());
  dock_->close();
  EXPECT_FALSE(TarsaUiIsTabVisible(g_stances_panel_tab_id));
  EXPECT_TRUE(dock_->isHidden());
}

}  // namespace
