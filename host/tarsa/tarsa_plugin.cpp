#include "host/tarsa/tarsa_plugin.h"

#include "host/tarsa/standin/tarsa_plugin_loader.h"

CTarsaPlugIn::CTarsaPlugIn() { CTarsaPlugInLoader::NoteConstructed(*this); }

CTarsaPlugIn::~CTarsaPlugIn() = default;

const wchar_t* CTarsaPlugIn::PlugInName() const { return L""; }

const wchar_t* CTarsaPlugIn::LocalPlugInName() const { return PlugInName(); }

const wchar_t* CTarsaPlugIn::PlugInVersion() const { return L""; }

CTarsaPlugIn::plugin_type CTarsaPlugIn::PlugInType() const { return unknown_plugin; }

const wchar_t* CTarsaPlugIn::OnLoadPlugInErrorString() { return L""; }

bool CTarsaPlugIn::ScaleDialogFont() { return false; }

void CTarsaPlugIn::OnSaveAllSettings() {}

void CTarsaPlugIn::LoadProfile(const wchar_t*, CTarsaProfileContext&) {}

void CTarsaPlugIn::SaveProfile(const wchar_t*, CTarsaProfileContext&) {}

void CTarsaPlugIn::OnRegisterPlugIn() {}

int CTarsaPlugIn::PlugInLoadTime() { return 1; }

bool CTarsaPlugIn::AddToPlugInHelpMenu() const { return false; }

bool CTarsaPlugIn::OnDisplayPlugInHelp(HWND) { return false; }

void CTarsaPlugIn::OnInitPlugInMenuPopups(unsigned int) {}

const wchar_t* CTarsaPlugIn::GetMenuMessageString(unsigned int) const { return L""; }

bool CTarsaPlugIn::OnPlugInMenuCommand(unsigned int) { return false; }

bool CTarsaPlugIn::SaveAsV3(const CTarsaFileWriteOptions&) { return false; }

void CTarsaPlugIn::AddPagesToOptionsDialog(HWND) {}

void CTarsaPlugIn::AddPagesToDocumentPropertiesDialog(CTarsaDoc&) {}

IUnknown* CTarsaPlugIn::GetScriptObjectInterface(REFIID) { return nullptr; }

CTarsaPlugIn::plugin_type CTarsaUtilityPlugIn::PlugInType() const { return utility_plugin; }

bool CTarsaPlugIn::ShouldWriteDocument(const CTarsaFileWriteOptions&) { return false; }

bool CTarsaPlugIn::WriteDocument(CTarsaDoc&, ZK_BinaryArchive&, const CTarsaFileWriteOptions&) {
  return true;
}

bool CTarsaPlugIn::ReadDocument(CTarsaDoc&, ZK_BinaryArchive&, const CTarsaFileReadOptions&) {
  return true;
}

bool CTarsaPlugIn::OnLoadPlugIn() { return true; }

void CTarsaPlugIn::OnUnloadPlugIn() {}
