// CArray: the platform class library's growable array, a thin layer over std::vector. TYPE is
// stored; ARG_TYPE is how values are passed in. The array owns its storage, not what pointers
// stored in it point to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

typedef std::intptr_t INT_PTR;

template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray {
 public:
  INT_PTR GetSize() const { return static_cast<INT_PTR>(m_items.size()); }
  INT_PTR GetCount() const { return GetSize(); }
  bool IsEmpty() const { return m_items.empty(); }
  INT_PTR GetUpperBound() const { return GetSize() - 1; }

  const TYPE& GetAt(INT_PTR index) const { return m_items[static_cast<std::size_t>(index)]; }
  TYPE& ElementAt(INT_PTR index) { return m_items[static_cast<std::size_t>(index)]; }
  void SetAt(INT_PTR index, ARG_TYPE item) { m_items[static_cast<std::size_t>(index)] = item; }
  TYPE& operator[](INT_PTR index) { return ElementAt(index); }
  const TYPE& operator[](INT_PTR index) const { return GetAt(index); }
  TYPE* GetData() { return m_items.data(); }
  const TYPE* GetData() const { return m_items.data(); }

  // Appends and returns the new element's index.
  INT_PTR Add(ARG_TYPE item) {
    m_items.push_back(item);
    return GetUpperBound();
  }
  void InsertAt(INT_PTR index, ARG_TYPE item, INT_PTR count = 1) {
    m_items.insert(m_items.begin() + index, static_cast<std::size_t>(count), item);
  }
  void RemoveAt(INT_PTR index, INT_PTR count = 1) {
    m_items.erase(m_items.begin() + index, m_items.begin() + index + count);
  }
  // Empties the array and releases its storage.
  void RemoveAll() { std::vector<TYPE>().swap(m_items); }
  void SetSize(INT_PTR size) { m_items.resize(static_cast<std::size_t>(size)); }
  // The same, with room for `grow_by` elements more, so that as many Add calls follow without
  // another allocation.
  void SetSize(INT_PTR size, INT_PTR grow_by) {
    const auto wanted = static_cast<std::size_t>(size + (grow_by > 0 ? grow_by : 0));
    if (wanted > m_items.capacity()) m_items.reserve(wanted);
    m_items.resize(static_cast<std::size_t>(size));
  }

 private:
  std::vector<TYPE> m_items;
};
