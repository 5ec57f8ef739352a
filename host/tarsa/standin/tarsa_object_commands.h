// More of the host's own commands, as a user runs them, each one undo step with the
// notifications of a real command. Adding objects, each asked for a name (Enter: none) first:
//   Point    location "x,y,z".
//   Polyline points "x,y,z" until Enter, at least two.
//   Box      two opposite corners: an axis-aligned box.
//   Light    location and direction (not 0,0,0).
// Changing objects (picked by name or id, or the ones selected before):
//   Rotate   angle in degrees (counter-clockwise seen from above) about the vertical axis through
//            a center point; each object replaced by a rotated copy.
//   Scale    factor (not 0) about a center point; each object replaced by a scaled copy.
//   Hide, Lock   the objects hidden or locked. Show, Unlock: every hidden or locked object back
//            to normal, as the name says.
//   History  the objects marked as carrying construction history: each replaced by a copy that
//            carries it, so that nothing moves it on its own any more.
// Selection: Select (objects by name or id added to the selection), SelAll, SelNone.
// The command objects are made when the host library loads.
#pragma once
