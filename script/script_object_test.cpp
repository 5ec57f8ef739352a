#include "script/script_object.h"

#include <cmath>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "testing/script_values.h"
#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

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

// A script's session on the active document. Each change tells the host, but none is an undo
// step of its own; a restore, an update, an append or a selection regenerates the views. Asking
// what a restore would do changes nothing. A call that cannot be done answers False when the
// stance is not there or the new name is taken, Null when an argument cannot be used or there is
// no active document, and changes nothing.
TEST_F(ScriptObjectTest, ASessionWorksOnTheStancesObjectsAndTellsTheHostWithoutAnUndoStep) {
  const ZK_UUID box = AddBox(), point = Add(new ZK_Point({1, 1, 1}));
  const ZK_UUID built = AddBuilt(), hidden = AddBox(TarsaObjectMode::hidden);
  CTarsaDoc* other = CTarsaStandIn::NewDocument();
  auto* elsewhere = new CTarsaObject(new ZK_Point({0, 0, 0}));
  other->AddObject(elsewhere);
  CTarsaStandIn::SetActiveDocument(serial_);
  const int steps = CTarsaStandIn::UndoStepCount(*doc_);
  EXPECT_TRUE(IsTrue(Call(L"SaveStance", {Text(IdText(box)), Text(L"Front")})));
  EXPECT_EQ(TakeStanceChanges(), 1);
  const ZK_UUID first = StanceId(L"Front");
  EXPECT_TRUE(IsTrue(Call(L"SaveStance", {Ids({point, built, hidden}), Text(L"FRONT")})));
  EXPECT_EQ(Names(), std::vector<std::wstring>{L"FRONT"});
  EXPECT_EQ(Members(L"Front"), (std::vector<ZK_UUID>{point, built, hidden}));
  EXPECT_TRUE(RecordOf(box)->HasEntry(first));  // kept until records are cleaned

  Move(point, kTurn);
  int regens = CTarsaStandIn::RegenCount(*doc_);
  EXPECT_TRUE(IsTrue(Call(L"UpdateStance", {Text(L"front")})));
  EXPECT_TRUE(IsTrue(Call(L"AppendStance", {Ids({box, point}), Text(L"Front")})));
  const auto appended = Placement(box);
  EXPECT_TRUE(IsTrue(Call(L"StanceMatches", {Text(L"front")})));
  // The box's centre, at 2.5, 4, 5.5, moves 5 and the box turns a quarter about it.
  const ZK_Xform moved = ZK_Xform::Rotation(std::acos(-1.0) / 2, {0, 0, 1}, {5.5, 8, 5.5}) *
                         ZK_Xform::Translation(3, 4, 0);
  Move(box, moved);
  AddEntries({L"Empty"});
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
      {L"RenameStance", {Text(L"Empty"), Text(L"FRONT")}, false},
      {L"RenameStance", {Text(L"Top"), Text(L"Back")}, false},
      {L"RenameStance", {Text(L"Empty")}, true},
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
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"FRONT", L"Empty"}));
  EXPECT_EQ(TakeStanceChanges(), 0);

  // The box moved off the stance: what a restore would do, asked without doing it.
  const auto drift = Elements(Call(L"StanceDrift", {Ref(Text(L"Front"))}));
  ASSERT_EQ(drift.size(), 1u) << "one moved member";
  const auto fields = Elements(*drift[0]);
  ASSERT_EQ(fields.size(), 3u);
  EXPECT_EQ(std::wstring(fields[0]->bstrVal), IdText(box));
  EXPECT_NEAR(fields[1]->dblVal, 5, 1e-9);
  EXPECT_NEAR(fields[2]->dblVal, 90, 1e-9);
  // The move undoes what was done to the box and leaves the others where they are; the member
  // with construction history is left out.
  const std::pair<ZK_UUID, ZK_Xform> expected[] = {
      {box, moved.Inverse()}, {point, ZK_Xform()}, {hidden, ZK_Xform()}};
  const auto moves = Elements(Call(L"StanceMoves", {Text(L"front")}));
  ASSERT_EQ(moves.size(), std::size(expected)) << "in the document's order";
  for (size_t m = 0; m < moves.size(); ++m) {
    const auto entry = Elements(*moves[m]);
    ASSERT_EQ(entry.size(), 17u);
    EXPECT_EQ(std::wstring(entry[0]->bstrVal), IdText(expected[m].first));
    for (int k = 0; k < 16; ++k) {
      EXPECT_NEAR(entry[k + 1]->dblVal, expected[m].second(k / 4, k % 4), 1e-9) << k;
    }
  }
  EXPECT_TRUE(IsFalse(Call(L"StanceMatches", {Text(L"Front")}))) << "nothing was restored";
  EXPECT_TRUE(IsTrue(Call(L"RestoreStance", {Text(L"front")})));
  EXPECT_EQ(CTarsaStandIn::RegenCount(*doc_), regens += 3);
  ExpectNear(Placement(box), appended);

  EXPECT_EQ(Texts(Call(L"SelectObjectsOfStance", {Text(L"front")})),
            (std::vector<std::wstring>{IdText(box), IdText(point), IdText(built), IdText(hidden)}));
  EXPECT_EQ(CTarsaStandIn::RegenCount(*doc_), ++regens) << "the views show the selection";
  EXPECT_TRUE(Object(built)->IsSelected());
  EXPECT_TRUE(IsTrue(Call(L"RestoreStance", {Text(L"Empty")})));
  EXPECT_TRUE(IsNull(Call(L"SelectObjectsOfStance", {Text(L"Empty")})));
  EXPECT_FALSE(Object(box)->IsSelected());  // cleared all the same

  EXPECT_TRUE(IsTrue(Call(L"RenameStance", {Text(L"front"), Text(L"Side")})));
  EXPECT_TRUE(IsTrue(Call(L"DeleteStance", {Text(L"side")})));
  EXPECT_EQ(TakeStanceChanges(), 2);
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps);

  // The host gets the object as IUnknown or IDispatch, its own interface only through
  // QueryInterface, and gives back every reference it took; the plug-in's own stays.
  ASSERT_TRUE(CTarsaStandIn::CloseDocument(other->RuntimeSerialNumber()));
  ASSERT_TRUE(CTarsaStandIn::CloseDocument(serial_));
  IUnknown* unknown = KorvoPlugIn().GetScriptObjectInterface(IID_IUnknown);
  auto* dispatch = static_cast<IDispatch*>(KorvoPlugIn().GetScriptObjectInterface(IID_IDispatch));
  void* by_id = nullptr;
  ASSERT_EQ(unknown->QueryInterface(CKorvoScriptObject::kDispatchInterfaceId, &by_id), S_OK);
  EXPECT_EQ((std::vector<void*>{
                dispatch, by_id,
                KorvoPlugIn().GetScriptObjectInterface(CKorvoScriptObject::kDispatchInterfaceId)}),
            (std::vector<void*>{unknown, unknown, nullptr}));
  for (DISPID id = 1; id <= DISPID(std::size(kMethods)); ++id) {
    const auto& [method, count] = kMethods[id - 1];
    LPOLESTR names[] = {const_cast<LPOLESTR>(method)};
    DISPID found = DISPID_UNKNOWN;
    dispatch->GetIDsOfNames(IID_NULL, names, 1, 0, &found);
    EXPECT_EQ(found, id) << method;
    const std::vector<VARIANT> arguments(count, Text(L"Front"));
    EXPECT_TRUE(IsNull(ScriptValues::Call(*dispatch, method, arguments))) << method;
  }
  EXPECT_EQ((std::vector<ULONG>{unknown->Release(), unknown->Release(), unknown->Release()}),
            (std::vector<ULONG>{3, 2, 1}));
}

