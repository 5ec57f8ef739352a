#include "shell/command_line_answers.h"

#include <gtest/gtest.h>

#include <deque>

#include "host/platform/menu.h"
#include "testing/host_session_test.h"

namespace {

// The user answers the panel's questions by typing lines at the prompts they show.
class CommandLineAnswersTest : public HostSessionTest {
 protected:
  std::wstring Shown() { return CTarsaStandIn::CommandLine().TakeOutput(); }
  // The Stances panel's menu with a stance selected.
  HMENU Menu() {
    menu_.DestroyMenu();
    menu_.CreatePopupMenu();
    const HMENU h = menu_.GetSafeHmenu();
    AppendMenuW(h, MF_STRING, 100, L"&Restore Stance");
    AppendMenuW(h, MF_STRING, 104, L"Rena&me Stance");
    AppendMenuW(h, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(h, MF_STRING, 106, L"&Save Object Positions As Stance...");
    return h;
  }
  UINT Choose() { return answers_.ChooseMenuItem(Menu(), POINT{1, 2}, nullptr); }

  CTarsaCommandLineAnswers answers_;
  CMenu menu_;
};

// Each question shows what it proposes, which Enter takes; only Yes replaces or deletes.
TEST_F(CommandLineAnswersTest, TextsYesNoLabelsAndMenusAreAskedWithWhatEnterTakes) {
  Type({L"", L"\"Side view\"", L"_Escape", L"y", L"", L"No", L"_Escape", L"", L"Back"});
  std::wstring name;
  ASSERT_TRUE(answers_.AskText(L"Save Position", L"Save current object positions as:",
                               L"Position 03", name));
  EXPECT_EQ(name, L"Position 03");
  ASSERT_TRUE(answers_.AskText(L"Save Position", L"Save as:", L"Position 03", name));
  EXPECT_EQ(name, L"Side view");
  EXPECT_FALSE(answers_.AskText(L"Save Position", L"Save as:", L"Position 03", name));
  for (const bool yes : {true, false, false, false}) {
    EXPECT_EQ(answers_.AskYesNo(L"Replace it?", L"Stances"), yes);
  }
  for (const wchar_t* label : {L"Front", L"Back"}) {
    ASSERT_TRUE(answers_.EditLabel(nullptr, 0, L"Front", name));
    EXPECT_EQ(name, label);
  }
  EXPECT_EQ(Shown(),
            L"Save current object positions as <Position 03>:\n"
            L"Save as <Position 03>: \"Side view\"\n"
            L"Save as <Position 03>: _Escape\n"
            L"Replace it? <No> ( Yes No ): y\nReplace it? <No> ( Yes No ):\n"
            L"Replace it? <No> ( Yes No ): No\nReplace it? <No> ( Yes No ): _Escape\n"
            L"New label <Front>:\nNew label <Front>: Back\n");

  Type({L"save", L"_RenameStance", L"", L"re", L"Update Restore"});
  EXPECT_EQ(Choose(), 106u);
  EXPECT_EQ(Choose(), 104u);
  EXPECT_EQ(Choose(), 0u);
  Shown();
  // A word that names no one item closes the menu, as a click beside it would, and leaves what
  // follows for the next question.
  EXPECT_EQ(Choose(), 0u);
  EXPECT_EQ(Choose(), 0u);
  EXPECT_EQ(Shown(),
            L"Choose from the menu ( RestoreStance RenameStance SaveObjectPositionsAsStance ): "
            L"re\nNo menu item is re; the menu closes.\n"
            L"Choose from the menu ( RestoreStance RenameStance SaveObjectPositionsAsStance ): "
            L"Update\nNo menu item is Update; the menu closes.\n");
  EXPECT_EQ(Choose(), 100u);
  Shown();
}

}  // namespace
