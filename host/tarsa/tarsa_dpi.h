// CTarsaWindowsDpi: the screen's dots per inch as the host uses them, and sizes and icons at that
// resolution. One instance, Dpi(); 96 is the platform's base resolution.
#pragma once

#include "host/platform/resources.h"

class CTarsaWindowsDpi {
 public:
  static CTarsaWindowsDpi& Dpi();

  int Value() const { return m_dpi; }
  // The pixel size of the host's icon type: 16 at 96 dpi for small tool-button icons (type 49),
  // 32 for every other type, both scaled to the dpi.
  int IconSize(int icon_type) const;
  // The module's icon `id` at width × height pixels: a shared icon, or null when the module has
  // no such icon group.
  HICON LoadIconW(HINSTANCE module, int id, int width, int height) const;

 private:
  friend class CTarsaStandIn;
  int m_dpi = 96;
};
