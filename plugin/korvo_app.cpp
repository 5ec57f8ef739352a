#include "plugin/korvo_app.h"

BOOL CKorvoApp::InitInstance() {
  CWinApp::InitInstance();
  return TRUE;
}
