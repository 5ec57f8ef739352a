#include "panel/stances_panel.h"

#include <deque>
#include <functional>
#include <map>

#include "command/save_flows.h"
#include "host/platform/module_state.h"
#include "host/platform/user_answers.h"
#include "host/tarsa/tarsa_dpi.h"
#include "testing/stance_document_test.h"

namespace {

using Texts = std::vector<std::wstring>;
using Scripts = std::vector<std::pair<std::wstring, int>>;
using Question = CTsScriptedAnswers::Question;

class StancesPanelTest : public StanceDocumentTest {
 protected:
  void TearDown() override {
    EXPECT_EQ(Answers().PendingAnswers(), 0) << "scripted answers left over";
    EXPECT_TRUE(CTarsaStandIn::TakeScripts().empty()) << "macros not checked";
    StanceDocumentTest::TearDown();
  }

  CTsStancesManagerDlg& Open() {
    EXPECT_TRUE(TarsaUiOpenDockbarTab(g_stances_panel_tab_id));
    return *static_cast<CTsStancesManagerDlg*>(CTarsaStandIn::Panel(g_stances_panel_tab_id));
  }
  // A stance with one object of its own, saved as the host would.
  void Stance(const wchar_t* name) { Save(name, {AddNamed(name)}); }

  // What `read` gives for each item of the list, in list order.
  template <class Read>
  auto EachItem(Read read) const {
    std::vector<decltype(read(0))> values;
    for (int i = 0; i < List().GetItemCount(); ++i) values.push_back(read(i));
    return values;
  }
  Texts Shown() const {
    return EachItem([this](int i) { return List().GetItemText(i); });
  }
  std::vector<LPARAM> Data() const {
    return EachItem([this](int i) { return List().GetItemData(i); });
  }
  std::vector<int> Images() const {
    return EachItem([this](int i) { return List().GetItemImage(i); });
  }
  // Which items carry the mark of a stance the model matches.
  std::vector<bool> Marks() const {
    return EachItem([this](int i) {
      return List().GetItemState(i, LVIS_STATEIMAGEMASK) ==
             INDEXTOSTATEIMAGEMASK(CTsStancesManagerDlg::matches_state_image);
    });
  }
  std::vector<int> Selected() const {
    std::vector<int> items;
    for (int i = List().GetNextItem(-1, LVNI_SELECTED); i >= 0;
         i = List().GetNextItem(i, LVNI_SELECTED)) {
      items.push_back(i);
    }
    return items;
  }
  void Select(const std::vector<int>& items) { CTarsaStandIn::SelectItems(*panel_, items); }
  bool Enabled(int control) const { return IsWindowEnabled(panel_->GetDlgItem(control)); }
  std::vector<bool> ToolButtons() const { return {Enabled(1148), Enabled(1149), Enabled(2112)}; }
  RECT Rect(int control) const {
    CWnd* window = TsWindowObject(panel_->GetDlgItem(control));
    return window->WindowRect();
  }
  bool Click(int control) { return CTarsaStandIn::Click(*panel_, control); }
  // A right click on the panel; the menu's choice, and the answers of what the action then asks,
  // are scripted before.
  void RightClick(POINT at = {10, 20}) { CTarsaStandIn::ContextMenu(*panel_, at); }
  // The host's rebuild timer running out.
  void WaitForRebuild() { CTarsaStandIn::AdvanceClock(500); }
  static std::wstring Output() { return CTarsaStandIn::CommandLine().TakeOutput(); }
  static Scripts TakeScripts() { return CTarsaStandIn::TakeScripts(); }
  static CTsScriptedAnswers& Answers() { return CTarsaStandIn::Answers(); }
  CListCtrl& List() const { return panel_->List(); }

