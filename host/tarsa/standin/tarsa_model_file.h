// The host's model files: a document's objects, lights included, with their ids, names, modes,
// geometry and archived user data, followed by the loaded plug-ins' document data, one
// length-framed block per plug-in id. The format is described in docs/model_file.md.
//
// A file is read whole and checked before anything changes: a file that is not a model file, is
// of a newer format version, or is cut short gives an error, and no document is touched.
#pragma once

#include <string>

class CTarsaDoc;

// Writes the document's active-model objects and its plug-in data to `path`. The file is written
// beside the target and renamed over it only when complete, so a failed save leaves the old file
// as it was. False with a message in `error` when the file could not be written.
bool TsWriteModelFile(CTarsaDoc& doc, const std::string& path, std::wstring& error);

// Reads the model at `path` into `doc`: with merge false, the file is opened as the document
// (the document should be empty); with merge or reference, its objects join the document, as
// reference objects for a reference. The watchers hear OnBeginOpenDocument, OnAddObject for each
// object, then each plug-in reads its block, then OnEndOpenDocument. False with a message in
// `error`, and the document untouched, when the file cannot be used.
bool TsReadModelFile(CTarsaDoc& doc, const std::string& path, bool merge, bool reference,
                     std::wstring& error);
