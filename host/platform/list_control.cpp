#include "host/platform/list_control.h"

#include <algorithm>
#include <cwctype>

namespace {

wint_t Fold(wchar_t c) { return std::towlower(static_cast<wint_t>(c)); }

int CompareTexts(const std::wstring& a, const std::wstring& b) {
  const size_t n = std::min(a.size(), b.size());
  for (size_t i = 0; i < n; ++i) {
    const wint_t ca = Fold(a[i]);
    const wint_t cb = Fold(b[i]);
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

}  // namespace

void CListCtrl::Assign(Item& target, const LVITEMW& source) const {
  if (source.mask & LVIF_TEXT) target.text = source.pszText ? source.pszText : L"";
  if (source.mask & LVIF_IMAGE) target.image = source.iImage;
  if (source.mask & LVIF_PARAM) target.data = source.lParam;
  if (source.mask & LVIF_STATE) {
    target.state = (target.state & ~source.stateMask) | (source.state & source.stateMask);
  }
}

int CListCtrl::SortedPosition(const std::wstring& text) const {
  // After every item that sorts with or before it; the common case, an item that sorts last, is
  // found at once.
  if (m_items.empty() || CompareTexts(m_items.back()->text, text) <= 0) return GetItemCount();
  const auto after = std::upper_bound(m_items.begin(), m_items.end(), text,
                                      [](const std::wstring& t, const std::unique_ptr<Item>& item) {
                                        return CompareTexts(t, item->text) < 0;
                                      });
  return static_cast<int>(after - m_items.begin());
}

void CListCtrl::SortPendingInserts() {
  if (!m_inserts_pending) return;
  m_inserts_pending = false;
  // Inserted one by one, each item went after every item that sorts with or before it: a stable
  // sort of the items in the order they came, by their texts folded as CompareTexts folds them,
  // each folded once rather than at every comparison, into one buffer where item i's runs from
  // start[i] to start[i + 1].
  std::vector<size_t> start(m_items.size() + 1, 0);
  for (size_t i = 0; i < m_items.size(); ++i) start[i + 1] = start[i] + m_items[i]->text.size();
  std::vector<wint_t> folded(start.back());
  std::vector<size_t> order(m_items.size());
  for (size_t i = 0; i < m_items.size(); ++i) {
    order[i] = i;
    std::transform(m_items[i]->text.begin(), m_items[i]->text.end(), folded.begin() + start[i],
                   Fold);
  }
  std::stable_sort(order.begin(), order.end(), [&folded, &start](size_t a, size_t b) {
    return std::lexicographical_compare(folded.begin() + start[a], folded.begin() + start[a + 1],
                                        folded.begin() + start[b], folded.begin() + start[b + 1]);
  });
  std::vector<std::unique_ptr<Item>> sorted(m_items.size());
  for (size_t i = 0; i < order.size(); ++i) sorted[i] = std::move(m_items[order[i]]);
  m_items.swap(sorted);
}

int CListCtrl::InsertItem(const LVITEMW& item) {
  if (GetSafeHwnd() == nullptr) return -1;
  auto inserted = std::make_unique<Item>();
  Assign(*inserted, item);
  int position = std::clamp(item.iItem, 0, GetItemCount());
  if (GetStyle() & LVS_SORTASCENDING) {
    position = m_redraw_off ? GetItemCount() : SortedPosition(inserted->text);
    if (m_redraw_off) m_inserts_pending = true;
  }
  m_items.insert(m_items.begin() + position, std::move(inserted));
  return position;
}

int CListCtrl::InsertItem(UINT mask, int item, const wchar_t* text, UINT state, UINT state_mask,
                          int image, LPARAM data) {
  LVITEMW lv;
  lv.mask = mask;
  lv.iItem = item;
  lv.pszText = text;
  lv.state = state;
  lv.stateMask = state_mask;
  lv.iImage = image;
  lv.lParam = data;
  return InsertItem(lv);
}

bool CListCtrl::SetItem(const LVITEMW& item) {
  if (item.iItem < 0 || item.iItem >= GetItemCount() || item.iSubItem != 0) return false;
  Assign(*m_items[static_cast<size_t>(item.iItem)], item);
  return true;
}

bool CListCtrl::SetItem(int item, int sub_item, UINT mask, const wchar_t* text, int image,
                        UINT state, UINT state_mask, LPARAM data) {
  LVITEMW lv;
  lv.mask = mask;
  lv.iItem = item;
  lv.iSubItem = sub_item;
  lv.pszText = text;
  lv.iImage = image;
  lv.state = state;
  lv.stateMask = state_mask;
  lv.lParam = data;
  return SetItem(lv);
}

bool CListCtrl::SetItemState(int item, UINT state, UINT state_mask) {
  return SetItem(item, 0, LVIF_STATE, nullptr, 0, state, state_mask, 0);
}

LPARAM CListCtrl::GetItemData(int item) const {
  return item >= 0 && item < GetItemCount() ? m_items[static_cast<size_t>(item)]->data : 0;
}

std::wstring CListCtrl::GetItemText(int item) const {
  return item >= 0 && item < GetItemCount() ? m_items[static_cast<size_t>(item)]->text : L"";
}

int CListCtrl::GetItemImage(int item) const {
  return item >= 0 && item < GetItemCount() ? m_items[static_cast<size_t>(item)]->image : 0;
}

UINT CListCtrl::GetItemState(int item, UINT state_mask) const {
  return item >= 0 && item < GetItemCount() ? m_items[static_cast<size_t>(item)]->state & state_mask
                                            : 0;
}

int CListCtrl::GetNextItem(int item, UINT flags) const {
  for (int i = item + 1; item >= -1 && i < GetItemCount(); ++i) {
    if ((flags & LVNI_SELECTED) == 0 || (m_items[static_cast<size_t>(i)]->state & LVIS_SELECTED)) {
      return i;
    }
  }
  return -1;
}

int CListCtrl::GetSelectedCount() const {
  return static_cast<int>(std::count_if(m_items.begin(), m_items.end(), [](const auto& item) {
    return (item->state & LVIS_SELECTED) != 0;
  }));
}

LRESULT CListCtrl::WindowProc(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case LVM_GETITEMCOUNT:
      return GetItemCount();
    case LVM_DELETEALLITEMS:
      m_items.clear();
      m_inserts_pending = false;
      return 1;
    case WM_SETREDRAW:
      m_redraw_off = wparam == 0;
      if (!m_redraw_off) SortPendingInserts();
      return 0;
    case LVM_GETNEXTITEM:
      return GetNextItem(static_cast<int>(wparam), static_cast<UINT>(lparam));
    case LVM_SETCOLUMNWIDTH: {
      if (wparam != 0) return 0;
      RECT client;
      GetClientRect(&client);
      m_column_width = lparam == LVSCW_AUTOSIZE_USEHEADER ? client.right : static_cast<int>(lparam);
      return 1;
    }
    case LVM_SORTITEMS: {
      const auto compare = reinterpret_cast<PFNLVCOMPARE>(lparam);
      if (compare == nullptr) return 0;
      SortPendingInserts();
      const LPARAM parameter = static_cast<LPARAM>(wparam);
      const auto before = [&](const auto& a, const auto& b) {
        return compare(a->data, b->data, parameter) < 0;
      };
      // A list in order already (a batch just placed by its texts) stays as it is, as a stable
      // sort would leave it, after one comparison per item.
      if (!std::is_sorted(m_items.begin(), m_items.end(), before)) {
        std::stable_sort(m_items.begin(), m_items.end(), before);
      }
      return 1;
    }
    default:
      return CWnd::WindowProc(message, wparam, lparam);
  }
}

void CListCtrl::OnWindowDestroyed() {
  m_items.clear();
  m_redraw_off = false;
  m_inserts_pending = false;
  m_column_width = 0;
}
