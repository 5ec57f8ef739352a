#include "host/tarsa/tarsa_plugin.h"

bool CTarsaPlugIn::ShouldWriteDocument(const CTarsaFileWriteOptions&) { return false; }

bool CTarsaPlugIn::WriteDocument(CTarsaDoc&, ZK_BinaryArchive&, const CTarsaFileWriteOptions&) {
  return true;
}

bool CTarsaPlugIn::ReadDocument(CTarsaDoc&, ZK_BinaryArchive&, const CTarsaFileReadOptions&) {
  return true;
}

bool CTarsaPlugIn::OnLoadPlugIn() { return true; }

void CTarsaPlugIn::OnUnloadPlugIn() {}
