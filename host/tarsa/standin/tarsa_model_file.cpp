#include "host/tarsa/standin/tarsa_model_file.h"

#include <cstdio>
#include <filesystem>
#include <memory>
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

// Why a path cannot be opened as a model file, or empty when it may be tried.
std::wstring NotAFile(const std::string& path) {
  std::error_code ec;
  const fs::file_status status = fs::status(path, ec);
  if (fs::is_directory(status)) return Wide(path) + L" is a folder, not a model file.";
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    return Wide(path) + L" is a device or another special file, not a model file.";
  }
  return std::wstring();
}

// Reads the whole file; false with a message for a file that cannot be used.
bool Parse(const std::string& path, ParsedModel& model, std::wstring& error) {
  error = NotAFile(path);
  if (!error.empty()) return false;
  ZK_BinaryFileArchive archive(path, ZK_ArchiveMode::read);
  if (!archive.IsOpen()) {
    error = L"Cannot read " + Wide(path) + L".";
    return false;
  }
  ZK_wString magic;
  int version = 0;
  if (!archive.ReadString(magic) || magic != kMagic || !archive.ReadInt(version) || version < 1) {
    error = Wide(path) + L" is not a Tarsa model file.";
    return false;
  }
  if (version > kFormatVersion) {
    error = Wide(path) + L" was written by a newer version of Tarsa (file format " +
            std::to_wstring(version) + L"); this version reads format " +
            std::to_wstring(kFormatVersion) + L".";
    return false;
  }
  BlockRead failure = BlockRead::cut_short;
  if (ParseBlocks(archive, model, failure)) return true;
  error = failure == BlockRead::damaged
              ? Wide(path) + L" is damaged: a block of it does not match its checksum."
              : Wide(path) + L" is cut short or damaged.";
  return false;
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
    const bool read = plug_in && plug_in->ReadDocument(doc, archive, options);
    // A block no plug-in here could read (one of a newer version, say) goes back into the file
    // when the document is saved.
    if (!read && !merge && !reference) {
      CTarsaStandIn::KeepPlugInData(doc, block.m_plug_in_id, std::move(block.m_bytes));
    }
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

// The new file gets the access rights of the one it replaces.
void KeepPermissions(const std::string& target, const std::string& temporary) {
  std::error_code ec;
  const fs::file_status status = fs::status(target, ec);
  if (!ec && fs::is_regular_file(status)) fs::permissions(temporary, status.permissions(), ec);
}

}  // namespace

bool TsWriteModelFile(CTarsaDoc& doc, const std::string& path, std::wstring& error) {
  const std::wstring name = Wide(path);
  std::string target;
  if (!SaveTarget(path, target, error)) return false;
  CTarsaStandIn::NotifyEventWatchers(
      [&](CTarsaEventWatcher& w) { w.OnBeginSaveDocument(doc, name.c_str(), false); });
  const std::string temporary = target + ".saving";
  bool saved = false;
  {
    ZK_BinaryFileArchive archive(temporary, ZK_ArchiveMode::write);
    saved = WriteModel(doc, archive, name) && archive.Close();
  }
  if (saved) KeepPermissions(target, temporary);
  saved = saved && std::rename(temporary.c_str(), target.c_str()) == 0;
  if (!saved) {
    std::remove(temporary.c_str());
    error = L"Could not write " + name + L"; the file on disk is unchanged.";
  }
  CTarsaStandIn::NotifyEventWatchers(
      [&](CTarsaEventWatcher& w) { w.OnEndSaveDocument(doc, name.c_str(), false); });
  return saved;
}

bool TsReadModelFile(CTarsaDoc& doc, const std::string& path, bool merge, bool reference,
                     std::wstring& error) {
  ParsedModel model;
  if (!Parse(path, model, error)) return false;
  Apply(doc, model, path, merge, reference);
  return true;
}

CTarsaDoc* CTarsaStandIn::OpenDocument(const std::string& path, std::wstring& error) {
  ParsedModel model;
  if (!Parse(path, model, error)) return nullptr;
  CTarsaDoc* doc = NewDocument();
  Apply(*doc, model, path, false, false);
  return doc;
}

CTarsaFilePreview::CTarsaFilePreview() = default;

CTarsaFilePreview::~CTarsaFilePreview() = default;

bool CTarsaFilePreview::Read(const std::string& path, std::wstring& error) {
  m_objects.clear();
  m_blocks.clear();
  ParsedModel model;
  if (!Parse(path, model, error)) return false;
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
