// CTsStancesManagerDlg: the dockable Stances panel. It lists the stances of the document it
// shows, sorted by name, with three tool buttons (update, append, select) beside its base's
// standard buttons, and a context menu. It never changes a stance itself: every action runs the
// Stance command through a command macro, and the panel learns of changes through rebuild
// requests (the stance table's change notification, the event watcher, new and opened
// documents), which the host carries out later.
//
// The plug-in registers the class with the host at load; the host creates the panel when its
// tab opens and destroys it when it closes. While one exists, g_pStancesPanel points at the
// newest; destroying any clears it.
#pragma once

#include "data/stance_table.h"
#include "host/tarsa/tarsa_named_object_panel.h"
#include "host/tarsa/tarsa_tool_button.h"
#include "host/zefkit/zk_uuid.h"

// {91799CF0-059A-46F8-854C-CC1C1419E29F}: the tab id under which the host knows the panel.
extern const ZK_UUID g_stances_panel_tab_id;

class CTsStancesManagerDlg : public CTsNamedDocObjectManagerDlg {
 public:
  static const CRuntimeClass kRuntimeClass;
  const CRuntimeClass* GetRuntimeClass() const override { return &kRuntimeClass; }
  // Control ids of the tool buttons, and the dialog template.
  enum { select_button = 1148, update_button = 1149, append_button = 2112, dialog_template = 1019 };
  // The context menu's item ids.
  enum menu_item {
    restore_item = 100,
    update_item = 101,
    append_item = 102,
    delete_item = 103,
    rename_item = 104,
    select_item = 105,
    save_item = 106,
    restore_objects_item = 107,
  };

  CTsStancesManagerDlg();
  ~CTsStancesManagerDlg() override;

  const wchar_t* Caption() const override;
  ZK_UUID TabId() const override { return g_stances_panel_tab_id; }
  ZK_UUID PlugInID() const override;
  // The tab icon (group 1021) at width × height, from the plug-in's own resources.
  HICON Icon(int width, int height) override;
  unsigned int IconResourceId() const override { return 1021; }

  // The state image that marks the stances the model matches now (every member at its saved
  // placement); the others have none. The item image stays 0.
  enum { matches_state_image = 1 };

  // Refills the list when the table's names (their text, order or number) differ from the
  // captions of the last fill; otherwise leaves list and selection alone and only brings the
  // marks of matched stances up to date.
  void RebuildListIfChanged() override;
  // One item per stance: the name, image 0, the stance's table index as data, and the mark when
  // the model matches it; then sorted by name ignoring case.
  void FillList() override;
  // Sets every item's text to the name its data index names now, and sorts again; the captions
  // stay, so that the next RebuildListIfChanged still refills.
  void RefreshListCaptions() override;
  // The selected stance's name; else, with a document, NewStanceName; else empty text.
  std::wstring DefaultSaveName() override;
  const wchar_t* SaveDialogTitle() const override;
  const wchar_t* SaveDialogPrompt() const override;
  std::wstring ItemName(int item) override;
  // False without a document.
  bool HasStanceNamed(const wchar_t* name) override;
  const wchar_t* CommandName() const override { return L"Stance"; }
  // Buttons in rows across the top (standard, update, append, select, help), the list below.
  void LayoutControls() override;
  const wchar_t* ReplaceQuestion() const override;
  const wchar_t* NothingSavedMessage() const override;
  bool CommandAvailable(int command) override { return command != 4; }
  // The base's enabling, then the three tool buttons: enabled while any item is selected.
  void EnableDisableControls() override;
  // Runs the macro of a standard action; around a Save, g_bSaveWithoutConfirm is true. Then
  // gives the active view the keyboard focus.
  void RunStanceCommand(const wchar_t* option, const wchar_t* first,
                        const wchar_t* second) override;
  // A double click restores the stance.
  void OnDefaultAction() override { OnRestore(); }

  // Asks for a rebuild 500 ms from now, so that a burst of changes costs one rebuild.
  void ScheduleRebuild() { DeferredRebuildList(500); }
  // The stance of the first selected item, or null.
  CKorvoDocData::USER_DATA* SelectedStance();
  // The stance an item's data index names now: null without a document, for a negative item or
  // an index beyond the table.
  CKorvoDocData::USER_DATA* StanceOfItem(int item);

  // The actions of the tool buttons and of menu items 105, 101 and 102: nothing without a
  // selected stance.
  void OnSelectAction();
  void OnUpdateAction();
  void OnAppendAction();
  // Menu item 107: restores the objects selected in the document, of the selected stance only,
  // through the StanceRestoreObjects command; nothing without a selected stance.
  void OnRestoreObjectsAction();

  // The list's order: names of the stances the item data index in the table of the document
  // with serial number `sort_parameter`, compared ignoring case; no stance counts as empty.
  static int CompareListItems(LPARAM data1, LPARAM data2, LPARAM sort_parameter);

  void OnNewDocument(CTarsaDoc& doc) override;
  void OnEndOpenDocument(CTarsaDoc& doc, const wchar_t* file_name, bool merge,
                         bool reference) override;

 protected:
  void DoDataExchange(CDataExchange* exchange) override;
  int OnInitDialog() override;
  bool OnCommand(int control_id) override;
  // The menu of the actions, shown at `point`; with nothing selected it offers Save alone.
  void OnContextMenu(CWnd* window, POINT point) override;

 private:
  CKorvoDocData* Table() const;
  // Gives every item the mark when the model matches its stance, and takes it away otherwise,
  // from the counts the event watcher keeps (a visit of the document only when none are kept).
  void MarkMatchedStances();
  // Runs `macro` through the host's script runner for the selected stance.
  void RunToolAction(const wchar_t* option, bool pause);

  CTsDialogToolButton m_btnSelect;
  CTsDialogToolButton m_btnUpdate;
  CTsDialogToolButton m_btnAppend;
};

// The newest panel, or null when none exists.
extern CTsStancesManagerDlg* g_pStancesPanel;

// Asks the panel for a rebuild when it exists and has a window; otherwise does nothing.
void ScheduleStancesPanelRebuild();
