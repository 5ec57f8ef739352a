// The host's model files: a document's objects, lights included, with their ids, names, modes,
// geometry and archived user data, followed by the loaded plug-ins' document data, one
// length-framed block per plug-in id. The format is described in docs/model_file.md.
//
// A file is read whole and checked before anything changes: a file that is not a model file, is
// of a newer format version, is cut short or is too large for memory gives an error, and no
// document is touched. A file that is not a model is refused from its first bytes.
#pragma once

#include <string>

class CTarsaDoc;

// What tells one version of a model file from another: which file it is and when it was last
// written. A save compares it to learn whether someone changed the file since it was read.
struct TsModelFileStamp {
  unsigned long long m_device = 0;
  unsigned long long m_inode = 0;
  long long m_size = -1;
  long long m_modified_ns = 0;
};
bool operator==(const TsModelFileStamp& a, const TsModelFileStamp& b);
inline bool operator!=(const TsModelFileStamp& a, const TsModelFileStamp& b) { return !(a == b); }

// The stamp of the file at `path` now, links followed; a default stamp when there is none.
TsModelFileStamp TsModelFileStampOf(const std::string& path);

// Writes the document's active-model objects and its plug-in data to `path`. The file is written
// to a new file of this save's own beside the target, made exclusively, flushed to the disk,
// given the target's owner and access rights, and renamed over the target only when complete:
// a failed save leaves the old file as it was, and two saves at once leave one whole model. A
// read-only model is refused. False with a message in `error` when the file was not written;
// on success `written`, when given, receives the new file's stamp.
bool TsWriteModelFile(CTarsaDoc& doc, const std::string& path, std::wstring& error,
                      TsModelFileStamp* written = nullptr);

// Whether the file at `path` can be tried as a model: a regular file that starts as a model file
// of a format this host reads. False with the message a read would give; no more than its first
// bytes are read.
bool TsIsModelFile(const std::string& path, std::wstring& error);

// Reads the model at `path` into `doc`: with merge false, the file is opened as the document
// (the document should be empty); with merge or reference, its objects join the document, as
// reference objects for a reference. The watchers hear OnBeginOpenDocument, OnAddObject for each
// object, then each plug-in reads its block, then OnEndOpenDocument. False with a message in
// `error`, and the document untouched, when the file cannot be used.
bool TsReadModelFile(CTarsaDoc& doc, const std::string& path, bool merge, bool reference,
                     std::wstring& error);
