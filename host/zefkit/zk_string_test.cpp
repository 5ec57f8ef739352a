#include "host/zefkit/zk_string.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

int NoCase(const wchar_t* a, const wchar_t* b) { return ZK_wString(a).CompareNoCase(b); }

TEST(ZkString, CompareNoCaseFoldsEveryScriptWhateverTheProcessLocale) {
  const std::string saved = std::setlocale(LC_ALL, nullptr);
  for (const char* locale : {"C", "C.UTF-8"}) {
    ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr) << locale;
    EXPECT_EQ(NoCase(L"Hello World", L"hELLO wORLD"), 0) << locale;
    EXPECT_EQ(NoCase(L"\u00C4pfel", L"\u00E4PFEL"), 0) << locale;                  // Ä / ä
    EXPECT_EQ(NoCase(L"\u03A3\u03C3\u03C2", L"\u03C2\u03A3\u03C3"), 0) << locale;  // Σ σ ς
    EXPECT_EQ(NoCase(L"\u0416\u0443\u043A", L"\u0436\u0423\u041A"), 0) << locale;  // Жук
    EXPECT_LT(NoCase(L"apple", L"APPLY"), 0) << locale;
    EXPECT_NE(NoCase(L"\u0416", L"\u0417"), 0) << locale;
    EXPECT_LT(NoCase(L"abc", L"ABCD"), 0) << locale;
    EXPECT_GT(NoCase(L"abcd", L"ABC"), 0) << locale;
    // Folded forms are equal exactly when the texts compare equal ignoring case.
    EXPECT_EQ(ZK_wString(L"\u00C4pfel \u03A3").CaseFolded(),
              ZK_wString(L"\u00E4PFEL \u03C2").CaseFolded());
    EXPECT_NE(ZK_wString(L"abc").CaseFolded(), ZK_wString(L"ABCD").CaseFolded());
  }
  std::setlocale(LC_ALL, saved.c_str());
}

TEST(ZkString, FormatsWideStringsAndTheUsualConversionsTrimsAndConcatenates) {
  ZK_wString text;
  ASSERT_TRUE(text.Format(L"%s: %d (%02d%%) %-3s| %f %g", L"K\u00FCche", 3, 7, L"ab", 1.5, 0.25));
  EXPECT_EQ(text, L"K\u00FCche: 3 (07%) ab | 1.500000 0.25");
  const std::wstring long_text(1000, L'x');
  ASSERT_TRUE(text.Format(L"<%s>", long_text.c_str()));
  EXPECT_EQ(text.Text(), L"<" + long_text + L">");

  ZK_wString blanks(L" \t\r\n\v\f inner  text \n");
  blanks.TrimLeftAndRight();
  EXPECT_EQ(blanks, L"inner  text");
  ZK_wString dashed(L"--=a-b=--");
  dashed.TrimLeftAndRight(L"-=");
  EXPECT_EQ(L">" + dashed + ZK_wString(L"<"), L">a-b<");
}

// Copies share their characters until one changes: every change leaves the other copies as they
// were, even when the change reads the string's own characters.
TEST(ZkString, ChangingACopyLeavesTheOthersAsTheyWereAndAppendsKeepEveryCharacter) {
  const ZK_wString original(L"Stance 1");
  ZK_wString appended = original;
  appended += L" - Copy";
  appended += appended;
  EXPECT_EQ(appended, L"Stance 1 - CopyStance 1 - Copy");
  ZK_wString trimmed = original;
  trimmed.TrimLeftAndRight(L"S1");
  ZK_wString formatted = original;
  formatted.Format(L"%s (%s)", formatted.Array(), original.Array());
  ZK_wString emptied = original;
  emptied.Empty();
  ZK_wString written = original;
  wchar_t* characters = written.GetBuffer(3);
  characters[2] = L'!';
  written.ReleaseBuffer(3);
  ZK_wString cut = original;
  cut.ReleaseBuffer(3);  // without GetBuffer: still a change of this copy only
  EXPECT_EQ(trimmed, L"tance ");
  EXPECT_EQ(formatted, L"Stance 1 (Stance 1)");
  EXPECT_TRUE(emptied.IsEmpty());
  EXPECT_EQ(written, L"St!");
  EXPECT_EQ(cut, L"Sta");
  EXPECT_EQ(original.CaseFolded(), L"stance 1");
  EXPECT_EQ(original, L"Stance 1");

  // Appending one character at a time keeps every character and the terminator.
  ZK_wString text;
  ZK_wString before;  // shares the text's characters, so that each append must copy them
  std::wstring expected;
  for (int i = 0; i < 1000; ++i) {
    const wchar_t c = static_cast<wchar_t>(L'a' + i % 26);
    text += c;
    expected += c;
    ASSERT_EQ(before.Length(), i);
    before = text;
  }
  EXPECT_EQ(text.Text(), expected);
  EXPECT_EQ(text.Array()[text.Length()], L'\0');
  EXPECT_EQ(ZK_wString(L"a\0b", 3).Length(), 3);
}

TEST(ZkStringUtf8, RoundTripsNonAsciiAndAstralCharactersAndReplacesEveryStrayByte) {
  const ZK_wString text(L"Gr\u00FC\u00DF \u0416 \U0001F600");
  EXPECT_EQ(text.ToUtf8(), "Gr\xC3\xBC\xC3\x9F \xD0\x96 \xF0\x9F\x98\x80");
  EXPECT_EQ(ZK_wString::FromUtf8(text.ToUtf8()), text);
  EXPECT_EQ(ZK_wString(std::wstring(1, wchar_t(0xD800))).ToUtf8(), "\xEF\xBF\xBD");

  // Every byte outside a well-formed sequence becomes one U+FFFD, stray continuation bytes too.
  EXPECT_EQ(ZK_wString::FromUtf8("\x80z"), L"\uFFFDz");
  EXPECT_EQ(ZK_wString::FromUtf8("\xC0\xAF"), L"\uFFFD\uFFFD");            // overlong
  EXPECT_EQ(ZK_wString::FromUtf8("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD");  // surrogate
  EXPECT_EQ(ZK_wString::FromUtf8("a\xE2Zb"), L"a\uFFFDZb");                // bad continuation
  EXPECT_EQ(ZK_wString::FromUtf8("x\xF5y\xFF"), L"x\uFFFDy\uFFFD");        // never a lead byte
  EXPECT_EQ(ZK_wString::FromUtf8("z\xE2"), L"z\uFFFD");                    // cut short
}

}  // namespace
