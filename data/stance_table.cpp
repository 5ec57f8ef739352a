#include "data/stance_table.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "data/place_holder.h"
#include "data/table_snapshot.h"
#include "data/undo_scope.h"
#include "host/tarsa/tarsa_app.h"
#include "panel/stances_panel.h"

namespace {

bool IsEmptyName(const wchar_t* name) { return name == nullptr || *name == 0; }

bool SameEntry(const CKorvoDocData::USER_DATA& a, const CKorvoDocData::USER_DATA& b) {
  return ZK_UuidCompare(a.m_id, b.m_id) == 0 && a.m_name == b.m_name;
}

}  // namespace

CKorvoDocData::CKorvoDocData() = default;

CKorvoDocData::CKorvoDocData(const CKorvoDocData& source) { *this = source; }

CKorvoDocData& CKorvoDocData::operator=(const CKorvoDocData& source) {
  if (this == &source) return *this;
  const USER_DATA* const* entries = source.m_entries.GetData();
  ReplaceEntries(std::vector<const USER_DATA*>(entries, entries + source.m_entries.GetSize()));
  return *this;
}

CKorvoDocData::~CKorvoDocData() { RemoveAll(); }

bool CKorvoDocData::operator==(const CKorvoDocData& other) const {
  if (this == &other) return true;
  if (Count() != other.Count()) return false;
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
    if (!SameEntry(*m_entries[i], *other.m_entries[i])) return false;
  }
  return true;
}

bool CKorvoDocData::Equals(const CKorvoTableSnapshot& snapshot) const {
  if (snapshot.Count() != Count()) return false;
  if (&snapshot == m_last_snapshot.get() && m_unchanged == m_entries.GetSize()) return true;
  const std::vector<const USER_DATA*> entries = snapshot.Entries();
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
    if (!SameEntry(*m_entries[i], *entries[static_cast<size_t>(i)])) return false;
  }
  return true;
}

std::shared_ptr<const CKorvoTableSnapshot> CKorvoDocData::Snapshot() {
  const INT_PTR count = m_entries.GetSize();
  if (m_last_snapshot && m_unchanged == count && m_last_snapshot->Count() == count) {
    return m_last_snapshot;
  }
  std::vector<USER_DATA> changed;
  changed.reserve(static_cast<size_t>(count - m_unchanged));
  for (INT_PTR i = m_unchanged; i < count; ++i) changed.push_back(*m_entries[i]);
  m_last_snapshot = CKorvoTableSnapshot::Make(std::move(m_last_snapshot),
                                              static_cast<int>(m_unchanged), std::move(changed));
  m_unchanged = count;
  return m_last_snapshot;
}

void CKorvoDocData::Restore(std::shared_ptr<const CKorvoTableSnapshot> snapshot) {
  ReplaceEntries(snapshot->Entries());
  m_last_snapshot = std::move(snapshot);
  m_unchanged = m_entries.GetSize();
}

void CKorvoDocData::ReplaceEntries(const std::vector<const USER_DATA*>& entries) {
  m_cursor = 0;
  RemoveAll();
  const INT_PTR count = static_cast<INT_PTR>(entries.size());
  if (count == 0) return;
  BeforeChange(0);
  m_block.reset(new USER_DATA[static_cast<size_t>(count)]);
  m_block_size = count;
  m_entries.SetSize(count);
  for (INT_PTR i = 0; i < count; ++i) {
    m_block[i] = *entries[static_cast<size_t>(i)];
    m_entries[i] = &m_block[i];
  }
}

int CKorvoDocData::Count() const { return static_cast<int>(m_entries.GetSize()); }

int CKorvoDocData::Add(const ZK_UUID& id, ZK_wString name) {
  if (ZK_UuidIsNil(id)) return 0;
  if (name.IsEmpty()) return -1;
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
    if (m_entries[i]->m_name.CompareNoCase(name) == 0) return -1;
    if (ZK_UuidCompare(m_entries[i]->m_id, id) == 0) return 0;
  }
  Append(id, name);
  NotifyStancesChanged();
  return 1;
}

bool CKorvoDocData::RemoveByName(ZK_wString name) {
  if (name.IsEmpty()) return false;
  const int index = IndexOfName(name);
  if (index < 0) return false;
  RemoveAt(index);
  NotifyStancesChanged();
  return true;
}

bool CKorvoDocData::Remove(const ZK_UUID& id) {
  const int index = IndexOfId(id);
  if (index < 0) return false;
  RemoveAt(index);
  NotifyStancesChanged();
  return true;
}

int CKorvoDocData::Rename(const wchar_t* old_name, const wchar_t* new_name) {
  return RenameAt(IndexOfName(old_name), new_name);
}

int CKorvoDocData::Rename(const ZK_UUID& id, const wchar_t* new_name) {
  return RenameAt(IndexOfId(id), new_name);
}

CKorvoDocData::USER_DATA* CKorvoDocData::FindByName(const wchar_t* name) const {
  const int index = IndexOfName(name);
  return index < 0 ? nullptr : m_entries[index];
}

