#include "host/tarsa/tarsa_risky_action_spy.h"

namespace {

const CTsRiskyActionSpy* g_innermost = nullptr;

}  // namespace

CTsRiskyActionSpy::CTsRiskyActionSpy(const char* kind, const char* function, const char* file,
                                     int line)
    : m_kind(kind), m_function(function), m_file(file), m_line(line), m_outer(g_innermost) {
  g_innermost = this;
}

CTsRiskyActionSpy::~CTsRiskyActionSpy() { g_innermost = m_outer; }

const CTsRiskyActionSpy* CTsRiskyActionSpy::Current() { return g_innermost; }
