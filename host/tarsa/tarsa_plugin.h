// CTarsaPlugIn: the host's base class of a loaded plug-in. The host asks the plug-in object for
// its identity, and, when it writes or reads a model file, for the plug-in's document data: a
// block of the file that belongs to the plug-in and is filed under its id. The plug-in's module
// owns the object; the host calls it from the load to the unload.
#pragma once

#include <string>

#include "host/zefkit/zk_uuid.h"

class CTarsaDoc;
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

class CTarsaPlugIn {
 public:
  CTarsaPlugIn() = default;
  CTarsaPlugIn(const CTarsaPlugIn&) = delete;
  CTarsaPlugIn& operator=(const CTarsaPlugIn&) = delete;
  virtual ~CTarsaPlugIn() = default;

  // The plug-in's id, by which the host files its document data and its user data.
  virtual ZK_UUID PlugInID() const = 0;

  // Called when the host loads the plug-in: false refuses the load. The base says true.
  virtual bool OnLoadPlugIn();
  // Called before the host unloads the plug-in. The base does nothing.
  virtual void OnUnloadPlugIn();

  // Whether the plug-in has data for the document the options name. The base says no.
  virtual bool ShouldWriteDocument(const CTarsaFileWriteOptions& options);
  // Writes the plug-in's block: true when every write succeeded.
  virtual bool WriteDocument(CTarsaDoc& doc, ZK_BinaryArchive& archive,
                             const CTarsaFileWriteOptions& options);
  // Reads the plug-in's block, after the file's objects were added: true when it was accepted.
  // The archive ends where the block ends.
  virtual bool ReadDocument(CTarsaDoc& doc, ZK_BinaryArchive& archive,
                            const CTarsaFileReadOptions& options);
};
