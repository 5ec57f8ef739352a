#include "panel/stances_panel.h"

#include <vector>

#include "command/save_flows.h"
#include "events/event_watcher.h"
#include "host/platform/menu.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_dpi.h"
#include "host/tarsa/tarsa_localize.h"
#include "host/tarsa/tarsa_risky_action_spy.h"
#include "panel/panel_actions.h"
#include "panel/panel_resources.h"
#include "plugin/korvo_plugin.h"

const ZK_UUID g_stances_panel_tab_id = {
    0x91799CF0, 0x059A, 0x46F8, {0x85, 0x4C, 0xCC, 0x1C, 0x14, 0x19, 0xE2, 0x9F}};

CTsStancesManagerDlg* g_pStancesPanel = nullptr;

namespace {

CObject* NewStancesPanel() { return new CTsStancesManagerDlg(); }

// g_bSaveWithoutConfirm for the lifetime of one Save macro: the panel has asked already.
class SaveWithoutConfirm {
 public:
  SaveWithoutConfirm() { g_bSaveWithoutConfirm = true; }
  SaveWithoutConfirm(const SaveWithoutConfirm&) = delete;
  SaveWithoutConfirm& operator=(const SaveWithoutConfirm&) = delete;
  ~SaveWithoutConfirm() { g_bSaveWithoutConfirm = false; }
};

// The names of a table or of the captions, each followed by ";".
template <class Names>
std::wstring Joined(int count, Names name_at) {
  std::wstring joined;
  for (int i = 0; i < count; ++i) {
    joined += name_at(i);
    joined += L';';
  }
  return joined;
}

}  // namespace

const CRuntimeClass CTsStancesManagerDlg::kRuntimeClass = {
    "CTsStancesManagerDlg", sizeof(CTsStancesManagerDlg), &CTarsaTabbedDockBarDialog::kRuntimeClass,
    &NewStancesPanel};

CTsStancesManagerDlg::CTsStancesManagerDlg() { g_pStancesPanel = this; }

CTsStancesManagerDlg::~CTsStancesManagerDlg() { g_pStancesPanel = nullptr; }

const wchar_t* CTsStancesManagerDlg::Caption() const {
  if (TarsaApp().AppSettings().AppearanceSettings(false).LanguageIdentifier() == 1033) {
    return L"Stances";
  }
  return TsLocalizeString(L"Stances", 33040);
}

ZK_UUID CTsStancesManagerDlg::PlugInID() const { return KorvoPlugIn().PlugInID(); }

HICON CTsStancesManagerDlg::Icon(int width, int height) {
  const CTsRiskyActionSpy spy("AFX_MANAGE_STATE", "CTsStancesManagerDlg::Icon", "NamedItemDlg", 74);
  AFX_MANAGE_STATE(KorvoModuleState());
  return CTarsaWindowsDpi::Dpi().LoadIconW(AfxGetResourceHandle(), 1021, width, height);
}

CKorvoDocData* CTsStancesManagerDlg::Table() const {
  CTarsaDoc* doc = Document();
  return doc ? KorvoPlugIn().DocData(doc->RuntimeSerialNumber()) : nullptr;
}

void CTsStancesManagerDlg::RebuildListIfChanged() {
  if (InternalCall() != 0) return;
  CKorvoDocData* table = Table();
  if (table == nullptr) return;
  const std::wstring names =
      Joined(table->Count(), [table](int i) { return table->m_entries[i]->m_name.View(); });
  ZK_ClassArray<ZK_wString>& captions = ListCaptions();
  const std::wstring shown =
      Joined(captions.Count(), [&captions](int i) { return captions[i].View(); });
  if (names == shown) {
    MarkMatchedStances();
    return;
  }
  List().SendMessage(LVM_DELETEALLITEMS);
  captions.Empty();
  FillList();
  EnableDisableControls();
}

