#include "host/tarsa/standin/tarsa_model_file.h"

#include <cstdio>
#include <memory>
#include <vector>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/zk_archive.h"

namespace {

const wchar_t kMagic[] = L"Tarsa model file";
constexpr int kFormatVersion = 1;

// A file read whole, before anything is put into a document.
struct ParsedModel {
  std::vector<std::unique_ptr<CTarsaObject>> objects;
  std::vector<CTarsaDoc::PlugInData> blocks;
  int skipped = 0;  // objects that could not be read and are left out
};

std::wstring Wide(const std::string& path) { return ZK_wString::FromUtf8(path).Text(); }

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

// Reads the whole file; false with a message for a file that cannot be used.
bool Parse(const std::string& path, ParsedModel& model, std::wstring& error) {
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
  error = Wide(path) + L" is cut short or damaged.";
  int count = 0;
  if (!archive.ReadInt(count) || count < 0) return false;
  for (int i = 0; i < count; ++i) {
    if (!archive.BeginReadChunk()) return false;
    std::unique_ptr<CTarsaObject> object = ReadObjectRecord(archive);
    archive.EndReadChunk();
    if (object) {
      model.objects.push_back(std::move(object));
    } else {
      ++model.skipped;
    }
  }
  if (!archive.ReadInt(count) || count < 0) return false;
  for (int i = 0; i < count; ++i) {
    CTarsaDoc::PlugInData block;
    if (!archive.ReadUuid(block.m_plug_in_id) || !archive.ReadChunk(block.m_bytes)) return false;
    model.blocks.push_back(std::move(block));
  }
  error.clear();
  return true;
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
  for (auto& object : model.objects) {
    if (doc.AddObject(object.get(), reference)) object.release();
  }
  const CTarsaFileReadOptions options(name, merge, reference);
  for (CTarsaDoc::PlugInData& block : model.blocks) {
    if (CTarsaPlugIn* plug_in = LoadedPlugIn(block.m_plug_in_id)) {
      ZK_BinaryMemoryArchive archive(block.m_bytes);
      plug_in->ReadDocument(doc, archive, options);
    } else if (!merge && !reference) {
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
  return archive.BeginWriteChunk() && archive.WriteUuid(attributes.m_uuid) &&
         archive.WriteString(attributes.m_name) &&
         archive.WriteInt(static_cast<int>(attributes.m_mode)) &&
         archive.WriteString(history ? history->m_command_name : ZK_wString()) &&
         archive.WriteObject(*object.Geometry()) && archive.EndWriteChunk();
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
  std::vector<const CTarsaDoc::PlugInData*> kept;
  for (const CTarsaDoc::PlugInData& block : CTarsaStandIn::KeptPlugInData(doc)) {
    if (LoadedPlugIn(block.m_plug_in_id) == nullptr) kept.push_back(&block);
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
    if (!archive.WriteUuid(plug_in->PlugInID()) || !archive.BeginWriteChunk() ||
        !plug_in->WriteDocument(doc, archive, options) || !archive.EndWriteChunk()) {
      return false;
    }
  }
  for (const CTarsaDoc::PlugInData* block : kept) {
    if (!archive.WriteUuid(block->m_plug_in_id) || !archive.WriteChunk(block->m_bytes)) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool TsWriteModelFile(CTarsaDoc& doc, const std::string& path, std::wstring& error) {
  const std::wstring name = Wide(path);
  CTarsaStandIn::NotifyEventWatchers(
      [&](CTarsaEventWatcher& w) { w.OnBeginSaveDocument(doc, name.c_str(), false); });
  const std::string temporary = path + ".saving";
  bool saved = false;
  {
    ZK_BinaryFileArchive archive(temporary, ZK_ArchiveMode::write);
    saved = WriteModel(doc, archive, name) && archive.Close();
  }
  saved = saved && std::rename(temporary.c_str(), path.c_str()) == 0;
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
