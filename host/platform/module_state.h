// The class library's module state: which module's resources are in use. Code of a module that
// is called from another (a plug-in's panel asked for its icon by the host) switches to its own
// module state for the call with AFX_MANAGE_STATE, so that resources are found in its own
// module; the switch is undone when the scope ends.
#pragma once

#include "host/platform/resources.h"

struct AFX_MODULE_STATE {
  HINSTANCE m_hCurrentInstanceHandle;
  HINSTANCE m_hCurrentResourceHandle;
};

// The module state in use: the host's own until something switches.
AFX_MODULE_STATE* AfxGetModuleState();
// The resources of the module state in use; null for the host's own.
HINSTANCE AfxGetResourceHandle();

// Switches to a module state for its lifetime, then back to the one before. Null leaves the
// state as it is.
class AFX_MAINTAIN_STATE2 {
 public:
  explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state);
  AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
  AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;
  ~AFX_MAINTAIN_STATE2();

 private:
  AFX_MODULE_STATE* m_previous;
};

#define AFX_MANAGE_STATE(state) AFX_MAINTAIN_STATE2 ctl_state_(state)
