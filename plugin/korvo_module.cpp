// The module Korvo.tsp: its static objects and its exports. Opening the module builds the static
// objects below in this order; closing it destroys them in reverse: the plug-in object, the
// placement record's class registration with the kernel, the Stance command, the application
// object. The plug-in's further commands follow the Stance command, registered in the same way.
#include "command/import_preview_command.h"
#include "command/part_restore_command.h"
#include "command/stance_check_command.h"
#include "command/stance_command.h"
#include "data/placement_record.h"
#include "host/tarsa/tarsa_plugin.h"
#include "plugin/korvo_app.h"
#include "plugin/korvo_export.h"
#include "plugin/korvo_plugin.h"

namespace {

CKorvoPlugIn thePlugIn;

}  // namespace

const ZK_ClassId CKorvoUserData::m_record_class("CKorvoUserData", "ZK_UserData",
                                                CKorvoUserData::CreateRecord,
                                                "4C865638-2D45-4f5d-9F10-618A0DBD3978");

namespace {

CCommandKorvo theStanceCommand;
CCommandStanceCheck theStanceCheckCommand;
CCommandStanceRestoreObjects theStanceRestoreObjectsCommand;
CCommandStanceImportPreview theStanceImportPreviewCommand;
CKorvoApp theApp;

}  // namespace

CKorvoPlugIn& KorvoPlugIn() { return thePlugIn; }

KORVO_EXPORT unsigned int TarsaPlugInSdkVersion() { return kTarsaPlugInSdkVersion; }
KORVO_EXPORT unsigned int TarsaPlugInSdkServiceRelease() { return kTarsaPlugInSdkVersion; }

KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperOrganization() { return L"Korvo"; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperAddress() {
  return L"Korvo team\r\n12 Harbour Lane, Port Ellen";
}
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperCountry() { return L"United Kingdom"; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperPhone() { return L"+44 20 7946 0321"; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperFax() { return L"+44 20 7946 0322"; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperEmail() { return L"support@korvo.example"; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperWebsite() { return L"https://korvo.example"; }
KORVO_EXPORT const wchar_t* TarsaPlugInUpdateURL() { return TarsaPlugInDeveloperWebsite(); }
