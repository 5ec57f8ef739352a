#include "host/zefkit/zk_archive.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>

namespace {

// The smallest framed object: class uuid and chunk length.
constexpr size_t kObjectHeaderSize = 16 + 4;

// User data is read one level deep; what a piece of user data carries itself is skipped.
constexpr int kUserDataDepth = 1;

void PutLittleEndian(unsigned char* out, std::uint64_t value, int size) {
  for (int i = 0; i < size; ++i) out[i] = static_cast<unsigned char>(value >> (8 * i));
}

std::uint64_t GetLittleEndian(const unsigned char* in, int size) {
  std::uint64_t value = 0;
  for (int i = size - 1; i >= 0; --i) value = (value << 8) | in[i];
  return value;
}

}  // namespace

size_t ZK_BinaryArchive::BytesLeft() const {
  if (m_mode != ZK_ArchiveMode::read) return 0;
  const size_t end = m_chunks.empty() ? m_buffer.size() : m_chunks.back();
  return end > m_position ? end - m_position : 0;
}

bool ZK_BinaryArchive::WriteBytes(const void* bytes, size_t size) {
  if (m_mode != ZK_ArchiveMode::write) return false;
  if (size > m_write_limit || m_buffer.size() > m_write_limit - size) return false;
  const auto* p = static_cast<const unsigned char*>(bytes);
  m_buffer.insert(m_buffer.end(), p, p + size);
  return true;
}

bool ZK_BinaryArchive::ReadBytes(void* bytes, size_t size) {
  if (size > BytesLeft()) return false;
  if (size > 0) std::memcpy(bytes, m_buffer.data() + m_position, size);
  m_position += size;
  return true;
}

bool ZK_BinaryArchive::WriteInt(int value) {
  unsigned char bytes[4];
  PutLittleEndian(bytes, static_cast<std::uint32_t>(value), 4);
  return WriteBytes(bytes, 4);
}

bool ZK_BinaryArchive::ReadInt(int& value) {
  unsigned char bytes[4];
  if (!ReadBytes(bytes, 4)) return false;
  value = static_cast<std::int32_t>(static_cast<std::uint32_t>(GetLittleEndian(bytes, 4)));
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
  unsigned char bytes[16];
  if (!ReadBytes(bytes, 16)) return false;
  uuid.Data1 = static_cast<unsigned int>(GetLittleEndian(bytes, 4));
  uuid.Data2 = static_cast<unsigned short>(GetLittleEndian(bytes + 4, 2));
  uuid.Data3 = static_cast<unsigned short>(GetLittleEndian(bytes + 6, 2));
  std::memcpy(uuid.Data4, bytes + 8, 8);
  return true;
}

bool ZK_BinaryArchive::WriteString(const ZK_wString& text) {
  std::vector<unsigned char> units;
  auto put = [&units](unsigned long unit) {
    units.push_back(static_cast<unsigned char>(unit));
    units.push_back(static_cast<unsigned char>(unit >> 8));
  };
  for (wchar_t w : text.Text()) {
    unsigned long c = static_cast<unsigned long>(w);
    if ((c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF) c = 0xFFFD;
    if (c < 0x10000) {
      put(c);
    } else {
      put(0xD800 + ((c - 0x10000) >> 10));
      put(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
  }
  if (units.size() / 2 > 0x7FFFFFFF) return false;
  const size_t start = m_buffer.size();
  if (WriteInt(static_cast<int>(units.size() / 2)) && WriteBytes(units.data(), units.size())) {
    return true;
  }
  if (m_mode == ZK_ArchiveMode::write) m_buffer.resize(start);
  return false;
}

bool ZK_BinaryArchive::ReadString(ZK_wString& text) {
  const size_t start = m_position;
  int count = 0;
  if (!ReadInt(count)) return false;
  if (count < 0 || static_cast<size_t>(count) > BytesLeft() / 2) {
    m_position = start;
    return false;
  }
  std::wstring out;
  out.reserve(static_cast<size_t>(count));
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
    out += static_cast<wchar_t>(c);
  }
  m_position += 2 * static_cast<size_t>(count);
  text = ZK_wString(out);
  return true;
}

bool ZK_BinaryArchive::WriteXform(const ZK_Xform& xform) {
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 4; ++c) {
      if (!WriteDouble(xform.m_xform[r][c])) return false;
    }
  }
  return true;
}

