#include "host/zefkit/zk_archive.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

#include "host/zefkit/zk_crc32.h"
#include "host/zefkit/zk_unknown_user_data.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The smallest framed object: class uuid and chunk length.
constexpr size_t kObjectHeaderSize = 16 + 4;

void PutLittleEndian(unsigned char* out, std::uint64_t value, int size) {
  for (int i = 0; i < size; ++i) out[i] = static_cast<unsigned char>(value >> (8 * i));
}

std::uint64_t GetLittleEndian(const unsigned char* in, int size) {
  std::uint64_t value = 0;
  for (int i = size - 1; i >= 0; --i) value = (value << 8) | in[i];
  return value;
}

// The same for the sizes the archive reads by the million, in one load where the machine's own
// order is little-endian.
template <class Unsigned>
Unsigned Load(const unsigned char* in) {
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  Unsigned value;
  std::memcpy(&value, in, sizeof(Unsigned));
  return value;
#else
  return static_cast<Unsigned>(GetLittleEndian(in, sizeof(Unsigned)));
#endif
}

}  // namespace

size_t ZK_BinaryArchive::BytesLeft() const {
  if (m_mode != ZK_ArchiveMode::read) return 0;
  const size_t end = m_chunks.empty() ? m_buffer.size() : m_chunks.back();
  return end > m_position ? end - m_position : 0;
}

inline unsigned char* ZK_BinaryArchive::Room(size_t size) {
  if (m_mode != ZK_ArchiveMode::write) return nullptr;
  if (m_buffer.size() - m_end < size) Grow(size);
  return m_buffer.data() + m_end;
}

void ZK_BinaryArchive::Grow(size_t size) {
  // Half again what is there, so that the bytes are moved a bounded number of times in all;
  // at least enough for a small object, so that small archives do not grow a few bytes at a time.
  const size_t grown = m_buffer.size() + m_buffer.size() / 2;
  m_buffer.resize(std::max({grown, m_end + size, size_t{256}}));
}

inline bool ZK_BinaryArchive::WriteBytes(const void* bytes, size_t size) {
  if (size > m_write_limit || m_end > m_write_limit - size) return false;
  unsigned char* at = Room(size);
  if (at == nullptr) return false;
  if (size > 0) std::memcpy(at, bytes, size);
  m_end += size;
  return true;
}

inline const unsigned char* ZK_BinaryArchive::Take(size_t size) {
  if (m_mode != ZK_ArchiveMode::read) return nullptr;
  const size_t end = m_chunks.empty() ? m_buffer.size() : m_chunks.back();
  if (end < m_position || end - m_position < size) return nullptr;
  const unsigned char* at = m_buffer.data() + m_position;
  m_position += size;
  return at;
}

bool ZK_BinaryArchive::ReadBytes(void* bytes, size_t size) {
  const unsigned char* at = Take(size);
  if (at == nullptr) return false;
  if (size > 0) std::memcpy(bytes, at, size);
  return true;
}

bool ZK_BinaryArchive::WriteInt(int value) {
  unsigned char bytes[4];
  PutLittleEndian(bytes, static_cast<std::uint32_t>(value), 4);
  return WriteBytes(bytes, 4);
}

bool ZK_BinaryArchive::ReadInt(int& value) {
  const unsigned char* bytes = Take(4);
  if (bytes == nullptr) return false;
  value = static_cast<std::int32_t>(Load<std::uint32_t>(bytes));
  return true;
}

bool ZK_BinaryArchive::WriteDouble(double value) {
  std::uint64_t bits;
  std::memcpy(&bits, &value, 8);
  unsigned char bytes[8];
  PutLittleEndian(bytes, bits, 8);
  return WriteBytes(bytes, 8);
}

bool ZK_BinaryArchive::ReadDouble(double& value) {
  unsigned char bytes[8];
  if (BytesLeft() < 8) return false;
  std::memcpy(bytes, m_buffer.data() + m_position, 8);
  const std::uint64_t bits = GetLittleEndian(bytes, 8);
  double read;
  std::memcpy(&read, &bits, 8);
  if (!std::isfinite(read)) return false;
  m_position += 8;
  value = read;
  return true;
}

