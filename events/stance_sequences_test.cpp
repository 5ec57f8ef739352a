// Long seeded sequences of everyday actions (save, move, copy, delete, explode, rebuild, restore,
// update, append, rename, delete stance, import, save and open, undo, redo), each run through
// the host's own commands and checked after every step against a simple model of what each
// stance should hold:
//   - the document holds the model's objects, where the model says they are;
//   - the stance table holds the model's stances, ids and names, in order;
//   - an object carries a stance exactly when the model makes it a member: objects join or leave
//     stances only through save, append, deletion of the object or of the stance (copies and what
//     a command makes of a member are members too);
//   - a restore would bring every member to its saved placement (within 0.001);
//   - undo gives the state before the step, redo the state after it, each telling the host once
//     that stances may have changed, and undoing all the way at the end gives the first state;
//   - once the panel's rebuild timer runs out, the panel marks exactly the stances that a full
//     measure of the document finds matched (the marks are kept from each change, not measured).
// A failure prints its seed and the shortest sequence found that still fails.
//
// The normal run tries 200 sequences. More, or other seeds, with one command:
//   KORVO_SEQUENCES=100000 KORVO_FIRST_SEED=1 build/default/events/stance_sequences_test

#include <unistd.h>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "drift/stance_drift.h"
#include "panel/stances_panel.h"
#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

enum Kind {
  kSave,
  kMove,
  kCopy,
  kDelete,
  kExplode,
  kRebuild,
  kRestore,
  kUpdate,
  kAppend,
  kPartRestore,
  kRename,
  kDeleteStance,
  kCheck,
  kImport,
  kSaveAndOpen,
  kUndo,
  kRedo,
  kKindCount
};
const char* const kKindNames[kKindCount] = {
    "save",    "move",   "copy",          "delete",       "explode", "rebuild",
    "restore", "update", "append",        "part restore", "rename",  "delete stance",
    "check",   "import", "save and open", "undo",         "redo"};
const int kWeights[kKindCount] = {3, 3, 2, 2, 1, 1, 3, 1, 1, 2, 1, 1, 2, 1, 1, 3, 2};
const wchar_t* const kNames[] = {L"A", L"B", L"C", L"b"};
constexpr int kNameCount = 4;
constexpr int kSequenceLength = 25;
constexpr size_t kMostObjects = 24;  // copies, explodes and imports stop here

// One user action. Objects and stances are named by number, taken modulo the counts at that
// step, so that any part of a sequence can be replayed.
struct Action {
  Kind kind = kUndo;
  std::vector<int> objects;
  int stance = 0;
  int name = 0;
  ZK_3dVector offset;
};

// The action as a line of the failure report, with only what the action uses.
std::string Describe(const Action& action) {
  const Kind k = action.kind;
  std::ostringstream text;
  text << kKindNames[k];
  if (k >= kRestore && k <= kDeleteStance) text << " stance #" << action.stance;
  if (k <= kRebuild || k == kAppend || k == kPartRestore) {
    for (int object : action.objects) text << " object #" << object;
  }
  if (k == kSave || k == kRename) text << " name " << ZK_wString(kNames[action.name]).ToUtf8();
  if (k == kMove || k == kCopy) {
    text << " by " << action.offset.x << "," << action.offset.y << "," << action.offset.z;
  }
  return text.str();
}

std::vector<Action> Generate(unsigned int seed) {
  std::mt19937 random(seed);
  std::discrete_distribution<int> kinds(std::begin(kWeights), std::end(kWeights));
  std::vector<Action> actions(kSequenceLength);
  for (Action& action : actions) {
    action.kind = static_cast<Kind>(kinds(random));
    action.objects.resize(1 + random() % 2);
    for (int& object : action.objects) object = static_cast<int>(random() % 1000);
    action.stance = static_cast<int>(random() % 1000);
    action.name = static_cast<int>(random() % kNameCount);
    auto step = [&random] { return static_cast<double>(static_cast<int>(random() % 7) - 3); };
    action.offset = {step(), step(), step()};
  }
  return actions;
}

using Points = std::vector<ZK_3dPoint>;

Points Shifted(Points points, const ZK_3dVector& by) {
  for (ZK_3dPoint& p : points) p = {p.x + by.x, p.y + by.y, p.z + by.z};
  return points;
}

