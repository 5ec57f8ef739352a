#include "data/table_snapshot.h"

#include <algorithm>
#include <utility>

std::shared_ptr<const CKorvoTableSnapshot> CKorvoTableSnapshot::Make(
    std::shared_ptr<const CKorvoTableSnapshot> previous, int shared,
    std::vector<USER_DATA> changed) {
  // A snapshot that would take nothing of its own from `previous` refers to what `previous`
  // refers to instead, so that reading the entries visits at most one snapshot per entry.
  while (previous && shared <= previous->m_shared) previous = previous->m_previous;
  if (!previous) shared = 0;
  return std::shared_ptr<const CKorvoTableSnapshot>(
      new CKorvoTableSnapshot(std::move(previous), shared, std::move(changed)));
}

CKorvoTableSnapshot::CKorvoTableSnapshot(std::shared_ptr<const CKorvoTableSnapshot> previous,
                                         int shared, std::vector<USER_DATA> changed)
    : m_previous(std::move(previous)), m_shared(shared), m_changed(std::move(changed)) {}

CKorvoTableSnapshot::~CKorvoTableSnapshot() {
  std::shared_ptr<const CKorvoTableSnapshot> next = std::move(m_previous);
  while (next && next.use_count() == 1) next = std::move(next->m_previous);
}

std::vector<const CKorvoTableSnapshot::USER_DATA*> CKorvoTableSnapshot::Entries() const {
  std::vector<const USER_DATA*> entries(static_cast<size_t>(Count()));
  // Each snapshot of the run gives the entries from its m_shared up to where the one after it
  // takes over.
  int end = Count();
  for (const CKorvoTableSnapshot* snapshot = this; snapshot && end > 0;
       snapshot = snapshot->m_previous.get()) {
    for (int i = snapshot->m_shared; i < end; ++i) {
      entries[static_cast<size_t>(i)] =
          &snapshot->m_changed[static_cast<size_t>(i - snapshot->m_shared)];
    }
    end = std::min(end, snapshot->m_shared);
  }
  return entries;
}

size_t CKorvoTableSnapshot::OwnSize() const {
  return sizeof(*this) + m_changed.capacity() * sizeof(USER_DATA);
}