  CTsStancesManagerDlg* panel_ = nullptr;
};

TEST_F(StancesPanelTest, OpeningTheTabMakesThePanelAndClosingDestroysIt) {
  EXPECT_EQ(g_pStancesPanel, nullptr);
  panel_ = &Open();
  EXPECT_EQ(g_pStancesPanel, panel_);
  EXPECT_TRUE(IsWindow(panel_->GetSafeHwnd()));
  EXPECT_TRUE(TarsaUiIsTabVisible(g_stances_panel_tab_id));
  EXPECT_STREQ(panel_->Caption(), L"Stances");
  CTarsaStandIn::SetLanguage(1031);
  CTarsaStandIn::SetTranslation(33040, L"Stellungen");
  EXPECT_STREQ(panel_->Caption(), L"Stellungen");
  // The texts the host asks the panel for, each with its own string id.
  std::map<int, std::wstring> texts;
  CTarsaStandIn::SetLocalizationObserver(
      [&texts](const wchar_t* english, int id) { texts[id] = english; });
  for (const wchar_t* text : {panel_->SaveDialogTitle(), panel_->SaveDialogPrompt(),
                              panel_->ReplaceQuestion(), panel_->NothingSavedMessage()}) {
    EXPECT_NE(text, nullptr);
  }
  CTarsaStandIn::SetLocalizationObserver(nullptr);
  EXPECT_EQ(texts, (std::map<int, std::wstring>{
                       {28189, L"Save Position"},
                       {28190, L"Save current object positions as:"},
                       {28511, L"The \"%s\" stance already exists, do you want to replace it?"},
                       {28512, L"No stances have been saved"}}));

  // Every control of the template is there and bound; the tool buttons carry their icons.
  for (int id : {1064, 2110, 2111, 6125, 1956, 1147, 1148, 1149, 2112}) {
    EXPECT_NE(TsWindowObject(panel_->GetDlgItem(id)), nullptr) << id;
  }
  EXPECT_EQ(List().GetStyle() & 0xFFFF, 0x4399u);
  // Each tool button's normal, highlighted and disabled pictures, at 16 pixels.
  const std::vector<std::pair<int, std::vector<int>>> pictures = {
      {1148, {1033, 1035, 1034}}, {1149, {1036, 1038, 1037}}, {2112, {1039, 1041, 1040}}};
  TsIconInfo icon;
  for (const auto& [id, groups] : pictures) {
    const auto* button = static_cast<CTsDialogToolButton*>(TsWindowObject(panel_->GetDlgItem(id)));
    const HICON icons[] = {button->NormalIcon(), button->HighlightedIcon(), button->DisabledIcon()};
    for (size_t i = 0; i < 3; ++i) {
      ASSERT_TRUE(TsGetIconInfo(icons[i], &icon)) << id;
      EXPECT_EQ(icon.group_id, groups[i]) << id;
      EXPECT_EQ(icon.size, 16);
    }
  }
  const auto* select = static_cast<CTsDialogToolButton*>(TsWindowObject(panel_->GetDlgItem(1148)));
  EXPECT_EQ(select->ToolTip(), L"Select objects of stance");
  ASSERT_TRUE(TsGetIconInfo(panel_->Icon(256, 256), &icon));
  EXPECT_EQ(icon.group_id, 1021);
  EXPECT_EQ(icon.size, 256);
  EXPECT_NE(std::string(icon.svg).find("<svg"), std::string::npos);
  EXPECT_EQ(AfxGetResourceHandle(), nullptr) << "the module state is switched back";

  {  // a second instance takes the pointer, and destroying any clears it
    CTsStancesManagerDlg second;
    EXPECT_EQ(g_pStancesPanel, &second);
  }
  EXPECT_EQ(g_pStancesPanel, nullptr);
  AddEntries({L"Front"});  // no panel to ask: nothing is pending
  EXPECT_FALSE(CTarsaStandIn::RebuildPending(*panel_));
  TarsaUiCloseDockbarTab(g_stances_panel_tab_id);
  EXPECT_EQ(CTarsaStandIn::Panel(g_stances_panel_tab_id), nullptr);
}

TEST_F(StancesPanelTest, UnloadingThePlugInClosesItsPanelAndALoadRegistersItAgain) {
  panel_ = &Open();
  ASSERT_TRUE(CTarsaStandIn::UnloadPlugIn(KorvoPlugIn()));
  EXPECT_EQ(g_pStancesPanel, nullptr);
  EXPECT_FALSE(TarsaUiIsTabVisible(g_stances_panel_tab_id));
  ASSERT_TRUE(TarsaUiOpenDockbarTab(g_stances_panel_tab_id));
  EXPECT_EQ(CTarsaStandIn::Panel(g_stances_panel_tab_id), nullptr) << "no class: an empty tab";
  TarsaUiCloseDockbarTab(g_stances_panel_tab_id);
  ASSERT_TRUE(CTarsaStandIn::LoadPlugIn(KorvoPlugIn()));
  panel_ = &Open();
  EXPECT_EQ(g_pStancesPanel, panel_);
}

TEST_F(StancesPanelTest, TheListIsSortedByNameAndItsDataAreTableIndexes) {
  AddEntries({L"b", L"A", L"c"});
  panel_ = &Open();
  EXPECT_EQ(Shown(), (Texts{L"A", L"b", L"c"}));
  EXPECT_EQ(Data(), (std::vector<LPARAM>{1, 0, 2}));
  EXPECT_EQ(List().GetColumnWidth(), List().WindowRect().right - List().WindowRect().left);
}

TEST_F(StancesPanelTest, ToolButtonsFollowTheSelection) {
  panel_ = &Open();
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(ToolButtons(), (std::vector<bool>{false, false, false}));
  EXPECT_FALSE(Click(1149));
  EXPECT_TRUE(TakeScripts().empty());
  AddEntries({L"A", L"B"});
  WaitForRebuild();
  Select({0});
  EXPECT_EQ(ToolButtons(), (std::vector<bool>{true, true, true}));
  EXPECT_TRUE(Enabled(1956)) << "rename with one item";
  Select({0, 1});
  EXPECT_EQ(ToolButtons(), (std::vector<bool>{true, true, true}));
  EXPECT_FALSE(Enabled(1956)) << "no rename with several";
  Select({});
  EXPECT_EQ(ToolButtons(), (std::vector<bool>{false, false, false}));
}

TEST_F(StancesPanelTest, RebuildsWaitMergeAndHappenOnlyOnChange) {
  AddEntries({L"Front", L"Side"});
  panel_ = &Open();
  Select({1});
  AddEntries({L"Top", L"Back"});
  EXPECT_EQ(Shown(), (Texts{L"Front", L"Side"})) << "nothing before the delay";
  CTarsaStandIn::AdvanceClock(499);
  EXPECT_EQ(CTarsaStandIn::RebuildCount(*panel_), 0);
  CTarsaStandIn::AdvanceClock(1);
  EXPECT_EQ(CTarsaStandIn::RebuildCount(*panel_), 1) << "two requests, one rebuild";
  EXPECT_EQ(Shown(), (Texts{L"Back", L"Front", L"Side", L"Top"}));
  EXPECT_TRUE(Selected().empty()) << "a refill loses the selection";
  EXPECT_EQ(ToolButtons(), (std::vector<bool>{false, false, false}));

  Select({2});
  panel_->ScheduleRebuild();
  CTarsaStandIn::RunIdleWork();
  EXPECT_EQ(CTarsaStandIn::RebuildCount(*panel_), 2);
  EXPECT_EQ(Selected(), (std::vector<int>{2})) << "nothing changed: the list stays";

  // The hook alone, whatever the host runs after it, leaves the buttons as the selection is.
  ASSERT_EQ(Table().Rename(L"Side", L"Aside"), 1);
  panel_->RebuildListIfChanged();
  EXPECT_EQ(Shown(), (Texts{L"Aside", L"Back", L"Front", L"Top"}));
  EXPECT_TRUE(Selected().empty());
  EXPECT_EQ(ToolButtons(), (std::vector<bool>{false, false, false}));
}

TEST_F(StancesPanelTest, ThePanelShowsTheActiveDocumentAndHearsOfNewOnes) {
  AddEntries({L"Front"});
  panel_ = &Open();
  CTarsaDoc* other = CTarsaStandIn::NewDocument();
  EXPECT_TRUE(Shown().empty());
  EXPECT_TRUE(CTarsaStandIn::RebuildPending(*panel_));
  CTarsaStandIn::SetActiveDocument(serial_);
  EXPECT_EQ(Shown(), (Texts{L"Front"}));
  // A file merged that changes no stance still has the panel look again once it is read.
  const std::string empty = ModelPath();
  SaveModel(empty, other);
  WaitForRebuild();
  ASSERT_TRUE(ReadModel(empty));
  EXPECT_TRUE(CTarsaStandIn::RebuildPending(*panel_));
  CTarsaStandIn::CloseDocument(serial_);
  EXPECT_EQ(panel_->Document(), other);
  EXPECT_TRUE(Shown().empty());
}

TEST_F(StancesPanelTest, UntilTheRebuildAnItemNamesWhatItsIndexNamesNow) {
  AddEntries({L"A", L"B", L"C"});
  panel_ = &Open();
  ASSERT_TRUE(Table().RemoveByName(L"B"));
  EXPECT_EQ(panel_->ItemName(1), L"C") << "B's index now names C";
  EXPECT_EQ(panel_->StanceOfItem(2), nullptr) << "C's index is beyond the table";
  EXPECT_EQ(panel_->ItemName(-1), L"");
  Select({1});
  EXPECT_EQ(panel_->DefaultSaveName(), L"C");
  panel_->RefreshListCaptions();
  // The item of no stance keeps its text and sorts as an empty name.
  EXPECT_EQ(Shown(), (Texts{L"C", L"A", L"C"}));
  EXPECT_EQ(Data(), (std::vector<LPARAM>{2, 0, 1}));
  EXPECT_EQ(Images(), (std::vector<int>{0, 0, 0})) << "the stance image, refreshed or not";
  WaitForRebuild();
  EXPECT_EQ(Shown(), (Texts{L"A", L"C"}));
}

// A front end's answers, which look at the panel while it asks.
class FrontEnd : public IUserAnswers {
 public:
  explicit FrontEnd(CWnd& panel) : m_panel(panel) {}
  UINT ChooseMenuItem(HMENU, POINT, HWND) override { return 0; }
  bool AskText(const std::wstring&, const std::wstring&, const std::wstring& proposed,
               std::wstring& text) override {
    panel_enabled_while_asked = m_panel.IsWindowEnabled();
    text = proposed;
    return true;
  }
  bool AskYesNo(const std::wstring&, const std::wstring&) override { return false; }
  bool EditLabel(HWND, int, const std::wstring&, std::wstring&) override { return false; }
  bool panel_enabled_while_asked = true;

