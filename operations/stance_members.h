// What the front ends do to the objects of a stance: every operation that visits or extends the
// members of a stance, shared by the host interface, the command and the script object. The
// members of a stance are the objects whose placement record has an entry for its id.
#pragma once

#include "data/stance_table.h"
#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/zk_array.h"

// Saves the objects' present placements as a new stance of that name under a new id, after
// removing the table's stance of that name (ignoring case), whose members keep their entries for
// it. The new id; the nil uuid, with nothing changed, when no id could be made.
ZK_UUID SaveNewStance(CKorvoDocData& table, const wchar_t* name,
                      const ZK_SimpleArray<const CTarsaObject*>& objects);

// Gives each listed object an entry for the stance at its present placement, unless it has one
// already; null objects and objects that cannot take a record are skipped. Every listed object is
// rewritten through a working copy.
void AddToStance(const ZK_UUID& stance_id, const ZK_SimpleArray<const CTarsaObject*>& objects);

// Moves every member without construction history back to its saved placement.
void RestoreStanceMembers(CTarsaDoc& doc, const ZK_UUID& stance_id);

// Saves every member's present placement as its placement in the stance.
void UpdateStanceMembers(CTarsaDoc& doc, const ZK_UUID& stance_id);

// Appends every member to `members`, in the order of the document's objects.
void CollectStanceMembers(CTarsaDoc& doc, const ZK_UUID& stance_id,
                          ZK_SimpleArray<const CTarsaObject*>& members);