// Every kind of name and of object list a script can pass, each turned into the text or the
// objects it names. Stances sorts its names unless a number or a boolean says no.
TEST_F(ScriptObjectTest, NamesAndObjectArraysAreTakenInEveryFormAScriptEngineMakes) {
  const ZK_UUID a = AddBox(), b = AddBox(), c = AddLight(), d = AddBox();
  const std::vector<std::wstring> table_order = {L"5",    L"-3",    L"1.5",  L"1.500000",
                                                 L"True", L"False", L"Plain"};
  for (const std::wstring& name : table_order) Save(name.c_str(), {a});
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
  // Each value names the first stance left.
  auto left = table_order.begin();
  for (const VARIANT& value :
       {I4(5), I2(-3), R8(1.5), R4(1.5f), Bool(-1), Bool(1), Ref(Ref(Text(L"plain")))}) {
    EXPECT_TRUE(IsTrue(Call(L"DeleteStance", {value}))) << value.vt;
    EXPECT_EQ(Names(), std::vector<std::wstring>(++left, table_order.end()));
  }

  Save(L"0", {a});
  VARIANT& cycle = NewValue(VT_BYREF | VT_VARIANT);
  cycle.pvarVal = &cycle;
  VARIANT& null_reference = NewValue(VT_BYREF | VT_VARIANT);
  VARIANT& by_reference_number = NewValue(VT_BYREF | VT_I4);
  by_reference_number.byref = &NewValue(VT_I4).lVal;
  for (const VARIANT& value : {NewValue(VT_EMPTY), NewValue(VT_NULL), NewValue(VT_CY),
                               NewValue(VT_DATE), NewValue(VT_DISPATCH), NewValue(VT_ERROR), cycle,
                               null_reference, by_reference_number, Ids({a}), Missing()}) {
    EXPECT_TRUE(IsNull(Call(L"RestoreStance", {value}))) << value.vt;
  }

  // Object arrays of strings or variants, of any lower bound.
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

}  // namespace
