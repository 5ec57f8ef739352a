// CKorvoTableSnapshot: a stance table's entries as they were at one moment, kept by undo scopes
// and undo records to put the table back. A snapshot never changes once made, and is shared by
// whoever holds it: the scope that took it, the undo record the scope hands to the host, and the
// table itself, which remembers the last snapshot taken of it.
//
// A snapshot holds only the entries that changed since the snapshot before it and refers to that
// one for the leading entries both have. A run of saves, each an undo step, therefore keeps each
// stance about once instead of a copy of the whole table per step.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "data/stance_table.h"

class CKorvoTableSnapshot {
 public:
  using USER_DATA = CKorvoDocData::USER_DATA;

  // The snapshot whose entries are the first `shared` entries of `previous` followed by `changed`.
  // `previous` may be null when `shared` is 0.
  static std::shared_ptr<const CKorvoTableSnapshot> Make(
      std::shared_ptr<const CKorvoTableSnapshot> previous, int shared,
      std::vector<USER_DATA> changed);

  CKorvoTableSnapshot(const CKorvoTableSnapshot&) = delete;
  CKorvoTableSnapshot& operator=(const CKorvoTableSnapshot&) = delete;
  // Releases the snapshots it refers to one after another, so that a long run of them does not
  // nest a destructor call per snapshot.
  ~CKorvoTableSnapshot();

  int Count() const { return m_shared + static_cast<int>(m_changed.size()); }
  // The entries in table order; they live as long as this snapshot.
  std::vector<const USER_DATA*> Entries() const;
  // Bytes this snapshot holds itself; what it shares is counted by the snapshot that holds it.
  size_t OwnSize() const;

 private:
  CKorvoTableSnapshot(std::shared_ptr<const CKorvoTableSnapshot> previous, int shared,
                      std::vector<USER_DATA> changed);

  // Mutable only so that the destructor can unlink the run of snapshots it releases.
  mutable std::shared_ptr<const CKorvoTableSnapshot> m_previous;
  int m_shared;  // leading entries taken from m_previous; each snapshot in a run adds at least one
  std::vector<USER_DATA> m_changed;
};
