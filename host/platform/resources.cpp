#include "host/platform/resources.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

namespace {

const TS_MODULE_RESOURCES* Module(HINSTANCE module) {
  return reinterpret_cast<const TS_MODULE_RESOURCES*>(module);
}

}  // namespace

HINSTANCE TsModuleInstance(const TS_MODULE_RESOURCES& resources) {
  return reinterpret_cast<HINSTANCE>(const_cast<TS_MODULE_RESOURCES*>(&resources));
}

const TS_DIALOG_TEMPLATE* TsFindDialogTemplate(HINSTANCE module, int id) {
  if (module == nullptr) return nullptr;
  for (const TS_DIALOG_TEMPLATE& dialog : Module(module)->dialogs) {
    if (dialog.id == id) return &dialog;
  }
  return nullptr;
}

RECT TsDialogUnitsToPixels(int x, int y, int cx, int cy, int dpi) {
  // The shell font's base units at 96 dpi: 6 pixels across and 13 down per 4 and 8 units.
  const auto across = [dpi](int units) { return units * 6 * dpi / (4 * 96); };
  const auto down = [dpi](int units) { return units * 13 * dpi / (8 * 96); };
  return RECT{across(x), down(y), across(x + cx), down(y + cy)};
}

HICON LoadIconWithScaleDown(HINSTANCE module, int id, int cx, int cy) {
  if (module == nullptr) return nullptr;
  const TS_ICON_GROUP* group = nullptr;
  for (const TS_ICON_GROUP& g : Module(module)->icons) {
    if (g.id == id) group = &g;
  }
  if (group == nullptr || group->sizes.empty()) return nullptr;
  const int wanted = std::max(cx, cy);
  const std::vector<int>& sizes = group->sizes;
  int size = *std::max_element(sizes.begin(), sizes.end());
  for (int s : sizes) {
    if (s >= wanted && s < size) size = s;
  }
  static std::map<std::pair<const TS_ICON_GROUP*, int>, std::unique_ptr<TsIconInfo>> icons;
  std::unique_ptr<TsIconInfo>& icon = icons[{group, size}];
  if (!icon) icon.reset(new TsIconInfo{group->id, size, group->svg});
  return reinterpret_cast<HICON>(icon.get());
}

bool TsGetIconInfo(HICON icon, TsIconInfo* info) {
  if (icon == nullptr) return false;
  *info = *reinterpret_cast<const TsIconInfo*>(icon);
  return true;
}
