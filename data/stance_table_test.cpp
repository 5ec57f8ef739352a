#include "data/stance_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/tarsa_app.h"
#include "panel/stances_panel.h"

namespace {

class StanceTableTest : public ::testing::Test {
 protected:
  void SetUp() override {
    serial_ = TarsaApp().NewDocument()->RuntimeSerialNumber();
    table_.m_doc_serial_number = serial_;
    TarsaApp().SetStanceChangedHandler([this](CTarsaDoc& doc) {
      const bool rebuild_asked = g_pStancesPanel && g_pStancesPanel->RebuildPending();
      events_.push_back(std::to_string(doc.RuntimeSerialNumber()) +
                        (rebuild_asked ? " after rebuild" : ""));
    });
  }
  void TearDown() override {
    TarsaApp().SetStanceChangedHandler(nullptr);
    TarsaApp().CloseDocument(serial_);
  }

  static ZK_UUID NewId() {
    ZK_UUID id;
    EXPECT_TRUE(ZK_CreateUuid(id));
    return id;
  }
  ZK_UUID Save(const wchar_t* name) {
    const ZK_UUID id = NewId();
    EXPECT_EQ(table_.Add(id, name), 1);
    return id;
  }
  std::vector<std::wstring> Names() {
    std::vector<std::wstring> names;
    for (auto* entry = table_.FirstEntry(); entry; entry = table_.NextEntry()) {
      names.push_back(entry->m_name.Text());
    }
    return names;
  }
  size_t Notifications() const { return events_.size(); }
  std::string Serial() const { return std::to_string(serial_); }

  unsigned int serial_ = 0;
  CKorvoDocData table_;
  std::vector<std::string> events_;
};

TEST_F(StanceTableTest, AddTestsTheIdBeforeTheNameAndTheFirstMatchingEntryDecides) {
  const ZK_UUID a = Save(L"Front");
  const ZK_UUID b = Save(L"Side");
  EXPECT_EQ(table_.Add(ZK_nil_uuid, L""), 0);
  EXPECT_EQ(table_.Add(a, L""), -1);
  EXPECT_EQ(table_.Add(a, L"Side"), 0);    // entry Front matches by id first
  EXPECT_EQ(table_.Add(b, L"Front"), -1);  // entry Front matches by name first
  EXPECT_EQ(table_.Add(NewId(), L"front"), -1);
  EXPECT_EQ(table_.Add(a, L"Top"), 0);
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Front", L"Side"}));
  EXPECT_EQ(Notifications(), 2u);
}

TEST_F(StanceTableTest, LookupsIgnoreLetterCaseInAnyScriptButNotBlanks) {
  Save(L"Ärger");
  Save(L"ΣΟΦΙΑ");
  Save(L"Жук");
  EXPECT_NE(table_.FindByName(L"äRGER"), nullptr);
  EXPECT_EQ(table_.FindByName(L"σοφια")->m_name, L"ΣΟΦΙΑ");
  EXPECT_TRUE(table_.NameExists(L"жУК"));
  EXPECT_FALSE(table_.NameExists(L" Жук"));
  EXPECT_EQ(table_.Add(NewId(), L"ärger"), -1);
  EXPECT_EQ(table_.Add(NewId(), L"Ärger "), 1);  // stored as given, never trimmed
  EXPECT_EQ(table_.FindByName(L"Ärger ")->m_name, L"Ärger ");
}

TEST_F(StanceTableTest, RenameTestsTheNewNameFirstAndRefusesAnyNameInUse) {
  const ZK_UUID front = Save(L"Front");
  Save(L"Side");
  EXPECT_EQ(table_.Rename(L"Front", L"FRONT"), -1);
  EXPECT_EQ(table_.Rename(L"Front", L"Front"), -1);
  EXPECT_EQ(table_.Rename(L"Missing", L"Top"), 0);
  EXPECT_EQ(table_.Rename(L"Missing", L""), -1);
  EXPECT_EQ(table_.Rename(L"Missing", L"side"), -1);
  EXPECT_EQ(table_.Rename(NewId(), L"Top"), 0);
  EXPECT_EQ(table_.Rename(front, L"SIDE"), -1);
  EXPECT_EQ(Notifications(), 2u);

  EXPECT_EQ(table_.Rename(L"front", L"Top"), 1);
  EXPECT_EQ(table_.FindById(front)->m_name, L"Top");
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Top", L"Side"}));
  EXPECT_EQ(table_.Rename(front, L"Back"), 1);
  EXPECT_EQ(Notifications(), 4u);
}

TEST_F(StanceTableTest, RemovalsCloseTheGapAndKeepTheOrder) {
  Save(L"One");
  const ZK_UUID two = Save(L"Two");
  Save(L"Three");
  EXPECT_FALSE(table_.RemoveByName(L""));
  EXPECT_FALSE(table_.Remove(NewId()));
  EXPECT_EQ(Notifications(), 3u);

  EXPECT_TRUE(table_.Remove(two));
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"One", L"Three"}));
  EXPECT_TRUE(table_.RemoveByName(L"ONE"));
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Three"}));
  EXPECT_EQ(Notifications(), 5u);
  EXPECT_FALSE(table_.RemoveByName(L"One"));
}

