#include "data/placement_record.h"

#include <algorithm>
#include <memory>
#include <new>

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

// Member by member, ids included, since the kernel copies a record with every copy of its
// object: nothing set first only to be overwritten.
CKorvoUserData::CKorvoUserData(const CKorvoUserData& source)
    : ZK_UserData(source),
      m_entries(source.m_entries),
      m_accumulated_xform(source.m_accumulated_xform),
      m_last_xform(source.m_last_xform) {}

CKorvoUserData& CKorvoUserData::operator=(const CKorvoUserData& source) {
  if (this == &source) return *this;
  RemoveAll();
  SetIdentity();
  ZK_UserData::operator=(source);
  m_accumulated_xform = source.m_accumulated_xform;
  m_last_xform = source.m_last_xform;
  m_entries = source.m_entries;  // shared, not copied: see Entries
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
  // Never more than the bytes left could hold, whatever a damaged count says. No room beyond:
  // most records read are never given another entry, and one that is moves at its first.
  const int fits = static_cast<int>(std::min<size_t>(count > 0 ? static_cast<size_t>(count) : 0,
                                                     bytes_left / kArchivedEntryBytes));
  if (fits > 0) m_entries.Reserve(static_cast<int>(m_entries.GetSize()) + fits);
}

bool CKorvoUserData::GetDescription(ZK_wString& description) {
  description = L"Korvo User Data";
  return true;
}

bool CKorvoUserData::Archive() const { return true; }

unsigned int CKorvoUserData::SizeOf() const {
  return static_cast<unsigned int>(sizeof(*this) + m_entries.SharedBytes() +
                                   m_last_xform.HeldBytes());
}

bool CKorvoUserData::Transform(const ZK_Xform& xform) {
  const bool result = ZK_UserData::Transform(xform);
  if (!result) return result;
  m_accumulated_xform = xform * m_accumulated_xform;
  if (LastXformTakenOut::s_depth == 0) m_last_xform = xform;
  return result;
}

int CKorvoUserData::LastXformTakenOut::s_depth = 0;

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
  m_entries.Editable()[index].m_xform = xform;
  return true;
}

void CKorvoUserData::Add(const ZK_UUID& id, const ZK_Xform& xform) {
  m_entries.Append({id, xform});
}

bool CKorvoUserData::Remove(const ZK_UUID& id) {
  const int index = IndexOf(id);
  if (index < 0) return false;
  USER_DATA* entries = m_entries.Editable();
  const int count = static_cast<int>(m_entries.GetSize());
  std::copy(entries + index + 1, entries + count, entries + index);
  m_entries.Truncate(count - 1);
  return true;
}

void CKorvoUserData::RemoveAll() { m_entries.Release(); }

void CKorvoUserData::SetIdentity() {
  m_accumulated_xform.Identity();
  m_last_xform.Identity();
}

int CKorvoUserData::IndexOf(const ZK_UUID& id) const {
  const USER_DATA* entries = m_entries.Data();
  for (int i = 0; i < m_entries.m_count; ++i) {
    if (entries[i].m_id == id) return i;
  }
  return -1;
}

// Entries

struct alignas(CKorvoUserData::USER_DATA) CKorvoUserData::Entries::Block {
  int m_refs;      // the records that use the block
  int m_used;      // the entries written; each record uses the first ones, as many as it has
  int m_capacity;  // the entries there is room for
  USER_DATA* Data() { return reinterpret_cast<USER_DATA*>(this + 1); }
};

CKorvoUserData::Entries::Entries(const Entries& source) { *this = source; }

CKorvoUserData::Entries& CKorvoUserData::Entries::operator=(const Entries& source) {
  Block* block = source.m_block;
  const int count = source.m_count;
  if (block) ++block->m_refs;
  Release();
  m_block = block;
  m_count = count;
  return *this;
}

CKorvoUserData::Entries::~Entries() { Release(); }

CKorvoUserData::USER_DATA* CKorvoUserData::Entries::Data() const {
  return m_block ? m_block->Data() : nullptr;
}

void CKorvoUserData::Entries::Append(const USER_DATA& entry) {
  // The only record of a block owns what lies past its own entries too.
  if (m_block && m_block->m_refs == 1) m_block->m_used = m_count;
  if (!m_block || m_block->m_used != m_count || m_count == m_block->m_capacity) {
    Reserve(m_count + std::max(1, m_count / 2));  // grown by half, so that appends stay cheap
  }
  new (m_block->Data() + m_count) USER_DATA(entry);
  m_block->m_used = ++m_count;
}

CKorvoUserData::USER_DATA* CKorvoUserData::Entries::Editable() {
  if (m_count == 0) return nullptr;
  if (m_block->m_refs > 1) Reserve(m_count);
  m_block->m_used = m_count;
  return m_block->Data();
}

void CKorvoUserData::Entries::Truncate(int count) {
  if (count == 0) {
    Release();
    return;
  }
  m_count = count;
  m_block->m_used = count;
}

void CKorvoUserData::Entries::Assign(const USER_DATA* entries, int count) {
  if (count == 0) {
    Release();
    return;
  }
  if (!m_block || m_block->m_refs > 1 || m_block->m_capacity < count) {
    Release();
    Reserve(count);
  }
  std::copy_n(entries, count, m_block->Data());
  m_count = count;
  m_block->m_used = count;
}

void CKorvoUserData::Entries::Reserve(int capacity) {
  void* memory = ::operator new(sizeof(Block) + static_cast<size_t>(capacity) * sizeof(USER_DATA));
  Block* block = new (memory) Block{1, m_count, capacity};
  if (m_count > 0) std::uninitialized_copy_n(Data(), m_count, block->Data());
  const int count = m_count;
  Release();
  m_block = block;
  m_count = count;
}

void CKorvoUserData::Entries::Release() {
  if (m_block && --m_block->m_refs == 0) ::operator delete(m_block);
  m_block = nullptr;
  m_count = 0;
}

size_t CKorvoUserData::Entries::SharedBytes() const {
  if (!m_block) return 0;
  return (sizeof(Block) + static_cast<size_t>(m_block->m_capacity) * sizeof(USER_DATA)) /
         static_cast<size_t>(m_block->m_refs);
}
