#include "host/tarsa/tarsa_dpi.h"

CTarsaWindowsDpi& CTarsaWindowsDpi::Dpi() {
  static CTarsaWindowsDpi dpi;
  return dpi;
}

int CTarsaWindowsDpi::IconSize(int icon_type) const {
  const int base = icon_type == 49 ? 16 : 32;
  return base * m_dpi / 96;
}

HICON CTarsaWindowsDpi::LoadIconW(HINSTANCE module, int id, int width, int height) const {
  return LoadIconWithScaleDown(module, id, width, height);
}
