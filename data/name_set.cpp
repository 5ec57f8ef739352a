#include "data/name_set.h"

#include <cstdint>

size_t CKorvoNameHash::operator()(const ZK_wString& name) const {
  // The hash of the folded form, as std::hash gives it; CaseFolded folds an ASCII letter to its
  // lower case, so a name of ASCII alone, as most are, is folded here without a copy.
  uint64_t hash = 14695981039346656037ull;
  for (wchar_t c : name.View()) {
    if (c < 0 || c >= 0x80) return std::hash<ZK_wString>()(name.CaseFolded());
    if (c >= L'A' && c <= L'Z') c += L'a' - L'A';
    hash = (hash ^ static_cast<uint32_t>(c)) * 1099511628211ull;
  }
  return static_cast<size_t>(hash);
}
