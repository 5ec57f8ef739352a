// The kernel's dynamic arrays and sort: thin layers over the standard library. ZK_SimpleArray
// holds plain values (uuids, pointers it does not own); ZK_ClassArray holds class values
// (strings, object references). Both own their elements' storage.
#pragma once

#include <cstddef>
#include <vector>

template <class T>
class ZK_SimpleArray {
 public:
  int Count() const { return static_cast<int>(m_items.size()); }
  void Reserve(int capacity) { m_items.reserve(capacity > 0 ? static_cast<size_t>(capacity) : 0); }
  void Append(const T& item) { m_items.push_back(item); }
  T& AppendNew() { return m_items.emplace_back(); }
  // Inserts before `index`; an index outside 0..Count() is ignored.
  void Insert(int index, const T& item) {
    if (index >= 0 && index <= Count()) m_items.insert(m_items.begin() + index, item);
  }
  // Removes the element at `index`, closing the gap; an index out of range is ignored.
  void Remove(int index) {
    if (index >= 0 && index < Count()) m_items.erase(m_items.begin() + index);
  }
  void Empty() { m_items.clear(); }
  T& operator[](int index) { return m_items[static_cast<size_t>(index)]; }
  const T& operator[](int index) const { return m_items[static_cast<size_t>(index)]; }
  // The element at `index`, or null when out of range.
  T* At(int index) { return index >= 0 && index < Count() ? &m_items[index] : nullptr; }
  const T* At(int index) const { return index >= 0 && index < Count() ? &m_items[index] : nullptr; }
  T* Array() { return m_items.data(); }
  const T* Array() const { return m_items.data(); }

 private:
  std::vector<T> m_items;
};

template <class T>
class ZK_ClassArray : public ZK_SimpleArray<T> {};

// Sorts `count` elements of `size` bytes with the C library's quicksort.
void ZK_qsort(void* base, size_t count, size_t size, int (*compare)(const void*, const void*));
