#include "panel/stances_panel.h"

#include <functional>
#include <map>
#include <tuple>
#include <type_traits>

#include "command/save_flows.h"
#include "events/event_watcher.h"
#include "host/platform/module_state.h"
#include "host/platform/user_answers.h"
#include "host/tarsa/tarsa_dockbar.h"
#include "host/tarsa/tarsa_dpi.h"
#include "testing/command_line_test.h"

namespace {

using Texts = std::vector<std::wstring>;
using Flags = std::vector<bool>;
using Scripts = std::vector<std::pair<std::wstring, int>>;
using Question = CTsScriptedAnswers::Question;

class StancesPanelTest : public CommandLineTest {
 protected:
  void TearDown() override {
    EXPECT_EQ(Answers().PendingAnswers(), 0) << "scripted answers left over";
    EXPECT_TRUE(CTarsaStandIn::TakeScripts().empty()) << "macros not checked";
    CommandLineTest::TearDown();
  }

  void Open() {
    EXPECT_TRUE(TarsaUiOpenDockbarTab(g_stances_panel_tab_id));
    panel_ = static_cast<CTsStancesManagerDlg*>(CTarsaStandIn::Panel(g_stances_panel_tab_id));
  }

  // What `read` gives for each item of the list, in list order.
  template <class Read>
  auto EachItem(Read read) const {
    std::vector<std::decay_t<std::invoke_result_t<Read, CListCtrl&, int>>> values;
    for (int i = 0; i < List().GetItemCount(); ++i) values.push_back(std::invoke(read, List(), i));
    return values;
  }
  Texts Shown() const { return EachItem(&CListCtrl::GetItemText); }
  // Which items carry the mark of a stance the model matches, or are selected.
  Flags ItemsIn(UINT mask, UINT state) const {
    return EachItem([=](CListCtrl& list, int i) { return list.GetItemState(i, mask) == state; });
  }
  Flags Marks() const {
    return ItemsIn(LVIS_STATEIMAGEMASK,
                   INDEXTOSTATEIMAGEMASK(CTsStancesManagerDlg::matches_state_image));
  }
  Flags Selected() const { return ItemsIn(LVIS_SELECTED, LVIS_SELECTED); }
  void Select(const std::vector<int>& items) { CTarsaStandIn::SelectItems(*panel_, items); }
  bool Enabled(int control) const { return IsWindowEnabled(panel_->GetDlgItem(control)); }
  // Select, update, append and rename.
  Flags ToolButtons() const { return {Enabled(1148), Enabled(1149), Enabled(2112), Enabled(1956)}; }
  bool Click(int control) { return CTarsaStandIn::Click(*panel_, control); }
  // A right click on the panel; the menu's choice, and the answers of what the action then asks,
  // are scripted before.
  void RightClick(POINT at = {10, 20}) { CTarsaStandIn::ContextMenu(*panel_, at); }
  // The menu a right click shows, when that is all it asks.
  Question Menu(POINT at = {10, 20}) {
    RightClick(at);
    const std::vector<Question> asked = Answers().TakeQuestions();
    EXPECT_EQ(asked.size(), 1u);
    return asked.empty() ? Question() : asked[0];
  }
  // The host's rebuild timer running out.
  void WaitForRebuild() { CTarsaStandIn::AdvanceClock(500); }
  static std::wstring Output() { return CommandLine().TakeOutput(); }
  static Scripts TakeScripts() { return CTarsaStandIn::TakeScripts(); }
  static CTsScriptedAnswers& Answers() { return CTarsaStandIn::Answers(); }
  CListCtrl& List() const { return panel_->List(); }