bool ZK_BinaryArchive::WriteUuid(const ZK_UUID& uuid) {
  unsigned char bytes[16];
  PutLittleEndian(bytes, uuid.Data1, 4);
  PutLittleEndian(bytes + 4, uuid.Data2, 2);
  PutLittleEndian(bytes + 6, uuid.Data3, 2);
  std::memcpy(bytes + 8, uuid.Data4, 8);
  return WriteBytes(bytes, 16);
}

bool ZK_BinaryArchive::ReadUuid(ZK_UUID& uuid) {
  const unsigned char* bytes = Take(16);
  if (bytes == nullptr) return false;
  uuid.Data1 = Load<std::uint32_t>(bytes);
  uuid.Data2 = Load<std::uint16_t>(bytes + 4);
  uuid.Data3 = Load<std::uint16_t>(bytes + 6);
  std::memcpy(uuid.Data4, bytes + 8, 8);
  return true;
}

bool ZK_BinaryArchive::WriteString(const ZK_wString& text) { return WriteText(text.View()); }

bool ZK_BinaryArchive::WriteString(const wchar_t* text) {
  return WriteText(text ? std::wstring_view(text) : std::wstring_view());
}

bool ZK_BinaryArchive::WriteText(std::wstring_view text) {
  // The count, then the units, go straight into room for the most units the text could take
  // (every character a surrogate pair); the count is filled in once the units are known.
  if (text.size() > (static_cast<size_t>(-1) - 4) / 4) return false;
  unsigned char* const start = Room(4 + 4 * text.size());
  if (start == nullptr) return false;
  unsigned char* unit = start + 4;
  auto put = [&unit](unsigned long value) {
    unit[0] = static_cast<unsigned char>(value);
    unit[1] = static_cast<unsigned char>(value >> 8);
    unit += 2;
  };
  for (wchar_t w : text) {
    unsigned long c = static_cast<unsigned long>(w);
    if ((c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF) c = 0xFFFD;
    if (c < 0x10000) {
      put(c);
    } else {
      put(0xD800 + ((c - 0x10000) >> 10));
      put(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
  }
  const size_t size = static_cast<size_t>(unit - start);
  const size_t units = (size - 4) / 2;
  if (units > 0x7FFFFFFF || size > m_write_limit || m_end > m_write_limit - size) return false;
  PutLittleEndian(start, units, 4);
  m_end += size;
  return true;
}

bool ZK_BinaryArchive::ReadString(ZK_wString& text) {
  const size_t start = m_position;
  int count = 0;
  if (!ReadInt(count)) return false;
  if (count < 0 || static_cast<size_t>(count) > BytesLeft() / 2) {
    m_position = start;
    return false;
  }
  ZK_wString out;
  wchar_t* characters = out.GetBuffer(count);
  int length = 0;
  const unsigned char* units = m_buffer.data() + m_position;
  for (int i = 0; i < count; ++i) {
    unsigned long c = units[2 * i] | (units[2 * i + 1] << 8);
    if (c >= 0xD800 && c <= 0xDBFF && i + 1 < count) {
      const unsigned long low = units[2 * i + 2] | (units[2 * i + 3] << 8);
      if (low >= 0xDC00 && low <= 0xDFFF) {
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        ++i;
      }
    }
    if (c == 0 || (c >= 0xD800 && c <= 0xDFFF)) {
      m_position = start;
      return false;
    }
    characters[length++] = static_cast<wchar_t>(c);
  }
  out.ReleaseBuffer(length);
  m_position += 2 * static_cast<size_t>(count);
  text = std::move(out);
  return true;
}

bool ZK_BinaryArchive::WriteDoubles(const double* values, size_t count) {
  if (count > m_write_limit / 8) return false;
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  return WriteBytes(values, count * 8);
#else
  for (size_t i = 0; i < count; ++i) {
    if (!WriteDouble(values[i])) return false;
  }
  return true;
#endif
}

bool ZK_BinaryArchive::ReadDoubles(double* values, size_t count) {
  if (count > BytesLeft() / 8) return false;
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  const unsigned char* bytes = m_buffer.data() + m_position;
  for (size_t i = 0; i < count; ++i) {
    double value;
    std::memcpy(&value, bytes + 8 * i, 8);
    if (!std::isfinite(value)) return false;
  }
  if (count > 0) std::memcpy(values, bytes, count * 8);
  m_position += count * 8;
#else
  const size_t start = m_position;
  std::vector<double> read(count);
  for (double& value : read) {
    if (!ReadDouble(value)) {
      m_position = start;
      return false;
    }
  }
  std::copy(read.begin(), read.end(), values);
#endif
  return true;
}

bool ZK_BinaryArchive::WriteXform(const ZK_Xform& xform) {
  return WriteDoubles(&xform.m_xform[0][0], 16);
}

bool ZK_BinaryArchive::ReadXform(ZK_Xform& xform) { return ReadDoubles(&xform.m_xform[0][0], 16); }

bool ZK_BinaryArchive::WritePoint(const ZK_3dPoint& point) {
  const double xyz[3] = {point.x, point.y, point.z};
  return WriteDoubles(xyz, 3);
}

bool ZK_BinaryArchive::ReadPoint(ZK_3dPoint& point) {
  double xyz[3];
  if (!ReadDoubles(xyz, 3)) return false;
  point = {xyz[0], xyz[1], xyz[2]};
  return true;
}

bool ZK_BinaryArchive::BeginWriteChunk() {
  const size_t at = m_end;
  if (!WriteInt(0)) return false;
  m_chunks.push_back(at);
  return true;
}

bool ZK_BinaryArchive::EndWriteChunk() { return CloseWriteChunk(nullptr); }

bool ZK_BinaryArchive::EndWriteChunk(unsigned int& crc) { return CloseWriteChunk(&crc); }

bool ZK_BinaryArchive::CloseWriteChunk(unsigned int* crc) {
  if (m_mode != ZK_ArchiveMode::write || m_chunks.empty()) return false;
  const size_t at = m_chunks.back();
  m_chunks.pop_back();
  const size_t length = m_end - at - 4;
  if (length > 0x7FFFFFFF) return false;
  PutLittleEndian(m_buffer.data() + at, length, 4);
  if (crc) *crc = ZK_CRC32(*crc, length, m_buffer.data() + at + 4);
  return !m_chunks.empty() || WriteOut();
}

bool ZK_BinaryArchive::BeginReadChunk(unsigned int& crc) {
  if (!BeginReadChunk()) return false;
  crc = ZK_CRC32(crc, BytesLeft(), m_buffer.data() + m_position);
  return true;
}

bool ZK_BinaryArchive::BeginReadChunk() {
  const size_t start = m_position;
  int length = 0;
  if (!ReadInt(length)) return false;
  if (length < 0 || static_cast<size_t>(length) > BytesLeft()) {
    m_position = start;
    return false;
  }
  m_chunks.push_back(m_position + static_cast<size_t>(length));
  return true;
}

bool ZK_BinaryArchive::EndReadChunk() {
  if (m_mode != ZK_ArchiveMode::read || m_chunks.empty()) return false;
  m_position = m_chunks.back();
  m_chunks.pop_back();
  return true;
}

bool ZK_BinaryArchive::WriteChunk(const std::vector<unsigned char>& bytes) {
  return BeginWriteChunk() && WriteBytes(bytes.data(), bytes.size()) && EndWriteChunk();
}

bool ZK_BinaryArchive::ReadChunk(std::vector<unsigned char>& bytes) {
  if (!BeginReadChunk()) return false;
  const unsigned char* first = m_buffer.data() + m_position;
  bytes.assign(first, first + BytesLeft());
  return EndReadChunk();
}

// An object is: class uuid, then a chunk holding { a chunk with the object's own Write, the
// count of archived user data, each piece of user data }. A piece of user data is: class uuid,
// then a chunk holding { user-data id, application id, copy count, a chunk with its own Write }.
bool ZK_BinaryArchive::WriteObject(const ZK_Object& object) {
  const ZK_ClassId* class_id = object.ClassId();
  if (class_id == nullptr || ZK_UuidIsNil(class_id->Uuid())) return false;
  std::vector<const ZK_UserData*> pieces;
  for (const ZK_UserData* ud = object.FirstUserData(); ud; ud = ud->Next()) {
    if (ud->WriteToArchive(*this, &object)) pieces.push_back(ud);
  }
  if (!WriteUuid(class_id->Uuid()) || !BeginWriteChunk()) return false;
  if (!BeginWriteChunk() || !object.Write(*this) || !EndWriteChunk()) return false;
  if (!WriteInt(static_cast<int>(pieces.size()))) return false;
  for (const ZK_UserData* ud : pieces) {
    if (!WriteUserData(*ud)) return false;
  }
  if (!EndWriteChunk()) return false;
  for (const ZK_UserData* ud : pieces) {
    // Its owner gives it up once written: the user data asked for that itself.
    if (ud->DeleteAfterWrite(*this, &object)) delete const_cast<ZK_UserData*>(ud);
  }
  return true;
}

bool ZK_BinaryArchive::WriteUserData(const ZK_UserData& user_data) {
  if (const ZK_UnknownUserData* unknown = ZK_UnknownUserData::Cast(&user_data)) {
    return WriteUuid(unknown->StoredClassUuid()) && WriteChunk(unknown->Bytes());
  }
  const ZK_ClassId* class_id = user_data.ClassId();
  if (class_id == nullptr || ZK_UuidIsNil(class_id->Uuid())) return false;
  return WriteUuid(class_id->Uuid()) && BeginWriteChunk() && WriteUuid(user_data.m_userdata_uuid) &&
         WriteUuid(user_data.m_application_uuid) && WriteInt(user_data.m_userdata_copycount) &&
         BeginWriteChunk() && user_data.Write(*this) && EndWriteChunk() && EndWriteChunk();
}

int ZK_BinaryArchive::ReadObject(ZK_Object*& object) {
  object = nullptr;
  if (m_mode != ZK_ArchiveMode::read) return 0;
  const size_t start = m_position;
  ZK_UUID class_uuid;
  if (!ReadUuid(class_uuid)) return 0;
  if (!BeginReadChunk()) {
    m_position = start;
    return 0;
  }
  const ZK_ClassId* class_id = ZK_ClassId::ClassId(class_uuid);
  ZK_Object* created = class_id ? class_id->Create() : nullptr;
  bool read = created != nullptr && BeginReadChunk();
  if (read) {
    read = created->Read(*this);
    EndReadChunk();
  }
  if (!read) {
    delete created;
    EndReadChunk();
    return 2;
  }
  ReadUserData(*created);
  EndReadChunk();
  object = created;
  return 1;
}

void ZK_BinaryArchive::ReadUserData(ZK_Object& object) {
  int count = 0;
  if (!ReadInt(count) || count < 0) return;
  for (int i = 0; i < count && BytesLeft() >= kObjectHeaderSize; ++i) {
    ZK_UUID class_uuid;
    if (!ReadUuid(class_uuid) || !BeginReadChunk()) return;
    const size_t body = m_position;
    ZK_UserData* piece = ReadUserDataBody(class_uuid);
    if (piece == nullptr) {
      // Kept as read, so that writing the object again loses nothing.
      const unsigned char* first = m_buffer.data() + body;
      piece = new ZK_UnknownUserData(class_uuid,
                                     std::vector<unsigned char>(first, first + BytesLeft()));
      if (!ReadUserDataHeader(*piece)) {
        delete piece;
        piece = nullptr;
      }
    }
    EndReadChunk();
    if (piece && piece->DeleteAfterRead(*this, &object)) {
      delete piece;
    } else if (piece && !object.AttachUserData(piece)) {
      delete piece;
    }
  }
}

bool ZK_BinaryArchive::ReadUserDataHeader(ZK_UserData& user_data) {
  ZK_UUID userdata_uuid, application_uuid;
  int copycount = 0;
  if (!ReadUuid(userdata_uuid) || !ReadUuid(application_uuid) || !ReadInt(copycount)) {
    return false;
  }
  user_data.m_userdata_uuid = userdata_uuid;
  user_data.m_application_uuid = application_uuid;
  user_data.m_userdata_copycount = copycount;
  return true;
}

ZK_UserData* ZK_BinaryArchive::ReadUserDataBody(const ZK_UUID& class_uuid) {
  const ZK_ClassId* class_id = ZK_ClassId::ClassId(class_uuid);
  ZK_Object* created = class_id ? class_id->Create() : nullptr;
  ZK_UserData* user_data = ZK_UserData::Cast(created);
  const size_t body = m_position;
  bool read = user_data != nullptr && ReadUserDataHeader(*user_data) && BeginReadChunk();
  if (read) {
    read = user_data->Read(*this);
    EndReadChunk();
  }
  if (read) return user_data;
  delete created;
  m_position = body;
  return nullptr;
}

ZK_BinaryMemoryArchive::ZK_BinaryMemoryArchive(size_t write_limit)
    : ZK_BinaryArchive(ZK_ArchiveMode::write) {
  m_write_limit = write_limit;
}

ZK_BinaryMemoryArchive::ZK_BinaryMemoryArchive(const std::vector<unsigned char>& bytes)
    : ZK_BinaryArchive(ZK_ArchiveMode::read) {
  m_buffer = bytes;
}

ZK_BinaryMemoryArchive::ZK_BinaryMemoryArchive(std::vector<unsigned char>&& bytes)
    : ZK_BinaryArchive(ZK_ArchiveMode::read) {
  m_buffer = std::move(bytes);
}

const std::vector<unsigned char>& ZK_BinaryMemoryArchive::Bytes() const {
  if (m_mode == ZK_ArchiveMode::write) m_buffer.resize(m_end);
  return m_buffer;
}

ZK_BinaryFileArchive::ZK_BinaryFileArchive(const std::string& path, ZK_ArchiveMode mode)
    : ZK_BinaryArchive(mode), m_path(path) {
  if (mode == ZK_ArchiveMode::write) {
    m_open = true;
    return;
  }
  // Not blocking, so that opening a pipe returns at once; it is refused below with any other
  // file that is not a regular one (a folder, a device that never ends).
  const int fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return;
  struct stat status;
  if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode)) {
    m_open = true;
    // Read straight into the buffer, which grows only when the file grew since fstat.
    m_buffer.resize(static_cast<size_t>(status.st_size) + 1);
    size_t got_all = 0;
    for (;;) {
      if (got_all == m_buffer.size()) m_buffer.resize(2 * m_buffer.size());
      const ssize_t got = read(fd, m_buffer.data() + got_all, m_buffer.size() - got_all);
      if (got == 0) break;
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) {
        m_open = false;
        got_all = 0;
        break;
      }
      got_all += static_cast<size_t>(got);
    }
    m_buffer.resize(got_all);
  }
  close(fd);
}

