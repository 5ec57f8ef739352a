// CKorvoEventWatcherPause: a guard that keeps the plug-in's event watcher from seeing the object
// replacements the plug-in makes itself. It disables the watcher for its lifetime when the
// watcher was enabled, and leaves a disabled watcher disabled, so pauses nest. Whoever replaces
// objects under it hands each replacement to the watcher's CountReplacement.
#pragma once

class CKorvoEventWatcherPause {
 public:
  CKorvoEventWatcherPause();
  ~CKorvoEventWatcherPause();
  CKorvoEventWatcherPause(const CKorvoEventWatcherPause&) = delete;
  CKorvoEventWatcherPause& operator=(const CKorvoEventWatcherPause&) = delete;

 private:
  bool m_was_enabled;
};