 private:
  CWnd& m_panel;
};

TEST_F(StancesPanelTest, AFrontEndAnswersTheDialogsWhileThePanelWaitsDisabled) {
  Stance(L"Position 01");
  panel_ = &Open();
  FrontEnd front_end(*panel_);
  SetUserAnswers(&front_end);
  EXPECT_TRUE(Click(2110));  // proposes Position 02, which is free: no question
  SetUserAnswers(nullptr);
  EXPECT_FALSE(front_end.panel_enabled_while_asked);
  EXPECT_TRUE(panel_->IsWindowEnabled());
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_Stance _Save \"Position 02\" _PAUSE _ENTER", 1}}));
  Output();
}

TEST_F(StancesPanelTest, ButtonsFlowInRowsAndTheListFillsTheRest) {
  panel_ = &Open();
  int m, w, h, gx, gy;
  panel_->GetLayoutMetrics(m, w, h, gx, gy, 0);
  // Room for three buttons in a row: save restore delete / rename update append / select help.
  CTarsaStandIn::Resize(*panel_, m + 3 * w + 2 * gx, 300);
  const int rows[][3] = {{2110, 2111, 6125}, {1956, 1149, 2112}, {1148, 1147, 0}};
  for (int row = 0; row < 3; ++row) {
    for (int col = 0; col < 3 && rows[row][col] != 0; ++col) {
      const RECT r = Rect(rows[row][col]);
      EXPECT_EQ(r.left, m + col * (w + gx)) << rows[row][col];
      EXPECT_EQ(r.top, m + row * (h + gy)) << rows[row][col];
      EXPECT_EQ(r.right - r.left, w);
    }
  }
  const RECT list = List().WindowRect();
  EXPECT_EQ(list.top, m + 2 * (h + gy) + h + m);
  EXPECT_EQ(list.left, m);
  EXPECT_EQ(list.right, m + 3 * w + 2 * gx - m);
  EXPECT_EQ(list.bottom, 300 - m);
  EXPECT_GT(TsRepaintCount(List().GetSafeHwnd()), 0) << "the list is repainted";
  EXPECT_EQ(TsRepaintCount(panel_->GetDlgItem(2110)), 0) << "the buttons are not";

  // Narrower than one button: the first row stays empty, then one button a row.
  CTarsaStandIn::Resize(*panel_, m + w - 1, 400);
  const int order[] = {2110, 2111, 6125, 1956, 1149, 2112, 1148, 1147};
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(Rect(order[i]).left, m);
    EXPECT_EQ(Rect(order[i]).top, m + (i + 1) * (h + gy));
  }
  EXPECT_EQ(List().WindowRect().top, m + 8 * (h + gy) + h + m);
}

