#include "fuzz/fuzz_session.h"

#include <cstdlib>

#include "data/placement_record.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_dockbar.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "panel/stances_panel.h"
#include "plugin/korvo_plugin.h"

namespace {

const ZK_UUID kFront = ZK_UuidFromString("1E2D3C4B-5A69-4788-9766-554433221100");
const ZK_UUID kSide = ZK_UuidFromString("2F3E4D5C-6B7A-4899-8877-665544332211");

// Notes that a document was made: the registry keeps its table after it closes.
class NewDocumentWatcher : public CTarsaEventWatcher {
 public:
  void OnNewDocument(CTarsaDoc&) override { made = true; }
  bool made = false;
};

// What End puts back: the document's objects in slot order, copies of their records, the table.
struct StartState {
  unsigned int serial_number = 0;
  std::vector<const CTarsaObject*> objects;
  std::vector<CKorvoUserData> records;
  CKorvoDocData table;
  NewDocumentWatcher watcher;
  int rebuilds = 0;
};

StartState& Start() {
  static StartState state;
  return state;
}

// A record moved once since Front was saved, and in Side too when `side`.
CKorvoUserData* Record(bool side) {
  auto* record = new CKorvoUserData();
  record->Add(kFront, ZK_Xform());
  if (side) record->Add(kSide, ZK_Xform::Translation(0, 0, 1));
  record->Transform(ZK_Xform::Translation(1, 0, 0));
  return record;
}

void Add(CTarsaDoc& doc, const wchar_t* name, ZK_Geometry* geometry,
         TarsaObjectMode mode = TarsaObjectMode::normal, bool side = false) {
  CTarsaObjectAttributes attributes;
  attributes.m_name = name;
  attributes.m_mode = mode;
  geometry->AttachUserData(Record(side));
  doc.AddObject(new CTarsaObject(geometry, attributes));
}

// Every object of the document, deleted ones too, lights included, in slot order.
std::vector<const CTarsaObject*> Objects(CTarsaDoc& doc) {
  CTarsaObjectIterator it(doc, ~0u, ~0u);
  it.IncludeLights();
  it.EnableVisibleFilter(false);
  std::vector<const CTarsaObject*> objects;
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    objects.push_back(object);
  }
  return objects;
}

// Loads the plug-in and makes the document. Records are made as a save makes them, without the
// undo steps and replacements of one, which would cost more than most inputs do.
void Build() {
  CTarsaStandIn::LoadPlugIn(KorvoPlugIn());
  CTarsaDoc& doc = *CTarsaStandIn::NewDocument();
  CKorvoDocData& table = *KorvoPlugIn().DocData(doc.RuntimeSerialNumber());
  table.Add(kFront, L"Front");
  table.Add(kSide, L"Side");
  Add(doc, L"door", new ZK_Box({0, 0, 0}, {1, 2, 0.1}), TarsaObjectMode::normal, true);
  Add(doc, L"frame", new ZK_Box({-1, 0, 0}, {2, 3, 0.2}), TarsaObjectMode::hidden);
  Add(doc, L"rail", new ZK_Polyline({{0, 0, 1}, {4, 0, 1}, {4, 4, 1}}));
  ZK_Light light;
  light.m_location = {2, 2, 5};
  light.m_direction = {0, 0, -1};
  light.AttachUserData(Record(false));
  doc.LightTable().AddLight(light);
  CTarsaStandIn::TakeStanceChanges();

  StartState& start = Start();
  start.serial_number = doc.RuntimeSerialNumber();
  start.objects = Objects(doc);
  start.records.clear();
  for (const CTarsaObject* object : start.objects) {
    start.records.push_back(*CKorvoUserData::Of(object));
  }
  start.table = table;
  start.watcher.Register();
  start.watcher.Enable(true);
  start.watcher.made = false;
}

// Takes back what the input did to the session's document: false when that cannot be done in
// place, because the document is gone or holds other objects than it began with.
bool PutBack() {
  StartState& start = Start();
  CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(start.serial_number);
  if (doc == nullptr || doc->UndoRecordingIsActive()) return false;
  while (CTarsaStandIn::Undo(*doc)) {
  }
  if (CTarsaStandIn::UndoStepCount(*doc) > 0) return false;
  CTarsaStandIn::ClearUndo(*doc);
  if (Objects(*doc) != start.objects || !CTarsaStandIn::KeptPlugInData(*doc).empty()) return false;
  doc->UnselectAll();
  // Opening a file into the document reads records and the table in place, which no undo step
  // takes back.
  for (size_t i = 0; i < start.objects.size(); ++i) {
    CKorvoUserData* record = CKorvoUserData::Of(start.objects[i]);
    if (record == nullptr) return false;
    if (!FuzzSession::SameRecord(*record, start.records[i]) ||
        !(record->m_last_xform == start.records[i].m_last_xform)) {
      *record = start.records[i];
    }
  }
  // Closed documents keep their tables in the registry, which only empties whole.
  if (start.watcher.made) KorvoPlugIn().RemoveAllDocData();
  start.watcher.made = false;
  CKorvoDocData& table = *KorvoPlugIn().DocData(start.serial_number);
  if (table != start.table) table = start.table;
  CTarsaStandIn::SetActiveDocument(start.serial_number);
  return true;
}

// Closes the session before the module's and the host's static objects go at exit.
void TearDown() {
  CTarsaStandIn::Reset();
  KorvoPlugIn().RemoveAllDocData();
}

void Rebuild() {
  ++Start().rebuilds;
  TearDown();
  Build();
}

}  // namespace

CTarsaDoc& FuzzSession::Begin() {
  if (Start().serial_number == 0) {
    Build();
    std::atexit(TearDown);
  }
  if (CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(Start().serial_number)) return *doc;
  Rebuild();
  return *CTarsaDoc::FromRuntimeSerialNumber(Start().serial_number);
}

void FuzzSession::End() {
  TarsaUiCloseDockbarTab(g_stances_panel_tab_id);
  for (CTarsaDoc* doc : CTarsaStandIn::Documents()) {
    if (doc->RuntimeSerialNumber() != Start().serial_number) {
      CTarsaStandIn::CloseDocument(doc->RuntimeSerialNumber());
    }
  }
  CTarsaStandIn::CommandLine().Reset();
  CTarsaStandIn::TakeMessageBoxes();
  CTarsaStandIn::TakeStanceChanges();
  CTarsaStandIn::TakeScripts();
  CTarsaStandIn::Answers().Reset();
  if (!PutBack()) Rebuild();
}

int FuzzSession::RebuildCount() { return Start().rebuilds; }

bool FuzzSession::SameRecord(const CKorvoUserData& a, const CKorvoUserData& b) {
  if (!(a.m_accumulated_xform == b.m_accumulated_xform)) return false;
  if (a.m_entries.GetSize() != b.m_entries.GetSize()) return false;
  for (INT_PTR i = 0; i < a.m_entries.GetSize(); ++i) {
    if (!(a.m_entries[i]->m_id == b.m_entries[i]->m_id) ||
        !(a.m_entries[i]->m_xform == b.m_entries[i]->m_xform)) {
      return false;
    }
  }
  return true;
}
