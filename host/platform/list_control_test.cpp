#include "host/platform/list_control.h"

#include <gtest/gtest.h>

namespace {

class ListControlTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(parent_.Create(L"Parent", WS_VISIBLE, RECT{0, 0, 200, 100}, nullptr, 0));
  }
  void Make(DWORD style) {
    ASSERT_TRUE(list_.Create(WC_LISTVIEWW, WS_CHILD | style, RECT{10, 10, 130, 90}, &parent_, 7));
  }
  int Insert(const wchar_t* text, LPARAM data) {
    return list_.InsertItem(LVIF_TEXT | LVIF_PARAM, list_.GetItemCount(), text, 0, 0, 0, data);
  }
  std::wstring Texts() const {
    std::wstring texts;
    for (int i = 0; i < list_.GetItemCount(); ++i) texts += list_.GetItemText(i) + L";";
    return texts;
  }
  static int ByDataDescending(LPARAM a, LPARAM b, LPARAM parameter) {
    return static_cast<int>(parameter * (b - a));
  }

  CWnd parent_;
  CListCtrl list_;
};

TEST_F(ListControlTest, TheSortStylePlacesItemsByTextIgnoringCase) {
  Make(LVS_REPORT | LVS_SORTASCENDING);
  EXPECT_EQ(Insert(L"b", 0), 0);
  EXPECT_EQ(Insert(L"C", 1), 1);
  EXPECT_EQ(Insert(L"a", 2), 0);
  EXPECT_EQ(Insert(L"B", 3), 2) << "after its equal";
  EXPECT_EQ(Texts(), L"a;b;B;C;");

  // With redraw off, a batch lands where the same inserts one by one would have put it.
  list_.SendMessage(WM_SETREDRAW, FALSE);
  EXPECT_EQ(Insert(L"A", 4), 4) << "appended until redraw comes back";
  Insert(L"b", 5);
  list_.SendMessage(WM_SETREDRAW, TRUE);
  EXPECT_EQ(Texts(), L"a;A;b;B;b;C;");
  EXPECT_EQ(list_.GetItemData(4), 5);
  list_.SendMessage(WM_SETREDRAW, FALSE);
  Insert(L"0", 6);
  list_.SendMessage(LVM_SORTITEMS, 1, reinterpret_cast<LPARAM>(&ByDataDescending));
  list_.SendMessage(WM_SETREDRAW, TRUE);
  EXPECT_EQ(Texts(), L"0;b;A;B;a;C;b;") << "the sort by data is the last word";
}

TEST_F(ListControlTest, MessagesFindSortSizeAndEmptyTheListAndItGoesWithItsParent) {
  Make(LVS_REPORT);
  for (LPARAM data : {1, 3, 2}) Insert(std::to_wstring(data).c_str(), data);
  list_.SetItemState(0, LVIS_SELECTED, LVIS_SELECTED);
  list_.SetItemState(2, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_EQ(list_.SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 0);
  EXPECT_EQ(list_.SendMessage(LVM_GETNEXTITEM, 0, LVNI_SELECTED), 2);
  EXPECT_EQ(list_.SendMessage(LVM_GETNEXTITEM, 2, LVNI_SELECTED), -1);
  EXPECT_EQ(list_.SendMessage(LVM_GETNEXTITEM, 0, LVNI_ALL), 1);

  list_.SendMessage(LVM_SORTITEMS, 1, reinterpret_cast<LPARAM>(&ByDataDescending));
  EXPECT_EQ(Texts(), L"3;2;1;");
  EXPECT_EQ(list_.GetItemState(1, LVIS_SELECTED), LVIS_SELECTED) << "the state moves with it";

  list_.SendMessage(LVM_SETCOLUMNWIDTH, 0, LVSCW_AUTOSIZE_USEHEADER);
  EXPECT_EQ(list_.GetColumnWidth(), 120);
  list_.SendMessage(LVM_DELETEALLITEMS);
  EXPECT_EQ(list_.GetItemCount(), 0);
  EXPECT_EQ(list_.SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_ALL), -1);

  Insert(L"x", 0);
  const HWND hwnd = list_.GetSafeHwnd();
  parent_.DestroyWindow();
  EXPECT_FALSE(IsWindow(hwnd));
  EXPECT_EQ(list_.GetSafeHwnd(), nullptr);
  EXPECT_EQ(list_.GetItemCount(), 0);
  EXPECT_EQ(Insert(L"y", 0), -1);
}

}  // namespace
