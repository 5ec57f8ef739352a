#include "shell/panel_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "host/platform/list_control.h"

namespace {

TEST(PanelTextTest, TheStatusTextNamesTheMarkedItemsInListOrder) {
  CWnd parent;
  ASSERT_TRUE(parent.Create(L"Parent", WS_VISIBLE, RECT{0, 0, 200, 100}, nullptr, 0));
  CListCtrl list;
  ASSERT_TRUE(list.Create(WC_LISTVIEWW, WS_CHILD | LVS_REPORT, RECT{0, 0, 100, 90}, &parent, 7));
  for (const wchar_t* name : {L"Assembled", L"Exploded", L"Service"}) {
    list.InsertItem(LVIF_TEXT, list.GetItemCount(), name, 0, 0, 0, 0);
  }
  const struct {
    std::vector<int> marked;
    const wchar_t* text;
  } cases[] = {
      {{}, L"Matches no stance"},
      {{1}, L"Matches: Exploded"},
      {{0, 2}, L"Matches: Assembled, Service"},
  };
  for (const auto& c : cases) {
    for (int i = 0; i < list.GetItemCount(); ++i) {
      const bool marked = std::find(c.marked.begin(), c.marked.end(), i) != c.marked.end();
      list.SetItemState(i, INDEXTOSTATEIMAGEMASK(marked ? 1 : 0), LVIS_STATEIMAGEMASK);
    }
    EXPECT_EQ(TsMatchesText(list), c.text);
  }
  list.SetItemState(0, LVIS_SELECTED, LVIS_SELECTED);  // the selection is no mark
  EXPECT_EQ(TsMatchesText(list), L"Matches: Assembled, Service");
}

}  // namespace