TEST_F(StancesPanelTest, ToolButtonsAndMenuItemsRunTheirMacrosForTheFirstSelectedStance) {
  Stance(L"Side");
  Stance(L"Front");
  panel_ = &Open();
  Select({0, 1});  // Front, Side
  EXPECT_TRUE(Click(1149));
  EXPECT_TRUE(Click(1148));
  Type({L""});
  EXPECT_TRUE(Click(2112));
  // Only the append macro shows its words on the command line.
  const std::wstring shown = Output();
  EXPECT_EQ(shown.find(L"_Update"), std::wstring::npos) << shown;
  EXPECT_EQ(shown.find(L"_Select"), std::wstring::npos) << shown;
  EXPECT_NE(shown.find(L"_Append\nName for position to append to: \"Front\""), std::wstring::npos)
      << shown;
  EXPECT_EQ(GetFocus(), TarsaApp().MainWnd()->GetSafeHwnd());
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_Stance _Update \"Front\" _ENTER", 0},
                                    {L"!-_Stance _Select \"Front\" _ENTER", 0},
                                    {L"!-_Stance _Append \"Front\" _PAUSE _ENTER", 1}}));
}

TEST_F(StancesPanelTest, TheContextMenuOffersTheActionsOfASelectedStance) {
  Stance(L"Front");
  panel_ = &Open();
  RightClick();
  std::vector<Question> asked = Answers().TakeQuestions();
  ASSERT_EQ(asked.size(), 1u);
  ASSERT_EQ(asked[0].menu_items.size(), 1u);
  EXPECT_EQ(asked[0].menu_items[0].id, 106u);
  EXPECT_EQ(asked[0].menu_items[0].text, L"&Save Object Positions As Stance...");

  Select({0});
  std::vector<int> string_ids;
  CTarsaStandIn::SetLocalizationObserver([&string_ids](const wchar_t*, int id) {
    if (id != 0) string_ids.push_back(id);
  });
  RightClick({-1, -1});
  CTarsaStandIn::SetLocalizationObserver(nullptr);
  EXPECT_EQ(string_ids, (std::vector<int>{33041, 34039, 34198, 33042, 33043, 33396, 33044, 40013}));
  asked = Answers().TakeQuestions();
  ASSERT_EQ(asked.size(), 1u);
  const Texts expected = {L"&Restore Stance",
                          L"&Update Stance",
                          L"&Append Stance",
                          L"",
                          L"&Delete Stance",
                          L"Rena&me Stance",
                          L"",
                          L"S&elect In Document",
                          L"",
                          L"&Save Object Positions As Stance...",
                          L"",
                          L"Restore Selected Objects Only"};
  Texts texts;
  std::vector<UINT> ids;
  for (const TsMenuItem& item : asked[0].menu_items) {
    texts.push_back(item.text);
    ids.push_back(item.id);
  }
  EXPECT_EQ(texts, expected);
  EXPECT_EQ(ids, (std::vector<UINT>{100, 101, 102, 0, 103, 104, 0, 105, 0, 106, 0, 107}));
  EXPECT_EQ(asked[0].default_item, 100);
  EXPECT_EQ(asked[0].point.x, -1);
  EXPECT_TRUE(TakeScripts().empty()) << "a dismissed menu does nothing";
}

