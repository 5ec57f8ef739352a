#include "shell/session.h"

#include "host/platform/user_answers.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_app.h"
#include "shell/front_end.h"
#include "shell/script_input.h"
#include "shell/shell_command.h"

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
  ITsFrontEnd* front_end = TsFrontEnd();
  if (front_end == nullptr) return false;
  switch (front_end->AskAboutChanges(DisplayName())) {
    case ITsFrontEnd::UnsavedChanges::save:
      return TsSaveModel(false) == CTarsaCommand::success;
    case ITsFrontEnd::UnsavedChanges::discard:
      return true;
    default:
      return false;
  }
}

namespace {

// Whether a model file that another program wrote since this one read or saved it may be
// replaced: a person is asked (success to go on, cancel for no); a script is refused (failure),
// since no one can look at what would be lost.
CTarsaCommand::result MayReplaceChangedFile(const std::string& path) {
  const std::wstring name = ZK_wString::FromUtf8(path).Text();
  const std::wstring changed = name + L" changed on disk since it was opened or last saved here";
  if (TarsaScriptInput().ReadsScript()) {
    TarsaApp().Print(L"%s; it is not overwritten. Save the model under another name with SaveAs.\n",
                     changed.c_str());
    return CTarsaCommand::failure;
  }
  if (UserAnswers().AskYesNo(changed + L". Replace it with this model?", L"Save")) {
    return CTarsaCommand::success;
  }
  TarsaApp().Print(L"Not saved; %s is as it was.\n", name.c_str());
  return CTarsaCommand::cancel;
}

}  // namespace

CTarsaCommand::result TsSaveModel(bool ask_for_file) {
  CTarsaSession& session = TarsaSession();
  std::string path = session.Path();
  if (ask_for_file || path.empty()) {
    std::wstring typed;
    if (!TsAskForText(L"File to save as", typed)) return CTarsaCommand::cancel;
    path = TsModelFileName(typed);
  }
  if (session.ChangedOnDisk(path)) {
    const CTarsaCommand::result replace = MayReplaceChangedFile(path);
    if (replace != CTarsaCommand::success) return replace;
  }
  std::wstring error;
  if (!session.Save(path, error)) {
    TarsaApp().Print(L"%s\n", error.c_str());
    return CTarsaCommand::failure;
  }
  TarsaApp().Print(L"Saved %s.\n", session.DisplayName().c_str());
  return CTarsaCommand::success;
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