void CTsStancesManagerDlg::FillList() {
  CKorvoDocData* table = Table();
  if (table == nullptr) return;
  CListCtrl& list = List();
  // With redraw off the sorted list takes the names as a batch, in one sort.
  list.SendMessage(WM_SETREDRAW, FALSE);
  for (int i = 0; i < table->Count(); ++i) {
    const ZK_wString& name = table->m_entries[i]->m_name;
    const int item = list.InsertItem(LVIF_TEXT | LVIF_IMAGE, i, name, 0, 0, 0, 0);
    list.SetItem(item, 0, LVIF_PARAM, nullptr, 0, 0, 0, i);
    ListCaptions().Append(name);
  }
  list.SendMessage(LVM_SORTITEMS, Document()->RuntimeSerialNumber(),
                   reinterpret_cast<LPARAM>(&CompareListItems));
  list.SendMessage(WM_SETREDRAW, TRUE);
  MarkMatchedStances();
}

void CTsStancesManagerDlg::MarkMatchedStances() {
  CKorvoDocData* table = Table();
  if (table == nullptr) return;
  const CKorvoMatchCounts& counts = KorvoPlugIn().EventWatcher()->MatchCounts(*Document());
  // Asked in table order, the order the stances lie in memory, rather than in the list's order,
  // which would jump from stance to stance.
  std::vector<bool> matched(static_cast<size_t>(table->Count()));
  for (int i = 0; i < table->Count(); ++i) matched[i] = counts.Matches(table->m_entries[i]->m_id);
  CListCtrl& list = List();
  for (int item = 0; item < list.GetItemCount(); ++item) {
    const int index = static_cast<int>(list.GetItemData(item));
    const bool matches = index >= 0 && index < table->Count() && matched[index];
    list.SetItemState(item, INDEXTOSTATEIMAGEMASK(matches ? matches_state_image : 0),
                      LVIS_STATEIMAGEMASK);
  }
}

void CTsStancesManagerDlg::RefreshListCaptions() {
  CKorvoDocData* table = Table();
  if (table == nullptr) return;
  CListCtrl& list = List();
  for (int item = list.GetNextItem(-1, LVNI_ALL); item >= 0;
       item = list.GetNextItem(item, LVNI_ALL)) {
    if (CKorvoDocData::USER_DATA* stance = StanceOfItem(item)) {
      list.SetItem(item, 0, LVIF_TEXT | LVIF_IMAGE, stance->m_name, 0, 0, 0, 0);
    }
  }
  list.SendMessage(LVM_SORTITEMS, Document()->RuntimeSerialNumber(),
                   reinterpret_cast<LPARAM>(&CompareListItems));
}

int CTsStancesManagerDlg::CompareListItems(LPARAM data1, LPARAM data2, LPARAM sort_parameter) {
  CKorvoDocData& table = *KorvoPlugIn().DocData(static_cast<unsigned int>(sort_parameter));
  static const ZK_wString kNoName;
  const auto name_of = [&table](LPARAM data) -> const ZK_wString& {
    const int index = static_cast<int>(data);
    return index >= 0 && index < table.Count() ? table.m_entries[index]->m_name : kNoName;
  };
  return name_of(data1).CompareNoCase(name_of(data2));
}

std::wstring CTsStancesManagerDlg::DefaultSaveName() {
  if (CKorvoDocData::USER_DATA* stance = SelectedStance()) return stance->m_name.Text();
  CTarsaDoc* doc = Document();
  return doc ? NewStanceName(*doc) : std::wstring();
}

const wchar_t* CTsStancesManagerDlg::SaveDialogTitle() const {
  return TsLocalizeString(L"Save Position", 28189);
}

const wchar_t* CTsStancesManagerDlg::SaveDialogPrompt() const {
  return TsLocalizeString(L"Save current object positions as:", 28190);
}

const wchar_t* CTsStancesManagerDlg::ReplaceQuestion() const {
  return TsLocalizeString(L"The \"%s\" stance already exists, do you want to replace it?", 28511);
}

const wchar_t* CTsStancesManagerDlg::NothingSavedMessage() const {
  return TsLocalizeString(L"No stances have been saved", 28512);
}

std::wstring CTsStancesManagerDlg::ItemName(int item) {
  CKorvoDocData::USER_DATA* stance = StanceOfItem(item);
  return stance ? stance->m_name.Text() : std::wstring();
}

