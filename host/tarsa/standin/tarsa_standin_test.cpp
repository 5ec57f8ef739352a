#include "host/tarsa/standin/tarsa_standin.h"

#include <gtest/gtest.h>

#include <vector>

#include "host/tarsa/tarsa_localize.h"
#include "host/tarsa/tarsa_message_box.h"

namespace {

class CountingPlugIn : public CTarsaPlugIn {
 public:
  explicit CountingPlugIn(bool accepts) : m_accepts(accepts) {}
  ZK_UUID PlugInID() const override { return ZK_UUID{0x1234, 0, 0, {0}}; }
  bool OnLoadPlugIn() override {
    ++m_loads;
    return m_accepts;
  }
  void OnUnloadPlugIn() override { ++m_unloads; }

  bool m_accepts;
  int m_loads = 0;
  int m_unloads = 0;
};

class TarsaStandInTest : public ::testing::Test {
 protected:
  void TearDown() override { CTarsaStandIn::Reset(); }
};

TEST_F(TarsaStandInTest, ASessionNumbersDocumentsOnceLogsTheirChangesAndResetDropsWhatItLeft) {
  CTarsaDoc* first = CTarsaStandIn::NewDocument();
  CTarsaDoc* second = CTarsaStandIn::NewDocument();
  const unsigned int closed = second->RuntimeSerialNumber();
  EXPECT_EQ(closed, first->RuntimeSerialNumber() + 1);
  EXPECT_EQ(TarsaApp().ObsoleteActiveDoc(), second);
  EXPECT_TRUE(CTarsaStandIn::CloseDocument(closed));
  EXPECT_FALSE(CTarsaStandIn::CloseDocument(closed));
  EXPECT_EQ(CTarsaDoc::FromRuntimeSerialNumber(closed), nullptr);
  EXPECT_EQ(TarsaApp().ObsoleteActiveDoc(), first);

  CTarsaStandIn::Reset();
  EXPECT_EQ(TarsaApp().ObsoleteActiveDoc(), nullptr);
  EXPECT_EQ(CTarsaStandIn::NewDocument()->RuntimeSerialNumber(), closed + 1);

  CTarsaDoc* a = CTarsaStandIn::NewDocument();
  CTarsaDoc* b = CTarsaStandIn::NewDocument();
  std::vector<CTarsaDoc*> handled;
  CTarsaStandIn::SetStanceChangedHandler([&handled](CTarsaDoc& doc) { handled.push_back(&doc); });
  StanceChanged(*b);
  StanceChanged(*a);
  EXPECT_EQ(handled, (std::vector<CTarsaDoc*>{b, a}));
  EXPECT_EQ(CTarsaStandIn::TakeStanceChanges(),
            (std::vector<unsigned int>{b->RuntimeSerialNumber(), a->RuntimeSerialNumber()}));
  EXPECT_TRUE(CTarsaStandIn::TakeStanceChanges().empty());

  CountingPlugIn plug_in(true), refusing(false);
  ASSERT_TRUE(CTarsaStandIn::LoadPlugIn(plug_in));
  ASSERT_TRUE(CTarsaStandIn::LoadPlugIn(plug_in));  // already loaded: loaded once
  EXPECT_FALSE(CTarsaStandIn::LoadPlugIn(refusing));
  TarsaMessageBox(L"text", L"caption", TS_MB_OK);
  CTarsaStandIn::SetTranslation(5, L"five");

  CTarsaStandIn::Reset();
  EXPECT_EQ(plug_in.m_loads, 1);
  EXPECT_EQ(plug_in.m_unloads, 1);
  EXPECT_EQ(refusing.m_unloads, 0) << "a plug-in that refused its load was never added";
  EXPECT_TRUE(CTarsaStandIn::PlugIns().empty());
  EXPECT_TRUE(CTarsaStandIn::Documents().empty());
  EXPECT_TRUE(CTarsaStandIn::TakeMessageBoxes().empty());
  EXPECT_EQ(CTarsaStandIn::CommandLine().TakeOutput(), L"");
  EXPECT_STREQ(TsLocalizeString(L"English", 5), L"English");
}

}  // namespace
