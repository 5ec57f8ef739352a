#include "host/tarsa/standin/tarsa_model_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <new>
#include <random>
#include <system_error>
#include <vector>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_file_preview.h"
#include "host/zefkit/zk_archive.h"
#include "host/zefkit/zk_crc32.h"

namespace {

const wchar_t kMagic[] = L"Tarsa model file";
constexpr int kFormatVersion = 1;

// A file read whole, before anything is put into a document.
struct ParsedModel {
  std::vector<std::unique_ptr<CTarsaObject>> objects;
  std::vector<CTarsaDoc::PlugInData> blocks;
  int skipped = 0;  // objects that could not be read and are left out
};

namespace fs = std::filesystem;

std::wstring Wide(const std::string& path) { return ZK_wString::FromUtf8(path).Text(); }

// A framed block: a chunk, then the CRC-32 of its bytes continued from `crc` (the CRC of the
// plug-in id that precedes a plug-in block, so that a damaged id is caught too).
bool WriteBlock(ZK_BinaryArchive& archive, const std::vector<unsigned char>& bytes,
                unsigned int crc = 0) {
  return archive.WriteChunk(bytes) &&
         archive.WriteInt(static_cast<int>(ZK_CRC32(crc, bytes.size(), bytes.data())));
}

enum class BlockRead { read, cut_short, damaged };

BlockRead ReadBlock(ZK_BinaryArchive& archive, std::vector<unsigned char>& bytes,
                    unsigned int crc = 0) {
  int stored = 0;
  if (!archive.ReadChunk(bytes) || !archive.ReadInt(stored)) return BlockRead::cut_short;
  return static_cast<unsigned int>(stored) == ZK_CRC32(crc, bytes.size(), bytes.data())
             ? BlockRead::read
             : BlockRead::damaged;
}

// The CRC-32 of a plug-in id as the archive writes it.
unsigned int IdCrc(const ZK_UUID& plug_in_id) {
  ZK_BinaryMemoryArchive id;
  id.WriteUuid(plug_in_id);
  return ZK_CRC32(0, id.Bytes().size(), id.Bytes().data());
}

// One object's record: id, name, mode, history, geometry with its user data. Null when the
// record cannot be used; the chunk around it lets the rest of the file be read all the same.
std::unique_ptr<CTarsaObject> ReadObjectRecord(ZK_BinaryArchive& archive) {
  CTarsaObjectAttributes attributes;
  int mode = 0;
  ZK_wString history;
  if (!archive.ReadUuid(attributes.m_uuid) || !archive.ReadString(attributes.m_name) ||
      !archive.ReadInt(mode) || !archive.ReadString(history) || mode < 0 || mode > 2) {
    return nullptr;
  }
  attributes.m_mode = static_cast<TarsaObjectMode>(mode);
  ZK_Object* read = nullptr;
  if (archive.ReadObject(read) != 1) return nullptr;
  std::unique_ptr<CTarsaObject> object;
  if (ZK_Light* light = ZK_Light::Cast(read)) {
    light->m_light_index = -1;
    object.reset(new CTarsaLight(light, attributes));
  } else if (ZK_Geometry* geometry = ZK_Geometry::Cast(read)) {
    object.reset(new CTarsaObject(geometry, attributes));
  } else {
    delete read;
    return nullptr;
  }
  if (!history.IsEmpty()) object->SetHistoryRecord(new CTarsaHistoryRecord(history));
  return object;
}

// An object's block, read where it lies in the file: the record is read before its check is
// compared, and a damaged block fails the whole file, whatever its record gave.
BlockRead ReadObjectBlock(ZK_BinaryArchive& archive, ParsedModel& model) {
  unsigned int crc = 0;
  if (!archive.BeginReadChunk(crc)) return BlockRead::cut_short;
  std::unique_ptr<CTarsaObject> object = ReadObjectRecord(archive);
  int stored = 0;
  if (!archive.EndReadChunk() || !archive.ReadInt(stored)) return BlockRead::cut_short;
  if (static_cast<unsigned int>(stored) != crc) return BlockRead::damaged;
  if (object) {
    model.objects.push_back(std::move(object));
  } else {
    ++model.skipped;
  }
  return BlockRead::read;
}

// The objects and plug-in blocks after the file's header. False when a count or a block is cut
// short, or a block fails its check (`failure` is then damaged).
bool ParseBlocks(ZK_BinaryArchive& archive, ParsedModel& model, BlockRead& failure) {
  int count = 0;
  if (!archive.ReadInt(count) || count < 0) return false;
  for (int i = 0; i < count; ++i) {
    failure = ReadObjectBlock(archive, model);
    if (failure != BlockRead::read) return false;
  }
  if (!archive.ReadInt(count) || count < 0) return false;
  for (int i = 0; i < count; ++i) {
    CTarsaDoc::PlugInData block;
    if (!archive.ReadUuid(block.m_plug_in_id)) return false;
    failure = ReadBlock(archive, block.m_bytes, IdCrc(block.m_plug_in_id));
    if (failure != BlockRead::read) return false;
    model.blocks.push_back(std::move(block));
  }
  return archive.BytesLeft() == 0;  // bytes after the last block: a count was damaged
}

TsModelFileStamp StampOf(const struct stat& status) {
  TsModelFileStamp stamp;
  stamp.m_device = static_cast<unsigned long long>(status.st_dev);
  stamp.m_inode = static_cast<unsigned long long>(status.st_ino);
  stamp.m_size = static_cast<long long>(status.st_size);
  stamp.m_modified_ns =
      static_cast<long long>(status.st_mtim.tv_sec) * 1000000000LL + status.st_mtim.tv_nsec;
  return stamp;
}

// The magic text and format version at the start of a model file: false with a message when
// they are not those of a model file this host reads.
bool ReadHeader(ZK_BinaryArchive& archive, const std::wstring& name, std::wstring& error) {
  ZK_wString magic;
  int version = 0;
  if (!archive.ReadString(magic) || magic != kMagic || !archive.ReadInt(version) || version < 1) {
    error = name + L" is not a Tarsa model file.";
    return false;
  }
  if (version > kFormatVersion) {
    error = name + L" was written by a newer version of Tarsa (file format " +
            std::to_wstring(version) + L"); this version reads format " +
            std::to_wstring(kFormatVersion) + L".";
    return false;
  }
  return true;
}

// Closes a file when reading it ends, however it ends.
class FileCloser {
 public:
  explicit FileCloser(int fd) : m_fd(fd) {}
  FileCloser(const FileCloser&) = delete;
  FileCloser& operator=(const FileCloser&) = delete;
  ~FileCloser() { close(m_fd); }

