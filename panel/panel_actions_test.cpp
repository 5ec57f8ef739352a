#include "panel/panel_actions.h"

#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

using PanelActionsTest = StanceDocumentTest;

// The panel's tests check the macros each action runs; here, what they do not reach.
TEST_F(PanelActionsTest, QuotedNamesComeBackWholeAndANewNameTakesTheFirstFreeNumber) {
  for (const wchar_t* name :
       {L"Front", L"two words", L"Side\" Front", L"\"", L"a\"\"b", L"end\""}) {
    const std::vector<CTarsaToken> tokens = TsTokenize(QuoteName(name), false);
    ASSERT_EQ(tokens.size(), 1u) << name;
    EXPECT_EQ(tokens[0].word, name);
    EXPECT_TRUE(tokens[0].quoted);
  }
  EXPECT_EQ(StandardActionMacro(L"Stance", L"sAVE", QuoteName(L"A"), QuoteName(L"")),
            L"!-_Stance _sAVE \"A\" _PAUSE _ENTER");
  EXPECT_EQ(StandardActionMacro(L"Stance", L"Save", QuoteName(L"A"), QuoteName(L"B")),
            L"!-_Stance _Save \"A\" _PAUSE \"B\" _ENTER");
  EXPECT_FALSE(IsSaveOption(L"Saved"));

  EXPECT_EQ(NewStanceName(*doc_), L"Position 01");
  AddEntries({L"Position 01", L"POSITION 03"});
  EXPECT_EQ(NewStanceName(*doc_), L"Position 02");
  AddEntries({L"position 02"});
  EXPECT_EQ(NewStanceName(*doc_), L"Position 04");
  for (int n = 4; n <= 99; ++n) {
    ZK_wString name;
    name.Format(L"Position %02d", n);
    AddEntries({name});
  }
  EXPECT_EQ(NewStanceName(*doc_), L"Position 100");
  CTarsaStandIn::SetTranslation(28191, L"Stellung %02d");
  EXPECT_EQ(NewStanceName(*doc_), L"Stellung 01");
}

}  // namespace
