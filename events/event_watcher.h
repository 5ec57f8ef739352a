// CKorvoEventWatcher: the plug-in's watcher of host events. The plug-in object creates it and
// owns it; while it is registered and enabled the host sends it every notification, and the
// plug-in pauses it around the object replacements it makes itself.
#pragma once

#include "host/tarsa_event_watcher.h"

class CKorvoEventWatcher : public CTarsaEventWatcher {};
