// CTarsaUndoEventHandler: an undo record of a plug-in's own, handed to the host with
// CTarsaDoc::AddCustomUndoEvent. From then on the host owns it: it calls Undo when the user undoes
// the step the record belongs to, calls it again when the user redoes that step (the document's
// RedoActive is then true), and destroys the record when it drops the step.
#pragma once

class CTarsaDoc;

class CTarsaUndoEventHandler {
 public:
  CTarsaUndoEventHandler() = default;
  CTarsaUndoEventHandler(const CTarsaUndoEventHandler&) = delete;
  CTarsaUndoEventHandler& operator=(const CTarsaUndoEventHandler&) = delete;
  virtual ~CTarsaUndoEventHandler() = default;

  // `description` names the step; `created_by_redo` is true when the step was redone before;
  // `undo_record_serial_number` is the step's.
  virtual void Undo(const CTarsaDoc& doc, const wchar_t* description, bool created_by_redo,
                    unsigned int undo_record_serial_number) = 0;
  // The bytes the record holds, itself included, which the host's undo counts against its
  // memory limit. This base counts the record object alone.
  virtual unsigned int SizeOf() const { return sizeof(*this); }
};
