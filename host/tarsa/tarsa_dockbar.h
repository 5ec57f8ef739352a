// The host's dock bars: panels shown as tabs, known by their tab ids.
//
// CTarsaTabbedDockBarDialog is the base of a panel. A plug-in registers its panel class at load
// (Register); the host forgets the class, closing its panels, when the plug-in unloads. When a
// tab is opened (TarsaUiOpenDockbarTab) the host creates the panel from the registered class and
// makes its window from the registered dialog template, switched to the registered module state
// so that the plug-in's own resources are used; when the tab is closed the host destroys the
// panel. The host owns every panel it creates.
#pragma once

#include "host/platform/dialog.h"
#include "host/platform/module_state.h"
#include "host/zefkit/zk_uuid.h"

class CTarsaTabbedDockBarDialog : public CDialog {
 public:
  static const CRuntimeClass kRuntimeClass;
  const CRuntimeClass* GetRuntimeClass() const override { return &kRuntimeClass; }

  // Registers a panel class with its dialog template and module state: false when the class is
  // not a creatable panel class or is registered already.
  static bool Register(const CRuntimeClass* runtime_class, int template_id,
                       AFX_MODULE_STATE* module_state);

  virtual const wchar_t* Caption() const = 0;
  virtual ZK_UUID TabId() const = 0;
  virtual ZK_UUID PlugInID() const = 0;
  // The tab's icon at width × height pixels; the module's shared icon, or null.
  virtual HICON Icon(int width, int height) = 0;
  virtual unsigned int IconResourceId() const = 0;

 private:
  friend class CTarsaApp;
  // Work the host carries out for the panel when it is idle (`idle`), or when the host's clock
  // reaches the time the work is due.
  virtual void RunDueWork(bool idle, unsigned long long now_ms) = 0;
};

// Shows the panel with that tab id, opening it if it is closed: true when it is open afterwards.
// A registered panel is created with its window; a tab no class is registered for opens empty.
bool TarsaUiOpenDockbarTab(const ZK_UUID& tab_id);
// Closes the panel, destroying it: true when it is closed afterwards.
bool TarsaUiCloseDockbarTab(const ZK_UUID& tab_id);
// True when the panel is open; `is_selected` asks in addition that it be the shown tab of its
// dock bar, which an open tab always is here.
bool TarsaUiIsTabVisible(const ZK_UUID& tab_id, bool is_selected = false);
