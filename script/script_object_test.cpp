#include "script/script_object.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "testing/script_values.h"
#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

const ZK_Xform kShift = ZK_Xform::Translation(7, -3, 2);
const ZK_Xform kTurn = ZK_Xform::Rotation(0.9, {1, 1, 0}, {2, -1, 5});

// The script object's methods in the order of their DISPIDs, from 1, with how many arguments each
// takes. Scripts may keep DISPIDs from an earlier session: they never change.
const std::pair<const wchar_t*, size_t> kMethods[] = {
    {L"Stances", 1},
    {L"StanceCount", 0},
    {L"SaveStance", 2},
    {L"RestoreStance", 1},
    {L"DeleteStance", 1},
    {L"RenameStance", 2},
    {L"SelectObjectsOfStance", 1},
    {L"UpdateStance", 1},
    {L"AppendStance", 2},
    {L"StanceMatches", 1},
    {L"StanceDrift", 1},
    {L"StanceMoves", 1},
};

// Scenarios of a script that drives the plug-in: values made as a script engine makes them, and
// calls by name through the script object's IDispatch, which the host asked the plug-in for.
class ScriptObjectTest : public StanceDocumentTest, public ScriptValues {
 protected:
  void TearDown() override {
    ExpectEveryStringFreed();
    StanceDocumentTest::TearDown();
  }
  // Calls a method of the plug-in's script object; the fixture owns the result.
  const VARIANT& Call(const wchar_t* method, std::vector<VARIANT> arguments = {}) {
    auto* dispatch = static_cast<IDispatch*>(KorvoPlugIn().GetScriptObjectInterface(IID_IDispatch));
    const VARIANT& result = ScriptValues::Call(*dispatch, method, std::move(arguments));
    EXPECT_EQ(dispatch->Release(), 1u);
    return result;
  }
  VARIANT& Ids(const std::vector<ZK_UUID>& ids) {
    std::vector<std::wstring> texts;
    for (const ZK_UUID& id : ids) texts.push_back(ZK_UuidToString(id).Text());
    return Array(VT_VARIANT, 0, texts);
  }
  static std::wstring IdText(const ZK_UUID& id) { return ZK_UuidToString(id).Text(); }
};

TEST_F(ScriptObjectTest, HostGetsIUnknownAndIDispatchOnlyAndReferencesBalance) {
  CTarsaPlugIn& plug_in = KorvoPlugIn();
  IUnknown* unknown = plug_in.GetScriptObjectInterface(IID_IUnknown);
  IUnknown* dispatch = plug_in.GetScriptObjectInterface(IID_IDispatch);
  ASSERT_NE(unknown, nullptr);
  EXPECT_EQ(dispatch, unknown);
  void* by_id = nullptr;
  EXPECT_EQ(unknown->QueryInterface(CKorvoScriptObject::kDispatchInterfaceId, &by_id), S_OK);
  EXPECT_EQ(by_id, dispatch);
  EXPECT_EQ(plug_in.GetScriptObjectInterface(CKorvoScriptObject::kDispatchInterfaceId), nullptr);
  DISPID expected = 0;
  for (const auto& method : kMethods) {
    std::wstring name = method.first;
    LPOLESTR names[] = {name.data()};
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(static_cast<IDispatch*>(dispatch)->GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK);
    EXPECT_EQ(id, ++expected) << name;
  }
  EXPECT_EQ(unknown->Release(), 3u);
  EXPECT_EQ(dispatch->Release(), 2u);
  EXPECT_EQ(static_cast<IUnknown*>(by_id)->Release(), 1u);  // the plug-in's own reference stays
}

