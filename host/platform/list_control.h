// CListCtrl: the platform's list-view control, as the panels use it: a list of items, each with
// a text, an image index, a data value and a state (selected or not), kept in the object that is
// attached to the control's window. A list with the ascending-sort style places each inserted
// item by its text, ignoring letter case; LVM_SORTITEMS reorders the items with a comparison
// the caller gives. Only the report view's first column is kept.
//
// While its redraw is off (WM_SETREDRAW with FALSE), a sorted list appends what is inserted and
// places the whole batch in one sort when redraw comes back on, or before LVM_SORTITEMS: the
// order is the one the items would have had inserted one by one, at a sort's cost rather than a
// move of the items behind each insert.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/platform/window.h"

constexpr const wchar_t* WC_LISTVIEWW = L"SysListView32";

// List-view styles.
constexpr DWORD LVS_REPORT = 0x0001;
constexpr DWORD LVS_SHOWSELALWAYS = 0x0008;
constexpr DWORD LVS_SORTASCENDING = 0x0010;
constexpr DWORD LVS_AUTOARRANGE = 0x0100;
constexpr DWORD LVS_EDITLABELS = 0x0200;
constexpr DWORD LVS_NOLABELWRAP = 0x0080;
constexpr DWORD LVS_NOCOLUMNHEADER = 0x4000;
constexpr DWORD LVS_SINGLESEL = 0x0004;

// What an LVITEMW carries.
constexpr UINT LVIF_TEXT = 0x0001;
constexpr UINT LVIF_IMAGE = 0x0002;
constexpr UINT LVIF_PARAM = 0x0004;
constexpr UINT LVIF_STATE = 0x0008;
constexpr UINT LVIS_SELECTED = 0x0002;
// The state's bits 12 to 15: the index of the item's state image, 0 for none, shown beside its
// image.
constexpr UINT LVIS_STATEIMAGEMASK = 0xF000;
constexpr UINT INDEXTOSTATEIMAGEMASK(UINT index) { return index << 12; }

// Flags of LVM_GETNEXTITEM: every item, or selected ones only.
constexpr UINT LVNI_ALL = 0x0000;
constexpr UINT LVNI_SELECTED = 0x0002;

// Messages. WM_SETREDRAW: wparam FALSE turns redraw off, TRUE back on.
constexpr UINT WM_SETREDRAW = 0x000B;
constexpr UINT LVM_FIRST = 0x1000;
constexpr UINT LVM_GETITEMCOUNT = LVM_FIRST + 4;
constexpr UINT LVM_DELETEALLITEMS = LVM_FIRST + 9;
// wparam: the item to start after (-1: from the start); lparam: LVNI_ flags. Answers the next
// item's index, or -1.
constexpr UINT LVM_GETNEXTITEM = LVM_FIRST + 12;
// wparam: the column; lparam: a width in pixels or LVSCW_AUTOSIZE_USEHEADER (fill the list).
constexpr UINT LVM_SETCOLUMNWIDTH = LVM_FIRST + 30;
// wparam: the parameter passed to the comparison; lparam: the PFNLVCOMPARE. Answers 1.
constexpr UINT LVM_SORTITEMS = LVM_FIRST + 48;
constexpr LPARAM LVSCW_AUTOSIZE_USEHEADER = -2;

// Compares two items by their data values: negative, 0 or positive, as the first sorts before,
// with, or after the second.
typedef int (*PFNLVCOMPARE)(LPARAM data1, LPARAM data2, LPARAM sort_parameter);

struct LVITEMW {
  UINT mask = 0;
  int iItem = 0;
  int iSubItem = 0;
  UINT state = 0;
  UINT stateMask = 0;
  const wchar_t* pszText = nullptr;
  int iImage = 0;
  LPARAM lParam = 0;
};

class CListCtrl : public CWnd {
 public:
  // Inserts an item at `item` (clamped to the list), or where the ascending-sort style places
  // it (at the end while redraw is off): the index it got, or -1 without a window.
  int InsertItem(const LVITEMW& item);
  int InsertItem(UINT mask, int item, const wchar_t* text, UINT state, UINT state_mask, int image,
                 LPARAM data);
  // Changes what the mask names of item `iItem`: false when there is no such item, or `iSubItem`
  // names a column the list does not have (it has one).
  bool SetItem(const LVITEMW& item);
  bool SetItem(int item, int sub_item, UINT mask, const wchar_t* text, int image, UINT state,
               UINT state_mask, LPARAM data);
  bool SetItemState(int item, UINT state, UINT state_mask);
  // The item's data, or 0 when there is no such item.
  LPARAM GetItemData(int item) const;
  std::wstring GetItemText(int item) const;
  // The item's image index, or 0 when there is no such item.
  int GetItemImage(int item) const;
  UINT GetItemState(int item, UINT state_mask) const;
  int GetItemCount() const { return static_cast<int>(m_items.size()); }
  // The next item after `item` (-1: from the start) that has the flags: its index, or -1, also
  // when `item` is below -1.
  int GetNextItem(int item, UINT flags) const;
  int GetSelectedCount() const;
  int GetColumnWidth() const { return m_column_width; }

 protected:
  LRESULT WindowProc(UINT message, WPARAM wparam, LPARAM lparam) override;
  void OnWindowDestroyed() override;

 private:
  struct Item {
    std::wstring text;
    int image = 0;
    LPARAM data = 0;
    UINT state = 0;
  };
  void Assign(Item& target, const LVITEMW& source) const;
  int SortedPosition(const std::wstring& text) const;
  // Places the items appended while redraw was off, as their inserts would have.
  void SortPendingInserts();

  std::vector<std::unique_ptr<Item>> m_items;
  int m_column_width = 0;
  bool m_redraw_off = false;
  bool m_inserts_pending = false;  // items were appended unsorted while redraw was off
};
