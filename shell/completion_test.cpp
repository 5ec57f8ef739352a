#include "shell/completion.h"

#include <gtest/gtest.h>

#include "testing/stance_document_test.h"

namespace {

using CompletionTest = StanceDocumentTest;

// The options a prompt shows, without their values; command names at the command prompt, with
// their marks; the document's stances where the stance command asks for one, quoted as typed.
TEST_F(CompletionTest, OffersWhatThePromptTakesThatBeginsWithTheWord) {
  for (const wchar_t* name : {L"Lid", L"Lift", L"two words", L"Say \"ah\"", L"Base"})
    Save(name, {AddBox()});
  const std::wstring options = L"Choose stance option ( List Save Restore Visible=Yes ):";
  const struct {
    std::wstring prompt;
    const wchar_t* word;
    std::vector<std::wstring> offered;
  } cases[] = {
      {options, L"re", {L"Restore"}},
      {options, L"vis", {L"Visible"}},
      {options, L"_s", {L"_Save"}},
      {options, L"", {L"List", L"Restore", L"Save", L"Visible"}},
      {L"Visible <No> ( Yes No Toggle ):", L"t", {L"Toggle"}},
      {L"Command:", L"sav", {L"Save", L"SaveAs"}},
      {L"Command:", L"-_OPE", {L"-_Open"}},
      {L"Command:", L"!zzz", {}},
      {L"Name for position to restore:", L"li", {L"Lid", L"Lift"}},
      {L"Stance to delete:", L"LI", {L"Lid", L"Lift"}},
      {L"Name for the saved position <Lid>:", L"t", {L"\"two words\""}},
      {L"Stance to rename:", L"\"tw", {L"\"two words\""}},
      {L"Name for position to append to:", L"say", {L"\"Say \"\"ah\"\"\""}},
      {L"Select object(s) of stance:",
       L"",
       {L"\"Say \"\"ah\"\"\"", L"\"two words\"", L"Base", L"Lid", L"Lift"}},
      {L"New name:", L"li", {}},
      {L"Name of the new object <none>:", L"li", {}},
  };
  for (const auto& completion : cases) {
    EXPECT_EQ(TsCompletions(completion.prompt, completion.word), completion.offered)
        << completion.prompt << " " << completion.word;
  }
}

}  // namespace
