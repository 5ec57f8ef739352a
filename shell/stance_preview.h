// What the window previews of a stance: the stance selected in the open Stances panel, and where a
// restore of it would put each member, asked of the plug-in's script object (its StanceMoves
// method, which measures the records as StanceCheck does: docs/where_the_model_stands.md). Asking
// changes nothing: not the document, not its undo, not a record.
#pragma once

#include <string>
#include <vector>

#include "host/zefkit/zk_uuid.h"
#include "host/zefkit/zk_xform.h"

class IDispatch;

// The first loaded plug-in's script object, with one reference for the caller; null when none
// offers one.
IDispatch* TsScriptObject();

// The name of the first stance selected in the first open list panel; empty when no panel is open
// or nothing is selected in it.
std::wstring TsSelectedStance();

struct TsPreviewMove {
  ZK_UUID object;
  ZK_Xform move;  // the move a restore would make
};

// Each member a restore of the stance would move or leave in place, with its move; empty when
// the stance is unknown or no plug-in answers.
std::vector<TsPreviewMove> TsStanceMoves(const std::wstring& stance);
