#include "data/stance_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "panel/stances_panel.h"
#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

using NameList = std::vector<std::wstring>;

// A table of a real document with the plug-in loaded; events_ logs each StanceChanged, noting
// whether the panel had already been asked for a rebuild.
class StanceTableTest : public StanceDocumentTest {
 protected:
  void SetUp() override {
    StanceDocumentTest::SetUp();
    table_.m_doc_serial_number = serial_;
    CTarsaStandIn::SetStanceChangedHandler([this](CTarsaDoc& doc) {
      const bool rebuild_asked = g_pStancesPanel && CTarsaStandIn::RebuildPending(*g_pStancesPanel);
      events_.push_back(std::to_string(doc.RuntimeSerialNumber()) +
                        (rebuild_asked ? " after rebuild" : ""));
    });
  }

  ZK_UUID Save(const wchar_t* name) {
    const ZK_UUID id = NewId();
    EXPECT_EQ(table_.Add(id, name), 1);
    return id;
  }
  NameList NamesInOrder() {
    NameList names;
    for (auto* entry = table_.FirstEntry(); entry; entry = table_.NextEntry()) {
      names.push_back(entry->m_name.Text());
    }
    return names;
  }

  CKorvoDocData table_;
  std::vector<std::string> events_;
};

// Add refuses a nil id before an empty name, and the first entry to match decides; Rename tests
// the new name first and refuses any name in use. Copies compare ids and exact names in order,
// and one assigned keeps the document of its target. Removals close the gap and keep the order of
// the walk; a walk of an empty table leaves the cursor alone, one past the end stays there. Only
// a change is told to the host, and only to the table's document: after an open panel was asked
// to rebuild; not at all once the document is closed, though the change still stands.
TEST_F(StanceTableTest, AddRenameRemoveAndCopyKeepTheOrderAndOnlyAChangeIsToldAfterThePanel) {
  table_.m_cursor = 7;
  EXPECT_EQ(table_.FirstEntry(), nullptr);
  EXPECT_EQ(table_.m_cursor, 7);
  const ZK_UUID front = Save(L"Front");
  const ZK_UUID side = Save(L"Side");
  EXPECT_EQ((std::vector<int>{table_.Add(ZK_nil_uuid, L""), table_.Add(front, L""),
                              table_.Add(front, L"Side"), table_.Add(side, L"Front"),
                              table_.Add(front, L"FRONT"), table_.Rename(L"Front", L"FRONT"),
                              table_.Rename(L"Missing", L"Top"), table_.Rename(L"Missing", L""),
                              table_.Rename(L"Missing", L"side"), table_.Rename(NewId(), L"Top")}),
            (std::vector<int>{0, -1, 0, -1, -1, -1, 0, -1, -1, 0}));
  EXPECT_FALSE(table_.Remove(NewId()));
  CKorvoDocData copy(table_);
  EXPECT_EQ(copy.m_doc_serial_number, 0u);
  EXPECT_TRUE(copy == table_);
  copy.m_entries[0]->m_name = L"front";
  EXPECT_FALSE(table_ == copy);
  CKorvoDocData other_order;
  other_order.Add(side, L"Side");
  other_order.Add(front, L"Front");
  EXPECT_FALSE(table_ == other_order);
  table_ = other_order;  // told to no one, as no refusal above is

  EXPECT_EQ(table_.Add(NewId(), L"Side "), 1);  // another name, stored as given, never trimmed
  EXPECT_EQ(table_.Rename(L"front", L"Top"), 1);
  table_ = table_;
  EXPECT_EQ(NamesInOrder(), (NameList{L"Side", L"Top", L"Side "}));
  EXPECT_EQ(table_.Rename(front, L"ΣΟΦΙΑ"), 1);
  EXPECT_TRUE(table_.Remove(side));
  EXPECT_EQ(NamesInOrder(), (NameList{L"ΣΟΦΙΑ", L"Side "}));
  EXPECT_TRUE(table_.RemoveByName(L"σοφια"));  // letter case ignored in any script
  EXPECT_EQ(NamesInOrder(), (NameList{L"Side "}));
  EXPECT_EQ(table_.NextEntry(), nullptr);
  EXPECT_EQ(table_.m_cursor, 1);
  {
    CTsStancesManagerDlg without_window;
    Save(L"Panel without window");
    EXPECT_EQ(CTarsaStandIn::RebuildRequestCount(without_window), 0);
  }
  EXPECT_EQ(events_, std::vector<std::string>(8, std::to_string(serial_)));
  ASSERT_TRUE(TarsaUiOpenDockbarTab(g_stances_panel_tab_id));
  CTsNamedDocObjectManagerDlg& panel = *CTarsaStandIn::Panel(g_stances_panel_tab_id);
  Save(L"Panel with window");
  EXPECT_EQ(CTarsaStandIn::RebuildRequestCount(panel), 1);
  EXPECT_EQ(CTarsaStandIn::RebuildDelay(panel), 500u);
  EXPECT_EQ(events_.back(), std::to_string(serial_) + " after rebuild");
  TarsaUiCloseDockbarTab(g_stances_panel_tab_id);
  CTarsaStandIn::CloseDocument(serial_);  // the change still stands
  EXPECT_TRUE(table_.RemoveByName(L"Side "));
  EXPECT_EQ(table_.Count(), 2);
  EXPECT_EQ(events_.size(), 9u);
}

