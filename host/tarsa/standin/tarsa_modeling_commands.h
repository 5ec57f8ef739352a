// The host's own modelling commands, as a user runs them, each one undo step with the
// notifications of a real command:
//   Move    objects, offset "x,y,z": each object replaced by a moved copy.
//   Copy    objects, offset "x,y,z": a moved copy of each object added; the originals stay.
//   Delete  objects: each deleted.
//   Explode objects: the pieces of each (a polyline's segments, a box's twelve edges) added,
//           then the object deleted.
//   Rebuild objects: each deleted, then made again as a new object from its points.
//   Replace objects: each replaced, in its place and with its id, by new geometry of its points.
//   Duplicate objects: a copy of each added where it stands, user data included.
// Pieces, rebuilt and replacing objects are new geometry: they carry no user data of the original.
// The command objects are made when the host library loads.
#pragma once
