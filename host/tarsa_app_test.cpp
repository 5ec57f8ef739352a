#include "host/tarsa_app.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(TarsaApp, GivesSerialNumbersFromOneUpwardAndNeverAgain) {
  CTarsaApp app;
  EXPECT_EQ(app.NewDocument()->RuntimeSerialNumber(), 1u);
  EXPECT_EQ(app.NewDocument()->RuntimeSerialNumber(), 2u);
  EXPECT_TRUE(app.CloseDocument(2));
  EXPECT_FALSE(app.CloseDocument(2));
  EXPECT_EQ(app.NewDocument()->RuntimeSerialNumber(), 3u);
}

TEST(TarsaApp, ActiveDocumentFollowsNewAndClose) {
  CTarsaApp app;
  CTarsaDoc* first = app.NewDocument();
  CTarsaDoc* second = app.NewDocument();
  EXPECT_EQ(app.ObsoleteActiveDoc(), second);
  app.CloseDocument(first->RuntimeSerialNumber());
  EXPECT_EQ(app.ObsoleteActiveDoc(), second);
  CTarsaDoc* third = app.NewDocument();
  EXPECT_EQ(app.ObsoleteActiveDoc(), third);
  app.CloseDocument(third->RuntimeSerialNumber());
  EXPECT_EQ(app.ObsoleteActiveDoc(), second);
  app.CloseDocument(second->RuntimeSerialNumber());
  EXPECT_EQ(app.ObsoleteActiveDoc(), nullptr);
}

TEST(TarsaDoc, IsFoundBySerialNumberWhileOpenAndTakesItsStanceChangesToTheHandler) {
  std::vector<CTarsaDoc*> calls;
  TarsaApp().SetStanceChangedHandler([&calls](CTarsaDoc& doc) { calls.push_back(&doc); });
  CTarsaDoc* a = TarsaApp().NewDocument();
  CTarsaDoc* b = TarsaApp().NewDocument();
  const unsigned int serial_number = a->RuntimeSerialNumber();
  EXPECT_EQ(CTarsaDoc::FromRuntimeSerialNumber(serial_number), a);
  StanceChanged(*b);
  StanceChanged(*a);
  TarsaApp().SetStanceChangedHandler(nullptr);
  StanceChanged(*a);
  EXPECT_EQ(calls, (std::vector<CTarsaDoc*>{b, a}));
  ASSERT_TRUE(TarsaApp().CloseDocument(serial_number));
  EXPECT_EQ(CTarsaDoc::FromRuntimeSerialNumber(serial_number), nullptr);
  TarsaApp().CloseDocument(b->RuntimeSerialNumber());
}

}  // namespace