// A script's session on the active document. Each change tells the host, but none is an undo
// step of its own; a restore, an update, an append or a selection regenerates the views.
TEST_F(ScriptObjectTest, ChangesWorkOnTheStancesObjectsAndTellTheHostWithoutAnUndoStep) {
  const ZK_UUID box = AddBox(), point = Add(new ZK_Point({1, 1, 1}));
  const ZK_UUID built = AddBuilt(), hidden = AddBox(TarsaObjectMode::hidden);
  const int steps = CTarsaStandIn::UndoStepCount(*doc_);
  EXPECT_TRUE(IsTrue(Call(L"SaveStance", {Text(IdText(box)), Text(L"Front")})));
  EXPECT_EQ(TakeStanceChanges(), 1);
  const ZK_UUID first = StanceId(L"Front");
  EXPECT_TRUE(IsTrue(Call(L"SaveStance", {Ids({point, built, hidden}), Text(L"FRONT")})));
  EXPECT_EQ(Names(), std::vector<std::wstring>{L"FRONT"});
  EXPECT_EQ(Members(L"Front"), (std::vector<ZK_UUID>{point, built, hidden}));
  EXPECT_TRUE(RecordOf(box)->HasEntry(first));  // kept until records are cleaned

  Move(point, kTurn);
  const auto updated = Placement(point);
  EXPECT_TRUE(IsTrue(Call(L"UpdateStance", {Text(L"front")})));
  EXPECT_TRUE(IsTrue(Call(L"AppendStance", {Ids({box, point}), Text(L"Front")})));
  const auto appended = Placement(box);
  Move(box, kShift);
  Move(point, kShift);
  int regens = CTarsaStandIn::RegenCount(*doc_);
  EXPECT_TRUE(IsTrue(Call(L"RestoreStance", {Text(L"front")})));
  EXPECT_EQ(CTarsaStandIn::RegenCount(*doc_), ++regens);
  ExpectNear(Placement(point), updated);
  ExpectNear(Placement(box), appended);

  EXPECT_EQ(Texts(Call(L"SelectObjectsOfStance", {Text(L"front")})),
            (std::vector<std::wstring>{IdText(box), IdText(point), IdText(built), IdText(hidden)}));
  EXPECT_EQ(CTarsaStandIn::RegenCount(*doc_), ++regens) << "the views show the selection";
  EXPECT_TRUE(Object(built)->IsSelected());
  AddEntries({L"Empty"});
  EXPECT_TRUE(IsTrue(Call(L"RestoreStance", {Text(L"Empty")})));
  EXPECT_TRUE(IsNull(Call(L"SelectObjectsOfStance", {Text(L"Empty")})));
  EXPECT_FALSE(Object(box)->IsSelected());  // cleared all the same

  TakeStanceChanges();
  EXPECT_TRUE(IsTrue(Call(L"RenameStance", {Text(L"front"), Text(L"Side")})));
  EXPECT_TRUE(IsTrue(Call(L"DeleteStance", {Text(L"side")})));
  EXPECT_EQ(TakeStanceChanges(), 2);
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps);
}

// A call that cannot be done answers False when the stance is not there or the new name is
// taken, Null when an argument cannot be used or there is no active document, and changes
// nothing.
TEST_F(ScriptObjectTest, CallsThatCannotBeDoneAnswerFalseOrNullAndChangeNothing) {
  const ZK_UUID box = AddBox();
  Save(L"Front", {box});
  Save(L"Side", {box});
  CTarsaDoc* other = CTarsaStandIn::NewDocument();
  auto* elsewhere = new CTarsaObject(new ZK_Point({0, 0, 0}));
  other->AddObject(elsewhere);
  CTarsaStandIn::SetActiveDocument(serial_);
  Move(box, kShift);
  const auto moved = Placement(box);
  TakeStanceChanges();

  const VARIANT& id = Text(IdText(box));
  const VARIANT& foreign = Text(IdText(elsewhere->ModelObjectId()));
  const struct {
    const wchar_t* method;
    std::vector<VARIANT> arguments;
    bool null;  // else False
  } calls[] = {
      {L"SaveStance", {id, Text(L"")}, true},
      {L"SaveStance", {id, Missing()}, true},
      {L"SaveStance", {Missing(), Text(L"Back")}, true},
      {L"SaveStance", {I4(1), Text(L"Back")}, true},
      {L"SaveStance", {foreign, Text(L"Back")}, true},
      {L"RenameStance", {Text(L"Side"), Text(L"FRONT")}, false},
      {L"RenameStance", {Text(L"Top"), Text(L"Back")}, false},
      {L"RenameStance", {Text(L"Side")}, true},
      {L"DeleteStance", {Text(L"Back")}, false},
      {L"DeleteStance", {Missing()}, true},
      {L"RestoreStance", {Text(L"Back")}, false},
      {L"UpdateStance", {Text(L"Back")}, false},
      {L"UpdateStance", {Missing()}, true},
      {L"AppendStance", {id, Text(L"Back")}, false},
      {L"AppendStance", {id, Missing()}, true},
      {L"AppendStance", {Ids({ZK_nil_uuid}), Text(L"Front")}, true},
      {L"SelectObjectsOfStance", {Text(L"Back")}, true},
      {L"StanceMatches", {Text(L"Back")}, true},
      {L"StanceDrift", {Missing()}, true},
      {L"StanceMoves", {NewValue(VT_EMPTY)}, true},
  };
  for (const auto& call : calls) {
    const VARIANT& answer = Call(call.method, call.arguments);
    EXPECT_TRUE(call.null ? IsNull(answer) : IsFalse(answer))
        << call.method << " " << &call - calls;
  }
  {
    ZK_TestFailCreateUuid fail;
    EXPECT_TRUE(IsNull(Call(L"SaveStance", {id, Text(L"Front")})));
  }
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Front", L"Side"}));
  EXPECT_EQ(TakeStanceChanges(), 0);
  ExpectNear(Placement(box), moved);

  ASSERT_TRUE(CTarsaStandIn::CloseDocument(other->RuntimeSerialNumber()));
  ASSERT_TRUE(CTarsaStandIn::CloseDocument(serial_));
  for (const auto& [method, count] : kMethods) {
    EXPECT_TRUE(IsNull(Call(method, std::vector<VARIANT>(count, Text(L"Front"))))) << method;
  }
}