 private:
  int m_fd;
};

// Reads up to `size` bytes from `offset`: the number read, fewer only at the end of the file,
// or -1 when reading failed.
ssize_t ReadAt(int fd, unsigned char* bytes, size_t size, off_t offset) {
  size_t got_all = 0;
  while (got_all < size) {
    const ssize_t got =
        pread(fd, bytes + got_all, size - got_all, offset + static_cast<off_t>(got_all));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return -1;
    if (got == 0) break;
    got_all += static_cast<size_t>(got);
  }
  return static_cast<ssize_t>(got_all);
}

// The memory a file may take to be read: what the system has available, within the process's
// own limit.
unsigned long long MemoryForReading() {
  unsigned long long available = 0;
  std::ifstream meminfo("/proc/meminfo");
  std::string key;
  unsigned long long kilobytes = 0;
  while (meminfo >> key >> kilobytes) {
    if (key == "MemAvailable:") available = kilobytes * 1024;
    meminfo.ignore(64, '\n');
  }
  if (available == 0) {
    available = static_cast<unsigned long long>(sysconf(_SC_PHYS_PAGES)) *
                static_cast<unsigned long long>(sysconf(_SC_PAGESIZE));
  }
  struct rlimit limit;
  if (getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
    available = std::min<unsigned long long>(available, limit.rlim_cur);
  }
  return available;
}

std::wstring Megabytes(unsigned long long bytes) {
  return std::to_wstring((bytes + (1u << 20) - 1) >> 20) + L" MB";
}

// Opens the file at `path` and reads its first bytes: its descriptor, for a regular file that
// starts as a model file this host reads; -1 with a message otherwise.
int OpenModelFile(const std::string& path, struct stat& status, std::wstring& error) {
  const std::wstring name = Wide(path);
  // Not blocking, so that opening a pipe returns at once; it is refused below.
  const int fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0 || fstat(fd, &status) != 0) {
    error = L"Cannot read " + name + L".";
  } else if (S_ISDIR(status.st_mode)) {
    error = name + L" is a folder, not a model file.";
  } else if (!S_ISREG(status.st_mode)) {
    error = name + L" is a device or another special file, not a model file.";
  } else {
    std::vector<unsigned char> head(64);
    const ssize_t got = ReadAt(fd, head.data(), head.size(), 0);
    head.resize(got < 0 ? 0 : static_cast<size_t>(got));
    ZK_BinaryMemoryArchive start(std::move(head));
    if (got < 0) {
      error = L"Cannot read " + name + L".";
    } else if (ReadHeader(start, name, error)) {
      return fd;
    }
  }
  if (fd >= 0) close(fd);
  return -1;
}

