#include "drift/stance_drift.h"

#include <algorithm>
#include <cmath>

#include "operations/every_object_iterator.h"
#include "operations/object_wrapper.h"

namespace {

const double kPi = 3.14159265358979323846;

ZK_3dPoint BoxCentre(const CTarsaObject& object) {
  ZK_3dPoint min, max;
  const ZK_Geometry* geometry = object.Geometry();
  if (geometry == nullptr || !geometry->GetBBox(min, max)) return min;
  return {(min.x + max.x) / 2, (min.y + max.y) / 2, (min.z + max.z) / 2};
}

// The table index of each stance id, looked up once per record entry: open addressing in one
// block, so that a look-up costs a hash and, most often, one comparison, and making it costs one
// allocation however many stances there are.
class StanceIndex {
 public:
  explicit StanceIndex(const CKorvoDocData& table) {
    size_t capacity = 16;
    m_shift = 60;
    while (capacity < 2 * static_cast<size_t>(table.Count())) {
      capacity *= 2;
      --m_shift;
    }
    m_slots.assign(capacity, Slot());
    for (int i = 0; i < table.Count(); ++i) {
      Slot& slot = m_slots[Find(table.m_entries[i]->m_id)];
      if (slot.index < 0) slot = {table.m_entries[i]->m_id, i};
    }
  }
  // The stance's table index, or -1 for an id the table does not know.
  int IndexOf(const ZK_UUID& id) const { return m_slots[Find(id)].index; }

 private:
  struct Slot {
    ZK_UUID id = ZK_nil_uuid;
    int index = -1;
  };
  size_t Find(const ZK_UUID& id) const {
    const size_t mask = m_slots.size() - 1;
    // The hash's high bits: its last multiplication mixes every byte of the id into them.
    size_t at = static_cast<size_t>(static_cast<unsigned long long>(ZK_UuidHash()(id)) >> m_shift);
    while (m_slots[at].index >= 0 && !(m_slots[at].id == id)) at = (at + 1) & mask;
    return at;
  }
  std::vector<Slot> m_slots;
  int m_shift;  // 64 less the table's power of two
};

// To a millionth, so that the noise of the matrix products reads as nothing.
double Rounded(double value) { return std::round(value * 1e6) / 1e6; }

double Length(double x, double y, double z) { return std::sqrt(x * x + y * y + z * z); }

// The angle that the linear part of `move` turns by, its columns scaled to unit length first so
// that a change of size does not read as a turn.
double TurnInDegrees(const ZK_Xform& move, bool& scale_changed) {
  double trace = 0.0;
  scale_changed = false;
  for (int c = 0; c < 3; ++c) {
    const double length = Length(move(0, c), move(1, c), move(2, c));
    if (!(std::fabs(length - 1.0) < kPlacementTolerance)) scale_changed = true;
    if (length > 0.0) trace += move(c, c) / length;
  }
  const double cosine = std::max(-1.0, std::min(1.0, (trace - 1.0) / 2.0));
  return std::acos(cosine) * 180.0 / kPi;
}

}  // namespace

void KorvoStanceSummary::Add(const KorvoMemberDrift& member) {
  ++m_members;
  if (member.m_state != KorvoMemberState::moved) return;
  ++m_moved;
  m_largest_distance = std::max(m_largest_distance, member.m_distance);
  m_largest_angle = std::max(m_largest_angle, member.m_angle);
}

KorvoMemberState MemberState(const CTarsaObject& object, const ZK_Xform& saved,
                             const ZK_Xform& current) {
  if (object.HistoryRecord() != nullptr) return KorvoMemberState::not_restorable;
  return SamePlacement(saved, current) ? KorvoMemberState::at_stance : KorvoMemberState::moved;
}

KorvoMemberDrift MeasureMember(const CTarsaObject& object, const ZK_Xform& saved,
                               const ZK_Xform& current) {
  KorvoMemberDrift member;
  member.m_object = &object;
  member.m_state = MemberState(object, saved, current);
  if (member.m_state != KorvoMemberState::moved) return member;
  const ZK_Xform move = MoveBack(current, saved);
  const ZK_3dPoint from = BoxCentre(object);
  const ZK_3dPoint to = move * from;
  member.m_distance = Rounded(Length(to.x - from.x, to.y - from.y, to.z - from.z));
  member.m_angle = Rounded(TurnInDegrees(move, member.m_scale_changed));
  return member;
}

std::vector<KorvoMemberDrift> MeasureStance(CTarsaDoc& doc, const ZK_UUID& stance_id,
                                            KorvoStanceSummary* summary) {
  std::vector<KorvoMemberDrift> members;
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    const CKorvoUserData* record = CKorvoObjectWrapper(object).GetRecord();
    const ZK_Xform* saved = record ? record->FindXform(stance_id) : nullptr;
    if (saved == nullptr) continue;
    members.push_back(MeasureMember(*object, *saved, record->m_accumulated_xform));
    if (summary) summary->Add(members.back());
  }
  return members;
}

std::vector<std::pair<const CTarsaObject*, ZK_Xform>> MeasureMoves(CTarsaDoc& doc,
                                                                   const ZK_UUID& stance_id) {
  std::vector<std::pair<const CTarsaObject*, ZK_Xform>> moves;
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    const CKorvoUserData* record = CKorvoObjectWrapper(object).GetRecord();
    const ZK_Xform* saved = record ? record->FindXform(stance_id) : nullptr;
    if (saved == nullptr || object->HistoryRecord() != nullptr) continue;
    const ZK_Xform& current = record->m_accumulated_xform;
    moves.emplace_back(object,
                       SamePlacement(*saved, current) ? ZK_Xform() : MoveBack(current, *saved));
  }
  return moves;
}

std::vector<KorvoStanceSummary> MeasureEveryStance(CTarsaDoc& doc, const CKorvoDocData& table) {
  std::vector<KorvoStanceSummary> summaries(table.Count());
  const StanceIndex index(table);
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    const CKorvoUserData* record = CKorvoObjectWrapper(object).GetRecord();
    if (record == nullptr) continue;
    const ZK_Xform& current = record->m_accumulated_xform;
    for (int e = 0; e < record->m_entries.GetCount(); ++e) {
      const CKorvoUserData::USER_DATA& entry = *record->m_entries[e];
      const int stance = index.IndexOf(entry.m_id);
      if (stance < 0) continue;
      KorvoStanceSummary& summary = summaries[static_cast<size_t>(stance)];
      // Most members are in place: they count without a measure of their own.
      if (MemberState(*object, entry.m_xform, current) == KorvoMemberState::moved) {
        summary.Add(MeasureMember(*object, entry.m_xform, current));
      } else {
        ++summary.m_members;
      }
    }
  }
  return summaries;
}