bool CTsStancesManagerDlg::HasStanceNamed(const wchar_t* name) {
  CKorvoDocData* table = Table();
  return table != nullptr && table->FindByName(name) != nullptr;
}

CKorvoDocData::USER_DATA* CTsStancesManagerDlg::SelectedStance() {
  return StanceOfItem(static_cast<int>(
      List().SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED)));
}

CKorvoDocData::USER_DATA* CTsStancesManagerDlg::StanceOfItem(int item) {
  CKorvoDocData* table = Table();
  if (table == nullptr || item < 0) return nullptr;
  const int index = static_cast<int>(List().GetItemData(item));
  return index >= 0 && index < table->Count() ? table->m_entries[index] : nullptr;
}

void CTsStancesManagerDlg::LayoutControls() {
  if (List().GetSafeHwnd() == nullptr) return;
  int margin, width, height, gap_x, gap_y;
  GetLayoutMetrics(margin, width, height, gap_x, gap_y, 0);
  RECT client;
  GetClientRect(&client);
  ZK_SimpleArray<CButton*> buttons;
  AppendStandardButtons(buttons);
  buttons.Append(&m_btnUpdate);
  buttons.Append(&m_btnAppend);
  buttons.Append(&m_btnSelect);
  AppendHelpButton(buttons);
  int x = client.left + margin;
  int y = margin;
  for (int i = 0; i < buttons.Count(); ++i) {
    if (x > client.right - width) {
      x = client.left + margin;
      y += gap_y + height;
    }
    buttons[i]->MoveWindow(x, y, width, height, false);
    x += gap_x + width;
  }
  RECT list = client;
  list.top = TopBorder() + y + height;
  InflateRect(&list, -margin, -margin);
  List().MoveWindow(list, true);
  List().SendMessage(LVM_SETCOLUMNWIDTH, 0, LVSCW_AUTOSIZE_USEHEADER);
}

void CTsStancesManagerDlg::EnableDisableControls() {
  CTsNamedDocObjectManagerDlg::EnableDisableControls();
  const bool selected =
      List().SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED) >= 0;
  m_btnSelect.EnableWindow(selected);
  m_btnUpdate.EnableWindow(selected);
  m_btnAppend.EnableWindow(selected);
}

void CTsStancesManagerDlg::RunStanceCommand(const wchar_t* option, const wchar_t* first,
                                            const wchar_t* second) {
  const std::wstring macro =
      StandardActionMacro(CommandName(), option, QuoteName(first), QuoteName(second));
  if (IsSaveOption(option)) {
    const SaveWithoutConfirm asked;
    TarsaApp().RunScript(macro.c_str(), 1);
  } else {
    TarsaApp().RunScript(macro.c_str(), 0);
  }
  CTarsaView* view = TarsaApp().ActiveView();
  if (view != nullptr && IsWindow(view->GetSafeHwnd())) SetFocus(view->GetSafeHwnd());
}

void CTsStancesManagerDlg::RunToolAction(const wchar_t* option, bool pause) {
  CKorvoDocData::USER_DATA* stance = SelectedStance();
  if (stance == nullptr) return;
  const std::wstring quoted = QuoteName(stance->m_name);
  if (pause) {
    TarsaApp().RunScript(PausingNameMacro(CommandName(), option, quoted).c_str(), 1);
  } else {
    TarsaApp().RunScript(NameMacro(CommandName(), option, quoted).c_str(), 0);
  }
  SetFocus(TarsaApp().MainWnd()->GetSafeHwnd());
}

void CTsStancesManagerDlg::OnSelectAction() { RunToolAction(L"Select", false); }

void CTsStancesManagerDlg::OnUpdateAction() { RunToolAction(L"Update", false); }

void CTsStancesManagerDlg::OnAppendAction() { RunToolAction(L"Append", true); }