// The bytes of the file at `path`, read only once its first bytes show a model file this host
// reads and its size fits in memory. False with a message, having read no more than the first
// bytes, for a file that cannot be used. `stamp` tells the version read.
bool LoadModelBytes(const std::string& path, std::vector<unsigned char>& bytes,
                    TsModelFileStamp& stamp, std::wstring& error) {
  struct stat status;
  const int fd = OpenModelFile(path, status, error);
  if (fd < 0) return false;
  const FileCloser closer(fd);
  const auto size = static_cast<unsigned long long>(status.st_size);
  const unsigned long long memory = MemoryForReading();
  if (size > memory) {
    error = Wide(path) + L" is too large to open: it takes " + Megabytes(size) + L", and " +
            Megabytes(memory) + L" of memory are free.";
    return false;
  }
  bytes.resize(static_cast<size_t>(size));
  const ssize_t read_all = ReadAt(fd, bytes.data(), bytes.size(), 0);
  if (read_all < 0) {
    error = L"Cannot read " + Wide(path) + L".";
    return false;
  }
  bytes.resize(static_cast<size_t>(read_all));
  stamp = StampOf(status);
  return true;
}

// Reads the whole file at `path`; false with a message for a file that cannot be used.
bool ParseFile(const std::string& path, ParsedModel& model, TsModelFileStamp& stamp,
               std::wstring& error) {
  std::vector<unsigned char> bytes;
  if (!LoadModelBytes(path, bytes, stamp, error)) return false;
  ZK_BinaryMemoryArchive archive(std::move(bytes));
  const std::wstring name = Wide(path);
  if (!ReadHeader(archive, name, error)) return false;
  BlockRead failure = BlockRead::cut_short;
  if (ParseBlocks(archive, model, failure)) return true;
  error = failure == BlockRead::damaged
              ? name + L" is damaged: a block of it does not match its checksum."
              : name + L" is cut short or damaged.";
  return false;
}

std::wstring OutOfMemory(const std::string& path) {
  return L"Not enough memory to read " + Wide(path) + L"; nothing of it was read.";
}

// ParseFile, where running out of memory is a refusal like any other.
bool Parse(const std::string& path, ParsedModel& model, TsModelFileStamp& stamp,
           std::wstring& error) {
  try {
    return ParseFile(path, model, stamp, error);
  } catch (const std::bad_alloc&) {
    model = ParsedModel();
    error = OutOfMemory(path);
    return false;
  }
}

CTarsaPlugIn* LoadedPlugIn(const ZK_UUID& plug_in_id) {
  for (CTarsaPlugIn* plug_in : CTarsaStandIn::PlugIns()) {
    if (plug_in->PlugInID() == plug_in_id) return plug_in;
  }
  return nullptr;
}

