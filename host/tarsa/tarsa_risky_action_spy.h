// CTsRiskyActionSpy: a diagnostic scope of the host around an action that may fail in ways the
// host wants to report (a switch of module state, a call into a plug-in). While it lives, the
// host can name the innermost such action in a crash report.
#pragma once

class CTsRiskyActionSpy {
 public:
  CTsRiskyActionSpy(const char* kind, const char* function, const char* file, int line);
  CTsRiskyActionSpy(const CTsRiskyActionSpy&) = delete;
  CTsRiskyActionSpy& operator=(const CTsRiskyActionSpy&) = delete;
  ~CTsRiskyActionSpy();

  // The innermost open scope, or null.
  static const CTsRiskyActionSpy* Current();

  const char* m_kind;
  const char* m_function;
  const char* m_file;
  int m_line;

 private:
  const CTsRiskyActionSpy* m_outer;
};
