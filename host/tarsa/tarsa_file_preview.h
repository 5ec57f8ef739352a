// CTarsaFilePreview: what a model file holds, read without a document: its objects, free and
// owned by the preview, and the plug-ins' data blocks. A plug-in uses it to look into a file
// before it is imported; nothing is added to any document, no watcher hears of it and nothing is
// recorded for undo. Made and dropped by the caller on the stack.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/tarsa/tarsa_object.h"

class CTarsaFilePreview {
 public:
  CTarsaFilePreview();
  ~CTarsaFilePreview();
  CTarsaFilePreview(const CTarsaFilePreview&) = delete;
  CTarsaFilePreview& operator=(const CTarsaFilePreview&) = delete;

  // Reads the model file at `path` (UTF-8), replacing what the preview held. False, with the
  // message the host's Import gives in `error` and the preview empty, when the file cannot be
  // used (missing, a folder, not a model file, of a newer format, damaged).
  bool Read(const std::string& path, std::wstring& error);

  int ObjectCount() const { return static_cast<int>(m_objects.size()); }
  // The preview keeps the object.
  const CTarsaObject& Object(int index) const { return *m_objects[static_cast<size_t>(index)]; }
  // The data block of that plug-in as the file holds it, or null when it has none; the preview
  // keeps the bytes.
  const std::vector<unsigned char>* PlugInData(const ZK_UUID& plug_in_id) const;

 private:
  std::vector<std::unique_ptr<CTarsaObject>> m_objects;
  std::vector<std::pair<ZK_UUID, std::vector<unsigned char>>> m_blocks;
};
