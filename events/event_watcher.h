// CKorvoEventWatcher: the plug-in's watcher of host events, which keeps stance tables and
// placement records consistent as the host adds, deletes, replaces and copies objects, runs
// commands, undoes, and opens, merges or references model files. The plug-in object creates and
// owns it; while it is registered and enabled the host sends it every notification, and the
// plug-in pauses it around the object replacements it makes itself.
#pragma once

#include <vector>

#include "events/command_record.h"
#include "events/open_doc_stack.h"
#include "host/tarsa/tarsa_event_watcher.h"

class ZK_BinaryArchive;

class CKorvoEventWatcher : public CTarsaEventWatcher {
 public:
  CKorvoEventWatcher() = default;
  ~CKorvoEventWatcher() override;

  // A closed document's stance table stays in the registry: nothing to do.
  void OnCloseDocument(CTarsaDoc& doc) override;
  void OnNewDocument(CTarsaDoc& doc) override;
  // Opens push an item on the open stack; the end of an open that read the document's own
  // stance table cleans stale record entries and unused stances away.
  void OnBeginOpenDocument(CTarsaDoc& doc, const wchar_t* file_name, bool merge,
                           bool reference) override;
  void OnEndOpenDocument(CTarsaDoc& doc, const wchar_t* file_name, bool merge,
                         bool reference) override;
  // A command run gets a command record of its own, from start to end. When it ends, the stances
  // that no object carries any more after its deletions are removed, in one undo record that
  // joins the command's step, with one notification.
  void OnBeginCommand(const CTarsaCommand& command, const CTarsaCommandContext& context) override;
  void OnEndCommand(const CTarsaCommand& command, const CTarsaCommandContext& context,
                    CTarsaCommand::result result) override;
  // A copy that arrives with a record counts as placed where its source stood before the last
  // transform; the new half of a replacement keeps, or receives, the old half's record; objects
  // a command adds may receive the record of an object it deletes. Nothing while the host undoes
  // or redoes.
  void OnAddObject(CTarsaDoc& doc, CTarsaObject& object) override;
  // Deleting a stance object removes the stances no object carries any more, undoably, once for
  // many deletions: at a command's end inside one; outside a command at the end of the undo step
  // the deletion is part of, as one undo record that joins it, announcing each stance removed and
  // then the removal; at once when no step is being recorded. Nothing for a replacement or while
  // the host undoes or redoes.
  void OnDeleteObject(CTarsaDoc& doc, CTarsaObject& object) override;
  void OnReplaceObject(CTarsaDoc& doc, CTarsaObject& old_object, CTarsaObject& new_object) override;
  // An undeleted object comes back with its record; stances return only through undo records.
  void OnUnDeleteObject(CTarsaDoc& doc, CTarsaObject& object) override;
  // After an undo or a redo the panel and the host are told that stances may have changed; at
  // the end of a recorded step the removals its deletions asked for run.
  void UndoEvent(undo_event event, unsigned int undo_record_serial_number,
                 const CTarsaCommand* command) override;
  // Merges the stance table of a file being merged or referenced, read from `archive`, into the
  // document's table: new ids, names made unique with " - Copy", the file's objects moved over
  // to the new ids; one undo step. Nothing happens outside an open or for an unreadable table.
  void ImportStances(CTarsaDoc& doc, ZK_BinaryArchive& archive);

  CKorvoCommandRecord* m_command_record = nullptr;  // owned; only while a command runs
  CKorvoOpenDocStack m_open_stack;
  bool m_cleanup_requested = false;
  CTarsaObject* m_replaced_object = nullptr;  // the old object of an unfinished replacement
  // The documents in which a stance object was deleted outside a command during the undo step
  // being recorded, each once, in order.
  std::vector<unsigned int> m_removals_at_step_end;

 private:
  // Runs the removals the command record asks for, then destroys it.
  void FinishCommandRecord();
};
