#include "host/tarsa/tarsa_localize.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "host/tarsa/standin/tarsa_standin.h"

namespace {

class LocalizeTest : public ::testing::Test {
 protected:
  void TearDown() override { CTarsaStandIn::Reset(); }
};

TEST_F(LocalizeTest, TranslationFilesReplaceTextsByIdAndRejectMalformedLines) {
  const std::string path = testing::TempDir() + "translations.txt";
  {
    std::ofstream file(path);
    file << "# Stance\n\n901=Links\n903=Modus\\n\\\\\n19713=Der Name <%s> existiert bereits.\\n\n";
  }
  ASSERT_TRUE(CTarsaStandIn::LoadTranslations(path));
  EXPECT_STREQ(TsLocalizeString(L"Left", 901), L"Links");
  EXPECT_STREQ(TsLocalizeString(L"Mode", 903), L"Modus\n\\");
  EXPECT_STREQ(TsLocalizeString(L"The name <%s> already exists.\n", 19713),
               L"Der Name <%s> existiert bereits.\n");
  EXPECT_STREQ(TsLocalizeString(L"The name <%d> already exists.\n", 19713),
               L"The name <%d> already exists.\n");
  CTarsaStandIn::SetTranslation(19714, L"Noch <%*s>?");
  EXPECT_STREQ(TsLocalizeString(L"Still <%s>?", 19714), L"Still <%s>?");
  EXPECT_STREQ(TsLocalizeCommandOptionName(L"Left", 901).EnglishName(), L"Left");

  {
    std::ofstream file(path);
    file << "901=Gauche\nnot a translation\n";
  }
  std::string error;
  EXPECT_FALSE(CTarsaStandIn::LoadTranslations(path, &error));
  EXPECT_NE(error.find(":2:"), std::string::npos);
  EXPECT_STREQ(TsLocalizeString(L"Left", 901), L"Links");
  EXPECT_FALSE(CTarsaStandIn::LoadTranslations(path + ".missing"));
  std::remove(path.c_str());
}

}  // namespace
