#include "command/stance_command.h"

#include <deque>

#include "testing/command_line_test.h"

namespace {

const std::wstring kMenu =
    L"Choose stance option ( List Save Restore Delete Rename Select Update Append Visible ):";

class StanceCommandTest : public CommandLineTest {
 protected:
  std::vector<std::wstring> Stance(std::deque<std::wstring> lines) {
    return Run(L"-_Stance", std::move(lines));
  }
  static std::wstring Menu(const std::wstring& answer = L"") {
    return answer.empty() ? kMenu : kMenu + L" " + answer;
  }
};

using Lines = std::vector<std::wstring>;

// Every text of the command with its string ids.
const std::pair<const wchar_t*, std::vector<int>> kTexts[] = {
    {L"Choose stance option", {19710, 31604}},
    {L"List", {17987}},
    {L"Save", {17988}},
    {L"Restore", {17989}},
    {L"Delete", {17990}},
    {L"Rename", {17991}},
    {L"Select", {33392}},
    {L"Update", {34036}},
    {L"Append", {34195}},
    {L"Visible", {31603, 31605}},
    {L"Name for the saved position <%s>", {19711}},
    {L"At least one character has to be entered.\n", {19712}},
    {L"The name <%s> already exists.\n", {19713}},
    {L"Do you want to update it?", {19714}},
    {L"Yes", {17992, 31606}},
    {L"No", {17993, 31607}},
    {L"Select objects", {19715}},
    {L"Error! Could not create unique Uuid.\n", {19716}},
    {L"Name for position to append to", {35182}},
    {L"Name for position to update", {35183}},
    {L"Stored position <%s> does not exist.\n", {19718, 19720, 19722}},
    {L"Name for position to restore", {35184}},
    {L"Stance to delete", {19719}},
    {L"Stance to rename", {19721}},
    {L"New name", {19723}},
    {L"New name <%s> already exists.\n", {19724}},
    {L"Select object(s) of stance", {33393}},
    {L"Stance <%s> does not exist.\n", {33394}},
    {L"Toggle", {31608}},
};

// One run is one undo step, starting with the removal of unused stances. A replaced stance gets a
// new id at the end of the table, and only once its objects are picked. Update and Append take the
// pre-selected objects; Select picks the visible members in any case. An empty answer, Escape or
// an unknown name ends the option's flow, not the run; an unknown name is reported as typed. Every
// text of the command travels with its own string id.
TEST_F(StanceCommandTest, EveryOptionWorksOnTheStancesObjectsAndEveryTextHasItsId) {
  const ZK_UUID door = AddNamed(L"door"), wheel = AddNamed(L"wheel");
  const ZK_UUID hidden = AddNamed(L"lid", nullptr, TarsaObjectMode::hidden);
  const TextsById asked = TextsAsked([&] {
    const std::wstring missing = L"Stored position <bAKC> does not exist.";
    const struct {
      std::wstring option, prompt, unknown;
    } cases[] = {
        {L"Restore", L"Name for position to restore", missing},
        {L"Delete", L"Stance to delete", missing},
        {L"Rename", L"Stance to rename", missing},
        {L"Select", L"Select object(s) of stance", L"Stance <bAKC> does not exist."},
        {L"Update", L"Name for position to update", missing},
    };
    for (const auto& c : cases) {
      EXPECT_EQ(Stance({c.option, L"", c.option, L"bAKC", L""}),
                (Lines{Menu(c.option), c.prompt + L":", Menu(c.option), c.prompt + L": bAKC",
                       c.unknown, Menu()}));
      EXPECT_EQ(result_, CTarsaCommand::success);
    }
    EXPECT_EQ(Stance({L"Append", L"", L"Append", L"bAKC", L"door", L"", L"Save", L"", L"Save",
                      L"_Escape", L""}),
              (Lines{Menu(L"Append"), L"Name for position to append to:", Menu(L"Append"),
                     L"Name for position to append to: bAKC", L"Select objects: door",
                     L"Select objects:", missing, Menu(L"Save"), L"Name for the saved position <>:",
                     L"At least one character has to be entered.", Menu(L"Save"),
                     L"Name for the saved position <>: _Escape", Menu()}));
    EXPECT_EQ(Stance({L"_Escape"}), (Lines{Menu(L"_Escape")}));
    EXPECT_EQ(result_, CTarsaCommand::cancel);
    Stance({L"_Save", L"Front", L"door", L"", L"_Save", L"front", L"_No", L"_Rename", L"front",
            L"FRONT", L"_Visible", L"_Visible", L"_Toggle", L"", L"_Escape"});

    Save(L"Empty", {});
    const ZK_UUID front = Save(L"Front", {door, wheel});
    Save(L"Side", {door, hidden});
    const int steps = CTarsaStandIn::UndoStepCount(*doc_);
    Stance({L"Delete", L"Front", L"Rename", L"Side", L"Back", L"Save", L"Top", L"door", L"", L""});
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Back", L"Top"}));
    EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps + 1);
    ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Empty", L"Front", L"Side"}));

    Stance({L"Save", L"front", L"y", L"", L""});  // Enter at the object prompt: nothing changes
    EXPECT_EQ(StanceId(L"front"), front);
    Stance({L"Save", L"front", L"_Yes", L"wheel", L"", L""});
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Side", L"front"}));
    EXPECT_EQ(Members(L"front"), std::vector<ZK_UUID>{wheel});

    Move(door, ZK_Xform::Translation(0, 3, 0));
    Object(wheel)->Select(true, true, true, false);
    Stance({L"Update", L"side", L"Append", L"Side", L""});
    const std::vector<ZK_3dPoint> placed = Placements({door, wheel});
    for (const ZK_UUID& id : {door, wheel}) Move(id, ZK_Xform::Scale(2, 2, 2));
    Stance({L"Restore", L"Side", L""});
    ExpectNear(Placements({door, wheel}), placed);
    const int redraws = CTarsaStandIn::RedrawCount(*doc_);
    Stance({L"Select", L"SIDE", L""});
    EXPECT_EQ(Object(door)->IsSelected(), 2);
    EXPECT_EQ(Object(hidden)->IsSelected(), 0);  // the host does not select hidden objects
    EXPECT_EQ(CTarsaStandIn::RedrawCount(*doc_), redraws + 1) << "the views show the selection";

    ZK_TestFailCreateUuid failing;
    Stance({L"_Save", L"Top", L"door", L"", L"_Escape"});
  });
  TextsById expected;
  for (const auto& [english, ids] : kTexts) {
    for (int id : ids) expected[id].insert(english);
  }
  // Visible opened the panel, which has tool tips of its own.
  expected[33395].insert(L"Select objects of stance");
  expected[34038].insert(L"Update selected stance");
  expected[34197].insert(L"Append to selected stance");
  EXPECT_EQ(asked, expected);
}

}  // namespace
