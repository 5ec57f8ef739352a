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
  // The user's next step, taken once the window waits at `prompt` with nothing left to take; it
  // may set the step after it.
  void At(const wchar_t* prompt, std::function<void()> step) {
    user_.Then([this, prompt, step] {
      const std::wstring& waiting = window_->UserInput().Waiting();
      if (!window_->UserInput().Idle() || waiting.rfind(prompt, 0) != 0) return false;
      step();
      return true;
    });
  }
  // Runs the program's command line until a step types -Exit.
  void RunUser() {
    CommandLine().ProcessInput();
    CommandLine().TakeOutput();
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
  // The panel's Save clicked; its name dialog, once it shows, answered with `name`; then `next`.
  void ClickSave(const QString& name, std::function<void()> next) {
    window_->Dock()->Button(CTsNamedDocObjectManagerDlg::save_button)->click();
    user_.Then([name, next] {
      auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return false;
      dialog->setTextValue(name);
      dialog->accept();
      next();
      return true;
    });
  }
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
  // The ids of the objects that carry the stance `name`.
  std::vector<ZK_UUID> Members(const wchar_t* name) const {
    std::vector<ZK_UUID> members;
    const CKorvoDocData::USER_DATA* stance = Table().FindByName(name);
    if (stance == nullptr) return members;
    for (const ZK_UUID& id : AllObjects()) {
      const CKorvoUserData* record = RecordOf(id);
      if (record != nullptr && record->HasEntry(stance->m_id)) members.push_back(id);
    }
    return members;
  }

  std::unique_ptr<TsMainWindow> window_;
  std::unique_ptr<TsFrontEndScope> front_end_;
  UserSteps user_;
};

TEST_F(MainWindowTest, ThePanelsSaveAsksThenPicksUntilARightClickAndTheCommandLineGoesOn) {
  const ZK_UUID lid = AddNamed(L"lid");
  const ZK_UUID base = AddNamed(L"base");
  Move(base, ZK_Xform::Translation(5, 0, 0));
  std::vector<ZK_UUID> picked_first;
  // Idle, then while Move waits for its objects: the panel's Save cancels Move first.
  At(L"Command:", [&] {
    ClickSave("Open", [&] {
      At(L"Select objects", [&] {
        Click(On(lid));
        At(L"Select objects", [&] {
          picked_first = CommandLine().Question().picked;  // the view draws these as picked
          Click(On(base));
          At(L"Select objects", [&] {
            Click(QPointF(1, 1), Qt::RightButton);
            At(L"Command:", [&] {
              Type("Move");
              At(L"Select objects", [&] {
                ClickSave("Shut", [&] {
                  At(L"Select objects", [&] {
                    Click(On(lid));
                    At(L"Select objects", [&] {
                      Type("");
                      At(L"Command:", [&] {
                        Type("List");
                        At(L"Command:", [&] { Type("-Exit"); });
                      });
                    });
                  });
                });
              });
            });
          });
        });
      });
    });
  });
  RunUser();
  EXPECT_EQ(Members(L"Open"), (std::vector<ZK_UUID>{lid, base}));
  EXPECT_EQ(Members(L"Shut"), std::vector<ZK_UUID>{lid});
  EXPECT_EQ(picked_first, std::vector<ZK_UUID>{lid});
  EXPECT_TRUE(Shown().contains("): _Save\n")) << "the panel's action shows";
  EXPECT_TRUE(Shown().contains("Select objects: lid")) << "each pick shows";
  EXPECT_TRUE(Shown().contains("Command: List\n")) << "the line after the actions is taken";
}

