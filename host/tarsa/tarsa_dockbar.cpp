#include "host/tarsa/tarsa_dockbar.h"

#include "host/tarsa/tarsa_app.h"

const CRuntimeClass CTarsaTabbedDockBarDialog::kRuntimeClass = {
    "CTarsaTabbedDockBarDialog", sizeof(CTarsaTabbedDockBarDialog), &CObject::kRuntimeClass};

bool CTarsaTabbedDockBarDialog::Register(const CRuntimeClass* runtime_class, int template_id,
                                         AFX_MODULE_STATE* module_state) {
  return TarsaApp().RegisterPanelClass(runtime_class, template_id, module_state);
}

bool TarsaUiOpenDockbarTab(const ZK_UUID& tab_id) { return TarsaApp().OpenDockbarTab(tab_id); }

bool TarsaUiCloseDockbarTab(const ZK_UUID& tab_id) {
  TarsaApp().CloseDockbarTab(tab_id);
  return true;
}

bool TarsaUiIsTabVisible(const ZK_UUID& tab_id, bool) { return TarsaApp().IsTabVisible(tab_id); }