TEST_F(StanceTableTest, EqualityComparesIdsAndExactNamesInOrder) {
  const ZK_UUID a = Save(L"Front");
  const ZK_UUID b = Save(L"Side");
  CKorvoDocData same, other_case, other_order;
  same.Add(a, L"Front");
  same.Add(b, L"Side");
  other_case.Add(a, L"front");
  other_case.Add(b, L"Side");
  other_order.Add(b, L"Side");
  other_order.Add(a, L"Front");
  EXPECT_TRUE(table_ == same);
  EXPECT_FALSE(table_ == other_case);
  EXPECT_FALSE(table_ == other_order);
  EXPECT_TRUE(table_ == table_);
}

TEST_F(StanceTableTest, AssignmentCopiesEntriesButKeepsTheTargetsDocument) {
  CTarsaDoc* other_doc = TarsaApp().NewDocument();
  CKorvoDocData other;
  other.m_doc_serial_number = other_doc->RuntimeSerialNumber();
  other.Add(NewId(), L"Elsewhere");
  Save(L"Front");
  table_.FirstEntry();
  table_.NextEntry();
  events_.clear();

  table_ = other;
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Elsewhere"}));
  EXPECT_TRUE(events_.empty());
  table_.Add(NewId(), L"Mine");
  EXPECT_EQ(events_, (std::vector<std::string>{Serial()}));

  const CKorvoDocData snapshot(table_);
  EXPECT_EQ(snapshot.m_doc_serial_number, 0u);
  EXPECT_TRUE(snapshot == table_);
  table_ = table_;
  EXPECT_EQ(table_.Count(), 2);
  TarsaApp().CloseDocument(other_doc->RuntimeSerialNumber());
}

TEST_F(StanceTableTest, ThePanelIsAskedToRebuildBeforeTheHostIsTold) {
  Save(L"No panel");
  CTsStancesManagerDlg panel;
  Save(L"Panel without window");
  EXPECT_EQ(panel.RebuildRequestCount(), 0);
  panel.CreateWindowHandle();
  Save(L"Panel with window");
  EXPECT_EQ(panel.RebuildRequestCount(), 1);
  EXPECT_EQ(panel.RebuildDelay(), 500u);
  EXPECT_EQ(events_.back(), Serial() + " after rebuild");
}

TEST_F(StanceTableTest, AChangeAfterTheDocumentClosedStandsAndIsAnnouncedToNobody) {
  Save(L"Front");
  TarsaApp().CloseDocument(serial_);
  EXPECT_TRUE(table_.RemoveByName(L"Front"));
  EXPECT_EQ(table_.Count(), 0);
  EXPECT_EQ(Notifications(), 1u);
}

