#include "shell/session.h"

#include "host/tarsa/standin/tarsa_standin.h"
#include "shell/command_line_answers.h"

CTarsaSession& TarsaSession() {
  static CTarsaSession session;
  return session;
}

CTarsaDoc* CTarsaSession::Document() const {
  return CTarsaDoc::FromRuntimeSerialNumber(m_serial_number);
}

bool CTarsaSession::Start(const std::string& path, std::wstring& error) {
  Register();
  Enable(true);
  CTarsaStandIn::SetStanceChangedHandler([this](CTarsaDoc& doc) { Changed(doc); });
  if (path.empty()) {
    NewDocument();
    return true;
  }
  return OpenDocument(path, error);
}

std::wstring CTarsaSession::DisplayName() const {
  return m_path.empty() ? L"Untitled" : ZK_wString::FromUtf8(m_path).Text();
}

void CTarsaSession::NewDocument() { Replace(CTarsaStandIn::NewDocument(), ""); }

bool CTarsaSession::OpenDocument(const std::string& path, std::wstring& error) {
  TsModelFileStamp stamp;
  CTarsaDoc* doc = CTarsaStandIn::OpenDocument(path, error, &stamp);
  if (doc == nullptr) return false;
  Replace(doc, path);
  m_stamp = stamp;
  return true;
}

bool CTarsaSession::Save(const std::string& path, std::wstring& error) {
  CTarsaDoc* doc = Document();
  if (doc == nullptr || !TsWriteModelFile(*doc, path, error, &m_stamp)) return false;
  m_path = path;
  m_modified = false;
  return true;
}

bool CTarsaSession::ChangedOnDisk(const std::string& path) const {
  if (path != m_path) return false;
  const TsModelFileStamp now = TsModelFileStampOf(path);
  return now != TsModelFileStamp() && now != m_stamp;
}

bool CTarsaSession::MayDropChanges(bool ask) {
  if (!m_modified || !ask) return true;
  return TarsaCommandLineAnswers().AskYesNo(L"Drop the unsaved changes to " + DisplayName() + L"?",
                                            L"");
}

void CTarsaSession::Replace(CTarsaDoc* doc, const std::string& path) {
  const unsigned int old_serial_number = m_serial_number;
  m_serial_number = doc->RuntimeSerialNumber();
  m_path = path;
  m_modified = false;
  if (old_serial_number != 0) CTarsaStandIn::CloseDocument(old_serial_number);
}

void CTarsaSession::Changed(const CTarsaDoc& doc) {
  if (doc.RuntimeSerialNumber() == m_serial_number) m_modified = true;
}

void CTarsaSession::OnAddObject(CTarsaDoc& doc, CTarsaObject&) { Changed(doc); }
void CTarsaSession::OnDeleteObject(CTarsaDoc& doc, CTarsaObject&) { Changed(doc); }
void CTarsaSession::OnUnDeleteObject(CTarsaDoc& doc, CTarsaObject&) { Changed(doc); }
void CTarsaSession::OnModifyObjectAttributes(CTarsaDoc& doc, CTarsaObject&,
                                             const CTarsaObjectAttributes&) {
  Changed(doc);
}

std::string TsModelFileName(const std::wstring& typed) {
  std::string name = ZK_wString(typed.c_str()).ToUtf8();
  const size_t slash = name.find_last_of('/');
  const size_t dot = name.find_last_of('.');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) name += ".tsm";
  return name;
}