// Puts a parsed file into the document, with the notifications of an open.
void Apply(CTarsaDoc& doc, ParsedModel& model, const std::string& path, bool merge,
           bool reference) {
  CTarsaApp& app = TarsaApp();
  const std::wstring name = Wide(path);
  CTarsaStandIn::NotifyEventWatchers(
      [&](CTarsaEventWatcher& w) { w.OnBeginOpenDocument(doc, name.c_str(), merge, reference); });
  CTarsaStandIn::ReserveObjects(doc, model.objects.size());
  for (auto& object : model.objects) {
    if (doc.AddObject(object.get(), reference)) object.release();
  }
  const CTarsaFileReadOptions options(name, merge, reference);
  for (CTarsaDoc::PlugInData& block : model.blocks) {
    CTarsaPlugIn* plug_in = LoadedPlugIn(block.m_plug_in_id);
    ZK_BinaryMemoryArchive archive(block.m_bytes);
    if (plug_in && plug_in->ReadDocument(doc, archive, options)) continue;
    // A block no plug-in here could read (one of a newer version, say) goes back into the file
    // when the document is saved.
    const bool keep = !merge && !reference;
    if (plug_in) {
      app.Print(keep ? L"The %s plug-in could not read its data in %s; the data is kept as it is "
                       L"and saved with the model.\n"
                     : L"The %s plug-in could not read its data in %s; none of it was added.\n",
                plug_in->PlugInName(), name.c_str());
    }
    if (keep)
      CTarsaStandIn::KeepPlugInData(doc, block.m_plug_in_id, std::move(block.m_bytes), name);
  }
  CTarsaStandIn::NotifyEventWatchers(
      [&](CTarsaEventWatcher& w) { w.OnEndOpenDocument(doc, name.c_str(), merge, reference); });
  if (model.skipped > 0) {
    app.Print(L"%d objects of %s could not be read and were left out.\n", model.skipped,
              name.c_str());
  }
}

bool WriteObjectRecord(ZK_BinaryArchive& archive, const CTarsaObject& object) {
  const CTarsaObjectAttributes& attributes = object.Attributes();
  const CTarsaHistoryRecord* history = object.HistoryRecord();
  unsigned int crc = 0;
  return archive.BeginWriteChunk() && archive.WriteUuid(attributes.m_uuid) &&
         archive.WriteString(attributes.m_name) &&
         archive.WriteInt(static_cast<int>(attributes.m_mode)) &&
         archive.WriteString(history ? history->m_command_name : ZK_wString()) &&
         archive.WriteObject(*object.Geometry()) && archive.EndWriteChunk(crc) &&
         archive.WriteInt(static_cast<int>(crc));
}

bool WriteModel(CTarsaDoc& doc, ZK_BinaryArchive& archive, const std::wstring& name) {
  std::vector<const CTarsaObject*> objects;
  CTarsaObjectIterator it(
      doc, CTarsaObject::normal_object | CTarsaObject::locked_object | CTarsaObject::hidden_object,
      CTarsaObject::active_object);
  it.IncludeLights(true);
  it.EnableVisibleFilter(false);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    objects.push_back(object);
  }
  const CTarsaFileWriteOptions options(doc.RuntimeSerialNumber(), name);
  std::vector<CTarsaPlugIn*> writers;
  for (CTarsaPlugIn* plug_in : CTarsaStandIn::PlugIns()) {
    if (plug_in->ShouldWriteDocument(options)) writers.push_back(plug_in);
  }
  auto writes = [&writers](const ZK_UUID& plug_in_id) {
    for (CTarsaPlugIn* plug_in : writers) {
      if (plug_in->PlugInID() == plug_in_id) return true;
    }
    return false;
  };
  std::vector<const CTarsaDoc::PlugInData*> kept;
  for (const CTarsaDoc::PlugInData& block : CTarsaStandIn::KeptPlugInData(doc)) {
    if (!writes(block.m_plug_in_id)) kept.push_back(&block);
  }
  if (!archive.WriteString(kMagic) || !archive.WriteInt(kFormatVersion) ||
      !archive.WriteInt(static_cast<int>(objects.size()))) {
    return false;
  }
  for (const CTarsaObject* object : objects) {
    if (!WriteObjectRecord(archive, *object)) return false;
  }
  if (!archive.WriteInt(static_cast<int>(writers.size() + kept.size()))) return false;
  for (CTarsaPlugIn* plug_in : writers) {
    ZK_BinaryMemoryArchive block;
    if (!plug_in->WriteDocument(doc, block, options) || !archive.WriteUuid(plug_in->PlugInID()) ||
        !WriteBlock(archive, block.Bytes(), IdCrc(plug_in->PlugInID()))) {
      return false;
    }
  }
  for (const CTarsaDoc::PlugInData* block : kept) {
    if (!archive.WriteUuid(block->m_plug_in_id) ||
        !WriteBlock(archive, block->m_bytes, IdCrc(block->m_plug_in_id))) {
      return false;
    }
  }
  return true;
}