// Every kind of name a script can pass, each turned into the text it names. Stances sorts its
// names unless a number or a boolean says no.
TEST_F(ScriptObjectTest, NamesAreNumbersBooleansAndTextsFollowedThroughReferences) {
  const ZK_UUID box = AddBox();
  const std::vector<std::wstring> table_order = {L"5",    L"-3",    L"1.5",  L"1.500000",
                                                 L"True", L"False", L"Plain"};
  for (const std::wstring& name : table_order) Save(name.c_str(), {box});
  const std::vector<std::wstring> sorted = {L"-3",    L"1.5",   L"1.500000", L"5",
                                            L"False", L"Plain", L"True"};
  for (const VARIANT& sort : {Missing(), NewValue(VT_BYREF | VT_VARIANT), Text(L"False"),
                              R8(std::nan("")), I4(-2), Bool(1)}) {
    EXPECT_EQ(Texts(Call(L"Stances", {sort})), sorted) << sort.vt;
  }
  for (const VARIANT& sort : {Bool(VARIANT_FALSE), I2(0), I4(0), R4(0), Ref(R8(-0.0))}) {
    EXPECT_EQ(Texts(Call(L"Stances", {sort})), table_order) << sort.vt;
  }
  EXPECT_EQ(Texts(Call(L"Stances")), sorted);  // left off the end
  const std::vector<std::pair<VARIANT, const wchar_t*>> names = {
      {I4(5), L"5"},
      {I2(-3), L"-3"},
      {R8(1.5), L"1.5"},
      {R4(1.5f), L"1.500000"},
      {Bool(-1), L"True"},
      {Bool(1), L"False"},
      {Ref(Ref(Text(L"plain"))), L"Plain"}};
  for (const auto& [value, name] : names) {
    EXPECT_TRUE(IsTrue(Call(L"DeleteStance", {value}))) << name;
    EXPECT_FALSE(Table().NameExists(name)) << name;
  }

  Save(L"0", {box});
  VARIANT& cycle = NewValue(VT_BYREF | VT_VARIANT);
  cycle.pvarVal = &cycle;
  VARIANT& null_reference = NewValue(VT_BYREF | VT_VARIANT);
  VARIANT& by_reference_number = NewValue(VT_BYREF | VT_I4);
  by_reference_number.byref = &NewValue(VT_I4).lVal;
  for (const VARIANT& value : {NewValue(VT_EMPTY), NewValue(VT_NULL), NewValue(VT_CY),
                               NewValue(VT_DATE), NewValue(VT_DISPATCH), NewValue(VT_ERROR), cycle,
                               null_reference, by_reference_number, Ids({box}), Missing()}) {
    EXPECT_TRUE(IsNull(Call(L"RestoreStance", {value}))) << value.vt;
  }
}

