#include "data/stance_table.h"

#include <functional>
#include <utility>

#include "data/place_holder.h"
#include "data/undo_scope.h"
#include "host/tarsa/tarsa_app.h"
#include "panel/stances_panel.h"

namespace {

bool IsEmptyName(const wchar_t* name) { return name == nullptr || *name == 0; }

}  // namespace

CKorvoDocData::CKorvoDocData() = default;

CKorvoDocData::CKorvoDocData(const CKorvoDocData& source) { *this = source; }

CKorvoDocData& CKorvoDocData::operator=(const CKorvoDocData& source) {
  if (this == &source) return *this;
  m_cursor = 0;
  RemoveAll();
  const INT_PTR count = source.m_entries.GetSize();
  if (count == 0) return *this;
  BeforeChange();
  m_block.reset(new USER_DATA[static_cast<size_t>(count)]);
  m_block_size = count;
  m_entries.SetSize(count);
  for (INT_PTR i = 0; i < count; ++i) {
    m_block[i] = *source.m_entries[i];
    m_entries[i] = &m_block[i];
  }
  return *this;
}

CKorvoDocData::~CKorvoDocData() { RemoveAll(); }

bool CKorvoDocData::operator==(const CKorvoDocData& other) const {
  if (this == &other) return true;
  if (Count() != other.Count()) return false;
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
    const USER_DATA* a = m_entries[i];
    const USER_DATA* b = other.m_entries[i];
    if (ZK_UuidCompare(a->m_id, b->m_id) != 0 || a->m_name != b->m_name) return false;
  }
  return true;
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

std::unordered_set<ZK_wString> CKorvoDocData::FoldedNames() const {
  std::unordered_set<ZK_wString> names(static_cast<size_t>(Count()));
  for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) names.insert(m_entries[i]->m_name.CaseFolded());
  return names;
}

void CKorvoDocData::AddFree(const ZK_UUID& id, const ZK_wString& name) {
  Append(id, name);
  NotifyStancesChanged();
}

bool CKorvoDocData::NameExists(const wchar_t* name) const { return IndexOfName(name) >= 0; }

void CKorvoDocData::RemoveAll() {
  if (!m_entries.IsEmpty()) {
    BeforeChange();
    for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) {
      if (!InBlock(m_entries[i])) delete m_entries[i];
    }
    m_entries.RemoveAll();
  }
  // The block goes even when its entries were all removed one by one before.
  m_block.reset();
  m_block_size = 0;
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
  BeforeChange();
  m_entries[index]->m_name = new_name;
  NotifyStancesChanged();
  return 1;
}

void CKorvoDocData::RemoveAt(int index) {
  BeforeChange();
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
  BeforeChange();
  m_entries.Add(new USER_DATA{id, name});
}

void CKorvoDocData::BeforeChange() {
  for (CKorvoUndoScope* scope : m_open_scopes) scope->TakeSnapshot(*this);
}

bool CKorvoDocData::HandEntriesToSnapshots() {
  CKorvoDocData* handed = nullptr;
  for (CKorvoUndoScope* scope : m_open_scopes) {
    if (scope->HasSnapshot()) continue;
    if (handed != nullptr) {
      scope->TakeSnapshot(*handed);
      continue;
    }
    handed = new CKorvoDocData();
    for (INT_PTR i = 0; i < m_entries.GetSize(); ++i) handed->m_entries.Add(m_entries[i]);
    handed->m_block = std::move(m_block);
    handed->m_block_size = m_block_size;
    m_block_size = 0;
    scope->KeepSnapshot(handed);
  }
  return handed != nullptr;
}

void CKorvoDocData::NotifyStancesChanged() const {
  ScheduleStancesPanelRebuild();
  if (CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(m_doc_serial_number)) {
    StanceChanged(*doc);
  }
}
