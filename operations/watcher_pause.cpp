#include "operations/watcher_pause.h"

#include "events/event_watcher.h"
#include "plugin/korvo_plugin.h"

CKorvoEventWatcherPause::CKorvoEventWatcherPause()
    : m_was_enabled(KorvoPlugIn().EventWatcher()->IsEnabled()) {
  if (m_was_enabled) KorvoPlugIn().EventWatcher()->Enable(false);
}

CKorvoEventWatcherPause::~CKorvoEventWatcherPause() {
  if (m_was_enabled) KorvoPlugIn().EventWatcher()->Enable(true);
}
