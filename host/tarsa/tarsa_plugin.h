// CTarsaPlugIn: the host's base class of a loaded plug-in. The host asks the plug-in object for
// its identity, and, when it writes or reads a model file, for the plug-in's document data: a
// block of the file that belongs to the plug-in and is filed under its id. The plug-in's module
// owns the object; the host calls it from the load to the unload.
//
// The order of the virtual operations is the binary contract with the host's plug-ins.
#pragma once

#include <string>

#include "host/platform/automation.h"
#include "host/platform/platform_types.h"
#include "host/zefkit/zk_uuid.h"

class CTarsaDoc;
class CTarsaProfileContext;
class ZK_BinaryArchive;

// What the host tells a plug-in about the model file it writes.
class CTarsaFileWriteOptions {
 public:
  CTarsaFileWriteOptions(unsigned int doc_serial_number, const std::wstring& file_name)
      : m_doc_serial_number(doc_serial_number), m_file_name(file_name) {}
  unsigned int DocumentSerialNumber() const { return m_doc_serial_number; }
  const wchar_t* FileName() const { return m_file_name.c_str(); }

 private:
  unsigned int m_doc_serial_number;
  std::wstring m_file_name;
};

// What the host tells a plug-in about the model file it reads.
class CTarsaFileReadOptions {
 public:
  CTarsaFileReadOptions(const std::wstring& file_name, bool merge, bool reference)
      : m_file_name(file_name), m_merge(merge), m_reference(reference) {}
  const wchar_t* FileName() const { return m_file_name.c_str(); }
  bool Merge() const { return m_merge; }
  bool Reference() const { return m_reference; }

 private:
  std::wstring m_file_name;
  bool m_merge;
  bool m_reference;
};

// The version of this plug-in interface. A module's TarsaPlugInSdkVersion and
// TarsaPlugInSdkServiceRelease exports both give it; the host refuses modules that give another.
constexpr unsigned int kTarsaPlugInSdkVersion = 0x8C005B79;

class CTarsaPlugIn {
 public:
  // What kind of plug-in the host loads.
  enum plugin_type { unknown_plugin = 0, utility_plugin = 1 };

  // A plug-in object is a static object of its module: made while the host opens the module,
  // it is the plug-in the host then loads (see host/tarsa/standin/tarsa_plugin_loader.h).
  CTarsaPlugIn();
  CTarsaPlugIn(const CTarsaPlugIn&) = delete;
  CTarsaPlugIn& operator=(const CTarsaPlugIn&) = delete;
  virtual ~CTarsaPlugIn();

  // The plug-in's id, by which the host files its document data and its user data.
  virtual ZK_UUID PlugInID() const = 0;
  // The plug-in's name in English and in the user's language, and its version text. The bases
  // give empty texts and the English name.
  virtual const wchar_t* PlugInName() const;
  virtual const wchar_t* LocalPlugInName() const;
  virtual const wchar_t* PlugInVersion() const;
  virtual plugin_type PlugInType() const;

  // Called when the host loads the plug-in: false refuses the load. The base says true.
  virtual bool OnLoadPlugIn();
  // Why the load was refused; the base says nothing (empty text).
  virtual const wchar_t* OnLoadPlugInErrorString();
  // Whether the host should scale the plug-in's dialog fonts; the base says no.
  virtual bool ScaleDialogFont();
  // Called when the host saves its settings; the base does nothing.
  virtual void OnSaveAllSettings();
  // Called before the host unloads the plug-in. The base does nothing.
  virtual void OnUnloadPlugIn();
  // The plug-in's own settings in the host's profile; the bases keep none.
  virtual void LoadProfile(const wchar_t* section, CTarsaProfileContext& profile);
  virtual void SaveProfile(const wchar_t* section, CTarsaProfileContext& profile);
  // Called when the host registers the plug-in for later sessions; the base does nothing.
  virtual void OnRegisterPlugIn();
  // When the host loads the plug-in in later sessions: 0 never, 1 when first needed, 2 at start.
  // The base says 1.
  virtual int PlugInLoadTime();
  // Whether the host lists the plug-in in its help menu; the base says no.
  virtual bool AddToPlugInHelpMenu() const;
  // Shows the plug-in's help: true when there is some. The base has none.
  virtual bool OnDisplayPlugInHelp(HWND parent);
  // The plug-in's menus; the bases have none.
  virtual void OnInitPlugInMenuPopups(unsigned int menu_id);
  virtual const wchar_t* GetMenuMessageString(unsigned int command_id) const;
  virtual bool OnPlugInMenuCommand(unsigned int command_id);

  // Whether the plug-in has data for the document the options name. The base says no.
  virtual bool ShouldWriteDocument(const CTarsaFileWriteOptions& options);
  // Whether the plug-in writes its data into files of the oldest format; the base says no.
  virtual bool SaveAsV3(const CTarsaFileWriteOptions& options);
  // Writes the plug-in's block: true when every write succeeded.
  virtual bool WriteDocument(CTarsaDoc& doc, ZK_BinaryArchive& archive,
                             const CTarsaFileWriteOptions& options);
  // Reads the plug-in's block, after the file's objects were added: true when it was accepted.
  // The archive ends where the block ends.
  virtual bool ReadDocument(CTarsaDoc& doc, ZK_BinaryArchive& archive,
                            const CTarsaFileReadOptions& options);

  // Pages the plug-in adds to the host's options and document-properties dialogs; the bases
  // add none.
  virtual void AddPagesToOptionsDialog(HWND parent);
  virtual void AddPagesToDocumentPropertiesDialog(CTarsaDoc& doc);
  // The interface of that id of the plug-in's script object, through which scripts call the
  // plug-in, with one reference added for the caller, who releases it. Null when the plug-in
  // offers none of that id; the base offers none.
  virtual IUnknown* GetScriptObjectInterface(REFIID iid);
};

// The base of plug-ins that add commands and tools rather than file formats or renderers.
class CTarsaUtilityPlugIn : public CTarsaPlugIn {
 public:
  plugin_type PlugInType() const override;
};

// A utility plug-in that the host loads as part of the system.
class CTarsaUtilitySystemPlugIn : public CTarsaUtilityPlugIn {};
