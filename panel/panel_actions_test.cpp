#include "panel/panel_actions.h"

#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

TEST(PanelActions, QuotedNamesComeBackWholeFromTheCommandLine) {
  EXPECT_EQ(QuoteName(L""), L"");
  EXPECT_EQ(QuoteName(L"Front"), L"\"Front\"");
  EXPECT_EQ(QuoteName(L"Side\" Front"), L"\"Side\"\" Front\"");
  for (const wchar_t* name :
       {L"Front", L"two words", L"Side\" Front", L"\"", L"a\"\"b", L"end\""}) {
    const std::vector<CTarsaToken> tokens = TsTokenize(QuoteName(name), false);
    ASSERT_EQ(tokens.size(), 1u) << name;
    EXPECT_EQ(tokens[0].word, name);
    EXPECT_TRUE(tokens[0].quoted);
  }
}

TEST(PanelActions, MacrosAreExactlyTheTemplatesFilledIn) {
  const std::wstring front = QuoteName(L"Front");
  EXPECT_EQ(NameMacro(L"Stance", L"Select", front), L"!-_Stance _Select \"Front\" _ENTER");
  EXPECT_EQ(PausingNameMacro(L"Stance", L"Append", front),
            L"!-_Stance _Append \"Front\" _PAUSE _ENTER");
  const struct {
    const wchar_t* option;
    const wchar_t* first;
    const wchar_t* second;
    const wchar_t* macro;
  } cases[] = {
      {L"Rename", L"A", L"B", L"!-_Stance _Rename \"A\" \"B\" _ENTER"},
      {L"Delete", L"A", L"", L"!-_Stance _Delete \"A\"  _ENTER"},
      {L"Restore", L"Front", L"", L"!-_Stance _Restore \"Front\"  _ENTER"},
      {L"save", L"A", L"", L"!-_Stance _save \"A\" _PAUSE _ENTER"},
      {L"Save", L"A", L"B", L"!-_Stance _Save \"A\" _PAUSE \"B\" _ENTER"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(StandardActionMacro(L"Stance", c.option, QuoteName(c.first), QuoteName(c.second)),
              c.macro);
  }
  EXPECT_TRUE(IsSaveOption(L"sAVE"));
  EXPECT_FALSE(IsSaveOption(L"Saved"));
}

using NewStanceNameTest = StanceDocumentTest;

TEST_F(NewStanceNameTest, TheFirstFreeNumberWinsWhateverTheCase) {
  EXPECT_EQ(NewStanceName(*doc_), L"Position 01");
  AddEntries({L"Position 01", L"POSITION 03"});
  EXPECT_EQ(NewStanceName(*doc_), L"Position 02");
  AddEntries({L"position 02"});
  EXPECT_EQ(NewStanceName(*doc_), L"Position 04");
}

TEST_F(NewStanceNameTest, PastNinetyNineTheNumberGrowsAndTranslationsAreUsed) {
  for (int n = 1; n <= 99; ++n) {
    ZK_wString name;
    name.Format(L"Position %02d", n);
    AddEntries({name});
  }
  EXPECT_EQ(NewStanceName(*doc_), L"Position 100");
  CTarsaStandIn::SetTranslation(28191, L"Stellung %02d");
  EXPECT_EQ(NewStanceName(*doc_), L"Stellung 01");
}

}  // namespace