// The table's names, as a set, take a name in any letter case, ASCII or not, whichever case it
// was stored in (a long s folds to s); one letter more or less, or another number, is another.
// Read trusts the archive: it keeps duplicate and empty names, and a count below one means none.
// Cut at every byte, a write limited to the cut fails, and a read of the cut fails keeping the
// entries read in full; the whole archive reads back as the table. No read is announced.
TEST_F(StanceTableTest, ItsNamesAreTakenInAnyCaseAndReadKeepsWhatItReadsWithoutTestingIt) {
  for (const wchar_t* name : {L"Position 01", L"Ärger", L"Σίσυφος", L"Kſ", L"Lid"}) Save(name);
  const CKorvoNameSet names = table_.Names();
  for (const wchar_t* name : {L"POSITION 01", L"äRGER", L"ΣΊΣΥΦΟΣ", L"ks"}) {
    EXPECT_EQ(names.count(name), 1u) << ZK_wString(name).ToUtf8();
  }
  for (const wchar_t* name : {L"Position 1", L"Lid ", L"Arger"}) {
    EXPECT_EQ(names.count(name), 0u) << ZK_wString(name).ToUtf8();
  }

  const ZK_UUID id = NewId();
  const NameList twins = {L"Twin", L"TWIN", L""};
  for (int count : {0, -1, -2147483647, 3}) {
    ZK_BinaryMemoryArchive out;
    out.WriteString(L"ignored");
    out.WriteInt(count);
    for (const std::wstring& name : twins) {
      out.WriteUuid(id);
      out.WriteString(name.c_str());
    }
    ZK_BinaryMemoryArchive in(out.Bytes());
    Save(L"Gone");
    table_.m_cursor = 1;
    ASSERT_TRUE(table_.Read(in)) << count;
    EXPECT_EQ(table_.m_cursor, 0);
    EXPECT_EQ(NamesInOrder(), count > 0 ? twins : NameList{}) << count;
  }
  EXPECT_FALSE(table_.RemoveByName(L""));  // even with an entry of that name
  EXPECT_EQ(table_.Add(NewId(), L"twin"), -1);
  EXPECT_EQ(table_.Add(id, L"Other"), 0);

  ZK_BinaryMemoryArchive out;
  ASSERT_TRUE(table_.Write(out));
  const std::vector<unsigned char>& bytes = out.Bytes();
  // "Place Holder" string, count, then per entry a uuid and a string of 4, 4 and 0 units.
  const size_t header = 4 + 2 * 12 + 4;
  const size_t ends[] = {header + 28, header + 56, header + 76};
  for (size_t cut = 0; cut <= bytes.size(); ++cut) {
    ZK_BinaryMemoryArchive limited(cut);
    EXPECT_EQ(table_.Write(limited), cut == bytes.size()) << cut;
    ZK_BinaryMemoryArchive in(std::vector<unsigned char>(bytes.begin(), bytes.begin() + cut));
    CKorvoDocData read;
    read.m_doc_serial_number = serial_;
    EXPECT_EQ(read.Read(in), cut == bytes.size()) << cut;
    int complete = 0;
    for (size_t end : ends) complete += end <= cut ? 1 : 0;
    EXPECT_EQ(read.Count(), complete) << cut;
    EXPECT_TRUE(cut < bytes.size() || read == table_) << cut;
  }
  EXPECT_EQ(events_.size(), 9u);  // the saves alone
}

}  // namespace
