#include "shell/window/main_window.h"

#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPolygonF>
#include <QStatusBar>
#include <QToolButton>
#include <cmath>
#include <functional>
#include <memory>
#include <vector>

#include "data/placement_record.h"
#include "host/tarsa/tarsa_dockbar.h"
#include "host/tarsa/tarsa_named_object_panel.h"
#include "panel/stances_panel.h"
#include "shell/window/model_view.h"
#include "shell/window/panel_dock.h"
#include "shell/window/widget_test.h"
#include "testing/stance_document_test.h"

namespace {

// The middle of the points.
QPointF Middle(const std::vector<QPointF>& points) {
  QPointF sum;
  for (const QPointF& p : points) sum += p;
  return points.empty() ? sum : sum / static_cast<double>(points.size());
}

// The window as the program runs it: its front end installed, the Stances panel docked, and the
// user's steps taken while the command line waits for them.
class MainWindowTest : public StanceDocumentTest {
 protected:
  void SetUp() override {
    StanceDocumentTest::SetUp();
    window_ = std::make_unique<TsMainWindow>();
    front_end_ = std::make_unique<TsFrontEndScope>(*window_);
    ASSERT_TRUE(TarsaUiOpenDockbarTab(g_stances_panel_tab_id));
    window_->show();
  }
  void TearDown() override {
    user_.Stop();
    front_end_.reset();
    window_.reset();
    StanceDocumentTest::TearDown();
  }

  static CTarsaCommandLine& CommandLine() { return CTarsaStandIn::CommandLine(); }
  TsModelView& View() { return *window_->View(); }
  // One of the user's steps: true once it found what it waits for and took it.
  using Step = std::function<bool()>;
  // The step taken once the window waits at `prompt` with nothing left to take.
  Step At(const wchar_t* prompt, std::function<void()> step) {
    return [this, prompt, step] {
      const std::wstring& waiting = window_->UserInput().Waiting();
      if (!window_->UserInput().Idle() || waiting.rfind(prompt, 0) != 0) return false;
      step();
      return true;
    };
  }
  Step TypeAt(const wchar_t* prompt, const QString& text) {
    return At(prompt, [this, text] { Type(text); });
  }
  // The panel's name dialog, once it shows, answered with `name`.
  static Step NameDialog(const QString& name) {
    return [name] {
      auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return false;
      dialog->setTextValue(name);
      dialog->accept();
      return true;
    };
  }
  // Runs the program's command line while the user takes `steps` in turn, until one types -Exit.
  void RunUser(std::vector<Step> steps) {
    TakeFrom(std::make_shared<const std::vector<Step>>(std::move(steps)), 0);
    CommandLine().ProcessInput();
    CommandLine().TakeOutput();
  }
  void TakeFrom(std::shared_ptr<const std::vector<Step>> steps, size_t next) {
    if (next == steps->size()) return;
    user_.Then([this, steps, next] {
      if (!(*steps)[next]()) return false;
      TakeFrom(steps, next + 1);
      return true;
    });
  }
  void Type(const QString& text) {
    window_->Input()->setText(text);
    Press(window_->Input(), Qt::Key_Return);
  }
  void Click(QPointF at, Qt::MouseButton button = Qt::LeftButton,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    Mouse(QEvent::MouseButtonPress, at, button, button, modifiers);
    Mouse(QEvent::MouseButtonRelease, at, button, Qt::NoButton, modifiers);
  }
  // A drag with the left button: with Ctrl it draws a picking window, without it orbits.
  void Drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
    Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton, modifiers);
    Mouse(QEvent::MouseMove, (from + to) / 2, Qt::NoButton, Qt::LeftButton, modifiers);
    Mouse(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, modifiers);
    Mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton, modifiers);
  }
  void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QMouseEvent event(type, at, View().mapToGlobal(at), button, held, modifiers);
    QApplication::sendEvent(&View(), &event);
  }
  void ClickSave() { window_->Dock()->Button(CTsNamedDocObjectManagerDlg::save_button)->click(); }
  // A point on the object's drawing: the middle of its drawn points.
  QPointF On(const ZK_UUID& id) { return Middle(View().DrawnPoints(id)); }
  // The item of the View menu with that text, or null.
  QAction* ViewAction(const QString& text) const {
    for (QAction* menu : window_->menuBar()->actions()) {
      if (menu->text() != "&View") continue;
      for (QAction* item : menu->menu()->actions()) {
        if (item->text() == text) return item;
      }
    }
    return nullptr;
  }
  // The command line's output as the window shows it.
  QString Shown() const { return window_->findChild<QPlainTextEdit*>()->toPlainText(); }
  bool Selected(const ZK_UUID& id) const { return Object(id)->IsSelected() != 0; }

  std::unique_ptr<TsMainWindow> window_;
  std::unique_ptr<TsFrontEndScope> front_end_;
  UserSteps user_;
};