bool ZK_BinaryArchive::ReadXform(ZK_Xform& xform) {
  const size_t start = m_position;
  ZK_Xform read;
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 4; ++c) {
      if (!ReadDouble(read.m_xform[r][c])) {
        m_position = start;
        return false;
      }
    }
  }
  xform = read;
  return true;
}

bool ZK_BinaryArchive::WritePoint(const ZK_3dPoint& point) {
  return WriteDouble(point.x) && WriteDouble(point.y) && WriteDouble(point.z);
}

bool ZK_BinaryArchive::ReadPoint(ZK_3dPoint& point) {
  const size_t start = m_position;
  double xyz[3];
  for (double& value : xyz) {
    if (!ReadDouble(value)) {
      m_position = start;
      return false;
    }
  }
  point = {xyz[0], xyz[1], xyz[2]};
  return true;
}

bool ZK_BinaryArchive::BeginWriteChunk() {
  const size_t at = m_buffer.size();
  if (!WriteInt(0)) return false;
  m_chunks.push_back(at);
  return true;
}

bool ZK_BinaryArchive::EndWriteChunk() {
  if (m_mode != ZK_ArchiveMode::write || m_chunks.empty()) return false;
  const size_t at = m_chunks.back();
  m_chunks.pop_back();
  const size_t length = m_buffer.size() - at - 4;
  if (length > 0x7FFFFFFF) return false;
  PutLittleEndian(m_buffer.data() + at, length, 4);
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
// count of archived user data, each piece of user data as an object }.
bool ZK_BinaryArchive::WriteObject(const ZK_Object& object) {
  const ZK_ClassId* class_id = object.ClassId();
  if (class_id == nullptr || ZK_UuidIsNil(class_id->Uuid())) return false;
  int archived = 0;
  for (const ZK_UserData* ud = object.FirstUserData(); ud; ud = ud->Next()) {
    archived += ud->Archive() ? 1 : 0;
  }
  if (!WriteUuid(class_id->Uuid()) || !BeginWriteChunk()) return false;
  if (!BeginWriteChunk() || !object.Write(*this) || !EndWriteChunk()) return false;
  if (!WriteInt(archived)) return false;
  for (const ZK_UserData* ud = object.FirstUserData(); ud; ud = ud->Next()) {
    if (ud->Archive() && !WriteObject(*ud)) return false;
  }
  return EndWriteChunk();
}

int ZK_BinaryArchive::ReadObject(ZK_Object*& object) { return ReadObjectAtDepth(object, 0); }

int ZK_BinaryArchive::ReadObjectAtDepth(ZK_Object*& object, int depth) {
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
  if (depth < kUserDataDepth) ReadUserData(*created);
  EndReadChunk();
  object = created;
  return 1;
}

void ZK_BinaryArchive::ReadUserData(ZK_Object& object) {
  int count = 0;
  if (!ReadInt(count) || count < 0) return;
  for (int i = 0; i < count && BytesLeft() >= kObjectHeaderSize; ++i) {
    ZK_Object* piece = nullptr;
    const int result = ReadObjectAtDepth(piece, kUserDataDepth);
    if (result == 0) return;
    ZK_UserData* user_data = ZK_UserData::Cast(piece);
    if (user_data == nullptr || !object.AttachUserData(user_data)) delete piece;
  }
}

ZK_BinaryMemoryArchive::ZK_BinaryMemoryArchive(size_t write_limit)
    : ZK_BinaryArchive(ZK_ArchiveMode::write) {
  m_write_limit = write_limit;
}

ZK_BinaryMemoryArchive::ZK_BinaryMemoryArchive(const std::vector<unsigned char>& bytes)
    : ZK_BinaryArchive(ZK_ArchiveMode::read) {
  m_buffer = bytes;
}

ZK_BinaryFileArchive::ZK_BinaryFileArchive(const std::string& path, ZK_ArchiveMode mode)
    : ZK_BinaryArchive(mode), m_path(path) {
  if (mode == ZK_ArchiveMode::write) {
    m_open = true;
    return;
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) return;
  m_buffer.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  m_open = !file.bad();
  if (!m_open) m_buffer.clear();
}

ZK_BinaryFileArchive::~ZK_BinaryFileArchive() { Close(); }

bool ZK_BinaryFileArchive::Close() {
  if (m_closed) return m_close_result;
  m_closed = true;
  if (m_mode == ZK_ArchiveMode::read) return m_close_result = m_open;
  std::ofstream file(m_path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(m_buffer.data()),
             static_cast<std::streamsize>(m_buffer.size()));
  file.close();
  return m_close_result = static_cast<bool>(file);
}
