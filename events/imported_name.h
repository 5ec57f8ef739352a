// The name a stance of an imported or referenced model file takes in the document, shared by the
// merge of the file's stances and by the preview of an import, so that the preview names what
// the merge will.
#pragma once

#include "data/name_set.h"
#include "host/zefkit/zk_string.h"

// The stance's own name when it is free, else "<name> - Copy", then "<name> - Copy (2)", "(3)"
// and so on: the first one not in use, letter case ignored. `taken` holds the names in use and
// takes the one chosen, so that the file's later stances see it.
ZK_wString ImportedName(CKorvoNameSet& taken, const ZK_wString& name);