// Then the command line goes on: the options of its prompts are links that wrap, and the typing
// field completes and recalls lines.
TEST_F(MainWindowTest, ThePanelsSavePicksUntilARightClickAndTheLineGoesOnWithLinksAndCompletion) {
  const ZK_UUID lid = AddNamed(L"lid");
  const ZK_UUID base = AddNamed(L"base");
  Move(base, ZK_Xform::Translation(5, 0, 0));
  Save(L"Front", {lid});
  std::vector<ZK_UUID> picked_first;
  std::vector<std::wstring> offered;
  int input_width = 0;
  QString completed, recalled;
  // Idle, then while Move waits for its objects: the panel's Save cancels Move first.
  RunUser({At(L"Command:", [&] { ClickSave(); }), NameDialog("Open"),
           At(L"Select objects", [&] { Click(On(lid)); }),
           At(L"Select objects",
              [&] {
                picked_first = CommandLine().Question().picked;  // the view draws these as picked
                Click(On(base));
              }),
           At(L"Select objects", [&] { Click(QPointF(1, 1), Qt::RightButton); }),
           TypeAt(L"Command:", "Move"), At(L"Select objects", [&] { ClickSave(); }),
           NameDialog("Shut"), At(L"Select objects", [&] { Click(On(lid)); }),
           TypeAt(L"Select objects", ""), TypeAt(L"Command:", "List"),
           TypeAt(L"Command:", "-Stance"),
           At(L"Choose stance option",
              [&] {
                offered = window_->OptionLabels();
                input_width = window_->Input()->width();
                window_->ChooseOption(0);  // List
              }),
           TypeAt(L"Choose stance option", ""),
           // Tab completes a command's name; Up brings back the line that starts as typed.
           At(L"Command:",
              [&] {
                window_->Input()->setText("sel");
                Press(window_->Input(), Qt::Key_Tab);  // Select, SelAll, SelNone: their beginning
                window_->Input()->setText(window_->Input()->text() + "Non");
                Press(window_->Input(), Qt::Key_Tab);
                completed = window_->Input()->text();
                Press(window_->Input(), Qt::Key_Return);
              }),
           At(L"Command:", [&] {
             window_->Input()->setText("-St");
             Press(window_->Input(), Qt::Key_Up);
             recalled = window_->Input()->text();
             Type("-Exit");
           })});
  EXPECT_EQ(Members(L"Open"), (std::vector<ZK_UUID>{lid, base}));
  EXPECT_EQ(Members(L"Shut"), std::vector<ZK_UUID>{lid});
  EXPECT_EQ(picked_first, std::vector<ZK_UUID>{lid});
  EXPECT_TRUE(Shown().contains("): _Save\n")) << "the panel's action shows";
  EXPECT_TRUE(Shown().contains("Select objects: lid")) << "each pick shows";
  EXPECT_TRUE(Shown().contains("Command: List\n")) << "the line after the actions is taken";
  EXPECT_EQ(offered, (std::vector<std::wstring>{L"List", L"Save", L"Restore", L"Delete", L"Rename",
                                                L"Select", L"Update", L"Append", L"Visible"}));
  EXPECT_EQ(window_->width(), 1000) << "the options wrap within the window";
  EXPECT_GT(input_width, 600) << "the typing field keeps its width";
  EXPECT_TRUE(Shown().contains("Front")) << "the stances listed";
  EXPECT_EQ(completed, "SelNone ");
  EXPECT_EQ(recalled, "-Stance");
}

