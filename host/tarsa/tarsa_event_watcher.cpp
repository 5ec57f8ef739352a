#include "host/tarsa/tarsa_event_watcher.h"

#include "host/tarsa/tarsa_app.h"

CTarsaEventWatcher::~CTarsaEventWatcher() { UnRegister(); }

bool CTarsaEventWatcher::Register() { return TarsaApp().RegisterEventWatcher(*this); }

bool CTarsaEventWatcher::UnRegister() {
  return m_registered && TarsaApp().UnRegisterEventWatcher(*this);
}

void CTarsaEventWatcher::Enable(bool enable) {
  if (m_enabled == enable) return;
  m_enabled = enable;
  OnEnableEventWatcher(enable);
}

void CTarsaEventWatcher::OnEnableEventWatcher(bool) {}
void CTarsaEventWatcher::OnInitTarsa() {}
void CTarsaEventWatcher::OnCloseTarsa() {}
void CTarsaEventWatcher::OnCloseDocument(CTarsaDoc&) {}
void CTarsaEventWatcher::OnNewDocument(CTarsaDoc&) {}
void CTarsaEventWatcher::OnActiveDocumentChanged(CTarsaDoc*) {}
void CTarsaEventWatcher::OnBeginOpenDocument(CTarsaDoc&, const wchar_t*, bool, bool) {}
void CTarsaEventWatcher::OnEndOpenDocument(CTarsaDoc&, const wchar_t*, bool, bool) {}
void CTarsaEventWatcher::OnBeginSaveDocument(CTarsaDoc&, const wchar_t*, bool) {}
void CTarsaEventWatcher::OnEndSaveDocument(CTarsaDoc&, const wchar_t*, bool) {}
void CTarsaEventWatcher::OnDocumentPropertiesChanged(CTarsaDoc&) {}
void CTarsaEventWatcher::OnUnitsChangedWithScaling(CTarsaDoc&, double) {}
void CTarsaEventWatcher::OnAppSettingsChanged() {}
void CTarsaEventWatcher::OnCreateView(CTarsaView*) {}
void CTarsaEventWatcher::OnDestroyView(CTarsaView*) {}
void CTarsaEventWatcher::OnSetActiveView(CTarsaView*) {}
void CTarsaEventWatcher::OnRenameView(CTarsaView*) {}
void CTarsaEventWatcher::OnBeginCommand(const CTarsaCommand&, const CTarsaCommandContext&) {}
void CTarsaEventWatcher::OnEndCommand(const CTarsaCommand&, const CTarsaCommandContext&,
                                      CTarsaCommand::result) {}
bool CTarsaEventWatcher::DeleteLayerCheck(CTarsaDoc&, int) { return true; }
void CTarsaEventWatcher::OnAddObject(CTarsaDoc&, CTarsaObject&) {}
void CTarsaEventWatcher::OnDeleteObject(CTarsaDoc&, CTarsaObject&) {}
void CTarsaEventWatcher::OnReplaceObject(CTarsaDoc&, CTarsaObject&, CTarsaObject&) {}
void CTarsaEventWatcher::OnUnDeleteObject(CTarsaDoc&, CTarsaObject&) {}
void CTarsaEventWatcher::OnPurgeObject(CTarsaDoc&, CTarsaObject&) {}
void CTarsaEventWatcher::OnSelectObject(CTarsaDoc&, const CTarsaObject&) {}
void CTarsaEventWatcher::OnSelectObjects(CTarsaDoc&, const CTarsaObject* const*, int) {}
void CTarsaEventWatcher::OnDeselectObject(CTarsaDoc&, const CTarsaObject&) {}
void CTarsaEventWatcher::OnDeselectObjects(CTarsaDoc&, const CTarsaObject* const*, int) {}
void CTarsaEventWatcher::OnDeselectAllObjects(CTarsaDoc&, int) {}
void CTarsaEventWatcher::OnModifyObjectAttributes(CTarsaDoc&, CTarsaObject&,
                                                  const CTarsaObjectAttributes&) {}
void CTarsaEventWatcher::OnUpdateObjectMesh(CTarsaDoc&, CTarsaObject&) {}
void CTarsaEventWatcher::LayerTableEvent(table_event, CTarsaDoc&, int) {}
void CTarsaEventWatcher::LinetypeTableEvent(table_event, CTarsaDoc&, int) {}
void CTarsaEventWatcher::InstanceDefinitionTableEvent(table_event, CTarsaDoc&, int) {}
void CTarsaEventWatcher::LightTableEvent(table_event, CTarsaDoc&, int) {}
void CTarsaEventWatcher::MaterialTableEvent(table_event, CTarsaDoc&, int) {}
void CTarsaEventWatcher::TextureMappingTableEvent(table_event, CTarsaDoc&, int) {}
void CTarsaEventWatcher::GroupTableEvent(table_event, CTarsaDoc&, int) {}
void CTarsaEventWatcher::AliasTableEvent(table_event, int) {}
void CTarsaEventWatcher::TextStyleTableEvent(table_event, CTarsaDoc&, int) {}
void CTarsaEventWatcher::DimStyleTableEvent(table_event, CTarsaDoc&, int) {}
void CTarsaEventWatcher::HatchPatternTableEvent(table_event, CTarsaDoc&, int) {}
void CTarsaEventWatcher::UndoEvent(undo_event, unsigned int, const CTarsaCommand*) {}
void CTarsaEventWatcher::Event(int, const void*) {}
