#include "host/tarsa/standin/tarsa_model_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <string>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/tarsa/tarsa_plugin.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "testing/host_session_test.h"
#include "testing/model_file_blocks.h"

namespace {

// A tiny plug-in whose document data is a note: a version, then a text.
class NotesPlugIn : public CTarsaPlugIn {
 public:
  ZK_UUID PlugInID() const override {
    return ZK_UuidFromString("3C1B7E52-94A0-4D6F-8B2E-5A7C9D0E1F23");
  }
  const wchar_t* PlugInName() const override { return L"Notes"; }
  bool ShouldWriteDocument(const CTarsaFileWriteOptions& options) override {
    return !notes[options.DocumentSerialNumber()].empty();
  }
  bool WriteDocument(CTarsaDoc& doc, ZK_BinaryArchive& archive,
                     const CTarsaFileWriteOptions&) override {
    return archive.WriteInt(0) && archive.WriteString(notes[doc.RuntimeSerialNumber()].c_str());
  }
  bool ReadDocument(CTarsaDoc& doc, ZK_BinaryArchive& archive,
                    const CTarsaFileReadOptions&) override {
    int version = 0;
    ZK_wString text;
    if (!archive.ReadInt(version) || version > 0 || !archive.ReadString(text)) return false;
    notes[doc.RuntimeSerialNumber()] += text.Text();
    return true;
  }

  std::map<unsigned int, std::wstring> notes;
};

// User data of an application that the reading host may not know: a sticker with a text.
ZK_Object* CreateSticker();
class Sticker : public ZK_UserData {
 public:
  static inline const ZK_UUID kId = ZK_UuidFromString("6E2F0A94-1B3C-4D5E-9F60-718293A4B5C6");
  Sticker() {
    m_userdata_uuid = kId;
    m_userdata_copycount = 1;
  }
  const ZK_ClassId* ClassId() const override { return class_id.get(); }
  ZK_Object* __DeepCopy() const override { return new Sticker(*this); }
  bool Archive() const override { return true; }
  bool Write(ZK_BinaryArchive& archive) const override { return archive.WriteString(L"sticky"); }
  bool Read(ZK_BinaryArchive& archive) override {
    ZK_wString text;
    return archive.ReadString(text);
  }

  // Registered only while a test wants the class known.
  static inline std::unique_ptr<ZK_ClassId> class_id;
};
ZK_Object* CreateSticker() { return new Sticker(); }

class ModelFileTest : public HostSessionTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(CTarsaStandIn::LoadPlugIn(notes_));
    folder_ = testing::TempDir() + "tarsa_model_file_test_XXXXXX";
    ASSERT_NE(mkdtemp(folder_.data()), nullptr);
    path_ = folder_ + "/model.tsm";
    doc_ = CTarsaStandIn::NewDocument();
    Sticker::class_id =
        std::make_unique<ZK_ClassId>("ModelFileTestSticker", "ZK_UserData", CreateSticker,
                                     "D4E5F607-1829-4A3B-8C4D-5E6F708192A3");
  }
  void TearDown() override {
    Sticker::class_id.reset();
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
    HostSessionTest::TearDown();
  }

  // Two boxes, one with a sticker, and a note.
  void MakeModel() {
    for (int i = 0; i < 2; ++i) {
      auto* box = new CTarsaObject(new ZK_Box({0, 0, 0}, {1.0 + i, 1, 1}), {});
      ASSERT_TRUE(doc_->AddObject(box));
      if (i == 0) {
        ASSERT_TRUE(box->AttachGeometryUserData(new Sticker()));
      }
    }
    notes_.notes[doc_->RuntimeSerialNumber()] = L"remember the milk";
  }
  void Save(const std::string& path) {
    std::wstring error;
    ASSERT_TRUE(TsWriteModelFile(*doc_, path, error)) << ZK_wString(error).ToUtf8();
  }
  // Opens `path` as a new document: null with `error_` set when it was refused.
  CTarsaDoc* Open(const std::string& path) { return CTarsaStandIn::OpenDocument(path, error_); }
  bool Import(const std::string& path) { return TsReadModelFile(*doc_, path, true, false, error_); }
  int ObjectCount(const CTarsaDoc& doc) const {
    int count = 0;
    CTarsaObjectIterator it(const_cast<CTarsaDoc&>(doc));
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) ++count;
    return count;
  }
  std::wstring Name(const std::string& path) const { return ZK_wString::FromUtf8(path).Text(); }
  // The names in the test's folder.
  std::vector<std::string> FolderNames() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  // The note of the model at `path` as another program would read it.
  std::wstring NoteIn(const std::string& path) {
    CTarsaDoc* opened = Open(path);
    EXPECT_NE(opened, nullptr) << ZK_wString(error_).ToUtf8();
    return opened ? notes_.notes[opened->RuntimeSerialNumber()] : L"";
  }

  NotesPlugIn notes_;
  std::string folder_, path_;
  CTarsaDoc* doc_ = nullptr;
  std::wstring error_;
};

