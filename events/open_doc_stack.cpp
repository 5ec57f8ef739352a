#include "events/open_doc_stack.h"

CKorvoOpenDocStack::~CKorvoOpenDocStack() {
  while (Pop()) {
  }
}

void CKorvoOpenDocStack::Push(CKorvoOpenDocStackItem* item) { m_items.Append(item); }

CKorvoOpenDocStackItem* CKorvoOpenDocStack::Top() const {
  return m_items.Count() > 0 ? m_items[m_items.Count() - 1] : nullptr;
}

bool CKorvoOpenDocStack::Pop() {
  if (m_items.Count() == 0) return false;
  delete m_items[m_items.Count() - 1];
  m_items.Remove(m_items.Count() - 1);
  return true;
}