// The view starts from the iso side; after an orbit a click still finds what is drawn under it.
TEST_F(MainWindowTest, ClicksSelectOrPickInTheOrbitedViewAndDoubleClicksAndUndoKeysActOnTheModel) {
  const ZK_UUID left = AddNamed(L"left");
  const ZK_UUID right = AddNamed(L"right");
  Move(right, ZK_Xform::Translation(10, 0, 0));
  Save(L"Apart", {left, right});
  window_->Idle();
  TsCamera iso;
  iso.SetStandardView(TsStandardView::iso);
  const TsQuat start = View().Camera().Orientation();
  EXPECT_NEAR(start.w, iso.Orientation().w, 1e-12);
  EXPECT_NEAR(start.z, iso.Orientation().z, 1e-12);
  const std::vector<QPointF> before = View().DrawnPoints(left);
  std::vector<QPointF> orbited;
  bool shift_added = false, cleared = false, window_picked = false;
  RunUser({At(L"Command:",
              [&] {
                // A drag without Ctrl turns the view and picks nothing.
                Drag(On(right) + QPointF(0, 60), On(right) + QPointF(80, 30), Qt::NoModifier);
                orbited = View().DrawnPoints(left);
                Click(On(left));
                Click(On(right), Qt::LeftButton, Qt::ShiftModifier);
              }),
           At(L"Command:",
              [&] {
                shift_added = Selected(left) && Selected(right);
                Click(QPointF(2, 2));
              }),
           // A window around the left box picks it alone.
           At(L"Command:",
              [&] {
                cleared = !Selected(left) && !Selected(right);
                const std::vector<QPointF> drawn = View().DrawnPoints(left);
                const QRectF around =
                    QPolygonF(QList<QPointF>(drawn.begin(), drawn.end())).boundingRect();
                Drag(around.topLeft() - QPointF(3, 3), around.bottomRight() + QPointF(3, 3));
              }),
           At(L"Command:",
              [&] {
                window_picked = Selected(left) && !Selected(right);
                Type("-Move");
              }),
           TypeAt(L"Offset", "0,5,0"),
           // Ctrl+Z in the empty typing field undoes the move; with text, the text.
           At(L"Command:", [&] { Press(window_->Input(), Qt::Key_Z, Qt::ControlModifier); }),
           // A double click in the panel restores the stance.
           At(L"Command:",
              [&] {
                Move(right, ZK_Xform::Translation(0, 7, 0));
                QListWidget* list = window_->Dock()->List();
                emit list->itemDoubleClicked(list->item(0));
              }),
           At(L"Command:", [&] {
             // The standard views come from the View menu and its keys.
             QAction* top = ViewAction("&Top");
             if (top != nullptr) {
               EXPECT_EQ(top->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_1));
               top->trigger();
             }
             Type("-Exit");
           })});
  EXPECT_NE(orbited, before) << "the drag orbited";
  EXPECT_TRUE(shift_added) << "a click and a Shift click in the orbited view pick both";
  EXPECT_TRUE(cleared) << "a click on nothing clears the selection";
  EXPECT_TRUE(window_picked);
  ExpectNear(Placement(right), ZK_Box({10, 0, 0}, {11, 1, 1}).Points());  // restored
  EXPECT_EQ(window_->statusBar()->currentMessage(), "Matches: Apart");
  EXPECT_TRUE(Shown().contains("Undo Move") || Shown().contains("Command: _Undo"));
  ExpectNear(Placement(left), ZK_Box({0, 0, 0}, {1, 1, 1}).Points());
  EXPECT_NEAR(std::fabs(View().Camera().Orientation().w), 1, 1e-12) << "seen from the top";
  for (const char* item : {"&Front", "&Right", "&Iso", "Zoom to &Fit", "&Perspective"}) {
    EXPECT_NE(ViewAction(item), nullptr) << item;
  }
}

bool Near(const QPointF& a, const QPointF& b) { return QLineF(a, b).length() < 1e-6; }

