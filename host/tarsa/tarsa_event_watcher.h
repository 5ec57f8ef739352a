// CTarsaEventWatcher: the host's base class for objects that watch what happens in the
// application. A watcher receives notifications while it is registered and enabled; every base
// version does nothing. The watcher's owner registers it and must unregister it before
// destroying it (the destructor unregisters a watcher still registered).
#pragma once

#include "host/tarsa/tarsa_command.h"
#include "host/tarsa/tarsa_object.h"

class CTarsaDoc;
class CTarsaView;

class CTarsaEventWatcher {
 public:
  // The codes of UndoEvent.
  enum undo_event {
    no_undo_event = 0,
    begin_recording = 1,
    end_recording = 2,
    begin_undo = 3,
    end_undo = 4,
    begin_redo = 5,
    end_redo = 6,
    purge_record = 7,
  };
  // The kinds of table events.
  enum table_event { added = 0, deleted = 1, undeleted = 2, modified = 3, sorted = 4 };

  CTarsaEventWatcher() = default;
  CTarsaEventWatcher(const CTarsaEventWatcher&) = delete;
  CTarsaEventWatcher& operator=(const CTarsaEventWatcher&) = delete;
  virtual ~CTarsaEventWatcher();

  // Registration with the application: true when the state changed.
  bool Register();
  bool UnRegister();
  bool IsRegistered() const { return m_registered; }
  // A disabled watcher receives nothing; Enable(true) after Register() starts the notifications.
  void Enable(bool enable);
  bool IsEnabled() const { return m_enabled; }

  // Sent by Enable, after the state changed.
  virtual void OnEnableEventWatcher(bool enabled);

  // Application and documents. OnNewDocument when a document was made, before it becomes the
  // active one; OnCloseDocument before a document is destroyed; OnActiveDocumentChanged after the
  // active document changed (null: none is left). Open: OnBeginOpenDocument, then OnAddObject for
  // each object of the file, then the plug-ins read their document data, then
  // OnEndOpenDocument; `merge` and `reference` say whether the file joins an open document.
  // Save: OnBeginSaveDocument before the file is written, OnEndSaveDocument after, whether or not
  // it succeeded. The stand-in sends no OnInitTarsa, OnCloseTarsa, property, unit, settings or
  // view notifications.
  virtual void OnInitTarsa();
  virtual void OnCloseTarsa();
  virtual void OnCloseDocument(CTarsaDoc& doc);
  virtual void OnNewDocument(CTarsaDoc& doc);
  virtual void OnActiveDocumentChanged(CTarsaDoc* doc);
  virtual void OnBeginOpenDocument(CTarsaDoc& doc, const wchar_t* file_name, bool merge,
                                   bool reference);
  virtual void OnEndOpenDocument(CTarsaDoc& doc, const wchar_t* file_name, bool merge,
                                 bool reference);
  virtual void OnBeginSaveDocument(CTarsaDoc& doc, const wchar_t* file_name, bool export_selected);
  virtual void OnEndSaveDocument(CTarsaDoc& doc, const wchar_t* file_name, bool export_selected);
  virtual void OnDocumentPropertiesChanged(CTarsaDoc& doc);
  virtual void OnUnitsChangedWithScaling(CTarsaDoc& doc, double scale);
  virtual void OnAppSettingsChanged();
  virtual void OnCreateView(CTarsaView* view);
  virtual void OnDestroyView(CTarsaView* view);
  virtual void OnSetActiveView(CTarsaView* view);
  virtual void OnRenameView(CTarsaView* view);
  // Commands: OnBeginCommand after the command's undo step began and before it runs;
  // OnEndCommand after it returned, before its undo step ends.
  virtual void OnBeginCommand(const CTarsaCommand& command, const CTarsaCommandContext& context);
  virtual void OnEndCommand(const CTarsaCommand& command, const CTarsaCommandContext& context,
                            CTarsaCommand::result result);
  virtual bool DeleteLayerCheck(CTarsaDoc& doc, int layer_index);
  // Objects, as each change happens, during commands, undo and redo alike. A replacement sends
  // OnReplaceObject(old, new), then OnDeleteObject(old), then OnAddObject(new). Undo and redo
  // bring objects back with OnUnDeleteObject and take them away with OnDeleteObject. Selection
  // changes follow the change that caused them; OnModifyObjectAttributes after a name or mode
  // change.
  virtual void OnAddObject(CTarsaDoc& doc, CTarsaObject& object);
  virtual void OnDeleteObject(CTarsaDoc& doc, CTarsaObject& object);
  virtual void OnReplaceObject(CTarsaDoc& doc, CTarsaObject& old_object, CTarsaObject& new_object);
  virtual void OnUnDeleteObject(CTarsaDoc& doc, CTarsaObject& object);
  virtual void OnPurgeObject(CTarsaDoc& doc, CTarsaObject& object);
  virtual void OnSelectObject(CTarsaDoc& doc, const CTarsaObject& object);
  virtual void OnSelectObjects(CTarsaDoc& doc, const CTarsaObject* const* objects, int count);
  virtual void OnDeselectObject(CTarsaDoc& doc, const CTarsaObject& object);
  virtual void OnDeselectObjects(CTarsaDoc& doc, const CTarsaObject* const* objects, int count);
  virtual void OnDeselectAllObjects(CTarsaDoc& doc, int count);
  virtual void OnModifyObjectAttributes(CTarsaDoc& doc, CTarsaObject& object,
                                        const CTarsaObjectAttributes& old_attributes);
  virtual void OnUpdateObjectMesh(CTarsaDoc& doc, CTarsaObject& object);
  // Tables: LightTableEvent after a light was added, modified, deleted or brought back; the
  // stand-in has no other tables.
  virtual void LayerTableEvent(table_event event, CTarsaDoc& doc, int index);
  virtual void LinetypeTableEvent(table_event event, CTarsaDoc& doc, int index);
  virtual void InstanceDefinitionTableEvent(table_event event, CTarsaDoc& doc, int index);
  virtual void LightTableEvent(table_event event, CTarsaDoc& doc, int index);
  virtual void MaterialTableEvent(table_event event, CTarsaDoc& doc, int index);
  virtual void TextureMappingTableEvent(table_event event, CTarsaDoc& doc, int index);
  virtual void GroupTableEvent(table_event event, CTarsaDoc& doc, int index);
  virtual void AliasTableEvent(table_event event, int index);
  virtual void TextStyleTableEvent(table_event event, CTarsaDoc& doc, int index);
  virtual void DimStyleTableEvent(table_event event, CTarsaDoc& doc, int index);
  virtual void HatchPatternTableEvent(table_event event, CTarsaDoc& doc, int index);
  // Undo: begin_recording and end_recording around the outermost undo step of a change, the
  // step still open at end_recording, so that what a watcher records then joins it;
  // begin_undo / end_undo and begin_redo / end_redo around the host's undo and redo of a step.
  virtual void UndoEvent(undo_event event, unsigned int undo_record_serial_number,
                         const CTarsaCommand* command);
  virtual void Event(int event, const void* data);

 private:
  friend class CTarsaApp;
  bool m_registered = false;
  bool m_enabled = false;
};
