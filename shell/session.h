// CTarsaSession: what the host program knows about the model being worked on beyond the document
// itself: the file it came from or was last saved to, and whether it changed since. It watches
// the application for changes of objects and stances. One instance, TarsaSession(), made at the
// first call and registered as a watcher until the program ends.
#pragma once

#include <string>

#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/tarsa_command.h"
#include "host/tarsa/tarsa_event_watcher.h"

class CTarsaSession : public CTarsaEventWatcher {
 public:
  // The active document: the one the commands work on. Null only before Start().
  CTarsaDoc* Document() const;
  // Starts watching and makes the first document: the model at `path`, or an empty one when
  // `path` is empty. False, with a message in `error` and no document, when the file cannot be
  // read.
  bool Start(const std::string& path, std::wstring& error);

  // The file of the active document; empty for a model never saved.
  const std::string& Path() const { return m_path; }
  // How the document is named to the user: its file, or "Untitled".
  std::wstring DisplayName() const;
  bool IsModified() const { return m_modified; }

  // Replaces the active document by an empty one, or by the model at `path`: false, with a
  // message in `error` and the old document kept, when the file cannot be read.
  void NewDocument();
  bool OpenDocument(const std::string& path, std::wstring& error);
  // Writes the active document to `path`, which becomes its file: false with a message in
  // `error`, the file on disk unchanged.
  bool Save(const std::string& path, std::wstring& error);
  // True when `path` is the document's file and another program wrote or replaced it since this
  // one read or saved it, so that saving would lose what was written there. A file removed since
  // is no such change.
  bool ChangedOnDisk(const std::string& path) const;

  // Whether the unsaved changes of the document may be dropped: true when there are none or
  // `ask` is false; otherwise the front end asks the user, who may save them first (true once
  // saved), discard them (true) or cancel (false).
  bool MayDropChanges(bool ask);

  void OnAddObject(CTarsaDoc& doc, CTarsaObject& object) override;
  void OnDeleteObject(CTarsaDoc& doc, CTarsaObject& object) override;
  void OnUnDeleteObject(CTarsaDoc& doc, CTarsaObject& object) override;
  void OnModifyObjectAttributes(CTarsaDoc& doc, CTarsaObject& object,
                                const CTarsaObjectAttributes& old_attributes) override;

 private:
  friend CTarsaSession& TarsaSession();
  CTarsaSession() = default;
  void Changed(const CTarsaDoc& doc);
  void Replace(CTarsaDoc* doc, const std::string& path);

  unsigned int m_serial_number = 0;
  std::string m_path;
  TsModelFileStamp m_stamp;  // of the file as this program last read or wrote it
  bool m_modified = false;
};

CTarsaSession& TarsaSession();

// Saves the active document to its file, asking on the command line for a file when it has none
// or `ask_for_file` is true, and prints what happened: success, cancel when no file was given,
// failure with the reason when it could not be written.
CTarsaCommand::result TsSaveModel(bool ask_for_file);

// A file name as the user typed it, with ".tsm" added when it has no extension.
std::string TsModelFileName(const std::wstring& typed);