TEST_F(MainWindowTest, ARestoreGlidesToTheModelsStateAndWithAnimateOffShowsAtOnce) {
  const ZK_UUID box = AddNamed(L"box", new ZK_Box({0, 0, 0}, {2, 1, 1}));
  AddNamed(L"floor", new ZK_Box({-1, -2, -2}, {10, 5, -1}));  // the view fits both places
  Save(L"Home", {box});
  Move(box, ZK_Xform::Translation(6, 2, 0) *
                ZK_Xform::Rotation(std::acos(-1.0) / 2, {0, 0, 1}, {1, 0.5, 0.5}));
  double now = 0;
  View().SetClock([&now] { return now; });
  window_->Idle();
  QApplication::processEvents();
  const std::vector<QPointF> away = View().DrawnPoints(box);
  std::vector<ZK_3dPoint> placed;
  std::vector<QPointF> start, middle, end, moved, later;
  bool gliding = false, glided = true;
  RunUser({TypeAt(L"Command:", "-Stance Restore Home _Enter"),
           At(L"Command:",
              [&] {
                placed = Placement(box);  // the model changed at once
                gliding = View().Gliding();
                start = View().DrawnPoints(box);
                now = 0.2;
                middle = View().DrawnPoints(box);
                now = 0.4;
                end = View().DrawnPoints(box);
                glided = View().Gliding();
                // View > Animate off: a move shows at once.
                QAction* animate = ViewAction("&Animate");
                if (animate != nullptr) animate->trigger();
                Type("Move box _Enter 0,3,0");
              }),
           At(L"Command:", [&] {
             moved = View().DrawnPoints(box);
             now = 10;
             later = View().DrawnPoints(box);
             Type("-Exit");
           })});
  ExpectNear(placed, ZK_Box({0, 0, 0}, {2, 1, 1}).Points());
  EXPECT_TRUE(gliding) << "the restore glides";
  ASSERT_EQ(
      (std::vector<size_t>{away.size(), start.size(), middle.size(), end.size(), moved.size()}),
      std::vector<size_t>(5, 8));
  for (size_t i = 0; i < start.size(); ++i) EXPECT_TRUE(Near(start[i], away[i])) << i;
  // Half way through in time, the box is half way along its glide (glide_test: how it turns).
  EXPECT_TRUE(Near(Middle(middle), (Middle(start) + Middle(end)) / 2));
  EXPECT_FALSE(glided) << "over after 0.4 s";
  EXPECT_EQ(moved, later) << "drawn where it is at once";
  EXPECT_FALSE(Near(moved[0], end[0]));
}

TEST_F(MainWindowTest, SelectingAStanceInThePanelPreviewsItsPlacesAndChangesNothing) {
  const ZK_UUID lid = AddNamed(L"lid");
  const ZK_UUID base = AddNamed(L"base", new ZK_Box({-1, -1, -2}, {6, 3, -1}));
  Save(L"Shut", {lid});
  Move(lid, ZK_Xform::Translation(3, 0, 0));
  Save(L"Open", {lid});
  Move(lid, ZK_Xform::Translation(0, 1, 0));  // at neither
  window_->Idle();
  // What must not change: the objects' places, the undo steps, the lid's record, the stances.
  const auto state = [&] {
    std::vector<double> numbers{double(CTarsaStandIn::UndoStepCount(*doc_)),
                                double(Table().Count())};
    for (const ZK_UUID& id : {lid, base}) {
      for (const ZK_3dPoint& p : Placement(id)) numbers.insert(numbers.end(), {p.x, p.y, p.z});
    }
    const CKorvoUserData* record = RecordOf(lid);
    std::vector<ZK_Xform> xforms{record->m_accumulated_xform};
    for (int e = 0; e < record->m_entries.GetCount(); ++e)
      xforms.push_back(record->m_entries[e]->m_xform);
    return std::make_pair(numbers, xforms);
  };
  const auto before = state();
  const auto outlines = [&] {
    int count = 0;
    const TsFrame& frame = View().Frame();
    for (const int i : frame.order) count += View().Sources()[i] == nullptr;
    return count;
  };
  QListWidget* list = window_->Dock()->List();
  const auto item = [list](const QString& name) {
    return list->findItems(name, Qt::MatchExactly).value(0);
  };
  ASSERT_NE(item("Shut"), nullptr);
  item("Shut")->setSelected(true);
  ASSERT_EQ(View().Preview().size(), 1u);
  EXPECT_EQ(View().Preview()[0].object, lid);
  EXPECT_NEAR(View().Preview()[0].move(0, 3), -3, 1e-9);
  EXPECT_NEAR(View().Preview()[0].move(1, 3), -1, 1e-9);
  EXPECT_EQ(outlines(), 1) << "the lid's outline where Shut puts it";
  const TsFrame& frame = View().Frame();  // drawn as an outline: last, dashed
  EXPECT_TRUE(frame.primitives[frame.objects[frame.order.back()].first_primitive].dashed);
  // Another stance selected moves the preview; none selected clears it.
  item("Shut")->setSelected(false);
  item("Open")->setSelected(true);
  ASSERT_EQ(View().Preview().size(), 1u);
  EXPECT_NEAR(View().Preview()[0].move(0, 3), 0, 1e-9);
  list->clearSelection();
  EXPECT_TRUE(View().Preview().empty());
  EXPECT_EQ(outlines(), 0);
  EXPECT_EQ(state(), before) << "the preview changed nothing";
}

}  // namespace
