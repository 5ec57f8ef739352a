// ModelFileBlocks: a model file split into its framed blocks (docs/model_file.md), for tests that
// damage a file, compare two files block by block, or change a block and put the file together
// again with fresh checksums.
#pragma once

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "data/place_holder.h"
#include "host/zefkit/zk_archive.h"
#include "host/zefkit/zk_crc32.h"

struct ModelFileBlocks {
  using Bytes = std::vector<unsigned char>;
  struct PlugInBlock {
    ZK_UUID plug_in_id;
    Bytes bytes;
    bool operator==(const PlugInBlock& other) const {
      return plug_in_id == other.plug_in_id && bytes == other.bytes;
    }
  };

  // The file's bytes; none when it cannot be read.
  static Bytes ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file ? static_cast<std::streamoff>(file.tellg()) : 0;
    if (size <= 0) return {};
    Bytes bytes(static_cast<size_t>(size));
    file.seekg(0);
    if (!file.read(reinterpret_cast<char*>(bytes.data()), size)) return {};
    return bytes;
  }
  static void WriteFile(const std::string& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }

  // False when the file is not a whole, undamaged model file; with `check` false, blocks that
  // fail their checksum are taken as they are.
  bool Read(const std::string& path, bool check = true) {
    check_ = check;
    ZK_BinaryMemoryArchive in(ReadFile(path));
    int count = 0;
    if (!in.ReadString(magic) || !in.ReadInt(version) || !in.ReadInt(count)) return false;
    for (int i = 0; i < count; ++i) {
      objects.emplace_back();
      if (!ReadBlock(in, objects.back())) return false;
    }
    if (!in.ReadInt(count)) return false;
    for (int i = 0; i < count; ++i) {
      PlugInBlock& block = plug_ins.emplace_back();
      if (!in.ReadUuid(block.plug_in_id) || !ReadBlock(in, block.bytes, IdCrc(block.plug_in_id))) {
        return false;
      }
    }
    return in.BytesLeft() == 0;
  }
  void Write(const std::string& path) const {
    ZK_BinaryMemoryArchive out;
    out.WriteString(magic);
    out.WriteInt(version);
    out.WriteInt(static_cast<int>(objects.size()));
    for (const Bytes& object : objects) WriteBlock(out, object);
    out.WriteInt(static_cast<int>(plug_ins.size()));
    for (const PlugInBlock& block : plug_ins) {
      out.WriteUuid(block.plug_in_id);
      WriteBlock(out, block.bytes, IdCrc(block.plug_in_id));
    }
    WriteFile(path, out.Bytes());
  }

  ZK_wString magic;
  int version = 0;
  std::vector<Bytes> objects;
  std::vector<PlugInBlock> plug_ins;

  // Makes every version field of the stance plug-in's in `bytes` (the one before each place
  // holder) 1, as a newer version of the plug-in writes.
  static void MakeStancesNewer(Bytes& bytes) {
    ZK_BinaryMemoryArchive pattern;
    pattern.WriteInt(0);
    pattern.WriteString(kKorvoPlaceHolder);
    const auto& needle = pattern.Bytes();
    for (auto at = bytes.begin();
         (at = std::search(at, bytes.end(), needle.begin(), needle.end())) != bytes.end();) {
      *at = 1;
    }
  }

 private:
  bool check_ = true;
  static unsigned int IdCrc(const ZK_UUID& id) {
    ZK_BinaryMemoryArchive out;
    out.WriteUuid(id);
    return ZK_CRC32(0, out.Bytes().size(), out.Bytes().data());
  }
  bool ReadBlock(ZK_BinaryArchive& in, Bytes& bytes, unsigned int crc = 0) const {
    int stored = 0;
    return in.ReadChunk(bytes) && in.ReadInt(stored) &&
           (!check_ ||
            static_cast<unsigned int>(stored) == ZK_CRC32(crc, bytes.size(), bytes.data()));
  }
  static void WriteBlock(ZK_BinaryArchive& out, const Bytes& bytes, unsigned int crc = 0) {
    out.WriteChunk(bytes);
    out.WriteInt(static_cast<int>(ZK_CRC32(crc, bytes.size(), bytes.data())));
  }
};
