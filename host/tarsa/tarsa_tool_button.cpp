#include "host/tarsa/tarsa_tool_button.h"

#include "host/platform/module_state.h"
#include "host/tarsa/tarsa_dpi.h"

bool CTsDialogToolButton::Initialize(int normal_icon_id, int highlighted_icon_id,
                                     int disabled_icon_id, const wchar_t* tool_tip, int size) {
  const CTarsaWindowsDpi& dpi = CTarsaWindowsDpi::Dpi();
  const HINSTANCE module = AfxGetResourceHandle();
  m_normal = dpi.LoadIconW(module, normal_icon_id, size, size);
  m_highlighted = dpi.LoadIconW(module, highlighted_icon_id, size, size);
  m_disabled = dpi.LoadIconW(module, disabled_icon_id, size, size);
  m_tool_tip = tool_tip ? tool_tip : L"";
  return m_normal && m_highlighted && m_disabled;
}

HICON CTsDialogToolButton::CurrentIcon(bool pointer_over) const {
  if (!IsWindowEnabled()) return m_disabled;
  return pointer_over ? m_highlighted : m_normal;
}
