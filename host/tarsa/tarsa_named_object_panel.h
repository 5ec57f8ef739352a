// CTsNamedDocObjectManagerDlg: the host's base class of a dockable panel that lists named objects
// of a document. The base owns the list control (control 1064), the captions of the last fill,
// the standard buttons (save 2110, restore 2111, delete 6125, rename 1956; help 1147) and the
// standard actions; a panel fills the hooks that say what the list shows, which names exist,
// the texts of the save dialog and its question, and the command that carries out an action.
//
// The host creates and destroys a panel through its registered class (tarsa_dockbar.h). While
// it has a window the panel watches the host's events: it shows the active document and follows
// it. Rebuilds are asked for with DeferredRebuildList and carried out by the host when it is
// idle or when the delay has passed; requests made while one is pending join it.
#pragma once

#include <string>

#include "host/platform/list_control.h"
#include "host/tarsa/tarsa_dockbar.h"
#include "host/tarsa/tarsa_event_watcher.h"
#include "host/zefkit/zk_array.h"
#include "host/zefkit/zk_string.h"

class CTarsaDoc;

class CTsNamedDocObjectManagerDlg : public CTarsaTabbedDockBarDialog, public CTarsaEventWatcher {
 public:
  // Control ids of the list and the standard buttons.
  enum control_id {
    list_control = 1064,
    save_button = 2110,
    restore_button = 2111,
    delete_button = 6125,
    rename_button = 1956,
    help_button = 1147,
  };
  // The base's command numbers, as CommandAvailable is asked about them.
  enum command { save_command = 0, restore_command = 1, delete_command = 2, rename_command = 3 };

  CTsNamedDocObjectManagerDlg() = default;
  ~CTsNamedDocObjectManagerDlg() override = default;

  CListCtrl& List() { return m_list; }
  // The names as they were at the last fill, in the order of the panel's data.
  ZK_ClassArray<ZK_wString>& ListCaptions() { return m_captions; }
  // Non-zero while the base itself is changing the list.
  int& InternalCall() { return m_internal_call; }
  // The document the panel shows: the active document, or null.
  CTarsaDoc* Document() const;

  // Asks for RebuildListIfChanged, then EnableDisableControls, `milliseconds` from now. A request
  // made while one is pending joins it; without a window nothing is asked.
  void DeferredRebuildList(unsigned int milliseconds);

  // Enables the standard buttons: save with a document; restore and delete with a selected item;
  // rename with exactly one; each only when CommandAvailable says so. Help is always enabled.
  virtual void EnableDisableControls();

  // Layout metrics in pixels at the host's dpi; the last argument is reserved (0).
  void GetLayoutMetrics(int& margin, int& width, int& height, int& gap_x, int& gap_y,
                        int reserved) const;
  // Appends the standard buttons, in the order they are laid out, and the help button.
  void AppendStandardButtons(ZK_SimpleArray<CButton*>& buttons);
  void AppendHelpButton(ZK_SimpleArray<CButton*>& buttons);
  // Pixels above the first row of buttons.
  int TopBorder() const { return 0; }

  // The standard actions. Save asks for a name in the save dialog (proposing DefaultSaveName),
  // asks ReplaceQuestion when HasStanceNamed, then runs Save. Restore and Delete act on the first
  // selected item; Delete asks first. Rename edits the first selected item's label and runs Rename
  // with the old name and the new one. Each does nothing when cancelled or without an item.
  void OnSave();
  void OnRestore();
  void OnDelete();
  void OnRename();

  // While a modal state runs the panel's window is disabled.
  virtual void BeginModalState();
  virtual void EndModalState();

  // Hooks a panel fills.
  virtual void RebuildListIfChanged() = 0;
  virtual void FillList() = 0;
  virtual void RefreshListCaptions() = 0;
  virtual std::wstring DefaultSaveName() = 0;
  virtual const wchar_t* SaveDialogTitle() const = 0;
  virtual const wchar_t* SaveDialogPrompt() const = 0;
  // The name shown by a list item, or empty text.
  virtual std::wstring ItemName(int item) = 0;
  virtual bool HasStanceNamed(const wchar_t* name) = 0;
  virtual const wchar_t* CommandName() const = 0;
  virtual void LayoutControls() = 0;
  // A format whose "%s" takes the name.
  virtual const wchar_t* ReplaceQuestion() const = 0;
  virtual const wchar_t* NothingSavedMessage() const = 0;
  virtual bool CommandAvailable(int command) = 0;
  // Carries out an action: the command's English option word and the names in the order the
  // command asks for them.
  virtual void RunStanceCommand(const wchar_t* option, const wchar_t* first,
                                const wchar_t* second) = 0;
  // The action of a double click on an item.
  virtual void OnDefaultAction() = 0;

  // The active document changed: the list shows the new one.
  void OnActiveDocumentChanged(CTarsaDoc* doc) override;

 protected:
  void DoDataExchange(CDataExchange* exchange) override;
  // Starts watching the host's events, fills the list and lays out the controls.
  int OnInitDialog() override;
  bool OnCommand(int control_id) override;
  void OnWindowDestroyed() override;

 private:
  friend class CTarsaStandIn;
  // Empties the list and the captions and fills them again.
  void Refill();
  void RunDueWork(bool idle, unsigned long long now_ms) override;
  // The first selected item, or -1.
  int FirstSelectedItem();

  CListCtrl m_list;
  CButton m_standard_buttons[4];
  CButton m_help_button;
  ZK_ClassArray<ZK_wString> m_captions;
  int m_internal_call = 0;
  unsigned int m_doc_serial_number = 0;
  bool m_rebuild_pending = false;
  unsigned long long m_rebuild_due_ms = 0;
  unsigned int m_rebuild_delay = 0;
  int m_rebuild_requests = 0;
  int m_rebuilds = 0;
};