// The file a save of `path` replaces: the file a symbolic link leads to (so that the link stays
// a link), else `path` itself. False with a message when links loop or lead nowhere readable,
// or the file is not a regular one (a folder, a device).
bool SaveTarget(const std::string& path, std::string& target, std::wstring& error) {
  fs::path at = path;
  std::error_code ec;
  // As many links as the system itself follows before it gives up.
  for (int links = 0; fs::is_symlink(fs::symlink_status(at, ec)); ++links) {
    const fs::path next = fs::read_symlink(at, ec);
    if (ec || links == 40) {
      error = L"Could not write " + Wide(path) + L": its symbolic links do not lead to a file.";
      return false;
    }
    at = next.is_absolute() ? next : at.parent_path() / next;
  }
  const fs::file_status status = fs::status(at, ec);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    error = L"Could not write " + Wide(path) +
            (fs::is_directory(status) ? L": it is a folder." : L": it is not a regular file.");
    return false;
  }
  target = at.string();
  return true;
}

// A file of this save's own beside `target`, made exclusively under a name no one else uses
// (never through a link planted there): its descriptor, or -1 with `temporary` the last name
// tried.
int CreateTemporary(const std::string& target, std::string& temporary) {
  static std::mt19937_64 random(std::random_device{}() ^ static_cast<unsigned long>(getpid()));
  for (int attempt = 0; attempt < 100; ++attempt) {
    char suffix[32];
    std::snprintf(suffix, sizeof suffix, ".%016llx.saving",
                  static_cast<unsigned long long>(random()));
    temporary = target + suffix;
    const int fd =
        open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (fd >= 0 || errno != EEXIST) return fd;
  }
  return -1;
}

// The new file gets the owner, group and access rights of the one it replaces, as far as this
// process may give them. The owner goes first: changing it clears bits the mode then restores.
void KeepOwnerAndPermissions(int fd, const struct stat& model) {
  if (fchown(fd, model.st_uid, model.st_gid) != 0 &&
      fchown(fd, static_cast<uid_t>(-1), model.st_gid) != 0) {
    // Another user's file saved by its folder's owner becomes the saver's; its rights stay.
  }
  if (fchmod(fd, model.st_mode & 07777) != 0) {
    // A file system without access rights: the new file has the default ones.
  }
}

// A model this user may not write, or one marked read-only even for one who could.
bool IsReadOnly(const std::string& target, const struct stat& model) {
  return (model.st_mode & 0222) == 0 || access(target.c_str(), W_OK) != 0;
}

// Makes the rename itself last: the folder's entry is flushed too.
void SyncFolder(const std::string& target) {
  const fs::path folder = fs::path(target).parent_path();
  const int fd = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  if (fsync(fd) != 0) {
    // The file is renamed and whole; only its survival of a power cut is less certain.
  }
  close(fd);
}

// Writes the model into a new file beside `target` and renames it over `target`: false, with
// nothing but that new file changed (and removed again), when a step failed.
bool WriteAndReplace(CTarsaDoc& doc, const std::string& target, const struct stat* model,
                     const std::wstring& name, TsModelFileStamp* written) {
  std::string temporary;
  const int fd = CreateTemporary(target, temporary);
  if (fd < 0) return false;
  if (model) KeepOwnerAndPermissions(fd, *model);
  bool saved = false;
  {
    ZK_BinaryFileArchive archive(fd);
    saved = WriteModel(doc, archive, name) && archive.Close();
  }
  struct stat status;
  saved = saved && fstat(fd, &status) == 0 && std::rename(temporary.c_str(), target.c_str()) == 0;
  close(fd);
  if (!saved) {
    unlink(temporary.c_str());
    return false;
  }
  SyncFolder(target);
  if (written) *written = StampOf(status);
  return true;
}

}  // namespace

