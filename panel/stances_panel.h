// CTsStancesManagerDlg: the dockable Stances panel. The host creates and destroys it; while one
// exists, g_pStancesPanel points at the newest, and the plug-in's code asks it for rebuilds of
// its list through that pointer.
#pragma once

#include "host/tarsa/tarsa_named_object_panel.h"
#include "host/zefkit/zk_uuid.h"

// {91799CF0-059A-46F8-854C-CC1C1419E29F}: the tab id under which the host knows the panel.
extern const ZK_UUID g_stances_panel_tab_id;

class CTsStancesManagerDlg : public CTsNamedDocObjectManagerDlg {
 public:
  CTsStancesManagerDlg();
  ~CTsStancesManagerDlg() override;

  // Asks for the list to be rebuilt 500 ms from now, so that a burst of changes costs one
  // rebuild.
  void ScheduleRebuild();
};

// The newest panel, or null when none exists.
extern CTsStancesManagerDlg* g_pStancesPanel;

// Asks the panel for a rebuild when it exists and has a window; otherwise does nothing.
void ScheduleStancesPanelRebuild();
