// CKorvoEventWatcher: the plug-in's watcher of host events, which keeps stance tables and
// placement records consistent as the host adds, deletes, replaces and copies objects, runs
// commands, undoes, and opens, merges or references model files, and that keeps each document's
// counts of matched stances (CKorvoMatchCounts) up to date from the same notifications. The
// plug-in object creates and owns it; while it is registered and enabled the host sends it every
// notification, and the plug-in pauses it around the object replacements it makes itself, which
// it then hands to CountReplacement.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "drift/match_counts.h"
#include "events/command_record.h"
#include "events/open_doc_stack.h"
#include "host/tarsa/tarsa_event_watcher.h"

class ZK_BinaryArchive;

class CKorvoEventWatcher : public CTarsaEventWatcher {
 public:
  CKorvoEventWatcher() = default;
  ~CKorvoEventWatcher() override;

  // Switched off or on other than by the watcher pause, the watcher may have missed changes: every
  // document's counts go, to be built again on the next question.
  void OnEnableEventWatcher(bool enabled) override;
  // A closed document's stance table stays in the registry; its counts go.
  void OnCloseDocument(CTarsaDoc& doc) override;
  void OnNewDocument(CTarsaDoc& doc) override;
  // Opens push an item on the open stack; the end of an open that read the document's own
  // stance table cleans stale record entries and unused stances away. An open or a merge drops
  // the document's counts at its start and at its end: it replaces or re-keys records wholesale,
  // and the next question counts them in one visit.
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
  // Outside opens, each object added, deleted or undeleted (undo and redo included) is counted in
  // or out of its document's kept counts, with its record as these handlers leave it.
  void OnUnDeleteObject(CTarsaDoc& doc, CTarsaObject& object) override;
  // After an undo or a redo the panel and the host are told that stances may have changed; at
  // the end of a recorded step the removals its deletions asked for run.
  void UndoEvent(undo_event event, unsigned int undo_record_serial_number,
                 const CTarsaCommand* command) override;
  // Merges the stance table of a file being merged or referenced, read from `archive`, into the
  // document's table: new ids, names made unique with " - Copy", the file's objects moved over
  // to the new ids; one undo step. Nothing happens outside an open or for an unreadable table.
  void ImportStances(CTarsaDoc& doc, ZK_BinaryArchive& archive);

  // Which stances the model of `doc` matches, as one visit would measure them: counted by one
  // visit on the first question since the watcher was enabled or the document last opened or
  // merged a file, then kept up to date from every object the watcher sees leave or arrive. While
  // the watcher is switched off or unregistered it sees nothing, so every question is a new
  // visit. The watcher keeps ownership; the counts are valid until the next question or change of
  // the document.
  const CKorvoMatchCounts& MatchCounts(CTarsaDoc& doc);
  // A replacement the plug-in made while it paused the watcher: the old object is counted out and
  // the new one in.
  void CountReplacement(CTarsaDoc& doc, const CTarsaObject& old_object,
                        const CTarsaObject& new_object);

  CKorvoCommandRecord* m_command_record = nullptr;  // owned; only while a command runs
  CKorvoOpenDocStack m_open_stack;
  bool m_cleanup_requested = false;
  CTarsaObject* m_replaced_object = nullptr;  // the old object of an unfinished replacement
  // The documents in which a stance object was deleted outside a command during the undo step
  // being recorded, each once, in order.
  std::vector<unsigned int> m_removals_at_step_end;
  // True while the watcher pause switches the watcher off or on: the plug-in's own replacements
  // reach the counts through CountReplacement.
  bool m_pausing = false;

 private:
  // What OnAddObject does outside an open, before the object is counted in.
  void TakeInAddedObject(CTarsaDoc& doc, CTarsaObject& object);
  // The document's counts while they are kept, or null.
  CKorvoMatchCounts* KeptCounts(const CTarsaDoc& doc);
  void DropCounts(const CTarsaDoc& doc);

  // Runs the removals the command record asks for, then destroys it.
  void FinishCommandRecord();

  std::unordered_map<unsigned int, std::unique_ptr<CKorvoMatchCounts>> m_match_counts;
  std::unique_ptr<CKorvoMatchCounts> m_unkept_counts;  // the last answer while nothing is kept
};
