#include "host/platform/win_app.h"

#include <algorithm>

namespace {

// Made but not yet taken. A plain pointer to a vector made on first use and never freed, so that
// applications made or destroyed at any time of the program find it valid.
std::vector<CWinApp*>* g_new_apps = nullptr;

}  // namespace

BOOL CWinThread::InitInstance() { return TRUE; }

int CWinThread::ExitInstance() { return 0; }

CWinApp::CWinApp(const wchar_t* app_name) : m_pszAppName(app_name) {
  if (g_new_apps == nullptr) g_new_apps = new std::vector<CWinApp*>();
  g_new_apps->push_back(this);
}

CWinApp::~CWinApp() {
  if (g_new_apps == nullptr) return;
  g_new_apps->erase(std::remove(g_new_apps->begin(), g_new_apps->end(), this), g_new_apps->end());
}

std::vector<CWinApp*> AfxTakeNewApps() {
  std::vector<CWinApp*> apps;
  if (g_new_apps) apps.swap(*g_new_apps);
  return apps;
}
