// The event watcher's handling of model files being read: the open stack, the clean-up at the
// end of an open, and the merge of the stances of a file that is imported or referenced.

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "data/undo_scope.h"
#include "events/event_watcher.h"
#include "events/imported_name.h"
#include "operations/object_wrapper.h"
#include "plugin/korvo_plugin.h"

namespace {

// Moves one object's entry from the file's stance id to its new id; the saved placement takes
// along the transform the host applied while adding the object.
void Rekey(const CTarsaObject& object, const ZK_UUID& old_id, const ZK_UUID& new_id) {
  ZK_Xform stored;
  const CKorvoUserData* read_only = CKorvoObjectWrapper(&object).GetRecord();
  if (read_only == nullptr || !read_only->GetXform(old_id, stored)) return;
  auto* record = CKorvoUserData::Of(&object);
  if (record == nullptr) return;
  stored = record->m_last_xform * stored;
  record->Remove(old_id);
  if (!record->HasEntry(new_id)) record->Add(new_id, stored);
}

}  // namespace

ZK_wString ImportedName(std::unordered_set<ZK_wString>& taken, const ZK_wString& name) {
  ZK_wString candidate = name;
  ZK_wString folded = candidate.CaseFolded();
  for (int n = 1; taken.count(folded); ++n) {
    if (n == 1) {
      candidate = name + L" - Copy";
    } else {
      candidate.Format(L"%s - Copy (%d)", name.Array(), n);
    }
    folded = candidate.CaseFolded();
  }
  taken.insert(std::move(folded));
  return candidate;
}

void CKorvoEventWatcher::OnBeginOpenDocument(CTarsaDoc& doc, const wchar_t*, bool merge,
                                             bool reference) {
  DropCounts(doc);
  m_cleanup_requested = false;
  auto* item = new CKorvoOpenDocStackItem();
  item->m_merge = merge;
  item->m_reference = reference;
  m_open_stack.Push(item);
}

void CKorvoEventWatcher::OnEndOpenDocument(CTarsaDoc& doc, const wchar_t*, bool, bool) {
  DropCounts(doc);
  if (const CKorvoOpenDocStackItem* item = m_open_stack.Top()) {
    // Only a file opened as the document brings its own table; a reference's stances were
    // merged, and its objects are outside every visit.
    if (item->m_table_read && !item->m_merge && !item->m_reference) m_cleanup_requested = true;
    m_open_stack.Pop();
  }
  if (!m_cleanup_requested) return;
  KorvoPlugIn().DocData(doc.RuntimeSerialNumber())->RemoveStaleEntriesAndUnusedStances(doc);
}

void CKorvoEventWatcher::ImportStances(CTarsaDoc& doc, ZK_BinaryArchive& archive) {
  const CKorvoOpenDocStackItem* item = m_open_stack.Top();
  if (item == nullptr) return;
  CKorvoDocData imported;
  if (!imported.Read(archive)) return;
  CKorvoUndoScope scope(doc);
  CKorvoDocData& live = *KorvoPlugIn().DocData(doc.RuntimeSerialNumber());

  // Which of the file's objects carry which of the file's stances, found in one pass, so that
  // the merge costs the number of imported entries rather than stances times objects.
  std::unordered_map<ZK_UUID, std::vector<const CTarsaObject*>, ZK_UuidHash> carriers;
  for (INT_PTR i = 0; i < imported.m_entries.GetSize(); ++i) {
    carriers.emplace(imported.m_entries[i]->m_id, std::vector<const CTarsaObject*>());
  }
  for (int i = 0; i < item->m_added_ids.Count(); ++i) {
    const CTarsaObject* object = doc.LookupObject(item->m_added_ids[i]);
    const CKorvoUserData* record = object ? CKorvoObjectWrapper(object).GetRecord() : nullptr;
    if (record == nullptr) continue;
    for (INT_PTR e = 0; e < record->m_entries.GetSize(); ++e) {
      const auto found = carriers.find(record->m_entries[e]->m_id);
      if (found != carriers.end() && (found->second.empty() || found->second.back() != object)) {
        found->second.push_back(object);
      }
    }
  }

  // Names and ids in use, gathered once, so that the merge costs the number of stances rather
  // than its square.
  std::unordered_set<ZK_wString> taken_names = live.FoldedNames();
  CKorvoStanceIdSet taken_ids = live.Ids();
  for (INT_PTR i = 0; i < imported.m_entries.GetSize(); ++i) {
    const CKorvoDocData::USER_DATA& stance = *imported.m_entries[i];
    ZK_UUID new_id;
    if (!ZK_CreateUuid(new_id)) continue;
    const ZK_wString name = ImportedName(taken_names, stance.m_name);
    // As Add would: an empty name or an id in use adds nothing, and the entries move all the same.
    if (!name.IsEmpty() && taken_ids.Insert(new_id)) live.AddFree(new_id, name);
    for (const CTarsaObject* object : carriers[stance.m_id]) Rekey(*object, stance.m_id, new_id);
  }
  live.RemoveUnusedStances();
}