CKorvoDocData::USER_DATA* CKorvoDocData::FindById(const ZK_UUID& id) const {
  const int index = IndexOfId(id);
  return index < 0 ? nullptr : m_entries[index];
}

CKorvoStanceIdSet CKorvoDocData::Ids() const {
  CKorvoStanceIdSet ids(Count());
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) ids.Insert(m_entries[i]->m_id);
  return ids;
}

CKorvoNameSet CKorvoDocData::Names() const {
  CKorvoNameSet names(static_cast<size_t>(Count()));
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) names.insert(m_entries[i]->m_name);
  return names;
}

void CKorvoDocData::AddFree(const ZK_UUID& id, const ZK_wString& name) {
  Append(id, name);
  NotifyStancesChanged();
}

bool CKorvoDocData::NameExists(const wchar_t* name) const { return IndexOfName(name) >= 0; }

void CKorvoDocData::RemoveAll() {
  if (!m_entries.IsEmpty()) {
    BeforeChange(0);
    for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
      if (!InBlock(m_entries[i])) delete m_entries[i];
    }
    m_entries.RemoveAll();
  }
  // The block goes even when its entries were all removed one by one before.
  m_block.reset();
  m_block_size = 0;
  m_last_snapshot.reset();
  m_unchanged = 0;
}

CKorvoDocData::USER_DATA* CKorvoDocData::FirstEntry() {
  if (Count() == 0) return nullptr;
  m_cursor = 0;
  return m_entries[0];
}

CKorvoDocData::USER_DATA* CKorvoDocData::NextEntry() {
  if (m_cursor >= Count()) return nullptr;
  ++m_cursor;
  return m_cursor < Count() ? m_entries[m_cursor] : nullptr;
}

bool CKorvoDocData::Write(ZK_BinaryArchive& archive) const {
  if (!archive.WriteString(kKorvoPlaceHolder) || !archive.WriteInt(Count())) return false;
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
    if (!archive.WriteUuid(m_entries[i]->m_id) || !archive.WriteString(m_entries[i]->m_name)) {
      return false;
    }
  }
  return true;
}

bool CKorvoDocData::Read(ZK_BinaryArchive& archive) { return ReadTable(archive, false); }

bool CKorvoDocData::ReadWhole(ZK_BinaryArchive& archive) {
  CKorvoDocData read;
  if (!read.ReadTable(archive, true) || archive.BytesLeft() != 0) return false;
  *this = read;
  return true;
}

bool CKorvoDocData::ReadTable(ZK_BinaryArchive& archive, bool whole) {
  m_cursor = 0;
  RemoveAll();
  ZK_wString place_holder;
  int count = 0;
  if (!archive.ReadString(place_holder) || !archive.ReadInt(count) || (whole && count < 0)) {
    return false;
  }
  for (int i = 0; i < count; ++i) {
    ZK_UUID id;
    ZK_wString name;
    if (!archive.ReadUuid(id) || !archive.ReadString(name)) return false;
    Append(id, name);
  }
  return true;
}

int CKorvoDocData::IndexOfName(const wchar_t* name) const {
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
    if (m_entries[i]->m_name.CompareNoCase(name) == 0) return static_cast<int>(i);
  }
  return -1;
}

int CKorvoDocData::IndexOfId(const ZK_UUID& id) const {
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
    if (ZK_UuidCompare(m_entries[i]->m_id, id) == 0) return static_cast<int>(i);
  }
  return -1;
}

int CKorvoDocData::RenameAt(int index, const wchar_t* new_name) {
  // The new name is judged first: a refused name says -1 even when no stance was found.
  if (IsEmptyName(new_name) || NameExists(new_name)) return -1;
  if (index < 0) return 0;
  BeforeChange(index);
  m_entries[index]->m_name = new_name;
  NotifyStancesChanged();
  return 1;
}

void CKorvoDocData::RemoveAt(int index) {
  BeforeChange(index);
  Free(m_entries[index]);
  m_entries.RemoveAt(index);
}

bool CKorvoDocData::InBlock(const USER_DATA* entry) const {
  const std::less<const USER_DATA*> before;
  return m_block && !before(entry, m_block.get()) && before(entry, m_block.get() + m_block_size);
}

void CKorvoDocData::Free(USER_DATA* entry) {
  if (InBlock(entry)) {
    entry->m_name.Empty();
    return;
  }
  delete entry;
}

void CKorvoDocData::Append(const ZK_UUID& id, const ZK_wString& name) {
  BeforeChange(m_entries.GetSize());
  m_entries.Add(new USER_DATA{id, name});
}

void CKorvoDocData::BeforeChange(INT_PTR first_changed) {
  for (CKorvoUndoScope* scope : m_open_scopes) scope->TakeSnapshot(*this);
  m_unchanged = std::min(m_unchanged, first_changed);
}

void CKorvoDocData::NotifyStancesChanged() const {
  ScheduleStancesPanelRebuild();
  if (CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(m_doc_serial_number)) {
    StanceChanged(*doc);
  }
}
