#include "shell/action_report.h"

#include <algorithm>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_stance_dynamic_access.h"

namespace {

std::wstring Count(int count, const wchar_t* what) {
  return std::to_wstring(count) + (count == 1 ? L" object " : L" objects ") + what;
}

// "Stances added: A, B." for a non-empty list, else nothing.
std::wstring Line(const wchar_t* what, const std::vector<std::wstring>& names) {
  if (names.empty()) return L"";
  std::wstring line = std::wstring(L"Stances ") + what + L": ";
  for (size_t i = 0; i < names.size(); ++i) line += (i ? L", " : L"") + names[i];
  return line + L".\n";
}

bool SameName(const std::wstring& a, const std::wstring& b) {
  return ZK_wString(a.c_str()).CompareNoCase(b.c_str()) == 0;
}

}  // namespace

CTsActionReport& TsActionReport() {
  static CTsActionReport report;
  return report;
}

void CTsActionReport::Start() {
  Register();
  Enable(true);
}

void CTsActionReport::OnBeginCommand(const CTarsaCommand& command,
                                     const CTarsaCommandContext& context) {
  if (m_new_step != 0) {
    m_step_names[m_new_step] = const_cast<CTarsaCommand&>(command).EnglishCommandName();
    m_new_step = 0;
  }
  if (m_depth++ > 0) return;
  m_objects.clear();
  CTarsaDoc* doc = context.Document();
  m_doc_serial_number = doc ? doc->RuntimeSerialNumber() : 0;
  m_stances_before = Stances(doc);
}

void CTsActionReport::OnEndCommand(const CTarsaCommand&, const CTarsaCommandContext&,
                                   CTarsaCommand::result) {
  if (m_depth == 0 || --m_depth > 0) return;
  // A document the command closed, or opened in place of the old one, is not compared.
  CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(m_doc_serial_number);
  const std::wstring report = ObjectCounts() + (doc ? StanceChanges(Stances(doc)) : std::wstring());
  m_objects.clear();
  m_stances_before.clear();
  if (!report.empty()) TarsaApp().Print(L"%s", report.c_str());
}

void CTsActionReport::OnBeginOpenDocument(CTarsaDoc&, const wchar_t*, bool merge, bool) {
  if (!merge) ++m_opening;
}

void CTsActionReport::OnEndOpenDocument(CTarsaDoc&, const wchar_t*, bool merge, bool) {
  if (!merge && m_opening > 0) --m_opening;
}

void CTsActionReport::OnAddObject(CTarsaDoc&, CTarsaObject& object) { Note(object, false, true); }

void CTsActionReport::OnDeleteObject(CTarsaDoc&, CTarsaObject& object) {
  Note(object, true, false);
}

void CTsActionReport::OnUnDeleteObject(CTarsaDoc&, CTarsaObject& object) {
  Note(object, false, true);
}

void CTsActionReport::UndoEvent(undo_event event, unsigned int serial, const CTarsaCommand*) {
  if (event == begin_recording) m_new_step = serial;
  if (event != begin_undo && event != begin_redo) return;
  const auto name = m_step_names.find(serial);
  if (name == m_step_names.end()) return;
  TarsaApp().Print(event == begin_undo ? L"Undo %s.\n" : L"Redo %s.\n", name->second.c_str());
}

void CTsActionReport::Note(const CTarsaObject& object, bool before, bool now) {
  if (m_depth == 0 || m_opening > 0) return;
  const auto inserted = m_objects.emplace(object.ModelObjectId(), ObjectChange());
  ObjectChange& change = inserted.first->second;
  const unsigned int shape = object.Geometry() ? object.Geometry()->DataCRC(0) : 0;
  if (inserted.second) {
    change.before = before;
    change.shape_before = shape;
  }
  change.now = now;
  if (now) change.shape_now = shape;
}

std::vector<CTsActionReport::Stance> CTsActionReport::Stances(CTarsaDoc* doc) {
  std::vector<Stance> stances;
  ITsStanceDynamicAccess* access = CTarsaStandIn::StanceDynamicAccess();
  if (access == nullptr || doc == nullptr) return stances;
  ZK_SimpleArray<ZK_UUID> ids;
  access->GetStanceIds(*doc, ids);
  for (int i = 0; i < ids.Count(); ++i) {
    ZK_wString name;
    ZK_SimpleArray<const CTarsaObject*> objects;
    access->GetStanceName(*doc, ids[i], name);
    access->GetStanceObjects(*doc, ids[i], objects);
    Stance stance{ids[i], name.Text(), {}};
    for (int j = 0; j < objects.Count(); ++j) stance.objects.push_back(objects[j]->ModelObjectId());
    stances.push_back(std::move(stance));
  }
  return stances;
}

std::wstring CTsActionReport::ObjectCounts() const {
  int added = 0, moved = 0, deleted = 0;
  for (const auto& entry : m_objects) {
    const ObjectChange& change = entry.second;
    added += !change.before && change.now;
    moved += change.before && change.now && change.shape_before != change.shape_now;
    deleted += change.before && !change.now;
  }
  std::wstring line;
  const std::pair<int, const wchar_t*> counts[] = {
      {added, L"added"}, {moved, L"moved"}, {deleted, L"deleted"}};
  for (const auto& count : counts) {
    if (count.first > 0) line += (line.empty() ? L"" : L", ") + Count(count.first, count.second);
  }
  return line.empty() ? line : line + L".\n";
}

std::wstring CTsActionReport::StanceChanges(const std::vector<Stance>& after) const {
  const auto find = [](const std::vector<Stance>& stances, const ZK_UUID& id) -> const Stance* {
    for (const Stance& stance : stances) {
      if (stance.id == id) return &stance;
    }
    return nullptr;
  };
  std::vector<std::wstring> added, removed, replaced, renamed;
  for (const Stance& stance : after) {
    const Stance* old = find(m_stances_before, stance.id);
    if (old == nullptr) {
      added.push_back(stance.name);
    } else if (old->name != stance.name) {
      renamed.push_back(old->name + L" to " + stance.name);
    }
  }
  for (const Stance& stance : m_stances_before) {
    if (find(after, stance.id)) continue;
    // Saved again under its name: one stance replaced, not one removed and one added.
    const auto again = std::find_if(added.begin(), added.end(), [&](const std::wstring& name) {
      return SameName(name, stance.name);
    });
    if (again != added.end()) {
      replaced.push_back(*again);
      added.erase(again);
      continue;
    }
    bool objects_deleted = !stance.objects.empty();
    for (const ZK_UUID& id : stance.objects) {
      const auto change = m_objects.find(id);
      objects_deleted = objects_deleted && change != m_objects.end() && !change->second.now;
    }
    removed.push_back(stance.name + (objects_deleted ? L" (its last object was deleted)" : L""));
  }
  return Line(L"added", added) + Line(L"replaced", replaced) + Line(L"removed", removed) +
         Line(L"renamed", renamed);
}