// A model with any byte flipped or cut off, and files far larger than memory, made sparse so that
// they take no room: one that is not a model is refused from its first bytes, one that starts as a
// model for its size, and neither is read.
TEST_F(ModelFileTest, ADamagedCutOrHugeFileIsRefusedWholeAndNamedAndTheDocumentKeepsItsState) {
  MakeModel();
  Save(path_);
  const ModelFileBlocks::Bytes bytes = ModelFileBlocks::ReadFile(path_);
  const int objects = ObjectCount(*doc_);
  const std::wstring note = notes_.notes[doc_->RuntimeSerialNumber()];
  const size_t documents = CTarsaStandIn::Documents().size();
  for (size_t at = 0; at < bytes.size(); ++at) {
    for (bool cut : {false, true}) {
      ModelFileBlocks::Bytes damaged = bytes;
      if (cut) {
        damaged.resize(at);
      } else {
        damaged[at] ^= 0x10;
      }
      ModelFileBlocks::WriteFile(path_, damaged);
      EXPECT_EQ(Open(path_), nullptr) << at;
      EXPECT_NE(error_.find(Name(path_)), std::wstring::npos) << at;
      EXPECT_FALSE(Import(path_)) << at;
    }
  }
  const std::string huge = folder_ + "/huge.tsm";
  struct Case {
    ModelFileBlocks::Bytes start;
    std::wstring error;
  } cases[] = {
      {{'n', 'o', 't', ' ', 'a', ' ', 'm', 'o', 'd', 'e', 'l'}, L" is not a Tarsa model file."},
      {ModelFileBlocks::Bytes(bytes.begin(), bytes.begin() + 64),
       L" is too large to open: it takes 1048576 MB, and "},
  };
  for (const Case& c : cases) {
    ModelFileBlocks::WriteFile(huge, c.start);
    ASSERT_EQ(truncate(huge.c_str(), 1LL << 40), 0);
    EXPECT_EQ(Open(huge), nullptr);
    EXPECT_EQ(error_.substr(0, Name(huge).size() + c.error.size()), Name(huge) + c.error);
    EXPECT_FALSE(Import(huge));
  }
  EXPECT_EQ(CTarsaStandIn::Documents().size(), documents);
  EXPECT_EQ(ObjectCount(*doc_), objects);
  EXPECT_EQ(notes_.notes[doc_->RuntimeSerialNumber()], note);

  // A flip inside the note's block is caught by the block's checksum.
  ModelFileBlocks::Bytes flipped = bytes;
  flipped[bytes.size() - 8] ^= 1;
  ModelFileBlocks::WriteFile(path_, flipped);
  EXPECT_EQ(Open(path_), nullptr);
  EXPECT_EQ(error_, Name(path_) + L" is damaged: a block of it does not match its checksum.");
}

// A model of known content saves to the same bytes as ever, so that files written by every
// version read alike: objects of fixed ids, a name beyond the Basic Multilingual Plane and one
// with a lone surrogate (written as U+FFFD), a history, a light, user data and a note. Opened
// where the sticker's class is unknown, it saves again losing nothing; so does a plug-in's data
// that the plug-in refuses (korvo_plugin_test).
TEST_F(ModelFileTest, AModelOfKnownContentSavesToTheSameBytesAsEverAndOpenedSavesAgainWhole) {
  CTarsaObjectAttributes attributes;
  attributes.m_uuid = ZK_UuidFromString("0A1B2C3D-4E5F-4061-8273-94A5B6C7D8E9");
  attributes.m_name = L"T\u00FCr \U0001F6AA";
  auto* box = new CTarsaObject(new ZK_Box({0, -1, 0.5}, {1.25, 2, 3}), attributes);
  ASSERT_TRUE(box->SetHistoryRecord(new CTarsaHistoryRecord(L"Box")));
  ASSERT_TRUE(doc_->AddObject(box));
  ASSERT_TRUE(box->AttachGeometryUserData(new Sticker()));
  attributes.m_uuid = ZK_UuidFromString("1A1B2C3D-4E5F-4061-8273-94A5B6C7D8E9");
  attributes.m_name = std::wstring(L"lamp ") + static_cast<wchar_t>(0xD800);
  attributes.m_mode = TarsaObjectMode::hidden;
  ZK_Light light;
  light.m_location = {4, 5, 6};
  light.m_intensity = 0.75;
  ASSERT_TRUE(doc_->AddObject(new CTarsaLight(light, attributes)));
  notes_.notes[doc_->RuntimeSerialNumber()] = L"milk \U0001F95B";
  Save(path_);
  const ModelFileBlocks::Bytes bytes = ModelFileBlocks::ReadFile(path_);
  EXPECT_EQ(bytes.size(), 580u);
  EXPECT_EQ(ZK_CRC32(0, bytes.size(), bytes.data()), 0xBA026746u);

  Sticker::class_id.reset();
  doc_ = Open(path_);
  ASSERT_NE(doc_, nullptr) << ZK_wString(error_).ToUtf8();
  const std::string again = folder_ + "/again.tsm";
  Save(again);
  ModelFileBlocks original, saved;
  ASSERT_TRUE(original.Read(path_));
  ASSERT_TRUE(saved.Read(again));
  EXPECT_EQ(saved.objects, original.objects);
  EXPECT_EQ(saved.plug_ins, original.plug_ins);
}