bool operator==(const TsModelFileStamp& a, const TsModelFileStamp& b) {
  return a.m_device == b.m_device && a.m_inode == b.m_inode && a.m_size == b.m_size &&
         a.m_modified_ns == b.m_modified_ns;
}

TsModelFileStamp TsModelFileStampOf(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 ? StampOf(status) : TsModelFileStamp();
}

bool TsWriteModelFile(CTarsaDoc& doc, const std::string& path, std::wstring& error,
                      TsModelFileStamp* written) {
  const std::wstring name = Wide(path);
  std::string target;
  if (!SaveTarget(path, target, error)) return false;
  struct stat model;
  const bool exists = stat(target.c_str(), &model) == 0;
  if (exists && IsReadOnly(target, model)) {
    error = L"Could not write " + name +
            L": the file is read-only. Save the model under another name with SaveAs.";
    return false;
  }
  CTarsaStandIn::NotifyEventWatchers(
      [&](CTarsaEventWatcher& w) { w.OnBeginSaveDocument(doc, name.c_str(), false); });
  const bool saved = WriteAndReplace(doc, target, exists ? &model : nullptr, name, written);
  if (!saved) error = L"Could not write " + name + L"; the file on disk is unchanged.";
  CTarsaStandIn::NotifyEventWatchers(
      [&](CTarsaEventWatcher& w) { w.OnEndSaveDocument(doc, name.c_str(), false); });
  return saved;
}

bool TsIsModelFile(const std::string& path, std::wstring& error) {
  struct stat status;
  const int fd = OpenModelFile(path, status, error);
  if (fd < 0) return false;
  close(fd);
  return true;
}

bool TsReadModelFile(CTarsaDoc& doc, const std::string& path, bool merge, bool reference,
                     std::wstring& error) {
  ParsedModel model;
  TsModelFileStamp stamp;
  if (!Parse(path, model, stamp, error)) return false;
  try {
    Apply(doc, model, path, merge, reference);
  } catch (const std::bad_alloc&) {
    error = L"Not enough memory to read " + Wide(path) +
            L"; only part of it was added, which Undo takes away.";
    return false;
  }
  return true;
}

CTarsaDoc* CTarsaStandIn::OpenDocument(const std::string& path, std::wstring& error,
                                       TsModelFileStamp* read) {
  ParsedModel model;
  TsModelFileStamp stamp;
  if (!Parse(path, model, stamp, error)) return nullptr;
  CTarsaDoc* doc = NewDocument();
  try {
    Apply(*doc, model, path, false, false);
  } catch (const std::bad_alloc&) {
    CloseDocument(doc->RuntimeSerialNumber());
    error = OutOfMemory(path);
    return nullptr;
  }
  if (read) *read = stamp;
  return doc;
}

CTarsaFilePreview::CTarsaFilePreview() = default;

CTarsaFilePreview::~CTarsaFilePreview() = default;

bool CTarsaFilePreview::Read(const std::string& path, std::wstring& error) {
  m_objects.clear();
  m_blocks.clear();
  ParsedModel model;
  TsModelFileStamp stamp;
  if (!Parse(path, model, stamp, error)) return false;
  m_objects = std::move(model.objects);
  for (CTarsaDoc::PlugInData& block : model.blocks) {
    m_blocks.emplace_back(block.m_plug_in_id, std::move(block.m_bytes));
  }
  return true;
}

const std::vector<unsigned char>* CTarsaFilePreview::PlugInData(const ZK_UUID& plug_in_id) const {
  for (const auto& block : m_blocks) {
    if (block.first == plug_in_id) return &block.second;
  }
  return nullptr;
}
