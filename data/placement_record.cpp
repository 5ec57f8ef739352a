#include "data/placement_record.h"

#include <algorithm>

#include "data/place_holder.h"
#include "host/tarsa/tarsa_object.h"
#include "plugin/korvo_plugin.h"

namespace {

const int kVersion = 0;
// An entry as Write puts it in an archive: a uuid and sixteen doubles.
const size_t kArchivedEntryBytes = 16 + 16 * 8;

}  // namespace

const ZK_UUID CKorvoUserData::m_userdata_id = {
    0xE142DA6F, 0xD632, 0x4412, {0xAF, 0xF8, 0x37, 0xDF, 0x51, 0xC6, 0x15, 0x56}};

ZK_Object* CKorvoUserData::CreateRecord() { return new CKorvoUserData(); }

CKorvoUserData* CKorvoUserData::Cast(ZK_Object* object) {
  return object && object->IsKindOf(&m_record_class) ? static_cast<CKorvoUserData*>(object)
                                                     : nullptr;
}

const CKorvoUserData* CKorvoUserData::Cast(const ZK_Object* object) {
  return Cast(const_cast<ZK_Object*>(object));
}

CKorvoUserData* CKorvoUserData::Of(const ZK_Object* object) {
  return object ? Cast(object->GetUserData(m_userdata_id)) : nullptr;
}

CKorvoUserData* CKorvoUserData::Of(const CTarsaObject* object) {
  return object ? Cast(object->GetGeometryUserData(m_userdata_id)) : nullptr;
}

CKorvoUserData::CKorvoUserData() {
  m_userdata_uuid = m_userdata_id;
  m_application_uuid = KorvoPlugIn().PlugInID();
  m_userdata_copycount = 1;
}

CKorvoUserData::CKorvoUserData(const CKorvoUserData& source) : ZK_UserData(source) {
  m_userdata_uuid = m_userdata_id;
  m_application_uuid = KorvoPlugIn().PlugInID();
  *this = source;
}

CKorvoUserData& CKorvoUserData::operator=(const CKorvoUserData& source) {
  if (this == &source) return *this;
  RemoveAll();
  SetIdentity();
  ZK_UserData::operator=(source);
  m_accumulated_xform = source.m_accumulated_xform;
  m_last_xform = source.m_last_xform;
  // Room for one entry more: a record is copied most often to be given one more entry (a save
  // edits a copy of the object), and the room spares that entry two allocations.
  const int count = static_cast<int>(source.m_entries.GetSize());
  if (count + 1 > m_storage_capacity) Regrow(count + 1);
  m_entries.SetSize(count, 1);
  for (int i = 0; i < count; ++i) {
    m_storage[i] = *source.m_entries[i];
    m_entries[i] = &m_storage[i];
  }
  m_storage_used = count;
  return *this;
}

CKorvoUserData::~CKorvoUserData() {
  RemoveAll();
  SetIdentity();
}

const ZK_ClassId* CKorvoUserData::ClassId() const { return &m_record_class; }

bool CKorvoUserData::CopyFrom(const ZK_Object* source) {
  const CKorvoUserData* record = Cast(source);
  if (record == nullptr) return false;
  *this = *record;
  return true;
}

ZK_Object* CKorvoUserData::__DeepCopy() const { return new CKorvoUserData(*this); }

bool CKorvoUserData::Write(ZK_BinaryArchive& archive) const {
  if (!archive.WriteInt(kVersion) || !archive.WriteString(kKorvoPlaceHolder) ||
      !archive.WriteXform(m_accumulated_xform) ||
      !archive.WriteInt(static_cast<int>(m_entries.GetSize()))) {
    return false;
  }
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
    if (!archive.WriteUuid(m_entries[i]->m_id) || !archive.WriteXform(m_entries[i]->m_xform)) {
      return false;
    }
  }
  return true;
}

bool CKorvoUserData::Read(ZK_BinaryArchive& archive) {
  int version = 0;
  if (!archive.ReadInt(version) || version > kVersion) return false;
  ZK_wString place_holder;
  int count = 0;
  if (!archive.ReadString(place_holder) || !archive.ReadXform(m_accumulated_xform) ||
      !archive.ReadInt(count)) {
    return false;
  }
  ReserveForRead(count, archive.BytesLeft());
  for (int i = 0; i < count; ++i) {
    ZK_UUID id;
    ZK_Xform xform;
    if (!archive.ReadUuid(id) || !archive.ReadXform(xform)) return false;
    Add(id, xform);
  }
  return true;
}

