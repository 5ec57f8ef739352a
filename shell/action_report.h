// CTsActionReport: how the program answers every command with what it changed, in its own words,
// so that a change made from any front end (command line, panel, script object, the host's access
// commands, a macro) is visible. After a command, Undo or Redo that changed anything it prints
//   Undo Move.                                      (Undo and Redo: the step taken back)
//   1 object added, 2 objects moved.                (objects added, moved or changed, deleted)
//   Stances added: Lid-off.                         (one line for each kind of stance change)
//   Stances removed: Lid-off (its last object was deleted).
//   Stances renamed: Lid-off to Cover-aside.
// A command run inside another one (a macro's) reports nothing of its own: the outermost command
// reports it all when it ends. What a command changed counts by its end result: an object added
// and deleted again is nothing, an object replaced by a new shape (a replacement sends a deletion
// and an addition of the same id) is moved, an object brought back by Undo added.
//
// One instance, TsActionReport(), which the program registers once the plug-in is loaded: the
// plug-in removes the stances that lost their last object when a command ends, and the report,
// notified after it, sees the table as it is left. Everything it prints goes to the command line.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/tarsa/tarsa_event_watcher.h"
#include "host/zefkit/zk_uuid.h"

class CTsActionReport : public CTarsaEventWatcher {
 public:
  // Registers and enables the report.
  void Start();

  void OnBeginCommand(const CTarsaCommand& command, const CTarsaCommandContext& context) override;
  void OnEndCommand(const CTarsaCommand& command, const CTarsaCommandContext& context,
                    CTarsaCommand::result result) override;
  void OnBeginOpenDocument(CTarsaDoc& doc, const wchar_t* file_name, bool merge,
                           bool reference) override;
  void OnEndOpenDocument(CTarsaDoc& doc, const wchar_t* file_name, bool merge,
                         bool reference) override;
  void OnAddObject(CTarsaDoc& doc, CTarsaObject& object) override;
  void OnDeleteObject(CTarsaDoc& doc, CTarsaObject& object) override;
  void OnUnDeleteObject(CTarsaDoc& doc, CTarsaObject& object) override;
  void UndoEvent(undo_event event, unsigned int undo_record_serial_number,
                 const CTarsaCommand* command) override;

 private:
  friend CTsActionReport& TsActionReport();
  CTsActionReport() = default;

  // What happened to one object during the command: whether it was in the model before and is
  // now, and its shape then and now (the CRC of its geometry, user data left out: a replacement
  // that only attached data moved nothing).
  struct ObjectChange {
    bool before = false;
    bool now = false;
    unsigned int shape_before = 0;
    unsigned int shape_now = 0;
  };
  struct Stance {
    ZK_UUID id;
    std::wstring name;
    std::vector<ZK_UUID> objects;
  };

  // Notes that the object is or is not in the model now; `before` says what it was when the
  // command first touched it.
  void Note(const CTarsaObject& object, bool before, bool now);
  // The stances of the document, in table order; none without the plug-in's access.
  static std::vector<Stance> Stances(CTarsaDoc* doc);
  std::wstring ObjectCounts() const;
  std::wstring StanceChanges(const std::vector<Stance>& after) const;

  int m_depth = 0;    // of commands running
  int m_opening = 0;  // of documents being read whose objects are not the command's doing
  std::map<ZK_UUID, ObjectChange> m_objects;
  unsigned int m_doc_serial_number = 0;  // the document of the outermost command
  std::vector<Stance> m_stances_before;
  unsigned int m_new_step = 0;  // the undo step just begun, until its command is known
  std::map<unsigned int, std::wstring> m_step_names;
};

CTsActionReport& TsActionReport();
