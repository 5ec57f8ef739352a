#include "operations/watcher_pause.h"

#include "events/event_watcher.h"
#include "plugin/korvo_plugin.h"

namespace {

// Switches the watcher as a pause, which the watcher's counts do not take for a gap in what it
// saw: the replacements made meanwhile reach them through CountReplacement.
void SwitchWatcher(bool enable) {
  CKorvoEventWatcher& watcher = *KorvoPlugIn().EventWatcher();
  watcher.m_pausing = true;
  watcher.Enable(enable);
  watcher.m_pausing = false;
}

}  // namespace

CKorvoEventWatcherPause::CKorvoEventWatcherPause()
    : m_was_enabled(KorvoPlugIn().EventWatcher()->IsEnabled()) {
  if (m_was_enabled) SwitchWatcher(false);
}

CKorvoEventWatcherPause::~CKorvoEventWatcherPause() {
  if (m_was_enabled) SwitchWatcher(true);
}
