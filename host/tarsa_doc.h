// The host application and its documents. The application owns every open document; a document
// is named, while the program runs, by its runtime serial number, given from 1 upward and never
// given again, so a number of a closed document finds nothing.
#pragma once

#include <functional>
#include <map>
#include <memory>

class CTarsaDoc {
 public:
  CTarsaDoc(const CTarsaDoc&) = delete;
  CTarsaDoc& operator=(const CTarsaDoc&) = delete;
  ~CTarsaDoc();

  unsigned int RuntimeSerialNumber() const { return m_serial_number; }

  // The open document with that runtime serial number, or null (closed, or never made).
  static CTarsaDoc* FromRuntimeSerialNumber(unsigned int serial_number);

 private:
  friend class CTarsaApp;
  explicit CTarsaDoc(unsigned int serial_number);

  unsigned int m_serial_number;
};

class CTarsaApp {
 public:
  CTarsaApp() = default;
  CTarsaApp(const CTarsaApp&) = delete;
  CTarsaApp& operator=(const CTarsaApp&) = delete;

  // Makes a new empty document, owned by the application, and makes it the active one.
  CTarsaDoc* NewDocument();
  // Closes and destroys the document: false when no open document has that serial number.
  bool CloseDocument(unsigned int serial_number);
  // The open document with that serial number, or null.
  CTarsaDoc* Document(unsigned int serial_number) const;
  // The active document, or null when none is open.
  CTarsaDoc* ObsoleteActiveDoc() const;

  // What the host does when a plug-in reports that a document's stances changed (StanceChanged).
  // The host program refreshes its views; tests watch the calls.
  void SetStanceChangedHandler(std::function<void(CTarsaDoc&)> handler);
  void OnStanceChanged(CTarsaDoc& doc);

 private:
  std::map<unsigned int, std::unique_ptr<CTarsaDoc>> m_documents;
  unsigned int m_next_serial_number = 1;
  unsigned int m_active_serial_number = 0;
  std::function<void(CTarsaDoc&)> m_stance_changed_handler;
};

// The one application object of the running host.
CTarsaApp& TarsaApp();

// Exported by the host for the stance plug-in: the stances of `doc` changed.
void StanceChanged(CTarsaDoc& doc);