TEST_F(StancesPanelTest, RestoringSelectedObjectsOnlyMovesThemBackInOneUndoStep) {
  const ZK_UUID door = AddNamed(L"door");
  const ZK_UUID wheel = AddNamed(L"wheel");
  Save(L"Fr\"ont", {door, wheel});
  const std::vector<ZK_3dPoint> saved = Placement(door);
  Move(door, ZK_Xform::Translation(5, 0, 0));
  Move(wheel, ZK_Xform::Translation(0, 5, 0));
  const std::vector<ZK_3dPoint> wheel_moved = Placement(wheel);
  const int steps = CTarsaStandIn::UndoStepCount(*doc_);
  panel_ = &Open();
  Select({0});
  Object(door)->Select();
  Answers().Choose(107);
  RightClick();
  Answers().TakeQuestions();
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_StanceRestoreObjects \"Fr\"\"ont\"", 1}}));
  EXPECT_NE(Output().find(L"Stance to restore:"), std::wstring::npos) << "echoed for the user";
  ExpectNear(Placement(door), saved);
  ExpectNear(Placement(wheel), wheel_moved);
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps + 1);
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));
  EXPECT_NEAR(Placement(door)[0].x, saved[0].x + 5, 1e-9) << "the part restore is one step";
}

TEST_F(StancesPanelTest, ACancelledSaveLeavesTheFlagOff) {
  panel_ = &Open();
  bool flag_during_save = false;
  CTarsaStandIn::CommandLine().SetReader([&](const std::wstring&, std::wstring&) {
    flag_during_save = g_bSaveWithoutConfirm;
    return false;  // Escape at the object prompt
  });
  Answers().Enter(L"Front");
  EXPECT_TRUE(Click(2110));
  Answers().TakeQuestions();
  TakeScripts();
  Output();
  EXPECT_TRUE(flag_during_save);
  EXPECT_FALSE(g_bSaveWithoutConfirm);
  EXPECT_EQ(Table().Count(), 0);
}