TEST_F(MainWindowTest, PromptOptionsAreLinksThatWrapAndTheLineCompletesAndRecalls) {
  Save(L"Front", {AddNamed(L"lid")});
  std::vector<std::wstring> offered;
  int input_width = 0;
  QString completed, recalled;
  At(L"Command:", [&] {
    Type("-Stance");
    At(L"Choose stance option", [&] {
      offered = window_->OptionLabels();
      input_width = window_->Input()->width();
      window_->ChooseOption(0);  // List
      At(L"Choose stance option", [&] {
        Type("");
        // Tab completes a command's name; Up with text typed brings back the line that starts so.
        At(L"Command:", [&] {
          window_->Input()->setText("sel");
          Press(window_->Input(), Qt::Key_Tab);  // Select, SelAll, SelNone: their beginning
          window_->Input()->setText(window_->Input()->text() + "Non");
          Press(window_->Input(), Qt::Key_Tab);
          completed = window_->Input()->text();
          Press(window_->Input(), Qt::Key_Return);
          At(L"Command:", [&] {
            window_->Input()->setText("-St");
            Press(window_->Input(), Qt::Key_Up);
            recalled = window_->Input()->text();
            Type("-Exit");
          });
        });
      });
    });
  });
  RunUser();
  EXPECT_EQ(offered, (std::vector<std::wstring>{L"List", L"Save", L"Restore", L"Delete", L"Rename",
                                                L"Select", L"Update", L"Append", L"Visible"}));
  EXPECT_EQ(window_->width(), 1000) << "the options wrap within the window";
  EXPECT_GT(input_width, 600) << "the typing field keeps its width";
  EXPECT_TRUE(Shown().contains("Front"));
  EXPECT_EQ(completed, "SelNone ");
  EXPECT_EQ(recalled, "-Stance");
}

TEST_F(MainWindowTest, ClicksSelectOrPickAndDoubleClicksAndUndoKeysActOnTheModel) {
  const ZK_UUID left = AddNamed(L"left");
  const ZK_UUID right = AddNamed(L"right");
  Move(right, ZK_Xform::Translation(10, 0, 0));
  Save(L"Apart", {left, right});
  window_->Idle();
  bool shift_added = false, cleared = false, window_picked = false;
  At(L"Command:", [&] {
    Click(On(left));
    Click(On(right), Qt::LeftButton, Qt::ShiftModifier);
    At(L"Command:", [&] {
      shift_added = Selected(left) && Selected(right);
      Click(QPointF(2, 2));
      // A window around the left box picks it alone.
      At(L"Command:", [&] {
        cleared = !Selected(left) && !Selected(right);
        const std::vector<QPointF> drawn = View().DrawnPoints(left);
        const QRectF around = QPolygonF(QList<QPointF>(drawn.begin(), drawn.end())).boundingRect();
        Drag(around.topLeft() - QPointF(3, 3), around.bottomRight() + QPointF(3, 3));
        At(L"Command:", [&] {
          window_picked = Selected(left) && !Selected(right);
          Type("-Move");
          At(L"Offset", [&] {
            Type("0,5,0");
            // Ctrl+Z in the empty typing field undoes the move; with text, the text.
            At(L"Command:", [&] {
              Press(window_->Input(), Qt::Key_Z, Qt::ControlModifier);
              At(L"Command:", [&] {
                // A double click in the panel restores the stance.
                Move(right, ZK_Xform::Translation(0, 7, 0));
                QListWidget* list = window_->Dock()->List();
                emit list->itemDoubleClicked(list->item(0));
                At(L"Command:", [&] { Type("-Exit"); });
              });
            });
          });
        });
      });
    });
  });
  RunUser();
  EXPECT_TRUE(shift_added) << "Shift adds";
  EXPECT_TRUE(cleared) << "a click on nothing clears the selection";
  EXPECT_TRUE(window_picked);
  ExpectNear(Placement(right), ZK_Box({10, 0, 0}, {11, 1, 1}).Points());  // restored
  EXPECT_EQ(window_->statusBar()->currentMessage(), "Matches: Apart");
  EXPECT_TRUE(Shown().contains("Undo Move") || Shown().contains("Command: _Undo"));
  ExpectNear(Placement(left), ZK_Box({0, 0, 0}, {1, 1, 1}).Points());
}