  CTsStancesManagerDlg* panel_ = nullptr;
};

TEST_F(StancesPanelTest, ThePanelShowsItsTextsIconsAndSortedListAndGoesWithAnUnload) {
  AddEntries({L"b", L"a", L"C"});
  Open();
  EXPECT_STREQ(panel_->Caption(), L"Stances");
  CTarsaStandIn::SetLanguage(1031);
  CTarsaStandIn::SetTranslation(33040, L"Stellungen");
  EXPECT_STREQ(panel_->Caption(), L"Stellungen");
  // The texts the host asks the panel for, each with its own string id.
  const auto ask = [this] {
    return Texts{panel_->SaveDialogTitle(), panel_->SaveDialogPrompt(), panel_->ReplaceQuestion(),
                 panel_->NothingSavedMessage()};
  };
  EXPECT_EQ(TextsAsked(ask),
            (TextsById{{28189, {L"Save Position"}},
                       {28190, {L"Save current object positions as:"}},
                       {28511, {L"The \"%s\" stance already exists, do you want to replace it?"}},
                       {28512, {L"No stances have been saved"}}}));

  // Each tool button's tip, and its normal, highlighted and disabled pictures at 16 pixels.
  std::vector<std::pair<std::wstring, std::vector<int>>> buttons;
  TsIconInfo icon;
  for (int id : {1148, 1149, 2112}) {
    const auto* button = static_cast<CTsDialogToolButton*>(TsWindowObject(panel_->GetDlgItem(id)));
    ASSERT_NE(button, nullptr) << id;
    buttons.push_back({button->ToolTip(), {}});
    for (HICON h : {button->NormalIcon(), button->HighlightedIcon(), button->DisabledIcon()}) {
      buttons.back().second.push_back(TsGetIconInfo(h, &icon) && icon.size == 16 ? icon.group_id
                                                                                 : 0);
    }
  }
  EXPECT_EQ(buttons, (decltype(buttons){{L"Select objects of stance", {1033, 1035, 1034}},
                                        {L"Update selected stance", {1036, 1038, 1037}},
                                        {L"Append to selected stance", {1039, 1041, 1040}}}));
  ASSERT_TRUE(TsGetIconInfo(panel_->Icon(256, 256), &icon));
  EXPECT_EQ(std::make_pair(icon.group_id, icon.size), std::make_pair(1021, 256));
  EXPECT_NE(std::string(icon.svg).find("<svg"), std::string::npos);
  EXPECT_EQ(AfxGetResourceHandle(), nullptr) << "the module state is switched back";

  int m, w, h, gx, gy;
  panel_->GetLayoutMetrics(m, w, h, gx, gy, 0);
  const int order[] = {2110, 2111, 6125, 1956, 1149, 2112, 1148, 1147};
  // Three buttons a row; then narrower than one button: the first row stays empty, then one a row.
  for (const int columns : {3, 0}) {
    const int width = columns > 0 ? m + columns * w + (columns - 1) * gx : m + w - 1;
    CTarsaStandIn::Resize(*panel_, width, 300);
    std::vector<std::vector<long>> placed, expected;
    for (int i = 0; i < 8; ++i) {
      const RECT r = TsWindowObject(panel_->GetDlgItem(order[i]))->WindowRect();
      placed.push_back({r.left, r.top, r.right - r.left});
      const int row = columns > 0 ? i / columns : i + 1;
      expected.push_back({m + (columns > 0 ? i % columns : 0) * (w + gx), m + row * (h + gy), w});
    }
    const RECT list = List().WindowRect();
    placed.push_back({list.left, list.top, list.right, list.bottom});
    expected.push_back({m, expected.back()[1] + h + m, width - m, 300 - m});
    EXPECT_EQ(placed, expected) << columns;
  }
  EXPECT_GT(TsRepaintCount(List().GetSafeHwnd()), 0) << "the list is repainted";
  EXPECT_EQ(TsRepaintCount(panel_->GetDlgItem(2110)), 0) << "the buttons are not";

  EXPECT_EQ(Shown(), (Texts{L"a", L"b", L"C"}));
  EXPECT_EQ(EachItem(&CListCtrl::GetItemData), (std::vector<LPARAM>{1, 0, 2}));
  EXPECT_EQ(List().GetColumnWidth(), List().WindowRect().right - List().WindowRect().left);
  ASSERT_TRUE(Table().RemoveByName(L"a"));
  // Until the rebuild an item names what its index names now, and nothing beyond the table.
  Select({0});
  EXPECT_EQ((Texts{panel_->ItemName(0), panel_->ItemName(2), panel_->ItemName(-1),
                   panel_->DefaultSaveName()}),
            (Texts{L"C", L"", L"", L"C"}));
  panel_->RefreshListCaptions();
  // The item of no stance keeps its text and sorts as an empty name.
  EXPECT_EQ(Shown(), (Texts{L"C", L"b", L"C"}));
  EXPECT_EQ(EachItem(&CListCtrl::GetItemData), (std::vector<LPARAM>{2, 0, 1}));
  EXPECT_EQ(EachItem(&CListCtrl::GetItemImage), (std::vector<int>{0, 0, 0})) << "stance image";

  AddEntries({L"Top", L"Back"});
  CTarsaStandIn::AdvanceClock(499);
  EXPECT_EQ(CTarsaStandIn::RebuildCount(*panel_), 0) << "nothing before the delay";
  CTarsaStandIn::AdvanceClock(1);
  EXPECT_EQ(CTarsaStandIn::RebuildCount(*panel_), 1) << "three requests, one rebuild";
  EXPECT_EQ(Shown(), (Texts{L"b", L"Back", L"C", L"Top"}));
  EXPECT_EQ(Selected(), Flags(4, false)) << "a refill loses the selection";
  EXPECT_EQ(ToolButtons(), Flags(4, false));

  Select({2});
  panel_->ScheduleRebuild();
  CTarsaStandIn::RunIdleWork();
  EXPECT_EQ(CTarsaStandIn::RebuildCount(*panel_), 2);
  EXPECT_EQ(Selected(), (Flags{false, false, true, false})) << "nothing changed: the list stays";
  // The hook alone, whatever the host runs after it, leaves the buttons as the selection is.
  ASSERT_EQ(Table().Rename(L"Top", L"Atop"), 1);
  panel_->RebuildListIfChanged();
  EXPECT_EQ(Shown(), (Texts{L"Atop", L"b", L"Back", L"C"}));
  EXPECT_EQ(Selected(), Flags(4, false));
  EXPECT_EQ(ToolButtons(), Flags(4, false));

  // An unload closes the panel and stops the event watcher; the tab stays empty until a load.
  ASSERT_TRUE(CTarsaStandIn::UnloadPlugIn(KorvoPlugIn()));
  EXPECT_EQ(g_pStancesPanel, nullptr);
  EXPECT_FALSE(TarsaUiIsTabVisible(g_stances_panel_tab_id));
  EXPECT_FALSE(KorvoPlugIn().EventWatcher()->IsEnabled());
  AddEntries({L"Front"});  // no panel to tell
  ASSERT_TRUE(TarsaUiOpenDockbarTab(g_stances_panel_tab_id));
  EXPECT_EQ(CTarsaStandIn::Panel(g_stances_panel_tab_id), nullptr) << "no class: an empty tab";
  TarsaUiCloseDockbarTab(g_stances_panel_tab_id);
  ASSERT_TRUE(CTarsaStandIn::LoadPlugIn(KorvoPlugIn()));
  Open();
  ASSERT_NE(panel_, nullptr);

  CTarsaDoc* other = CTarsaStandIn::NewDocument();
  EXPECT_TRUE(Shown().empty());
  EXPECT_TRUE(CTarsaStandIn::RebuildPending(*panel_));
  CTarsaStandIn::SetActiveDocument(serial_);
  EXPECT_EQ(Shown(), (Texts{L"Atop", L"b", L"Back", L"C", L"Front"}));
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

// The items of a menu the user was shown, each as its id and text; a separator as its id.
std::wstring ItemsOf(const Question& menu) {
  std::wstring items;
  for (const TsMenuItem& item : menu.menu_items) {
    items += std::to_wstring(item.id) + (item.text.empty() ? L"" : L" ") + item.text + L"; ";
  }
  return items;
}

// A front end that takes the proposed name, noting whether the panel could be used meanwhile.
struct FrontEnd : CTsScriptedAnswers {
  bool AskText(const std::wstring&, const std::wstring&, const std::wstring& proposed,
               std::wstring& text) override {
    panel_enabled = g_pStancesPanel->IsWindowEnabled();
    text = proposed;
    return true;
  }
  bool panel_enabled = true;
};

TEST_F(StancesPanelTest, ButtonsMenusAndSavesRunTheCommandWithQuotesIntactAndMarksFollowTheModel) {
  const ZK_UUID door = AddNamed(L"door");
  const ZK_UUID wheel = AddNamed(L"wheel");
  Save(L"Side\" Front", {door, wheel});
  Save(L"Side", {AddNamed(L"Side")});
  const std::vector<ZK_3dPoint> saved = Placement(door);
  Move(door, ZK_Xform::Translation(5, 0, 0));
  Move(wheel, ZK_Xform::Translation(0, 5, 0));
  const std::vector<ZK_3dPoint> wheel_moved = Placement(wheel);
  Open();
  EXPECT_EQ(Marks(), (Flags{true, false}));
  EXPECT_FALSE(Click(1149));
  EXPECT_EQ(ItemsOf(Menu()), L"106 &Save Object Positions As Stance...; ");
  FrontEnd front_end;
  SetUserAnswers(&front_end);
  EXPECT_TRUE(Click(2110));  // proposes Position 01, which is free: no question
  SetUserAnswers(nullptr);
  EXPECT_FALSE(front_end.panel_enabled);
  EXPECT_TRUE(panel_->IsWindowEnabled());
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_Stance _Save \"Position 01\" _PAUSE _ENTER", 1}}));
  Output();
  EXPECT_FALSE(g_bSaveWithoutConfirm);
  EXPECT_EQ(Names(), (Texts{L"Side\" Front", L"Side"})) << "no object given: nothing saved";

  for (const auto& [items, buttons] : std::vector<std::pair<std::vector<int>, Flags>>{
           {{0}, Flags(4, true)}, {{}, Flags(4, false)}, {{0, 1}, {true, true, true, false}}}) {
    Select(items);
    EXPECT_EQ(ToolButtons(), buttons) << items.size();  // no rename with several
  }
  // The tool buttons act on the first selected stance.
  EXPECT_TRUE(Click(1149));
  EXPECT_TRUE(Click(1148));
  Type({L""});
  EXPECT_TRUE(Click(2112));
  Output();
  EXPECT_EQ(GetFocus(), TarsaApp().MainWnd()->GetSafeHwnd());
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_Stance _Update \"Side\" _ENTER", 0},
                                    {L"!-_Stance _Select \"Side\" _ENTER", 0},
                                    {L"!-_Stance _Append \"Side\" _PAUSE _ENTER", 1}}));

  Select({1});
  Question menu;
  std::vector<int> string_ids;
  for (const auto& [id, texts] : TextsAsked([&] { menu = Menu({-1, -1}); })) {
    string_ids.push_back(id);
  }
  EXPECT_EQ(string_ids, (std::vector<int>{33041, 33042, 33043, 33044, 33396, 34039, 34198, 40013}));
  EXPECT_EQ(ItemsOf(menu),
            L"100 &Restore Stance; 101 &Update Stance; 102 &Append Stance; 0; "
            L"103 &Delete Stance; 104 Rena&me Stance; 0; 105 S&elect In Document; 0; "
            L"106 &Save Object Positions As Stance...; 0; 107 Restore Selected Objects Only; ");
  EXPECT_EQ(std::make_tuple(menu.default_item, menu.point.x, menu.point.y),
            std::make_tuple(100, -1, -1));

  // The last item restores the objects selected in the model, the door, alone.
  Object(door)->Select();
  Answers().Choose(107);
  Menu();
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_StanceRestoreObjects \"Side\"\" Front\"", 1}}));
  EXPECT_NE(Output().find(L"Stance to restore:"), std::wstring::npos) << "echoed for the user";
  ExpectNear(Placement(door), saved);
  ExpectNear(Placement(wheel), wheel_moved);

  CTarsaStandIn::DoubleClick(*panel_, 1);  // restores, and the view has the focus
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_Stance _Restore \"Side\"\" Front\"  _ENTER", 0}}));
  EXPECT_EQ(GetFocus(), TarsaApp().ActiveView()->GetSafeHwnd());
  // The marks follow the model through undo, redo and a move, and the selection stays.
  const std::vector<std::pair<std::function<void()>, Flags>> steps = {
      {[] {}, {true, true}},
      {[&] { CTarsaStandIn::Undo(*doc_); }, {true, false}},
      {[&] { CTarsaStandIn::Redo(*doc_); }, {true, true}},
      {[] { CommandLine().RunScript(L"-_Move door _Enter 0,1,0", 0); }, {true, false}},
  };
  for (size_t i = 0; i < steps.size(); ++i) {
    steps[i].first();
    Output();
    WaitForRebuild();
    EXPECT_EQ(Marks(), steps[i].second) << "step " << i;
    EXPECT_EQ(Selected(), (Flags{false, true})) << "step " << i;
  }

  Answers().Choose(103);  // delete
  Answers().Answer(true);
  RightClick();
  EXPECT_EQ(Answers().TakeQuestions().back().prompt, L"Do you want to delete \"Side\" Front\"?");
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_Stance _Delete \"Side\"\" Front\"  _ENTER", 0}}));

  WaitForRebuild();
  Select({0});
  Answers().Choose(104);  // rename: the label is edited in place
  Answers().Enter(L"Front \"new\"");
  RightClick();
  const Question label = Answers().TakeQuestions().back();
  EXPECT_EQ(std::make_pair(label.kind, label.prompt),
            std::make_pair(Question::label, std::wstring(L"Side")));
  EXPECT_EQ(TakeScripts(),
            (Scripts{{L"!-_Stance _Rename \"Side\" \"Front \"\"new\"\"\" _ENTER", 0}}));
  EXPECT_EQ(Names(), Texts{L"Front \"new\""});
  EXPECT_EQ(Shown(), Texts{L"Front \"new\""}) << "shown at once, before the rebuild";
  EXPECT_EQ(Output(), L"");

  // The user starts a command and, at its first prompt, saves the door over that stance from the
  // panel: the panel asks, then the command waiting is cancelled and the save runs.
  int prompts = 0;
  CommandLine().SetReader([&](const std::wstring&, std::wstring& line) {
    if (prompts++ == 0) {
      Answers().Enter(L"Front \"new\"");
      Answers().Answer(true);
      EXPECT_TRUE(Click(2110));
      EXPECT_TRUE(TakeScripts().empty()) << "nothing runs inside the waiting command";
      return false;
    }
    line = prompts == 2 ? L"door" : L"";  // then the end of the objects
    return prompts <= 3;
  });
  CommandLine().RunCommand(L"-_Stance");
  EXPECT_EQ(Answers().TakeQuestions().size(), 2u) << "the panel's name and replace questions";
  EXPECT_EQ(TakeScripts(), (Scripts{{L"!-_Stance _Save \"Front \"\"new\"\"\" _PAUSE _ENTER", 1}}));
  const std::wstring output = Output();
  EXPECT_EQ(output.find(L"already exists"), std::wstring::npos) << output;
  EXPECT_TRUE(RecordOf(door)->HasEntry(StanceId(L"Front \"new\"")));
}

}  // namespace
