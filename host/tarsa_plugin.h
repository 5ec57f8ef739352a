// CTarsaPlugIn: the host's base class of a loaded plug-in. The host asks the plug-in object for
// its identity; the plug-in's module owns the object.
#pragma once

#include "host/zk_uuid.h"

class CTarsaPlugIn {
 public:
  CTarsaPlugIn() = default;
  CTarsaPlugIn(const CTarsaPlugIn&) = delete;
  CTarsaPlugIn& operator=(const CTarsaPlugIn&) = delete;
  virtual ~CTarsaPlugIn() = default;

  // The plug-in's id, by which the host files its document data and its user data.
  virtual ZK_UUID PlugInID() const = 0;
};
