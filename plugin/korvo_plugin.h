// CKorvoPlugIn: the plug-in object, one static instance per loaded module. The host asks it for
// the plug-in's identity; the plug-in's own code reaches it through KorvoPlugIn().
#pragma once

#include "host/tarsa_plugin.h"

class CKorvoPlugIn : public CTarsaPlugIn {
 public:
  // FCEA57AE-7C24-4BC5-A067-1DFFA6139859
  ZK_UUID PlugInID() const override;
};

// The one plug-in object; it lives as long as the module.
CKorvoPlugIn& KorvoPlugIn();