bool Near(const Points& a, const Points& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (std::abs(a[i].x - b[i].x) > 1e-6 || std::abs(a[i].y - b[i].y) > 1e-6 ||
        std::abs(a[i].z - b[i].z) > 1e-6) {
      return false;
    }
  }
  return true;
}

// What the document should be: its objects where they are, and its stances with the placement
// each member should take on restore.
struct ModelObject {
  ZK_UUID id;
  Points points;
};
struct ModelStance {
  ZK_UUID id;
  std::wstring name;
  std::map<ZK_UUID, Points> saved;
};
struct Model {
  std::vector<ModelObject> objects;
  std::vector<ModelStance> stances;

  ModelObject* Find(const ZK_UUID& id) {
    for (ModelObject& object : objects) {
      if (object.id == id) return &object;
    }
    return nullptr;
  }
  ModelStance* Named(const std::wstring& name) {
    for (ModelStance& stance : stances) {
      if (ZK_wString(stance.name).CaseFolded() == ZK_wString(name).CaseFolded()) return &stance;
    }
    return nullptr;
  }
  // The object goes, with its memberships; stances left without members go with it.
  void Remove(const ZK_UUID& id) {
    objects.erase(std::find_if(objects.begin(), objects.end(),
                               [&id](const ModelObject& o) { return o.id == id; }));
    for (ModelStance& stance : stances) stance.saved.erase(id);
    stances.erase(std::remove_if(stances.begin(), stances.end(),
                                 [](const ModelStance& s) { return s.saved.empty(); }),
                  stances.end());
  }
  // `made` takes `from`'s memberships, each saved placement mapped by `map`.
  template <class Map>
  void Inherit(const ZK_UUID& from, const ZK_UUID& made, Map&& map) {
    for (ModelStance& stance : stances) {
      const auto found = stance.saved.find(from);
      if (found != stance.saved.end()) stance.saved[made] = map(found->second);
    }
  }
};

struct Outcome {
  bool failed = false;
  size_t step = 0;  // the step after which the check failed; the sequence's size: at the undo
  std::string message;
};

class StanceSequencesTest : public StanceDocumentTest {
 protected:
  void TearDown() override {
    std::remove(library_path_.c_str());
    std::remove(file_path_.c_str());
    StanceDocumentTest::TearDown();
  }

  // Plays the actions on a new session, checking after each one, then undoes all the way.
  Outcome Play(const std::vector<Action>& actions) {
    StartSession();
    Outcome outcome;
    for (size_t i = 0; i < actions.size() && !outcome.failed; ++i) {
      outcome.message = Perform(actions[i]);
      if (outcome.message.empty()) outcome.message = Check();
      outcome.failed = !outcome.message.empty();
      outcome.step = i;
    }
    while (!outcome.failed && !undo_.empty()) {
      Perform(Action());
      outcome.message = Check();
      outcome.failed = !outcome.message.empty();
      outcome.step = actions.size();
    }
    return outcome;
  }

  // Drops one action at a time while the sequence still fails, up to where it fails.
  std::vector<Action> Shrink(std::vector<Action> actions, Outcome outcome) {
    for (bool shorter = true; shorter;) {
      shorter = false;
      if (outcome.step + 1 < actions.size()) actions.resize(outcome.step + 1);
      for (size_t i = 0; i < actions.size() && !shorter; ++i) {
        std::vector<Action> without = actions;
        without.erase(without.begin() + static_cast<long>(i));
        const Outcome tried = Play(without);
        if (!tried.failed) continue;
        actions = without;
        outcome = tried;
        shorter = true;
      }
    }
    return actions;
  }

 private:
  void StartSession() {
    CTarsaStandIn::Reset();
    ASSERT_TRUE(CTarsaStandIn::LoadPlugIn(KorvoPlugIn()));
    const std::string stem = testing::TempDir() + "stance_sequences_" + std::to_string(getpid());
    library_path_ = stem + "_library.tsm";
    file_path_ = stem + "_document.tsm";
    MakeLibrary();
    doc_ = CTarsaStandIn::NewDocument();
    serial_ = doc_->RuntimeSerialNumber();
    model_ = Model();
    undo_.clear();
    redo_.clear();
    for (int i = 0; i < 3; ++i) {
      const double x = 10.0 * i;
      AddToModel(model_, Add(new ZK_Polyline({{x, 0, 0}, {x + 1, 0, 0}, {x + 1, 1, 0}})));
    }
    AddToModel(model_, Add(new ZK_Polyline({{0, 5, 0}, {1, 5, 0}})));
    ASSERT_TRUE(TarsaUiOpenDockbarTab(g_stances_panel_tab_id));
  }

