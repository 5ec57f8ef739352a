// Documents for the benchmarks, built the same way for an operation and its baseline: point
// objects, every one in the stance "All" and in `entries - 1` of the stances "Pose 1", "Pose 2",
// ... in turn. Records are attached directly; saving stance by stance through the plug-in would
// rewrite every object once per stance, which is not what is measured.
#pragma once

#include <string>
#include <vector>

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/zk_array.h"

// Loads the plug-in into the host, as the host does at start.
void LoadStancePlugIn();
// The host's work alone: the plug-in unloaded for the guard's lifetime, so that its event watcher
// hears nothing of what the host does, and loaded again after. Tables and records stay.
class HostAlone {
 public:
  HostAlone();
  ~HostAlone() { LoadStancePlugIn(); }
  HostAlone(const HostAlone&) = delete;
  HostAlone& operator=(const HostAlone&) = delete;
};
// Closes the document, and drops the stance tables the plug-in keeps for closed documents, so
// that a benchmark that opens a document a round measures no registry growing by a table a
// round. The documents still open keep their tables.
void CloseBenchDocument(unsigned int serial_number);

class BenchModel {
 public:
  // A new active document of `objects` points in `stances` stances ("All" first), each object
  // carrying `entries` of them; with 0 entries the objects carry no record (the bare objects a
  // baseline works on). The document belongs to the host; the destructor closes it.
  BenchModel(int objects, int stances, int entries);
  ~BenchModel();
  BenchModel(const BenchModel&) = delete;
  BenchModel& operator=(const BenchModel&) = delete;

  CTarsaDoc& Doc() const { return *m_doc; }
  // The id of the stance "All", which every object carries.
  const ZK_UUID& All() const { return m_all; }
  // Every object of the document, in document order.
  ZK_SimpleArray<const CTarsaObject*> Objects() const;
  // Moves every object by (1, 0, 0), as the user's Move would.
  void MoveAll();
  // True when object 0 is at its first place.
  bool AtStart() const;
  // Saves the document to a file under /tmp named after `name` and the process: the path.
  std::string SaveAs(const char* name) const;

 private:
  CTarsaDoc* m_doc;
  ZK_UUID m_all;
};

// Reads every entry of every record of the document once: what a pass over the entries costs.
// The number of entries read.
long long ReadEveryEntry(CTarsaDoc& doc);
// Transforms every object of the document by `xform` through the host: the host's own cost.
void TransformEveryObject(CTarsaDoc& doc, const ZK_Xform& xform);
// Replaces every listed object by its duplicate: the host's cost of rewriting the objects.
void DuplicateAndReplace(CTarsaDoc& doc, const ZK_SimpleArray<const CTarsaObject*>& objects);