// After an orbit a click still finds what is drawn under it.
TEST_F(MainWindowTest, TheViewStartsIsoOrbitsUnderADragAndStillPicks) {
  const ZK_UUID left = AddNamed(L"left");
  const ZK_UUID right = AddNamed(L"right");
  Move(right, ZK_Xform::Translation(4, 0, 0));
  window_->Idle();
  TsCamera iso;
  iso.SetStandardView(TsStandardView::iso);
  const TsQuat start = View().Camera().Orientation();
  EXPECT_NEAR(start.w, iso.Orientation().w, 1e-12);
  EXPECT_NEAR(start.z, iso.Orientation().z, 1e-12);
  const std::vector<QPointF> before = View().DrawnPoints(left);
  std::vector<QPointF> orbited;
  bool picked = false;
  At(L"Command:", [&] {
    // A drag without Ctrl turns the view and picks nothing.
    Drag(On(right) + QPointF(0, 60), On(right) + QPointF(80, 30), Qt::NoModifier);
    orbited = View().DrawnPoints(left);
    Click(On(left));
    At(L"Command:", [&] {
      picked = Selected(left) && !Selected(right);
      // The standard views come from the View menu and its keys.
      QAction* top = ViewAction("&Top");
      if (top != nullptr) {
        EXPECT_EQ(top->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_1));
        top->trigger();
      }
      Type("-Exit");
    });
  });
  RunUser();
  EXPECT_NE(orbited, before) << "the drag orbited";
  EXPECT_TRUE(picked) << "the click picked what the orbited view draws under it";
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
  bool gliding = false, glided = true, move_glides = true;
  At(L"Command:", [&] {
    Type("-Stance Restore Home _Enter");
    At(L"Command:", [&] {
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
      At(L"Command:", [&] {
        move_glides = View().Gliding();
        moved = View().DrawnPoints(box);
        now = 10;
        later = View().DrawnPoints(box);
        Type("-Exit");
      });
    });
  });
  RunUser();
  ExpectNear(placed, ZK_Box({0, 0, 0}, {2, 1, 1}).Points());
  EXPECT_TRUE(gliding) << "the restore glides";
  ASSERT_EQ(start.size(), 8u);
  for (size_t i = 0; i < start.size(); ++i) EXPECT_TRUE(Near(start[i], away[i])) << i;
  // Half way through in time, the box is half way along its glide (glide_test: how it turns).
  ASSERT_EQ(middle.size(), 8u);
  ASSERT_EQ(end.size(), 8u);
  EXPECT_TRUE(Near(Middle(middle), (Middle(start) + Middle(end)) / 2));
  EXPECT_FALSE(glided) << "over after 0.4 s";
  EXPECT_FALSE(move_glides);
  EXPECT_EQ(moved, later) << "drawn where it is at once";
  ASSERT_EQ(moved.size(), 8u);
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
    std::vector<double> numbers;
    for (const ZK_UUID& id : {lid, base}) {
      for (const ZK_3dPoint& p : Placement(id)) numbers.insert(numbers.end(), {p.x, p.y, p.z});
    }
    numbers.push_back(CTarsaStandIn::UndoStepCount(*doc_));
    const CKorvoUserData* record = RecordOf(lid);
    for (int e = 0; e < record->m_entries.GetCount(); ++e) {
      for (int k = 0; k < 16; ++k) numbers.push_back(record->m_entries[e]->m_xform(k / 4, k % 4));
    }
    for (int k = 0; k < 16; ++k) numbers.push_back(record->m_accumulated_xform(k / 4, k % 4));
    numbers.push_back(Table().Count());
    return numbers;
  };
  const std::vector<double> before = state();
  const auto outlines = [&] {
    int count = 0;
    const TsFrame& frame = View().Frame();
    for (const int i : frame.order) count += View().Sources()[i] == nullptr;
    return count;
  };
  EXPECT_EQ(outlines(), 0);
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
  EXPECT_NEAR(View().Preview()[0].move(1, 3), -1, 1e-9);
  list->clearSelection();
  EXPECT_TRUE(View().Preview().empty());
  EXPECT_EQ(outlines(), 0);
  EXPECT_EQ(state(), before) << "the preview changed nothing";
}

}  // namespace
