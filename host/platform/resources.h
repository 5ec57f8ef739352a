// A module's resources as data: dialog templates and icon groups, known by numeric ids. A module
// (the host or a plug-in) defines one TS_MODULE_RESOURCES table; its instance handle is the
// table's address, so resources are found from the handle alone. Dialog positions and sizes are
// in dialog units, which a dialog converts to pixels with the font's base units.
#pragma once

#include <vector>

#include "host/platform/window.h"

struct HINSTANCE__;
typedef HINSTANCE__* HINSTANCE;
struct HICON__;
typedef HICON__* HICON;

struct TS_DIALOG_CONTROL {
  int id;
  const wchar_t* class_name;
  int x, y, cx, cy;
  DWORD style;
};

struct TS_DIALOG_TEMPLATE {
  int id;
  DWORD style;
  int cx, cy;
  const wchar_t* font;
  int point_size;
  int weight;
  std::vector<TS_DIALOG_CONTROL> controls;
};

// An icon group: one picture, drawn as an SVG document, offered at the sizes listed (square,
// in pixels, 32-bit colour).
struct TS_ICON_GROUP {
  int id;
  std::vector<int> sizes;
  const char* svg;
};

struct TS_MODULE_RESOURCES {
  const wchar_t* module_name;
  std::vector<TS_DIALOG_TEMPLATE> dialogs;
  std::vector<TS_ICON_GROUP> icons;
};

// The instance handle of the module whose resources these are.
HINSTANCE TsModuleInstance(const TS_MODULE_RESOURCES& resources);
// The module's dialog template with that id, or null (also for a null handle).
const TS_DIALOG_TEMPLATE* TsFindDialogTemplate(HINSTANCE module, int id);

// Dialog units to pixels for a dialog in the 8-point shell font at `dpi` (96: the platform's
// base). Rounded down.
RECT TsDialogUnitsToPixels(int x, int y, int cx, int cy, int dpi);

// An icon of the module's group `id`, at the group's smallest size not below cx × cy (else its
// largest), for a picture of cx × cy pixels: null when the module has no such group. Icons are
// shared and live as long as the process; nothing is destroyed.
HICON LoadIconWithScaleDown(HINSTANCE module, int id, int cx, int cy);

// What an icon is: its group, the image's size and the picture.
struct TsIconInfo {
  int group_id;
  int size;
  const char* svg;
};
// False for a null icon.
bool TsGetIconInfo(HICON icon, TsIconInfo* info);
