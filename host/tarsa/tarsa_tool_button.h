// CTsDialogToolButton: a panel's small owner-drawn button that shows an icon and a tool tip. It
// has three icons, for its normal, highlighted (pointer over it) and disabled looks, taken from
// the resources of the module state in use when it is initialised. The panel owns the button
// and binds it to its control.
#pragma once

#include <string>

#include "host/platform/resources.h"

class CTsDialogToolButton : public CButton {
 public:
  // Loads the three icons at size × size pixels and keeps the tool tip: false when an icon is
  // missing from the module's resources (the button then shows no picture).
  bool Initialize(int normal_icon_id, int highlighted_icon_id, int disabled_icon_id,
                  const wchar_t* tool_tip, int size);

  HICON NormalIcon() const { return m_normal; }
  HICON HighlightedIcon() const { return m_highlighted; }
  HICON DisabledIcon() const { return m_disabled; }
  // The icon the button shows now: disabled when it is, else highlighted or normal.
  HICON CurrentIcon(bool pointer_over) const;
  const std::wstring& ToolTip() const { return m_tool_tip; }

 private:
  HICON m_normal = nullptr;
  HICON m_highlighted = nullptr;
  HICON m_disabled = nullptr;
  std::wstring m_tool_tip;
};
