#include "data/name_set.h"

#include <gtest/gtest.h>

namespace {

// A name is taken in any letter case, ASCII or not, whichever case it was stored in (a long s
// folds to s); one letter more or less, or another number, is another name.
TEST(NameSet, FindsANameInAnyLetterCaseAndOnlyThatName) {
  CKorvoNameSet names;
  for (const wchar_t* name : {L"Position 01", L"Ärger", L"Σίσυφος", L"Kſ", L"Lid"}) {
    names.insert(name);
  }
  for (const wchar_t* name : {L"POSITION 01", L"äRGER", L"ΣΊΣΥΦΟΣ", L"ks"}) {
    EXPECT_EQ(names.count(name), 1u) << ZK_wString(name).ToUtf8();
  }
  for (const wchar_t* name : {L"Position 1", L"Lid ", L"Arger"}) {
    EXPECT_EQ(names.count(name), 0u) << ZK_wString(name).ToUtf8();
  }
}

}  // namespace
