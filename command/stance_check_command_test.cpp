// StanceCheck as a person uses it: move, scale and rebuild parts with the host's own commands,
// ask where the model stands, restore, undo.

#include "command/stance_check_command.h"

#include "testing/command_line_test.h"

namespace {

using Lines = std::vector<std::wstring>;

using StanceCheckTest = CommandLineTest;

// A cover on a base with a pin, saved as Assembled; the cover lifted off as Open; then the base
// scaled, the pin moved and rebuilt from its inputs from now on, and Open restored. Every line
// StanceCheck can show, each text asked for with its own string id.
TEST_F(StanceCheckTest, ScaledAndRebuiltMembersSayWhatARestoreWouldDo) {
  Run(L"Box", {L"cover", L"0,0,0", L"2,2,2"});
  Run(L"Box", {L"base", L"0,0,-1", L"2,2,0"});
  Run(L"Point", {L"pin", L"1,1,-2"});
  Run(L"-Stance", {L"Save", L"Assembled", L"cover base pin", L"", L""});
  Run(L"Move", {L"cover", L"", L"0,0,3"});
  Run(L"-Stance", {L"Save", L"Open", L"cover", L"", L"Restore", L"Assembled", L""});
  Run(L"Scale", {L"base", L"", L"2", L"1,1,-0.5"});
  Run(L"Move", {L"pin", L"", L"0,1,0"});
  Run(L"History", {L"pin", L""});
  Run(L"-Stance", {L"Restore", L"Open", L""});
  AddEntries({L"Bare"});
  const TextsById asked = TextsAsked([this] {
    EXPECT_EQ(
        Answered(L"StanceCheck", L"ASSEMBLED"),
        (Lines{L"cover: moved, distance 3, angle 0", L"base: moved, distance 0, angle 0, scaled",
               L"pin: not restorable, construction history"}));
    EXPECT_EQ(Answered(L"StanceCheck", L"open"), (Lines{L"cover: at the stance"}));
    EXPECT_EQ(Answered(L"StanceCheck", L""),
              (Lines{L"Assembled: members 3, moved 2, largest distance 3, largest angle 0",
                     L"Open: members 1, matches",
                     L"Bare: members 0, moved 0, largest distance 0, largest angle 0"}));
    EXPECT_EQ(Answered(L"StanceCheck", L"bare"), (Lines{L"No object carries stance <Bare>."}));
    EXPECT_EQ(Answered(L"StanceCheck", L"Nowhere"), (Lines{L"Stance <Nowhere> does not exist."}));
    Table().RemoveAll();
    EXPECT_EQ(Answered(L"StanceCheck", L""), (Lines{L"No stances have been saved."}));
  });
  const TextsById expected = {
      {40001, {L"Stance to check <All>"}},
      {40002, {L"Stance <%s> does not exist.\n"}},
      {40003, {L"%s: members %d, matches\n"}},
      {40004, {L"%s: members %d, moved %d, largest distance %g, largest angle %g\n"}},
      {40005, {L"%s: at the stance\n"}},
      {40006, {L"%s: not restorable, construction history\n"}},
      {40007, {L"%s: moved, distance %g, angle %g\n"}},
      {40008, {L"%s: moved, distance %g, angle %g, scaled\n"}},
      {40009, {L"No stances have been saved.\n"}},
      {40010, {L"No object carries stance <%s>.\n"}},
  };
  EXPECT_EQ(asked, expected);
}

}  // namespace