TEST_F(StancesPanelTest, RenameAndDeleteGoThroughTheCommandWithQuotesIntact) {
  Stance(L"Side");
  Stance(L"Side\" Front");
  panel_ = &Open();
  Select({1});
  Answers().Choose(103);  // delete
  Answers().Answer(true);
  RightClick();
  std::vector<Question> asked = Answers().TakeQuestions();
  EXPECT_EQ(asked.back().prompt, L"Do you want to delete \"Side\" Front\"?");
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_Stance _Delete \"Side\"\" Front\"  _ENTER", 0}}));
  EXPECT_EQ(Table().Count(), 1);
  EXPECT_NE(Table().FindByName(L"Side"), nullptr);

  WaitForRebuild();
  Select({0});
  Answers().Choose(104);  // rename: the label is edited in place
  Answers().Enter(L"Front \"new\"");
  RightClick();
  asked = Answers().TakeQuestions();
  EXPECT_EQ(asked.back().kind, Question::label);
  EXPECT_EQ(asked.back().prompt, L"Side");
  EXPECT_EQ(TakeScripts(),
            (Scripts{{L"!-_Stance _Rename \"Side\" \"Front \"\"new\"\"\" _ENTER", 0}}));
  EXPECT_NE(Table().FindByName(L"Front \"new\""), nullptr);
  EXPECT_EQ(Shown(), (Texts{L"Front \"new\""})) << "shown at once, before the rebuild";
  EXPECT_EQ(Output(), L"");
}

