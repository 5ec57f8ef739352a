// A plug-in module that the host must refuse, built once for each way of being broken:
//   BROKEN_MISSING_EXPORT: no TarsaPlugInSdkServiceRelease export;
//   BROKEN_WRONG_SDK: a service release for another version of the plug-in interface;
//   BROKEN_REFUSED_LOAD: everything right, but OnLoadPlugIn says no;
//   BROKEN_SILENT_REFUSAL: OnLoadPlugIn says no and gives a null reason;
//   BROKEN_THROWING_LOAD: OnLoadPlugIn throws;
//   BROKEN_NAMELESS: PlugInName gives null.
#include <stdexcept>

#include "host/tarsa/tarsa_plugin.h"
#include "plugin/korvo_export.h"

namespace {

class BrokenPlugIn : public CTarsaUtilityPlugIn {
 public:
  ZK_UUID PlugInID() const override {
    return ZK_UUID{0x0B0B0B0B, 0x0B0B, 0x4B0B, {0x8B, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B}};
  }
#ifdef BROKEN_REFUSED_LOAD
  bool OnLoadPlugIn() override { return false; }
  const wchar_t* OnLoadPlugInErrorString() override { return L"its licence has run out"; }
#elif defined(BROKEN_SILENT_REFUSAL)
  bool OnLoadPlugIn() override { return false; }
  const wchar_t* OnLoadPlugInErrorString() override { return nullptr; }
#elif defined(BROKEN_THROWING_LOAD)
  bool OnLoadPlugIn() override { throw std::runtime_error("no licence server"); }
#elif defined(BROKEN_NAMELESS)
  const wchar_t* PlugInName() const override { return nullptr; }
#endif
};

BrokenPlugIn thePlugIn;

}  // namespace

KORVO_EXPORT unsigned int TarsaPlugInSdkVersion() { return kTarsaPlugInSdkVersion; }
#if defined(BROKEN_WRONG_SDK)
KORVO_EXPORT unsigned int TarsaPlugInSdkServiceRelease() { return kTarsaPlugInSdkVersion - 1; }
#elif !defined(BROKEN_MISSING_EXPORT)
KORVO_EXPORT unsigned int TarsaPlugInSdkServiceRelease() { return kTarsaPlugInSdkVersion; }
#endif
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperOrganization() { return L"Broken"; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperAddress() { return L""; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperCountry() { return L""; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperPhone() { return L""; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperFax() { return L""; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperEmail() { return L""; }
KORVO_EXPORT const wchar_t* TarsaPlugInDeveloperWebsite() { return L""; }
KORVO_EXPORT const wchar_t* TarsaPlugInUpdateURL() { return L""; }
