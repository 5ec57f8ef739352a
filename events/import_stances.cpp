// The event watcher's handling of model files being read: the open stack, the clean-up at the
// end of an open, and the merge of the stances of a file that is imported or referenced.

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "data/undo_scope.h"
#include "events/event_watcher.h"
#include "events/imported_name.h"
#include "plugin/korvo_plugin.h"

namespace {

// One stance of the file as the merge takes it over: its id in the file, its new id (nil when
// none could be made, and its entries stay as they are), and the next stance of the file with
// the same id in the file (-1 for none), for a file that lists an id twice.
struct ImportedStance {
  ZK_UUID m_old_id;
  ZK_UUID m_new_id;
  bool m_moves = false;  // false when no new id could be made: its entries stay as they are
  int m_next_same = -1;
};

// Moves one record's entries over to the new ids: for each of the file's stances in the file's
// order, the record's first entry of its old id not yet moved goes to the end under the new id,
// its saved placement taking along the transform the host applied while adding the object; the
// entries of other stances stay first, in their order. `first_of` gives the first of the file's
// stances of each old id. `moves` and `entries` are room the caller keeps from one record to the
// next, so that the merge allocates nothing per record.
void Rekey(CKorvoUserData& record, const std::vector<ImportedStance>& stances,
           const std::unordered_map<ZK_UUID, int, ZK_UuidHash>& first_of,
           std::vector<std::pair<int, int>>& moves,
           std::vector<CKorvoUserData::USER_DATA>& entries) {
  using Entry = CKorvoUserData::USER_DATA;
  const int count = static_cast<int>(record.m_entries.GetSize());
  if (count == 0) return;
  const Entry* own = record.m_entries[0];
  // A record lists each stance once: an entry that repeats an id listed before it (a damaged or
  // crafted file) is not looked up again, and is dropped when the record is rewritten, so that no
  // copy keeps an id of the file's own.
  const auto repeats = [own](int e) {
    return std::any_of(own, own + e,
                       [&](const Entry& before) { return before.m_id == own[e].m_id; });
  };
  moves.clear();  // (the file's stance, the entry it moves)
  for (int e = 0; e < count; ++e) {
    if (repeats(e)) continue;
    const auto found = first_of.find(own[e].m_id);
    if (found == first_of.end()) continue;
    for (int s = found->second; s >= 0; s = stances[static_cast<size_t>(s)].m_next_same) {
      if (stances[static_cast<size_t>(s)].m_moves) moves.emplace_back(s, -1);
    }
  }
  if (moves.empty()) return;
  std::sort(moves.begin(), moves.end());
  // Each move takes the first entry of its old id that no earlier move took.
  int moved = 0;
  for (auto move = moves.begin(); move != moves.end(); ++move) {
    const ZK_UUID& old_id = stances[static_cast<size_t>(move->first)].m_old_id;
    for (int e = 0; e < count && move->second < 0; ++e) {
      if (own[e].m_id == old_id && std::none_of(moves.begin(), move, [e](const auto& earlier) {
            return earlier.second == e;
          })) {
        move->second = e;
        ++moved;
      }
    }
  }
  if (moved == 0) return;
  entries.clear();
  for (int e = 0; e < count; ++e) {
    const bool taken = std::any_of(moves.begin(), moves.end(),
                                   [e](const std::pair<int, int>& m) { return m.second == e; });
    if (!taken && !repeats(e)) entries.push_back(own[e]);
  }
  // The new ids are made fresh for this merge: none is in the record already.
  for (const auto& [s, entry] : moves) {
    if (entry >= 0) {
      entries.push_back(
          {stances[static_cast<size_t>(s)].m_new_id, record.m_last_xform * own[entry].m_xform});
    }
  }
  record.SetEntries(entries.data(), static_cast<int>(entries.size()));
}

}  // namespace

ZK_wString ImportedName(CKorvoNameSet& taken, const ZK_wString& name) {
  ZK_wString candidate = name;
  for (int n = 1; taken.count(candidate); ++n) {
    if (n == 1) {
      candidate = name + L" - Copy";
    } else {
      candidate.Format(L"%s - Copy (%d)", name.Array(), n);
    }
  }
  taken.insert(candidate);
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

  // Names and ids in use, gathered once, so that the merge costs the number of stances rather
  // than its square.
  CKorvoNameSet taken_names = live.Names();
  CKorvoStanceIdSet taken_ids = live.Ids();
  std::vector<ImportedStance> stances(static_cast<size_t>(imported.m_entries.GetSize()));
  std::unordered_map<ZK_UUID, int, ZK_UuidHash> first_of;
  for (INT_PTR i = 0; i < imported.m_entries.GetSize(); ++i) {
    const CKorvoDocData::USER_DATA& stance = *imported.m_entries[i];
    ImportedStance& taken_over = stances[static_cast<size_t>(i)];
    taken_over.m_old_id = stance.m_id;
    taken_over.m_moves = ZK_CreateUuid(taken_over.m_new_id);
    if (!taken_over.m_moves) continue;
    const ZK_wString name = ImportedName(taken_names, stance.m_name);
    // As Add would: an empty name or an id in use adds nothing, and the entries move all the same.
    if (!name.IsEmpty() && taken_ids.Insert(taken_over.m_new_id)) {
      live.AddFree(taken_over.m_new_id, name);
    }
  }
  // The file's stances of each old id, chained in the file's order.
  for (int i = static_cast<int>(stances.size()) - 1; i >= 0; --i) {
    auto [found, added] = first_of.emplace(stances[static_cast<size_t>(i)].m_old_id, i);
    if (!added) {
      stances[static_cast<size_t>(i)].m_next_same = found->second;
      found->second = i;
    }
  }

  // Each of the file's objects once, so that the merge costs the number of imported entries
  // rather than stances times objects.
  std::vector<std::pair<int, int>> moves;
  std::vector<CKorvoUserData::USER_DATA> entries;
  for (int i = 0; i < item->m_added_ids.Count(); ++i) {
    CKorvoUserData* record = CKorvoUserData::Of(doc.LookupObject(item->m_added_ids[i]));
    if (record) Rekey(*record, stances, first_of, moves, entries);
  }
  live.RemoveUnusedStances();
}
