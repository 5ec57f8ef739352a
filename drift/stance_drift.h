// How far the model stands from its stances. Every member's placement record holds its saved
// transform S and its accumulated transform C, so S * C^-1 is exactly the move a restore would
// make: measuring it tells, without moving anything, which members are at the stance, how far the
// others would travel and turn, and whether the model as a whole matches the stance. The
// measures are values that the caller owns; they point at document objects only until the
// document next changes.
#pragma once

#include <utility>
#include <vector>

#include "data/stance_table.h"
#include "host/tarsa/tarsa_doc.h"

// Where one member stands against the stance.
enum class KorvoMemberState {
  at_stance,       // every element within the placement tolerance of the saved placement
  moved,           // a restore would move it
  not_restorable,  // a restore passes over it (construction history)
};

struct KorvoMemberDrift {
  const CTarsaObject* m_object = nullptr;
  KorvoMemberState m_state = KorvoMemberState::at_stance;
  // How far the centre of the object's bounding box travels under the restore's move, to a
  // millionth.
  double m_distance = 0.0;
  // The angle, in degrees, that the restore's move turns the object by, to a millionth.
  double m_angle = 0.0;
  // True when the restore's move would also change the object's size.
  bool m_scale_changed = false;
};

// What one stance looks like from the model: counts and the largest move among its members.
struct KorvoStanceSummary {
  int m_members = 0;
  int m_moved = 0;
  double m_largest_distance = 0.0;
  double m_largest_angle = 0.0;
  // True when the stance has members and every restorable one is at the stance.
  bool Matches() const { return m_members > 0 && m_moved == 0; }
  // Counts the member in and keeps its move when it is the largest.
  void Add(const KorvoMemberDrift& member);
};

// Where a member stands against the stance, given its record's saved and current transforms.
KorvoMemberState MemberState(const CTarsaObject& object, const ZK_Xform& saved,
                             const ZK_Xform& current);

// The state of a member of a stance, given its record's saved transform for the stance.
KorvoMemberDrift MeasureMember(const CTarsaObject& object, const ZK_Xform& saved,
                               const ZK_Xform& current);

// Every member of the stance with its state, in the order of the document's objects, in one
// visit of the document; `summary`, when given, receives their summary.
std::vector<KorvoMemberDrift> MeasureStance(CTarsaDoc& doc, const ZK_UUID& stance_id,
                                            KorvoStanceSummary* summary = nullptr);

// Every member of the stance that a restore moves or leaves in place (not those with
// construction history), with the move the restore makes, S × C⁻¹ (the identity for a member at
// the stance), in the order of the document's objects, in one visit of the document.
std::vector<std::pair<const CTarsaObject*, ZK_Xform>> MeasureMoves(CTarsaDoc& doc,
                                                                   const ZK_UUID& stance_id);

// The summary of every stance of the table, in table order, in one visit of the document that
// reads each record entry once.
std::vector<KorvoStanceSummary> MeasureEveryStance(CTarsaDoc& doc, const CKorvoDocData& table);
