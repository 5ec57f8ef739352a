// CKorvoNameSet: stance names as the table compares them, letter case ignored, for an operation
// that asks many times whether a name is taken (the proposed save name, the names an import
// takes), made in one pass over the table and dropped when the operation ends. It holds the
// names themselves, sharing their characters with the table's, so that building it copies no
// text; a name is hashed as its folded form would be, folding it only when it has letters beyond
// ASCII.
#pragma once

#include <cstddef>
#include <unordered_set>

#include "host/zefkit/zk_string.h"

struct CKorvoNameHash {
  // Equal for two names that CompareNoCase finds equal.
  size_t operator()(const ZK_wString& name) const;
};

struct CKorvoNameEqual {
  bool operator()(const ZK_wString& a, const ZK_wString& b) const {
    return a.CompareNoCase(b.Array()) == 0;
  }
};

using CKorvoNameSet = std::unordered_set<ZK_wString, CKorvoNameHash, CKorvoNameEqual>;
