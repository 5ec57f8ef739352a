#include "data/name_set.h"

#include <gtest/gtest.h>

namespace {

// A name is taken in any letter case, ASCII or not, whichever case it was stored in; one letter
// more or less, or another number, is another name.
TEST(NameSet, FindsANameInAnyLetterCaseAndOnlyThatName) {
  const struct {
    const wchar_t* stored;
    const wchar_t* asked;
    bool taken;
  } kCases[] = {
      {L"Position 01", L"POSITION 01", true},
      {L"Ärger", L"äRGER", true},
      {L"Σίσυφος", L"ΣΊΣΥΦΟΣ", true},
      {L"Kſ", L"ks", true},  // a long s folds to s
      {L"Position 01", L"Position 1", false},
      {L"Lid", L"Lid ", false},
      {L"Ärger", L"Arger", false},
  };
  for (const auto& c : kCases) {
    CKorvoNameSet names;
    names.insert(c.stored);
    EXPECT_EQ(names.count(c.asked) == 1, c.taken) << ZK_wString(c.asked).ToUtf8();
  }
}

}  // namespace