  // A model file of two objects in a stance "Lib", moved away from their saved placement.
  void MakeLibrary() {
    doc_ = CTarsaStandIn::NewDocument();
    serial_ = doc_->RuntimeSerialNumber();
    library_ = Model();
    const ZK_UUID bent = Add(new ZK_Polyline({{0, 20, 0}, {1, 20, 0}, {1, 21, 0}}));
    const ZK_UUID segment = Add(new ZK_Polyline({{0, 25, 0}, {2, 25, 0}}));
    library_.stances.push_back({Save(L"Lib", {bent, segment}), L"Lib", {}});
    for (const ZK_UUID& id : {bent, segment}) {
      library_.stances[0].saved[id] = Placement(id);
      Move(id, ZK_Xform::Translation(0, 0, 3));
      AddToModel(library_, id);
    }
    std::wstring error;
    ASSERT_TRUE(TsWriteModelFile(*doc_, library_path_, error));
    CTarsaStandIn::CloseDocument(serial_);
  }

  void AddToModel(Model& model, const ZK_UUID& id) { model.objects.push_back({id, Placement(id)}); }

  void Macro(const std::wstring& macro) {
    CTarsaStandIn::CommandLine().RunScript(macro.c_str(), 0);
    CTarsaStandIn::CommandLine().TakeOutput();
    CTarsaStandIn::TakeMessageBoxes();
  }
  void StanceMacro(const std::wstring& words) { Macro(L"-_Stance " + words + L" _Enter"); }
  static std::wstring Quoted(const std::wstring& name) { return L"\"" + name + L"\""; }

