#include "host/tarsa/tarsa_dockbar.h"

#include "host/tarsa/tarsa_app.h"

bool TarsaUiOpenDockbarTab(const ZK_UUID& tab_id) {
  TarsaApp().OpenDockbarTab(tab_id);
  return true;
}

bool TarsaUiCloseDockbarTab(const ZK_UUID& tab_id) {
  TarsaApp().CloseDockbarTab(tab_id);
  return true;
}

bool TarsaUiIsTabVisible(const ZK_UUID& tab_id, bool) { return TarsaApp().IsTabVisible(tab_id); }
