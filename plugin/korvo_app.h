// CKorvoApp: the module's application object of the platform's class library, one static object
// of the module (plugin/korvo_module.cpp), made without an application name. It does nothing of
// its own: it exists because the class library's panels and automation expect a module to have
// one.
#pragma once

#include "host/platform/win_app.h"

class CKorvoApp : public CWinApp {
 public:
  CKorvoApp() : CWinApp(nullptr) {}
  // The base's start, then TRUE.
  BOOL InitInstance() override;
};
