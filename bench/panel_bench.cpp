// The Stances panel with many stances: a full rebuild of its list against the host filling a list
// of the same names it sorted once, the same rebuild with objects that carry the stances (what
// the marks of matched stances add), that rebuild after one of the objects moved (what keeping
// the marks up to date from a change costs), and the save dialog's proposed name, when every
// "Position %02d" name up to the count is taken, against formatting every name it tries.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "bench/ratio_table.h"
#include "bench/timed.h"
#include "data/placement_record.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_localize.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "panel/panel_actions.h"
#include "panel/stances_panel.h"
#include "plugin/korvo_plugin.h"

namespace {

void Sizes(benchmark::internal::Benchmark* b) {
  b->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
}

void RebuildSizes(benchmark::internal::Benchmark* b) { Sizes(b->Arg(100000)); }

std::wstring PoseName(int n) { return L"Pose " + std::to_wstring(n) + L" of the model"; }

std::wstring PositionName(int n) {
  ZK_wString name;
  name.Format(L"Position %02d", n);
  return name.Text();
}

// A new active document whose table holds `count` stances named by `name_of`, in a shuffled
// order, and, when `carried`, as many points, each carrying three of them in turn, so that every
// stance has members; the caller closes it.
CTarsaDoc& DocumentWithStances(int count, std::wstring (*name_of)(int), bool carried = false) {
  CTarsaDoc* doc = CTarsaStandIn::NewDocument();
  std::vector<int> order(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) order[static_cast<size_t>(i)] = i + 1;
  std::shuffle(order.begin(), order.end(), std::mt19937(12345));
  CKorvoDocData& table = *KorvoPlugIn().DocData(doc->RuntimeSerialNumber());
  for (int n : order) {
    ZK_UUID id;
    ZK_CreateUuid(id);
    table.m_entries.Add(new CKorvoDocData::USER_DATA{id, name_of(n).c_str()});
  }
  for (int i = 0; carried && i < count; ++i) {
    auto* object = new CTarsaObject(new ZK_Point({double(i), 0, 0}));
    auto* record = new CKorvoUserData();
    for (int k = 0; k < 3; ++k) record->Add(table.m_entries[(i + k) % count]->m_id, ZK_Xform());
    object->AttachGeometryUserData(record);
    doc->AddObject(object);
  }
  return *doc;
}

// Rebuilds the panel's list of a document with `count` stances, carried by objects or not; when
// `moving`, each rebuild follows a move of one carrier, to and fro, in the measured part.
void RebuildPanel(benchmark::State& state, bool carried, bool moving = false) {
  const unsigned int panel_doc =
      DocumentWithStances(static_cast<int>(state.range(0)), &PoseName, carried)
          .RuntimeSerialNumber();
  TarsaUiOpenDockbarTab(g_stances_panel_tab_id);
  CTsStancesManagerDlg& panel = *g_pStancesPanel;
  if (panel.List().GetItemCount() != state.range(0)) state.SkipWithError("the list is not full");
  const UINT marked = INDEXTOSTATEIMAGEMASK(CTsStancesManagerDlg::matches_state_image);
  if (carried && panel.List().GetItemState(0, LVIS_STATEIMAGEMASK) != marked) {
    state.SkipWithError("a matched stance is not marked");
  }
  CTarsaDoc& doc = *CTarsaDoc::FromRuntimeSerialNumber(panel_doc);
  const CTarsaObject* first = CTarsaObjectIterator(doc).First();
  const ZK_UUID mover = first ? first->ModelObjectId() : ZK_nil_uuid;
  double offset = 1.0;
  for (auto _ : state) {
    panel.ListCaptions().Empty();  // the next request finds a change
    Timed([&] {
      if (moving) {
        const ZK_Xform move = ZK_Xform::Translation(0, offset, 0);
        doc.TransformObject(CTarsaObjRef(doc.LookupObject(mover)), move, true, true);
      }
      panel.RebuildListIfChanged();
    });
    offset = -offset;
  }
  TarsaUiCloseDockbarTab(g_stances_panel_tab_id);
  CTarsaStandIn::CloseDocument(panel_doc);
}

void BM_PanelRebuild(benchmark::State& state) { RebuildPanel(state, false); }
BENCHMARK(BM_PanelRebuild)->Apply(RebuildSizes);

void BM_PanelRebuildCarried(benchmark::State& state) { RebuildPanel(state, true); }
BENCHMARK(BM_PanelRebuildCarried)->Apply(RebuildSizes);

void BM_PanelRebuildAfterMove(benchmark::State& state) { RebuildPanel(state, true, true); }
BENCHMARK(BM_PanelRebuildAfterMove)->Apply(RebuildSizes);

// The host filling a sorted list with the same names, which it sorted once beforehand, in order:
// each lands at the end.
void BM_FillListSortedOnce(benchmark::State& state) {
  CTarsaDoc& doc = DocumentWithStances(static_cast<int>(state.range(0)), &PoseName);
  const CKorvoDocData& table = *KorvoPlugIn().DocData(doc.RuntimeSerialNumber());
  std::vector<ZK_wString> names;
  for (int i = 0; i < table.Count(); ++i) names.push_back(table.m_entries[i]->m_name);
  CWnd parent;
  parent.Create(L"Parent", WS_VISIBLE, RECT{0, 0, 200, 400}, nullptr, 0);
  CListCtrl list;
  list.Create(WC_LISTVIEWW, WS_CHILD | LVS_REPORT | LVS_SORTASCENDING, RECT{0, 0, 200, 400},
              &parent, 1);
  for (auto _ : state) {
    Timed([&] {
      list.SendMessage(LVM_DELETEALLITEMS);
      std::vector<int> order(names.size());
      for (size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int>(i);
      std::sort(order.begin(), order.end(), [&names](int a, int b) {
        return names[static_cast<size_t>(a)].CompareNoCase(names[static_cast<size_t>(b)]) < 0;
      });
      for (int i : order) {
        const int item =
            list.InsertItem(LVIF_TEXT, i, names[static_cast<size_t>(i)].Array(), 0, 0, 0, 0);
        list.SetItem(item, 0, LVIF_PARAM, nullptr, 0, 0, 0, i);
      }
    });
  }
  if (list.GetItemCount() != state.range(0)) state.SkipWithError("the list is not full");
  CTarsaStandIn::CloseDocument(doc.RuntimeSerialNumber());
}
BENCHMARK(BM_FillListSortedOnce)->Apply(RebuildSizes);

void BM_NewStanceName(benchmark::State& state) {
  CTarsaDoc& doc = DocumentWithStances(static_cast<int>(state.range(0)), &PositionName);
  if (NewStanceName(doc) != PositionName(static_cast<int>(state.range(0)) + 1)) {
    state.SkipWithError("not the first free name");
  }
  for (auto _ : state) Timed([&] { benchmark::DoNotOptimize(NewStanceName(doc)); });
  CTarsaStandIn::CloseDocument(doc.RuntimeSerialNumber());
}
BENCHMARK(BM_NewStanceName)->Apply(Sizes);

// The host formatting every name the proposal tries, the first free one included: what any
// proposal must do, so that the ratio shows what finding the first free name adds, and that it
// stays as the table grows (a search of the table per candidate would multiply it by the count).
void BM_FormatCandidates(benchmark::State& state) {
  const int candidates = static_cast<int>(state.range(0)) + 1;
  const wchar_t* format = TsLocalizeString(L"Position %02d", 28191);
  ZK_wString name;
  for (auto _ : state) {
    Timed([&] {
      for (int n = 1; n <= candidates; ++n) name.Format(format, n);
    });
    benchmark::DoNotOptimize(name.Array());
  }
  if (name.Text() != PositionName(candidates)) state.SkipWithError("not the last candidate");
}
BENCHMARK(BM_FormatCandidates)->Apply(Sizes);

KORVO_RATIO_ROW("Panel list rebuild / the host filling a list of the names it sorted once",
                "BM_PanelRebuild", "BM_FillListSortedOnce", 1.50);
KORVO_RATIO_ROW("Panel list rebuild, stances carried by objects / carried by none (the marks)",
                "BM_PanelRebuildCarried", "BM_PanelRebuild", 1.10);
// A move costs the host its replacement and the marks one update of the moved object's stances.
KORVO_RATIO_ROW("Panel list rebuild after a member moved / the same rebuild, nothing moved",
                "BM_PanelRebuildAfterMove", "BM_PanelRebuildCarried", 1.10);
// Beside the formatting, the proposal folds every stance's name and every candidate and looks
// each candidate up: about two formattings' worth more.
KORVO_RATIO_ROW("Proposed save name, all numbers taken / formatting every candidate",
                "BM_NewStanceName", "BM_FormatCandidates", 3.00);

}  // namespace