ZK_BinaryFileArchive::ZK_BinaryFileArchive(int fd)
    : ZK_BinaryArchive(ZK_ArchiveMode::write), m_fd(fd), m_owns_fd(false), m_open(fd >= 0) {
  m_write_failed = fd < 0;
}

ZK_BinaryFileArchive::~ZK_BinaryFileArchive() { Close(); }

bool ZK_BinaryFileArchive::WriteOut() {
  // A megabyte at a time, so that a large model never sits in memory whole.
  return m_end < (1u << 20) || Flush();
}

bool ZK_BinaryFileArchive::Flush() {
  if (m_fd < 0 && !m_write_failed) {
    m_fd = open(m_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    m_write_failed = m_fd < 0;
  }
  for (size_t at = 0; !m_write_failed && at < m_end;) {
    const ssize_t put = write(m_fd, m_buffer.data() + at, m_end - at);
    if (put < 0 && errno == EINTR) continue;
    m_write_failed = put <= 0;
    if (!m_write_failed) at += static_cast<size_t>(put);
  }
  m_end = 0;  // the room stays for what comes next
  return !m_write_failed;
}

bool ZK_BinaryFileArchive::Close() {
  if (m_closed) return m_close_result;
  m_closed = true;
  if (m_mode == ZK_ArchiveMode::read) return m_close_result = m_open;
  // On the disk before anyone renames the file over an older one.
  bool written = Flush() && fsync(m_fd) == 0;
  if (m_fd >= 0 && m_owns_fd) written = close(m_fd) == 0 && written;
  m_fd = -1;
  return m_close_result = written;
}
