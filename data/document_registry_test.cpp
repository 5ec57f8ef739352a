#include "data/document_registry.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(DocumentRegistry, KeepsOneTablePerSerialNumberAcrossSharedBucketsAndBlocks) {
  CKorvoDocDataMap map;
  std::vector<CKorvoDocData*> tables;
  for (unsigned int serial = 1; serial <= 3000; ++serial) {
    tables.push_back(map.DocData(serial));  // 3000 keys in 256 buckets, three node blocks
    EXPECT_EQ(tables.back()->m_doc_serial_number, serial);
  }
  tables[41]->Add(ZK_UuidFromString("9A8B7C6D-5E4F-4A3B-8C2D-1E0F9A8B7C6D"), L"Front");
  for (unsigned int i = 0; i < 3000; ++i) EXPECT_EQ(map.DocData(i + 1), tables[i]) << i;
  EXPECT_EQ(map.Count(), 3000);
  map.RemoveAll();
  EXPECT_EQ(map.Count(), 0);
  EXPECT_EQ(map.DocData(42)->Count(), 0);
}

}  // namespace
