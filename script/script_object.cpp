#include "script/script_object.h"

#include <iterator>

#include "drift/stance_drift.h"
#include "events/event_watcher.h"
#include "host/tarsa/tarsa_app.h"
#include "operations/stance_members.h"
#include "plugin/korvo_plugin.h"
#include "script/script_values.h"

namespace {

VARIANT Null() {
  VARIANT result;
  VariantInit(&result);
  result.vt = VT_NULL;
  return result;
}

VARIANT Boolean(bool value) {
  VARIANT result;
  VariantInit(&result);
  result.vt = VT_BOOL;
  result.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  return result;
}

// The strings as an array, or Null for none.
VARIANT ArrayOrNull(const ZK_ClassArray<ZK_wString>& strings) {
  COleSafeArray array;
  return StringsToSafeArray(strings, array) ? array.Detach() : Null();
}

CKorvoDocData& TableOf(CTarsaDoc& doc) { return *KorvoPlugIn().DocData(doc.RuntimeSerialNumber()); }

// The id of the table's stance of that name (ignoring case): false when there is none.
bool FindStance(CTarsaDoc& doc, const ZK_wString& name, ZK_UUID& id) {
  const CKorvoDocData::USER_DATA* stance = TableOf(doc).FindByName(name);
  if (stance == nullptr) return false;
  id = stance->m_id;
  return true;
}

VARIANT Number(double value) {
  VARIANT result;
  VariantInit(&result);
  result.vt = VT_R8;
  result.dblVal = value;
  return result;
}

// The variants as an array, or Null when it cannot be made.
VARIANT ArrayOf(std::vector<VARIANT>& elements) {
  COleSafeArray array;
  return VariantsToSafeArray(elements, array) ? array.Detach() : Null();
}

// The active document and the id of its stance named by `name`: false when there is no
// document, the name is unusable, or no stance has it.
bool FindNamedStance(const VARIANT& name, CTarsaDoc*& doc, ZK_UUID& id) {
  doc = TarsaApp().ObsoleteActiveDoc();
  ZK_wString text;
  return doc != nullptr && VariantToString(name, text) && FindStance(*doc, text, id);
}

// Whether Stances sorts: unless a number or a boolean says no.
bool SortFlag(const VARIANT& sort) {
  if (IsMissing(sort)) return true;
  const VARIANT* v = FollowReferences(sort);
  if (v == nullptr) return true;
  switch (v->vt) {
    case VT_I2:
      return v->iVal != 0;
    case VT_I4:
      return v->lVal != 0;
    case VT_R4:
      return v->fltVal != 0;  // NaN too
    case VT_R8:
      return v->dblVal != 0;
    case VT_BOOL:
      return v->boolVal != 0;
    default:
      return true;
  }
}

const DispatchMethod kMethods[] = {
    DispatchMethodOf<&CKorvoScriptObject::SaveStance>(L"SaveStance", 3),
    DispatchMethodOf<&CKorvoScriptObject::Stances>(L"Stances", 1),
    DispatchMethodOf<&CKorvoScriptObject::StanceCount>(L"StanceCount", 2),
    DispatchMethodOf<&CKorvoScriptObject::RestoreStance>(L"RestoreStance", 4),
    DispatchMethodOf<&CKorvoScriptObject::DeleteStance>(L"DeleteStance", 5),
    DispatchMethodOf<&CKorvoScriptObject::RenameStance>(L"RenameStance", 6),
    DispatchMethodOf<&CKorvoScriptObject::SelectObjectsOfStance>(L"SelectObjectsOfStance", 7),
    DispatchMethodOf<&CKorvoScriptObject::UpdateStance>(L"UpdateStance", 8),
    DispatchMethodOf<&CKorvoScriptObject::AppendStance>(L"AppendStance", 9),
    DispatchMethodOf<&CKorvoScriptObject::StanceMatches>(L"StanceMatches", 10),
    DispatchMethodOf<&CKorvoScriptObject::StanceDrift>(L"StanceDrift", 11),
    DispatchMethodOf<&CKorvoScriptObject::StanceMoves>(L"StanceMoves", 12),
};

const InterfaceMapEntry kInterfaces[] = {
    {&CKorvoScriptObject::kDispatchInterfaceId, &CCmdTarget::DispatchPart},
};

}  // namespace

const CRuntimeClass CKorvoScriptObject::kRuntimeClass = {
    "CKorvoScriptObject", sizeof(CKorvoScriptObject), &CCmdTarget::kRuntimeClass};
const IID CKorvoScriptObject::kDispatchInterfaceId = {
    0x9677D424, 0x87F1, 0x4E77, {0xB9, 0xED, 0xF3, 0xC9, 0x54, 0x24, 0x7C, 0x3E}};
const DispatchMap CKorvoScriptObject::kDispatchMap = {&CCmdTarget::kDispatchMap, kMethods,
                                                      std::size(kMethods)};
const InterfaceMap CKorvoScriptObject::kInterfaceMap = {&CCmdTarget::kInterfaceMap, kInterfaces,
                                                        std::size(kInterfaces)};

CKorvoScriptObject::CKorvoScriptObject() { EnableAutomation(); }

const CRuntimeClass* CKorvoScriptObject::GetRuntimeClass() const { return &kRuntimeClass; }

const DispatchMap* CKorvoScriptObject::GetDispatchMap() const { return &kDispatchMap; }

const InterfaceMap* CKorvoScriptObject::GetInterfaceMap() const { return &kInterfaceMap; }

VARIANT CKorvoScriptObject::SaveStance(const VARIANT& objects, const VARIANT& name) {
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  if (doc == nullptr) return Null();
  ZK_SimpleArray<const CTarsaObject*> members;
  if (VariantToObjRefs(objects, members) == 0) return Null();
  ZK_wString text;
  if (!VariantToString(name, text) || text.IsEmpty()) return Null();
  if (ZK_UuidIsNil(SaveNewStance(TableOf(*doc), text, members))) return Null();
  return Boolean(true);
}

