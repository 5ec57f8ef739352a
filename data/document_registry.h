// CKorvoDocDataMap: the document registry, which keeps one stance table per document and finds it
// by the document's runtime serial number. The plug-in object owns the registry (its
// m_doc_data_map); the registry owns every table from the first request for its serial number
// until the registry is emptied (RemoveAll: when the plug-in object goes, or when a test session
// asks). Closing a document removes nothing.
//
// A hash map of 256 buckets, each a chain of nodes, the bucket chosen by the low 8 bits of the
// kernel's CRC16 of the key. Nodes come from blocks of 1024 taken from the kernel's allocator and
// are never freed one by one.
#pragma once

#include "data/stance_table.h"

class CKorvoDocDataMap {
 public:
  CKorvoDocDataMap();
  ~CKorvoDocDataMap();
  CKorvoDocDataMap(const CKorvoDocDataMap&) = delete;
  CKorvoDocDataMap& operator=(const CKorvoDocDataMap&) = delete;

  // The table of that serial number, created empty on the first request; never null. The registry
  // keeps ownership.
  CKorvoDocData* DocData(unsigned int serial_number);
  // Destroys every table and releases every block.
  void RemoveAll();
  int Count() const { return m_count; }

 private:
  struct Node {
    Node* m_next;
    unsigned int m_key;
    CKorvoDocData* m_value;
  };
  static constexpr int kBucketCount = 256;
  static constexpr int kBlockSize = 1024;
  struct Block {
    Block* m_next;
    Node m_nodes[kBlockSize];
  };

  static int Bucket(unsigned int serial_number);
  Node* NewNode();

  Node* m_buckets[kBucketCount];
  Block* m_blocks = nullptr;
  Node* m_free = nullptr;
  int m_count = 0;
};
