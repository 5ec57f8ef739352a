// CKorvoMatchCounts: for one document, how many members each stance has and how many of its
// restorable members stand away from their saved placement, so that whether the model matches a
// stance is known without a visit of the document. One visit builds it; after that the event
// watcher counts each object out as it leaves the document and in as it arrives (a replacement
// is both), so that a change costs the objects it touches, whatever the number of stances.
//
// The event watcher owns one per document and drops it wherever following a change object by
// object would be complicated and the change is rare (an open or a merge, the watcher switched
// off or on); the next question builds it again.
#pragma once

#include <unordered_map>

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/zk_uuid.h"

class CKorvoMatchCounts {
 public:
  // Counts in every object that MeasureEveryStance visits, in one visit.
  explicit CKorvoMatchCounts(CTarsaDoc& doc);

  // True when the stance has members and every restorable one is at its saved placement: what
  // MeasureEveryStance's summary of the stance says. False for an id no record carries.
  bool Matches(const ZK_UUID& stance_id) const;
  // Counts the object's record entries in (`sign` 1) or out (-1), as the record and the object
  // stand now: an object is counted out as it was counted in, so callers count out before they
  // change a record in place. Nothing for an object without a record or outside the visit (a
  // reference's).
  void Count(const CTarsaObject& object, int sign);

 private:
  struct Counts {
    int members = 0;
    int away = 0;  // restorable members away from their saved placement
  };
  std::unordered_map<ZK_UUID, Counts, ZK_UuidHash> m_counts;
};