  // The objects an action names, each once, in the order named; none when there are none.
  std::vector<ZK_UUID> Picked(const Action& action) const {
    std::vector<ZK_UUID> ids;
    if (model_.objects.empty()) return ids;
    for (int pick : action.objects) {
      const ZK_UUID& id = model_.objects[static_cast<size_t>(pick) % model_.objects.size()].id;
      if (std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
    }
    return ids;
  }
  ModelStance* PickedStance(const Action& action) {
    if (model_.stances.empty()) return nullptr;
    return &model_.stances[static_cast<size_t>(action.stance) % model_.stances.size()];
  }

  // Runs the action and moves the model along: a message when the host did something else than
  // the model can follow.
  std::string Perform(const Action& action) {
    const Model before = model_;
    const int steps = CTarsaStandIn::UndoStepCount(*doc_);
    std::string message;
    switch (action.kind) {
      case kUndo:
      case kRedo: {
        const bool redo = action.kind == kRedo;
        TakeStanceChanges();
        Macro(redo ? L"-_Redo" : L"-_Undo");
        std::vector<Model>& from = redo ? redo_ : undo_;
        std::vector<Model>& to = redo ? undo_ : redo_;
        if (from.empty()) return "";
        to.push_back(model_);
        model_ = from.back();
        from.pop_back();
        return TakeStanceChanges() == 1 ? "" : "the host was not told once of the stances";
      }
      case kSaveAndOpen:
        return SaveAndOpen();
      default:
        message = Change(action);
    }
    if (CTarsaStandIn::UndoStepCount(*doc_) > steps) {
      undo_.push_back(before);
      redo_.clear();
    }
    return message;
  }

  std::string Change(const Action& action) {
    const std::vector<ZK_UUID> picked = Picked(action);
    const std::vector<ZK_UUID> before = AllObjects();
    const ZK_3dVector& v = action.offset;
    std::wostringstream offset;
    offset << v.x << L"," << v.y << L"," << v.z;
    const bool crowded = model_.objects.size() >= kMostObjects;
    switch (action.kind) {
      case kSave: {
        if (picked.empty()) return "";
        const std::wstring name = kNames[action.name];
        ModelStance* existing = model_.Named(name);
        StanceMacro(L"_Save " + Quoted(name) + (existing ? L" _Yes " : L" ") + Pick(picked));
        if (existing)
          model_.stances.erase(model_.stances.begin() + (existing - &model_.stances[0]));
        if (Table().Count() == 0) return "the saved stance is not in the table";
        ModelStance stance{Table().m_entries[Table().Count() - 1]->m_id, name, {}};
        for (const ZK_UUID& id : picked) stance.saved[id] = model_.Find(id)->points;
        model_.stances.push_back(stance);
        return "";
      }
      case kMove:
        if (picked.empty()) return "";
        Macro(L"-_Move " + Pick(picked) + L" " + offset.str());
        for (const ZK_UUID& id : picked)
          model_.Find(id)->points = Shifted(model_.Find(id)->points, v);
        return "";
      case kCopy: {
        if (picked.empty() || crowded) return "";
        Macro(L"-_Copy " + Pick(picked) + L" " + offset.str());
        const std::vector<ZK_UUID> copies = AddedSince(before);
        if (copies.size() != picked.size()) return "a copy is missing";
        for (size_t i = 0; i < copies.size(); ++i) {
          model_.objects.push_back({copies[i], Shifted(model_.Find(picked[i])->points, v)});
          model_.Inherit(picked[i], copies[i], [&v](const Points& p) { return Shifted(p, v); });
        }
        return "";
      }
      case kDelete:
        if (picked.empty()) return "";
        Macro(L"-_Delete " + Pick(picked));
        for (const ZK_UUID& id : picked) model_.Remove(id);
        return "";
      case kExplode:
        if (picked.empty() || crowded) return "";
        Macro(L"-_Explode " + Pick(picked));
        return Explode(picked, AddedSince(before));
      case kRebuild: {
        if (picked.empty()) return "";
        Macro(L"-_Rebuild " + Pick(picked));
        const std::vector<ZK_UUID> rebuilt = AddedSince(before);
        if (rebuilt.size() != picked.size()) return "a rebuilt object is missing";
        for (size_t i = 0; i < picked.size(); ++i) {
          model_.objects.push_back({rebuilt[i], model_.Find(picked[i])->points});
          model_.Inherit(picked[i], rebuilt[i], [](const Points& p) { return p; });
          model_.Remove(picked[i]);
        }
        return "";
      }
      case kImport:
        return crowded ? "" : Import(before);
      case kCheck:
        return CheckEveryStance();
      default:
        return ChangeStance(action, picked);
    }
  }

  std::string ChangeStance(const Action& action, const std::vector<ZK_UUID>& picked) {
    ModelStance* stance = PickedStance(action);
    if (stance == nullptr) return "";
    const std::wstring name = Quoted(stance->name);
    switch (action.kind) {
      case kRestore:
        StanceMacro(L"_Restore " + name);
        for (auto& member : stance->saved) model_.Find(member.first)->points = member.second;
        return "";
      case kUpdate:
        StanceMacro(L"_Update " + name);
        for (auto& member : stance->saved) member.second = model_.Find(member.first)->points;
        return "";
      case kAppend:
        if (picked.empty()) return "";
        StanceMacro(L"_Append " + name + L" " + Pick(picked));
        for (const ZK_UUID& id : picked) stance->saved.emplace(id, model_.Find(id)->points);
        return "";
      case kPartRestore:
        if (picked.empty()) return "";
        Macro(L"-_StanceRestoreObjects " + name + L" " + Pick(picked));
        for (const ZK_UUID& id : picked) {
          const auto member = stance->saved.find(id);
          if (member != stance->saved.end()) model_.Find(id)->points = member->second;
        }
        return "";
      case kRename:
        for (int n = 0; n < kNameCount; ++n) {
          const std::wstring new_name = kNames[(action.name + n) % kNameCount];
          if (model_.Named(new_name)) continue;
          StanceMacro(L"_Rename " + name + L" " + Quoted(new_name));
          stance->name = new_name;
          return "";
        }
        return "";
      default:
        StanceMacro(L"_Delete " + name);
        model_.stances.erase(model_.stances.begin() + (stance - &model_.stances[0]));
        return "";
    }
  }

  // StanceCheck's line of each stance against the model: its members, and "matches" exactly when
  // every member is at its saved placement.
  std::string CheckEveryStance() {
    CTarsaStandIn::CommandLine().RunScript(L"-_StanceCheck _Enter", 0);
    std::wistringstream shown(CTarsaStandIn::CommandLine().TakeOutput());
    for (const ModelStance& stance : model_.stances) {
      bool matches = true;
      for (const auto& member : stance.saved) {
        matches = matches && Near(model_.Find(member.first)->points, member.second);
      }
      const std::wstring start =
          stance.name + L": members " + std::to_wstring(stance.saved.size()) + L", ";
      std::wstring line;
      std::getline(shown, line);
      if (line.compare(0, start.size(), start) != 0 ||
          (line.substr(start.size()) == L"matches") != matches) {
        return "the check says " + ZK_wString(line.c_str()).ToUtf8();
      }
    }
    return "";
  }

  // Each exploded polyline of n points gives n - 1 segments, which take its stances.
  std::string Explode(const std::vector<ZK_UUID>& picked, const std::vector<ZK_UUID>& pieces) {
    size_t next = 0;
    for (const ZK_UUID& id : picked) {
      const Points points = model_.Find(id)->points;
      if (points.size() < 3) continue;
      for (size_t i = 0; i + 1 < points.size(); ++i, ++next) {
        if (next >= pieces.size()) return "a piece is missing";
        model_.objects.push_back({pieces[next], {points[i], points[i + 1]}});
        model_.Inherit(id, pieces[next], [i](const Points& p) { return Points{p[i], p[i + 1]}; });
      }
      model_.Remove(id);
    }
    return next == pieces.size() ? "" : "more pieces than segments";
  }

  std::string Import(const std::vector<ZK_UUID>& before) {
    const int stances = Table().Count();
    std::wstring error;
    bool read = false;
    Step([&] { read = TsReadModelFile(*doc_, library_path_, true, false, error); });
    const std::vector<ZK_UUID> added = AddedSince(before);
    if (!read || added.size() != library_.objects.size() || Table().Count() != stances + 1) {
      return "the library did not arrive whole";
    }
    const CKorvoDocData::USER_DATA& entry = *Table().m_entries[stances];
    ModelStance stance{entry.m_id, entry.m_name.Text(), {}};
    for (size_t i = 0; i < added.size(); ++i) {
      const ModelObject& source = library_.objects[i];
      model_.objects.push_back({added[i], source.points});
      stance.saved[added[i]] = library_.stances[0].saved[source.id];
    }
    model_.stances.push_back(stance);
    return "";
  }

  std::string SaveAndOpen() {
    std::wstring error;
    if (!TsWriteModelFile(*doc_, file_path_, error)) return "the model was not saved";
    CTarsaDoc* opened = CTarsaStandIn::OpenDocument(file_path_, error);
    if (opened == nullptr) return "the model did not open";
    CTarsaStandIn::CloseDocument(serial_);
    doc_ = opened;
    serial_ = doc_->RuntimeSerialNumber();
    undo_.clear();
    redo_.clear();
    return "";
  }

  // What is wrong with the document against the model: empty when nothing.
  std::string Check() {
    std::ostringstream wrong;
    if (CTarsaStandIn::UndoStepCount(*doc_) != static_cast<int>(undo_.size()) ||
        CTarsaStandIn::RedoStepCount(*doc_) != static_cast<int>(redo_.size())) {
      wrong << "the host has " << CTarsaStandIn::UndoStepCount(*doc_) << " undo and "
            << CTarsaStandIn::RedoStepCount(*doc_) << " redo steps, the model " << undo_.size()
            << " and " << redo_.size();
      return wrong.str();
    }
    const std::vector<ZK_UUID> actual = AllObjects();
    if (actual.size() != model_.objects.size()) {
      wrong << "the document has " << actual.size() << " objects, the model "
            << model_.objects.size();
      return wrong.str();
    }
    for (size_t i = 0; i < model_.objects.size(); ++i) {
      const ModelObject& object = model_.objects[i];
      if (Object(object.id) == nullptr) return "object " + std::to_string(i) + " is missing";
      if (!Near(Placement(object.id), object.points)) {
        return "object " + std::to_string(i) + " is out of place";
      }
    }
    if (Table().Count() != static_cast<int>(model_.stances.size())) {
      wrong << "the table has " << Table().Count() << " stances, the model "
            << model_.stances.size();
      return wrong.str();
    }
    for (size_t s = 0; s < model_.stances.size(); ++s) {
      const ModelStance& stance = model_.stances[s];
      const CKorvoDocData::USER_DATA& entry = *Table().m_entries[static_cast<int>(s)];
      const std::string name = ZK_wString(stance.name).ToUtf8();
      if (entry.m_id != stance.id || entry.m_name.Text() != stance.name) {
        return "stance " + std::to_string(s) + " should be " + name;
      }
      for (size_t i = 0; i < model_.objects.size(); ++i) {
        const std::string problem = CheckMember(stance, model_.objects[i].id);
        if (!problem.empty()) return "object " + std::to_string(i) + problem + name;
      }
    }
    return CheckMarks();
  }

  // Whether the panel, once its rebuild timer has run out, marks each stance exactly when a full
  // measure of the document finds that the model matches it.
  std::string CheckMarks() {
    CTarsaStandIn::AdvanceClock(500);
    const CListCtrl& list = g_pStancesPanel->List();
    if (g_pStancesPanel->Document() != doc_ || list.GetItemCount() != Table().Count()) {
      return "the panel does not list the document's stances";
    }
    const std::vector<KorvoStanceSummary> measured = MeasureEveryStance(*doc_, Table());
    const UINT mark = INDEXTOSTATEIMAGEMASK(CTsStancesManagerDlg::matches_state_image);
    for (int item = 0; item < list.GetItemCount(); ++item) {
      const size_t index = static_cast<size_t>(list.GetItemData(item));
      if ((list.GetItemState(item, LVIS_STATEIMAGEMASK) == mark) != measured[index].Matches()) {
        return "the panel's mark of " + ZK_wString(list.GetItemText(item).c_str()).ToUtf8() +
               " is wrong";
      }
    }
    return "";
  }

  // Whether the object carries the stance as the model says, and would return to its saved
  // placement on restore.
  std::string CheckMember(const ModelStance& stance, const ZK_UUID& id) {
    const CKorvoUserData* record = RecordOf(id);
    const auto saved = stance.saved.find(id);
    const bool carries = record != nullptr && record->HasEntry(stance.id);
    if (carries != (saved != stance.saved.end())) {
      return carries ? " joined stance " : " left stance ";
    }
    if (!carries) return "";
    ZK_Xform stored;
    record->GetXform(stance.id, stored);
    ZK_Xform move = stored * record->m_accumulated_xform.Inverse();
    Points restored = Placement(id);
    if (!move.IsIdentity(1e-3)) {
      for (ZK_3dPoint& p : restored) p = move * p;
    }
    return Near(restored, saved->second) ? "" : " would not return on restore of ";
  }

  Model model_;
  Model library_;
  std::vector<Model> undo_;
  std::vector<Model> redo_;
  std::string library_path_;
  std::string file_path_;
};

unsigned int FromEnvironment(const char* name, unsigned int otherwise) {
  const char* value = std::getenv(name);
  return value ? static_cast<unsigned int>(std::strtoul(value, nullptr, 10)) : otherwise;
}

TEST_F(StanceSequencesTest, EverydayActionsKeepEveryStanceRight) {
  const unsigned int count = FromEnvironment("KORVO_SEQUENCES", 200);
  const unsigned int first = FromEnvironment("KORVO_FIRST_SEED", 1);
  for (unsigned int seed = first; seed < first + count; ++seed) {
    const std::vector<Action> actions = Generate(seed);
    const Outcome outcome = Play(actions);
    if (!outcome.failed) continue;
    const std::vector<Action> shortest = Shrink(actions, outcome);
    const Outcome shown = Play(shortest);
    std::ostringstream report;
    report << "seed " << seed << ": " << shown.message << " after step " << shown.step + 1
           << " of the shortest failing sequence (object and stance numbers are taken modulo "
              "the counts at each step; a step past the end is the final undo):";
    for (const Action& action : shortest) report << "\n  " << Describe(action);
    ADD_FAILURE() << report.str();
    return;
  }
}

}  // namespace
