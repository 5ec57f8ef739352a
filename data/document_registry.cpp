#include "data/document_registry.h"

#include <cstdlib>
#include <new>

#include "host/zefkit/zk_crc16.h"
#include "host/zefkit/zk_memory.h"

CKorvoDocDataMap::CKorvoDocDataMap() {
  for (Node*& bucket : m_buckets) bucket = nullptr;
}

CKorvoDocDataMap::~CKorvoDocDataMap() { RemoveAll(); }

CKorvoDocData* CKorvoDocDataMap::DocData(unsigned int serial_number) {
  Node*& head = m_buckets[Bucket(serial_number)];
  for (Node* node = head; node; node = node->m_next) {
    if (node->m_key == serial_number) return node->m_value;
  }
  auto* table = new CKorvoDocData();
  table->m_doc_serial_number = serial_number;
  table->m_cursor = 0;
  Node* node = NewNode();
  *node = Node{head, serial_number, table};
  head = node;
  ++m_count;
  return table;
}

void CKorvoDocDataMap::RemoveAll() {
  for (Node*& head : m_buckets) {
    for (Node* node = head; node; node = node->m_next) delete node->m_value;
    head = nullptr;
  }
  while (Block* block = m_blocks) {
    m_blocks = block->m_next;
    block->~Block();
    ZK_free(block);
  }
  m_free = nullptr;
  m_count = 0;
}

int CKorvoDocDataMap::Bucket(unsigned int serial_number) {
  const unsigned char key[4] = {static_cast<unsigned char>(serial_number),
                                static_cast<unsigned char>(serial_number >> 8),
                                static_cast<unsigned char>(serial_number >> 16),
                                static_cast<unsigned char>(serial_number >> 24)};
  return ZK_CRC16(0, sizeof key, key) & (kBucketCount - 1);
}

CKorvoDocDataMap::Node* CKorvoDocDataMap::NewNode() {
  if (m_free == nullptr) {
    void* memory = ZK_malloc(sizeof(Block));
    // As with every allocation of the plug-in, running out of memory ends the program.
    if (memory == nullptr) std::abort();
    Block* block = new (memory) Block;
    block->m_next = m_blocks;
    m_blocks = block;
    for (int i = kBlockSize - 1; i >= 0; --i) {
      block->m_nodes[i].m_next = m_free;
      m_free = &block->m_nodes[i];
    }
  }
  Node* node = m_free;
  m_free = node->m_next;
  return node;
}
