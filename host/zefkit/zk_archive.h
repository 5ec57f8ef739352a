// ZK_BinaryArchive: the kernel's binary archive, written to and read from memory or a file. The
// byte encoding is described in docs/archive_format.md.
//
// Every read either succeeds or fails cleanly: a failed read leaves its output and the position
// as they were. No read allocates more than the bytes left in the current chunk could hold, so a
// corrupt length is a failed read, never a huge allocation. Writes fail in a read archive, past
// a write limit, or when the file cannot be written.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/zefkit/zk_object.h"

enum class ZK_ArchiveMode { read, write };

class ZK_BinaryArchive {
 public:
  virtual ~ZK_BinaryArchive() = default;
  ZK_BinaryArchive(const ZK_BinaryArchive&) = delete;
  ZK_BinaryArchive& operator=(const ZK_BinaryArchive&) = delete;

  ZK_ArchiveMode Mode() const { return m_mode; }

  bool WriteInt(int value);
  bool ReadInt(int& value);
  bool WriteDouble(double value);
  bool ReadDouble(double& value);  // fails on infinities and NaN
  bool WriteUuid(const ZK_UUID& uuid);
  bool ReadUuid(ZK_UUID& uuid);
  // Strings travel as UTF-16; a code point outside Unicode is written as U+FFFD. Reading fails
  // on a negative length, a lone surrogate or a NUL character.
  bool WriteString(const ZK_wString& text);
  // The same for a text the caller has as characters ending in a zero, without making a string
  // of it first; null writes the empty string.
  bool WriteString(const wchar_t* text);
  bool ReadString(ZK_wString& text);
  // Arrays of doubles in one call, as `count` WriteDouble or ReadDouble would give them. A read
  // fails, reading nothing, when a value is not finite.
  bool WriteDoubles(const double* values, size_t count);
  bool ReadDoubles(double* values, size_t count);
  bool WriteXform(const ZK_Xform& xform);
  bool ReadXform(ZK_Xform& xform);  // fails when an element is not finite
  bool WritePoint(const ZK_3dPoint& point);
  bool ReadPoint(ZK_3dPoint& point);  // fails when a coordinate is not finite

  // A chunk is a length-framed run of bytes. Reading inside a chunk never passes its end, and
  // ending a chunk skips whatever its reader left unread.
  bool BeginWriteChunk();
  bool EndWriteChunk();
  bool BeginReadChunk();
  bool EndReadChunk();
  // The same, with the CRC-32 of the chunk's bytes continued from `crc`: over the bytes just
  // framed when a write ends, over the bytes the chunk holds, before any is read, when a read
  // begins. `crc` is unchanged when the call fails.
  bool EndWriteChunk(unsigned int& crc);
  bool BeginReadChunk(unsigned int& crc);
  // A whole chunk as raw bytes, for data a reader keeps without understanding it.
  bool WriteChunk(const std::vector<unsigned char>& bytes);
  bool ReadChunk(std::vector<unsigned char>& bytes);

  // Writes the object under its class uuid, framed, followed by every piece of its user data
  // whose WriteToArchive is true (unknown user data as it was read); then deletes the pieces
  // whose DeleteAfterWrite is true. False when a write failed or a class has no uuid.
  bool WriteObject(const ZK_Object& object);
  // Re-creates an object written by WriteObject from its registered class, with its user data.
  //   1: `object` receives the new object, owned by the caller;
  //   2: the object was skipped (class unknown here, or its Read failed); `object` is null;
  //   0: the archive's framing is broken; `object` is null.
  // User data that cannot be re-created or read stays with the object as ZK_UnknownUserData;
  // user data whose DeleteAfterRead is true is deleted instead of attached.
  int ReadObject(ZK_Object*& object);

  // Bytes that can still be read in the current chunk (or the whole archive).
  size_t BytesLeft() const;

 protected:
  explicit ZK_BinaryArchive(ZK_ArchiveMode mode) : m_mode(mode) {}