TEST_F(StancesPanelTest, MarksFollowTheModelThroughRestoreMoveAndUndoKeepingTheSelection) {
  const ZK_UUID door = AddNamed(L"door");
  Save(L"Front", {door});
  const std::vector<ZK_3dPoint> saved = Placement(door);
  Move(door, ZK_Xform::Translation(5, 0, 0));
  Save(L"Side", {door});
  panel_ = &Open();
  EXPECT_EQ(Shown(), (Texts{L"Front", L"Side"}));
  EXPECT_EQ(Marks(), (std::vector<bool>{false, true}));
  Select({0});
  CTarsaStandIn::DoubleClick(*panel_, 0);  // restores, and the view has the focus
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_Stance _Restore \"Front\"  _ENTER", 0}}));
  ExpectNear(Placement(door), saved);
  EXPECT_EQ(GetFocus(), TarsaApp().ActiveView()->GetSafeHwnd());
  WaitForRebuild();
  EXPECT_EQ(Marks(), (std::vector<bool>{true, false}));
  EXPECT_EQ(Selected(), std::vector<int>{0});
  const std::vector<std::pair<std::function<void()>, std::vector<bool>>> steps = {
      {[&] { CTarsaStandIn::Undo(*doc_); }, {false, true}},
      {[&] { CTarsaStandIn::Redo(*doc_); }, {true, false}},
      {[] { CTarsaStandIn::CommandLine().RunScript(L"-_Move door _Enter 0,1,0", 0); },
       {false, false}},
  };
  for (size_t i = 0; i < steps.size(); ++i) {
    steps[i].first();
    Output();
    WaitForRebuild();
    EXPECT_EQ(Marks(), steps[i].second) << "step " << i;
  }
}

TEST_F(StancesPanelTest, AnActionWhileACommandWaitsCancelsItThenRunsOnItsOwn) {
  const ZK_UUID door = AddNamed(L"door");
  Save(L"Front", {door});
  panel_ = &Open();
  Select({0});
  Move(door, ZK_Xform::Translation(0, 3, 0));
  // The user starts a command and, at its first prompt, saves over Front from the panel.
  bool clicked = false;
  std::deque<std::wstring> later = {L"door", L""};
  CTarsaStandIn::CommandLine().SetReader([&](const std::wstring&, std::wstring& line) {
    if (!clicked) {
      clicked = true;
      Answers().Enter(L"Front");
      Answers().Answer(true);
      EXPECT_TRUE(Click(2110));
      EXPECT_TRUE(TakeScripts().empty()) << "nothing runs inside the waiting command";
      return false;
    }
    if (later.empty()) return false;
    line = later.front();
    later.pop_front();
    return true;
  });
  CTarsaStandIn::CommandLine().RunCommand(L"-_Stance");
  EXPECT_EQ(Answers().TakeQuestions().size(), 2u) << "the panel's name and replace questions";
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_Stance _Save \"Front\" _PAUSE _ENTER", 1}}));
  const std::wstring output = Output();
  EXPECT_EQ(output.find(L"already exists"), std::wstring::npos) << output;
  EXPECT_FALSE(g_bSaveWithoutConfirm);
  ASSERT_NE(Table().FindByName(L"Front"), nullptr);
  const ZK_UUID front = Table().FindByName(L"Front")->m_id;
  EXPECT_TRUE(RecordOf(door)->HasEntry(front));
}

}  // namespace