TEST_F(ScriptObjectTest, ObjectArraysOfStringsOrVariantsAnyLowerBoundGiveTheObjectsTheyName) {
  const ZK_UUID a = AddBox(), b = AddBox(), c = AddLight(), d = AddBox();
  const VARIANT& variants = Array(VT_VARIANT, 3,
                                  {L" \t\v" + IdText(a) + L"\f\n", L"{" + IdText(b) + L"}",
                                   IdText(ZK_nil_uuid), L"nonsense", L"", IdText(b)});
  EXPECT_TRUE(IsTrue(Call(L"SaveStance", {variants, Text(L"Front")})));
  EXPECT_EQ(Members(L"Front"), (std::vector<ZK_UUID>{a, b}));
  EXPECT_EQ(RecordOf(b)->m_entries.GetSize(), 1);

  VARIANT& strings = Array(VT_BSTR, -1, {L"", IdText(c), L"12"});
  VARIANT& by_reference = NewValue(VT_BYREF | VT_ARRAY | VT_BSTR);
  by_reference.pparray = &strings.parray;
  EXPECT_TRUE(IsTrue(Call(L"AppendStance", {Ref(by_reference), Text(L"front")})));
  EXPECT_EQ(Members(L"Front"), (std::vector<ZK_UUID>{a, b, c}));

  // Arrays that hold no ids: of numbers, of two dimensions, of nothing.
  const SAFEARRAYBOUND numbers_bound = {1, 0};
  VARIANT& numbers = NewValue(VT_ARRAY | VT_I4);
  numbers.parray = SafeArrayCreate(VT_I4, 1, &numbers_bound);
  const SAFEARRAYBOUND grid_bounds[] = {{1, 0}, {1, 0}};
  VARIANT& grid = NewValue(VT_ARRAY | VT_VARIANT);
  grid.parray = SafeArrayCreate(VT_VARIANT, 2, grid_bounds);
  const LONG origin[] = {0, 0};
  const VARIANT& id_of_d = Text(IdText(d));
  SafeArrayPutElement(grid.parray, origin, &id_of_d);
  for (const VARIANT& objects : {numbers, grid, Array(VT_VARIANT, 0, {})}) {
    EXPECT_TRUE(IsNull(Call(L"AppendStance", {objects, Text(L"Front")}))) << objects.vt;
  }
}

// What a restore would do, asked without doing it: whether the stance matches, which members
// moved how far and how much, and the move that would bring each member back.
TEST_F(ScriptObjectTest, MatchesDriftAndMovesTellWhatARestoreWouldDoAndChangeNothing) {
  const ZK_UUID box = AddBox();  // centre 2.5, 4, 5.5
  const ZK_UUID still = AddBox();
  Save(L"Front", {box, still});
  EXPECT_TRUE(IsTrue(Call(L"StanceMatches", {Text(L"front")})));
  const ZK_Xform moved = ZK_Xform::Rotation(std::acos(-1.0) / 2, {0, 0, 1}, {5.5, 8, 5.5}) *
                         ZK_Xform::Translation(3, 4, 0);
  Move(box, moved);
  const std::vector<ZK_3dPoint> before = Placement(box);
  EXPECT_TRUE(IsFalse(Call(L"StanceMatches", {Text(L"Front")})));
  const auto drift = Elements(Call(L"StanceDrift", {Ref(Text(L"Front"))}));
  ASSERT_EQ(drift.size(), 1u) << "one moved member";
  const auto fields = Elements(*drift[0]);
  ASSERT_EQ(fields.size(), 3u);
  EXPECT_EQ(std::wstring(fields[0]->bstrVal), IdText(box));
  EXPECT_NEAR(fields[1]->dblVal, 5, 1e-9);
  EXPECT_NEAR(fields[2]->dblVal, 90, 1e-9);

  const auto moves = Elements(Call(L"StanceMoves", {Text(L"front")}));
  ASSERT_EQ(moves.size(), 2u) << "both members, in the document's order";
  for (size_t m = 0; m < moves.size(); ++m) {
    const auto entry = Elements(*moves[m]);
    ASSERT_EQ(entry.size(), 17u);
    EXPECT_EQ(std::wstring(entry[0]->bstrVal), IdText(m == 0 ? box : still));
    // The move undoes what was done to the box, and leaves the other where it is.
    const ZK_Xform expected = m == 0 ? moved.Inverse() : ZK_Xform();
    for (int k = 0; k < 16; ++k) {
      EXPECT_NEAR(entry[k + 1]->dblVal, expected(k / 4, k % 4), 1e-9) << k;
    }
  }
  ExpectNear(Placement(box), before);  // nothing moved
}

}  // namespace
