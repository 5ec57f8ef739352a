#include "plugin/korvo_plugin.h"

#include "data/place_holder.h"
#include "events/event_watcher.h"
#include "host/tarsa/tarsa_doc.h"
#include "host/tarsa/tarsa_localize.h"
#include "host/tarsa/tarsa_message_box.h"
#include "host/tarsa/tarsa_stance_dynamic_access.h"
#include "host/zefkit/zk_archive.h"
#include "operations/dynamic_access.h"
#include "panel/panel_resources.h"
#include "panel/stances_panel.h"

namespace {

const int kDocumentVersion = 0;

const ZK_UUID kPlugInId = {
    0xFCEA57AE, 0x7C24, 0x4BC5, {0xA0, 0x67, 0x1D, 0xFF, 0xA6, 0x13, 0x98, 0x59}};

}  // namespace

// The event watcher is made after the registry and the script object.
CKorvoPlugIn::CKorvoPlugIn()
    : m_version(L"" __DATE__ "  " __TIME__), m_event_watcher(nullptr), m_dynamic_access(nullptr) {
  m_event_watcher = new CKorvoEventWatcher();
}

CKorvoPlugIn::~CKorvoPlugIn() {
  RemoveAllDocData();
  delete m_event_watcher;
  m_event_watcher = nullptr;
  Stance_SetTarsaDynamicAccess(nullptr);
  delete m_dynamic_access;
  m_dynamic_access = nullptr;
}

ZK_UUID CKorvoPlugIn::PlugInID() const { return kPlugInId; }

const wchar_t* CKorvoPlugIn::PlugInName() const { return L"Stance"; }

const wchar_t* CKorvoPlugIn::LocalPlugInName() const { return TsLocalizeString(L"Stance", 19663); }

const wchar_t* CKorvoPlugIn::PlugInVersion() const { return m_version; }

bool CKorvoPlugIn::OnLoadPlugIn() {
  EventWatcher()->Register();
  EventWatcher()->Enable(true);
  CTarsaTabbedDockBarDialog::Register(&CTsStancesManagerDlg::kRuntimeClass,
                                      CTsStancesManagerDlg::dialog_template, KorvoModuleState());
  m_dynamic_access = new CKorvoDynamicAccess();
  Stance_SetTarsaDynamicAccess(m_dynamic_access);
  return CTarsaUtilitySystemPlugIn::OnLoadPlugIn();
}

void CKorvoPlugIn::OnUnloadPlugIn() {
  Stance_SetTarsaDynamicAccess(nullptr);
  EventWatcher()->Enable(false);
  EventWatcher()->UnRegister();
  delete m_dynamic_access;
  m_dynamic_access = nullptr;
  CTarsaUtilitySystemPlugIn::OnUnloadPlugIn();
}

int CKorvoPlugIn::PlugInLoadTime() { return 2; }

bool CKorvoPlugIn::AddToPlugInHelpMenu() const { return false; }

bool CKorvoPlugIn::OnDisplayPlugInHelp(HWND parent) {
  return CTarsaUtilitySystemPlugIn::OnDisplayPlugInHelp(parent);
}

bool CKorvoPlugIn::ShouldWriteDocument(const CTarsaFileWriteOptions& options) {
  if (CTarsaDoc::FromRuntimeSerialNumber(options.DocumentSerialNumber()) == nullptr) return false;
  return DocData(options.DocumentSerialNumber())->Count() > 0;
}

bool CKorvoPlugIn::WriteDocument(CTarsaDoc& doc, ZK_BinaryArchive& archive,
                                 const CTarsaFileWriteOptions&) {
  return archive.WriteInt(kDocumentVersion) && archive.WriteString(kKorvoPlaceHolder) &&
         DocData(doc.RuntimeSerialNumber())->Write(archive);
}

bool CKorvoPlugIn::ReadDocument(CTarsaDoc& doc, ZK_BinaryArchive& archive,
                                const CTarsaFileReadOptions&) {
  const BlockHeader header = ReadBlockHeader(archive);
  if (header == BlockHeader::newer) {
    TarsaMessageBox(
        TsLocalizeString(L"This model was created with a more recent version of the Stance plug-in",
                         15750),
        TsLocalizeString(L"Stance", 15751), TS_MB_OK | TS_MB_ICONINFORMATION);
    return false;
  }
  CKorvoEventWatcher* watcher = EventWatcher();
  CKorvoOpenDocStackItem* item = watcher->m_open_stack.Top();
  if (header == BlockHeader::damaged) return false;
  if (item && (item->m_reference || item->m_merge)) {
    watcher->ImportStances(doc, archive);
  } else if (!DocData(doc.RuntimeSerialNumber())->ReadWhole(archive)) {
    // A block that is not whole is never half read: what the file holds stays unread, and the
    // host keeps it, rather than a table that would lose the stances it lacks.
    return false;
  }
  if (item) {
    item->m_table_read = true;
  } else {
    watcher->m_cleanup_requested = true;
  }
  return true;
}

CKorvoPlugIn::BlockHeader CKorvoPlugIn::ReadBlockHeader(ZK_BinaryArchive& archive) {
  int version = 0;
  if (!archive.ReadInt(version) || version > kDocumentVersion) return BlockHeader::newer;
  ZK_wString place_holder;
  return archive.ReadString(place_holder) ? BlockHeader::read : BlockHeader::damaged;
}

IUnknown* CKorvoPlugIn::GetScriptObjectInterface(REFIID iid) {
  if (iid != IID_IUnknown && iid != IID_IDispatch) return nullptr;
  IUnknown* part = m_script_object.GetInterface(iid);
  if (part) m_script_object.AddRef();
  return part;
}

CKorvoDocData* CKorvoPlugIn::DocData(unsigned int doc_serial_number) {
  return m_doc_data_map.DocData(doc_serial_number);
}

void CKorvoPlugIn::RemoveAllDocData() { m_doc_data_map.RemoveAll(); }

CKorvoEventWatcher* CKorvoPlugIn::EventWatcher() {
  if (m_event_watcher == nullptr) m_event_watcher = new CKorvoEventWatcher();
  return m_event_watcher;
}
