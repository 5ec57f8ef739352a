#include "panel/stances_panel.h"

CTsStancesManagerDlg* g_pStancesPanel = nullptr;

CTsStancesManagerDlg::CTsStancesManagerDlg() { g_pStancesPanel = this; }

CTsStancesManagerDlg::~CTsStancesManagerDlg() { g_pStancesPanel = nullptr; }

void CTsStancesManagerDlg::ScheduleRebuild() { DeferredRebuildList(500); }

void ScheduleStancesPanelRebuild() {
  if (g_pStancesPanel != nullptr && g_pStancesPanel->GetSafeHwnd() != nullptr) {
    g_pStancesPanel->ScheduleRebuild();
  }
}