void CKorvoUserData::ReserveForRead(int count, size_t bytes_left) {
  // Never more than the bytes left could hold, whatever a damaged count says; and, as a copy
  // keeps, room for one entry more.
  const int fits = static_cast<int>(std::min<size_t>(count > 0 ? static_cast<size_t>(count) : 0,
                                                     bytes_left / kArchivedEntryBytes));
  const int wanted = static_cast<int>(m_entries.GetSize()) + fits + 1;
  if (wanted > m_storage_capacity) Regrow(wanted);
  m_entries.SetSize(m_entries.GetSize(), fits + 1);
}

bool CKorvoUserData::GetDescription(ZK_wString& description) {
  description = L"Korvo User Data";
  return true;
}

bool CKorvoUserData::Archive() const { return true; }

unsigned int CKorvoUserData::SizeOf() const {
  return static_cast<unsigned int>(sizeof(*this) +
                                   static_cast<size_t>(m_storage_capacity) * sizeof(USER_DATA) +
                                   static_cast<size_t>(m_entries.GetSize()) * sizeof(USER_DATA*));
}

bool CKorvoUserData::Transform(const ZK_Xform& xform) {
  const bool result = ZK_UserData::Transform(xform);
  if (!result) return result;
  m_accumulated_xform = xform * m_accumulated_xform;
  m_last_xform = xform;
  return result;
}

bool CKorvoUserData::HasEntry(const ZK_UUID& id) const { return IndexOf(id) >= 0; }

bool CKorvoUserData::GetXform(const ZK_UUID& id, ZK_Xform& xform) const {
  const ZK_Xform* saved = FindXform(id);
  if (saved == nullptr) return false;
  xform = *saved;
  return true;
}

const ZK_Xform* CKorvoUserData::FindXform(const ZK_UUID& id) const {
  const int index = IndexOf(id);
  return index < 0 ? nullptr : &m_entries[index]->m_xform;
}

bool CKorvoUserData::SetXform(const ZK_UUID& id, const ZK_Xform& xform) {
  const int index = IndexOf(id);
  if (index < 0) return false;
  m_entries[index]->m_xform = xform;
  return true;
}

void CKorvoUserData::Add(const ZK_UUID& id, const ZK_Xform& xform) {
  USER_DATA* entry = nullptr;
  if (m_free_slot >= 0) {
    entry = &m_storage[m_free_slot];
    m_free_slot = -1;
  } else {
    if (m_storage_used == m_storage_capacity) Regrow(2 * static_cast<int>(m_entries.GetSize()) + 2);
    entry = &m_storage[m_storage_used++];
  }
  *entry = {id, xform};
  m_entries.Add(entry);
}

bool CKorvoUserData::Remove(const ZK_UUID& id) {
  const int index = IndexOf(id);
  if (index < 0) return false;
  m_free_slot = static_cast<int>(m_entries[index] - m_storage.get());
  m_entries.RemoveAt(index);
  return true;
}

void CKorvoUserData::RemoveAll() {
  m_entries.RemoveAll();
  m_storage_used = 0;
  m_free_slot = -1;
}

void CKorvoUserData::Regrow(int capacity) {
  std::unique_ptr<USER_DATA[]> storage(new USER_DATA[static_cast<size_t>(capacity)]);
  const int count = static_cast<int>(m_entries.GetSize());
  for (int i = 0; i < count; ++i) {
    storage[i] = *m_entries[i];
    m_entries[i] = &storage[i];
  }
  m_storage = std::move(storage);
  m_storage_capacity = capacity;
  m_storage_used = count;
  m_free_slot = -1;
}

void CKorvoUserData::SetIdentity() {
  m_accumulated_xform.Identity();
  m_last_xform.Identity();
}

int CKorvoUserData::IndexOf(const ZK_UUID& id) const {
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
    if (m_entries[i]->m_id == id) return static_cast<int>(i);
  }
  return -1;
}
