// The files being opened: the event watcher pushes an item when the host starts reading a model
// file and pops it at the end, so that the reading of the plug-in's document data knows whether
// the file is opened as the document or merged into it, and which objects came from the file.
// Reads nest, last in, first out.
#pragma once

#include "host/zefkit/zk_array.h"
#include "host/zefkit/zk_uuid.h"

class CKorvoOpenDocStackItem {
 public:
  ZK_SimpleArray<ZK_UUID> m_added_ids;  // objects added from the file (merge or reference)
  bool m_merge = false;
  bool m_reference = false;
  bool m_table_read = false;  // the plug-in's stance table was read from this file
};

class CKorvoOpenDocStack {
 public:
  CKorvoOpenDocStack() = default;
  ~CKorvoOpenDocStack();
  CKorvoOpenDocStack(const CKorvoOpenDocStack&) = delete;
  CKorvoOpenDocStack& operator=(const CKorvoOpenDocStack&) = delete;

  // Takes ownership of the item.
  void Push(CKorvoOpenDocStackItem* item);
  // The item on top, or null; the stack keeps ownership.
  CKorvoOpenDocStackItem* Top() const;
  // Destroys the item on top: false when the stack is empty.
  bool Pop();

 private:
  ZK_SimpleArray<CKorvoOpenDocStackItem*> m_items;
};