  // Called when a write leaves no chunk open, so that an archive can pass on what it has
  // collected: false when that failed. Memory archives keep everything.
  virtual bool WriteOut() { return true; }

  ZK_ArchiveMode m_mode;
  // Read: the archive's bytes. Write: the first m_end are the bytes written, the rest room for
  // more, grown by half again at a time, so that a write is one copy into room already there; the
  // room is dropped when the bytes are shown (Bytes), and kept when a file archive passes them on.
  mutable std::vector<unsigned char> m_buffer;
  size_t m_end = 0;
  size_t m_position = 0;
  size_t m_write_limit = static_cast<size_t>(-1);
  std::vector<size_t> m_chunks;  // read: end of each open chunk; write: where its length sits

 private:
  bool WriteBytes(const void* bytes, size_t size);
  // Room for `size` bytes after those written, grown when needed: where they go, not yet counted
  // as written (m_end moves for that). Null in a read archive.
  unsigned char* Room(size_t size);
  void Grow(size_t size);
  bool WriteText(std::wstring_view text);
  bool CloseWriteChunk(unsigned int* crc);
  bool ReadBytes(void* bytes, size_t size);
  // The next `size` bytes of the current chunk, passed over; null, the position as it was, when
  // fewer are left (or the archive is for writing).
  const unsigned char* Take(size_t size);
  bool WriteUserData(const ZK_UserData& user_data);
  void ReadUserData(ZK_Object& object);
  bool ReadUserDataHeader(ZK_UserData& user_data);
  // The user data of that class re-created and read from the chunk being read; null, with the
  // position as it was, when it cannot be.
  ZK_UserData* ReadUserDataBody(const ZK_UUID& class_uuid);
};

// An archive held in memory.
class ZK_BinaryMemoryArchive : public ZK_BinaryArchive {
 public:
  // An empty archive for writing. Writes that would grow it past `write_limit` bytes fail.
  explicit ZK_BinaryMemoryArchive(size_t write_limit = static_cast<size_t>(-1));
  // An archive that reads a copy of `bytes`.
  explicit ZK_BinaryMemoryArchive(const std::vector<unsigned char>& bytes);
  // An archive that reads `bytes`, taken over without a copy.
  explicit ZK_BinaryMemoryArchive(std::vector<unsigned char>&& bytes);

  // The bytes written (or read); valid until the next write.
  const std::vector<unsigned char>& Bytes() const;
};

// An archive on disk. For reading, the file is loaded when the archive is made: only a regular
// file opens (not a folder, a device or a pipe). For writing, the file is made by the first
// write that ends outside every chunk with a megabyte collected, or by Close, and written a
// megabyte at a time; Close writes the rest and flushes it to the disk (the destructor closes an
// archive not yet closed). Once writing to the file has failed, the end of every later outermost
// chunk fails, and so does Close.
class ZK_BinaryFileArchive : public ZK_BinaryArchive {
 public:
  ZK_BinaryFileArchive(const std::string& path, ZK_ArchiveMode mode);
  // Writes into a file that the caller opened and keeps: Close flushes it to the disk and leaves
  // it open, so that the caller can still look at it, rename it and close it.
  explicit ZK_BinaryFileArchive(int fd);
  ~ZK_BinaryFileArchive() override;

  // False when a read archive's file could not be loaded.
  bool IsOpen() const { return m_open; }
  // Writes the collected bytes to the file: true when the whole file was written. A read archive
  // has nothing to write and gives its IsOpen(). Later calls give the first call's result.
  bool Close();

 protected:
  bool WriteOut() override;

 private:
  // Writes what has been collected to the file, made when first needed: false when that failed.
  bool Flush();

  std::string m_path;
  int m_fd = -1;
  bool m_owns_fd = true;
  bool m_write_failed = false;
  bool m_open = false;
  bool m_closed = false;
  bool m_close_result = false;
};
