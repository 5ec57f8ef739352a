#include "shell/completion.h"

#include <gtest/gtest.h>

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
