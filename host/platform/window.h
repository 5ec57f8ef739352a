// Windows of the platform's window system, with no screen behind them: each window is a record
// of its parent, control id, rectangle, style and enabled state, known by its handle. CWnd is the
// class library's object that a window's messages go to; a window is made by Create (or by a
// dialog from its template) and lives until DestroyWindow, which also destroys its children and
// detaches their objects. A CWnd destroys the window it is attached to when it is destroyed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/platform/platform_types.h"
#include "host/platform/runtime_class.h"

typedef unsigned int UINT;
typedef unsigned long DWORD;
typedef std::uintptr_t WPARAM;
typedef std::intptr_t LPARAM;
typedef std::intptr_t LRESULT;

struct POINT {
  long x;
  long y;
};

struct RECT {
  long left;
  long top;
  long right;
  long bottom;
};

// Window styles the panels use.
constexpr DWORD WS_CHILD = 0x40000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_DISABLED = 0x08000000;
constexpr DWORD WS_TABSTOP = 0x00010000;

// Grows the rectangle by dx on the left and right and by dy at the top and bottom (negative
// values shrink it).
void InflateRect(RECT* rect, int dx, int dy);

// True while `hwnd` names a window that exists.
bool IsWindow(HWND hwnd);
// Gives `hwnd` the keyboard focus: the window that had it, or null. Null or no window clears it.
HWND SetFocus(HWND hwnd);
HWND GetFocus();
// False for a disabled window or none.
bool IsWindowEnabled(HWND hwnd);

class CWnd : public CObject {
 public:
  CWnd() = default;
  CWnd(const CWnd&) = delete;
  CWnd& operator=(const CWnd&) = delete;
  ~CWnd() override;

  // Makes a window of the class named, attached to this object: false when this object already
  // has one or the parent does not exist. `rect` is in the parent's client coordinates.
  bool Create(const wchar_t* class_name, DWORD style, const RECT& rect, CWnd* parent, int id);
  // Attaches an existing window that has no object: false otherwise.
  bool Attach(HWND hwnd);
  // Destroys the window and its children: false when there is none.
  bool DestroyWindow();

  HWND GetSafeHwnd() const { return m_hWnd; }
  int GetDlgCtrlID() const;
  // The child window with that control id, or null.
  HWND GetDlgItem(int id) const;
  DWORD GetStyle() const;
  const wchar_t* ClassName() const;

  void MoveWindow(int x, int y, int width, int height, bool repaint = true);
  void MoveWindow(const RECT& rect, bool repaint = true);
  // The rectangle in the parent's client coordinates.
  RECT WindowRect() const;
  // The client rectangle: the window's size, from 0, 0.
  void GetClientRect(RECT* rect) const;
  // Returns whether the window was disabled before.
  bool EnableWindow(bool enable = true);
  bool IsWindowEnabled() const;

  // Sends a message to the window's object: the object's answer, 0 without a window.
  LRESULT SendMessage(UINT message, WPARAM wparam = 0, LPARAM lparam = 0);

 protected:
  // The object's handling of messages: 0 for a message it does not handle.
  virtual LRESULT WindowProc(UINT message, WPARAM wparam, LPARAM lparam);
  // Called after the window was destroyed and detached.
  virtual void OnWindowDestroyed() {}

 private:
  friend void TsDetachWindowObject(HWND hwnd);
  HWND m_hWnd = nullptr;
};

// A push button; the panels' buttons draw themselves.
constexpr const wchar_t* WC_BUTTONW = L"Button";
constexpr DWORD BS_OWNERDRAW = 0x0000000B;
class CButton : public CWnd {};

// Makes a window with no object attached (a dialog's control until a CWnd attaches it): null
// when the parent given does not exist.
HWND TsCreateWindow(const wchar_t* class_name, DWORD style, const RECT& rect, HWND parent, int id);
// Destroys a window and its children, detaching their objects: false when it does not exist.
bool DestroyWindow(HWND hwnd);
// Detaches the object of a window that is being destroyed; the window table's own step.
void TsDetachWindowObject(HWND hwnd);

// The windows that are children of `parent`, in the order they were made.
std::vector<HWND> TsChildWindows(HWND parent);
// The object attached to a window, or null.
CWnd* TsWindowObject(HWND hwnd);
// The number of times a window was moved with repainting; the front end repaints those.
int TsRepaintCount(HWND hwnd);
