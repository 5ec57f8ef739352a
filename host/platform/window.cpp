#include "host/platform/window.h"

#include <algorithm>
#include <map>
#include <memory>

namespace {

struct Window {
  HWND parent = nullptr;
  int id = 0;
  RECT rect{0, 0, 0, 0};
  DWORD style = 0;
  std::wstring class_name;
  CWnd* object = nullptr;
  std::vector<HWND> children;
  int repaints = 0;
};

struct WindowTable {
  std::map<HWND, std::unique_ptr<Window>> windows;
  HWND focus = nullptr;
};

// Never destroyed: windows of static objects go after everything else has.
WindowTable& Table() {
  static WindowTable* table = new WindowTable();
  return *table;
}

Window* Find(HWND hwnd) {
  const auto found = Table().windows.find(hwnd);
  return found == Table().windows.end() ? nullptr : found->second.get();
}

}  // namespace

HWND TsCreateWindow(const wchar_t* class_name, DWORD style, const RECT& rect, HWND parent, int id) {
  if (parent != nullptr && !IsWindow(parent)) return nullptr;
  auto window = std::make_unique<Window>();
  window->parent = parent;
  window->id = id;
  window->rect = rect;
  window->style = style;
  window->class_name = class_name ? class_name : L"";
  const HWND hwnd = reinterpret_cast<HWND>(window.get());
  Table().windows[hwnd] = std::move(window);
  if (Window* p = Find(parent)) p->children.push_back(hwnd);
  return hwnd;
}

bool DestroyWindow(HWND hwnd) {
  Window* window = Find(hwnd);
  if (window == nullptr) return false;
  const std::vector<HWND> children = window->children;
  for (HWND child : children) DestroyWindow(child);
  if (Window* parent = Find(window->parent)) {
    auto& siblings = parent->children;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), hwnd), siblings.end());
  }
  if (Table().focus == hwnd) Table().focus = nullptr;
  TsDetachWindowObject(hwnd);
  Table().windows.erase(hwnd);
  return true;
}

void TsDetachWindowObject(HWND hwnd) {
  Window* window = Find(hwnd);
  if (window == nullptr || window->object == nullptr) return;
  CWnd* object = window->object;
  window->object = nullptr;
  object->m_hWnd = nullptr;
  object->OnWindowDestroyed();
}

void InflateRect(RECT* rect, int dx, int dy) {
  rect->left -= dx;
  rect->right += dx;
  rect->top -= dy;
  rect->bottom += dy;
}

bool IsWindow(HWND hwnd) { return Find(hwnd) != nullptr; }

HWND SetFocus(HWND hwnd) {
  const HWND previous = Table().focus;
  Table().focus = IsWindow(hwnd) ? hwnd : nullptr;
  return previous;
}

HWND GetFocus() { return Table().focus; }

bool IsWindowEnabled(HWND hwnd) {
  const Window* window = Find(hwnd);
  return window != nullptr && (window->style & WS_DISABLED) == 0;
}

std::vector<HWND> TsChildWindows(HWND parent) {
  const Window* window = Find(parent);
  return window ? window->children : std::vector<HWND>();
}

CWnd* TsWindowObject(HWND hwnd) {
  const Window* window = Find(hwnd);
  return window ? window->object : nullptr;
}

int TsRepaintCount(HWND hwnd) {
  const Window* window = Find(hwnd);
  return window ? window->repaints : 0;
}

CWnd::~CWnd() { DestroyWindow(); }

bool CWnd::Create(const wchar_t* class_name, DWORD style, const RECT& rect, CWnd* parent, int id) {
  if (m_hWnd != nullptr) return false;
  const HWND parent_hwnd = parent ? parent->m_hWnd : nullptr;
  if (parent != nullptr && !IsWindow(parent_hwnd)) return false;
  return Attach(TsCreateWindow(class_name, style, rect, parent_hwnd, id));
}

bool CWnd::Attach(HWND hwnd) {
  Window* window = Find(hwnd);
  if (window == nullptr || window->object != nullptr || m_hWnd != nullptr) return false;
  window->object = this;
  m_hWnd = hwnd;
  return true;
}

bool CWnd::DestroyWindow() { return m_hWnd != nullptr && ::DestroyWindow(m_hWnd); }

int CWnd::GetDlgCtrlID() const {
  const Window* window = Find(m_hWnd);
  return window ? window->id : 0;
}

HWND CWnd::GetDlgItem(int id) const {
  for (HWND child : TsChildWindows(m_hWnd)) {
    if (Find(child)->id == id) return child;
  }
  return nullptr;
}

DWORD CWnd::GetStyle() const {
  const Window* window = Find(m_hWnd);
  return window ? window->style : 0;
}

const wchar_t* CWnd::ClassName() const {
  const Window* window = Find(m_hWnd);
  return window ? window->class_name.c_str() : L"";
}

void CWnd::MoveWindow(int x, int y, int width, int height, bool repaint) {
  MoveWindow(RECT{x, y, x + width, y + height}, repaint);
}

void CWnd::MoveWindow(const RECT& rect, bool repaint) {
  Window* window = Find(m_hWnd);
  if (window == nullptr) return;
  window->rect = rect;
  if (repaint) ++window->repaints;
}

RECT CWnd::WindowRect() const {
  const Window* window = Find(m_hWnd);
  return window ? window->rect : RECT{0, 0, 0, 0};
}

void CWnd::GetClientRect(RECT* rect) const {
  const RECT r = WindowRect();
  *rect = RECT{0, 0, r.right - r.left, r.bottom - r.top};
}

bool CWnd::EnableWindow(bool enable) {
  Window* window = Find(m_hWnd);
  if (window == nullptr) return false;
  const bool was_disabled = (window->style & WS_DISABLED) != 0;
  window->style = enable ? (window->style & ~WS_DISABLED) : (window->style | WS_DISABLED);
  return was_disabled;
}

bool CWnd::IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }

LRESULT CWnd::SendMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  return m_hWnd ? WindowProc(message, wparam, lparam) : 0;
}

LRESULT CWnd::WindowProc(UINT, WPARAM, LPARAM) { return 0; }
