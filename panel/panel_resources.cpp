#include "panel/panel_resources.h"

#include "host/platform/list_control.h"

namespace {

const std::vector<int> kIconSizes = {256, 128, 64, 48, 32, 24, 16};

// A visible child tab stop, owner-drawn: every button of the panel.
constexpr DWORD kButtonStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW;
// A report list that keeps its selection shown, sorts ascending, lets labels be edited, and has
// no column header; several items may be selected.
constexpr DWORD kListStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SHOWSELALWAYS |
                             LVS_SORTASCENDING | LVS_NOLABELWRAP | LVS_AUTOARRANGE |
                             LVS_EDITLABELS | LVS_NOCOLUMNHEADER;

// Positions and sizes in dialog units; the buttons' places are replaced by the panel's layout.
const std::vector<TS_DIALOG_CONTROL> kPanelControls = {
    {1064, WC_LISTVIEWW, 0, 3, 119, 126, kListStyle},
    {2110, WC_BUTTONW, 2, 133, 14, 12, kButtonStyle},
    {2111, WC_BUTTONW, 46, 133, 14, 12, kButtonStyle},
    {6125, WC_BUTTONW, 61, 133, 14, 12, kButtonStyle},
    {1956, WC_BUTTONW, 76, 133, 14, 12, kButtonStyle},
    {1147, WC_BUTTONW, 105, 133, 14, 12, kButtonStyle},
    {1148, WC_BUTTONW, 92, 133, 14, 12, kButtonStyle},
    {1149, WC_BUTTONW, 17, 133, 14, 12, kButtonStyle},
    {2112, WC_BUTTONW, 32, 133, 14, 12, kButtonStyle},
};

// An extended template of a child window, in the 8-point shell font.
// clang-format off
const TS_DIALOG_TEMPLATE kPanelTemplate = {
    1019, 0x40080040, 126, 156, L"MS Shell Dlg", 8, 400, kPanelControls};
// clang-format on

// Generated from icons/*.svg (CMakeLists.txt).
const std::vector<TS_ICON_GROUP> kIconGroups = {
#include "panel_icons.inc"
};

const TS_MODULE_RESOURCES kResources = {L"Korvo.tsp", {kPanelTemplate}, kIconGroups};

}  // namespace

const TS_MODULE_RESOURCES& KorvoResources() { return kResources; }

AFX_MODULE_STATE* KorvoModuleState() {
  static AFX_MODULE_STATE state{TsModuleInstance(kResources), TsModuleInstance(kResources)};
  return &state;
}
