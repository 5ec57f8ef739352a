#include "host/tarsa/tarsa_named_object_panel.h"

namespace {

// The stand-in has no window system: a window handle is any unique non-null value.
HWND NewWindowHandle() {
  static unsigned long next = 0x1000;
  return reinterpret_cast<HWND>(next += 0x10);
}

}  // namespace

void CTsNamedDocObjectManagerDlg::CreateWindowHandle() {
  if (m_hwnd == nullptr) m_hwnd = NewWindowHandle();
}

void CTsNamedDocObjectManagerDlg::DestroyWindowHandle() {
  m_hwnd = nullptr;
  m_rebuild_pending = false;
}

void CTsNamedDocObjectManagerDlg::DeferredRebuildList(unsigned int milliseconds) {
  m_rebuild_pending = true;
  m_rebuild_delay = milliseconds;
  ++m_rebuild_requests;
}
