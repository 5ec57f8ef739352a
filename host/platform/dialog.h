// CDialog: a window made from a dialog template of a module's resources, with its controls as
// child windows. Create makes the window and the controls, binds controls to member objects
// (DoDataExchange) and calls OnInitDialog. The dialog's maker owns the object; destroying it
// destroys the window.
#pragma once

#include "host/platform/resources.h"

class CDialog;

// The binding step of DoDataExchange.
class CDataExchange {
 public:
  explicit CDataExchange(CDialog& dialog) : m_dialog(dialog) {}
  CDialog& Dialog() const { return m_dialog; }
  // False once a control could not be bound.
  bool m_ok = true;

 private:
  CDialog& m_dialog;
};

// Attaches the dialog's control `id` to `control`; a missing control fails the exchange.
void DDX_Control(CDataExchange* exchange, int id, CWnd& control);

class CDialog : public CWnd {
 public:
  // Makes the window of template `template_id` of `module` and its controls at `dpi`, as a child
  // of `parent` (may be null), binds the controls and initialises the dialog: false, with no
  // window left, when the template is missing or a control could not be bound.
  bool Create(HINSTANCE module, int template_id, CWnd* parent, int dpi);

 protected:
  virtual void DoDataExchange(CDataExchange* exchange);
  // Called once the controls are bound; the answer tells the platform whether to set the focus.
  virtual int OnInitDialog();
  // The message a control sends its dialog when clicked.
  virtual bool OnCommand(int control_id);
  // The context-menu message, at a point in screen coordinates ((-1, -1) from the keyboard).
  virtual void OnContextMenu(CWnd* window, POINT point);

 private:
  friend class CTsDialogEvents;
};

// Delivers input to a dialog, as the window system does when the user acts on it.
class CTsDialogEvents {
 public:
  // A click of the control: false when it does not exist, is disabled, or nothing handled it.
  static bool Click(CDialog& dialog, int control_id);
  static void ContextMenu(CDialog& dialog, CWnd* window, POINT point);
};