TEST_F(ModelFileTest,
       SavesGoThroughLinksKeepOwnerAndRightsAndRefuseFoldersDevicesAndReadOnlyModels) {
  MakeModel();  // a folder opened or imported is refused in the transcripts
  EXPECT_EQ(Open("/dev/zero"), nullptr);
  EXPECT_EQ(error_, L"/dev/zero is a device or another special file, not a model file.");
  std::wstring error;
  EXPECT_FALSE(TsWriteModelFile(*doc_, folder_, error));
  EXPECT_EQ(error, L"Could not write " + Name(folder_) + L": it is a folder.");
  EXPECT_FALSE(TsWriteModelFile(*doc_, "/dev/null", error));
  EXPECT_EQ(error, L"Could not write /dev/null: it is not a regular file.");

  // A link to a link to the model, and a link to a file not made yet.
  ASSERT_EQ(mkdir((folder_ + "/real").c_str(), 0700), 0);
  ASSERT_EQ(symlink("real/model.tsm", (folder_ + "/inner.tsm").c_str()), 0);
  ASSERT_EQ(symlink("inner.tsm", (folder_ + "/outer.tsm").c_str()), 0);
  Save(folder_ + "/outer.tsm");
  struct stat status;
  ASSERT_EQ(lstat((folder_ + "/outer.tsm").c_str(), &status), 0);
  EXPECT_TRUE(S_ISLNK(status.st_mode));
  CTarsaDoc* opened = Open(folder_ + "/real/model.tsm");
  ASSERT_NE(opened, nullptr);
  EXPECT_EQ(ObjectCount(*opened), 2);

  // A save keeps the model's access rights and, when it may, its owner; a read-only model is
  // refused and stays as it was.
  Save(path_);
  ASSERT_EQ(chmod(path_.c_str(), 0640), 0);
  const bool root = geteuid() == 0;
  if (root) {
    ASSERT_EQ(chown(path_.c_str(), 4321, 4321), 0);
  }
  Save(path_);
  ASSERT_EQ(stat(path_.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
  if (root) {
    EXPECT_EQ(status.st_uid, 4321u);
  }

  ASSERT_EQ(chmod(path_.c_str(), 0444), 0);
  const ModelFileBlocks::Bytes before = ModelFileBlocks::ReadFile(path_);
  notes_.notes[doc_->RuntimeSerialNumber()] = L"changed";
  EXPECT_FALSE(TsWriteModelFile(*doc_, path_, error));
  EXPECT_EQ(error, L"Could not write " + Name(path_) +
                       L": the file is read-only. Save the model under another name with SaveAs.");
  EXPECT_EQ(ModelFileBlocks::ReadFile(path_), before);
}

// Two programs save the same model at the same moment while someone has planted a link where a
// save might put its file: first both many times over, then, in seeded rounds, with the other
// program cut off by kill -9 at a random moment. After every round one whole model is left, with
// what one save or the other wrote, and nothing outside it changes.
TEST_F(ModelFileTest,
       SavesAtOnceOrKilledAtAnyMomentLeaveOneWholeModelAndPlantedLinksChangeNothing) {
  MakeModel();
  Save(path_);
  const std::string victim = folder_ + "/victim.txt";
  ModelFileBlocks::WriteFile(victim, {'k', 'e', 'e', 'p'});
  ASSERT_EQ(symlink("victim.txt", (path_ + ".saving").c_str()), 0);
  std::wstring& note = notes_.notes[doc_->RuntimeSerialNumber()];
  std::mt19937 random(23);
  for (int round = 0; round <= 12; ++round) {
    const bool killed = round > 0;
    const std::wstring child_note = L"child " + std::to_wstring(round);
    const std::wstring parent_note = L"parent " + std::to_wstring(round);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    note = child == 0 ? child_note : parent_note;
    bool saved = true;
    // Each saves 40 times; once kills begin, the child until it is killed and the parent once.
    const int saves = !killed ? 40 : child == 0 ? INT_MAX : 1;
    for (int save = 0; save < saves; ++save) {
      std::wstring error;
      saved = TsWriteModelFile(*doc_, path_, error) && saved;
    }
    if (child == 0) _exit(saved ? 0 : 1);
    if (killed) {
      usleep(static_cast<useconds_t>(random() % 3000));
      kill(child, SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(saved);
    const std::wstring read = NoteIn(path_);
    EXPECT_TRUE(read == child_note || read == parent_note) << ZK_wString(read).ToUtf8();
    if (!killed) {
      EXPECT_EQ(status, 0);
      EXPECT_EQ(FolderNames(),
                std::vector<std::string>({"model.tsm", "model.tsm.saving", "victim.txt"}));
    }
  }
  EXPECT_EQ(ModelFileBlocks::ReadFile(victim), ModelFileBlocks::Bytes({'k', 'e', 'e', 'p'}));
  for (const std::string& name : FolderNames()) {
    EXPECT_TRUE(name == "model.tsm" || name == "victim.txt" ||
                name.find(".saving") != std::string::npos)
        << name;
  }
}

}  // namespace
