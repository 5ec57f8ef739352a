#include "bench/bench_model.h"

#include <unistd.h>

#include <utility>
#include <vector>

#include "data/placement_record.h"
#include "data/stance_table.h"
#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "operations/every_object_iterator.h"
#include "plugin/korvo_plugin.h"

void LoadStancePlugIn() { CTarsaStandIn::LoadPlugIn(KorvoPlugIn()); }

HostAlone::HostAlone() { CTarsaStandIn::UnloadPlugIn(KorvoPlugIn()); }

void CloseBenchDocument(unsigned int serial_number) {
  CTarsaStandIn::CloseDocument(serial_number);
  // The registry only empties whole: the tables of documents still open go back in afterwards.
  std::vector<std::pair<unsigned int, CKorvoDocData>> open_tables;
  for (CTarsaDoc* doc : CTarsaStandIn::Documents()) {
    const unsigned int serial = doc->RuntimeSerialNumber();
    open_tables.emplace_back(serial, *KorvoPlugIn().DocData(serial));
  }
  KorvoPlugIn().RemoveAllDocData();
  for (const auto& [serial, table] : open_tables) *KorvoPlugIn().DocData(serial) = table;
}

BenchModel::BenchModel(int objects, int stances, int entries)
    : m_doc(CTarsaStandIn::NewDocument()) {
  CKorvoDocData& table = *KorvoPlugIn().DocData(m_doc->RuntimeSerialNumber());
  std::vector<ZK_UUID> ids(static_cast<size_t>(stances));
  for (int s = 0; s < stances; ++s) {
    ZK_CreateUuid(ids[static_cast<size_t>(s)]);
    // The names are all different: no need for the table to search itself for each.
    table.AddFree(
        ids[static_cast<size_t>(s)],
        s == 0 ? ZK_wString(L"All") : ZK_wString((L"Pose " + std::to_wstring(s)).c_str()));
  }
  if (stances > 0) m_all = ids[0];
  for (int i = 0; i < objects; ++i) {
    auto* object = new CTarsaObject(new ZK_Point({double(i), 0, 0}));
    if (entries == 0) {
      m_doc->AddObject(object);
      continue;
    }
    auto* record = new CKorvoUserData();
    record->Add(m_all, ZK_Xform());
    for (int k = 1; k < entries && stances > 1; ++k) {
      record->Add(ids[static_cast<size_t>(1 + (i + k) % (stances - 1))], ZK_Xform());
    }
    object->AttachGeometryUserData(record);
    m_doc->AddObject(object);
  }
}

BenchModel::~BenchModel() { CloseBenchDocument(m_doc->RuntimeSerialNumber()); }

ZK_SimpleArray<const CTarsaObject*> BenchModel::Objects() const {
  ZK_SimpleArray<const CTarsaObject*> objects;
  CKorvoEveryObjectIterator it(*m_doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) objects.Append(object);
  return objects;
}

void BenchModel::MoveAll() { TransformEveryObject(*m_doc, ZK_Xform::Translation(1, 0, 0)); }

bool BenchModel::AtStart() const {
  CKorvoEveryObjectIterator it(*m_doc);
  const CTarsaObject* first = it.First();
  return first && ZK_PointGeometry::Cast(first->Geometry())->Points()[0].x == 0;
}

std::string BenchModel::SaveAs(const char* name) const {
  // The process id keeps apart the files of two benchmark programs running at once.
  const std::string path = "/tmp/korvo_bench_" + std::to_string(getpid()) + "_" + name + ".tsm";
  std::wstring error;
  TsWriteModelFile(*m_doc, path, error);
  return path;
}

long long ReadEveryEntry(CTarsaDoc& doc) {
  long long read = 0;
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    const CKorvoUserData* record = CKorvoUserData::Of(object);
    if (record == nullptr) continue;
    for (int e = 0; e < record->m_entries.GetSize(); ++e) {
      read += record->m_entries[e]->m_id.Data1 != 0;
    }
  }
  return read;
}

void TransformEveryObject(CTarsaDoc& doc, const ZK_Xform& xform) {
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    doc.TransformObject(CTarsaObjRef(object), xform, true, true, false);
  }
}

void DuplicateAndReplace(CTarsaDoc& doc, const ZK_SimpleArray<const CTarsaObject*>& objects) {
  for (int i = 0; i < objects.Count(); ++i) {
    doc.ReplaceObject(CTarsaObjRef(objects[i]), objects[i]->Duplicate(), false);
  }
}
