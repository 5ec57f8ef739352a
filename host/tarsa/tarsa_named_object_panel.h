// CTsNamedDocObjectManagerDlg: the host's base class of a dockable panel that lists named objects
// of a document. The host creates and destroys the panel's window; the panel asks for a rebuild
// of its list, which the host carries out after the delay given.
#pragma once

#include "host/platform/platform_types.h"

class CTsNamedDocObjectManagerDlg {
 public:
  CTsNamedDocObjectManagerDlg() = default;
  CTsNamedDocObjectManagerDlg(const CTsNamedDocObjectManagerDlg&) = delete;
  CTsNamedDocObjectManagerDlg& operator=(const CTsNamedDocObjectManagerDlg&) = delete;
  virtual ~CTsNamedDocObjectManagerDlg() = default;

  // The panel's window, or null while it has none.
  HWND GetSafeHwnd() const { return m_hwnd; }
  // Asks for the list to be rebuilt `milliseconds` from now; a later request replaces a pending
  // one.
  void DeferredRebuildList(unsigned int milliseconds);

 private:
  friend class CTarsaStandIn;
  // The host makes and destroys the window when it shows and closes the panel's tab.
  void CreateWindowHandle();
  void DestroyWindowHandle();

  HWND m_hwnd = nullptr;
  bool m_rebuild_pending = false;
  unsigned int m_rebuild_delay = 0;
  int m_rebuild_requests = 0;
};
