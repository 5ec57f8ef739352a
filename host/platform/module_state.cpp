#include "host/platform/module_state.h"

namespace {

AFX_MODULE_STATE g_host_state{nullptr, nullptr};
AFX_MODULE_STATE* g_current_state = &g_host_state;

}  // namespace

AFX_MODULE_STATE* AfxGetModuleState() { return g_current_state; }

HINSTANCE AfxGetResourceHandle() { return g_current_state->m_hCurrentResourceHandle; }

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state) : m_previous(g_current_state) {
  if (state != nullptr) g_current_state = state;
}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2() { g_current_state = m_previous; }
