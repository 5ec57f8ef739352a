#include "host/platform/dialog.h"

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
  const HWND hwnd = exchange->Dialog().GetDlgItem(id);
  if (control.GetSafeHwnd() == hwnd && hwnd != nullptr) return;
  if (!control.Attach(hwnd)) exchange->m_ok = false;
}

bool CDialog::Create(HINSTANCE module, int template_id, CWnd* parent, int dpi) {
  const TS_DIALOG_TEMPLATE* dialog = TsFindDialogTemplate(module, template_id);
  if (dialog == nullptr) return false;
  const RECT size = TsDialogUnitsToPixels(0, 0, dialog->cx, dialog->cy, dpi);
  if (!CWnd::Create(L"#32770", dialog->style, size, parent, 0)) return false;
  for (const TS_DIALOG_CONTROL& c : dialog->controls) {
    TsCreateWindow(c.class_name, c.style, TsDialogUnitsToPixels(c.x, c.y, c.cx, c.cy, dpi),
                   GetSafeHwnd(), c.id);
  }
  CDataExchange exchange(*this);
  DoDataExchange(&exchange);
  if (!exchange.m_ok) {
    DestroyWindow();
    return false;
  }
  OnInitDialog();
  return true;
}

void CDialog::DoDataExchange(CDataExchange*) {}

int CDialog::OnInitDialog() { return 1; }

bool CDialog::OnCommand(int) { return false; }

void CDialog::OnContextMenu(CWnd*, POINT) {}

bool CTsDialogEvents::Click(CDialog& dialog, int control_id) {
  const HWND control = dialog.GetDlgItem(control_id);
  if (!dialog.IsWindowEnabled() || !IsWindowEnabled(control)) return false;
  return dialog.OnCommand(control_id);
}

void CTsDialogEvents::ContextMenu(CDialog& dialog, CWnd* window, POINT point) {
  if (dialog.GetSafeHwnd() != nullptr && dialog.IsWindowEnabled())
    dialog.OnContextMenu(window, point);
}
