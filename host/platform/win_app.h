// CWinThread and CWinApp: the platform class library's application object. A module built on the
// class library makes one as a static object. When the module has been opened, its loader starts
// the applications it made (AfxTakeNewApps, then InitInstance); before closing it, the loader ends
// them (ExitInstance). The module owns the objects.
#pragma once

#include <vector>

#include "host/platform/cmd_target.h"

class CWinThread : public CCmdTarget {
 public:
  // Starts the thread's work: TRUE to go on, FALSE to refuse. The base says TRUE.
  virtual BOOL InitInstance();
  // Ends it, giving an exit code. The base gives 0.
  virtual int ExitInstance();
};

class CWinApp : public CWinThread {
 public:
  // Without a name, the application is known by its module's name.
  explicit CWinApp(const wchar_t* app_name = nullptr);
  ~CWinApp() override;
  CWinApp(const CWinApp&) = delete;
  CWinApp& operator=(const CWinApp&) = delete;

  const wchar_t* m_pszAppName;  // null: the module's name
};

// The applications made since the last call, oldest first; they are not started yet. The
// applications stay their modules'.
std::vector<CWinApp*> AfxTakeNewApps();
