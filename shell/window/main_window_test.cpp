#include "shell/window/main_window.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPolygonF>
#include <QToolButton>
#include <functional>

#include "host/tarsa/tarsa_dockbar.h"
#include "panel/stances_panel.h"
#include "shell/window/model_view.h"
#include "shell/window/panel_dock.h"
#include "shell/window/widget_test.h"
#include "testing/stance_document_test.h"

namespace {

// The window as the program runs it: the command line reads from it and writes to it.
class MainWindowTest : public StanceDocumentTest {
 protected:
  void SetUp() override {
    StanceDocumentTest::SetUp();
    window_ = std::make_unique<TsMainWindow>();
    CommandLine().SetReader([this](const std::wstring& prompt, std::wstring& line) {
      return window_->Read(prompt, line);
    });
    CommandLine().SetEchoUserInput(false);  // the window shows the answers itself
    window_->show();
  }
  void TearDown() override {
    user_.Stop();
    CommandLine().SetReader(nullptr);
    window_.reset();
    StanceDocumentTest::TearDown();
  }

  static CTarsaCommandLine& CommandLine() { return CTarsaStandIn::CommandLine(); }
  TsModelView& View() { return *window_->View(); }
  void Refresh() {
    CTarsaStandIn::RunIdleWork();
    window_->Refresh();
  }
  // The user's steps while `command` runs from the command line, answering the window's prompts.
  void Run(const wchar_t* command) { CommandLine().RunCommand(command); }
  bool Prompting(const wchar_t* start) const {
    return window_->findChild<QLabel*>()->text().startsWith(QString::fromWCharArray(start));
  }
  // The user's next step, taken once the window prompts with `prompt`; it may set the one after.
  void At(const wchar_t* prompt, std::function<void()> step) {
    user_.Then([this, prompt, step] {
      if (!Prompting(prompt)) return false;
      step();
      return true;
    });
  }
  void Type(const QString& text) {
    window_->Input()->setText(text);
    Press(window_->Input(), Qt::Key_Return);
  }
  void Click(QPointF at, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    Mouse(QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton, modifiers);
    Mouse(QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton, modifiers);
  }
  void Drag(QPointF from, QPointF to) {
    Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    Mouse(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    Mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
  }
  void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QMouseEvent event(type, at, View().mapToGlobal(at), button, held, modifiers);
    QApplication::sendEvent(&View(), &event);
  }
  // A point on the object's drawing: its first drawn point.
  QPointF On(const ZK_UUID& id) { return View().DrawnPoints(id).at(0); }
  // The command line's output as the window shows it.
  QString Shown() const { return window_->findChild<QPlainTextEdit*>()->toPlainText(); }
  bool Selected(const ZK_UUID& id) const { return Object(id)->IsSelected() != 0; }

  std::unique_ptr<TsMainWindow> window_;
  UserSteps user_;
};

TEST_F(MainWindowTest, ADoubleClickInThePanelShowsTheObjectsBackWhereTheStanceHasThem) {
  const ZK_UUID lid = AddNamed(L"lid");
  const ZK_UUID base = AddNamed(L"base");
  Move(lid, ZK_Xform::Translation(0, 0, 3));
  Save(L"Shut", {lid});
  ASSERT_TRUE(TarsaUiOpenDockbarTab(g_stances_panel_tab_id));
  Refresh();
  const std::vector<QPointF> shut = View().DrawnPoints(lid);
  ASSERT_FALSE(shut.empty());

  Move(lid, ZK_Xform::Translation(4, 2, 0));
  Refresh();
  EXPECT_NE(View().DrawnPoints(lid), shut) << "the view keeps its scale: the lid is seen to move";

  QListWidget* list = window_->Dock()->List();
  emit list->itemDoubleClicked(list->item(0));
  EXPECT_EQ(View().DrawnPoints(lid), shut);
  TakeStanceChanges();

  // From the front the lid is drawn above the base, as it was saved.
  View().SetDirection(TsModelView::Direction::front);
  EXPECT_LT(On(lid).y(), On(base).y());
}

TEST_F(MainWindowTest, ClickAndWindowPickSelectObjectsOrAnswerAnObjectPrompt) {
  const ZK_UUID left = AddNamed(L"left");
  const ZK_UUID right = AddNamed(L"right");
  Move(right, ZK_Xform::Translation(10, 0, 0));
  Refresh();
  Click(On(left));
  EXPECT_TRUE(Selected(left));
  Click(On(right), Qt::ShiftModifier);
  EXPECT_TRUE(Selected(left) && Selected(right)) << "Shift adds";
  Click(QPointF(2, 2));
  EXPECT_FALSE(Selected(left) || Selected(right)) << "a click on nothing clears the selection";

  // A window around the left box picks it alone.
  const std::vector<QPointF> drawn = View().DrawnPoints(left);
  const QRectF around = QPolygonF(QList<QPointF>(drawn.begin(), drawn.end())).boundingRect();
  Drag(around.topLeft() - QPointF(3, 3), around.bottomRight() + QPointF(3, 3));
  EXPECT_TRUE(Selected(left));
  EXPECT_FALSE(Selected(right));
  Click(QPointF(2, 2));

  // At Hide's object prompt, a click picks the object and Enter ends the picking.
  At(L"Select objects", [&] {
    Click(On(right));
    At(L"Select objects", [&] { Type(""); });
  });
  Run(L"Hide");
  EXPECT_TRUE(View().DrawnPoints(right).empty()) << "hidden objects are not drawn";
  EXPECT_FALSE(View().DrawnPoints(left).empty());
  EXPECT_TRUE(Shown().contains("Select objects: right")) << "the pick shows the object's name";
}

TEST_F(MainWindowTest, PromptOptionsAreButtonsAndTheLineCompletesAndRecalls) {
  Save(L"Front", {AddNamed(L"lid")});
  std::vector<std::wstring> offered;
  At(L"Choose stance option", [&] {
    for (QWidget* button : window_->OptionButtons()) {
      offered.push_back(static_cast<QToolButton*>(button)->text().toStdWString());
    }
    static_cast<QToolButton*>(window_->OptionButtons().at(0))->click();  // List
    At(L"Choose stance option", [&] { Type(""); });
  });
  Run(L"-Stance");
  EXPECT_EQ(offered, (std::vector<std::wstring>{L"List", L"Save", L"Restore", L"Delete", L"Rename",
                                                L"Select", L"Update", L"Append", L"Visible"}));
  EXPECT_NE(CommandLine().TakeOutput().find(L"Front"), std::wstring::npos) << "the list";

  // Tab completes a command's name; Up brings back the line entered before.
  QString completed, recalled;
  At(L"Command:", [&] {
    window_->Input()->setText("sel");
    Press(window_->Input(), Qt::Key_Tab);  // Select, SelAll, SelNone: their common beginning
    window_->Input()->setText(window_->Input()->text() + "Non");
    Press(window_->Input(), Qt::Key_Tab);
    completed = window_->Input()->text();
    Press(window_->Input(), Qt::Key_Return);
    At(L"Command:", [&] {
      Press(window_->Input(), Qt::Key_Up);
      recalled = window_->Input()->text();
      window_->close();
    });
  });
  CommandLine().ProcessInput();
  EXPECT_EQ(completed, "SelNone ");
  EXPECT_EQ(recalled, "SelNone ");
  CommandLine().TakeOutput();
}

}  // namespace
