#include "fuzz/fuzz_session.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "data/place_holder.h"
#include "data/placement_record.h"
#include "events/event_watcher.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "plugin/korvo_plugin.h"

namespace {

// Whatever an input did, the next one meets the same session; building it again is the
// exception, for inputs that leave the document with other objects.
class FuzzSessionTest : public testing::Test {
 protected:
  void SetUp() override {
    doc_ = &FuzzSession::Begin();
    start_ = Describe(*doc_);
    rebuilds_ = FuzzSession::RebuildCount();
  }

  void Type(std::deque<std::wstring> lines) {
    CTarsaCommandLine& command_line = CTarsaStandIn::CommandLine();
    command_line.SetReader([&lines](const std::wstring&, std::wstring& line) {
      if (lines.empty()) return false;
      line = lines.front();
      lines.pop_front();
      return true;
    });
    while (!lines.empty()) command_line.ProcessInput();
  }

  // Reads a document block of one stance into the session's document as opening a file does.
  void OpenBlockOfOtherStance() {
    CKorvoDocData table;
    table.Add(ZK_UuidFromString("3A4B5C6D-7E8F-4091-A2B3-C4D5E6F70819"), L"Other");
    ZK_BinaryMemoryArchive block;
    block.WriteInt(0);
    block.WriteString(kKorvoPlaceHolder);
    table.Write(block);
    ZK_BinaryMemoryArchive in(block.Bytes());
    CKorvoEventWatcher& watcher = *KorvoPlugIn().EventWatcher();
    watcher.OnBeginOpenDocument(*doc_, L"other.tsm", false, false);
    ASSERT_TRUE(
        KorvoPlugIn().ReadDocument(*doc_, in, CTarsaFileReadOptions(L"other.tsm", false, false)));
    watcher.OnEndOpenDocument(*doc_, L"other.tsm", false, false);
  }

  // Every object with its name, mode and record, then the stance names.
  static std::string Describe(CTarsaDoc& doc) {
    std::string text;
    CTarsaObjectIterator it(doc, ~0u, ~0u);
    it.IncludeLights();
    it.EnableVisibleFilter(false);
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
      text += ZK_wString(object->Attributes().m_name).ToUtf8() + " " +
              std::to_string(static_cast<int>(object->Attributes().m_mode));
      if (const CKorvoUserData* record = CKorvoUserData::Of(object)) {
        const ZK_Xform& xform = record->m_accumulated_xform;
        text += " at " + std::to_string(xform[0][3]) + "," + std::to_string(xform[1][3]) + "," +
                std::to_string(xform[2][3]);
        for (INT_PTR i = 0; i < record->m_entries.GetSize(); ++i) {
          text += " " + ZK_UuidToString(record->m_entries[i]->m_id).ToUtf8();
        }
      }
      text += "\n";
    }
    const CKorvoDocData& table = *KorvoPlugIn().DocData(doc.RuntimeSerialNumber());
    for (INT_PTR i = 0; i < table.m_entries.GetSize(); ++i) {
      text += ZK_wString(table.m_entries[i]->m_name).ToUtf8() + "\n";
    }
    return text;
  }

  CTarsaDoc* doc_ = nullptr;
  std::string start_;
  int rebuilds_ = 0;
};

TEST_F(FuzzSessionTest, CommandsOfAnInputAreTakenBackInPlace) {
  Type({L"-_Stance _Save Back door rail _Enter _Enter", L"_Move door _Enter 1,0,0",
        L"_Copy door _Enter 0,0,1", L"_Explode rail _Enter", L"-_Stance _Rename Side Aside _Enter",
        L"_Stance", L"_SelAll"});
  ASSERT_NE(Describe(*doc_), start_);
  FuzzSession::End();
  EXPECT_EQ(&FuzzSession::Begin(), doc_);
  EXPECT_EQ(Describe(*doc_), start_);
  EXPECT_TRUE(CTarsaStandIn::Panels().empty());
  EXPECT_EQ(FuzzSession::RebuildCount(), rebuilds_);
}

// Opening reads the table and strips records in place, which no undo step takes back; the
// tables of documents the input made and closed go too.
TEST_F(FuzzSessionTest, AFileOpenedIntoTheDocumentAndOtherDocumentsAreTakenBack) {
  OpenBlockOfOtherStance();
  const unsigned int other = CTarsaStandIn::NewDocument()->RuntimeSerialNumber();
  KorvoPlugIn().DocData(other)->Add(ZK_UuidFromString("3A4B5C6D-7E8F-4091-A2B3-C4D5E6F7081A"),
                                    L"Kept");
  ASSERT_NE(Describe(*doc_), start_);
  FuzzSession::End();
  EXPECT_EQ(CTarsaStandIn::Documents(), std::vector<CTarsaDoc*>{doc_});
  EXPECT_EQ(KorvoPlugIn().DocData(other)->Count(), 0);
  EXPECT_EQ(Describe(FuzzSession::Begin()), start_);
  EXPECT_EQ(FuzzSession::RebuildCount(), rebuilds_);
}

TEST_F(FuzzSessionTest, ASessionWhoseDocumentWentIsBuiltAgain) {
  CTarsaStandIn::CloseDocument(doc_->RuntimeSerialNumber());
  FuzzSession::End();
  EXPECT_EQ(Describe(FuzzSession::Begin()), start_);
  EXPECT_EQ(FuzzSession::RebuildCount(), rebuilds_ + 1);
}

}  // namespace
