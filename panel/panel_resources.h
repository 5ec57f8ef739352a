// The plug-in module's resources and module state: the Stances panel's dialog template 1019
// and its icon groups (1021, the tab icon; 1033 to 1041, the three tool buttons in their normal,
// disabled and highlighted looks). The host finds them through the module state the plug-in
// registers its panel with, and the panel switches to it when the host asks for its icon.
#pragma once

#include "host/platform/module_state.h"

// The module's resource table, defined once for the process.
const TS_MODULE_RESOURCES& KorvoResources();
// The plug-in module's own module state, whose resources are KorvoResources().
AFX_MODULE_STATE* KorvoModuleState();
