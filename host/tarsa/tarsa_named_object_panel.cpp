#include "host/tarsa/tarsa_named_object_panel.h"

#include "host/platform/user_answers.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_dpi.h"

namespace {

// The panel's modal state for the lifetime of a dialog the base shows.
class ModalState {
 public:
  explicit ModalState(CTsNamedDocObjectManagerDlg& panel) : m_panel(panel) {
    m_panel.BeginModalState();
  }
  ModalState(const ModalState&) = delete;
  ModalState& operator=(const ModalState&) = delete;
  ~ModalState() { m_panel.EndModalState(); }

 private:
  CTsNamedDocObjectManagerDlg& m_panel;
};

// Counts a call the base makes into its own list.
class InternalCallScope {
 public:
  explicit InternalCallScope(int& count) : m_count(count) { ++m_count; }
  InternalCallScope(const InternalCallScope&) = delete;
  InternalCallScope& operator=(const InternalCallScope&) = delete;
  ~InternalCallScope() { --m_count; }

 private:
  int& m_count;
};

}  // namespace

CTarsaDoc* CTsNamedDocObjectManagerDlg::Document() const {
  return CTarsaDoc::FromRuntimeSerialNumber(m_doc_serial_number);
}

void CTsNamedDocObjectManagerDlg::DeferredRebuildList(unsigned int milliseconds) {
  if (GetSafeHwnd() == nullptr) return;
  ++m_rebuild_requests;
  if (m_rebuild_pending) return;
  m_rebuild_pending = true;
  m_rebuild_delay = milliseconds;
  m_rebuild_due_ms = TarsaApp().ClockMs() + milliseconds;
}

void CTsNamedDocObjectManagerDlg::RunDueWork(bool idle, unsigned long long now_ms) {
  if (!m_rebuild_pending || (!idle && now_ms < m_rebuild_due_ms)) return;
  m_rebuild_pending = false;
  ++m_rebuilds;
  RebuildListIfChanged();
  EnableDisableControls();
}

void CTsNamedDocObjectManagerDlg::EnableDisableControls() {
  const bool has_document = Document() != nullptr;
  const int selected = m_list.GetSelectedCount();
  const bool enable[] = {has_document && CommandAvailable(save_command),
                         selected > 0 && CommandAvailable(restore_command),
                         selected > 0 && CommandAvailable(delete_command),
                         selected == 1 && CommandAvailable(rename_command)};
  for (int i = 0; i < 4; ++i) m_standard_buttons[i].EnableWindow(enable[i]);
  m_help_button.EnableWindow(true);
}

void CTsNamedDocObjectManagerDlg::GetLayoutMetrics(int& margin, int& width, int& height, int& gap_x,
                                                   int& gap_y, int) const {
  const int dpi = CTarsaWindowsDpi::Dpi().Value();
  const auto scaled = [dpi](int pixels) { return pixels * dpi / 96; };
  margin = scaled(4);
  width = scaled(24);
  height = scaled(24);
  gap_x = scaled(2);
  gap_y = scaled(2);
}

void CTsNamedDocObjectManagerDlg::AppendStandardButtons(ZK_SimpleArray<CButton*>& buttons) {
  for (CButton& button : m_standard_buttons) buttons.Append(&button);
}

void CTsNamedDocObjectManagerDlg::AppendHelpButton(ZK_SimpleArray<CButton*>& buttons) {
  buttons.Append(&m_help_button);
}

int CTsNamedDocObjectManagerDlg::FirstSelectedItem() {
  return static_cast<int>(
      m_list.SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void CTsNamedDocObjectManagerDlg::OnSave() {
  if (Document() == nullptr) return;
  std::wstring name;
  {
    const ModalState modal(*this);
    if (!UserAnswers().AskText(SaveDialogTitle(), SaveDialogPrompt(), DefaultSaveName(), name)) {
      return;
    }
  }
  if (name.empty()) return;
  if (HasStanceNamed(name.c_str())) {
    ZK_wString question;
    question.Format(ReplaceQuestion(), name.c_str());
    const ModalState modal(*this);
    if (!UserAnswers().AskYesNo(question.Text(), Caption())) return;
  }
  RunStanceCommand(L"Save", name.c_str(), L"");
}

void CTsNamedDocObjectManagerDlg::OnRestore() {
  const std::wstring name = ItemName(FirstSelectedItem());
  if (!name.empty()) RunStanceCommand(L"Restore", name.c_str(), L"");
}

void CTsNamedDocObjectManagerDlg::OnDelete() {
  const std::wstring name = ItemName(FirstSelectedItem());
  if (name.empty()) return;
  ZK_wString question;
  question.Format(L"Do you want to delete \"%s\"?", name.c_str());
  {
    const ModalState modal(*this);
    if (!UserAnswers().AskYesNo(question.Text(), Caption())) return;
  }
  RunStanceCommand(L"Delete", name.c_str(), L"");
}

void CTsNamedDocObjectManagerDlg::OnRename() {
  const int item = FirstSelectedItem();
  const std::wstring old_name = ItemName(item);
  if (old_name.empty()) return;
  std::wstring new_name;
  {
    const InternalCallScope internal(m_internal_call);
    if (!UserAnswers().EditLabel(m_list.GetSafeHwnd(), item, old_name, new_name)) return;
  }
  if (new_name.empty() || new_name == old_name) return;
  RunStanceCommand(L"Rename", old_name.c_str(), new_name.c_str());
  // The list shows the new name at once; the captions keep the old one until the rebuild.
  RefreshListCaptions();
}

void CTsNamedDocObjectManagerDlg::BeginModalState() { EnableWindow(false); }

void CTsNamedDocObjectManagerDlg::EndModalState() { EnableWindow(true); }

void CTsNamedDocObjectManagerDlg::OnActiveDocumentChanged(CTarsaDoc* doc) {
  m_doc_serial_number = doc ? doc->RuntimeSerialNumber() : 0;
  Refill();
  EnableDisableControls();
}

void CTsNamedDocObjectManagerDlg::Refill() {
  const InternalCallScope internal(m_internal_call);
  m_list.SendMessage(LVM_DELETEALLITEMS);
  m_captions.Empty();
  FillList();
}

void CTsNamedDocObjectManagerDlg::DoDataExchange(CDataExchange* exchange) {
  DDX_Control(exchange, list_control, m_list);
  const int ids[] = {save_button, restore_button, delete_button, rename_button};
  for (int i = 0; i < 4; ++i) DDX_Control(exchange, ids[i], m_standard_buttons[i]);
  DDX_Control(exchange, help_button, m_help_button);
}

int CTsNamedDocObjectManagerDlg::OnInitDialog() {
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  m_doc_serial_number = doc ? doc->RuntimeSerialNumber() : 0;
  CTarsaEventWatcher::Register();
  Enable(true);
  Refill();
  LayoutControls();
  return 1;
}

bool CTsNamedDocObjectManagerDlg::OnCommand(int control_id) {
  switch (control_id) {
    case save_button:
      OnSave();
      return true;
    case restore_button:
      OnRestore();
      return true;
    case delete_button:
      OnDelete();
      return true;
    case rename_button:
      OnRename();
      return true;
    default:
      return false;
  }
}

void CTsNamedDocObjectManagerDlg::OnWindowDestroyed() {
  CTarsaEventWatcher::UnRegister();
  m_rebuild_pending = false;
}