TEST_F(StanceTableTest, AWalkOfAnEmptyTableLeavesTheCursorAlone) {
  table_.m_cursor = 7;
  EXPECT_EQ(table_.FirstEntry(), nullptr);
  EXPECT_EQ(table_.m_cursor, 7);
  Save(L"Only");
  EXPECT_NE(table_.FirstEntry(), nullptr);
  EXPECT_EQ(table_.NextEntry(), nullptr);
  EXPECT_EQ(table_.m_cursor, 1);
}

class StanceTableArchiveTest : public StanceTableTest {
 protected:
  std::vector<unsigned char> Written() {
    ZK_BinaryMemoryArchive archive;
    EXPECT_TRUE(table_.Write(archive));
    return archive.Bytes();
  }
};

TEST_F(StanceTableArchiveTest, ATableReadsBackAsItWasWrittenWithoutAnnouncingIt) {
  Save(L"Vorderseite Ä");
  Save(L"Σ 😀");
  Save(L"Back");
  ZK_BinaryMemoryArchive in(Written());
  CKorvoDocData read;
  read.Add(NewId(), L"Replaced");
  read.m_cursor = 2;
  events_.clear();
  ASSERT_TRUE(read.Read(in));
  EXPECT_TRUE(read == table_);
  EXPECT_EQ(read.m_cursor, 0);
  EXPECT_TRUE(events_.empty());
  EXPECT_EQ(in.BytesLeft(), 0u);
}

TEST_F(StanceTableArchiveTest, ReadKeepsWhatItReadsWithoutTestingIt) {
  ZK_BinaryMemoryArchive out;
  const ZK_UUID id = NewId();
  out.WriteString(L"ignored");
  out.WriteInt(3);
  for (const wchar_t* name : {L"Twin", L"TWIN", L""}) {
    out.WriteUuid(id);
    out.WriteString(name);
  }
  ZK_BinaryMemoryArchive in(out.Bytes());
  ASSERT_TRUE(table_.Read(in));
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Twin", L"TWIN", L""}));
  EXPECT_EQ(table_.Add(NewId(), L"twin"), -1);
  EXPECT_EQ(table_.Add(id, L"Other"), 0);
}

TEST_F(StanceTableArchiveTest, ACountOfZeroOrLessReadsAsAnEmptyTable) {
  for (int count : {0, -1, -2147483647}) {
    ZK_BinaryMemoryArchive out;
    out.WriteString(L"Place Holder");
    out.WriteInt(count);
    ZK_BinaryMemoryArchive in(out.Bytes());
    Save(L"Gone");
    EXPECT_TRUE(table_.Read(in));
    EXPECT_EQ(table_.Count(), 0);
  }
}

TEST_F(StanceTableArchiveTest, EveryTruncationFailsAndKeepsTheEntriesReadInFull) {
  Save(L"One");
  Save(L"Zwei");
  Save(L"Trois");
  const std::vector<unsigned char> bytes = Written();
  // "Place Holder" string, count, then per entry a uuid and a string of 3, 4 and 5 units.
  const size_t header = 4 + 2 * 12 + 4;
  const size_t ends[] = {header + 16 + 4 + 6, header + 2 * 20 + 14, header + 3 * 20 + 24};
  for (size_t cut = 0; cut < bytes.size(); ++cut) {
    ZK_BinaryMemoryArchive in(std::vector<unsigned char>(bytes.begin(), bytes.begin() + cut));
    CKorvoDocData read;
    EXPECT_FALSE(read.Read(in)) << cut;
    int complete = 0;
    for (size_t end : ends) complete += end <= cut ? 1 : 0;
    EXPECT_EQ(read.Count(), complete) << cut;
  }
}

TEST_F(StanceTableArchiveTest, WriteStopsAtTheFirstFailingWrite) {
  Save(L"Front");
  const size_t full = Written().size();
  for (size_t limit = 0; limit < full; ++limit) {
    ZK_BinaryMemoryArchive out(limit);
    EXPECT_FALSE(table_.Write(out)) << limit;
  }
}

}  // namespace
