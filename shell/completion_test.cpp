#include "shell/completion.h"

#include <gtest/gtest.h>

#include "host/tarsa/tarsa_stance_dynamic_access.h"
#include "testing/stance_document_test.h"

namespace {

using Words = std::vector<std::wstring>;

TEST(Completion, OffersTheOptionsAPromptShowsWithoutTheirValues) {
  const std::wstring prompt = L"Choose stance option ( List Save Restore Visible=Yes ):";
  EXPECT_EQ(TsCompletions(prompt, L"re"), Words{L"Restore"});
  EXPECT_EQ(TsCompletions(prompt, L"vis"), Words{L"Visible"});
  EXPECT_EQ(TsCompletions(prompt, L"_s"), Words{L"_Save"});
  EXPECT_EQ(TsCompletions(prompt, L""), (Words{L"List", L"Restore", L"Save", L"Visible"}));
  EXPECT_EQ(TsCompletions(L"Name for position to restore:", L"a"), Words{});
  EXPECT_EQ(TsCompletions(L"Visible <No> ( Yes No Toggle ):", L"t"), Words{L"Toggle"});
}

TEST(Completion, OffersCommandNamesAtTheCommandPromptKeepingTheirMarks) {
  EXPECT_EQ(TsCompletions(L"Command:", L"sav"), (Words{L"Save", L"SaveAs"}));
  EXPECT_EQ(TsCompletions(L"Command:", L"-_OPE"), Words{L"-_Open"});
  EXPECT_EQ(TsCompletions(L"Command:", L"!zzz"), Words{});
}

}  // namespace

class StanceNameCompletion : public StanceDocumentTest {
 protected:
  void SaveStance(const wchar_t* name) {
    ZK_SimpleArray<const CTarsaObject*> objects;
    objects.Append(Object(AddBox()));
    CTarsaStandIn::StanceDynamicAccess()->SaveStance(*doc_, name, objects);
  }
};

TEST_F(StanceNameCompletion, OffersTheStancesOfTheDocumentWhereTheStanceCommandAsksForOne) {
  for (const wchar_t* name : {L"Lid", L"Lift", L"two words", L"Say \"ah\"", L"Base"})
    SaveStance(name);
  const struct {
    const wchar_t* prompt;
    const wchar_t* word;
    Words offered;
  } cases[] = {
      {L"Name for position to restore:", L"li", {L"Lid", L"Lift"}},
      {L"Stance to delete:", L"LI", {L"Lid", L"Lift"}},
      {L"Name for the saved position <Lid>:", L"t", {L"\"two words\""}},
      {L"Stance to rename:", L"\"tw", {L"\"two words\""}},
      {L"Name for position to append to:", L"say", {L"\"Say \"\"ah\"\"\""}},
      {L"Select object(s) of stance:",
       L"",
       {L"\"Say \"\"ah\"\"\"", L"\"two words\"", L"Base", L"Lid", L"Lift"}},
      {L"Name for position to update:", L"x", {}},
      {L"New name:", L"li", {}},
      {L"Name of the new object <none>:", L"li", {}},
  };
  for (const auto& completion : cases) {
    EXPECT_EQ(TsCompletions(completion.prompt, completion.word), completion.offered)
        << completion.prompt << " " << completion.word;
  }
}