VARIANT CKorvoScriptObject::Stances(const VARIANT& sort) {
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  if (doc == nullptr) return Null();
  CKorvoDocData& table = TableOf(*doc);
  ZK_SimpleArray<const ZK_wString*> names;
  for (const auto* entry = table.FirstEntry(); entry; entry = table.NextEntry()) {
    names.Append(&entry->m_name);
  }
  if (SortFlag(sort) && names.Count() >= 2) {
    ZK_qsort(names.Array(), names.Count(), sizeof(names[0]), CompareNamesNoCase);
  }
  ZK_ClassArray<ZK_wString> texts;
  for (int i = 0; i < names.Count(); ++i) texts.Append(*names[i]);
  return ArrayOrNull(texts);
}

VARIANT CKorvoScriptObject::StanceCount() {
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  if (doc == nullptr) return Null();
  VARIANT result;
  VariantInit(&result);
  result.vt = VT_I4;
  result.lVal = TableOf(*doc).Count();
  return result;
}

VARIANT CKorvoScriptObject::RestoreStance(const VARIANT& name) {
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  ZK_wString text;
  if (doc == nullptr || !VariantToString(name, text)) return Null();
  ZK_UUID stance_id;
  if (!FindStance(*doc, text, stance_id)) return Boolean(false);
  RestoreStanceMembers(*doc, stance_id);
  doc->Regen();
  return Boolean(true);
}

VARIANT CKorvoScriptObject::DeleteStance(const VARIANT& name) {
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  ZK_wString text;
  if (doc == nullptr || !VariantToString(name, text)) return Null();
  return Boolean(TableOf(*doc).RemoveByName(text));
}

VARIANT CKorvoScriptObject::RenameStance(const VARIANT& old_name, const VARIANT& new_name) {
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  ZK_wString old_text;
  ZK_wString new_text;
  if (doc == nullptr || !VariantToString(old_name, old_text) ||
      !VariantToString(new_name, new_text)) {
    return Null();
  }
  return Boolean(TableOf(*doc).Rename(old_text, new_text) == 1);
}

VARIANT CKorvoScriptObject::SelectObjectsOfStance(const VARIANT& name) {
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  ZK_wString text;
  if (doc == nullptr || !VariantToString(name, text)) return Null();
  ZK_UUID stance_id;
  if (!FindStance(*doc, text, stance_id)) return Null();
  doc->UnselectAll(false);
  ZK_SimpleArray<const CTarsaObject*> members;
  CollectStanceMembers(*doc, stance_id, members);
  ZK_ClassArray<ZK_wString> ids;
  for (int i = 0; i < members.Count(); ++i) {
    ids.Append(ZK_UuidToString(members[i]->ModelObjectId()));
    members[i]->Select(true, true, true, false);
  }
  doc->Regen();
  return ArrayOrNull(ids);
}

VARIANT CKorvoScriptObject::UpdateStance(const VARIANT& name) {
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  ZK_wString text;
  if (doc == nullptr || !VariantToString(name, text)) return Null();
  ZK_UUID stance_id;
  if (!FindStance(*doc, text, stance_id)) return Boolean(false);
  UpdateStanceMembers(*doc, stance_id);
  doc->Regen();
  return Boolean(true);
}

VARIANT CKorvoScriptObject::AppendStance(const VARIANT& objects, const VARIANT& name) {
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  if (doc == nullptr) return Null();
  ZK_wString text;
  if (!VariantToString(name, text)) return Null();
  ZK_SimpleArray<const CTarsaObject*> members;
  if (VariantToObjRefs(objects, members) == 0) return Null();
  ZK_UUID stance_id;
  if (!FindStance(*doc, text, stance_id)) return Boolean(false);
  AddToStance(stance_id, members);
  doc->Regen();
  return Boolean(true);
}

VARIANT CKorvoScriptObject::StanceMatches(const VARIANT& name) {
  CTarsaDoc* doc = nullptr;
  ZK_UUID stance_id;
  if (!FindNamedStance(name, doc, stance_id)) return Null();
  return Boolean(KorvoPlugIn().EventWatcher()->MatchCounts(*doc).Matches(stance_id));
}

VARIANT CKorvoScriptObject::StanceDrift(const VARIANT& name) {
  CTarsaDoc* doc = nullptr;
  ZK_UUID stance_id;
  if (!FindNamedStance(name, doc, stance_id)) return Null();
  std::vector<VARIANT> moved;
  for (const KorvoMemberDrift& member : MeasureStance(*doc, stance_id)) {
    if (member.m_state != KorvoMemberState::moved) continue;
    std::vector<VARIANT> entry = {StringVariant(ZK_UuidToString(member.m_object->ModelObjectId())),
                                  Number(member.m_distance), Number(member.m_angle)};
    moved.push_back(ArrayOf(entry));
  }
  return ArrayOf(moved);
}

VARIANT CKorvoScriptObject::StanceMoves(const VARIANT& name) {
  CTarsaDoc* doc = nullptr;
  ZK_UUID stance_id;
  if (!FindNamedStance(name, doc, stance_id)) return Null();
  std::vector<VARIANT> moves;
  for (const auto& [object, move] : MeasureMoves(*doc, stance_id)) {
    std::vector<VARIANT> entry = {StringVariant(ZK_UuidToString(object->ModelObjectId()))};
    for (int row = 0; row < 4; ++row) {
      for (int column = 0; column < 4; ++column) entry.push_back(Number(move(row, column)));
    }
    moves.push_back(ArrayOf(entry));
  }
  return ArrayOf(moves);
}
