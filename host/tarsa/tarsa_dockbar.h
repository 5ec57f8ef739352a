// The host's dock bars: panels shown as tabs, known by their tab ids.
#pragma once

#include "host/zefkit/zk_uuid.h"

// Shows the panel with that tab id, opening it if it is closed: true when it is open afterwards.
bool TarsaUiOpenDockbarTab(const ZK_UUID& tab_id);
// Closes the panel: true when it is closed afterwards.
bool TarsaUiCloseDockbarTab(const ZK_UUID& tab_id);
// True when the panel is open; `is_selected` asks in addition that it be the shown tab of its
// dock bar, which an open tab always is here.
bool TarsaUiIsTabVisible(const ZK_UUID& tab_id, bool is_selected = false);
