#include "panel/stances_panel.h"

const ZK_UUID g_stances_panel_tab_id = {
    0x91799CF0, 0x059A, 0x46F8, {0x85, 0x4C, 0xCC, 0x1C, 0x14, 0x19, 0xE2, 0x9F}};

CTsStancesManagerDlg* g_pStancesPanel = nullptr;

CTsStancesManagerDlg::CTsStancesManagerDlg() { g_pStancesPanel = this; }

CTsStancesManagerDlg::~CTsStancesManagerDlg() { g_pStancesPanel = nullptr; }

void CTsStancesManagerDlg::ScheduleRebuild() { DeferredRebuildList(500); }

void ScheduleStancesPanelRebuild() {
  if (g_pStancesPanel != nullptr && g_pStancesPanel->GetSafeHwnd() != nullptr) {
    g_pStancesPanel->ScheduleRebuild();
  }
}