void CTsStancesManagerDlg::OnRestoreObjectsAction() {
  CKorvoDocData::USER_DATA* stance = SelectedStance();
  if (stance == nullptr) return;
  // Echoed, as the object prompt goes to the user when nothing is selected in the document.
  TarsaApp().RunScript(CommandMacro(L"StanceRestoreObjects", QuoteName(stance->m_name)).c_str(), 1);
  SetFocus(TarsaApp().MainWnd()->GetSafeHwnd());
}

void CTsStancesManagerDlg::OnContextMenu(CWnd* window, POINT point) {
  const bool selected =
      List().SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED) >= 0;
  CMenu menu;
  menu.CreatePopupMenu();
  const HMENU h = menu.GetSafeHmenu();
  const auto item = [h](UINT id, const wchar_t* text, int string_id) {
    AppendMenuW(h, MF_STRING, id, TsLocalizeString(text, string_id));
  };
  if (selected) {
    item(restore_item, L"&Restore Stance", 33041);
    item(update_item, L"&Update Stance", 34039);
    item(append_item, L"&Append Stance", 34198);
    AppendMenuW(h, MF_SEPARATOR, 0, nullptr);
    item(delete_item, L"&Delete Stance", 33042);
    item(rename_item, L"Rena&me Stance", 33043);
    AppendMenuW(h, MF_SEPARATOR, 0, nullptr);
    item(select_item, L"S&elect In Document", 33396);
    AppendMenuW(h, MF_SEPARATOR, 0, nullptr);
  }
  item(save_item, L"&Save Object Positions As Stance...", 33044);
  if (selected) {
    AppendMenuW(h, MF_SEPARATOR, 0, nullptr);
    item(restore_objects_item, L"Restore Selected Objects Only", 40013);
  }
  SetMenuDefaultItem(h, restore_item, 0);
  switch (menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, point.x, point.y, window)) {
    case restore_item:
      return OnRestore();
    case update_item:
      return OnUpdateAction();
    case append_item:
      return OnAppendAction();
    case delete_item:
      return OnDelete();
    case rename_item:
      return OnRename();
    case select_item:
      return OnSelectAction();
    case save_item:
      return OnSave();
    case restore_objects_item:
      return OnRestoreObjectsAction();
    default:
      return;
  }
}

void CTsStancesManagerDlg::OnNewDocument(CTarsaDoc&) { DeferredRebuildList(500); }

void CTsStancesManagerDlg::OnEndOpenDocument(CTarsaDoc&, const wchar_t*, bool, bool) {
  DeferredRebuildList(500);
}

void CTsStancesManagerDlg::DoDataExchange(CDataExchange* exchange) {
  CTsNamedDocObjectManagerDlg::DoDataExchange(exchange);
  DDX_Control(exchange, select_button, m_btnSelect);
  DDX_Control(exchange, update_button, m_btnUpdate);
  DDX_Control(exchange, append_button, m_btnAppend);
}

int CTsStancesManagerDlg::OnInitDialog() {
  CTsNamedDocObjectManagerDlg::OnInitDialog();
  const int size = CTarsaWindowsDpi::Dpi().IconSize(49);
  m_btnUpdate.Initialize(1036, 1038, 1037, TsLocalizeString(L"Update selected stance", 34038),
                         size);
  m_btnAppend.Initialize(1039, 1041, 1040, TsLocalizeString(L"Append to selected stance", 34197),
                         size);
  m_btnSelect.Initialize(1033, 1035, 1034, TsLocalizeString(L"Select objects of stance", 33395),
                         size);
  EnableDisableControls();
  return 0;
}

bool CTsStancesManagerDlg::OnCommand(int control_id) {
  switch (control_id) {
    case select_button:
      OnSelectAction();
      return true;
    case update_button:
      OnUpdateAction();
      return true;
    case append_button:
      OnAppendAction();
      return true;
    default:
      return CTsNamedDocObjectManagerDlg::OnCommand(control_id);
  }
}

void ScheduleStancesPanelRebuild() {
  if (g_pStancesPanel != nullptr && g_pStancesPanel->GetSafeHwnd() != nullptr) {
    g_pStancesPanel->ScheduleRebuild();
  }
}
